#ifndef VEL_QT_WIDGETS_CMWHIERARCHICALGRIDVIEW_H
#define VEL_QT_WIDGETS_CMWHIERARCHICALGRIDVIEW_H

#include "vel_qt_widgets_export.h"

// The whole grid family comes with the composite's header, so that a form
// (or an application) needs this one include.
#include <vel_qt_widgets/CMwFilterWidget.h>
#include <vel_qt_widgets/CMwGridRoles.h>
#include <vel_qt_widgets/CMwGridStatistics.h>
#include <vel_qt_widgets/CMwGridTableModel.h>
#include <vel_qt_widgets/CMwGridTreeView.h>
#include <vel_qt_widgets/CMwHierarchicalHeaderView.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>
#include <vel_qt_widgets/CMwVHeaderView.h>

#include <QtCore/QItemSelection>
#include <QtCore/QScopedPointer>
#include <QtGui/QColor>
#include <QtWidgets/QWidget>

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
class QHeaderView;
QT_END_NAMESPACE

class CMwHierarchicalGridViewPrivate;

/*!
    \brief A sortable, filterable tree-table with a multi-level column
    header, row numbers, a six-row statistics table and a toolbar.

    The grid puts a CMwSortFilterProxyModel between the model and its body,
    derives the header levels from the model's HeaderPathRole, shows the
    RowNumberRole of the rows beside them and the model's statistics roles
    (or, with several rows selected, statistics over the selection) below.
    CMwGridTableModel answers all of these roles.

    The children are found by object name whenever needed ("MainToolbar",
    "FilterTable", "resizeButton", "VerticalHeader", "DataView",
    "statisticTableView"); an operation whose child is missing does nothing.

    \code
    auto *grid = new CMwHierarchicalGridView(parent);
    auto *model = new CMwGridTableModel(grid);
    model->loadCsv(fileName);
    grid->setModel(model);
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwHierarchicalGridView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor colBranchParent READ colorBranchParent WRITE setColorBranchParent
                   DESIGNABLE true STORED true)

public:
    explicit CMwHierarchicalGridView(QWidget *parent = nullptr);
    ~CMwHierarchicalGridView() override;

    /*! Shows \a model through a new filter proxy; null is ignored. The
        previous proxy is deleted. */
    void setModel(QAbstractItemModel *model);
    /*! The body's model (the proxy), or null. */
    QAbstractItemModel *model() const;
    /*! The body's (multi-level) header, or null. */
    QHeaderView *horizontalHeader() const;
    /*! The row-number header, or null. */
    QHeaderView *verticalHeader() const;
    /*! The body's width of \a column, 0 without a body. */
    int columnWidth(int column) const;
    /*! Refreshes the statistics table and the row numbers. */
    void updateControl();

    /*! Band colour of group rows (light grey by default). */
    QColor colorBranchParent() const;
    void setColorBranchParent(const QColor &color);
    /*! The same as setColorBranchParent(): code that uic generates from a
        form calls the setter by the property's name. */
    void setColBranchParent(const QColor &color) { setColorBranchParent(color); }

public Q_SLOTS:
    /*! Rebuilds header model, row numbers and statistics, in this order. */
    void onDataChanged();
    void onTreeGeometriesChanged();
    /*! Shows or hides column \a iCol of the statistics table. */
    void onShowColumn(mw_int32 iCol, bool bShow);
    void onExpanded(QModelIndex index);
    /*! Recomputes the statistics over a selection of two rows or more, and
        back to the model's statistics when such a selection ends. */
    void onTreeViewSelectionChanged(QItemSelection selected, QItemSelection deselected);
    void onSortIndicatorChanged(int logicalIndex, Qt::SortOrder order);
    /*! Gives statistics column \a logicalIndex the body's new width. */
    void sectionResized(int logicalIndex, int oldSize, int newSize);
    void onResizeToContents();
    /*! Shows the statistics table if hidden, hides it if shown. */
    void showStatistics();
    void activateFilter();
    /*! Shows the filter editor if hidden (starting its first row), hides it if shown. */
    void editFilter();
    void onFilterChanged();

protected:
    CMwHierarchicalGridView(CMwHierarchicalGridViewPrivate &dd, QWidget *parent);

    /*! Builds the header model from the columns' HeaderPathRole. */
    void createHierarchicalHeaderItemModel();
    void updateVerticalHeader();
    /*! Rebuilds the statistics table. */
    void updateStatisticDataModel();
    bool eventFilter(QObject *watched, QEvent *event) override;

    // Named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwHierarchicalGridViewPrivate> d_vel;

private:
    void init();

    Q_DECLARE_PRIVATE_D(d_vel, CMwHierarchicalGridView)
    Q_DISABLE_COPY(CMwHierarchicalGridView)
};

#endif // VEL_QT_WIDGETS_CMWHIERARCHICALGRIDVIEW_H
