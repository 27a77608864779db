#include "cmwqrangeslideraccessible_p.h"

#include "cmwqrangehandleaccessible_p.h"
#include "cmwqslideraccessiblesupport_p.h"

#include <vel_qt_widgets/CMwQRangeSlider.h>

using CMwQSliderAccessibleSupport::focusedHandleChild;
using CMwQSliderAccessibleSupport::handleHolder;

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
    return child(focusedHandleChild(holder));
}
