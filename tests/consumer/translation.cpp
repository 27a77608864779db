// The system library's translation function, linked through its own
// exported target.
#include <vel_system/MW_GetTranslation.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QString>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (QString::fromWCharArray(MW_GetTranslation(L"Column", "CMwFilterWidget"))
        != QLatin1String("Column")) {
        std::fprintf(stderr, "consumer: unexpected MW_GetTranslation answer\n");
        return 1;
    }
    std::printf("consumer: MW_GetTranslation ran against the installed package\n");
    return 0;
}
