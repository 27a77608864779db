#include "vel_test_main.h"

#include "qt5round_test_support.h"
#include "slider_test_support.h"
#include "testvalueproxies.h"

#include "cmwqstepmapping_p.h"

#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQValueProxy.h>

#include <QtCore/QRandomGenerator>
#include <QtGui/QHelpEvent>
#include <QtGui/QImage>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QLayout>
#include <QtWidgets/QStyleOptionSlider>
#include <QtWidgets/QToolTip>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>

namespace {

// Records the widget's signals into one ordered list.
class SignalLog : public QObject
{
    Q_OBJECT

public:
    explicit SignalLog(CMwQDoubleSlider *slider)
    {
        connect(slider, &CMwQDoubleSlider::valueChanged, this,
            [this](double v) { entries << QStringLiteral("valueChanged %1").arg(v); });
        connect(slider, &CMwQDoubleSlider::sliderMoved, this,
            [this](double v) { entries << QStringLiteral("sliderMoved %1").arg(v); });
        connect(slider, &CMwQDoubleSlider::sliderPressed, this,
            [this]() { entries << QStringLiteral("sliderPressed"); });
        connect(slider, &CMwQDoubleSlider::sliderReleased, this,
            [this]() { entries << QStringLiteral("sliderReleased"); });
        connect(slider, &CMwQDoubleSlider::rangeChanged, this, [this](double a, double b) {
            entries << QStringLiteral("rangeChanged %1 %2").arg(a).arg(b);
        });
    }
    QStringList entries;
};

// qRound's result where its conversions are defined, which is everywhere
// strictly inside the int range (Qt 5's qRound64 converts to 64 bits instead), and
// the clamped ends outside.
int roundedReference(double x)
{
    if (x <= -2147483648.0)
        return std::numeric_limits<int>::min();
    if (x >= 2147483647.0)
        return std::numeric_limits<int>::max();
    return int(qt5Round64(x));
}

// Quotients within a few units of either end of the int range, a few ulps
// from where rounding changes, and ordinary ones; seeded, so a failure can be
// replayed (VEL_ROBUSTNESS_SEED picks another sequence).
double quotientNearTheLimits(QRandomGenerator &random)
{
    switch (random.bounded(6)) {
    case 0:
        return -2147483648.0 + random.bounded(3.0) - 1.0;
    case 1:
        return 2147483647.0 + random.bounded(3.0) - 2.0;
    case 2: {
        double x = random.bounded(2) ? -2147483648.0 : -2147483647.5;
        for (int i = random.bounded(8); i >= 0; --i)
            x = std::nextafter(x, random.bounded(2) ? 0.0 : -3e9);
        return x;
    }
    case 3: {
        double x = random.bounded(2) ? 2147483647.0 : 2147483646.5;
        for (int i = random.bounded(8); i >= 0; --i)
            x = std::nextafter(x, random.bounded(2) ? 0.0 : 3e9);
        return x;
    }
    case 4:
        return random.bounded(6e9) - 3e9;
    default:
        return random.bounded(200.0) - 100.0;
    }
}

quint32 robustnessSeed()
{
    bool given = false;
    const int seed = qEnvironmentVariableIntValue("VEL_ROBUSTNESS_SEED", &given);
    return given ? quint32(seed) : 20261124u;
}

} // namespace

class tst_CMwQDoubleSlider : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void horizontalConstruction();
    void toInteger_data();
    void toInteger();
    void toIntegerRandomNearTheLimits();
    void settersRandomNearTheLimits();
    void valueBetweenStepsSurvives();
    void stepThatDoesNotDivideTheRange();
    void safeFromIntegerClampsIntoTheRange();
    void quotientBeyondTheIntegerRangeIsClamped();
    void setRangeReversed();
    void setRangeSignalOrder();
    void setRangeClampsAValueWhoseIntegerSurvives();
    void setMinimumAndMaximum();
    void silentMoveBelowTheNoiseThreshold();
    void isValidStep_data();
    void isValidStep();
    void setSingleStepRejected_data();
    void setSingleStepRejected();
    void setSingleStepAnyFiniteStepOnAnEmptyRange();
    void zeroStepOnAnEmptyRangeThenWidened();
    void setSingleStepIsSilent();
    void pageStepAndTickInterval();
    void sliderPosition();
    void innerRangeChangeIsFollowed();
    void forwardedSignalsAndProperties();
    void triggerActionIsForwarded();
    void setOrientationTransposesTheDefaultPolicy();
    void setOrientationKeepsAnExplicitPolicy();
    void tickItemsAreMappedToSteps();
    void tickItemListProperty();
    void handleToolTip();
    void linearProxy();
    void kept_sliderMovedInSliderUnitsValueChangedInValues();
    void logarithmicProxy();
    void proxyChangingItsFactor();
    void settingTheSameProxyAgainDoesNothing();
    void replacedProxyIsDisconnected();
    void proxyDestroyedWhileSet();
    void decreasingProxy();
    void notANumberIsIgnored();
    void infiniteValuesAreClamped();
    void infiniteRangeEndsAreIgnored();
    void proxyMappingToNotANumberIsIgnored();
    void proxyMappingAnEndToInfinity();
    void innerRangesWiderThanStyleTakes_data();
    void innerRangesWiderThanStyleTakes();
};

