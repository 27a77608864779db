#include "metatypelookup.h"
#include "vel_test_main.h"

#include "globalstrut_support.h"
#include "slider_test_support.h"

#include <vel_qt_widgets/CMwQSlider.h>

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtGui/QImage>
#include <QtGui/QMouseEvent>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>
#include <QtWidgets/QStyleOptionSlider>

#include <climits>

namespace {

// Gives the tests the style option the widget paints with.
class TestSlider : public CMwQSlider
{
    Q_OBJECT

public:
    using CMwQSlider::CMwQSlider;

    QStyleOptionSlider option() const { return sliderOption(this); }
};

// The tick geometry of a slider under test, from its style.
struct Geometry : SliderTickGeometry
{
    explicit Geometry(const QSlider &slider)
        : SliderTickGeometry(&slider)
    {
    }
};

// Positions along the track where a mark line crosses the given probe line
// (a row for horizontal sliders, a column for vertical ones), leaving out
// the handle, which lies on top of the marks.
QList<int> inkAlong(const QImage &image, const Geometry &g, int probe)
{
    QList<int> result;
    const bool horizontal = g.opt.orientation == Qt::Horizontal;
    const int length = horizontal ? image.width() : image.height();
    for (int i = 0; i < length; ++i) {
        const QPoint point = horizontal ? QPoint(i, probe) : QPoint(probe, i);
        if (g.handle.adjusted(-1, -1, 1, 1).contains(point))
            continue;
        if (isInk(image, point.x(), point.y()))
            result.append(i);
    }
    return result;
}

QList<int> withoutHandle(const QList<int> &positions, const Geometry &g)
{
    QList<int> result;
    const bool horizontal = g.opt.orientation == Qt::Horizontal;
    const int from = (horizontal ? g.handle.left() : g.handle.top()) - 1;
    const int to = (horizontal ? g.handle.right() : g.handle.bottom()) + 1;
    for (int p : positions) {
        if ((p < from || p > to) && !result.contains(p))
            result.append(p);
    }
    std::sort(result.begin(), result.end());
    return result;
}

// Where the regular marks stand for an interval: minimum + k * interval up to
// maximum + 1, which stands at the maximum (never for interval 1).
QList<int> regularMarkPositions(const Geometry &g, int interval)
{
    QList<int> result;
    for (qint64 v = g.opt.minimum; v <= qint64(g.opt.maximum) + 1; v += interval) {
        if (v == qint64(g.opt.maximum) + 1 && interval == 1)
            break;
        if (v > INT_MAX)
            break;
        result.append(g.pos(int(qMin<qint64>(v, g.opt.maximum))));
    }
    return result;
}

// Probe lines that only the outer end of a mark reaches.
int aboveProbe(const Geometry &g)
{
    return g.opt.orientation == Qt::Horizontal ? g.groove.top() : g.groove.left() - 3;
}

int belowProbe(const Geometry &g)
{
    return g.opt.orientation == Qt::Horizontal ? g.groove.bottom() + 3 : g.groove.right() + 3;
}

// A paint device that keeps the texts drawn on it, wherever they land, also
// outside the widget where no pixel would show them.
class TextRecordingEngine : public QPaintEngine
{
public:
    TextRecordingEngine()
        : QPaintEngine(QPaintEngine::AllFeatures)
    {
    }
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &) override { }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { }
    void drawPath(const QPainterPath &) override { }
    void drawTextItem(const QPointF &, const QTextItem &item) override
    {
        texts.append(item.text());
    }
    Type type() const override { return QPaintEngine::User; }

    QStringList texts;
};

class TextRecordingDevice : public QPaintDevice
{
public:
    explicit TextRecordingDevice(const QSize &size)
        : m_size(size)
    {
    }
    QPaintEngine *paintEngine() const override { return &m_engine; }
    QStringList texts() const { return m_engine.texts; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return m_size.width();
        case PdmHeight:
            return m_size.height();
        case PdmDepth:
            return 32;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        default:
            return 0;
        }
    }

private:
    QSize m_size;
    mutable TextRecordingEngine m_engine;
};

class EventCounter : public QObject
{
    Q_OBJECT

public:
    explicit EventCounter(QEvent::Type type)
        : m_type(type)
    {
    }
    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *e) override
    {
        if (e->type() == m_type)
            ++count;
        return false;
    }

private:
    QEvent::Type m_type;
};

QStringList textsDrawnBy(QWidget &widget)
{
    TextRecordingDevice device(widget.size());
    widget.render(&device);
    return device.texts();
}

class PressRecordingSlider : public CMwQSlider
{
    Q_OBJECT

public:
    using CMwQSlider::CMwQSlider;
    QStringList *log = nullptr;

protected:
    void mousePressEvent(QMouseEvent *e) override
    {
        log->append(QStringLiteral("press"));
        CMwQSlider::mousePressEvent(e);
    }
};

} // namespace

class tst_CMwQSlider : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void tickItemListProperty();
    void tickItemListStream();
    void setTickItemListRepaintsAndRelayouts();

    void regularMarks_data();
    void regularMarks();
    void intervalFallbacks_data();
    void intervalFallbacks();
    void kept_aboveMarkRunsInward_data();
    void kept_aboveMarkRunsInward();
    void extraMarks_data();
    void extraMarks();
    void hiddenItemsDrawNothing_data();
    void hiddenItemsDrawNothing();

    void labels_data();
    void labels();
    void labelsWithSpacesStayWhole();
    void kept_verticalDrawsNoLabels();

    void sizeHint_data();
    void sizeHint();
    void sizeHintWithoutTicksMatchesQSlider_data();
    void sizeHintWithoutTicksMatchesQSlider();
    void sizeHintGlobalStrut();
    void minimumSizeHint();

    void doubleClick();

    void fullIntRange_data();
    void fullIntRange();
    void wideRangesPaintInPlace_data();
    void wideRangesPaintInPlace();
    void wideRangesHitTest_data();
    void wideRangesHitTest();
    void overflowEndsRegularMarks();
    void emptyRange();
    void manyTickItems();
};

