#include "selectedrows_p.h"

#include "gridtablecells_p.h"

#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include <QtCore/QHash>
#include <QtCore/QItemSelectionModel>

#include <algorithm>
#include <numeric>
#include <typeinfo>

namespace vel {

namespace {

    // The grid's own proxy: its data() is its source's, so cells may be read
    // from the source. A subclass could answer data() otherwise.
    const CMwSortFilterProxyModel *exactProxy(const QAbstractItemModel *model)
    {
        const auto *proxy = qobject_cast<const CMwSortFilterProxyModel *>(model);
        return proxy && typeid(*proxy) == typeid(CMwSortFilterProxyModel) ? proxy : nullptr;
    }

    // True when no index of \a model has children: an ungrouped
    // CMwGridTableModel, also seen through the grid's proxy.
    bool knownFlat(const QAbstractItemModel *model)
    {
        if (const CMwSortFilterProxyModel *proxy = exactProxy(model))
            model = proxy->sourceModel();
        const GridTableCells *table = GridTableCells::of(model);
        return table && table->isFlat();
    }

    // In m_sourceRows: a row not mapped to its source yet.
    constexpr int notMapped = -2;

} // namespace

SelectedRows::SelectedRows(const QItemSelectionModel *selection, int limit)
{
    if (!selection || !selection->model() || limit == 0)
        return;
    m_model = selection->model();

    const bool flat = knownFlat(m_model);
    // isRowSelected() answers false for a row number where the last toggle
    // (not yet merged into the earlier ranges) overlaps one of those ranges,
    // whatever the parent asked for; so under a tree the answer for a wholly
    // selected row is asked once per row number (1: selected, 0: not, -1: not
    // asked yet). In a flat model the toggled-off cells lie in the row itself,
    // which then is not wholly selected, so nothing needs asking.
    std::vector<signed char> byRowNumber;
    QHash<QModelIndex, int> parentSlots;
    // Per parent, the rows already looked at: selectedRows() lists a row
    // once, where it first appears in the ranges, selected or not.
    std::vector<std::vector<bool>> seen;

    // Through the grid's own proxy a row's flags are those of its source
    // cell, so a wholly selected row of a flat table is mapped to its source
    // here, once, and not again when its cells are read.
    const CMwSortFilterProxyModel *proxy = flat ? exactProxy(m_model) : nullptr;
    const QAbstractItemModel *source = proxy ? proxy->sourceModel() : nullptr;
    const GridTableCells *table = source ? GridTableCells::of(source) : nullptr;

    // The merged selection, in the order selectedRows() walks it.
    const QItemSelection ranges = selection->selection();
    for (const QItemSelectionRange &range : ranges) {
        const QModelIndex parentIndex = range.parent();
        auto slot = parentSlots.constFind(parentIndex);
        if (slot == parentSlots.constEnd()) {
            Parent parent;
            parent.index = parentIndex;
            parent.columns = m_model->columnCount(parentIndex);
            slot = parentSlots.insert(parentIndex, m_parents.size());
            m_parents.append(parent);
            seen.emplace_back();
        }
        const int p = slot.value();
        const int columns = m_parents.at(p).columns;
        std::vector<bool> &looked = seen[static_cast<size_t>(p)];
        if (range.bottom() >= int(looked.size()))
            looked.resize(static_cast<size_t>(range.bottom()) + 1, false);
        // A merged range that covers the whole row leaves nothing of the row
        // deselected or toggled off in its parent, so apart from the row
        // number rule above isRowSelected() reduces to the cells' flags: Qt
        // counts the row when at least one cell is selectable, and the first
        // cell being so settles it.
        const bool wholeRows = columns > 0 && range.left() <= 0 && range.right() >= columns - 1;
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (looked[static_cast<size_t>(row)])
                continue;
            looked[static_cast<size_t>(row)] = true;
            bool selected = false;
            int sourceRow = notMapped;
            int record = -1;
            if (wholeRows && table) {
                const QModelIndex cell = proxy->mapToSource(m_model->index(row, 0, parentIndex));
                // As below: a first cell that cannot be selected leaves it to
                // isRowSelected().
                selected = (source->flags(cell) & Qt::ItemIsSelectable)
                    || selection->isRowSelected(row, parentIndex);
                if (cell.isValid()) {
                    sourceRow = cell.row();
                    record = table->record(cell);
                } else {
                    sourceRow = -1;
                }
            } else if (wholeRows
                && (m_model->flags(m_model->index(row, 0, parentIndex)) & Qt::ItemIsSelectable)) {
                if (flat) {
                    selected = true;
                } else {
                    if (row >= int(byRowNumber.size()))
                        byRowNumber.resize(static_cast<size_t>(row) + 1, -1);
                    signed char &known = byRowNumber[static_cast<size_t>(row)];
                    if (known < 0)
                        known = selection->isRowSelected(row, parentIndex) ? 1 : 0;
                    selected = known == 1;
                }
            } else {
                selected = selection->isRowSelected(row, parentIndex);
            }
            if (!selected)
                continue;
            m_rows.push_back(Row {p, row});
            m_sourceRows.push_back(sourceRow);
            if (table)
                m_records.push_back(record);
            m_parents[p].anyRow = row;
            if (limit > 0 && int(m_rows.size()) >= limit)
                return;
        }
    }
}

