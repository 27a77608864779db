#include "cmwhierarchicalheaderview_p.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QItemSelectionModel>
#include <QtGui/QCursor>
#include <QtGui/QFontMetrics>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QAbstractScrollArea>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStyle>

namespace {

// mw_int32 is a typedef moc cannot see through; the name must be known for
// queued connections and signal spies.
void registerGridTypes() { qRegisterMetaType<mw_int32>("mw_int32"); }

// Room for the sort arrow on top of the style's own (docs/compatibility.md).
constexpr int sortIndicatorAllowance = 12;
constexpr int menuMinimumWidth = 150;

} // namespace

Q_COREAPP_STARTUP_FUNCTION(registerGridTypes)

// ---------------------------------------------------------------------------
// Tree helpers

CMwHierarchicalHeaderViewPrivate::~CMwHierarchicalHeaderViewPrivate() = default;

QModelIndex CMwHierarchicalHeaderViewPrivate::rootOf(const QModelIndex &cell) const
{
    QModelIndex root = cell;
    while (root.parent().isValid())
        root = root.parent();
    return root;
}

QModelIndexList CMwHierarchicalHeaderViewPrivate::pathTo(const QModelIndex &cell) const
{
    QModelIndexList path;
    for (QModelIndex i = cell; i.isValid(); i = i.parent())
        path.prepend(i);
    return path;
}

// ---------------------------------------------------------------------------
// Cached lookups. Every caller passes a leaf that is the leaf of its
// section, so the leaf's place under a cell follows from the section number.

const CMwHeaderLeafCache::Span *CMwHierarchicalHeaderViewPrivate::cachedSpan(
    const QModelIndex &cell) const
{
    Q_Q(const CMwHierarchicalHeaderView);
    cache->ensure(headerModel.data(), q->count());
    const auto it = cache->spans.constFind(cell);
    return it == cache->spans.constEnd() ? nullptr : &it.value();
}

QModelIndex CMwHierarchicalHeaderViewPrivate::leafForSection(int section) const
{
    Q_Q(const CMwHierarchicalHeaderView);
    if (!headerModel)
        return QModelIndex();
    cache->ensure(headerModel.data(), q->count());
    return section >= 0 && section < cache->leaves.size() ? cache->leaves.at(section)
                                                          : QModelIndex();
}

int CMwHierarchicalHeaderViewPrivate::spanLength(
    const QModelIndex &cell, const QModelIndex &leaf, int section) const
{
    Q_UNUSED(leaf) // its place follows from the section number
    Q_Q(const CMwHierarchicalHeaderView);
    const CMwHeaderLeafCache::Span *span = cachedSpan(cell);
    if (!span || span->leafCount == 0)
        return q->sectionSize(section);
    const int first = span->firstLeaf;
    const int last = first + span->leafCount - 1;
    // Unmoved sections lie in logical order, so the span is a difference of
    // positions; otherwise add the sizes up as the plain walk does.
    if (!q->sectionsMoved() && last < q->count())
        return q->sectionPosition(last) + q->sectionSize(last) - q->sectionPosition(first);
    int length = 0;
    for (int i = first; i <= last; ++i)
        length += q->sectionSize(i);
    return length;
}

int CMwHierarchicalHeaderViewPrivate::spanStart(
    const QModelIndex &cell, const QModelIndex &leaf, int section, int sectionStart) const
{
    Q_UNUSED(leaf) // its place follows from the section number
    Q_Q(const CMwHierarchicalHeaderView);
    const CMwHeaderLeafCache::Span *span = cachedSpan(cell);
    if (!span || span->leafCount == 0)
        return sectionStart;
    const int first = span->firstLeaf;
    if (!q->sectionsMoved() && section < q->count())
        return sectionStart - (q->sectionPosition(section) - q->sectionPosition(first));
    int start = sectionStart;
    for (int i = first; i < section; ++i)
        start -= q->sectionSize(i);
    return start;
}

