#ifndef VEL_QT_WIDGETS_CMWGRIDTABLEMODEL_P_H
#define VEL_QT_WIDGETS_CMWGRIDTABLEMODEL_P_H

#include <vel_qt_widgets/CMwGridTableModel.h>

namespace vel {

// Direct reads for code that walks many cells at once (the grid's
// statistics over a selection); data() answers the same, one call a cell.

// The record shown by \a index, a valid index of \a model; -1 for a group row.
int gridTableRecord(const CMwGridTableModel *model, const QModelIndex &index);

// What data() returns for Qt::DisplayRole in \a column of \a record.
const QVariant &gridTableCell(const CMwGridTableModel *model, int record, int column);

// Per record, the number of the distinct text in \a column (equal numbers,
// equal texts; -1 where the cell holds no text), empty when the column holds
// no text; \a count receives how many distinct texts there are. Kept until
// the column changes.
const QVector<int> &gridTableTextNumbers(const CMwGridTableModel *model, int column, int *count);

} // namespace vel

#endif // VEL_QT_WIDGETS_CMWGRIDTABLEMODEL_P_H
