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
    /*! Band colour of group rows (light grey by default). */
    Q_PROPERTY(QColor colBranchParent READ colorBranchParent WRITE setColorBranchParent
            DESIGNABLE true STORED true)

public:
    /*! An empty grid with its toolbar, filter editor (hidden), headers, body
        and statistics table. */
    explicit CMwHierarchicalGridView(QWidget *parent = nullptr);
    ~CMwHierarchicalGridView() override;

    /*! Shows \a model through a new filter proxy; null is ignored. The
        previous proxy is deleted. When \a model (or the proxy) is destroyed
        while shown, the grid drops the proxy and is empty again, as before
        its first model; a later setModel() shows a new model as usual. */
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
    /*! Sets the band colour of group rows; the body uses it at its next paint. */
    void setColorBranchParent(const QColor &color);
    /*! The same as setColorBranchParent(): code that uic generates from a
        form calls the setter by the property's name. */
    void setColBranchParent(const QColor &color) { setColorBranchParent(color); }

public Q_SLOTS:
    /*! Rebuilds header model, row numbers and statistics, in this order. */
    void onDataChanged();
    /*! Reserved for the body's geometry changes; does nothing. */
    void onTreeGeometriesChanged();
    /*! Shows or hides column \a iCol of the statistics table. */
    void onShowColumn(mw_int32 iCol, bool bShow);
    /*! Reserved for expanded group rows; does nothing. */
    void onExpanded(QModelIndex index);
    /*! Recomputes the statistics over a selection of two rows or more, and
        back to the model's statistics when such a selection ends. */
    void onTreeViewSelectionChanged(QItemSelection selected, QItemSelection deselected);
    /*! The body was sorted: refreshes statistics and row numbers (updateControl()). */
    void onSortIndicatorChanged(int logicalIndex, Qt::SortOrder order);
    /*! Gives statistics column \a logicalIndex the body's new width. */
    void sectionResized(int logicalIndex, int oldSize, int newSize);
    /*! Resizes every column of the body to its contents. */
    void onResizeToContents();
    /*! Shows the statistics table if hidden, hides it if shown. */
    void showStatistics();
    /*! Reserved; the toolbar's filter switch goes to the filter editor directly. */
    void activateFilter();
    /*! Shows the filter editor if hidden (starting its first row), hides it if shown. */
    void editFilter();
    /*! Reserved for the filter editor's filterChanged(); does nothing. */
    void onFilterChanged();

protected:
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwHierarchicalGridView(CMwHierarchicalGridViewPrivate *d, QWidget *parent);

    /*! Builds the header model from the columns' HeaderPathRole. */
    void createHierarchicalHeaderItemModel();
    /*! Gives the row-number header the body's model and row height, and the
        resize button the body header's height. */
    void updateVerticalHeader();
    /*! Rebuilds the statistics table. */
    void updateStatisticDataModel();
    /*! Keeps the statistics table six rows high, plus its horizontal
        scroll bar while that is shown. */
    bool eventFilter(QObject *watched, QEvent *event) override;

    //! Private data; named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwHierarchicalGridViewPrivate> d_vel;

private Q_SLOTS:
    void onSourceModelDestroyed();
    void onProxyDestroyed();

private:
    void init();

    Q_DECLARE_PRIVATE_D(d_vel, CMwHierarchicalGridView)
    Q_DISABLE_COPY(CMwHierarchicalGridView)
};

#endif // VEL_QT_WIDGETS_CMWHIERARCHICALGRIDVIEW_H
