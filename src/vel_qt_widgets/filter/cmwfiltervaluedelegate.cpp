#include "cmwfiltervaluedelegate_p.h"

#include "cmwfilterkeynavigator_p.h"

#include <QtCore/QEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QTableWidget>

CMwFilterValueDelegate::CMwFilterValueDelegate(
    CMwFilterKeyNavigator *navigator, QTableWidget *table)
    : QStyledItemDelegate(table)
    , m_navigator(navigator)
    , m_table(table)
{
}

bool CMwFilterValueDelegate::eventFilter(QObject *editor, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && m_navigator) {
        const auto tab = CMwFilterKeyNavigator::tabKey(static_cast<QKeyEvent *>(event));
        auto *widget = qobject_cast<QWidget *>(editor);
        if (tab != CMwFilterKeyNavigator::TabKey::None && widget) {
            const int row = m_table->currentRow();
            const int column = m_table->currentColumn();
            Q_EMIT commitData(widget);
            Q_EMIT closeEditor(widget, QAbstractItemDelegate::NoHint);
            m_navigator->moveFrom(row, column, tab == CMwFilterKeyNavigator::TabKey::Forward);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}
