#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include "grid_view_watch.h"
#include "vel_test_main.h"

#include <QAction>
#include <QtCore/QIdentityProxyModel>
#include <QtCore/QTimer>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolBar>

#include <cmath>

namespace {

// "A(x y) B": the header model's cells, children in brackets.
QString describe(const QAbstractItemModel *model, const QModelIndex &parent = QModelIndex())
{
    QStringList cells;
    const int columns = model->columnCount(parent);
    for (int c = 0; c < columns; ++c) {
        const QModelIndex cell = model->index(0, c, parent);
        QString text = cell.data().toString();
        if (model->columnCount(cell) > 0)
            text += QLatin1Char('(') + describe(model, cell) + QLatin1Char(')');
        cells << text;
    }
    return cells.join(QLatin1Char(' '));
}

// Passes a model on and supplies a ready-made horizontal header model
// through the root's HorizontalHeaderModelRole.
class SuppliedHeaderModel : public QIdentityProxyModel
{
    Q_OBJECT

public:
    using QIdentityProxyModel::QIdentityProxyModel;

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (!index.isValid() && role == HorizontalHeaderModelRole)
            return headerModel ? QVariant::fromValue<QObject *>(headerModel.data()) : QVariant();
        return QIdentityProxyModel::data(index, role);
    }

    QPointer<QStandardItemModel> headerModel;
};

} // namespace

class tst_CMwHierarchicalGridView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void children();
    void layout();
    void toolbarActions();
    void toolbarWiring();
    void branchParentColor();
    void headerDerivation_data();
    void headerDerivation();
    void headerPathNotAList();
    void layoutChangeRebuilds();
    void repeatedSetModelReleasesOldObjects();
    void nullModelIgnored();
    void missingChildren_data();
    void missingChildren();
    void statisticsFromModel();
    void statisticsWithoutRoles();
    void statisticsOverSelection();
    void selectionRevertsStatistics();
    void statisticsColumnSizeHint();
    void hideAndShowColumnsThroughMenu();
    void resizeSectionsFollow();
    void scrollStatisticsScrollsBody();
    void sortByClickingHeader();
    void groupAndUngroupThroughMenu();
    void filterThroughEditor();
    void eventFilterHeights();
    void headerThicknessFollowsModel();
    void cornerFollowsHeaderHeight_data();
    void cornerFollowsHeaderHeight();
    void rowHeightsFollowBody();
    void renderedGrid();
    void rowNumbersScrollWithBody();
    void updateControlRefreshesStatistics();
    void resizeButtonFitsContents();
    void statisticsGridLinesRunOn();
    void modelsDeletedWhileShown_data();
    void modelsDeletedWhileShown();
    void gridDeletedBeforeItsModel();

private:
    static QTableView *statistics(CMwHierarchicalGridView &grid);
    static CMwGridTreeView *body(CMwHierarchicalGridView &grid);
    static QAction *action(CMwHierarchicalGridView &grid, const QString &text);
    static void runMenu(QHeaderView *header, int section, const QString &choice);
};

QTableView *tst_CMwHierarchicalGridView::statistics(CMwHierarchicalGridView &grid)
{
    return grid.findChild<QTableView *>(QStringLiteral("statisticTableView"));
}

CMwGridTreeView *tst_CMwHierarchicalGridView::body(CMwHierarchicalGridView &grid)
{
    return grid.findChild<CMwGridTreeView *>(QStringLiteral("DataView"));
}

QAction *tst_CMwHierarchicalGridView::action(CMwHierarchicalGridView &grid, const QString &text)
{
    auto *toolbar = grid.findChild<QToolBar *>(QStringLiteral("MainToolbar"));
    for (QAction *a : toolbar->actions())
        if (a->text() == text)
            return a;
    return nullptr;
}

// Opens the header's context menu on a section and clicks a choice.
void tst_CMwHierarchicalGridView::runMenu(QHeaderView *header, int section, const QString &choice)
{
    QVERIFY(runHeaderMenu(header, section, choice));
}

