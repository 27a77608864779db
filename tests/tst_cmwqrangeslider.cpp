#include "vel_test_main.h"

#include "slider_test_support.h"

#include "cmwqrangeslider_p.h"

#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtGui/QHelpEvent>
#include <QtGui/QImage>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QStyleOptionSlider>
#include <QtWidgets/QToolTip>

#include <climits>
#include <memory>

namespace {

// Exposes the style option and the track the widget converts pixels with,
// and counts paint events.
class TestRangeSlider : public CMwQRangeSlider
{
    Q_OBJECT

public:
    using CMwQRangeSlider::CMwQRangeSlider;
    using CMwQRangeSlider::onRangeChanged;

    int paints = 0;

    QStyleOptionSlider option() const { return sliderOption(this); }

    QRect handleRect(int position, int value) const { return handleRectAt(this, position, value); }
    QRect lowerRect() const { return handleRect(minimumPosition(), minimumValue()); }
    QRect upperRect() const { return handleRect(maximumPosition(), maximumValue()); }
    QRect baseHandleRect() const { return handleRect(sliderPosition(), value()); }
    QRect grooveRect() const { return subControlRect(this, QStyle::SC_SliderGroove); }

    bool horizontal() const { return orientation() == Qt::Horizontal; }
    int along(const QPoint &p) const { return horizontal() ? p.x() : p.y(); }

    // The pixel of the handle's leading edge for a value, and back.
    int valueToPixel(int v) const
    {
        int start;
        int span;
        trackOf(&start, &span);
        return QStyle::sliderPositionFromValue(minimum(), maximum(), v, span, option().upsideDown)
            + start;
    }
    int pixelToValue(int pixel) const
    {
        int start;
        int span;
        trackOf(&start, &span);
        return QStyle::sliderValueFromPosition(
            minimum(), maximum(), pixel - start, span, option().upsideDown);
    }

    // The point to move the mouse to so that a handle pressed at `press`
    // while it stood at `from` is dragged to `to`.
    QPoint dragPoint(const QPoint &press, int from, int to) const
    {
        const int delta = valueToPixel(to) - valueToPixel(from);
        return horizontal() ? press + QPoint(delta, 0) : press + QPoint(0, delta);
    }

protected:
    void paintEvent(QPaintEvent *e) override
    {
        ++paints;
        CMwQRangeSlider::paintEvent(e);
    }

private:
    void trackOf(int *start, int *span) const { sliderTrack(this, start, span); }
};

// Handles told apart by colour, to see which one lies on top.
class ColouredRangeSlider : public TestRangeSlider
{
    Q_OBJECT

public:
    using TestRangeSlider::TestRangeSlider;

protected:
    void initMinimumSliderStyleOption(QStyleOptionSlider *option) const override
    {
        CMwQRangeSlider::initMinimumSliderStyleOption(option);
        option->palette.setColor(QPalette::Button, Qt::red);
    }
    void initMaximumSliderStyleOption(QStyleOptionSlider *option) const override
    {
        CMwQRangeSlider::initMaximumSliderStyleOption(option);
        option->palette.setColor(QPalette::Button, Qt::blue);
    }
};

class DragDistanceStyle : public QProxyStyle
{
    Q_OBJECT

public:
    explicit DragDistanceStyle(int distance)
        : QProxyStyle(QStringLiteral("Fusion"))
        , m_distance(distance)
    {
    }

    int pixelMetric(
        PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        if (metric == PM_MaximumDragDistance)
            return m_distance;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

private:
    int m_distance;
};

// A subclass that brings its own private object.
class DerivedRangeSlider : public CMwQRangeSlider
{
    Q_OBJECT

public:
    DerivedRangeSlider(CMwQRangeSliderPrivate *d, Qt::Orientation o)
        : CMwQRangeSlider(d, o, nullptr)
    {
    }
    explicit DerivedRangeSlider(CMwQRangeSliderPrivate *d)
        : CMwQRangeSlider(d, nullptr)
    {
    }
};

// A slider whose handles move 2 px per value: range 0..100 on a 200-px track.
void setUpTrack(TestRangeSlider *slider)
{
    slider->setRange(0, 100);
    slider->resize(slider->horizontal() ? QSize(215, 40) : QSize(40, 215));
}

} // namespace

class tst_CMwQRangeSlider : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void protectedConstructor();
    void properties();

    void setValues_data();
    void setValues();
    void kept_signalOrder_data();
    void kept_signalOrder();
    void nothingChanges_data();
    void nothingChanges();
    void singleValueSetters_data();
    void singleValueSetters();
    void rangeChange_data();
    void rangeChange();
    void kept_onRangeChangedIgnoresArguments();

    void pressHandle_data();
    void pressHandle();
    void overlappingHandles_data();
    void overlappingHandles();
    void pressGrooveBetween_data();
    void pressGrooveBetween();
    void pressGrooveOutside_data();
    void pressGrooveOutside();
    void symmetricMoves_data();
    void symmetricMoves();
    void dragDistance_data();
    void dragDistance();
    void ignoredPresses();
    void moveWithoutPress();
    void releaseClears();
    void trackingOff();

    void handleToolTip();

    void paintsEmptyGrooveBetweenHandles();
    void pressedLowerHandleOnTop();
    void kept_verticalClipCutsOnlyHorizontalEdges();
    void drawsTickItems();

    void fullIntRange();
    void wideRangeDrags_data();
    void wideRangeDrags();
    void widerThanStyleTakes_data();
    void widerThanStyleTakes();
    void emptyRange();
    void manyTickItems();
};

void tst_CMwQRangeSlider::construction()
{
    CMwQRangeSlider plain;
    QCOMPARE(plain.orientation(), Qt::Vertical);
    QCOMPARE(plain.minimumValue(), plain.minimum());
    QCOMPARE(plain.maximumValue(), plain.maximum());
    QCOMPARE(plain.minimumPosition(), 0);
    QCOMPARE(plain.maximumPosition(), 99);
    QVERIFY(!plain.symmetricMoves());
    QVERIFY(plain.handleToolTip().isEmpty());
    QVERIFY(!plain.isMinimumSliderDown());
    QVERIFY(!plain.isMaximumSliderDown());
    QVERIFY(plain.tickItemList().isEmpty());

    CMwQRangeSlider horizontal(Qt::Horizontal);
    QCOMPARE(horizontal.orientation(), Qt::Horizontal);
    QCOMPARE(horizontal.minimumValue(), 0);
    QCOMPARE(horizontal.maximumValue(), 99);
}

