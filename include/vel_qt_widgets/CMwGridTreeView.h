#ifndef VEL_QT_WIDGETS_CMWGRIDTREEVIEW_H
#define VEL_QT_WIDGETS_CMWGRIDTREEVIEW_H

#include "vel_qt_widgets_export.h"

#include <vel_qt_widgets/CMwGridDelegate.h>

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
    // The composite lays its body out again when the header's levels change;
    // QTreeView keeps updateGeometries() protected.
    friend class CMwHierarchicalGridView;

    Q_DISABLE_COPY(CMwGridTreeView)
};

#endif // VEL_QT_WIDGETS_CMWGRIDTREEVIEW_H
