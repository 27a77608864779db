#include "qt5variantoracle.h"
#include "vel_test_main.h"

#include "qvectorcalcstatistics_p.h"

#include <vel_qt_widgets/CMwGridStatistics.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include <QtCore/QDate>
#include <QtCore/QDateTime>
#include <QtCore/QSize>
#include <QtCore/QTime>
#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtGui/QStandardItemModel>
#include <QtTest/QAbstractItemModelTester>

#include <algorithm>
#include <limits>
#include <numeric>

namespace {

enum Cmp { GE = 0, LE, GT, LT, EQ, NE, EMPTY, NOTEMPTY };

QVector<QVariant> condition(const QString &column, int comparator, const QVariant &value)
{
    return {QVariant(), CMwSortFilterProxyModel::operatorTexts().at(0), column,
        CMwSortFilterProxyModel::comparatorTexts().at(comparator), value};
}

// One column "C" holding the given cells, one row each, and a "Row" column
// numbering them.
QStandardItemModel *columnModel(const QVariantList &cells, QObject *parent)
{
    auto *model = new QStandardItemModel(0, 2, parent);
    model->setHorizontalHeaderLabels({QStringLiteral("Row"), QStringLiteral("C")});
    for (int r = 0; r < cells.size(); ++r) {
        auto *number = new QStandardItem;
        number->setData(r, Qt::DisplayRole);
        auto *cell = new QStandardItem;
        if (cells.at(r).isValid())
            cell->setData(cells.at(r), Qt::DisplayRole);
        model->appendRow({number, cell});
    }
    return model;
}

// The rows (by number) that pass one condition on column "C".
QList<int> passing(const QVariantList &cells, int comparator, const QVariant &value)
{
    QObject owner;
    QStandardItemModel *model = columnModel(cells, &owner);
    CMwSortFilterProxyModel proxy;
    QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
    proxy.setSourceModel(model);
    proxy.setFilterRows({condition(QStringLiteral("C"), comparator, value)});
    QList<int> rows;
    for (int r = 0; r < proxy.rowCount(); ++r)
        rows.append(proxy.index(r, 0).data().toInt());
    return rows;
}

struct Stats
{
    double count = -1, distinct = -1, min = -1, max = -1, mean = -1, stdev = -1;
};

Stats statistics(const QVector<QVariant> &values)
{
    Stats s;
    QVectorCalcStatistics(values, s.count, s.distinct, s.min, s.max, s.mean, s.stdev);
    return s;
}

} // namespace

class tst_VariantSemantics : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pairs_data();
    void pairs();
    void isNull_data();
    void isNull();
    void conversions_data();
    void conversions();
    void filterNumericColumnAgainstText_data();
    void filterNumericColumnAgainstText();
    void filterEqualNumberAndText();
    void statisticsOrdering_data();
    void statisticsOrdering();
    void statisticsRunsFollowTheOrdering();
    void distinctUsesQt5Equality_data();
    void distinctUsesQt5Equality();
    void toList_data();
    void toList();
    void oracleAgreedWithQt5();
};

