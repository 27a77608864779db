#include <vel_qt_widgets/CMwGridTableModel.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include "vel_test_main.h"

#include <QtCore/QBuffer>
#include <QtCore/QDate>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QTemporaryFile>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

#include <cmath>
#include <utility>

class tst_CMwGridTableModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void headerRoles();
    void itemRoles();
    void statisticsRoles();
    void statisticsFollowChanges();
    void visibleRowCount();
    void grouping();
    void groupingKeepsPersistentIndexes();
    void groupingSignals();
    void groupByInvalidColumn();
    void groupingUnderFilter();
    void groupingFollowsRecordChangesUnderFilter();
    void regroupingMovesPersistentRecords();
    void groupsFollowStatisticsOrder();
    void modelTesterThroughEveryOperation();
    void readCsv();
    void readCsvFailures();
    void loadCsvFile();
    void csvKeepsQuotedLineBreaks();
    void csvQuotesInsideFields();
    void csvUnclosedQuote();
    void csvRefusesBinaryInput();
    void csvSizeLimit();
    void csvExtraFields();
    void csvNumbersAsTheCLocaleReadsThem();
    void csvByteOrderMarkAndWideSeparator();
    void csvColumnsTakeChanges();
    void csvProgress();
    void csvCancel();

private:
    static void watch(QAbstractItemModel *model);
    static void fillCities(CMwGridTableModel &model);
};

// A fatal-mode tester for the lifetime of \a model: any broken model
// contract aborts the test at the signal that broke it.
void tst_CMwGridTableModel::watch(QAbstractItemModel *model)
{
    new QAbstractItemModelTester(
        model, QAbstractItemModelTester::FailureReportingMode::Fatal, model);
}

namespace {

QVector<QVariant> condition(const QString &column, int comparator, const QVariant &value)
{
    return {QVariant(), CMwSortFilterProxyModel::operatorTexts().at(0), column,
        CMwSortFilterProxyModel::comparatorTexts().at(comparator), value};
}

// Positions in CMwSortFilterProxyModel::comparatorTexts().
constexpr int isGreater = 2;
constexpr int isEqual = 4;
constexpr int isEmpty = 6;

// The display texts of \a parent's rows in column \a column.
QStringList texts(
    const QAbstractItemModel &model, const QModelIndex &parent = QModelIndex(), int column = 0)
{
    QStringList result;
    for (int r = 0; r < model.rowCount(parent); ++r)
        result.append(model.index(r, column, parent).data().toString());
    return result;
}

// Collects the warnings issued while it lives, so that a test can compare
// them all, and see that a warning comes exactly once.
class WarningLog
{
public:
    WarningLog()
    {
        messages().clear();
        previous = qInstallMessageHandler(&WarningLog::handle);
    }
    ~WarningLog() { qInstallMessageHandler(previous); }
    QStringList take() { return std::exchange(messages(), QStringList()); }

private:
    static QStringList &messages()
    {
        static QStringList list;
        return list;
    }
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        if (type == QtWarningMsg)
            messages().append(text);
        else if (previous)
            previous(type, context, text);
    }
    static QtMessageHandler previous;
};

QtMessageHandler WarningLog::previous = nullptr;

// An endless CSV stream ("1,2\n" over and over) that counts what it served.
class EndlessCsv : public QIODevice
{
    Q_OBJECT

public:
    EndlessCsv() { open(QIODevice::ReadOnly | QIODevice::Unbuffered); }
    bool isSequential() const override { return true; }
    qint64 served = 0;

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        static const char pattern[] = "1,2\n";
        for (qint64 i = 0; i < maxSize; ++i)
            data[i] = pattern[(served + i) % 4];
        served += maxSize;
        return maxSize;
    }
    qint64 writeData(const char *, qint64) override { return -1; }
};

// Reads \a bytes with readCsv() from a buffer opened in \a mode.
bool readBytes(
    CMwGridTableModel &model, QByteArray bytes, QIODevice::OpenMode mode = QIODevice::ReadOnly)
{
    QBuffer buffer(&bytes);
    buffer.open(mode);
    return model.readCsv(&buffer);
}

} // namespace

// City, Value: Oslo 1, Bergen 2, Oslo 3, (empty) 4, Bergen 5
void tst_CMwGridTableModel::fillCities(CMwGridTableModel &model)
{
    model.setTable({{QStringLiteral("Place"), QStringLiteral("City")},
                       {QStringLiteral("Data"), QStringLiteral("Value")}},
        {{QStringLiteral("Oslo"), 1}, {QStringLiteral("Bergen"), 2}, {QStringLiteral("Oslo"), 3},
            {QVariant(), 4}, {QStringLiteral("Bergen"), 5}});
}

void tst_CMwGridTableModel::headerRoles()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    QCOMPARE(model.columnCount(), 2);
    const QVariant path = model.headerData(0, Qt::Horizontal, HeaderPathRole);
    QCOMPARE(path.toList(), (QVariantList {QStringLiteral("Place"), QStringLiteral("City")}));
    QCOMPARE(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(),
        QStringLiteral("Data / Value"));
    QCOMPARE(model.headerPath(1), (QStringList {QStringLiteral("Data"), QStringLiteral("Value")}));
    QVERIFY(!model.headerData(2, Qt::Horizontal, HeaderPathRole).isValid());
    QVERIFY(model.headerPath(-1).isEmpty());
}

