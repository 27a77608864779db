// The application the AT-SPI check drives: a labelled range slider that
// writes every change of its values to standard output, one line each.

#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vel_atspi_check"));

    QWidget window;
    window.setWindowTitle(QStringLiteral("AT-SPI check"));
    auto *layout = new QHBoxLayout(&window);
    auto *label = new QLabel(QStringLiteral("&Band"), &window);
    auto *slider = new CMwQRangeSlider(Qt::Horizontal, &window);
    label->setBuddy(slider);
    layout->addWidget(label);
    layout->addWidget(slider);
    slider->setRange(0, 100);
    slider->setValues(20, 80);

    QObject::connect(slider, &CMwQRangeSlider::valuesChanged, [](int min, int max) {
        std::printf("values %d %d\n", min, max);
        std::fflush(stdout);
    });

    window.show();
    QTimer::singleShot(0, [] {
        std::printf("ready\n");
        std::fflush(stdout);
    });
    // Never outlives a check that lost track of it.
    QTimer::singleShot(120000, &app, &QApplication::quit);
    return app.exec();
}
