// The grid reads the cells of the selected rows without selectedRows() and
// data() per cell; these tests hold that reading against the plain one on
// random selections: several ranges, deselections and toggles, partial
// rows, pending (Current) selections, sorted, filtered and grouped proxies,
// trees and cells that cannot be selected.
#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include "grid_view_watch.h"
#include "gridtablecells_p.h"
#include "selectedrows_p.h"
#include "vel_test_main.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QTableView>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

namespace {

// The same QVariant: type and value, doubles to the bit.
bool sameValue(const QVariant &a, const QVariant &b)
{
    if (a.userType() != b.userType())
        return false;
    if (a.userType() == QMetaType::Double) {
        const double x = a.toDouble();
        const double y = b.toDouble();
        return std::memcmp(&x, &y, sizeof x) == 0;
    }
    return a == b;
}

QString describe(const QVariant &v)
{
    return QStringLiteral("%1(%2)").arg(
        QLatin1String(v.typeName() ? v.typeName() : "invalid"), v.toString());
}

// What the grid's cells must equal: selectedRows(column), then data().
QVector<QVariant> referenceColumn(const QItemSelectionModel *selection, int column)
{
    QVector<QVariant> cells;
    for (const QModelIndex &index : selection->selectedRows(column))
        cells.append(index.data(Qt::DisplayRole));
    return cells;
}

// Every index whose rows can be selected: the root and each row with children.
QVector<QModelIndex> parentsOf(const QAbstractItemModel *model)
{
    QVector<QModelIndex> parents {QModelIndex()};
    for (int i = 0; i < parents.size(); ++i) {
        const QModelIndex parent = parents.at(i);
        for (int row = 0; row < model->rowCount(parent); ++row) {
            const QModelIndex child = model->index(row, 0, parent);
            if (model->rowCount(child) > 0)
                parents.append(child);
        }
    }
    return parents;
}

// A few random selection commands: whole and partial rows, several parents,
// selecting, deselecting, toggling, some of them pending (Current).
void selectRandomly(QItemSelectionModel *selection, QRandomGenerator &random)
{
    const QAbstractItemModel *model = selection->model();
    const QVector<QModelIndex> parents = parentsOf(model);
    const int steps = 1 + int(random.bounded(6));
    for (int step = 0; step < steps; ++step) {
        const QModelIndex parent = parents.at(int(random.bounded(parents.size())));
        const int rows = model->rowCount(parent);
        const int columns = model->columnCount(parent);
        if (rows == 0 || columns == 0)
            continue;
        int top = int(random.bounded(rows));
        int bottom = qMin(rows - 1, top + int(random.bounded(rows / 2 + 1)));
        int left = 0;
        int right = columns - 1;
        if (random.bounded(4) == 0) {
            left = int(random.bounded(columns));
            right = left + int(random.bounded(columns - left));
        }
        QItemSelectionModel::SelectionFlags command;
        switch (random.bounded(step == 0 ? 2 : 5)) {
        case 0:
            command = QItemSelectionModel::ClearAndSelect;
            break;
        case 1:
            command = QItemSelectionModel::Select;
            break;
        case 2:
            command = QItemSelectionModel::Deselect;
            break;
        case 3:
            command = QItemSelectionModel::Toggle;
            break;
        default:
            command = QItemSelectionModel::Select;
            break;
        }
        if (random.bounded(2) == 0)
            command |= QItemSelectionModel::Rows;
        if (random.bounded(5) == 0)
            command |= QItemSelectionModel::Current;
        selection->select(
            QItemSelection(model->index(top, left, parent), model->index(bottom, right, parent)),
            command);
    }
}

// Numbers with repeats, signed zeros and empty cells; texts with repeats.
// Fills \a model with \a records rows of numbers, doubles, texts and long
// integers, some of them empty.
CMwGridTableModel *fillTable(CMwGridTableModel *model, int records, quint32 seed)
{
    QRandomGenerator random(seed);
    QVector<QVector<QVariant>> rows;
    for (int r = 0; r < records; ++r) {
        QVector<QVariant> row;
        row.append(int(random.bounded(8)) - 3);
        const int kind = int(random.bounded(10));
        row.append(kind == 0 ? QVariant()
                : kind == 1  ? QVariant(-0.0)
                             : QVariant(random.bounded(20) / 4.0));
        row.append(QStringLiteral("t%1").arg(random.bounded(5)));
        row.append(random.bounded(6) == 0 ? QVariant() : QVariant(qlonglong(random.bounded(1000))));
        rows.append(row);
    }
    model->setTable(
        {{QStringLiteral("Number")}, {QStringLiteral("Doubles"), QStringLiteral("Value")},
            {QStringLiteral("Text")}, {QStringLiteral("Long")}},
        rows);
    return model;
}

CMwGridTableModel *table(QObject *parent, int records, quint32 seed)
{
    return fillTable(new CMwGridTableModel(parent), records, seed);
}

// The ready model with cells that cannot be selected: the first cell of
// every third row, every cell of every seventh.
class PartlySelectableTableModel : public CMwGridTableModel
{
    Q_OBJECT

public:
    using CMwGridTableModel::CMwGridTableModel;

    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        Qt::ItemFlags result = CMwGridTableModel::flags(index);
        if (index.isValid()
            && (index.row() % 7 == 0 || (index.column() == 0 && index.row() % 3 == 0))) {
            result &= ~Qt::ItemIsSelectable;
        }
        return result;
    }
};

