#ifndef VEL_QT_WIDGETS_CMWQSLIDERACCESSIBLESUPPORT_P_H
#define VEL_QT_WIDGETS_CMWQSLIDERACCESSIBLESUPPORT_P_H

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QVariant;
class QWidget;
QT_END_NAMESPACE

class CMwQRangeSlider;
class CMwQStepMappedSliderPrivate;

// What the slider interfaces for assistive technology share.
namespace CMwQSliderAccessibleSupport {

// The integer range slider that holds the handles of \a slider: itself, or
// the inner slider of a floating-point range slider.
CMwQRangeSlider *handleHolder(QWidget *slider);
// The child index of the handle that keys move on \a slider.
int focusedHandleChild(const CMwQRangeSlider *slider);
// The size of one step from a value in slider units, in public units: with a
// value proxy the steps are even in slider units only.
double publicStep(const CMwQStepMappedSliderPrivate *d, double sliderUnits);
// A value as the text a screen reader announces, in the user's locale.
QString numberText(const QVariant &value);

} // namespace CMwQSliderAccessibleSupport

#endif // VEL_QT_WIDGETS_CMWQSLIDERACCESSIBLESUPPORT_P_H
