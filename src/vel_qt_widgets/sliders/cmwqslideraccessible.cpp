#include "cmwqslideraccessible_p.h"

#include "cmwqdoublerangeslider_p.h"
#include "cmwqdoubleslider_p.h"
#include "cmwqrangeslider_p.h"
#include "cmwqtcompat_p.h"

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QMetaObject>
#include <QtGui/QWindow>

#include <cmath>
#include <limits>

namespace {

CMwQDoubleRangeSlider *outerOfRangeSlider(const CMwQRangeSlider *slider)
{
    auto *outer = qobject_cast<CMwQDoubleRangeSlider *>(slider->parentWidget());
    if (outer && CMwQDoubleRangeSliderPrivate::get(outer)->slider == slider)
        return outer;
    return nullptr;
}

CMwQDoubleSlider *outerOfSlider(const QWidget *slider)
{
    auto *outer = qobject_cast<CMwQDoubleSlider *>(slider->parentWidget());
    if (outer && CMwQDoubleSliderPrivate::get(outer)->slider == slider)
        return outer;
    return nullptr;
}

// The integer range slider that holds the handles of \a slider: itself, or
// the inner slider of a floating-point range slider.
CMwQRangeSlider *handleHolder(QWidget *slider)
{
    if (auto *outer = qobject_cast<CMwQDoubleRangeSlider *>(slider))
        return CMwQDoubleRangeSliderPrivate::get(outer)->slider;
    return qobject_cast<CMwQRangeSlider *>(slider);
}

CMwQRangeSliderPrivate::Handle handleOf(int child)
{
    return child == CMwQSliderAccessibility::UpperHandleChild ? CMwQRangeSliderPrivate::UpperHandle
                                                              : CMwQRangeSliderPrivate::LowerHandle;
}

int childOf(CMwQRangeSliderPrivate::Handle handle)
{
    return handle == CMwQRangeSliderPrivate::UpperHandle
        ? CMwQSliderAccessibility::UpperHandleChild
        : CMwQSliderAccessibility::LowerHandleChild;
}

// The size of one step from a value in slider units, in public units: with a
// value proxy the steps are even in slider units only.
double publicStep(const CMwQStepMappedSliderPrivate *d, double sliderUnits)
{
    const double step = std::abs(d->toValue(sliderUnits + d->singleStep) - d->toValue(sliderUnits));
    return std::isfinite(step) && step > 0.0 ? step : d->singleStep;
}

// A double that AT clients send, as the integer nearest to it.
int toSliderInt(const QVariant &value, bool *ok)
{
    const double v = value.toDouble(ok);
    if (!*ok || std::isnan(v))
        return *ok = false, 0;
    return VelQt::roundHalfUp(
        qBound<double>(std::numeric_limits<int>::min(), v, std::numeric_limits<int>::max()));
}

// The public value of an inner integer position of a floating-point range
// slider: exact where it is a range end or a handle's own value.
double publicValueAt(CMwQDoubleRangeSlider *outer, int position)
{
    CMwQDoubleRangeSliderPrivate *d = CMwQDoubleRangeSliderPrivate::get(outer);
    const CMwQRangeSlider *inner = d->slider;
    if (position == inner->minimum())
        return d->toValue(d->minimum);
    if (position == inner->maximum())
        return d->toValue(d->maximum);
    if (position == inner->minimumValue())
        return outer->minimumValue();
    if (position == inner->maximumValue())
        return outer->maximumValue();
    return d->toValue(d->safeFromInteger(position, 0.0));
}

QString numberText(const QVariant &value)
{
    if (value.userType() == QMetaType::Double)
        return QLocale().toString(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    return QLocale().toString(value.toInt());
}

QAccessibleInterface *factory(const QString &className, QObject *object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    auto *widget = static_cast<QWidget *>(object);
    if (className == QLatin1String("CMwQRangeSlider")) {
        auto *slider = static_cast<CMwQRangeSlider *>(widget);
        if (CMwQDoubleRangeSlider *outer = outerOfRangeSlider(slider))
            return new CMwQInnerSliderAccessible(slider, outer);
        return new CMwQRangeSliderAccessible(slider);
    }
    if (className == QLatin1String("CMwQDoubleRangeSlider"))
        return new CMwQRangeSliderAccessible(widget);
    if (className == QLatin1String("CMwQDoubleSlider"))
        return new CMwQDoubleSliderAccessible(widget);
    if (className == QLatin1String("CMwQSliderEx")) {
        if (CMwQDoubleSlider *outer = outerOfSlider(widget))
            return new CMwQInnerSliderAccessible(widget, outer);
    }
    return nullptr;
}

// Takes the factory out again when the library is unloaded while the
// application lives on (Designer may unload its plug-ins), so that QAccessible
// never calls into unmapped code. Without an application Qt has already
// dropped every factory, and its list may be gone.
struct FactoryRemover
{
    bool installed = false;
    ~FactoryRemover()
    {
        if (installed && QCoreApplication::instance())
            QAccessible::removeFactory(factory);
    }
} factoryRemover;

} // namespace

namespace CMwQSliderAccessibility {

void install()
{
    QAccessible::installFactory(factory);
    factoryRemover.installed = true;
}

bool isInnerRangeSlider(const CMwQRangeSlider *slider)
{
    return outerOfRangeSlider(slider) != nullptr;
}

void handleFocused(CMwQRangeSlider *slider, int child)
{
    QWidget *element = slider;
    if (CMwQDoubleRangeSlider *outer = outerOfRangeSlider(slider))
        element = outer;
    QAccessibleEvent event(element, QAccessible::Focus);
    event.setChild(child);
    QAccessible::updateAccessibility(&event);
}

void focusedHandleLater(CMwQRangeSlider *slider)
{
    QMetaObject::invokeMethod(
        slider,
        [slider]() {
            if (slider->hasFocus())
                handleFocused(slider, childOf(CMwQRangeSliderPrivate::get(slider)->focusedHandle));
        },
        Qt::QueuedConnection);
}

void rangeValuesChanged(QWidget *slider, bool lower, bool upper)
{
    if (auto *rangeSlider = qobject_cast<CMwQRangeSlider *>(slider)) {
        if (isInnerRangeSlider(rangeSlider))
            return;
    }
    for (int child : {LowerHandleChild, UpperHandleChild}) {
        if (child == LowerHandleChild ? !lower : !upper)
            continue;
        const CMwQRangeHandleAccessible handle(slider, child);
        QAccessibleValueChangeEvent event(slider, handle.currentValue());
        event.setChild(child);
        QAccessible::updateAccessibility(&event);
    }
}

void valueChanged(QWidget *doubleSlider)
{
    QAccessibleValueChangeEvent event(
        doubleSlider, static_cast<CMwQDoubleSlider *>(doubleSlider)->value());
    QAccessible::updateAccessibility(&event);
}

} // namespace CMwQSliderAccessibility

namespace {
void installSliderAccessibility() { CMwQSliderAccessibility::install(); }
} // namespace

Q_COREAPP_STARTUP_FUNCTION(installSliderAccessibility)

CMwQRangeHandleAccessible::CMwQRangeHandleAccessible(QWidget *slider, int child)
    : m_slider(slider)
    , m_child(child)
{
}

bool CMwQRangeHandleAccessible::isValid() const { return m_slider && handleHolder(m_slider); }

QObject *CMwQRangeHandleAccessible::object() const { return nullptr; }

QWindow *CMwQRangeHandleAccessible::window() const
{
    return m_slider ? m_slider->window()->windowHandle() : nullptr;
}

QAccessibleInterface *CMwQRangeHandleAccessible::childAt(int, int) const { return nullptr; }

QAccessibleInterface *CMwQRangeHandleAccessible::parent() const
{
    return m_slider ? QAccessible::queryAccessibleInterface(m_slider) : nullptr;
}

QAccessibleInterface *CMwQRangeHandleAccessible::child(int) const { return nullptr; }

int CMwQRangeHandleAccessible::childCount() const { return 0; }

int CMwQRangeHandleAccessible::indexOfChild(const QAccessibleInterface *) const { return -1; }

QString CMwQRangeHandleAccessible::text(QAccessible::Text t) const
{
    if (!isValid())
        return QString();
    switch (t) {
    case QAccessible::Name: {
        // "<the slider's name> minimum": the slider's accessible name or
        // its buddy label, as Qt names any widget.
        const QString which = m_child == CMwQSliderAccessibility::UpperHandleChild
            ? CMwQRangeSlider::tr("maximum")
            : CMwQRangeSlider::tr("minimum");
        QAccessibleInterface *group = parent();
        const QString name = group ? group->text(QAccessible::Name) : QString();
        return name.isEmpty() ? which : name + QLatin1Char(' ') + which;
    }
    case QAccessible::Value:
        return numberText(currentValue());
    default:
        return QString();
    }
}

void CMwQRangeHandleAccessible::setText(QAccessible::Text, const QString &) { }

QRect CMwQRangeHandleAccessible::rect() const
{
    if (!isValid())
        return QRect();
    CMwQRangeSlider *holder = handleHolder(m_slider);
    const QRect local = CMwQRangeSliderPrivate::get(holder)->handleRect(handleOf(m_child));
    return local.translated(holder->mapToGlobal(QPoint(0, 0)));
}

QAccessible::Role CMwQRangeHandleAccessible::role() const { return QAccessible::Slider; }

QAccessible::State CMwQRangeHandleAccessible::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    CMwQRangeSlider *holder = handleHolder(m_slider);
    state.focusable = holder->focusPolicy() != Qt::NoFocus;
    state.focused = holder->hasFocus()
        && CMwQRangeSliderPrivate::get(holder)->focusedHandle == handleOf(m_child);
    state.disabled = !m_slider->isEnabled();
    state.invisible = !m_slider->isVisible();
    state.pressed = m_child == CMwQSliderAccessibility::UpperHandleChild
        ? holder->isMaximumSliderDown()
        : holder->isMinimumSliderDown();
    return state;
}

