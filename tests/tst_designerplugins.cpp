#include "vel_test_main.h"

#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>
#include <QtCore/QXmlStreamReader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

// The plug-in as Designer sees it: loaded from the built library file, with
// nothing of the library's own headers.
class tst_DesignerPlugins : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void metaData();
    void sameInstanceEveryCall();
    void tenInterfacesInOrder();
    void description_data();
    void description();
    void domXml_data();
    void domXml();
    void createWidget_data();
    void createWidget();
    void initializeOnlySetsTheFlag();

private:
    QList<QDesignerCustomWidgetInterface *> plugins() const;
    QDesignerCustomWidgetInterface *plugin(const QString &name) const;

    QPluginLoader m_loader;
    QDesignerCustomWidgetCollectionInterface *m_collection = nullptr;
};

namespace {

// What a parsed domXml() fragment holds, field by field.
struct Fragment
{
    QString language;
    QString className;
    QString objectName;
    QRect geometry;
    QString hSizeType;
    QString vSizeType;
    int horStretch = -1;
    int verStretch = -1;
    QString orientation;
    QStringList propertyNames;
    int widgetCount = 0;
};

Fragment parseFragment(const QString &xml, QString *error)
{
    Fragment f;
    QXmlStreamReader reader(xml);
    QString property;
    QString field;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            // QStringRef in Qt 5, QStringView in Qt 6.
            const auto name = reader.name();
            if (name == QLatin1String("ui")) {
                f.language = reader.attributes().value(QLatin1String("language")).toString();
            } else if (name == QLatin1String("widget")) {
                ++f.widgetCount;
                f.className = reader.attributes().value(QLatin1String("class")).toString();
                f.objectName = reader.attributes().value(QLatin1String("name")).toString();
            } else if (name == QLatin1String("property")) {
                property = reader.attributes().value(QLatin1String("name")).toString();
                f.propertyNames << property;
            } else if (name == QLatin1String("sizepolicy")) {
                f.hSizeType = reader.attributes().value(QLatin1String("hsizetype")).toString();
                f.vSizeType = reader.attributes().value(QLatin1String("vsizetype")).toString();
            } else {
                field = name.toString();
            }
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            const QString text = reader.text().toString();
            if (field == QLatin1String("x"))
                f.geometry.moveLeft(text.toInt());
            else if (field == QLatin1String("y"))
                f.geometry.moveTop(text.toInt());
            else if (field == QLatin1String("width"))
                f.geometry.setWidth(text.toInt());
            else if (field == QLatin1String("height"))
                f.geometry.setHeight(text.toInt());
            else if (field == QLatin1String("horstretch"))
                f.horStretch = text.toInt();
            else if (field == QLatin1String("verstretch"))
                f.verStretch = text.toInt();
            else if (field == QLatin1String("enum") && property == QLatin1String("orientation"))
                f.orientation = text;
        } else if (reader.isEndElement()) {
            field.clear();
        }
    }
    if (reader.hasError())
        *error = reader.errorString();
    return f;
}

} // namespace

void tst_DesignerPlugins::initTestCase()
{
    m_loader.setFileName(QStringLiteral(VEL_LIBRARY_FILE));
    QObject *instance = m_loader.instance();
    QVERIFY2(instance, qPrintable(m_loader.errorString()));
    m_collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(instance);
    QVERIFY(m_collection);
}

QList<QDesignerCustomWidgetInterface *> tst_DesignerPlugins::plugins() const
{
    return m_collection->customWidgets();
}

QDesignerCustomWidgetInterface *tst_DesignerPlugins::plugin(const QString &name) const
{
    for (QDesignerCustomWidgetInterface *p : plugins()) {
        if (p->name() == name)
            return p;
    }
    return nullptr;
}

void tst_DesignerPlugins::metaData()
{
    const QJsonObject metaData = m_loader.metaData();
    QCOMPARE(metaData.value(QLatin1String("IID")).toString(),
        QStringLiteral("org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface"));
    QCOMPARE(
        metaData.value(QLatin1String("className")).toString(), QStringLiteral("CMwQCustomWidgets"));
    // No custom metadata: the "MetaData" object reads as empty.
    QVERIFY(metaData.value(QLatin1String("MetaData")).toObject().isEmpty());
    QCOMPARE(m_loader.instance()->metaObject()->className(), "CMwQCustomWidgets");
}

void tst_DesignerPlugins::sameInstanceEveryCall()
{
    QPluginLoader second(QStringLiteral(VEL_LIBRARY_FILE));
    QCOMPARE(second.instance(), m_loader.instance());
    QVERIFY(!m_loader.instance()->parent());
}

