#include "cmwqstepmappedslider_p.h"

#include <QtCore/QDebug>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QWidget>

#include <algorithm>

CMwQStepMappedSliderPrivate::CMwQStepMappedSliderPrivate(const char *name)
    : className(name)
{
}

CMwQStepMappedSliderPrivate::~CMwQStepMappedSliderPrivate() = default;

void CMwQStepMappedSliderPrivate::embedInnerSlider()
{
    QWidget *q = q_ptr;
    CMwQSlider *inner = innerSlider();
    auto *layout = new QHBoxLayout(q);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(inner);

    minimum = inner->minimum();
    maximum = inner->maximum();
    singleStep = inner->singleStep();

    // The slider's policy becomes ours but still counts as the default, so
    // that setOrientation() keeps transposing it.
    q->setSizePolicy(inner->sizePolicy());
    q->setAttribute(Qt::WA_WState_OwnSizePolicy, false);
}

int CMwQStepMappedSliderPrivate::toInteger(double v) const
{
    return CMwQStepMapping::toInteger(v, singleStep);
}

double CMwQStepMappedSliderPrivate::fromInteger(int i, double offset) const
{
    return CMwQStepMapping::fromInteger(i, offset, singleStep);
}

double CMwQStepMappedSliderPrivate::safeFromInteger(int i, double offset) const
{
    return CMwQStepMapping::safeFromInteger(i, offset, singleStep, minimum, maximum);
}

double CMwQStepMappedSliderPrivate::offsetFor(double v) const
{
    return CMwQStepMapping::offsetFor(v, singleStep);
}

double CMwQStepMappedSliderPrivate::toSliderUnits(double value) const
{
    return CMwQStepMapping::toSliderUnits(valueProxy, value);
}

double CMwQStepMappedSliderPrivate::toValue(double sliderUnits) const
{
    return CMwQStepMapping::toValue(valueProxy, sliderUnits);
}

bool CMwQStepMappedSliderPrivate::mapToSliderUnits(
    const char *function, double value, double *units) const
{
    *units = toSliderUnits(value);
    if (!std::isnan(*units))
        return true;
    warnRejected(function, {value}, CMwQStepMapping::notANumberReason);
    return false;
}

bool CMwQStepMappedSliderPrivate::mapToSliderUnits(
    const char *function, double a, double b, double *unitsA, double *unitsB) const
{
    *unitsA = toSliderUnits(a);
    *unitsB = toSliderUnits(b);
    if (!std::isnan(*unitsA) && !std::isnan(*unitsB))
        return true;
    warnRejected(function, {a, b}, CMwQStepMapping::notANumberReason);
    return false;
}

bool CMwQStepMappedSliderPrivate::movedBeyondNoise(double now, double before) const
{
    return std::abs(now - before) > singleStep * 1e-9;
}

double CMwQStepMappedSliderPrivate::publicMinimum() const
{
    return std::min(toValue(minimum), toValue(maximum));
}

double CMwQStepMappedSliderPrivate::publicMaximum() const
{
    return std::max(toValue(minimum), toValue(maximum));
}

void CMwQStepMappedSliderPrivate::setPublicMinimum(double end)
{
    if (!std::isfinite(toSliderUnits(end))) {
        warnRejected("setMinimum", {end}, CMwQStepMapping::notFiniteReason);
        return;
    }
    applyPublicRange(end, std::max(publicMaximum(), end));
}

void CMwQStepMappedSliderPrivate::setPublicMaximum(double end)
{
    if (!std::isfinite(toSliderUnits(end))) {
        warnRejected("setMaximum", {end}, CMwQStepMapping::notFiniteReason);
        return;
    }
    applyPublicRange(std::min(publicMinimum(), end), end);
}

bool CMwQStepMappedSliderPrivate::setRange(double min, double max, bool *announce)
{
    double lo = toSliderUnits(min);
    double hi = toSliderUnits(max);
    // An infinite end has no integer to stand on and would turn the offsets
    // into NaN; such a range is refused as a whole. So is one whose finite
    // ends a proxy maps back to infinite values (10^400, DBL_MAX rounded up).
    if (!std::isfinite(lo) || !std::isfinite(hi) || !std::isfinite(toValue(lo))
        || !std::isfinite(toValue(hi))) {
        warnRejected("setRange", {min, max}, CMwQStepMapping::notFiniteReason);
        return false;
    }
    if (lo > hi)
        std::swap(lo, hi);

    const double oldMinimum = minimum;
    const double oldMaximum = maximum;
    minimum = lo;
    maximum = hi;
    followRange();

    const bool wasSettingRange = settingRange;
    applyInnerRange();
    *announce = !wasSettingRange && (oldMinimum != minimum || oldMaximum != maximum);
    return true;
}