void tst_CMwQSlider::construction()
{
    CMwQSlider plain;
    QCOMPARE(plain.orientation(), Qt::Vertical);
    QVERIFY(plain.tickItemList().isEmpty());

    CMwQSlider horizontal(Qt::Horizontal);
    QCOMPARE(horizontal.orientation(), Qt::Horizontal);
    QVERIFY(horizontal.tickItemList().isEmpty());
}

void tst_CMwQSlider::tickItemListProperty()
{
    CMwQSlider slider(Qt::Horizontal);
    // A NoTicks item is kept, although it is never drawn.
    const TMwTickItemList items {{5, QSlider::TicksAbove, QStringLiteral("five")},
        {7, QSlider::NoTicks, QStringLiteral("hidden")}, {9, QSlider::TicksBothSides, QString()}};
    QVERIFY(slider.setProperty("tickItemList", QVariant::fromValue(items)));
    QCOMPARE(slider.tickItemList(), items);
    QCOMPARE(slider.property("tickItemList").value<TMwTickItemList>(), items);

    const int index = slider.metaObject()->indexOfProperty("tickItemList");
    QVERIFY(index >= 0);
    const QMetaProperty property = slider.metaObject()->property(index);
    QVERIFY(property.isDesignable());
    QVERIFY(property.isStored());
    QCOMPARE(property.userType(), qMetaTypeId<TMwTickItemList>());
    QCOMPARE(metaTypeIdOfName("TMwTickItemList"), qMetaTypeId<TMwTickItemList>());
    QCOMPARE(metaTypeIdOfName("CMwQSlider::TMwTickItemList"), qMetaTypeId<TMwTickItemList>());
}

void tst_CMwQSlider::tickItemListStream()
{
    const TMwTickItemList items {{-3, QSlider::TicksBelow, QStringLiteral("minus three")},
        {0, QSlider::NoTicks, QString()},
        {INT_MAX, QSlider::TicksBothSides, QStringLiteral("top")}};
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << items << QVariant::fromValue(items);
    }
    QDataStream in(bytes);
    TMwTickItemList direct;
    QVariant variant;
    in >> direct >> variant;
    QCOMPARE(in.status(), QDataStream::Ok);
    QCOMPARE(direct, items);
    QCOMPARE(variant.userType(), qMetaTypeId<TMwTickItemList>());
    QCOMPARE(variant.value<TMwTickItemList>(), items);
}

void tst_CMwQSlider::setTickItemListRepaintsAndRelayouts()
{
    QWidget parent;
    auto *slider = new CMwQSlider(Qt::Horizontal, &parent);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    const QSize before = slider->sizeHint();

    EventCounter paints(QEvent::Paint);
    EventCounter layoutRequests(QEvent::LayoutRequest);
    slider->installEventFilter(&paints);
    parent.installEventFilter(&layoutRequests);

    slider->setTickItemList({{50, QSlider::TicksBelow, QStringLiteral("half")}});
    QTRY_VERIFY(paints.count > 0);
    QTRY_VERIFY(layoutRequests.count > 0);
    QVERIFY(slider->sizeHint().height() > before.height());
}

void tst_CMwQSlider::regularMarks_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<int>("tickPosition");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("interval");
    QTest::addColumn<bool>("markAtMaximum");

    QTest::newRow("horizontal above")
        << Qt::Horizontal << int(QSlider::TicksAbove) << 100 << 10 << true;
    QTest::newRow("horizontal below")
        << Qt::Horizontal << int(QSlider::TicksBelow) << 100 << 10 << true;
    QTest::newRow("horizontal both")
        << Qt::Horizontal << int(QSlider::TicksBothSides) << 100 << 10 << true;
    // 0, 10, ..., 90, then 100 == maximum + 1 stands at the maximum, 99.
    QTest::newRow("step lands on maximum + 1")
        << Qt::Horizontal << int(QSlider::TicksBelow) << 99 << 10 << true;
    // 0, 10, ..., 90; 100 is past maximum + 1, so no mark at 95.
    QTest::newRow("step passes maximum + 1")
        << Qt::Horizontal << int(QSlider::TicksBelow) << 95 << 10 << false;
    QTest::newRow("vertical left") << Qt::Vertical << int(QSlider::TicksLeft) << 100 << 10 << true;
    QTest::newRow("vertical right")
        << Qt::Vertical << int(QSlider::TicksRight) << 100 << 10 << true;
    QTest::newRow("vertical both, uneven")
        << Qt::Vertical << int(QSlider::TicksBothSides) << 99 << 20 << true;
    QTest::newRow("vertical both, short")
        << Qt::Vertical << int(QSlider::TicksBothSides) << 90 << 20 << false;
}