SelectedRows::~SelectedRows() = default;

// QSortFilterProxyModel::data() is the source's data() at mapToSource() of
// the index, and mapToSource() is the source's index() at the source row of
// the proxy row and the source column of the proxy column, under the source
// parent. Both are fixed per row and per column, so they are looked up once.
// Only the exact proxy class is read this way: a subclass might answer
// data() itself.
void SelectedRows::mapToSource()
{
    m_mapped = true;
    const CMwSortFilterProxyModel *proxy = exactProxy(m_model);
    if (!proxy || !proxy->sourceModel())
        return;
    m_source = proxy->sourceModel();
    m_table = GridTableCells::of(m_source);

    for (Parent &parent : m_parents) {
        parent.source = proxy->mapToSource(parent.index);
        parent.sourceColumns.assign(static_cast<size_t>(qMax(parent.columns, 0)), -2);
    }
    if (m_table)
        m_records.resize(m_rows.size(), -1);
    for (size_t i = 0; i < m_rows.size(); ++i) {
        if (m_sourceRows[i] != notMapped)
            continue;
        m_sourceRows[i] = -1;
        const Row &row = m_rows[i];
        if (m_parents.at(row.parent).columns <= 0)
            continue;
        const QModelIndex source
            = proxy->mapToSource(proxy->index(row.row, 0, m_parents.at(row.parent).index));
        if (!source.isValid())
            continue;
        m_sourceRows[i] = source.row();
        if (m_table)
            m_records[i] = m_table->record(source);
    }
    m_allRecords = m_table
        && std::all_of(m_records.begin(), m_records.end(), [](int record) { return record >= 0; });
}

int SelectedRows::sourceColumn(Parent &parent, int column)
{
    int &known = parent.sourceColumns[static_cast<size_t>(column)];
    if (known == -2) {
        const QModelIndex source = static_cast<const QSortFilterProxyModel *>(m_model)->mapToSource(
            m_model->index(parent.anyRow, column, parent.index));
        known = source.isValid() ? source.column() : -1;
    }
    return known;
}

QVector<QVariant> SelectedRows::displayColumn(int column)
{
    QVector<QVariant> cells;
    const std::vector<const QVariant *> &pointers = displayCells(column);
    cells.reserve(int(pointers.size()));
    for (const QVariant *cell : pointers)
        cells.append(*cell);
    return cells;
}

const std::vector<const QVariant *> &SelectedRows::displayCells(int column)
{
    m_cells.clear();
    m_copies.clear();
    m_numbers.ofCell.clear();
    m_hasNumbers = false;
    m_tableColumn = -1;
    if (m_rows.empty())
        return m_cells;
    if (!m_mapped)
        mapToSource();
    m_cells.reserve(m_rows.size());
    // The table's numbers for the texts of the column, when every cell is
    // read from the table (numbers and hashed texts are not mixed).
    const QVector<int> *tableNumbers = nullptr;
    int tableNumberCount = 0;
    auto copy = [this](QVariant &&value) {
        m_copies.push_back(std::move(value));
        m_cells.push_back(&m_copies.back());
    };
    for (size_t i = 0; i < m_rows.size(); ++i) {
        const Row &row = m_rows[i];
        Parent &parent = m_parents[row.parent];
        // An index the model does not have reads as an empty cell.
        if (column < 0 || column >= parent.columns) {
            copy(m_model->index(row.row, column, parent.index).data(Qt::DisplayRole));
            continue;
        }
        const int sourceRow = m_source ? m_sourceRows[i] : -1;
        const int sourceCol = sourceRow >= 0 ? sourceColumn(parent, column) : -1;
        if (sourceCol < 0) {
            copy(m_model->index(row.row, column, parent.index).data(Qt::DisplayRole));
        } else if (m_table && m_records[i] >= 0) {
            m_cells.push_back(&m_table->cell(m_records[i], sourceCol));
            m_tableColumn = m_tableColumn == -1 || m_tableColumn == sourceCol ? sourceCol : -2;
            if (!tableNumbers)
                tableNumbers = &m_table->textNumbers(sourceCol, &tableNumberCount);
        } else {
            const QModelIndex source = m_source->index(sourceRow, sourceCol, parent.source);
            // The proxy answers an empty cell where the source has no index.
            copy(source.isValid() ? m_source->data(source, Qt::DisplayRole) : QVariant());
        }
    }
    if (!m_copies.empty())
        m_tableColumn = -1;
    // Under a proxy every cell of a column comes from one source column.
    if (tableNumbers && m_copies.empty() && !tableNumbers->isEmpty()) {
        m_numbers.count = tableNumberCount;
        m_numbers.ofCell.reserve(m_rows.size());
        for (size_t i = 0; i < m_rows.size(); ++i)
            m_numbers.ofCell.push_back(tableNumbers->at(m_records[i]));
        m_hasNumbers = true;
    }
    return m_cells;
}

