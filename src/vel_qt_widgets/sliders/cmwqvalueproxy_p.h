#ifndef VEL_QT_WIDGETS_CMWQVALUEPROXY_P_H
#define VEL_QT_WIDGETS_CMWQVALUEPROXY_P_H

#include <vel_qt_widgets/CMwQValueProxy.h>

class VEL_QT_WIDGETS_EXPORT CMwQValueProxyPrivate
{
    Q_DECLARE_PUBLIC(CMwQValueProxy)

public:
    CMwQValueProxyPrivate() = default;
    virtual ~CMwQValueProxyPrivate();

    static CMwQValueProxyPrivate *get(CMwQValueProxy *q) { return q->d_func(); }
    static const CMwQValueProxyPrivate *get(const CMwQValueProxy *q) { return q->d_func(); }

    CMwQValueProxy *q_ptr = nullptr;
    double value = 0.0;
    double proxyValue = 0.0;
};

#endif // VEL_QT_WIDGETS_CMWQVALUEPROXY_P_H
