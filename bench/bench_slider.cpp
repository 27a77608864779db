// Painting the integer sliders: a CMwQSlider with labelled extra tick items
// and a two-handle CMwQRangeSlider, without and with 20 labelled tick items,
// each rendered into an image.
//
// Peer: Qt's QSlider of the same size, range and regular tick marks, which
// draws one handle and no labels.

#include <vel_qt_widgets/CMwQRangeSlider.h>
#include <vel_qt_widgets/CMwQSlider.h>

#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleFactory>

#include <benchmark/benchmark.h>

namespace {

const QSize kSize(400, 60);

void setUp(QSlider &slider)
{
    slider.setRange(0, 100);
    slider.setTickPosition(QSlider::TicksBelow);
    slider.setTickInterval(10);
    slider.setValue(30);
    slider.resize(kSize);
}

// Renders the widget as its paint event does on screen; the image is
// allocated once, outside the timed loop.
void paintLoop(benchmark::State &state, QWidget &widget)
{
    QImage image(kSize, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        widget.render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
}

CMwQSlider::TMwTickItemList tickItems(int count)
{
    CMwQSlider::TMwTickItemList items;
    for (int i = 0; i < count; ++i)
        items.append(
            {i * 100 / qMax(1, count - 1), QSlider::TicksBothSides, QStringLiteral("t%1").arg(i)});
    return items;
}

void BM_CMwQSliderPaint(benchmark::State &state)
{
    CMwQSlider slider(Qt::Horizontal);
    setUp(slider);
    slider.setTickItemList(tickItems(int(state.range(0))));
    paintLoop(state, slider);
    state.counters["tick_items"] = double(state.range(0));
}

void BM_CMwQRangeSliderPaint(benchmark::State &state)
{
    CMwQRangeSlider slider(Qt::Horizontal);
    setUp(slider);
    slider.setValues(20, 70);
    paintLoop(state, slider);
}

// The range slider as an application shows it, with a labelled tick item at
// every fifth value or so; its peer below draws the same regular marks.
void BM_CMwQRangeSliderPaintLabels(benchmark::State &state)
{
    CMwQRangeSlider slider(Qt::Horizontal);
    setUp(slider);
    slider.setValues(20, 70);
    slider.setTickItemList(tickItems(int(state.range(0))));
    paintLoop(state, slider);
    state.counters["tick_items"] = double(state.range(0));
}

void BM_QSliderPaint(benchmark::State &state)
{
    QSlider slider(Qt::Horizontal);
    setUp(slider);
    paintLoop(state, slider);
    state.SetLabel("QSlider");
}

} // namespace

BENCHMARK(BM_CMwQSliderPaint)->Arg(0)->Arg(5)->Arg(50)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_CMwQRangeSliderPaint)->Unit(benchmark::kMicrosecond);
// Right before its peer, so that both run under the same load.
BENCHMARK(BM_CMwQRangeSliderPaintLabels)->Arg(20)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_QSliderPaint)->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
