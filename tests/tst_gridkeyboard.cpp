#include <vel_qt_widgets/CMwFilterWidget.h>
#include <vel_qt_widgets/CMwGridTableModel.h>
#include <vel_qt_widgets/CMwGridTreeView.h>
#include <vel_qt_widgets/CMwHierarchicalGridView.h>
#include <vel_qt_widgets/CMwHierarchicalHeaderView.h>
#include <vel_qt_widgets/CMwPickerForTable.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include "grid_test_support.h"
#include "vel_test_main.h"

#include <QAction>
#include <QtCore/QPointer>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QTimer>
#include <QtGui/QStandardItemModel>
#include <QtTest/QAbstractItemModelTester>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolBar>

namespace {

// Waits for the next popup menu and works it with the keyboard only: Down
// the given number of times, then Return (none: Escape).
class MenuKeys : public QObject
{
public:
    explicit MenuKeys(int downs)
        : m_downs(downs)
    {
        m_timer.setInterval(10);
        QObject::connect(&m_timer, &QTimer::timeout, [this]() {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu || seen)
                return;
            seen = true;
            m_timer.stop();
            for (const QAction *action : menu->actions())
                texts << action->text();
            parent = menu->parentWidget();
            if (m_downs <= 0) {
                QTest::keyClick(menu, Qt::Key_Escape);
                return;
            }
            for (int i = 0; i < m_downs; ++i)
                QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        m_timer.start();
    }

    bool seen = false;
    QStringList texts;
    QWidget *parent = nullptr;

private:
    int m_downs;
    QTimer m_timer;
};

const QStringList menuTexts = {QStringLiteral("Hide Column"), QStringLiteral("Show All Columns"),
    QString(), QStringLiteral("Group By"), QStringLiteral("Ungroup")};

struct Grid
{
    Grid()
    {
        grid.setModel(cities(&grid));
        tester.reset(new QAbstractItemModelTester(
            grid.model(), QAbstractItemModelTester::FailureReportingMode::Fatal));
    }
    CMwGridTreeView *body() const
    {
        return grid.findChild<CMwGridTreeView *>(QStringLiteral("DataView"));
    }
    CMwHierarchicalHeaderView *header() const
    {
        return qobject_cast<CMwHierarchicalHeaderView *>(grid.horizontalHeader());
    }
    QWidget *toolButton(int action) const
    {
        auto *toolbar = grid.findChild<QToolBar *>(QStringLiteral("MainToolbar"));
        return toolbar->widgetForAction(toolbar->actions().at(action));
    }
    bool show()
    {
        grid.resize(600, 400);
        grid.show();
        QApplication::setActiveWindow(&grid);
        return QTest::qWaitForWindowActive(&grid);
    }

    CMwHierarchicalGridView grid;
    QScopedPointer<QAbstractItemModelTester> tester;
};

enum ToolAction { ShowStatistics, UseFilter, DefineFilter, Up, Down, Remove };

// Name | Count | Price, four rows.
QStandardItemModel *makeModel(QObject *parent)
{
    auto *model = new QStandardItemModel(4, 3, parent);
    model->setHorizontalHeaderLabels({"Name", "Count", "Price"});
    const char *names[] = {"a", "b", "c", "d"};
    for (int r = 0; r < 4; ++r) {
        model->setData(model->index(r, 0), QString::fromLatin1(names[r]));
        model->setData(model->index(r, 1), (r + 1) * 5);
        model->setData(model->index(r, 2), r * 2.5);
    }
    return model;
}

// A filter editor between two line edits, in an active window.
struct FilterForm
{
    FilterForm()
        : model(makeModel(&window))
    {
        proxy.setSourceModel(model);
        tester.reset(new QAbstractItemModelTester(
            &proxy, QAbstractItemModelTester::FailureReportingMode::Fatal));
        before = new QLineEdit(&window);
        editor = new CMwFilterWidget(&window);
        after = new QLineEdit(&window);
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(before);
        layout->addWidget(editor);
        layout->addWidget(after);
        editor->setRefModel(&proxy);
        editor->defineFilter();
    }
    bool show()
    {
        window.resize(700, 300);
        window.show();
        QApplication::setActiveWindow(&window);
        return QTest::qWaitForWindowActive(&window);
    }
    CMwPickerForTable *picker(int row, int column) const
    {
        return qobject_cast<CMwPickerForTable *>(editor->cellWidget(row, column));
    }
    // Chooses an item of a picker through its popup, by keyboard: moves
    // that many items down (negative: up) from the current one.
    static void chooseInPopup(CMwPickerForTable *picker, int downs)
    {
        QTRY_VERIFY(picker->view()->isVisible());
        for (int i = 0; i < qAbs(downs); ++i)
            QTest::keyClick(picker->view(), downs > 0 ? Qt::Key_Down : Qt::Key_Up);
        QTest::keyClick(picker->view(), Qt::Key_Return);
        QTRY_VERIFY(!picker->view()->isVisible());
        // The offscreen platform does not always give the activation back
        // to the window when a popup closes; a desktop does.
        if (QApplication::activeWindow() != picker->window())
            QApplication::setActiveWindow(picker->window());
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(picker));
    }

