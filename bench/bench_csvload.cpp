// Loading a CSV export into the ready model: 4 columns (whole numbers,
// doubles, a text repeated across records, a text different in each), at
// 100 k, 1 M and 4.5 M records (about 200 MB). The files are written once
// into the temporary directory and reused.
//
// Peer: QFile::readLine, QString::fromUtf8 and QString::split per line into
// a QVector<QStringList>, the plain way to hold a CSV with Qt. It does less
// than the model (no quotes, no types, no statistics' roles), so a ratio
// below 1 is a real gain. It runs at 100 k and 1 M only: at 4.5 M it needs
// several GiB, more than the shared machine can spare.
//
// For peak memory run one size alone under /usr/bin/time -v, e.g.
//     /usr/bin/time -v bench_csvload --benchmark_filter='BM_LoadCsv/4500000/'
#include <vel_qt_widgets/CMwGridTableModel.h>

#include <benchmark/benchmark.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QVector>

namespace {

QString csvFile(int records)
{
    const QString name = QDir::temp().filePath(QStringLiteral("vel_bench_csv_%1.csv").arg(records));
    QFile file(name);
    if (file.exists())
        return name;
    // Written to a side name first, so that an interrupted run leaves no
    // half file behind.
    QFile part(name + QStringLiteral(".part"));
    if (!part.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(part.fileName()));
    part.write("Run|Id,Run|Value,Site,Note\n");
    quint32 seed = 17;
    QByteArray line;
    for (int i = 0; i < records; ++i) {
        seed = seed * 1103515245u + 12345u;
        line = QByteArray::number(i) + ','
            + QByteArray::number(double(seed % 10000000) / 1000, 'f', 3) + ",Site "
            + QByteArray::number(seed % 50) + ",note " + QByteArray::number(seed % 1000003) + '-'
            + QByteArray::number(i) + '\n';
        part.write(line);
    }
    part.close();
    part.rename(name);
    return name;
}

void BM_LoadCsv(benchmark::State &state)
{
    const QString name = csvFile(int(state.range(0)));
    for (auto _ : state) {
        CMwGridTableModel model;
        if (!model.loadCsv(name))
            state.SkipWithError("load failed");
        benchmark::DoNotOptimize(model.recordCount());
    }
    state.SetBytesProcessed(state.iterations() * QFileInfo(name).size());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_QtReadLineSplit(benchmark::State &state)
{
    const QString name = csvFile(int(state.range(0)));
    for (auto _ : state) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly))
            state.SkipWithError("open failed");
        QVector<QStringList> rows;
        while (!file.atEnd())
            rows.append(QString::fromUtf8(file.readLine()).split(QLatin1Char(',')));
        benchmark::DoNotOptimize(rows.size());
    }
    state.SetBytesProcessed(state.iterations() * QFileInfo(name).size());
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetLabel("QFile::readLine + QString::split");
}

} // namespace

// Ours and the peer alternate per size, so that both see the same load.
BENCHMARK(BM_LoadCsv)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_QtReadLineSplit)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_LoadCsv)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_QtReadLineSplit)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_LoadCsv)->Arg(4500000)->Unit(benchmark::kMillisecond)->Iterations(1);

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
