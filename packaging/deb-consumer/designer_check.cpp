// Looks for Designer plug-ins where Qt Designer does (the "designer" folder
// of every Qt plug-in path, QT_PLUGIN_PATH included), loads each, and checks
// that exactly one collection offers the ten widgets of "Zorvan Widgets".
#include <QtCore/QDir>
#include <QtCore/QPluginLoader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <QtWidgets/QApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    int collections = 0;
    QStringList names;
    for (const QString &path : QCoreApplication::libraryPaths()) {
        const QDir dir(path + QStringLiteral("/designer"));
        for (const QString &file : dir.entryList(QDir::Files)) {
            QPluginLoader loader(dir.absoluteFilePath(file));
            auto *collection
                = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
            if (!collection) {
                std::printf("vel_designer_check: skipped %s (%s)\n", qPrintable(loader.fileName()),
                    qPrintable(loader.errorString()));
                continue;
            }
            QStringList ours;
            for (QDesignerCustomWidgetInterface *widget : collection->customWidgets()) {
                if (widget->group() == QLatin1String("Zorvan Widgets"))
                    ours << widget->name();
            }
            if (!ours.isEmpty()) {
                ++collections;
                names = ours;
                // Where it was found, not the library the link resolves to.
                std::printf("vel_designer_check: %s\n", qPrintable(dir.absoluteFilePath(file)));
            }
        }
    }
    if (collections != 1 || names.size() != 10) {
        std::fprintf(stderr,
            "vel_designer_check: %d collection(s) of Zorvan Widgets, %d widget(s): %s\n",
            collections, int(names.size()), qPrintable(names.join(QLatin1Char(' '))));
        return 1;
    }
    std::printf(
        "vel_designer_check: Zorvan Widgets: %s\n", qPrintable(names.join(QLatin1Char(' '))));
    return 0;
}
