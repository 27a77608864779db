#ifndef VEL_QT_WIDGETS_CMWQCUSTOMWIDGETS_H
#define VEL_QT_WIDGETS_CMWQCUSTOMWIDGETS_H

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

// The Designer entry point: the shared library that applications link is
// itself the plug-in Designer loads, and hands Designer these ten widgets.
class CMwQCustomWidgets : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    Q_INVOKABLE explicit CMwQCustomWidgets(QObject *parent = nullptr);
    ~CMwQCustomWidgets() override;

    QList<QDesignerCustomWidgetInterface *> customWidgets() const override;

private:
    QList<QDesignerCustomWidgetInterface *> m_plugins;
};

#endif // VEL_QT_WIDGETS_CMWQCUSTOMWIDGETS_H