void tst_CMwQDoubleSlider::construction()
{
    CMwQDoubleSlider w;
    QCOMPARE(w.orientation(), Qt::Vertical);
    QCOMPARE(w.minimum(), 0.0);
    QCOMPARE(w.maximum(), 99.0);
    QCOMPARE(w.singleStep(), 1.0);
    QCOMPARE(w.pageStep(), 10.0);
    QCOMPARE(w.value(), 0.0);
    QVERIFY(w.valueProxy() == nullptr);
    QVERIFY(w.tickItemList().isEmpty());
    QVERIFY(w.handleToolTip().isEmpty());
    QCOMPARE(w.slider()->metaObject()->className(), "CMwQSliderEx");
    QCOMPARE(w.slider()->parent(), &w);
    QCOMPARE(w.layout()->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(w.layout()->indexOf(w.slider()), 0);
    QCOMPARE(w.sizePolicy(), w.slider()->sizePolicy());
    QVERIFY(!w.testAttribute(Qt::WA_WState_OwnSizePolicy));
    const QMetaProperty user = w.metaObject()->userProperty();
    QCOMPARE(user.name(), "value");
}

void tst_CMwQDoubleSlider::horizontalConstruction()
{
    CMwQDoubleSlider w(Qt::Horizontal);
    QCOMPARE(w.orientation(), Qt::Horizontal);
    QCOMPARE(w.slider()->orientation(), Qt::Horizontal);
    QCOMPARE(w.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(w.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    QVERIFY(!w.testAttribute(Qt::WA_WState_OwnSizePolicy));
}

void tst_CMwQDoubleSlider::toInteger_data()
{
    QTest::addColumn<double>("value"); // in slider units
    QTest::addColumn<double>("step");
    QTest::addColumn<int>("expected");
    QTest::newRow("2.5 up") << 2.5 << 1.0 << 3;
    QTest::newRow("-2.5 up") << -2.5 << 1.0 << -2;
    QTest::newRow("1.5") << 1.5 << 1.0 << 2;
    QTest::newRow("-1.5") << -1.5 << 1.0 << -1;
    QTest::newRow("-1.6") << -1.6 << 1.0 << -2;
    QTest::newRow("0.3 / 0.25") << 0.3 << 0.25 << 1;
    QTest::newRow("0.7 / 0.25") << 0.7 << 0.25 << 3;
    QTest::newRow("1 / 0.3") << 1.0 << 0.3 << 3;
    QTest::newRow("top of int") << 2147483646.5 << 1.0 << 2147483647;
    QTest::newRow("above int") << 1e10 << 1.0 << 2147483647;
    QTest::newRow("above int by division") << 1.0 << 1e-12 << 2147483647;
    QTest::newRow("bottom of int") << -2147483648.0 << 1.0 << std::numeric_limits<int>::min();
    QTest::newRow("below int") << -1e300 << 1.0 << std::numeric_limits<int>::min();
    QTest::newRow("near bottom") << -2147483647.5 << 1.0 << -2147483647;
    // x - 1 rounds to -2147483649.0 here, which qRound would convert to int.
    QTest::newRow("just above the bottom")
        << std::nextafter(-2147483648.0, 0.0) << 1.0 << std::numeric_limits<int>::min();
    QTest::newRow("just below -2147483647.5")
        << std::nextafter(-2147483647.5, -3e9) << 1.0 << std::numeric_limits<int>::min();
    QTest::newRow("infinity") << kInf << 1.0 << 2147483647;
}

void tst_CMwQDoubleSlider::toInteger()
{
    QFETCH(double, value);
    QFETCH(double, step);
    QFETCH(int, expected);
    QCOMPARE(CMwQStepMapping::toInteger(value, step), expected);
}

void tst_CMwQDoubleSlider::toIntegerRandomNearTheLimits()
{
    // Under the sanitizer build a conversion of an out-of-range double ends
    // the test; elsewhere the results are checked against the reference.
    const quint32 seed = robustnessSeed();
    QRandomGenerator random(seed);
    const double steps[] = {1.0, 0.25, 0.3, 7.0, 1e-3};
    for (int i = 0; i < 200000; ++i) {
        const double x = quotientNearTheLimits(random);
        const double step = steps[random.bounded(5)];
        const double v = x * step;
        const int got = CMwQStepMapping::toInteger(v, step);
        if (got != roundedReference(v / step))
            QFAIL(qPrintable(QStringLiteral("seed %1: toInteger(%2, %3) gave %4, not %5")
                                 .arg(seed)
                                 .arg(v, 0, 'g', 17)
                                 .arg(step)
                                 .arg(got)
                                 .arg(roundedReference(v / step))));
        const double offset = CMwQStepMapping::offsetFor(v, step);
        QVERIFY(std::isfinite(offset));
    }
}

void tst_CMwQDoubleSlider::settersRandomNearTheLimits()
{
    const quint32 seed = robustnessSeed();
    QRandomGenerator random(seed);
    CMwQDoubleSlider w;
    w.setRange(-3e9, 3e9);
    for (int i = 0; i < 20000; ++i) {
        const double x = quotientNearTheLimits(random);
        const double y = quotientNearTheLimits(random);
        switch (random.bounded(5)) {
        case 0: {
            const double expected = qBound(w.minimum(), x, w.maximum());
            w.setValue(x);
            QCOMPARE(w.slider()->value(), roundedReference(expected));
            QCOMPARE(w.value(), expected);
            break;
        }
        case 1:
            w.setSliderPosition(x);
            break;
        case 2:
            w.setRange(std::min(x, y), std::max(x, y));
            QCOMPARE(w.slider()->minimum(), roundedReference(std::min(x, y)));
            QCOMPARE(w.slider()->maximum(), roundedReference(std::max(x, y)));
            break;
        case 3:
            w.setPageStep(x);
            w.setTickInterval(y);
            break;
        default:
            w.setTickItemList({{x, QSlider::TicksBelow, QString()}});
            QCOMPARE(w.slider()->tickItemList().at(0).value, roundedReference(x));
            break;
        }
        if (random.bounded(50) == 0)
            w.setRange(-3e9, 3e9);
        QVERIFY2(std::isfinite(w.value()),
            qPrintable(QStringLiteral("seed %1, call %2").arg(seed).arg(i)));
    }
}

void tst_CMwQDoubleSlider::valueBetweenStepsSurvives()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 1.0);
    w.setSingleStep(0.25);
    QCOMPARE(w.slider()->minimum(), 0);
    QCOMPARE(w.slider()->maximum(), 4);
    QSignalSpy spy(&w, &CMwQDoubleSlider::valueChanged);
    w.setValue(0.3);
    QCOMPARE(w.slider()->value(), 1);
    // The offset is 0.2 steps; the inner value 1 comes back as (1 + 0.2) * 0.25.
    QCOMPARE(w.value(), (1 + (0.3 / 0.25 - 1)) * 0.25);
    QCOMPARE(w.value(), 0.3);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toDouble(), w.value());
}

void tst_CMwQDoubleSlider::stepThatDoesNotDivideTheRange()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 1.0);
    w.setValue(0.0);
    w.setSingleStep(0.3);
    QCOMPARE(w.slider()->minimum(), 0);
    QCOMPARE(w.slider()->maximum(), 3); // 1 / 0.3 rounds to 3
    w.slider()->setValue(3);
    // (3 + 0) * 0.3: the top of the slider is 0.9, not 1.0.
    QCOMPARE(w.value(), 3 * 0.3);
    QVERIFY(w.value() < 1.0);
    // Above the range the safe mapping clamps: offset 0.4 steps at the top.
    w.setValue(1.0);
    QCOMPARE(w.value(), 1.0);
    QCOMPARE(w.slider()->value(), 3);
}