void tst_DesignerPlugins::tenInterfacesInOrder()
{
    const QStringList expected {QStringLiteral("CMwQWidget"), QStringLiteral("CMwTextPushButton"),
        QStringLiteral("CMwIconFitButton"), QStringLiteral("CMwPickerPushButton"),
        QStringLiteral("CMwHierarchicalGridView"), QStringLiteral("CMwQSlider"),
        QStringLiteral("CMwQDoubleSlider"), QStringLiteral("CMwQRangeSlider"),
        QStringLiteral("CMwQDoubleRangeSlider"), QStringLiteral("CMwQFlowLayoutWidget")};
    const QStringList pluginClasses {QStringLiteral("CMwQWidgetPlugin"),
        QStringLiteral("CMwTextPushButtonPlugin"), QStringLiteral("CMwIconFitButtonPlugin"),
        QStringLiteral("CMwPickerPushButtonPlugin"),
        QStringLiteral("CMwHierarchicalGridViewPlugin"), QStringLiteral("CMwQSliderPlugin"),
        QStringLiteral("CMwQDoubleSliderPlugin"), QStringLiteral("CMwQRangeSliderPlugin"),
        QStringLiteral("CMwQDoubleRangeSliderPlugin"), QStringLiteral("CMwQFlowLayoutPlugin")};
    for (int call = 0; call < 2; ++call) {
        const QList<QDesignerCustomWidgetInterface *> list = plugins();
        QCOMPARE(list.size(), 10);
        for (int i = 0; i < list.size(); ++i) {
            QCOMPARE(list.at(i)->name(), expected.at(i));
            auto *object = dynamic_cast<QObject *>(list.at(i));
            QVERIFY(object);
            QCOMPARE(QString::fromLatin1(object->metaObject()->className()), pluginClasses.at(i));
            QCOMPARE(object->parent(), m_loader.instance());
            QCOMPARE(qobject_cast<QDesignerCustomWidgetInterface *>(object), list.at(i));
        }
    }
}

void tst_DesignerPlugins::description_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QString>("includeFile");
    QTest::addColumn<bool>("container");

    const auto row = [](const char *name, const char *icon, const char *header, bool container) {
        QTest::newRow(name)
            << QString::fromLatin1(name)
            << QStringLiteral(":/vel_qt_widgets/%1").arg(QLatin1String(icon))
            << QStringLiteral("<omni6/include/vel_qt_widgets/%1.h>").arg(QLatin1String(header))
            << container;
    };
    row("CMwQWidget", "widget.png", "Base", true);
    row("CMwTextPushButton", "text_button.png", "PushButtons", false);
    row("CMwIconFitButton", "icon_fit_button.png", "PushButtons", false);
    row("CMwPickerPushButton", "picker_button.png", "PushButtons", false);
    row("CMwHierarchicalGridView", "HierarchicalGrid.png", "CMwHierarchicalGridView", false);
    row("CMwQSlider", "slider.png", "CMwQSlider", false);
    row("CMwQDoubleSlider", "slider.png", "CMwQDoubleSlider", false);
    row("CMwQRangeSlider", "slider.png", "CMwQRangeSlider", false);
    row("CMwQDoubleRangeSlider", "slider.png", "CMwQDoubleRangeSlider", false);
    row("CMwQFlowLayoutWidget", "text_button.png", "FlowLayout", true);
}

void tst_DesignerPlugins::description()
{
    QFETCH(QString, name);
    QFETCH(QString, icon);
    QFETCH(QString, includeFile);
    QFETCH(bool, container);

    QDesignerCustomWidgetInterface *p = plugin(name);
    QVERIFY(p);
    QCOMPARE(p->group(), QStringLiteral("Zorvan Widgets"));
    QCOMPARE(p->toolTip(), QString());
    QCOMPARE(p->whatsThis(), QString());
    QCOMPARE(p->includeFile(), includeFile);
    QCOMPARE(p->isContainer(), container);
    QCOMPARE(p->codeTemplate(), QString());
    // The icon is the library's own resource, a real image of a usable size.
    QVERIFY2(QFile::exists(icon), qPrintable(icon));
    const QImage image(icon);
    QVERIFY(!image.isNull());
    QVERIFY(image.width() >= 16 && image.height() >= 16);
    QVERIFY(!p->icon().isNull());
    const QImage fromIcon
        = p->icon().pixmap(image.size()).toImage().convertToFormat(image.format());
    QCOMPARE(fromIcon, image);
}

void tst_DesignerPlugins::domXml_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("objectName");
    QTest::addColumn<QRect>("geometry"); // null: no geometry property
    QTest::addColumn<bool>("sizePolicy"); // Minimum / Fixed, stretch 0 / 0
    QTest::addColumn<bool>("horizontal"); // orientation Qt::Horizontal

    const QRect button(0, 0, 75, 23);
    QTest::newRow("CMwQWidget") << "CMwQWidget"
                                << "widget" << QRect(0, 0, 120, 80) << false << false;
    QTest::newRow("CMwTextPushButton") << "CMwTextPushButton"
                                       << "TextPushButton" << button << true << false;
    QTest::newRow("CMwIconFitButton") << "CMwIconFitButton"
                                      << "IconFitButton" << button << true << false;
    QTest::newRow("CMwPickerPushButton") << "CMwPickerPushButton"
                                         << "PickerPushButton" << button << true << false;
    QTest::newRow("CMwHierarchicalGridView") << "CMwHierarchicalGridView"
                                             << "HierarchicalGridView" << button << true << false;
    QTest::newRow("CMwQSlider") << "CMwQSlider"
                                << "slider" << QRect() << false << true;
    QTest::newRow("CMwQDoubleSlider") << "CMwQDoubleSlider"
                                      << "sliderDouble" << QRect() << false << true;
    QTest::newRow("CMwQRangeSlider") << "CMwQRangeSlider"
                                     << "sliderRange" << QRect() << false << true;
    QTest::newRow("CMwQDoubleRangeSlider") << "CMwQDoubleRangeSlider"
                                           << "sliderDouble" << QRect() << false << true;
    QTest::newRow("CMwQFlowLayoutWidget") << "CMwQFlowLayoutWidget"
                                          << "FlowLayoutWidget" << button << true << false;
}

