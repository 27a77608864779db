#include "cmwqdoubleslider_p.h"

#include "cmwqstepmapping_p.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtCore/QDebug>
#include <QtGui/QHelpEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <cmath>

using namespace CMwQStepMapping;

namespace {

// The tick list is a property of both floating-point sliders (they share the
// item type), so it is registered under every name it is spelt with, with
// stream operators so that forms can store it.
void registerDoubleTickItemTypes()
{
    qRegisterMetaType<CMwQDoubleSlider::SMwTickItem>("CMwQDoubleSlider::SMwTickItem");
    qRegisterMetaType<CMwQDoubleSlider::TMwTickItemList>("CMwQDoubleSlider::TMwTickItemList");
    qRegisterMetaType<CMwQDoubleSlider::SMwTickItem>("CMwQDoubleRangeSlider::SMwTickItem");
    qRegisterMetaType<CMwQDoubleSlider::TMwTickItemList>("CMwQDoubleRangeSlider::TMwTickItemList");
    qRegisterMetaTypeStreamOperators<CMwQDoubleSlider::SMwTickItem>("CMwQDoubleSlider::SMwTickItem");
    qRegisterMetaTypeStreamOperators<CMwQDoubleSlider::TMwTickItemList>(
        "CMwQDoubleSlider::TMwTickItemList");
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(registerDoubleTickItemTypes)

QDataStream &operator<<(QDataStream &out, const CMwQDoubleSlider::SMwTickItem &item)
{
    return out << item.value << qint32(item.tickPosition) << item.text;
}

QDataStream &operator>>(QDataStream &in, CMwQDoubleSlider::SMwTickItem &item)
{
    double value = 0.0;
    qint32 position = 0;
    QString text;
    in >> value >> position >> text;
    item.value = value;
    item.tickPosition = QSlider::TickPosition(position & QSlider::TicksBothSides);
    item.text = text;
    return in;
}

CMwQSliderEx::CMwQSliderEx(QWidget *parent)
    : CMwQSlider(parent)
{
}

CMwQSliderEx::~CMwQSliderEx() = default;

CMwQDoubleSliderPrivate::~CMwQDoubleSliderPrivate() = default;

void CMwQDoubleSliderPrivate::init()
{
    Q_Q(CMwQDoubleSlider);
    slider = new CMwQSliderEx(q);
    slider->installEventFilter(q);
    auto *layout = new QHBoxLayout(q);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(slider);

    minimum = slider->minimum();
    maximum = slider->maximum();
    singleStep = slider->singleStep();
    pageStep = slider->pageStep();
    value = slider->value();

    QObject::connect(slider, SIGNAL(valueChanged(int)), q, SLOT(onValueChanged(int)));
    QObject::connect(slider, SIGNAL(sliderMoved(int)), q, SLOT(onSliderMoved(int)));
    QObject::connect(slider, SIGNAL(sliderPressed()), q, SIGNAL(sliderPressed()));
    QObject::connect(slider, SIGNAL(sliderReleased()), q, SIGNAL(sliderReleased()));
    QObject::connect(slider, SIGNAL(rangeChanged(int,int)), q, SLOT(onRangeChanged(int,int)));

    // The slider's policy becomes ours but still counts as the default, so
    // that setOrientation() keeps transposing it.
    q->setSizePolicy(slider->sizePolicy());
    q->setAttribute(Qt::WA_WState_OwnSizePolicy, false);
}

int CMwQDoubleSliderPrivate::toInteger(double v) const
{
    return CMwQStepMapping::toInteger(v, singleStep);
}

double CMwQDoubleSliderPrivate::fromInteger(int i) const
{
    return CMwQStepMapping::fromInteger(i, offset, singleStep);
}

double CMwQDoubleSliderPrivate::safeFromInteger(int i) const
{
    return CMwQStepMapping::safeFromInteger(i, offset, singleStep, minimum, maximum);
}

void CMwQDoubleSliderPrivate::updateOffset(double v)
{
    offset = offsetFor(v, singleStep);
}

double CMwQDoubleSliderPrivate::toSliderUnits(double value) const
{
    return CMwQStepMapping::toSliderUnits(valueProxy, value);
}

double CMwQDoubleSliderPrivate::toValue(double sliderUnits) const
{
    return CMwQStepMapping::toValue(valueProxy, sliderUnits);
}

void CMwQDoubleSliderPrivate::rebuildTickItems()
{
    TMwTickItemList items;
    items.reserve(tickItems.size());
    for (const CMwQDoubleSlider::SMwTickItem &item : tickItems) {
        const double units = toSliderUnits(item.value);
        if (std::isnan(units)) {
            // Kept in tickItemList(), but there is no place to draw it.
            warnIgnored("CMwQDoubleSlider::setTickItemList", {item.value}, notANumberReason);
            continue;
        }
        items.append({toInteger(units), item.tickPosition, item.text});
    }
    slider->setTickItemList(items);
}

CMwQDoubleSlider::CMwQDoubleSlider(QWidget *parent)
    : CMwQDoubleSlider(new CMwQDoubleSliderPrivate, parent)
{
}

CMwQDoubleSlider::CMwQDoubleSlider(Qt::Orientation orientation, QWidget *parent)
    : CMwQDoubleSlider(new CMwQDoubleSliderPrivate, orientation, parent)
{
}

CMwQDoubleSlider::CMwQDoubleSlider(CMwQDoubleSliderPrivate *d, QWidget *parent)
    : QWidget(parent)
    , d_vel(d)
{
    d->q_ptr = this;
    d->init();
}

CMwQDoubleSlider::CMwQDoubleSlider(CMwQDoubleSliderPrivate *d, Qt::Orientation orientation,
                                   QWidget *parent)
    : CMwQDoubleSlider(d, parent)
{
    setOrientation(orientation);
}

CMwQDoubleSlider::~CMwQDoubleSlider() = default;

double CMwQDoubleSlider::value() const
{
    Q_D(const CMwQDoubleSlider);
    return d->toValue(d->value);
}

void CMwQDoubleSlider::setValue(double value)
{
    Q_D(CMwQDoubleSlider);
    double v = d->toSliderUnits(value);
    if (std::isnan(v)) {
        warnIgnored("CMwQDoubleSlider::setValue", {value}, notANumberReason);
        return;
    }
    v = qBound(d->minimum, v, d->maximum);
    d->updateOffset(v);
    const int n = d->toInteger(v);
    if (n != d->slider->value()) {
        // onValueChanged() stores the value and emits.
        d->slider->setValue(n);
        return;
    }
    const double old = d->value;
    d->value = v;
    // Moves far below one step are rounding noise of the mapping (or of a
    // proxy's round trip): applied, but not announced.
    if (std::abs(v - old) > d->singleStep * 1e-9)
        Q_EMIT valueChanged(this->value());
}

double CMwQDoubleSlider::sliderPosition() const
{
    Q_D(const CMwQDoubleSlider);
    return d->toValue(d->safeFromInteger(d->slider->sliderPosition()));
}

void CMwQDoubleSlider::setSliderPosition(double position)
{
    Q_D(CMwQDoubleSlider);
    const double v = d->toSliderUnits(position);
    if (std::isnan(v)) {
        warnIgnored("CMwQDoubleSlider::setSliderPosition", {position}, notANumberReason);
        return;
    }
    d->slider->setSliderPosition(d->toInteger(v));
}

double CMwQDoubleSlider::singleStep() const
{
    Q_D(const CMwQDoubleSlider);
    return d->singleStep;
}

void CMwQDoubleSlider::setSingleStep(double step)
{
    Q_D(CMwQDoubleSlider);
    if (!isValidStep(step)) {
        qWarning() << "CMwQDoubleSlider::setSingleStep(" << step << ")" << "is outside of valid bounds.";
        return;
    }
    d->singleStep = step;
    d->updateOffset(d->value);
    // The integer slider is re-scaled silently: nothing changes in public units.
    const bool wasBlocked = d->slider->blockSignals(true);
    d->slider->setRange(d->toInteger(d->minimum), d->toInteger(d->maximum));
    d->slider->setValue(d->toInteger(d->value));
    d->slider->setPageStep(d->toInteger(d->pageStep));
    d->slider->blockSignals(wasBlocked);
}

double CMwQDoubleSlider::pageStep() const
{
    Q_D(const CMwQDoubleSlider);
    return d->pageStep;
}

void CMwQDoubleSlider::setPageStep(double step)
{
    Q_D(CMwQDoubleSlider);
    if (!std::isfinite(step)) {
        warnIgnored("CMwQDoubleSlider::setPageStep", {step}, notFiniteReason);
        return;
    }
    d->pageStep = step;
    d->slider->setPageStep(d->toInteger(step));
}

double CMwQDoubleSlider::minimum() const
{
    Q_D(const CMwQDoubleSlider);
    // Both ends are mapped and ordered, so a decreasing proxy still gives
    // minimum() <= maximum().
    return std::min(d->toValue(d->minimum), d->toValue(d->maximum));
}

double CMwQDoubleSlider::maximum() const
{
    Q_D(const CMwQDoubleSlider);
    return std::max(d->toValue(d->minimum), d->toValue(d->maximum));
}

void CMwQDoubleSlider::setMinimum(double minimum)
{
    Q_D(const CMwQDoubleSlider);
    if (!std::isfinite(d->toSliderUnits(minimum))) {
        warnIgnored("CMwQDoubleSlider::setMinimum", {minimum}, notFiniteReason);
        return;
    }
    setRange(minimum, std::max(maximum(), minimum));
}

void CMwQDoubleSlider::setMaximum(double maximum)
{
    Q_D(const CMwQDoubleSlider);
    if (!std::isfinite(d->toSliderUnits(maximum))) {
        warnIgnored("CMwQDoubleSlider::setMaximum", {maximum}, notFiniteReason);
        return;
    }
    setRange(std::min(minimum(), maximum), maximum);
}

void CMwQDoubleSlider::setRange(double min, double max)
{
    Q_D(CMwQDoubleSlider);
    double lo = d->toSliderUnits(min);
    double hi = d->toSliderUnits(max);
    // An infinite end has no integer to stand on and would turn the offsets
    // into NaN; such a range is refused as a whole.
    if (!std::isfinite(lo) || !std::isfinite(hi)) {
        warnIgnored("CMwQDoubleSlider::setRange", {min, max}, notFiniteReason);
        return;
    }
    if (lo > hi)
        std::swap(lo, hi);

    const double oldMinimum = d->minimum;
    const double oldMaximum = d->maximum;
    d->minimum = lo;
    d->maximum = hi;

    if (d->value <= d->minimum)
        d->updateOffset(d->minimum);
    if (d->maximum <= d->value)
        d->updateOffset(d->maximum);

    const bool wasSettingRange = d->settingRange;
    d->settingRange = true;
    d->slider->setRange(d->toInteger(d->minimum), d->toInteger(d->maximum));
    d->settingRange = wasSettingRange;

    if (!wasSettingRange && (oldMinimum != d->minimum || oldMaximum != d->maximum))
        Q_EMIT rangeChanged(minimum(), maximum());

    // The integer slider reports nothing when its value survives the new
    // range; the double value must still be clamped.
    setValue(value());
}

double CMwQDoubleSlider::tickInterval() const
{
    Q_D(const CMwQDoubleSlider);
    return d->slider->tickInterval() * d->singleStep;
}

void CMwQDoubleSlider::setTickInterval(double interval)
{
    Q_D(CMwQDoubleSlider);
    if (!std::isfinite(interval)) {
        warnIgnored("CMwQDoubleSlider::setTickInterval", {interval}, notFiniteReason);
        return;
    }
    d->slider->setTickInterval(d->toInteger(interval));
}

QSlider::TickPosition CMwQDoubleSlider::tickPosition() const
{
    Q_D(const CMwQDoubleSlider);
    return d->slider->tickPosition();
}

void CMwQDoubleSlider::setTickPosition(QSlider::TickPosition position)
{
    Q_D(CMwQDoubleSlider);
    d->slider->setTickPosition(position);
}

bool CMwQDoubleSlider::hasTracking() const
{
    Q_D(const CMwQDoubleSlider);
    return d->slider->hasTracking();
}

void CMwQDoubleSlider::setTracking(bool enable)
{
    Q_D(CMwQDoubleSlider);
    d->slider->setTracking(enable);
}

Qt::Orientation CMwQDoubleSlider::orientation() const
{
    Q_D(const CMwQDoubleSlider);
    return d->slider->orientation();
}

void CMwQDoubleSlider::setOrientation(Qt::Orientation orientation)
{
    Q_D(CMwQDoubleSlider);
    if (orientation == d->slider->orientation())
        return;
    // Like QSlider: a default policy turns with the slider, one set by the
    // application stays as it was set.
    if (!testAttribute(Qt::WA_WState_OwnSizePolicy)) {
        QSizePolicy policy = sizePolicy();
        policy.transpose();
        setSizePolicy(policy);
        setAttribute(Qt::WA_WState_OwnSizePolicy, false);
    }
    d->slider->setOrientation(orientation);
}

CMwQDoubleSlider::TMwTickItemList CMwQDoubleSlider::tickItemList() const
{
    Q_D(const CMwQDoubleSlider);
    return d->tickItems;
}

void CMwQDoubleSlider::setTickItemList(const TMwTickItemList &list)
{
    Q_D(CMwQDoubleSlider);
    d->tickItems = list;
    d->rebuildTickItems();
}

QString CMwQDoubleSlider::handleToolTip() const
{
    Q_D(const CMwQDoubleSlider);
    return d->handleToolTip;
}

void CMwQDoubleSlider::setHandleToolTip(const QString &toolTip)
{
    Q_D(CMwQDoubleSlider);
    d->handleToolTip = toolTip;
}

bool CMwQDoubleSlider::invertedAppearance() const
{
    Q_D(const CMwQDoubleSlider);
    return d->slider->invertedAppearance();
}

void CMwQDoubleSlider::setInvertedAppearance(bool inverted)
{
    Q_D(CMwQDoubleSlider);
    d->slider->setInvertedAppearance(inverted);
}

bool CMwQDoubleSlider::invertedControls() const
{
    Q_D(const CMwQDoubleSlider);
    return d->slider->invertedControls();
}

void CMwQDoubleSlider::setInvertedControls(bool inverted)
{
    Q_D(CMwQDoubleSlider);
    d->slider->setInvertedControls(inverted);
}

bool CMwQDoubleSlider::isValidStep(double step) const
{
    Q_D(const CMwQDoubleSlider);
    return CMwQStepMapping::isValidStep(step, d->minimum, d->maximum);
}

void CMwQDoubleSlider::triggerAction(QAbstractSlider::SliderAction action)
{
    Q_D(CMwQDoubleSlider);
    d->slider->triggerAction(action);
}

CMwQSlider *CMwQDoubleSlider::slider() const
{
    Q_D(const CMwQDoubleSlider);
    return d->slider;
}

CMwQValueProxy *CMwQDoubleSlider::valueProxy() const
{
    Q_D(const CMwQDoubleSlider);
    return d->valueProxy.data();
}

void CMwQDoubleSlider::setValueProxy(CMwQValueProxy *proxy)
{
    Q_D(CMwQDoubleSlider);
    if (d->valueProxy == proxy)
        return;
    onValueProxyAboutToBeModified();
    if (d->valueProxy)
        disconnect(d->valueProxy.data(), nullptr, this, nullptr);
    d->valueProxy = proxy;
    if (proxy) {
        connect(proxy, SIGNAL(proxyAboutToBeModified()), this, SLOT(onValueProxyAboutToBeModified()));
        connect(proxy, SIGNAL(proxyModified()), this, SLOT(onValueProxyModified()));
    }
    onValueProxyModified();
}

void CMwQDoubleSlider::onValueChanged(int value)
{
    Q_D(CMwQDoubleSlider);
    const double v = d->safeFromInteger(value);
    if (v != d->value) {
        d->value = v;
        Q_EMIT valueChanged(this->value());
    }
}

void CMwQDoubleSlider::onSliderMoved(int position)
{
    Q_D(CMwQDoubleSlider);
    // In slider units, not mapped back through the proxy, unlike
    // valueChanged(); kept so on purpose.
    Q_EMIT sliderMoved(d->safeFromInteger(position));
}

void CMwQDoubleSlider::onRangeChanged(int min, int max)
{
    Q_D(CMwQDoubleSlider);
    if (d->settingRange)
        return;
    const double a = d->toValue(d->fromInteger(min));
    const double b = d->toValue(d->fromInteger(max));
    if (!std::isfinite(d->toSliderUnits(a)) || !std::isfinite(d->toSliderUnits(b))) {
        // A range with no finite double counterpart cannot be followed; the
        // inner slider is put back on ours so that the two never disagree.
        warnIgnored("CMwQDoubleSlider::onRangeChanged", {double(min), double(max)},
                    restoredRangeReason);
        d->settingRange = true;
        d->slider->setRange(d->toInteger(d->minimum), d->toInteger(d->maximum));
        d->settingRange = false;
        return;
    }
    setRange(a, b);
}

void CMwQDoubleSlider::onValueProxyAboutToBeModified()
{
    Q_D(CMwQDoubleSlider);
    d->slider->setProperty("inputValue", value());
    d->slider->setProperty("inputMinimum", minimum());
    d->slider->setProperty("inputMaximum", maximum());
}

void CMwQDoubleSlider::onValueProxyModified()
{
    Q_D(CMwQDoubleSlider);
    // The public range, value and ticks stay; the integer slider moves under
    // them, and nothing is announced.
    const bool wasBlocked = blockSignals(true);
    const bool wasSettingRange = d->settingRange;
    d->settingRange = true;
    setRange(d->slider->property("inputMinimum").toDouble(),
             d->slider->property("inputMaximum").toDouble());
    d->settingRange = wasSettingRange;
    setValue(d->slider->property("inputValue").toDouble());
    d->rebuildTickItems();
    blockSignals(wasBlocked);
}

bool CMwQDoubleSlider::eventFilter(QObject *watched, QEvent *event)
{
    Q_D(CMwQDoubleSlider);
    if (watched == d->slider && event->type() == QEvent::ToolTip) {
        auto *helpEvent = static_cast<QHelpEvent *>(event);
        QStyleOptionSlider option;
        initSliderStyleOption(d->slider, &option);
        const QStyle::SubControl hit = d->slider->style()->hitTestComplexControl(
            QStyle::CC_Slider, &option, helpEvent->pos(), this);
        if (!d->handleToolTip.isEmpty() && hit == QStyle::SC_SliderHandle) {
            QToolTip::showText(helpEvent->globalPos(),
                               d->handleToolTip.arg(value(), 0, 'g', -1, QLatin1Char(' ')));
            event->accept();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
