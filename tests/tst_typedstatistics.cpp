// The statistics of the ready model's typed columns (ints, doubles, UTF-8
// texts) are read from its arrays, whole columns and selections alike.
// These tests hold them, bit for bit, against the plain walk over the same
// cells as QVariants, on random and adversarial columns.
#include <vel_qt_widgets/CMwGridStatistics.h>
#include <vel_qt_widgets/CMwGridTableModel.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include "grid_oracles.h"
#include "gridtablecells_p.h"
#include "selectedrows_p.h"
#include "vel_test_main.h"

#include <QtCore/QBuffer>
#include <QtCore/QItemSelectionModel>
#include <QtCore/QRandomGenerator>
#include <QtTest/QAbstractItemModelTester>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

namespace {

struct Stats
{
    double count = -1, distinct = -1, min = -1, max = -1, mean = -1, stdev = -1;
};

bool identical(const Stats &a, const Stats &b) { return std::memcmp(&a, &b, sizeof(Stats)) == 0; }

QString describe(const Stats &s)
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(s.count)
        .arg(s.distinct)
        .arg(s.min, 0, 'g', 17)
        .arg(s.max, 0, 'g', 17)
        .arg(s.mean, 0, 'g', 17)
        .arg(s.stdev, 0, 'g', 17);
}

Stats general(const QVector<QVariant> &values)
{
    Stats s;
    oracle::generalStatistics(values, s.count, s.distinct, s.min, s.max, s.mean, s.stdev);
    return s;
}

Stats library(const QVector<QVariant> &values)
{
    Stats s;
    QVectorCalcStatistics(values, s.count, s.distinct, s.min, s.max, s.mean, s.stdev);
    return s;
}

// What the model answers on the statistics roles, as doubles.
Stats modelStatistics(const CMwGridTableModel &model, int column)
{
    const QModelIndex first = model.index(0, column);
    auto role = [&first](int r) {
        const QVariant v = first.data(r);
        return v.userType() == QMetaType::Double ? *static_cast<const double *>(v.constData())
                                                 : -2.0;
    };
    Stats s;
    s.count = role(StatCountRole);
    s.distinct = role(StatDistinctRole);
    s.min = role(StatMinRole);
    s.max = role(StatMaxRole);
    s.mean = role(StatMeanRole);
    s.stdev = role(StatStDevRole);
    return s;
}

QVector<QVariant> columnOf(const CMwGridTableModel &model, int column)
{
    QVector<QVariant> values;
    for (int r = 0; r < model.recordCount(); ++r)
        values.append(model.value(r, column));
    return values;
}

vel::GridTableCells::Typed::Kind kindOf(const CMwGridTableModel &model, int column)
{
    return vel::GridTableCells::of(&model)->typed(column).kind;
}

QVector<QVector<QVariant>> recordsOf(const QVector<QVariant> &column)
{
    QVector<QVector<QVariant>> records;
    for (const QVariant &v : column)
        records.append({v});
    return records;
}

// Selects \a ranges ranges of whole rows of up to \a span rows each, in
// random order, some overlapping, so that the rows come in an order of
// their own.
void selectRandomRanges(
    QItemSelectionModel &selection, QRandomGenerator &random, int ranges, int span)
{
    const QAbstractItemModel *model = selection.model();
    const int rows = model->rowCount();
    for (int i = 0; i < ranges; ++i) {
        const int top = int(random.bounded(rows));
        const int bottom = std::min(rows - 1, top + int(random.bounded(span)));
        selection.select(QItemSelection(model->index(top, 0), model->index(bottom, 0)),
            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
}

} // namespace

class tst_TypedStatistics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numberColumns_data();
    void numberColumns();
    void mixedColumnsStayVariants();
    void textColumns_data();
    void textColumns();
    void selections_data();
    void selections();
    void selectionOrderOfSignedZeros();
    void columnsTogether_data();
    void columnsTogether();
};