// A tree with cells that cannot be selected: the first cell of some rows,
// other cells of others.
QStandardItemModel *tree(QObject *parent, quint32 seed)
{
    QRandomGenerator random(seed);
    auto *model = new QStandardItemModel(0, 3, parent);
    auto makeRow = [&random](int row) {
        QList<QStandardItem *> items;
        for (int c = 0; c < 3; ++c) {
            auto *item = new QStandardItem;
            if (c == 1)
                item->setData(double(random.bounded(6)), Qt::DisplayRole);
            else if (c == 2 && random.bounded(3) > 0)
                item->setData(QStringLiteral("s%1").arg(random.bounded(4)), Qt::DisplayRole);
            else if (c == 0)
                item->setData(row, Qt::DisplayRole);
            if (random.bounded(6) == 0)
                item->setFlags(item->flags() & ~Qt::ItemIsSelectable);
            items.append(item);
        }
        return items;
    };
    for (int row = 0; row < 30; ++row) {
        QList<QStandardItem *> items = makeRow(row);
        if (row % 7 == 3) {
            for (int child = 0; child < 5; ++child)
                items.first()->appendRow(makeRow(100 + child));
        }
        model->appendRow(items);
    }
    return model;
}

// A subclass of the ready model that changes nothing it shows.
class DerivedTableModel : public CMwGridTableModel
{
    Q_OBJECT

public:
    using CMwGridTableModel::CMwGridTableModel;
};

} // namespace

class tst_SelectedRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void matchesSelectedRows_data();
    void matchesSelectedRows();
    void gridStatisticsMatchReference_data();
    void gridStatisticsMatchReference();
    void limitStopsEarly();
    void toggleUnderOneParent();
    void emptyAndMissing();
    void subclassOfReadyModelReadsDirectly_data();
    void subclassOfReadyModelReadsDirectly();
    void storageOrderKeepsSignedZerosAndNaNs_data();
    void storageOrderKeepsSignedZerosAndNaNs();

private:
    static bool compareWithReference(const QItemSelectionModel *selection, QString *message);
};

