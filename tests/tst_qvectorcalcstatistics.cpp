#include <vel_qt_widgets/CMwGridStatistics.h>

#include "grid_oracles.h"
#include "qt5variantoracle.h"

#include "vel_test_main.h"

#include <QtCore/QDate>
#include <QtCore/QRandomGenerator>
#include <QtGui/QColor>

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

Stats calc(const QVector<QVariant> &values)
{
    Stats s;
    QVectorCalcStatistics(values, s.count, s.distinct, s.min, s.max, s.mean, s.stdev);
    return s;
}

// The ordering and the walk written out plainly, for inputs on which the
// ordering is consistent (no "other" types, no NaN, no empty cells).
bool referenceLess(const QVariant &a, const QVariant &b)
{
    if (a.userType() == b.userType()) {
        switch (a.userType()) {
        case QMetaType::Int:
            return a.toInt() < b.toInt();
        case QMetaType::UInt:
            return a.toUInt() < b.toUInt();
        case QMetaType::LongLong:
            return a.toLongLong() < b.toLongLong();
        case QMetaType::Double:
            return a.toDouble() < b.toDouble();
        case QMetaType::QString:
            return a.toString().localeAwareCompare(b.toString()) < 0;
        default:
            return false;
        }
    }
    if (a.isValid() && b.isValid())
        return a.userType() < b.userType();
    return false;
}

Stats reference(QVector<QVariant> copy)
{
    Stats s {0, 0, 0, 0, 0, 0};
    if (copy.isEmpty())
        return s;
    s.distinct = 1;
    std::stable_sort(copy.begin(), copy.end(), referenceLess);
    const int t = copy.first().userType();
    const bool numeric = t == QMetaType::Double || t == QMetaType::Int || t == QMetaType::LongLong
        || t == QMetaType::UInt || t == QMetaType::ULongLong;
    double n = 0;
    double sum = 0;
    QVariant previous;
    for (const QVariant &v : copy) {
        if (Qt5Oracle::equal(v, QVariant()))
            continue;
        if (n == 0) {
            previous = v;
            s.min = s.max = v.toDouble();
        }
        if (!Qt5Oracle::equal(v, previous)) {
            previous = v;
            s.distinct += 1;
        }
        n += 1;
        if (numeric) {
            const double x = v.toDouble();
            const double d = x - s.mean;
            s.mean = s.mean + d / n;
            sum += x * d;
            s.min = std::min(s.min, x);
            s.max = std::max(s.max, x);
        }
    }
    s.count = n;
    if (numeric) {
        double variance = n != 0 ? sum / n : 0;
        if (variance < 0)
            variance = 0;
        s.stdev = std::sqrt(variance);
    }
    return s;
}

Stats general(const QVector<QVariant> &values)
{
    Stats s;
    oracle::generalStatistics(values, s.count, s.distinct, s.min, s.max, s.mean, s.stdev);
    return s;
}

// Bit for bit, NaN included.
bool identical(const Stats &a, const Stats &b) { return std::memcmp(&a, &b, sizeof(Stats)) == 0; }

QVector<QVariant> ints(std::initializer_list<int> list)
{
    QVector<QVariant> out;
    for (int i : list)
        out.append(i);
    return out;
}

} // namespace

class tst_QVectorCalcStatistics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void results_data();
    void results();
    void nanValues();
    void sortedAccumulation();
    void matchesPlainSortOnConsistentData_data();
    void matchesPlainSortOnConsistentData();
    void outputsStartAtZero();
    void largeInconsistentInputs_data();
    void largeInconsistentInputs();
    void largeMixedTypes();
    void shortcutMatchesGeneralPath_data();
    void shortcutMatchesGeneralPath();
    void textEquality();
    void oracleAgreedWithQt5();
};

