#include "cmwqvalueproxy_p.h"

CMwQValueProxyPrivate::~CMwQValueProxyPrivate() = default;

CMwQValueProxy::CMwQValueProxy(QObject *parent)
    : CMwQValueProxy(new CMwQValueProxyPrivate, parent)
{
}

CMwQValueProxy::CMwQValueProxy(CMwQValueProxyPrivate *d, QObject *parent)
    : QObject(parent)
    , d_vel(d)
{
    d->q_ptr = this;
}

CMwQValueProxy::~CMwQValueProxy() = default;

double CMwQValueProxy::value() const
{
    Q_D(const CMwQValueProxy);
    return d->value;
}

double CMwQValueProxy::proxyValue() const
{
    Q_D(const CMwQValueProxy);
    return d->proxyValue;
}

// Exact comparisons throughout: the proxy stores what it is given, and a NaN,
// which equals nothing, is therefore always stored and announced.
void CMwQValueProxy::setValue(double newValue)
{
    Q_D(CMwQValueProxy);
    if (newValue == d->value)
        return;
    d->value = newValue;
    Q_EMIT valueChanged(newValue);
    updateProxyValue();
}

void CMwQValueProxy::setProxyValue(double newProxyValue)
{
    Q_D(CMwQValueProxy);
    if (newProxyValue == d->proxyValue)
        return;
    d->proxyValue = newProxyValue;
    Q_EMIT proxyValueChanged(newProxyValue);
    updateValue();
}

// The recomputed side is never fed back: a conversion that does not round-trip
// exactly leaves both sides as last computed instead of oscillating.
void CMwQValueProxy::updateProxyValue()
{
    Q_D(CMwQValueProxy);
    const double p = proxyValueFromValue(d->value);
    if (p != d->proxyValue) {
        d->proxyValue = p;
        Q_EMIT proxyValueChanged(p);
    }
}

void CMwQValueProxy::updateValue()
{
    Q_D(CMwQValueProxy);
    // Through the accessor, so that a subclass computing its proxy value is
    // converted from what it reports.
    const double v = valueFromProxyValue(proxyValue());
    if (v != d->value) {
        d->value = v;
        Q_EMIT valueChanged(v);
    }
}