bool tst_SelectedRows::compareWithReference(const QItemSelectionModel *selection, QString *message)
{
    vel::SelectedRows rows(selection);
    const int expected = selection->selectedRows(0).size();
    if (rows.count() != expected) {
        *message = QStringLiteral("%1 rows instead of %2").arg(rows.count()).arg(expected);
        return false;
    }
    if (vel::SelectedRows(selection, 2).count() != qMin(expected, 2)) {
        *message = QStringLiteral("limited count wrong");
        return false;
    }
    const int columns = selection->model()->columnCount();
    // One column beyond the model's: empty cells, like data() of an invalid index.
    for (int column = 0; column <= columns; ++column) {
        const QVector<QVariant> reference = referenceColumn(selection, column);
        const QVector<QVariant> cells = rows.displayColumn(column);
        if (cells.size() != reference.size()) {
            *message = QStringLiteral("column %1: %2 cells instead of %3")
                           .arg(column)
                           .arg(cells.size())
                           .arg(reference.size());
            return false;
        }
        for (int i = 0; i < cells.size(); ++i) {
            if (!sameValue(cells.at(i), reference.at(i))) {
                *message = QStringLiteral("column %1, cell %2: %3 instead of %4")
                               .arg(column)
                               .arg(i)
                               .arg(describe(cells.at(i)), describe(reference.at(i)));
                return false;
            }
        }
    }
    return true;
}

void tst_SelectedRows::matchesSelectedRows_data()
{
    QTest::addColumn<QString>("setup");
    QTest::newRow("table through the grid's proxy") << QStringLiteral("table");
    QTest::newRow("sorted by text, descending") << QStringLiteral("sorted");
    QTest::newRow("filtered and sorted") << QStringLiteral("filtered");
    QTest::newRow("grouped by text") << QStringLiteral("grouped");
    QTest::newRow("tree with unselectable cells") << QStringLiteral("tree");
    QTest::newRow("ready model with unselectable cells") << QStringLiteral("partly");
    QTest::newRow("plain model, no proxy") << QStringLiteral("plain");
    QTest::newRow("another proxy class") << QStringLiteral("otherProxy");
}

void tst_SelectedRows::matchesSelectedRows()
{
    QFETCH(QString, setup);
    QObject owner;
    QAbstractItemModel *model = nullptr;
    if (setup == QLatin1String("plain")) {
        model = tree(&owner, 5);
        watchModel(model);
    } else if (setup == QLatin1String("otherProxy")) {
        auto *proxy = new QSortFilterProxyModel(&owner);
        proxy->setSourceModel(table(&owner, 50, 6));
        watchModel(proxy);
        watchModel(proxy->sourceModel());
        proxy->sort(1, Qt::AscendingOrder);
        model = proxy;
    } else {
        auto *proxy = new CMwSortFilterProxyModel(&owner);
        if (setup == QLatin1String("tree")) {
            proxy->setSourceModel(tree(&owner, 7));
            watchModel(proxy);
            watchModel(proxy->sourceModel());
            proxy->sort(1, Qt::DescendingOrder);
        } else {
            CMwGridTableModel *source = setup == QLatin1String("partly")
                ? fillTable(new PartlySelectableTableModel(&owner), 60, 8)
                : table(&owner, 60, 8);
            proxy->setSourceModel(source);
            watchModel(proxy);
            watchModel(source);
            if (setup == QLatin1String("sorted"))
                proxy->sort(2, Qt::DescendingOrder);
            if (setup == QLatin1String("filtered")) {
                const QStringList ops = CMwSortFilterProxyModel::operatorTexts();
                const QStringList comparators = CMwSortFilterProxyModel::comparatorTexts();
                // Number >= 0 keeps about half of the rows.
                proxy->setFilterRows(
                    {{QVariant(), ops.at(0), QStringLiteral("Number"), comparators.at(0), 0}});
                proxy->sort(1, Qt::AscendingOrder);
                QVERIFY(proxy->rowCount() > 10);
                QVERIFY(proxy->rowCount() < 50);
            }
            if (setup == QLatin1String("grouped")) {
                source->groupByColumn(2);
                QCOMPARE(proxy->rowCount(), 5);
                QVERIFY(proxy->rowCount(proxy->index(0, 0)) > 0);
            }
        }
        model = proxy;
    }

    QItemSelectionModel selection(model);
    QRandomGenerator random(1234);
    for (int round = 0; round < 150; ++round) {
        selectRandomly(&selection, random);
        QString message;
        QVERIFY2(compareWithReference(&selection, &message),
            qPrintable(QStringLiteral("round %1: %2").arg(round).arg(message)));
    }
}

