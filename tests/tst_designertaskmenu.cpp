#include "vel_test_main.h"

#include <QAction>
#include <QtCore/QPluginLoader>
#include <QtCore/QTemporaryDir>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionFactory>
#include <QtDesigner/QExtensionManager>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <QtWidgets/QLabel>

namespace {

// QDesignerFormEditorInterface::setExtensionManager() is protected; Designer
// itself sets it, and so does this stand-in for Designer's core.
class FormEditorCore : public QDesignerFormEditorInterface
{
public:
    using QDesignerFormEditorInterface::setExtensionManager;
};

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QStringList texts(const QList<QAction *> &actions)
{
    QStringList result;
    for (QAction *action : actions)
        result << action->text();
    return result;
}

} // namespace

class tst_DesignerTaskMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void registeredOncePerPlugin();
    void onlyClearWithoutFiles();
    void caseInsensitiveOrder();
    void caseInsensitiveOrderNotCodePoints();
    void completeBaseName();
    void applyThenClear();
    void fileNamedClearAppliesTheFile();
    void foreignWidgetGetsTheSameMenu();
    void directoryReadOncePerFactory();
    void missingQssFolder();
    void defaultStyleSheet();
    void defaultStyleSheetIgnoresCase();
    void defaultStyleSheetNested();
    void defaultStyleSheetFromCurrentDirectory();

private:
    // A fresh plug-in set for each test, as if Designer had just started.
    QDesignerCustomWidgetInterface *widgetPlugin();
    QDesignerTaskMenuExtension *taskMenu(QWidget *widget);
    QString qssDir() const { return m_dir->filePath(QStringLiteral("Qss")); }

    QPluginLoader m_loader;
    QScopedPointer<QTemporaryDir> m_dir;
    QScopedPointer<QExtensionManager> m_manager;
    QScopedPointer<FormEditorCore> m_core;
    QScopedPointer<QObject> m_collection;
};

void tst_DesignerTaskMenu::initTestCase()
{
    m_loader.setFileName(QStringLiteral(VEL_LIBRARY_FILE));
    QVERIFY2(m_loader.instance(), qPrintable(m_loader.errorString()));
}

void tst_DesignerTaskMenu::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("Qss")));
    qputenv("QT_DESIGNER_ZUN_DIR", m_dir->path().toLocal8Bit());
    m_manager.reset(new QExtensionManager);
    m_core.reset(new FormEditorCore);
    m_core->setExtensionManager(m_manager.data());
}

void tst_DesignerTaskMenu::cleanup()
{
    m_collection.reset();
    m_core.reset();
    m_manager.reset();
    m_dir.reset();
    qunsetenv("QT_DESIGNER_ZUN_DIR");
}

QDesignerCustomWidgetInterface *tst_DesignerTaskMenu::widgetPlugin()
{
    // The loader's instance is shared; a new collection per test keeps the
    // plug-ins' initialized flags apart.
    QObject *collection = m_loader.instance()->metaObject()->newInstance(Q_ARG(QObject *, nullptr));
    if (!collection)
        return nullptr;
    m_collection.reset(collection);
    auto *interface = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(collection);
    return interface ? interface->customWidgets().value(0) : nullptr;
}

QDesignerTaskMenuExtension *tst_DesignerTaskMenu::taskMenu(QWidget *widget)
{
    return qt_extension<QDesignerTaskMenuExtension *>(m_manager.data(), widget);
}

void tst_DesignerTaskMenu::registeredOncePerPlugin()
{
    QDesignerCustomWidgetInterface *plugin = widgetPlugin();
    QVERIFY(plugin);
    QCOMPARE(plugin->name(), QStringLiteral("CMwQWidget"));
    QVERIFY(!plugin->isInitialized());
    plugin->initialize(m_core.data());
    QVERIFY(plugin->isInitialized());
    plugin->initialize(m_core.data());

    const QList<QExtensionFactory *> factories = m_manager->findChildren<QExtensionFactory *>();
    QCOMPARE(factories.size(), 1);
    QCOMPARE(factories.first()->metaObject()->className(), "TaskMenuExtension_StyleSheetFactory");
    QCOMPARE(factories.first()->extensionManager(), m_manager.data());

    // The other nine plug-ins register nothing.
    auto *collection
        = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(m_collection.data());
    for (QDesignerCustomWidgetInterface *other : collection->customWidgets().mid(1))
        other->initialize(m_core.data());
    QCOMPARE(m_manager->findChildren<QExtensionFactory *>().size(), 1);

    QLabel label;
    QVERIFY(taskMenu(&label));
    // Only the task-menu interface is served.
    QVERIFY(
        !m_manager->extension(&label, QStringLiteral("org.qt-project.Qt.Designer.PropertySheet")));
}

