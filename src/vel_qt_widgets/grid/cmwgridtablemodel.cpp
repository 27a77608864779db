#include "cmwqtcompat_p.h"
#include "cmwvariantcompare_p.h"
#include "gridtablecells_p.h"
#include "qvectorcalcstatistics_p.h"

#include <vel_qt_widgets/CMwGridStatistics.h>
#include <vel_qt_widgets/CMwGridTableModel.h>

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QIODevice>
#include <QtCore/QLocale>
#include <QtCore/QtDebug>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int statisticsCount = 6;

// Top-level items carry 0; the records under group g carry g + 1.
constexpr quintptr topLevelId = 0;

struct Group
{
    QVariant value;
    QVector<int> records;
};

} // namespace

// One column of the table. Loaded CSV columns are held typed (whole
// numbers, doubles, or UTF-8 texts in one buffer) so that a large file costs
// about its own size; cells set through the QVariant API are held as given.
// A QVariant is made only when a cell is asked for.
class Column
{
public:
    enum Kind { Variants, Ints, Doubles, Texts };

    Kind kind = Variants;
    int size = 0;
    QVector<QVariant> variants;
    std::vector<int> ints;
    std::vector<double> doubles;
    // Texts: the cells' UTF-8 one after another; ends[r] is where record r's ends.
    std::string text;
    std::vector<qint64> ends;
    // Typed kinds: whether the record's cell holds a value (else empty cell).
    std::vector<bool> present;

    static Column ofVariants(QVector<QVariant> cells)
    {
        Column column;
        column.size = cells.size();
        // A column of ints or of doubles (empty cells aside) is held as
        // numbers, as a loaded one is: half the memory, and the statistics
        // read the numbers without a QVariant each.
        int type = QMetaType::UnknownType;
        for (const QVariant &cell : qAsConst(cells)) {
            const int t = cell.userType();
            if (t == QMetaType::UnknownType || t == type)
                continue;
            if (type != QMetaType::UnknownType) {
                type = QMetaType::UnknownType;
                break;
            }
            type = t;
        }
        if (type == QMetaType::Int || type == QMetaType::Double) {
            column.kind = type == QMetaType::Int ? Ints : Doubles;
            column.present.reserve(size_t(column.size));
            if (type == QMetaType::Int)
                column.ints.reserve(size_t(column.size));
            else
                column.doubles.reserve(size_t(column.size));
            for (const QVariant &cell : qAsConst(cells)) {
                const bool present = cell.isValid();
                column.present.push_back(present);
                if (type == QMetaType::Int)
                    column.ints.push_back(
                        present ? *static_cast<const int *>(cell.constData()) : 0);
                else
                    column.doubles.push_back(
                        present ? *static_cast<const double *>(cell.constData()) : 0.0);
            }
            return column;
        }
        column.variants = std::move(cells);
        return column;
    }

    vel::GridTableCells::Typed typed() const
    {
        vel::GridTableCells::Typed view;
        view.size = size;
        switch (kind) {
        case Variants:
            break;
        case Ints:
            view.kind = vel::GridTableCells::Typed::Ints;
            view.ints = ints.data();
            view.present = &present;
            break;
        case Doubles:
            view.kind = vel::GridTableCells::Typed::Doubles;
            view.doubles = doubles.data();
            view.present = &present;
            break;
        case Texts:
            view.kind = vel::GridTableCells::Typed::Texts;
            view.text = text.data();
            view.ends = ends.data();
            view.present = &present;
            break;
        }
        return view;
    }

    QVariant at(int record) const
    {
        switch (kind) {
        case Variants:
            return variants.at(record);
        case Ints:
            return present[record] ? QVariant(ints[record]) : QVariant();
        case Doubles:
            return present[record] ? QVariant(doubles[record]) : QVariant();
        case Texts:
            break;
        }
        if (!present[record])
            return {};
        const qint64 begin = record == 0 ? 0 : ends[record - 1];
        return QString::fromUtf8(text.data() + begin, int(ends[record] - begin));
    }

    // The cells as QVariants: the column itself when it holds them, else a
    // copy made now (the caller decides how long to keep it).
    QVector<QVariant> toVariantVector() const
    {
        if (kind == Variants)
            return variants;
        QVector<QVariant> cells;
        cells.reserve(size);
        for (int r = 0; r < size; ++r)
            cells.append(at(r));
        return cells;
    }

    void makeVariants()
    {
        if (kind == Variants)
            return;
        variants = toVariantVector();
        kind = Variants;
        ints = {};
        doubles = {};
        text = {};
        ends = {};
        present = {};
    }

    void set(int record, const QVariant &value)
    {
        const int type = value.userType();
        if (kind == Ints && type == QMetaType::Int) {
            ints[record] = value.toInt();
            present[record] = true;
        } else if (kind == Doubles && type == QMetaType::Double) {
            doubles[record] = value.toDouble();
            present[record] = true;
        } else if (kind != Variants && !value.isValid()) {
            present[record] = false;
        } else {
            makeVariants();
            variants[record] = value;
        }
    }

