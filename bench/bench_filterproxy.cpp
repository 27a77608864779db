// Filtering a 100 000- and a 1 000 000-row, 10-column table: CMwSortFilterProxyModel with
// three conditions against Qt's QSortFilterProxyModel with a fixed-string
// filter on one column, over the same source in the same run. Compare the
// per-condition time (the time divided by the "conditions" counter) with
// Qt's time.

#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QCoreApplication>
#include <QtCore/QSortFilterProxyModel>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

constexpr int kColumns = 10;

// Cells are computed, so the source costs no memory and no time of its own
// beyond building the QVariant, the same for both proxies.
class GeneratedModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit GeneratedModel(int rows)
        : m_rows(rows)
    {
    }
    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : m_rows;
    }
    int columnCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : kColumns;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole || !index.isValid())
            return QVariant();
        const int r = index.row();
        switch (index.column() % 3) {
        case 0:
            return (r * 7 + index.column()) % 1000;
        case 1:
            return (r % 5000) * 0.5;
        default:
            return QStringLiteral("k%1").arg(r % 997);
        }
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
            return QStringLiteral("Column %1").arg(section);
        return QAbstractTableModel::headerData(section, orientation, role);
    }

private:
    int m_rows;
};

GeneratedModel &source(int rows)
{
    static std::map<int, std::unique_ptr<GeneratedModel>> models;
    std::unique_ptr<GeneratedModel> &model = models[rows];
    if (!model)
        model = std::make_unique<GeneratedModel>(rows);
    return *model;
}

void BM_QtFixedStringOneColumn(benchmark::State &state)
{
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&source(int(state.range(0))));
    proxy.setFilterKeyColumn(2);
    int i = 0;
    for (auto _ : state) {
        proxy.setFilterFixedString((++i % 2) ? QStringLiteral("k1") : QStringLiteral("k2"));
        benchmark::DoNotOptimize(proxy.rowCount());
    }
    state.counters["rows_shown"] = proxy.rowCount();
    state.SetLabel("QSortFilterProxyModel");
}

void BM_CMwThreeConditions(benchmark::State &state)
{
    const QStringList ops = CMwSortFilterProxyModel::operatorTexts();
    const QStringList cmp = CMwSortFilterProxyModel::comparatorTexts();
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&source(int(state.range(0))));
    int i = 0;
    for (auto _ : state) {
        const QString limit = (++i % 2) ? QStringLiteral("500") : QStringLiteral("400");
        // Column 0 >= limit AND Column 1 < 1000 OR Column 2 == "k5"
        proxy.setFilterRows({{QVariant(), ops.at(0), QStringLiteral("Column 0"), cmp.at(0), limit},
            {QVariant(), ops.at(0), QStringLiteral("Column 1"), cmp.at(3), QStringLiteral("1000")},
            {QVariant(), ops.at(1), QStringLiteral("Column 2"), cmp.at(4), QStringLiteral("k5")}});
        benchmark::DoNotOptimize(proxy.rowCount());
    }
    state.counters["rows_shown"] = proxy.rowCount();
    state.counters["conditions"] = 3;
}

} // namespace

BENCHMARK(BM_QtFixedStringOneColumn)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(3.0);
BENCHMARK(BM_CMwThreeConditions)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(3.0);

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

#include "bench_filterproxy.moc"
