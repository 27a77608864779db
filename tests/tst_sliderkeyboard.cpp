#include "vel_test_main.h"

#include "slider_test_support.h"

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtGui/QImage>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QSlider>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOptionSlider>

#include <climits>
#include <memory>

namespace {

class TestRangeSlider : public CMwQRangeSlider
{
    Q_OBJECT

public:
    using CMwQRangeSlider::CMwQRangeSlider;

    QStyleOptionSlider option() const { return sliderOption(this); }
    QRect handleRect(int position) const { return handleRectAt(this, position, position); }
    QRect lowerRect() const { return handleRect(minimumPosition()); }
    QRect upperRect() const { return handleRect(maximumPosition()); }

    // The pixel offset along the track between two values.
    int pixelDelta(int from, int to) const
    {
        const QStyleOptionSlider opt = option();
        int start = 0;
        int span = 0;
        sliderTrack(this, &start, &span);
        return QStyle::sliderPositionFromValue(minimum(), maximum(), to, span, opt.upsideDown)
            - QStyle::sliderPositionFromValue(minimum(), maximum(), from, span, opt.upsideDown);
    }
};

// Records which handles the style is asked to draw with the focus state.
class RecordingStyle : public QProxyStyle
{
    Q_OBJECT

public:
    RecordingStyle()
        : QProxyStyle(QStringLiteral("Fusion"))
    {
    }

    struct Draw
    {
        QStyle::SubControls subControls;
        int position;
        bool focus;
    };
    mutable QVector<Draw> draws;

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
        QPainter *painter, const QWidget *widget) const override
    {
        if (control == CC_Slider) {
            const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
            draws.append({slider->subControls, slider->sliderPosition,
                bool(slider->state & State_HasFocus)});
        }
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
};

// A window with a line edit before and after the widget under test, all in
// one row, shown and active.
struct FocusRow
{
    QWidget window;
    QLineEdit *before = nullptr;
    QLineEdit *after = nullptr;

    explicit FocusRow(QWidget *middle)
    {
        auto *layout = new QHBoxLayout(&window);
        before = new QLineEdit(&window);
        after = new QLineEdit(&window);
        layout->addWidget(before);
        layout->addWidget(middle);
        layout->addWidget(after);
    }
    bool show()
    {
        window.resize(500, 150);
        window.show();
        QApplication::setActiveWindow(&window);
        return QTest::qWaitForWindowActive(&window);
    }
};

void pressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget *focus = QApplication::focusWidget();
    QVERIFY(focus);
    QTest::keyClick(focus, Qt::Key(key), modifiers);
}

} // namespace

class tst_SliderKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void directionsFollowQSlider_data();
    void directionsFollowQSlider();
    void homeAndEnd_data();
    void homeAndEnd();
    void handleStopsAtTheOther_data();
    void handleStopsAtTheOther();
    void keyMoveIsADrag_data();
    void keyMoveIsADrag();
    void keyMoveWithTrackingOff();
    void fullIntRange();
    void keysDuringMouseDrag();
    void tabVisitsBothHandles_data();
    void tabVisitsBothHandles();
    void pressFocusesHandle_data();
    void pressFocusesHandle();
    void onlyFocusedHandleDrawsFocus_data();
    void onlyFocusedHandleDrawsFocus();
    void focusFrameAllRound_data();
    void focusFrameAllRound();
    void doubleSliderTakesFocus_data();
    void doubleSliderTakesFocus();
    void doubleRangeSliderTakesFocus_data();
    void doubleRangeSliderTakesFocus();
};