    void append(const QVariant &value)
    {
        const int type = value.userType();
        if (kind == Variants) {
            variants.append(value);
        } else if (kind == Ints && (type == QMetaType::Int || !value.isValid())) {
            ints.push_back(value.toInt());
            present.push_back(value.isValid());
        } else if (kind == Doubles && (type == QMetaType::Double || !value.isValid())) {
            doubles.push_back(value.toDouble());
            present.push_back(value.isValid());
        } else if (kind == Texts && !value.isValid()) {
            ends.push_back(qint64(text.size()));
            present.push_back(false);
        } else {
            makeVariants();
            variants.append(value);
        }
        ++size;
    }
};

class CMwGridTableModel::Private : public vel::GridTableCells
{
public:
    explicit Private(CMwGridTableModel *owner)
        : q(owner)
    {
    }
    virtual ~Private() = default;

    int record(const QModelIndex &index) const override { return recordOf(index); }
    const QVariant &cell(int record, int column) const override
    {
        const Column &cells = columns.at(size_t(column));
        if (cells.kind == Column::Variants)
            return cells.variants.at(record);
        // Callers walk many cells at once and keep references to them:
        // the column's QVariants are made once and kept until it changes.
        QVector<QVariant> &made = variantCells[column];
        if (made.size() != cells.size)
            made = cells.toVariantVector();
        return made.at(record);
    }
    const QVector<int> &textNumbers(int column, int *count) const override;
    bool isFlat() const override { return !isGrouped(); }
    Typed typed(int column) const override { return columns.at(size_t(column)).typed(); }
    void prepareStatistics(const std::vector<int> &wanted) const override;

    int columnCount() const { return paths.size(); }
    int recordCount() const { return records; }
    bool isGrouped() const { return groupColumn >= 0; }

    // The record an index shows, or -1 for a group row.
    int recordOf(const QModelIndex &index) const
    {
        if (index.internalId() == topLevelId)
            return isGrouped() ? -1 : index.row();
        return groups.at(int(index.internalId() - 1)).records.at(index.row());
    }
    QModelIndex indexOfRecord(int record, int column) const
    {
        if (!isGrouped())
            return q->createIndex(record, column, topLevelId);
        const int group = groupOfRecord.at(record);
        return q->createIndex(rowInGroup.at(record), column, quintptr(group) + 1);
    }
    int visibleRowCount() const { return records + (isGrouped() ? groups.size() : 0); }

    void buildGroups();
    void clearGroups();
    void regroup(int column);
    void resetTable(
        const QVector<QStringList> &newPaths, std::vector<Column> newColumns, int newRecords);
    void columnChanged(int column);
    const QVector<QVariant> &statistics(int column) const;
    // Keeps \a r as \a column's statistics, in the order of the roles.
    void cache(int column, const vel::StatisticsResult &r) const;
    QVariant groupData(int group, int column, int role) const;

    CMwGridTableModel *q;
    QVector<QStringList> paths;
    std::vector<Column> columns;
    int records = 0;
    int groupColumn = -1;
    qint64 csvSizeLimit = CMwGridTableModel::defaultCsvSizeLimit;
    bool reading = false;
    bool cancelRequested = false;
    QVector<Group> groups;
    QVector<int> groupOfRecord;
    QVector<int> rowInGroup;
    mutable QVector<QVector<QVariant>> stats;
    // Per typed column, the QVariants handed out by cell(); empty until asked.
    mutable QVector<QVector<QVariant>> variantCells;
    // Per column, built on demand and dropped with stats: the number of each
    // record's distinct text (-1 where the cell holds no text; empty when
    // the column holds none) and how many distinct texts there are.
    struct TextNumbers
    {
        QVector<int> ofRecord;
        int count = -1;
    };
    mutable QVector<TextNumbers> textNumbersOf;
};

const vel::GridTableCells *vel::GridTableCells::of(const QAbstractItemModel *model)
{
    const auto *table = qobject_cast<const CMwGridTableModel *>(model);
    return table ? table->d.get() : nullptr;
}

const QVector<int> &CMwGridTableModel::Private::textNumbers(int column, int *count) const
{
    TextNumbers &numbers = textNumbersOf[column];
    if (numbers.count < 0) {
        const Column &cells = columns.at(size_t(column));
        QHash<QString, int> ids;
        for (int record = 0; record < cells.size; ++record) {
            const QVariant cell = cells.at(record);
            if (cell.userType() != QMetaType::QString)
                continue;
            if (numbers.ofRecord.isEmpty())
                numbers.ofRecord.fill(-1, cells.size);
            const QString &text = *static_cast<const QString *>(cell.constData());
            auto it = ids.constFind(text);
            if (it == ids.constEnd())
                it = ids.insert(text, ids.size());
            numbers.ofRecord[record] = it.value();
        }
        numbers.count = ids.size();
    }
    *count = numbers.count;
    return numbers.ofRecord;
}

