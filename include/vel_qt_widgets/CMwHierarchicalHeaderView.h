#ifndef VEL_QT_WIDGETS_CMWHIERARCHICALHEADERVIEW_H
#define VEL_QT_WIDGETS_CMWHIERARCHICALHEADERVIEW_H

#include "vel_qt_widgets_export.h"

#include <vel_qt_widgets/CMwGridRoles.h>

#include <QtCore/QScopedPointer>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStyleOptionHeader>

class CMwHierarchicalHeaderViewPrivate;

/*!
    \brief A QHeaderView that draws a multi-level header from a separate
    header model, and offers the grid's column context menu.

    The header model is a tree that grows sideways: the top-level cells are
    index(0, i) of the root, the children of a cell are index(0, i, cell).
    Cells without children are leaves; the k-th leaf, counted depth-first
    from the left, is the cell of logical section k. Every ancestor of a leaf
    is drawn above it (beside it for a vertical header), spanning the sections
    of all its leaves.

    Header cells may carry Qt::UserRole (rotated caption), Qt::SizeHintRole
    (minimum size), Qt::FontRole, Qt::ForegroundRole and Qt::BackgroundRole.

    \code
    auto *header = new CMwHierarchicalHeaderView(Qt::Horizontal, tree);
    tree->setHeader(header);
    tree->setModel(itemModel);          // may supply HorizontalHeaderModelRole
    header->setHeaderModel(captions);   // otherwise set it afterwards
    \endcode

    The header never owns the header model and forgets it when it is
    destroyed. Sections are assumed to stay in model order.
*/
class VEL_QT_WIDGETS_EXPORT CMwHierarchicalHeaderView : public QHeaderView
{
    Q_OBJECT

public:
    /*! A header in \a orientation without header model; its sections stay
        blank until setHeaderModel() is called. */
    explicit CMwHierarchicalHeaderView(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwHierarchicalHeaderView() override;

    /*! Replaces the header model (not owned). Neither repaints nor
        re-measures; call after setModel(), which drops it otherwise. Later
        changes of the header model's data (a caption, a font, a rotation)
        make the header measure its cells again. */
    void setHeaderModel(QAbstractItemModel *model);
    /*! The current header model, or null. */
    QAbstractItemModel *headerModel() const;

    /*! Runs the column context menu ("Hide Column", "Show All Columns",
        "Group By", "Ungroup") for \a logicalIndex, placed under the
        section's cell: the keyboard's way to the menu a right click opens. */
    void showColumnMenu(int logicalIndex);

    /*! The style option every cell of \a logicalIndex is drawn and measured with. */
    QStyleOptionHeader styleOptionForCell(int logicalIndex) const;

    /*! Sets the item model and adopts its HorizontalHeaderModelRole (or
        VerticalHeaderModelRole) object as header model; a header model set
        earlier is dropped. */
    void setModel(QAbstractItemModel *model) override;

Q_SIGNALS:
    /*! "Group By" was chosen on \a iLogicalIndex, or "Ungroup" (-1). */
    void groupByColumn(mw_int32 iLogicalIndex);
    /*! "Hide Column" (\a bShow false) or, once per section, "Show All Columns". */
    void showColumn(mw_int32 iCol, bool bShow);

public Q_SLOTS:
    /*! Repaints the spanning cells left of (above) \a logicalIndex. */
    void onSectionResized(int logicalIndex);
    /*! Runs the column context menu for the section at \a pos. */
    void onCustomMenuRequested(QPoint pos);

protected:
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwHierarchicalHeaderView(
        CMwHierarchicalHeaderViewPrivate *d, Qt::Orientation orientation, QWidget *parent);

    /*! Reimplemented to draw the leaf of \a logicalIndex with all its
        ancestors stacked above (beside) it; blank without a leaf. */
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;
    /*! Reimplemented: the leaf's size plus the thickness of every level on its path. */
    QSize sectionSizeFromContents(int logicalIndex) const override;
    /*! Reimplemented so that the last section runs on to the right edge. */
    void paintEvent(QPaintEvent *event) override;
    /*! Reimplemented to scroll by pixels, as the scroll area does, not by items. */
    void wheelEvent(QWheelEvent *event) override;

    //! Private data; named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwHierarchicalHeaderViewPrivate> d_vel;

private Q_SLOTS:
    void onHeaderModelDataChanged();

private:
    void init();

    Q_DECLARE_PRIVATE_D(d_vel, CMwHierarchicalHeaderView)
    Q_DISABLE_COPY(CMwHierarchicalHeaderView)
};

#endif // VEL_QT_WIDGETS_CMWHIERARCHICALHEADERVIEW_H