void tst_TypedStatistics::numberColumns_data()
{
    QTest::addColumn<QVector<QVariant>>("values");
    // column kind the model must hold them as
    QTest::addColumn<int>("kind");

    const int ints = vel::GridTableCells::Typed::Ints;
    const int doubles = vel::GridTableCells::Typed::Doubles;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    QRandomGenerator random(4711);
    auto column = [&random](int n, const std::function<QVariant()> &make, int emptyPercent) {
        QVector<QVariant> out;
        for (int i = 0; i < n; ++i)
            out.append(int(random.bounded(100)) < emptyPercent ? QVariant() : make());
        return out;
    };

    QTest::newRow("ints, small range (counted)") << column(
        5000, [&] { return QVariant(int(random.bounded(300)) - 150); }, 10)
                                                 << ints;
    QTest::newRow("ints, wide range (radix)") << column(
        5000, [&] { return QVariant(int(random.generate())); }, 5)
                                              << ints;
    QTest::newRow("ints, one value") << column(
        300, [] { return QVariant(7); }, 20)
                                     << ints;
    QTest::newRow("int extremes") << QVector<QVariant> {std::numeric_limits<int>::min(),
        std::numeric_limits<int>::max(), -1, QVariant(), 0, 1, std::numeric_limits<int>::min()}
                                  << ints;
    QTest::newRow("doubles, uniform") << column(
        6000, [&] { return QVariant(random.generateDouble() * 1000.0); }, 0)
                                      << doubles;
    QTest::newRow("doubles, repeats, empty cells") << column(
        4000, [&] { return QVariant(double(random.bounded(50)) / 4 - 6); }, 10)
                                                   << doubles;
    QTest::newRow("doubles over a wide range") << column(
        5000,
        [&] {
            return QVariant(
                (random.generateDouble() - 0.5) * std::pow(10.0, int(random.bounded(600)) - 300));
        },
        3) << doubles;
    QTest::newRow("signed zeros") << column(
        2000, [&] { return QVariant(random.bounded(2) ? 0.0 : -0.0); }, 5)
                                  << doubles;
    QTest::newRow("signed zeros and numbers") << column(
        3000, [&] { return QVariant(random.bounded(3) == 0 ? -0.0 : random.bounded(3) - 1.0); }, 0)
                                              << doubles;
    QTest::newRow("first is -0.0") << QVector<QVariant> {-0.0, 0.0, 1.0, -0.0} << doubles;
    QTest::newRow("only +0.0 and numbers") << QVector<QVariant> {0.0, 2.0, 0.0, -3.5} << doubles;
    QTest::newRow("close doubles") << column(
        3000,
        [&] {
            const double base = double(random.bounded(5)) + 1.0;
            switch (random.bounded(4)) {
            case 0:
                return QVariant(base);
            case 1:
                return QVariant(base * (1 + 1e-13));
            case 2:
                return QVariant(base * (1 + 2e-9));
            default:
                return QVariant(base * (1 - 1e-12));
            }
        },
        3) << doubles;
    QTest::newRow("NaN, infinities, numbers") << column(
        3000,
        [&] {
            switch (random.bounded(5)) {
            case 0:
                return QVariant(nan);
            case 1:
                return QVariant(-nan);
            case 2:
                return QVariant(inf);
            case 3:
                return QVariant(-inf);
            default:
                return QVariant(random.generateDouble());
            }
        },
        5) << doubles;
    QTest::newRow("infinities only") << QVector<QVariant> {inf, -inf, inf, QVariant()} << doubles;
    QTest::newRow("only NaN") << QVector<QVariant> {nan, QVariant(), nan} << doubles;
    QTest::newRow("huge doubles") << QVector<QVariant> {std::numeric_limits<double>::max(),
        -std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min(),
        std::numeric_limits<double>::max()}
                                  << doubles;
    QTest::newRow("one value") << QVector<QVariant> {2.5} << doubles;
}

