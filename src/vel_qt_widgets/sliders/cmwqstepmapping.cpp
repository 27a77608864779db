#include "cmwqstepmapping_p.h"

#include <QtCore/QDebug>

#include <limits>

namespace CMwQStepMapping {

bool isValidStep(double step, double minimum, double maximum)
{
    // Every step fits an empty range, even zero; the mapping never divides by
    // a step that is not a positive number (see isUsableStep()).
    if (minimum == maximum)
        return true;
    const double lo = qMax(
        maximum / std::numeric_limits<double>::max(), std::numeric_limits<double>::epsilon());
    const double hi = qMin(maximum - minimum, highestInteger);
    return lo <= step && step <= hi;
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
const char *const restoredRangeReason
    = "has no finite range in values; the previous range is restored.";

} // namespace CMwQStepMapping
