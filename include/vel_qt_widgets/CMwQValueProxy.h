#ifndef VEL_QT_WIDGETS_CMWQVALUEPROXY_H
#define VEL_QT_WIDGETS_CMWQVALUEPROXY_H

#include "vel_qt_widgets_export.h"

#include <QtCore/QObject>
#include <QtCore/QScopedPointer>

class CMwQValueProxyPrivate;

/*!
    \brief Couples a value with a derived proxy value through a pair of
    conversions that a subclass supplies.

    Setting either side recomputes the other once. The floating-point sliders
    accept a proxy: their inner integer slider then moves linearly in proxy
    values while their public interface keeps speaking in values.

    A subclass that changes its conversion emits proxyAboutToBeModified(),
    changes its parameters, calls updateProxyValue() or updateValue() and
    emits proxyModified(); sliders using the proxy keep their public range,
    value and ticks across the change.

    \code
    class CLogProxy : public CMwQValueProxy
    {
    public:
        double proxyValueFromValue(double v) const override { return std::log10(v); }
        double valueFromProxyValue(double p) const override { return std::pow(10.0, p); }
    };
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwQValueProxy : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(double proxyValue READ proxyValue WRITE setProxyValue NOTIFY proxyValueChanged)

public:
    explicit CMwQValueProxy(QObject *parent = nullptr);
    ~CMwQValueProxy() override;

    /*! The proxy value that corresponds to \a value. */
    virtual double proxyValueFromValue(double value) const = 0;
    /*! The value that corresponds to \a proxyValue; the inverse conversion. */
    virtual double valueFromProxyValue(double proxyValue) const = 0;

    double value() const;
    /*! Returns the stored proxy value; a subclass may compute it instead. */
    virtual double proxyValue() const;

public Q_SLOTS:
    /*! Stores \a newValue (if it differs) and recomputes the proxy value. */
    void setValue(double newValue);
    /*! Stores \a newProxyValue (if it differs) and recomputes the value. */
    void setProxyValue(double newProxyValue);

Q_SIGNALS:
    void valueChanged(double value);
    void proxyValueChanged(double proxyValue);
    /*! Emitted by a subclass before it changes its conversion. */
    void proxyAboutToBeModified();
    /*! Emitted by a subclass after it changed its conversion. */
    void proxyModified();

protected:
    CMwQValueProxy(CMwQValueProxyPrivate *d, QObject *parent);

    /*! Recomputes the proxy value from the value; emits if it moved. */
    void updateProxyValue();
    /*! Recomputes the value from the proxy value; emits if it moved. */
    void updateValue();

    // Named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwQValueProxyPrivate> d_vel;

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwQValueProxy)
    Q_DISABLE_COPY(CMwQValueProxy)
};

#endif // VEL_QT_WIDGETS_CMWQVALUEPROXY_H