void tst_TypedStatistics::numberColumns()
{
    QFETCH(QVector<QVariant>, values);
    QFETCH(int, kind);
    CMwGridTableModel model;
    QAbstractItemModelTester tester(&model);
    model.setTable({{QStringLiteral("A")}}, recordsOf(values));
    QCOMPARE(int(kindOf(model, 0)), kind);
    // The cells read back as they were given.
    const QVector<QVariant> back = columnOf(model, 0);
    QCOMPARE(back.size(), values.size());
    for (int i = 0; i < values.size(); ++i) {
        QCOMPARE(back.at(i).userType(), values.at(i).userType());
        if (values.at(i).isValid()) {
            const double x = back.at(i).toDouble();
            const double y = values.at(i).toDouble();
            QVERIFY(std::memcmp(&x, &y, sizeof x) == 0);
        }
    }

    const Stats expected = general(values);
    const Stats typed = modelStatistics(model, 0);
    QVERIFY2(identical(typed, expected),
        qPrintable(describe(typed) + QStringLiteral(" vs ") + describe(expected)));
    const Stats viaVariants = library(values);
    QVERIFY2(identical(viaVariants, expected),
        qPrintable(describe(viaVariants) + QStringLiteral(" vs ") + describe(expected)));
}

void tst_TypedStatistics::mixedColumnsStayVariants()
{
    CMwGridTableModel model;
    const QVector<QVariant> mixed = {1, 2.0, QVariant(), 3};
    const QVector<QVariant> text = {QStringLiteral("2"), 1.5};
    const QVector<QVariant> longs = {qlonglong(1) << 40, qlonglong(-3)};
    const QVector<QVariant> empty = {QVariant(), QVariant()};
    QVector<QVector<QVariant>> records;
    for (int r = 0; r < 4; ++r)
        records.append({mixed.value(r), text.value(r), longs.value(r), empty.value(r)});
    model.setTable({{QStringLiteral("A")}, {QStringLiteral("B")}, {QStringLiteral("C")},
                       {QStringLiteral("D")}},
        records);
    for (int c = 0; c < 4; ++c) {
        QCOMPARE(int(kindOf(model, c)), int(vel::GridTableCells::Typed::None));
        const QVector<QVariant> values = columnOf(model, c);
        QVERIFY(identical(modelStatistics(model, c), general(values)));
    }
    // An int column turns into QVariants when a cell of another type arrives.
    model.setTable({{QStringLiteral("A")}}, recordsOf({1, 2, 3}));
    QCOMPARE(int(kindOf(model, 0)), int(vel::GridTableCells::Typed::Ints));
    QCOMPARE(modelStatistics(model, 0).mean, 2.0);
    model.setValue(1, 0, QStringLiteral("x"));
    QCOMPARE(int(kindOf(model, 0)), int(vel::GridTableCells::Typed::None));
    const Stats after = modelStatistics(model, 0);
    QVERIFY(identical(after, general(columnOf(model, 0))));
    QCOMPARE(after.count, 3.0);
}

