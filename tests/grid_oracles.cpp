#include "grid_oracles.h"
#include "qt5variantoracle.h"

#include <algorithm>
#include <cmath>

namespace oracle {

namespace {

    bool statisticsLess(const QVariant &a, const QVariant &b)
    {
        if (!a.isValid() || !b.isValid())
            return a.isValid() && !b.isValid();
        if (a.userType() != b.userType())
            return a.userType() < b.userType();
        switch (a.userType()) {
        case QMetaType::Int:
            return a.toInt() < b.toInt();
        case QMetaType::UInt:
            return a.toUInt() < b.toUInt();
        case QMetaType::LongLong:
            return a.toLongLong() < b.toLongLong();
        case QMetaType::Double: {
            const double x = a.toDouble();
            const double y = b.toDouble();
            if (std::isnan(x) || std::isnan(y))
                return !std::isnan(x);
            return x < y;
        }
        case QMetaType::QString:
            return a.toString().localeAwareCompare(b.toString()) < 0;
        default:
            return false;
        }
    }

    bool isNumeric(const QVariant &value)
    {
        switch (value.userType()) {
        case QMetaType::Double:
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            return true;
        default:
            return false;
        }
    }

} // namespace

void generalStatistics(const QVector<QVariant> &values, double &count, double &distinct,
    double &min, double &max, double &mean, double &stdev)
{
    count = distinct = min = max = mean = stdev = 0;
    if (values.isEmpty())
        return;
    QVector<QVariant> sorted = values;
    std::stable_sort(sorted.begin(), sorted.end(), statisticsLess);
    distinct = 1;
    const bool numeric = isNumeric(sorted.first());
    double n = 0;
    double sum = 0;
    QVariant previous;
    for (const QVariant &v : qAsConst(sorted)) {
        if (Qt5Oracle::equal(v, QVariant()))
            continue;
        if (n == 0) {
            previous = v;
            min = max = v.toDouble();
        }
        if (!Qt5Oracle::equal(v, previous)) {
            previous = v;
            distinct += 1;
        }
        n += 1;
        if (numeric) {
            const double x = v.toDouble();
            const double d = x - mean;
            mean = mean + d / n;
            sum += x * d;
            if (x < min)
                min = x;
            if (x > max)
                max = x;
        }
    }
    count = n;
    if (numeric) {
        double variance = n != 0 ? sum / n : 0.0;
        if (variance < 0)
            variance = 0;
        stdev = std::sqrt(variance);
    }
}

QModelIndexList collectLeaves(const QModelIndex &cell)
{
    QModelIndexList result;
    if (!cell.isValid())
        return result;
    const QAbstractItemModel *model = cell.model();
    const int children = model->columnCount(cell);
    if (children == 0) {
        result.append(cell);
        return result;
    }
    for (int i = 0; i < children; ++i)
        result += collectLeaves(model->index(0, i, cell));
    return result;
}

QModelIndexList leavesOf(const QModelIndex &cell)
{
    QModelIndexList result;
    if (!cell.isValid())
        return result;
    const QAbstractItemModel *model = cell.model();
    const int children = model->columnCount(cell);
    for (int i = 0; i < children; ++i)
        result += collectLeaves(model->index(0, i, cell));
    return result;
}

QModelIndex walkLeafForSection(const CMwHierarchicalHeaderViewPrivate *d, int section)
{
    const QAbstractItemModel *headerModel = d->headerModel.data();
    if (!headerModel)
        return QModelIndex();
    // Along columns, for a vertical header too.
    int counter = -1;
    const int top = headerModel->columnCount();
    for (int i = 0; i < top; ++i) {
        const QModelIndexList leaves = collectLeaves(headerModel->index(0, i));
        if (counter + leaves.size() >= section)
            return section > counter ? leaves.at(section - counter - 1) : QModelIndex();
        counter += leaves.size();
    }
    return QModelIndex();
}

int walkSpanLength(const CMwHierarchicalHeaderViewPrivate *d, const QModelIndex &cell,
    const QModelIndex &leaf, int section)
{
    const QModelIndexList leaves = leavesOf(cell);
    if (leaves.isEmpty())
        return d->q_ptr->sectionSize(section);
    const int n = leaves.indexOf(leaf);
    int length = 0;
    for (int i = 0; i < leaves.size(); ++i)
        length += d->q_ptr->sectionSize(section - n + i);
    return length;
}

int walkSpanStart(const CMwHierarchicalHeaderViewPrivate *d, const QModelIndex &cell,
    const QModelIndex &leaf, int section, int sectionStart)
{
    const QModelIndexList leaves = leavesOf(cell);
    if (leaves.isEmpty())
        return sectionStart;
    const int n = leaves.indexOf(leaf);
    int start = sectionStart;
    for (int i = n - 1; i >= 0; --i)
        start -= d->q_ptr->sectionSize(section - n + i);
    return start;
}

int walkIndexInRoot(const CMwHierarchicalHeaderViewPrivate *d, const QModelIndex &leaf)
{
    return leavesOf(d->rootOf(leaf)).indexOf(leaf);
}

QModelIndex WalkingHeaderPrivate::leafForSection(int section) const
{
    return walk ? walkLeafForSection(this, section)
                : CMwHierarchicalHeaderViewPrivate::leafForSection(section);
}

int WalkingHeaderPrivate::spanLength(
    const QModelIndex &cell, const QModelIndex &leaf, int section) const
{
    return walk ? walkSpanLength(this, cell, leaf, section)
                : CMwHierarchicalHeaderViewPrivate::spanLength(cell, leaf, section);
}

int WalkingHeaderPrivate::spanStart(
    const QModelIndex &cell, const QModelIndex &leaf, int section, int sectionStart) const
{
    return walk ? walkSpanStart(this, cell, leaf, section, sectionStart)
                : CMwHierarchicalHeaderViewPrivate::spanStart(cell, leaf, section, sectionStart);
}

int WalkingHeaderPrivate::indexInRoot(const QModelIndex &leaf, int section) const
{
    return walk ? walkIndexInRoot(this, leaf)
                : CMwHierarchicalHeaderViewPrivate::indexInRoot(leaf, section);
}

} // namespace oracle