void tst_CMwQDoubleSlider::safeFromIntegerClampsIntoTheRange()
{
    // Range 0..1, step 0.3: inner range 0..3.
    CMwQDoubleSlider w;
    w.setRange(0.0, 1.0);
    w.setValue(0.0);
    w.setSingleStep(0.3);
    QCOMPARE(w.slider()->maximum(), 3);
    QSignalSpy spy(&w, &CMwQDoubleSlider::valueChanged);

    // 0.14 is step 0 + 0.4667; at the top that fraction gives
    // (3 + 0.4667) * 0.3 = 1.04, which is clamped to the maximum.
    w.setValue(0.14);
    QCOMPARE(w.slider()->value(), 0);
    QCOMPARE(w.value(), 0.14);
    w.slider()->setValue(3);
    QCOMPARE(w.value(), 1.0);
    QCOMPARE(w.sliderPosition(), 1.0);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0).toDouble(), 1.0);

    // 0.85 is step 3 - 0.1667; at the bottom (0 - 0.1667) * 0.3 = -0.05 is
    // clamped to the minimum.
    w.setValue(0.85);
    QCOMPARE(w.slider()->value(), 3);
    w.slider()->setValue(0);
    QCOMPARE(w.value(), 0.0);
    QCOMPARE(w.sliderPosition(), 0.0);
    // In between the fraction is kept: (1 - 0.1667) * 0.3 = 0.25.
    w.slider()->setValue(1);
    QCOMPARE(w.value(), 0.25);
}

void tst_CMwQDoubleSlider::quotientBeyondTheIntegerRangeIsClamped()
{
    CMwQDoubleSlider w;
    w.setRange(-1e12, 1e12);
    QCOMPARE(w.slider()->minimum(), std::numeric_limits<int>::min());
    QCOMPARE(w.slider()->maximum(), std::numeric_limits<int>::max());
    w.setValue(5e11);
    QCOMPARE(w.slider()->value(), std::numeric_limits<int>::max());
    QCOMPARE(w.value(), 5e11); // the offset carries the rest
    w.setValue(-5e11);
    QCOMPARE(w.slider()->value(), std::numeric_limits<int>::min());
    QCOMPARE(w.value(), -5e11);
}

void tst_CMwQDoubleSlider::setRangeReversed()
{
    CMwQDoubleSlider w;
    w.setValue(3.0);
    QSignalSpy spy(&w, &CMwQDoubleSlider::rangeChanged);
    w.setRange(5.0, 1.0);
    QCOMPARE(w.minimum(), 1.0);
    QCOMPARE(w.maximum(), 5.0);
    QCOMPARE(w.slider()->minimum(), 1);
    QCOMPARE(w.slider()->maximum(), 5);
    QCOMPARE(w.value(), 3.0);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toDouble(), 1.0);
    QCOMPARE(spy.at(0).at(1).toDouble(), 5.0);
    w.setRange(1.0, 5.0);
    QCOMPARE(spy.count(), 1); // no end changed
}

void tst_CMwQDoubleSlider::setRangeSignalOrder()
{
    CMwQDoubleSlider w;
    SignalLog log(&w);
    w.setRange(5.0, 10.0);
    // The inner slider clamps its value first and reports it; the range follows.
    QCOMPARE(log.entries, QStringList({"valueChanged 5", "rangeChanged 5 10"}));
    QCOMPARE(w.value(), 5.0);
}

void tst_CMwQDoubleSlider::setRangeClampsAValueWhoseIntegerSurvives()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 1.0);
    w.setSingleStep(0.25);
    w.setValue(0.3);
    SignalLog log(&w);
    w.setRange(0.35, 1.0); // inner range 1..4: the inner value 1 survives
    QCOMPARE(w.slider()->minimum(), 1);
    QCOMPARE(w.slider()->value(), 1);
    QCOMPARE(w.value(), 0.35);
    QCOMPARE(log.entries, QStringList({"rangeChanged 0.35 1", "valueChanged 0.35"}));
}

void tst_CMwQDoubleSlider::setMinimumAndMaximum()
{
    CMwQDoubleSlider w;
    w.setMinimum(150.0); // above the maximum: the maximum gives way
    QCOMPARE(w.minimum(), 150.0);
    QCOMPARE(w.maximum(), 150.0);
    QCOMPARE(w.value(), 150.0);
    w.setMaximum(-5.0);
    QCOMPARE(w.minimum(), -5.0);
    QCOMPARE(w.maximum(), -5.0);
    w.setMaximum(20.0);
    QCOMPARE(w.minimum(), -5.0);
    QCOMPARE(w.maximum(), 20.0);
    QVERIFY(w.setProperty("minimum", 2.0));
    QVERIFY(w.setProperty("maximum", 4.0));
    QCOMPARE(w.property("minimum").toDouble(), 2.0);
    QCOMPARE(w.property("maximum").toDouble(), 4.0);
}

void tst_CMwQDoubleSlider::silentMoveBelowTheNoiseThreshold()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 1.0);
    w.setSingleStep(0.25);
    w.setValue(0.5);
    QSignalSpy spy(&w, &CMwQDoubleSlider::valueChanged);
    // 1e-10 is below 0.25 * 1e-9 and stays on inner step 2: stored, not announced.
    w.setValue(0.5 + 1e-10);
    QCOMPARE(w.value(), 0.5 + 1e-10);
    QCOMPARE(w.slider()->value(), 2);
    QCOMPARE(spy.count(), 0);
    // 1e-9 is above the threshold: announced although the integer is the same.
    w.setValue(0.5 + 1e-9);
    QCOMPARE(w.slider()->value(), 2);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toDouble(), 0.5 + 1e-9);
}

void tst_CMwQDoubleSlider::isValidStep_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<double>("step");
    QTest::addColumn<bool>("valid");
    QTest::newRow("machine epsilon") << 0.0 << 1.0 << 2.220446049250313e-16 << true;
    QTest::newRow("below epsilon") << 0.0 << 1.0 << 1e-16 << false;
    QTest::newRow("whole range") << 0.0 << 1.0 << 1.0 << true;
    QTest::newRow("above range") << 0.0 << 1.0 << 1.0000001 << false;
    QTest::newRow("zero") << 0.0 << 1.0 << 0.0 << false;
    QTest::newRow("negative") << 0.0 << 1.0 << -0.5 << false;
    // maximum / DBL_MAX = 5.56e-9 is the lower bound for a huge maximum.
    QTest::newRow("huge max, below") << 0.0 << 1e300 << 5e-9 << false;
    QTest::newRow("huge max, above") << 0.0 << 1e300 << 6e-9 << true;
    QTest::newRow("int max") << 0.0 << 1e300 << 2147483647.0 << true;
    QTest::newRow("above int max") << 0.0 << 1e300 << 2147483648.0 << false;
    QTest::newRow("empty range, big") << 3.0 << 3.0 << 1e9 << true;
    QTest::newRow("empty range, tiny") << 3.0 << 3.0 << 1e-300 << true;
    // Every step fits an empty range, whatever it is.
    QTest::newRow("empty range, zero") << 3.0 << 3.0 << 0.0 << true;
    QTest::newRow("empty range, negative") << 3.0 << 3.0 << -1.0 << true;
    QTest::newRow("empty range, nan") << 3.0 << 3.0 << kNaN << true;
    QTest::newRow("empty range, inf") << 3.0 << 3.0 << kInf << true;
    QTest::newRow("nan") << 0.0 << 1.0 << kNaN << false;
}