void tst_TypedStatistics::textColumns_data()
{
    QTest::addColumn<QByteArray>("csv");

    QRandomGenerator random(99);
    QByteArray repeated = "Name,Number\n";
    QByteArray unique = "Name,Number\n";
    for (int i = 0; i < 3000; ++i) {
        repeated += "Item " + QByteArray::number(random.bounded(200)) + ",1\n";
        unique += "Name " + QByteArray::number(random.bounded(100000)) + "-" + QByteArray::number(i)
            + ",2\n";
    }
    QTest::newRow("repeated texts") << repeated;
    QTest::newRow("unique texts") << unique;
    // All different as far as the first thousand go, then repeats: equal
    // texts must still count once, also ones that differ only in their
    // bytes (invalid UTF-8 reads as U+FFFD, as does U+FFFD itself).
    QByteArray lateRepeats = "Name,Number\n";
    for (int i = 0; i < 1500; ++i)
        lateRepeats += "Text " + QByteArray::number(i) + ",1\n";
    for (int i = 0; i < 1500; ++i) {
        switch (random.bounded(4)) {
        case 0:
            lateRepeats += "Text " + QByteArray::number(random.bounded(1500)) + ",2\n";
            break;
        case 1:
            lateRepeats += "\xff,3\n";
            break;
        case 2:
            lateRepeats += "\xef\xbf\xbd,4\n";
            break;
        default:
            lateRepeats += ",5\n";
            break;
        }
    }
    QTest::newRow("unique at first, repeats later") << lateRepeats;
    // Different texts that collate alike share a rank: composed and
    // decomposed accents, each once, among unique texts.
    QByteArray tiesAmongUnique = "Name,Number\n";
    for (int i = 0; i < 1200; ++i)
        tiesAmongUnique += "w" + QByteArray::number(i) + ",1\n";
    tiesAmongUnique += "\xc3\xa9,2\ne\xcc\x81,3\n\xc3\xa9,4\n";
    QTest::newRow("unique texts with collation ties") << tiesAmongUnique;
    // Numbers among texts keep the column a text column; "12" reads as 12
    // only where it is the first value.
    QTest::newRow("texts and numbers") << QByteArray("A,B\n12,1\nabc,2\n,3\n7.5,4\nabc,5\n12,6\n");
    QTest::newRow("first text is a number")
        << QByteArray("A,B\n 3.25 ,1\nx,2\n3.25,3\n\"3.25\",4\n");
    // Different bytes, equal texts: invalid UTF-8 reads as U+FFFD.
    QTest::newRow("invalid UTF-8")
        << QByteArray("A,B\n\xff,1\n\xfe,2\n\xef\xbf\xbd,3\nz,4\n\xc3\xa9,5\n\xc3,6\n");
    QTest::newRow("accents and scripts")
        << QByteArray("A,B\n\xc3\xa9t\xc3\xa9,1\nete,2\ne\xcc\x81t\xc3\xa9,3\n\xd0\xb4\xd0\xb0,4\n"
                      "\xe6\x97\xa5,5\nEte,6\n\xc3\xa9t\xc3\xa9,7\n,8\n");
    QTest::newRow("spaces kept") << QByteArray("A,B\n a,1\na,2\na ,3\n\" a\",4\n");
    QTest::newRow("only empty cells") << QByteArray("A,B\n,1\n,2\n");
    // Whole numbers beyond an int, and beyond a double's 53 bits, whatever
    // the loader makes of them.
    QTest::newRow("huge whole numbers")
        << QByteArray("A,B\n9007199254740993,1\n9007199254740992,2\n2147483648,3\n"
                      "-2147483649,4\n,5\n9007199254740993,6\n-9223372036854775808,7\n");
    QTest::newRow("ints and doubles") << QByteArray("A,B\n1,1\n2.5,2\n,3\n-0.0,4\n1,5\n0,6\n");
}

void tst_TypedStatistics::textColumns()
{
    QFETCH(QByteArray, csv);
    QBuffer buffer(&csv);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    CMwGridTableModel model;
    QAbstractItemModelTester tester(&model);
    QVERIFY(model.readCsv(&buffer));
    const QVector<QVariant> values = columnOf(model, 0);
    const bool anyText = std::any_of(values.begin(), values.end(),
        [](const QVariant &v) { return v.userType() == QMetaType::QString; });
    if (anyText)
        QCOMPARE(int(kindOf(model, 0)), int(vel::GridTableCells::Typed::Texts));
    const Stats expected = general(values);
    const Stats typed = modelStatistics(model, 0);
    QVERIFY2(identical(typed, expected),
        qPrintable(describe(typed) + QStringLiteral(" vs ") + describe(expected)));
    QVERIFY(identical(library(values), expected));
}

void tst_TypedStatistics::selections_data()
{
    QTest::addColumn<bool>("sorted");
    // whether the proxy is sorted, so that selection order and storage order differ
    QTest::newRow("unsorted") << false;
    QTest::newRow("sorted") << true;
}

