#include "cmwqdoubleslideraccessible_p.h"

#include "cmwqdoubleslider_p.h"
#include "cmwqslideraccessiblesupport_p.h"

#include <vel_qt_widgets/CMwQDoubleSlider.h>

using CMwQSliderAccessibleSupport::numberText;
using CMwQSliderAccessibleSupport::publicStep;

CMwQDoubleSliderAccessible::CMwQDoubleSliderAccessible(QWidget *slider)
    : QAccessibleWidget(slider, QAccessible::Slider)
{
}

int CMwQDoubleSliderAccessible::childCount() const { return 0; }

QAccessibleInterface *CMwQDoubleSliderAccessible::child(int) const { return nullptr; }

int CMwQDoubleSliderAccessible::indexOfChild(const QAccessibleInterface *) const { return -1; }

QAccessibleInterface *CMwQDoubleSliderAccessible::childAt(int, int) const { return nullptr; }

QString CMwQDoubleSliderAccessible::text(QAccessible::Text t) const
{
    if (t == QAccessible::Value)
        return numberText(currentValue());
    return QAccessibleWidget::text(t);
}

void *CMwQDoubleSliderAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QVariant CMwQDoubleSliderAccessible::currentValue() const
{
    return static_cast<CMwQDoubleSlider *>(widget())->value();
}

void CMwQDoubleSliderAccessible::setCurrentValue(const QVariant &value)
{
    bool ok = false;
    const double v = value.toDouble(&ok);
    if (ok)
        static_cast<CMwQDoubleSlider *>(widget())->setValue(v);
}

QVariant CMwQDoubleSliderAccessible::maximumValue() const
{
    return static_cast<CMwQDoubleSlider *>(widget())->maximum();
}

QVariant CMwQDoubleSliderAccessible::minimumValue() const
{
    return static_cast<CMwQDoubleSlider *>(widget())->minimum();
}

QVariant CMwQDoubleSliderAccessible::minimumStepSize() const
{
    const CMwQDoubleSliderPrivate *d
        = CMwQDoubleSliderPrivate::get(static_cast<CMwQDoubleSlider *>(widget()));
    return publicStep(d, d->value);
}