void tst_VariantSemantics::pairs_data()
{
    QTest::addColumn<QVariant>("a");
    QTest::addColumn<QVariant>("b");
    // a == b
    QTest::addColumn<bool>("equal");
    // the ordering's sign: -1 for a < b, 1 for a > b, 0 for neither
    QTest::addColumn<int>("order");
    // b == a, and the ordering's sign for b against a
    QTest::addColumn<bool>("reversedEqual");
    QTest::addColumn<int>("reversedOrder");
    // Numbers among themselves: C++ promotions, fuzzy doubles, NaN greater
    // on either side, bool a number.
    QTest::newRow("int equals int") << QVariant(5) << QVariant(5) << true << 0 << true << 0;
    QTest::newRow("int below int") << QVariant(5) << QVariant(10) << false << -1 << false << 1;
    QTest::newRow("int -1 vs uint 0: unsigned wins")
        << QVariant(-1) << QVariant(0u) << false << 1 << false << -1;
    QTest::newRow("uint max vs int -1: same bits as uint")
        << QVariant(4294967295u) << QVariant(-1) << true << 0 << true << 0;
    QTest::newRow("int -1 vs qlonglong 0: wider signed wins")
        << QVariant(-1) << QVariant(qlonglong(0)) << false << -1 << false << 1;
    QTest::newRow("qlonglong -1 vs qulonglong max")
        << QVariant(qlonglong(-1)) << QVariant(std::numeric_limits<qulonglong>::max()) << true << 0
        << true << 0;
    QTest::newRow("int vs double equal") << QVariant(5) << QVariant(5.0) << true << 0 << true << 0;
    QTest::newRow("int vs double above")
        << QVariant(5) << QVariant(5.5) << false << -1 << false << 1;
    QTest::newRow("doubles within qFuzzyCompare")
        << QVariant(0.3) << QVariant(0.30000000000000004) << true << 0 << true << 0;
    QTest::newRow("zero vs minus zero")
        << QVariant(0.0) << QVariant(-0.0) << true << 0 << true << 0;
    QTest::newRow("zero vs tiny: no fuzz at zero")
        << QVariant(0.0) << QVariant(1e-300) << false << -1 << false << 1;
    QTest::newRow("NaN vs NaN") << QVariant(qQNaN()) << QVariant(qQNaN()) << false << 1 << false
                                << 1;
    QTest::newRow("NaN vs number") << QVariant(qQNaN()) << QVariant(5) << false << 1 << false << 1;
    QTest::newRow("number vs NaN") << QVariant(5) << QVariant(qQNaN()) << false << 1 << false << 1;
    QTest::newRow("inf vs inf") << QVariant(qInf()) << QVariant(qInf()) << true << 0 << true << 0;
    QTest::newRow("-inf vs inf") << QVariant(-qInf()) << QVariant(qInf()) << false << -1 << false
                                 << 1;
    QTest::newRow("bool true vs int 1") << QVariant(true) << QVariant(1) << true << 0 << true << 0;
    QTest::newRow("bool true vs double 1")
        << QVariant(true) << QVariant(1.0) << true << 0 << true << 0;
    QTest::newRow("bool true vs int 2")
        << QVariant(true) << QVariant(2) << false << -1 << false << 1;
    QTest::newRow("bool false vs int 0")
        << QVariant(false) << QVariant(0) << true << 0 << true << 0;
    QTest::newRow("float vs double equal")
        << QVariant(5.5f) << QVariant(5.5) << true << 0 << true << 0;
    QTest::newRow("float 0.1 widened vs double 0.1")
        << QVariant(0.1f) << QVariant(0.1) << false << 1 << false << -1;
    QTest::newRow("qlonglong 2^53+1 vs double 2^53")
        << QVariant(qlonglong(9007199254740993LL)) << QVariant(9007199254740992.0) << true << 0
        << true << 0;
    QTest::newRow("null int vs int 0")
        << Qt5Oracle::nullOfType(QMetaType::Int) << QVariant(0) << true << 0 << true << 0;
    // A number against a text: the second value is converted to the first
    // one's type where Qt 5 could, else both are compared as texts; so the
    // answers depend on which value comes first.
    QTest::newRow("int 10 vs text 9: text converted to int")
        << QVariant(10) << QVariant(QStringLiteral("9")) << false << 1 << false << 1;
    QTest::newRow("text 9 vs int 10: int converted to text")
        << QVariant(QStringLiteral("9")) << QVariant(10) << false << 1 << false << 1;
    QTest::newRow("int vs same text")
        << QVariant(5) << QVariant(QStringLiteral("5")) << true << 0 << true << 0;
    QTest::newRow("int vs spaced text")
        << QVariant(5) << QVariant(QStringLiteral(" 5 ")) << true << 0 << false << -1;
    QTest::newRow("int vs text 5.0: no int, compared as texts")
        << QVariant(5) << QVariant(QStringLiteral("5.0")) << false << -1 << false << 1;
    QTest::newRow("int 0 vs text 2^32: cut to int")
        << QVariant(0) << QVariant(QStringLiteral("4294967296")) << true << 0 << false << 1;
    QTest::newRow("int vs word") << QVariant(5) << QVariant(QStringLiteral("abc")) << false << -1
                                 << false << 1;
    QTest::newRow("int vs empty text")
        << QVariant(5) << QVariant(QStringLiteral("")) << false << 1 << false << -1;
    QTest::newRow("int vs null text")
        << QVariant(5) << QVariant(QString()) << false << 1 << false << -1;
    QTest::newRow("uint 0 vs text -1")
        << QVariant(0u) << QVariant(QStringLiteral("-1")) << false << 1 << false << -1;
    QTest::newRow("uint vs text") << QVariant(7u) << QVariant(QStringLiteral("7")) << true << 0
                                  << true << 0;
    QTest::newRow("qlonglong vs text 1e3")
        << QVariant(qlonglong(1000)) << QVariant(QStringLiteral("1e3")) << false << -1 << false
        << 1;
    QTest::newRow("qulonglong max vs its text")
        << QVariant(std::numeric_limits<qulonglong>::max())
        << QVariant(QStringLiteral("18446744073709551615")) << true << 0 << true << 0;
    QTest::newRow("double vs same text")
        << QVariant(2.5) << QVariant(QStringLiteral("2.5")) << true << 0 << true << 0;
    QTest::newRow("double vs exponent text")
        << QVariant(1000.0) << QVariant(QStringLiteral("1e3")) << true << 0 << false << 1;
    QTest::newRow("double vs text within fuzz: ordered equal, not equal")
        << QVariant(0.30000000000000004) << QVariant(QStringLiteral("0.3")) << false << 0 << false
        << -1;
    QTest::newRow("NaN vs text nan")
        << QVariant(qQNaN()) << QVariant(QStringLiteral("nan")) << false << 1 << true << 0;
    QTest::newRow("inf vs text inf")
        << QVariant(qInf()) << QVariant(QStringLiteral("inf")) << true << 0 << true << 0;
    QTest::newRow("double vs word")
        << QVariant(2.5) << QVariant(QStringLiteral("abc")) << false << -1 << false << 1;
    QTest::newRow("bool vs text true")
        << QVariant(true) << QVariant(QStringLiteral("true")) << true << 0 << true << 0;
    QTest::newRow("bool true vs text 5")
        << QVariant(true) << QVariant(QStringLiteral("5")) << true << 0 << false << -1;
    QTest::newRow("bool false vs text FALSE")
        << QVariant(false) << QVariant(QStringLiteral("FALSE")) << true << 0 << false << 1;
    QTest::newRow("bool false vs empty text")
        << QVariant(false) << QVariant(QStringLiteral("")) << true << 0 << false << -1;
    QTest::newRow("bool true vs text 0")
        << QVariant(true) << QVariant(QStringLiteral("0")) << false << 1 << false << -1;
    QTest::newRow("float vs text")
        << QVariant(5.5f) << QVariant(QStringLiteral("5")) << false << 1 << false << -1;
    QTest::newRow("texts differing in case")
        << QVariant(QStringLiteral("abc")) << QVariant(QStringLiteral("ABC")) << false << 1 << false
        << 1;
    QTest::newRow("float vs text beyond float range: no float, compared as texts")
        << QVariant(5.5f) << QVariant(QStringLiteral("1e300")) << false << 1 << false << -1;
    // Texts: equal by their characters, ordered case-insensitively by code
    // point, a tie not being equality (each is greater than the other).
    QTest::newRow("texts differing in case, reversed")
        << QVariant(QStringLiteral("ABC")) << QVariant(QStringLiteral("abc")) << false << 1 << false
        << 1;
    QTest::newRow("texts ordered case-insensitively")
        << QVariant(QStringLiteral("abc")) << QVariant(QStringLiteral("ABD")) << false << -1
        << false << 1;
    QTest::newRow("numeric texts as texts")
        << QVariant(QStringLiteral("10")) << QVariant(QStringLiteral("9")) << false << -1 << false
        << 1;
    QTest::newRow("empty vs null text")
        << QVariant(QStringLiteral("")) << QVariant(QString()) << true << 0 << true << 0;
    QTest::newRow("accented text by code point")
        << QVariant(QStringLiteral("\u00e9")) << QVariant(QStringLiteral("f")) << false << 1
        << false << -1;
    QTest::newRow("date vs ISO text")
        << QVariant(QDate(2020, 1, 2)) << QVariant(QStringLiteral("2020-01-02")) << true << 0
        << true << 0;
    // Dates, times and date-times: ISO texts convert, a date equals a
    // date-time on that day, failed conversions compare texts.
    QTest::newRow("date vs later ISO text")
        << QVariant(QDate(2020, 1, 2)) << QVariant(QStringLiteral("2020-01-03")) << false << -1
        << false << 1;
    QTest::newRow("date vs word") << QVariant(QDate(2020, 1, 2)) << QVariant(QStringLiteral("abc"))
                                  << false << -1 << false << 1;
    QTest::newRow("date vs date-time on that day")
        << QVariant(QDate(2020, 1, 2)) << QVariant(QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)))
        << true << 0 << false << 1;
    QTest::newRow("date vs later date")
        << QVariant(QDate(2020, 1, 2)) << QVariant(QDate(2021, 1, 1)) << false << -1 << false << 1;
    QTest::newRow("null date vs empty text")
        << QVariant(QDate()) << QVariant(QStringLiteral("")) << false << 1 << true << 0;
    QTest::newRow("date vs int") << QVariant(QDate(2020, 1, 2)) << QVariant(5) << false << -1
                                 << false << 1;
    QTest::newRow("date-time vs ISO text")
        << QVariant(QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)))
        << QVariant(QStringLiteral("2020-01-02T03:04:05")) << true << 0 << false << -1;
    QTest::newRow("date-time vs date-only text")
        << QVariant(QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)))
        << QVariant(QStringLiteral("2020-01-02")) << false << 1 << false << -1;
    QTest::newRow("date-time vs later date-time")
        << QVariant(QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)))
        << QVariant(QDateTime(QDate(2020, 1, 2), QTime(3, 4, 6))) << false << -1 << false << 1;
    QTest::newRow("time vs ISO text")
        << QVariant(QTime(1, 2, 3)) << QVariant(QStringLiteral("01:02:03")) << true << 0 << false
        << -1;
    QTest::newRow("time vs text with milliseconds")
        << QVariant(QTime(1, 2, 3)) << QVariant(QStringLiteral("01:02:03.000")) << true << 0 << true
        << 0;
    QTest::newRow("time vs word") << QVariant(QTime(1, 2, 3)) << QVariant(QStringLiteral("abc"))
                                  << false << -1 << false << 1;
    QTest::newRow("time vs later time")
        << QVariant(QTime(1, 2, 3)) << QVariant(QTime(1, 2, 4)) << false << -1 << false << 1;
    QTest::newRow("invalid vs invalid") << QVariant() << QVariant() << true << 0 << true << 0;
    QTest::newRow("invalid vs empty text")
        << QVariant() << QVariant(QStringLiteral("")) << false << -1 << false << 1;
    // Invalid and null values: an invalid value equals only another, orders
    // as an empty text before the other type; a variant made null does not
    // convert, one holding a null value does.
    QTest::newRow("empty text vs invalid")
        << QVariant(QStringLiteral("")) << QVariant() << false << 1 << false << -1;
    QTest::newRow("invalid vs text")
        << QVariant() << QVariant(QStringLiteral("5")) << false << -1 << false << 1;
    QTest::newRow("invalid vs int 0") << QVariant() << QVariant(0) << false << -1 << false << 1;
    QTest::newRow("int 0 vs invalid") << QVariant(0) << QVariant() << false << 1 << false << -1;
    QTest::newRow("invalid vs date")
        << QVariant() << QVariant(QDate(2020, 1, 2)) << false << -1 << false << 1;
    QTest::newRow("null int vs text 0") << Qt5Oracle::nullOfType(QMetaType::Int)
                                        << QVariant(QStringLiteral("0")) << true << 0 << false << 0;
    QTest::newRow("null int vs word: the null int does not convert")
        << Qt5Oracle::nullOfType(QMetaType::Int) << QVariant(QStringLiteral("abc")) << false << -1
        << false << 1;
    QTest::newRow("null-typed text vs bool false: bool made text")
        << Qt5Oracle::nullOfType(QMetaType::QString) << QVariant(false) << false << -1 << false
        << 1;
    QTest::newRow("bool false vs null-typed text: no conversion")
        << QVariant(false) << Qt5Oracle::nullOfType(QMetaType::QString) << false << 1 << false
        << -1;
    QTest::newRow("bool false vs null text value: converts")
        << QVariant(false) << QVariant(QString()) << true << 0 << false << -1;
    QTest::newRow("byte array vs text")
        << QVariant(QByteArray("5")) << QVariant(QStringLiteral("5")) << true << 0 << true << 0;
    // Other types the filter meets in cells.
    QTest::newRow("char vs text") << QVariant(QChar(u'6')) << QVariant(QStringLiteral("5")) << false
                                  << 1 << false << -1;
    QTest::newRow("one-text list vs text")
        << QVariant(QStringList {QStringLiteral("5")}) << QVariant(QStringLiteral("5")) << true << 0
        << true << 0;
    QTest::newRow("two-text list vs text")
        << QVariant(QStringList {QStringLiteral("a"), QStringLiteral("b")})
        << QVariant(QStringLiteral("a")) << false << 1 << false << -1;
    QTest::newRow("url vs text") << QVariant(QUrl(QStringLiteral("http://x/")))
                                 << QVariant(QStringLiteral("5")) << false << 1 << false << -1;
    QTest::newRow("size vs text: nothing converts")
        << QVariant(QSize(5, 5)) << QVariant(QStringLiteral("5")) << false << -1 << false << 1;
    QTest::newRow("list vs text") << QVariant(QVariantList {5, 6}) << QVariant(QStringLiteral("5"))
                                  << false << -1 << false << 1;
    QTest::newRow("colour vs text")
        << QVariant(QColor(Qt::red)) << QVariant(QStringLiteral("5")) << false << -1 << false << 1;
}

