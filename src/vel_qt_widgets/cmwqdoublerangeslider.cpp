#include "cmwqdoublerangeslider_p.h"

#include "cmwqstepmapping_p.h"

#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtCore/QDebug>
#include <QtGui/QHelpEvent>
#include <QtWidgets/QLayout>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <cmath>

using namespace CMwQStepMapping;

CMwQDoubleRangeSliderPrivate::CMwQDoubleRangeSliderPrivate()
    : CMwQStepMappedSliderPrivate("CMwQDoubleRangeSlider")
{
}

CMwQDoubleRangeSliderPrivate::~CMwQDoubleRangeSliderPrivate() = default;

void CMwQDoubleRangeSliderPrivate::init()
{
    Q_Q(CMwQDoubleRangeSlider);
    slider = new CMwQRangeSlider(q);
    embedInnerSlider();
    minimumValue = slider->minimumValue();
    maximumValue = slider->maximumValue();
    connectSlider();
}

void CMwQDoubleRangeSliderPrivate::connectSlider()
{
    Q_Q(CMwQDoubleRangeSlider);
    QObject::connect(slider, SIGNAL(valuesChanged(int,int)), q, SLOT(onValuesChanged(int,int)));
    QObject::connect(slider, SIGNAL(minimumPositionChanged(int)), q, SLOT(onMinPosChanged(int)));
    QObject::connect(slider, SIGNAL(maximumPositionChanged(int)), q, SLOT(onMaxPosChanged(int)));
    QObject::connect(slider, SIGNAL(positionsChanged(int,int)), q, SLOT(onPositionsChanged(int,int)));
    QObject::connect(slider, SIGNAL(sliderPressed()), q, SIGNAL(sliderPressed()));
    QObject::connect(slider, SIGNAL(sliderReleased()), q, SIGNAL(sliderReleased()));
    QObject::connect(slider, SIGNAL(rangeChanged(int,int)), q, SLOT(onRangeChanged(int,int)));
    // The widget's own handle tool tip speaks in public units, ahead of the
    // inner slider's integer one.
    slider->installEventFilter(q);
}

QPair<double, double> CMwQDoubleRangeSliderPrivate::handleValues(int lower, int upper) const
{
    double lo = safeFromInteger(lower, minimumOffset);
    double hi = safeFromInteger(upper, maximumOffset);
    // When the integer slider brings both handles onto one step, their own
    // fractions could put the lower one above the upper one; they meet halfway
    // instead, so that the lower value never exceeds the upper one.
    if (lo > hi)
        lo = hi = lo / 2 + hi / 2;
    return qMakePair(lo, hi);
}

QWidget *CMwQDoubleRangeSliderPrivate::widget() const
{
    return q_ptr;
}

CMwQSlider *CMwQDoubleRangeSliderPrivate::innerSlider() const
{
    return slider;
}

void CMwQDoubleRangeSliderPrivate::applyPublicRange(double min, double max)
{
    Q_Q(CMwQDoubleRangeSlider);
    q->setRange(min, max);
}

void CMwQDoubleRangeSliderPrivate::followRange()
{
    // A handle cut off by the new range takes the fraction of the end it is
    // pushed onto; the order of these four matters when the range is empty.
    if (minimumValue <= minimum)
        minimumOffset = offsetFor(minimum);
    if (maximumValue <= minimum)
        maximumOffset = offsetFor(minimum);
    if (maximum <= minimumValue)
        minimumOffset = offsetFor(maximum);
    if (maximum <= maximumValue)
        maximumOffset = offsetFor(maximum);
}

void CMwQDoubleRangeSliderPrivate::saveValues()
{
    Q_Q(CMwQDoubleRangeSlider);
    slider->setProperty("inputMinimumValue", q->minimumValue());
    slider->setProperty("inputMaximumValue", q->maximumValue());
}

void CMwQDoubleRangeSliderPrivate::reapplyValues()
{
    Q_Q(CMwQDoubleRangeSlider);
    q->setValues(slider->property("inputMinimumValue").toDouble(),
                 slider->property("inputMaximumValue").toDouble());
}

CMwQDoubleRangeSlider::CMwQDoubleRangeSlider(QWidget *parent)
    : CMwQDoubleRangeSlider(new CMwQDoubleRangeSliderPrivate, parent)
{
}