void tst_CMwQSlider::regularMarks()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(int, tickPosition);
    QFETCH(int, maximum);
    QFETCH(int, interval);
    QFETCH(bool, markAtMaximum);

    TestSlider slider(orientation);
    slider.resize(orientation == Qt::Horizontal ? QSize(220, 40) : QSize(40, 220));
    slider.setRange(0, maximum);
    slider.setValue(maximum / 2 + 3);
    slider.setTickPosition(QSlider::TickPosition(tickPosition));
    slider.setTickInterval(interval);

    const Geometry g(slider);
    const QImage image = renderOf(slider);
    const QList<int> expected = withoutHandle(regularMarkPositions(g, interval), g);
    QVERIFY(expected.size() >= 4);
    QCOMPARE(expected.contains(g.pos(maximum)), markAtMaximum);

    const QList<int> none;
    QCOMPARE(
        inkAlong(image, g, aboveProbe(g)), (tickPosition & QSlider::TicksAbove) ? expected : none);
    QCOMPARE(
        inkAlong(image, g, belowProbe(g)), (tickPosition & QSlider::TicksBelow) ? expected : none);
}

void tst_CMwQSlider::intervalFallbacks_data()
{
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("tickInterval");
    QTest::addColumn<int>("singleStep");
    QTest::addColumn<int>("pageStep");
    QTest::addColumn<int>("expectedInterval");

    QTest::newRow("tick interval wins") << 100 << 20 << 1 << 25 << 20;
    // Five steps of 2 px or more apart on this track: the single step is used.
    QTest::newRow("single step far enough apart") << 100 << 0 << 5 << 25 << 5;
    QTest::newRow("single step of 2 over 20") << 20 << 0 << 2 << 5 << 2;
    // A single step of 1 is only 2 px long on a 205-px track of 100 steps.
    QTest::newRow("single step too dense, page step") << 100 << 0 << 1 << 25 << 25;
    QTest::newRow("single step 0, page step") << 100 << 0 << 0 << 25 << 25;
    QTest::newRow("single and page step 0") << 20 << 0 << 0 << 0 << 1;
}

void tst_CMwQSlider::intervalFallbacks()
{
    QFETCH(int, maximum);
    QFETCH(int, tickInterval);
    QFETCH(int, singleStep);
    QFETCH(int, pageStep);
    QFETCH(int, expectedInterval);

    TestSlider slider(Qt::Horizontal);
    slider.resize(220, 40);
    slider.setRange(0, maximum);
    slider.setSingleStep(singleStep);
    slider.setPageStep(pageStep);
    slider.setTickInterval(tickInterval);
    slider.setTickPosition(QSlider::TicksBelow);
    slider.setValue(maximum);
    QCOMPARE(slider.singleStep(), singleStep);
    QCOMPARE(slider.pageStep(), pageStep);
    QCOMPARE(slider.tickInterval(), tickInterval);

    const Geometry g(slider);
    QCOMPARE(g.available, 205);
    const QImage image = renderOf(slider);
    QCOMPARE(inkAlong(image, g, belowProbe(g)),
        withoutHandle(regularMarkPositions(g, expectedInterval), g));
}

void tst_CMwQSlider::kept_aboveMarkRunsInward_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::newRow("horizontal") << Qt::Horizontal;
    QTest::newRow("vertical") << Qt::Vertical;
}

void tst_CMwQSlider::kept_aboveMarkRunsInward()
{
    QFETCH(Qt::Orientation, orientation);
    TestSlider slider(orientation);
    slider.resize(orientation == Qt::Horizontal ? QSize(220, 60) : QSize(60, 220));
    slider.setRange(0, 100);
    slider.setValue(100);
    slider.setTickItemList({{40, QSlider::TicksBothSides, QString()}});
    const Geometry g(slider);
    const QImage image = renderOf(slider);
    const int p = g.pos(40);
    const QRect groove = g.groove;

    if (orientation == Qt::Horizontal) {
        // Above: from the adjusted groove top 3 px down, towards the groove.
        QVERIFY(isInk(image, p, groove.top()));
        QVERIFY(isInk(image, p, groove.top() + 1));
        QVERIFY(isBackground(image, p, groove.top() - 1));
        QVERIFY(isBackground(image, p, groove.top() - 3));
        // Below: from the adjusted groove bottom 3 px down, away from it.
        QVERIFY(isInk(image, p, groove.bottom() + 3));
        QVERIFY(isInk(image, p, groove.bottom() + 2));
        QVERIFY(isBackground(image, p, groove.bottom() + 4));
        QVERIFY(isBackground(image, p + 1, groove.bottom() + 3));
        QVERIFY(isBackground(image, p - 1, groove.bottom() + 3));
    } else {
        // Left and right both run outward.
        QVERIFY(isInk(image, groove.left() - 3, p));
        QVERIFY(isInk(image, groove.left(), p));
        QVERIFY(isBackground(image, groove.left() - 4, p));
        QVERIFY(isInk(image, groove.right() + 3, p));
        QVERIFY(isBackground(image, groove.right() + 4, p));
        QVERIFY(isBackground(image, groove.right() + 3, p + 1));
    }
}

void tst_CMwQSlider::extraMarks_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::newRow("horizontal") << Qt::Horizontal;
    QTest::newRow("vertical") << Qt::Vertical;
}

void tst_CMwQSlider::extraMarks()
{
    QFETCH(Qt::Orientation, orientation);
    TestSlider slider(orientation);
    slider.resize(orientation == Qt::Horizontal ? QSize(220, 60) : QSize(60, 220));
    slider.setRange(10, 90);
    slider.setValue(50);
    // Items at the ends of the range are drawn; the ones outside or without
    // sides are not, although they stay in the list.
    const TMwTickItemList items {{10, QSlider::TicksBelow, QString()},
        {90, QSlider::TicksBelow, QString()}, {25, QSlider::TicksAbove, QString()},
        {75, QSlider::TicksBothSides, QString()}, {30, QSlider::NoTicks, QString()},
        {9, QSlider::TicksBothSides, QString()}, {91, QSlider::TicksBothSides, QString()}};
    slider.setTickItemList(items);
    QCOMPARE(slider.tickItemList(), items);

    const Geometry g(slider);
    const QImage image = renderOf(slider);
    QCOMPARE(inkAlong(image, g, aboveProbe(g)), withoutHandle({g.pos(25), g.pos(75)}, g));
    QCOMPARE(
        inkAlong(image, g, belowProbe(g)), withoutHandle({g.pos(10), g.pos(75), g.pos(90)}, g));
    QCOMPARE(g.pos(10), g.half);
    QCOMPARE(g.pos(90), g.half + g.available);
}

