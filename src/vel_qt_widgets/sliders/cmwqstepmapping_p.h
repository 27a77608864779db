#ifndef VEL_QT_WIDGETS_CMWQSTEPMAPPING_P_H
#define VEL_QT_WIDGETS_CMWQSTEPMAPPING_P_H

#include "cmwqtcompat_p.h"

#include <vel_qt_widgets/vel_qt_widgets_export.h>

#include <vel_qt_widgets/CMwQValueProxy.h>

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <cmath>
#include <initializer_list>
#include <limits>

// The mapping between doubles and the integer units of an inner slider, one
// unit per single step, shared by both floating-point sliders. All values are
// in slider units (proxy units when a value proxy is set).
namespace CMwQStepMapping {

// A single step that can divide: a positive finite number. Any other step is
// accepted only on an empty range (see isValidStep()); until a usable one is
// set, the mapping puts every value on the integer 0 with no fraction, so
// that nothing is ever divided by it.
inline bool isUsableStep(double step) { return step > 0.0 && std::isfinite(step); }

// The integer slider's limits as doubles (both exact).
constexpr double lowestInteger = double(std::numeric_limits<int>::min());
constexpr double highestInteger = double(std::numeric_limits<int>::max());

// v / step, clamped to the 32-bit range, then rounded with halves going up
// (qRound's rule). Below -2147483647.5 everything rounds to the lowest int,
// which is answered directly: qRound's negative branch converts x - 1 to int,
// and for x just above -2147483648 that difference rounds to -2147483649.0,
// whose conversion is undefined. A NaN, which callers filter out before,
// gives 0 rather than garbage.
inline int toInteger(double v, double step)
{
    if (!isUsableStep(step))
        return 0;
    const double x = v / step;
    if (std::isnan(x))
        return 0;
    if (x < lowestInteger + 0.5)
        return std::numeric_limits<int>::min();
    if (x >= highestInteger)
        return std::numeric_limits<int>::max();
    return VelQt::roundHalfUp(x);
}

inline double fromInteger(int i, double offset, double step)
{
    return isUsableStep(step) ? (i + offset) * step : 0.0;
}

inline double safeFromInteger(int i, double offset, double step, double minimum, double maximum)
{
    return qBound(minimum, fromInteger(i, offset, step), maximum);
}

// The fractional part (in steps) that toInteger() drops, so that a value
// between two steps survives the trip through the integer slider.
inline double offsetFor(double v, double step)
{
    return isUsableStep(step) ? v / step - toInteger(v, step) : 0.0;
}

// Exported (though the header is private) so that the tests can reach them.

// The same bounds for a single step on both sliders; see isValidStep().
VEL_QT_WIDGETS_EXPORT bool isValidStep(double step, double minimum, double maximum);

inline double toSliderUnits(const QPointer<CMwQValueProxy> &proxy, double value)
{
    return proxy ? proxy->proxyValueFromValue(value) : value;
}

inline double toValue(const QPointer<CMwQValueProxy> &proxy, double sliderUnits)
{
    return proxy ? proxy->valueFromProxyValue(sliderUnits) : sliderUnits;
}

// Writes "<function>( a , b ) <reason>" through qWarning, the same shape as
// the single-step warning, for calls that are rejected.
void warnIgnored(const char *function, std::initializer_list<double> arguments, const char *reason);

extern const char *const notANumberReason;
extern const char *const notFiniteReason;
extern const char *const restoredRangeReason;

} // namespace CMwQStepMapping

#endif // VEL_QT_WIDGETS_CMWQSTEPMAPPING_P_H