CMwQDoubleRangeSlider::CMwQDoubleRangeSlider(Qt::Orientation orientation, QWidget *parent)
    : CMwQDoubleRangeSlider(new CMwQDoubleRangeSliderPrivate, orientation, parent)
{
}

CMwQDoubleRangeSlider::CMwQDoubleRangeSlider(CMwQDoubleRangeSliderPrivate *d, QWidget *parent)
    : QWidget(parent)
    , d_vel(d)
{
    d->q_ptr = this;
    d->init();
}

CMwQDoubleRangeSlider::CMwQDoubleRangeSlider(CMwQDoubleRangeSliderPrivate *d,
                                             Qt::Orientation orientation, QWidget *parent)
    : CMwQDoubleRangeSlider(d, parent)
{
    setOrientation(orientation);
}

CMwQDoubleRangeSlider::~CMwQDoubleRangeSlider() = default;

double CMwQDoubleRangeSlider::minimum() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->publicMinimum();
}

double CMwQDoubleRangeSlider::maximum() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->publicMaximum();
}

void CMwQDoubleRangeSlider::setMinimum(double minimum)
{
    Q_D(CMwQDoubleRangeSlider);
    d->setPublicMinimum(minimum);
}

void CMwQDoubleRangeSlider::setMaximum(double maximum)
{
    Q_D(CMwQDoubleRangeSlider);
    d->setPublicMaximum(maximum);
}

void CMwQDoubleRangeSlider::setRange(double min, double max)
{
    Q_D(CMwQDoubleRangeSlider);
    bool announce = false;
    if (!d->setRange(min, max, &announce))
        return;
    if (announce)
        Q_EMIT rangeChanged(minimum(), maximum());

    // When a handle's integer survives the new range the inner slider reports
    // nothing, yet its double value may now lie outside; read it back then.
    if (d->minimumValue < d->minimum || d->maximumValue > d->maximum
        || d->maximumValue < d->minimum || d->minimumValue > d->maximum)
        onValuesChanged(d->slider->minimumValue(), d->slider->maximumValue());
}

double CMwQDoubleRangeSlider::singleStep() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->singleStep;
}

void CMwQDoubleRangeSlider::setSingleStep(double step)
{
    Q_D(CMwQDoubleRangeSlider);
    if (!d->acceptsSingleStep(step))
        return;
    const double lowEnd = minimum();
    const double highEnd = maximum();
    const double lower = minimumValue();
    const double upper = maximumValue();

    d->singleStep = step;
    // Nothing changes in public units, so nothing is announced; the inner
    // slider's own signals still flow so that the stored values follow it.
    const bool wasBlocked = blockSignals(true);
    d->minimumOffset = d->offsetFor(d->minimumValue);
    d->maximumOffset = d->offsetFor(d->maximumValue);
    setRange(lowEnd, highEnd);
    setValues(lower, upper);
    setPositions(lower, upper);
    blockSignals(wasBlocked);
}

bool CMwQDoubleRangeSlider::isValidStep(double step) const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->isValidStep(step);
}

double CMwQDoubleRangeSlider::minimumValue() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->toValue(d->minimumValue);
}

double CMwQDoubleRangeSlider::maximumValue() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->toValue(d->maximumValue);
}

void CMwQDoubleRangeSlider::setValues(double minVal, double maxVal)
{
    Q_D(CMwQDoubleRangeSlider);
    const double a = d->toSliderUnits(minVal);
    const double b = d->toSliderUnits(maxVal);
    if (std::isnan(a) || std::isnan(b)) {
        warnIgnored("CMwQDoubleRangeSlider::setValues", {minVal, maxVal}, notANumberReason);
        return;
    }
    const double lo = qBound(d->minimum, std::min(a, b), d->maximum);
    const double hi = qBound(d->minimum, std::max(a, b), d->maximum);
    d->minimumOffset = d->offsetFor(lo);
    d->maximumOffset = d->offsetFor(hi);
    const int li = d->toInteger(lo);
    const int ui = d->toInteger(hi);

    if (li != d->slider->minimumValue() || ui != d->slider->maximumValue()) {
        // onValuesChanged() stores the values and emits.
        d->slider->setValues(li, ui);
        return;
    }

    const double oldLower = d->minimumValue;
    const double oldUpper = d->maximumValue;
    d->minimumValue = lo;
    d->maximumValue = hi;
    // Moves far below one step are rounding noise: applied, not announced.
    const double noise = d->singleStep * 1e-9;
    const bool lowerChanged = std::abs(lo - oldLower) > noise;
    const bool upperChanged = std::abs(hi - oldUpper) > noise;
    if (lowerChanged || upperChanged)
        Q_EMIT valuesChanged(minimumValue(), maximumValue());
    if (lowerChanged)
        Q_EMIT minimumValueChanged(minimumValue());
    if (upperChanged)
        Q_EMIT maximumValueChanged(maximumValue());
}

