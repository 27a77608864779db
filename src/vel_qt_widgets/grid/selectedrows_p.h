#ifndef VEL_QT_WIDGETS_SELECTEDROWS_P_H
#define VEL_QT_WIDGETS_SELECTEDROWS_P_H

#include "qvectorcalcstatistics_p.h"

#include <vel_qt_widgets/vel_qt_widgets_export.h>

#include <QtCore/QModelIndex>
#include <QtCore/QVariant>
#include <QtCore/QVector>

#include <deque>
#include <vector>

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
class QItemSelectionModel;
QT_END_NAMESPACE

namespace vel {

class GridTableCells;

// The rows that QItemSelectionModel::selectedRows() lists, in its order, and
// the display data of their cells, read without one QModelIndex list per
// column: with a million selected rows the lists, and the per-row checks of
// isRowSelected(), cost far more than the statistics computed from them.
//
// A row of a selection range that spans every column of its parent is
// selected exactly when its first cell is selectable; only other rows are
// asked of isRowSelected(). Cells are read through the grid's own proxy
// straight from its source model (and from a CMwGridTableModel's columns,
// a subclass's too) when the model is exactly such a proxy; any other model is asked cell by
// cell, as selectedRows(c) and data() would.
class VEL_QT_WIDGETS_EXPORT SelectedRows
{
public:
    // Reads the selection's rows, stopping after \a limit rows if limit >= 0.
    explicit SelectedRows(const QItemSelectionModel *selection, int limit = -1);
    ~SelectedRows();

    int count() const { return int(m_rows.size()); }

    // The Qt::DisplayRole data in \a column of every row, in order: what
    // selectedRows(column).at(i).data() returns.
    QVector<QVariant> displayColumn(int column);

    // The same data in place: pointers into the model's own storage where it
    // can be read directly, otherwise to copies kept here. Valid until the
    // next call, while the model does not change.
    const std::vector<const QVariant *> &displayCells(int column);

    // For the last displayCells(): the texts' numbers when the model had them
    // ready for every cell, otherwise null.
    const TextNumbers *textNumbers() const { return m_hasNumbers ? &m_numbers : nullptr; }

    // For the last displayCells(): the same cells in the order in which the
    // model keeps them (ascending record) when every cell was read from one
    // column of a CMwGridTableModel, otherwise null. Reading a million cells
    // in that order instead of the view's sort order spares a cache miss a
    // cell.
    const std::vector<const QVariant *> *storageCells();

    // The statistics of \a column read from the model's typed arrays, when
    // every cell of it comes from one column of a CMwGridTableModel held
    // typed (see typedStatistics()); false, having set nothing, otherwise.
    bool typedStatistics(int column, double &count, double &distinct, double &min, double &max,
        double &mean, double &stdev);

    // The same for columns 0 .. columns - 1 at once (done false where a
    // column is not typed): the same results, faster for many columns.
    void typedStatistics(int columns, std::vector<StatisticsResult> &results);

private:
    // The typed column that every cell of \a column comes from; kind None
    // when there is none.
    GridTableCells::Typed typedColumn(int column);

    struct Parent
    {
        QModelIndex index;
        int columns = 0;
        // Through the proxy: the source parent and, per proxy column, the
        // source column (-1: unknown, read through the proxy).
        QModelIndex source;
        std::vector<int> sourceColumns;
        int anyRow = -1;
    };
    struct Row
    {
        int parent;
        int row;
    };

    void mapToSource();
    int sourceColumn(Parent &parent, int column);
    // m_records ascending, or null when a record is missing or repeats.
    const std::vector<int> *recordsInOrder();

    const QAbstractItemModel *m_model = nullptr;
    QVector<Parent> m_parents;
    std::vector<Row> m_rows;

    // Set when m_model is exactly the grid's proxy.
    const QAbstractItemModel *m_source = nullptr;
    const GridTableCells *m_table = nullptr;
    bool m_mapped = false;
    // Per row: its source row (-1: read through the proxy; -2: not mapped
    // yet, until mapToSource()) and, for a CMwGridTableModel, its record
    // (-1: ask data()).
    std::vector<int> m_sourceRows;
    std::vector<int> m_records;
    // Set when every row has its record.
    bool m_allRecords = false;

    std::vector<const QVariant *> m_cells;
    // Cells read through data(); a deque keeps each where it was put.
    std::deque<QVariant> m_copies;
    TextNumbers m_numbers;
    bool m_hasNumbers = false;
    // The same for every column read from the table: worked out once.
    int m_tableColumn = -1;
    std::vector<int> m_recordsInOrder;
    std::vector<const QVariant *> m_storageCells;
};

} // namespace vel

#endif // VEL_QT_WIDGETS_SELECTEDROWS_P_H
