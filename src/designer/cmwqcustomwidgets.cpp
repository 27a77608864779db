#include "cmwqcustomwidgets.h"

#include "cmwdesignerplugins.h"

CMwQCustomWidgets::CMwQCustomWidgets(QObject *parent)
    : QObject(parent)
{
    // This order is the order of the entries in Designer's widget box.
    m_plugins.append(new CMwQWidgetPlugin(this));
    m_plugins.append(new CMwTextPushButtonPlugin(this));
    m_plugins.append(new CMwIconFitButtonPlugin(this));
    m_plugins.append(new CMwPickerPushButtonPlugin(this));
    m_plugins.append(new CMwHierarchicalGridViewPlugin(this));
    m_plugins.append(new CMwQSliderPlugin(this));
    m_plugins.append(new CMwQDoubleSliderPlugin(this));
    m_plugins.append(new CMwQRangeSliderPlugin(this));
    m_plugins.append(new CMwQDoubleRangeSliderPlugin(this));
    m_plugins.append(new CMwQFlowLayoutPlugin(this));
}

// The plug-ins go with the collection as its QObject children.
CMwQCustomWidgets::~CMwQCustomWidgets() = default;

QList<QDesignerCustomWidgetInterface *> CMwQCustomWidgets::customWidgets() const
{
    return m_plugins;
}
