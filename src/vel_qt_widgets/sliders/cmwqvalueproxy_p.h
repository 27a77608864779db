#ifndef VEL_QT_WIDGETS_CMWQVALUEPROXY_P_H
#define VEL_QT_WIDGETS_CMWQVALUEPROXY_P_H

#include <vel_qt_widgets/CMwQValueProxy.h>

class VEL_QT_WIDGETS_EXPORT CMwQValueProxyPrivate
{
    Q_DECLARE_PUBLIC(CMwQValueProxy)

public:
    CMwQValueProxyPrivate() = default;
    virtual ~CMwQValueProxyPrivate();

    CMwQValueProxy *q_ptr = nullptr;
    double value = 0.0;
    double proxyValue = 0.0;
};

#endif // VEL_QT_WIDGETS_CMWQVALUEPROXY_P_H