void tst_CMwQDoubleSlider::isValidStep()
{
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    QFETCH(double, step);
    QFETCH(bool, valid);
    CMwQDoubleSlider w;
    w.setRange(minimum, maximum);
    QCOMPARE(w.isValidStep(step), valid);
}

void tst_CMwQDoubleSlider::setSingleStepRejected_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<QString>("message");
    QTest::newRow("zero") << 0.0
                          << "CMwQDoubleSlider::setSingleStep( 0 ) is outside of valid bounds.";
    QTest::newRow("larger than the range")
        << 2.0 << "CMwQDoubleSlider::setSingleStep( 2 ) is outside of valid bounds.";
    QTest::newRow("negative")
        << -0.25 << "CMwQDoubleSlider::setSingleStep( -0.25 ) is outside of valid bounds.";
    QTest::newRow("nan") << kNaN
                         << "CMwQDoubleSlider::setSingleStep( nan ) is outside of valid bounds.";
    QTest::newRow("inf") << kInf
                         << "CMwQDoubleSlider::setSingleStep( inf ) is outside of valid bounds.";
}

void tst_CMwQDoubleSlider::setSingleStepRejected()
{
    QFETCH(double, step);
    QFETCH(QString, message);
    CMwQDoubleSlider w;
    w.setRange(0.0, 1.0);
    w.setSingleStep(0.25);
    w.setValue(0.3);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(message));
    w.setSingleStep(step);
    QCOMPARE(w.singleStep(), 0.25);
    QCOMPARE(w.slider()->maximum(), 4);
    QCOMPARE(w.slider()->value(), 1);
    QCOMPARE(w.value(), 0.3);
}

void tst_CMwQDoubleSlider::setSingleStepAnyFiniteStepOnAnEmptyRange()
{
    CMwQDoubleSlider w;
    w.setRange(1.0, 1.0);
    w.setSingleStep(2.0);
    QCOMPARE(w.singleStep(), 2.0);
    w.setSingleStep(1e9);
    QCOMPARE(w.singleStep(), 1e9);
    QCOMPARE(w.value(), 1.0);
    w.setSingleStep(0.0);
    QCOMPARE(w.singleStep(), 0.0);
    w.setSingleStep(-0.5);
    QCOMPARE(w.singleStep(), -0.5);
    // No later range could use a step that is not finite.
    QTest::ignoreMessage(
        QtWarningMsg, "CMwQDoubleSlider::setSingleStep( inf ) is outside of valid bounds.");
    w.setSingleStep(kInf);
    QTest::ignoreMessage(
        QtWarningMsg, "CMwQDoubleSlider::setSingleStep( nan ) is outside of valid bounds.");
    w.setSingleStep(kNaN);
    QCOMPARE(w.singleStep(), -0.5);
    QCOMPARE(w.value(), 1.0);
}

void tst_CMwQDoubleSlider::zeroStepOnAnEmptyRangeThenWidened()
{
    CMwQDoubleSlider w(Qt::Horizontal);
    w.setRange(3.0, 3.0);
    w.setValue(3.0);
    w.setPageStep(2.0);
    w.setTickInterval(1.0);
    w.setSingleStep(0.0);
    QCOMPARE(w.singleStep(), 0.0);
    // Nothing is divided by the step: the inner slider stands on 0.
    QCOMPARE(w.slider()->minimum(), 0);
    QCOMPARE(w.slider()->maximum(), 0);
    QCOMPARE(w.slider()->value(), 0);

    SignalLog log(&w);
    w.setRange(0.0, 10.0);
    QCOMPARE(log.entries, QStringList({"rangeChanged 0 10"}));
    QCOMPARE(w.minimum(), 0.0);
    QCOMPARE(w.maximum(), 10.0);
    QCOMPARE(w.value(), 3.0);
    QCOMPARE(w.slider()->maximum(), 0);
    // Values are still kept, clamped into the range, while the slider
    // itself cannot move.
    w.setValue(7.5);
    QCOMPARE(w.value(), 7.5);
    w.setValue(20.0);
    QCOMPARE(w.value(), 10.0);
    QCOMPARE(w.sliderPosition(), 0.0);
    QCOMPARE(w.tickInterval(), 0.0);
    w.setTickItemList({{5.0, QSlider::TicksBelow, QString()}});
    QCOMPARE(w.slider()->tickItemList().at(0).value, 0);
    w.setSliderPosition(4.0);
    QCOMPARE(w.slider()->sliderPosition(), 0);
    QVERIFY(std::isfinite(w.value()) && std::isfinite(w.sliderPosition()));
    QImage image(220, 30, QImage::Format_ARGB32_Premultiplied);
    w.resize(220, 30);
    w.render(&image);

    // Only a usable step puts the slider back to work.
    QTest::ignoreMessage(
        QtWarningMsg, "CMwQDoubleSlider::setSingleStep( 0 ) is outside of valid bounds.");
    w.setSingleStep(0.0);
    w.setSingleStep(0.5);
    QCOMPARE(w.slider()->maximum(), 20);
    QCOMPARE(w.slider()->value(), 20);
    QCOMPARE(w.value(), 10.0);
    QCOMPARE(w.slider()->pageStep(), 4);
}

void tst_CMwQDoubleSlider::setSingleStepIsSilent()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 1.0);
    w.setSingleStep(0.25);
    w.setPageStep(0.5);
    w.setValue(0.5);
    SignalLog log(&w);
    QSignalSpy innerValue(w.slider(), &QSlider::valueChanged);
    QSignalSpy innerRange(w.slider(), &QSlider::rangeChanged);
    w.setSingleStep(0.1);
    QCOMPARE(w.singleStep(), 0.1);
    QCOMPARE(w.slider()->minimum(), 0);
    QCOMPARE(w.slider()->maximum(), 10);
    QCOMPARE(w.slider()->value(), 5);
    QCOMPARE(w.slider()->pageStep(), 5);
    QCOMPARE(w.value(), 0.5);
    QCOMPARE(w.minimum(), 0.0);
    QCOMPARE(w.maximum(), 1.0);
    QVERIFY(log.entries.isEmpty());
    QCOMPARE(innerValue.count(), 0); // blocked while re-scaled
    QCOMPARE(innerRange.count(), 0);
    QVERIFY(!w.slider()->signalsBlocked());
    // A blocked inner slider stays blocked.
    w.slider()->blockSignals(true);
    w.setSingleStep(0.2);
    QVERIFY(w.slider()->signalsBlocked());
    w.slider()->blockSignals(false);
}