    QWidget window;
    QStandardItemModel *model;
    CMwSortFilterProxyModel proxy;
    QScopedPointer<QAbstractItemModelTester> tester;
    QLineEdit *before;
    CMwFilterWidget *editor;
    QLineEdit *after;
};

} // namespace

class tst_GridKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void menuKeyOpensColumnMenu_data();
    void menuKeyOpensColumnMenu();
    void menuKeyHidesCurrentColumn();
    void menuWithoutCurrentCellTakesFirstVisibleColumn();
    void keyboardContextMenuEventOpensMenu();
    void mouseContextMenuInBodyOpensNothing();
    void showColumnMenuRejectsBadSection();
    void tabWalksToolbarThenGrid();
    void tabOrderHoldsInsideAnotherWindow_data();
    void tabOrderHoldsInsideAnotherWindow();
    void spaceTriggersToolbarActions();
    void spaceOnResizeButtonFitsColumns();
    void tabEntersFilterAtFirstUsableCell();
    void filterRowEditedByKeyboardOnly();
    void pickerKeysAskTheVeto_data();
    void pickerKeysAskTheVeto();
    void spaceOnCheckBoxSwitchesRow();
    void shiftTabWalksBackAndLeaves();
};

void tst_GridKeyboard::menuKeyOpensColumnMenu_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("menu key") << int(Qt::Key_Menu) << int(Qt::NoModifier);
    QTest::newRow("Shift+F10") << int(Qt::Key_F10) << int(Qt::ShiftModifier);
}