void tst_CMwQSlider::hiddenItemsDrawNothing_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("tickPosition");

    QTest::newRow("below minimum") << Qt::Horizontal << 9 << int(QSlider::TicksBothSides);
    QTest::newRow("above maximum") << Qt::Horizontal << 91 << int(QSlider::TicksBothSides);
    QTest::newRow("far outside") << Qt::Horizontal << INT_MIN << int(QSlider::TicksBothSides);
    QTest::newRow("no ticks") << Qt::Horizontal << 50 << int(QSlider::NoTicks);
    QTest::newRow("vertical below minimum") << Qt::Vertical << 9 << int(QSlider::TicksBothSides);
    QTest::newRow("vertical no ticks") << Qt::Vertical << 50 << int(QSlider::NoTicks);
}

void tst_CMwQSlider::hiddenItemsDrawNothing()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(int, value);
    QFETCH(int, tickPosition);

    TestSlider slider(orientation);
    slider.resize(orientation == Qt::Horizontal ? QSize(220, 60) : QSize(60, 220));
    slider.setRange(10, 90);
    slider.setValue(20);
    const TMwTickItemList shown {{60, QSlider::TicksBothSides, QStringLiteral("sixty")}};
    slider.setTickItemList(shown);
    const QImage reference = renderOf(slider);

    TMwTickItemList items = shown;
    items.append({value, QSlider::TickPosition(tickPosition), QStringLiteral("never shown")});
    slider.setTickItemList(items);
    QCOMPARE(renderOf(slider), reference);

    // The same item inside the range and with sides does change the picture.
    items.last() = {40, QSlider::TicksBothSides, QStringLiteral("never shown")};
    slider.setTickItemList(items);
    QVERIFY(renderOf(slider) != reference);
}

void tst_CMwQSlider::labels_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("tickPosition");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>(
        "shift"); // -1: starts at half, 1: ends at half + available, 2: wider than the track

    QTest::newRow("middle above") << 50 << int(QSlider::TicksAbove) << QStringLiteral("middle")
                                  << 0;
    QTest::newRow("middle below") << 50 << int(QSlider::TicksBelow) << QStringLiteral("middle")
                                  << 0;
    QTest::newRow("middle both") << 40 << int(QSlider::TicksBothSides) << QStringLiteral("both")
                                 << 0;
    QTest::newRow("minimum shifted right")
        << 0 << int(QSlider::TicksBelow) << QStringLiteral("minimum") << -1;
    QTest::newRow("near minimum shifted right")
        << 5 << int(QSlider::TicksAbove) << QStringLiteral("nearly the minimum") << -1;
    QTest::newRow("maximum shifted left")
        << 100 << int(QSlider::TicksBelow) << QStringLiteral("maximum") << 1;
    QTest::newRow("maximum shifted left, above")
        << 100 << int(QSlider::TicksAbove) << QStringLiteral("maximum") << 1;
    QTest::newRow("wider than track, right end wins")
        << 10 << int(QSlider::TicksBelow)
        << QStringLiteral("a label far wider than the whole track of this slider, really") << 2;
}

void tst_CMwQSlider::labels()
{
    QFETCH(int, value);
    QFETCH(int, tickPosition);
    QFETCH(QString, text);
    QFETCH(int, shift);

    TestSlider slider(Qt::Horizontal);
    slider.setRange(0, 100);
    slider.setValue(70);
    slider.setTickItemList({{value, QSlider::TickPosition(tickPosition), text}});
    slider.resize(220, slider.sizeHint().height());

    const Geometry g(slider);
    const QFontMetrics fm(slider.font());
    QRect centred = fm.boundingRect(text);
    centred.moveCenter(QPoint(g.pos(value), 0));
    if (shift < 0)
        QVERIFY(centred.left() < g.half);
    if (shift == 1)
        QVERIFY(centred.right() > g.half + g.available);
    if (shift == 2)
        QVERIFY(centred.width() > g.available + 1);
    if (shift == 0)
        QVERIFY(centred.left() >= g.half && centred.right() <= g.half + g.available);

    const QRect above = g.labelRect(slider.font(), value, text, true);
    const QRect below = g.labelRect(slider.font(), value, text, false);
    if (shift < 0)
        QCOMPARE(above.left(), g.half);
    if (shift > 0)
        QCOMPARE(above.right(), g.half + g.available);
    if (shift == 2)
        QVERIFY(above.left() < g.half);
    // The labels fit the widget height: they are shifted, not clipped.
    QVERIFY(above.top() >= 0);
    QVERIFY(below.bottom() < slider.height());

    const QImage labelled = renderOf(slider);

    // The same item without text gives the marks alone; the label drawn
    // into it at the expected rectangle must give the same picture.
    slider.setTickItemList({{value, QSlider::TickPosition(tickPosition), QString()}});
    QImage expected = renderOf(slider);
    QVERIFY(expected != labelled);
    if (tickPosition & QSlider::TicksAbove)
        drawLabel(&expected, slider, above, text);
    if (tickPosition & QSlider::TicksBelow)
        drawLabel(&expected, slider, below, text);
    QCOMPARE(labelled, expected);
}