void tst_CMwHierarchicalGridView::children()
{
    CMwHierarchicalGridView grid;

    auto *toolbar = grid.findChild<QToolBar *>(QStringLiteral("MainToolbar"));
    QVERIFY(toolbar);
    QCOMPARE(toolbar->toolButtonStyle(), Qt::ToolButtonIconOnly);
    QCOMPARE(toolbar->parentWidget(), &grid);

    auto *filter = grid.findChild<CMwFilterWidget *>(QStringLiteral("FilterTable"));
    QVERIFY(filter);
    QCOMPARE(filter->parentWidget(), &grid);
    QVERIFY(filter->isHidden());

    auto *button = grid.findChild<QPushButton *>(QStringLiteral("resizeButton"));
    QVERIFY(button);
    QCOMPARE(button->sizePolicy(), QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum));
    QCOMPARE(button->maximumWidth(), 50);
    QVERIFY(!button->icon().isNull());

    auto *rows = grid.findChild<CMwVHeaderView *>(QStringLiteral("VerticalHeader"));
    QVERIFY(rows);
    QCOMPARE(rows->orientation(), Qt::Vertical);
    QCOMPARE(rows->parentWidget(), &grid);
    QCOMPARE(rows->sizePolicy(), QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum));
    QCOMPARE(rows->maximumWidth(), 50);
    QVERIFY(rows->verticalScrollBar()->isHidden());
    QCOMPARE(rows->verticalScrollBar()->sizePolicy(),
        QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum));
    QCOMPARE(rows->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(rows->verticalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QVERIFY(rows->hasAutoScroll());
    QCOMPARE(rows->defaultAlignment(), Qt::AlignRight);
    QCOMPARE(grid.verticalHeader(), rows);

    CMwGridTreeView *view = body(grid);
    QVERIFY(view);
    QCOMPARE(view->parentWidget(), &grid);
    QCOMPARE(rows->treeView(), view);
    QVERIFY(view->isSortingEnabled());
    QCOMPARE(view->horizontalScrollBar()->maximumHeight(), 1);
    QVERIFY(view->horizontalScrollBar()->isHidden());
    QCOMPARE(view->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(view->horizontalScrollBar()->sizePolicy(),
        QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum));
    QVERIFY(!view->cornerWidget());
    auto *header = qobject_cast<CMwHierarchicalHeaderView *>(view->header());
    QVERIFY(header);
    QCOMPARE(header->orientation(), Qt::Horizontal);
    QCOMPARE(grid.horizontalHeader(), header);
    QCOMPARE(view->horizontalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QCOMPARE(view->verticalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QVERIFY(qobject_cast<CMwGridDelegate *>(view->itemDelegate()));
    QVERIFY(view->uniformRowHeights());
    QCOMPARE(view->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(view->selectionMode(), QAbstractItemView::ExtendedSelection);

    QTableView *table = statistics(grid);
    QVERIFY(table);
    QCOMPARE(table->parentWidget(), &grid);
    QCOMPARE(table->horizontalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
    QCOMPARE(table->horizontalHeader()->defaultAlignment(), Qt::AlignRight);
    QVERIFY(table->horizontalHeader()->isHidden());
    QCOMPARE(table->verticalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
    QCOMPARE(table->verticalHeader()->maximumWidth(), 50);
    QCOMPARE(table->verticalHeader()->sizePolicy(),
        QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum));
    QCOMPARE(table->sizePolicy(), QSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum));
    QVERIFY(qobject_cast<CMwStatisticsDelegate *>(table->itemDelegate()));
    QCOMPARE(table->itemDelegate()->parent(), table);
    QCOMPARE(table->horizontalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QCOMPARE(table->selectionMode(), QAbstractItemView::NoSelection);
    QVERIFY(!table->isHidden());

    // Usable without a model.
    QVERIFY(!grid.model());
    QCOMPARE(grid.columnWidth(0), view->columnWidth(0));
}

void tst_CMwHierarchicalGridView::layout()
{
    CMwHierarchicalGridView grid;
    auto *outer = qobject_cast<QVBoxLayout *>(grid.layout());
    QVERIFY(outer);
    QCOMPARE(outer->contentsMargins(), QMargins());
    QCOMPARE(outer->spacing(), 0);
    QCOMPARE(outer->count(), 4);
    QCOMPARE(outer->itemAt(0)->widget()->objectName(), QStringLiteral("MainToolbar"));
    QCOMPARE(outer->itemAt(1)->widget()->objectName(), QStringLiteral("FilterTable"));
    QCOMPARE(outer->itemAt(3)->widget()->objectName(), QStringLiteral("statisticTableView"));
    auto *middle = qobject_cast<QHBoxLayout *>(outer->itemAt(2)->layout());
    QVERIFY(middle);
    QCOMPARE(middle->spacing(), 0);
    QCOMPARE(middle->contentsMargins(), QMargins());
    QCOMPARE(middle->count(), 2);
    auto *corner = qobject_cast<QVBoxLayout *>(middle->itemAt(0)->layout());
    QVERIFY(corner);
    QCOMPARE(corner->spacing(), 0);
    QCOMPARE(corner->contentsMargins(), QMargins());
    QCOMPARE(corner->itemAt(0)->widget()->objectName(), QStringLiteral("resizeButton"));
    QCOMPARE(corner->itemAt(1)->widget()->objectName(), QStringLiteral("VerticalHeader"));
    QCOMPARE(middle->itemAt(1)->widget()->objectName(), QStringLiteral("DataView"));
}

void tst_CMwHierarchicalGridView::toolbarActions()
{
    CMwHierarchicalGridView grid;
    auto *toolbar = grid.findChild<QToolBar *>(QStringLiteral("MainToolbar"));
    const QList<QAction *> actions = toolbar->actions();
    QCOMPARE(actions.size(), 6);
    const QStringList texts = {QStringLiteral("Show Statistics"), QStringLiteral("Use Filter"),
        QStringLiteral("Define Filter"), QStringLiteral("Up"), QStringLiteral("Down"),
        QStringLiteral("Remove")};
    const QStringList icons = {QStringLiteral(":/w32_commonres/res/suma_file.svg"),
        QStringLiteral(":/w32_commonres/res/filter.svg"),
        QStringLiteral(":/w32_commonres/res/filter_edit.svg"),
        QStringLiteral(":/w32_commonres/res/arr/item_up.svg"),
        QStringLiteral(":/w32_commonres/res/arr/item_down.svg"),
        QStringLiteral(":/w32_commonres/res/trash.svg")};
    const bool checkable[] = {true, true, true, false, false, false};
    const bool checked[] = {true, false, false, false, false, false};
    const bool visible[] = {true, true, true, false, false, false};
    for (int i = 0; i < actions.size(); ++i) {
        QCOMPARE(actions.at(i)->text(), texts.at(i));
        QCOMPARE(actions.at(i)->toolTip(), texts.at(i));
        QVERIFY(QFile::exists(icons.at(i)));
        QVERIFY(!actions.at(i)->icon().isNull());
        QCOMPARE(
            actions.at(i)->icon().pixmap(16).toImage(), QIcon(icons.at(i)).pixmap(16).toImage());
        QCOMPARE(actions.at(i)->isCheckable(), checkable[i]);
        QCOMPARE(actions.at(i)->isChecked(), checked[i]);
        QCOMPARE(actions.at(i)->isVisible(), visible[i]);
    }
}

void tst_CMwHierarchicalGridView::toolbarWiring()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QTableView *table = statistics(grid);
    auto *filter = grid.findChild<CMwFilterWidget *>(QStringLiteral("FilterTable"));

    action(grid, QStringLiteral("Show Statistics"))->trigger();
    QVERIFY(table->isHidden());
    action(grid, QStringLiteral("Show Statistics"))->trigger();
    QVERIFY(!table->isHidden());

    QAction *define = action(grid, QStringLiteral("Define Filter"));
    define->trigger();
    QVERIFY(define->isChecked());
    QVERIFY(!filter->isHidden());
    QCOMPARE(filter->rowCount(), 1);
    QVERIFY(action(grid, QStringLiteral("Up"))->isVisible());
    QVERIFY(action(grid, QStringLiteral("Down"))->isVisible());
    QVERIFY(action(grid, QStringLiteral("Remove"))->isVisible());
    define->trigger();
    QVERIFY(filter->isHidden());
    QVERIFY(!action(grid, QStringLiteral("Remove"))->isVisible());
    // Opening again does not add a second placeholder.
    define->trigger();
    QCOMPARE(filter->rowCount(), 1);

    QSignalSpy changed(filter, SIGNAL(filterChanged()));
    action(grid, QStringLiteral("Use Filter"))->trigger();
    QCOMPARE(changed.count(), 1);
    action(grid, QStringLiteral("Use Filter"))->trigger();
    QCOMPARE(changed.count(), 2);
}

void tst_CMwHierarchicalGridView::branchParentColor()
{
    CMwHierarchicalGridView grid;
    QCOMPARE(grid.colorBranchParent(), QColor(Qt::lightGray));
    QVERIFY(grid.setProperty("colBranchParent", QColor(Qt::yellow)));
    QCOMPARE(grid.colorBranchParent(), QColor(Qt::yellow));
    const QMetaProperty property
        = grid.metaObject()->property(grid.metaObject()->indexOfProperty("colBranchParent"));
    QVERIFY(property.isDesignable());
    QVERIFY(property.isStored());
}

void tst_CMwHierarchicalGridView::headerDerivation_data()
{
    QTest::addColumn<QStringList>("columns");
    QTest::addColumn<QString>("header");

    //                                  one path per column ("/" between levels)   expected cells
    QTest::newRow("shared parent") << QStringList {"A/x", "A/y", "B"} << "A(x y) B";
    QTest::newRow("kept: single levels never merge") << QStringList {"A", "A"} << "A A";
    QTest::newRow("only the preceding branch")
        << QStringList {"A/x", "B/y", "A/z"} << "A(x) B(y) A(z)";
    QTest::newRow("three levels") << QStringList {"O/P/a", "O/P/b", "O/Q/c", "R"}
                                  << "O(P(a b) Q(c)) R";
    QTest::newRow("single after branch") << QStringList {"A/x", "A"} << "A(x) A";
    // Every equal level is shared, the leaf too: the second section has no leaf.
    QTest::newRow("equal paths") << QStringList {"A/x", "A/x"} << "A(x)";
}

void tst_CMwHierarchicalGridView::headerDerivation()
{
    QFETCH(QStringList, columns);
    QFETCH(QString, header);
    CMwHierarchicalGridView grid;
    CMwGridTableModel model;
    model.setTable(paths(columns), {});
    grid.setModel(&model);
    watchGrid(grid);
    auto *view = qobject_cast<CMwHierarchicalHeaderView *>(grid.horizontalHeader());
    QVERIFY(view->headerModel());
    QCOMPARE(view->headerModel()->parent(), &grid);
    QCOMPARE(describe(view->headerModel()), header);
}

void tst_CMwHierarchicalGridView::headerPathNotAList()
{
    QStandardItemModel model(1, 3);
    model.setHeaderData(0, Qt::Horizontal, QStringList {"A", "x"}, HeaderPathRole);
    model.setHeaderData(1, Qt::Horizontal, QStringLiteral("A"), HeaderPathRole);
    model.setHeaderData(2, Qt::Horizontal, QStringList {"A", "y"}, HeaderPathRole);
    CMwHierarchicalGridView grid;
    grid.setModel(&model);
    watchGrid(grid);
    auto *header = qobject_cast<CMwHierarchicalHeaderView *>(grid.horizontalHeader());
    // The text adds no cell, so "A/y" still joins the preceding branch, and
    // the third section has no leaf of its own.
    QCOMPARE(describe(header->headerModel()), QStringLiteral("A(x y)"));
}

void tst_CMwHierarchicalGridView::layoutChangeRebuilds()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    watchGrid(grid);
    auto *header = qobject_cast<CMwHierarchicalHeaderView *>(grid.horizontalHeader());
    QPointer<QAbstractItemModel> first = header->headerModel();
    QPointer<QAbstractItemModel> firstStatistics = statistics(grid)->model();
    model->setHeaderPaths(paths({"Where/City", "Data/Value", "Note"}));
    // The reset is followed by a layout change: everything is rebuilt.
    QVERIFY(!first);
    QVERIFY(!firstStatistics);
    QCOMPARE(describe(header->headerModel()), QStringLiteral("Where(City) Data(Value) Note"));
}

void tst_CMwHierarchicalGridView::repeatedSetModelReleasesOldObjects()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel *a = cities(&grid);
    CMwGridTableModel *b = cities(&grid);
    grid.setModel(a);
    watchGrid(grid);
    QPointer<QAbstractItemModel> firstProxy = grid.model();
    auto *header = qobject_cast<CMwHierarchicalHeaderView *>(grid.horizontalHeader());
    QPointer<QAbstractItemModel> firstHeaderModel = header->headerModel();
    for (int i = 0; i < 20; ++i)
        grid.setModel(i % 2 ? a : b);
    QVERIFY(!firstProxy);
    QVERIFY(!firstHeaderModel);
    QCOMPARE(grid.findChildren<CMwSortFilterProxyModel *>().size(), 1);
    QCOMPARE(grid.findChildren<CMwStatisticsItemModel *>().size(), 1);
    QCOMPARE(grid.findChildren<QStandardItemModel *>().size(), 2); // header and statistics
    QCOMPARE(qobject_cast<QSortFilterProxyModel *>(grid.model())->sourceModel(), a);

    // Only the model shown rebuilds the grid. A layout change is announced
    // first, as Qt 6's model tester insists.
    QPointer<QAbstractItemModel> headerModel = header->headerModel();
    Q_EMIT b->layoutAboutToBeChanged();
    Q_EMIT b->layoutChanged();
    QVERIFY(headerModel);
    Q_EMIT a->layoutAboutToBeChanged();
    Q_EMIT a->layoutChanged();
    QVERIFY(!headerModel);
}

void tst_CMwHierarchicalGridView::nullModelIgnored()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    watchGrid(grid);
    QAbstractItemModel *proxy = grid.model();
    grid.setModel(nullptr);
    watchGrid(grid);
    QCOMPARE(grid.model(), proxy);
}

void tst_CMwHierarchicalGridView::missingChildren_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("MainToolbar") << "MainToolbar";
    QTest::newRow("FilterTable") << "FilterTable";
    QTest::newRow("resizeButton") << "resizeButton";
    QTest::newRow("VerticalHeader") << "VerticalHeader";
    QTest::newRow("DataView") << "DataView";
    QTest::newRow("statisticTableView") << "statisticTableView";
}