void tst_CMwGridTableModel::itemRoles()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    QCOMPARE(model.rowCount(), 5);
    QCOMPARE(model.index(2, 0).data().toString(), QStringLiteral("Oslo"));
    QCOMPARE(model.index(2, 1).data().toInt(), 3);
    QVERIFY(!model.index(3, 0).data().isValid());
    QCOMPARE(model.index(4, 1).data(RowNumberRole).toInt(), 4);
    QVERIFY(!model.index(4, 1).data(BranchParentRole).isValid());
    QCOMPARE(model.index(0, 1).data(Qt::TextAlignmentRole).toInt(),
        int(Qt::AlignRight | Qt::AlignVCenter));
    QVERIFY(!model.index(0, 0).data(Qt::TextAlignmentRole).isValid());
    QVERIFY(model.flags(model.index(0, 0)).testFlag(Qt::ItemNeverHasChildren));
    QCOMPARE(model.value(1, 0).toString(), QStringLiteral("Bergen"));
    QVERIFY(!model.value(5, 0).isValid());
}

void tst_CMwGridTableModel::statisticsRoles()
{
    CMwGridTableModel model;
    watch(&model);
    model.setTable({{QStringLiteral("N")}, {QStringLiteral("T")}},
        {{1, QStringLiteral("b")}, {2, QStringLiteral("a")}, {3, QStringLiteral("b")}});
    // Asked on row 0, and on any other row alike (a sorting proxy asks on
    // whichever record it shows first).
    for (int row = 0; row < 3; ++row) {
        const QModelIndex numbers = model.index(row, 0);
        QCOMPARE(numbers.data(StatCountRole).toDouble(), 3.0);
        QCOMPARE(numbers.data(StatDistinctRole).toDouble(), 3.0);
        QCOMPARE(numbers.data(StatMinRole).toDouble(), 1.0);
        QCOMPARE(numbers.data(StatMaxRole).toDouble(), 3.0);
        QCOMPARE(numbers.data(StatMeanRole).toDouble(), 2.0);
        QCOMPARE(numbers.data(StatStDevRole).toDouble(), std::sqrt(2.5));
        QCOMPARE(numbers.data(StatCountRole).userType(), int(QMetaType::Double));
    }
    const QModelIndex texts = model.index(0, 1);
    QCOMPARE(texts.data(StatCountRole).toDouble(), 3.0);
    QCOMPARE(texts.data(StatDistinctRole).toDouble(), 2.0);
    QCOMPARE(texts.data(StatMeanRole).toDouble(), 0.0);
    QCOMPARE(texts.data(StatStDevRole).toDouble(), 0.0);
}

void tst_CMwGridTableModel::statisticsFollowChanges()
{
    CMwGridTableModel model;
    watch(&model);
    model.setTable({{QStringLiteral("N")}}, {{1}, {2}, {3}});
    QCOMPARE(model.index(0, 0).data(StatMaxRole).toDouble(), 3.0);

    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    model.setValue(2, 0, 10);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toModelIndex(), model.index(2, 0));
    QCOMPARE(model.index(0, 0).data(StatMaxRole).toDouble(), 10.0);
    QCOMPARE(model.index(0, 0).data(StatMeanRole).toDouble(), 13.0 / 3.0);

    model.setValue(2, 0, 10);
    QCOMPARE(changed.count(), 1);

    model.appendRecord({20});
    QCOMPARE(model.index(0, 0).data(StatCountRole).toDouble(), 4.0);
    QCOMPARE(model.index(0, 0).data(StatMaxRole).toDouble(), 20.0);

    QTest::ignoreMessage(
        QtWarningMsg, "CMwGridTableModel::setValue: cell (9, 0) is outside the table");
    model.setValue(9, 0, 1);
}

void tst_CMwGridTableModel::visibleRowCount()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    QCOMPARE(model.headerData(0, Qt::Vertical, VisibleRowCountRole).toInt(), 5);
    QCOMPARE(model.headerData(3, Qt::Vertical, VisibleRowCountRole).toInt(), 5);
    model.groupByColumn(0);
    // Three groups (Bergen, Oslo, empty) and the five records.
    QCOMPARE(model.headerData(0, Qt::Vertical, VisibleRowCountRole).toInt(), 8);
}

void tst_CMwGridTableModel::grouping()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    model.groupByColumn(0);
    QCOMPARE(model.groupColumn(), 0);
    QCOMPARE(model.rowCount(), 3);

    const QModelIndex bergen = model.index(0, 0);
    const QModelIndex oslo = model.index(1, 0);
    const QModelIndex empty = model.index(2, 0);
    QCOMPARE(bergen.data().toString(), QStringLiteral("City: Bergen (2)"));
    QCOMPARE(oslo.data().toString(), QStringLiteral("City: Oslo (2)"));
    QCOMPARE(empty.data().toString(), QStringLiteral("City: (empty) (1)"));
    QCOMPARE(bergen.data(BranchParentRole).toBool(), true);
    QCOMPARE(model.index(0, 1).data(BranchParentRole).toBool(), true);
    QVERIFY(!bergen.data(RowNumberRole).isValid());
    QVERIFY(model.hasChildren(bergen));
    QVERIFY(!model.flags(bergen).testFlag(Qt::ItemNeverHasChildren));

    QCOMPARE(model.rowCount(bergen), 2);
    QCOMPARE(model.index(0, 1, bergen).data().toInt(), 2);
    QCOMPARE(model.index(1, 1, bergen).data().toInt(), 5);
    QCOMPARE(model.index(1, 1, bergen).data(RowNumberRole).toInt(), 4);
    QCOMPARE(model.index(1, 1, bergen).parent(), bergen);
    QCOMPARE(model.index(0, 1, empty).data().toInt(), 4);
    QVERIFY(!model.index(0, 1, empty).data(BranchParentRole).isValid());

    // Group by the numbers: one group per value, sorted.
    model.groupByColumn(1);
    QCOMPARE(model.rowCount(), 5);
    QCOMPARE(model.index(0, 1).data().toInt(), 1);
    QCOMPARE(model.index(0, 0).data().toString(), QStringLiteral("Value: 1 (1)"));

    model.groupByColumn(-1);
    QCOMPARE(model.groupColumn(), -1);
    QCOMPARE(model.rowCount(), 5);
    QVERIFY(!model.index(0, 0).data(BranchParentRole).isValid());

    // A record appended while grouped joins its group.
    model.groupByColumn(0);
    model.appendRecord({QStringLiteral("Oslo"), 6});
    QCOMPARE(model.index(1, 0).data().toString(), QStringLiteral("City: Oslo (3)"));
    // A changed group value moves the record to its new group.
    model.setValue(0, 0, QStringLiteral("Bergen"));
    QCOMPARE(model.index(0, 0).data().toString(), QStringLiteral("City: Bergen (3)"));
    QCOMPARE(model.index(1, 0).data().toString(), QStringLiteral("City: Oslo (2)"));
}