void tst_CMwQRangeSlider::protectedConstructor()
{
    for (int withOrientation = 0; withOrientation < 2; ++withOrientation) {
        auto *d = new CMwQRangeSliderPrivate;
        d->tickItems = {{1, QSlider::TicksAbove, QStringLiteral("stale")}};
        d->minimumValue = 40;
        d->maximumValue = 50;
        d->minimumPosition = 41;
        d->maximumPosition = 51;
        std::unique_ptr<DerivedRangeSlider> owner(withOrientation
                ? new DerivedRangeSlider(d, Qt::Horizontal)
                : new DerivedRangeSlider(d));
        DerivedRangeSlider &slider = *owner;
        QCOMPARE(slider.orientation(), withOrientation ? Qt::Horizontal : Qt::Vertical);
        QVERIFY(slider.tickItemList().isEmpty());
        QCOMPARE(slider.minimumValue(), 0);
        QCOMPARE(slider.maximumValue(), 99);
        QCOMPARE(slider.minimumPosition(), 0);
        QCOMPARE(slider.maximumPosition(), 99);
        // The range connection is made by these constructors too.
        slider.setRange(10, 20);
        QCOMPARE(slider.minimumValue(), 10);
        QCOMPARE(slider.maximumValue(), 20);
    }
}

void tst_CMwQRangeSlider::properties()
{
    CMwQRangeSlider slider(Qt::Horizontal);
    const QMetaObject *mo = slider.metaObject();
    for (const char *name : {"minimumValue", "maximumValue", "minimumPosition", "maximumPosition",
             "symmetricMoves", "handleToolTip"}) {
        const QMetaProperty property = mo->property(mo->indexOfProperty(name));
        QVERIFY2(property.isValid(), name);
        QVERIFY2(property.isReadable() && property.isWritable(), name);
        QVERIFY2(property.isDesignable() && property.isStored(), name);
    }
    QVERIFY(slider.setProperty("symmetricMoves", true));
    QCOMPARE(slider.symmetricMoves(), true);
    QVERIFY(slider.setProperty("handleToolTip", QStringLiteral("at %1")));
    QCOMPARE(slider.handleToolTip(), QStringLiteral("at %1"));

    // The signals in their declaration order.
    const QStringList expected {"minimumValueChanged(int)", "maximumValueChanged(int)",
        "valuesChanged(int,int)", "minimumPositionChanged(int)", "maximumPositionChanged(int)",
        "positionsChanged(int,int)"};
    QStringList declared;
    for (int i = mo->methodOffset(); i < mo->methodCount(); ++i) {
        if (mo->method(i).methodType() == QMetaMethod::Signal)
            declared.append(QString::fromLatin1(mo->method(i).methodSignature()));
    }
    QCOMPARE(declared, expected);
}

void tst_CMwQRangeSlider::setValues_data()
{
    QTest::addColumn<int>("lower");
    QTest::addColumn<int>("upper");
    QTest::addColumn<int>("expectedLower");
    QTest::addColumn<int>("expectedUpper");

    QTest::newRow("in order") << 20 << 70 << 20 << 70;
    QTest::newRow("reversed") << 70 << 20 << 20 << 70;
    QTest::newRow("both outside") << -5 << 500 << 0 << 99;
    QTest::newRow("both outside, reversed") << 500 << -5 << 0 << 99;
    QTest::newRow("both below") << -50 << -5 << 0 << 0;
    QTest::newRow("both above") << 150 << 120 << 99 << 99;
    QTest::newRow("equal") << 33 << 33 << 33 << 33;
    QTest::newRow("int extremes") << INT_MAX << INT_MIN << 0 << 99;
}

void tst_CMwQRangeSlider::setValues()
{
    QFETCH(int, lower);
    QFETCH(int, upper);
    QFETCH(int, expectedLower);
    QFETCH(int, expectedUpper);

    CMwQRangeSlider slider(Qt::Horizontal);
    slider.setRange(0, 99);
    slider.setValues(lower, upper);
    QCOMPARE(slider.minimumValue(), expectedLower);
    QCOMPARE(slider.maximumValue(), expectedUpper);
    QCOMPARE(slider.minimumPosition(), expectedLower);
    QCOMPARE(slider.maximumPosition(), expectedUpper);

    CMwQRangeSlider positions(Qt::Horizontal);
    positions.setRange(0, 99);
    positions.setTracking(false);
    positions.setPositions(lower, upper);
    QCOMPARE(positions.minimumPosition(), expectedLower);
    QCOMPARE(positions.maximumPosition(), expectedUpper);
    QCOMPARE(positions.minimumValue(), 0);
    QCOMPARE(positions.maximumValue(), 99);
}

void tst_CMwQRangeSlider::kept_signalOrder_data()
{
    QTest::addColumn<bool>("down");
    QTest::addColumn<bool>("tracking");
    QTest::addColumn<bool>("positions"); // setPositions rather than setValues
    QTest::addColumn<int>("lower");
    QTest::addColumn<int>("upper");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QList<int>>(
        "state"); // minimumValue, maximumValue, minimumPosition, maximumPosition

    // From the values and positions 20 and 70.
    QTest::newRow("values, both") << false << true << false << 30 << 60
                                  << QStringList {"valuesChanged(30,60)", "minimumValueChanged(30)",
                                         "maximumValueChanged(60)"}
                                  << QList<int> {30, 60, 30, 60};
    QTest::newRow("values, upper only")
        << false << true << false << 20 << 60
        << QStringList {"valuesChanged(20,60)", "maximumValueChanged(60)"}
        << QList<int> {20, 60, 20, 60};
    QTest::newRow("values, down: pair signal first")
        << true << true << false << 10 << 70
        << QStringList {"positionsChanged(10,70)", "minimumPositionChanged(10)",
               "valuesChanged(10,70)", "minimumValueChanged(10)"}
        << QList<int> {10, 70, 10, 70};
    QTest::newRow("values, down, reversed")
        << true << false << false << 80 << 5
        << QStringList {"positionsChanged(5,80)", "minimumPositionChanged(5)",
               "maximumPositionChanged(80)", "valuesChanged(5,80)", "minimumValueChanged(5)",
               "maximumValueChanged(80)"}
        << QList<int> {5, 80, 5, 80};
    QTest::newRow("values, unchanged")
        << true << true << false << 70 << 20 << QStringList {} << QList<int> {20, 70, 20, 70};
    QTest::newRow("positions, tracking")
        << false << true << true << 5 << 80
        << QStringList {"actionTriggered(7)", "valuesChanged(5,80)", "minimumValueChanged(5)",
               "maximumValueChanged(80)"}
        << QList<int> {5, 80, 5, 80};
    QTest::newRow("positions, down, tracking: pair signal last")
        << true << true << true << 5 << 80
        << QStringList {"minimumPositionChanged(5)", "maximumPositionChanged(80)",
               "positionsChanged(5,80)", "actionTriggered(7)", "valuesChanged(5,80)",
               "minimumValueChanged(5)", "maximumValueChanged(80)"}
        << QList<int> {5, 80, 5, 80};
    QTest::newRow("positions, down, upper only")
        << true << true << true << 20 << 90
        << QStringList {"maximumPositionChanged(90)", "positionsChanged(20,90)",
               "actionTriggered(7)", "valuesChanged(20,90)", "maximumValueChanged(90)"}
        << QList<int> {20, 90, 20, 90};
    QTest::newRow("positions, down, no tracking")
        << true << false << true << 5 << 80
        << QStringList {"minimumPositionChanged(5)", "maximumPositionChanged(80)",
               "positionsChanged(5,80)"}
        << QList<int> {20, 70, 5, 80};
    QTest::newRow("positions, no tracking")
        << false << false << true << 80 << 5 << QStringList {} << QList<int> {20, 70, 5, 80};
    QTest::newRow("positions, unchanged")
        << true << true << true << 70 << 20 << QStringList {} << QList<int> {20, 70, 20, 70};
}

