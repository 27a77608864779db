// A log-scale double range slider through a value proxy: the pass band of an
// audio filter, 20 Hz to 20 kHz. The handles move evenly in decades while
// every value the slider reports, and every value given to it, is in hertz.
//
// Run with --quit (or on the offscreen platform) to build the window, run the
// event loop once and leave; that is how the test suite runs it.

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQValueProxy.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <cmath>
#include <cstdio>

// The application supplies the conversion: the slider stores log10(Hz) and
// shows Hz.
class DecadeProxy : public CMwQValueProxy
{
    Q_OBJECT

public:
    using CMwQValueProxy::CMwQValueProxy;
    double proxyValueFromValue(double hertz) const override { return std::log10(hertz); }
    double valueFromProxyValue(double decades) const override { return std::pow(10.0, decades); }
};

static QString hertz(double value)
{
    return value >= 1000.0 ? QStringLiteral("%1 kHz").arg(value / 1000.0, 0, 'f', 2)
                           : QStringLiteral("%1 Hz").arg(value, 0, 'f', 0);
}

int main(int argc, char **argv)
{
    QApplication app(argc, argv);

    QWidget window;
    window.setWindowTitle(QStringLiteral("Log-scale range slider"));
    auto *layout = new QVBoxLayout(&window);
    auto *readout = new QLabel(&window);

    // The proxy is the application's; the slider only holds a guarded pointer.
    auto *proxy = new DecadeProxy(&window);
    auto *band = new CMwQDoubleRangeSlider(Qt::Horizontal, &window);
    band->setRange(20.0, 20000.0); // in Hz...
    band->setValueProxy(proxy); // ...kept in Hz while the slider runs in decades
    band->setSingleStep(0.01); // one step is 0.01 decade (slider units)
    band->setTickItemList({{20.0, QSlider::TicksBelow, QStringLiteral("20 Hz")},
        {100.0, QSlider::TicksBelow, QStringLiteral("100 Hz")},
        {1000.0, QSlider::TicksBelow, QStringLiteral("1 kHz")},
        {10000.0, QSlider::TicksBelow, QStringLiteral("10 kHz")},
        {20000.0, QSlider::TicksAbove, QStringLiteral("20 kHz")}});
    band->setHandleToolTip(QStringLiteral("%1 Hz"));
    band->setValues(300.0, 3400.0); // a telephone band

    auto show = [readout](double low, double high) {
        readout->setText(QStringLiteral("Pass band: %1 to %2").arg(hertz(low), hertz(high)));
        std::printf("valuesChanged(%.1f Hz, %.1f Hz)\n", low, high);
        std::fflush(stdout);
    };
    show(band->minimumValue(), band->maximumValue());
    QObject::connect(band, &CMwQDoubleRangeSlider::valuesChanged, readout, show);

    layout->addWidget(readout);
    layout->addWidget(band);
    layout->addStretch();
    window.resize(520, window.sizeHint().height());
    window.show();

    if (app.arguments().contains(QStringLiteral("--quit"))
        || QGuiApplication::platformName() == QLatin1String("offscreen")) {
        // Headless: one more change, given in Hz like every value.
        band->setMaximumValue(8000.0);
        QTimer::singleShot(0, &app, &QCoreApplication::quit);
    }
    return app.exec();
}

#include "main.moc"
