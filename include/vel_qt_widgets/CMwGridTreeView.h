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
    /*! A tree view like QTreeView; set a CMwGridDelegate to paint it as a grid. */
    explicit CMwGridTreeView(QWidget *parent = nullptr);
    ~CMwGridTreeView() override;

protected:
    /*! Reimplemented: with a model of no rows, paints one empty row (each
        column's cell through the item delegate) instead of nothing. */
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
    /*! A delegate for a CMwGridTreeView (or any tree view). */
    explicit CMwGridDelegate(QObject *parent = nullptr);
    ~CMwGridDelegate() override;

    /*! Paints the cell \a index as the class description says; an invalid
        \a index paints an empty cell. */
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    Q_DISABLE_COPY(CMwGridDelegate)
};

#endif // VEL_QT_WIDGETS_CMWGRIDTREEVIEW_H
