#include <vel_qt_widgets/CMwStatisticsItemModel.h>
#include <vel_qt_widgets/CMwHierarchicalGridView.h>

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