int CMwHierarchicalHeaderViewPrivate::indexInRoot(const QModelIndex &leaf, int section) const
{
    const CMwHeaderLeafCache::Span *span = cachedSpan(rootOf(leaf));
    return span && span->leafCount > 0 ? section - span->firstLeaf : -1;
}

// ---------------------------------------------------------------------------
// Measuring and drawing

CMwHierarchicalHeaderViewPrivate::CaptionMeasure CMwHierarchicalHeaderViewPrivate::measureCaption(
    const QModelIndex &cell) const
{
    Q_Q(const CMwHierarchicalHeaderView);
    const bool keep = painting;
    if (keep) {
        const auto it = paintMeasures.constFind(cell);
        if (it != paintMeasures.constEnd())
            return it.value();
    }
    CaptionMeasure measure;
    const QVariant hint = cell.data(Qt::SizeHintRole);
    measure.hint = hint.isValid() ? hint.toSize() : QSize();

    QFont font = q->font();
    const QVariant fontValue = cell.data(Qt::FontRole);
    if (fontValue.isValid() && fontValue.canConvert<QFont>())
        font = qvariant_cast<QFont>(fontValue);
    // Measured bold so that a caption drawn bold still fits.
    font.setWeight(QFont::Bold);
    const QFontMetrics metrics(font);

    measure.text = metrics.size(0, cell.data(Qt::DisplayRole).toString());
    if (cell.data(Qt::UserRole).isValid())
        measure.text.transpose();
    measure.empty = metrics.size(0, QString());
    if (keep)
        paintMeasures.insert(cell, measure);
    return measure;
}

QSize CMwHierarchicalHeaderViewPrivate::measureCell(
    const QModelIndex &cell, const QStyleOptionHeader &option) const
{
    Q_Q(const CMwHierarchicalHeaderView);
    const CaptionMeasure caption = measureCaption(cell);
    // The style's part depends on the option, which differs from section to
    // section, so it is asked every time.
    QSize decoration = q->style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), q);
    if (option.sortIndicator != QStyleOptionHeader::None)
        decoration.rwidth() += sortIndicatorAllowance;
    return caption.hint.expandedTo(caption.text + decoration - caption.empty);
}

QVector<CMwHierarchicalHeaderViewPrivate::PlacedCell> CMwHierarchicalHeaderViewPrivate::placeStack(
    const QRect &rect, const QModelIndex &leaf, int section, const QStyleOptionHeader &option) const
{
    Q_Q(const CMwHierarchicalHeaderView);
    const bool horizontal = q->orientation() == Qt::Horizontal;
    const QModelIndexList path = pathTo(leaf);
    QVector<PlacedCell> cells(path.size());
    int offset = horizontal ? rect.top() : rect.left();
    for (int i = 0; i < path.size(); ++i) {
        const QModelIndex &cell = path.at(i);
        PlacedCell &placed = cells[i];
        placed.cell = cell;
        QStyleOptionHeader &opt = placed.option;
        opt = option;
        // Only the leaf shows the pressed and selected look of its section.
        if (i < path.size() - 1)
            opt.state &= ~(QStyle::State_Sunken | QStyle::State_On);
        const QVariant foreground = cell.data(Qt::ForegroundRole);
        if (foreground.canConvert<QBrush>())
            opt.palette.setBrush(QPalette::ButtonText, qvariant_cast<QBrush>(foreground));
        const QVariant background = cell.data(Qt::BackgroundRole);
        if (background.canConvert<QBrush>()) {
            const QBrush brush = qvariant_cast<QBrush>(background);
            opt.palette.setBrush(QPalette::Button, brush);
            opt.palette.setBrush(QPalette::Window, brush);
        }

        // The leaf takes the rest of the header's thickness; its own measure
        // plays no part in the drawing.
        const bool isLeaf = cell == leaf;
        const QSize measured = isLeaf ? QSize() : measureCell(cell, opt);
        int thickness;
        if (horizontal) {
            thickness = isLeaf ? rect.height() - offset : measured.height();
            placed.rect = QRect(spanStart(cell, leaf, section, rect.left()), offset,
                spanLength(cell, leaf, section), thickness);
        } else {
            thickness = isLeaf ? rect.width() - offset : measured.width();
            placed.rect = QRect(offset, spanStart(cell, leaf, section, rect.top()), thickness,
                spanLength(cell, leaf, section));
        }
        offset += thickness;

        opt.text = cell.data(Qt::DisplayRole).toString();
        placed.rotated = cell.data(Qt::UserRole).isValid();
    }
    return cells;
}