void tst_CMwGridTableModel::groupingKeepsPersistentIndexes()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    const QPersistentModelIndex record4(model.index(4, 1));
    model.groupByColumn(0);
    QVERIFY(record4.isValid());
    QCOMPARE(record4.data().toInt(), 5);
    QCOMPARE(record4.parent().data().toString(), QStringLiteral("City: Bergen (2)"));

    const QPersistentModelIndex group(model.index(0, 0));
    model.groupByColumn(-1);
    QVERIFY(!group.isValid());
    QCOMPARE(record4.row(), 4);
    QVERIFY(!record4.parent().isValid());
}

void tst_CMwGridTableModel::groupingSignals()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    QSignalSpy layout(&model, &QAbstractItemModel::layoutChanged);
    QSignalSpy column(&model, &CMwGridTableModel::groupColumnChanged);
    model.groupByColumn(0);
    QCOMPARE(layout.count(), 1);
    QCOMPARE(column.count(), 1);
    QCOMPARE(column.at(0).at(0).toInt(), 0);
    model.groupByColumn(0);
    QCOMPARE(layout.count(), 1);
    model.groupByColumn(-1);
    QCOMPARE(layout.count(), 2);
    QCOMPARE(column.at(1).at(0).toInt(), -1);
    // A new table is a new shape: the grid rebuilds on layoutChanged.
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    fillCities(model);
    QCOMPARE(reset.count(), 1);
    QCOMPARE(layout.count(), 3);
}

void tst_CMwGridTableModel::groupByInvalidColumn()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    QSignalSpy layout(&model, &QAbstractItemModel::layoutChanged);
    QTest::ignoreMessage(QtWarningMsg, "CMwGridTableModel::groupByColumn: no column 2");
    model.groupByColumn(2);
    QCOMPARE(model.groupColumn(), -1);
    QCOMPARE(layout.count(), 0);
    // Any negative column ungroups, like "Ungroup" (-1).
    model.groupByColumn(1);
    model.groupByColumn(-5);
    QCOMPARE(model.groupColumn(), -1);
}

// A filter on another column keeps working on records: a group row shows
// while any of its records passes, with just the records that pass.
void tst_CMwGridTableModel::groupingUnderFilter()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    watch(&proxy);
    const QString value = QStringLiteral("Data / Value");
    proxy.setFilterRows({condition(value, isGreater, QStringLiteral("1"))});
    QCOMPARE(texts(proxy, QModelIndex(), 1),
        (QStringList {
            QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("5")}));

    model.groupByColumn(0);
    QCOMPARE(texts(proxy),
        (QStringList {QStringLiteral("City: Bergen (2)"), QStringLiteral("City: Oslo (2)"),
            QStringLiteral("City: (empty) (1)")}));
    QCOMPARE(texts(proxy, proxy.index(0, 0), 1),
        (QStringList {QStringLiteral("2"), QStringLiteral("5")}));
    QCOMPARE(texts(proxy, proxy.index(1, 0), 1), QStringList {QStringLiteral("3")});
    QCOMPARE(texts(proxy, proxy.index(2, 0), 1), QStringList {QStringLiteral("4")});

    proxy.setFilterRows({condition(value, isGreater, QStringLiteral("4"))});
    QCOMPARE(texts(proxy), QStringList {QStringLiteral("City: Bergen (2)")});
    QCOMPARE(texts(proxy, proxy.index(0, 0), 1), QStringList {QStringLiteral("5")});

    // A condition on the grouped column itself tests the records' values,
    // not the group row's caption.
    proxy.setFilterRows(
        {condition(QStringLiteral("Place / City"), isEqual, QStringLiteral("Oslo"))});
    QCOMPARE(texts(proxy), QStringList {QStringLiteral("City: Oslo (2)")});
    QCOMPARE(texts(proxy, proxy.index(0, 0), 1),
        (QStringList {QStringLiteral("1"), QStringLiteral("3")}));

    // Group rows hold no value of their own in the other columns; an empty
    // test passes them only through a record with an empty cell.
    proxy.setFilterRows({condition(value, isEmpty, QVariant())});
    QCOMPARE(proxy.rowCount(), 0);

    proxy.setFilterRows({condition(value, isGreater, QStringLiteral("3"))});
    model.groupByColumn(-1);
    QCOMPARE(
        texts(proxy, QModelIndex(), 1), (QStringList {QStringLiteral("4"), QStringLiteral("5")}));
}