void tst_SelectedRows::gridStatisticsMatchReference_data()
{
    QTest::addColumn<bool>("grouped");
    QTest::addColumn<bool>("partlySelectable");
    QTest::newRow("records") << false << false;
    QTest::newRow("grouped") << true << false;
    QTest::newRow("records with unselectable cells") << false << true;
}

// What the grid shows over a selection is QVectorCalcStatistics of the
// reference cells, to the bit.
void tst_SelectedRows::gridStatisticsMatchReference()
{
    QFETCH(bool, grouped);
    QFETCH(bool, partlySelectable);
    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = partlySelectable
        ? fillTable(new PartlySelectableTableModel(&grid), 80, 9)
        : table(&grid, 80, 9);
    grid.setModel(model);
    watchGrid(grid);
    if (grouped)
        model->groupByColumn(0);
    auto *view = grid.findChild<QTreeView *>(QStringLiteral("DataView"));
    auto *statistics = grid.findChild<QTableView *>(QStringLiteral("statisticTableView"));
    QVERIFY(view && statistics);
    view->sortByColumn(1, Qt::DescendingOrder);
    if (grouped)
        view->expandAll();
    QItemSelectionModel *selection = view->selectionModel();

    QRandomGenerator random(99);
    int compared = 0;
    for (int round = 0; round < 80; ++round) {
        // Cells change now and then: what the table keeps about a column
        // (its texts' numbers) must follow.
        if (round % 4 == 3) {
            const int record = int(random.bounded(model->recordCount()));
            const int column = 2 + int(random.bounded(2));
            const QVariant value = random.bounded(3) == 0
                ? QVariant(int(random.bounded(3)))
                : QVariant(QStringLiteral("t%1").arg(random.bounded(7)));
            model->setValue(record, column, value);
            QCOMPARE(model->value(record, column), value);
        }
        if (round % 10 == 9)
            model->appendRecord({1, 2.0, QStringLiteral("new"), QStringLiteral("t1")});
        selectRandomly(selection, random);
        if (selection->selectedRows(0).size() < 2)
            continue;
        ++compared;
        // selectedRows() can change without a selectionChanged() signal (the
        // order of equal ranges, a pending toggle finished by the next
        // command), so the grid is asked through its slot again.
        grid.onTreeViewSelectionChanged(QItemSelection(), QItemSelection());
        const QAbstractItemModel *shown = statistics->model();
        for (int column = 0; column < grid.model()->columnCount(); ++column) {
            double expected[6];
            QVectorCalcStatistics(referenceColumn(selection, column), expected[0], expected[1],
                expected[2], expected[3], expected[4], expected[5]);
            for (int i = 0; i < 6; ++i) {
                const QVariant value = shown->index(i, column).data();
                QVERIFY2(sameValue(value, QVariant(expected[i])),
                    qPrintable(QStringLiteral("round %1, column %2, row %3: %4 instead of %5")
                                   .arg(round)
                                   .arg(column)
                                   .arg(i)
                                   .arg(describe(value))
                                   .arg(expected[i])));
            }
        }
    }
    // Most random selections hold several rows.
    QVERIFY(compared > 20);
}

