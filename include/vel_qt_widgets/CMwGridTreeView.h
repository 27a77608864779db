#ifndef VEL_QT_WIDGETS_CMWGRIDTREEVIEW_H
#define VEL_QT_WIDGETS_CMWGRIDTREEVIEW_H

#include "vel_qt_widgets_export.h"

#include <vel_qt_widgets/CMwGridRoles.h>

#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QTreeView>

/*!
    \brief The grid's body: a QTreeView that still shows one empty row when
    its model has no rows.

    Paint it through CMwGridDelegate to make the tree look like a grid.

    \code
    auto *body = new CMwGridTreeView(parent);
    body->setItemDelegate(new CMwGridDelegate(body));
    body->setModel(model);
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwGridTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit CMwGridTreeView(QWidget *parent = nullptr);
    ~CMwGridTreeView() override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Q_DISABLE_COPY(CMwGridTreeView)
};

/*!
    \brief Paints a tree view as a spreadsheet grid.

    Group rows (items with a valid BranchParentRole value) become one band
    across the whole row in the colBranchParent colour of the grid that holds
    the view (light grey otherwise), with the caption of column 0. Other rows
    alternate the palette's Window and AlternateBase colours from the view's
    left edge, the last column's cells run on to the right edge, and empty
    cells fill the space below the last row.
*/
class VEL_QT_WIDGETS_EXPORT CMwGridDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit CMwGridDelegate(QObject *parent = nullptr);
    ~CMwGridDelegate() override;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    Q_DISABLE_COPY(CMwGridDelegate)
};

#endif // VEL_QT_WIDGETS_CMWGRIDTREEVIEW_H