void tst_CMwQDoubleSlider::pageStepAndTickInterval()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 10.0);
    w.setSingleStep(0.5);
    w.setPageStep(2.5);
    QCOMPARE(w.pageStep(), 2.5);
    QCOMPARE(w.slider()->pageStep(), 5);
    w.setTickInterval(1.0);
    QCOMPARE(w.slider()->tickInterval(), 2);
    QCOMPARE(w.tickInterval(), 1.0);
    w.setTickInterval(0.7); // 1.4 steps round to 1
    QCOMPARE(w.slider()->tickInterval(), 1);
    QCOMPARE(w.tickInterval(), 0.5);
    // Neither goes through the proxy.
    LinearProxy proxy(4.0);
    w.setValueProxy(&proxy);
    w.setPageStep(2.5);
    QCOMPARE(w.slider()->pageStep(), 5);
    w.setTickInterval(1.0);
    QCOMPARE(w.slider()->tickInterval(), 2);
    w.setValueProxy(nullptr);
}

void tst_CMwQDoubleSlider::sliderPosition()
{
    CMwQDoubleSlider w;
    LinearProxy proxy(2.0);
    w.setValueProxy(&proxy);
    w.setRange(0.0, 10.0);
    w.setTracking(false);
    w.setSliderPosition(3.0);
    QCOMPARE(w.slider()->sliderPosition(), 6);
    QCOMPARE(w.sliderPosition(), 3.0);
    QCOMPARE(w.value(), 0.0); // tracking off: the value stays
    QVERIFY(w.setProperty("sliderPosition", 4.0));
    QCOMPARE(w.slider()->sliderPosition(), 8);
    QCOMPARE(w.property("sliderPosition").toDouble(), 4.0);
}

void tst_CMwQDoubleSlider::innerRangeChangeIsFollowed()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 10.0);
    w.setSingleStep(0.5);
    QSignalSpy spy(&w, &CMwQDoubleSlider::rangeChanged);
    w.slider()->setRange(2, 8);
    QCOMPARE(w.minimum(), 1.0);
    QCOMPARE(w.maximum(), 4.0);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toDouble(), 1.0);
    QCOMPARE(spy.at(0).at(1).toDouble(), 4.0);
}

void tst_CMwQDoubleSlider::forwardedSignalsAndProperties()
{
    CMwQDoubleSlider w;
    SignalLog log(&w);
    w.slider()->setSliderDown(true);
    w.slider()->setSliderDown(false);
    QCOMPARE(log.entries, QStringList({"sliderPressed", "sliderReleased"}));

    w.setTracking(false);
    QVERIFY(!w.slider()->hasTracking());
    QVERIFY(!w.hasTracking());
    w.setTickPosition(QSlider::TicksBelow);
    QCOMPARE(w.slider()->tickPosition(), QSlider::TicksBelow);
    QCOMPARE(w.tickPosition(), QSlider::TicksBelow);
    w.setInvertedAppearance(true);
    QVERIFY(w.slider()->invertedAppearance());
    QVERIFY(w.invertedAppearance());
    w.setInvertedControls(true);
    QVERIFY(w.slider()->invertedControls());
    QVERIFY(w.invertedControls());
    QVERIFY(w.setProperty("tickPosition", QVariant::fromValue(QSlider::TicksAbove)));
    QCOMPARE(w.tickPosition(), QSlider::TicksAbove);
}

void tst_CMwQDoubleSlider::triggerActionIsForwarded()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 1.0);
    w.setSingleStep(0.25);
    QSignalSpy spy(&w, &CMwQDoubleSlider::valueChanged);
    w.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    QCOMPARE(w.value(), 0.25);
    w.triggerAction(QAbstractSlider::SliderToMaximum);
    QCOMPARE(w.value(), 1.0);
    QCOMPARE(spy.count(), 2);
}