void tst_TypedStatistics::selections()
{
    QFETCH(bool, sorted);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QRandomGenerator random(31);
    const int records = 2000;
    QByteArray csv = "Int,Double,Text,Signed,Unique\n";
    for (int r = 0; r < records; ++r) {
        const QByteArray number = random.bounded(10) == 0
            ? QByteArray()
            : QByteArray::number(int(random.bounded(400)) - 200);
        const QByteArray x = random.bounded(10) == 0
            ? QByteArray()
            : QByteArray::number(random.generateDouble() * 100.0, 'g', 17);
        const QByteArray text = random.bounded(10) == 0
            ? QByteArray()
            : "t" + QByteArray::number(random.bounded(300));
        const QByteArray zero = random.bounded(3) == 0 ? "-0" : random.bounded(2) ? "0.0" : "2.5";
        // Different texts (the per-cell numbering), a few repeated late.
        const QByteArray unique = random.bounded(20) == 0
            ? QByteArray()
            : "u" + QByteArray::number(r < 1500 ? r : int(random.bounded(1500)));
        csv += number + "," + x + "," + text + "," + zero + "," + unique + "\n";
    }
    QBuffer buffer(&csv);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    CMwGridTableModel model;
    QVERIFY(model.readCsv(&buffer));
    QCOMPARE(int(kindOf(model, 0)), int(vel::GridTableCells::Typed::Ints));
    QCOMPARE(int(kindOf(model, 1)), int(vel::GridTableCells::Typed::Doubles));
    QCOMPARE(int(kindOf(model, 2)), int(vel::GridTableCells::Typed::Texts));
    QCOMPARE(int(kindOf(model, 3)), int(vel::GridTableCells::Typed::Doubles));
    QCOMPARE(int(kindOf(model, 4)), int(vel::GridTableCells::Typed::Texts));
    // NaN has no CSV form: one set afterwards keeps the column typed.
    model.setValue(5, 3, nan);
    QCOMPARE(int(kindOf(model, 3)), int(vel::GridTableCells::Typed::Doubles));

    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    QAbstractItemModelTester tester(&proxy);
    if (sorted)
        proxy.sort(1, Qt::DescendingOrder);
    QItemSelectionModel selection(&proxy);
    selectRandomRanges(selection, random, 40, 80);
    vel::SelectedRows rows(&selection);
    QVERIFY(rows.count() > 100);
    for (int c = 0; c < 5; ++c) {
        Stats typed;
        QVERIFY(rows.typedStatistics(
            c, typed.count, typed.distinct, typed.min, typed.max, typed.mean, typed.stdev));
        const QVector<QVariant> values = rows.displayColumn(c);
        const Stats expected = general(values);
        QVERIFY2(identical(typed, expected),
            qPrintable(QString::number(c) + QStringLiteral(": ") + describe(typed)
                + QStringLiteral(" vs ") + describe(expected)));
    }
    // A column the proxy does not have is no typed column.
    Stats none;
    QVERIFY(!rows.typedStatistics(
        5, none.count, none.distinct, none.min, none.max, none.mean, none.stdev));
    QCOMPARE(none.count, -1.0);
}

