#include "grid_test_support.h"
#include "qt5variantoracle.h"
#include "vel_test_main.h"

#include <vel_qt_widgets/CMwGridRoles.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include <QtCore/QRandomGenerator>
#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtGui/QStandardItemModel>
#include <QtTest/QAbstractItemModelTester>
#include <QtWidgets/QTreeView>

namespace {

typedef QVector<QVector<QVariant>> Filter;

enum Cmp { GE = 0, LE, GT, LT, EQ, NE, EMPTY, NOTEMPTY };

QString opAnd() { return CMwSortFilterProxyModel::operatorTexts().at(0); }
QString opOr() { return CMwSortFilterProxyModel::operatorTexts().at(1); }
QString cmp(int c) { return CMwSortFilterProxyModel::comparatorTexts().at(c); }

QVector<QVariant> cond(
    const QString &op, const QString &column, const QString &comparator, const QVariant &value)
{
    return {QVariant(), op, column, comparator, value};
}

// Name | Count | Price | Note
//  a   |   1   |  0.5  |  x
//  b   |   5   |  2.5  |  (invalid)
//  c   |  10   | 10.0  |  y
//  d   |  20   | 99.0  |  x
QStandardItemModel *makeModel(QObject *parent)
{
    auto *model = new QStandardItemModel(0, 4, parent);
    model->setHorizontalHeaderLabels({"Name", "Count", "Price", "Note"});
    const QVariantList names {"a", "b", "c", "d"};
    const QVariantList counts {1, 5, 10, 20};
    const QVariantList prices {0.5, 2.5, 10.0, 99.0};
    const QVariantList notes {"x", QVariant(), "y", "x"};
    for (int r = 0; r < 4; ++r) {
        QList<QStandardItem *> items;
        for (const QVariant &v : {names.at(r), counts.at(r), prices.at(r), notes.at(r)}) {
            auto *item = new QStandardItem;
            if (v.isValid())
                item->setData(v, Qt::DisplayRole);
            items.append(item);
        }
        model->appendRow(items);
    }
    return model;
}

QStringList names(const QAbstractItemModel &proxy)
{
    QStringList result;
    for (int r = 0; r < proxy.rowCount(); ++r)
        result.append(proxy.index(r, 0).data().toString());
    return result;
}

// Counts data() calls, to see that every condition is evaluated.
class CountingModel : public QStandardItemModel
{
    Q_OBJECT

public:
    using QStandardItemModel::QStandardItemModel;
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::DisplayRole)
            ++dataCalls;
        return QStandardItemModel::data(index, role);
    }
    mutable int dataCalls = 0;
};

// A model whose header text can change without any signal.
class SilentHeaderModel : public QStandardItemModel
{
    Q_OBJECT

public:
    using QStandardItemModel::QStandardItemModel;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section == 1)
            return secondHeader;
        return QStandardItemModel::headerData(section, orientation, role);
    }
    QString secondHeader = QStringLiteral("Count");
};

// Two columns, "Flag" and "C": every cell of C appears twice, once beside
// "x" and once beside "y", and is handed out exactly as stored.
class CellModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit CellModel(const QVariantList &cells)
        : m_cells(cells)
    {
    }
    void setCells(const QVariantList &cells)
    {
        beginResetModel();
        m_cells = cells;
        endResetModel();
    }
    QVariant cell(int row) const { return m_cells.at(row / 2); }
    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : 2 * m_cells.size();
    }
    int columnCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : 2;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
            return QVariant();
        if (index.column() == 0)
            return index.row() % 2 ? QStringLiteral("y") : QStringLiteral("x");
        return cell(index.row());
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
            return section == 0 ? QStringLiteral("Flag") : QStringLiteral("C");
        return QAbstractTableModel::headerData(section, orientation, role);
    }

private:
    QVariantList m_cells;
};

// The comparison the filter is defined by, Qt 5's QVariant operators (see
// qt5variantoracle.h), with every conversion done again for each cell.
bool referenceMatch(int comparator, const QVariant &cell, const QVariant &value)
{
    switch (comparator) {
    case GE:
        return Qt5Oracle::greaterOrEqual(cell, value);
    case LE:
        return Qt5Oracle::lessOrEqual(cell, value);
    case GT:
        return Qt5Oracle::greater(cell, value);
    case LT:
        return Qt5Oracle::less(cell, value);
    case EQ:
        return Qt5Oracle::equal(cell, value);
    case NE:
        return !Qt5Oracle::equal(cell, value);
    case EMPTY:
        return Qt5Oracle::isNull(cell);
    case NOTEMPTY:
        return !Qt5Oracle::isNull(cell);
    default:
        return false;
    }
}

} // namespace

class tst_CMwSortFilterProxyModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyListAcceptsAll();
    void unknownColumnsAreSkipped();
    void singleCondition_data();
    void singleCondition();
    void kept_fold_data();
    void kept_fold();
    void everyConditionIsEvaluated();
    void comparators_data();
    void comparators();
    void qt5Ordering_data();
    void qt5Ordering();
    void unknownTextsAndShortRows();
    void setFilterRowsInvalidatesAtOnce();
    void conditionsAreKept();
    void columnLookup();
    void headerRenameIsSeen();
    void silentHeaderChangeSeenByNextPass();
    void modelTester();
    void sourceReplacedOrDeleted();
    void sourceDeletedUnderAView();
    void groupRowsPassThroughTheirRecords();
    void tenThousandConditions();
    void everyVariantType_data();
    void everyVariantType();
    void sameAsQVariantComparison();
    void oracleAgreedWithQt5();
};