void tst_QVectorCalcStatistics::results_data()
{
    QTest::addColumn<QVector<QVariant>>("values");
    QTest::addColumn<double>("count");
    QTest::addColumn<double>("distinct");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("mean");
    QTest::addColumn<double>("stdev");

    const QDate day(2024, 5, 1);
    //                                    values                                     count distinct
    //                                    min   max  mean  stdev
    QTest::newRow("empty") << QVector<QVariant>() << 0. << 0. << 0. << 0. << 0. << 0.;
    QTest::newRow("kept: 1,2,3") << ints({1, 2, 3}) << 3. << 3. << 1. << 3. << 2. << std::sqrt(2.5);
    QTest::newRow("3,1,2 sorted first")
        << ints({3, 1, 2}) << 3. << 3. << 1. << 3. << 2. << std::sqrt(2.5);
    QTest::newRow("kept: one value gives |x|")
        << QVector<QVariant> {-4.0} << 1. << 1. << -4. << -4. << -4. << 4.;
    // sum = 49 + 7 * 0 = 49 over 2: the spread of equal values is not 0.
    QTest::newRow("two equal numbers")
        << ints({7, 7}) << 2. << 1. << 7. << 7. << 7. << std::sqrt(24.5);
    // sum = 1 + 3 * 2 = 7 over 2.
    QTest::newRow("empty cells skipped") << QVector<QVariant> {1, QVariant(), 3, QVariant()} << 2.
                                         << 2. << 1. << 3. << 2. << std::sqrt(3.5);
    QTest::newRow("only empty cells")
        << QVector<QVariant> {QVariant(), QVariant()} << 0. << 1. << 0. << 0. << 0. << 0.;
    QTest::newRow("text: first value's number")
        << QVector<QVariant> {QStringLiteral("b"), QStringLiteral("10"), QStringLiteral("a")} << 3.
        << 3. << 10. << 10. << 0. << 0.;
    QTest::newRow("text repeated")
        << QVector<QVariant> {QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("x")} << 3.
        << 2. << 0. << 0. << 0. << 0.;
    // Int sorts before Double before String; the text reads as 0.
    QTest::newRow("mixed numeric first")
        << QVector<QVariant> {QStringLiteral("x"), 5, 2.5} << 3. << 3. << 0. << 5. << 2.5 << 2.5;
    // String (10) sorts before QDate (14): not numeric.
    QTest::newRow("mixed text first") << QVector<QVariant> {QVariant(day), QStringLiteral("7")}
                                      << 2. << 2. << 7. << 7. << 0. << 0.;
    // Dates keep their order: neighbours d1,d2,d1 all differ.
    QTest::newRow("kept: dates unordered")
        << QVector<QVariant> {day, day.addDays(1), day} << 3. << 3. << 0. << 0. << 0. << 0.;
    QTest::newRow("bools") << QVector<QVariant> {true, false, true} << 3. << 3. << 1. << 1. << 0.
                           << 0.;
    QTest::newRow("floats are not numeric")
        << QVector<QVariant> {2.5f, 1.5f} << 2. << 2. << 2.5 << 2.5 << 0. << 0.;
    QTest::newRow("uint") << QVector<QVariant> {3u, 1u, 2u} << 3. << 3. << 1. << 3. << 2.
                          << std::sqrt(2.5);
    // Sorted -3, -2, -1: sum = 9 - 2 - 1.5 = 5.5.
    QTest::newRow("longlong") << QVector<QVariant> {qlonglong(-3), qlonglong(-1), qlonglong(-2)}
                              << 3. << 3. << -3. << -1. << -2. << std::sqrt(5.5 / 3.0);
    // ULongLong is numeric but not ordered by value: walked as given, 3, 1, 2,
    // sum = 9 - 2 + 0 = 7.
    QTest::newRow("ulonglong keeps order")
        << QVector<QVariant> {qulonglong(3), qulonglong(1), qulonglong(2)} << 3. << 3. << 1. << 3.
        << 2. << std::sqrt(7.0 / 3.0);
}

