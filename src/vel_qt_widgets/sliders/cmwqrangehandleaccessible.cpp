#include "cmwqrangehandleaccessible_p.h"

#include "cmwqdoublerangeslider_p.h"
#include "cmwqrangeslider_p.h"
#include "cmwqslideraccessibility_p.h"
#include "cmwqslideraccessiblesupport_p.h"
#include "cmwqtcompat_p.h"

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtGui/QWindow>

#include <algorithm>
#include <cmath>
#include <limits>

using CMwQSliderAccessibleSupport::handleHolder;
using CMwQSliderAccessibleSupport::numberText;
using CMwQSliderAccessibleSupport::publicStep;

namespace {

CMwQRangeSliderPrivate::Handle handleOf(int child)
{
    return child == CMwQSliderAccessibility::UpperHandleChild ? CMwQRangeSliderPrivate::UpperHandle
                                                              : CMwQRangeSliderPrivate::LowerHandle;
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

} // namespace

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