// A record whose value changes can show or hide its group row.
void tst_CMwGridTableModel::groupingFollowsRecordChangesUnderFilter()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    model.groupByColumn(0);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    watch(&proxy);
    proxy.setFilterRows(
        {condition(QStringLiteral("Data / Value"), isGreater, QStringLiteral("4"))});
    QCOMPARE(texts(proxy), QStringList {QStringLiteral("City: Bergen (2)")});

    model.setValue(4, 1, 0);
    QCOMPARE(proxy.rowCount(), 0);

    model.setValue(2, 1, 7);
    QCOMPARE(texts(proxy), QStringList {QStringLiteral("City: Oslo (2)")});
    QCOMPARE(texts(proxy, proxy.index(0, 0), 1), QStringList {QStringLiteral("7")});
}

// Regrouping moves records between parents; every persistent index on a
// record must follow it, whoever holds it.
void tst_CMwGridTableModel::regroupingMovesPersistentRecords()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    watch(&proxy);
    proxy.setFilterRows(
        {condition(QStringLiteral("Data / Value"), isGreater, QStringLiteral("1"))});
    model.groupByColumn(0);
    QVector<QPersistentModelIndex> kept;
    for (int g = 0; g < proxy.rowCount(); ++g) {
        const QModelIndex group = proxy.index(g, 0);
        for (int r = 0; r < proxy.rowCount(group); ++r)
            kept.append(proxy.index(r, 1, group));
    }
    QCOMPARE(kept.size(), 4);
    model.groupByColumn(1);
    model.setValue(1, 0, QStringLiteral("Oslo"));
    model.groupByColumn(0);
    model.setValue(1, 0, QStringLiteral("Bergen"));
    model.appendRecord({QStringLiteral("Oslo"), 8});
    for (const QPersistentModelIndex &index : kept) {
        QVERIFY(index.isValid());
        QVERIFY(index.parent().isValid());
        QCOMPARE(index.parent().data().toString().left(5), QStringLiteral("City:"));
    }
    QSet<int> values;
    for (const QPersistentModelIndex &index : kept)
        values.insert(index.data().toInt());
    QCOMPARE(values, (QSet<int> {2, 3, 4, 5}));
    model.groupByColumn(-1);
    for (const QPersistentModelIndex &index : kept)
        QCOMPARE(
            index.sibling(index.row(), 1).data(RowNumberRole).toInt() + 1, index.data().toInt());
}

// "Distinct" and the groups split one column at the same places, whatever
// the types in it.
void tst_CMwGridTableModel::groupsFollowStatisticsOrder()
{
    CMwGridTableModel model;
    watch(&model);
    // An empty text and an invalid date: the text orders first (smaller
    // type number), and the date differs from it.
    model.setTable({{QStringLiteral("Mixed")}}, {{QDate()}, {QString(QLatin1String(""))}});
    QCOMPARE(model.index(0, 0).data(StatDistinctRole).toDouble(), 2.0);
    model.groupByColumn(0);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.rowCount(model.index(0, 0)), 1);
    QCOMPARE(model.index(0, 0, model.index(0, 0)).data(RowNumberRole).toInt(), 1);
    QCOMPARE(model.rowCount(model.index(1, 0)), 1);
    QCOMPARE(model.index(0, 0, model.index(1, 0)).data(RowNumberRole).toInt(), 0);

    // Numbers that QVariant holds equal within its tolerance are one value
    // for both; a NaN differs even from another NaN.
    const double nan = std::nan("");
    model.setTable({{QStringLiteral("N")}, {QStringLiteral("M")}},
        {{1.0, 1}, {1.0 + 1e-15, QStringLiteral("1")}, {2.0, 1}, {nan, QVariant()}, {nan, 2},
            {QVariant(), 1.5}});
    for (int column = 0; column < 2; ++column) {
        model.groupByColumn(column);
        QCOMPARE(double(model.rowCount()),
            model.index(0, column).data(StatDistinctRole).toDouble() + 1.0);
    }
    model.groupByColumn(0);
    QCOMPARE(model.rowCount(model.index(0, 0)), 2);
}

void tst_CMwGridTableModel::modelTesterThroughEveryOperation()
{
    CMwGridTableModel model;
    watch(&model);
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.sort(1, Qt::DescendingOrder);
    watch(&proxy);

    fillCities(model);
    model.appendRecord({QStringLiteral("Tromsø"), 7});
    model.setValue(0, 1, 11);
    model.groupByColumn(0);
    model.appendRecord({QStringLiteral("Oslo"), 8});
    model.setValue(1, 1, 12);
    model.setValue(1, 0, QStringLiteral("Oslo"));
    model.groupByColumn(1);
    model.groupByColumn(-1);
    model.setHeaderPaths({{QStringLiteral("A")}, {QStringLiteral("B")}, {QStringLiteral("C")}});
    QCOMPARE(model.columnCount(), 3);
    QCOMPARE(model.rowCount(), 7);
    model.setRecords({{1, 2, 3}});
    model.groupByColumn(2);
    model.clear();
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 0);
    QCOMPARE(model.groupColumn(), -1);
}