void CMwHierarchicalHeaderViewPrivate::drawPlacedCell(
    QPainter *painter, const PlacedCell &placed) const
{
    Q_Q(const CMwHierarchicalHeaderView);
    QStyleOptionHeader opt = placed.option;
    const QRect &cellRect = placed.rect;
    painter->save();
    opt.rect = cellRect;
    QStyle *style = q->style();
    if (placed.rotated) {
        style->drawControl(QStyle::CE_HeaderSection, &opt, painter, q);
        // Turned a quarter counter-clockwise, the caption reads bottom to top;
        // the rectangle is transposed around the same centre.
        painter->setWorldTransform(QTransform().rotate(-90), true);
        const QPoint centre = cellRect.center();
        QRect labelRect(0, 0, cellRect.height(), cellRect.width());
        labelRect.moveCenter(QPoint(-centre.y(), centre.x()));
        opt.rect = labelRect;
        style->drawControl(QStyle::CE_HeaderLabel, &opt, painter, q);
    } else {
        style->drawControl(QStyle::CE_Header, &opt, painter, q);
    }
    painter->restore();
}

void CMwHierarchicalHeaderViewPrivate::drawStack(QPainter *painter, const QRect &rect,
    const QModelIndex &leaf, int section, const QStyleOptionHeader &option) const
{
    // Checked once per paint event: the sections are where they were
    // expected when the event began, or nothing is left to a later one.
    if (pass.active && !pass.checked) {
        pass.checked = true;
        pass.active = rect == sectionRectInViewport(section);
    }
    const QPointF brushOrigin = painter->brushOrigin();
    const QVector<PlacedCell> cells = placeStack(rect, leaf, section, option);
    for (int i = 0; i < cells.size(); ++i) {
        const int drawer = i + 1 < cells.size() ? laterDrawer(cells.at(i), section, i) : -1;
        if (drawer >= 0)
            pass.leftTo[drawer].append(qMakePair(section, i));
        else
            drawPlacedCell(painter, cells.at(i));
    }
    painter->setBrushOrigin(brushOrigin);
    if (pass.active)
        pass.leftTo.remove(section);
}

QRect CMwHierarchicalHeaderViewPrivate::sectionRectInViewport(int section) const
{
    Q_Q(const CMwHierarchicalHeaderView);
    const int position = q->sectionViewportPosition(section);
    const int size = q->sectionSize(section);
    return q->orientation() == Qt::Horizontal ? QRect(position, 0, size, q->viewport()->height())
                                              : QRect(0, position, q->viewport()->width(), size);
}

void CMwHierarchicalHeaderViewPrivate::beginPaintPass(const QRect &eventRect)
{
    Q_Q(const CMwHierarchicalHeaderView);
    pass = PaintPass();
    // Moved sections break a spanning cell into pieces.
    if (!skipCoveredCells || !headerModel || q->count() == 0 || q->sectionsMoved())
        return;
    // The sections QHeaderView::paintEvent() paints, in the order it does.
    const bool horizontal = q->orientation() == Qt::Horizontal;
    int first = q->visualIndexAt(horizontal ? eventRect.left() : eventRect.top());
    int last = q->visualIndexAt(horizontal ? eventRect.right() : eventRect.bottom());
    if (horizontal && q->isRightToLeft()) {
        first = first == -1 ? q->count() - 1 : first;
        last = last == -1 ? 0 : last;
    } else {
        first = first == -1 ? 0 : first;
        last = last == -1 ? q->count() - 1 : last;
    }
    pass.first = qMin(first, last);
    pass.last = qMax(first, last);
    pass.active = true;
}