void CMwQDoubleRangeSlider::setMinimumValue(double minVal)
{
    Q_D(CMwQDoubleRangeSlider);
    double v = d->toSliderUnits(minVal);
    if (std::isnan(v)) {
        warnIgnored("CMwQDoubleRangeSlider::setMinimumValue", {minVal}, notANumberReason);
        return;
    }
    v = qBound(d->minimum, v, d->maximum);
    d->minimumOffset = d->offsetFor(v);
    if (d->maximumValue <= v)
        d->maximumOffset = d->offsetFor(v);
    const int n = d->toInteger(v);
    if (n != d->slider->minimumValue()) {
        d->slider->setMinimumValue(n);
        return;
    }

    const double oldLower = d->minimumValue;
    const double oldUpper = d->maximumValue;
    d->minimumValue = v;
    // Within one step the integer slider cannot push the upper handle, so it
    // gives way here, as it would have through the integer slider.
    if (d->maximumValue < v)
        d->maximumValue = v;
    const double noise = d->singleStep * 1e-9;
    const bool lowerChanged = std::abs(v - oldLower) > noise;
    const bool upperChanged = std::abs(d->maximumValue - oldUpper) > noise;
    if (lowerChanged || upperChanged)
        Q_EMIT valuesChanged(minimumValue(), maximumValue());
    if (lowerChanged)
        Q_EMIT minimumValueChanged(minimumValue());
    if (upperChanged)
        Q_EMIT maximumValueChanged(maximumValue());
}

void CMwQDoubleRangeSlider::setMaximumValue(double maxVal)
{
    Q_D(CMwQDoubleRangeSlider);
    double v = d->toSliderUnits(maxVal);
    if (std::isnan(v)) {
        warnIgnored("CMwQDoubleRangeSlider::setMaximumValue", {maxVal}, notANumberReason);
        return;
    }
    v = qBound(d->minimum, v, d->maximum);
    d->maximumOffset = d->offsetFor(v);
    if (v <= d->minimumValue)
        d->minimumOffset = d->offsetFor(v);
    const int n = d->toInteger(v);
    if (n != d->slider->maximumValue()) {
        d->slider->setMaximumValue(n);
        return;
    }

    const double oldLower = d->minimumValue;
    const double oldUpper = d->maximumValue;
    d->maximumValue = v;
    // The mirror image of setMinimumValue(): the lower handle gives way.
    if (v < d->minimumValue)
        d->minimumValue = v;
    const double noise = d->singleStep * 1e-9;
    const bool lowerChanged = std::abs(d->minimumValue - oldLower) > noise;
    const bool upperChanged = std::abs(v - oldUpper) > noise;
    if (lowerChanged || upperChanged)
        Q_EMIT valuesChanged(minimumValue(), maximumValue());
    if (lowerChanged)
        Q_EMIT minimumValueChanged(minimumValue());
    if (upperChanged)
        Q_EMIT maximumValueChanged(maximumValue());
}

double CMwQDoubleRangeSlider::minimumPosition() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->toValue(d->handleValues(d->slider->minimumPosition(), d->slider->maximumPosition()).first);
}

double CMwQDoubleRangeSlider::maximumPosition() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->toValue(d->handleValues(d->slider->minimumPosition(), d->slider->maximumPosition()).second);
}

void CMwQDoubleRangeSlider::setMinimumPosition(double position)
{
    Q_D(CMwQDoubleRangeSlider);
    const double v = d->toSliderUnits(position);
    if (std::isnan(v)) {
        warnIgnored("CMwQDoubleRangeSlider::setMinimumPosition", {position}, notANumberReason);
        return;
    }
    d->slider->setMinimumPosition(d->toInteger(v));
}

