#include "vel_test_main.h"

#include <vel_qt_widgets/CMwQValueProxy.h>

#include <cmath>
#include <limits>

namespace {

// proxy = factor * value + shift; the factor can change under the protocol.
class LinearProxy : public CMwQValueProxy
{
    Q_OBJECT

public:
    explicit LinearProxy(double factor = 1.0, double shift = 0.0, QObject *parent = nullptr)
        : CMwQValueProxy(parent)
        , m_factor(factor)
        , m_shift(shift)
    {
    }
    double proxyValueFromValue(double value) const override { return m_factor * value + m_shift; }
    double valueFromProxyValue(double proxyValue) const override
    {
        return (proxyValue - m_shift) / m_factor;
    }
    void setFactor(double factor)
    {
        Q_EMIT proxyAboutToBeModified();
        m_factor = factor;
        updateProxyValue();
        Q_EMIT proxyModified();
    }
    void recomputeValue() { updateValue(); }

private:
    double m_factor;
    double m_shift;
};

// The proxy value is the value rounded down to an integer; the inverse is the
// identity, so the mapping does not round-trip.
class FloorProxy : public CMwQValueProxy
{
    Q_OBJECT

public:
    double proxyValueFromValue(double value) const override { return std::floor(value); }
    double valueFromProxyValue(double proxyValue) const override { return proxyValue; }
};

// Reports a proxy value of its own instead of the stored one.
class ComputedProxy : public CMwQValueProxy
{
    Q_OBJECT

public:
    double proxyValueFromValue(double value) const override { return value * 10.0; }
    double valueFromProxyValue(double proxyValue) const override { return proxyValue / 10.0; }
    double proxyValue() const override { return 50.0; }
    void recomputeValue() { updateValue(); }
};

// Records several signals into one ordered list.
class SignalLog : public QObject
{
    Q_OBJECT

public:
    explicit SignalLog(CMwQValueProxy *proxy)
    {
        connect(proxy, &CMwQValueProxy::valueChanged, this,
            [this](double v) { entries << QStringLiteral("value %1").arg(v); });
        connect(proxy, &CMwQValueProxy::proxyValueChanged, this,
            [this](double p) { entries << QStringLiteral("proxy %1").arg(p); });
        connect(proxy, &CMwQValueProxy::proxyAboutToBeModified, this,
            [this]() { entries << QStringLiteral("aboutToBeModified"); });
        connect(proxy, &CMwQValueProxy::proxyModified, this,
            [this]() { entries << QStringLiteral("modified"); });
    }
    QStringList entries;
};

} // namespace

class tst_CMwQValueProxy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initialState();
    void setValueEmitsValueThenProxyValue();
    void setProxyValueEmitsProxyValueThenValue();
    void settingTheCurrentValueEmitsNothing();
    void mappingOntoTheCurrentProxyValueEmitsOnlyValueChanged();
    void recomputedSideIsNotFedBack();
    void notANumberIsAlwaysStoredAndEmitted();
    void baseClassNeverEmitsTheModificationSignals();
    void modificationProtocol();
    void updateValueConvertsTheReportedProxyValue();
    void properties();
};

void tst_CMwQValueProxy::initialState()
{
    LinearProxy proxy(2.0, 1.0);
    QCOMPARE(proxy.value(), 0.0);
    QCOMPARE(proxy.proxyValue(), 0.0);
}

void tst_CMwQValueProxy::setValueEmitsValueThenProxyValue()
{
    LinearProxy proxy(2.0, 1.0);
    SignalLog log(&proxy);
    proxy.setValue(3.0);
    QCOMPARE(proxy.value(), 3.0);
    QCOMPARE(proxy.proxyValue(), 7.0);
    QCOMPARE(log.entries, QStringList({"value 3", "proxy 7"}));
}

void tst_CMwQValueProxy::setProxyValueEmitsProxyValueThenValue()
{
    LinearProxy proxy(2.0, 1.0);
    SignalLog log(&proxy);
    proxy.setProxyValue(9.0);
    QCOMPARE(proxy.proxyValue(), 9.0);
    QCOMPARE(proxy.value(), 4.0);
    QCOMPARE(log.entries, QStringList({"proxy 9", "value 4"}));
}

