// Figures for the grid with a million rows: statistics over whole columns
// (what the ready model computes once per column), and, with the grid
// composite, setModel plus the first paint and statistics over a selection.
//
// Peers: Qt's QSortFilterProxyModel sorting the same columns (ordering the
// values is the bulk of the statistics), a plain QTreeView behind Qt's
// sorting proxy for setModel and the first paint, and the same selection in
// a plain QTreeView with every selected cell read.
#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <benchmark/benchmark.h>

#include <QtCore/QAbstractListModel>
#include <QtCore/QRandomGenerator>
#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTreeView>

#include <memory>
#include <vector>

namespace {

// Rows of the data built next; the benchmarks taking a row count set it.
int rowCount = 1000000;
constexpr int columnCount = 10;

QVector<QVariant> numericColumn(int seed)
{
    QRandomGenerator random(seed);
    QVector<QVariant> values(rowCount);
    for (QVariant &v : values)
        v = random.generateDouble() * 1000.0;
    return values;
}

// Text with a realistic number of distinct values (a few thousand names).
QVector<QVariant> textColumn(int seed)
{
    QRandomGenerator random(seed);
    QVector<QVariant> values(rowCount);
    for (QVariant &v : values)
        v = QStringLiteral("Item %1").arg(random.bounded(5000));
    return values;
}

// Every text different: the worst case for locale-aware ordering.
QVector<QVariant> uniqueTextColumn(int seed)
{
    QRandomGenerator random(seed);
    QVector<QVariant> values(rowCount);
    for (int i = 0; i < rowCount; ++i)
        values[i] = QStringLiteral("Name %1-%2").arg(random.bounded(1000000)).arg(i);
    return values;
}

template<QVector<QVariant> (*make)(int)>
void BM_ColumnStatistics(benchmark::State &state)
{
    rowCount = 1000000;
    QVector<QVector<QVariant>> columns;
    for (int c = 0; c < columnCount; ++c)
        columns.append(make(c + 1));
    for (auto _ : state) {
        for (const QVector<QVariant> &column : columns) {
            double count, distinct, min, max, mean, stdev;
            QVectorCalcStatistics(column, count, distinct, min, max, mean, stdev);
            benchmark::DoNotOptimize(stdev);
        }
    }
    state.SetLabel("1 000 000 rows x 10 columns");
}

QVector<QStringList> headerPaths()
{
    QVector<QStringList> paths;
    for (int c = 0; c < columnCount; ++c) {
        paths.append({QStringLiteral("Group %1").arg(c / 4), QStringLiteral("Part %1").arg(c / 2),
            QStringLiteral("Column %1").arg(c)});
    }
    return paths;
}

template<QVector<QVariant> (*make)(int)>
QVector<QVector<QVariant>> records()
{
    QVector<QVector<QVariant>> columns;
    for (int c = 0; c < columnCount; ++c)
        columns.append(make(c + 1));
    QVector<QVector<QVariant>> rows(rowCount, QVector<QVariant>(columnCount));
    for (int r = 0; r < rowCount; ++r)
        for (int c = 0; c < columnCount; ++c)
            rows[r][c] = columns[c][r];
    return rows;
}

// setModel on a shown grid and its first paint; the model is new each time,
// so the whole-column statistics are computed inside the measurement.
void BM_SetModelAndFirstPaint(benchmark::State &state)
{
    rowCount = int(state.range(0));
    const QVector<QVector<QVariant>> rows = records<numericColumn>();
    CMwHierarchicalGridView grid;
    grid.resize(1200, 800);
    grid.show();
    QImage image(grid.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        state.PauseTiming();
        auto *model = new CMwGridTableModel(&grid);
        model->setTable(headerPaths(), rows);
        state.ResumeTiming();
        grid.setModel(model);
        QCoreApplication::processEvents();
        grid.render(&image);
        state.PauseTiming();
        delete model;
        state.ResumeTiming();
    }
    state.SetLabel("10 numeric columns, sorted by column 0");
}

// Selecting every row: the grid computes the six statistics of every column
// over the selection.
template<QVector<QVariant> (*make)(int)>
void BM_SelectionStatistics(benchmark::State &state)
{
    rowCount = int(state.range(0));
    CMwHierarchicalGridView grid;
    CMwGridTableModel model;
    model.setTable(headerPaths(), records<make>());
    grid.setModel(&model);
    auto *view = grid.findChild<QTreeView *>(QStringLiteral("DataView"));
    QAbstractItemModel *proxy = grid.model();
    const QItemSelection all(proxy->index(0, 0), proxy->index(rowCount - 1, columnCount - 1));
    for (auto _ : state) {
        view->selectionModel()->select(
            all, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        state.PauseTiming();
        view->selectionModel()->clearSelection();
        state.ResumeTiming();
    }
    state.SetLabel("selection of every row x 10 columns");
}

// One column of values as a list model, for Qt's own sorting proxy.
class ColumnModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit ColumnModel(QVector<QVariant> values)
        : m_values(std::move(values))
    {
    }
    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : m_values.size();
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole ? m_values.at(index.row()) : QVariant();
    }

private:
    QVector<QVariant> m_values;
};