void tst_SelectedRows::limitStopsEarly()
{
    QStandardItemModel model(10, 2);
    for (int row = 0; row < 10; ++row)
        model.setItem(row, 1, new QStandardItem(QString::number(row * 10)));
    QItemSelectionModel selection(&model);
    selection.select(
        QItemSelection(model.index(6, 0), model.index(8, 1)), QItemSelectionModel::Select);
    selection.select(
        QItemSelection(model.index(1, 0), model.index(2, 1)), QItemSelectionModel::Select);
    QCOMPARE(vel::SelectedRows(&selection, 2).count(), 2);
    QCOMPARE(vel::SelectedRows(&selection, 0).count(), 0);
    vel::SelectedRows all(&selection);
    QCOMPARE(all.count(), 5);
    // In the order of the ranges: 6 7 8, then 1 2.
    const QVector<QVariant> cells = all.displayColumn(1);
    QStringList texts;
    for (const QVariant &cell : cells)
        texts << cell.toString();
    QCOMPARE(texts.join(QLatin1Char(' ')), QStringLiteral("60 70 80 10 20"));
    // Only part of row 7 deselected: the row is no longer selected.
    selection.select(model.index(7, 1), QItemSelectionModel::Deselect);
    QCOMPARE(vel::SelectedRows(&selection).count(), 4);
}

