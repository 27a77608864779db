#ifndef VEL_TEST_VALUEPROXIES_H
#define VEL_TEST_VALUEPROXIES_H

#include <vel_qt_widgets/CMwQValueProxy.h>

#include <cmath>

// Value proxies shared by the floating-point slider tests. They add no
// signals, slots or properties of their own, so they need no meta-object.

// proxy = factor * value; the factor can change under the protocol.
class LinearProxy : public CMwQValueProxy
{
public:
    explicit LinearProxy(double factor, QObject *parent = nullptr)
        : CMwQValueProxy(parent)
        , m_factor(factor)
    {
    }
    double proxyValueFromValue(double value) const override { return m_factor * value; }
    double valueFromProxyValue(double proxyValue) const override { return proxyValue / m_factor; }
    void setFactor(double factor)
    {
        Q_EMIT proxyAboutToBeModified();
        m_factor = factor;
        updateProxyValue();
        Q_EMIT proxyModified();
    }
    // Connections from this proxy's signals, to see which slider listens.
    int protocolReceivers() const
    {
        return receivers(SIGNAL(proxyAboutToBeModified())) + receivers(SIGNAL(proxyModified()));
    }
    int valueReceivers() const { return receivers(SIGNAL(valueChanged(double))); }

private:
    double m_factor;
};

class LogProxy : public CMwQValueProxy
{
public:
    double proxyValueFromValue(double value) const override { return std::log10(value); }
    double valueFromProxyValue(double proxyValue) const override
    {
        return std::pow(10.0, proxyValue);
    }
};

// proxy = value / divisor, value = proxy * divisor: for a divisor of 3 the
// way back from DBL_MAX / 3 rounds up past DBL_MAX to infinity.
class ScalingProxy : public CMwQValueProxy
{
public:
    explicit ScalingProxy(double divisor)
        : m_divisor(divisor)
    {
    }
    double proxyValueFromValue(double value) const override { return value / m_divisor; }
    double valueFromProxyValue(double proxyValue) const override { return proxyValue * m_divisor; }

private:
    double m_divisor;
};

// A decreasing mapping: the slider runs the other way round.
class NegatingProxy : public CMwQValueProxy
{
public:
    double proxyValueFromValue(double value) const override { return -value; }
    double valueFromProxyValue(double proxyValue) const override { return -proxyValue; }
};

#endif // VEL_TEST_VALUEPROXIES_H