void tst_QVectorCalcStatistics::results()
{
    QFETCH(QVector<QVariant>, values);
    QFETCH(double, count);
    QFETCH(double, distinct);
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, mean);
    QFETCH(double, stdev);

    const Stats s = calc(values);
    QCOMPARE(s.count, count);
    QCOMPARE(s.distinct, distinct);
    QCOMPARE(s.min, min);
    QCOMPARE(s.max, max);
    QCOMPARE(s.mean, mean);
    QCOMPARE(s.stdev, stdev);
}

void tst_QVectorCalcStatistics::nanValues()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    // NaN goes after the other doubles: 1 and 2 still set min and max.
    const Stats s = calc({nan, 2.0, nan, 1.0});
    QCOMPARE(s.count, 4.0);
    QCOMPARE(s.min, 1.0);
    QCOMPARE(s.max, 2.0);
    // NaN never equals anything, itself included.
    QCOMPARE(s.distinct, 4.0);
    QVERIFY(std::isnan(s.mean));
    QVERIFY(std::isnan(s.stdev));

    // QVariant compares doubles fuzzily: 0.1 + 0.2 and 0.3 are one value.
    const Stats fuzzy = calc({0.1 + 0.2, 0.3});
    QCOMPARE(fuzzy.count, 2.0);
    QCOMPARE(fuzzy.distinct, 1.0);
    QCOMPARE(fuzzy.min, 0.3);
}

void tst_QVectorCalcStatistics::sortedAccumulation()
{
    // Walked as given, 3, 1, 2 would give sum 7 and a spread of 1.5275...
    const Stats s = calc(ints({3, 1, 2}));
    QVERIFY(std::abs(s.stdev - 1.5811388300841898) < 1e-12);
    QVERIFY(std::abs(s.stdev - std::sqrt(7.0 / 3.0)) > 0.05);
}

void tst_QVectorCalcStatistics::matchesPlainSortOnConsistentData_data()
{
    QTest::addColumn<QVector<QVariant>>("values");

    QRandomGenerator random(20240501);
    QVector<QVariant> doubles, integers, texts, mixed;
    for (int i = 0; i < 5000; ++i) {
        doubles.append(random.generateDouble() * 2000.0 - 1000.0);
        integers.append(int(random.bounded(100)) - 50);
        texts.append(QStringLiteral("item %1").arg(random.bounded(300)));
        switch (random.bounded(5)) {
        case 0:
            mixed.append(int(random.bounded(1000)));
            break;
        case 1:
            mixed.append(random.generateDouble());
            break;
        case 2:
            mixed.append(qlonglong(random.bounded(1000)));
            break;
        case 3:
            mixed.append(uint(random.bounded(1000)));
            break;
        default:
            mixed.append(QString::number(random.bounded(1000)));
            break;
        }
    }
    QTest::newRow("doubles") << doubles;
    QTest::newRow("integers with repeats") << integers;
    QTest::newRow("texts with repeats") << texts;
    QTest::newRow("mixed valid types") << mixed;
}

void tst_QVectorCalcStatistics::matchesPlainSortOnConsistentData()
{
    QFETCH(QVector<QVariant>, values);
    const Stats s = calc(values);
    const Stats r = reference(values);
    // Bit for bit: the same order of the same operations.
    QVERIFY(s.count == r.count);
    QVERIFY(s.distinct == r.distinct);
    QVERIFY(s.min == r.min);
    QVERIFY(s.max == r.max);
    QVERIFY(s.mean == r.mean);
    QVERIFY(s.stdev == r.stdev);
}

void tst_QVectorCalcStatistics::outputsStartAtZero()
{
    double count = 9, distinct = 9, min = 9, max = 9, mean = 9, stdev = 9;
    QVectorCalcStatistics({}, count, distinct, min, max, mean, stdev);
    QCOMPARE(count + distinct + min + max + mean + stdev, 0.0);

    mean = 100;
    QVectorCalcStatistics({4.0}, count, distinct, min, max, mean, stdev);
    QCOMPARE(mean, 4.0);
    QCOMPARE(stdev, 4.0);
}

