#include <vel_qt_widgets/CMwGridStatistics.h>
#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <QtGui/QPainter>
#include <QtGui/QPen>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTableView>

CMwStatisticsItemModel::CMwStatisticsItemModel(CMwHierarchicalGridView *parent)
    : QStandardItemModel(parent)
{
}

CMwStatisticsItemModel::~CMwStatisticsItemModel() = default;

QVariant CMwStatisticsItemModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::SizeHintRole) {
        if (auto *grid = qobject_cast<CMwHierarchicalGridView *>(QObject::parent()))
            return QSize(grid->columnWidth(index.column()) - 1, 0);
    }
    return QStandardItemModel::data(index, role);
}

CMwStatisticsDelegate::CMwStatisticsDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

CMwStatisticsDelegate::~CMwStatisticsDelegate() = default;

void CMwStatisticsDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                  const QModelIndex &index) const
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
        const int gridHint = table->style()->styleHint(QStyle::SH_Table_GridLineColor, &option, table);
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