void tst_CMwHierarchicalGridView::missingChildren()
{
    QFETCH(QString, name);
    CMwHierarchicalGridView grid;
    delete grid.findChild<QWidget *>(name);
    QVERIFY(!grid.findChild<QWidget *>(name));
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    watchGrid(grid);
    grid.show();
    grid.updateControl();
    grid.onShowColumn(1, false);
    grid.sectionResized(1, 100, 80);
    grid.onResizeToContents();
    grid.showStatistics();
    grid.editFilter();
    grid.onDataChanged();
    Q_EMIT model->layoutAboutToBeChanged();
    Q_EMIT model->layoutChanged();
    QCoreApplication::processEvents();

    const bool hasBody = name != QLatin1String("DataView");
    QCOMPARE(grid.model() != nullptr, hasBody);
    QCOMPARE(grid.horizontalHeader() != nullptr, hasBody);
    QCOMPARE(grid.verticalHeader() != nullptr, name != QLatin1String("VerticalHeader"));
    if (!hasBody)
        QCOMPARE(grid.columnWidth(0), 0);
    if (name == QLatin1String("statisticTableView") || !hasBody)
        return;
    // Without the body the statistics have no proxy to read; otherwise they
    // are filled whatever else is missing.
    QCOMPARE(statistics(grid)->model()->index(0, 1).data().toDouble(), 4.0);
}

