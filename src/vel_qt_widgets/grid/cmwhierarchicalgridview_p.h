#ifndef VEL_QT_WIDGETS_CMWHIERARCHICALGRIDVIEW_P_H
#define VEL_QT_WIDGETS_CMWHIERARCHICALGRIDVIEW_P_H

#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <QtCore/QPointer>

QT_BEGIN_NAMESPACE
class QPushButton;
class QStandardItemModel;
class QTableView;
class QToolBar;
QT_END_NAMESPACE

class VEL_QT_WIDGETS_EXPORT CMwHierarchicalGridViewPrivate
{
    Q_DECLARE_PUBLIC(CMwHierarchicalGridView)

public:
    virtual ~CMwHierarchicalGridViewPrivate();

    // The children, one kind each, in the order the constructor makes them.
    CMwFilterWidget *createFilter();
    QPushButton *createResizeButton();
    // The body with its multi-level header and the row numbers beside it.
    CMwGridTreeView *createBody();
    QTableView *createStatisticsTable();
    void layOut(QToolBar *toolbar, CMwFilterWidget *filter, QPushButton *resizeButton,
        CMwGridTreeView *dataView, QTableView *statistics);
    void fillToolbar(QToolBar *toolbar, CMwFilterWidget *filter);
    // Connections between the children, the tab order and the event filters.
    void wire(QToolBar *toolbar, CMwFilterWidget *filter, QPushButton *resizeButton,
        CMwGridTreeView *dataView, QTableView *statistics);

    CMwGridTreeView *dataView() const;
    QTableView *statisticTableView() const;
    CMwFilterWidget *filterTable() const;
    CMwVHeaderView *rowNumbers() const;
    // The menu key or Shift+F10 in the body: runs the column menu for the
    // current column and says whether the event was used.
    bool handleBodyMenuKey(QEvent *event);
    // Gives the corner button the height of the body's header, so that the
    // row numbers below it start level with the body's rows.
    void fitResizeButton() const;
    // Back to the state before the first model: nothing shown, nothing
    // left that could reach a destroyed source or proxy.
    void showNoModel();

    CMwHierarchicalGridView *q_ptr = nullptr;
    QColor branchParentColor = Qt::lightGray;
    bool statisticsOnSelection = false;
    // Owned by the grid; the header only keeps a guarded pointer.
    QPointer<QStandardItemModel> headerModel;
    // The model whose layoutChanged() reaches onDataChanged().
    QPointer<QAbstractItemModel> sourceModel;
    // The proxy shown now, only compared with the sender of destroyed()
    // (a guarded pointer is already null then).
    const QObject *shownProxy = nullptr;
};

#endif // VEL_QT_WIDGETS_CMWHIERARCHICALGRIDVIEW_P_H