void tst_CMwSortFilterProxyModel::emptyListAcceptsAll()
{
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    QCOMPARE(proxy.rowCount(), 4);
    proxy.setFilterRows({cond(opAnd(), "Count", cmp(GT), "100")});
    QCOMPARE(proxy.rowCount(), 0);
    proxy.setFilterRows(Filter());
    QCOMPARE(proxy.rowCount(), 4);
    QVERIFY(proxy.filterAcceptsRow(0, QModelIndex()));
    delete model;
}

void tst_CMwSortFilterProxyModel::unknownColumnsAreSkipped()
{
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    // Only unknown columns: nothing narrows the initial true.
    proxy.setFilterRows(
        {cond(opAnd(), "Nope", cmp(GT), "100"), cond(opAnd(), "count", cmp(EQ), "1")});
    QCOMPARE(names(proxy), QStringList({"a", "b", "c", "d"}));
    // An unknown column between two real ones neither passes nor fails a row.
    proxy.setFilterRows({cond(opAnd(), "Count", cmp(GE), "5"), cond(opOr(), "Nope", cmp(EMPTY), ""),
        cond(opAnd(), "Count", cmp(LE), "10")});
    QCOMPARE(names(proxy), QStringList({"b", "c"}));
    delete model;
}

void tst_CMwSortFilterProxyModel::singleCondition_data()
{
    QTest::addColumn<bool>("isAnd");
    QTest::addColumn<int>("comparator");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("AND matches") << true << int(GT) << "5" << QStringList({"c", "d"});
    QTest::newRow("OR passes all") << false << int(GT) << "5" << QStringList({"a", "b", "c", "d"});
    QTest::newRow("AND none") << true << int(GT) << "50" << QStringList();
    QTest::newRow("OR none still all")
        << false << int(GT) << "50" << QStringList({"a", "b", "c", "d"});
}

void tst_CMwSortFilterProxyModel::singleCondition()
{
    QFETCH(bool, isAnd);
    QFETCH(int, comparator);
    QFETCH(QString, value);
    QFETCH(QStringList, expected);
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    proxy.setFilterRows({cond(isAnd ? opAnd() : opOr(), "Count", cmp(comparator), value)});
    QCOMPARE(names(proxy), expected);
    delete model;
}

void tst_CMwSortFilterProxyModel::kept_fold_data()
{
    // Conditions on Count; rows have counts 1, 5, 10, 20.
    QTest::addColumn<QStringList>("ops");
    QTest::addColumn<QList<int>>("comparators");
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QStringList>("expected");
    // (Count < 5) OR (Count > 10)
    QTest::newRow("AND then OR") << QStringList({"AND", "OR"}) << QList<int>({LT, GT})
                                 << QStringList({"5", "10"}) << QStringList({"a", "d"});
    // (true OR Count < 5) AND Count > 10 = Count > 10
    QTest::newRow("OR then AND") << QStringList({"OR", "AND"}) << QList<int>({LT, GT})
                                 << QStringList({"5", "10"}) << QStringList({"d"});
    // No precedence: ((Count >= 5) OR (Count == 1)) AND (Count < 10), not
    // (Count >= 5) OR ((Count == 1) AND (Count < 10)).
    QTest::newRow("left to right") << QStringList({"AND", "OR", "AND"}) << QList<int>({GE, EQ, LT})
                                   << QStringList({"5", "1", "10"}) << QStringList({"a", "b"});
    // A first OR makes every row pass whatever ORs follow.
    QTest::newRow("OR first, OR after")
        << QStringList({"OR", "OR"}) << QList<int>({GT, GT}) << QStringList({"100", "100"})
        << QStringList({"a", "b", "c", "d"});
}

void tst_CMwSortFilterProxyModel::kept_fold()
{
    QFETCH(QStringList, ops);
    QFETCH(QList<int>, comparators);
    QFETCH(QStringList, values);
    QFETCH(QStringList, expected);
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    Filter filter;
    for (int i = 0; i < ops.size(); ++i)
        filter.append(cond(
            ops.at(i) == "AND" ? opAnd() : opOr(), "Count", cmp(comparators.at(i)), values.at(i)));
    proxy.setFilterRows(filter);
    QCOMPARE(names(proxy), expected);
    delete model;
}

