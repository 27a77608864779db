#include "cmwsortfilterproxymodel_p.h"

#include "cmwfiltervocabulary_p.h"
#include "cmwvariantcompare_p.h"

#include <vel_qt_widgets/CMwGridRoles.h>

#include <QtCore/QtDebug>

namespace {

// Qt 5's QVariant ordering (with its numeric and string conversions) is the
// comparison the filter is defined by, in every Qt version.
bool compareCell(int comparator, const QVariant &cell, const QVariant &value)
{
    namespace Qt5 = vel::Qt5Variant;
    switch (comparator) {
    case VelFilterVocabulary::GreaterOrEqual:
        return Qt5::greaterOrEqual(cell, value);
    case VelFilterVocabulary::SmallerOrEqual:
        return Qt5::lessOrEqual(cell, value);
    case VelFilterVocabulary::Greater:
        return Qt5::greater(cell, value);
    case VelFilterVocabulary::Smaller:
        return Qt5::less(cell, value);
    case VelFilterVocabulary::Equal:
        return Qt5::equal(cell, value);
    case VelFilterVocabulary::NotEqual:
        return !Qt5::equal(cell, value);
    case VelFilterVocabulary::Empty:
        return Qt5::isNull(cell);
    case VelFilterVocabulary::NotEmpty:
        return !Qt5::isNull(cell);
    default:
        return false;
    }
}

// The answer of an ordering comparator from the sign of the comparison.
bool orderingMatch(int comparator, int sign)
{
    switch (comparator) {
    case VelFilterVocabulary::GreaterOrEqual:
        return sign >= 0;
    case VelFilterVocabulary::SmallerOrEqual:
        return sign <= 0;
    case VelFilterVocabulary::Greater:
        return sign > 0;
    case VelFilterVocabulary::Smaller:
        return sign < 0;
    default:
        return false;
    }
}

template<typename T>
int sign(T cell, T value)
{
    return cell == value ? 0 : (cell < value ? -1 : 1);
}

} // namespace

CMwSortFilterProxyModelPrivate::CMwSortFilterProxyModelPrivate(CMwSortFilterProxyModel *q)
    : q_ptr(q)
{
}

CMwSortFilterProxyModelPrivate::~CMwSortFilterProxyModelPrivate() = default;

const CMwSortFilterProxyModelPrivate::ForCellType &CMwSortFilterProxyModelPrivate::forCellType(
    int index, int type) const
{
    std::vector<ForCellType> &entries = compiled.at(index).forCellTypes;
    for (const ForCellType &entry : entries) {
        if (entry.cellType == type)
            return entry;
    }
    ForCellType entry;
    entry.cellType = type;
    // Qt 5 compared a numeric cell with a text by converting the text to the
    // cell's type: equality is then the exact equality of that type, and
    // an ordering the numeric comparison of the two. That conversion is the
    // same for every row, so it is done here once. Whatever else (a text
    // that does not convert, a value that is no text, other cell types)
    // keeps the full Qt 5 comparison row by row.
    const QVariant &value = conditions.at(index).value;
    QVariant converted;
    const bool numericCell = type == QMetaType::Int || type == QMetaType::LongLong
        || type == QMetaType::UInt || type == QMetaType::ULongLong || type == QMetaType::Bool
        || type == QMetaType::Double;
    if (value.userType() == QMetaType::QString && numericCell
        && vel::Qt5Variant::convert(value, type, &converted)) {
        switch (type) {
        case QMetaType::Int:
        case QMetaType::LongLong:
            entry.kind = CellKind::Signed;
            entry.i = converted.toLongLong();
            break;
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            entry.kind = CellKind::Unsigned;
            entry.u = converted.toULongLong();
            break;
        case QMetaType::Bool:
            entry.kind = CellKind::Boolean;
            entry.i = converted.toBool() ? 1 : 0;
            break;
        default:
            entry.kind = CellKind::Real;
            entry.d = converted.toDouble();
            entry.converted = converted;
            break;
        }
    }
    entries.push_back(entry);
    return entries.back();
}

