#ifndef VEL_QT_WIDGETS_QVECTORCALCSTATISTICS_P_H
#define VEL_QT_WIDGETS_QVECTORCALCSTATISTICS_P_H

#include "gridtablecells_p.h"

#include <vel_qt_widgets/vel_qt_widgets_export.h>

#include <QtCore/QVariant>
#include <QtCore/QVector>

#include <algorithm>
#include <utility>
#include <vector>

namespace vel {

// Merge sort that only ever reads and writes inside [first, first + n):
// every loop is bounded by indices, never by what less() answers, so an
// inconsistent comparator (NaN, address order) yields some permutation
// instead of undefined behaviour. Stable for a consistent comparator.
template<typename T, typename Less>
void boundedMergeSort(T *first, qint64 n, Less less)
{
    if (n < 2)
        return;
    const qint64 run = 16;
    for (qint64 lo = 0; lo < n; lo += run) {
        const qint64 hi = std::min(lo + run, n);
        for (qint64 i = lo + 1; i < hi; ++i) {
            T x = std::move(first[i]);
            qint64 j = i;
            while (j > lo && less(x, first[j - 1])) {
                first[j] = std::move(first[j - 1]);
                --j;
            }
            first[j] = std::move(x);
        }
    }
    if (n <= run)
        return;
    std::vector<T> buffer(static_cast<size_t>(n));
    T *src = first;
    T *dst = buffer.data();
    for (qint64 width = run; width < n; width *= 2) {
        for (qint64 lo = 0; lo < n; lo += 2 * width) {
            const qint64 mid = std::min(lo + width, n);
            const qint64 hi = std::min(lo + 2 * width, n);
            qint64 i = lo;
            qint64 j = mid;
            qint64 k = lo;
            // Already in order: a plain copy keeps sorted input linear.
            if (mid < hi && !less(src[mid], src[mid - 1])) {
                while (i < hi)
                    dst[k++] = std::move(src[i++]);
                continue;
            }
            while (i < mid && j < hi) {
                if (less(src[j], src[i]))
                    dst[k++] = std::move(src[j++]);
                else
                    dst[k++] = std::move(src[i++]);
            }
            while (i < mid)
                dst[k++] = std::move(src[i++]);
            while (j < hi)
                dst[k++] = std::move(src[j++]);
        }
        std::swap(src, dst);
    }
    if (src != first)
        std::move(src, src + n, first);
}

// \a values as positions into it, in the order in which
// QVectorCalcStatistics walks them, cut where that walk counts a new
// distinct value: one run per distinct value, then one run of the empty
// (invalid) values if there are any. The ready model groups rows by these
// runs, so that its groups and "Distinct" agree.
VEL_QT_WIDGETS_EXPORT QVector<QVector<int>> statisticsRuns(const QVector<QVariant> &values);

// How often texts had to be sorted with localeAwareCompare itself because
// the order by collation keys did not hold (the slow path), counted since
// the library was loaded.
VEL_QT_WIDGETS_EXPORT int textOrderFallbacks();

// How often texts were put in order by their primary collation weights
// (ties by their sort keys), the fast path; and how often that order was
// tried but did not hold, and the texts were ordered by full sort keys
// instead. Collators that reorder scripts, compare numbers by value or shift
// punctuation take the sort keys without trying.
VEL_QT_WIDGETS_EXPORT int textWeightOrders();
VEL_QT_WIDGETS_EXPORT int textWeightOrderFallbacks();

// How often texts were put in code-unit order (the C locale's) by a radix
// sort of their units.
VEL_QT_WIDGETS_EXPORT int textCodeUnitOrders();

// Numbers for the texts among some values, worked out where the values
// live: per value, a number that two values share exactly when both are
// texts and equal (-1 for a value that is not a text), all below count.
struct TextNumbers
{
    std::vector<int> ofCell;
    int count = 0;
};

// QVectorCalcStatistics of *values[0], *values[1], ...: the same results,
// without copying the values into a vector first, and without hashing the
// texts when \a textNumbers (if given) numbers them. \a inStorageOrder (if
// given) holds the same cells in the order in which reading them is
// cheapest; the results do not depend on it.
VEL_QT_WIDGETS_EXPORT void calcStatistics(const std::vector<const QVariant *> &values,
    const TextNumbers *textNumbers, const std::vector<const QVariant *> *inStorageOrder,
    double &count, double &distinct, double &min, double &max, double &mean, double &stdev);

// QVectorCalcStatistics of cells of a column held typed (ints, doubles or
// UTF-8 texts), read from its arrays: the same results to the bit, without
// a QVariant a cell. \a records (if not null, \a size of them) lists the
// records to read, in order; otherwise the column's records 0 .. size - 1
// are read. \a inStorageOrder (if given) holds the same records ascending,
// the cheapest order to read them; the results do not depend on it.
// Returns false, having set nothing, for a column held as QVariants.
VEL_QT_WIDGETS_EXPORT bool typedStatistics(const GridTableCells::Typed &column, const int *records,
    int size, const int *inStorageOrder, double &count, double &distinct, double &min, double &max,
    double &mean, double &stdev);

// The six statistics of a column, and whether they could be computed from
// its typed arrays.
struct StatisticsResult
{
    double count = 0, distinct = 0, min = 0, max = 0, mean = 0, stdev = 0;
    bool done = false;
};

// typedStatistics() of each of \a columns over the same records, in
// \a results (done false for a column held as QVariants): the same results
// to the bit. The walks of double columns, each a chain of dependent
// divisions, run a few side by side.
VEL_QT_WIDGETS_EXPORT void typedStatistics(const std::vector<GridTableCells::Typed> &columns,
    const int *records, int size, const int *inStorageOrder,
    std::vector<StatisticsResult> &results);

// True when \a value's type counts as numeric for the statistics.
bool isStatisticsNumeric(const QVariant &value);

} // namespace vel

#endif // VEL_QT_WIDGETS_QVECTORCALCSTATISTICS_P_H
