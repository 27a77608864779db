#ifndef VEL_QT_WIDGETS_CMWGRIDROLES_H
#define VEL_QT_WIDGETS_CMWGRIDROLES_H

#include <QtCore/QtGlobal>
#include <QtCore/qnamespace.h>

/*!
    \file CMwGridRoles.h
    \brief Item-model roles through which an application model tells the
    grid what it cannot compute itself, and the integer type of the grid's
    column signals.

    An application model answers these roles from data(), headerData() or
    data(QModelIndex()) as listed beside each value, for example

    \code
    QVariant MyModel::data(const QModelIndex &index, int role) const
    {
        if (role == RowNumberRole)
            return index.row();            // the row-number header shows row + 1
        if (role == BranchParentRole && isGroupRow(index))
            return true;                   // drawn as one band across the grid
        ...
    }
    \endcode
*/

/*! 32-bit signed integer of the grid's column signals and slots. */
typedef qint32 mw_int32;

/*! Roles of the grid's item models; all lie above Qt::UserRole, which the
    header model itself uses to mark rotated captions. */
enum EMwGridItemRole : int {
    /*! Item data: any valid value marks the row as a group (branch parent) row. */
    BranchParentRole = Qt::UserRole + 1,
    /*! data(index(0, column)): count over the whole column. */
    StatCountRole = Qt::UserRole + 2,
    /*! data(index(0, column)): number of distinct values in the whole column. */
    StatDistinctRole = Qt::UserRole + 3,
    /*! data(index(0, column)): minimum of the whole column. */
    StatMinRole = Qt::UserRole + 4,
    /*! data(index(0, column)): maximum of the whole column. */
    StatMaxRole = Qt::UserRole + 5,
    /*! data(index(0, column)): mean of the whole column. */
    StatMeanRole = Qt::UserRole + 6,
    /*! data(index(0, column)): standard deviation of the whole column. */
    StatStDevRole = Qt::UserRole + 7,
    /*! Horizontal headerData(column): QStringList of captions from the top
        header level down to the column's own caption. */
    HeaderPathRole = Qt::UserRole + 8,
    /*! data(QModelIndex()): a QObject* holding a ready-made horizontal header model. */
    HorizontalHeaderModelRole = Qt::UserRole + 9,
    /*! data(QModelIndex()): a QObject* holding a ready-made vertical header model. */
    VerticalHeaderModelRole = Qt::UserRole + 10,
    /*! Vertical headerData(0): number of rows the row-number header shows. */
    VisibleRowCountRole = Qt::UserRole + 11,
    /*! Item data: zero-based row number of the item; shown plus one. */
    RowNumberRole = Qt::UserRole + 12
};

#endif // VEL_QT_WIDGETS_CMWGRIDROLES_H