void tst_CMwQDoubleSlider::setOrientationTransposesTheDefaultPolicy()
{
    CMwQDoubleSlider w;
    const QSizePolicy vertical = w.sizePolicy();
    QCOMPARE(vertical.horizontalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(vertical.verticalPolicy(), QSizePolicy::Expanding);
    w.setOrientation(Qt::Horizontal);
    QCOMPARE(w.slider()->orientation(), Qt::Horizontal);
    QCOMPARE(w.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(w.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    QVERIFY(!w.testAttribute(Qt::WA_WState_OwnSizePolicy));
    w.setOrientation(Qt::Horizontal); // unchanged: nothing happens
    QCOMPARE(w.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    w.setOrientation(Qt::Vertical);
    QCOMPARE(w.sizePolicy(), vertical);
}

void tst_CMwQDoubleSlider::setOrientationKeepsAnExplicitPolicy()
{
    CMwQDoubleSlider w;
    w.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    w.setOrientation(Qt::Horizontal);
    QCOMPARE(w.slider()->orientation(), Qt::Horizontal);
    QCOMPARE(w.sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(w.sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    QVERIFY(w.testAttribute(Qt::WA_WState_OwnSizePolicy));
}

void tst_CMwQDoubleSlider::tickItemsAreMappedToSteps()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 1.0);
    w.setSingleStep(0.25);
    const CMwQDoubleSlider::TMwTickItemList items {
        {0.5, QSlider::TicksBelow, QStringLiteral("half")}, {0.3, QSlider::TicksAbove, QString()},
        {0.9, QSlider::NoTicks, QStringLiteral("kept")}};
    w.setTickItemList(items);
    QCOMPARE(w.tickItemList(), items);
    const TMwTickItemList expected {{2, QSlider::TicksBelow, QStringLiteral("half")},
        {1, QSlider::TicksAbove, QString()}, {4, QSlider::NoTicks, QStringLiteral("kept")}};
    QCOMPARE(w.slider()->tickItemList(), expected);
}

void tst_CMwQDoubleSlider::tickItemListProperty()
{
    CMwQDoubleSlider w;
    const CMwQDoubleSlider::TMwTickItemList items {
        {5.5, QSlider::TicksBothSides, QStringLiteral("x")}};
    QVERIFY(w.setProperty("tickItemList", QVariant::fromValue(items)));
    QCOMPARE(w.tickItemList(), items);
    const QVariant back = w.property("tickItemList");
    QCOMPARE(back.userType(), qMetaTypeId<CMwQDoubleSlider::TMwTickItemList>());
    QCOMPARE(back.value<CMwQDoubleSlider::TMwTickItemList>(), items);
    // The stream operators store the list the way a form would.
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << back;
    }
    QDataStream in(bytes);
    QVariant read;
    in >> read;
    QCOMPARE(read.value<CMwQDoubleSlider::TMwTickItemList>(), items);
}

void tst_CMwQDoubleSlider::handleToolTip()
{
    CMwQDoubleSlider w(Qt::Horizontal);
    w.resize(200, 40);
    w.setRange(0.0, 1.0);
    w.setSingleStep(0.25);
    w.setValue(0.3);
    w.layout()->activate(); // lays the inner slider out without showing anything
    QCOMPARE(w.slider()->width(), 200);
    const QPoint onHandle = handleCentre(w.slider());
    QHelpEvent tip(QEvent::ToolTip, onHandle, w.slider()->mapToGlobal(onHandle));
    // No template: the event goes on to the inner slider.
    QVERIFY(!w.eventFilter(w.slider(), &tip));

    w.setHandleToolTip(QStringLiteral("Value: %1"));
    QCOMPARE(w.handleToolTip(), QStringLiteral("Value: %1"));
    // The offscreen platform cannot raise the tool tip window and says so.
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
    QVERIFY(w.eventFilter(w.slider(), &tip));
    QCOMPARE(QToolTip::text(), QStringLiteral("Value: 0.3"));

    // Far from the handle (the other end of the groove): not ours.
    const QPoint offHandle(w.slider()->width() - 3, onHandle.y());
    QHelpEvent away(QEvent::ToolTip, offHandle, w.slider()->mapToGlobal(offHandle));
    QVERIFY(!w.eventFilter(w.slider(), &away));
    // Other objects and other events are not touched.
    QVERIFY(!w.eventFilter(&w, &tip));
    QToolTip::hideText();
}

void tst_CMwQDoubleSlider::linearProxy()
{
    CMwQDoubleSlider w;
    LinearProxy proxy(2.0);
    w.setValueProxy(&proxy);
    QCOMPARE(w.valueProxy(), &proxy);
    // Public range 0..99 kept, slider units 0..198.
    QCOMPARE(w.minimum(), 0.0);
    QCOMPARE(w.maximum(), 99.0);
    QCOMPARE(w.slider()->maximum(), 198);
    w.setRange(0.0, 10.0);
    QCOMPARE(w.slider()->maximum(), 20);
    w.setValue(4.0);
    QCOMPARE(w.slider()->value(), 8);
    QCOMPARE(w.value(), 4.0);
    QCOMPARE(w.slider()->property("inputMaximum").toDouble(), 99.0);
}

void tst_CMwQDoubleSlider::kept_sliderMovedInSliderUnitsValueChangedInValues()
{
    CMwQDoubleSlider w;
    LinearProxy proxy(2.0);
    w.setRange(0.0, 10.0);
    w.setValueProxy(&proxy);
    SignalLog log(&w);
    w.slider()->setSliderDown(true);
    w.slider()->setSliderPosition(8);
    w.slider()->setSliderDown(false);
    QCOMPARE(log.entries,
        QStringList({"sliderPressed", "sliderMoved 8", "valueChanged 4", "sliderReleased"}));
    QCOMPARE(w.value(), 4.0);
}

void tst_CMwQDoubleSlider::logarithmicProxy()
{
    CMwQDoubleSlider w(Qt::Horizontal);
    w.setRange(1.0, 20000.0);
    LogProxy proxy;
    w.setValueProxy(&proxy);
    QCOMPARE(w.minimum(), 1.0);
    QCOMPARE(w.maximum(), 20000.0);
    w.setSingleStep(0.01); // one hundredth of a decade
    QCOMPARE(w.slider()->minimum(), 0);
    QCOMPARE(w.slider()->maximum(), 430); // log10(20000) = 4.301
    QSignalSpy spy(&w, &CMwQDoubleSlider::valueChanged);
    w.setValue(1000.0);
    QCOMPARE(w.slider()->value(), 300);
    QCOMPARE(w.value(), 1000.0);
    QCOMPARE(spy.count(), 1);
    w.slider()->setValue(200);
    QCOMPARE(w.value(), 100.0); // 10^2, the offset being 0
    w.setTickItemList({{10.0, QSlider::TicksBelow, QStringLiteral("10 Hz")},
        {10000.0, QSlider::TicksBelow, QStringLiteral("10 kHz")}});
    QCOMPARE(w.slider()->tickItemList().at(0).value, 100);
    QCOMPARE(w.slider()->tickItemList().at(1).value, 400);
    // Zero lies at minus infinity in slider units: clamped to the minimum.
    w.setValue(0.0);
    QCOMPARE(w.value(), 1.0);
}

void tst_CMwQDoubleSlider::proxyChangingItsFactor()
{
    CMwQDoubleSlider w;
    LinearProxy proxy(1.0);
    w.setValueProxy(&proxy);
    w.setRange(0.0, 10.0);
    w.setValue(4.0);
    w.setTickItemList({{5.0, QSlider::TicksBelow, QStringLiteral("five")}});
    QCOMPARE(w.slider()->maximum(), 10);
    SignalLog log(&w);
    QSignalSpy valueSpy(&w, &CMwQDoubleSlider::valueChanged);
    proxy.setFactor(2.0);
    // Public range, value and ticks stay; the slider moves underneath.
    QCOMPARE(w.minimum(), 0.0);
    QCOMPARE(w.maximum(), 10.0);
    QCOMPARE(w.value(), 4.0);
    QCOMPARE(w.tickItemList().at(0).value, 5.0);
    QCOMPARE(w.slider()->maximum(), 20);
    QCOMPARE(w.slider()->value(), 8);
    QCOMPARE(w.slider()->tickItemList().at(0).value, 10);
    QVERIFY(log.entries.isEmpty());
    QVERIFY(!w.signalsBlocked());
    // The input-side settings were saved on the inner slider before the change.
    QCOMPARE(w.slider()->property("inputValue").toDouble(), 4.0);
    QCOMPARE(w.slider()->property("inputMinimum").toDouble(), 0.0);
    QCOMPARE(w.slider()->property("inputMaximum").toDouble(), 10.0);
    // Later changes are announced again.
    w.setValue(5.0);
    QCOMPARE(valueSpy.count(), 1);
    QCOMPARE(w.slider()->value(), 10);
}

void tst_CMwQDoubleSlider::settingTheSameProxyAgainDoesNothing()
{
    CMwQDoubleSlider w;
    LinearProxy proxy(2.0);
    w.setValueProxy(&proxy);
    w.slider()->setProperty("inputValue", 1234.0);
    w.setValueProxy(&proxy);
    QCOMPARE(w.slider()->property("inputValue").toDouble(), 1234.0);
    CMwQDoubleSlider plain;
    plain.slider()->setProperty("inputValue", 1234.0);
    plain.setValueProxy(nullptr);
    QCOMPARE(plain.slider()->property("inputValue").toDouble(), 1234.0);
}

void tst_CMwQDoubleSlider::replacedProxyIsDisconnected()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 10.0);
    LinearProxy first(2.0);
    LinearProxy second(3.0);
    w.setValueProxy(&first);
    QCOMPARE(first.protocolReceivers(), 2);
    // Every connection from the old proxy to the widget goes, also one the
    // application made.
    QVERIFY(connect(&first, SIGNAL(valueChanged(double)), &w, SLOT(setValue(double))));
    QCOMPARE(first.valueReceivers(), 1);
    w.setValue(2.0);
    QCOMPARE(w.slider()->value(), 4);
    w.setValueProxy(&second);
    QCOMPARE(first.protocolReceivers(), 0);
    QCOMPARE(first.valueReceivers(), 0);
    QCOMPARE(second.protocolReceivers(), 2);
    QCOMPARE(w.value(), 2.0);
    QCOMPARE(w.slider()->value(), 6);
    QCOMPARE(w.slider()->maximum(), 30);
    first.setFactor(10.0); // no longer connected: nothing moves
    QCOMPARE(w.slider()->value(), 6);
    QCOMPARE(w.slider()->maximum(), 30);
    second.setFactor(4.0);
    QCOMPARE(w.slider()->value(), 8);
    QCOMPARE(w.slider()->maximum(), 40);
    w.setValueProxy(nullptr);
    QCOMPARE(w.value(), 2.0);
    QCOMPARE(w.slider()->value(), 2);
    QCOMPARE(w.maximum(), 10.0);
}

void tst_CMwQDoubleSlider::proxyDestroyedWhileSet()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 10.0);
    auto *proxy = new LinearProxy(2.0);
    w.setValueProxy(proxy);
    w.setValue(4.0);
    SignalLog log(&w);
    delete proxy;
    QVERIFY(w.valueProxy() == nullptr);
    QVERIFY(log.entries.isEmpty()); // nothing is re-applied
    // Every mapping is the identity now: the slider units show through.
    QCOMPARE(w.value(), 8.0);
    QCOMPARE(w.maximum(), 20.0);
    w.setValue(3.0);
    QCOMPARE(w.slider()->value(), 3);
    QCOMPARE(w.value(), 3.0);
}