// "Group By" chosen by keys groups by the current column of the body.
void tst_GridKeyboard::menuKeyOpensColumnMenu()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    Grid g;
    QVERIFY(g.show());
    g.body()->setFocus();
    g.body()->setCurrentIndex(g.grid.model()->index(2, 1));
    QSignalSpy group(g.header(), SIGNAL(groupByColumn(mw_int32)));
    ignorePopupWarnings();
    MenuKeys keys(3); // Hide Column, Show All Columns, (separator), Group By
    QTest::keyClick(g.body(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QVERIFY(keys.seen);
    QCOMPARE(keys.texts, menuTexts);
    QCOMPARE(keys.parent, static_cast<QWidget *>(g.header()));
    QCOMPARE(group.count(), 1);
    QCOMPARE(group.at(0).at(0).toInt(), 1);
    // Grouping sorts by that column, ascending.
    auto *proxy = qobject_cast<QSortFilterProxyModel *>(g.grid.model());
    QCOMPARE(proxy->sortColumn(), 1);
    QCOMPARE(proxy->sortOrder(), Qt::AscendingOrder);
}

void tst_GridKeyboard::menuKeyHidesCurrentColumn()
{
    Grid g;
    QVERIFY(g.show());
    g.body()->setFocus();
    g.body()->setCurrentIndex(g.grid.model()->index(0, 2));
    QSignalSpy shown(g.header(), SIGNAL(showColumn(mw_int32, bool)));
    ignorePopupWarnings();
    MenuKeys keys(1);
    QTest::keyClick(g.body(), Qt::Key_Menu);
    QVERIFY(keys.seen);
    QVERIFY(g.header()->isSectionHidden(2));
    QVERIFY(!g.header()->isSectionHidden(0));
    QVERIFY(!g.header()->isSectionHidden(1));
    QCOMPARE(shown.count(), 1);
    QCOMPARE(shown.at(0).at(0).toInt(), 2);
    QCOMPARE(shown.at(0).at(1).toBool(), false);
    auto *table = g.grid.findChild<QTableView *>(QStringLiteral("statisticTableView"));
    QVERIFY(table->isColumnHidden(2));
}

void tst_GridKeyboard::menuWithoutCurrentCellTakesFirstVisibleColumn()
{
    Grid g;
    QVERIFY(g.show());
    g.header()->setSectionHidden(0, true);
    g.body()->setFocus();
    g.body()->setCurrentIndex(QModelIndex());
    QSignalSpy group(g.header(), SIGNAL(groupByColumn(mw_int32)));
    ignorePopupWarnings();
    MenuKeys keys(3);
    QTest::keyClick(g.body(), Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(keys.seen);
    QCOMPARE(group.count(), 1);
    QCOMPARE(group.at(0).at(0).toInt(), 1);
}

// Platforms that turn the menu key into a context-menu event reach the same menu.
void tst_GridKeyboard::keyboardContextMenuEventOpensMenu()
{
    Grid g;
    QVERIFY(g.show());
    g.body()->setCurrentIndex(g.grid.model()->index(1, 0));
    QSignalSpy group(g.header(), SIGNAL(groupByColumn(mw_int32)));
    ignorePopupWarnings();
    MenuKeys keys(4); // ... Group By, Ungroup
    QContextMenuEvent event(
        QContextMenuEvent::Keyboard, QPoint(5, 5), g.body()->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(g.body(), &event);
    QVERIFY(keys.seen);
    QVERIFY(event.isAccepted());
    QCOMPARE(group.count(), 1);
    QCOMPARE(group.at(0).at(0).toInt(), -1);
}

// A right click in the body stays without a menu, as before.
void tst_GridKeyboard::mouseContextMenuInBodyOpensNothing()
{
    Grid g;
    QVERIFY(g.show());
    bool seen = false;
    QTimer timer;
    timer.setInterval(5);
    QObject::connect(&timer, &QTimer::timeout, [&]() {
        if (QWidget *popup = QApplication::activePopupWidget()) {
            seen = true;
            popup->close();
        }
    });
    timer.start();
    const QPoint pos = g.body()->visualRect(g.grid.model()->index(0, 0)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, g.body()->viewport()->mapToGlobal(pos));
    QApplication::sendEvent(g.body()->viewport(), &event);
    QCoreApplication::processEvents();
    QVERIFY(!seen);
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_GridKeyboard::showColumnMenuRejectsBadSection()
{
    Grid g;
    QTest::ignoreMessage(QtWarningMsg, "CMwHierarchicalHeaderView::showColumnMenu: no section 3");
    g.header()->showColumnMenu(3);
    QTest::ignoreMessage(QtWarningMsg, "CMwHierarchicalHeaderView::showColumnMenu: no section -1");
    g.header()->showColumnMenu(-1);
    QVERIFY(!QApplication::activePopupWidget());
}

// Tab runs through the visible toolbar buttons, then the grid's parts from
// top to bottom.
void tst_GridKeyboard::tabWalksToolbarThenGrid()
{
    Grid g;
    QVERIFY(g.show());
    for (int action = ShowStatistics; action <= Remove; ++action)
        QVERIFY(g.toolButton(action)->focusPolicy() & Qt::TabFocus);
    // A click does not take the focus away from the body.
    QVERIFY(!(g.toolButton(ShowStatistics)->focusPolicy() & Qt::ClickFocus));

    g.toolButton(ShowStatistics)->setFocus(Qt::TabFocusReason);
    QCOMPARE(QApplication::focusWidget(), g.toolButton(ShowStatistics));
    QWidget *const expected[] = {
        g.toolButton(UseFilter),
        g.toolButton(DefineFilter),
        g.grid.findChild<QPushButton *>(QStringLiteral("resizeButton")),
        g.body(),
        g.grid.findChild<QTableView *>(QStringLiteral("statisticTableView")),
    };
    for (QWidget *next : expected) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), next);
    }
    // With the filter editor open, its row actions and the editor join.
    g.toolButton(DefineFilter)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(g.toolButton(DefineFilter), Qt::Key_Space);
    QTRY_VERIFY(g.toolButton(Remove)->isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), g.toolButton(Up));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), g.toolButton(Down));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), g.toolButton(Remove));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    auto *filter = g.grid.findChild<CMwFilterWidget *>(QStringLiteral("FilterTable"));
    // The placeholder row's column picker: the editor's only usable cell.
    QCOMPARE(QApplication::focusWidget(), filter->cellWidget(0, 2));
}

