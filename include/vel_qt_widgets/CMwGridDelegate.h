#ifndef VEL_QT_WIDGETS_CMWGRIDDELEGATE_H
#define VEL_QT_WIDGETS_CMWGRIDDELEGATE_H

#include "vel_qt_widgets_export.h"

#include <vel_qt_widgets/CMwGridRoles.h>

#include <QtWidgets/QStyledItemDelegate>

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

#endif // VEL_QT_WIDGETS_CMWGRIDDELEGATE_H
