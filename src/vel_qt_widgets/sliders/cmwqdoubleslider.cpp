#include "cmwqdoubleslider_p.h"

#include "cmwqslider_p.h"
#include "cmwqslideraccessibility_p.h"
#include "cmwqstepmappedslider_p.h"
#include "cmwqstepmapping_p.h"
#include "cmwqtcompat_p.h"
#include "cmwqtickitemtypes_p.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtGui/QHelpEvent>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>
#include <QtWidgets/QToolTip>

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
    CMwQTickItemTypes::registerStreamable<CMwQDoubleSlider::SMwTickItem>(
        "CMwQDoubleSlider::SMwTickItem");
    CMwQTickItemTypes::registerStreamable<CMwQDoubleSlider::TMwTickItemList>(
        "CMwQDoubleSlider::TMwTickItemList");
    // The name Qt 6 gives the list in a saved QVariant, so either Qt reads
    // what the other wrote.
    qRegisterMetaType<CMwQDoubleSlider::TMwTickItemList>("QList<CMwQDoubleSlider::SMwTickItem>");
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

CMwQDoubleSliderPrivate::CMwQDoubleSliderPrivate()
    : CMwQStepMappedSliderPrivate("CMwQDoubleSlider")
{
}

CMwQDoubleSliderPrivate::~CMwQDoubleSliderPrivate() = default;

void CMwQDoubleSliderPrivate::init()
{
    Q_Q(CMwQDoubleSlider);
    slider = new CMwQSliderEx(q);
    slider->installEventFilter(q);
    // The widget the application placed takes the focus for its slider.
    q->setFocusPolicy(slider->focusPolicy());
    q->setFocusProxy(slider);
    embedInnerSlider();
    pageStep = slider->pageStep();
    value = slider->value();

    QObject::connect(slider, SIGNAL(valueChanged(int)), q, SLOT(onValueChanged(int)));
    QObject::connect(slider, SIGNAL(sliderMoved(int)), q, SLOT(onSliderMoved(int)));
    QObject::connect(slider, SIGNAL(sliderPressed()), q, SIGNAL(sliderPressed()));
    QObject::connect(slider, SIGNAL(sliderReleased()), q, SIGNAL(sliderReleased()));
    QObject::connect(slider, SIGNAL(rangeChanged(int, int)), q, SLOT(onRangeChanged(int, int)));
}

double CMwQDoubleSliderPrivate::safeFromInteger(int i) const { return safeFromInteger(i, offset); }

void CMwQDoubleSliderPrivate::updateOffset(double v) { offset = offsetFor(v); }

void CMwQDoubleSliderPrivate::rebuildTickItems() { setInnerTickItems(tickItems); }

CMwQSlider *CMwQDoubleSliderPrivate::innerSlider() const { return slider; }

void CMwQDoubleSliderPrivate::applyPublicRange(double min, double max)
{
    Q_Q(CMwQDoubleSlider);
    q->setRange(min, max);
}

void CMwQDoubleSliderPrivate::followRange()
{
    if (value <= minimum)
        updateOffset(minimum);
    if (maximum <= value)
        updateOffset(maximum);
}

void CMwQDoubleSliderPrivate::saveValues()
{
    Q_Q(CMwQDoubleSlider);
    slider->setProperty("inputValue", q->value());
}

void CMwQDoubleSliderPrivate::reapplyValues()
{
    Q_Q(CMwQDoubleSlider);
    q->setValue(slider->property("inputValue").toDouble());
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

CMwQDoubleSlider::CMwQDoubleSlider(
    CMwQDoubleSliderPrivate *d, Qt::Orientation orientation, QWidget *parent)
    : CMwQDoubleSlider(d, parent)
{
    setOrientation(orientation);
}

CMwQDoubleSlider::~CMwQDoubleSlider() = default;

VEL_STEP_MAPPED_SLIDER_SURFACE(CMwQDoubleSlider)

double CMwQDoubleSlider::value() const
{
    Q_D(const CMwQDoubleSlider);
    return d->toValue(d->value);
}

void CMwQDoubleSlider::setValue(double value)
{
    Q_D(CMwQDoubleSlider);
    double v = 0.0;
    if (!d->mapToSliderUnits("setValue", value, &v))
        return;
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
    if (d->movedBeyondNoise(v, old)) {
        Q_EMIT valueChanged(this->value());
        CMwQSliderAccessibility::valueChanged(this, this->value());
    }
}

double CMwQDoubleSlider::sliderPosition() const
{
    Q_D(const CMwQDoubleSlider);
    return d->toValue(d->safeFromInteger(d->slider->sliderPosition()));
}

void CMwQDoubleSlider::setSliderPosition(double position)
{
    Q_D(CMwQDoubleSlider);
    double v = 0.0;
    if (!d->mapToSliderUnits("setSliderPosition", position, &v))
        return;
    d->slider->setSliderPosition(d->toInteger(v));
}

void CMwQDoubleSlider::setSingleStep(double step)
{
    Q_D(CMwQDoubleSlider);
    if (!d->acceptsSingleStep(step))
        return;
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
        d->warnRejected("setPageStep", {step}, notFiniteReason);
        return;
    }
    d->pageStep = step;
    d->slider->setPageStep(d->toInteger(step));
}

void CMwQDoubleSlider::setRange(double min, double max)
{
    Q_D(CMwQDoubleSlider);
    bool announce = false;
    if (!d->setRange(min, max, &announce))
        return;
    if (announce)
        Q_EMIT rangeChanged(minimum(), maximum());

    // The integer slider reports nothing when its value survives the new
    // range; the double value must still be clamped.
    setValue(value());
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

CMwQSlider *CMwQDoubleSlider::slider() const
{
    Q_D(const CMwQDoubleSlider);
    return d->slider;
}

void CMwQDoubleSlider::onValueChanged(int value)
{
    Q_D(CMwQDoubleSlider);
    const double v = d->safeFromInteger(value);
    if (v != d->value) {
        d->value = v;
        Q_EMIT valueChanged(this->value());
        CMwQSliderAccessibility::valueChanged(this, this->value());
    }
}

void CMwQDoubleSlider::onSliderMoved(int position)
{
    Q_D(CMwQDoubleSlider);
    // In slider units, unlike valueChanged() (docs/compatibility.md).
    Q_EMIT sliderMoved(d->safeFromInteger(position));
}

void CMwQDoubleSlider::onRangeChanged(int min, int max)
{
    Q_D(CMwQDoubleSlider);
    d->innerRangeChanged(min, max, d->offset, d->offset);
}

bool CMwQDoubleSlider::eventFilter(QObject *watched, QEvent *event)
{
    Q_D(CMwQDoubleSlider);
    if (watched == d->slider && event->type() == QEvent::ToolTip) {
        auto *helpEvent = static_cast<QHelpEvent *>(event);
        QStyleOptionSlider option;
        CMwQSliderPrivate::get(d->slider)->initStyleOption(&option);
        CMwQSliderGeometry::fitStyleOption(&option);
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
