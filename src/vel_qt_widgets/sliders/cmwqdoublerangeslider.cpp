#include "cmwqdoublerangeslider_p.h"

#include "cmwqrangeslider_p.h"
#include "cmwqslider_p.h"
#include "cmwqslideraccessibility_p.h"
#include "cmwqstepmappedslider_p.h"
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
    QObject::connect(slider, SIGNAL(valuesChanged(int, int)), q, SLOT(onValuesChanged(int, int)));
    QObject::connect(slider, SIGNAL(minimumPositionChanged(int)), q, SLOT(onMinPosChanged(int)));
    QObject::connect(slider, SIGNAL(maximumPositionChanged(int)), q, SLOT(onMaxPosChanged(int)));
    QObject::connect(
        slider, SIGNAL(positionsChanged(int, int)), q, SLOT(onPositionsChanged(int, int)));
    QObject::connect(slider, SIGNAL(sliderPressed()), q, SIGNAL(sliderPressed()));
    QObject::connect(slider, SIGNAL(sliderReleased()), q, SIGNAL(sliderReleased()));
    QObject::connect(slider, SIGNAL(rangeChanged(int, int)), q, SLOT(onRangeChanged(int, int)));
    // Assistive technology sees this widget, not the inner slider.
    CMwQRangeSliderPrivate::get(slider)->outerWidget = q;
    // The widget's own handle tool tip speaks in public units, ahead of the
    // inner slider's integer one.
    slider->installEventFilter(q);
    // The widget the application placed takes the focus for its slider.
    q->setFocusPolicy(slider->focusPolicy());
    q->setFocusProxy(slider);
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

void CMwQDoubleRangeSliderPrivate::setHandleValue(Handle handle, double value)
{
    const bool lower = handle == LowerHandle;
    double v = 0.0;
    if (!mapToSliderUnits(lower ? "setMinimumValue" : "setMaximumValue", value, &v))
        return;
    v = qBound(minimum, v, maximum);
    double &ownValue = lower ? minimumValue : maximumValue;
    double &otherValue = lower ? maximumValue : minimumValue;
    double &ownOffset = lower ? minimumOffset : maximumOffset;
    double &otherOffset = lower ? maximumOffset : minimumOffset;

    ownOffset = offsetFor(v);
    // A handle that v reaches is pushed onto it and takes its fraction.
    if (lower ? otherValue <= v : v <= otherValue)
        otherOffset = offsetFor(v);
    const int n = toInteger(v);
    if (n != (lower ? slider->minimumValue() : slider->maximumValue())) {
        // onValuesChanged() stores the values and emits.
        if (lower)
            slider->setMinimumValue(n);
        else
            slider->setMaximumValue(n);
        return;
    }

    const double oldLower = minimumValue;
    const double oldUpper = maximumValue;
    ownValue = v;
    // Within one step the integer slider cannot push the other handle, so it
    // gives way here, as it would have through the integer slider.
    if (lower ? otherValue < v : v < otherValue)
        otherValue = v;
    announceValues(
        movedBeyondNoise(minimumValue, oldLower), movedBeyondNoise(maximumValue, oldUpper));
}

void CMwQDoubleRangeSliderPrivate::setHandlePosition(Handle handle, double position)
{
    const bool lower = handle == LowerHandle;
    double v = 0.0;
    if (!mapToSliderUnits(lower ? "setMinimumPosition" : "setMaximumPosition", position, &v))
        return;
    if (lower)
        slider->setMinimumPosition(toInteger(v));
    else
        slider->setMaximumPosition(toInteger(v));
}

void CMwQDoubleRangeSliderPrivate::announceValues(bool lowerChanged, bool upperChanged)
{
    Q_Q(CMwQDoubleRangeSlider);
    // The pair first, then the single sides; listeners rely on this order.
    if (lowerChanged || upperChanged)
        Q_EMIT q->valuesChanged(q->minimumValue(), q->maximumValue());
    if (lowerChanged)
        Q_EMIT q->minimumValueChanged(q->minimumValue());
    if (upperChanged)
        Q_EMIT q->maximumValueChanged(q->maximumValue());
    if (lowerChanged || upperChanged)
        CMwQSliderAccessibility::handleValuesChanged(
            q, lowerChanged, q->minimumValue(), upperChanged, q->maximumValue());
}

void CMwQDoubleRangeSliderPrivate::rebuildTickItems() { setInnerTickItems(tickItems); }

CMwQSlider *CMwQDoubleRangeSliderPrivate::innerSlider() const { return slider; }

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

CMwQDoubleRangeSlider::CMwQDoubleRangeSlider(
    CMwQDoubleRangeSliderPrivate *d, Qt::Orientation orientation, QWidget *parent)
    : CMwQDoubleRangeSlider(d, parent)
{
    setOrientation(orientation);
}

CMwQDoubleRangeSlider::~CMwQDoubleRangeSlider() = default;