void tst_DesignerTaskMenu::onlyClearWithoutFiles()
{
    widgetPlugin()->initialize(m_core.data());
    QWidget widget;
    QDesignerTaskMenuExtension *menu = taskMenu(&widget);
    QVERIFY(menu);
    QCOMPARE(texts(menu->taskActions()), QStringList {QStringLiteral("Clear styleSheet")});
    QCOMPARE(menu->preferredEditAction(), menu->taskActions().first());
}

void tst_DesignerTaskMenu::caseInsensitiveOrder()
{
    writeFile(qssDir() + QStringLiteral("/b.qss"), "QWidget { color: blue; }");
    writeFile(qssDir() + QStringLiteral("/A.qss"), "QWidget { color: red; }");
    writeFile(qssDir() + QStringLiteral("/c.qss"), "QWidget { color: green; }");
    writeFile(qssDir() + QStringLiteral("/notes.txt"), "not a style sheet");
    widgetPlugin()->initialize(m_core.data());

    QWidget widget;
    QDesignerTaskMenuExtension *menu = taskMenu(&widget);
    QVERIFY(menu);
    QCOMPARE(texts(menu->taskActions()),
        (QStringList {QStringLiteral("A"), QStringLiteral("b"), QStringLiteral("c"),
            QStringLiteral("Clear styleSheet")}));
    QCOMPARE(menu->preferredEditAction()->text(), QStringLiteral("A"));
    // One extension per widget for its whole life.
    QCOMPARE(taskMenu(&widget), menu);
}

void tst_DesignerTaskMenu::caseInsensitiveOrderNotCodePoints()
{
    // b, A, c come out the same in code-point order; here only an order that
    // ignores case puts a before B and C.
    writeFile(qssDir() + QStringLiteral("/C.qss"), "QWidget { color: green; }");
    writeFile(qssDir() + QStringLiteral("/a.qss"), "QWidget { color: red; }");
    writeFile(qssDir() + QStringLiteral("/B.qss"), "QWidget { color: blue; }");
    widgetPlugin()->initialize(m_core.data());

    QWidget widget;
    QDesignerTaskMenuExtension *menu = taskMenu(&widget);
    QVERIFY(menu);
    QCOMPARE(texts(menu->taskActions()),
        (QStringList {QStringLiteral("a"), QStringLiteral("B"), QStringLiteral("C"),
            QStringLiteral("Clear styleSheet")}));
    QCOMPARE(menu->preferredEditAction()->text(), QStringLiteral("a"));
    menu->preferredEditAction()->trigger();
    QCOMPARE(widget.styleSheet(), QStringLiteral("QWidget { color: red; }"));
}

void tst_DesignerTaskMenu::completeBaseName()
{
    writeFile(qssDir() + QStringLiteral("/dark.blue.qss"), "QWidget { color: navy; }");
    widgetPlugin()->initialize(m_core.data());
    QWidget widget;
    QCOMPARE(texts(taskMenu(&widget)->taskActions()),
        (QStringList {QStringLiteral("dark.blue"), QStringLiteral("Clear styleSheet")}));
}

void tst_DesignerTaskMenu::applyThenClear()
{
    const QByteArray sheet = "QWidget { background: #123456; }\n";
    writeFile(qssDir() + QStringLiteral("/theme.qss"), sheet);
    widgetPlugin()->initialize(m_core.data());

    QWidget widget;
    QDesignerTaskMenuExtension *menu = taskMenu(&widget);
    menu->taskActions().at(0)->trigger();
    QCOMPARE(widget.styleSheet(), QString::fromUtf8(sheet));
    menu->taskActions().last()->trigger();
    QCOMPARE(widget.styleSheet(), QString());
}

void tst_DesignerTaskMenu::fileNamedClearAppliesTheFile()
{
    const QByteArray sheet = "QWidget { border: 1px solid red; }";
    writeFile(qssDir() + QStringLiteral("/CLEAR.qss"), sheet);
    widgetPlugin()->initialize(m_core.data());

    QWidget widget;
    widget.setStyleSheet(QStringLiteral("QWidget { color: green; }"));
    QDesignerTaskMenuExtension *menu = taskMenu(&widget);
    QCOMPARE(texts(menu->taskActions()),
        (QStringList {QStringLiteral("CLEAR"), QStringLiteral("Clear styleSheet")}));
    menu->taskActions().first()->trigger();
    QCOMPARE(widget.styleSheet(), QString::fromUtf8(sheet));
}

