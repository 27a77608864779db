#ifndef VEL_QT_WIDGETS_CMWQSLIDERACCESSIBILITY_P_H
#define VEL_QT_WIDGETS_CMWQSLIDERACCESSIBILITY_P_H

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QVariant;
class QWidget;
QT_END_NAMESPACE

class CMwQRangeSlider;
class CMwQStepMappedSliderPrivate;

// What the sliders tell assistive technology. A range slider is a group of
// two sliders, one per handle; a floating-point slider speaks in its double
// values. The integer slider inside a floating-point slider is no element of
// its own: its interface only forwards to the outer widget's, so that focus
// and value events Qt sends for it reach the element the user sees.
namespace CMwQSliderAccessibility {

// Registers the interface factory with QAccessible (once per application).
void install();

// Child indices of the two handles.
enum { LowerHandleChild = 0, UpperHandleChild = 1 };

// True when \a slider is the inner slider of a floating-point range slider.
bool isInnerRangeSlider(const CMwQRangeSlider *slider);

// A focus event for the handle \a child of a range slider (or of the
// floating-point range slider around it).
void handleFocused(CMwQRangeSlider *slider, int child);
// The same for the focused handle, once the focus event that Qt sends for
// the widget itself is out, so that the handle's comes last.
void focusedHandleLater(CMwQRangeSlider *slider);

// Value-change events for the handles of a range slider or a floating-point
// range slider; nothing for an inner slider, whose outer widget reports.
void rangeValuesChanged(QWidget *slider, bool lower, bool upper);
// A value-change event for a floating-point slider.
void valueChanged(QWidget *doubleSlider);

// Shared by the interfaces:

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

} // namespace CMwQSliderAccessibility

#endif // VEL_QT_WIDGETS_CMWQSLIDERACCESSIBILITY_P_H
