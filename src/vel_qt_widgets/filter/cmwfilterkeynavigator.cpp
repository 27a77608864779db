#include "cmwfilterkeynavigator_p.h"

#include <QtCore/QEvent>
#include <QtGui/QFocusEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QTableWidget>

namespace {

constexpr int checkColumn = 0;

} // namespace

CMwFilterKeyNavigator::TabKey CMwFilterKeyNavigator::tabKey(const QKeyEvent *key)
{
    if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return TabKey::None;
    if (key->key() == Qt::Key_Backtab
        || (key->key() == Qt::Key_Tab && (key->modifiers() & Qt::ShiftModifier))) {
        return TabKey::Backward;
    }
    return key->key() == Qt::Key_Tab ? TabKey::Forward : TabKey::None;
}

CMwFilterKeyNavigator::CMwFilterKeyNavigator(QTableWidget *editor, CheckToggled checkToggled)
    : QObject(editor)
    , m_editor(editor)
    , m_checkToggled(std::move(checkToggled))
{
    editor->installEventFilter(this);
}

void CMwFilterKeyNavigator::watch(QWidget *cellWidget)
{
    if (cellWidget)
        cellWidget->installEventFilter(this);
}

bool CMwFilterKeyNavigator::isStop(int row, int column) const
{
    if (m_editor->isRowHidden(row) || m_editor->isColumnHidden(column))
        return false;
    if (const QTableWidgetItem *cell = m_editor->item(row, column))
        return cell->flags() & Qt::ItemIsEnabled;
    const QWidget *widget = m_editor->cellWidget(row, column);
    return widget && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus);
}

void CMwFilterKeyNavigator::focusCell(int row, int column)
{
    m_moving = true;
    // The current row follows the focus, so the row actions (up, down,
    // remove) and the pickers' veto see the row the user is in.
    m_editor->setCurrentCell(row, column);
    if (QWidget *widget = m_editor->cellWidget(row, column))
        widget->setFocus(Qt::TabFocusReason);
    else
        m_editor->setFocus(Qt::TabFocusReason);
    m_moving = false;
}

void CMwFilterKeyNavigator::moveFrom(int row, int column, bool forward)
{
    const int columns = m_editor->columnCount();
    const int cells = m_editor->rowCount() * columns;
    for (int at = row * columns + column + (forward ? 1 : -1); at >= 0 && at < cells;
         at += forward ? 1 : -1) {
        if (isStop(at / columns, at % columns)) {
            focusCell(at / columns, at % columns);
            return;
        }
    }
    leaveEditor(forward);
}

void CMwFilterKeyNavigator::leaveEditor(bool forward)
{
    // The next widget of the window's tab chain that is not part of the
    // editor; the editor keeps the focus when there is none.
    QWidget *widget = m_editor;
    for (;;) {
        widget = forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
        if (!widget || widget == m_editor)
            return;
        if (m_editor->isAncestorOf(widget) || widget->window() != m_editor->window())
            continue;
        if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus)
            && !widget->focusProxy()) {
            widget->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return;
        }
    }
}

bool CMwFilterKeyNavigator::findWidget(const QObject *widget, int &row, int &column) const
{
    for (row = 0; row < m_editor->rowCount(); ++row) {
        for (column = 0; column < m_editor->columnCount(); ++column) {
            if (m_editor->cellWidget(row, column) == widget)
                return true;
        }
    }
    return false;
}

bool CMwFilterKeyNavigator::handleKey(QObject *watched, QKeyEvent *key)
{
    const TabKey tab = tabKey(key);
    int row = -1;
    int column = -1;
    if (watched == m_editor) {
        row = m_editor->currentRow();
        column = m_editor->currentColumn();
        if (tab == TabKey::None) {
            // Space on a check box switches the row like a click: the check
            // state first, then the row's cells.
            if ((key->key() == Qt::Key_Space || key->key() == Qt::Key_Select)
                && key->modifiers() == Qt::NoModifier && column == checkColumn
                && row < m_editor->rowCount() - 1 && isStop(row, column)) {
                QTableWidgetItem *check = m_editor->item(row, column);
                check->setCheckState(
                    check->checkState() == Qt::Unchecked ? Qt::Checked : Qt::Unchecked);
                m_checkToggled(check);
                return true;
            }
            return false;
        }
        if (row < 0 || column < 0) {
            // No current cell yet: start before the first or after the last.
            row = tab == TabKey::Forward ? 0 : m_editor->rowCount();
            column = tab == TabKey::Forward ? -1 : 0;
        }
    } else {
        if (tab == TabKey::None || !findWidget(watched, row, column))
            return false;
    }
    moveFrom(row, column, tab == TabKey::Forward);
    return true;
}

bool CMwFilterKeyNavigator::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress)
        return handleKey(watched, static_cast<QKeyEvent *>(event));
    int row = -1;
    int column = -1;
    if (event->type() == QEvent::FocusIn && !m_moving
        && (watched == m_editor || findWidget(watched, row, column))) {
        // Entering the editor by Tab lands on its first cell the user can
        // operate (by Shift+Tab on its last), not on a disabled one; also
        // when the window's Tab chain reaches one of its pickers first.
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) {
            const bool forward = reason == Qt::TabFocusReason;
            const int columns = m_editor->columnCount();
            const int cells = m_editor->rowCount() * columns;
            for (int at = forward ? 0 : cells - 1; at >= 0 && at < cells; at += forward ? 1 : -1) {
                if (isStop(at / columns, at % columns)) {
                    focusCell(at / columns, at % columns);
                    // Another widget took the focus: this one has nothing to show.
                    QWidget *cell = m_editor->cellWidget(at / columns, at % columns);
                    return watched == m_editor ? cell != nullptr : cell != watched;
                }
            }
        }
    }
    return QObject::eventFilter(watched, event);
}