void tst_CMwGridTableModel::readCsv()
{
    QByteArray csv = "Site|Name, Site|Depth ,Note,Mixed\r\n"
                     "North,12,\"a, \"\"quoted\"\" note\",1\r\n"
                     "South,7.5,\"two\nlines\",x\r\n"
                     ",,,\r\n"
                     "East,3\n";
    QBuffer buffer(&csv);
    buffer.open(QIODevice::ReadOnly);
    CMwGridTableModel model;
    watch(&model);
    QSignalSpy layout(&model, &QAbstractItemModel::layoutChanged);
    QVERIFY(model.readCsv(&buffer));
    QCOMPARE(layout.count(), 1);

    QCOMPARE(model.columnCount(), 4);
    QCOMPARE(model.headerPath(0), (QStringList {QStringLiteral("Site"), QStringLiteral("Name")}));
    QCOMPARE(model.headerPath(1), (QStringList {QStringLiteral("Site"), QStringLiteral("Depth")}));
    QCOMPARE(model.headerPath(2), QStringList {QStringLiteral("Note")});
    QCOMPARE(model.recordCount(), 4);

    QCOMPARE(model.value(0, 0).toString(), QStringLiteral("North"));
    // 12 and 7.5: a column of numbers, not all whole, holds doubles.
    QCOMPARE(model.value(0, 1).userType(), int(QMetaType::Double));
    QCOMPARE(model.value(1, 1).toDouble(), 7.5);
    QCOMPARE(model.value(0, 2).toString(), QStringLiteral("a, \"quoted\" note"));
    QCOMPARE(model.value(1, 2).toString(), QStringLiteral("two\nlines"));
    // "1" and "x": one text makes the column text.
    QCOMPARE(model.value(0, 3).userType(), int(QMetaType::QString));
    // Empty fields and missing trailing fields are empty cells.
    QVERIFY(!model.value(2, 0).isValid());
    QVERIFY(!model.value(2, 1).isValid());
    QVERIFY(!model.value(3, 2).isValid());
    QCOMPARE(model.value(3, 1).toDouble(), 3.0);

    QByteArray integers = "N;T\n1;a\n-20;b\n";
    QBuffer second(&integers);
    second.open(QIODevice::ReadOnly);
    QVERIFY(model.readCsv(&second, QLatin1Char(';')));
    QCOMPARE(model.value(1, 0).userType(), int(QMetaType::Int));
    QCOMPARE(model.value(1, 0).toInt(), -20);
    QCOMPARE(model.index(0, 0).data(StatMinRole).toDouble(), -20.0);
}

void tst_CMwGridTableModel::readCsvFailures()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    QByteArray nothing;
    QBuffer empty(&nothing);
    empty.open(QIODevice::ReadOnly);
    QTest::ignoreMessage(QtWarningMsg, "CMwGridTableModel::readCsv: no header line");
    QVERIFY(!model.readCsv(&empty));
    QCOMPARE(model.recordCount(), 5);

    QBuffer closed;
    QTest::ignoreMessage(QtWarningMsg, "CMwGridTableModel::readCsv: the device is not readable");
    QVERIFY(!model.readCsv(&closed));
    QTest::ignoreMessage(QtWarningMsg, "CMwGridTableModel::readCsv: the device is not readable");
    QVERIFY(!model.readCsv(nullptr));
    QCOMPARE(model.recordCount(), 5);
}

void tst_CMwGridTableModel::loadCsvFile()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("A|x,A|y,B\n1,2,3\n4,5,6\n");
    file.close();
    CMwGridTableModel model;
    watch(&model);
    QVERIFY(model.loadCsv(file.fileName()));
    QCOMPARE(model.recordCount(), 2);
    QCOMPARE(model.value(1, 2).toInt(), 6);

    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(QStringLiteral("cannot open .*missing\\.csv")));
    QVERIFY(!model.loadCsv(QStringLiteral("/nonexistent/missing.csv")));
    QCOMPARE(model.recordCount(), 2);
}

// Inside quotes the text is kept byte for byte, whether the table comes
// from a file, a buffer, or a device opened in text mode.
void tst_CMwGridTableModel::csvKeepsQuotedLineBreaks()
{
    const QByteArray csv = "A,B\r\n\"x\r\ny\",1\r\n\"p\nq\",2\r\n";
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(csv);
    file.close();

    CMwGridTableModel model;
    watch(&model);
    QVERIFY(model.loadCsv(file.fileName()));
    QCOMPARE(model.recordCount(), 2);
    QCOMPARE(model.value(0, 0).toString(), QStringLiteral("x\r\ny"));
    QCOMPARE(model.value(1, 0).toString(), QStringLiteral("p\nq"));
    QCOMPARE(model.value(1, 1).toInt(), 2);

    CMwGridTableModel fromBuffer;
    watch(&fromBuffer);
    QVERIFY(readBytes(fromBuffer, csv));
    QCOMPARE(fromBuffer.value(0, 0).toString(), QStringLiteral("x\r\ny"));
    QCOMPARE(fromBuffer.value(1, 0).toString(), QStringLiteral("p\nq"));

    QByteArray bytes = csv;
    QBuffer textMode(&bytes);
    textMode.open(QIODevice::ReadOnly | QIODevice::Text);
    QVERIFY(fromBuffer.readCsv(&textMode));
    QCOMPARE(fromBuffer.value(0, 0).toString(), QStringLiteral("x\r\ny"));
    QVERIFY(textMode.isTextModeEnabled());
}