void tst_CMwQRangeSlider::kept_signalOrder()
{
    QFETCH(bool, down);
    QFETCH(bool, tracking);
    QFETCH(bool, positions);
    QFETCH(int, lower);
    QFETCH(int, upper);
    QFETCH(QStringList, expected);
    QFETCH(QList<int>, state);

    CMwQRangeSlider slider(Qt::Horizontal);
    slider.setValues(20, 70);
    slider.setTracking(tracking);
    slider.setSliderDown(down);
    QStringList *log = recordRangeSliderSignals(&slider);
    if (positions)
        slider.setPositions(lower, upper);
    else
        slider.setValues(lower, upper);
    QCOMPARE(*log, expected);
    QCOMPARE(QList<int>({slider.minimumValue(), slider.maximumValue(), slider.minimumPosition(),
                 slider.maximumPosition()}),
        state);
}

void tst_CMwQRangeSlider::nothingChanges_data()
{
    QTest::addColumn<bool>("tracking");
    QTest::addColumn<bool>("down");
    QTest::newRow("tracking") << true << false;
    QTest::newRow("tracking, down") << true << true;
    QTest::newRow("no tracking") << false << false;
}

void tst_CMwQRangeSlider::nothingChanges()
{
    QFETCH(bool, tracking);
    QFETCH(bool, down);

    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setValues(20, 70);
    slider.setTracking(tracking);
    slider.show();
    QVERIFY(QTest::qWaitForWindowExposed(&slider));
    QTRY_VERIFY(slider.paints > 0);
    slider.setSliderDown(down);
    QCoreApplication::processEvents();
    slider.paints = 0;
    QStringList *log = recordRangeSliderSignals(&slider);

    slider.setPositions(20, 70);
    slider.setPositions(70, 20);
    slider.setValues(20, 70);
    slider.setMinimumValue(20);
    slider.setMaximumValue(70);
    slider.setMinimumPosition(20);
    slider.setMaximumPosition(70);
    slider.setRange(0, 100);
    QCoreApplication::processEvents();
    QCOMPARE(slider.paints, 0);
    QCOMPARE(*log, QStringList());

    // A change does repaint.
    slider.setPositions(21, 70);
    QTRY_VERIFY(slider.paints > 0);
    QVERIFY(!log->isEmpty() || !down);
}

void tst_CMwQRangeSlider::singleValueSetters_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("argument");
    QTest::addColumn<QList<int>>(
        "state"); // minimumValue, maximumValue, minimumPosition, maximumPosition

    // From the values 20 and 50, with tracking off.
    QTest::newRow("minimum value, within")
        << QByteArray("minimumValue") << 30 << QList<int> {30, 50, 30, 50};
    QTest::newRow("minimum value past the upper")
        << QByteArray("minimumValue") << 80 << QList<int> {80, 80, 80, 80};
    QTest::newRow("minimum value outside")
        << QByteArray("minimumValue") << 500 << QList<int> {99, 99, 99, 99};
    QTest::newRow("maximum value, within")
        << QByteArray("maximumValue") << 40 << QList<int> {20, 40, 20, 40};
    QTest::newRow("maximum value past the lower")
        << QByteArray("maximumValue") << 10 << QList<int> {10, 10, 10, 10};
    QTest::newRow("maximum value outside")
        << QByteArray("maximumValue") << -3 << QList<int> {0, 0, 0, 0};
    QTest::newRow("minimum position past the upper")
        << QByteArray("minimumPosition") << 60 << QList<int> {20, 50, 60, 60};
    QTest::newRow("maximum position past the lower")
        << QByteArray("maximumPosition") << 5 << QList<int> {20, 50, 5, 5};
    QTest::newRow("maximum position, within")
        << QByteArray("maximumPosition") << 70 << QList<int> {20, 50, 20, 70};
}

void tst_CMwQRangeSlider::singleValueSetters()
{
    QFETCH(QByteArray, property);
    QFETCH(int, argument);
    QFETCH(QList<int>, state);

    CMwQRangeSlider slider(Qt::Horizontal);
    slider.setValues(20, 50);
    slider.setTracking(false);
    QVERIFY(slider.setProperty(property.constData(), argument));
    QCOMPARE(QList<int>({slider.minimumValue(), slider.maximumValue(), slider.minimumPosition(),
                 slider.maximumPosition()}),
        state);
}

void tst_CMwQRangeSlider::rangeChange_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<bool>("down");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QList<int>>("values");

    // From the values 20 and 70 on 0..99.
    QTest::newRow("cuts both") << 30 << 60 << false
                               << QStringList {"valuesChanged(30,60)", "minimumValueChanged(30)",
                                      "maximumValueChanged(60)"}
                               << QList<int> {30, 60};
    QTest::newRow("cuts the upper")
        << 0 << 50 << false << QStringList {"valuesChanged(20,50)", "maximumValueChanged(50)"}
        << QList<int> {20, 50};
    QTest::newRow("cuts the lower, down")
        << 25 << 99 << true
        << QStringList {"positionsChanged(25,70)", "minimumPositionChanged(25)",
               "valuesChanged(25,70)", "minimumValueChanged(25)"}
        << QList<int> {25, 70};
    QTest::newRow("beyond both") << 80 << 90 << false
                                 << QStringList {"valuesChanged(80,80)", "minimumValueChanged(80)",
                                        "maximumValueChanged(80)"}
                                 << QList<int> {80, 80};
    QTest::newRow("cuts nothing") << -10 << 200 << false << QStringList {} << QList<int> {20, 70};
}

void tst_CMwQRangeSlider::rangeChange()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(bool, down);
    QFETCH(QStringList, expected);
    QFETCH(QList<int>, values);

    CMwQRangeSlider slider(Qt::Horizontal);
    slider.setValues(20, 70);
    slider.setSliderDown(down);
    QStringList *log = recordRangeSliderSignals(&slider);
    slider.setRange(minimum, maximum);
    QCOMPARE(*log, expected);
    QCOMPARE(QList<int>({slider.minimumValue(), slider.maximumValue()}), values);
    QCOMPARE(QList<int>({slider.minimumPosition(), slider.maximumPosition()}), values);
}

void tst_CMwQRangeSlider::kept_onRangeChangedIgnoresArguments()
{
    TestRangeSlider slider(Qt::Horizontal);
    slider.setValues(20, 70);
    QStringList *log = recordRangeSliderSignals(&slider);
    slider.onRangeChanged(30, 40);
    QCOMPARE(*log, QStringList());
    QCOMPARE(slider.minimumValue(), 20);
    QCOMPARE(slider.maximumValue(), 70);
    QVERIFY(QMetaObject::invokeMethod(&slider, "onRangeChanged", Q_ARG(int, 50), Q_ARG(int, 60)));
    QCOMPARE(slider.minimumValue(), 20);
    QCOMPARE(slider.maximumValue(), 70);
}