void CMwHierarchicalHeaderViewPrivate::endPaintPass(QPainter *painter)
{
    Q_Q(const CMwHierarchicalHeaderView);
    // Only when paintSection() was skipped for a section that should have
    // drawn: the cells left to it are drawn now, as their sections had them.
    const QHash<int, QVector<QPair<int, int>>> left = pass.leftTo;
    pass = PaintPass();
    for (const QVector<QPair<int, int>> &cells : left) {
        for (const QPair<int, int> &cell : cells) {
            const int section = cell.first;
            const QModelIndex leaf = leafForSection(section);
            if (!leaf.isValid())
                continue;
            const QVector<PlacedCell> placed = placeStack(
                sectionRectInViewport(section), leaf, section, q->styleOptionForCell(section));
            if (cell.second < placed.size())
                drawPlacedCell(painter, placed.at(cell.second));
        }
    }
}

int CMwHierarchicalHeaderViewPrivate::laterDrawer(
    const PlacedCell &placed, int section, int level) const
{
    Q_Q(const CMwHierarchicalHeaderView);
    if (!pass.active)
        return -1;
    const CMwHeaderLeafCache::Span *span = cachedSpan(placed.cell);
    if (!span || span->leafCount <= 1)
        return -1;
    // Unmoved sections: visual and logical indexes are the same.
    int drawer = -1;
    for (int v = qMin(span->firstLeaf + span->leafCount - 1, pass.last); v > section; --v) {
        if (!q->isSectionHidden(v) && q->sectionSize(v) > 0) {
            drawer = v;
            break;
        }
    }
    if (drawer < 0 || !fillsOpaquely(placed.option))
        return -1;
    auto it = pass.drawerRects.find(drawer);
    if (it == pass.drawerRects.end()) {
        QVector<QRect> rects;
        const QModelIndex leaf = leafForSection(drawer);
        if (leaf.isValid()) {
            const QVector<PlacedCell> cells = placeStack(
                sectionRectInViewport(drawer), leaf, drawer, q->styleOptionForCell(drawer));
            for (const PlacedCell &cell : cells)
                rects.append(cell.rect);
        }
        it = pass.drawerRects.insert(drawer, rects);
    }
    // The drawer's own rectangle for the cell differs when its measures do,
    // e.g. with a sort indicator; then this section draws the cell as well.
    return level < it->size() && it->at(level) == placed.rect ? drawer : -1;
}

bool CMwHierarchicalHeaderViewPrivate::fillsOpaquely(const QStyleOptionHeader &option) const
{
    Q_Q(const CMwHierarchicalHeaderView);
    if (!option.palette.button().isOpaque() || !option.palette.window().isOpaque())
        return false;
    // Qt's own styles whose section is the button brush over the whole
    // rectangle and nothing outside it. Any other style, a proxy or a style
    // sheet among them, may draw translucently, beyond the rectangle or
    // differently for each section, and gets every drawing.
    const char *name = q->style()->metaObject()->className();
    return qstrcmp(name, "QFusionStyle") == 0 || qstrcmp(name, "QWindowsStyle") == 0;
}

void CMwHierarchicalHeaderViewPrivate::drawTrailingPiece(
    QPainter *painter, const QRect &lastSection) const
{
    Q_Q(const CMwHierarchicalHeaderView);
    painter->save();
    QStyleOptionHeader opt = q->styleOptionForCell(q->count() - 1);
    opt.rect = QRect(lastSection.right() + 1, lastSection.top(), q->width(), lastSection.height());
    q->style()->drawControl(QStyle::CE_Header, &opt, painter, q);
    painter->restore();
}

// ---------------------------------------------------------------------------
// CMwHierarchicalHeaderView

CMwHierarchicalHeaderView::CMwHierarchicalHeaderView(Qt::Orientation orientation, QWidget *parent)
    : CMwHierarchicalHeaderView(new CMwHierarchicalHeaderViewPrivate, orientation, parent)
{
}