void tst_CMwSortFilterProxyModel::everyConditionIsEvaluated()
{
    // Not watched by a model tester: its data() calls would be counted too.
    CountingModel model(3, 2);
    model.setHorizontalHeaderLabels({"A", "B"});
    for (int r = 0; r < 3; ++r)
        model.setData(model.index(r, 0), r);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    // The first condition already decides (false AND ...); the other two are
    // still evaluated, one data() call each.
    proxy.setFilterRows({cond(opAnd(), "A", cmp(GT), "100"), cond(opAnd(), "A", cmp(EMPTY), ""),
        cond(opAnd(), "B", cmp(EMPTY), "")});
    model.dataCalls = 0;
    QVERIFY(!proxy.filterAcceptsRow(1, QModelIndex()));
    QCOMPARE(model.dataCalls, 3);
    model.dataCalls = 0;
    proxy.setFilterRows({cond(opOr(), "A", cmp(GE), "0"), cond(opOr(), "B", cmp(GT), "9")});
    QVERIFY(proxy.filterAcceptsRow(2, QModelIndex()));
    QCOMPARE(model.dataCalls, 2);
}

void tst_CMwSortFilterProxyModel::comparators_data()
{
    // Count column: 1, 5, 10, 20; Note column: "x", invalid, "y", "x".
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("comparator");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("greater or equal") << "Count" << int(GE) << "5" << QStringList({"b", "c", "d"});
    QTest::newRow("smaller or equal") << "Count" << int(LE) << "5" << QStringList({"a", "b"});
    QTest::newRow("greater") << "Count" << int(GT) << "5" << QStringList({"c", "d"});
    QTest::newRow("smaller") << "Count" << int(LT) << "5" << QStringList({"a"});
    QTest::newRow("equal") << "Count" << int(EQ) << "5" << QStringList({"b"});
    QTest::newRow("not equal") << "Count" << int(NE) << "5" << QStringList({"a", "c", "d"});
    QTest::newRow("empty") << "Note" << int(EMPTY) << "x" << QStringList({"b"});
    QTest::newRow("not empty") << "Note" << int(NOTEMPTY) << "" << QStringList({"a", "c", "d"});
    QTest::newRow("text equal") << "Note" << int(EQ) << "x" << QStringList({"a", "d"});
    QTest::newRow("double greater") << "Price" << int(GT) << "2.5" << QStringList({"c", "d"});
    QTest::newRow("double equal") << "Price" << int(EQ) << "2.5" << QStringList({"b"});
}

void tst_CMwSortFilterProxyModel::comparators()
{
    QFETCH(QString, column);
    QFETCH(int, comparator);
    QFETCH(QString, value);
    QFETCH(QStringList, expected);
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    proxy.setFilterRows({cond(opAnd(), column, cmp(comparator), value)});
    QCOMPARE(names(proxy), expected);
    delete model;
}

void tst_CMwSortFilterProxyModel::qt5Ordering_data()
{
    QTest::addColumn<QVariant>("cell");
    QTest::addColumn<QString>("value");
    // Expected matches for >=, <=, >, <, ==, !=.
    QTest::addColumn<QList<bool>>("expected");
    // The text is converted to the cell's number: 10 > 9.
    QTest::newRow("int 10 vs '9'")
        << QVariant(10) << "9" << QList<bool>({true, false, true, false, false, true});
    // Two texts compare as texts: "10" < "9".
    QTest::newRow("text '10' vs '9'") << QVariant(QStringLiteral("10")) << "9"
                                      << QList<bool>({false, true, false, true, false, true});
    QTest::newRow("double 2.5 vs '2.5'")
        << QVariant(2.5) << "2.5" << QList<bool>({true, true, false, false, true, false});
    QTest::newRow("int 5 vs '5'") << QVariant(5) << "5"
                                  << QList<bool>({true, true, false, false, true, false});
    // Text comparison is case sensitive: 'a' sorts after 'A'.
    QTest::newRow("text 'abc' vs 'ABC'") << QVariant(QStringLiteral("abc")) << "ABC"
                                         << QList<bool>({true, false, true, false, false, true});
    QTest::newRow("text equal") << QVariant(QStringLiteral("same")) << "same"
                                << QList<bool>({true, true, false, false, true, false});
    // An invalid cell sorts before any text, even an empty one, and equals none.
    QTest::newRow("invalid vs '5'")
        << QVariant() << "5" << QList<bool>({false, true, false, true, false, true});
    QTest::newRow("invalid vs ''")
        << QVariant() << "" << QList<bool>({false, true, false, true, false, true});
    QTest::newRow("bool true vs 'true'")
        << QVariant(true) << "true" << QList<bool>({true, true, false, false, true, false});
    QTest::newRow("date vs ISO text") << QVariant(QDate(2020, 1, 2)) << "2020-01-02"
                                      << QList<bool>({true, true, false, false, true, false});
}

void tst_CMwSortFilterProxyModel::qt5Ordering()
{
    QFETCH(QVariant, cell);
    QFETCH(QString, value);
    QFETCH(QList<bool>, expected);
    QStandardItemModel model(1, 1);
    model.setHorizontalHeaderLabels({"C"});
    if (cell.isValid())
        model.setData(model.index(0, 0), cell);
    QCOMPARE(model.index(0, 0).data(), cell);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    watchModel(&proxy);
    watchModel(&model);
    for (int c = GE; c <= NE; ++c) {
        proxy.setFilterRows({cond(opAnd(), "C", cmp(c), value)});
        QVERIFY2(proxy.filterAcceptsRow(0, QModelIndex()) == expected.at(c), qPrintable(cmp(c)));
        QCOMPARE(proxy.rowCount(), expected.at(c) ? 1 : 0);
    }
}

