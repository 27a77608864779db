#ifndef VEL_TESTS_GRID_ORACLES_H
#define VEL_TESTS_GRID_ORACLES_H

// Plain, slow versions of what the grid computes in faster ways, for the
// tests (and benchmarks) to hold the library's answers against.

#include "cmwhierarchicalheaderview_p.h"

#include <QtCore/QModelIndexList>
#include <QtCore/QVariant>
#include <QtCore/QVector>

namespace oracle {

// QVectorCalcStatistics written out literally: a stable sort with the
// statistics' ordering (invalid values after every other value, NaN after
// every other double, other types of one kind in their
// order in \a values), then the walk over the non-empty values.
void generalStatistics(const QVector<QVariant> &values, double &count, double &distinct,
    double &min, double &max, double &mean, double &stdev);

// The header tree walked literally, from the start, for every question.

// For an invalid cell nothing; for a leaf the cell itself; otherwise the
// leaves under each child in column order.
QModelIndexList collectLeaves(const QModelIndex &cell);
// The leaves under a cell's children; none for a leaf.
QModelIndexList leavesOf(const QModelIndex &cell);
// The leaf of \a section: the leaves counted depth-first, in column order.
QModelIndex walkLeafForSection(const CMwHierarchicalHeaderViewPrivate *d, int section);
// The extent along the header of \a cell, on the path of \a leaf (section \a section).
int walkSpanLength(const CMwHierarchicalHeaderViewPrivate *d, const QModelIndex &cell,
    const QModelIndex &leaf, int section);
int walkSpanStart(const CMwHierarchicalHeaderViewPrivate *d, const QModelIndex &cell,
    const QModelIndex &leaf, int section, int sectionStart);
// Index of \a leaf among the leaves of its top-level cell, -1 for a top-level leaf.
int walkIndexInRoot(const CMwHierarchicalHeaderViewPrivate *d, const QModelIndex &leaf);

// A header's private object that answers by the plain walk while \a walk
// is set, and from the library's leaf cache otherwise; hand it to the
// header's protected constructor.
class WalkingHeaderPrivate : public CMwHierarchicalHeaderViewPrivate
{
public:
    bool walk = false;

    QModelIndex leafForSection(int section) const override;
    int spanLength(const QModelIndex &cell, const QModelIndex &leaf, int section) const override;
    int spanStart(const QModelIndex &cell, const QModelIndex &leaf, int section,
        int sectionStart) const override;
    int indexInRoot(const QModelIndex &leaf, int section) const override;
};

} // namespace oracle

#endif // VEL_TESTS_GRID_ORACLES_H