void *CMwQRangeHandleAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface *>(this);
    return nullptr;
}

QVariant CMwQRangeHandleAccessible::currentValue() const
{
    if (!isValid())
        return QVariant();
    const bool upper = m_child == CMwQSliderAccessibility::UpperHandleChild;
    if (auto *outer = qobject_cast<CMwQDoubleRangeSlider *>(m_slider))
        return upper ? outer->maximumValue() : outer->minimumValue();
    const CMwQRangeSlider *slider = handleHolder(m_slider);
    return upper ? slider->maximumValue() : slider->minimumValue();
}

void CMwQRangeHandleAccessible::setCurrentValue(const QVariant &value)
{
    if (!isValid())
        return;
    CMwQRangeSlider *holder = handleHolder(m_slider);
    CMwQRangeSliderPrivate *holderData = CMwQRangeSliderPrivate::get(holder);
    const bool upper = m_child == CMwQSliderAccessibility::UpperHandleChild;
    bool ok = false;
    auto *outer = qobject_cast<CMwQDoubleRangeSlider *>(m_slider);
    if (!outer) {
        const int position = toSliderInt(value, &ok);
        if (ok)
            holderData->moveHandle(handleOf(m_child), position);
        return;
    }

    // A floating-point handle moves as the keyboard moves it, but lands on
    // the value asked for, not on the nearest step: the handle's fraction is
    // set before the move, and a move within one step goes to the handle's
    // own setter.
    double v = value.toDouble(&ok);
    if (!ok || std::isnan(v) || holder->isSliderDown())
        return;
    v = qBound(minimumValue().toDouble(), v, maximumValue().toDouble());
    CMwQDoubleRangeSliderPrivate *d = CMwQDoubleRangeSliderPrivate::get(outer);
    double units = 0.0;
    if (!d->mapToSliderUnits("setCurrentValue", v, &units))
        return;
    const double oldOffset = upper ? d->maximumOffset : d->minimumOffset;
    (upper ? d->maximumOffset : d->minimumOffset) = d->offsetFor(units);
    if (holderData->moveHandle(handleOf(m_child), d->toInteger(units)))
        return;
    (upper ? d->maximumOffset : d->minimumOffset) = oldOffset;
    if (upper)
        outer->setMaximumValue(v);
    else
        outer->setMinimumValue(v);
}