void tst_CMwSortFilterProxyModel::unknownTextsAndShortRows()
{
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    // An unknown comparator never matches: with AND it removes every row.
    proxy.setFilterRows({cond(opAnd(), "Count", "Is Bigger", "0")});
    QCOMPARE(proxy.rowCount(), 0);
    // An unknown operator acts as OR.
    proxy.setFilterRows(
        {cond(opAnd(), "Count", cmp(GT), "100"), cond("XOR", "Count", cmp(EQ), "5")});
    QCOMPARE(names(proxy), QStringList({"b"}));
    // Operators are matched exactly.
    proxy.setFilterRows({cond(opAnd().toLower(), "Count", cmp(GT), "100")});
    QCOMPARE(proxy.rowCount(), 4);

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("row 0 has 3 elements"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("row 2 has 0 elements"));
    proxy.setFilterRows(
        {{QVariant(), opAnd(), "Count"}, cond(opAnd(), "Count", cmp(LT), "10"), {}});
    QCOMPARE(proxy.filterConditions().size(), 1);
    QCOMPARE(names(proxy), QStringList({"a", "b"}));
    // Extra elements beyond the fifth are ignored.
    QVector<QVariant> longRow = cond(opAnd(), "Count", cmp(GT), "10");
    longRow << "extra" << 42;
    proxy.setFilterRows({longRow});
    QCOMPARE(names(proxy), QStringList({"d"}));
    delete model;
}

void tst_CMwSortFilterProxyModel::setFilterRowsInvalidatesAtOnce()
{
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setDynamicSortFilter(false);
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    proxy.sort(1, Qt::DescendingOrder);
    QCOMPARE(names(proxy), QStringList({"d", "c", "b", "a"}));
    // Without dynamic sorting the proxy keeps its stale order and rows...
    model->setData(model->index(0, 1), 50);
    model->setData(model->index(3, 1), 0);
    QCOMPARE(names(proxy), QStringList({"d", "c", "b", "a"}));
    QSignalSpy reset(&proxy, SIGNAL(layoutChanged()));
    QSignalSpy modelReset(&proxy, SIGNAL(modelReset()));
    // ...until setFilterRows, which re-sorts and re-filters at once.
    proxy.setFilterRows({cond(opAnd(), "Count", cmp(LE), "10")});
    QVERIFY(reset.count() + modelReset.count() > 0);
    QCOMPARE(names(proxy), QStringList({"c", "b", "d"}));
    proxy.setFilterRows(Filter());
    QCOMPARE(names(proxy), QStringList({"a", "c", "b", "d"}));
    delete model;
}

void tst_CMwSortFilterProxyModel::conditionsAreKept()
{
    CMwSortFilterProxyModel proxy;
    QVERIFY(proxy.filterConditions().isEmpty());
    proxy.setFilterRows(
        {cond(opOr(), "Count", cmp(NE), "7"), {QVariant("ignored"), 1, 2, 3, QVariant(4.5)}});
    const QVector<CMwSortFilterProxyModel::FilterCondition> conditions = proxy.filterConditions();
    QCOMPARE(conditions.size(), 2);
    QCOMPARE(conditions.at(0).op, opOr());
    QCOMPARE(conditions.at(0).column, QStringLiteral("Count"));
    QCOMPARE(conditions.at(0).comparator, cmp(NE));
    QCOMPARE(conditions.at(0).value, QVariant(QStringLiteral("7")));
    // Texts by toString(), the value as it stands.
    QCOMPARE(conditions.at(1).op, QStringLiteral("1"));
    QCOMPARE(conditions.at(1).column, QStringLiteral("2"));
    QCOMPARE(conditions.at(1).comparator, QStringLiteral("3"));
    QCOMPARE(conditions.at(1).value, QVariant(4.5));
    // Without a source model every row passes and lookups find nothing.
    QCOMPARE(proxy.sourceColumnFromName("Count"), -1);
    QVERIFY(!proxy.firstValueOfColumn("Count").isValid());
}

void tst_CMwSortFilterProxyModel::columnLookup()
{
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    QCOMPARE(proxy.sourceColumnFromName("Name"), 0);
    QCOMPARE(proxy.sourceColumnFromName("Note"), 3);
    QCOMPARE(proxy.sourceColumnFromName("note"), -1);
    QCOMPARE(proxy.sourceColumnFromName(QString()), -1);
    QCOMPARE(proxy.firstValueOfColumn("Count"), QVariant(1));
    QCOMPARE(proxy.firstValueOfColumn("Price"), QVariant(0.5));
    QVERIFY(!proxy.firstValueOfColumn("Nope").isValid());
    // Source row 0, whatever the proxy shows first.
    proxy.sort(1, Qt::DescendingOrder);
    proxy.setFilterRows({cond(opAnd(), "Count", cmp(GT), "5")});
    QCOMPARE(proxy.firstValueOfColumn("Name"), QVariant("a"));
    // Duplicate header texts: the first column wins.
    model->setHorizontalHeaderLabels({"Name", "Same", "Same", "Note"});
    QCOMPARE(proxy.sourceColumnFromName("Same"), 1);
    // A header with no rows: no sample.
    model->removeRows(0, model->rowCount());
    QVERIFY(!proxy.firstValueOfColumn("Name").isValid());
    delete model;
}