void tst_SliderKeyboard::directionsFollowQSlider_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("invertedAppearance");
    QTest::addColumn<bool>("invertedControls");
    QTest::addColumn<bool>("rightToLeft");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("upper"); // the focused handle

    const QList<QPair<int, const char *>> keys
        = {{Qt::Key_Left, "Left"}, {Qt::Key_Right, "Right"}, {Qt::Key_Up, "Up"},
            {Qt::Key_Down, "Down"}, {Qt::Key_PageUp, "PageUp"}, {Qt::Key_PageDown, "PageDown"}};
    for (Qt::Orientation o : {Qt::Horizontal, Qt::Vertical}) {
        for (int flags = 0; flags < 8; ++flags) {
            const bool appearance = flags & 1;
            const bool controls = flags & 2;
            const bool rtl = flags & 4;
            for (const auto &key : keys) {
                for (bool upper : {false, true}) {
                    QTest::addRow("%s%s%s%s %s %s", orientationName(o),
                        appearance ? " invertedAppearance" : "",
                        controls ? " invertedControls" : "", rtl ? " rtl" : "", key.second,
                        upper ? "upper" : "lower")
                        << o << appearance << controls << rtl << key.first << upper;
                }
            }
        }
    }
}

// Whatever way a QSlider with the same settings moves for a key, the focused
// handle moves too, by the same amount; the base value stays.
void tst_SliderKeyboard::directionsFollowQSlider()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, invertedAppearance);
    QFETCH(bool, invertedControls);
    QFETCH(bool, rightToLeft);
    QFETCH(int, key);
    QFETCH(bool, upper);

    const auto setUp = [&](QAbstractSlider *slider) {
        slider->setOrientation(orientation);
        slider->setRange(0, 100);
        slider->setSingleStep(3);
        slider->setPageStep(12);
        slider->setInvertedAppearance(invertedAppearance);
        slider->setInvertedControls(invertedControls);
        slider->setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    };
    QSlider reference;
    setUp(&reference);
    reference.setValue(50);
    QTest::keyClick(&reference, Qt::Key(key));
    const int delta = reference.value() - 50;
    QVERIFY(delta == 3 || delta == -3 || delta == 12 || delta == -12);

    CMwQRangeSlider slider;
    setUp(&slider);
    slider.setValues(30, 70);
    const int base = slider.value();
    if (upper)
        QTest::keyClick(&slider, Qt::Key_Tab); // from the lower handle to the upper one
    QTest::keyClick(&slider, Qt::Key(key));
    QCOMPARE(slider.minimumValue(), upper ? 30 : 30 + delta);
    QCOMPARE(slider.maximumValue(), upper ? 70 + delta : 70);
    QCOMPARE(slider.minimumPosition(), slider.minimumValue());
    QCOMPARE(slider.maximumPosition(), slider.maximumValue());
    QCOMPARE(slider.value(), base);
}

void tst_SliderKeyboard::homeAndEnd_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("symmetric");
    QTest::addColumn<bool>("upper");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("expectedLower");
    QTest::addColumn<int>("expectedUpper");

    for (Qt::Orientation o : {Qt::Horizontal, Qt::Vertical}) {
        const char *name = orientationName(o);
        // From 30..70 on 0..100.
        QTest::addRow("%s lower Home", name) << o << false << false << int(Qt::Key_Home) << 0 << 70;
        QTest::addRow("%s lower End", name) << o << false << false << int(Qt::Key_End) << 70 << 70;
        QTest::addRow("%s upper Home", name) << o << false << true << int(Qt::Key_Home) << 30 << 30;
        QTest::addRow("%s upper End", name) << o << false << true << int(Qt::Key_End) << 30 << 100;
        // With symmetric moves the handles meet halfway; going outward the
        // other one is clamped at the end, as in a drag.
        QTest::addRow("%s symmetric lower Home", name)
            << o << true << false << int(Qt::Key_Home) << 0 << 100;
        QTest::addRow("%s symmetric lower End", name)
            << o << true << false << int(Qt::Key_End) << 50 << 50;
        QTest::addRow("%s symmetric upper Home", name)
            << o << true << true << int(Qt::Key_Home) << 50 << 50;
        QTest::addRow("%s symmetric upper End", name)
            << o << true << true << int(Qt::Key_End) << 0 << 100;
    }
}

void tst_SliderKeyboard::homeAndEnd()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, symmetric);
    QFETCH(bool, upper);
    QFETCH(int, key);
    QFETCH(int, expectedLower);
    QFETCH(int, expectedUpper);

    CMwQRangeSlider slider(orientation);
    slider.setRange(0, 100);
    slider.setValues(30, 70);
    slider.setSymmetricMoves(symmetric);
    if (upper)
        QTest::keyClick(&slider, Qt::Key_Tab);
    QTest::keyClick(&slider, Qt::Key(key));
    QCOMPARE(slider.minimumValue(), expectedLower);
    QCOMPARE(slider.maximumValue(), expectedUpper);
}

