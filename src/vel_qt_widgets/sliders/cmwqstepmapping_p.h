#ifndef VEL_QT_WIDGETS_CMWQSTEPMAPPING_P_H
#define VEL_QT_WIDGETS_CMWQSTEPMAPPING_P_H

#include "cmwqtcompat_p.h"

#include <vel_qt_widgets/vel_qt_widgets_export.h>

#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQSlider.h>
#include <vel_qt_widgets/CMwQValueProxy.h>

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <cmath>
#include <initializer_list>
#include <limits>

QT_BEGIN_NAMESPACE
class QSlider;
class QStyleOptionSlider;
class QWidget;
QT_END_NAMESPACE

// The mapping between doubles and the integer units of an inner slider, one
// unit per single step, shared by both floating-point sliders. All values are
// in slider units (proxy units when a value proxy is set).
namespace CMwQStepMapping {

// A single step that can divide: a positive finite number. Any other step is
// accepted only on an empty range (see isValidStep()); until a usable one is
// set, the mapping puts every value on the integer 0 with no fraction, so
// that nothing is ever divided by it.
inline bool isUsableStep(double step) { return step > 0.0 && std::isfinite(step); }

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
    if (x < -2147483647.5)
        return std::numeric_limits<int>::min();
    if (x >= 2147483647.0)
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

// What QSlider::initStyleOption() fills in, for a slider that is not ours to
// call it on (the option is needed to hit-test a tool tip on behalf of it).
VEL_QT_WIDGETS_EXPORT void initSliderStyleOption(const QSlider *slider, QStyleOptionSlider *option);

// Writes "<function>( a , b ) <reason>" through qWarning, the same shape as
// the single-step warning, for calls that are rejected.
void warnIgnored(const char *function, std::initializer_list<double> arguments, const char *reason);

extern const char *const notANumberReason;
extern const char *const notFiniteReason;
extern const char *const restoredRangeReason;

} // namespace CMwQStepMapping

/*!
    The private data both floating-point sliders share: the double range, the
    single step, the value proxy and the tick items, with the algorithms that
    work on them alone. What differs (one value or two handles, each with its
    own offset) is left to the subclasses through the hooks below.
*/
class VEL_QT_WIDGETS_EXPORT CMwQStepMappedSliderPrivate
{
public:
    // \a className prefixes the warnings, e.g. "CMwQDoubleSlider".
    explicit CMwQStepMappedSliderPrivate(const char *className);
    virtual ~CMwQStepMappedSliderPrivate();

    // Puts the inner slider into a margin-less layout on the widget, takes
    // its range and step, and its size policy as the widget's default one.
    void embedInnerSlider();

    // The step mapping with this slider's step and range.
    int toInteger(double v) const;
    double fromInteger(int i, double offset) const;
    double safeFromInteger(int i, double offset) const;
    double offsetFor(double v) const;
    double toSliderUnits(double value) const;
    double toValue(double sliderUnits) const;
    // toSliderUnits() for the public setters: false (after a warning naming
    // \a function) when a value has no place in slider units.
    bool mapToSliderUnits(const char *function, double value, double *units) const;
    bool mapToSliderUnits(const char *function, double a, double b, double *unitsA,
                          double *unitsB) const;
    // Moves far below one step are rounding noise of the mapping (or of a
    // proxy's round trip): applied, but not announced.
    bool movedBeyondNoise(double now, double before) const;

    // The ends in public units, ordered after mapping, so that a decreasing
    // proxy still gives minimum() <= maximum().
    double publicMinimum() const;
    double publicMaximum() const;
    void setPublicMinimum(double end);
    void setPublicMaximum(double end);

    // The steps of setRange() that do not depend on the values: maps and
    // orders the ends, stores them, lets followRange() move the offsets and
    // re-ranges the inner slider. Returns false (after a warning) when the
    // range is refused; \a announce tells whether rangeChanged() is due.
    bool setRange(double min, double max, bool *announce);
    // After a change of mapping that the public range could not follow: the
    // ends kept in slider units are pulled in to where they still stand for
    // finite values, through the public setRange().
    void keepEndsFinite();
    // The inner slider's range from ours, without reacting to its report.
    void applyInnerRange();
    // Follows a range change made on the inner slider from outside; the two
    // ends are mapped back with the given offsets.
    void innerRangeChanged(int min, int max, double minimumOffset, double maximumOffset);

    bool isValidStep(double step) const;
    // isValidStep(), with the warning when it is not.
    bool acceptsSingleStep(double step) const;

    double tickInterval() const;
    void setTickInterval(double interval);
    void setTickItemList(const CMwQDoubleSlider::TMwTickItemList &list);
    void rebuildTickItems();

    void setOrientation(Qt::Orientation orientation);

    // The value-proxy protocol: the public range and values are kept as
    // dynamic properties of the inner slider before the mapping changes and
    // re-applied through the new mapping after it, without any signal.
    void setValueProxy(CMwQValueProxy *proxy);
    void saveInputs();
    void reapplyInputs();

    // CMwQStepMapping::warnIgnored() for "<className>::<function>".
    void warnRejected(const char *function, std::initializer_list<double> arguments,
                      const char *reason) const;

    // The owning widget; each subclass's Q_DECLARE_PUBLIC casts it back.
    QWidget *q_ptr = nullptr;
    const char *const className;
    double minimum = 0.0;
    double maximum = 100.0;
    bool settingRange = false;
    double singleStep = 1.0;
    CMwQDoubleSlider::TMwTickItemList tickItems;
    QPointer<CMwQValueProxy> valueProxy;
    QString handleToolTip;

protected:
    virtual CMwQSlider *innerSlider() const = 0;
    // The public setRange() of the widget, in public units.
    virtual void applyPublicRange(double min, double max) = 0;
    // Within setRange(): moves the offsets of values the new range cuts off.
    virtual void followRange() = 0;
    // The value side of saveInputs() and reapplyInputs().
    virtual void saveValues() = 0;
    virtual void reapplyValues() = 0;
};

#endif // VEL_QT_WIDGETS_CMWQSTEPMAPPING_P_H
