#ifndef VEL_QT_WIDGETS_CMWDESIGNERPLUGINS_H
#define VEL_QT_WIDGETS_CMWDESIGNERPLUGINS_H

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

// What Designer is told about one widget class.
struct SMwDesignerDescription
{
    const char *name; // class name, also the widget-box entry
    const char *icon; // resource path of the widget-box icon
    const char *header; // public header without its suffix
    bool container;
    QString (*domXml)(); // the form fragment put on a form when dropped
};

// The common part of the ten plug-ins; each concrete plug-in adds how its
// widget is created. (moc cannot see classes declared through a macro, so
// the nine small ones below are written out.)
class CMwDesignerPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    ~CMwDesignerPlugin() override;

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface *core) override;
    QString domXml() const override;

protected:
    CMwDesignerPlugin(const SMwDesignerDescription &description, QObject *parent);

    bool m_initialized = false;

private:
    const SMwDesignerDescription m_description;
};

class CMwQWidgetPlugin : public CMwDesignerPlugin
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit CMwQWidgetPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
    // Also registers the style-sheet task menu with Designer, once.
    void initialize(QDesignerFormEditorInterface *core) override;
};

class CMwTextPushButtonPlugin : public CMwDesignerPlugin
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit CMwTextPushButtonPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
};

class CMwIconFitButtonPlugin : public CMwDesignerPlugin
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit CMwIconFitButtonPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
};

class CMwPickerPushButtonPlugin : public CMwDesignerPlugin
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit CMwPickerPushButtonPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
};

class CMwHierarchicalGridViewPlugin : public CMwDesignerPlugin
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit CMwHierarchicalGridViewPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
};

class CMwQSliderPlugin : public CMwDesignerPlugin
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit CMwQSliderPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
};

class CMwQDoubleSliderPlugin : public CMwDesignerPlugin
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit CMwQDoubleSliderPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
};

class CMwQRangeSliderPlugin : public CMwDesignerPlugin
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit CMwQRangeSliderPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
};

class CMwQDoubleRangeSliderPlugin : public CMwDesignerPlugin
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit CMwQDoubleRangeSliderPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
};

class CMwQFlowLayoutPlugin : public CMwDesignerPlugin
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    explicit CMwQFlowLayoutPlugin(QObject *parent = nullptr);
    QWidget *createWidget(QWidget *parent) override;
};

#endif // VEL_QT_WIDGETS_CMWDESIGNERPLUGINS_H