CMwHierarchicalHeaderView::CMwHierarchicalHeaderView(
    CMwHierarchicalHeaderViewPrivate *d, Qt::Orientation orientation, QWidget *parent)
    : QHeaderView(orientation, parent)
    , d_vel(d)
{
    d->q_ptr = this;
    init();
}

CMwHierarchicalHeaderView::~CMwHierarchicalHeaderView() = default;

void CMwHierarchicalHeaderView::init()
{
    Q_D(CMwHierarchicalHeaderView);
    d->cache = new CMwHeaderLeafCache(this);
    connect(this, SIGNAL(sectionCountChanged(int, int)), d->cache, SLOT(invalidate()));
    connect(this, SIGNAL(sectionResized(int, int, int)), this, SLOT(onSectionResized(int)));
    connect(this, SIGNAL(customContextMenuRequested(QPoint)), this,
        SLOT(onCustomMenuRequested(QPoint)));
    setSortIndicatorShown(true);
    setSortIndicator(0, Qt::AscendingOrder);
    setSectionsClickable(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
}

void CMwHierarchicalHeaderView::setHeaderModel(QAbstractItemModel *model)
{
    Q_D(CMwHierarchicalHeaderView);
    if (d->headerModel && d->headerModel != model)
        disconnect(d->headerModel, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)),
            this, SLOT(onHeaderModelDataChanged()));
    if (model && d->headerModel != model)
        connect(model, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)), this,
            SLOT(onHeaderModelDataChanged()));
    d->headerModel = model;
    d->cache->watch(model);
}

void CMwHierarchicalHeaderView::onHeaderModelDataChanged()
{
    // Any cell may now measure differently: QHeaderView drops its cached
    // size hint, and the view around the header lays it out anew.
    if (count() > 0)
        headerDataChanged(orientation(), 0, count() - 1);
    Q_EMIT geometriesChanged();
}

QAbstractItemModel *CMwHierarchicalHeaderView::headerModel() const
{
    Q_D(const CMwHierarchicalHeaderView);
    return d->headerModel.data();
}

void CMwHierarchicalHeaderView::setModel(QAbstractItemModel *model)
{
    QAbstractItemModel *supplied = nullptr;
    if (model) {
        const int role
            = orientation() == Qt::Horizontal ? HorizontalHeaderModelRole : VerticalHeaderModelRole;
        const QVariant value = model->data(QModelIndex(), role);
        if (value.isValid())
            supplied = qobject_cast<QAbstractItemModel *>(value.value<QObject *>());
    }
    setHeaderModel(supplied);

    QHeaderView::setModel(model);

    if (model) {
        const int count
            = orientation() == Qt::Horizontal ? model->columnCount() : model->rowCount();
        if (count > 0)
            initializeSections(0, count - 1);
    }
}

QStyleOptionHeader CMwHierarchicalHeaderView::styleOptionForCell(int logicalIndex) const
{
    QStyleOptionHeader opt;
    initStyleOption(&opt);
    if (window()->isActiveWindow())
        opt.state |= QStyle::State_Active;
    opt.textAlignment = Qt::AlignCenter;
    opt.iconAlignment = Qt::AlignVCenter;
    opt.section = logicalIndex;

    if (logicalIndex == sortIndicatorSection())
        opt.sortIndicator = sortIndicatorOrder() == Qt::AscendingOrder
            ? QStyleOptionHeader::SortDown
            : QStyleOptionHeader::SortUp;
    else
        opt.sortIndicator = QStyleOptionHeader::None;

    const int visual = visualIndex(logicalIndex);
    if (count() == 1)
        opt.position = QStyleOptionHeader::OnlyOneSection;
    else if (visual == 0)
        opt.position = QStyleOptionHeader::Beginning;
    else if (visual == count() - 1)
        opt.position = QStyleOptionHeader::End;
    else
        opt.position = QStyleOptionHeader::Middle;

    const QItemSelectionModel *selection = selectionModel();
    const bool horizontal = orientation() == Qt::Horizontal;
    const auto intersects = [&](int section) {
        return horizontal ? selection->columnIntersectsSelection(section, rootIndex())
                          : selection->rowIntersectsSelection(section, rootIndex());
    };
    const auto wholly = [&](int section) {
        if (section < 0)
            return false;
        return horizontal ? selection->isColumnSelected(section, rootIndex())
                          : selection->isRowSelected(section, rootIndex());
    };
    if (selection && highlightSections()) {
        if (intersects(logicalIndex))
            opt.state |= QStyle::State_On;
        if (wholly(logicalIndex))
            opt.state |= QStyle::State_Sunken;
    }
    if (selection) {
        const bool previous = visual > 0 && wholly(this->logicalIndex(visual - 1));
        const bool next
            = visual >= 0 && visual + 1 < count() && wholly(this->logicalIndex(visual + 1));
        if (previous && next)
            opt.selectedPosition = QStyleOptionHeader::NextAndPreviousAreSelected;
        else if (previous)
            opt.selectedPosition = QStyleOptionHeader::PreviousIsSelected;
        else if (next)
            opt.selectedPosition = QStyleOptionHeader::NextIsSelected;
        else
            opt.selectedPosition = QStyleOptionHeader::NotAdjacent;
    }
    return opt;
}

