#include "cmwgridtablemodel_p.h"
#include "cmwqtcompat_p.h"
#include "qvectorcalcstatistics_p.h"
#include "cmwvariantcompare_p.h"

#include <vel_qt_widgets/CMwGridStatistics.h>
#include <vel_qt_widgets/CMwGridTableModel.h>

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QIODevice>
#include <QtCore/QLocale>
#include <QtCore/QtDebug>

#include <algorithm>
#include <memory>

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

class CMwGridTableModel::Private : public vel::GridTableCells
{
public:
    explicit Private(CMwGridTableModel *q)
        : q(q)
    {
    }
    virtual ~Private() = default;

    int record(const QModelIndex &index) const override { return recordOf(index); }
    const QVariant &cell(int record, int column) const override
    {
        return columns.at(column).at(record);
    }
    const QVector<int> &textNumbers(int column, int *count) const override;
    bool isFlat() const override { return !isGrouped(); }

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
        return q->createIndex(rowInGroup.at(record), column, quintptr(group + 1));
    }
    int visibleRowCount() const { return records + (isGrouped() ? groups.size() : 0); }

    void buildGroups();
    void clearGroups();
    void regroup(int column);
    void resetTable(const QVector<QStringList> &newPaths,
                    const QVector<QVector<QVariant>> &newRecords);
    const QVector<QVariant> &statistics(int column) const;
    QVariant groupData(int group, int column, int role) const;

    CMwGridTableModel *q;
    QVector<QStringList> paths;
    // Column-major: a column is handed to the statistics as it stands.
    QVector<QVector<QVariant>> columns;
    int records = 0;
    int groupColumn = -1;
    qint64 csvSizeLimit = CMwGridTableModel::defaultCsvSizeLimit;
    QVector<Group> groups;
    QVector<int> groupOfRecord;
    QVector<int> rowInGroup;
    mutable QVector<QVector<QVariant>> stats;
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
        const QVector<QVariant> &cells = columns.at(column);
        QHash<QString, int> ids;
        for (int record = 0; record < cells.size(); ++record) {
            const QVariant &cell = cells.at(record);
            if (cell.userType() != QMetaType::QString)
                continue;
            if (numbers.ofRecord.isEmpty())
                numbers.ofRecord.fill(-1, cells.size());
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
    const QVector<QVariant> &column = columns.at(groupColumn);
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
    const QVector<QStringList> &newPaths, const QVector<QVector<QVariant>> &newRecords)
{
    q->beginResetModel();
    const bool wasGrouped = isGrouped();
    paths = newPaths;
    records = newRecords.size();
    columns = QVector<QVector<QVariant>>(paths.size(), QVector<QVariant>(records));
    for (int r = 0; r < records; ++r) {
        const QVector<QVariant> &record = newRecords.at(r);
        const int cells = qMin(record.size(), paths.size());
        for (int c = 0; c < cells; ++c)
            columns[c][r] = record.at(c);
    }
    groupColumn = -1;
    clearGroups();
    stats = QVector<QVector<QVariant>>(paths.size());
    textNumbersOf = QVector<TextNumbers>(paths.size());
    q->endResetModel();
    // The grid rebuilds its header, row numbers and statistics on
    // layoutChanged(), not on a reset; tell it that the shape is new.
    Q_EMIT q->layoutAboutToBeChanged();
    Q_EMIT q->layoutChanged();
    if (wasGrouped)
        Q_EMIT q->groupColumnChanged(-1);
}

const QVector<QVariant> &CMwGridTableModel::Private::statistics(int column) const
{
    QVector<QVariant> &cached = stats[column];
    if (cached.isEmpty()) {
        double values[statisticsCount];
        QVectorCalcStatistics(columns.at(column), values[0], values[1], values[2], values[3],
                              values[4], values[5]);
        cached.reserve(statisticsCount);
        for (double value : values)
            cached.append(value);
    }
    return cached;
}