// Qt's isRowSelected() drops a row number that the last toggle turned off
// under one parent from every parent; the rows read must drop it too.
void tst_SelectedRows::toggleUnderOneParent()
{
    QStandardItemModel model;
    for (int p = 0; p < 2; ++p) {
        auto *parent = new QStandardItem(QStringLiteral("p%1").arg(p));
        for (int c = 0; c < 3; ++c)
            parent->appendRow({new QStandardItem(QString::number(p * 10 + c)), new QStandardItem});
        model.appendRow(parent);
    }
    const QModelIndex first = model.index(0, 0);
    const QModelIndex second = model.index(1, 0);
    QItemSelectionModel selection(&model);
    for (const QModelIndex &parent : {first, second}) {
        selection.select(QItemSelection(model.index(0, 0, parent), model.index(2, 1, parent)),
            QItemSelectionModel::Select);
    }
    selection.select(
        model.index(1, 0, first), QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
    // Row 1 of the second parent is still in the selection...
    QVERIFY(selection.isSelected(model.index(1, 0, second)));
    // ...but not among the selected rows.
    QCOMPARE(selection.selectedRows(0).size(), 4);
    vel::SelectedRows rows(&selection);
    QCOMPARE(rows.count(), 4);
    const QVector<QVariant> cells = rows.displayColumn(0);
    QCOMPARE(cells, referenceColumn(&selection, 0));
    QStringList texts;
    for (const QVariant &cell : cells)
        texts << cell.toString();
    texts.sort();
    QCOMPARE(texts.join(QLatin1Char(' ')), QStringLiteral("0 10 12 2"));

    // The next command merges the toggle: row 1 of the second parent is back.
    selection.select(model.index(0, 0), QItemSelectionModel::Select);
    QCOMPARE(vel::SelectedRows(&selection).count(), selection.selectedRows(0).size());
    QString message;
    QVERIFY2(compareWithReference(&selection, &message), qPrintable(message));
}

void tst_SelectedRows::emptyAndMissing()
{
    QCOMPARE(vel::SelectedRows(nullptr).count(), 0);
    QItemSelectionModel noModel;
    vel::SelectedRows none(&noModel);
    QCOMPARE(none.count(), 0);
    QVERIFY(none.displayColumn(0).isEmpty());
    QStandardItemModel model(3, 2);
    QItemSelectionModel selection(&model);
    QCOMPARE(vel::SelectedRows(&selection).count(), 0);
}

void tst_SelectedRows::subclassOfReadyModelReadsDirectly_data()
{
    QTest::addColumn<bool>("derived"); // the model is a subclass of CMwGridTableModel

    QTest::newRow("CMwGridTableModel") << false;
    QTest::newRow("subclass") << true;
}

void tst_SelectedRows::subclassOfReadyModelReadsDirectly()
{
    QFETCH(bool, derived);
    std::unique_ptr<CMwGridTableModel> model(
        derived ? new DerivedTableModel : new CMwGridTableModel);
    model->setTable({{QStringLiteral("N")}, {QStringLiteral("T")}},
        {{3, QStringLiteral("b")}, {1, QStringLiteral("a")}, {QVariant(), QStringLiteral("b")},
            {2, QVariant()}});
    watchModel(model.get());
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model.get());
    watchModel(&proxy);
    // Sorted, so that proxy rows and records differ.
    proxy.sort(0, Qt::AscendingOrder);
    QItemSelectionModel selection(&proxy);
    for (int row : {0, 2, 3}) {
        selection.select(
            proxy.index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

    vel::SelectedRows rows(&selection);
    QCOMPARE(rows.count(), 3);
    const vel::GridTableCells *cells = vel::GridTableCells::of(model.get());
    QVERIFY(cells);
    const QModelIndexList selected = selection.selectedRows(0);
    for (int column = 0; column < 2; ++column) {
        const std::vector<const QVariant *> &read = rows.displayCells(column);
        const QVector<QVariant> reference = referenceColumn(&selection, column);
        QCOMPARE(int(read.size()), reference.size());
        for (int i = 0; i < reference.size(); ++i) {
            QVERIFY2(sameValue(*read[size_t(i)], reference.at(i)),
                qPrintable(describe(reference.at(i))));
            // Read in place from the table's own storage, not copied out of data().
            const int record = cells->record(proxy.mapToSource(selected.at(i)));
            QCOMPARE(read[size_t(i)], &cells->cell(record, column));
        }
    }
    // The texts come numbered from the table, which only the direct reading gives.
    QVERIFY(rows.textNumbers());

    // The same cells in the table's own order: ascending record.
    rows.displayCells(0);
    const std::vector<const QVariant *> *stored = rows.storageCells();
    QVERIFY(stored);
    QCOMPARE(int(stored->size()), 3);
    std::vector<int> records;
    for (const QModelIndex &index : selected)
        records.push_back(cells->record(proxy.mapToSource(index)));
    std::sort(records.begin(), records.end());
    for (size_t i = 0; i < records.size(); ++i)
        QCOMPARE((*stored)[i], &cells->cell(records[i], 0));
}

void tst_SelectedRows::storageOrderKeepsSignedZerosAndNaNs_data()
{
    QTest::addColumn<QVector<double>>("inOrder"); // the values in the view's order
    QTest::addColumn<bool>("minNegative"); // the sign of the Min shown

    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("-0.0 first") << QVector<double> {2.0, -0.0, 0.0} << true;
    QTest::newRow("0.0 first") << QVector<double> {0.0, 2.0, -0.0} << false;
    QTest::newRow("-NaN first") << QVector<double> {-nan, nan} << true;
    QTest::newRow("NaN first") << QVector<double> {nan, -nan} << false;
}

// Cells read in the table's order give what reading them in the view's order
// gives, also where equal values differ in their sign: the first in the
// view's order is the Min.
void tst_SelectedRows::storageOrderKeepsSignedZerosAndNaNs()
{
    QFETCH(QVector<double>, inOrder);
    QFETCH(bool, minNegative);
    std::vector<QVariant> values;
    for (const double x : inOrder)
        values.emplace_back(x);
    std::vector<const QVariant *> cells;
    for (const QVariant &v : values)
        cells.push_back(&v);
    std::vector<const QVariant *> reversed(cells.rbegin(), cells.rend());

    double count, distinct, min, max, mean, stdev;
    vel::calcStatistics(cells, nullptr, &reversed, count, distinct, min, max, mean, stdev);
    QCOMPARE(count, double(inOrder.size()));
    QCOMPARE(bool(std::signbit(min)), minNegative);
}

VEL_TEST_MAIN(tst_SelectedRows)

#include "tst_selectedrows.moc"