void tst_CMwQSlider::labelsWithSpacesStayWhole()
{
    // Labels are laid out in their tight ink box; they must not wrap there.
    TestSlider slider(Qt::Horizontal);
    slider.setRange(1, 20000);
    slider.setTickItemList({{1, QSlider::TicksBelow, QStringLiteral("1 Hz")},
        {1000, QSlider::TicksAbove, QStringLiteral("hot tap")},
        {20000, QSlider::TicksBelow, QStringLiteral("20 kHz")}});
    slider.resize(260, slider.sizeHint().height());
    QCOMPARE(textsDrawnBy(slider),
        QStringList({QStringLiteral("1 Hz"), QStringLiteral("hot tap"), QStringLiteral("20 kHz")}));
}

void tst_CMwQSlider::kept_verticalDrawsNoLabels()
{
    TestSlider slider(Qt::Vertical);
    slider.setRange(0, 100);
    slider.setValue(0);
    slider.resize(80, 220);
    slider.setTickItemList({{50, QSlider::TicksBothSides, QStringLiteral("fifty")},
        {100, QSlider::TicksLeft, QStringLiteral("hundred")}});
    const QImage labelled = renderOf(slider);
    QCOMPARE(textsDrawnBy(slider), QStringList());
    slider.setTickItemList(
        {{50, QSlider::TicksBothSides, QString()}, {100, QSlider::TicksLeft, QString()}});
    QCOMPARE(renderOf(slider), labelled);

    // The same items on a horizontal slider do draw their texts, one per side.
    slider.setTickItemList({{50, QSlider::TicksBothSides, QStringLiteral("fifty")},
        {100, QSlider::TicksLeft, QStringLiteral("hundred")}});
    slider.setOrientation(Qt::Horizontal);
    slider.resize(220, 80);
    QCOMPARE(textsDrawnBy(slider), QStringList({"fifty", "fifty", "hundred"}));
    slider.setOrientation(Qt::Vertical);
    slider.resize(80, 220);

    const Geometry g(slider);
    QCOMPARE(inkAlong(labelled, g, aboveProbe(g)), withoutHandle({g.pos(50), g.pos(100)}, g));
    QCOMPARE(inkAlong(labelled, g, belowProbe(g)), withoutHandle({g.pos(50)}, g));
}

void tst_CMwQSlider::sizeHint_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<int>("tickPosition");
    QTest::addColumn<TMwTickItemList>("items");
    QTest::addColumn<int>(
        "extraThickness"); // in units: 6 px for marks, + 2 font heights for labels
    QTest::addColumn<bool>("labels");

    const TMwTickItemList none;
    const TMwTickItemList hidden {{5, QSlider::NoTicks, QStringLiteral("hidden label")}};
    const TMwTickItemList marks {
        {5, QSlider::TicksAbove, QString()}, {7, QSlider::TicksBelow, QString()}};
    const TMwTickItemList labelled {{5, QSlider::TicksBelow, QStringLiteral("five")}};
    const TMwTickItemList labelledBoth {{5, QSlider::TicksBothSides, QStringLiteral("five")},
        {9, QSlider::TicksAbove, QStringLiteral("nine")}};

    for (Qt::Orientation o : {Qt::Horizontal, Qt::Vertical}) {
        const char *name = o == Qt::Horizontal ? "horizontal" : "vertical";
        QTest::addRow("%s: nothing", name) << o << int(QSlider::NoTicks) << none << 0 << false;
        QTest::addRow("%s: hidden item", name)
            << o << int(QSlider::NoTicks) << hidden << 0 << false;
        QTest::addRow("%s: regular above", name)
            << o << int(QSlider::TicksAbove) << none << 6 << false;
        QTest::addRow("%s: regular both", name)
            << o << int(QSlider::TicksBothSides) << none << 6 << false;
        QTest::addRow("%s: item marks", name) << o << int(QSlider::NoTicks) << marks << 6 << false;
        QTest::addRow("%s: both and item marks", name)
            << o << int(QSlider::TicksBothSides) << marks << 6 << false;
        QTest::addRow("%s: labelled", name) << o << int(QSlider::NoTicks) << labelled << 6 << true;
        QTest::addRow("%s: labelled both sides", name)
            << o << int(QSlider::TicksBelow) << labelledBoth << 6 << true;
        QTest::addRow("%s: hidden label, marks", name)
            << o << int(QSlider::TicksBelow) << hidden << 6 << false;
    }
}

void tst_CMwQSlider::sizeHint()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(int, tickPosition);
    QFETCH(TMwTickItemList, items);
    QFETCH(int, extraThickness);
    QFETCH(bool, labels);

    TestSlider slider(orientation);
    slider.setTickPosition(QSlider::TickPosition(tickPosition));
    slider.setTickItemList(items);

    const QStyleOptionSlider opt = slider.option();
    const int thickness = slider.style()->pixelMetric(QStyle::PM_SliderThickness, &opt, &slider)
        + extraThickness + (labels ? 2 * slider.fontMetrics().height() : 0);
    const QSize contents
        = orientation == Qt::Horizontal ? QSize(84, thickness) : QSize(thickness, 84);
    const QSize expected
        = slider.style()->sizeFromContents(QStyle::CT_Slider, &opt, contents, &slider);
    QCOMPARE(slider.sizeHint(), expected);
    // Under Fusion the contents size is the hint itself.
    QCOMPARE(slider.sizeHint(), contents);
}

void tst_CMwQSlider::sizeHintWithoutTicksMatchesQSlider_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::newRow("horizontal") << Qt::Horizontal;
    QTest::newRow("vertical") << Qt::Vertical;
}