void tst_CMwSortFilterProxyModel::headerRenameIsSeen()
{
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    proxy.setFilterRows({cond(opAnd(), "Amount", cmp(GT), "5")});
    QCOMPARE(proxy.rowCount(), 4); // no such column yet
    // Rename Count to Amount: a changed row is evaluated with the new name...
    model->setHeaderData(1, Qt::Horizontal, "Amount");
    model->setData(model->index(0, 0), "a2");
    QCOMPARE(names(proxy), QStringList({"b", "c", "d"}));
    proxy.invalidate();
    QCOMPARE(names(proxy), QStringList({"c", "d"}));
    // ...and the name moves to another column.
    model->setHeaderData(1, Qt::Horizontal, "Count");
    model->setHeaderData(2, Qt::Horizontal, "Amount");
    model->setData(model->index(0, 2), 7.5);
    QCOMPARE(names(proxy), QStringList({"a2", "c", "d"}));
    // A column inserted in front shifts the match.
    model->insertColumn(0);
    model->setHeaderData(0, Qt::Horizontal, "Amount");
    proxy.invalidate();
    QCOMPARE(proxy.sourceColumnFromName("Amount"), 0);
    QCOMPARE(proxy.rowCount(), 0); // new column is empty: invalid > "5" is false
    model->removeColumn(0);
    proxy.invalidate();
    QCOMPARE(proxy.rowCount(), 3);
    delete model;
}

void tst_CMwSortFilterProxyModel::silentHeaderChangeSeenByNextPass()
{
    SilentHeaderModel model(3, 2);
    for (int r = 0; r < 3; ++r) {
        model.setData(model.index(r, 0), r * 10);
        model.setData(model.index(r, 1), r);
    }
    model.setHorizontalHeaderItem(0, new QStandardItem("First"));
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    watchModel(&proxy);
    watchModel(&model);
    proxy.setFilterRows({cond(opAnd(), "Count", cmp(GE), "1")});
    QCOMPARE(proxy.rowCount(), 2);
    model.secondHeader = QStringLiteral("Other");
    proxy.invalidate();
    QCOMPARE(proxy.rowCount(), 3);
    model.secondHeader = QStringLiteral("Count");
    proxy.invalidate();
    QCOMPARE(proxy.rowCount(), 2);
}

void tst_CMwSortFilterProxyModel::modelTester()
{
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setDynamicSortFilter(true);
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);

    proxy.setFilterRows({cond(opAnd(), "Count", cmp(GE), "5")});
    QCOMPARE(names(proxy), QStringList({"b", "c", "d"}));
    proxy.sort(0, Qt::DescendingOrder);
    proxy.setFilterRows(
        {cond(opAnd(), "Count", cmp(GE), "5"), cond(opAnd(), "Note", cmp(NOTEMPTY), "")});
    QCOMPARE(names(proxy), QStringList({"d", "c"}));

    // Source inserts a passing and a failing row.
    model->insertRow(
        0, {new QStandardItem("e"), new QStandardItem, new QStandardItem, new QStandardItem("z")});
    model->setData(model->index(0, 1), 7);
    model->appendRow(
        {new QStandardItem("f"), new QStandardItem, new QStandardItem, new QStandardItem("z")});
    model->setData(model->index(5, 1), 2);
    QCOMPARE(names(proxy), QStringList({"e", "d", "c"}));
    // Source changes rows: one starts to pass, one stops.
    model->setData(model->index(5, 1), 30);
    model->setData(model->index(3, 3), QVariant());
    QCOMPARE(names(proxy), QStringList({"f", "e", "d"}));
    // Source removes rows.
    model->removeRows(0, 2);
    QCOMPARE(names(proxy), QStringList({"f", "d"}));
    proxy.setFilterRows({cond(opOr(), "Count", cmp(EQ), "1")});
    QCOMPARE(proxy.rowCount(), model->rowCount());
    proxy.setFilterRows(Filter());
    QCOMPARE(proxy.rowCount(), 4);
    model->clear();
    QCOMPARE(proxy.rowCount(), 0);
    delete model;
}

