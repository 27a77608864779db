#include "cmwfilterwidget_p.h"

#include "cmwfilterkeynavigator_p.h"
#include "cmwfiltervaluedelegate_p.h"
#include "cmwfiltervocabulary_p.h"
#include "cmwvariantcompare_p.h"

#include <vel_qt_widgets/CMwPickerForTable.h>

#include <QtCore/QtDebug>
#include <QtWidgets/QHeaderView>

namespace {

// Two filter lists are the same when Qt 5's QVariant equality says so, cell
// for cell, whichever Qt the library runs on.
bool sameFilter(const QVector<QVector<QVariant>> &a, const QVector<QVector<QVariant>> &b)
{
    if (a.size() != b.size())
        return false;
    for (int r = 0; r < a.size(); ++r) {
        if (a.at(r).size() != b.at(r).size())
            return false;
        for (int c = 0; c < a.at(r).size(); ++c) {
            if (!vel::Qt5Variant::equal(a.at(r).at(c), b.at(r).at(c)))
                return false;
        }
    }
    return true;
}

enum Column {
    CheckColumn = 0,
    OperatorColumn,
    ColumnColumn,
    ComparatorColumn,
    ValueColumn,
    ColumnCount
};

// Initial column widths in pixels; the value column then stretches to the
// editor's width.
constexpr int CheckColumnWidth = 20;
constexpr int OperatorColumnWidth = 50;
constexpr int ColumnColumnWidth = 180;
constexpr int ComparatorColumnWidth = 170;
constexpr int ValueColumnWidth = 120;

constexpr int initialWidths[ColumnCount] = {
    CheckColumnWidth,
    OperatorColumnWidth,
    ColumnColumnWidth,
    ComparatorColumnWidth,
    ValueColumnWidth,
};

// Pixels a row gets beyond the size hint of its cells.
constexpr int RowPadding = 2;

} // namespace

CMwFilterWidgetPrivate::CMwFilterWidgetPrivate(CMwFilterWidget *q)
    : q_ptr(q)
{
}

CMwFilterWidgetPrivate::~CMwFilterWidgetPrivate() = default;

CMwFilterWidget::CMwFilterWidget(QWidget *parent)
    : CMwFilterWidget(new CMwFilterWidgetPrivate(this), parent)
{
}

CMwFilterWidget::CMwFilterWidget(CMwFilterWidgetPrivate *d, QWidget *parent)
    : QTableWidget(parent)
    , d_vel(d)
{
    setSizePolicy(
        QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding, QSizePolicy::DefaultType));
    verticalHeader()->hide();
    setColumnCount(ColumnCount);
    setHorizontalHeaderLabels(VelFilterVocabulary::headerTexts());

    QHeaderView *header = horizontalHeader();
    // QHeaderView clamps sections to its minimum section size, which the
    // style makes wider than the check column; lower it so the widths hold.
    header->setMinimumSectionSize(qMin(header->minimumSectionSize(), CheckColumnWidth));
    for (int column = 0; column < ColumnCount; ++column)
        setColumnWidth(column, initialWidths[column]);
    header->setSectionResizeMode(ValueColumn, QHeaderView::Stretch);

    // The same clamping applies to the default row height.
    const int rowSize = sizeHintForRow(0) + RowPadding;
    verticalHeader()->setMinimumSectionSize(qMin(verticalHeader()->minimumSectionSize(), rowSize));
    verticalHeader()->setDefaultSectionSize(rowSize);
    header->setHighlightSections(false);
    setSelectionBehavior(QAbstractItemView::SelectRows);

    d->navigator
        = new CMwFilterKeyNavigator(this, [this](QTableWidgetItem *item) { onItemPressed(item); });
    setItemDelegateForColumn(ValueColumn, new CMwFilterValueDelegate(d->navigator, this));
}

CMwFilterWidget::~CMwFilterWidget() = default;

void CMwFilterWidget::setRefModel(CMwSortFilterProxyModel *model)
{
    Q_D(CMwFilterWidget);
    d->m_refModel = model;
}

void CMwFilterWidget::defineFilter()
{
    if (rowCount() == 0)
        addRow(-1);
}

void CMwFilterWidget::takeFilter(QVector<QVector<QVariant>> &filter)
{
    // The last row is the placeholder and never takes part.
    for (int row = 0; row < rowCount() - 1; ++row) {
        if (isRowEnabled(row))
            filter.append(takeRowData(row));
    }
}

