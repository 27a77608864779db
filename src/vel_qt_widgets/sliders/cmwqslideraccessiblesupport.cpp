#include "cmwqslideraccessiblesupport_p.h"

#include "cmwqdoublerangeslider_p.h"
#include "cmwqrangeslider_p.h"
#include "cmwqslideraccessibility_p.h"
#include "cmwqstepmappedslider_p.h"

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtCore/QLocale>
#include <QtCore/QVariant>

#include <cmath>

namespace CMwQSliderAccessibleSupport {

CMwQRangeSlider *handleHolder(QWidget *slider)
{
    if (auto *outer = qobject_cast<CMwQDoubleRangeSlider *>(slider))
        return CMwQDoubleRangeSliderPrivate::get(outer)->slider;
    return qobject_cast<CMwQRangeSlider *>(slider);
}

int focusedHandleChild(const CMwQRangeSlider *slider)
{
    return CMwQRangeSliderPrivate::get(slider)->focusedHandle == CMwQRangeSliderPrivate::UpperHandle
        ? CMwQSliderAccessibility::UpperHandleChild
        : CMwQSliderAccessibility::LowerHandleChild;
}

double publicStep(const CMwQStepMappedSliderPrivate *d, double sliderUnits)
{
    const double step = std::abs(d->toValue(sliderUnits + d->singleStep) - d->toValue(sliderUnits));
    return std::isfinite(step) && step > 0.0 ? step : d->singleStep;
}

QString numberText(const QVariant &value)
{
    if (value.userType() == QMetaType::Double)
        return QLocale().toString(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    return QLocale().toString(value.toInt());
}

} // namespace CMwQSliderAccessibleSupport