VEL_STEP_MAPPED_SLIDER_SURFACE(CMwQDoubleRangeSlider)

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
    if (d->minimumValue < d->minimum || d->maximumValue > d->maximum || d->maximumValue < d->minimum
        || d->minimumValue > d->maximum)
        onValuesChanged(d->slider->minimumValue(), d->slider->maximumValue());
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
    // Should the range have been refused in values, the inner slider still
    // takes the stored one with the new step.
    d->applyInnerRange();
    setValues(lower, upper);
    setPositions(lower, upper);
    blockSignals(wasBlocked);
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
    double a = 0.0;
    double b = 0.0;
    if (!d->mapToSliderUnits("setValues", minVal, maxVal, &a, &b))
        return;
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
    d->announceValues(d->movedBeyondNoise(lo, oldLower), d->movedBeyondNoise(hi, oldUpper));
}

void CMwQDoubleRangeSlider::setMinimumValue(double minVal)
{
    Q_D(CMwQDoubleRangeSlider);
    d->setHandleValue(CMwQDoubleRangeSliderPrivate::LowerHandle, minVal);
}

void CMwQDoubleRangeSlider::setMaximumValue(double maxVal)
{
    Q_D(CMwQDoubleRangeSlider);
    d->setHandleValue(CMwQDoubleRangeSliderPrivate::UpperHandle, maxVal);
}

double CMwQDoubleRangeSlider::minimumPosition() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->toValue(
        d->handleValues(d->slider->minimumPosition(), d->slider->maximumPosition()).first);
}

double CMwQDoubleRangeSlider::maximumPosition() const
{
    Q_D(const CMwQDoubleRangeSlider);
    return d->toValue(
        d->handleValues(d->slider->minimumPosition(), d->slider->maximumPosition()).second);
}

void CMwQDoubleRangeSlider::setMinimumPosition(double position)
{
    Q_D(CMwQDoubleRangeSlider);
    d->setHandlePosition(CMwQDoubleRangeSliderPrivate::LowerHandle, position);
}

void CMwQDoubleRangeSlider::setMaximumPosition(double position)
{
    Q_D(CMwQDoubleRangeSlider);
    d->setHandlePosition(CMwQDoubleRangeSliderPrivate::UpperHandle, position);
}

void CMwQDoubleRangeSlider::setPositions(double minPosition, double maxPosition)
{
    Q_D(CMwQDoubleRangeSlider);
    double a = 0.0;
    double b = 0.0;
    if (!d->mapToSliderUnits("setPositions", minPosition, maxPosition, &a, &b))
        return;
    d->slider->setPositions(d->toInteger(a), d->toInteger(b));
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
    d->announceValues(lowerChanged, upperChanged);
}

// Positions are reported in public units, unlike CMwQDoubleSlider::sliderMoved().
void CMwQDoubleRangeSlider::onMinPosChanged(int value)
{
    Q_D(CMwQDoubleRangeSlider);
    Q_EMIT minimumPositionChanged(
        d->toValue(d->handleValues(value, d->slider->maximumPosition()).first));
}

void CMwQDoubleRangeSlider::onMaxPosChanged(int value)
{
    Q_D(CMwQDoubleRangeSlider);
    Q_EMIT maximumPositionChanged(
        d->toValue(d->handleValues(d->slider->minimumPosition(), value).second));
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

bool CMwQDoubleRangeSlider::eventFilter(QObject *watched, QEvent *event)
{
    Q_D(CMwQDoubleRangeSlider);
    if (watched == d->slider && event->type() == QEvent::ToolTip && !d->handleToolTip.isEmpty()) {
        auto *helpEvent = static_cast<QHelpEvent *>(event);
        QStyleOptionSlider option;
        CMwQSliderPrivate::get(d->slider)->initStyleOption(&option);
        const QStyle *style = d->slider->style();
        // Each handle in turn, lower first, at its own position.
        option.sliderPosition = d->slider->minimumPosition();
        option.sliderValue = d->slider->minimumValue();
        QStyleOptionSlider fitted = option;
        CMwQSliderGeometry::fitStyleOption(&fitted);
        double shown = minimumValue();
        QStyle::SubControl hit
            = style->hitTestComplexControl(QStyle::CC_Slider, &fitted, helpEvent->pos(), d->slider);
        if (hit != QStyle::SC_SliderHandle) {
            option.sliderPosition = d->slider->maximumPosition();
            option.sliderValue = d->slider->maximumValue();
            shown = maximumValue();
            fitted = option;
            CMwQSliderGeometry::fitStyleOption(&fitted);
            hit = style->hitTestComplexControl(
                QStyle::CC_Slider, &fitted, helpEvent->pos(), d->slider);
        }
        if (hit == QStyle::SC_SliderHandle) {
            QToolTip::showText(
                helpEvent->globalPos(), d->handleToolTip.arg(shown, 0, 'g', -1, QLatin1Char(' ')));
            event->accept();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