void tst_QVectorCalcStatistics::largeInconsistentInputs_data()
{
    QTest::addColumn<QVector<QVariant>>("values");
    QTest::addColumn<double>("count");
    QTest::addColumn<double>("distinct");

    const int n = 100000;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const QDate day(2024, 1, 1);
    const QColor colors[] = {Qt::red, Qt::green, Qt::blue};
    QVector<QVariant> nans, dates, bools, sameBools, colours, nanAndNumbers;
    for (int i = 0; i < n; ++i) {
        nans.append(nan);
        dates.append(day.addDays(i % 7));
        bools.append(i % 2 == 0);
        sameBools.append(true);
        colours.append(colors[i % 3]);
        nanAndNumbers.append(i % 2 ? nan : double(i % 10));
    }
    //                                  values       count  distinct
    // The first NaN already differs from itself as "previous": n + 1.
    QTest::newRow("NaN") << nans << double(n) << double(n + 1);
    // Not ordered by value: every neighbour differs.
    QTest::newRow("QDate") << dates << double(n) << double(n);
    QTest::newRow("bool") << bools << double(n) << double(n);
    QTest::newRow("bool, one value") << sameBools << double(n) << 1.0;
    QTest::newRow("QColor") << colours << double(n) << double(n);
    // 0, 2, 4, 6, 8 first, then 50 000 NaNs that all differ.
    QTest::newRow("NaN and numbers") << nanAndNumbers << double(n) << 5.0 + n / 2;
}

void tst_QVectorCalcStatistics::largeInconsistentInputs()
{
    QFETCH(QVector<QVariant>, values);
    QFETCH(double, count);
    QFETCH(double, distinct);
    const Stats s = calc(values);
    QCOMPARE(s.count, count);
    QCOMPARE(s.distinct, distinct);
}

void tst_QVectorCalcStatistics::largeMixedTypes()
{
    // Int, Double, String, QDate and empty cells in turn: Int sorts first, so
    // the column is numeric; texts read as their numbers, dates as 0.
    const QDate day(2024, 1, 1);
    QVector<QVariant> values;
    for (int i = 0; i < 100000; ++i) {
        switch (i % 5) {
        case 0:
            values.append(i);
            break;
        case 1:
            values.append(i + 0.5);
            break;
        case 2:
            values.append(QString::number(i));
            break;
        case 3:
            values.append(day.addDays(i % 7));
            break;
        default:
            values.append(QVariant());
            break;
        }
    }
    const Stats s = calc(values);
    QCOMPARE(s.count, 80000.0);
    QCOMPARE(s.distinct, 80000.0);
    QCOMPARE(s.min, 0.0);
    QCOMPARE(s.max, 99997.0);
    QVERIFY(std::isfinite(s.mean));
    QVERIFY(std::isfinite(s.stdev));
}