void tst_CMwHierarchicalGridView::statisticsFromModel()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    watchGrid(grid);
    QAbstractItemModel *stats = statistics(grid)->model();
    QVERIFY(qobject_cast<CMwStatisticsItemModel *>(stats));
    QCOMPARE(stats->parent(), &grid);
    QCOMPARE(stats->rowCount(), 6);
    QCOMPARE(stats->columnCount(), 3);
    const QStringList labels = {"Count", "Distinct", "Min", "Max", "Mean", "StDev"};
    for (int row = 0; row < 6; ++row) {
        QCOMPARE(stats->headerData(row, Qt::Vertical).toString(), labels.at(row));
        for (int column = 0; column < 3; ++column) {
            const QModelIndex cell = stats->index(row, column);
            QCOMPARE(cell.data(), model->index(0, column).data(StatCountRole + row));
            QCOMPARE(cell.data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight));
        }
    }
    // Values 1, 2, 3, 4 over the whole column.
    QCOMPARE(stats->index(0, 1).data().toDouble(), 4.0);
    QCOMPARE(stats->index(4, 1).data().toDouble(), 2.5);
}

void tst_CMwHierarchicalGridView::statisticsWithoutRoles()
{
    QStandardItemModel model(3, 2);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 2; ++column)
            model.setItem(row, column, new QStandardItem(QString::number(row)));
    CMwHierarchicalGridView grid;
    grid.setModel(&model);
    watchGrid(grid);
    QAbstractItemModel *stats = statistics(grid)->model();
    QCOMPARE(stats->columnCount(), 2);
    for (int row = 0; row < 6; ++row)
        for (int column = 0; column < 2; ++column)
            QVERIFY(!stats->index(row, column).data().isValid());
    QCOMPARE(stats->headerData(5, Qt::Vertical).toString(), QStringLiteral("StDev"));
}

void tst_CMwHierarchicalGridView::statisticsOverSelection()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel model;
    // Number 1 2 3 | Equal 4 4 (empty) | Text "x" "12" "y"
    model.setTable(paths({"Number", "Equal", "Text"}),
        {{1, 4, QStringLiteral("x")}, {2, 4, QStringLiteral("12")},
            {3, QVariant(), QStringLiteral("y")}});
    grid.setModel(&model);
    watchGrid(grid);
    CMwGridTreeView *view = body(grid);
    QAbstractItemModel *proxy = grid.model();
    view->selectionModel()->select(QItemSelection(proxy->index(0, 0), proxy->index(2, 0)),
        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QAbstractItemModel *stats = statistics(grid)->model();
    auto value = [stats](int row, int column) { return stats->index(row, column).data(); };
    QCOMPARE(value(0, 0).userType(), int(QMetaType::Double));
    // 1, 2, 3: Count 3, Distinct 3, Min 1, Max 3, Mean 2, StDev 1.5811...
    QCOMPARE(value(0, 0).toDouble(), 3.0);
    QCOMPARE(value(1, 0).toDouble(), 3.0);
    QCOMPARE(value(2, 0).toDouble(), 1.0);
    QCOMPARE(value(3, 0).toDouble(), 3.0);
    QCOMPARE(value(4, 0).toDouble(), 2.0);
    QVERIFY(std::abs(value(5, 0).toDouble() - 1.5811388300841898) < 1e-12);
    // Two equal numbers: Distinct 1; the empty cell does not count.
    QCOMPARE(value(0, 1).toDouble(), 2.0);
    QCOMPARE(value(1, 1).toDouble(), 1.0);
    QCOMPARE(value(2, 1).toDouble(), 4.0);
    QCOMPARE(value(4, 1).toDouble(), 4.0);
    // Text: Mean and StDev 0, Min and Max the first value's number ("12" sorts first).
    QCOMPARE(value(0, 2).toDouble(), 3.0);
    QCOMPARE(value(2, 2).toDouble(), 12.0);
    QCOMPARE(value(3, 2).toDouble(), 12.0);
    QCOMPARE(value(4, 2).toDouble(), 0.0);
    QCOMPARE(value(5, 2).toDouble(), 0.0);
}

void tst_CMwHierarchicalGridView::selectionRevertsStatistics()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    watchGrid(grid);
    CMwGridTreeView *view = body(grid);
    QAbstractItemModel *proxy = grid.model();
    QItemSelectionModel *selection = view->selectionModel();
    auto countShown
        = [&grid]() { return statistics(grid)->model()->index(0, 1).data().toDouble(); };

    // One row from no selection: nothing is recomputed.
    QPointer<QAbstractItemModel> before = statistics(grid)->model();
    selection->select(
        proxy->index(1, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QVERIFY(before);
    QCOMPARE(statistics(grid)->model(), before.data());
    QCOMPARE(countShown(), 4.0);

    // Two rows: the selection's statistics.
    selection->select(QItemSelection(proxy->index(1, 0), proxy->index(2, 0)),
        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QVERIFY(!before);
    QCOMPARE(countShown(), 2.0);

    // Back to one row: the model's statistics over all rows again.
    selection->select(
        proxy->index(0, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QCOMPARE(countShown(), 4.0);
    QCOMPARE(statistics(grid)->model()->index(4, 1).data().toDouble(), 2.5);

    // And with the flag clear, a further single row changes nothing.
    before = statistics(grid)->model();
    selection->select(
        proxy->index(3, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QCOMPARE(statistics(grid)->model(), before.data());
}

void tst_CMwHierarchicalGridView::statisticsColumnSizeHint()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    body(grid)->setColumnWidth(1, 137);
    QAbstractItemModel *stats = statistics(grid)->model();
    QCOMPARE(stats->index(0, 1).data(Qt::SizeHintRole).toSize(), QSize(136, 0));
    QCOMPARE(stats->index(3, 0).data(Qt::SizeHintRole).toSize(), QSize(grid.columnWidth(0) - 1, 0));

    // Parented elsewhere, the model answers as a plain item model.
    CMwStatisticsItemModel orphan;
    orphan.setItem(0, 0, new QStandardItem(QStringLiteral("1")));
    QVERIFY(!orphan.index(0, 0).data(Qt::SizeHintRole).isValid());
}

void tst_CMwHierarchicalGridView::hideAndShowColumnsThroughMenu()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QVERIFY(showAt(grid, 600, 400));
    QHeaderView *header = grid.horizontalHeader();
    QTableView *table = statistics(grid);

    runMenu(header, 1, QStringLiteral("Hide Column"));
    QVERIFY(header->isSectionHidden(1));
    QVERIFY(table->isColumnHidden(1));
    QVERIFY(!table->isColumnHidden(0));

    runMenu(header, 0, QStringLiteral("Show All Columns"));
    QVERIFY(!header->isSectionHidden(1));
    QVERIFY(!table->isColumnHidden(1));

    // A rebuilt statistics table keeps the hidden column hidden.
    runMenu(header, 2, QStringLiteral("Hide Column"));
    grid.onDataChanged();
    QVERIFY(statistics(grid)->isColumnHidden(2));
}

void tst_CMwHierarchicalGridView::resizeSectionsFollow()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QVERIFY(showAt(grid, 600, 400));
    QHeaderView *header = grid.horizontalHeader();
    QTableView *table = statistics(grid);
    QCOMPARE(table->columnWidth(0), header->sectionSize(0));

    // As the user drags the border between sections 0 and 1.
    const int border = header->sectionViewportPosition(0) + header->sectionSize(0) - 1;
    const int y = header->height() - 4;
    QTest::mousePress(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(border, y));
    QMouseEvent move(
        QEvent::MouseMove, QPoint(border + 37, y), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(header->viewport(), &move);
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(border + 37, y));
    const int width = header->sectionSize(0);
    QVERIFY(width > 37);
    QCOMPARE(table->columnWidth(0), width);

    grid.onResizeToContents();
    for (int column = 0; column < 3; ++column)
        QCOMPARE(table->columnWidth(column), header->sectionSize(column));

    // A statistics table rebuilt by a selection keeps the body's widths.
    header->resizeSection(1, 123);
    grid.onDataChanged();
    QCOMPARE(statistics(grid)->columnWidth(1), 123);
}

void tst_CMwHierarchicalGridView::scrollStatisticsScrollsBody()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QVERIFY(showAt(grid, 260, 300));
    for (int column = 0; column < 3; ++column)
        grid.horizontalHeader()->resizeSection(column, 200);
    QScrollBar *bar = statistics(grid)->horizontalScrollBar();
    QTRY_VERIFY(bar->maximum() > 100);
    bar->setValue(90);
    QCOMPARE(body(grid)->horizontalScrollBar()->value(), 90);
    QCOMPARE(grid.horizontalHeader()->offset(), 90);
}

void tst_CMwHierarchicalGridView::sortByClickingHeader()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QVERIFY(showAt(grid, 600, 400));
    QHeaderView *header = grid.horizontalHeader();
    QAbstractItemModel *proxy = grid.model();
    // Sorted by the first column from the start.
    QCOMPARE(proxy->index(0, 0).data().toString(), QStringLiteral("Bergen"));

    QSignalSpy sortSpy(header, SIGNAL(sortIndicatorChanged(int, Qt::SortOrder)));
    const QPoint value(
        header->sectionViewportPosition(1) + header->sectionSize(1) / 2, header->height() - 4);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, value);
    QCOMPARE(sortSpy.count(), 1);
    QCOMPARE(header->sortIndicatorSection(), 1);
    const int first = proxy->index(0, 1).data().toInt();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, value);
    QCOMPARE(header->sortIndicatorSection(), 1);
    QVERIFY(proxy->index(0, 1).data().toInt() != first);
    QCOMPARE(proxy->index(0, 1).data().toInt() + first, 5); // 1 and 4 change places
}