void tst_VariantSemantics::pairs()
{
    QFETCH(QVariant, a);
    QFETCH(QVariant, b);
    QFETCH(bool, equal);
    QFETCH(int, order);
    const int before = Qt5Oracle::mismatches();
    QCOMPARE(Qt5Oracle::equal(a, b), equal);
    QCOMPARE(Qt5Oracle::less(a, b), order < 0);
    QCOMPARE(Qt5Oracle::lessOrEqual(a, b), order <= 0);
    QCOMPARE(Qt5Oracle::greater(a, b), order > 0);
    QCOMPARE(Qt5Oracle::greaterOrEqual(a, b), order >= 0);
    const int sign = vel::Qt5Variant::compare(a, b);
    QCOMPARE(sign < 0 ? -1 : (sign > 0 ? 1 : 0), order);
    QFETCH(bool, reversedEqual);
    QFETCH(int, reversedOrder);
    QCOMPARE(Qt5Oracle::equal(b, a), reversedEqual);
    QCOMPARE(Qt5Oracle::less(b, a), reversedOrder < 0);
    QCOMPARE(Qt5Oracle::lessOrEqual(b, a), reversedOrder <= 0);
    QCOMPARE(Qt5Oracle::greater(b, a), reversedOrder > 0);
    QCOMPARE(Qt5Oracle::greaterOrEqual(b, a), reversedOrder >= 0);
    QCOMPARE(Qt5Oracle::mismatches(), before);
}