void tst_DesignerPlugins::domXml()
{
    QFETCH(QString, name);
    QFETCH(QString, objectName);
    QFETCH(QRect, geometry);
    QFETCH(bool, sizePolicy);
    QFETCH(bool, horizontal);

    QDesignerCustomWidgetInterface *p = plugin(name);
    QVERIFY(p);
    QString error;
    const Fragment f = parseFragment(p->domXml(), &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    QCOMPARE(f.language, QStringLiteral("c++"));
    QCOMPARE(f.widgetCount, 1);
    QCOMPARE(f.className, name);
    QCOMPARE(f.objectName, objectName);

    QStringList expectedProperties;
    if (!geometry.isNull()) {
        expectedProperties << QStringLiteral("geometry");
        QCOMPARE(f.geometry, geometry);
    }
    if (sizePolicy) {
        expectedProperties << QStringLiteral("sizePolicy");
        QCOMPARE(f.hSizeType, QStringLiteral("Minimum"));
        QCOMPARE(f.vSizeType, QStringLiteral("Fixed"));
        QCOMPARE(f.horStretch, 0);
        QCOMPARE(f.verStretch, 0);
    }
    if (horizontal) {
        expectedProperties << QStringLiteral("orientation");
        QCOMPARE(f.orientation, QStringLiteral("Qt::Horizontal"));
    }
    QCOMPARE(f.propertyNames, expectedProperties);
}

void tst_DesignerPlugins::createWidget_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("text");

    QTest::newRow("CMwQWidget") << "CMwQWidget"
                                << "CMwQWidget" << QString();
    QTest::newRow("CMwTextPushButton") << "CMwTextPushButton"
                                       << "CMwTextPushButton"
                                       << "text";
    QTest::newRow("CMwIconFitButton") << "CMwIconFitButton"
                                      << "CMwIconFitButton"
                                      << "";
    QTest::newRow("CMwPickerPushButton") << "CMwPickerPushButton"
                                         << "CMwPickerPushButton"
                                         << "";
    QTest::newRow("CMwHierarchicalGridView") << "CMwHierarchicalGridView"
                                             << "CMwHierarchicalGridView" << QString();
    QTest::newRow("CMwQSlider") << "CMwQSlider"
                                << "CMwQSlider" << QString();
    QTest::newRow("CMwQDoubleSlider") << "CMwQDoubleSlider"
                                      << "CMwQDoubleSlider" << QString();
    QTest::newRow("CMwQRangeSlider") << "CMwQRangeSlider"
                                     << "CMwQRangeSlider" << QString();
    QTest::newRow("CMwQDoubleRangeSlider") << "CMwQDoubleRangeSlider"
                                           << "CMwQDoubleRangeSlider" << QString();
    QTest::newRow("CMwQFlowLayoutWidget") << "CMwQFlowLayoutWidget"
                                          << "CMwQFlowLayoutWidget" << QString();
}

void tst_DesignerPlugins::createWidget()
{
    QFETCH(QString, name);
    QFETCH(QString, className);
    QFETCH(QString, text);

    QDesignerCustomWidgetInterface *p = plugin(name);
    QVERIFY(p);
    QWidget parent;
    QWidget *widget = p->createWidget(&parent);
    QVERIFY(widget);
    QCOMPARE(widget->parentWidget(), &parent);
    QCOMPARE(QString::fromLatin1(widget->metaObject()->className()), className);
    if (!text.isNull())
        QCOMPARE(widget->property("text").toString(), text);

    QWidget *orphan = p->createWidget(nullptr);
    QVERIFY(orphan);
    QVERIFY(!orphan->parentWidget());
    delete orphan;
}

void tst_DesignerPlugins::initializeOnlySetsTheFlag()
{
    // Without a form editor nothing can be registered; the flag still follows.
    for (QDesignerCustomWidgetInterface *p : plugins()) {
        if (p->name() == QLatin1String("CMwQWidget"))
            continue;
        QVERIFY(!p->isInitialized());
        p->initialize(nullptr);
        QVERIFY(p->isInitialized());
        p->initialize(nullptr);
        QVERIFY(p->isInitialized());
    }
}

VEL_TEST_MAIN(tst_DesignerPlugins)
#include "tst_designerplugins.moc"