void tst_CMwHierarchicalGridView::groupAndUngroupThroughMenu()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    watchGrid(grid);
    QVERIFY(connect(grid.horizontalHeader(), SIGNAL(groupByColumn(mw_int32)), model,
        SLOT(groupByColumn(mw_int32))));
    QVERIFY(showAt(grid, 600, 400));
    QAbstractItemModel *proxy = grid.model();
    QHeaderView *rows = grid.verticalHeader();
    QCOMPARE(rows->count(), 4);

    runMenu(grid.horizontalHeader(), 0, QStringLiteral("Group By"));
    QCOMPARE(model->groupColumn(), 0);
    QCOMPARE(proxy->rowCount(), 3);
    QCOMPARE(proxy->index(0, 0).data().toString(), QStringLiteral("City: Bergen (1)"));
    QVERIFY(proxy->index(1, 0).data(BranchParentRole).isValid());
    QCOMPARE(proxy->rowCount(proxy->index(1, 0)), 2);
    // The row numbers count group rows and records.
    QCOMPARE(rows->count(), 7);
    // The body draws the group rows as bands.
    body(grid)->expandAll();

    runMenu(grid.horizontalHeader(), 0, QStringLiteral("Ungroup"));
    QCOMPARE(model->groupColumn(), -1);
    QCOMPARE(proxy->rowCount(), 4);
    QCOMPARE(rows->count(), 4);
}

void tst_CMwHierarchicalGridView::filterThroughEditor()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QVERIFY(showAt(grid, 800, 500));
    auto *filter = grid.findChild<CMwFilterWidget *>(QStringLiteral("FilterTable"));
    action(grid, QStringLiteral("Define Filter"))->trigger();
    QVERIFY(filter->isVisible());

    // City Is Equal Oslo, in the placeholder row.
    auto *column = qobject_cast<QComboBox *>(filter->cellWidget(0, 2));
    QVERIFY(column);
    column->setCurrentIndex(column->findText(QStringLiteral("Place / City")));
    auto *comparator = qobject_cast<QComboBox *>(filter->cellWidget(0, 3));
    comparator->setCurrentIndex(comparator->findText(QStringLiteral("Is Equal")));
    filter->item(0, 4)->setText(QStringLiteral("Oslo"));
    QCOMPARE(grid.model()->rowCount(), 4);

    action(grid, QStringLiteral("Use Filter"))->trigger();
    QCOMPARE(grid.model()->rowCount(), 2);
    QCOMPARE(grid.model()->index(1, 1).data().toInt(), 3);
    action(grid, QStringLiteral("Use Filter"))->trigger();
    QCOMPARE(grid.model()->rowCount(), 4);
}

void tst_CMwHierarchicalGridView::eventFilterHeights()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QVERIFY(showAt(grid, 700, 400));
    QTableView *table = statistics(grid);
    QScrollBar *bar = table->horizontalScrollBar();
    const int rows = 6 * table->rowHeight(0);
    QVERIFY(rows > 0);
    QTRY_VERIFY(!bar->isVisible());
    QCOMPARE(table->maximumHeight(), rows);

    for (int column = 0; column < 3; ++column)
        grid.horizontalHeader()->resizeSection(column, 400);
    QTRY_VERIFY(bar->isVisible());
    QCOMPARE(table->minimumHeight(), rows);
    QCOMPARE(table->maximumHeight(), bar->height() + rows);
    QTRY_COMPARE(table->height(), bar->height() + rows);

    for (int column = 0; column < 3; ++column)
        grid.horizontalHeader()->resizeSection(column, 60);
    QTRY_VERIFY(!bar->isVisible());
    QCOMPARE(table->minimumHeight(), rows);
    QCOMPARE(table->maximumHeight(), rows);
}

void tst_CMwHierarchicalGridView::headerThicknessFollowsModel()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel flat;
    flat.setTable(paths({"A", "B"}), {{1, 2}});
    CMwGridTableModel deep;
    deep.setTable(paths({"L1/L2/a", "L1/L2/b"}), {{1, 2}});
    grid.setModel(&flat);
    watchGrid(grid);
    QVERIFY(showAt(grid, 500, 400));
    QHeaderView *header = grid.horizontalHeader();
    auto *button = grid.findChild<QPushButton *>(QStringLiteral("resizeButton"));
    const int one = header->height();
    QVERIFY(one > 10);
    QTRY_COMPARE(button->height(), one);

    grid.setModel(&deep);
    watchGrid(grid);
    // Three caption levels on the leaf's path.
    QTRY_VERIFY(header->height() > 2 * one);
    QCOMPARE(button->maximumHeight(), header->height());
    QTRY_COMPARE(button->height(), header->height());
    QCOMPARE(button->mapTo(&grid, QPoint(0, button->height())).y(),
        grid.verticalHeader()->mapTo(&grid, QPoint(0, 0)).y());

    grid.setModel(&flat);
    watchGrid(grid);
    QTRY_COMPARE(header->height(), one);
    QTRY_COMPARE(button->height(), one);
}

