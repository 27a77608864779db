#ifndef VEL_TESTS_GRID_ORACLES_H
#define VEL_TESTS_GRID_ORACLES_H

// Plain, slow versions of what the grid computes in faster ways, for the
// tests (and benchmarks) to hold the library's answers against.

#include <QtCore/QVariant>
#include <QtCore/QVector>

namespace oracle {

// QVectorCalcStatistics written out literally: a stable sort with the
// statistics' ordering (invalid values after every other value, NaN after
// every other double, other types of one kind in their
// order in \a values), then the walk over the non-empty values.
void generalStatistics(const QVector<QVariant> &values, double &count, double &distinct,
    double &min, double &max, double &mean, double &stdev);

} // namespace oracle

#endif // VEL_TESTS_GRID_ORACLES_H