void tst_GridKeyboard::tabOrderHoldsInsideAnotherWindow_data()
{
    // true: built on a page of its own (beside a label) that joins the
    // window later, as in the gallery; false: built without a parent, then
    // laid out.
    QTest::addColumn<bool>("onPage");
    QTest::newRow("built on a page") << true;
    QTest::newRow("added to a layout") << false;
}

void tst_GridKeyboard::tabOrderHoldsInsideAnotherWindow()
{
    QFETCH(bool, onPage);
    QWidget window;
    auto *windowLayout = new QVBoxLayout(&window);
    auto *before = new QLineEdit(&window);
    windowLayout->addWidget(before);
    CMwHierarchicalGridView *grid = nullptr;
    if (onPage) {
        auto *page = new QWidget;
        auto *pageLayout = new QVBoxLayout(page);
        pageLayout->addWidget(new QLabel(QStringLiteral("Orders"), page));
        grid = new CMwHierarchicalGridView(page);
        pageLayout->addWidget(grid, 1);
        windowLayout->addWidget(page);
    } else {
        grid = new CMwHierarchicalGridView;
        windowLayout->addWidget(grid, 1);
    }
    auto *after = new QLineEdit(&window);
    windowLayout->addWidget(after);
    grid->setModel(cities(grid));
    QAbstractItemModelTester tester(
        grid->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    window.resize(700, 500);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));

    auto *toolbar = grid->findChild<QToolBar *>(QStringLiteral("MainToolbar"));
    const auto tool
        = [toolbar](int action) { return toolbar->widgetForAction(toolbar->actions().at(action)); };
    auto *resizeButton = grid->findChild<QPushButton *>(QStringLiteral("resizeButton"));
    auto *body = grid->findChild<CMwGridTreeView *>(QStringLiteral("DataView"));
    auto *statistics = grid->findChild<QTableView *>(QStringLiteral("statisticTableView"));
    auto *filter = grid->findChild<CMwFilterWidget *>(QStringLiteral("FilterTable"));

    // Into the grid at its toolbar, out of it after the statistics.
    before->setFocus(Qt::TabFocusReason);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(before));
    QWidget *const forward[] = {tool(ShowStatistics), tool(UseFilter), tool(DefineFilter),
        resizeButton, body, statistics, after};
    for (QWidget *next : forward) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), next);
    }
    QWidget *const backward[] = {statistics, body, resizeButton, tool(DefineFilter),
        tool(UseFilter), tool(ShowStatistics), before};
    for (QWidget *next : backward) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), next);
    }

    // "Define Filter" opens the editor: the row actions, then the editor's
    // placeholder column picker, then the rest of the grid.
    tool(DefineFilter)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(tool(DefineFilter), Qt::Key_Space);
    QTRY_VERIFY(tool(Remove)->isVisible());
    QWidget *const opened[] = {tool(Up), tool(Down), tool(Remove), filter->cellWidget(0, 2),
        resizeButton, body, statistics, after};
    for (QWidget *next : opened) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), next);
    }
}

