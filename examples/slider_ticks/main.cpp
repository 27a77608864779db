// A slider with labelled tick marks: a volume control whose extra marks name
// the levels that matter, with a read-out and the slider's signals printed.
//
// Run with --quit (or on the offscreen platform) to build the window, run the
// event loop once and leave; that is how the test suite runs it.

#include <vel_qt_widgets/CMwQSlider.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);

    QWidget window;
    window.setWindowTitle(QStringLiteral("Slider with labelled ticks"));
    auto *layout = new QVBoxLayout(&window);

    auto *readout = new QLabel(&window);
    auto *slider = new CMwQSlider(Qt::Horizontal, &window);
    slider->setRange(0, 100);
    slider->setPageStep(10);
    slider->setTickPosition(QSlider::TicksBelow); // the regular marks...
    slider->setTickInterval(10);
    // ...and the extra ones, each on its own side(s) with a one-word label.
    slider->setTickItemList({{0, QSlider::TicksBelow, QStringLiteral("mute")},
        {30, QSlider::TicksAbove, QStringLiteral("quiet")},
        {70, QSlider::TicksBothSides, QStringLiteral("loud")},
        {100, QSlider::TicksBelow, QStringLiteral("max")}});
    slider->setValue(30);

    layout->addWidget(readout);
    layout->addWidget(slider);
    layout->addStretch();

    auto show = [readout](int value) {
        readout->setText(QStringLiteral("Volume: %1 %").arg(value));
        std::printf("valueChanged(%d)\n", value);
        std::fflush(stdout);
    };
    show(slider->value());
    QObject::connect(slider, &QSlider::valueChanged, readout, show);
    // A double click puts the slider back to the "quiet" mark.
    QObject::connect(slider, &CMwQSlider::SignalDoubleClick, slider, [slider] {
        std::printf("SignalDoubleClick()\n");
        slider->setValue(30);
    });

    window.resize(420, window.sizeHint().height());
    window.show();

    if (app.arguments().contains(QStringLiteral("--quit"))
        || QGuiApplication::platformName() == QLatin1String("offscreen"))
        QTimer::singleShot(0, &app, &QCoreApplication::quit);
    return app.exec();
}