void CMwQDoubleRangeSlider::setMaximumPosition(double position)
{
    Q_D(CMwQDoubleRangeSlider);
    const double v = d->toSliderUnits(position);
    if (std::isnan(v)) {
        warnIgnored("CMwQDoubleRangeSlider::setMaximumPosition", {position}, notANumberReason);
        return;
    }
    d->slider->setMaximumPosition(d->toInteger(v));
}

void CMwQDoubleRangeSlider::setPositions(double minPosition, double maxPosition)
{
    Q_D(CMwQDoubleRangeSlider);
    const double a = d->toSliderUnits(minPosition);
    const double b = d->toSliderUnits(maxPosition);
    if (std::isnan(a) || std::isnan(b)) {
        warnIgnored("CMwQDoubleRangeSlider::setPositions", {minPosition, maxPosition},
                    notANumberReason);
        return;
    }
    d->slider->setPositions(d->toInteger(a), d->toInteger(b));
}

bool CMwQDoubleRangeSlider::hasTracking() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->slider->hasTracking();
}

void CMwQDoubleRangeSlider::setTracking(bool enable)
{
    Q_D(CMwQDoubleRangeSlider);
    d->slider->setTracking(enable);
}

Qt::Orientation CMwQDoubleRangeSlider::orientation() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->slider->orientation();
}

void CMwQDoubleRangeSlider::setOrientation(Qt::Orientation orientation)
{
    Q_D(CMwQDoubleRangeSlider);
    d->setOrientation(orientation);
}

double CMwQDoubleRangeSlider::tickInterval() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->tickInterval();
}

void CMwQDoubleRangeSlider::setTickInterval(double interval)
{
    Q_D(CMwQDoubleRangeSlider);
    d->setTickInterval(interval);
}

QSlider::TickPosition CMwQDoubleRangeSlider::tickPosition() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->slider->tickPosition();
}

void CMwQDoubleRangeSlider::setTickPosition(QSlider::TickPosition position)
{
    Q_D(CMwQDoubleRangeSlider);
    d->slider->setTickPosition(position);
}

CMwQDoubleRangeSlider::TMwTickItemList CMwQDoubleRangeSlider::tickItemList() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->tickItems;
}

void CMwQDoubleRangeSlider::setTickItemList(const TMwTickItemList &list)
{
    Q_D(CMwQDoubleRangeSlider);
    d->setTickItemList(list);
}

bool CMwQDoubleRangeSlider::symmetricMoves() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->slider->symmetricMoves();
}

void CMwQDoubleRangeSlider::setSymmetricMoves(bool symmetric)
{
    Q_D(CMwQDoubleRangeSlider);
    d->slider->setSymmetricMoves(symmetric);
}

QString CMwQDoubleRangeSlider::handleToolTip() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->handleToolTip;
}

void CMwQDoubleRangeSlider::setHandleToolTip(const QString &toolTip)
{
    Q_D(CMwQDoubleRangeSlider);
    d->handleToolTip = toolTip;
}

void CMwQDoubleRangeSlider::triggerAction(QAbstractSlider::SliderAction action)
{
    Q_D(CMwQDoubleRangeSlider);
    d->slider->triggerAction(action);
}

CMwQValueProxy *CMwQDoubleRangeSlider::valueProxy() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->valueProxy.data();
}

void CMwQDoubleRangeSlider::setValueProxy(CMwQValueProxy *proxy)
{
    Q_D(CMwQDoubleRangeSlider);
    d->setValueProxy(proxy);
}

CMwQRangeSlider *CMwQDoubleRangeSlider::slider() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->slider;
}