void tst_CMwQDoubleSlider::decreasingProxy()
{
    CMwQDoubleSlider w;
    NegatingProxy proxy;
    w.setValueProxy(&proxy);
    w.setRange(1.0, 5.0);
    QCOMPARE(w.slider()->minimum(), -5);
    QCOMPARE(w.slider()->maximum(), -1);
    QCOMPARE(w.minimum(), 1.0);
    QCOMPARE(w.maximum(), 5.0);
    QVERIFY(w.minimum() <= w.maximum());
    w.setValue(2.0);
    QCOMPARE(w.slider()->value(), -2);
    QCOMPARE(w.value(), 2.0);
    w.setValue(9.0);
    QCOMPARE(w.value(), 5.0);
    QSignalSpy moved(&w, &CMwQDoubleSlider::sliderMoved);
    w.slider()->setSliderDown(true);
    w.slider()->setSliderPosition(-3);
    w.slider()->setSliderDown(false);
    QCOMPARE(moved.count(), 1);
    QCOMPARE(moved.at(0).at(0).toDouble(), -3.0);
    QCOMPARE(w.value(), 3.0);
}

void tst_CMwQDoubleSlider::notANumberIsIgnored()
{
    CMwQDoubleSlider w;
    w.setRange(0.0, 1.0);
    w.setSingleStep(0.25);
    w.setValue(0.3);
    w.setPageStep(0.5);
    w.setTickInterval(0.5);
    SignalLog log(&w);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setValue( nan ) is not a number in slider units and is ignored.");
    w.setValue(kNaN);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setSliderPosition( nan ) is not a number in "
        "slider units and is ignored.");
    w.setSliderPosition(kNaN);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setRange( nan , 1 ) is not finite in slider units and is ignored.");
    w.setRange(kNaN, 1.0);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setMinimum( nan ) is not finite in slider units and is ignored.");
    w.setMinimum(kNaN);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setMaximum( nan ) is not finite in slider units and is ignored.");
    w.setMaximum(kNaN);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setPageStep( nan ) is not finite in slider units and is ignored.");
    w.setPageStep(kNaN);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setTickInterval( nan ) is not finite in slider "
        "units and is ignored.");
    w.setTickInterval(kNaN);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setTickItemList( nan ) is not a number in slider "
        "units and is ignored.");
    w.setTickItemList({{kNaN, QSlider::TicksBelow, QStringLiteral("lost")},
        {0.5, QSlider::TicksBelow, QStringLiteral("half")}});
    QCOMPARE(w.tickItemList().size(), 2); // kept, but not drawn
    QCOMPARE(w.slider()->tickItemList(),
        TMwTickItemList({{2, QSlider::TicksBelow, QStringLiteral("half")}}));

    QCOMPARE(w.value(), 0.3);
    QCOMPARE(w.minimum(), 0.0);
    QCOMPARE(w.maximum(), 1.0);
    QCOMPARE(w.pageStep(), 0.5);
    QCOMPARE(w.tickInterval(), 0.5);
    QCOMPARE(w.slider()->value(), 1);
    QVERIFY(log.entries.isEmpty());
}

void tst_CMwQDoubleSlider::infiniteValuesAreClamped()
{
    CMwQDoubleSlider w;
    w.setRange(-2.0, 3.0);
    w.setSingleStep(0.5);
    w.setValue(kInf);
    QCOMPARE(w.value(), 3.0);
    QCOMPARE(w.slider()->value(), 6);
    w.setValue(-kInf);
    QCOMPARE(w.value(), -2.0);
    QCOMPARE(w.slider()->value(), -4);
    w.setValue(1e308);
    QCOMPARE(w.value(), 3.0);
    w.setValue(-1e308);
    QCOMPARE(w.value(), -2.0);
    w.setValue(4.9e-324); // a denormal is a value like any other
    QCOMPARE(w.value(), 4.9e-324);
    QCOMPARE(w.slider()->value(), 0);
    w.setTracking(false);
    w.setSliderPosition(kInf);
    QCOMPARE(w.slider()->sliderPosition(), 6);
}