void tst_SliderKeyboard::handleStopsAtTheOther_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("upper");
    for (Qt::Orientation o : {Qt::Horizontal, Qt::Vertical}) {
        QTest::addRow("%s lower", orientationName(o)) << o << false;
        QTest::addRow("%s upper", orientationName(o)) << o << true;
    }
}

void tst_SliderKeyboard::handleStopsAtTheOther()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, upper);

    CMwQRangeSlider slider(orientation);
    slider.setRange(0, 100);
    slider.setSingleStep(2);
    slider.setValues(49, 50);
    if (upper)
        QTest::keyClick(&slider, Qt::Key_Tab);
    const Qt::Key towards = upper ? Qt::Key_Down : Qt::Key_Up;
    QStringList *log = recordRangeSliderSignals(&slider, true);
    QTest::keyClick(&slider, towards);
    QCOMPARE(slider.minimumValue(), upper ? 49 : 50);
    QCOMPARE(slider.maximumValue(), upper ? 49 : 50);
    QVERIFY(!log->isEmpty());

    // Standing on the other handle, the key does nothing at all.
    log->clear();
    QTest::keyClick(&slider, towards);
    QCOMPARE(slider.minimumValue(), upper ? 49 : 50);
    QCOMPARE(slider.maximumValue(), upper ? 49 : 50);
    QCOMPARE(*log, QStringList());
}

void tst_SliderKeyboard::keyMoveIsADrag_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("symmetric");
    QTest::addColumn<bool>("upper");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("to"); // where the key takes the focused handle
    QTest::addColumn<QStringList>("expected");

    for (Qt::Orientation o : {Qt::Horizontal, Qt::Vertical}) {
        const char *name = orientationName(o);
        QTest::addRow("%s lower PageDown", name)
            << o << false << false << int(Qt::Key_PageDown) << 20
            << QStringList({"sliderPressed", "minimumPositionChanged(20)",
                   "positionsChanged(20,60)", "actionTriggered(7)", "valuesChanged(20,60)",
                   "minimumValueChanged(20)", "sliderReleased"});
        QTest::addRow("%s upper PageUp", name)
            << o << false << true << int(Qt::Key_PageUp) << 70
            << QStringList({"sliderPressed", "maximumPositionChanged(70)",
                   "positionsChanged(30,70)", "actionTriggered(7)", "valuesChanged(30,70)",
                   "maximumValueChanged(70)", "sliderReleased"});
        QTest::addRow("%s symmetric lower PageDown", name)
            << o << true << false << int(Qt::Key_PageDown) << 20
            << QStringList(
                   {"sliderPressed", "minimumPositionChanged(20)", "maximumPositionChanged(70)",
                       "positionsChanged(20,70)", "actionTriggered(7)", "valuesChanged(20,70)",
                       "minimumValueChanged(20)", "maximumValueChanged(70)", "sliderReleased"});
        QTest::addRow("%s symmetric upper Down", name)
            << o << true << true << int(Qt::Key_Down) << 59
            << QStringList(
                   {"sliderPressed", "minimumPositionChanged(31)", "maximumPositionChanged(59)",
                       "positionsChanged(31,59)", "actionTriggered(7)", "valuesChanged(31,59)",
                       "minimumValueChanged(31)", "maximumValueChanged(59)", "sliderReleased"});
    }
}