// Among equal keys the reading order decides which zero comes first: the
// selection's order, not the order in which the model stores the records.
void tst_TypedStatistics::selectionOrderOfSignedZeros()
{
    CMwGridTableModel model;
    model.setTable({{QStringLiteral("A")}}, recordsOf({0.0, -0.0, 0.0, 1.0}));
    QCOMPARE(int(kindOf(model, 0)), int(vel::GridTableCells::Typed::Doubles));
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    QItemSelectionModel selection(&proxy);
    selection.select(proxy.index(1, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection.select(QItemSelection(proxy.index(2, 0), proxy.index(3, 0)),
        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection.select(proxy.index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    vel::SelectedRows rows(&selection);
    QCOMPARE(rows.count(), 4);
    Stats typed;
    QVERIFY(rows.typedStatistics(
        0, typed.count, typed.distinct, typed.min, typed.max, typed.mean, typed.stdev));
    QCOMPARE(typed.count, 4.0);
    QCOMPARE(typed.distinct, 2.0);
    // The first value walked is the first zero selected: -0.0.
    QVERIFY(std::signbit(typed.min));
    QVERIFY(identical(typed, general(rows.displayColumn(0))));
}

// Every column of a selection at once: the double columns are sorted first
// and walked a few side by side; each result must still be the one column's
// alone, and the plain walk's, to the bit.
void tst_TypedStatistics::columnsTogether_data()
{
    QTest::addColumn<bool>("sorted");
    QTest::addColumn<bool>("everyRow");
    QTest::newRow("unsorted, some rows") << false << false;
    QTest::newRow("sorted, some rows") << true << false;
    QTest::newRow("sorted, every row") << true << true;
}

void tst_TypedStatistics::columnsTogether()
{
    QFETCH(bool, sorted);
    QFETCH(bool, everyRow);
    QRandomGenerator random(47);
    const int records = 3000;
    // Columns, by kind of content; several walk together, some have empty
    // cells (so their walks are shorter), some cannot take the side-by-side
    // walk at all (NaN, -0.0), some are not doubles.
    const QStringList names = {QStringLiteral("Positive"), QStringLiteral("Sparse"),
        QStringLiteral("Close"), QStringLiteral("Zeros"), QStringLiteral("Negative"),
        QStringLiteral("Mixed"), QStringLiteral("Int"), QStringLiteral("Infinite"),
        QStringLiteral("Text"), QStringLiteral("SignedZero"), QStringLiteral("Repeats"),
        QStringLiteral("Empty"), QStringLiteral("Huge"), QStringLiteral("Small")};
    QByteArray csv = names.join(QLatin1Char(',')).toLatin1() + "\n";
    auto number = [](double x) { return QByteArray::number(x, 'g', 17); };
    for (int r = 0; r < records; ++r) {
        QByteArrayList cells;
        cells << number(random.generateDouble() * 1000.0);
        cells << (random.bounded(3) == 0 ? QByteArray() : number(random.generateDouble() * 50.0));
        // Neighbours closer than QVariant's fuzzy equality tells apart.
        cells << number(1.0 + double(random.bounded(40)) * 1e-13);
        cells << (random.bounded(5) == 0 ? QByteArray("0") : number(random.generateDouble()));
        cells << number(-1.0 - random.generateDouble() * 1e6);
        cells << number((random.generateDouble() - 0.5) * 200.0);
        cells << QByteArray::number(int(random.bounded(100000)) - 50000);
        cells << (random.bounded(50) == 0 ? QByteArray(random.bounded(2) ? "inf" : "-inf")
                                          : number(random.generateDouble()));
        cells << "t" + QByteArray::number(random.bounded(100));
        cells << (random.bounded(4) == 0 ? QByteArray("-0") : number(random.generateDouble()));
        cells << number(double(random.bounded(7)) / 4.0);
        cells << QByteArray();
        cells << number((random.bounded(2) ? 1.0 : -1.0) * std::numeric_limits<double>::max()
            * random.generateDouble());
        cells << number(std::numeric_limits<double>::denorm_min() * double(random.bounded(1000)));
        csv += cells.join(',') + "\n";
    }
    QBuffer buffer(&csv);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    CMwGridTableModel model;
    QVERIFY(model.readCsv(&buffer));
    QCOMPARE(model.columnCount(), names.size());
    for (int c : {0, 1, 2, 3, 4, 5, 7, 9, 10, 12, 13})
        QCOMPARE(int(kindOf(model, c)), int(vel::GridTableCells::Typed::Doubles));
    QCOMPARE(int(kindOf(model, 6)), int(vel::GridTableCells::Typed::Ints));
    QCOMPARE(int(kindOf(model, 8)), int(vel::GridTableCells::Typed::Texts));
    // NaN has no CSV form: set one into a column of positive doubles.
    model.setValue(17, 10, std::numeric_limits<double>::quiet_NaN());
    QCOMPARE(int(kindOf(model, 10)), int(vel::GridTableCells::Typed::Doubles));

    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    QAbstractItemModelTester tester(&proxy);
    if (sorted)
        proxy.sort(3, Qt::AscendingOrder);
    QItemSelectionModel selection(&proxy);
    const int columns = proxy.columnCount();
    if (everyRow) {
        selection.select(QItemSelection(proxy.index(0, 0), proxy.index(records - 1, columns - 1)),
            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    } else {
        selectRandomRanges(selection, random, 30, 120);
    }
    vel::SelectedRows rows(&selection);
    QVERIFY(rows.count() > 100);
    QCOMPARE(rows.count() == records, everyRow);

    std::vector<Stats> expected;
    for (int c = 0; c < columns; ++c) {
        expected.push_back(general(rows.displayColumn(c)));
        Stats alone;
        QVERIFY(rows.typedStatistics(
            c, alone.count, alone.distinct, alone.min, alone.max, alone.mean, alone.stdev));
        QVERIFY2(identical(alone, expected.back()), qPrintable(names.at(c)));
    }
    // The first columns only, so that every number of walks goes side by
    // side; one more column than the proxy has is no typed column.
    std::vector<vel::StatisticsResult> results;
    for (int taken = 1; taken <= columns + 1; ++taken) {
        rows.typedStatistics(taken, results);
        QCOMPARE(int(results.size()), taken);
        for (int c = 0; c < std::min(taken, columns); ++c) {
            const vel::StatisticsResult &r = results[static_cast<size_t>(c)];
            QVERIFY2(r.done, qPrintable(names.at(c)));
            Stats together;
            together.count = r.count;
            together.distinct = r.distinct;
            together.min = r.min;
            together.max = r.max;
            together.mean = r.mean;
            together.stdev = r.stdev;
            const Stats &e = expected[static_cast<size_t>(c)];
            QVERIFY2(identical(together, e),
                qPrintable(QString::number(taken) + QLatin1Char(' ') + names.at(c)
                    + QStringLiteral(": ") + describe(together) + QStringLiteral(" vs ")
                    + describe(e)));
        }
    }
    QVERIFY(!results.back().done);
    // What the columns hold, so that each way through is taken: the close
    // values count as fewer distinct values than they have bit patterns,
    // the empty column has none, the sparse column fewer than the full one.
    QVERIFY(expected[2].distinct < 40 && expected[2].distinct >= 1);
    QVERIFY(expected[3].min == 0.0);
    QCOMPARE(expected[11].count, 0.0);
    QCOMPARE(expected[11].distinct, 1.0);
    QVERIFY(expected[1].count < expected[0].count);
    QVERIFY(expected[4].max < 0);
    QVERIFY(expected[5].min < 0 && expected[5].max > 0);
    QVERIFY(std::isinf(expected[7].min) || std::isinf(expected[7].max));

    // The whole columns, worked out together ahead of data() (columns out
    // of range and repeated ones are passed over), then read one by one.
    CMwGridTableModel prepared;
    QVERIFY(buffer.seek(0));
    QVERIFY(prepared.readCsv(&buffer));
    prepared.setValue(17, 10, std::numeric_limits<double>::quiet_NaN());
    std::vector<int> wanted = {-1, columns, 3};
    for (int c = 0; c < columns; ++c)
        wanted.push_back(c);
    vel::GridTableCells::of(&prepared)->prepareStatistics(wanted);
    for (int c = 0; c < columns; ++c) {
        const Stats whole = general(columnOf(prepared, c));
        const Stats read = modelStatistics(prepared, c);
        QVERIFY2(identical(read, whole),
            qPrintable(names.at(c) + QStringLiteral(": ") + describe(read) + QStringLiteral(" vs ")
                + describe(whole)));
        if (c != 1) // the sparse column has empty cells
            QCOMPARE(whole.count, c == 11 ? 0.0 : double(records));
    }
}

VEL_TEST_MAIN(tst_TypedStatistics)

#include "tst_typedstatistics.moc"