void tst_CMwQRangeSlider::pressHandle_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("upper");
    QTest::newRow("horizontal lower") << Qt::Horizontal << false;
    QTest::newRow("horizontal upper") << Qt::Horizontal << true;
    QTest::newRow("vertical lower") << Qt::Vertical << false;
    QTest::newRow("vertical upper") << Qt::Vertical << true;
}

void tst_CMwQRangeSlider::pressHandle()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, upper);

    TestRangeSlider slider(orientation);
    setUpTrack(&slider);
    slider.setValues(30, 60);
    QSignalSpy pressed(&slider, SIGNAL(sliderPressed()));
    QStringList *log = recordRangeSliderSignals(&slider);

    const QRect rect = upper ? slider.upperRect() : slider.lowerRect();
    // Off the centre, to see the press offset kept during the drag.
    const QPoint at = rect.center() + (slider.horizontal() ? QPoint(3, 0) : QPoint(0, -2));
    QVERIFY(press(&slider, at));
    QCOMPARE(pressed.count(), 1);
    QVERIFY(slider.isSliderDown());
    QCOMPARE(slider.isMinimumSliderDown(), !upper);
    QCOMPARE(slider.isMaximumSliderDown(), upper);
    QCOMPARE(*log, QStringList());

    // Ten values along, wherever inside the handle it was grabbed.
    const int from = upper ? 60 : 30;
    QVERIFY(move(&slider, slider.dragPoint(at, from, from + 10)));
    if (upper) {
        QCOMPARE(slider.maximumPosition(), 70);
        QCOMPARE(slider.maximumValue(), 70);
        QCOMPARE(slider.minimumPosition(), 30);
        QCOMPARE(*log,
            QStringList({"maximumPositionChanged(70)", "positionsChanged(30,70)",
                "actionTriggered(7)", "valuesChanged(30,70)", "maximumValueChanged(70)"}));
    } else {
        QCOMPARE(slider.minimumPosition(), 40);
        QCOMPARE(slider.minimumValue(), 40);
        QCOMPARE(slider.maximumPosition(), 60);
        QCOMPARE(*log,
            QStringList({"minimumPositionChanged(40)", "positionsChanged(40,60)",
                "actionTriggered(7)", "valuesChanged(40,60)", "minimumValueChanged(40)"}));
    }

    // A lower handle cannot pass the upper one and the other way round.
    QVERIFY(move(&slider, slider.dragPoint(at, from, upper ? 5 : 95)));
    QCOMPARE(slider.minimumPosition(), upper ? 30 : 60);
    QCOMPARE(slider.maximumPosition(), upper ? 30 : 60);
    QCOMPARE(slider.minimumValue(), upper ? 30 : 60);
    QCOMPARE(slider.maximumValue(), upper ? 30 : 60);
}

void tst_CMwQRangeSlider::overlappingHandles_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("offset"); // from the handle's left (top) edge
    QTest::addColumn<bool>("upper");

    // The handles are 15 px long; pixel 7 is the middle, where both outer
    // edges are 7 px away: a tie, which the upper handle wins.
    for (int value : {0, 50, 100}) {
        QTest::addRow("horizontal %d, middle", value) << Qt::Horizontal << value << 7 << true;
        QTest::addRow("horizontal %d, left of middle", value)
            << Qt::Horizontal << value << 6 << false;
        QTest::addRow("horizontal %d, right of middle", value)
            << Qt::Horizontal << value << 8 << true;
        // Vertically the lower handle's outer edge is the bottom one.
        QTest::addRow("vertical %d, middle", value) << Qt::Vertical << value << 7 << true;
        QTest::addRow("vertical %d, below middle", value) << Qt::Vertical << value << 8 << false;
        QTest::addRow("vertical %d, above middle", value) << Qt::Vertical << value << 6 << true;
    }
}

void tst_CMwQRangeSlider::overlappingHandles()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(int, value);
    QFETCH(int, offset);
    QFETCH(bool, upper);

    TestRangeSlider slider(orientation);
    setUpTrack(&slider);
    slider.setValues(value, value);
    const QRect rect = slider.lowerRect();
    QCOMPARE(slider.upperRect(), rect);
    QCOMPARE(slider.horizontal() ? rect.width() : rect.height(), 15);
    const QPoint at = slider.horizontal() ? QPoint(rect.left() + offset, rect.center().y())
                                          : QPoint(rect.center().x(), rect.top() + offset);
    QVERIFY(press(&slider, at));
    QCOMPARE(slider.isMaximumSliderDown(), upper);
    QCOMPARE(slider.isMinimumSliderDown(), !upper);
}

void tst_CMwQRangeSlider::pressGrooveBetween_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("symmetric");
    QTest::newRow("horizontal") << Qt::Horizontal << false;
    QTest::newRow("horizontal, symmetric") << Qt::Horizontal << true;
    QTest::newRow("vertical") << Qt::Vertical << false;
    QTest::newRow("vertical, symmetric") << Qt::Vertical << true;
}

void tst_CMwQRangeSlider::pressGrooveBetween()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, symmetric);

    TestRangeSlider slider(orientation);
    setUpTrack(&slider);
    slider.setSymmetricMoves(symmetric);
    // An odd span, 51: the anchor is 45 and the half width 25.5.
    slider.setValues(20, 71);
    QStringList *log = recordRangeSliderSignals(&slider);

    const QPoint groove = slider.grooveRect().center();
    const int middle
        = (slider.along(slider.lowerRect().center()) + slider.along(slider.upperRect().center()))
        / 2;
    const QPoint at = slider.horizontal() ? QPoint(middle, groove.y()) : QPoint(groove.x(), middle);
    QVERIFY(!slider.lowerRect().contains(at) && !slider.upperRect().contains(at));
    QVERIFY(press(&slider, at));
    QVERIFY(slider.isMinimumSliderDown());
    QVERIFY(slider.isMaximumSliderDown());
    QVERIFY(slider.isSliderDown());
    QCOMPARE(*log, QStringList());

    // The lower side truncates the half width, the upper side rounds it:
    // 55 - 25 and 55 + 26 keep the span of 51.
    QVERIFY(move(&slider, slider.dragPoint(at, 45, 55)));
    QCOMPARE(slider.minimumPosition(), 30);
    QCOMPARE(slider.maximumPosition(), 81);
    QCOMPARE(slider.minimumValue(), 30);
    QCOMPARE(slider.maximumValue(), 81);
    QCOMPARE(log->mid(0, 3),
        QStringList({"minimumPositionChanged(30)", "maximumPositionChanged(81)",
            "positionsChanged(30,81)"}));

    QVERIFY(move(&slider, slider.dragPoint(at, 45, 35)));
    QCOMPARE(slider.minimumPosition(), 10);
    QCOMPARE(slider.maximumPosition(), 61);

    // At the end of the range the span is cut, not moved.
    QVERIFY(move(&slider, slider.dragPoint(at, 45, 90)));
    QCOMPARE(slider.minimumPosition(), 65);
    QCOMPARE(slider.maximumPosition(), 100);

    release(&slider, at);
    QVERIFY(!slider.isMinimumSliderDown());
    QVERIFY(!slider.isMaximumSliderDown());
}

