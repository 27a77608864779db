#ifndef VEL_QT_WIDGETS_CMWHIERARCHICALGRIDVIEW_P_H
#define VEL_QT_WIDGETS_CMWHIERARCHICALGRIDVIEW_P_H

#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <QtCore/QPointer>

QT_BEGIN_NAMESPACE
class QStandardItemModel;
class QTableView;
QT_END_NAMESPACE

class CMwHierarchicalGridViewPrivate
{
    Q_DECLARE_PUBLIC(CMwHierarchicalGridView)

public:
    virtual ~CMwHierarchicalGridViewPrivate();

    CMwGridTreeView *dataView() const;
    QTableView *statisticTableView() const;
    CMwFilterWidget *filterTable() const;
    CMwVHeaderView *rowNumbers() const;
    // Gives the corner button the height of the body's header, so that the
    // row numbers below it start level with the body's rows.
    void fitResizeButton() const;

    CMwHierarchicalGridView *q_ptr = nullptr;
    QColor branchParentColor = Qt::lightGray;
    bool statisticsOnSelection = false;
    // Owned by the grid; the header only keeps a guarded pointer.
    QPointer<QStandardItemModel> headerModel;
    // The model whose layoutChanged() reaches onDataChanged().
    QPointer<QAbstractItemModel> sourceModel;
};

#endif // VEL_QT_WIDGETS_CMWHIERARCHICALGRIDVIEW_P_H
