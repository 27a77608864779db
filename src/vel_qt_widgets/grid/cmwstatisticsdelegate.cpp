#include <vel_qt_widgets/CMwStatisticsDelegate.h>

#include <QtGui/QPainter>
#include <QtGui/QPen>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTableView>

CMwStatisticsDelegate::CMwStatisticsDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{
}

CMwStatisticsDelegate::~CMwStatisticsDelegate() = default;

void CMwStatisticsDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QAbstractItemModel *model = index.model();
    const int columns = model ? model->columnCount(index.parent()) : 0;
    if (columns > 0 && index.column() != columns - 1) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    // The last column continues the grid lines to the table's right edge.
    if (auto *table = qobject_cast<const QTableView *>(option.widget)) {
        painter->save();
        const int gridHint
            = table->style()->styleHint(QStyle::SH_Table_GridLineColor, &option, table);
        const QPen pen(QColor::fromRgb(static_cast<QRgb>(gridHint)), 0, table->gridStyle(),
            Qt::SquareCap, Qt::BevelJoin);
        painter->setPen(pen);
        QRect rect = option.rect.translated(option.rect.width(), 0);
        rect.setRight(rect.left() + table->width() - 1);
        rect.adjust(0, 0, 0, 1);
        painter->drawLine(rect.bottomLeft(), rect.bottomRight());
        if (index.row() == 0)
            painter->drawLine(rect.topLeft(), rect.topRight());
        painter->restore();
    }
    QStyledItemDelegate::paint(painter, option, index);
}