void tst_CMwQValueProxy::settingTheCurrentValueEmitsNothing()
{
    LinearProxy proxy(2.0, 1.0);
    proxy.setValue(3.0);
    SignalLog log(&proxy);
    proxy.setValue(3.0);
    proxy.setProxyValue(7.0);
    QVERIFY(log.entries.isEmpty());
    // 0.0 is the initial value: setting it emits nothing either.
    LinearProxy fresh(2.0, 1.0);
    SignalLog freshLog(&fresh);
    fresh.setValue(0.0);
    QVERIFY(freshLog.entries.isEmpty());
    QCOMPARE(fresh.proxyValue(), 0.0); // not recomputed: nothing was set
}

void tst_CMwQValueProxy::mappingOntoTheCurrentProxyValueEmitsOnlyValueChanged()
{
    FloorProxy proxy;
    SignalLog log(&proxy);
    proxy.setValue(0.5); // floor(0.5) == 0 == the current proxy value
    QCOMPARE(log.entries, QStringList({"value 0.5"}));
    QCOMPARE(proxy.proxyValue(), 0.0);
}

void tst_CMwQValueProxy::recomputedSideIsNotFedBack()
{
    FloorProxy proxy;
    SignalLog log(&proxy);
    proxy.setValue(2.4);
    // floor gives 2; the inverse of 2 would be 2.0, but it is not applied.
    QCOMPARE(proxy.proxyValue(), 2.0);
    QCOMPARE(proxy.value(), 2.4);
    QCOMPARE(log.entries, QStringList({"value 2.4", "proxy 2"}));
}

void tst_CMwQValueProxy::notANumberIsAlwaysStoredAndEmitted()
{
    LinearProxy proxy(2.0, 0.0);
    QSignalSpy valueSpy(&proxy, &CMwQValueProxy::valueChanged);
    QSignalSpy proxySpy(&proxy, &CMwQValueProxy::proxyValueChanged);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    proxy.setValue(nan);
    proxy.setValue(nan);
    QCOMPARE(valueSpy.count(), 2);
    QCOMPARE(proxySpy.count(), 2); // 2 * NaN is NaN, which differs from everything
    QVERIFY(std::isnan(proxy.value()));
    QVERIFY(std::isnan(proxy.proxyValue()));
}

void tst_CMwQValueProxy::baseClassNeverEmitsTheModificationSignals()
{
    LinearProxy proxy(2.0, 1.0);
    QSignalSpy about(&proxy, &CMwQValueProxy::proxyAboutToBeModified);
    QSignalSpy modified(&proxy, &CMwQValueProxy::proxyModified);
    proxy.setValue(3.0);
    proxy.setProxyValue(11.0);
    proxy.recomputeValue();
    QVERIFY(proxy.setProperty("value", 8.0));
    QCOMPARE(about.count(), 0);
    QCOMPARE(modified.count(), 0);
}

void tst_CMwQValueProxy::modificationProtocol()
{
    LinearProxy proxy(2.0, 0.0);
    proxy.setValue(3.0);
    SignalLog log(&proxy);
    proxy.setFactor(5.0);
    QCOMPARE(proxy.value(), 3.0);
    QCOMPARE(proxy.proxyValue(), 15.0);
    QCOMPARE(log.entries, QStringList({"aboutToBeModified", "proxy 15", "modified"}));
}

void tst_CMwQValueProxy::updateValueConvertsTheReportedProxyValue()
{
    ComputedProxy proxy;
    QSignalSpy valueSpy(&proxy, &CMwQValueProxy::valueChanged);
    proxy.recomputeValue();
    QCOMPARE(proxy.value(), 5.0); // 50 / 10, from the overridden proxyValue()
    QCOMPARE(valueSpy.count(), 1);
    QCOMPARE(valueSpy.at(0).at(0).toDouble(), 5.0);
}

void tst_CMwQValueProxy::properties()
{
    LinearProxy proxy(2.0, 1.0);
    const QMetaObject *meta = proxy.metaObject();
    const QMetaProperty value = meta->property(meta->indexOfProperty("value"));
    const QMetaProperty proxyValue = meta->property(meta->indexOfProperty("proxyValue"));
    QCOMPARE(value.notifySignal().name(), QByteArray("valueChanged"));
    QCOMPARE(proxyValue.notifySignal().name(), QByteArray("proxyValueChanged"));
    QVERIFY(proxy.setProperty("proxyValue", 5.0));
    QCOMPARE(proxy.property("value").toDouble(), 2.0);
    QVERIFY(proxy.setProperty("value", 4.0));
    QCOMPARE(proxy.property("proxyValue").toDouble(), 9.0);
}

VEL_TEST_MAIN(tst_CMwQValueProxy)
#include "tst_cmwqvalueproxy.moc"
