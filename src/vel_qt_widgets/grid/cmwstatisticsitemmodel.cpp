#include <vel_qt_widgets/CMwStatisticsItemModel.h>

#include "gridlookup_p.h"

CMwStatisticsItemModel::CMwStatisticsItemModel(CMwHierarchicalGridView *parent)
    : QStandardItemModel(vel::GridLookup::object(parent))
{
}

CMwStatisticsItemModel::~CMwStatisticsItemModel() = default;

QVariant CMwStatisticsItemModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::SizeHintRole) {
        if (const CMwHierarchicalGridView *grid = vel::GridLookup::grid(QObject::parent()))
            return QSize(vel::GridLookup::columnWidth(grid, index.column()) - 1, 0);
    }
    return QStandardItemModel::data(index, role);
}