void tst_VariantSemantics::isNull_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("null");
    QTest::newRow("invalid") << QVariant() << true;
    QTest::newRow("int made null") << Qt5Oracle::nullOfType(QMetaType::Int) << true;
    QTest::newRow("int 0") << QVariant(0) << false;
    QTest::newRow("double NaN") << QVariant(qQNaN()) << false;
    QTest::newRow("bool false") << QVariant(false) << false;
    QTest::newRow("null text") << QVariant(QString()) << true;
    QTest::newRow("empty text") << QVariant(QStringLiteral("")) << false;
    QTest::newRow("text made null") << Qt5Oracle::nullOfType(QMetaType::QString) << true;
    QTest::newRow("null byte array") << QVariant(QByteArray()) << true;
    QTest::newRow("null char") << QVariant(QChar()) << true;
    QTest::newRow("null date") << QVariant(QDate()) << true;
    QTest::newRow("date") << QVariant(QDate(2020, 1, 2)) << false;
    QTest::newRow("null time") << QVariant(QTime()) << true;
    QTest::newRow("midnight") << QVariant(QTime(0, 0)) << false;
    QTest::newRow("null date-time") << QVariant(QDateTime()) << true;
    QTest::newRow("empty string list") << QVariant(QStringList()) << false;
    QTest::newRow("empty list") << QVariant(QVariantList()) << false;
    QTest::newRow("point 0, 0") << QVariant(QPoint(0, 0)) << true;
    QTest::newRow("size 0 x 0") << QVariant(QSize(0, 0)) << true;
    QTest::newRow("invalid size") << QVariant(QSize()) << false;
    QTest::newRow("null image") << QVariant(QImage()) << true;
    QTest::newRow("empty url") << QVariant(QUrl()) << false;
    QTest::newRow("null object pointer") << QVariant::fromValue<QObject *>(nullptr) << true;
}