void tst_QVectorCalcStatistics::shortcutMatchesGeneralPath_data()
{
    QTest::addColumn<QVector<QVariant>>("values");

    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    QRandomGenerator random(77);
    auto column = [&random](int n, const std::function<QVariant()> &make, int emptyPercent) {
        QVector<QVariant> out;
        for (int i = 0; i < n; ++i)
            out.append(int(random.bounded(100)) < emptyPercent ? QVariant() : make());
        return out;
    };
    // Few distinct values, so that ties (and their order) matter.
    QTest::newRow("doubles, repeats, empty cells") << column(
        4000, [&] { return QVariant(double(random.bounded(50)) / 4 - 6); }, 10);
    QTest::newRow("signed zeros") << column(
        2000, [&] { return QVariant(random.bounded(2) ? 0.0 : -0.0); }, 5);
    QTest::newRow("signed zeros and numbers") << column(
        3000, [&] { return QVariant(random.bounded(3) == 0 ? -0.0 : random.bounded(3) - 1.0); }, 0);
    QTest::newRow("first is -0.0") << QVector<QVariant> {-0.0, 0.0, 1.0, -0.0};
    QTest::newRow("first is 0.0") << QVector<QVariant> {0.0, -0.0, 1.0, -0.0};
    // Neighbours closer than QVariant's tolerance and just beyond the cut.
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
        3);
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
        5);
    QTest::newRow("only NaN") << QVector<QVariant> {nan, QVariant(), nan};
    QTest::newRow("doubles over a wide range") << column(
        5000,
        [&] {
            return QVariant(
                (random.generateDouble() - 0.5) * std::pow(10.0, int(random.bounded(40)) - 20));
        },
        0);
    QTest::newRow("int") << column(
        4000, [&] { return QVariant(int(random.bounded(200)) - 100); }, 10);
    QTest::newRow("int extremes") << QVector<QVariant> {std::numeric_limits<int>::min(),
        std::numeric_limits<int>::max(), -1, 0, 1, std::numeric_limits<int>::min()};
    QTest::newRow("uint") << column(
        4000, [&] { return QVariant(uint(random.generate())); }, 10);
    // Different above 2^53, where their doubles coincide: still distinct.
    QTest::newRow("long long beyond a double's precision") << column(
        3000,
        [&] {
            return QVariant(
                qlonglong((qint64(1) << 60) + random.bounded(4)) * (random.bounded(2) ? 1 : -1));
        },
        5);
    QTest::newRow("long long extremes") << QVector<QVariant> {std::numeric_limits<qlonglong>::min(),
        std::numeric_limits<qlonglong>::max(), qlonglong(0), qlonglong(-1)};
    QTest::newRow("one value") << QVector<QVariant> {2.5};
    QTest::newRow("only empty cells") << QVector<QVariant>(5);
    // Not one numeric type: the general path answers (and must agree anyway).
    QTest::newRow("int and double") << QVector<QVariant> {1, 2.0, QVariant(), 3};
    QTest::newRow("double then text") << QVector<QVariant> {1.5, QStringLiteral("2")};
    QTest::newRow("ulonglong") << QVector<QVariant> {qulonglong(3), qulonglong(1)};
}

void tst_QVectorCalcStatistics::shortcutMatchesGeneralPath()
{
    QFETCH(QVector<QVariant>, values);
    const Stats fast = calc(values);
    const Stats slow = general(values);
    QVERIFY2(identical(fast, slow),
        qPrintable(QStringLiteral("%1 %2 %3 %4 %5 %6 vs %7 %8 %9 %10 %11 %12")
                       .arg(fast.count)
                       .arg(fast.distinct)
                       .arg(fast.min)
                       .arg(fast.max)
                       .arg(fast.mean)
                       .arg(fast.stdev)
                       .arg(slow.count)
                       .arg(slow.distinct)
                       .arg(slow.min)
                       .arg(slow.max)
                       .arg(slow.mean)
                       .arg(slow.stdev)));
}

void tst_QVectorCalcStatistics::textEquality()
{
    // Equal texts in separate string data and in shared data are one value;
    // raw-data strings over one buffer with different lengths are two.
    static const QChar buffer[] = {QLatin1Char('a'), QLatin1Char('b'), QLatin1Char('c')};
    const QString shared = QStringLiteral("same");
    QString separate = QStringLiteral("sa");
    separate += QStringLiteral("me");
    const QVector<QVariant> values = {shared, separate, shared, QString::fromRawData(buffer, 2),
        QString::fromRawData(buffer, 3), QString(), QString()};
    const Stats s = calc(values);
    QCOMPARE(s.count, 7.0);
    // "", "ab", "abc", "same"
    QCOMPARE(s.distinct, 4.0);
    QVERIFY(identical(s, reference(values)));
}

// Last: the reference's equality, Qt 5's written-out rules, was in a Qt 5
// build also QVariant's own.
void tst_QVectorCalcStatistics::oracleAgreedWithQt5() { QCOMPARE(Qt5Oracle::mismatches(), 0); }

VEL_TEST_MAIN(tst_QVectorCalcStatistics)

#include "tst_qvectorcalcstatistics.moc"
