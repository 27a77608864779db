#ifndef VEL_QT_WIDGETS_CMWGRIDROLES_P_H
#define VEL_QT_WIDGETS_CMWGRIDROLES_P_H

// The grid roles live in the grid family's public header; this private
// header only gives the ready model a single include while that header is
// not part of the tree yet.
#if __has_include(<vel_qt_widgets/CMwGridRoles.h>)
#include <vel_qt_widgets/CMwGridRoles.h>
#else
#include <QtCore/QtGlobal>
#include <QtCore/qnamespace.h>
#ifndef VEL_QT_WIDGETS_MW_INT32_DEFINED
#define VEL_QT_WIDGETS_MW_INT32_DEFINED
typedef qint32 mw_int32;
#endif
enum EMwGridItemRole : int {
    BranchParentRole = Qt::UserRole + 1,
    StatCountRole = Qt::UserRole + 2,
    StatDistinctRole = Qt::UserRole + 3,
    StatMinRole = Qt::UserRole + 4,
    StatMaxRole = Qt::UserRole + 5,
    StatMeanRole = Qt::UserRole + 6,
    StatStDevRole = Qt::UserRole + 7,
    HeaderPathRole = Qt::UserRole + 8,
    HorizontalHeaderModelRole = Qt::UserRole + 9,
    VerticalHeaderModelRole = Qt::UserRole + 10,
    VisibleRowCountRole = Qt::UserRole + 11,
    RowNumberRole = Qt::UserRole + 12
};
#endif

#endif // VEL_QT_WIDGETS_CMWGRIDROLES_P_H
