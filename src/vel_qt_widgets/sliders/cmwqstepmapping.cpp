#include "cmwqstepmapping_p.h"

#include <QtCore/QDebug>
#include <QtWidgets/QSlider>
#include <QtWidgets/QStyleOptionSlider>

namespace CMwQStepMapping {

bool isValidStep(double step, double minimum, double maximum)
{
    // Every step fits an empty range, even zero; the mapping never divides by
    // a step that is not a positive number (see isUsableStep()).
    if (minimum == maximum)
        return true;
    const double lo = qMax(maximum / 1.7976931348623157e308, 2.220446049250313e-16);
    const double hi = qMin(maximum - minimum, 2147483647.0);
    return lo <= step && step <= hi;
}

void initSliderStyleOption(const QSlider *slider, QStyleOptionSlider *option)
{
    option->initFrom(slider);
    option->subControls = QStyle::SC_None;
    option->activeSubControls = QStyle::SC_None;
    option->orientation = slider->orientation();
    option->maximum = slider->maximum();
    option->minimum = slider->minimum();
    option->tickPosition = slider->tickPosition();
    option->tickInterval = slider->tickInterval();
    option->upsideDown = (slider->orientation() == Qt::Horizontal)
        ? (slider->invertedAppearance() != (option->direction == Qt::RightToLeft))
        : !slider->invertedAppearance();
    option->direction = Qt::LeftToRight; // upsideDown already carries the direction
    option->sliderPosition = slider->sliderPosition();
    option->sliderValue = slider->value();
    option->singleStep = slider->singleStep();
    option->pageStep = slider->pageStep();
    if (slider->orientation() == Qt::Horizontal)
        option->state |= QStyle::State_Horizontal;
}

void warnIgnored(const char *function, std::initializer_list<double> arguments, const char *reason)
{
    QDebug out = qWarning();
    out << (QByteArray(function) + '(').constData();
    bool first = true;
    for (double argument : arguments) {
        if (!first)
            out << ",";
        out << argument;
        first = false;
    }
    out << ")" << reason;
}

const char *const notANumberReason = "is not a number in slider units and is ignored.";
const char *const notFiniteReason = "is not finite in slider units and is ignored.";
const char *const restoredRangeReason = "has no finite range in values; the previous range is restored.";

} // namespace CMwQStepMapping