// A key emits what a mouse drag of the same handle to the same place emits,
// in the same order, pressed and released included.
void tst_SliderKeyboard::keyMoveIsADrag()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, symmetric);
    QFETCH(bool, upper);
    QFETCH(int, key);
    QFETCH(int, to);
    QFETCH(QStringList, expected);

    const auto setUp = [&](TestRangeSlider *slider) {
        slider->setRange(0, 100);
        slider->resize(orientation == Qt::Horizontal ? QSize(215, 40) : QSize(40, 215));
        slider->setValues(30, 60);
        slider->setSymmetricMoves(symmetric);
    };

    TestRangeSlider keyed(orientation);
    setUp(&keyed);
    if (upper)
        QTest::keyClick(&keyed, Qt::Key_Tab);
    QStringList *keyLog = recordRangeSliderSignals(&keyed, true);
    QTest::keyClick(&keyed, Qt::Key(key));
    QCOMPARE(*keyLog, expected);
    QVERIFY(!keyed.isSliderDown());
    QVERIFY(!keyed.isMinimumSliderDown());
    QVERIFY(!keyed.isMaximumSliderDown());

    TestRangeSlider dragged(orientation);
    setUp(&dragged);
    QStringList *dragLog = recordRangeSliderSignals(&dragged, true);
    const int from = upper ? 60 : 30;
    const QPoint at = (upper ? dragged.upperRect() : dragged.lowerRect()).center();
    const int delta = dragged.pixelDelta(from, to);
    const QPoint target
        = at + (orientation == Qt::Horizontal ? QPoint(delta, 0) : QPoint(0, delta));
    sendMouse(&dragged, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    sendMouse(&dragged, QEvent::MouseMove, target, Qt::NoButton, Qt::LeftButton);
    sendMouse(&dragged, QEvent::MouseButtonRelease, target, Qt::LeftButton, Qt::NoButton);
    QCOMPARE(*keyLog, *dragLog);
    QCOMPARE(keyed.minimumValue(), dragged.minimumValue());
    QCOMPARE(keyed.maximumValue(), dragged.maximumValue());
}

void tst_SliderKeyboard::keyMoveWithTrackingOff()
{
    CMwQRangeSlider slider(Qt::Horizontal);
    slider.setRange(0, 100);
    slider.setValues(30, 60);
    slider.setTracking(false);
    QStringList *log = recordRangeSliderSignals(&slider, true);
    QTest::keyClick(&slider, Qt::Key_Right);
    // The key commits at once, as a drag with tracking on would.
    QCOMPARE(*log,
        QStringList({"sliderPressed", "minimumPositionChanged(31)", "positionsChanged(31,60)",
            "actionTriggered(7)", "valuesChanged(31,60)", "minimumValueChanged(31)",
            "sliderReleased"}));
    QVERIFY(!slider.hasTracking());
}

void tst_SliderKeyboard::fullIntRange()
{
    CMwQRangeSlider slider(Qt::Horizontal);
    slider.setRange(INT_MIN, INT_MAX);
    slider.setPageStep(INT_MAX);
    slider.setValues(INT_MIN, INT_MAX);
    QTest::keyClick(&slider, Qt::Key_PageDown);
    QCOMPARE(slider.minimumValue(), INT_MIN);
    QTest::keyClick(&slider, Qt::Key_PageUp);
    QCOMPARE(slider.minimumValue(), -1);
    QTest::keyClick(&slider, Qt::Key_End);
    QCOMPARE(slider.minimumValue(), INT_MAX);
    QTest::keyClick(&slider, Qt::Key_Home);
    QCOMPARE(slider.minimumValue(), INT_MIN);

    // Symmetric moves meet halfway across the whole int range.
    slider.setValues(INT_MIN, INT_MAX);
    slider.setSymmetricMoves(true);
    QTest::keyClick(&slider, Qt::Key_End);
    QCOMPARE(slider.minimumValue(), -1);
    QCOMPARE(slider.maximumValue(), 0);
}

void tst_SliderKeyboard::keysDuringMouseDrag()
{
    TestRangeSlider slider(Qt::Horizontal);
    slider.setRange(0, 100);
    slider.resize(215, 40);
    slider.setValues(30, 60);
    sendMouse(&slider, QEvent::MouseButtonPress, slider.lowerRect().center(), Qt::LeftButton,
        Qt::LeftButton);
    QStringList *log = recordRangeSliderSignals(&slider, true);
    QTest::keyClick(&slider, Qt::Key_Right);
    QCOMPARE(*log, QStringList());
    QCOMPARE(slider.minimumValue(), 30);
    QVERIFY(slider.isMinimumSliderDown());
}

