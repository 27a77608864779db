// Uses widgets only, through both include forms, so that the program's one
// link to this library is vel_qt_widgets (which must find vel_system itself).
#include <omni6/include/vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/FlowLayout.h>
#include <vel_qt_widgets/PushButtons.h>

#include <QtCore/QTimer>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    CMwQFlowLayoutWidget window;
    auto *slider = new CMwQDoubleRangeSlider(&window);
    slider->setRange(0.0, 10.0);
    slider->setValues(2.5, 7.5);
    auto *button = new CMwTextPushButton(QStringLiteral("OK"), &window);
    window.layout()->addWidget(slider);
    window.layout()->addWidget(button);
    window.show();
    if (slider->minimumValue() != 2.5 || slider->maximumValue() != 7.5) {
        std::fprintf(stderr, "vel_deb_consumer: unexpected slider values %g, %g\n",
            slider->minimumValue(), slider->maximumValue());
        return 1;
    }
    // The library's icons are SVG files in its resources: only Qt's SVG
    // plug-ins, which the package depends on, draw them.
    if (QIcon(QStringLiteral(":/w32_commonres/res/filter.svg")).pixmap(16, 16).isNull()) {
        std::fprintf(stderr, "vel_deb_consumer: the library's SVG icons do not draw\n");
        return 1;
    }
    QTimer::singleShot(0, &app, &QApplication::quit);
    const int result = app.exec();
    std::printf("vel_deb_consumer: widgets shown\n");
    return result;
}