void tst_CMwHierarchicalGridView::cornerFollowsHeaderHeight_data()
{
    QTest::addColumn<bool>("rotate"); // true: a caption turned rotated, false: a larger font

    QTest::newRow("caption rotated") << true;
    QTest::newRow("larger header font") << false;
}

void tst_CMwHierarchicalGridView::cornerFollowsHeaderHeight()
{
    QFETCH(bool, rotate);

    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    QVERIFY(showAt(grid, 600, 420));
    auto *header = qobject_cast<CMwHierarchicalHeaderView *>(grid.horizontalHeader());
    QVERIFY(header);
    auto *button = grid.findChild<QPushButton *>(QStringLiteral("resizeButton"));
    const int before = header->height();
    QTRY_COMPARE(button->height(), before);

    // After setModel, nothing the grid rebuilds: the header alone grows.
    if (rotate) {
        QAbstractItemModel *captions = header->headerModel();
        const QModelIndex note = captions->index(0, 1, captions->index(0, 1));
        QCOMPARE(note.data().toString(), QStringLiteral("Note"));
        QVERIFY(captions->setData(note, true, Qt::UserRole));
    } else {
        QFont font = header->font();
        font.setPixelSize(2 * QFontInfo(font).pixelSize());
        header->setFont(font);
    }
    QTRY_VERIFY(header->height() > before);
    QTRY_COMPARE(button->height(), header->height());
    QCOMPARE(button->maximumHeight(), header->height());

    // The row numbers start where the body's rows start, and each stays
    // level with its row.
    QHeaderView *rows = grid.verticalHeader();
    CMwGridTreeView *view = body(grid);
    QTRY_COMPARE(
        rows->mapTo(&grid, QPoint(0, 0)).y(), view->viewport()->mapTo(&grid, QPoint(0, 0)).y());
    for (int row = 0; row < 4; ++row) {
        const QRect cell = view->visualRect(grid.model()->index(row, 0));
        QCOMPARE(rows->mapTo(&grid, QPoint(0, rows->sectionViewportPosition(row))).y(),
            view->viewport()->mapTo(&grid, cell.topLeft()).y());
    }
}

void tst_CMwHierarchicalGridView::rowHeightsFollowBody()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QVERIFY(showAt(grid, 500, 400));
    const int row = body(grid)->sizeHintForRow(0);
    QVERIFY(row > 0);
    QTableView *table = statistics(grid);
    // Below Qt's minimum section size, still the body's height.
    table->verticalHeader()->setMinimumSectionSize(row + 10);
    grid.verticalHeader()->setMinimumSectionSize(row + 10);
    grid.onDataChanged();
    QCOMPARE(table->verticalHeader()->defaultSectionSize(), row);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(table->rowHeight(i), row);
    QCOMPARE(table->maximumHeight(), 6 * row);
    QCOMPARE(grid.verticalHeader()->defaultSectionSize(), row);
    QCOMPARE(grid.verticalHeader()->sectionSize(0), row);
    QCOMPARE(body(grid)->visualRect(grid.model()->index(0, 0)).height(), row);
}

void tst_CMwHierarchicalGridView::renderedGrid()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    watchGrid(grid);
    QVERIFY(showAt(grid, 600, 420));
    QHeaderView *header = grid.horizontalHeader();
    header->resizeSection(1, 90);
    header->resizeSection(2, 90);
    QCoreApplication::processEvents();
    const QImage image = renderWidget(&grid);
    const QPoint headerOrigin = header->mapTo(&grid, QPoint(0, 0));
    const int levelHeight = header->height() / 2;

    // Multi-level header: "Data" spans sections 1 and 2, so the border
    // between them shows in the leaf row but not in the top row.
    const int border = headerOrigin.x() + header->sectionViewportPosition(2) - 1;
    const int topY = headerOrigin.y() + 3;
    const int leafY = headerOrigin.y() + levelHeight + 3;
    const QRgb topBorder = image.pixel(border, topY);
    const QRgb topInside = image.pixel(border - 20, topY);
    const QRgb leafBorder = image.pixel(border, leafY);
    const QRgb leafInside = image.pixel(border - 20, leafY);
    QCOMPARE(qGray(topBorder), qGray(topInside));
    QVERIFY(qGray(leafBorder) < qGray(leafInside));
    // The captions: "Data" over both, "Value" and "Note" in the leaf row.
    const int dataLeft = headerOrigin.x() + header->sectionViewportPosition(1);
    QVERIFY(!darkPixels(image, QRect(dataLeft, headerOrigin.y(), 180, levelHeight)).isNull());
    QVERIFY(!darkPixels(image, QRect(dataLeft, headerOrigin.y() + levelHeight, 90, levelHeight))
                 .isNull());
    // And the body starts below the header.
    CMwGridTreeView *view = body(grid);
    QCOMPARE(view->viewport()->mapTo(&grid, QPoint(0, 0)).y(), headerOrigin.y() + header->height());

    // Row numbers beside the rows: "1" to "4", nothing below.
    QHeaderView *rows = grid.verticalHeader();
    const QPoint rowsOrigin = rows->mapTo(&grid, QPoint(0, 0));
    const int rowHeight = view->sizeHintForRow(0);
    for (int row = 0; row < 4; ++row) {
        const QRect cell(rowsOrigin.x() + 2, rowsOrigin.y() + row * rowHeight + 2,
            rows->width() - 4, rowHeight - 4);
        const QRect text = darkPixels(image, cell);
        QVERIFY2(!text.isNull(), qPrintable(QStringLiteral("row %1").arg(row)));
        // Right-aligned numbers.
        QVERIFY(text.right() > cell.center().x());
    }
    QVERIFY(darkPixels(image,
        QRect(rowsOrigin.x() + 2, rowsOrigin.y() + 4 * rowHeight + 2, rows->width() - 4,
            rowHeight - 4))
                .isNull());

    // Statistics rows with their labels: six labels, and Count 4 of "Value".
    QTableView *table = statistics(grid);
    QHeaderView *labels = table->verticalHeader();
    const QPoint labelsOrigin = labels->mapTo(&grid, QPoint(0, 0));
    for (int row = 0; row < 6; ++row) {
        const QRect label(labelsOrigin.x() + 2, labelsOrigin.y() + labels->sectionPosition(row) + 2,
            labels->width() - 4, labels->sectionSize(row) - 4);
        QVERIFY2(!darkPixels(image, label).isNull(), qPrintable(QString::number(row)));
    }
    const QRect countCell = table->visualRect(table->model()->index(0, 1))
                                .translated(table->viewport()->mapTo(&grid, QPoint(0, 0)));
    const QRect countText = darkPixels(image, countCell.adjusted(1, 1, -1, -1));
    QVERIFY(!countText.isNull());
    QVERIFY(countText.left() > countCell.center().x()); // right-aligned
    // Statistics columns stand under the body's columns.
    for (int column = 0; column < 3; ++column) {
        QCOMPARE(
            table->viewport()->mapTo(&grid, QPoint(table->columnViewportPosition(column), 0)).x(),
            view->viewport()->mapTo(&grid, QPoint(view->columnViewportPosition(column), 0)).x());
    }
    // Row numbers beside the rows, to the pixel.
    QCOMPARE(rowsOrigin.y(), view->viewport()->mapTo(&grid, QPoint(0, 0)).y());
}