void tst_SliderKeyboard::tabVisitsBothHandles_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::newRow("horizontal") << Qt::Horizontal;
    QTest::newRow("vertical") << Qt::Vertical;
}

void tst_SliderKeyboard::tabVisitsBothHandles()
{
    QFETCH(Qt::Orientation, orientation);
    auto *slider = new CMwQRangeSlider(orientation);
    slider->setRange(0, 100);
    slider->setValues(30, 60);
    FocusRow row(slider);
    QWidget::setTabOrder(row.before, slider);
    QWidget::setTabOrder(slider, row.after);
    QVERIFY(row.show());
    row.before->setFocus();
    QTRY_VERIFY(row.before->hasFocus());

    // Tab: lower handle, upper handle, out.
    pressKey(Qt::Key_Tab);
    QVERIFY(slider->hasFocus());
    pressKey(Qt::Key_Right);
    QCOMPARE(slider->minimumValue(), 31);
    pressKey(Qt::Key_Tab);
    QVERIFY(slider->hasFocus());
    pressKey(Qt::Key_Right);
    QCOMPARE(slider->maximumValue(), 61);
    pressKey(Qt::Key_Tab);
    QVERIFY(row.after->hasFocus());

    // Shift+Tab, in both spellings: upper handle, lower handle, out.
    pressKey(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(slider->hasFocus());
    pressKey(Qt::Key_Left);
    QCOMPARE(slider->maximumValue(), 60);
    pressKey(Qt::Key_Tab, Qt::ShiftModifier);
    QVERIFY(slider->hasFocus());
    pressKey(Qt::Key_Left);
    QCOMPARE(slider->minimumValue(), 30);
    pressKey(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(row.before->hasFocus());
    QCOMPARE(slider->minimumValue(), 30);
    QCOMPARE(slider->maximumValue(), 60);
}

void tst_SliderKeyboard::pressFocusesHandle_data() { tabVisitsBothHandles_data(); }

void tst_SliderKeyboard::pressFocusesHandle()
{
    QFETCH(Qt::Orientation, orientation);
    auto *slider = new TestRangeSlider(orientation);
    slider->setRange(0, 100);
    slider->setValues(30, 60);
    FocusRow row(slider);
    QVERIFY(row.show());

    const QPoint upper = slider->upperRect().center();
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, upper);
    QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, upper);
    QVERIFY(slider->hasFocus());
    pressKey(Qt::Key_Up);
    QCOMPARE(slider->minimumValue(), 30);
    QCOMPARE(slider->maximumValue(), 61);

    const QPoint lower = slider->lowerRect().center();
    QTest::mousePress(slider, Qt::LeftButton, Qt::NoModifier, lower);
    QTest::mouseRelease(slider, Qt::LeftButton, Qt::NoModifier, lower);
    pressKey(Qt::Key_Up);
    QCOMPARE(slider->minimumValue(), 31);
    QCOMPARE(slider->maximumValue(), 61);
}

void tst_SliderKeyboard::onlyFocusedHandleDrawsFocus_data() { tabVisitsBothHandles_data(); }