void tst_CMwQSlider::sizeHintWithoutTicksMatchesQSlider()
{
    QFETCH(Qt::Orientation, orientation);
    CMwQSlider slider(orientation);
    QSlider plain(orientation);
    QCOMPARE(slider.sizeHint(), plain.sizeHint());

    // With marks, QSlider adds 5 px per side; this slider adds 6 once.
    slider.setTickPosition(QSlider::TicksBothSides);
    plain.setTickPosition(QSlider::TicksBothSides);
    const QSize difference = plain.sizeHint() - slider.sizeHint();
    QCOMPARE(difference, orientation == Qt::Horizontal ? QSize(0, 4) : QSize(4, 0));
}

void tst_CMwQSlider::sizeHintGlobalStrut()
{
    CMwQSlider slider(Qt::Horizontal);
    const QSize normal = slider.sizeHint();
    if (!setGlobalStrutForTest(QSize(10, 120)))
        QSKIP("Qt 6 removed the application's global strut (QApplication::setGlobalStrut)");
    const QSize strut = slider.sizeHint();
    setGlobalStrutForTest(QSize());
    QCOMPARE(strut, QSize(84, 120));
    QCOMPARE(slider.sizeHint(), normal);
}

void tst_CMwQSlider::minimumSizeHint()
{
    // QSlider's minimum hint: this slider's own size hint, shortened to the
    // handle length.
    for (Qt::Orientation o : {Qt::Horizontal, Qt::Vertical}) {
        TestSlider slider(o);
        slider.setTickPosition(QSlider::TicksBothSides);
        slider.setTickItemList({{3, QSlider::TicksBelow, QStringLiteral("three")}});
        const QStyleOptionSlider opt = slider.option();
        const int length = slider.style()->pixelMetric(QStyle::PM_SliderLength, &opt, &slider);
        const QSize hint = slider.sizeHint();
        QCOMPARE(slider.minimumSizeHint(),
            o == Qt::Horizontal ? QSize(length, hint.height()) : QSize(hint.width(), length));
    }
}

void tst_CMwQSlider::doubleClick()
{
    QStringList log;
    PressRecordingSlider slider(Qt::Horizontal);
    slider.log = &log;
    slider.resize(200, 30);
    connect(&slider, &CMwQSlider::SignalDoubleClick, this,
        [&log, &slider]() { log.append(slider.isSliderDown() ? "signal (down)" : "signal"); });
    QSignalSpy spy(&slider, SIGNAL(SignalDoubleClick()));

    const QPoint point(5, slider.height() / 2);
    auto send = [&](QEvent::Type type, Qt::MouseButtons buttons) {
        QMouseEvent e(
            type, point, slider.mapToGlobal(point), Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(&slider, &e);
    };
    send(QEvent::MouseButtonPress, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
    QCOMPARE(spy.count(), 0);
    send(QEvent::MouseButtonDblClick, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
    QCOMPARE(spy.count(), 1);
    // The signal comes before the base class turns the double click into a
    // press.
    QCOMPARE(log, QStringList({"press", "signal", "press"}));

    send(QEvent::MouseButtonPress, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
    send(QEvent::MouseButtonDblClick, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::NoButton);
    QCOMPARE(spy.count(), 2);
}

void tst_CMwQSlider::fullIntRange_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("lastMark"); // dense marks from the minimum up to this value

    QTest::newRow("0..INT_MAX, interval 1") << 0 << INT_MAX << 1 << INT_MAX;
    // 0 + k * 7 ends at INT_MAX - 1; the next step overflows.
    QTest::newRow("0..INT_MAX, interval 7") << 0 << INT_MAX << 7 << INT_MAX - 1;
    QTest::newRow("INT_MIN..-1, interval 1") << INT_MIN << -1 << 1 << -1;
    // INT_MIN + k * 7 ends at -2; the next step, 5, passes maximum + 1.
    QTest::newRow("INT_MIN..-1, interval 7") << INT_MIN << -1 << 7 << -2;
}

void tst_CMwQSlider::fullIntRange()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, interval);
    QFETCH(int, lastMark);

    TestSlider slider(Qt::Horizontal);
    slider.resize(220, 60);
    slider.setRange(minimum, maximum);
    slider.setValue(minimum + (maximum - minimum) / 2);
    slider.setTickInterval(interval);
    slider.setTickPosition(QSlider::TicksAbove);
    slider.setTickItemList({{minimum, QSlider::TicksBelow, QStringLiteral("lowest")},
        {maximum, QSlider::TicksBelow, QStringLiteral("highest")}});

    const Geometry g(slider);
    // Over a range this wide the style truncates even the maximum to the
    // last pixel but one.
    QCOMPARE(g.pos(minimum), g.half);
    QCOMPARE(g.pos(maximum), g.half + g.available - 1);

    const QImage image = renderOf(slider);
    QCOMPARE(inkAlong(image, g, belowProbe(g)), withoutHandle({g.pos(minimum), g.pos(maximum)}, g));
    // Steps far smaller than a pixel: one mark on every pixel of the track
    // up to the last mark.
    QList<int> expected;
    for (int x = g.half; x <= g.pos(lastMark); ++x)
        expected.append(x);
    QCOMPARE(inkAlong(image, g, aboveProbe(g)), withoutHandle(expected, g));
}

void tst_CMwQSlider::wideRangesPaintInPlace_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");

    // Rows named by the width maximum - minimum. Qt 5.15's style arithmetic
    // takes widths up to 2^31 - 1 (the first two rows pass straight to it);
    // it divides by zero at 2^31 and wraps around above.
    QTest::newRow("2^31 - 1 wide: INT_MIN + 1..0") << INT_MIN + 1 << 0;
    QTest::newRow("2^31 - 1 wide: 0..INT_MAX") << 0 << INT_MAX;
    QTest::newRow("2^31 wide: INT_MIN..0") << INT_MIN << 0;
    QTest::newRow("2^31 wide: -1..INT_MAX") << -1 << INT_MAX;
    QTest::newRow("2^31 + 1 wide: INT_MIN..1") << INT_MIN << 1;
    QTest::newRow("3 * 2^30 wide: INT_MIN..2^30") << INT_MIN << (1 << 30);
    QTest::newRow("2^32 - 2 wide: INT_MIN..INT_MAX - 1") << INT_MIN << INT_MAX - 1;
    QTest::newRow("2^32 - 1 wide: INT_MIN..INT_MAX") << INT_MIN << INT_MAX;
}