void tst_VariantSemantics::isNull()
{
    QFETCH(QVariant, value);
    QFETCH(bool, null);
    const int before = Qt5Oracle::mismatches();
    QCOMPARE(Qt5Oracle::isNull(value), null);
    QCOMPARE(Qt5Oracle::mismatches(), before);
}

void tst_VariantSemantics::conversions_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("converts");
    QTest::addColumn<QVariant>("expected");
    const QVariant none;
    QTest::newRow("text to int") << QVariant(QStringLiteral("42")) << int(QMetaType::Int) << true
                                 << QVariant(42);
    QTest::newRow("spaced text to int")
        << QVariant(QStringLiteral(" 42 ")) << int(QMetaType::Int) << true << QVariant(42);
    QTest::newRow("text 2^32 cut to int")
        << QVariant(QStringLiteral("4294967296")) << int(QMetaType::Int) << true << QVariant(0);
    QTest::newRow("text 2^32+5 cut to int")
        << QVariant(QStringLiteral("4294967301")) << int(QMetaType::Int) << true << QVariant(5);
    QTest::newRow("decimal text to int")
        << QVariant(QStringLiteral("5.0")) << int(QMetaType::Int) << false << none;
    QTest::newRow("hex text to int")
        << QVariant(QStringLiteral("0x10")) << int(QMetaType::Int) << false << none;
    QTest::newRow("text -1 to uint")
        << QVariant(QStringLiteral("-1")) << int(QMetaType::UInt) << false << none;
    QTest::newRow("text 2^32 cut to uint")
        << QVariant(QStringLiteral("4294967296")) << int(QMetaType::UInt) << true << QVariant(0u);
    QTest::newRow("text to qlonglong")
        << QVariant(QStringLiteral("-9223372036854775808")) << int(QMetaType::LongLong) << true
        << QVariant(std::numeric_limits<qlonglong>::min());
    QTest::newRow("text 2^64 to qulonglong") << QVariant(QStringLiteral("18446744073709551616"))
                                             << int(QMetaType::ULongLong) << false << none;
    QTest::newRow("exponent text to double")
        << QVariant(QStringLiteral("1e3")) << int(QMetaType::Double) << true << QVariant(1000.0);
    QTest::newRow("word to double")
        << QVariant(QStringLiteral("abc")) << int(QMetaType::Double) << false << none;
    QTest::newRow("text beyond float")
        << QVariant(QStringLiteral("1e300")) << int(QMetaType::Float) << false << none;
    QTest::newRow("text 5 to bool")
        << QVariant(QStringLiteral("5")) << int(QMetaType::Bool) << true << QVariant(true);
    QTest::newRow("text FALSE to bool")
        << QVariant(QStringLiteral("FALSE")) << int(QMetaType::Bool) << true << QVariant(false);
    QTest::newRow("text ' 0' to bool")
        << QVariant(QStringLiteral(" 0")) << int(QMetaType::Bool) << true << QVariant(true);
    QTest::newRow("empty text to bool")
        << QVariant(QStringLiteral("")) << int(QMetaType::Bool) << true << QVariant(false);
    QTest::newRow("double 2.5 rounds to int")
        << QVariant(2.5) << int(QMetaType::Int) << true << QVariant(3);
    QTest::newRow("double to text")
        << QVariant(0.1) << int(QMetaType::QString) << true << QVariant(QStringLiteral("0.1"));
    QTest::newRow("float to text, as widened") << QVariant(0.1f) << int(QMetaType::QString) << true
                                               << QVariant(QStringLiteral("0.10000000149011612"));
    QTest::newRow("time to text") << QVariant(QTime(1, 2, 3)) << int(QMetaType::QString) << true
                                  << QVariant(QStringLiteral("01:02:03.000"));
    QTest::newRow("ISO text to date")
        << QVariant(QStringLiteral("2020-01-02")) << int(QMetaType::QDate) << true
        << QVariant(QDate(2020, 1, 2));
    QTest::newRow("word to date") << QVariant(QStringLiteral("abc")) << int(QMetaType::QDate)
                                  << false << none;
    QTest::newRow("date-time to date")
        << QVariant(QDateTime(QDate(2020, 1, 2), QTime(3, 4))) << int(QMetaType::QDate) << true
        << QVariant(QDate(2020, 1, 2));
    QTest::newRow("int to date") << QVariant(5) << int(QMetaType::QDate) << false << none;
    QTest::newRow("int made null to text")
        << Qt5Oracle::nullOfType(QMetaType::Int) << int(QMetaType::QString) << false << none;
    QTest::newRow("invalid to text") << QVariant() << int(QMetaType::QString) << false << none;
    QTest::newRow("two-text list to text")
        << QVariant(QStringList {QStringLiteral("a"), QStringLiteral("b")})
        << int(QMetaType::QString) << false << none;
}