void tst_CMwSortFilterProxyModel::sourceReplacedOrDeleted()
{
    QStandardItemModel *first = makeModel(this);
    CMwSortFilterProxyModel proxy;
    QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
    proxy.setSourceModel(first);
    watchModel(&proxy);
    watchModel(first);
    proxy.setFilterRows({cond(opAnd(), "Count", cmp(GT), "5")});
    QCOMPARE(proxy.rowCount(), 2);

    // Another model, where Count is the first column: the filter follows the header.
    QStandardItemModel second(3, 2);
    second.setHorizontalHeaderLabels({"Count", "Name"});
    for (int r = 0; r < 3; ++r) {
        second.setData(second.index(r, 0), r * 4);
        second.setData(second.index(r, 1), QString(QChar('p' + r)));
    }
    proxy.setSourceModel(&second);
    watchModel(&proxy);
    watchModel(&second);
    QCOMPARE(proxy.rowCount(), 1);
    QCOMPARE(proxy.index(0, 1).data(), QVariant("r"));
    // Signals of the old model no longer reach the proxy.
    first->setHeaderData(1, Qt::Horizontal, "X");
    QCOMPARE(proxy.rowCount(), 1);
    first->setHeaderData(1, Qt::Horizontal, "Count");

    proxy.setSourceModel(first);
    watchModel(&proxy);
    watchModel(first);
    QCOMPARE(proxy.rowCount(), 2);
    delete first; // while the filter is active
    QCOMPARE(proxy.rowCount(), 0);
    QVERIFY(!proxy.sourceModel());
    QCOMPARE(proxy.sourceColumnFromName("Count"), -1);
    QVERIFY(proxy.filterAcceptsRow(0, QModelIndex()));
    proxy.setSourceModel(&second);
    watchModel(&proxy);
    watchModel(&second);
    QCOMPARE(proxy.rowCount(), 1);
    proxy.setSourceModel(nullptr);
    QCOMPARE(proxy.rowCount(), 0);
}

void tst_CMwSortFilterProxyModel::sourceDeletedUnderAView()
{
    QStandardItemModel *model = makeModel(nullptr);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    watchModel(model);
    watchModel(&proxy);
    proxy.setFilterRows({cond(opAnd(), "Count", cmp(GE), "5")});
    proxy.sort(0, Qt::DescendingOrder);
    QTreeView view;
    view.setModel(&proxy);
    view.selectionModel()->select(
        QItemSelection(proxy.index(0, 0), proxy.index(1, 3)), QItemSelectionModel::Select);
    view.setCurrentIndex(proxy.index(2, 1));
    QVERIFY(showAt(view, 300, 200));
    const QPersistentModelIndex held = proxy.index(1, 2);
    QCOMPARE(held.data(), QVariant(10.0));
    QSignalSpy reset(&proxy, SIGNAL(modelReset()));

    delete model;
    // Told at once, so that the view drops its items before it paints.
    QCOMPARE(reset.count(), 1);
    QCOMPARE(proxy.rowCount(), 0);
    QCOMPARE(proxy.columnCount(), 0);
    QVERIFY(!held.isValid());
    QVERIFY(!proxy.sourceModel());
    view.repaint();
    QVERIFY(!view.grab().isNull());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QVERIFY(!view.currentIndex().isValid());

    // A new source works as before, filter and sort included.
    QStandardItemModel *next = makeModel(nullptr);
    watchModel(next);
    proxy.setSourceModel(next);
    QCOMPARE(names(proxy), QStringList({"d", "c", "b"}));
    view.repaint();
    delete next;
    QCOMPARE(proxy.rowCount(), 0);
}

// A group row (BranchParentRole) shows while one of its records passes; any
// other row, parent or not, is tested on its own cells.
void tst_CMwSortFilterProxyModel::groupRowsPassThroughTheirRecords()
{
    QStandardItemModel model(0, 2);
    model.setHorizontalHeaderLabels({"Name", "Count"});
    auto addRow = [](QStandardItem *parent, const QString &name, const QVariant &count,
                      bool group = false) {
        auto *nameItem = new QStandardItem(name);
        auto *countItem = new QStandardItem;
        if (count.isValid())
            countItem->setData(count, Qt::DisplayRole);
        if (group)
            nameItem->setData(true, BranchParentRole);
        parent->appendRow({nameItem, countItem});
        return nameItem;
    };
    QStandardItem *root = model.invisibleRootItem();
    QStandardItem *g1 = addRow(root, "g1", QVariant(), true);
    addRow(g1, "a", 1);
    addRow(g1, "b", 5);
    QStandardItem *g2 = addRow(root, "g2", QVariant(), true);
    addRow(g2, "c", 2);
    QStandardItem *p1 = addRow(root, "p1", 1);
    addRow(p1, "d", 10);
    QStandardItem *p2 = addRow(root, "p2", 10);
    addRow(p2, "e", 1);

    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
    proxy.setFilterRows({cond(opAnd(), "Count", cmp(GT), "4")});
    QCOMPARE(names(proxy), QStringList({"g1", "p2"}));
    const QModelIndex group = proxy.index(0, 0);
    QCOMPARE(proxy.rowCount(group), 1);
    QCOMPARE(proxy.index(0, 0, group).data().toString(), QStringLiteral("b"));
    QCOMPARE(proxy.rowCount(proxy.index(1, 0)), 0);

    // The group's empty cells do not pass it; its records' cells do.
    proxy.setFilterRows({cond(opAnd(), "Count", cmp(EMPTY), "")});
    QCOMPARE(names(proxy), QStringList());
    proxy.setFilterRows({cond(opAnd(), "Name", cmp(EQ), "c")});
    QCOMPARE(names(proxy), QStringList({"g2"}));
    proxy.setFilterRows(Filter());
    QCOMPARE(names(proxy), QStringList({"g1", "g2", "p1", "p2"}));
}

