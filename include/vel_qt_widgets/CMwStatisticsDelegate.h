#ifndef VEL_QT_WIDGETS_CMWSTATISTICSDELEGATE_H
#define VEL_QT_WIDGETS_CMWSTATISTICSDELEGATE_H

#include "vel_qt_widgets_export.h"

#include <QtWidgets/QStyledItemDelegate>

/*!
    \brief The delegate of the statistics table: continues the table's grid
    lines to the right of the last column.
*/
class VEL_QT_WIDGETS_EXPORT CMwStatisticsDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /*! A delegate for the statistics table. */
    explicit CMwStatisticsDelegate(QObject *parent = nullptr);
    ~CMwStatisticsDelegate() override;

    /*! Paints the cell as QStyledItemDelegate does; the last column's cell
        also draws the grid lines on to the right edge of the view. */
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
        const QModelIndex &index) const override;

private:
    Q_DISABLE_COPY(CMwStatisticsDelegate)
};

#endif // VEL_QT_WIDGETS_CMWSTATISTICSDELEGATE_H