void tst_CMwQSlider::wideRangesPaintInPlace()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);

    // The track geometry does not depend on the range: a narrow slider of
    // the same size gives it, with its handle at the start of the track.
    TestSlider reference(Qt::Horizontal);
    reference.resize(220, 60);
    reference.setRange(0, 8);
    reference.setValue(0);
    const Geometry g(reference);

    TestSlider slider(Qt::Horizontal);
    slider.resize(220, 60);
    slider.setRange(minimum, maximum);
    slider.setValue(minimum);
    // At its minimum the handle is drawn where any slider draws it there.
    QCOMPARE(renderOf(slider), renderOf(reference));

    // Marks at the eighths of the range stand at the eighths of the track,
    // give or take the pixel the style's truncation may cost.
    const qint64 width = qint64(maximum) - minimum;
    TMwTickItemList items;
    QList<int> ideal;
    for (int k = 0; k <= 8; ++k) {
        items.append({int(minimum + width * k / 8), QSlider::TicksBelow, QString()});
        ideal.append(g.half + g.available * k / 8);
    }
    slider.setTickItemList(items);
    const QList<int> expected = withoutHandle(ideal, g);
    const QList<int> drawn = inkAlong(renderOf(slider), g, belowProbe(g));
    QCOMPARE(drawn.size(), expected.size());
    for (int i = 0; i < drawn.size(); ++i)
        QVERIFY2(qAbs(drawn.at(i) - expected.at(i)) <= 1,
            qPrintable(QStringLiteral("mark %1 at %2, expected %3")
                           .arg(i)
                           .arg(drawn.at(i))
                           .arg(expected.at(i))));

    // Regular marks over such a range fall on every pixel of the track
    // (those next to the handle lie under its outline).
    slider.setTickItemList({});
    slider.setTickInterval(1);
    slider.setTickPosition(QSlider::TicksAbove);
    reference.setTickPosition(QSlider::TicksAbove);
    const Geometry marked(reference);
    const QList<int> regular = inkAlong(renderOf(slider), marked, aboveProbe(marked));
    for (int x = marked.handle.right() + 3; x < marked.half + marked.available; ++x)
        QVERIFY2(regular.contains(x), qPrintable(QStringLiteral("no mark at %1").arg(x)));
}

void tst_CMwQSlider::wideRangesHitTest_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<Qt::Orientation>("orientation");

    // Rows named by the width maximum - minimum, as in the painting test.
    const struct
    {
        const char *name;
        int minimum;
        int maximum;
    } ranges[] = {{"2^31 - 1 wide: INT_MIN + 1..0", INT_MIN + 1, 0},
        {"2^31 - 1 wide: 0..INT_MAX", 0, INT_MAX}, {"2^31 wide: INT_MIN..0", INT_MIN, 0},
        {"2^31 wide: -1..INT_MAX", -1, INT_MAX}, {"2^31 + 1 wide: INT_MIN..1", INT_MIN, 1},
        {"3 * 2^30 wide: INT_MIN..2^30", INT_MIN, 1 << 30},
        {"2^32 - 2 wide: INT_MIN..INT_MAX - 1", INT_MIN, INT_MAX - 1},
        {"2^32 - 1 wide: INT_MIN..INT_MAX", INT_MIN, INT_MAX}};
    for (const auto &range : ranges) {
        QTest::addRow("%s, horizontal", range.name)
            << range.minimum << range.maximum << Qt::Horizontal;
        QTest::addRow("%s, vertical", range.name) << range.minimum << range.maximum << Qt::Vertical;
    }
}