void CMwGridTableModel::Private::clearGroups()
{
    groups.clear();
    groupOfRecord.clear();
    rowInGroup.clear();
}

// Groups in the order the statistics walk the column, split where that walk
// counts a new distinct value (so there are as many groups as "Distinct"
// says), plus one for the empty cells.
void CMwGridTableModel::Private::buildGroups()
{
    clearGroups();
    if (!isGrouped())
        return;
    const QVector<QVariant> column = columns.at(size_t(groupColumn)).toVariantVector();
    const QVector<QVector<int>> runs = vel::statisticsRuns(column);
    groupOfRecord.resize(records);
    rowInGroup.resize(records);
    groups.reserve(runs.size());
    for (const QVector<int> &run : runs)
        groups.append(Group {column.at(run.first()), run});
    // Inside a group the records keep their table order.
    for (int g = 0; g < groups.size(); ++g) {
        QVector<int> &members = groups[g].records;
        std::sort(members.begin(), members.end());
        for (int row = 0; row < members.size(); ++row) {
            groupOfRecord[members.at(row)] = g;
            rowInGroup[members.at(row)] = row;
        }
    }
}

// A change of shape that keeps every record: announced as a layout change,
// so that selections and expanded rows follow the records.
void CMwGridTableModel::Private::regroup(int column)
{
    Q_EMIT q->layoutAboutToBeChanged();
    const QModelIndexList before = q->persistentIndexList();
    QVector<int> recordsBefore;
    recordsBefore.reserve(before.size());
    for (const QModelIndex &index : before)
        recordsBefore.append(recordOf(index));

    groupColumn = column;
    buildGroups();

    QModelIndexList after;
    after.reserve(before.size());
    for (int i = 0; i < before.size(); ++i) {
        const int record = recordsBefore.at(i);
        after.append(record < 0 ? QModelIndex() : indexOfRecord(record, before.at(i).column()));
    }
    q->changePersistentIndexList(before, after);
    Q_EMIT q->layoutChanged();
}

void CMwGridTableModel::Private::resetTable(
    const QVector<QStringList> &newPaths, std::vector<Column> newColumns, int newRecords)
{
    q->beginResetModel();
    const bool wasGrouped = isGrouped();
    paths = newPaths;
    records = newRecords;
    columns = std::move(newColumns);
    groupColumn = -1;
    clearGroups();
    stats = QVector<QVector<QVariant>>(paths.size());
    variantCells = QVector<QVector<QVariant>>(paths.size());
    textNumbersOf = QVector<TextNumbers>(paths.size());
    q->endResetModel();
    // The grid rebuilds its header, row numbers and statistics on
    // layoutChanged(), not on a reset; tell it that the shape is new.
    Q_EMIT q->layoutAboutToBeChanged();
    Q_EMIT q->layoutChanged();
    if (wasGrouped)
        Q_EMIT q->groupColumnChanged(-1);
}

void CMwGridTableModel::Private::columnChanged(int column)
{
    stats[column].clear();
    variantCells[column] = {};
    textNumbersOf[column] = {};
}

namespace {

std::vector<Column> columnsOf(int columnCount, const QVector<QVector<QVariant>> &records)
{
    std::vector<Column> columns;
    columns.reserve(size_t(columnCount));
    for (int c = 0; c < columnCount; ++c) {
        QVector<QVariant> cells(records.size());
        for (int r = 0; r < records.size(); ++r) {
            if (c < records.at(r).size())
                cells[r] = records.at(r).at(c);
        }
        columns.push_back(Column::ofVariants(std::move(cells)));
    }
    return columns;
}

} // namespace

const QVector<QVariant> &CMwGridTableModel::Private::statistics(int column) const
{
    QVector<QVariant> &cached = stats[column];
    if (cached.isEmpty()) {
        vel::StatisticsResult r;
        const Column &cells = columns.at(size_t(column));
        // A typed column is read from its arrays, without a QVariant a cell.
        if (!vel::typedStatistics(cells.typed(), nullptr, 0, nullptr, r.count, r.distinct, r.min,
                r.max, r.mean, r.stdev)) {
            QVectorCalcStatistics(
                cells.variants, r.count, r.distinct, r.min, r.max, r.mean, r.stdev);
        }
        cache(column, r);
    }
    return cached;
}

void CMwGridTableModel::Private::cache(int column, const vel::StatisticsResult &r) const
{
    QVector<QVariant> &cached = stats[column];
    cached.clear();
    cached.reserve(statisticsCount);
    for (const double value : {r.count, r.distinct, r.min, r.max, r.mean, r.stdev})
        cached.append(value);
}

