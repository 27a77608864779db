#ifndef VEL_QT_WIDGETS_CMWFILTERKEYNAVIGATOR_P_H
#define VEL_QT_WIDGETS_CMWFILTERKEYNAVIGATOR_P_H

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtWidgets/QStyledItemDelegate>

QT_BEGIN_NAMESPACE
class QTableWidget;
QT_END_NAMESPACE

class CMwFilterWidget;

// Keyboard walk through the filter editor: Tab and Shift+Tab go row by row
// through the enabled check box, operator, column, comparison and value
// cells, then leave the editor; Space on a check box switches its row as a
// click does. The pickers open with their own keys (Alt+Down, F4, Space),
// which ask the popup veto as a click does.
class CMwFilterKeyNavigator : public QObject
{
    Q_OBJECT

public:
    explicit CMwFilterKeyNavigator(CMwFilterWidget *editor);

    // Watches the cell widget of a new row.
    void watch(QWidget *cellWidget);
    // Moves to the next (previous) enabled cell after (row, column), or out
    // of the editor after the last one.
    void moveFrom(int row, int column, bool forward);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isStop(int row, int column) const;
    void focusCell(int row, int column);
    void leaveEditor(bool forward);
    bool findWidget(const QObject *widget, int &row, int &column) const;
    bool handleKey(QObject *watched, QKeyEvent *key);

    CMwFilterWidget *m_editor;
    bool m_moving = false;
};

// The value column's delegate: Tab in an open editor commits the value and
// goes on with the editor's own walk instead of opening the next cell.
class CMwFilterValueDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    CMwFilterValueDelegate(CMwFilterKeyNavigator *navigator, QTableWidget *table);

protected:
    bool eventFilter(QObject *editor, QEvent *event) override;

private:
    QPointer<CMwFilterKeyNavigator> m_navigator;
    QTableWidget *m_table;
};

#endif // VEL_QT_WIDGETS_CMWFILTERKEYNAVIGATOR_P_H
