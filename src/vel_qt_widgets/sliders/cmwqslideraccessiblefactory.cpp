#include "cmwqslideraccessiblefactory_p.h"

#include "cmwqdoublerangeslider_p.h"
#include "cmwqdoubleslider_p.h"
#include "cmwqdoubleslideraccessible_p.h"
#include "cmwqinnerslideraccessible_p.h"
#include "cmwqrangeslideraccessible_p.h"

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QAccessible>

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

namespace CMwQSliderAccessibleFactory {

void install()
{
    QAccessible::installFactory(factory);
    factoryRemover.installed = true;
}

} // namespace CMwQSliderAccessibleFactory

namespace {
void installSliderAccessibility() { CMwQSliderAccessibleFactory::install(); }
} // namespace

Q_COREAPP_STARTUP_FUNCTION(installSliderAccessibility)
