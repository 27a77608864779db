#include "cmwqslideraccessibility_p.h"

#include <QtCore/QVariant>
#include <QtGui/QAccessible>
#include <QtWidgets/QWidget>

namespace CMwQSliderAccessibility {

void handleFocused(QWidget *element, int child)
{
    QAccessibleEvent event(element, QAccessible::Focus);
    event.setChild(child);
    QAccessible::updateAccessibility(&event);
}

void handleValuesChanged(QWidget *element, bool lower, const QVariant &lowerValue, bool upper,
    const QVariant &upperValue)
{
    for (int child : {LowerHandleChild, UpperHandleChild}) {
        if (child == LowerHandleChild ? !lower : !upper)
            continue;
        QAccessibleValueChangeEvent event(
            element, child == LowerHandleChild ? lowerValue : upperValue);
        event.setChild(child);
        QAccessible::updateAccessibility(&event);
    }
}

void valueChanged(QWidget *slider, double value)
{
    QAccessibleValueChangeEvent event(slider, value);
    QAccessible::updateAccessibility(&event);
}

} // namespace CMwQSliderAccessibility
