#include <vel_qt_widgets/CMwGridTreeView.h>

#include <QtGui/QColor>
#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStyle>

namespace {

// The grid composite lives in a later part of the library; it is found by
// class name so that the body does not depend on it.
QColor branchParentColour(const QWidget *widget)
{
    const QWidget *grid = widget ? widget->parentWidget() : nullptr;
    if (grid && grid->inherits("CMwHierarchicalGridView")) {
        const QVariant colour = grid->property("colBranchParent");
        if (colour.canConvert<QColor>())
            return qvariant_cast<QColor>(colour);
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

} // namespace

// ---------------------------------------------------------------------------
// CMwGridTreeView

CMwGridTreeView::CMwGridTreeView(QWidget *parent)
    : QTreeView(parent)
{
}

CMwGridTreeView::~CMwGridTreeView() = default;

void CMwGridTreeView::paintEvent(QPaintEvent *event)
{
    QAbstractItemDelegate *delegate = itemDelegate();
    if (!model() || model()->rowCount() != 0 || !delegate) {
        QTreeView::paintEvent(event);
        return;
    }
    // An empty model still shows one empty row, so that the grid does not
    // look broken and the columns keep their cells.
    QPainter painter(viewport());
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QStyleOptionViewItem option;
    initViewItemOption(&option);
#else
    QStyleOptionViewItem option = viewOptions();
#endif
    const QFontMetrics metrics = fontMetrics();
    const int bottom = metrics.descent() + metrics.lineSpacing();
    const int columns = model()->columnCount();
    int x = 0;
    for (int c = 0; c < columns; ++c) {
        const int w = columnWidth(c);
        option.rect = QRect(QPoint(x, 0), QPoint(x + w - 1, bottom));
        delegate->paint(&painter, option, QModelIndex());
        x += w;
    }
}

// ---------------------------------------------------------------------------
// CMwGridDelegate

CMwGridDelegate::CMwGridDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

CMwGridDelegate::~CMwGridDelegate() = default;

void CMwGridDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    const QAbstractItemModel *model = index.model();
    const QWidget *widget = option.widget;
    const int widgetWidth = widget ? widget->width() : option.rect.width();
    const int widgetHeight = widget ? widget->height() : option.rect.bottom() + 1;
    const bool lastColumn = model && index.column() + 1 == model->columnCount(index.parent());

    if (index.data(BranchParentRole).isValid()) {
        // A group row is one band; its caption in column 0 runs across it
        // and the other columns leave the band alone.
        if (index.column() == 0) {
            painter->save();
            QStyleOptionViewItem band = option;
            band.rect.setRight(band.rect.left() + widgetWidth - 1);
            const QColor colour = branchParentColour(widget);
            band.palette.setColor(
                QPalette::Text, captionColourOn(colour, band.palette.color(QPalette::Text)));
            painter->fillRect(band.rect, colour);
            QStyledItemDelegate::paint(painter, band, index);
            painter->restore();
        }
    } else if (model) {
        // The colour follows the row within its parent and starts at the
        // view's left edge, under the indentation of child rows too.
        const QBrush background = option.palette.brush(
            index.row() % 2 == 0 ? QPalette::Window : QPalette::AlternateBase);
        painter->save();
        if (index.column() == 0) {
            QStyleOptionViewItem widened = option;
            widened.rect.setLeft(0);
            painter->fillRect(widened.rect, background);
            painter->restore();
            QStyledItemDelegate::paint(painter, widened, index);
        } else if (lastColumn) {
            QStyleOptionViewItem rest = option;
            rest.text.clear();
            rest.rect = QRect(option.rect.right() + 1, option.rect.top(), widgetWidth,
                              option.rect.height());
            painter->fillRect(rest.rect, background);
            drawEmptyItem(painter, rest);
            painter->fillRect(option.rect, background);
            painter->restore();
            QStyledItemDelegate::paint(painter, option, index);
        } else {
            painter->fillRect(option.rect, background);
            painter->restore();
            QStyledItemDelegate::paint(painter, option, index);
        }
    }

    // Empty cells below the last row, so that the grid runs to the bottom.
    if (model) {
        const bool lastRow = index.row() == model->rowCount(index.parent()) - 1;
        if (!lastRow && model->rowCount() != 0)
            return;
    }
    if (option.rect.bottom() + option.rect.height() >= widgetHeight)
        return;
    const int step = option.rect.height();
    if (step <= 0)
        return;
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
            right.rect = QRect(filler.rect.right() + 1, filler.rect.top(), widgetWidth,
                               filler.rect.height());
            drawEmptyItem(painter, right);
        }
    };
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
