// (c) Loads the installed Designer plug-in the way Qt Designer does: from the
// "designer" folder under each entry of QT_PLUGIN_PATH, through
// QPluginLoader, in a process that is not linked against the library.
#include <QtCore/QDir>
#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <cstdio>
#include <cstring>
#include <memory>

namespace {

const char *const collectionIid = "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface";

// The widget box order of the collection.
const char *const expectedWidgets[] = {"CMwQWidget", "CMwTextPushButton", "CMwIconFitButton",
    "CMwPickerPushButton", "CMwHierarchicalGridView", "CMwQSlider", "CMwQDoubleSlider",
    "CMwQRangeSlider", "CMwQDoubleRangeSlider", "CMwQFlowLayoutWidget"};
const int expectedCount = int(sizeof(expectedWidgets) / sizeof(expectedWidgets[0]));

int checkCollection(QDesignerCustomWidgetCollectionInterface *collection)
{
    const QList<QDesignerCustomWidgetInterface *> widgets = collection->customWidgets();
    if (widgets.size() != expectedCount) {
        std::fprintf(stderr, "consumer: the collection lists %d widgets, not %d\n",
            int(widgets.size()), expectedCount);
        return 1;
    }
    int failures = 0;
    for (int i = 0; i < expectedCount; ++i) {
        QDesignerCustomWidgetInterface *plugin = widgets.at(i);
        if (plugin->name() != QLatin1String(expectedWidgets[i])
            || plugin->group() != QLatin1String("Zorvan Widgets")) {
            std::fprintf(stderr, "consumer: widget %d is %s in group %s, expected %s\n", i,
                qPrintable(plugin->name()), qPrintable(plugin->group()), expectedWidgets[i]);
            ++failures;
            continue;
        }
        std::unique_ptr<QWidget> widget(plugin->createWidget(nullptr));
        if (!widget || std::strcmp(widget->metaObject()->className(), expectedWidgets[i]) != 0) {
            std::fprintf(
                stderr, "consumer: the plug-in of %s created no such widget\n", expectedWidgets[i]);
            ++failures;
            continue;
        }
        widget->show();
        if (widget->grab().isNull()) {
            std::fprintf(stderr, "consumer: %s did not render\n", expectedWidgets[i]);
            ++failures;
        }
    }
    return failures;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QStringList roots
        = qEnvironmentVariable("QT_PLUGIN_PATH").split(QLatin1Char(':'), Qt::SkipEmptyParts);
    if (roots.isEmpty()) {
        std::fprintf(stderr, "consumer: QT_PLUGIN_PATH names no folder\n");
        return 1;
    }
    int collections = 0;
    int failures = 0;
    for (const QString &root : roots) {
        // Qt must search the folder itself, or Designer would not look there.
        if (!QCoreApplication::libraryPaths().contains(QDir(root).canonicalPath())) {
            std::fprintf(
                stderr, "consumer: %s is not among Qt's plug-in paths\n", qPrintable(root));
            ++failures;
        }
        const QDir designerDir(root + QStringLiteral("/designer"));
        const QStringList files = designerDir.entryList(QDir::Files);
        for (const QString &file : files) {
            QPluginLoader loader(designerDir.absoluteFilePath(file));
            if (loader.metaData().value(QStringLiteral("IID")).toString()
                != QLatin1String(collectionIid))
                continue;
            QObject *instance = loader.instance();
            auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(instance);
            if (!collection) {
                std::fprintf(stderr, "consumer: %s does not load: %s\n",
                    qPrintable(loader.fileName()), qPrintable(loader.errorString()));
                ++failures;
                continue;
            }
            if (std::strcmp(instance->metaObject()->className(), "CMwQCustomWidgets") != 0)
                continue;
            ++collections;
            failures += checkCollection(collection);
        }
    }
    if (collections != 1) {
        std::fprintf(stderr, "consumer: %d widget collections found under %s, expected one\n",
            collections, qPrintable(roots.join(QLatin1Char(':'))));
        return 1;
    }
    if (failures != 0)
        return 1;
    std::printf("consumer: Designer's loader found the ten widgets in the installed plug-in\n");
    return 0;
}