void CMwGridTableModel::Private::prepareStatistics(const std::vector<int> &wanted) const
{
    // Only double columns gain from going together (their walks overlap);
    // the others are left to statistics(), when data() asks.
    std::vector<int> todo;
    std::vector<Typed> cells;
    std::vector<bool> taken(columns.size(), false);
    for (const int column : wanted) {
        if (column < 0 || column >= columnCount() || taken[size_t(column)]
            || !stats.at(column).isEmpty()) {
            continue;
        }
        const Typed t = typed(column);
        if (t.kind != Typed::Doubles)
            continue;
        taken[size_t(column)] = true;
        todo.push_back(column);
        cells.push_back(t);
    }
    if (todo.size() < 2)
        return;
    std::vector<vel::StatisticsResult> results;
    vel::typedStatistics(cells, nullptr, 0, nullptr, results);
    for (size_t i = 0; i < todo.size(); ++i) {
        if (results[i].done)
            cache(todo[i], results[i]);
    }
}

QVariant CMwGridTableModel::Private::groupData(int group, int column, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    const Group &g = groups.at(group);
    if (column == 0) {
        const QStringList &path = paths.at(groupColumn);
        const QString caption = path.isEmpty() ? QString() : path.last();
        const QString value
            = g.value.isValid() ? g.value.toString() : CMwGridTableModel::tr("(empty)");
        return CMwGridTableModel::tr("%1: %2 (%3)").arg(caption, value).arg(g.records.size());
    }
    // The grouped column carries the raw value, so sorting by it orders groups.
    if (column == groupColumn)
        return g.value;
    return {};
}

CMwGridTableModel::CMwGridTableModel(QObject *parent)
    : QAbstractItemModel(parent)
    , d(new Private(this))
{
}

CMwGridTableModel::~CMwGridTableModel() = default;

void CMwGridTableModel::setTable(
    const QVector<QStringList> &headerPaths, const QVector<QVector<QVariant>> &records)
{
    d->resetTable(headerPaths, columnsOf(headerPaths.size(), records), records.size());
}

void CMwGridTableModel::setHeaderPaths(const QVector<QStringList> &headerPaths)
{
    std::vector<Column> columns = std::move(d->columns);
    columns.resize(size_t(headerPaths.size()));
    for (size_t c = size_t(d->columnCount()); c < columns.size(); ++c)
        columns[c] = Column::ofVariants(QVector<QVariant>(d->records));
    d->resetTable(headerPaths, std::move(columns), d->records);
}

void CMwGridTableModel::setRecords(const QVector<QVector<QVariant>> &records)
{
    d->resetTable(d->paths, columnsOf(d->columnCount(), records), records.size());
}

void CMwGridTableModel::appendRecord(const QVector<QVariant> &record)
{
    const int row = d->records;
    if (!d->isGrouped())
        beginInsertRows(QModelIndex(), row, row);
    for (int c = 0; c < d->columnCount(); ++c) {
        d->columns[size_t(c)].append(c < record.size() ? record.at(c) : QVariant());
        d->columnChanged(c);
    }
    ++d->records;
    if (!d->isGrouped()) {
        endInsertRows();
    } else {
        // The new record may open a group of its own.
        d->regroup(d->groupColumn);
    }
}

void CMwGridTableModel::clear() { d->resetTable({}, {}, 0); }

QStringList CMwGridTableModel::headerPath(int column) const
{
    return column >= 0 && column < d->columnCount() ? d->paths.at(column) : QStringList();
}

int CMwGridTableModel::recordCount() const { return d->records; }

QVariant CMwGridTableModel::value(int record, int column) const
{
    if (record < 0 || record >= d->records || column < 0 || column >= d->columnCount())
        return {};
    return d->columns.at(size_t(column)).at(record);
}

void CMwGridTableModel::setValue(int record, int column, const QVariant &value)
{
    if (record < 0 || record >= d->records || column < 0 || column >= d->columnCount()) {
        qWarning("CMwGridTableModel::setValue: cell (%d, %d) is outside the table", record, column);
        return;
    }
    Column &cells = d->columns[size_t(column)];
    const QVariant cell = cells.at(record);
    if (cell.userType() == value.userType() && vel::Qt5Variant::equal(cell, value))
        return;
    cells.set(record, value);
    d->columnChanged(column);
    if (column == d->groupColumn) {
        // The record may belong to another group now.
        d->regroup(column);
        return;
    }
    const QModelIndex changed = d->indexOfRecord(record, column);
    Q_EMIT dataChanged(changed, changed);
    // A filter shows a group row while any of its records passes: the group
    // row is announced too, so that a filtering proxy asks again.
    if (d->isGrouped()) {
        const QModelIndex group = changed.parent();
        Q_EMIT dataChanged(group, group.sibling(group.row(), d->columnCount() - 1));
    }
}