void tst_CMwQRangeSlider::pressGrooveOutside_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<int>("value"); // where on the groove, outside both handles
    QTest::newRow("horizontal, before the lower") << Qt::Horizontal << 12;
    QTest::newRow("horizontal, after the upper") << Qt::Horizontal << 90;
    QTest::newRow("vertical, below the lower") << Qt::Vertical << 12;
    QTest::newRow("vertical, above the upper") << Qt::Vertical << 90;
}

void tst_CMwQRangeSlider::pressGrooveOutside()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(int, value);

    TestRangeSlider slider(orientation);
    setUpTrack(&slider);
    slider.setValues(30, 60);
    const QPoint groove = slider.grooveRect().center();
    const int pixel = slider.valueToPixel(value) + 7;
    const QPoint at = slider.horizontal() ? QPoint(pixel, groove.y()) : QPoint(groove.x(), pixel);
    QVERIFY(!slider.baseHandleRect().contains(at));
    QVERIFY(!press(&slider, at));
    QVERIFY(!slider.isSliderDown());
    QVERIFY(!slider.isMinimumSliderDown());
    QVERIFY(!slider.isMaximumSliderDown());
    QCOMPARE(slider.minimumValue(), 30);
    QCOMPARE(slider.maximumValue(), 60);
}

void tst_CMwQRangeSlider::symmetricMoves_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("symmetric");
    QTest::addColumn<bool>("upper"); // the handle dragged
    QTest::addColumn<int>("lower");
    QTest::addColumn<int>("upperValue");
    QTest::addColumn<int>("to"); // where the dragged handle is taken
    QTest::addColumn<int>("expectedLower");
    QTest::addColumn<int>("expectedUpper");

    for (Qt::Orientation o : {Qt::Horizontal, Qt::Vertical}) {
        const char *name = o == Qt::Horizontal ? "horizontal" : "vertical";
        QTest::addRow("%s: lower 10 left", name)
            << o << true << false << 30 << 60 << 20 << 20 << 70;
        QTest::addRow("%s: lower 10 left, clamped", name)
            << o << true << false << 30 << 95 << 20 << 20 << 100;
        QTest::addRow("%s: lower 5 right", name)
            << o << true << false << 30 << 60 << 35 << 35 << 55;
        QTest::addRow("%s: upper 5 right", name) << o << true << true << 30 << 60 << 65 << 25 << 65;
        QTest::addRow("%s: upper 10 right, clamped", name)
            << o << true << true << 5 << 60 << 70 << 0 << 70;
        // The lower handle stops at the upper one, 30 steps on; the upper
        // one goes 30 back: setPositions(60, 30) puts them in order.
        QTest::addRow("%s: lower past the upper", name)
            << o << true << false << 30 << 60 << 75 << 30 << 60;
        QTest::addRow("%s: lower 10 left, not symmetric", name)
            << o << false << false << 30 << 60 << 20 << 20 << 60;
        QTest::addRow("%s: upper 5 right, not symmetric", name)
            << o << false << true << 30 << 60 << 65 << 30 << 65;
    }
}

void tst_CMwQRangeSlider::symmetricMoves()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, symmetric);
    QFETCH(bool, upper);
    QFETCH(int, lower);
    QFETCH(int, upperValue);
    QFETCH(int, to);
    QFETCH(int, expectedLower);
    QFETCH(int, expectedUpper);

    TestRangeSlider slider(orientation);
    setUpTrack(&slider);
    slider.setSymmetricMoves(symmetric);
    slider.setValues(lower, upperValue);
    const QPoint at = (upper ? slider.upperRect() : slider.lowerRect()).center();
    QVERIFY(press(&slider, at));
    QCOMPARE(slider.isMaximumSliderDown(), upper);
    QVERIFY(move(&slider, slider.dragPoint(at, upper ? upperValue : lower, to)));
    QCOMPARE(slider.minimumPosition(), expectedLower);
    QCOMPARE(slider.maximumPosition(), expectedUpper);
    QCOMPARE(slider.minimumValue(), expectedLower);
    QCOMPARE(slider.maximumValue(), expectedUpper);
}

void tst_CMwQRangeSlider::dragDistance_data()
{
    QTest::addColumn<int>("distance"); // PM_MaximumDragDistance of the style
    QTest::addColumn<int>("beyond"); // pixels below the widget's last row
    QTest::addColumn<bool>("snapsBack");

    QTest::newRow("20, 21 px away") << 20 << 21 << true;
    QTest::newRow("20, 20 px away") << 20 << 20 << false;
    QTest::newRow("0, 1 px away") << 0 << 1 << true;
    QTest::newRow("0, on the last row") << 0 << 0 << false;
    QTest::newRow("-1 disables, far away") << -1 << 500 << false;
}

void tst_CMwQRangeSlider::dragDistance()
{
    QFETCH(int, distance);
    QFETCH(int, beyond);
    QFETCH(bool, snapsBack);

    DragDistanceStyle style(distance);
    for (bool both : {false, true}) {
        TestRangeSlider slider(Qt::Horizontal);
        slider.setStyle(&style);
        setUpTrack(&slider);
        slider.setValues(30, 60);
        QCOMPARE(slider.style()->pixelMetric(QStyle::PM_MaximumDragDistance), distance);

        QPoint at = slider.lowerRect().center();
        int from = 30;
        if (both) {
            at = QPoint((slider.lowerRect().center().x() + slider.upperRect().center().x()) / 2,
                slider.grooveRect().center().y());
            from = 45;
        }
        QVERIFY(press(&slider, at));
        QVERIFY(move(&slider, slider.dragPoint(at, from, from + 10)));
        QCOMPARE(slider.minimumPosition(), 40);

        QPoint away = slider.dragPoint(at, from, from + 20);
        away.setY(slider.height() - 1 + beyond);
        QVERIFY(move(&slider, away));
        // Snapping back puts the dragged handle(s) at the anchor: the lower
        // handle's position at the press, or the middle of both.
        if (snapsBack)
            QCOMPARE(QList<int>({slider.minimumPosition(), slider.maximumPosition()}),
                QList<int>({30, 60}));
        else
            QCOMPARE(QList<int>({slider.minimumPosition(), slider.maximumPosition()}),
                both ? QList<int>({50, 80}) : QList<int>({50, 60}));

        // Back inside, the drag follows the mouse again.
        QVERIFY(move(&slider, slider.dragPoint(at, from, from + 5)));
        QCOMPARE(slider.minimumPosition(), 35);
        release(&slider, at);
    }
}