void CMwQStepMappedSliderPrivate::keepEndsFinite()
{
    // A value in slider units that the mapping, both ways, keeps finite.
    const auto finite = [this](double units) {
        const double value = toValue(units);
        return std::isfinite(value) && std::isfinite(toSliderUnits(value))
            && std::isfinite(toValue(toSliderUnits(value)));
    };
    const bool lowFinite = finite(minimum);
    const bool highFinite = finite(maximum);
    if (lowFinite && highFinite)
        return;
    // Bisection from a finite point towards the end that is not, assuming a
    // monotonic mapping; without a finite end, 0 is tried as the anchor.
    const auto pullIn = [&finite](double bad, double good) {
        for (int i = 0; i < 2100; ++i) {
            const double middle = bad / 2 + good / 2;
            if (middle == bad || middle == good)
                break;
            (finite(middle) ? good : bad) = middle;
        }
        return good;
    };
    double lo = minimum;
    double hi = maximum;
    if (!lowFinite && !highFinite) {
        if (!finite(0.0))
            return;
        lo = pullIn(minimum, 0.0);
        hi = pullIn(maximum, 0.0);
    } else if (!lowFinite) {
        lo = pullIn(minimum, maximum);
    } else {
        hi = pullIn(maximum, minimum);
    }
    // The refused range has been reported already.
    applyPublicRange(toValue(lo), toValue(hi));
}

void CMwQStepMappedSliderPrivate::applyInnerRange()
{
    const bool wasSettingRange = settingRange;
    settingRange = true;
    innerSlider()->setRange(toInteger(minimum), toInteger(maximum));
    settingRange = wasSettingRange;
}

void CMwQStepMappedSliderPrivate::innerRangeChanged(
    int min, int max, double minimumOffset, double maximumOffset)
{
    if (settingRange)
        return;
    if (!CMwQStepMapping::isUsableStep(singleStep)) {
        // Without a usable step the inner units stand for no values.
        warnRejected(
            "onRangeChanged", {double(min), double(max)}, CMwQStepMapping::restoredRangeReason);
        applyInnerRange();
        return;
    }
    const double a = toValue(fromInteger(min, minimumOffset));
    const double b = toValue(fromInteger(max, maximumOffset));
    if (!std::isfinite(toSliderUnits(a)) || !std::isfinite(toSliderUnits(b))) {
        // A range with no finite double counterpart cannot be followed; the
        // inner slider is put back on ours so that the two never disagree.
        warnRejected(
            "onRangeChanged", {double(min), double(max)}, CMwQStepMapping::restoredRangeReason);
        applyInnerRange();
        return;
    }
    applyPublicRange(a, b);
}

bool CMwQStepMappedSliderPrivate::isValidStep(double step) const
{
    return CMwQStepMapping::isValidStep(step, minimum, maximum);
}

bool CMwQStepMappedSliderPrivate::acceptsSingleStep(double step) const
{
    // isValidStep() holds for any step on an empty range; a step that is not
    // finite is still refused, since no later range could use it.
    if (isValidStep(step) && std::isfinite(step))
        return true;
    qWarning() << (QByteArray(className) + "::setSingleStep(").constData() << step << ")"
               << "is outside of valid bounds.";
    return false;
}

double CMwQStepMappedSliderPrivate::tickInterval() const
{
    return innerSlider()->tickInterval() * singleStep;
}

void CMwQStepMappedSliderPrivate::setTickInterval(double interval)
{
    if (!std::isfinite(interval)) {
        warnRejected("setTickInterval", {interval}, CMwQStepMapping::notFiniteReason);
        return;
    }
    innerSlider()->setTickInterval(toInteger(interval));
}

void CMwQStepMappedSliderPrivate::setOrientation(Qt::Orientation orientation)
{
    QWidget *q = q_ptr;
    CMwQSlider *inner = innerSlider();
    if (orientation == inner->orientation())
        return;
    // Like QSlider: a default policy turns with the slider, one set by the
    // application stays as it was set.
    if (!q->testAttribute(Qt::WA_WState_OwnSizePolicy)) {
        QSizePolicy policy = q->sizePolicy();
        policy.transpose();
        q->setSizePolicy(policy);
        q->setAttribute(Qt::WA_WState_OwnSizePolicy, false);
    }
    inner->setOrientation(orientation);
}

void CMwQStepMappedSliderPrivate::setValueProxy(CMwQValueProxy *proxy)
{
    if (valueProxy == proxy)
        return;
    QWidget *q = q_ptr;
    saveInputs();
    if (valueProxy)
        QObject::disconnect(valueProxy.data(), nullptr, q, nullptr);
    valueProxy = proxy;
    if (proxy) {
        QObject::connect(
            proxy, SIGNAL(proxyAboutToBeModified()), q, SLOT(onValueProxyAboutToBeModified()));
        QObject::connect(proxy, SIGNAL(proxyModified()), q, SLOT(onValueProxyModified()));
    }
    reapplyInputs();
}

void CMwQStepMappedSliderPrivate::saveInputs()
{
    saveValues();
    innerSlider()->setProperty("inputMinimum", publicMinimum());
    innerSlider()->setProperty("inputMaximum", publicMaximum());
}

void CMwQStepMappedSliderPrivate::reapplyInputs()
{
    // The public range, values and ticks stay; the integer slider moves under
    // them, and nothing is announced.
    QWidget *q = q_ptr;
    const bool wasBlocked = q->blockSignals(true);
    const bool wasSettingRange = settingRange;
    settingRange = true;
    applyPublicRange(innerSlider()->property("inputMinimum").toDouble(),
        innerSlider()->property("inputMaximum").toDouble());
    keepEndsFinite();
    settingRange = wasSettingRange;
    reapplyValues();
    rebuildTickItems();
    q->blockSignals(wasBlocked);
}

void CMwQStepMappedSliderPrivate::warnRejected(
    const char *function, std::initializer_list<double> arguments, const char *reason) const
{
    CMwQStepMapping::warnIgnored(
        (QByteArray(className) + "::" + function).constData(), arguments, reason);
}