bool CMwSortFilterProxyModelPrivate::matches(int index, const QVariant &cell) const
{
    const int comparator = compiled.at(index).comparator;
    switch (comparator) {
    case VelFilterVocabulary::Empty:
        return vel::Qt5Variant::isNull(cell);
    case VelFilterVocabulary::NotEmpty:
        return !vel::Qt5Variant::isNull(cell);
    case VelFilterVocabulary::GreaterOrEqual:
    case VelFilterVocabulary::SmallerOrEqual:
    case VelFilterVocabulary::Greater:
    case VelFilterVocabulary::Smaller:
    case VelFilterVocabulary::Equal:
    case VelFilterVocabulary::NotEqual:
        break;
    default:
        return false;
    }

    const ForCellType &entry = forCellType(index, cell.userType());
    // A null cell of a numeric type is rare; the full comparison decides it.
    if (entry.kind == CellKind::Generic || vel::Qt5Variant::isNull(cell))
        return compareCell(comparator, cell, conditions.at(index).value);

    int s = 0;
    switch (entry.kind) {
    case CellKind::Signed:
        s = sign(entry.cellType == QMetaType::Int
                ? qlonglong(*static_cast<const int *>(cell.constData()))
                : *static_cast<const qlonglong *>(cell.constData()),
            entry.i);
        break;
    case CellKind::Unsigned:
        s = sign(entry.cellType == QMetaType::UInt
                ? qulonglong(*static_cast<const uint *>(cell.constData()))
                : *static_cast<const qulonglong *>(cell.constData()),
            entry.u);
        break;
    case CellKind::Boolean:
        s = sign(qlonglong(*static_cast<const bool *>(cell.constData()) ? 1 : 0), entry.i);
        break;
    case CellKind::Real: {
        const double d = *static_cast<const double *>(cell.constData());
        if (d == entry.d) {
            s = 0;
        } else {
            // Unequal doubles are ordered by Qt's numeric comparison, which
            // is fuzzy (and may still say "same") and places NaN on its own.
            if (comparator == VelFilterVocabulary::Equal)
                return false;
            if (comparator == VelFilterVocabulary::NotEqual)
                return true;
            return compareCell(comparator, cell, entry.converted);
        }
        break;
    }
    case CellKind::Generic:
        break;
    }
    if (comparator == VelFilterVocabulary::Equal)
        return s == 0;
    if (comparator == VelFilterVocabulary::NotEqual)
        return s != 0;
    return orderingMatch(comparator, s);
}

void CMwSortFilterProxyModelPrivate::connectSource(QAbstractItemModel *model)
{
    Q_Q(CMwSortFilterProxyModel);
    connectedSource = model;
    if (!model)
        return;
    const char *const signalNames[] = {
        SIGNAL(headerDataChanged(Qt::Orientation, int, int)),
        SIGNAL(columnsInserted(QModelIndex, int, int)),
        SIGNAL(columnsRemoved(QModelIndex, int, int)),
        SIGNAL(columnsMoved(QModelIndex, int, int, QModelIndex, int)),
        SIGNAL(modelReset()),
        SIGNAL(destroyed()),
    };
    for (const char *signal : signalNames)
        QObject::connect(model, signal, q, SLOT(onSourceHeaderChanged()));
}

void CMwSortFilterProxyModelPrivate::disconnectSource(QAbstractItemModel *model)
{
    Q_Q(CMwSortFilterProxyModel);
    if (model)
        QObject::disconnect(model, nullptr, q, SLOT(onSourceHeaderChanged()));
    connectedSource = nullptr;
}

void CMwSortFilterProxyModelPrivate::resolveColumns() const
{
    Q_Q(const CMwSortFilterProxyModel);
    columns.resize(conditions.size());
    for (int i = 0; i < conditions.size(); ++i)
        columns[i] = q->sourceColumnFromName(conditions.at(i).column);
    columnsModel = q->sourceModel();
    columnsValid = true;
}

CMwSortFilterProxyModel::CMwSortFilterProxyModel(QObject *parent)
    : CMwSortFilterProxyModel(new CMwSortFilterProxyModelPrivate(this), parent)
{
}

CMwSortFilterProxyModel::CMwSortFilterProxyModel(CMwSortFilterProxyModelPrivate *d, QObject *parent)
    : QSortFilterProxyModel(parent)
    , d_vel(d)
{
}

CMwSortFilterProxyModel::~CMwSortFilterProxyModel() = default;

void CMwSortFilterProxyModel::setSourceModel(QAbstractItemModel *model)
{
    Q_D(CMwSortFilterProxyModel);
    if (model != d->connectedSource.data()) {
        d->disconnectSource(d->connectedSource.data());
        // Connected before the base class connects its own handlers, so the
        // column cache is dropped before Qt re-filters anything.
        d->connectSource(model);
    }
    d->columnsValid = false;
    const QAbstractItemModel *previous = sourceModel();
    if (previous && previous != model)
        disconnect(previous, SIGNAL(destroyed()), this, SLOT(onSourceDestroyed()));
    QSortFilterProxyModel::setSourceModel(model);
    // After the base class's own handler: that one drops the mapping to the
    // source but tells no view, whose items would keep pointing into it.
    if (model && model != previous)
        connect(model, SIGNAL(destroyed()), this, SLOT(onSourceDestroyed()), Qt::UniqueConnection);
}