void CMwHierarchicalHeaderView::paintSection(
    QPainter *painter, const QRect &rect, int logicalIndex) const
{
    Q_D(const CMwHierarchicalHeaderView);
    if (!rect.isValid()) {
        QHeaderView::paintSection(painter, rect, logicalIndex);
        return;
    }

    // A section without a leaf stays blank (docs/compatibility.md).
    const QModelIndex leaf = d->leafForSection(logicalIndex);
    if (leaf.isValid())
        d->drawStack(painter, rect, leaf, logicalIndex, styleOptionForCell(logicalIndex));

    if (orientation() == Qt::Horizontal && logicalIndex == count() - 1)
        d->drawTrailingPiece(painter, rect);
}

void CMwHierarchicalHeaderView::paintEvent(QPaintEvent *event)
{
    Q_D(CMwHierarchicalHeaderView);
    d->painting = true;
    d->beginPaintPass(event->rect());
    QHeaderView::paintEvent(event);
    if (!d->pass.leftTo.isEmpty()) {
        QPainter painter(viewport());
        d->endPaintPass(&painter);
    }
    d->pass = CMwHierarchicalHeaderViewPrivate::PaintPass();
    d->painting = false;
    d->paintMeasures.clear();
    // QHeaderView paints its flat empty area after the sections, over the
    // piece the last section drew; drawn once more, the header runs on to
    // the right edge as one piece.
    const int last = count() - 1;
    if (orientation() != Qt::Horizontal || last < 0 || isSectionHidden(last))
        return;
    const QRect rect(sectionViewportPosition(last), 0, sectionSize(last), viewport()->height());
    if (!rect.isValid() || rect.right() >= viewport()->width())
        return;
    QPainter painter(viewport());
    d->drawTrailingPiece(&painter, rect);
}

QSize CMwHierarchicalHeaderView::sectionSizeFromContents(int logicalIndex) const
{
    Q_D(const CMwHierarchicalHeaderView);
    const QModelIndex leaf = d->headerModel ? d->leafForSection(logicalIndex) : QModelIndex();
    if (!leaf.isValid())
        return QHeaderView::sectionSizeFromContents(logicalIndex);

    const QStyleOptionHeader opt = styleOptionForCell(logicalIndex);
    QSize size = d->measureCell(leaf, opt);
    // The thickness is the sum of the levels on this leaf's own path.
    for (QModelIndex cell = leaf.parent(); cell.isValid(); cell = cell.parent()) {
        if (orientation() == Qt::Horizontal)
            size.rheight() += d->measureCell(cell, opt).height();
        else
            size.rwidth() += d->measureCell(cell, opt).width();
    }
    return size;
}

void CMwHierarchicalHeaderView::wheelEvent(QWheelEvent *event)
{
    // Straight to the scroll area: the item-view layer would scroll by items.
    QAbstractScrollArea::wheelEvent(event);
}