void tst_SliderKeyboard::onlyFocusedHandleDrawsFocus()
{
    QFETCH(Qt::Orientation, orientation);
    RecordingStyle style;
    auto *slider = new TestRangeSlider(orientation);
    slider->setStyle(&style);
    slider->setRange(0, 100);
    slider->setValues(20, 80);
    FocusRow row(slider);
    QWidget::setTabOrder(row.before, slider);
    QVERIFY(row.show());
    row.before->setFocus();

    const auto handleDraws = [&]() {
        style.draws.clear();
        const QImage image = slider->grab().toImage();
        QMap<int, bool> focus; // position -> drawn with focus
        for (const RecordingStyle::Draw &draw : qAsConst(style.draws)) {
            if (draw.subControls & QStyle::SC_SliderHandle)
                focus.insert(draw.position, draw.focus);
        }
        return qMakePair(image, focus);
    };

    const auto unfocused = handleDraws();
    QCOMPARE(unfocused.second.value(20, true), false);
    QCOMPARE(unfocused.second.value(80, true), false);

    pressKey(Qt::Key_Tab);
    QVERIFY(slider->hasFocus());
    const auto lower = handleDraws();
    QCOMPARE(lower.second.value(20, false), true);
    QCOMPARE(lower.second.value(80, true), false);
    // The groove still shows the focus, as on a focused QSlider.
    bool grooveFocus = false;
    for (const RecordingStyle::Draw &draw : qAsConst(style.draws))
        grooveFocus |= (draw.subControls & QStyle::SC_SliderGroove) && draw.focus;
    QVERIFY(grooveFocus);

    pressKey(Qt::Key_Tab);
    const auto upper = handleDraws();
    QCOMPARE(upper.second.value(20, true), false);
    QCOMPARE(upper.second.value(80, false), true);

    // Fusion draws a focused handle differently (after a keyboard focus
    // change); each render differs from the other at its focused handle.
    const QRect lowerRect = slider->handleRect(20);
    const QRect upperRect = slider->handleRect(80);
    QVERIFY(lower.first.copy(lowerRect) != upper.first.copy(lowerRect));
    QVERIFY(lower.first.copy(upperRect) != upper.first.copy(upperRect));
    QVERIFY(unfocused.first.copy(lowerRect) != lower.first.copy(lowerRect));
    slider->setStyle(nullptr);
}

void tst_SliderKeyboard::focusFrameAllRound_data() { tabVisitsBothHandles_data(); }

// Under the Windows style a focused slider is framed all round; the range
// slider's frame matches a focused QSlider's wherever no handle covers it.
void tst_SliderKeyboard::focusFrameAllRound()
{
    QFETCH(Qt::Orientation, orientation);
    std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
    QVERIFY(windows);
    const QSize size = orientation == Qt::Horizontal ? QSize(215, 40) : QSize(40, 215);

    // Renders the slider focused through Tab, or not focused at all.
    const auto render = [&](QAbstractSlider *slider, bool focused) {
        slider->setStyle(windows.get());
        slider->setFixedSize(size);
        FocusRow row(slider);
        QWidget::setTabOrder(row.before, slider);
        if (!row.show())
            return QImage();
        row.before->setFocus();
        if (focused)
            QTest::keyClick(row.before, Qt::Key_Tab);
        if (focused != slider->hasFocus())
            return QImage();
        const QImage image = slider->grab().toImage();
        return image;
    };
    const auto handleRect = [&](QAbstractSlider *slider, int position) {
        QStyleOptionSlider opt;
        opt.initFrom(slider);
        opt.orientation = orientation;
        opt.minimum = slider->minimum();
        opt.maximum = slider->maximum();
        opt.sliderPosition = opt.sliderValue = position;
        if (orientation == Qt::Horizontal)
            opt.state |= QStyle::State_Horizontal;
        return windows->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderHandle, slider);
    };

    auto *reference = new QSlider(orientation);
    reference->setRange(0, 100);
    reference->setValue(50);
    reference->setStyle(windows.get());
    reference->setFixedSize(size);
    QStyleOptionSlider option;
    option.initFrom(reference);
    option.orientation = orientation;
    const QRect frame = windows->subElementRect(QStyle::SE_SliderFocusRect, &option, reference);
    const QRect referenceHandle = handleRect(reference, 50);
    QVERIFY(frame.isValid());
    // The row owns the slider and deletes it with itself.
    const QImage framed = render(reference, true);
    QVERIFY(!framed.isNull());

    for (bool upper : {false, true}) {
        auto *slider = new CMwQRangeSlider(orientation);
        slider->setRange(0, 100);
        slider->setValues(20, 80);
        slider->setStyle(windows.get());
        slider->setFixedSize(size);
        const QRect lowerRect = handleRect(slider, 20);
        const QRect upperRect = handleRect(slider, 80);
        if (upper)
            QTest::keyClick(slider, Qt::Key_Tab);
        // Entering by Tab focuses the lower handle; the upper one follows.
        const QImage image = render(slider, true);
        QVERIFY(!image.isNull());
        QCOMPARE(image.size(), framed.size());

        int compared = 0;
        for (int x = frame.left(); x <= frame.right(); ++x) {
            for (int y = frame.top(); y <= frame.bottom(); ++y) {
                const QPoint p(x, y);
                const bool onFrame = x == frame.left() || x == frame.right() || y == frame.top()
                    || y == frame.bottom();
                if (!onFrame || lowerRect.contains(p) || upperRect.contains(p)
                    || referenceHandle.contains(p))
                    continue;
                QCOMPARE(image.pixel(p), framed.pixel(p));
                ++compared;
            }
        }
        QVERIFY(compared > 200);
    }

    // The frame is there to be seen: an unfocused slider has none.
    auto *plain = new CMwQRangeSlider(orientation);
    plain->setRange(0, 100);
    plain->setValues(20, 80);
    const QImage unframed = render(plain, false);
    QVERIFY(!unframed.isNull());
    int differing = 0;
    for (int x = frame.left(); x <= frame.right(); ++x)
        differing += unframed.pixel(x, frame.top()) != framed.pixel(x, frame.top());
    for (int y = frame.top(); y <= frame.bottom(); ++y)
        differing += unframed.pixel(frame.left(), y) != framed.pixel(frame.left(), y);
    QVERIFY(differing > 40);
}