void tst_VariantSemantics::conversions()
{
    QFETCH(QVariant, value);
    QFETCH(int, type);
    QFETCH(bool, converts);
    QFETCH(QVariant, expected);
    QVariant out;
    QCOMPARE(vel::Qt5Variant::convert(value, type, &out), converts);
    if (converts) {
        QCOMPARE(out.userType(), type);
        QCOMPARE(out, expected);
    }
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QVariant qt = value;
    QCOMPARE(qt.convert(type), converts);
    if (converts)
        QCOMPARE(qt, out);
#endif
}

void tst_VariantSemantics::filterNumericColumnAgainstText_data()
{
    QTest::addColumn<QVariantList>("cells");
    QTest::addColumn<int>("comparator");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QList<int>>("rows");
    const QVariantList ints {5, 9, 10, 100, -1};
    const QVariantList doubles {0.3, 0.30000000000000004, 2.5, qQNaN(), 1000.0};
    const QVariantList texts {
        QStringLiteral("5"), QStringLiteral("9"), QStringLiteral("10"), QStringLiteral("100")};
    // The typed text becomes the column's number: 10 and 100 are greater.
    QTest::newRow("int Is Greater 9") << ints << int(GT) << "9" << QList<int> {2, 3};
    QTest::newRow("int Is Smaller or Equal 9") << ints << int(LE) << "9" << QList<int> {0, 1, 4};
    QTest::newRow("int Is Greater or Equal ' 9 '")
        << ints << int(GE) << " 9 " << QList<int> {1, 2, 3};
    // No int in "9.5": the cells are compared as texts ("10" < "9.5").
    QTest::newRow("int Is Greater 9.5") << ints << int(GT) << "9.5" << QList<int> {};
    QTest::newRow("int Is Smaller 9.5") << ints << int(LT) << "9.5" << QList<int> {0, 1, 2, 3, 4};
    // A word: texts again, digits and minus before letters.
    QTest::newRow("int Is Smaller abc") << ints << int(LT) << "abc" << QList<int> {0, 1, 2, 3, 4};
    // "4294967305" is cut to the int 9.
    QTest::newRow("int Is Equal 2^32+9") << ints << int(EQ) << "4294967305" << QList<int> {1};
    // Doubles: fuzzy in the ordering, exact in equality, NaN greater.
    QTest::newRow("double Is Greater or Equal 0.3")
        << doubles << int(GE) << "0.3" << QList<int> {0, 1, 2, 3, 4};
    QTest::newRow("double Is Greater 0.3") << doubles << int(GT) << "0.3" << QList<int> {2, 3, 4};
    QTest::newRow("double Is Smaller or Equal 0.3")
        << doubles << int(LE) << "0.3" << QList<int> {0, 1};
    QTest::newRow("double Is Equal 0.3") << doubles << int(EQ) << "0.3" << QList<int> {0};
    QTest::newRow("double Is Equal 1e3") << doubles << int(EQ) << "1e3" << QList<int> {4};
    QTest::newRow("double Is Smaller nan") << doubles << int(LT) << "nan" << QList<int> {};
    // Texts in a column stay texts: "10" and "100" sort before "9".
    QTest::newRow("text Is Greater 9") << texts << int(GT) << "9" << QList<int> {};
    QTest::newRow("text Is Smaller or Equal 9")
        << texts << int(LE) << "9" << QList<int> {0, 1, 2, 3};
}