qint64 CMwGridTableModel::csvSizeLimit() const { return d->csvSizeLimit; }

void CMwGridTableModel::setCsvSizeLimit(qint64 bytes)
{
    if (bytes < 1) {
        qWarning("CMwGridTableModel::setCsvSizeLimit: %lld bytes is no limit; ignored", bytes);
        return;
    }
    d->csvSizeLimit = bytes;
}

int CMwGridTableModel::groupColumn() const { return d->groupColumn; }

void CMwGridTableModel::groupByColumn(mw_int32 iLogicalIndex)
{
    if (iLogicalIndex >= d->columnCount()) {
        qWarning("CMwGridTableModel::groupByColumn: no column %d", int(iLogicalIndex));
        return;
    }
    const int column = iLogicalIndex < 0 ? -1 : int(iLogicalIndex);
    if (column == d->groupColumn)
        return;
    d->regroup(column);
    Q_EMIT groupColumnChanged(column);
}

QModelIndex CMwGridTableModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    if (!parent.isValid())
        return createIndex(row, column, topLevelId);
    return createIndex(row, column, quintptr(parent.row()) + 1);
}

QModelIndex CMwGridTableModel::parent(const QModelIndex &child) const
{
    if (!child.isValid() || child.model() != this || child.internalId() == topLevelId)
        return {};
    return createIndex(int(child.internalId() - 1), 0, topLevelId);
}

int CMwGridTableModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return d->isGrouped() ? d->groups.size() : d->records;
    if (parent.model() != this || !d->isGrouped() || parent.internalId() != topLevelId
        || parent.column() != 0 || parent.row() >= d->groups.size()) {
        return 0;
    }
    return d->groups.at(parent.row()).records.size();
}

int CMwGridTableModel::columnCount(const QModelIndex &) const { return d->columnCount(); }

bool CMwGridTableModel::hasChildren(const QModelIndex &parent) const
{
    return rowCount(parent) > 0;
}

QVariant CMwGridTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.model() != this)
        return {};
    if (role >= StatCountRole && role <= StatStDevRole)
        return d->statistics(index.column()).at(role - StatCountRole);

    const int record = d->recordOf(index);
    if (record < 0) {
        if (role == BranchParentRole)
            return true;
        return d->groupData(index.row(), index.column(), role);
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return d->columns.at(size_t(index.column())).at(record);
    case RowNumberRole:
        return record;
    case Qt::TextAlignmentRole:
        if (vel::isStatisticsNumeric(d->columns.at(size_t(index.column())).at(record)))
            return int(Qt::AlignRight | Qt::AlignVCenter);
        return {};
    default:
        return {};
    }
}

QVariant CMwGridTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical) {
        // A sorting proxy asks with the source row of its first row, so
        // every section answers.
        if (role == VisibleRowCountRole)
            return d->visibleRowCount();
        return QAbstractItemModel::headerData(section, orientation, role);
    }
    if (section < 0 || section >= d->columnCount())
        return {};
    if (role == HeaderPathRole)
        return d->paths.at(section);
    if (role == Qt::DisplayRole)
        return d->paths.at(section).join(QStringLiteral(" / "));
    return {};
}

Qt::ItemFlags CMwGridTableModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (d->recordOf(index) >= 0)
        result |= Qt::ItemNeverHasChildren;
    return result;
}

