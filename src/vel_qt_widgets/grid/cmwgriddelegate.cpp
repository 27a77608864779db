#include <vel_qt_widgets/CMwGridDelegate.h>

#include "gridlookup_p.h"

#include <QtGui/QColor>
#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStyle>

namespace {

// The band colour of the grid composite that holds the view, if one does.
QColor branchParentColour(const QWidget *widget)
{
    if (const CMwHierarchicalGridView *grid
        = vel::GridLookup::grid(widget ? widget->parentWidget() : nullptr)) {
        return vel::GridLookup::branchParentColor(grid);
    }
    return QColor(Qt::lightGray);
}

// The band colour is the grid's, the text colour the palette's: under a
// dark palette light text would stand on the light grey band. Text too
// close to the band in lightness gives way to black or white.
QColor captionColourOn(const QColor &band, const QColor &text)
{
    const int bandGray = qGray(band.rgb());
    if (qAbs(bandGray - qGray(text.rgb())) >= 128)
        return text;
    return bandGray < 128 ? QColor(Qt::white) : QColor(Qt::black);
}

void drawEmptyItem(QPainter *painter, const QStyleOptionViewItem &option)
{
    const QWidget *widget = option.widget;
    QStyle *style = widget ? widget->style() : nullptr;
    if (style)
        style->drawControl(QStyle::CE_ItemViewItem, &option, painter, widget);
}

// Widths and heights of the view the cell belongs to (the cell's own without one).
int viewWidth(const QStyleOptionViewItem &option)
{
    return option.widget ? option.widget->width() : option.rect.width();
}

int viewHeight(const QStyleOptionViewItem &option)
{
    return option.widget ? option.widget->height() : option.rect.bottom() + 1;
}

bool isLastColumn(const QModelIndex &index)
{
    const QAbstractItemModel *model = index.model();
    return model && index.column() + 1 == model->columnCount(index.parent());
}

// A group row is one band; its caption in column 0 runs across it and the
// other columns leave the band alone.
void paintGroupRowCell(const CMwGridDelegate *delegate, QPainter *painter,
    const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (index.column() != 0)
        return;
    painter->save();
    QStyleOptionViewItem band = option;
    band.rect.setRight(band.rect.left() + viewWidth(option) - 1);
    const QColor colour = branchParentColour(option.widget);
    band.palette.setColor(
        QPalette::Text, captionColourOn(colour, band.palette.color(QPalette::Text)));
    painter->fillRect(band.rect, colour);
    delegate->QStyledItemDelegate::paint(painter, band, index);
    painter->restore();
}

// The colour follows the row within its parent and starts at the view's
// left edge, under the indentation of child rows too; the last column runs
// on to the right edge.
void paintRecordCell(const CMwGridDelegate *delegate, QPainter *painter,
    const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QBrush background
        = option.palette.brush(index.row() % 2 == 0 ? QPalette::Window : QPalette::AlternateBase);
    painter->save();
    if (index.column() == 0) {
        QStyleOptionViewItem widened = option;
        widened.rect.setLeft(0);
        painter->fillRect(widened.rect, background);
        painter->restore();
        delegate->QStyledItemDelegate::paint(painter, widened, index);
        return;
    }
    if (isLastColumn(index)) {
        QStyleOptionViewItem rest = option;
        rest.text.clear();
        rest.rect = QRect(
            option.rect.right() + 1, option.rect.top(), viewWidth(option), option.rect.height());
        painter->fillRect(rest.rect, background);
        drawEmptyItem(painter, rest);
    }
    painter->fillRect(option.rect, background);
    painter->restore();
    delegate->QStyledItemDelegate::paint(painter, option, index);
}

// Empty cells below the last row, so that the grid runs to the bottom.
void paintFillerBelow(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QAbstractItemModel *model = index.model();
    if (model) {
        const bool lastRow = index.row() == model->rowCount(index.parent()) - 1;
        if (!lastRow && model->rowCount() != 0)
            return;
    }
    const int widgetHeight = viewHeight(option);
    if (option.rect.bottom() + option.rect.height() >= widgetHeight)
        return;
    const int step = option.rect.height();
    if (step <= 0)
        return;
    const bool lastColumn = isLastColumn(index);
    const int widgetWidth = viewWidth(option);
    painter->save();
    QStyleOptionViewItem filler = option;
    filler.state = QStyle::State_Enabled;
    filler.text.clear();
    if (index.column() == 0 || !model)
        filler.rect.setLeft(0);
    const auto drawFiller = [&]() {
        drawEmptyItem(painter, filler);
        if (lastColumn) {
            QStyleOptionViewItem right = filler;
            right.rect = QRect(
                filler.rect.right() + 1, filler.rect.top(), widgetWidth, filler.rect.height());
            drawEmptyItem(painter, right);
        }
    };
    // With a model the first filler goes below the cell; the empty model's
    // row is itself the first.
    while (filler.rect.bottom() < widgetHeight) {
        if (model) {
            filler.rect.translate(0, step);
            drawFiller();
        } else {
            drawFiller();
            filler.rect.translate(0, step);
        }
    }
    painter->restore();
}

} // namespace

CMwGridDelegate::CMwGridDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

CMwGridDelegate::~CMwGridDelegate() = default;

void CMwGridDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (index.data(BranchParentRole).isValid())
        paintGroupRowCell(this, painter, option, index);
    else if (index.model())
        paintRecordCell(this, painter, option, index);
    paintFillerBelow(painter, option, index);
}