// Well-formed quoting as RFC 4180 has it; a quote inside an unquoted field
// is an ordinary character, as spreadsheet programs read it.
void tst_CMwGridTableModel::csvQuotesInsideFields()
{
    CMwGridTableModel model;
    watch(&model);
    WarningLog warnings;
    QVERIFY(readBytes(model,
        "Height,Name,City\n"
        "5'10\",Ann,Oslo\n"
        "6'1\",Bob,Bergen\n"
        "a\"b\"c,\"x\"\"y\",\"q\"r\n"
        "\"\",\"\"\"\",\",\"\n"));
    QCOMPARE(warnings.take(), QStringList());
    QCOMPARE(model.recordCount(), 4);
    QCOMPARE(model.value(0, 0).toString(), QStringLiteral("5'10\""));
    QCOMPARE(model.value(0, 1).toString(), QStringLiteral("Ann"));
    QCOMPARE(model.value(0, 2).toString(), QStringLiteral("Oslo"));
    QCOMPARE(model.value(1, 0).toString(), QStringLiteral("6'1\""));
    QCOMPARE(model.value(1, 2).toString(), QStringLiteral("Bergen"));
    QCOMPARE(model.value(2, 0).toString(), QStringLiteral("a\"b\"c"));
    QCOMPARE(model.value(2, 1).toString(), QStringLiteral("x\"y"));
    QCOMPARE(model.value(2, 2).toString(), QStringLiteral("qr"));
    QVERIFY(!model.value(3, 0).isValid());
    QCOMPARE(model.value(3, 1).toString(), QStringLiteral("\""));
    QCOMPARE(model.value(3, 2).toString(), QStringLiteral(","));

    // A quote cannot separate fields as well.
    QByteArray bytes = "A\"B\n1\"2\n";
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QVERIFY(!model.readCsv(&buffer, QLatin1Char('"')));
    QCOMPARE(warnings.take(),
        QStringList {QStringLiteral(
            "CMwGridTableModel::readCsv: a quote or a line break cannot separate fields")});
    QCOMPARE(model.recordCount(), 4);
}

// A quote that is never closed keeps what it took, and says where it opened.
void tst_CMwGridTableModel::csvUnclosedQuote()
{
    CMwGridTableModel model;
    watch(&model);
    WarningLog warnings;
    QVERIFY(readBytes(model, "A,B\r\n1,x\r\n2,\"abc\r\ndef,3\r\n"));
    QCOMPARE(warnings.take(),
        QStringList {QStringLiteral("CMwGridTableModel::readCsv: the quote opened on line 3 "
                                    "is never closed; the rest of the input is its field")});
    QCOMPARE(model.recordCount(), 2);
    QCOMPARE(model.value(1, 0).toInt(), 2);
    QCOMPARE(model.value(1, 1).toString(), QStringLiteral("abc\r\ndef,3\r\n"));

    // Lines are counted through line breaks inside quotes (LF, CR LF, CR).
    QVERIFY(readBytes(model, "A\n\"a\nb\r\nc\rd\"\n\"open\nend"));
    QCOMPARE(warnings.take(),
        QStringList {QStringLiteral("CMwGridTableModel::readCsv: the quote opened on line 6 "
                                    "is never closed; the rest of the input is its field")});
    QCOMPARE(model.recordCount(), 2);
    QCOMPARE(model.value(0, 0).toString(), QStringLiteral("a\nb\r\nc\rd"));
    QCOMPARE(model.value(1, 0).toString(), QStringLiteral("open\nend"));
}

// Input that is not text is refused at its first NUL byte, before it is
// read to the end (an endless device such as /dev/zero included).
void tst_CMwGridTableModel::csvRefusesBinaryInput()
{
    CMwGridTableModel model;
    watch(&model);
    fillCities(model);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    WarningLog warnings;
    QVERIFY(!readBytes(model, QByteArray("A,B\n1,2\n3\0,4\n", 13)));
    QCOMPARE(warnings.take(),
        QStringList {QStringLiteral("CMwGridTableModel::readCsv: the input is not text (a NUL "
                                    "byte at offset 9); nothing read")});
    if (QFile::exists(QStringLiteral("/dev/zero"))) {
        QVERIFY(!model.loadCsv(QStringLiteral("/dev/zero")));
        QCOMPARE(warnings.take(),
            QStringList {QStringLiteral("CMwGridTableModel::readCsv: the input is not text (a "
                                        "NUL byte at offset 0); nothing read")});
    }
    QCOMPARE(reset.count(), 0);
    QCOMPARE(model.recordCount(), 5);
    QCOMPARE(model.value(4, 0).toString(), QStringLiteral("Bergen"));
}

// Input beyond csvSizeLimit is refused without reading much further: an
// endless stream ends there, and the model stays as it was.
void tst_CMwGridTableModel::csvSizeLimit()
{
    CMwGridTableModel model;
    watch(&model);
    QCOMPARE(model.csvSizeLimit(), qint64(1) << 30);
    QCOMPARE(model.property("csvSizeLimit").toLongLong(), qint64(1) << 30);
    fillCities(model);
    WarningLog warnings;

    model.setCsvSizeLimit(0);
    QCOMPARE(warnings.take(),
        QStringList {
            QStringLiteral("CMwGridTableModel::setCsvSizeLimit: 0 bytes is no limit; ignored")});
    QCOMPARE(model.csvSizeLimit(), CMwGridTableModel::defaultCsvSizeLimit);

    const qint64 limit = qint64(1) << 20;
    model.setCsvSizeLimit(limit);
    EndlessCsv endless;
    QVERIFY(!model.readCsv(&endless));
    QCOMPARE(warnings.take(),
        QStringList {QStringLiteral("CMwGridTableModel::readCsv: the input is larger than "
                                    "csvSizeLimit (1048576 bytes); nothing read")});
    QVERIFY(endless.served > limit);
    QVERIFY(endless.served <= limit + 1);
    QCOMPARE(model.recordCount(), 5);

    // Exactly at the limit is read; one byte more is not.
    const QByteArray csv = "A,B\n1,2\n";
    model.setCsvSizeLimit(csv.size() - 1);
    QVERIFY(!readBytes(model, csv));
    QCOMPARE(warnings.take().size(), 1);
    QCOMPARE(model.recordCount(), 5);
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(csv);
    file.close();
    QVERIFY(!model.loadCsv(file.fileName()));
    QCOMPARE(warnings.take(),
        QStringList {QStringLiteral("CMwGridTableModel::readCsv: the input is larger than "
                                    "csvSizeLimit (7 bytes); nothing read")});
    model.setCsvSizeLimit(csv.size());
    QVERIFY(readBytes(model, csv));
    QCOMPARE(warnings.take(), QStringList());
    QCOMPARE(model.recordCount(), 1);
    QCOMPARE(model.value(0, 1).toInt(), 2);
}