void tst_CMwSortFilterProxyModel::tenThousandConditions()
{
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    watchModel(&proxy);
    watchModel(model);
    Filter filter;
    for (int i = 0; i < 10000; ++i) {
        if (i % 3 == 0)
            filter.append(cond(opAnd(), "Count", cmp(GE), QString::number(i % 7)));
        else if (i % 3 == 1)
            filter.append(cond(opAnd(), "Missing", cmp(EQ), "x"));
        else
            filter.append(cond(opAnd(), "Name", cmp(NOTEMPTY), ""));
    }
    proxy.setFilterRows(filter);
    // Count >= 6 at worst: rows with 1 and 5 fail, 10 and 20 pass.
    QCOMPARE(names(proxy), QStringList({"c", "d"}));
    filter.append(cond(opOr(), "Note", cmp(EMPTY), ""));
    proxy.setFilterRows(filter);
    QCOMPARE(names(proxy), QStringList({"b", "c", "d"}));
    QCOMPARE(proxy.filterConditions().size(), 10001);
    delete model;
}

void tst_CMwSortFilterProxyModel::everyVariantType_data()
{
    QTest::addColumn<QVariant>("cell");
    // Expected for "Is Equal" and "Is Greater" against "5".
    QTest::addColumn<bool>("equal");
    QTest::addColumn<bool>("greater");
    QTest::newRow("invalid") << QVariant() << false << false;
    // "5" converts to bool true.
    QTest::newRow("bool") << QVariant(true) << true << false;
    QTest::newRow("int") << QVariant(5) << true << false;
    QTest::newRow("uint") << QVariant(6u) << false << true;
    QTest::newRow("qlonglong") << QVariant(qlonglong(5)) << true << false;
    QTest::newRow("qulonglong") << QVariant(qulonglong(9)) << false << true;
    QTest::newRow("double") << QVariant(5.0) << true << false;
    QTest::newRow("float") << QVariant(5.5f) << false << true;
    QTest::newRow("QString") << QVariant(QStringLiteral("5")) << true << false;
    QTest::newRow("null QString") << QVariant(QString()) << false << false;
    QTest::newRow("QByteArray") << QVariant(QByteArray("5")) << true << false;
    QTest::newRow("QChar") << QVariant(QChar('6')) << false << true;
    QTest::newRow("QDate") << QVariant(QDate(2021, 3, 4)) << false << false;
    QTest::newRow("QTime") << QVariant(QTime(1, 2, 3)) << false << false;
    QTest::newRow("QDateTime") << QVariant(QDateTime(QDate(2021, 3, 4), QTime(1, 2))) << false
                               << false;
    QTest::newRow("QStringList") << QVariant(QStringList({"5"})) << true << false;
    QTest::newRow("QVariantList") << QVariant(QVariantList({5, 6})) << false << false;
    QTest::newRow("QVariantMap") << QVariant(QVariantMap({{"k", 5}})) << false << false;
    QTest::newRow("QUrl") << QVariant(QUrl("http://x/")) << false << true;
    QTest::newRow("QColor") << QVariant(QColor(Qt::red)) << false << false;
    QTest::newRow("QSize") << QVariant(QSize(5, 5)) << false << false;
    QTest::newRow("QPoint") << QVariant(QPoint(5, 5)) << false << false;
}

void tst_CMwSortFilterProxyModel::everyVariantType()
{
    QFETCH(QVariant, cell);
    QFETCH(bool, equal);
    QFETCH(bool, greater);
    QStandardItemModel model(1, 1);
    model.setHorizontalHeaderLabels({"C"});
    model.setData(model.index(0, 0), cell);
    // Not watched by a model tester: display data that is no text (a list,
    // a map, a size) is what the test is about, and the tester refuses it.
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    const QVariant stored = model.index(0, 0).data();

    proxy.setFilterRows({cond(opAnd(), "C", cmp(EMPTY), "5")});
    QCOMPARE(proxy.rowCount(), Qt5Oracle::isNull(stored) ? 1 : 0);
    proxy.setFilterRows({cond(opAnd(), "C", cmp(NOTEMPTY), "5")});
    QCOMPARE(proxy.rowCount(), Qt5Oracle::isNull(stored) ? 0 : 1);
    proxy.setFilterRows({cond(opAnd(), "C", cmp(EQ), "5")});
    QCOMPARE(proxy.rowCount(), equal ? 1 : 0);
    proxy.setFilterRows({cond(opAnd(), "C", cmp(NE), "5")});
    QCOMPARE(proxy.rowCount(), equal ? 0 : 1);
    proxy.setFilterRows({cond(opAnd(), "C", cmp(GT), "5")});
    QCOMPARE(proxy.rowCount(), greater ? 1 : 0);
    // The remaining orderings and a non-text value run without trouble.
    for (int c = GE; c <= NOTEMPTY; ++c) {
        proxy.setFilterRows({cond(opAnd(), "C", cmp(c), QVariant(QDate(2000, 1, 1)))});
        proxy.setFilterRows({cond(opAnd(), "C", cmp(c), QVariant())});
        QVERIFY(proxy.rowCount() <= 1);
    }
}

