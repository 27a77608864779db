#ifndef VEL_QT_WIDGETS_CMWSTATISTICSITEMMODEL_H
#define VEL_QT_WIDGETS_CMWSTATISTICSITEMMODEL_H

#include "vel_qt_widgets_export.h"

#include <QtGui/QStandardItemModel>

class CMwHierarchicalGridView;

/*!
    \brief The model of the grid's statistics table: one item per
    (statistics row, column), each column as wide as the grid's body column.
*/
class VEL_QT_WIDGETS_EXPORT CMwStatisticsItemModel : public QStandardItemModel
{
    Q_OBJECT

public:
    /*! An empty model; with a grid as \a parent, columns follow the grid's widths. */
    explicit CMwStatisticsItemModel(CMwHierarchicalGridView *parent = nullptr);
    ~CMwStatisticsItemModel() override;

    /*! Qt::SizeHintRole: QSize(grid column width - 1, 0) when the parent is
        a grid; everything else as QStandardItemModel. */
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    Q_DISABLE_COPY(CMwStatisticsItemModel)
};

#endif // VEL_QT_WIDGETS_CMWSTATISTICSITEMMODEL_H