void tst_CMwHierarchicalGridView::rowNumbersScrollWithBody()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel model;
    QVector<QVector<QVariant>> records;
    for (int i = 0; i < 200; ++i)
        records.append(QVector<QVariant> {i});
    model.setTable(paths({"N"}), records);
    grid.setModel(&model);
    watchGrid(grid);
    QVERIFY(showAt(grid, 300, 300));
    QScrollBar *bar = body(grid)->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 100);
    bar->setValue(77);
    QCOMPARE(grid.verticalHeader()->offset(), 77);
}

void tst_CMwHierarchicalGridView::updateControlRefreshesStatistics()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QSignalSpy geometries(statistics(grid)->horizontalHeader(), SIGNAL(geometriesChanged()));
    grid.updateControl();
    QCOMPARE(geometries.count(), 1);
    // A new sort order refreshes it too.
    grid.horizontalHeader()->setSortIndicator(1, Qt::DescendingOrder);
    QCOMPARE(geometries.count(), 2);
}

void tst_CMwHierarchicalGridView::resizeButtonFitsContents()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QVERIFY(showAt(grid, 600, 400));
    QHeaderView *header = grid.horizontalHeader();
    // What fitting to the contents gives (header captions and cells alike).
    header->resizeSections(QHeaderView::ResizeToContents);
    QVector<int> fitted;
    for (int column = 0; column < 3; ++column)
        fitted << header->sectionSize(column);
    for (int column = 0; column < 3; ++column)
        header->resizeSection(column, 300);
    QTableView *table = statistics(grid);

    auto *button = grid.findChild<QPushButton *>(QStringLiteral("resizeButton"));
    // Pressing is enough, no release needed.
    QTest::mousePress(button, Qt::LeftButton, Qt::NoModifier, button->rect().center());
    for (int column = 0; column < 3; ++column) {
        QVERIFY(fitted.at(column) < 300);
        QCOMPARE(header->sectionSize(column), fitted.at(column));
        QCOMPARE(table->columnWidth(column), fitted.at(column));
    }
    QTest::mouseRelease(button, Qt::LeftButton, Qt::NoModifier, button->rect().center());
}

void tst_CMwHierarchicalGridView::statisticsGridLinesRunOn()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    watchGrid(grid);
    QVERIFY(showAt(grid, 600, 400));
    for (int column = 0; column < 3; ++column)
        grid.horizontalHeader()->resizeSection(column, 60);
    QCoreApplication::processEvents();
    QTableView *table = statistics(grid);
    QVERIFY(table->showGrid());
    const QImage image = renderWidget(table->viewport());
    QStyleOptionViewItem option;
    option.initFrom(table);
    const QColor line = QColor::fromRgb(static_cast<QRgb>(
        table->style()->styleHint(QStyle::SH_Table_GridLineColor, &option, table)));
    const QColor base = table->palette().color(QPalette::Base);
    QVERIFY(line != base);

    // Right of the last column, across to the table's edge.
    const int firstX = table->columnViewportPosition(2) + table->columnWidth(2) + 5;
    const int lastX = table->viewport()->width() - 5;
    QVERIFY(lastX - firstX > 100);
    for (int row = 0; row < 6; ++row) {
        const int below = table->rowViewportPosition(row) + table->rowHeight(row) - 1;
        const int middle = table->rowViewportPosition(row) + table->rowHeight(row) / 2;
        for (int x : {firstX, (firstX + lastX) / 2, lastX}) {
            QCOMPARE(QColor(image.pixel(x, below)), line);
            QCOMPARE(QColor(image.pixel(x, middle)), base);
        }
    }
    // Only the first row also draws a line along its top.
    QCOMPARE(QColor(image.pixel(firstX, 0)), line);
    QCOMPARE(QColor(image.pixel(firstX + 10, 0)), line);
    QCOMPARE(QColor(image.pixel(firstX, table->rowViewportPosition(1))), base);
}

void tst_CMwHierarchicalGridView::modelsDeletedWhileShown_data()
{
    // What is deleted, in this order, while the grid is shown, with rows
    // selected, the filter on and the mouse over the body: "source" is the
    // model handed to setModel(), "proxy" the grid's model(), "header" the
    // header model the source supplies through HorizontalHeaderModelRole.
    QTest::addColumn<QStringList>("order");
    QTest::addColumn<bool>("grouped"); // rows grouped by City and expanded before
    QTest::newRow("source") << QStringList {"source"} << false;
    QTest::newRow("proxy") << QStringList {"proxy"} << false;
    QTest::newRow("header") << QStringList {"header"} << false;
    QTest::newRow("proxy, source") << QStringList {"proxy", "source"} << false;
    QTest::newRow("header, source") << QStringList {"header", "source"} << false;
    QTest::newRow("source, header") << QStringList {"source", "header"} << false;
    QTest::newRow("header, proxy, source") << QStringList {"header", "proxy", "source"} << false;
    QTest::newRow("grouped: source") << QStringList {"source"} << true;
    QTest::newRow("grouped: proxy, source") << QStringList {"proxy", "source"} << true;
}

