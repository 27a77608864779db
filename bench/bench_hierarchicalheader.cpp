// Multi-level header with thousands of leaf columns: painting a full
// viewport and resizing every section to its contents. Both should grow
// linearly with the number of columns.
//
// Peer: Qt's plain QHeaderView over the same number of columns with one
// caption level (the leaves' captions), doing the same two jobs. Ours draws
// three levels and is handed its header model again in every iteration, so
// that its leaf table is rebuilt each time; the peer has nothing of the kind.
#include "cmwhierarchicalheaderview_p.h"
#include "grid_oracles.h"

#include <vel_qt_widgets/CMwHierarchicalHeaderView.h>

#include <QtGui/QImage>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QApplication>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

// Three levels: groups of 5 blocks of 10 leaves; the first leaf of every
// block has a rotated caption.
QStandardItemModel *buildHeaderModel(int leaves)
{
    auto *model = new QStandardItemModel;
    int leaf = 0;
    for (int g = 0; leaf < leaves; ++g) {
        auto *group = new QStandardItem(QStringLiteral("Group %1").arg(g));
        for (int b = 0; b < 5 && leaf < leaves; ++b) {
            auto *block = new QStandardItem(QStringLiteral("Block %1.%2").arg(g).arg(b));
            for (int l = 0; l < 10 && leaf < leaves; ++l, ++leaf) {
                auto *cell = new QStandardItem(QStringLiteral("Column %1").arg(leaf));
                if (l == 0)
                    cell->setData(true, Qt::UserRole);
                block->setChild(0, l, cell);
            }
            group->setChild(0, b, block);
        }
        model->setItem(0, g, group);
    }
    return model;
}

class BenchHeader : public CMwHierarchicalHeaderView
{
public:
    BenchHeader()
        : CMwHierarchicalHeaderView(new oracle::WalkingHeaderPrivate, Qt::Horizontal, nullptr)
    {
    }
    oracle::WalkingHeaderPrivate *priv() const
    {
        return static_cast<oracle::WalkingHeaderPrivate *>(d_vel.data());
    }
};

struct Fixture
{
    explicit Fixture(int leaves, bool useCache = true)
        : items(0, leaves)
        , headerModel(buildHeaderModel(leaves))
    {
        header.priv()->walk = !useCache;
        header.setStretchLastSection(false);
        header.setModel(&items);
        header.setHeaderModel(headerModel.get());
        header.resize(1600, 90);
    }

    QStandardItemModel items;
    std::unique_ptr<QStandardItemModel> headerModel;
    BenchHeader header;
};

void resizeToContents(benchmark::State &state, bool useCache)
{
    Fixture fixture(int(state.range(0)), useCache);
    for (auto _ : state) {
        // A fresh header model each time: the leaf table is built anew.
        fixture.header.setHeaderModel(fixture.headerModel.get());
        fixture.header.resizeSections(QHeaderView::ResizeToContents);
        benchmark::DoNotOptimize(fixture.header.length());
    }
    state.SetComplexityN(state.range(0));
}

void BM_ResizeToContents(benchmark::State &state) { resizeToContents(state, true); }

// The plain walk from the start of the header for every lookup, for comparison.
void BM_ResizeToContentsWalk(benchmark::State &state) { resizeToContents(state, false); }

void paintViewport(benchmark::State &state, bool useCache)
{
    Fixture fixture(int(state.range(0)), useCache);
    fixture.header.resizeSections(QHeaderView::ResizeToContents);
    // Scrolled to the last columns, where the walk is longest.
    fixture.header.setOffset(fixture.header.length() - fixture.header.width());
    QImage image(fixture.header.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        fixture.header.setHeaderModel(fixture.headerModel.get());
        fixture.header.render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetComplexityN(state.range(0));
}

void BM_PaintViewport(benchmark::State &state) { paintViewport(state, true); }

void BM_PaintViewportWalk(benchmark::State &state) { paintViewport(state, false); }

// One-level captions of the same leaves, given through the item model.
struct PeerFixture
{
    explicit PeerFixture(int leaves)
        : items(0, leaves)
        , header(Qt::Horizontal)
    {
        for (int leaf = 0; leaf < leaves; ++leaf)
            items.setHeaderData(leaf, Qt::Horizontal, QStringLiteral("Column %1").arg(leaf));
        header.setStretchLastSection(false);
        header.setModel(&items);
        header.resize(1600, 90);
    }

    QStandardItemModel items;
    QHeaderView header;
};

void BM_QHeaderViewResizeToContents(benchmark::State &state)
{
    PeerFixture fixture(int(state.range(0)));
    for (auto _ : state) {
        fixture.header.resizeSections(QHeaderView::ResizeToContents);
        benchmark::DoNotOptimize(fixture.header.length());
    }
    state.SetComplexityN(state.range(0));
    state.SetLabel("QHeaderView");
}

void BM_QHeaderViewPaintViewport(benchmark::State &state)
{
    PeerFixture fixture(int(state.range(0)));
    fixture.header.resizeSections(QHeaderView::ResizeToContents);
    fixture.header.setOffset(fixture.header.length() - fixture.header.width());
    QImage image(fixture.header.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        fixture.header.render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.SetComplexityN(state.range(0));
    state.SetLabel("QHeaderView");
}

} // namespace

BENCHMARK(BM_ResizeToContents)
    ->Arg(500)
    ->Arg(2000)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK(BM_PaintViewport)
    ->Arg(500)
    ->Arg(2000)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK(BM_ResizeToContentsWalk)
    ->Arg(500)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK(BM_PaintViewportWalk)->Arg(500)->Arg(2000)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QHeaderViewResizeToContents)
    ->Arg(500)
    ->Arg(2000)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK(BM_QHeaderViewPaintViewport)
    ->Arg(500)
    ->Arg(2000)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
