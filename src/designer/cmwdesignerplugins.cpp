#include "cmwdesignerplugins.h"

#include "qssdirectory.h"
#include "taskmenuextension_stylesheet.h"

#include <vel_qt_widgets/Base.h>
#include <vel_qt_widgets/CMwHierarchicalGridView.h>
#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>
#include <vel_qt_widgets/CMwQSlider.h>
#include <vel_qt_widgets/FlowLayout.h>
#include <vel_qt_widgets/PushButtons.h>

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QExtensionManager>
#include <QtGui/QIcon>

namespace {

// The public headers' own suffix, appended inside the angle brackets so
// that generated code includes them as system headers.
const char headerSuffix[] = ".h";

QString geometryXml(int width, int height)
{
    return QStringLiteral("  <property name=\"geometry\">\n"
                          "   <rect>\n"
                          "    <x>0</x>\n"
                          "    <y>0</y>\n"
                          "    <width>%1</width>\n"
                          "    <height>%2</height>\n"
                          "   </rect>\n"
                          "  </property>\n")
        .arg(width)
        .arg(height);
}

QString sizePolicyXml()
{
    return QStringLiteral("  <property name=\"sizePolicy\">\n"
                          "   <sizepolicy hsizetype=\"Minimum\" vsizetype=\"Fixed\">\n"
                          "    <horstretch>0</horstretch>\n"
                          "    <verstretch>0</verstretch>\n"
                          "   </sizepolicy>\n"
                          "  </property>\n");
}

QString horizontalXml()
{
    return QStringLiteral("  <property name=\"orientation\">\n"
                          "   <enum>Qt::Horizontal</enum>\n"
                          "  </property>\n");
}

QString uiXml(const char *className, const char *objectName, const QString &properties)
{
    return QStringLiteral("<ui language=\"c++\">\n"
                          " <widget class=\"%1\" name=\"%2\">\n"
                          "%3"
                          " </widget>\n"
                          "</ui>\n")
        .arg(QLatin1String(className), QLatin1String(objectName), properties);
}

// Buttons, the grid and the flow-layout widget all start at the button size.
template<const char *ClassName, const char *ObjectName>
QString buttonSizedXml()
{
    return uiXml(ClassName, ObjectName, geometryXml(75, 23) + sizePolicyXml());
}

template<const char *ClassName, const char *ObjectName>
QString horizontalSliderXml()
{
    return uiXml(ClassName, ObjectName, horizontalXml());
}

const char kWidget[] = "CMwQWidget";
const char kTextButton[] = "CMwTextPushButton";
const char kIconFitButton[] = "CMwIconFitButton";
const char kPickerButton[] = "CMwPickerPushButton";
const char kGrid[] = "CMwHierarchicalGridView";
const char kSlider[] = "CMwQSlider";
const char kDoubleSlider[] = "CMwQDoubleSlider";
const char kRangeSlider[] = "CMwQRangeSlider";
const char kDoubleRangeSlider[] = "CMwQDoubleRangeSlider";
const char kFlowWidget[] = "CMwQFlowLayoutWidget";

const char nTextButton[] = "TextPushButton";
const char nIconFitButton[] = "IconFitButton";
const char nPickerButton[] = "PickerPushButton";
const char nGrid[] = "HierarchicalGridView";
const char nSlider[] = "slider";
// The double range slider proposes the double slider's name, on purpose
// (docs/compatibility.md).
const char nDoubleSlider[] = "sliderDouble";
const char nRangeSlider[] = "sliderRange";
const char nFlowWidget[] = "FlowLayoutWidget";

QString widgetXml() { return uiXml(kWidget, "widget", geometryXml(120, 80)); }

const char textButtonIcon[] = ":/vel_qt_widgets/text_button.png";
const char sliderIcon[] = ":/vel_qt_widgets/slider.png";

} // namespace

CMwDesignerPlugin::CMwDesignerPlugin(const SMwDesignerDescription &description, QObject *parent)
    : QObject(parent)
    , m_description(description)
{
}

CMwDesignerPlugin::~CMwDesignerPlugin() = default;

QString CMwDesignerPlugin::name() const { return QLatin1String(m_description.name); }

QString CMwDesignerPlugin::group() const { return QStringLiteral("Zorvan Widgets"); }

QString CMwDesignerPlugin::toolTip() const { return QString(); }

QString CMwDesignerPlugin::whatsThis() const { return QString(); }

QString CMwDesignerPlugin::includeFile() const
{
    return QStringLiteral("<omni6/include/vel_qt_widgets/%1%2>")
        .arg(QLatin1String(m_description.header), QLatin1String(headerSuffix));
}

QIcon CMwDesignerPlugin::icon() const { return QIcon(QLatin1String(m_description.icon)); }

bool CMwDesignerPlugin::isContainer() const { return m_description.container; }

bool CMwDesignerPlugin::isInitialized() const { return m_initialized; }

void CMwDesignerPlugin::initialize(QDesignerFormEditorInterface *) { m_initialized = true; }

QString CMwDesignerPlugin::domXml() const { return m_description.domXml(); }

CMwQWidgetPlugin::CMwQWidgetPlugin(QObject *parent)
    : CMwDesignerPlugin({kWidget, ":/vel_qt_widgets/widget.png", "Base", true, &widgetXml}, parent)
{
}