void tst_VariantSemantics::filterNumericColumnAgainstText()
{
    QFETCH(QVariantList, cells);
    QFETCH(int, comparator);
    QFETCH(QString, value);
    QFETCH(QList<int>, rows);
    QCOMPARE(passing(cells, comparator, value), rows);
}

void tst_VariantSemantics::filterEqualNumberAndText()
{
    const QVariantList cells {1, QStringLiteral("1"), 1.0, true, qlonglong(1), 1u,
        QStringLiteral(" 1"), QDate(2020, 1, 2), QVariant(), QStringLiteral("1.0"), 2};
    // The int 1, the text "1", the double, the bool ("1" is true), the
    // qlonglong and the uint; " 1" is another text.
    QCOMPARE(passing(cells, EQ, QStringLiteral("1")), (QList<int> {0, 1, 2, 3, 4, 5}));
    QCOMPARE(passing(cells, NE, QStringLiteral("1")), (QList<int> {6, 7, 8, 9, 10}));
    // "1.0": only the double reads it as its own type.
    QCOMPARE(passing(cells, EQ, QStringLiteral("1.0")), (QList<int> {2, 3, 9}));
    // A date equals its ISO text.
    QCOMPARE(passing(cells, EQ, QStringLiteral("2020-01-02")), (QList<int> {3, 7}));
    // "Is Empty" looks only at the cell.
    QCOMPARE(passing(cells, EMPTY, QStringLiteral("1")), (QList<int> {8}));
}

void tst_VariantSemantics::statisticsOrdering_data()
{
    QTest::addColumn<QVariant>("a");
    QTest::addColumn<QVariant>("b");
    QTest::addColumn<bool>("less");
    QTest::newRow("int below int") << QVariant(1) << QVariant(2) << true;
    QTest::newRow("int above int") << QVariant(2) << QVariant(1) << false;
    QTest::newRow("uint by value") << QVariant(1u) << QVariant(4294967295u) << true;
    QTest::newRow("qlonglong by value")
        << QVariant(qlonglong(-5)) << QVariant(qlonglong(3)) << true;
    QTest::newRow("double by value") << QVariant(-0.5) << QVariant(0.25) << true;
    QTest::newRow("NaN not below") << QVariant(qQNaN()) << QVariant(1.0) << false;
    QTest::newRow("nothing below NaN") << QVariant(1.0) << QVariant(qQNaN()) << false;
    QTest::newRow("texts by locale")
        << QVariant(QStringLiteral("a")) << QVariant(QStringLiteral("b")) << true;
    QTest::newRow("equal texts") << QVariant(QStringLiteral("a")) << QVariant(QStringLiteral("a"))
                                 << false;
    // Different types by type number, whatever the values.
    QTest::newRow("int before double") << QVariant(5) << QVariant(1.0) << true;
    QTest::newRow("double after int") << QVariant(1.0) << QVariant(5) << false;
    QTest::newRow("bool before int") << QVariant(true) << QVariant(0) << true;
    QTest::newRow("double before text") << QVariant(9.0) << QVariant(QStringLiteral("1")) << true;
    QTest::newRow("text before date")
        << QVariant(QStringLiteral("z")) << QVariant(QDate(2000, 1, 1)) << true;
    // An invalid value is neither below nor above another type.
    QTest::newRow("invalid vs int") << QVariant() << QVariant(1) << false;
    QTest::newRow("int vs invalid") << QVariant(1) << QVariant() << false;
}

void tst_VariantSemantics::statisticsOrdering()
{
    QFETCH(QVariant, a);
    QFETCH(QVariant, b);
    QFETCH(bool, less);
    QCOMPARE(vel::Qt5Variant::statisticsLess(a, b), less);
}

