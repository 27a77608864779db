#ifndef VEL_QT_WIDGETS_CMWFILTERWIDGET_H
#define VEL_QT_WIDGETS_CMWFILTERWIDGET_H

#include "vel_qt_widgets_export.h"

#include <QtCore/QScopedPointer>
#include <QtCore/QVariant>
#include <QtCore/QVector>
#include <QtWidgets/QTableWidget>

class CMwFilterWidgetPrivate;
class CMwSortFilterProxyModel;

/*!
    \brief The editor of a row filter: one table row per condition.

    Each row holds a check box that switches the condition on or off, an
    operator picker ("AND"/"OR"), a column picker offering the reference
    model's header texts, a comparator picker and an editable value. The last
    row is always a placeholder whose column has not been chosen yet;
    choosing one turns it into a condition and appends a new placeholder.

    The widget filters nothing itself: while filtering is switched on
    (onActivateFilter()) it hands the filter list of its enabled rows to the
    reference model (CMwSortFilterProxyModel::setFilterRows()) and emits
    filterChanged() whenever that list really changes.

    \code
    auto *proxy = new CMwSortFilterProxyModel(this);
    proxy->setSourceModel(model);
    auto *editor = new CMwFilterWidget(this);
    editor->setRefModel(proxy);
    editor->defineFilter();
    editor->onActivateFilter(true);
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwFilterWidget : public QTableWidget
{
    Q_OBJECT

public:
    /*! An empty editor; call setRefModel() and defineFilter() to use it. */
    explicit CMwFilterWidget(QWidget *parent = nullptr);
    ~CMwFilterWidget() override;

    /*! Sets the model whose columns the rows offer and which receives the filter. */
    void setRefModel(CMwSortFilterProxyModel *model);
    /*! Adds the first (placeholder) row to an empty table; otherwise does nothing. */
    void defineFilter();
    /*! Appends the filter rows of all enabled condition rows to \a filter. */
    void takeFilter(QVector<QVector<QVariant>> &filter);

Q_SIGNALS:
    /*! The filter handed to the reference model has changed. */
    void filterChanged();

public Q_SLOTS:
    /*! A column picker changed: enables its row, fills the value with the
        column's first value and, if it was the placeholder's, appends a new
        placeholder. \a index is not used; the sender tells the row. */
    void onComboColumnChanged(int index);
    /*! A comparator picker changed; the filter follows. */
    void onComboComparatorChanged(int index);
    /*! An operator picker changed; the filter follows. */
    void onComboOperatorChanged(int index);
    /*! Moves every selected row one up. */
    void onButtonUp();
    /*! Moves every selected row one down. */
    void onButtonDown();
    /*! Removes the selected condition rows (never the placeholder). */
    void onButtonRemove();
    /*! A check box was pressed: enables or disables the rest of its row. */
    void onItemPressed(QTableWidgetItem *pItem);
    /*! A cell changed (check state or value); the filter follows. */
    void onItemChanged(QTableWidgetItem *pItem);
    /*! Lets an operator picker open only in the selected row (see
        onComboColumnPopupWillShow()). */
    void onComboOperatorPopupWillShow(bool &bShow);
    /*! Lets a column picker open only in the selected row: the first click
        on a picker of another row selects that row and keeps the popup
        closed (\a bShow is set accordingly). */
    void onComboColumnPopupWillShow(bool &bShow);
    /*! Lets a comparator picker open only in the selected row (see
        onComboColumnPopupWillShow()). */
    void onComboComparatorPopupWillShow(bool &bShow);
    /*! Switches filtering on or off. */
    void onActivateFilter(bool bEnable);

protected:
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwFilterWidget(CMwFilterWidgetPrivate *d, QWidget *parent);

    /*! Inserts a placeholder row at \a row (-1 appends); nothing without a reference model. */
    void addRow(int row);
    /*! Enables or disables the cells of \a row; the check box is never disabled. */
    void enableRow(int row, bool enable);
    /*! Whether the check box of \a row is checked. */
    bool isRowEnabled(int row);
    /*! Whether \a row holds the first selected cell. */
    bool isRowSelected(int row);
    /*! Swaps the data of \a row with the row above (\a up) or below, and selects it. */
    void moveRow(int row, bool up);
    /*! The rows of all selected cells, each once, in selection order. */
    QVector<int> selectedRows();
    /*! The row whose cell widget in \a column is \a widget, or -1. */
    int rowFromRowWidget(QWidget *widget, int column);
    /*! The row whose item in \a column is \a item, or -1. */
    int rowFromRowItem(QTableWidgetItem *item, int column);
    /*! Writes one filter row back into the cells of \a row. */
    void setRowData(int row, const QVector<QVariant> &values);
    /*! The filter row of \a row: one display value per column. */
    QVector<QVariant> takeRowData(int row);
    /*! Hands the reference model the current filter (empty when \a active
        is false) and emits filterChanged() if it differs from the last one. */
    void onFilterChanged(bool active);

    //! Private data; named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwFilterWidgetPrivate> d_vel;

private:
    void popupWillShow(bool &bShow, int column);
    void updateMaximumHeight();

    Q_DECLARE_PRIVATE_D(d_vel, CMwFilterWidget)
    Q_DISABLE_COPY(CMwFilterWidget)
};

#endif // VEL_QT_WIDGETS_CMWFILTERWIDGET_H