void CMwHierarchicalHeaderView::onSectionResized(int logicalIndex)
{
    Q_D(CMwHierarchicalHeaderView);
    if (isSectionHidden(logicalIndex))
        return;
    const QModelIndex leaf = d->leafForSection(logicalIndex);
    if (!leaf.isValid())
        return;
    int n = d->indexInRoot(leaf, logicalIndex);
    if (n <= 0)
        return;

    // The cells spanning this section start at earlier sections; everything
    // from the leftmost of them on is repainted, as one rectangle.
    const int w = viewport()->width();
    const int h = viewport()->height();
    QRect area;
    while (n > 0) {
        --logicalIndex;
        const int pos = sectionViewportPosition(logicalIndex);
        QRect r;
        if (orientation() == Qt::Horizontal) {
            if (isRightToLeft())
                r = QRect(QPoint(0, 0), QPoint(pos + sectionSize(logicalIndex) - 1, h));
            else
                r = QRect(QPoint(pos, 0), QPoint(w, h));
        } else {
            r = QRect(QPoint(0, pos), QPoint(w, h));
        }
        area |= r.normalized();
        --n;
    }
    viewport()->update(area);
}

void CMwHierarchicalHeaderView::onCustomMenuRequested(QPoint pos)
{
    Q_D(CMwHierarchicalHeaderView);
    d->runColumnMenu(logicalIndexAt(pos), pos, QCursor::pos());
}

void CMwHierarchicalHeaderView::showColumnMenu(int logicalIndex)
{
    Q_D(CMwHierarchicalHeaderView);
    if (logicalIndex < 0 || logicalIndex >= count()) {
        qWarning("CMwHierarchicalHeaderView::showColumnMenu: no section %d", logicalIndex);
        return;
    }
    // Opened from the keyboard: the menu stands under the section's cell,
    // kept inside the header when the section is scrolled out of sight.
    QPoint pos;
    const int start = sectionViewportPosition(logicalIndex);
    if (orientation() == Qt::Horizontal)
        pos = QPoint(qBound(0, start, qMax(0, viewport()->width() - 1)), viewport()->height());
    else
        pos = QPoint(viewport()->width(), qBound(0, start, qMax(0, viewport()->height() - 1)));
    d->runColumnMenu(logicalIndex, pos, viewport()->mapToGlobal(pos));
}

void CMwHierarchicalHeaderViewPrivate::runColumnMenu(
    int section, const QPoint &pos, const QPoint &globalPos)
{
    Q_Q(CMwHierarchicalHeaderView);
    QMenu *menu = new QMenu(q);
    menu->addAction(CMwHierarchicalHeaderView::tr("Hide Column"));
    menu->addAction(CMwHierarchicalHeaderView::tr("Show All Columns"));
    menu->addSeparator();
    menu->addAction(CMwHierarchicalHeaderView::tr("Group By"));
    menu->addAction(CMwHierarchicalHeaderView::tr("Ungroup"));
    menu->move(pos);
    menu->setMinimumWidth(menuMinimumWidth);
    const QAction *chosen = menu->exec(globalPos);

    if (chosen) {
        const QString text = chosen->text();
        if (text == CMwHierarchicalHeaderView::tr("Hide Column")) {
            // The last visible section stays: a header with nothing left to
            // click could never be given its columns back.
            q->setSectionHidden(section, q->hiddenSectionCount() + 1 < q->count());
            Q_EMIT q->showColumn(section, false);
        } else if (text == CMwHierarchicalHeaderView::tr("Show All Columns")) {
            for (int i = 0; i < q->count(); ++i) {
                q->setSectionHidden(i, false);
                Q_EMIT q->showColumn(i, true);
            }
        } else if (text == CMwHierarchicalHeaderView::tr("Group By")) {
            if (q->model())
                q->model()->sort(section, Qt::AscendingOrder);
            Q_EMIT q->groupByColumn(section);
        } else if (text == CMwHierarchicalHeaderView::tr("Ungroup")) {
            Q_EMIT q->groupByColumn(-1);
        }
    }
    delete menu;
}
