// (a) Uses the widgets only: nothing here calls into vel_system, so the
// program starts only if libvel_qt_widgets finds that library by itself.
#include "all_headers.h"
#include "subclasses.h"

// Both include forms of the system library's header compile here too; the
// function itself is not called.
#include <omni6/include/vel_system/MW_GetTranslation.h>
#include <vel_system/MW_GetTranslation.h>

#include <QtWidgets/QApplication>

#include <cstdio>
#include <cstring>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    CMwQSlider slider(Qt::Horizontal);
    slider.setTickItemList({{50, QSlider::TicksBelow, QStringLiteral("half")}});
    if (std::strcmp(slider.metaObject()->className(), "CMwQSlider") != 0
        || slider.tickItemList().size() != 1) {
        std::fprintf(stderr, "consumer: unexpected slider state\n");
        return 1;
    }
    const int failures = runSubclassChecks();
    if (failures != 0) {
        std::fprintf(stderr, "consumer: %d subclass check(s) failed\n", failures);
        return 1;
    }
    std::printf("consumer: widgets and their subclasses ran against the installed package\n");
    return 0;
}