const std::vector<int> *SelectedRows::recordsInOrder()
{
    if (!m_allRecords)
        return nullptr;
    if (m_recordsInOrder.size() != m_rows.size()) {
        // A counting sort on the records, found once for every column.
        int records = 0;
        for (const int record : m_records)
            records = std::max(records, record + 1);
        std::vector<bool> read(static_cast<size_t>(records), false);
        for (const int record : m_records)
            read[static_cast<size_t>(record)] = true;
        m_recordsInOrder.clear();
        m_recordsInOrder.reserve(m_rows.size());
        for (int record = 0; record < records; ++record) {
            if (read[static_cast<size_t>(record)])
                m_recordsInOrder.push_back(record);
        }
        // A record shown twice (never in a flat table): no such order.
        if (m_recordsInOrder.size() != m_rows.size()) {
            m_recordsInOrder.clear();
            return nullptr;
        }
    }
    return &m_recordsInOrder;
}

const std::vector<const QVariant *> *SelectedRows::storageCells()
{
    if (m_tableColumn < 0 || !recordsInOrder())
        return nullptr;
    m_storageCells.clear();
    m_storageCells.reserve(m_recordsInOrder.size());
    for (const int record : m_recordsInOrder)
        m_storageCells.push_back(&m_table->cell(record, m_tableColumn));
    return &m_storageCells;
}

GridTableCells::Typed SelectedRows::typedColumn(int column)
{
    if (m_rows.empty())
        return {};
    if (!m_mapped)
        mapToSource();
    if (!m_allRecords)
        return {};
    // Every row under a parent reads the same source column.
    int sourceCol = -1;
    for (Parent &parent : m_parents) {
        if (parent.anyRow < 0)
            continue;
        if (column < 0 || column >= parent.columns)
            return {};
        const int known = sourceColumn(parent, column);
        if (known < 0 || (sourceCol >= 0 && known != sourceCol))
            return {};
        sourceCol = known;
    }
    if (sourceCol < 0)
        return {};
    return m_table->typed(sourceCol);
}

bool SelectedRows::typedStatistics(int column, double &count, double &distinct, double &min,
    double &max, double &mean, double &stdev)
{
    const GridTableCells::Typed cells = typedColumn(column);
    if (cells.kind == GridTableCells::Typed::None)
        return false;
    const std::vector<int> *inOrder = recordsInOrder();
    return vel::typedStatistics(cells, m_records.data(), int(m_records.size()),
        inOrder ? inOrder->data() : nullptr, count, distinct, min, max, mean, stdev);
}

void SelectedRows::typedStatistics(int columns, std::vector<StatisticsResult> &results)
{
    std::vector<GridTableCells::Typed> cells;
    cells.reserve(static_cast<size_t>(std::max(columns, 0)));
    bool any = false;
    for (int column = 0; column < columns; ++column) {
        cells.push_back(typedColumn(column));
        any = any || cells.back().kind != GridTableCells::Typed::None;
    }
    if (!any) {
        results.assign(cells.size(), StatisticsResult());
        return;
    }
    const std::vector<int> *inOrder = recordsInOrder();
    vel::typedStatistics(cells, m_records.data(), int(m_records.size()),
        inOrder ? inOrder->data() : nullptr, results);
}

} // namespace vel