namespace {

// Read and parsed in blocks of this size: the input is never held whole,
// and progress is reported once a block.
constexpr qint64 csvReadSize = qint64(4) << 20;

bool isAsciiSpace(unsigned char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// A field as QString::trimmed() sees it, without making a QString where
// its edges are ASCII: returns false with \a text set when they are not.
bool trimAscii(const char *&begin, const char *&end, QString *text)
{
    while (begin < end && isAsciiSpace(uchar(*begin)))
        ++begin;
    while (end > begin && isAsciiSpace(uchar(end[-1])))
        --end;
    if (begin < end && (uchar(*begin) >= 0x80 || uchar(end[-1]) >= 0x80)) {
        *text = QString::fromUtf8(begin, int(end - begin)).trimmed();
        return false;
    }
    return true;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The plain forms that need no locale: -?(0|[1-9][0-9]*) within int, and
// the same with a fraction. Anything else goes to QLocale::c().
bool plainInt(const char *p, const char *end, int *value)
{
    const bool negative = p < end && *p == '-';
    if (negative)
        ++p;
    if (p == end || end - p > 10 || (*p == '0' && end - p > 1) || (negative && *p == '0'))
        return false;
    qint64 v = 0;
    for (; p < end; ++p) {
        if (!isDigit(*p))
            return false;
        v = v * 10 + (*p - '0');
    }
    v = negative ? -v : v;
    if (v < std::numeric_limits<int>::min() || v > std::numeric_limits<int>::max())
        return false;
    *value = int(v);
    return true;
}

bool plainDouble(const char *begin, const char *end, double *value)
{
    const char *p = begin;
    if (p < end && *p == '-')
        ++p;
    const char *digits = p;
    while (p < end && isDigit(*p))
        ++p;
    if (p == digits || (*digits == '0' && p - digits > 1) || p == end || *p != '.')
        return false;
    const char *fraction = ++p;
    while (p < end && isDigit(*p))
        ++p;
    if (p == fraction || p != end || end - begin > 40)
        return false;
    const std::from_chars_result result = std::from_chars(begin, end, *value);
    return result.ec == std::errc() && result.ptr == end;
}

// A column as it is read: the raw text of every field (in case one field
// turns the column into text) and, while they all read as numbers, the
// numbers too.
class ColumnReader
{
public:
    void add(const char *begin, const char *end)
    {
        const char *first = begin;
        const char *last = end;
        QString wide;
        const bool ascii = trimAscii(first, last, &wide);
        if (ascii ? first == last : wide.isEmpty()) {
            addEmpty();
            return;
        }
        column.text.append(begin, size_t(end - begin));
        column.ends.push_back(qint64(column.text.size()));
        column.present.push_back(true);
        if (numeric)
            addNumber(ascii, first, last, wide);
        ++column.size;
    }

    void addEmpty()
    {
        column.ends.push_back(qint64(column.text.size()));
        column.present.push_back(false);
        if (numeric) {
            if (integral)
                column.ints.push_back(0);
            else
                column.doubles.push_back(0);
        }
        ++column.size;
    }

    Column take()
    {
        if (!numeric) {
            column.kind = Column::Texts;
        } else {
            column.kind = integral ? Column::Ints : Column::Doubles;
            column.text = {};
            column.ends = {};
        }
        // The arrays grew by doubling while the records came in; a loaded
        // table lives long, so the room it will never use goes back now.
        column.ints.shrink_to_fit();
        column.doubles.shrink_to_fit();
        column.text.shrink_to_fit();
        column.ends.shrink_to_fit();
        column.present.shrink_to_fit();
        return std::move(column);
    }

private:
    void addNumber(bool ascii, const char *first, const char *last, QString &wide)
    {
        int i = 0;
        double x = 0;
        if (integral && ascii && plainInt(first, last, &i)) {
            column.ints.push_back(i);
            return;
        }
        if (!integral && ascii && plainInt(first, last, &i)) {
            column.doubles.push_back(i);
            return;
        }
        if (ascii && plainDouble(first, last, &x)) {
            toDoubles();
            column.doubles.push_back(x);
            return;
        }
        if (ascii)
            wide = QString::fromLatin1(first, int(last - first));
        const QLocale c = QLocale::c();
        bool ok = false;
        x = c.toDouble(wide, &ok);
        if (!ok) {
            numeric = false;
            column.ints = {};
            column.doubles = {};
            negativeZeros = {};
            return;
        }
        if (integral) {
            i = c.toInt(wide, &ok);
            if (ok) {
                // A "-0" reads as int 0 but as double -0.0.
                if (std::signbit(x))
                    negativeZeros.push_back(column.size);
                column.ints.push_back(i);
                return;
            }
        }
        toDoubles();
        column.doubles.push_back(x);
    }

    void toDoubles()
    {
        if (!integral)
            return;
        integral = false;
        column.doubles.assign(column.ints.begin(), column.ints.end());
        for (int r : negativeZeros)
            column.doubles[size_t(r)] = -0.0;
        column.ints = {};
        negativeZeros = {};
    }

    Column column;
    bool numeric = true;
    bool integral = true;
    std::vector<int> negativeZeros;
};

// RFC 4180 fields, read from UTF-8 a byte at a time so that the input can
// come in blocks: a quote at the start of a field encloses separators, line
// breaks (kept as they are, CR LF included) and doubled quotes. Malformed
// input is read as spreadsheet programs read it: a quote anywhere else in a
// field is an ordinary character, and text after a closing quote joins the
// field. Lines that hold nothing are skipped. Fields go straight to their
// column; only the header's become QStrings.
class CsvReader
{
public:
    explicit CsvReader(QChar fieldSeparator)
        // A lone surrogate matches no UTF-8 text.
        : separator(fieldSeparator.isSurrogate() ? QByteArray("\xFF\xFE\xFF")
                                                 : QString(fieldSeparator).toUtf8())
    {
        stops[uchar('\r')] = stops[uchar('\n')] = true;
        stops[uchar(this->separator.at(0))] = true;
    }

    void feed(const char *p, const char *end)
    {
        if (atStart) {
            // A byte order mark is no part of the first caption.
            static const char bom[] = "\xEF\xBB\xBF";
            while (p < end && bomSeen < 3 && *p == bom[bomSeen]) {
                ++p;
                ++bomSeen;
            }
            if (p == end && bomSeen < 3)
                return;
            if (bomSeen < 3) {
                for (int i = 0; i < bomSeen; ++i)
                    put(uchar(bom[i]));
            }
            atStart = false;
        }
        while (p < end) {
            const uchar c = uchar(*p);
            if (pending.isEmpty() && state != Quoted && !stops[c]
                && (c != '"' || state == Unquoted)) {
                // A run of ordinary characters.
                const char *run = p + 1;
                while (run < end && !stops[uchar(*run)])
                    ++run;
                ordinary(p, run);
                p = run;
                continue;
            }
            put(c);
            ++p;
        }
    }

    void finish()
    {
        flushPending();
        if (state == Quoted)
            unclosedQuoteLine = quoteLine;
        if (inRecord)
            endRecord();
    }

    bool hasHeader() const { return headerDone; }

    QStringList captions;
    std::vector<ColumnReader> columns;
    int records = 0;
    // Line (from 1) of a quote that the input never closed, or 0.
    int unclosedQuoteLine = 0;
    // First line (from 1) of the first record with a non-empty field beyond
    // the header's fields, or 0.
    int extraFieldsLine = 0;

private:
    enum State { FieldStart, Unquoted, Quoted, QuoteInQuoted };

    void ordinary(const char *begin, const char *end)
    {
        if (!inRecord) {
            inRecord = true;
            recordLine = line;
        }
        field.append(begin, size_t(end - begin));
        state = Unquoted;
        afterCR = false;
    }

    void put(uchar c)
    {
        // A separator of several bytes is matched byte by byte outside quotes.
        if (separator.size() > 1 && state != Quoted) {
            if (!pending.isEmpty() && c == uchar(separator.at(pending.size()))) {
                pending.append(char(c));
                if (pending.size() == separator.size()) {
                    pending.clear();
                    separatorFound();
                }
                return;
            }
            flushPending();
            if (c == uchar(separator.at(0))) {
                pending.append(char(c));
                afterCR = false;
                return;
            }
        }
        const bool isBreak = c == '\n' || c == '\r';
        if (state == Quoted) {
            if (c == '"')
                state = QuoteInQuoted;
            else
                field.push_back(char(c));
        } else if (state == QuoteInQuoted && c == '"') {
            field.push_back('"');
            state = Quoted;
        } else if (isBreak) {
            // CR LF is one line break; the LF after a CR ends nothing more.
            if (!(c == '\n' && afterCR) && inRecord)
                endRecord();
            state = FieldStart;
        } else if (separator.size() == 1 && c == uchar(separator.at(0))) {
            separatorFound();
        } else {
            if (!inRecord) {
                inRecord = true;
                recordLine = line;
            }
            if (c == '"' && state == FieldStart) {
                state = Quoted;
                quoteLine = line;
            } else {
                field.push_back(char(c));
                state = Unquoted;
            }
        }
        if (c == '\r' || (c == '\n' && !afterCR))
            ++line;
        afterCR = c == '\r';
    }

    void flushPending()
    {
        if (pending.isEmpty())
            return;
        const QByteArray bytes = pending;
        pending.clear();
        ordinary(bytes.constData(), bytes.constData() + bytes.size());
    }

    void separatorFound()
    {
        if (!inRecord) {
            inRecord = true;
            recordLine = line;
        }
        endField();
        state = FieldStart;
    }

    void endField()
    {
        const char *begin = field.data();
        const char *end = begin + field.size();
        if (!headerDone) {
            captions.append(QString::fromUtf8(begin, int(field.size())));
        } else if (fieldIndex < columns.size()) {
            columns[fieldIndex].add(begin, end);
        } else if (extraFieldsLine == 0) {
            QString wide;
            const char *first = begin;
            const char *last = end;
            if (trimAscii(first, last, &wide) ? first != last : !wide.isEmpty())
                extraFieldsLine = recordLine;
        }
        field.clear();
        ++fieldIndex;
    }

    void endRecord()
    {
        endField();
        if (!headerDone) {
            headerDone = true;
            columns.resize(size_t(captions.size()));
        } else {
            for (; fieldIndex < columns.size(); ++fieldIndex)
                columns[fieldIndex].addEmpty();
            ++records;
        }
        fieldIndex = 0;
        inRecord = false;
    }

    const QByteArray separator;
    bool stops[256] = {};
    State state = FieldStart;
    std::string field;
    QByteArray pending;
    size_t fieldIndex = 0;
    bool headerDone = false;
    bool atStart = true;
    int bomSeen = 0;
    bool inRecord = false;
    bool afterCR = false;
    int line = 1;
    int recordLine = 1;
    int quoteLine = 1;
};

// Restores a device's text mode when reading ends.
class BinaryReading
{
public:
    explicit BinaryReading(QIODevice *readFrom)
        : device(readFrom)
        , wasText(readFrom->isTextModeEnabled())
    {
        readFrom->setTextModeEnabled(false);
    }
    ~BinaryReading() { device->setTextModeEnabled(wasText); }

private:
    QIODevice *const device;
    const bool wasText;
    Q_DISABLE_COPY(BinaryReading)
};

// Marks the model as reading for as long as it lives.
class ReadingFlag
{
public:
    explicit ReadingFlag(bool &reading, bool &cancel)
        : flag(reading)
    {
        reading = true;
        cancel = false;
    }
    ~ReadingFlag() { flag = false; }

private:
    bool &flag;
    Q_DISABLE_COPY(ReadingFlag)
};

} // namespace

bool CMwGridTableModel::readCsv(QIODevice *device, QChar separator, QChar levelSeparator)
{
    if (!device || !device->isReadable()) {
        qWarning("CMwGridTableModel::readCsv: the device is not readable");
        return false;
    }
    if (separator == QLatin1Char('"') || separator == QLatin1Char('\n')
        || separator == QLatin1Char('\r')) {
        qWarning("CMwGridTableModel::readCsv: a quote or a line break cannot separate fields");
        return false;
    }
    if (d->reading) {
        qWarning("CMwGridTableModel::readCsv: a read is under way (called from its progress); "
                 "ignored");
        return false;
    }
    const ReadingFlag reading(d->reading, d->cancelRequested);

    // Everything is parsed into a table of its own, which replaces the
    // model's only when the input has been read to its end: a stream that
    // is endless, too large or not text, or a cancelled read, leaves the
    // model as it was. Text mode would turn a CR LF inside quotes into LF.
    CsvReader reader(separator);
    {
        const BinaryReading binary(device);
        const qint64 expected = device->isSequential() ? -1 : device->size() - device->pos();
        QByteArray block(int(csvReadSize), Qt::Uninitialized);
        qint64 total = 0;
        for (;;) {
            // One byte beyond the limit tells a stream at the limit from
            // one that goes on.
            const qint64 wanted = qMin(csvReadSize, d->csvSizeLimit - total + 1);
            const qint64 got = device->read(block.data(), wanted);
            if (got <= 0)
                break;
            const char *nul = static_cast<const char *>(memchr(block.constData(), 0, size_t(got)));
            if (nul) {
                qWarning("CMwGridTableModel::readCsv: the input is not text (a NUL byte at offset "
                         "%lld); nothing read",
                    total + (nul - block.constData()));
                return false;
            }
            total += got;
            if (total > d->csvSizeLimit) {
                qWarning("CMwGridTableModel::readCsv: the input is larger than csvSizeLimit "
                         "(%lld bytes); nothing read",
                    d->csvSizeLimit);
                return false;
            }
            reader.feed(block.constData(), block.constData() + got);
            Q_EMIT csvReadProgress(total, expected);
            if (d->cancelRequested)
                return false;
        }
    }
    reader.finish();
    if (!reader.hasHeader()) {
        qWarning("CMwGridTableModel::readCsv: no header line");
        return false;
    }
    if (reader.unclosedQuoteLine > 0) {
        qWarning("CMwGridTableModel::readCsv: the quote opened on line %d is never closed; "
                 "the rest of the input is its field",
            reader.unclosedQuoteLine);
    }
    if (reader.extraFieldsLine > 0) {
        qWarning("CMwGridTableModel::readCsv: line %d has more fields than the header's %d; "
                 "fields beyond them are dropped (reported for the first such line only)",
            reader.extraFieldsLine, int(reader.captions.size()));
    }

    QVector<QStringList> headerPaths;
    for (const QString &caption : qAsConst(reader.captions)) {
        QStringList path;
        for (const QString &level : caption.split(levelSeparator))
            path.append(level.trimmed());
        headerPaths.append(path);
    }
    std::vector<Column> columns;
    columns.reserve(reader.columns.size());
    for (ColumnReader &column : reader.columns)
        columns.push_back(column.take());
    d->resetTable(headerPaths, std::move(columns), reader.records);
    return true;
}

void CMwGridTableModel::cancelCsvRead()
{
    if (d->reading)
        d->cancelRequested = true;
}

bool CMwGridTableModel::loadCsv(const QString &fileName, QChar separator, QChar levelSeparator)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("CMwGridTableModel::loadCsv: cannot open %s", qPrintable(fileName));
        return false;
    }
    // A file known to be too large is refused before it is read.
    if (!file.isSequential() && file.size() > d->csvSizeLimit) {
        qWarning("CMwGridTableModel::readCsv: the input is larger than csvSizeLimit "
                 "(%lld bytes); nothing read",
            d->csvSizeLimit);
        return false;
    }
    return readCsv(&file, separator, levelSeparator);
}
