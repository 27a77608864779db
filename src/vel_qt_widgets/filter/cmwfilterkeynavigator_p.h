#ifndef VEL_QT_WIDGETS_CMWFILTERKEYNAVIGATOR_P_H
#define VEL_QT_WIDGETS_CMWFILTERKEYNAVIGATOR_P_H

#include <QtCore/QObject>

#include <functional>

QT_BEGIN_NAMESPACE
class QKeyEvent;
class QTableWidget;
class QTableWidgetItem;
QT_END_NAMESPACE

// Keyboard walk through the filter editor: Tab and Shift+Tab go row by row
// through the enabled check box, operator, column, comparison and value
// cells, then leave the editor; Space on a check box switches its row as a
// click does. The pickers open with their own keys (Alt+Down, F4, Space),
// which ask the popup veto as a click does.
class CMwFilterKeyNavigator : public QObject
{
    Q_OBJECT

public:
    // Which way a key press walks: Tab forward, Shift+Tab (or Backtab) back;
    // none with Ctrl, Alt or Meta held, so that those combinations keep
    // their own meaning.
    enum class TabKey { None, Forward, Backward };
    static TabKey tabKey(const QKeyEvent *key);

    // The editor is seen as the table it is, so that this helper does not
    // depend on the editor's own class; checkToggled is what a click on a
    // check box runs, called after Space switched one.
    using CheckToggled = std::function<void(QTableWidgetItem *)>;
    CMwFilterKeyNavigator(QTableWidget *editor, CheckToggled checkToggled);

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

    QTableWidget *m_editor;
    CheckToggled m_checkToggled;
    bool m_moving = false;
};

#endif // VEL_QT_WIDGETS_CMWFILTERKEYNAVIGATOR_P_H
