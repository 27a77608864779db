// One layout pass (setGeometry) and one heightForWidth query of the flow
// layout for growing item counts; both should grow linearly.
//
// Peer: Qt's QGridLayout holding the same items, ten to a row (the nearest
// stock layout that places many items on several lines). It caches its
// geometry, so every peer pass is invalidated first or alternates widths,
// as the flow layout recomputes on every call.

#include <vel_qt_widgets/FlowLayout.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QGridLayout>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

class FixedItem : public QLayoutItem
{
public:
    explicit FixedItem(const QSize &hint)
        : m_hint(hint)
    {
    }
    QSize sizeHint() const override { return m_hint; }
    QSize minimumSize() const override { return m_hint; }
    QSize maximumSize() const override { return QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX); }
    Qt::Orientations expandingDirections() const override { return Qt::Orientations(); }
    void setGeometry(const QRect &rect) override { m_geometry = rect; }
    QRect geometry() const override { return m_geometry; }
    bool isEmpty() const override { return false; }

private:
    QSize m_hint;
    QRect m_geometry;
};

class FixedWidget : public QWidget
{
public:
    explicit FixedWidget(const QSize &hint, QWidget *parent)
        : QWidget(parent)
        , m_hint(hint)
    {
    }
    QSize sizeHint() const override { return m_hint; }

private:
    QSize m_hint;
};

// Widths 40 .. 103 in a fixed pattern, so that lines break irregularly.
QSize hintFor(int i) { return QSize(40 + (i * 37) % 64, 18 + (i % 3) * 4); }

std::unique_ptr<CMwQFlowLayout> makeLayout(int items, bool grid)
{
    auto layout = std::make_unique<CMwQFlowLayout>(4, 6, 6);
    layout->setSameWidgetsSize(grid);
    for (int i = 0; i < items; ++i)
        layout->addItem(new FixedItem(hintFor(i)));
    return layout;
}

// Every benchmark here is per item: N items, O(N) expected.
void reportPerItem(benchmark::State &state)
{
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void setGeometryPass(benchmark::State &state, bool grid)
{
    const auto layout = makeLayout(int(state.range(0)), grid);
    const QRect rect(0, 0, 800, 600);
    for (auto _ : state)
        layout->setGeometry(rect);
    reportPerItem(state);
}

void heightForWidthPass(benchmark::State &state, bool grid)
{
    const auto layout = makeLayout(int(state.range(0)), grid);
    for (auto _ : state)
        benchmark::DoNotOptimize(layout->heightForWidth(800));
    reportPerItem(state);
}

void BM_SetGeometry(benchmark::State &state) { setGeometryPass(state, false); }

void BM_SetGeometryGrid(benchmark::State &state) { setGeometryPass(state, true); }

void BM_HeightForWidth(benchmark::State &state) { heightForWidthPass(state, false); }

void BM_HeightForWidthGrid(benchmark::State &state) { heightForWidthPass(state, true); }

// Real widgets: the pass also moves and resizes every (hidden-window) child.
void BM_SetGeometryWidgets(benchmark::State &state)
{
    QWidget host;
    auto *layout = new CMwQFlowLayout(&host, 4, 6, 6);
    for (int i = 0; i < state.range(0); ++i)
        layout->addWidget(new FixedWidget(hintFor(i), &host));
    const QRect wide(0, 0, 800, 600);
    const QRect narrow(0, 0, 640, 600);
    bool toggle = false;
    for (auto _ : state) {
        // Alternating widths so that every pass really moves the widgets.
        layout->setGeometry(toggle ? wide : narrow);
        toggle = !toggle;
    }
    reportPerItem(state);
}

constexpr int kPeerColumns = 10;

std::unique_ptr<QGridLayout> makeGridPeer(int items)
{
    auto layout = std::make_unique<QGridLayout>();
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(6);
    for (int i = 0; i < items; ++i)
        layout->addItem(new FixedItem(hintFor(i)), i / kPeerColumns, i % kPeerColumns);
    return layout;
}

void BM_QtGridLayoutSetGeometry(benchmark::State &state)
{
    const auto layout = makeGridPeer(int(state.range(0)));
    const QRect rect(0, 0, 800, 600);
    for (auto _ : state) {
        layout->invalidate();
        layout->setGeometry(rect);
    }
    reportPerItem(state);
    state.SetLabel("QGridLayout");
}

// The nearest stock query to heightForWidth: the size hint of a freshly
// invalidated grid, which walks every item once.
void BM_QtGridLayoutSizeHint(benchmark::State &state)
{
    const auto layout = makeGridPeer(int(state.range(0)));
    for (auto _ : state) {
        layout->invalidate();
        benchmark::DoNotOptimize(layout->sizeHint());
    }
    reportPerItem(state);
    state.SetLabel("QGridLayout");
}

void BM_QtGridLayoutSetGeometryWidgets(benchmark::State &state)
{
    QWidget host;
    auto *layout = new QGridLayout(&host);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(6);
    for (int i = 0; i < state.range(0); ++i)
        layout->addWidget(new FixedWidget(hintFor(i), &host), i / kPeerColumns, i % kPeerColumns);
    const QRect wide(0, 0, 800, 600);
    const QRect narrow(0, 0, 640, 600);
    bool toggle = false;
    for (auto _ : state) {
        layout->setGeometry(toggle ? wide : narrow);
        toggle = !toggle;
    }
    reportPerItem(state);
    state.SetLabel("QGridLayout");
}

} // namespace

BENCHMARK(BM_SetGeometry)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_SetGeometryGrid)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_HeightForWidth)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_HeightForWidthGrid)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_SetGeometryWidgets)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_QtGridLayoutSetGeometry)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_QtGridLayoutSizeHint)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_QtGridLayoutSetGeometryWidgets)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
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
