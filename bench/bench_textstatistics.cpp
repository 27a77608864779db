// Statistics over a text column whose values are all different, the case
// in which ordering the texts is the whole cost: over the whole column (what
// the ready model computes once per column) and over a selection of every
// row in the grid. The texts are ordered as QString::localeAwareCompare
// orders them, under the en_US locale set before the first comparison.
//
// Peer: std::sort of the same texts with QString::localeAwareCompare, the
// plain way to put a column in locale order with Qt.
#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <benchmark/benchmark.h>

#include <QtCore/QLocale>
#include <QtCore/QRandomGenerator>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTreeView>

#include <algorithm>

namespace {

// Every text different, with the mixture of case, accents, digits and
// punctuation that names in exported data have.
QStringList uniqueTexts(int count)
{
    static const char16_t *const words[] = {u"Name", u"name", u"Émile", u"émile", u"Zoë", u"zoe",
        u"O'Neil", u"van Dijk", u"Ørsted", u"Łódź"};
    QRandomGenerator random(17);
    QStringList texts;
    texts.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QString word = QString::fromUtf16(words[random.bounded(10)]);
        texts.append(QStringLiteral("%1 %2-%3").arg(word).arg(random.bounded(1000000)).arg(i));
    }
    return texts;
}

QVector<QVariant> variants(const QStringList &texts)
{
    QVector<QVariant> values;
    values.reserve(texts.size());
    for (const QString &text : texts)
        values.append(text);
    return values;
}

void BM_TextStatisticsColumn(benchmark::State &state)
{
    const QVector<QVariant> values = variants(uniqueTexts(int(state.range(0))));
    for (auto _ : state) {
        double count, distinct, min, max, mean, stdev;
        QVectorCalcStatistics(values, count, distinct, min, max, mean, stdev);
        benchmark::DoNotOptimize(distinct);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Selecting every row of a one-column grid: the grid computes the six
// statistics over the selection.
void BM_TextStatisticsSelection(benchmark::State &state)
{
    const int rows = int(state.range(0));
    const QStringList texts = uniqueTexts(rows);
    QVector<QVector<QVariant>> records;
    records.reserve(rows);
    for (const QString &text : texts)
        records.append(QVector<QVariant> {text});
    CMwGridTableModel model;
    model.setTable({QStringList {QStringLiteral("Name")}}, records);
    CMwHierarchicalGridView grid;
    grid.setModel(&model);
    auto *view = grid.findChild<QTreeView *>(QStringLiteral("DataView"));
    QAbstractItemModel *proxy = grid.model();
    const QItemSelection all(proxy->index(0, 0), proxy->index(rows - 1, 0));
    for (auto _ : state) {
        view->selectionModel()->select(
            all, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        state.PauseTiming();
        view->selectionModel()->clearSelection();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * rows);
}

void BM_QtLocaleAwareSort(benchmark::State &state)
{
    const QStringList texts = uniqueTexts(int(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        QStringList copy = texts;
        copy.detach();
        state.ResumeTiming();
        std::sort(copy.begin(), copy.end(),
            [](const QString &a, const QString &b) { return a.localeAwareCompare(b) < 0; });
        benchmark::DoNotOptimize(copy.first().constData());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetLabel("std::sort with QString::localeAwareCompare");
}

} // namespace

// Ours and the peer alternate per size, so that both see the same load.
BENCHMARK(BM_TextStatisticsColumn)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_TextStatisticsSelection)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_QtLocaleAwareSort)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_TextStatisticsColumn)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_TextStatisticsSelection)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_QtLocaleAwareSort)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(2);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // localeAwareCompare keeps the collator of its first call: the locale
    // is set before any text is compared.
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