void tst_GridKeyboard::spaceTriggersToolbarActions()
{
    Grid g;
    QVERIFY(g.show());
    auto *table = g.grid.findChild<QTableView *>(QStringLiteral("statisticTableView"));
    auto *filter = g.grid.findChild<CMwFilterWidget *>(QStringLiteral("FilterTable"));
    QSignalSpy filterChanged(filter, SIGNAL(filterChanged()));

    g.toolButton(ShowStatistics)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(g.toolButton(ShowStatistics), Qt::Key_Space);
    QVERIFY(table->isHidden());
    QTest::keyClick(g.toolButton(ShowStatistics), Qt::Key_Space);
    QVERIFY(!table->isHidden());

    g.toolButton(DefineFilter)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(g.toolButton(DefineFilter), Qt::Key_Space);
    QVERIFY(!filter->isHidden());
    QCOMPARE(filter->rowCount(), 1);
    QTRY_VERIFY(g.toolButton(Remove)->isVisible());

    // A condition on "Value", then moved and removed with the row actions.
    auto *picker = qobject_cast<CMwPickerForTable *>(filter->cellWidget(0, 2));
    picker->setCurrentIndex(1);
    QCOMPARE(filter->rowCount(), 2);
    filter->selectRow(0);
    g.toolButton(Down)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(g.toolButton(Down), Qt::Key_Space);
    QCOMPARE(qobject_cast<QComboBox *>(filter->cellWidget(1, 2))->currentIndex(), 1);
    g.toolButton(Up)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(g.toolButton(Up), Qt::Key_Space);
    QCOMPARE(qobject_cast<QComboBox *>(filter->cellWidget(0, 2))->currentIndex(), 1);

    g.toolButton(UseFilter)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(g.toolButton(UseFilter), Qt::Key_Space);
    QVERIFY(qobject_cast<QAbstractButton *>(g.toolButton(UseFilter))->isChecked());
    QCOMPARE(filterChanged.count(), 1);

    // Moving a condition onto the placeholder filled it: a new one followed.
    QCOMPARE(filter->rowCount(), 3);
    filter->selectRow(0);
    g.toolButton(Remove)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(g.toolButton(Remove), Qt::Key_Space);
    QCOMPARE(filter->rowCount(), 2);
}

void tst_GridKeyboard::spaceOnResizeButtonFitsColumns()
{
    Grid g;
    QVERIFY(g.show());
    QHeaderView *header = g.grid.horizontalHeader();
    header->resizeSections(QHeaderView::ResizeToContents);
    QVector<int> fitted;
    for (int column = 0; column < 3; ++column)
        fitted << header->sectionSize(column);
    for (int column = 0; column < 3; ++column)
        header->resizeSection(column, 300);
    auto *button = g.grid.findChild<QPushButton *>(QStringLiteral("resizeButton"));
    QVERIFY(button->focusPolicy() & Qt::TabFocus);
    button->setFocus(Qt::TabFocusReason);
    QTest::keyClick(button, Qt::Key_Space);
    for (int column = 0; column < 3; ++column) {
        QVERIFY(fitted.at(column) < 300);
        QCOMPARE(header->sectionSize(column), fitted.at(column));
    }
}

void tst_GridKeyboard::tabEntersFilterAtFirstUsableCell()
{
    FilterForm f;
    QVERIFY(f.show());
    f.before->setFocus(Qt::TabFocusReason);
    QTest::keyClick(f.before, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.picker(0, 2)));
    // Only the column picker of the placeholder row can be used: Tab leaves.
    QTest::keyClick(f.picker(0, 2), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.after));
    QTest::keyClick(f.after, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.picker(0, 2)));
    QTest::keyClick(f.picker(0, 2), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.before));
}

