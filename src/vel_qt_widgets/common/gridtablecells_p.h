#ifndef VEL_QT_WIDGETS_GRIDTABLECELLS_P_H
#define VEL_QT_WIDGETS_GRIDTABLECELLS_P_H

#include <vel_qt_widgets/vel_qt_widgets_export.h>

#include <QtCore/QVariant>
#include <QtCore/QVector>

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
class QModelIndex;
QT_END_NAMESPACE

namespace vel {

// Direct reads of a CMwGridTableModel's cells for code that walks many at
// once (the grid's statistics over a selection, the filter proxy's sort);
// data() answers the same, one call a cell. Every CMwGridTableModel offers
// them, a subclass too. Declared here, below both families that read them;
// the grid's ready model implements it.
class VEL_QT_WIDGETS_EXPORT GridTableCells
{
public:
    // The cells of \a model, or null when it is no CMwGridTableModel.
    static const GridTableCells *of(const QAbstractItemModel *model);

    // The record shown by \a index, a valid index of the model; -1 for a group row.
    virtual int record(const QModelIndex &index) const = 0;
    // What data() returns for Qt::DisplayRole in \a column of \a record.
    virtual const QVariant &cell(int record, int column) const = 0;
    // Per record, the number of the distinct text in \a column (equal numbers,
    // equal texts; -1 where the cell holds no text), empty when the column
    // holds no text; \a count receives how many distinct texts there are.
    // Kept until the column changes.
    virtual const QVector<int> &textNumbers(int column, int *count) const = 0;
    // True while no row of the model has children.
    virtual bool isFlat() const = 0;

protected:
    ~GridTableCells() = default;
};

} // namespace vel

#endif // VEL_QT_WIDGETS_GRIDTABLECELLS_P_H