void CMwSortFilterProxyModel::onSourceDestroyed()
{
    // The source is gone already (its destructor runs): nothing may ask it
    // anything, so the reset only starts once the proxy stands on an empty
    // model, and announces a proxy of no rows and no columns.
    beginResetModel();
    endResetModel();
}

void CMwSortFilterProxyModel::onSourceHeaderChanged()
{
    Q_D(CMwSortFilterProxyModel);
    d->columnsValid = false;
}

// By value: the public signature is fixed.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void CMwSortFilterProxyModel::setFilterRows(QVector<QVector<QVariant>> filter)
{
    Q_D(CMwSortFilterProxyModel);
    const QStringList &operators = VelFilterVocabulary::operatorTexts();
    const QStringList &comparators = VelFilterVocabulary::comparatorTexts();

    d->conditions.clear();
    d->compiled.clear();
    d->conditions.reserve(filter.size());
    d->compiled.reserve(filter.size());
    for (int i = 0; i < filter.size(); ++i) {
        const QVector<QVariant> &row = filter.at(i);
        if (row.size() < 5) {
            qWarning("CMwSortFilterProxyModel::setFilterRows: row %d has %d elements, expected 5; "
                     "ignored",
                i, int(row.size()));
            continue;
        }
        FilterCondition condition;
        condition.op = row.at(1).toString();
        condition.column = row.at(2).toString();
        condition.comparator = row.at(3).toString();
        condition.value = row.at(4);

        CMwSortFilterProxyModelPrivate::Compiled compiled;
        compiled.isAnd = condition.op == operators.at(VelFilterVocabulary::OperatorAnd);
        compiled.comparator = comparators.indexOf(condition.comparator);

        d->conditions.append(condition);
        d->compiled.append(compiled);
    }
    d->columnsValid = false;
    invalidate();
}

QVector<CMwSortFilterProxyModel::FilterCondition> CMwSortFilterProxyModel::filterConditions() const
{
    Q_D(const CMwSortFilterProxyModel);
    return d->conditions;
}

QVariant CMwSortFilterProxyModel::firstValueOfColumn(const QString &column) const
{
    const int col = sourceColumnFromName(column);
    if (col < 0)
        return QVariant();
    const QModelIndex index = sourceModel()->index(0, col, QModelIndex());
    if (!index.isValid())
        return QVariant();
    return sourceModel()->data(index, Qt::DisplayRole);
}

int CMwSortFilterProxyModel::sourceColumnFromName(const QString &column) const
{
    const QAbstractItemModel *source = sourceModel();
    if (!source)
        return -1;
    const int count = source->columnCount();
    for (int c = 0; c < count; ++c) {
        if (source->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString() == column)
            return c;
    }
    return -1;
}

bool CMwSortFilterProxyModel::filterAcceptsRow(
    int source_row, const QModelIndex &source_parent) const
{
    Q_D(const CMwSortFilterProxyModel);
    bool result = true;
    if (d->conditions.isEmpty())
        return result;
    const QAbstractItemModel *source = sourceModel();
    if (!source)
        return result;

    // A filter pass starts at row 0: the lookup is renewed there, so a header
    // change that a model fails to announce is still seen by the next pass.
    if (source_row == 0 || !d->columnsValid || d->columnsModel != source)
        d->resolveColumns();

    return d->acceptsRow(source, source_row, source_parent);
}

bool CMwSortFilterProxyModelPrivate::acceptsRow(
    const QAbstractItemModel *source, int row, const QModelIndex &parent) const
{
    // A group (branch parent) row is no record: it shows while any of its
    // records passes, so that grouping never hides a record the filter keeps.
    const QModelIndex group = source->index(row, 0, parent);
    if (source->data(group, BranchParentRole).isValid()) {
        for (int r = 0, n = source->rowCount(group); r < n; ++r) {
            if (acceptsRow(source, r, group))
                return true;
        }
        return false;
    }

    // Strict left fold from true: no precedence, and every condition is
    // evaluated even when the result can no longer change.
    bool result = true;
    for (int i = 0; i < conditions.size(); ++i) {
        const int col = columns.at(i);
        if (col < 0)
            continue;
        const QVariant cell = source->data(source->index(row, col, parent), Qt::DisplayRole);
        const Compiled &c = compiled.at(i);
        const bool match = matches(i, cell);
        if (c.isAnd)
            result = result && match;
        else
            result = result || match;
    }
    return result;
}

QStringList CMwSortFilterProxyModel::operatorTexts()
{
    return VelFilterVocabulary::operatorTexts();
}

QStringList CMwSortFilterProxyModel::comparatorTexts()
{
    return VelFilterVocabulary::comparatorTexts();
}
