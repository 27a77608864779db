// Builds against the installed package only.
#include "all_headers.h"

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
    if (QString::fromWCharArray(MW_GetTranslation(L"Column", "CMwFilterWidget")) != QLatin1String("Column")) {
        std::fprintf(stderr, "consumer: unexpected MW_GetTranslation answer\n");
        return 1;
    }
    std::printf("consumer: built and ran against the installed package\n");
    return 0;
}
