#ifndef VEL_TESTS_SLIDER_TEST_SUPPORT_H
#define VEL_TESTS_SLIDER_TEST_SUPPORT_H

#include <QtWidgets/QSlider>
#include <QtWidgets/QStyleOptionSlider>

// QSlider's own style option for any slider. initStyleOption() is protected;
// a pointer to it, taken in a subclass, may be applied to every QSlider.
struct SliderOptionAccess : QSlider
{
    static void fill(const QSlider *slider, QStyleOptionSlider *option)
    {
        (slider->*(&SliderOptionAccess::initStyleOption))(option);
    }
};

inline void sliderStyleOption(const QSlider *slider, QStyleOptionSlider *option)
{
    SliderOptionAccess::fill(slider, option);
}

#endif // VEL_TESTS_SLIDER_TEST_SUPPORT_H
