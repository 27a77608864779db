#ifndef VEL_QT_WIDGETS_CMWQSLIDER_P_H
#define VEL_QT_WIDGETS_CMWQSLIDER_P_H

#include <vel_qt_widgets/CMwQSlider.h>

QT_BEGIN_NAMESPACE
class QPainter;
class QStyleOptionSlider;
QT_END_NAMESPACE

// Exported (the header is not installed) so that tests and subclasses
// elsewhere can hand the protected constructors a private object.
class VEL_QT_WIDGETS_EXPORT CMwQSliderPrivate
{
    Q_DECLARE_PUBLIC(CMwQSlider)

public:
    CMwQSliderPrivate() = default;
    virtual ~CMwQSliderPrivate();

    /*! Draws the regular marks, the extra marks and the labels, in that
        order, for the slider described by \a option. Shared with every
        slider that derives from CMwQSlider. */
    void drawTicks(QPainter *painter, const QStyleOptionSlider &option) const;

    CMwQSlider *q_ptr = nullptr;
    TMwTickItemList tickItems;

private:
    void drawTickMarks(QPainter *painter, const QStyleOptionSlider &option) const;
    void drawTickLabels(QPainter *painter, const QStyleOptionSlider &option) const;
};

#endif // VEL_QT_WIDGETS_CMWQSLIDER_P_H