void tst_CMwQRangeSlider::ignoredPresses()
{
    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setValues(30, 60);
    QSignalSpy pressed(&slider, SIGNAL(sliderPressed()));
    const QPoint at = slider.lowerRect().center();

    // A second button held.
    QVERIFY(!sendMouse(
        &slider, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton | Qt::RightButton));
    QVERIFY(!sendMouse(
        &slider, QEvent::MouseButtonPress, at, Qt::RightButton, Qt::LeftButton | Qt::RightButton));
    QVERIFY(!slider.isSliderDown());
    QVERIFY(!slider.isMinimumSliderDown());
    QCOMPARE(pressed.count(), 0);

    // Off the groove and the handles.
    slider.resize(215, 200);
    QVERIFY(!press(&slider, QPoint(slider.lowerRect().center().x(), 2)));
    QVERIFY(!slider.isSliderDown());

    // An empty range.
    slider.resize(215, 40);
    slider.setRange(5, 5);
    QCOMPARE(slider.minimumValue(), 5);
    QCOMPARE(slider.maximumValue(), 5);
    QVERIFY(!press(&slider, slider.lowerRect().center()));
    QVERIFY(!slider.isSliderDown());
    QVERIFY(!slider.isMaximumSliderDown());
    QCOMPARE(pressed.count(), 0);

    // Any single button that is the only one held is taken.
    slider.setRange(0, 100);
    slider.setValues(30, 60);
    QVERIFY(sendMouse(&slider, QEvent::MouseButtonPress, slider.lowerRect().center(),
        Qt::RightButton, Qt::RightButton));
    QVERIFY(slider.isMinimumSliderDown());
    QCOMPARE(pressed.count(), 1);
}

void tst_CMwQRangeSlider::moveWithoutPress()
{
    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setValues(30, 60);
    QStringList *log = recordRangeSliderSignals(&slider);
    const QPoint at = slider.lowerRect().center();
    QVERIFY(!move(&slider, slider.dragPoint(at, 30, 10)));
    QCOMPARE(slider.minimumPosition(), 30);
    QCOMPARE(*log, QStringList());
}

void tst_CMwQRangeSlider::releaseClears()
{
    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setValues(30, 60);
    slider.show();
    QVERIFY(QTest::qWaitForWindowExposed(&slider));
    QSignalSpy released(&slider, SIGNAL(sliderReleased()));

    const QPoint at = slider.upperRect().center();
    QVERIFY(press(&slider, at));
    QVERIFY(move(&slider, slider.dragPoint(at, 60, 75)));
    QCoreApplication::processEvents();
    slider.paints = 0;
    release(&slider, slider.dragPoint(at, 60, 75));
    QCOMPARE(released.count(), 1);
    QVERIFY(!slider.isSliderDown());
    QVERIFY(!slider.isMinimumSliderDown());
    QVERIFY(!slider.isMaximumSliderDown());
    QCOMPARE(slider.maximumValue(), 75);
    QCOMPARE(slider.maximumPosition(), 75);
    QTRY_VERIFY(slider.paints > 0);

    // Nothing is selected any more: moves are ignored.
    QVERIFY(!move(&slider, slider.dragPoint(at, 60, 90)));
    QCOMPARE(slider.maximumPosition(), 75);
}

void tst_CMwQRangeSlider::trackingOff()
{
    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setValues(30, 60);
    slider.setTracking(false);
    QStringList *log = recordRangeSliderSignals(&slider);

    const QPoint at = slider.upperRect().center();
    QVERIFY(press(&slider, at));
    QVERIFY(move(&slider, slider.dragPoint(at, 60, 80)));
    QCOMPARE(slider.maximumPosition(), 80);
    QCOMPARE(slider.maximumValue(), 60);
    QCOMPARE(*log, QStringList({"maximumPositionChanged(80)", "positionsChanged(30,80)"}));

    release(&slider, slider.dragPoint(at, 60, 80));
    // Nothing commits the positions to the values.
    QCOMPARE(slider.maximumPosition(), 80);
    QCOMPARE(slider.maximumValue(), 60);
    QCOMPARE(log->size(), 2);

    slider.setValues(slider.minimumPosition(), slider.maximumPosition());
    QCOMPARE(slider.maximumValue(), 80);
    QCOMPARE(log->mid(2), QStringList({"valuesChanged(30,80)", "maximumValueChanged(80)"}));
}

void tst_CMwQRangeSlider::handleToolTip()
{
    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setValues(40, 70);
    slider.setToolTip(QStringLiteral("plain"));
    slider.show();
    QVERIFY(QTest::qWaitForWindowExposed(&slider));

    const auto toolTipAt = [&slider](const QPoint &pos) {
        QToolTip::hideText();
        QHelpEvent e(QEvent::ToolTip, pos, slider.mapToGlobal(pos));
        QApplication::sendEvent(&slider, &e);
        return QToolTip::text();
    };

    // Without a template, the widget's own tool tip everywhere.
    QCOMPARE(toolTipAt(slider.baseHandleRect().center()), QStringLiteral("plain"));

    // The hit test runs on the option as initStyleOption() leaves it, that
    // is on the base slider's own handle (value 0 here), and shows the lower
    // value; over the drawn handles the widget's tool tip stays.
    slider.setHandleToolTip(QStringLiteral("from %1"));
    QCOMPARE(slider.value(), 0);
    QVERIFY(!slider.baseHandleRect().intersects(slider.lowerRect()));
    QCOMPARE(toolTipAt(slider.baseHandleRect().center()), QStringLiteral("from 40"));
    QCOMPARE(toolTipAt(slider.lowerRect().center()), QStringLiteral("plain"));
    QCOMPARE(toolTipAt(slider.upperRect().center()), QStringLiteral("plain"));

    slider.setValue(70);
    QCOMPARE(toolTipAt(slider.baseHandleRect().center()), QStringLiteral("from 40"));
    QToolTip::hideText();
}

void tst_CMwQRangeSlider::paintsEmptyGrooveBetweenHandles()
{
    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setValues(30, 60);
    slider.setValue(100);
    QImage image(slider.size(), QImage::Format_ARGB32_Premultiplied);
    slider.render(&image);

    const int y = slider.grooveRect().center().y();
    const QRgb between
        = image.pixel((slider.lowerRect().right() + slider.upperRect().left()) / 2, y);
    const QRgb after
        = image.pixel((slider.upperRect().right() + slider.grooveRect().right()) / 2, y);
    const QRgb before
        = image.pixel((slider.grooveRect().left() + slider.lowerRect().left()) / 2, y);
    // No band between the handles, although the base slider's own value
    // (100) would fill the whole groove; the lower handle draws the groove
    // on its outer side as the style draws it up to a handle.
    QCOMPARE(between, after);
    QVERIFY(before != between);

    QSlider plain(Qt::Horizontal);
    plain.setRange(0, 100);
    plain.setValue(30);
    plain.resize(slider.size());
    QImage plainImage(plain.size(), QImage::Format_ARGB32_Premultiplied);
    plain.render(&plainImage);
    QCOMPARE(
        before, plainImage.pixel((slider.grooveRect().left() + slider.lowerRect().left()) / 2, y));
    QCOMPARE(
        between, plainImage.pixel((slider.lowerRect().right() + slider.upperRect().left()) / 2, y));
}

