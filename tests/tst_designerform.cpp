#include "vel_test_main.h"

#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQSlider.h>

#include <QtCore/QFile>
#include <QtGui/QColor>
#include <QtUiTools/QUiLoader>
#include <QtWidgets/QLayout>

// A form that uses all ten widgets, loaded the way Designer's preview and
// applications using QUiLoader do: through the plug-in folder.
class tst_DesignerForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pluginFolderOffersTheTenWidgets();
    void loadsEveryWidgetWithItsProperties();
    void formSlidersTakeTickItemLists();
};

namespace {

QWidget *loadForm(QUiLoader *loader, QWidget *parent)
{
    QFile file(QStringLiteral(VEL_TEST_FORMS_DIR "/allwidgets.ui"));
    if (!file.open(QIODevice::ReadOnly))
        return nullptr;
    return loader->load(&file, parent);
}

void preparePluginFolder(QUiLoader *loader)
{
    loader->clearPluginPaths();
    loader->addPluginPath(QStringLiteral(VEL_TEST_PLUGIN_DIR));
}

} // namespace

void tst_DesignerForm::pluginFolderOffersTheTenWidgets()
{
    QUiLoader loader;
    preparePluginFolder(&loader);
    const QStringList available = loader.availableWidgets();
    for (const char *name : {"CMwQWidget", "CMwTextPushButton", "CMwIconFitButton",
             "CMwPickerPushButton", "CMwHierarchicalGridView", "CMwQSlider", "CMwQDoubleSlider",
             "CMwQRangeSlider", "CMwQDoubleRangeSlider", "CMwQFlowLayoutWidget"})
        QVERIFY2(available.contains(QLatin1String(name)), name);
}

void tst_DesignerForm::loadsEveryWidgetWithItsProperties()
{
    QUiLoader loader;
    preparePluginFolder(&loader);
    QWidget host;
    QWidget *form = loadForm(&loader, &host);
    QVERIFY2(form, qPrintable(loader.errorString()));

    const auto child = [form](const char *name, const char *className) -> QWidget * {
        auto *widget = form->findChild<QWidget *>(QLatin1String(name));
        if (!widget || qstrcmp(widget->metaObject()->className(), className) != 0)
            return nullptr;
        return widget;
    };

    QWidget *base = child("baseWidget", "CMwQWidget");
    QVERIFY(base);
    QCOMPARE(base->styleSheet(), QStringLiteral("CMwQWidget { background: #dde6f0; }"));
    QVERIFY(base->findChild<QWidget *>(QStringLiteral("innerLabel")));

    QWidget *textButton = child("textButton", "CMwTextPushButton");
    QVERIFY(textButton);
    QCOMPARE(textButton->property("text").toString(), QStringLiteral("Apply"));
    QVERIFY(child("iconFitButton", "CMwIconFitButton"));

    QWidget *picker = child("pickerButton", "CMwPickerPushButton");
    QVERIFY(picker);
    QCOMPARE(picker->property("text").toString(), QStringLiteral("Pick"));
    QCOMPARE(picker->property("direction").toInt(), 2); // eLeft
    QCOMPARE(picker->styleSheet(), QStringLiteral("Text-align:left"));

    QWidget *grid = child("grid", "CMwHierarchicalGridView");
    QVERIFY(grid);
    QCOMPARE(grid->property("colBranchParent").value<QColor>(), QColor(200, 220, 240));
    QVERIFY(grid->findChild<QWidget *>(QStringLiteral("DataView")));

    QWidget *slider = child("slider", "CMwQSlider");
    QVERIFY(slider);
    QCOMPARE(slider->property("orientation").toInt(), int(Qt::Horizontal));
    QCOMPARE(slider->property("maximum").toInt(), 50);
    QCOMPARE(slider->property("value").toInt(), 20);

    QWidget *doubleSlider = child("sliderDouble", "CMwQDoubleSlider");
    QVERIFY(doubleSlider);
    QCOMPARE(doubleSlider->property("minimum").toDouble(), 0.5);
    QCOMPARE(doubleSlider->property("maximum").toDouble(), 2.5);
    QCOMPARE(doubleSlider->property("value").toDouble(), 1.25);
    QCOMPARE(doubleSlider->property("orientation").toInt(), int(Qt::Horizontal));

    QWidget *rangeSlider = child("sliderRange", "CMwQRangeSlider");
    QVERIFY(rangeSlider);
    QCOMPARE(rangeSlider->property("minimumValue").toInt(), 10);
    QCOMPARE(rangeSlider->property("maximumValue").toInt(), 60);

    QWidget *doubleRange = child("sliderDoubleRange", "CMwQDoubleRangeSlider");
    QVERIFY(doubleRange);
    QCOMPARE(doubleRange->property("minimumValue").toDouble(), 0.25);
    QCOMPARE(doubleRange->property("maximumValue").toDouble(), 0.75);
    QCOMPARE(doubleRange->property("orientation").toInt(), int(Qt::Horizontal));

    QWidget *flow = child("flowWidget", "CMwQFlowLayoutWidget");
    QVERIFY(flow);
    QVERIFY(flow->layout());
    QCOMPARE(flow->layout()->metaObject()->className(), "CMwQFlowLayout");
}

// The plug-in creates the sliders of a form; their tick lists are the
// application's meta-types, set and read through the property as a form
// would, the integer list on the integer sliders, the double form on the
// floating-point ones.
void tst_DesignerForm::formSlidersTakeTickItemLists()
{
    QUiLoader loader;
    preparePluginFolder(&loader);
    QWidget host;
    QWidget *form = loadForm(&loader, &host);
    QVERIFY2(form, qPrintable(loader.errorString()));

    const CMwQSlider::TMwTickItemList ints {
        {10, QSlider::TicksAbove, QStringLiteral("ten")}, {40, QSlider::TicksBothSides, QString()}};
    const CMwQDoubleSlider::TMwTickItemList doubles {
        {0.75, QSlider::TicksBelow, QStringLiteral("3/4")}};
    for (const char *name : {"slider", "sliderRange"}) {
        QWidget *slider = form->findChild<QWidget *>(QLatin1String(name));
        QVERIFY2(slider, name);
        QCOMPARE(slider->property("tickItemList").userType(),
            qMetaTypeId<CMwQSlider::TMwTickItemList>());
        QVERIFY2(slider->setProperty("tickItemList", QVariant::fromValue(ints)), name);
        QCOMPARE(slider->property("tickItemList").value<CMwQSlider::TMwTickItemList>(), ints);
    }
    for (const char *name : {"sliderDouble", "sliderDoubleRange"}) {
        QWidget *slider = form->findChild<QWidget *>(QLatin1String(name));
        QVERIFY2(slider, name);
        QCOMPARE(slider->property("tickItemList").userType(),
            qMetaTypeId<CMwQDoubleSlider::TMwTickItemList>());
        QVERIFY2(slider->setProperty("tickItemList", QVariant::fromValue(doubles)), name);
        QCOMPARE(
            slider->property("tickItemList").value<CMwQDoubleSlider::TMwTickItemList>(), doubles);
    }
}

VEL_TEST_MAIN(tst_DesignerForm)
#include "tst_designerform.moc"