void tst_CMwQDoubleSlider::infiniteRangeEndsAreIgnored()
{
    CMwQDoubleSlider w;
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setRange( 0 , inf ) is not finite in slider units and is ignored.");
    w.setRange(0.0, kInf);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setMinimum( -inf ) is not finite in slider units "
        "and is ignored.");
    w.setMinimum(-kInf);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setPageStep( inf ) is not finite in slider units "
        "and is ignored.");
    w.setPageStep(kInf);
    QCOMPARE(w.minimum(), 0.0);
    QCOMPARE(w.maximum(), 99.0);
    QCOMPARE(w.pageStep(), 10.0);
    // The largest finite ends are accepted.
    w.setRange(-1e308, 1e308);
    QCOMPARE(w.minimum(), -1e308);
    QCOMPARE(w.maximum(), 1e308);
    QCOMPARE(w.slider()->minimum(), std::numeric_limits<int>::min());
    QCOMPARE(w.slider()->maximum(), std::numeric_limits<int>::max());
    QVERIFY(std::isfinite(w.value()));
}

void tst_CMwQDoubleSlider::proxyMappingToNotANumberIsIgnored()
{
    CMwQDoubleSlider w;
    w.setRange(1.0, 100.0);
    LogProxy proxy;
    w.setValueProxy(&proxy);
    w.setValue(10.0);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setValue( -1 ) is not a number in slider units and is ignored.");
    w.setValue(-1.0);
    QCOMPARE(w.value(), 10.0);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setRange( -5 , 10 ) is not finite in slider units and is ignored.");
    w.setRange(-5.0, 10.0);
    QCOMPARE(w.minimum(), 1.0);
    QCOMPARE(w.maximum(), 100.0);
    // A default slider (range 0..99) cannot keep its minimum 0 on a log scale.
    CMwQDoubleSlider fresh;
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setRange( 0 , 99 ) is not finite in slider units and is ignored.");
    fresh.setValueProxy(&proxy);
    QCOMPARE(fresh.slider()->minimum(), 0);
    QCOMPARE(fresh.slider()->maximum(), 99);
    fresh.setValueProxy(nullptr);
}

void tst_CMwQDoubleSlider::proxyMappingAnEndToInfinity()
{
    // Through the proxy, DBL_MAX becomes DBL_MAX / 3 in slider units, whose
    // way back rounds up to infinity: refused like an infinite argument.
    ScalingProxy scaling(3.0);
    QVERIFY(!std::isfinite(scaling.valueFromProxyValue(scaling.proxyValueFromValue(DBL_MAX))));
    CMwQDoubleSlider w;
    w.setValueProxy(&scaling);
    w.setRange(0.0, 30.0);
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setRange( 0 , 1.79769e+308 ) is not finite in "
        "slider units and is ignored.");
    w.setRange(0.0, DBL_MAX);
    QCOMPARE(w.minimum(), 0.0);
    QCOMPARE(w.maximum(), 30.0);
    QCOMPARE(w.slider()->maximum(), 10);
    w.setValueProxy(nullptr);

    // A logarithmic proxy cannot take the range -10..400; the range kept in
    // slider units would stand for 10^-10..10^400. Its upper end is pulled
    // in to where the values are still finite.
    CMwQDoubleSlider logarithmic;
    logarithmic.setRange(-10.0, 400.0);
    logarithmic.setValue(2.0);
    LogProxy proxy;
    QTest::ignoreMessage(QtWarningMsg,
        "CMwQDoubleSlider::setRange( -10 , 400 ) is not finite in "
        "slider units and is ignored.");
    logarithmic.setValueProxy(&proxy);
    QVERIFY(std::isfinite(logarithmic.maximum()));
    QVERIFY(logarithmic.maximum() > 1e308);
    QVERIFY(qFuzzyCompare(logarithmic.minimum(), 1e-10));
    QVERIFY(qFuzzyCompare(logarithmic.value(), 2.0));
    QCOMPARE(logarithmic.slider()->minimum(), -10);
    QCOMPARE(logarithmic.slider()->maximum(), 308); // log10(DBL_MAX) = 308.25
    logarithmic.setSingleStep(0.5);
    QCOMPARE(logarithmic.slider()->minimum(), -20);
    QCOMPARE(logarithmic.slider()->maximum(), 617);
    QVERIFY(std::isfinite(logarithmic.maximum()));
    logarithmic.setValue(kInf);
    QCOMPARE(logarithmic.value(), logarithmic.maximum());
    logarithmic.setValueProxy(nullptr);
}

void tst_CMwQDoubleSlider::innerRangesWiderThanStyleTakes_data() { addInnerRangeRows(); }

void tst_CMwQDoubleSlider::innerRangesWiderThanStyleTakes()
{
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    QFETCH(int, innerMinimum);
    QFETCH(int, innerMaximum);
    QFETCH(double, top);

    // The track does not depend on the range: a narrow slider of the same
    // size shows where the handle stands at the start of the track.
    CMwQDoubleSlider reference(Qt::Horizontal);
    reference.resize(220, 30);
    reference.setRange(0.0, 8.0);
    reference.setValue(0.0);

    CMwQDoubleSlider w(Qt::Horizontal);
    w.resize(220, 30);
    w.setRange(minimum, maximum);
    QCOMPARE(w.slider()->minimum(), innerMinimum);
    QCOMPARE(w.slider()->maximum(), innerMaximum);
    w.setValue(minimum);
    QVERIFY(showAt(w, 220, 30));
    QCOMPARE(renderOf(&w), renderOf(&reference));

    const QRect handle = innerHandleRect(reference.slider());
    w.setHandleToolTip(QStringLiteral("value %1"));
    QCOMPARE(toolTipAt(w.slider(), handle.center()),
        QStringLiteral("value %1").arg(minimum, 0, 'g', -1));

    QVERIFY(sendMouse(w.slider(), QEvent::MouseButtonPress, handle.center(), Qt::LeftButton));
    QVERIFY(w.slider()->isSliderDown());
    const QPoint end(w.width() + 50, handle.center().y());
    QVERIFY(sendMouse(w.slider(), QEvent::MouseMove, end, Qt::LeftButton));
    QVERIFY(sendMouse(w.slider(), QEvent::MouseButtonRelease, end, Qt::NoButton));
    QVERIFY(!w.slider()->isSliderDown());
    QCOMPARE(w.value(), top);
}

VEL_TEST_MAIN(tst_CMwQDoubleSlider)
#include "tst_cmwqdoubleslider.moc"
