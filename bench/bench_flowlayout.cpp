// One layout pass (setGeometry) and one heightForWidth query of the flow
// layout for growing item counts; both should grow linearly.

#include <vel_qt_widgets/FlowLayout.h>

#include <QtWidgets/QApplication>

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

void BM_SetGeometry(benchmark::State &state)
{
    const auto layout = makeLayout(int(state.range(0)), false);
    const QRect rect(0, 0, 800, 600);
    for (auto _ : state)
        layout->setGeometry(rect);
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_SetGeometryGrid(benchmark::State &state)
{
    const auto layout = makeLayout(int(state.range(0)), true);
    const QRect rect(0, 0, 800, 600);
    for (auto _ : state)
        layout->setGeometry(rect);
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_HeightForWidth(benchmark::State &state)
{
    const auto layout = makeLayout(int(state.range(0)), false);
    for (auto _ : state)
        benchmark::DoNotOptimize(layout->heightForWidth(800));
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_HeightForWidthGrid(benchmark::State &state)
{
    const auto layout = makeLayout(int(state.range(0)), true);
    for (auto _ : state)
        benchmark::DoNotOptimize(layout->heightForWidth(800));
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

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
    state.SetComplexityN(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(BM_SetGeometry)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_SetGeometryGrid)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_HeightForWidth)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_HeightForWidthGrid)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);
BENCHMARK(BM_SetGeometryWidgets)->Arg(100)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);

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