QVariant CMwGridTableModel::Private::groupData(int group, int column, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    const Group &g = groups.at(group);
    if (column == 0) {
        const QStringList &path = paths.at(groupColumn);
        const QString caption = path.isEmpty() ? QString() : path.last();
        const QString value = g.value.isValid() ? g.value.toString()
                                                : CMwGridTableModel::tr("(empty)");
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

void CMwGridTableModel::setTable(const QVector<QStringList> &headerPaths,
                                 const QVector<QVector<QVariant>> &records)
{
    d->resetTable(headerPaths, records);
}

void CMwGridTableModel::setHeaderPaths(const QVector<QStringList> &headerPaths)
{
    QVector<QVector<QVariant>> records(d->records);
    for (int r = 0; r < d->records; ++r) {
        QVector<QVariant> &record = records[r];
        record.reserve(d->columnCount());
        for (int c = 0; c < d->columnCount(); ++c)
            record.append(d->columns.at(c).at(r));
    }
    d->resetTable(headerPaths, records);
}

void CMwGridTableModel::setRecords(const QVector<QVector<QVariant>> &records)
{
    d->resetTable(d->paths, records);
}

void CMwGridTableModel::appendRecord(const QVector<QVariant> &record)
{
    const int row = d->records;
    if (!d->isGrouped())
        beginInsertRows(QModelIndex(), row, row);
    for (int c = 0; c < d->columnCount(); ++c) {
        d->columns[c].append(c < record.size() ? record.at(c) : QVariant());
        d->stats[c].clear();
        d->textNumbersOf[c] = {};
    }
    ++d->records;
    if (!d->isGrouped()) {
        endInsertRows();
    } else {
        // The new record may open a group of its own.
        d->regroup(d->groupColumn);
    }
}

void CMwGridTableModel::clear()
{
    d->resetTable({}, {});
}

QStringList CMwGridTableModel::headerPath(int column) const
{
    return column >= 0 && column < d->columnCount() ? d->paths.at(column) : QStringList();
}

int CMwGridTableModel::recordCount() const
{
    return d->records;
}

QVariant CMwGridTableModel::value(int record, int column) const
{
    if (record < 0 || record >= d->records || column < 0 || column >= d->columnCount())
        return {};
    return d->columns.at(column).at(record);
}

void CMwGridTableModel::setValue(int record, int column, const QVariant &value)
{
    if (record < 0 || record >= d->records || column < 0 || column >= d->columnCount()) {
        qWarning("CMwGridTableModel::setValue: cell (%d, %d) is outside the table", record, column);
        return;
    }
    QVariant &cell = d->columns[column][record];
    if (cell.userType() == value.userType() && vel::Qt5Variant::equal(cell, value))
        return;
    cell = value;
    d->stats[column].clear();
    d->textNumbersOf[column] = {};
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

int CMwGridTableModel::groupColumn() const
{
    return d->groupColumn;
}

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
    return createIndex(row, column, quintptr(parent.row() + 1));
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

int CMwGridTableModel::columnCount(const QModelIndex &) const
{
    return d->columnCount();
}

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
        return d->columns.at(index.column()).at(record);
    case RowNumberRole:
        return record;
    case Qt::TextAlignmentRole:
        if (vel::isStatisticsNumeric(d->columns.at(index.column()).at(record)))
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

// Read in slices of this size: memory grows with the input, and the limit
// and the text check apply before anything is parsed.
constexpr qint64 csvReadSize = qint64(1) << 20;

// RFC 4180 fields, read one character at a time so that the input can come
// in slices: a quote at the start of a field encloses separators, line
// breaks (kept as they are, CR LF included) and doubled quotes. Malformed
// input is read as spreadsheet programs read it: a quote anywhere else in a
// field is an ordinary character, and text after a closing quote joins the
// field. Lines that hold nothing are skipped.
class CsvParser
{
public:
    explicit CsvParser(QChar separator)
        : separator(separator)
    {
    }

    void feed(const QString &text)
    {
        for (const QChar c : text)
            put(c);
    }

    void finish()
    {
        if (state == Quoted)
            unclosedQuoteLine = quoteLine;
        if (inRecord)
            endRecord();
    }

    QVector<QStringList> rows;
    // Line (from 1) of a quote that the input never closed, or 0.
    int unclosedQuoteLine = 0;
    // First line (from 1) of the first record with a non-empty field beyond
    // the header's fields, or 0.
    int extraFieldsLine = 0;

private:
    enum State { FieldStart, Unquoted, Quoted, QuoteInQuoted };

    void put(QChar c)
    {
        const bool isBreak = c == QLatin1Char('\n') || c == QLatin1Char('\r');
        if (state == Quoted) {
            if (c == QLatin1Char('"'))
                state = QuoteInQuoted;
            else
                field.append(c);
        } else if (state == QuoteInQuoted && c == QLatin1Char('"')) {
            field.append(c);
            state = Quoted;
        } else if (isBreak) {
            // CR LF is one line break; the LF after a CR ends nothing more.
            if (!(c == QLatin1Char('\n') && afterCR) && inRecord)
                endRecord();
            state = FieldStart;
        } else {
            if (!inRecord) {
                inRecord = true;
                recordLine = line;
            }
            if (c == separator) {
                row.append(field);
                field.clear();
                state = FieldStart;
            } else if (c == QLatin1Char('"') && state == FieldStart) {
                state = Quoted;
                quoteLine = line;
            } else {
                field.append(c);
                state = Unquoted;
            }
        }
        if (c == QLatin1Char('\r'))
            ++line;
        else if (c == QLatin1Char('\n') && !afterCR)
            ++line;
        afterCR = c == QLatin1Char('\r');
    }

    void endRecord()
    {
        row.append(field);
        field.clear();
        if (!rows.isEmpty() && extraFieldsLine == 0) {
            for (int i = rows.first().size(); i < row.size(); ++i) {
                if (!row.at(i).trimmed().isEmpty()) {
                    extraFieldsLine = recordLine;
                    break;
                }
            }
        }
        rows.append(row);
        row.clear();
        inRecord = false;
    }

    const QChar separator;
    State state = FieldStart;
    QStringList row;
    QString field;
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
    explicit BinaryReading(QIODevice *device)
        : device(device)
        , wasText(device->isTextModeEnabled())
    {
        device->setTextModeEnabled(false);
    }
    ~BinaryReading() { device->setTextModeEnabled(wasText); }

private:
    QIODevice *const device;
    const bool wasText;
    Q_DISABLE_COPY(BinaryReading)
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

    // The whole input is read before anything is parsed, so that a stream
    // that is endless, too large or not text leaves the model as it was.
    // Text mode would turn a CR LF inside quotes into LF.
    QVector<QByteArray> slices;
    {
        const BinaryReading binary(device);
        qint64 total = 0;
        for (;;) {
            // One byte beyond the limit tells a stream at the limit from
            // one that goes on.
            const qint64 wanted = qMin(csvReadSize, d->csvSizeLimit - total + 1);
            QByteArray slice(int(wanted), Qt::Uninitialized);
            const qint64 got = device->read(slice.data(), wanted);
            if (got <= 0)
                break;
            slice.resize(int(got));
            const int nul = slice.indexOf('\0');
            if (nul >= 0) {
                qWarning("CMwGridTableModel::readCsv: the input is not text (a NUL byte at offset "
                         "%lld); nothing read",
                    total + nul);
                return false;
            }
            total += got;
            if (total > d->csvSizeLimit) {
                qWarning("CMwGridTableModel::readCsv: the input is larger than csvSizeLimit "
                         "(%lld bytes); nothing read",
                    d->csvSizeLimit);
                return false;
            }
            slices.append(slice);
        }
    }

    CsvParser parser(separator);
    {
        VelQt::Utf8Decoder decoder;
        for (QByteArray &slice : slices) {
            parser.feed(decoder.decode(slice));
            slice = QByteArray();
        }
        parser.finish();
    }
    const QVector<QStringList> &rows = parser.rows;
    if (rows.isEmpty()) {
        qWarning("CMwGridTableModel::readCsv: no header line");
        return false;
    }
    if (parser.unclosedQuoteLine > 0) {
        qWarning("CMwGridTableModel::readCsv: the quote opened on line %d is never closed; "
                 "the rest of the input is its field",
            parser.unclosedQuoteLine);
    }
    if (parser.extraFieldsLine > 0) {
        qWarning("CMwGridTableModel::readCsv: line %d has more fields than the header's %d; "
                 "fields beyond them are dropped (reported for the first such line only)",
            parser.extraFieldsLine, int(rows.first().size()));
    }

    QVector<QStringList> headerPaths;
    for (const QString &caption : rows.first()) {
        QStringList path;
        for (const QString &level : caption.split(levelSeparator))
            path.append(level.trimmed());
        headerPaths.append(path);
    }

    const int columnCount = headerPaths.size();
    const int recordCount = rows.size() - 1;
    const QLocale c = QLocale::c();
    // A column is numeric when every non-empty field reads as a number.
    QVector<bool> numeric(columnCount, true);
    QVector<bool> integral(columnCount, true);
    for (int r = 1; r < rows.size(); ++r) {
        const QStringList &fields = rows.at(r);
        for (int col = 0; col < qMin(columnCount, fields.size()); ++col) {
            const QString field = fields.at(col).trimmed();
            if (field.isEmpty() || !numeric.at(col))
                continue;
            bool ok = false;
            c.toDouble(field, &ok);
            if (!ok) {
                numeric[col] = false;
                continue;
            }
            if (integral.at(col)) {
                c.toInt(field, &ok);
                integral[col] = ok;
            }
        }
    }

    QVector<QVector<QVariant>> records(recordCount, QVector<QVariant>(columnCount));
    for (int r = 0; r < recordCount; ++r) {
        const QStringList &fields = rows.at(r + 1);
        QVector<QVariant> &record = records[r];
        for (int col = 0; col < qMin(columnCount, fields.size()); ++col) {
            const QString &raw = fields.at(col);
            if (raw.trimmed().isEmpty())
                continue;
            if (!numeric.at(col))
                record[col] = raw;
            else if (integral.at(col))
                record[col] = c.toInt(raw.trimmed());
            else
                record[col] = c.toDouble(raw.trimmed());
        }
    }
    d->resetTable(headerPaths, records);
    return true;
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
