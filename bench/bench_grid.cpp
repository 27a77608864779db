// Figures for the grid with a million rows: statistics over whole columns
// (what the ready model computes once per column), and, with the grid
// composite, setModel plus the first paint and statistics over a selection.
#include <vel_qt_widgets/CMwGridStatistics.h>
#include <vel_qt_widgets/CMwGridTableModel.h>

#include <benchmark/benchmark.h>

#include <QtCore/QRandomGenerator>
#include <QtWidgets/QApplication>

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

} // namespace

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