void tst_CMwQSlider::wideRangesHitTest()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(Qt::Orientation, orientation);
    const bool horizontal = orientation == Qt::Horizontal;
    const QSize size = horizontal ? QSize(220, 30) : QSize(30, 220);
    // A point from its coordinate along the track and the one across it.
    const auto at = [horizontal](int along, int across) {
        return horizontal ? QPoint(along, across) : QPoint(across, along);
    };
    const auto alongOf = [horizontal](const QPoint &p) { return horizontal ? p.x() : p.y(); };
    const auto acrossOf = [horizontal](const QPoint &p) { return horizontal ? p.y() : p.x(); };

    TestSlider reference(orientation);
    reference.resize(size);
    reference.setRange(0, 8);
    reference.setValue(0);
    const Geometry g(reference);

    TestSlider slider(orientation);
    slider.resize(size);
    slider.setRange(minimum, maximum);
    slider.setValue(minimum);
    slider.setPageStep(1000);
    QSignalSpy moved(&slider, &QSlider::sliderMoved);

    const auto send = [&slider](QEvent::Type type, const QPoint &point, Qt::MouseButtons buttons) {
        QMouseEvent e(
            type, point, slider.mapToGlobal(point), Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(&slider, &e);
        return e.isAccepted();
    };
    // The minimum is at the start of a horizontal track, at the bottom of a
    // vertical one.
    const QPoint onHandle = g.handle.center();
    QHoverEvent hover(QEvent::HoverMove, onHandle, QPoint(0, 0));
    QApplication::sendEvent(&slider, &hover);

    // The handle at the minimum is grabbed where the style draws it, and
    // follows the mouse along the track to the maximum.
    QVERIFY(send(QEvent::MouseButtonPress, onHandle, Qt::LeftButton));
    QVERIFY(slider.isSliderDown());
    const int grip = alongOf(onHandle) - alongOf(g.handle.topLeft());
    // The track a handle's leading edge runs along, as QSlider takes it.
    const int trackStart = alongOf(g.rawGroove.topLeft());
    const int span = horizontal ? g.rawGroove.width() - g.handle.width()
                                : g.rawGroove.height() - g.handle.height();
    QVERIFY(send(
        QEvent::MouseMove, at(trackStart + span / 2 + grip, acrossOf(onHandle)), Qt::LeftButton));
    const qint64 middle = qint64(minimum) + (qint64(maximum) - minimum) / 2;
    // Half way along the track is half way through the range, within what
    // two pixels stand for: the rounding of the middle pixel, and the pixel
    // the style's truncation may have cost the handle where it was grabbed.
    QVERIFY2(qAbs(slider.value() - middle) <= 2 * (qint64(maximum) - minimum) / span + 1,
        qPrintable(QString::number(slider.value())));
    const QPoint beyond = at(horizontal ? slider.width() + 50 : -50, acrossOf(onHandle));
    QVERIFY(send(QEvent::MouseMove, beyond, Qt::LeftButton));
    QCOMPARE(slider.value(), maximum);
    QVERIFY(send(QEvent::MouseButtonRelease, beyond, Qt::NoButton));
    QVERIFY(!slider.isSliderDown());
    QCOMPARE(moved.count(), 2);

    // A press on the groove where the handle was pages down once.
    QVERIFY(send(QEvent::MouseButtonPress, onHandle, Qt::LeftButton));
    QVERIFY(!slider.isSliderDown());
    QCOMPARE(slider.value(), maximum - 1000);
    QVERIFY(send(QEvent::MouseButtonRelease, onHandle, Qt::NoButton));
    QCOMPARE(slider.value(), maximum - 1000);
}

void tst_CMwQSlider::overflowEndsRegularMarks()
{
    // From INT_MAX - 4 the first step of 5 overflows: one mark only, at the
    // minimum, and none at the maximum.
    TestSlider slider(Qt::Horizontal);
    slider.resize(220, 40);
    slider.setRange(INT_MAX - 4, INT_MAX);
    slider.setValue(INT_MAX - 2);
    slider.setTickInterval(5);
    slider.setTickPosition(QSlider::TicksBelow);
    const Geometry g(slider);
    QCOMPARE(inkAlong(renderOf(slider), g, belowProbe(g)), withoutHandle({g.half}, g));

    // The same span away from the end of the int range gets its last mark.
    slider.setRange(0, 4);
    slider.setValue(2);
    const Geometry g2(slider);
    QCOMPARE(inkAlong(renderOf(slider), g2, belowProbe(g2)),
        withoutHandle({g2.half, g2.half + g2.available}, g2));
}

void tst_CMwQSlider::emptyRange()
{
    TestSlider slider(Qt::Horizontal);
    slider.resize(220, 60);
    slider.setRange(7, 7);
    slider.setTickPosition(QSlider::TicksBelow);
    slider.setTickInterval(1);
    slider.setTickItemList({{7, QSlider::TicksAbove, QStringLiteral("seven")},
        {8, QSlider::TicksAbove, QStringLiteral("eight")}});
    const Geometry g(slider);
    const QImage image = renderOf(slider);
    // Everything stands at the start of the track, under the handle.
    QCOMPARE(g.pos(7), g.half);
    QVERIFY(inkAlong(image, g, belowProbe(g)).isEmpty());
    QVERIFY(inkAlong(image, g, aboveProbe(g)).isEmpty());
    const QStyleOptionSlider opt = slider.option();
    QCOMPARE(slider.sizeHint().height(),
        slider.style()->pixelMetric(QStyle::PM_SliderThickness, &opt, &slider) + 6
            + 2 * slider.fontMetrics().height());
}

void tst_CMwQSlider::manyTickItems()
{
    TestSlider slider(Qt::Horizontal);
    slider.resize(300, 60);
    slider.setRange(0, 9999);
    slider.setValue(0);
    TMwTickItemList items;
    for (int i = 0; i < 10000; ++i)
        items.append({i, i % 2 ? QSlider::TicksAbove : QSlider::TicksBelow, QString::number(i)});
    slider.setTickItemList(items);
    QCOMPARE(slider.tickItemList().size(), 10000);
    QCOMPARE(slider.tickItemList().at(9999).text, QStringLiteral("9999"));
    const QImage image = renderOf(slider);
    const Geometry g(slider);
    QVERIFY(isInk(image, g.pos(9999), belowProbe(g)));
    QVERIFY(isInk(image, g.pos(5000), aboveProbe(g)));
    const QStyleOptionSlider opt = slider.option();
    QCOMPARE(slider.sizeHint().height(),
        slider.style()->pixelMetric(QStyle::PM_SliderThickness, &opt, &slider) + 6
            + 2 * slider.fontMetrics().height());
}

VEL_TEST_MAIN(tst_CMwQSlider)
#include "tst_cmwqslider.moc"