void tst_CMwHierarchicalGridView::modelsDeletedWhileShown()
{
    QFETCH(QStringList, order);
    QFETCH(bool, grouped);
    CMwHierarchicalGridView grid;
    QPointer<SuppliedHeaderModel> source = new SuppliedHeaderModel;
    CMwGridTableModel *table = cities(source);
    source->setSourceModel(table);
    QPointer<QStandardItemModel> supplied = new QStandardItemModel(1, 3);
    source->headerModel = supplied;
    watchModel(table);
    watchModel(source);
    watchModel(supplied);
    grid.setModel(source);
    watchGrid(grid);
    QPointer<QAbstractItemModel> proxy = grid.model();
    watchModel(proxy);
    QVERIFY(showAt(grid, 700, 400));

    // Filter City Is Not Equal Bergen switched on: three rows.
    auto *filter = grid.findChild<CMwFilterWidget *>(QStringLiteral("FilterTable"));
    action(grid, QStringLiteral("Define Filter"))->trigger();
    auto *column = qobject_cast<QComboBox *>(filter->cellWidget(0, 2));
    column->setCurrentIndex(column->findText(QStringLiteral("Place / City")));
    auto *comparator = qobject_cast<QComboBox *>(filter->cellWidget(0, 3));
    comparator->setCurrentIndex(comparator->findText(QStringLiteral("Is Not Equal")));
    filter->item(0, 4)->setText(QStringLiteral("Bergen"));
    action(grid, QStringLiteral("Use Filter"))->trigger();
    QCOMPARE(proxy->rowCount(), 3);

    // Two rows selected: statistics over the selection.
    CMwGridTreeView *view = body(grid);
    view->selectionModel()->select(QItemSelection(proxy->index(0, 0), proxy->index(1, 0)),
        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QCOMPARE(statistics(grid)->model()->index(0, 1).data().toDouble(), 2.0);
    auto *header = qobject_cast<CMwHierarchicalHeaderView *>(grid.horizontalHeader());
    watchModel(header->headerModel());
    watchModel(grid.verticalHeader()->model());
    watchModel(statistics(grid)->model());
    QTest::mouseMove(view->viewport(), view->visualRect(proxy->index(1, 1)).center());
    const int numbered = grid.verticalHeader()->count();
    QVERIFY(numbered > 0);
    if (grouped) {
        // Filter off: the groups' records are all shown.
        action(grid, QStringLiteral("Use Filter"))->trigger();
        table->groupByColumn(0);
        view->expandAll();
        QCOMPARE(proxy->rowCount(), 3);
        QCOMPARE(proxy->rowCount(proxy->index(1, 0)), 2);
        view->selectionModel()->select(QItemSelection(proxy->index(0, 0), proxy->index(1, 0)),
            QItemSelectionModel::Select | QItemSelectionModel::Rows);
        watchModel(header->headerModel());
        watchModel(grid.verticalHeader()->model());
        watchModel(statistics(grid)->model());
    }
    grid.repaint();

    for (const QString &what : order) {
        if (what == QLatin1String("source"))
            delete source.data();
        else if (what == QLatin1String("proxy"))
            delete proxy.data();
        else
            delete supplied.data();
        // Painted at once and after the event loop has run.
        grid.repaint();
        QVERIFY(!grid.grab().isNull());
        QCoreApplication::processEvents();
        grid.repaint();
    }

    const bool empty
        = order.contains(QLatin1String("source")) || order.contains(QLatin1String("proxy"));
    if (empty) {
        // As before the first model: nothing shown, nothing left behind.
        QVERIFY(!proxy);
        QVERIFY(!grid.model());
        QVERIFY(!view->model());
        QCOMPARE(header->count(), 0);
        QVERIFY(!header->headerModel());
        QCOMPARE(grid.verticalHeader()->count(), 0);
        QVERIFY(!statistics(grid)->model());
        QCOMPARE(grid.findChildren<CMwSortFilterProxyModel *>().size(), 0);
        QCOMPARE(
            grid.findChildren<QStandardItemModel *>(QString(), Qt::FindDirectChildrenOnly).size(),
            0);
    } else {
        // The grid derives its own header model: a supplied one going away
        // changes nothing.
        QCOMPARE(proxy->rowCount(), 3);
        QCOMPARE(describe(header->headerModel()), QStringLiteral("Place(City) Data(Value Note)"));
        QCOMPARE(grid.verticalHeader()->count(), numbered);
    }

    // Still usable: hover, click, resize, the filter editor, the header menu.
    QTest::mouseMove(view->viewport(), QPoint(20, 10));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 10));
    QTest::mouseMove(grid.verticalHeader()->viewport(), QPoint(5, 5));
    grid.resize(500, 300);
    QCoreApplication::processEvents();
    grid.repaint();
    column = qobject_cast<QComboBox *>(filter->cellWidget(1, 2));
    column->setCurrentIndex(0);
    action(grid, QStringLiteral("Use Filter"))->trigger();
    action(grid, QStringLiteral("Use Filter"))->trigger();
    grid.onResizeToContents();
    grid.onDataChanged();
    grid.updateControl();
    grid.repaint();

    // A fresh model is shown as usual.
    CMwGridTableModel *fresh = cities(&grid);
    watchModel(fresh);
    grid.setModel(fresh);
    watchGrid(grid);
    watchModel(grid.model());
    watchModel(header->headerModel());
    watchModel(grid.verticalHeader()->model());
    watchModel(statistics(grid)->model());
    QCoreApplication::processEvents();
    grid.repaint();
    QCOMPARE(grid.model()->rowCount(), 4);
    QCOMPARE(grid.verticalHeader()->count(), 4);
    QCOMPARE(describe(header->headerModel()), QStringLiteral("Place(City) Data(Value Note)"));
    QCOMPARE(statistics(grid)->model()->index(0, 1).data().toDouble(), 4.0);
    view->selectionModel()->select(
        QItemSelection(grid.model()->index(1, 0), grid.model()->index(2, 0)),
        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QCOMPARE(statistics(grid)->model()->index(0, 1).data().toDouble(), 2.0);
    QCOMPARE(grid.findChildren<CMwSortFilterProxyModel *>().size(), 1);
    delete source.data();
    delete supplied.data();
}

void tst_CMwHierarchicalGridView::gridDeletedBeforeItsModel()
{
    // The grid goes first: the model outlives it and stays usable.
    CMwGridTableModel *model = cities(nullptr);
    watchModel(model);
    QPointer<QAbstractItemModel> statisticsModel;
    // Another view of the grid's statistics, outliving the grid.
    QTableView outside;
    {
        CMwHierarchicalGridView grid;
        grid.setModel(model);
        QVERIFY(showAt(grid, 600, 300));
        body(grid)->selectionModel()->select(
            QItemSelection(grid.model()->index(0, 0), grid.model()->index(2, 0)),
            QItemSelectionModel::Select | QItemSelectionModel::Rows);
        statisticsModel = statistics(grid)->model();
        QVERIFY(statisticsModel);
        watchModel(statisticsModel);
        outside.setModel(statisticsModel);
        QVERIFY(showAt(outside, 300, 200));
        QCOMPARE(outside.model()->index(0, 1).data(Qt::SizeHintRole).toSize(),
            QSize(grid.columnWidth(1) - 1, 0));
    }
    QVERIFY(!statisticsModel);
    QVERIFY(!outside.model());
    outside.repaint();
    QCOMPARE(model->rowCount(), 4);
    Q_EMIT model->layoutAboutToBeChanged();
    Q_EMIT model->layoutChanged();
    delete model;
}

VEL_TEST_MAIN(tst_CMwHierarchicalGridView)

#include "tst_cmwhierarchicalgridview.moc"