// Peer of the column statistics: Qt's QSortFilterProxyModel sorting each of
// the same ten columns, the nearest stock job (ordering the values is what
// minimum, maximum and the distinct count rest on).
template<QVector<QVariant> (*make)(int)>
void BM_QSortFilterProxyModelSort(benchmark::State &state)
{
    rowCount = 1000000;
    std::vector<std::unique_ptr<ColumnModel>> columns;
    for (int c = 0; c < columnCount; ++c)
        columns.push_back(std::make_unique<ColumnModel>(make(c + 1)));
    for (auto _ : state) {
        for (const auto &column : columns) {
            QSortFilterProxyModel proxy;
            proxy.setSourceModel(column.get());
            proxy.sort(0);
            benchmark::DoNotOptimize(proxy.index(0, 0));
        }
    }
    state.SetLabel("QSortFilterProxyModel");
}

// Peer of setModel and first paint: a plain QTreeView over Qt's sorting
// proxy on the same ready model, sorted by column 0, painted once.
void BM_QTreeViewSetModelAndFirstPaint(benchmark::State &state)
{
    rowCount = int(state.range(0));
    const QVector<QVector<QVariant>> rows = records<numericColumn>();
    QTreeView view;
    view.setRootIsDecorated(false);
    view.setUniformRowHeights(true);
    view.resize(1200, 800);
    view.show();
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        state.PauseTiming();
        auto *model = new CMwGridTableModel(&view);
        model->setTable(headerPaths(), rows);
        auto *proxy = new QSortFilterProxyModel(model);
        state.ResumeTiming();
        proxy->setSourceModel(model);
        proxy->sort(0);
        view.setModel(proxy);
        QCoreApplication::processEvents();
        view.render(&image);
        state.PauseTiming();
        view.setModel(nullptr);
        delete model;
        state.ResumeTiming();
    }
    state.SetLabel("QTreeView + QSortFilterProxyModel");
}

// Peer of the selection statistics: the same selection in a plain QTreeView,
// then every selected row's cells read through the model, which is what any
// computation over a selection starts with.
template<QVector<QVariant> (*make)(int)>
void BM_QTreeViewSelection(benchmark::State &state)
{
    rowCount = int(state.range(0));
    CMwGridTableModel model;
    model.setTable(headerPaths(), records<make>());
    QTreeView view;
    view.setModel(&model);
    const QItemSelection all(model.index(0, 0), model.index(rowCount - 1, columnCount - 1));
    for (auto _ : state) {
        view.selectionModel()->select(
            all, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        const QModelIndexList rows = view.selectionModel()->selectedRows(0);
        for (int c = 0; c < columnCount; ++c) {
            QVector<QVariant> values;
            values.reserve(rows.size());
            for (const QModelIndex &row : rows)
                values.append(row.sibling(row.row(), c).data());
            benchmark::DoNotOptimize(values.constData());
        }
        state.PauseTiming();
        view.selectionModel()->clearSelection();
        state.ResumeTiming();
    }
    state.SetLabel("QTreeView, selectedRows() and data()");
}

} // namespace

BENCHMARK(BM_SetModelAndFirstPaint)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2)
    ->Arg(100000)
    ->Arg(1000000);
BENCHMARK(BM_QTreeViewSetModelAndFirstPaint)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2)
    ->Arg(100000)
    ->Arg(1000000);
BENCHMARK_TEMPLATE(BM_SelectionStatistics, numericColumn)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2)
    ->Arg(100000)
    ->Arg(1000000);
BENCHMARK_TEMPLATE(BM_QTreeViewSelection, numericColumn)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2)
    ->Arg(100000)
    ->Arg(1000000);
BENCHMARK_TEMPLATE(BM_SelectionStatistics, textColumn)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Arg(1000000);
BENCHMARK_TEMPLATE(BM_ColumnStatistics, numericColumn)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2);
BENCHMARK_TEMPLATE(BM_ColumnStatistics, textColumn)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_TEMPLATE(BM_ColumnStatistics, uniqueTextColumn)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_TEMPLATE(BM_QTreeViewSelection, textColumn)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Arg(1000000);
BENCHMARK_TEMPLATE(BM_QSortFilterProxyModelSort, numericColumn)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_TEMPLATE(BM_QSortFilterProxyModelSort, textColumn)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_TEMPLATE(BM_QSortFilterProxyModelSort, uniqueTextColumn)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

namespace {

// Whole-column statistics as the ready model answers them on its roles,
// from columns it holds typed (setTable() keeps one-type number columns as
// numbers): the same figures as BM_ColumnStatistics computes over QVariants.
template<QVector<QVariant> (*make)(int)>
void BM_ModelColumnStatistics(benchmark::State &state)
{
    rowCount = int(state.range(0));
    const QVector<QVector<QVariant>> rows = records<make>();
    CMwGridTableModel model;
    for (auto _ : state) {
        state.PauseTiming();
        model.setTable(headerPaths(), rows);
        state.ResumeTiming();
        for (int c = 0; c < columnCount; ++c)
            benchmark::DoNotOptimize(model.index(0, c).data(StatStDevRole));
    }
    state.SetLabel("CMwGridTableModel, 10 typed columns");
}

} // namespace

BENCHMARK_TEMPLATE(BM_ModelColumnStatistics, numericColumn)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2)
    ->Arg(100000)
    ->Arg(1000000);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

#include "bench_grid.moc"