void tst_DesignerTaskMenu::foreignWidgetGetsTheSameMenu()
{
    writeFile(qssDir() + QStringLiteral("/one.qss"), "QLabel { color: red; }");
    widgetPlugin()->initialize(m_core.data());

    QLabel label;
    QWidget plain;
    QDesignerTaskMenuExtension *labelMenu = taskMenu(&label);
    QDesignerTaskMenuExtension *plainMenu = taskMenu(&plain);
    QVERIFY(labelMenu && plainMenu);
    QVERIFY(labelMenu != plainMenu);
    QCOMPARE(texts(labelMenu->taskActions()), texts(plainMenu->taskActions()));
    labelMenu->taskActions().first()->trigger();
    QCOMPARE(label.styleSheet(), QStringLiteral("QLabel { color: red; }"));
    QCOMPARE(plain.styleSheet(), QString());

    // Not a widget: no task menu.
    QObject object;
    QVERIFY(!m_manager->extension(&object, QStringLiteral("org.qt-project.Qt.Designer.TaskMenu")));
}

void tst_DesignerTaskMenu::directoryReadOncePerFactory()
{
    writeFile(qssDir() + QStringLiteral("/first.qss"), "QWidget {}");
    widgetPlugin()->initialize(m_core.data());

    QWidget early;
    QCOMPARE(taskMenu(&early)->taskActions().size(), 2);

    // The variable is read once per factory; the file list once per extension.
    qputenv("QT_DESIGNER_ZUN_DIR", "/nonexistent");
    writeFile(qssDir() + QStringLiteral("/second.qss"), "QWidget {}");
    QWidget late;
    QCOMPARE(texts(taskMenu(&late)->taskActions()),
        (QStringList {QStringLiteral("first"), QStringLiteral("second"),
            QStringLiteral("Clear styleSheet")}));
    QCOMPARE(taskMenu(&early)->taskActions().size(), 2);
}

void tst_DesignerTaskMenu::missingQssFolder()
{
    QVERIFY(QDir(qssDir()).removeRecursively());
    writeFile(m_dir->filePath(QStringLiteral("outside.qss")), "QWidget {}");
    widgetPlugin()->initialize(m_core.data());
    QWidget widget;
    QCOMPARE(
        texts(taskMenu(&widget)->taskActions()), QStringList {QStringLiteral("Clear styleSheet")});
    QScopedPointer<QWidget> created(widgetPlugin()->createWidget(nullptr));
    QCOMPARE(created->styleSheet(), QString());
}

void tst_DesignerTaskMenu::defaultStyleSheet()
{
    writeFile(qssDir() + QStringLiteral("/b.qss"), "QWidget { color: blue; }");
    writeFile(qssDir() + QStringLiteral("/A.qss"), "CMwQWidget { color: red; }");
    QWidget form;
    QScopedPointer<QWidget> widget(widgetPlugin()->createWidget(&form));
    QCOMPARE(widget->metaObject()->className(), "CMwQWidget");
    QCOMPARE(widget->styleSheet(), QStringLiteral("CMwQWidget { color: red; }"));
}

void tst_DesignerTaskMenu::defaultStyleSheetIgnoresCase()
{
    // In code-point order B.qss would come first.
    writeFile(qssDir() + QStringLiteral("/B.qss"), "QWidget { color: blue; }");
    writeFile(qssDir() + QStringLiteral("/a.qss"), "CMwQWidget { color: red; }");
    QWidget form;
    QScopedPointer<QWidget> widget(widgetPlugin()->createWidget(&form));
    QCOMPARE(widget->styleSheet(), QStringLiteral("CMwQWidget { color: red; }"));
}

void tst_DesignerTaskMenu::defaultStyleSheetNested()
{
    writeFile(qssDir() + QStringLiteral("/a.qss"), "QWidget { color: blue; }");
    QDesignerCustomWidgetInterface *plugin = widgetPlugin();
    QWidget form;
    QWidget *outer = plugin->createWidget(&form);
    QVERIFY(!outer->styleSheet().isEmpty());
    auto *plain = new QWidget(outer);
    auto *deeper = new QWidget(plain);
    QCOMPARE(plugin->createWidget(outer)->styleSheet(), QString());
    QCOMPARE(plugin->createWidget(deeper)->styleSheet(), QString());
}

void tst_DesignerTaskMenu::defaultStyleSheetFromCurrentDirectory()
{
    qunsetenv("QT_DESIGNER_ZUN_DIR");
    writeFile(qssDir() + QStringLiteral("/here.qss"), "QWidget { color: teal; }");
    const QString previous = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_dir->path()));
    QDesignerCustomWidgetInterface *plugin = widgetPlugin();
    QScopedPointer<QWidget> widget(plugin->createWidget(nullptr));
    plugin->initialize(m_core.data());
    QWidget other;
    const QStringList entries = texts(taskMenu(&other)->taskActions());
    QVERIFY(QDir::setCurrent(previous));
    QCOMPARE(widget->styleSheet(), QStringLiteral("QWidget { color: teal; }"));
    QCOMPARE(entries, (QStringList {QStringLiteral("here"), QStringLiteral("Clear styleSheet")}));
}

VEL_TEST_MAIN(tst_DesignerTaskMenu)
#include "tst_designertaskmenu.moc"