void tst_CMwQRangeSlider::pressedLowerHandleOnTop()
{
    ColouredRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setValues(50, 53);
    const QRect lower = slider.lowerRect();
    const QRect upper = slider.upperRect();
    QCOMPARE(upper.left() - lower.left(), 6);
    const QPoint overlap((lower.right() + upper.left()) / 2, lower.center().y());
    const auto reddish = [](QRgb c) { return qRed(c) > qBlue(c) + 40; };
    const auto bluish = [](QRgb c) { return qBlue(c) > qRed(c) + 40; };
    const auto render = [&slider]() {
        QImage image(slider.size(), QImage::Format_ARGB32_Premultiplied);
        slider.render(&image);
        return image;
    };

    QImage image = render();
    QVERIFY(reddish(image.pixel(lower.left() + 3, lower.center().y())));
    QVERIFY(bluish(image.pixel(upper.right() - 3, upper.center().y())));
    QVERIFY(bluish(image.pixel(overlap)));

    QVERIFY(press(&slider, QPoint(lower.left() + 1, lower.center().y())));
    QVERIFY(slider.isMinimumSliderDown());
    image = render();
    QVERIFY(reddish(image.pixel(overlap)));
    // Each handle redraws the groove only on its outer side: the lower one,
    // drawn last, leaves the rest of the upper one alone.
    QVERIFY(bluish(image.pixel(upper.right() - 3, upper.center().y())));
    release(&slider, QPoint(lower.left() + 1, lower.center().y()));

    QVERIFY(press(&slider, QPoint(upper.right() - 1, upper.center().y())));
    QVERIFY(slider.isMaximumSliderDown());
    image = render();
    QVERIFY(bluish(image.pixel(overlap)));
}

void tst_CMwQRangeSlider::kept_verticalClipCutsOnlyHorizontalEdges()
{
    // The clip of each handle is cut at its left or right edge only, also
    // for a vertical slider: there each handle redraws the whole groove, and
    // the handle drawn last (the upper one unless the lower one is pressed)
    // paints the groove over the other where the groove runs.
    ColouredRangeSlider slider(Qt::Vertical);
    setUpTrack(&slider);
    slider.setValues(20, 80);
    const QRect lower = slider.lowerRect();
    const QRect upper = slider.upperRect();
    const auto reddish = [](QRgb c) { return qRed(c) > qBlue(c) + 40; };
    const auto bluish = [](QRgb c) { return qBlue(c) > qRed(c) + 40; };
    QImage image(slider.size(), QImage::Format_ARGB32_Premultiplied);
    slider.render(&image);
    QVERIFY(bluish(image.pixel(upper.center())));
    QVERIFY(!reddish(image.pixel(lower.center())));

    QVERIFY(press(&slider, lower.center()));
    QVERIFY(slider.isMinimumSliderDown());
    slider.render(&image);
    QVERIFY(reddish(image.pixel(lower.center())));
    QVERIFY(!bluish(image.pixel(upper.center())));
}

void tst_CMwQRangeSlider::drawsTickItems()
{
    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.resize(215, 60);
    slider.setValues(0, 100);
    slider.setTickItemList(
        {{50, QSlider::TicksBelow, QStringLiteral("half")}, {20, QSlider::NoTicks, QString()}});
    const SliderTickGeometry ticks(&slider);
    const QRect groove = ticks.groove;
    const auto markAt = [&](int value) { return ticks.pos(value); };
    QImage image(slider.size(), QImage::Format_ARGB32_Premultiplied);
    slider.render(&image);
    QVERIFY(qGray(image.pixel(markAt(50), groove.bottom() + 3)) < 80);
    QVERIFY(qGray(image.pixel(markAt(20), groove.bottom() + 3)) > 200);
    QVERIFY(qGray(image.pixel(markAt(50) + 1, groove.bottom() + 3)) > 200);

    // The label is there: without its text the picture differs.
    slider.setTickItemList({{50, QSlider::TicksBelow, QString()}});
    QImage unlabelled(slider.size(), QImage::Format_ARGB32_Premultiplied);
    slider.render(&unlabelled);
    QVERIFY(unlabelled != image);
}

void tst_CMwQRangeSlider::fullIntRange()
{
    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setRange(INT_MIN, INT_MAX);
    slider.setTickInterval(1);
    slider.setTickPosition(QSlider::TicksBothSides);
    slider.setTickItemList({{INT_MIN, QSlider::TicksBelow, QStringLiteral("lowest")},
        {INT_MAX, QSlider::TicksAbove, QStringLiteral("highest")}});
    QCOMPARE(slider.minimumValue(), 0);
    QCOMPARE(slider.maximumValue(), 99);
    slider.setValues(INT_MAX, INT_MIN);
    QCOMPARE(slider.minimumValue(), INT_MIN);
    QCOMPARE(slider.maximumValue(), INT_MAX);

    QImage image(slider.size(), QImage::Format_ARGB32_Premultiplied);
    slider.render(&image);
    QVERIFY(slider.paints > 0);

    // Dragging over the whole int range.
    const QPoint at = slider.upperRect().center();
    QVERIFY(press(&slider, at));
    QVERIFY(slider.isSliderDown());
    QVERIFY(move(&slider, QPoint(slider.width() / 2, at.y())));
    QVERIFY(move(&slider, QPoint(slider.width() + 5, at.y())));
    QVERIFY(move(&slider, QPoint(-5, at.y())));
    release(&slider, QPoint(-5, at.y()));
    QVERIFY(slider.minimumPosition() <= slider.maximumPosition());
    QCOMPARE(slider.minimumValue(), slider.minimumPosition());
    QCOMPARE(slider.maximumValue(), slider.maximumPosition());

    slider.setRange(INT_MAX, INT_MIN);
    QCOMPARE(slider.minimum(), INT_MAX);
    QCOMPARE(slider.minimumValue(), INT_MAX);
    QCOMPARE(slider.maximumValue(), INT_MAX);
    slider.render(&image);
}

void tst_CMwQRangeSlider::wideRangeDrags_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<bool>("symmetric");
    QTest::addColumn<bool>("both"); // grab the groove between the handles

    QTest::newRow("INT_MIN..-1, both") << INT_MIN << -1 << false << true;
    QTest::newRow("0..INT_MAX, both") << 0 << INT_MAX << false << true;
    QTest::newRow("INT_MIN..-1, symmetric") << INT_MIN << -1 << true << false;
    QTest::newRow("0..INT_MAX, symmetric") << 0 << INT_MAX << true << false;
}