QVariant CMwQRangeHandleAccessible::valueBound(bool highestBound) const
{
    if (!isValid())
        return QVariant();
    CMwQRangeSlider *holder = handleHolder(m_slider);
    int lowest = 0;
    int highest = 0;
    CMwQRangeSliderPrivate::get(holder)->handleBounds(handleOf(m_child), &lowest, &highest);
    if (auto *outer = qobject_cast<CMwQDoubleRangeSlider *>(m_slider)) {
        const double atLowest = publicValueAt(outer, lowest);
        const double atHighest = publicValueAt(outer, highest);
        return highestBound ? std::max(atLowest, atHighest) : std::min(atLowest, atHighest);
    }
    return highestBound ? highest : lowest;
}

QVariant CMwQRangeHandleAccessible::minimumValue() const { return valueBound(false); }

QVariant CMwQRangeHandleAccessible::maximumValue() const { return valueBound(true); }

QVariant CMwQRangeHandleAccessible::minimumStepSize() const
{
    if (!isValid())
        return QVariant();
    if (auto *outer = qobject_cast<CMwQDoubleRangeSlider *>(m_slider)) {
        const CMwQDoubleRangeSliderPrivate *d = CMwQDoubleRangeSliderPrivate::get(outer);
        return publicStep(d,
            m_child == CMwQSliderAccessibility::UpperHandleChild ? d->maximumValue
                                                                 : d->minimumValue);
    }
    return handleHolder(m_slider)->singleStep();
}

