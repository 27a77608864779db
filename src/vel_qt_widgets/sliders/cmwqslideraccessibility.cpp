#include "cmwqslideraccessibility_p.h"

#include "cmwqdoublerangeslider_p.h"
#include "cmwqdoubleslider_p.h"
#include "cmwqdoubleslideraccessible_p.h"
#include "cmwqinnerslideraccessible_p.h"
#include "cmwqrangehandleaccessible_p.h"
#include "cmwqrangeslider_p.h"
#include "cmwqrangeslideraccessible_p.h"

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QMetaObject>
#include <QtCore/QVariant>
#include <QtGui/QAccessible>

#include <cmath>

namespace {

CMwQDoubleRangeSlider *outerOfRangeSlider(const CMwQRangeSlider *slider)
{
    auto *outer = qobject_cast<CMwQDoubleRangeSlider *>(slider->parentWidget());
    if (outer && CMwQDoubleRangeSliderPrivate::get(outer)->slider == slider)
        return outer;
    return nullptr;
}

CMwQDoubleSlider *outerOfSlider(const QWidget *slider)
{
    auto *outer = qobject_cast<CMwQDoubleSlider *>(slider->parentWidget());
    if (outer && CMwQDoubleSliderPrivate::get(outer)->slider == slider)
        return outer;
    return nullptr;
}

QAccessibleInterface *factory(const QString &className, QObject *object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    auto *widget = static_cast<QWidget *>(object);
    if (className == QLatin1String("CMwQRangeSlider")) {
        auto *slider = static_cast<CMwQRangeSlider *>(widget);
        if (CMwQDoubleRangeSlider *outer = outerOfRangeSlider(slider))
            return new CMwQInnerSliderAccessible(slider, outer);
        return new CMwQRangeSliderAccessible(slider);
    }
    if (className == QLatin1String("CMwQDoubleRangeSlider"))
        return new CMwQRangeSliderAccessible(widget);
    if (className == QLatin1String("CMwQDoubleSlider"))
        return new CMwQDoubleSliderAccessible(widget);
    if (className == QLatin1String("CMwQSliderEx")) {
        if (CMwQDoubleSlider *outer = outerOfSlider(widget))
            return new CMwQInnerSliderAccessible(widget, outer);
    }
    return nullptr;
}

// Takes the factory out again when the library is unloaded while the
// application lives on (Designer may unload its plug-ins), so that QAccessible
// never calls into unmapped code. Without an application Qt has already
// dropped every factory, and its list may be gone.
struct FactoryRemover
{
    bool installed = false;
    ~FactoryRemover()
    {
        if (installed && QCoreApplication::instance())
            QAccessible::removeFactory(factory);
    }
} factoryRemover;

} // namespace

namespace CMwQSliderAccessibility {

void install()
{
    QAccessible::installFactory(factory);
    factoryRemover.installed = true;
}

bool isInnerRangeSlider(const CMwQRangeSlider *slider)
{
    return outerOfRangeSlider(slider) != nullptr;
}

void handleFocused(CMwQRangeSlider *slider, int child)
{
    QWidget *element = slider;
    if (CMwQDoubleRangeSlider *outer = outerOfRangeSlider(slider))
        element = outer;
    QAccessibleEvent event(element, QAccessible::Focus);
    event.setChild(child);
    QAccessible::updateAccessibility(&event);
}

void focusedHandleLater(CMwQRangeSlider *slider)
{
    QMetaObject::invokeMethod(
        slider,
        [slider]() {
            if (slider->hasFocus())
                handleFocused(slider, focusedHandleChild(slider));
        },
        Qt::QueuedConnection);
}

void rangeValuesChanged(QWidget *slider, bool lower, bool upper)
{
    if (auto *rangeSlider = qobject_cast<CMwQRangeSlider *>(slider)) {
        if (isInnerRangeSlider(rangeSlider))
            return;
    }
    for (int child : {LowerHandleChild, UpperHandleChild}) {
        if (child == LowerHandleChild ? !lower : !upper)
            continue;
        const CMwQRangeHandleAccessible handle(slider, child);
        QAccessibleValueChangeEvent event(slider, handle.currentValue());
        event.setChild(child);
        QAccessible::updateAccessibility(&event);
    }
}

void valueChanged(QWidget *doubleSlider)
{
    QAccessibleValueChangeEvent event(
        doubleSlider, static_cast<CMwQDoubleSlider *>(doubleSlider)->value());
    QAccessible::updateAccessibility(&event);
}

CMwQRangeSlider *handleHolder(QWidget *slider)
{
    if (auto *outer = qobject_cast<CMwQDoubleRangeSlider *>(slider))
        return CMwQDoubleRangeSliderPrivate::get(outer)->slider;
    return qobject_cast<CMwQRangeSlider *>(slider);
}

int focusedHandleChild(const CMwQRangeSlider *slider)
{
    return CMwQRangeSliderPrivate::get(slider)->focusedHandle == CMwQRangeSliderPrivate::UpperHandle
        ? UpperHandleChild
        : LowerHandleChild;
}

double publicStep(const CMwQStepMappedSliderPrivate *d, double sliderUnits)
{
    const double step = std::abs(d->toValue(sliderUnits + d->singleStep) - d->toValue(sliderUnits));
    return std::isfinite(step) && step > 0.0 ? step : d->singleStep;
}

QString numberText(const QVariant &value)
{
    if (value.type() == QVariant::Double)
        return QLocale().toString(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    return QLocale().toString(value.toInt());
}

} // namespace CMwQSliderAccessibility

namespace {
void installSliderAccessibility() { CMwQSliderAccessibility::install(); }
} // namespace

Q_COREAPP_STARTUP_FUNCTION(installSliderAccessibility)
