#include "cmwqinnerslideraccessible_p.h"

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
