#include <vel_qt_widgets/CMwVHeaderView.h>

#include "gridmetrics_p.h"

#include <QtCore/QPointer>
#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionHeader>
#include <QtWidgets/QTreeView>

class CMwVHeaderView::Private
{
public:
    static void drawCellsBelow(
        const CMwVHeaderView *q, QPainter *painter, const QRect &lastSection);

    QPointer<QTreeView> treeView;
    QPointer<CMwVHeaderViewModel> wrapper;
};

CMwVHeaderView::CMwVHeaderView(Qt::Orientation orientation, QWidget *parent)
    : QHeaderView(orientation, parent)
    , d(new Private)
{
    // The style's minimum section (about a line of text plus margins) is
    // higher than a tree row; Qt would clamp the sections to it and the
    // numbers would drift away from their rows.
    setMinimumSectionSize(vel::rowSectionMinimumSize);
}

CMwVHeaderView::~CMwVHeaderView() = default;

void CMwVHeaderView::setTreeView(QTreeView *treeView)
{
    if (d->treeView == treeView)
        return;
    d->treeView = treeView;
    viewport()->update();
}

QTreeView *CMwVHeaderView::treeView() const { return d->treeView.data(); }

void CMwVHeaderView::setModel(QAbstractItemModel *model)
{
    CMwVHeaderViewModel *previous = d->wrapper.data();
    auto *wrapper = new CMwVHeaderViewModel(this);
    wrapper->setSourceModel(model);
    d->wrapper = wrapper;
    QHeaderView::setModel(wrapper);
    delete previous;
}

void CMwVHeaderView::paintEvent(QPaintEvent *event)
{
    if (!model() || model()->rowCount() != 0) {
        QHeaderView::paintEvent(event);
        // QHeaderView paints its flat empty area after the sections, over
        // the cells the last section drew below itself; they go on top again.
        const int last = count() - 1;
        if (last >= 0 && !isSectionHidden(last)) {
            const QRect rect(
                0, sectionViewportPosition(last), viewport()->width(), sectionSize(last));
            if (rect.isValid() && rect.bottom() < viewport()->height()) {
                QPainter painter(viewport());
                d->drawCellsBelow(this, &painter, rect);
            }
        }
        return;
    }
    // No rows announced: a column of blank cells, a text line high each,
    // numbered where the tree has items at their heights.
    QPainter painter(viewport());
    const QFontMetrics metrics = fontMetrics();
    const int step = metrics.descent() + metrics.lineSpacing();
    const int w = viewport()->width();
    const int h = viewport()->height();
    int section = 0;
    for (int y = 0; y <= h; ++section) {
        const int bottom = y + step;
        paintSection(&painter, QRect(QPoint(0, y), QPoint(w - 1, bottom)), section);
        y = bottom + 1;
    }
}

void CMwVHeaderView::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    QTreeView *tree = d->treeView.data();
    if (tree && tree->model()) {
        QStyleOptionHeader opt;
        initStyleOption(&opt);
        // Neighbouring sections share their dividing line.
        opt.rect = rect.adjusted(0, -1, 0, 0);
        // The style keeps its header margins around the label, which leaves
        // less than a line of text in sections as low as the tree's rows
        // (17 px under Windows). The number is centred on the row instead,
        // and only the section's own bounds clip it.
        opt.textAlignment
            = Qt::Alignment(QFlag(Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip));
        opt.text = QString();
        // The header scrolls with the tree's viewport, so its coordinates are
        // the viewport's.
        const QModelIndex index = tree->indexAt(QPoint(0, (rect.top() + rect.bottom()) / 2));
        if (index.isValid()) {
            const QVariant number = index.data(RowNumberRole);
            if (number.isValid())
                opt.text = QStringLiteral("%1").arg(number.toInt() + 1, 0, 10, QLatin1Char(' '));
        }
        style()->drawControl(QStyle::CE_Header, &opt, painter, this);
    } else {
        QHeaderView::paintSection(painter, rect, logicalIndex);
    }

    if (logicalIndex == count() - 1)
        d->drawCellsBelow(this, painter, rect);
}

void CMwVHeaderView::Private::drawCellsBelow(
    const CMwVHeaderView *q, QPainter *painter, const QRect &lastSection)
{
    if (q->height() <= lastSection.bottom())
        return;
    painter->save();
    QStyleOptionHeader filler;
    q->initStyleOption(&filler);
    filler.rect = lastSection.adjusted(0, -1, 0, 0);
    filler.text = QString();
    const int step = lastSection.bottom() - lastSection.top() + 1;
    // A section of height 0 would never reach the bottom.
    if (step > 0) {
        filler.rect.translate(0, step);
        while (filler.rect.top() < q->height()) {
            q->style()->drawControl(QStyle::CE_Header, &filler, painter, q);
            filler.rect.translate(0, step);
        }
    }
    painter->restore();
}
