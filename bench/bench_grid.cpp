// Figures for the grid with a million rows: statistics over whole columns
// (what the ready model computes once per column), and, with the grid
// composite, setModel plus the first paint and statistics over a selection.
#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <benchmark/benchmark.h>

#include <QtCore/QRandomGenerator>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTreeView>

namespace {

constexpr int rowCount = 1000000;
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

template <QVector<QVariant> (*make)(int)>
void BM_ColumnStatistics(benchmark::State &state)
{
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

template <QVector<QVariant> (*make)(int)>
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
    state.SetLabel("1 000 000 rows x 10 numeric columns, sorted by column 0");
}

// Selecting every row: the grid computes the six statistics of every column
// over the selection.
template <QVector<QVariant> (*make)(int)>
void BM_SelectionStatistics(benchmark::State &state)
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel model;
    model.setTable(headerPaths(), records<make>());
    grid.setModel(&model);
    auto *view = grid.findChild<QTreeView *>(QStringLiteral("DataView"));
    QAbstractItemModel *proxy = grid.model();
    const QItemSelection all(proxy->index(0, 0), proxy->index(rowCount - 1, columnCount - 1));
    for (auto _ : state) {
        view->selectionModel()->select(all, QItemSelectionModel::ClearAndSelect
                                                | QItemSelectionModel::Rows);
        state.PauseTiming();
        view->selectionModel()->clearSelection();
        state.ResumeTiming();
    }
    state.SetLabel("selection of 1 000 000 rows x 10 columns");
}

} // namespace

BENCHMARK(BM_SetModelAndFirstPaint)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK_TEMPLATE(BM_SelectionStatistics, numericColumn)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK_TEMPLATE(BM_SelectionStatistics, textColumn)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_TEMPLATE(BM_ColumnStatistics, numericColumn)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK_TEMPLATE(BM_ColumnStatistics, textColumn)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_TEMPLATE(BM_ColumnStatistics, uniqueTextColumn)->Unit(benchmark::kMillisecond)->Iterations(1);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