void CMwFilterWidget::addRow(int row)
{
    Q_D(CMwFilterWidget);
    if (!d->m_refModel)
        return;
    if (row == -1)
        row = rowCount();
    if (row < 0 || row > rowCount()) {
        qWarning("CMwFilterWidget::addRow: row %d out of range [0, %d]", row, rowCount());
        return;
    }
    insertRow(row);

    // Neither enabled nor selectable until the row is enabled.
    auto *check = new QTableWidgetItem;
    check->setFlags(Qt::ItemIsUserCheckable);
    check->setCheckState(Qt::Checked);
    setItem(row, CheckColumn, check);
    connect(this, SIGNAL(itemPressed(QTableWidgetItem *)), this,
        SLOT(onItemPressed(QTableWidgetItem *)));
    connect(this, SIGNAL(itemClicked(QTableWidgetItem *)), this,
        SLOT(onItemPressed(QTableWidgetItem *)));

    auto *op = new CMwPickerForTable(this);
    op->addItems(VelFilterVocabulary::operatorTexts());
    op->setCurrentIndex(0);
    op->setEnabled(false);
    connect(op, SIGNAL(currentIndexChanged(int)), this, SLOT(onComboOperatorChanged(int)));
    connect(op, SIGNAL(popupWillShow(bool &)), this, SLOT(onComboOperatorPopupWillShow(bool &)));
    setCellWidget(row, OperatorColumn, op);

    // The one control of the placeholder row that the user can operate.
    auto *columnPicker = new CMwPickerForTable(this);
    const CMwSortFilterProxyModel *model = d->m_refModel.data();
    const int columns = model->columnCount();
    for (int column = 0; column < columns; ++column)
        columnPicker->addItem(
            model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    columnPicker->setCurrentIndex(-1);
    connect(columnPicker, SIGNAL(currentIndexChanged(int)), this, SLOT(onComboColumnChanged(int)));
    connect(columnPicker, SIGNAL(popupWillShow(bool &)), this,
        SLOT(onComboColumnPopupWillShow(bool &)));
    setCellWidget(row, ColumnColumn, columnPicker);

    auto *comparator = new CMwPickerForTable(this);
    comparator->addItems(VelFilterVocabulary::comparatorTexts());
    comparator->setCurrentIndex(VelFilterVocabulary::GreaterOrEqual);
    comparator->setEnabled(false);
    connect(
        comparator, SIGNAL(currentIndexChanged(int)), this, SLOT(onComboComparatorChanged(int)));
    connect(comparator, SIGNAL(popupWillShow(bool &)), this,
        SLOT(onComboComparatorPopupWillShow(bool &)));
    setCellWidget(row, ComparatorColumn, comparator);

    // The pickers carry their column's caption as name for screen readers,
    // and join the editor's Tab walk.
    const QStringList captions = VelFilterVocabulary::headerTexts();
    op->setAccessibleName(captions.value(OperatorColumn));
    columnPicker->setAccessibleName(captions.value(ColumnColumn));
    comparator->setAccessibleName(captions.value(ComparatorColumn));
    // A new widget joins the window's Tab chain at its end, behind whatever
    // follows the editor; the row's pickers are kept right behind the editor
    // instead, so that Tab out of the editor reaches the widget after it.
    QWidget::setTabOrder(this, op);
    QWidget::setTabOrder(op, columnPicker);
    QWidget::setTabOrder(columnPicker, comparator);
    d->navigator->watch(op);
    d->navigator->watch(columnPicker);
    d->navigator->watch(comparator);

    auto *value = new QTableWidgetItem(QString());
    value->setFlags(value->flags() & ~Qt::ItemIsEnabled);
    setItem(row, ValueColumn, value);
    // Made again for every row, on purpose (docs/compatibility.md).
    connect(this, SIGNAL(itemChanged(QTableWidgetItem *)), this,
        SLOT(onItemChanged(QTableWidgetItem *)));

    updateMaximumHeight();
}

void CMwFilterWidget::updateMaximumHeight()
{
    // The header gets the height QTableView::updateGeometries gives it; using
    // the same rule keeps the limit right before the widget is first laid out.
    const QHeaderView *header = horizontalHeader();
    const int headerHeight
        = header->isHidden() ? 0 : qMax(header->minimumHeight(), header->sizeHint().height());
    const int rowHeight0 = rowCount() > 0 ? rowHeight(0) : 0;
    setMaximumHeight(rowCount() * (rowHeight0 + 1) + (headerHeight - 1) + 3);
}

void CMwFilterWidget::enableRow(int row, bool enable)
{
    if (row < 0 || row >= rowCount()) {
        qWarning("CMwFilterWidget::enableRow: row %d out of range", row);
        return;
    }
    for (int column = 0; column < columnCount(); ++column) {
        // Disabling never touches the check box: the user must be able to
        // switch the row on again.
        if (column == CheckColumn && !enable)
            continue;
        if (QTableWidgetItem *cell = item(row, column)) {
            cell->setFlags(
                enable ? cell->flags() | Qt::ItemIsEnabled : cell->flags() & ~Qt::ItemIsEnabled);
        } else if (QWidget *widget = cellWidget(row, column)) {
            widget->setEnabled(enable);
        }
    }
}

bool CMwFilterWidget::isRowEnabled(int row)
{
    const QTableWidgetItem *check = item(row, CheckColumn);
    return check && check->checkState() != Qt::Unchecked;
}

bool CMwFilterWidget::isRowSelected(int row)
{
    // Only the first selected index counts.
    const QModelIndexList selected = selectedIndexes();
    return !selected.isEmpty() && selected.first().row() == row;
}

QVector<int> CMwFilterWidget::selectedRows()
{
    QVector<int> rows;
    const QModelIndexList selected = selectedIndexes();
    for (const QModelIndex &index : selected) {
        if (!rows.contains(index.row()))
            rows.append(index.row());
    }
    return rows;
}

int CMwFilterWidget::rowFromRowWidget(QWidget *widget, int column)
{
    if (!widget)
        return -1;
    for (int row = 0; row < rowCount(); ++row) {
        if (cellWidget(row, column) == widget)
            return row;
    }
    return -1;
}

int CMwFilterWidget::rowFromRowItem(QTableWidgetItem *item, int column)
{
    if (!item)
        return -1;
    for (int row = 0; row < rowCount(); ++row) {
        if (QTableWidget::item(row, column) == item)
            return row;
    }
    return -1;
}

QVector<QVariant> CMwFilterWidget::takeRowData(int row)
{
    QVector<QVariant> values;
    for (int column = 0; column < columnCount(); ++column) {
        if (const QTableWidgetItem *cell = item(row, column))
            values.append(cell->data(Qt::DisplayRole));
        else if (const auto *combo = qobject_cast<const QComboBox *>(cellWidget(row, column)))
            values.append(combo->currentData(Qt::DisplayRole));
    }
    return values;
}

void CMwFilterWidget::setRowData(int row, const QVector<QVariant> &values)
{
    const int count = qMin(columnCount(), values.size());
    for (int column = 0; column < count; ++column) {
        if (QTableWidgetItem *cell = item(row, column))
            cell->setData(Qt::DisplayRole, values.at(column));
        else if (auto *combo = qobject_cast<QComboBox *>(cellWidget(row, column)))
            combo->setCurrentText(values.at(column).toString());
    }
}

void CMwFilterWidget::moveRow(int row, bool up)
{
    if (row < 0 || row >= rowCount()) {
        qWarning("CMwFilterWidget::moveRow: row %d out of range", row);
        return;
    }
    const int target = up ? row - 1 : row + 1;
    if (target < 0 || target >= rowCount())
        return;
    // Only the row data travels; check and enabled states stay in place.
    const QVector<QVariant> moving = takeRowData(row);
    const QVector<QVariant> other = takeRowData(target);
    setRowData(row, other);
    setRowData(target, moving);
    selectRow(target);
}

void CMwFilterWidget::onButtonUp()
{
    Q_D(CMwFilterWidget);
    const QVector<int> rows = selectedRows();
    for (int row : rows)
        moveRow(row, true);
    onFilterChanged(d->m_bActive);
}

void CMwFilterWidget::onButtonDown()
{
    Q_D(CMwFilterWidget);
    const QVector<int> rows = selectedRows();
    for (int i = rows.size() - 1; i >= 0; --i)
        moveRow(rows.at(i), false);
    onFilterChanged(d->m_bActive);
}

void CMwFilterWidget::onButtonRemove()
{
    Q_D(CMwFilterWidget);
    const QVector<int> rows = selectedRows();
    // Indices used as listed, not corrected (docs/compatibility.md); the
    // placeholder is never removed.
    for (int row : rows) {
        if (row < rowCount() - 1)
            removeRow(row);
    }
    updateMaximumHeight();
    onFilterChanged(d->m_bActive);
}

void CMwFilterWidget::onItemPressed(QTableWidgetItem *pItem)
{
    const int row = rowFromRowItem(pItem, CheckColumn);
    if (row < 0 || row == rowCount() - 1)
        return;
    // The filter follows through the itemChanged of the check box itself.
    enableRow(row, pItem->checkState() != Qt::Unchecked);
}

void CMwFilterWidget::onItemChanged(QTableWidgetItem *pItem)
{
    Q_D(CMwFilterWidget);
    Q_UNUSED(pItem)
    onFilterChanged(d->m_bActive);
}

void CMwFilterWidget::onComboColumnChanged(int index)
{
    Q_D(CMwFilterWidget);
    Q_UNUSED(index)
    auto *picker = qobject_cast<QComboBox *>(sender());
    const int row = rowFromRowWidget(picker, ColumnColumn);
    if (row < 0)
        return;
    enableRow(row, true);

    QVariant sample;
    if (d->m_refModel)
        sample = d->m_refModel->firstValueOfColumn(picker->currentText());
    if (QTableWidgetItem *value = item(row, ValueColumn)) {
        const int type = sample.userType();
        if (type == QMetaType::Double || type == QMetaType::Float)
            value->setText(locale().toString(sample.toDouble(), 'g', 6));
        else
            value->setText(sample.toString());
        // A float is aligned left, on purpose (docs/compatibility.md).
        const bool right
            = type == QMetaType::Double || type == QMetaType::Int || type == QMetaType::UInt;
        value->setTextAlignment(right ? Qt::AlignRight : Qt::AlignLeft);
    }

    // The placeholder has just been used: the table gets a new one.
    if (rowCount() > 0) {
        const auto *last
            = qobject_cast<const QComboBox *>(cellWidget(rowCount() - 1, ColumnColumn));
        if (last && last->currentIndex() != -1)
            addRow(-1);
    }
    onFilterChanged(d->m_bActive);
}

void CMwFilterWidget::onComboComparatorChanged(int index)
{
    Q_D(CMwFilterWidget);
    Q_UNUSED(index)
    onFilterChanged(d->m_bActive);
}

void CMwFilterWidget::onComboOperatorChanged(int index)
{
    Q_D(CMwFilterWidget);
    Q_UNUSED(index)
    onFilterChanged(d->m_bActive);
}

void CMwFilterWidget::popupWillShow(bool &bShow, int column)
{
    // The first click on a picker of an unselected row only selects the row.
    const int row = rowFromRowWidget(qobject_cast<QWidget *>(sender()), column);
    bShow = isRowSelected(row);
    selectRow(row);
}

void CMwFilterWidget::onComboOperatorPopupWillShow(bool &bShow)
{
    popupWillShow(bShow, OperatorColumn);
}

void CMwFilterWidget::onComboColumnPopupWillShow(bool &bShow)
{
    popupWillShow(bShow, ColumnColumn);
}

void CMwFilterWidget::onComboComparatorPopupWillShow(bool &bShow)
{
    popupWillShow(bShow, ComparatorColumn);
}

void CMwFilterWidget::onActivateFilter(bool bEnable) { onFilterChanged(bEnable); }

void CMwFilterWidget::onFilterChanged(bool active)
{
    Q_D(CMwFilterWidget);
    if (active != d->m_bActive) {
        // Switching off always hands over an empty filter.
        d->m_bActive = active;
        QVector<QVector<QVariant>> filter;
        if (active)
            takeFilter(filter);
        d->m_lastFilter = filter;
        if (d->m_refModel)
            d->m_refModel->setFilterRows(filter);
        Q_EMIT filterChanged();
    } else if (d->m_bActive) {
        QVector<QVector<QVariant>> filter;
        takeFilter(filter);
        if (sameFilter(filter, d->m_lastFilter))
            return;
        d->m_lastFilter = filter;
        if (d->m_refModel)
            d->m_refModel->setFilterRows(filter);
        Q_EMIT filterChanged();
    }
    // Off and staying off: edits are read when filtering is switched on.
}