void tst_SliderKeyboard::doubleSliderTakesFocus_data() { tabVisitsBothHandles_data(); }

void tst_SliderKeyboard::doubleSliderTakesFocus()
{
    QFETCH(Qt::Orientation, orientation);
    auto *slider = new CMwQDoubleSlider(orientation);
    slider->setRange(0.0, 1.0);
    slider->setSingleStep(0.25);
    FocusRow row(slider);
    // Placed last in the tab chain, then moved between the two line edits.
    QWidget::setTabOrder(row.before, slider);
    QWidget::setTabOrder(slider, row.after);
    QVERIFY(row.show());

    QCOMPARE(slider->focusProxy(), slider->slider());
    QVERIFY(slider->focusPolicy() & Qt::TabFocus);
    slider->setFocus();
    QVERIFY(slider->hasFocus());
    QCOMPARE(QApplication::focusWidget(), slider->slider());

    row.before->setFocus();
    pressKey(Qt::Key_Tab);
    QVERIFY(slider->hasFocus());
    pressKey(Qt::Key_Right);
    QCOMPARE(slider->value(), 0.25);
    pressKey(Qt::Key_Tab);
    QVERIFY(row.after->hasFocus());
    pressKey(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(slider->hasFocus());
}

void tst_SliderKeyboard::doubleRangeSliderTakesFocus_data() { tabVisitsBothHandles_data(); }

void tst_SliderKeyboard::doubleRangeSliderTakesFocus()
{
    QFETCH(Qt::Orientation, orientation);
    auto *slider = new CMwQDoubleRangeSlider(orientation);
    slider->setRange(0.0, 1.0);
    slider->setSingleStep(0.25);
    slider->setValues(0.25, 0.75);
    FocusRow row(slider);
    QWidget::setTabOrder(row.before, slider);
    QWidget::setTabOrder(slider, row.after);
    QVERIFY(row.show());

    slider->setFocus();
    QVERIFY(slider->hasFocus());

    row.before->setFocus();
    pressKey(Qt::Key_Tab);
    QVERIFY(slider->hasFocus());
    pressKey(Qt::Key_Left);
    QCOMPARE(slider->minimumValue(), 0.0);
    pressKey(Qt::Key_Tab);
    QVERIFY(slider->hasFocus());
    pressKey(Qt::Key_Right);
    QCOMPARE(slider->maximumValue(), 1.0);
    pressKey(Qt::Key_Tab);
    QVERIFY(row.after->hasFocus());
    pressKey(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(slider->hasFocus());
    pressKey(Qt::Key_Home);
    QCOMPARE(slider->maximumValue(), 0.0);
}

VEL_TEST_MAIN(tst_SliderKeyboard)

#include "tst_sliderkeyboard.moc"