void tst_CMwSortFilterProxyModel::sameAsQVariantComparison()
{
    const double nan = qQNaN();
    const double inf = qInf();
    QVariantList cells {QVariant(), Qt5Oracle::nullOfType(QMetaType::Int), 0, 5, -3, 10, 1000,
        std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 0u, 5u, 4294967295u,
        qlonglong(5), qlonglong(-1), qlonglong(9007199254740993LL),
        std::numeric_limits<qlonglong>::min(), qulonglong(5),
        std::numeric_limits<qulonglong>::max(), 0.0, -0.0, 0.3, 0.30000000000000004, 0.5, 5.0, -3.0,
        1000.0, 1e300, 4.9e-324, nan, inf, -inf, true, false, 5.5f, QString(), QString(""),
        QStringLiteral("5"), QStringLiteral("10"), QStringLiteral(" 5 "), QStringLiteral("5.0"),
        QStringLiteral("1e3"), QStringLiteral("abc"), QStringLiteral("ABC"), QStringLiteral("true"),
        QStringLiteral("k5"), QDate(2020, 1, 2), QDate(),
        QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)), QTime(1, 2, 3)};
    QStringList values {QString(), "", "5", "-3", "0", "-0", "10", "1000", "0.3",
        "0.30000000000000004", "5.0", "5.5", " 5 ", "1e3", "nan", "inf", "-inf", "1e300",
        "4.9e-324", "true", "false", "TRUE", "1", "abc", "ABC", "k5", "-1", "4294967295",
        "4294967296", "9007199254740993", "18446744073709551615", "18446744073709551616",
        "-9223372036854775808", "2020-01-02", "2020-01-02T03:04:05", "01:02:03"};
    // Random cells and values that meet often: small integers and halves.
    QRandomGenerator random(17);
    for (int i = 0; i < 120; ++i) {
        const int n = random.bounded(-20, 21);
        switch (i % 6) {
        case 0:
            cells.append(n);
            break;
        case 1:
            cells.append(n * 0.5);
            break;
        case 2:
            cells.append(qlonglong(n) * 1000000007LL);
            break;
        case 3:
            cells.append(uint(n + 20));
            break;
        case 4:
            cells.append(QString::number(n));
            break;
        default:
            cells.append(QString::number(n * 0.25));
            break;
        }
    }
    for (int i = 0; i < 12; ++i) {
        const int n = random.bounded(-20, 21);
        values.append(i % 2 ? QString::number(n) : QString::number(n * 0.5));
    }
    // Cell types mixed in one column, in random order, so a condition meets
    // them interleaved.
    std::shuffle(cells.begin(), cells.end(), random);

    CellModel model(cells);
    CMwSortFilterProxyModel proxy;
    QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
    proxy.setSourceModel(&model);

    // "Flag" Is Equal "x", then the condition on C: the first condition
    // passes every other row, so the second one's answer decides alone on
    // the other rows under AND, and under OR.
    auto check = [&](const QString &op, int comparator, const QString &value) {
        int expected = 0;
        for (int r = 0; r < model.rowCount(); ++r) {
            const bool first = r % 2 == 0;
            const bool second = referenceMatch(comparator, model.cell(r), value);
            if (op == opAnd() ? (first && second) : (first || second))
                ++expected;
        }
        QCOMPARE(proxy.rowCount(), expected);
        int row = 0;
        for (int r = 0; r < model.rowCount(); ++r) {
            const bool first = r % 2 == 0;
            const bool second = referenceMatch(comparator, model.cell(r), value);
            if (!(op == opAnd() ? (first && second) : (first || second)))
                continue;
            if (proxy.mapToSource(proxy.index(row, 0)).row() != r) {
                QFAIL(qPrintable(QStringLiteral("%1 %2 '%3': cell %4 of type %5 decided otherwise")
                                     .arg(op, cmp(comparator), value, model.cell(r).toString(),
                                         QLatin1String(model.cell(r).typeName()))));
            }
            ++row;
        }
    };
    for (const QString &op : {opAnd(), opOr()}) {
        for (int comparator = GE; comparator <= NOTEMPTY; ++comparator) {
            for (const QString &value : values) {
                const Filter filter {
                    cond(opAnd(), "Flag", cmp(EQ), "x"), cond(op, "C", cmp(comparator), value)};
                proxy.setFilterRows(filter);
                check(op, comparator, value);
                if (QTest::currentTestFailed())
                    return;
                // The same conditions over other cells: what was worked out
                // for the previous ones must not carry over wrongly.
                QVariantList reversed = cells;
                std::reverse(reversed.begin(), reversed.end());
                reversed.append(QVariant(1.5));
                model.setCells(reversed);
                check(op, comparator, value);
                model.setCells(cells);
                if (QTest::currentTestFailed())
                    return;
            }
        }
    }
}

// Last: every expected answer taken from the written-out Qt 5 rules above
// was, in a Qt 5 build, also QVariant's own.
void tst_CMwSortFilterProxyModel::oracleAgreedWithQt5() { QCOMPARE(Qt5Oracle::mismatches(), 0); }

VEL_TEST_MAIN(tst_CMwSortFilterProxyModel)
#include "tst_cmwsortfilterproxymodel.moc"