// One condition "AND Count Is Greater 12" made with keys alone.
void tst_GridKeyboard::filterRowEditedByKeyboardOnly()
{
    FilterForm f;
    QVERIFY(f.show());
    f.editor->onActivateFilter(true);
    f.before->setFocus(Qt::TabFocusReason);
    QTest::keyClick(f.before, Qt::Key_Tab);
    CMwPickerForTable *column = f.picker(0, 2);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(column));
    // Tab into a row makes it the current, selected row, so its pickers open at once.
    QCOMPARE(f.editor->currentRow(), 0);
    ignorePopupWarnings();
    QTest::keyClick(column, Qt::Key_Down, Qt::AltModifier);
    FilterForm::chooseInPopup(column, 1); // Name, Count
    QCOMPARE(column->currentText(), QStringLiteral("Count"));
    QCOMPARE(f.editor->rowCount(), 2);

    // Back to the operator and the check box, which the row now offers.
    QTest::keyClick(column, Qt::Key_Backtab, Qt::ShiftModifier);
    CMwPickerForTable *op = f.picker(0, 1);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(op));
    ignorePopupWarnings();
    QTest::keyClick(op, Qt::Key_F4);
    FilterForm::chooseInPopup(op, 1);
    QCOMPARE(op->currentText(), QStringLiteral("OR"));
    ignorePopupWarnings();
    QTest::keyClick(op, Qt::Key_Space);
    FilterForm::chooseInPopup(op, -1);
    QCOMPARE(op->currentText(), QStringLiteral("AND"));
    QTest::keyClick(op, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.editor));
    QCOMPARE(f.editor->currentRow(), 0);
    QCOMPARE(f.editor->currentColumn(), 0);

    // Forward again through operator and column to the comparison.
    QTest::keyClick(f.editor, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(op));
    QTest::keyClick(op, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(column));
    QTest::keyClick(column, Qt::Key_Tab);
    CMwPickerForTable *comparison = f.picker(0, 3);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(comparison));
    ignorePopupWarnings();
    QTest::keyClick(comparison, Qt::Key_Down, Qt::AltModifier);
    FilterForm::chooseInPopup(comparison, 2); // Is Greater
    QCOMPARE(comparison->currentIndex(), 2);

    // The value: typed into the cell, Tab commits it and goes on to the
    // next row's column picker.
    QTest::keyClick(comparison, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.editor));
    QCOMPARE(f.editor->currentColumn(), 4);
    QTest::keyClick(f.editor, Qt::Key_F2);
    QPointer<QLineEdit> edit = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    QVERIFY(edit);
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("12"));
    QTest::keyClick(edit, Qt::Key_Tab);
    QCOMPARE(f.editor->item(0, 4)->text(), QStringLiteral("12"));
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.picker(1, 2)));
    // The editor closed with the commit (it is deleted later).
    QVERIFY(!edit || edit->isHidden());

    // The filter the proxy got: counts 15 and 20 pass.
    QCOMPARE(f.proxy.rowCount(), 2);
    QCOMPARE(f.proxy.index(0, 0).data().toString(), QStringLiteral("c"));
    QCOMPARE(f.proxy.index(1, 0).data().toString(), QStringLiteral("d"));
}

void tst_GridKeyboard::pickerKeysAskTheVeto_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("Alt+Down") << int(Qt::Key_Down) << int(Qt::AltModifier);
    QTest::newRow("F4") << int(Qt::Key_F4) << int(Qt::NoModifier);
    QTest::newRow("Space") << int(Qt::Key_Space) << int(Qt::NoModifier);
}