// Fields beyond the header's are dropped with one warning per read, naming
// the first line (where its record starts); empty ones lose nothing.
void tst_CMwGridTableModel::csvExtraFields()
{
    CMwGridTableModel model;
    watch(&model);
    WarningLog warnings;
    QVERIFY(readBytes(model, "A,B\n1,2,\n\"3\n3\",4,5\n6,7,8,9\n"));
    QCOMPARE(warnings.take(),
        QStringList {QStringLiteral(
            "CMwGridTableModel::readCsv: line 3 has more fields than the header's 2; "
            "fields beyond them are dropped (reported for the first such line only)")});
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(model.recordCount(), 3);
    QCOMPARE(model.value(1, 0).toString(), QStringLiteral("3\n3"));
    QCOMPARE(model.value(1, 1).toInt(), 4);
    QCOMPARE(model.value(2, 1).toInt(), 7);

    QVERIFY(readBytes(model, "A,B\n1,2,\n3,4, \n"));
    QCOMPARE(warnings.take(), QStringList());
}

// Each field alone in its column gets the type and value QLocale::c() gives
// it: int where toInt() reads it, else double where toDouble() does, else the
// text as it stands.
void tst_CMwGridTableModel::csvNumbersAsTheCLocaleReadsThem()
{
    const QStringList samples {QStringLiteral("0"), QStringLiteral("-0"), QStringLiteral("7"),
        QStringLiteral("007"), QStringLiteral("+5"), QStringLiteral(" 12 "),
        QStringLiteral("-2147483648"), QStringLiteral("2147483647"), QStringLiteral("2147483648"),
        QStringLiteral("-2147483649"), QStringLiteral("1.5"), QStringLiteral("-0.0"),
        QStringLiteral("0.1"), QStringLiteral("00.5"), QStringLiteral("1e5"),
        QStringLiteral("1E-3"), QStringLiteral("1."), QStringLiteral(".5"),
        QStringLiteral("3.14159265358979323846264338327950288"),
        QStringLiteral("2.2250738585072011e-308"), QStringLiteral("1e400"), QStringLiteral("nan"),
        QStringLiteral("inf"), QStringLiteral("0x10"), QStringLiteral("12abc"),
        QStringLiteral("\u00a042\u00a0"), QStringLiteral("-"), QStringLiteral("9007199254740993"),
        QStringLiteral("123456789.123456789")};
    const QLocale c = QLocale::c();
    for (const QString &sample : samples) {
        CMwGridTableModel model;
        QVERIFY(readBytes(model, "N\n" + sample.toUtf8() + '\n'));
        const QVariant value = model.value(0, 0);
        const QString field = sample.trimmed();
        bool ok = false;
        const int i = c.toInt(field, &ok);
        if (ok) {
            QCOMPARE(value.userType(), int(QMetaType::Int));
            QCOMPARE(value.toInt(), i);
            continue;
        }
        const double x = c.toDouble(field, &ok);
        if (ok) {
            QCOMPARE(value.userType(), int(QMetaType::Double));
            const double got = value.toDouble();
            QVERIFY2(got == x || (std::isnan(got) && std::isnan(x)), qPrintable(sample));
            QCOMPARE(std::signbit(got), std::signbit(x));
            continue;
        }
        QCOMPARE(value.userType(), int(QMetaType::QString));
        QCOMPARE(value.toString(), sample);
    }

    // Whole numbers first, then one with a fraction: the column holds doubles,
    // each read as toDouble() reads its field (a "-0" stays negative).
    CMwGridTableModel model;
    QVERIFY(readBytes(model, "N\n-0\n3\n+4\n2.5\n"));
    QCOMPARE(model.value(0, 0).userType(), int(QMetaType::Double));
    QVERIFY(std::signbit(model.value(0, 0).toDouble()));
    QCOMPARE(model.value(1, 0).toDouble(), 3.0);
    QCOMPARE(model.value(2, 0).toDouble(), 4.0);
    QCOMPARE(model.value(3, 0).toDouble(), 2.5);
    // Numbers first, then a text: every field comes back as it was written.
    QVERIFY(readBytes(model, "N\n 5\n1.50\n-0\nx\n"));
    QCOMPARE(model.value(0, 0), QVariant(QStringLiteral(" 5")));
    QCOMPARE(model.value(1, 0), QVariant(QStringLiteral("1.50")));
    QCOMPARE(model.value(2, 0), QVariant(QStringLiteral("-0")));
    QCOMPARE(model.value(3, 0), QVariant(QStringLiteral("x")));
}

