#ifndef VEL_QT_WIDGETS_CMWHIERARCHICALHEADERVIEW_P_H
#define VEL_QT_WIDGETS_CMWHIERARCHICALHEADERVIEW_P_H

#include "cmwheaderleafcache_p.h"

#include <vel_qt_widgets/CMwHierarchicalHeaderView.h>

#include <QtCore/QHash>
#include <QtCore/QModelIndexList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QVector>
#include <QtWidgets/QStyleOptionHeader>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

// Exported for subclasses that bring their own private object through the
// protected constructor (the tests among them).
class VEL_QT_WIDGETS_EXPORT CMwHierarchicalHeaderViewPrivate
{
    Q_DECLARE_PUBLIC(CMwHierarchicalHeaderView)

public:
    CMwHierarchicalHeaderViewPrivate() = default;
    virtual ~CMwHierarchicalHeaderViewPrivate();

    QModelIndex rootOf(const QModelIndex &cell) const;
    QModelIndexList pathTo(const QModelIndex &cell) const;

    // The leaf of a section and the extent of the cells above it, from the
    // leaf cache. Virtual so that a subclass's private object may answer
    // them otherwise; the tests hold them against a plain walk of the tree.
    virtual QModelIndex leafForSection(int section) const;
    virtual int spanLength(const QModelIndex &cell, const QModelIndex &leaf, int section) const;
    virtual int spanStart(
        const QModelIndex &cell, const QModelIndex &leaf, int section, int sectionStart) const;
    // Index of leaf in the leaves under its top-level cell, -1 for a top-level leaf.
    virtual int indexInRoot(const QModelIndex &leaf, int section) const;

    QSize measureCell(const QModelIndex &cell, const QStyleOptionHeader &option) const;
    // One cell of a section's stack: where it goes and the option it is
    // drawn with (text and brushes of the cell set, rect not yet).
    struct PlacedCell
    {
        QModelIndex cell;
        QRect rect;
        QStyleOptionHeader option;
        bool rotated = false;
    };
    // The cells of a section's stack, from the top level down to the leaf.
    QVector<PlacedCell> placeStack(const QRect &rect, const QModelIndex &leaf, int section,
        const QStyleOptionHeader &option) const;
    void drawPlacedCell(QPainter *painter, const PlacedCell &placed) const;
    void drawStack(QPainter *painter, const QRect &rect, const QModelIndex &leaf, int section,
        const QStyleOptionHeader &option) const;
    // The empty header piece right of the last section.
    void drawTrailingPiece(QPainter *painter, const QRect &lastSection) const;
    // The column menu for section (-1 is passed on unchecked), moved to pos
    // in header coordinates and run modally at globalPos.
    void runColumnMenu(int section, const QPoint &pos, const QPoint &globalPos);

    CMwHierarchicalHeaderView *q_ptr = nullptr;
    QPointer<QAbstractItemModel> headerModel;
    CMwHeaderLeafCache *cache = nullptr;

    // What measuring a cell takes from the cell itself: the same for every
    // section a spanning cell is drawn for, so one paint event measures each
    // cell's caption once. Kept only while a paint event runs, when neither
    // the cells nor the header's font can change.
    struct CaptionMeasure
    {
        QSize hint;
        QSize text;
        QSize empty;
    };
    CaptionMeasure measureCaption(const QModelIndex &cell) const;
    mutable QHash<QModelIndex, CaptionMeasure> paintMeasures;
    bool painting = false;

    // A cell spanning several sections is drawn for each of them, every time
    // over the same rectangle, and only the last drawing stays visible. In a
    // paint event, a section leaves such a cell to the last section that
    // the event paints under it, when that one puts the cell in the same
    // place and the style is known to fill it opaquely. Cleared, every cell is drawn
    // for every section (for comparing the two).
    bool skipCoveredCells = true;
    struct PaintPass
    {
        bool active = false;
        bool checked = false;
        int first = -1; // visual indexes the paint event runs over
        int last = -1;
        // Cell rectangles of the sections that draw cells left to them.
        QHash<int, QVector<QRect>> drawerRects;
        // Per such section, the (section, level) cells left to it.
        QHash<int, QVector<QPair<int, int>>> leftTo;
    };
    mutable PaintPass pass;
    void beginPaintPass(const QRect &eventRect);
    // Draws what was left to a section that did not draw after all.
    void endPaintPass(QPainter *painter);
    QRect sectionRectInViewport(int section) const;
    // The section that draws the cell at level of section's stack last in
    // this paint event, when it is not section itself; otherwise -1.
    int laterDrawer(const PlacedCell &placed, int section, int level) const;
    bool fillsOpaquely(const QStyleOptionHeader &option) const;

private:
    const CMwHeaderLeafCache::Span *cachedSpan(const QModelIndex &cell) const;
};

#endif // VEL_QT_WIDGETS_CMWHIERARCHICALHEADERVIEW_P_H