CMwQRangeSliderAccessible::CMwQRangeSliderAccessible(QWidget *slider)
    : QAccessibleWidget(slider, QAccessible::Grouping)
{
}

CMwQRangeSliderAccessible::~CMwQRangeSliderAccessible()
{
    for (QAccessible::Id id : m_children) {
        if (id)
            QAccessible::deleteAccessibleInterface(id);
    }
}

int CMwQRangeSliderAccessible::childCount() const { return 2; }

QAccessibleInterface *CMwQRangeSliderAccessible::child(int index) const
{
    if (index < 0 || index > 1)
        return nullptr;
    if (!m_children[index])
        m_children[index] = QAccessible::registerAccessibleInterface(
            new CMwQRangeHandleAccessible(widget(), index));
    return QAccessible::accessibleInterface(m_children[index]);
}

int CMwQRangeSliderAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    for (int index = 0; index < 2; ++index) {
        if (m_children[index] && QAccessible::accessibleInterface(m_children[index]) == child)
            return index;
    }
    return -1;
}

QAccessibleInterface *CMwQRangeSliderAccessible::childAt(int x, int y) const
{
    // The upper handle first: where both overlap, a press grabs it too.
    for (int index : {1, 0}) {
        QAccessibleInterface *handle = child(index);
        if (handle && handle->rect().contains(x, y))
            return handle;
    }
    return nullptr;
}

QAccessibleInterface *CMwQRangeSliderAccessible::focusChild() const
{
    CMwQRangeSlider *holder = handleHolder(widget());
    if (!holder || !holder->hasFocus())
        return nullptr;
    return child(childOf(CMwQRangeSliderPrivate::get(holder)->focusedHandle));
}

CMwQDoubleSliderAccessible::CMwQDoubleSliderAccessible(QWidget *slider)
    : QAccessibleWidget(slider, QAccessible::Slider)
{
}