QWidget *CMwQWidgetPlugin::createWidget(QWidget *parent)
{
    auto *widget = new CMwQWidget(parent, Qt::WindowFlags());
    // A nested CMwQWidget inherits its look from the enclosing one.
    for (QWidget *ancestor = parent; ancestor; ancestor = ancestor->parentWidget()) {
        if (qobject_cast<CMwQWidget *>(ancestor))
            return widget;
    }
    const QFileInfoList files = velStyleSheetFiles(velStyleSheetDirectory());
    if (!files.isEmpty()) {
        const QString styleSheet = velReadStyleSheet(files.first().absoluteFilePath());
        if (!styleSheet.isNull())
            widget->setStyleSheet(styleSheet);
    }
    return widget;
}

void CMwQWidgetPlugin::initialize(QDesignerFormEditorInterface *core)
{
    if (m_initialized)
        return;
    if (core && core->extensionManager()) {
        QExtensionManager *manager = core->extensionManager();
        manager->registerExtensions(new TaskMenuExtension_StyleSheetFactory(manager),
            QStringLiteral("org.qt-project.Qt.Designer.TaskMenu"));
    }
    m_initialized = true;
}

CMwTextPushButtonPlugin::CMwTextPushButtonPlugin(QObject *parent)
    : CMwDesignerPlugin({kTextButton, textButtonIcon, "PushButtons", false,
                            &buttonSizedXml<kTextButton, nTextButton>},
        parent)
{
}

QWidget *CMwTextPushButtonPlugin::createWidget(QWidget *parent)
{
    return new CMwTextPushButton(QStringLiteral("text"), parent);
}

CMwIconFitButtonPlugin::CMwIconFitButtonPlugin(QObject *parent)
    : CMwDesignerPlugin({kIconFitButton, ":/vel_qt_widgets/icon_fit_button.png", "PushButtons",
                            false, &buttonSizedXml<kIconFitButton, nIconFitButton>},
        parent)
{
}

QWidget *CMwIconFitButtonPlugin::createWidget(QWidget *parent)
{
    return new CMwIconFitButton(parent);
}

CMwPickerPushButtonPlugin::CMwPickerPushButtonPlugin(QObject *parent)
    : CMwDesignerPlugin({kPickerButton, ":/vel_qt_widgets/picker_button.png", "PushButtons", false,
                            &buttonSizedXml<kPickerButton, nPickerButton>},
        parent)
{
}

QWidget *CMwPickerPushButtonPlugin::createWidget(QWidget *parent)
{
    return new CMwPickerPushButton(parent);
}

CMwHierarchicalGridViewPlugin::CMwHierarchicalGridViewPlugin(QObject *parent)
    : CMwDesignerPlugin({kGrid, ":/vel_qt_widgets/HierarchicalGrid.png", "CMwHierarchicalGridView",
                            false, &buttonSizedXml<kGrid, nGrid>},
        parent)
{
}

QWidget *CMwHierarchicalGridViewPlugin::createWidget(QWidget *parent)
{
    return new CMwHierarchicalGridView(parent);
}

CMwQSliderPlugin::CMwQSliderPlugin(QObject *parent)
    : CMwDesignerPlugin(
        {kSlider, sliderIcon, "CMwQSlider", false, &horizontalSliderXml<kSlider, nSlider>}, parent)
{
}

QWidget *CMwQSliderPlugin::createWidget(QWidget *parent) { return new CMwQSlider(parent); }

CMwQDoubleSliderPlugin::CMwQDoubleSliderPlugin(QObject *parent)
    : CMwDesignerPlugin({kDoubleSlider, sliderIcon, "CMwQDoubleSlider", false,
                            &horizontalSliderXml<kDoubleSlider, nDoubleSlider>},
        parent)
{
}

QWidget *CMwQDoubleSliderPlugin::createWidget(QWidget *parent)
{
    return new CMwQDoubleSlider(parent);
}

CMwQRangeSliderPlugin::CMwQRangeSliderPlugin(QObject *parent)
    : CMwDesignerPlugin({kRangeSlider, sliderIcon, "CMwQRangeSlider", false,
                            &horizontalSliderXml<kRangeSlider, nRangeSlider>},
        parent)
{
}

QWidget *CMwQRangeSliderPlugin::createWidget(QWidget *parent)
{
    return new CMwQRangeSlider(parent);
}

CMwQDoubleRangeSliderPlugin::CMwQDoubleRangeSliderPlugin(QObject *parent)
    : CMwDesignerPlugin({kDoubleRangeSlider, sliderIcon, "CMwQDoubleRangeSlider", false,
                            &horizontalSliderXml<kDoubleRangeSlider, nDoubleSlider>},
        parent)
{
}

QWidget *CMwQDoubleRangeSliderPlugin::createWidget(QWidget *parent)
{
    return new CMwQDoubleRangeSlider(parent);
}

// The flow-layout widget shows the text button's icon (docs/compatibility.md).
CMwQFlowLayoutPlugin::CMwQFlowLayoutPlugin(QObject *parent)
    : CMwDesignerPlugin({kFlowWidget, textButtonIcon, "FlowLayout", true,
                            &buttonSizedXml<kFlowWidget, nFlowWidget>},
        parent)
{
}

QWidget *CMwQFlowLayoutPlugin::createWidget(QWidget *parent)
{
    return new CMwQFlowLayoutWidget(parent, Qt::WindowFlags());
}