void tst_CMwQRangeSlider::wideRangeDrags()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(bool, symmetric);
    QFETCH(bool, both);

    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setRange(minimum, maximum);
    slider.setSymmetricMoves(symmetric);
    // The lower handle a quarter in; the upper one as far in when both are
    // dragged, else next to the maximum, so that a symmetric move would
    // take it far beyond.
    const int quarter = int((qint64(maximum) - minimum) / 4);
    slider.setValues(minimum + quarter, both ? maximum - quarter : maximum - 1);

    QPoint at = slider.lowerRect().center();
    if (both) {
        at = QPoint((slider.lowerRect().center().x() + slider.upperRect().center().x()) / 2,
            slider.grooveRect().center().y());
    }
    QVERIFY(press(&slider, at));
    QCOMPARE(slider.isMaximumSliderDown(), both);

    // Far to the left: the lower handle stops at the minimum; the upper one
    // keeps its distance or moves the opposite way, clamped at the maximum.
    QVERIFY(move(&slider, QPoint(-1000, at.y())));
    QCOMPARE(slider.minimumPosition(), minimum);
    if (both)
        QVERIFY(slider.maximumPosition() < maximum - quarter);
    else
        QCOMPARE(slider.maximumPosition(), maximum);

    // Far to the right: both go to the maximum, keeping their distance
    // where the range allows; a symmetric lower handle stops at the upper
    // one, which is sent back as far, and setPositions() puts them in order
    // again, so nothing moves.
    QVERIFY(move(&slider, QPoint(slider.width() + 1000, at.y())));
    QCOMPARE(slider.maximumPosition(), maximum);
    if (!both)
        QCOMPARE(slider.minimumPosition(), minimum);
    else
        QVERIFY(slider.minimumPosition() > minimum + quarter);
    release(&slider, at);
}

void tst_CMwQRangeSlider::widerThanStyleTakes_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");

    // Rows named by the width maximum - minimum. Qt 5.15's style arithmetic
    // takes widths up to 2^31 - 1 (the first row passes straight to it); it
    // divides by zero at 2^31 and wraps around above.
    QTest::newRow("2^31 - 1 wide: INT_MIN + 1..0") << INT_MIN + 1 << 0;
    QTest::newRow("2^31 wide: INT_MIN..0") << INT_MIN << 0;
    QTest::newRow("2^31 wide: -1..INT_MAX") << -1 << INT_MAX;
    QTest::newRow("2^31 + 1 wide: INT_MIN..1") << INT_MIN << 1;
    QTest::newRow("2^32 - 1 wide: INT_MIN..INT_MAX") << INT_MIN << INT_MAX;
}

void tst_CMwQRangeSlider::widerThanStyleTakes()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);

    // The track does not depend on the range: a narrow slider of the same
    // size shows where handles at the ends of the track stand.
    TestRangeSlider reference(Qt::Horizontal);
    setUpTrack(&reference);
    reference.setRange(0, 8);
    reference.setValues(0, 0);

    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setRange(minimum, maximum);
    slider.setValues(minimum, minimum);
    slider.setValue(minimum);
    QImage image(slider.size(), QImage::Format_ARGB32_Premultiplied);
    QImage expected(slider.size(), QImage::Format_ARGB32_Premultiplied);
    slider.render(&image);
    reference.render(&expected);
    QCOMPARE(image, expected);

    // The handle tool tip hit-tests the base slider's handle, at the start.
    slider.setHandleToolTip(QStringLiteral("at %1"));
    const QPoint start = reference.lowerRect().center();
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, start, slider.mapToGlobal(start));
    QApplication::sendEvent(&slider, &help);
    QCOMPARE(QToolTip::text(), QStringLiteral("at %1").arg(minimum));
    QToolTip::hideText();
    QHoverEvent hover(QEvent::HoverMove, start, QPoint(0, 0));
    QApplication::sendEvent(&slider, &hover);

    // The upper handle, pressed at the start of the track (it wins the tie),
    // is dragged to the end of it and half way back.
    QVERIFY(press(&slider, start));
    QVERIFY(slider.isMaximumSliderDown());
    QVERIFY(move(&slider, QPoint(slider.width() + 50, start.y())));
    QCOMPARE(slider.maximumValue(), maximum);
    const QRect groove = reference.grooveRect();
    const int span = groove.width() - reference.lowerRect().width();
    const int grip = start.x() - reference.lowerRect().left();
    QVERIFY(move(&slider, QPoint(groove.x() + span / 2 + grip, start.y())));
    const qint64 middle = qint64(minimum) + (qint64(maximum) - minimum) / 2;
    QVERIFY2(qAbs(slider.maximumValue() - middle) <= (qint64(maximum) - minimum) / span + 1,
        qPrintable(QString::number(slider.maximumValue())));
    release(&slider, QPoint(groove.x() + span / 2 + grip, start.y()));
    QVERIFY(!slider.isSliderDown());

    // Both handles dragged together from the groove between them.
    slider.setValues(minimum, maximum);
    slider.render(&image);
    const QPoint between(groove.x() + span / 2 + grip, start.y());
    QVERIFY(press(&slider, between));
    QVERIFY(slider.isMinimumSliderDown() && slider.isMaximumSliderDown());
    QVERIFY(move(&slider, QPoint(-50, start.y())));
    QCOMPARE(slider.minimumValue(), minimum);
    release(&slider, QPoint(-50, start.y()));
    QVERIFY(!slider.isSliderDown());
}

void tst_CMwQRangeSlider::emptyRange()
{
    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setTickPosition(QSlider::TicksBelow);
    slider.setRange(7, 7);
    QCOMPARE(slider.minimumValue(), 7);
    QCOMPARE(slider.maximumValue(), 7);
    QStringList *log = recordRangeSliderSignals(&slider);
    slider.setValues(0, 100);
    slider.setPositions(-3, 30);
    QCOMPARE(*log, QStringList());
    QCOMPARE(slider.minimumPosition(), 7);
    QCOMPARE(slider.maximumPosition(), 7);
    QImage image(slider.size(), QImage::Format_ARGB32_Premultiplied);
    slider.render(&image);
    QVERIFY(slider.paints > 0);
    QVERIFY(!press(&slider, slider.lowerRect().center()));
    QVERIFY(!move(&slider, QPoint(100, 20)));
}

void tst_CMwQRangeSlider::manyTickItems()
{
    TestRangeSlider slider(Qt::Horizontal);
    setUpTrack(&slider);
    slider.setRange(-5000, 4999);
    TMwTickItemList items;
    for (int i = 0; i < 10000; ++i)
        items.append({i - 5000, QSlider::TicksBothSides, QStringLiteral("item %1").arg(i)});
    slider.setTickItemList(items);
    QCOMPARE(slider.tickItemList().size(), 10000);
    slider.setValues(-100, 100);
    QImage image(slider.size(), QImage::Format_ARGB32_Premultiplied);
    slider.render(&image);
    QVERIFY(slider.paints > 0);
    QVERIFY(slider.sizeHint().height() > 2 * slider.fontMetrics().height());
}

VEL_TEST_MAIN(tst_CMwQRangeSlider)
#include "tst_cmwqrangeslider.moc"