int CMwQDoubleSliderAccessible::childCount() const { return 0; }

QAccessibleInterface *CMwQDoubleSliderAccessible::child(int) const { return nullptr; }

int CMwQDoubleSliderAccessible::indexOfChild(const QAccessibleInterface *) const { return -1; }

QAccessibleInterface *CMwQDoubleSliderAccessible::childAt(int, int) const { return nullptr; }

QString CMwQDoubleSliderAccessible::text(QAccessible::Text t) const
{
    if (t == QAccessible::Value)
        return numberText(currentValue());
    return QAccessibleWidget::text(t);
}

void *CMwQDoubleSliderAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QVariant CMwQDoubleSliderAccessible::currentValue() const
{
    return static_cast<CMwQDoubleSlider *>(widget())->value();
}

void CMwQDoubleSliderAccessible::setCurrentValue(const QVariant &value)
{
    bool ok = false;
    const double v = value.toDouble(&ok);
    if (ok)
        static_cast<CMwQDoubleSlider *>(widget())->setValue(v);
}

QVariant CMwQDoubleSliderAccessible::maximumValue() const
{
    return static_cast<CMwQDoubleSlider *>(widget())->maximum();
}

QVariant CMwQDoubleSliderAccessible::minimumValue() const
{
    return static_cast<CMwQDoubleSlider *>(widget())->minimum();
}

QVariant CMwQDoubleSliderAccessible::minimumStepSize() const
{
    const CMwQDoubleSliderPrivate *d
        = CMwQDoubleSliderPrivate::get(static_cast<CMwQDoubleSlider *>(widget()));
    return publicStep(d, d->value);
}

CMwQInnerSliderAccessible::CMwQInnerSliderAccessible(QWidget *inner, QWidget *outer)
    : QAccessibleObject(inner)
    , m_outer(outer)
{
}

QAccessibleInterface *CMwQInnerSliderAccessible::outer() const
{
    return m_outer ? QAccessible::queryAccessibleInterface(m_outer) : nullptr;
}

bool CMwQInnerSliderAccessible::isValid() const
{
    QAccessibleInterface *iface = outer();
    return QAccessibleObject::isValid() && iface && iface->isValid();
}

QWindow *CMwQInnerSliderAccessible::window() const
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->window() : nullptr;
}

QAccessibleInterface *CMwQInnerSliderAccessible::childAt(int x, int y) const
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->childAt(x, y) : nullptr;
}

QAccessibleInterface *CMwQInnerSliderAccessible::parent() const
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->parent() : nullptr;
}

QAccessibleInterface *CMwQInnerSliderAccessible::child(int index) const
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->child(index) : nullptr;
}

int CMwQInnerSliderAccessible::childCount() const
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->childCount() : 0;
}

int CMwQInnerSliderAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->indexOfChild(child) : -1;
}

QAccessibleInterface *CMwQInnerSliderAccessible::focusChild() const
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->focusChild() : nullptr;
}

QString CMwQInnerSliderAccessible::text(QAccessible::Text t) const
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->text(t) : QString();
}

void CMwQInnerSliderAccessible::setText(QAccessible::Text t, const QString &text)
{
    if (QAccessibleInterface *iface = outer())
        iface->setText(t, text);
}

QRect CMwQInnerSliderAccessible::rect() const
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->rect() : QRect();
}

QAccessible::Role CMwQInnerSliderAccessible::role() const
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->role() : QAccessible::NoRole;
}

QAccessible::State CMwQInnerSliderAccessible::state() const
{
    QAccessibleInterface *iface = outer();
    if (iface)
        return iface->state();
    QAccessible::State state;
    state.invalid = true;
    return state;
}

void *CMwQInnerSliderAccessible::interface_cast(QAccessible::InterfaceType type)
{
    QAccessibleInterface *iface = outer();
    return iface ? iface->interface_cast(type) : nullptr;
}
