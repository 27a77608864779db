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
    void onComboColumnChanged(int index);
    void onComboComparatorChanged(int index);
    void onComboOperatorChanged(int index);
    /*! Moves every selected row one up. */
    void onButtonUp();
    /*! Moves every selected row one down. */
    void onButtonDown();
    /*! Removes the selected condition rows (never the placeholder). */
    void onButtonRemove();
    void onItemPressed(QTableWidgetItem *pItem);
    void onItemChanged(QTableWidgetItem *pItem);
    void onComboOperatorPopupWillShow(bool &bShow);
    void onComboColumnPopupWillShow(bool &bShow);
    void onComboComparatorPopupWillShow(bool &bShow);
    /*! Switches filtering on or off. */
    void onActivateFilter(bool bEnable);

protected:
    CMwFilterWidget(CMwFilterWidgetPrivate *d, QWidget *parent);

    void addRow(int row);
    void enableRow(int row, bool enable);
    bool isRowEnabled(int row);
    bool isRowSelected(int row);
    void moveRow(int row, bool up);
    QVector<int> selectedRows();
    int rowFromRowWidget(QWidget *widget, int column);
    int rowFromRowItem(QTableWidgetItem *item, int column);
    void setRowData(int row, const QVector<QVariant> &data);
    QVector<QVariant> takeRowData(int row);
    void onFilterChanged(bool active);

    // Named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwFilterWidgetPrivate> d_vel;

private:
    void popupWillShow(bool &bShow, int column);
    void updateMaximumHeight();

    Q_DECLARE_PRIVATE_D(d_vel, CMwFilterWidget)
    Q_DISABLE_COPY(CMwFilterWidget)
};

#endif // VEL_QT_WIDGETS_CMWFILTERWIDGET_H