void tst_VariantSemantics::statisticsRunsFollowTheOrdering()
{
    // Values of the ordered types: the statistics walk them in the order
    // statisticsLess gives, one run per value that differs from the one
    // before it by Qt 5's equality.
    const QVector<QVariant> values {2.0, 3, QStringLiteral("b"), 1, QVariant(), QStringLiteral("a"),
        1.0, qlonglong(7), 3u, QStringLiteral("a")};
    QVector<int> order(values.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&values](int a, int b) {
        return vel::Qt5Variant::statisticsLess(values.at(a), values.at(b));
    });
    // Int 1, Int 3, UInt 3, qlonglong 7, Double 1.0, Double 2.0, "a", "a", "b",
    // then the empty cell. Int 3 and UInt 3 are one run, and so are the two
    // "a"; qlonglong 7 and Double 1.0 differ, as do the rest.
    QCOMPARE(order, (QVector<int> {3, 1, 8, 7, 6, 0, 5, 9, 2, 4}));
    const QVector<QVector<int>> runs = vel::statisticsRuns(values);
    QCOMPARE(runs, (QVector<QVector<int>> {{3}, {1, 8}, {7}, {6}, {0}, {5, 9}, {2}, {4}}));
}

void tst_VariantSemantics::distinctUsesQt5Equality_data()
{
    QTest::addColumn<QVector<QVariant>>("values");
    QTest::addColumn<double>("count");
    QTest::addColumn<double>("distinct");
    // An int and its text neighbour in the order: equal in Qt 5.
    QTest::newRow("int 1 and text 1") << QVector<QVariant> {QStringLiteral("1"), 1} << 2.0 << 1.0;
    QTest::newRow("int 1 and text 2") << QVector<QVariant> {QStringLiteral("2"), 1} << 2.0 << 2.0;
    // bool, int and double holding one: one value.
    QTest::newRow("bool, int, double one") << QVector<QVariant> {1.0, true, 1} << 3.0 << 1.0;
    // Doubles within qFuzzyCompare's reach are one value.
    QTest::newRow("fuzzy doubles")
        << QVector<QVariant> {0.3, 0.30000000000000004, 0.7} << 3.0 << 2.0;
    // Texts are equal only character for character.
    QTest::newRow("texts by case")
        << QVector<QVariant> {QStringLiteral("abc"), QStringLiteral("ABC"), QStringLiteral("abc")}
        << 3.0 << 2.0;
    // A date and its ISO text (the text sorts first, by type number).
    QTest::newRow("date and its text")
        << QVector<QVariant> {QDate(2020, 1, 2), QStringLiteral("2020-01-02")} << 2.0 << 1.0;
    QTest::newRow("date and another text")
        << QVector<QVariant> {QDate(2020, 1, 2), QStringLiteral("2020-01-03")} << 2.0 << 2.0;
    // Empty cells are skipped; text 5 meets int 5.
    QTest::newRow("empties skipped")
        << QVector<QVariant> {5, QVariant(), QStringLiteral("5"), QVariant()} << 2.0 << 1.0;
    // qulonglong beyond 2^53 and the double next to it: equal as doubles.
    QTest::newRow("qulonglong and double")
        << QVector<QVariant> {qulonglong(9007199254740993ULL), 9007199254740992.0} << 2.0 << 1.0;
}

void tst_VariantSemantics::distinctUsesQt5Equality()
{
    QFETCH(QVector<QVariant>, values);
    QFETCH(double, count);
    QFETCH(double, distinct);
    const Stats s = statistics(values);
    QCOMPARE(s.count, count);
    QCOMPARE(s.distinct, distinct);
}

// The grid's header-path role is read as a list: a lone text is none.
void tst_VariantSemantics::toList_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariantList>("list");
    QTest::newRow("text") << QVariant(QStringLiteral("Caption")) << QVariantList();
    QTest::newRow("empty text") << QVariant(QString()) << QVariantList();
    QTest::newRow("bytes") << QVariant(QByteArray("Caption")) << QVariantList();
    QTest::newRow("string list") << QVariant(QStringList {QStringLiteral("A"), QStringLiteral("B")})
                                 << QVariantList {QStringLiteral("A"), QStringLiteral("B")};
    QTest::newRow("variant list") << QVariant(QVariantList {1, QStringLiteral("x")})
                                  << QVariantList {1, QStringLiteral("x")};
    QTest::newRow("number") << QVariant(7) << QVariantList();
    QTest::newRow("invalid") << QVariant() << QVariantList();
}

void tst_VariantSemantics::toList()
{
    QFETCH(QVariant, value);
    QFETCH(QVariantList, list);
    QCOMPARE(vel::Qt5Variant::toList(value), list);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QCOMPARE(value.toList(), list);
#endif
}

// Last: every expected answer above taken from the written-out Qt 5 rules
// was, in a Qt 5 build, also QVariant's own.
void tst_VariantSemantics::oracleAgreedWithQt5() { QCOMPARE(Qt5Oracle::mismatches(), 0); }

VEL_TEST_MAIN(tst_VariantSemantics)
#include "tst_variantsemantics.moc"
