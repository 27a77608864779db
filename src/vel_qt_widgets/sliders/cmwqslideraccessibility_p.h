#ifndef VEL_QT_WIDGETS_CMWQSLIDERACCESSIBILITY_P_H
#define VEL_QT_WIDGETS_CMWQSLIDERACCESSIBILITY_P_H

#include <QtCore/QtGlobal>

QT_BEGIN_NAMESPACE
class QVariant;
class QWidget;
QT_END_NAMESPACE

// What the sliders tell assistive technology. A range slider is a group of
// two sliders, one per handle; a floating-point slider speaks in its double
// values. The integer slider inside a floating-point slider is no element of
// its own: its outer widget reports for it. The sliders call these with what
// they know; the interfaces that answer the questions of assistive
// technology sit above the sliders (cmwqslideraccessiblefactory).
namespace CMwQSliderAccessibility {

// Child indices of the two handles.
enum { LowerHandleChild = 0, UpperHandleChild = 1 };

// A focus event for the handle \a child of \a element, the widget that
// assistive technology sees (a range slider, or the floating-point range
// slider around one).
void handleFocused(QWidget *element, int child);

// Value-change events for the handles of \a element that changed, with
// their new values.
void handleValuesChanged(QWidget *element, bool lower, const QVariant &lowerValue, bool upper,
    const QVariant &upperValue);

// A value-change event for a floating-point slider.
void valueChanged(QWidget *slider, double value);

} // namespace CMwQSliderAccessibility

#endif // VEL_QT_WIDGETS_CMWQSLIDERACCESSIBILITY_P_H