void tst_CMwGridTableModel::csvByteOrderMarkAndWideSeparator()
{
    QByteArray csv = "\xEF\xBB\xBF"
                     "A\xC2\xA7"
                     "B\n1\xC2\xA7\xC3\xA9t\xC3\xA9\n\xC2\xA7\xC2\xA8\n";
    QBuffer buffer(&csv);
    buffer.open(QIODevice::ReadOnly);
    CMwGridTableModel model;
    QVERIFY(model.readCsv(&buffer, QChar(0xA7)));
    QCOMPARE(model.headerPath(0), QStringList {QStringLiteral("A")});
    QCOMPARE(model.headerPath(1), QStringList {QStringLiteral("B")});
    QCOMPARE(model.recordCount(), 2);
    QCOMPARE(model.value(0, 0), QVariant(1));
    QCOMPARE(model.value(0, 1), QVariant(QString::fromUtf8("\xC3\xA9t\xC3\xA9")));
    QVERIFY(!model.value(1, 0).isValid());
    // U+00A8 shares its first byte with the separator and is an ordinary character.
    QCOMPARE(model.value(1, 1), QVariant(QString::fromUtf8("\xC2\xA8")));
}

// Loaded columns are held typed; changes of any type still read back as given.
void tst_CMwGridTableModel::csvColumnsTakeChanges()
{
    CMwGridTableModel model;
    watch(&model);
    QVERIFY(readBytes(model, "I,D,T\n1,1.5,a\n2,,b\n"));
    model.setValue(0, 0, 10);
    model.setValue(1, 1, 2.25);
    QCOMPARE(model.value(0, 0), QVariant(10));
    QCOMPARE(model.value(1, 1), QVariant(2.25));
    model.setValue(1, 0, QStringLiteral("two"));
    QCOMPARE(model.value(1, 0), QVariant(QStringLiteral("two")));
    QCOMPARE(model.value(0, 0), QVariant(10));
    model.setValue(0, 2, QVariant());
    QVERIFY(!model.value(0, 2).isValid());
    QCOMPARE(model.value(1, 2), QVariant(QStringLiteral("b")));
    model.appendRecord({3, QStringLiteral("x"), QVariant()});
    QCOMPARE(model.recordCount(), 3);
    QCOMPARE(model.value(2, 0), QVariant(3));
    QCOMPARE(model.value(2, 1), QVariant(QStringLiteral("x")));
    QCOMPARE(model.value(0, 1), QVariant(1.5));
    QVERIFY(!model.value(2, 2).isValid());
    QCOMPARE(model.index(0, 1).data(StatMaxRole).toDouble(), 2.25);
    model.setHeaderPaths({{QStringLiteral("I")}, {QStringLiteral("D")}, {QStringLiteral("T")},
        {QStringLiteral("New")}});
    QCOMPARE(model.value(1, 2), QVariant(QStringLiteral("b")));
    QVERIFY(!model.value(1, 3).isValid());
}

namespace {

// A file of more than one read block (about 5.5 MB).
void writeLargeCsv(QTemporaryFile &file)
{
    QVERIFY(file.open());
    file.write("Id,Value,Name\n");
    for (int i = 0; i < 250000; ++i)
        file.write(QByteArray::number(i) + ',' + QByteArray::number(i * 0.25) + ",name "
            + QByteArray::number(i % 97) + '\n');
    file.close();
}

} // namespace

void tst_CMwGridTableModel::csvProgress()
{
    QTemporaryFile file;
    writeLargeCsv(file);
    const qint64 size = QFileInfo(file.fileName()).size();
    CMwGridTableModel model;
    QSignalSpy progress(&model, &CMwGridTableModel::csvReadProgress);
    QVERIFY(model.loadCsv(file.fileName()));
    QCOMPARE(model.recordCount(), 250000);
    QCOMPARE(model.value(249999, 2), QVariant(QStringLiteral("name 30")));
    QVERIFY(progress.count() >= 2);
    qint64 last = 0;
    for (const QList<QVariant> &args : qAsConst(progress)) {
        QVERIFY(args.at(0).toLongLong() > last);
        last = args.at(0).toLongLong();
        QCOMPARE(args.at(1).toLongLong(), size);
    }
    QCOMPARE(last, size);

    // A buffer read from its start: one block, the whole input.
    QByteArray small = "A\n1\n";
    QBuffer buffer(&small);
    buffer.open(QIODevice::ReadOnly);
    progress.clear();
    QVERIFY(model.readCsv(&buffer));
    QCOMPARE(progress.count(), 1);
    QCOMPARE(progress.at(0).at(0).toLongLong(), qint64(small.size()));
    QCOMPARE(progress.at(0).at(1).toLongLong(), qint64(small.size()));
}

void tst_CMwGridTableModel::csvCancel()
{
    QTemporaryFile file;
    writeLargeCsv(file);
    CMwGridTableModel model;
    watch(&model);
    QVERIFY(readBytes(model, "A,B\n1,x\n"));
    QSignalSpy layout(&model, &QAbstractItemModel::layoutChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    int calls = 0;
    connect(&model, &CMwGridTableModel::csvReadProgress, &model, [&] {
        ++calls;
        model.cancelCsvRead();
    });
    QVERIFY(!model.loadCsv(file.fileName()));
    QCOMPARE(calls, 1);
    QCOMPARE(layout.count(), 0);
    QCOMPARE(reset.count(), 0);
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(model.recordCount(), 1);
    QCOMPARE(model.value(0, 1), QVariant(QStringLiteral("x")));

    // Outside a read a cancel does nothing; the next read runs to its end.
    model.cancelCsvRead();
    disconnect(&model, &CMwGridTableModel::csvReadProgress, nullptr, nullptr);
    QVERIFY(model.loadCsv(file.fileName()));
    QCOMPARE(model.recordCount(), 250000);
}

VEL_TEST_MAIN(tst_CMwGridTableModel)

#include "tst_cmwgridtablemodel.moc"