void CMwQDoubleRangeSlider::setSlider(CMwQRangeSlider *newSlider)
{
    Q_D(CMwQDoubleRangeSlider);
    if (!newSlider) {
        qWarning() << "CMwQDoubleRangeSlider::setSlider: a null slider is ignored.";
        return;
    }
    if (newSlider == d->slider)
        return;

    CMwQRangeSlider *old = d->slider;
    newSlider->setOrientation(old->orientation());
    newSlider->setMinimum(old->minimum());
    newSlider->setMaximum(old->maximum());
    newSlider->setValues(old->minimumValue(), old->maximumValue());
    newSlider->setSingleStep(old->singleStep());
    newSlider->setTracking(old->hasTracking());
    newSlider->setTickInterval(old->tickInterval());
    newSlider->setTickPosition(old->tickPosition());
    // The handle tool tip and the symmetric moves belong to the old slider
    // and go with it.
    delete old;

    layout()->addWidget(newSlider);
    d->slider = newSlider;
    d->connectSlider();
    // tickItemList() is the widget's; the new slider must draw it too.
    d->rebuildTickItems();
}

void CMwQDoubleRangeSlider::onValuesChanged(int min, int max)
{
    Q_D(CMwQDoubleRangeSlider);
    const QPair<double, double> values = d->handleValues(min, max);
    const bool lowerChanged = values.first != d->minimumValue;
    const bool upperChanged = values.second != d->maximumValue;
    if (!lowerChanged && !upperChanged)
        return;
    d->minimumValue = values.first;
    d->maximumValue = values.second;
    // The pair first, then the single sides; listeners rely on this order.
    Q_EMIT valuesChanged(minimumValue(), maximumValue());
    if (lowerChanged)
        Q_EMIT minimumValueChanged(minimumValue());
    if (upperChanged)
        Q_EMIT maximumValueChanged(maximumValue());
}

// Positions are reported in public units, unlike CMwQDoubleSlider::sliderMoved().
void CMwQDoubleRangeSlider::onMinPosChanged(int value)
{
    Q_D(CMwQDoubleRangeSlider);
    Q_EMIT minimumPositionChanged(d->toValue(d->handleValues(value, d->slider->maximumPosition()).first));
}

void CMwQDoubleRangeSlider::onMaxPosChanged(int value)
{
    Q_D(CMwQDoubleRangeSlider);
    Q_EMIT maximumPositionChanged(d->toValue(d->handleValues(d->slider->minimumPosition(), value).second));
}

void CMwQDoubleRangeSlider::onPositionsChanged(int min, int max)
{
    Q_D(CMwQDoubleRangeSlider);
    const QPair<double, double> positions = d->handleValues(min, max);
    Q_EMIT positionsChanged(d->toValue(positions.first), d->toValue(positions.second));
}

void CMwQDoubleRangeSlider::onRangeChanged(int min, int max)
{
    Q_D(CMwQDoubleRangeSlider);
    d->innerRangeChanged(min, max, d->minimumOffset, d->maximumOffset);
}

void CMwQDoubleRangeSlider::onValueProxyAboutToBeModified()
{
    Q_D(CMwQDoubleRangeSlider);
    d->saveInputs();
}

void CMwQDoubleRangeSlider::onValueProxyModified()
{
    Q_D(CMwQDoubleRangeSlider);
    d->reapplyInputs();
}

bool CMwQDoubleRangeSlider::eventFilter(QObject *watched, QEvent *event)
{
    Q_D(CMwQDoubleRangeSlider);
    if (watched == d->slider && event->type() == QEvent::ToolTip && !d->handleToolTip.isEmpty()) {
        auto *helpEvent = static_cast<QHelpEvent *>(event);
        QStyleOptionSlider option;
        initSliderStyleOption(d->slider, &option);
        const QStyle *style = d->slider->style();
        // Each handle in turn, lower first, at its own position.
        option.sliderPosition = d->slider->minimumPosition();
        option.sliderValue = d->slider->minimumValue();
        double shown = minimumValue();
        QStyle::SubControl hit =
            style->hitTestComplexControl(QStyle::CC_Slider, &option, helpEvent->pos(), d->slider);
        if (hit != QStyle::SC_SliderHandle) {
            option.sliderPosition = d->slider->maximumPosition();
            option.sliderValue = d->slider->maximumValue();
            shown = maximumValue();
            hit = style->hitTestComplexControl(QStyle::CC_Slider, &option, helpEvent->pos(), d->slider);
        }
        if (hit == QStyle::SC_SliderHandle) {
            QToolTip::showText(helpEvent->globalPos(),
                               d->handleToolTip.arg(shown, 0, 'g', -1, QLatin1Char(' ')));
            event->accept();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