// A picker focused in a row that is not selected (the focus selects the
// row; here the selection is cleared afterwards): the first key only
// selects the row, as the first click does; the second opens the popup.
void tst_GridKeyboard::pickerKeysAskTheVeto()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    FilterForm f;
    QVERIFY(f.show());
    CMwPickerForTable *column = f.picker(0, 2);
    column->setFocus(Qt::MouseFocusReason);
    f.editor->clearSelection();
    QVERIFY(!f.editor->selectionModel()->hasSelection());
    int asked = 0;
    connect(column, &CMwPickerForTable::popupWillShow, this, [&asked](bool &) { ++asked; });
    QTest::keyClick(column, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(asked, 1);
    QVERIFY(!column->view()->isVisible());
    QVERIFY(f.editor->selectionModel()->isRowSelected(0, QModelIndex()));
    ignorePopupWarnings();
    QTest::keyClick(column, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(asked, 2);
    QTRY_VERIFY(column->view()->isVisible());
    QTest::keyClick(column->view(), Qt::Key_Escape);
    QTRY_VERIFY(!column->view()->isVisible());
    QCOMPARE(column->currentIndex(), -1);
}

// Space on a row's check box switches the row off and on as a click does.
void tst_GridKeyboard::spaceOnCheckBoxSwitchesRow()
{
    FilterForm f;
    QVERIFY(f.show());
    f.picker(0, 2)->setCurrentIndex(1);
    f.editor->onActivateFilter(true);
    QCOMPARE(f.proxy.rowCount(), 4); // "Is Greater or Equal" an empty value
    QSignalSpy changed(f.editor, SIGNAL(filterChanged()));
    f.editor->setFocus(Qt::OtherFocusReason);
    f.editor->setCurrentCell(0, 0);
    QTest::keyClick(f.editor, Qt::Key_Space);
    QCOMPARE(f.editor->item(0, 0)->checkState(), Qt::Unchecked);
    QVERIFY(!f.picker(0, 1)->isEnabled());
    QVERIFY(!f.picker(0, 2)->isEnabled());
    QVERIFY(!f.picker(0, 3)->isEnabled());
    QVERIFY(!(f.editor->item(0, 4)->flags() & Qt::ItemIsEnabled));
    QCOMPARE(changed.count(), 1);
    // Tab skips the disabled cells: next is the placeholder's column picker.
    QTest::keyClick(f.editor, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.picker(1, 2)));
    QTest::keyClick(f.picker(1, 2), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(f.editor));
    QCOMPARE(f.editor->currentColumn(), 0);
    QTest::keyClick(f.editor, Qt::Key_Space);
    QCOMPARE(f.editor->item(0, 0)->checkState(), Qt::Checked);
    QVERIFY(f.picker(0, 1)->isEnabled());
    QVERIFY(f.picker(0, 3)->isEnabled());
    QVERIFY(f.editor->item(0, 4)->flags() & Qt::ItemIsEnabled);
    QCOMPARE(changed.count(), 2);
    // The placeholder's check box is no stop and takes no Space.
    f.editor->setCurrentCell(1, 0);
    QTest::keyClick(f.editor, Qt::Key_Space);
    QCOMPARE(f.editor->item(1, 0)->checkState(), Qt::Checked);
    QVERIFY(!f.picker(1, 1)->isEnabled());
}

void tst_GridKeyboard::shiftTabWalksBackAndLeaves()
{
    FilterForm f;
    QVERIFY(f.show());
    f.picker(0, 2)->setCurrentIndex(0);
    QCOMPARE(f.editor->rowCount(), 2);
    f.after->setFocus(Qt::TabFocusReason);
    QWidget *const expected[] = {f.picker(1, 2), f.editor, f.picker(0, 3), f.picker(0, 2),
        f.picker(0, 1), f.editor, f.before};
    const int expectedColumns[] = {-1, 4, -1, -1, -1, 0, -1};
    for (int i = 0; i < 7; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), expected[i]);
        if (expectedColumns[i] >= 0)
            QCOMPARE(f.editor->currentColumn(), expectedColumns[i]);
    }
}

VEL_TEST_MAIN(tst_GridKeyboard)
#include "tst_gridkeyboard.moc"
