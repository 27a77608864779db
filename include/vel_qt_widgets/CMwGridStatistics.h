#ifndef VEL_QT_WIDGETS_CMWGRIDSTATISTICS_H
#define VEL_QT_WIDGETS_CMWGRIDSTATISTICS_H

#include "vel_qt_widgets_export.h"

#include <vel_qt_widgets/CMwStatisticsDelegate.h>
#include <vel_qt_widgets/CMwStatisticsItemModel.h>

#include <QtCore/QVariant>
#include <QtCore/QVector>

/*!
    \file CMwGridStatistics.h
    \brief The statistics of the grid: the function that computes them and
    the model and delegate of the statistics table.
*/

/*!
    \brief Computes the six statistics the grid shows under each column.

    All six results are outputs and start at 0; an empty \a values leaves
    them all 0. The values are ordered (same types by value: Int, UInt,
    LongLong and Double numerically, String with
    QString::localeAwareCompare; other types of one kind keep their order in
    \a values; different types by type number) and walked in that order,
    skipping invalid (empty) cells:

    - \a count: the number of non-empty values;
    - \a distinct: 1 plus the number of changes between neighbours in that
      order (QVariant equality), so 1 also when every cell is empty;
    - \a min, \a max: for a numeric column (the first value in order is a
      Double, Int, LongLong, UInt or ULongLong) the extremes, otherwise the
      first non-empty value's toDouble();
    - \a mean, \a stdev: numeric columns only (0 otherwise); the spread is
      accumulated as the sum of x times (x minus the running mean before x),
      so 1, 2, 3 give 2 and 1.5811..., and one value x gives |x|.

    Invalid values sort after every other value and NaN after every other
    double, so a column with empty cells or NaNs is still ordered as far as
    it can be; the sort stays within the vector whatever the values are.
*/
VEL_QT_WIDGETS_EXPORT void QVectorCalcStatistics(const QVector<QVariant> &values, double &count,
    double &distinct, double &min, double &max, double &mean, double &stdev);

#endif // VEL_QT_WIDGETS_CMWGRIDSTATISTICS_H
