#ifndef VEL_TESTS_SLIDER_TEST_SUPPORT_H
#define VEL_TESTS_SLIDER_TEST_SUPPORT_H

// Helpers shared by the slider tests: style options and rectangles as the
// style gives them, rendering, mouse and tool-tip events, signal logs.

#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtGui/QFontMetrics>
#include <QtGui/QHelpEvent>
#include <QtGui/QImage>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QSlider>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QWidget>

#include <climits>
#include <limits>

// Style options ----------------------------------------------------------

// QSlider's own style option for any slider. initStyleOption() is protected;
// a pointer to it, taken in a subclass, may be applied to every QSlider.
struct SliderOptionAccess : QSlider
{
    static void fill(const QSlider *slider, QStyleOptionSlider *option)
    {
        (slider->*(&SliderOptionAccess::initStyleOption))(option);
    }
};

inline void sliderStyleOption(const QSlider *slider, QStyleOptionSlider *option)
{
    SliderOptionAccess::fill(slider, option);
}

inline QStyleOptionSlider sliderOption(const QSlider *slider)
{
    QStyleOptionSlider option;
    sliderStyleOption(slider, &option);
    return option;
}

// A part of the slider where the style puts it, for the slider's own option.
inline QRect subControlRect(const QSlider *slider, QStyle::SubControl part)
{
    const QStyleOptionSlider option = sliderOption(slider);
    return slider->style()->subControlRect(QStyle::CC_Slider, &option, part, slider);
}

// The handle's rectangle with the handle at \a position (and \a value).
inline QRect handleRectAt(const QSlider *slider, int position, int value)
{
    QStyleOptionSlider option = sliderOption(slider);
    option.sliderPosition = position;
    option.sliderValue = value;
    return slider->style()->subControlRect(
        QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider);
}

// What the widget's own style draws for the inner slider of a widget.
inline QRect innerHandleRect(const QSlider *inner)
{
    return subControlRect(inner, QStyle::SC_SliderHandle);
}

// The track the handle's leading edge moves along, from the style's groove
// and handle rectangles: where it starts and how many pixels it spans.
inline void sliderTrack(const QSlider *slider, int *start, int *span)
{
    const QRect gr = subControlRect(slider, QStyle::SC_SliderGroove);
    const QRect sr = subControlRect(slider, QStyle::SC_SliderHandle);
    if (slider->orientation() == Qt::Horizontal) {
        *start = gr.x();
        *span = gr.right() - sr.width() + 1 - gr.x();
    } else {
        *start = gr.y();
        *span = gr.bottom() - sr.height() + 1 - gr.y();
    }
}

inline QPoint handleCentre(const QSlider *slider)
{
    return subControlRect(slider, QStyle::SC_SliderHandle).center();
}

// Tick geometry ----------------------------------------------------------

// Where the tick marks and labels of a CMwQSlider (or a range slider) go,
// measured from what the style gives: half the handle length, the space the
// handle moves in and the style's groove rectangle. The lines the marks start
// on are the design's, stated here against that rectangle: two pixels outside
// its top and left edges, one pixel inside its bottom and right edges.
struct SliderTickGeometry
{
    explicit SliderTickGeometry(const QSlider *slider)
        : opt(sliderOption(slider))
    {
        const QStyle *style = slider->style();
        half = style->pixelMetric(QStyle::PM_SliderLength, &opt, slider) / 2;
        available = style->pixelMetric(QStyle::PM_SliderSpaceAvailable, &opt, slider);
        rawGroove = style->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderGroove, slider);
        handle = style->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderHandle, slider);
        groove = QRect(QPoint(rawGroove.left() - 2, rawGroove.top() - 2),
            QPoint(rawGroove.right() - 1, rawGroove.bottom() - 1));
    }

    // The pixel of a value along the track, where its mark stands.
    int pos(int value) const
    {
        return QStyle::sliderPositionFromValue(opt.minimum, opt.maximum, value, available, false)
            + half;
    }

    // Where a label lands: the text's ink box centred on the value, shifted
    // (the right end winning) to stay inside the track, its bottom three
    // pixels above the style's groove or its top four pixels below it.
    QRect labelRect(const QFont &font, int value, const QString &text, bool above) const
    {
        QRect r = QFontMetrics(font).boundingRect(text);
        r.moveCenter(QPoint(pos(value), 0));
        if (r.left() < half)
            r.moveLeft(half);
        if (r.right() > half + available)
            r.moveRight(half + available);
        if (above)
            r.moveBottom(rawGroove.top() - 3);
        else
            r.moveTop(rawGroove.bottom() + 4);
        return r;
    }

    QStyleOptionSlider opt;
    int half = 0;
    int available = 0;
    QRect rawGroove; // as the style gives it
    QRect groove; // the lines the marks start on
    QRect handle;
};

// Rendering --------------------------------------------------------------

inline QImage renderOf(QWidget *widget)
{
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta);
    widget->render(&image);
    return image;
}

inline QImage renderOf(QWidget &widget) { return renderOf(&widget); }

// Dark enough to be a mark or a text under Fusion's default palette.
inline bool isInk(const QImage &image, int x, int y) { return qGray(image.pixel(x, y)) < 80; }

inline bool isBackground(const QImage &image, int x, int y)
{
    return image.pixel(x, y) == QApplication::palette().color(QPalette::Window).rgb();
}

// A label as the slider lays it out: whole, from the corner of its
// rectangle (the text's ink box, which the last glyph may pass), in the
// widget's font and text colour.
inline void drawLabel(QImage *image, const QWidget &widget, const QRect &r, const QString &text)
{
    QPainter painter(image);
    painter.setFont(widget.font());
    painter.setPen(widget.palette().color(QPalette::WindowText));
    painter.drawText(QRectF(r), Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, text);
}

// Events -----------------------------------------------------------------

inline bool sendMouse(QWidget *widget, QEvent::Type type, const QPoint &pos, Qt::MouseButton button,
    Qt::MouseButtons buttons)
{
    QMouseEvent e(type, pos, widget->mapToGlobal(pos), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &e);
    return e.isAccepted();
}

// Every event with the left button as its cause (also the moves).
inline bool sendMouse(
    QWidget *widget, QEvent::Type type, const QPoint &pos, Qt::MouseButtons buttons)
{
    return sendMouse(widget, type, pos, Qt::LeftButton, buttons);
}

inline bool press(QWidget *widget, const QPoint &pos)
{
    return sendMouse(widget, QEvent::MouseButtonPress, pos, Qt::LeftButton, Qt::LeftButton);
}

inline bool move(QWidget *widget, const QPoint &pos)
{
    return sendMouse(widget, QEvent::MouseMove, pos, Qt::NoButton, Qt::LeftButton);
}

inline void release(QWidget *widget, const QPoint &pos)
{
    sendMouse(widget, QEvent::MouseButtonRelease, pos, Qt::LeftButton, Qt::NoButton);
}

// The tool tip shown for a help event at \a pos, hidden again.
inline QString toolTipAt(QWidget *widget, const QPoint &pos)
{
    QToolTip::hideText();
    QHelpEvent e(QEvent::ToolTip, pos, widget->mapToGlobal(pos));
    QApplication::sendEvent(widget, &e);
    const QString text = QToolTip::text();
    QToolTip::hideText();
    return text;
}

// Signals ----------------------------------------------------------------

// Every signal of a range slider and its slider actions, in order, in one
// list that lives as long as the slider. With \a pressesAndValue, also
// sliderPressed(), sliderReleased() and the base slider's valueChanged().
inline QStringList *recordRangeSliderSignals(CMwQRangeSlider *slider, bool pressesAndValue = false)
{
    auto *log = new QStringList;
    QObject::connect(slider, &QObject::destroyed, [log]() { delete log; });
    const auto one = [log](const char *name) {
        return [log, name](int v) {
            log->append(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(v));
        };
    };
    const auto two = [log](const char *name) {
        return [log, name](int a, int b) {
            log->append(QStringLiteral("%1(%2,%3)").arg(QLatin1String(name)).arg(a).arg(b));
        };
    };
    QObject::connect(slider, &CMwQRangeSlider::minimumValueChanged, one("minimumValueChanged"));
    QObject::connect(slider, &CMwQRangeSlider::maximumValueChanged, one("maximumValueChanged"));
    QObject::connect(slider, &CMwQRangeSlider::valuesChanged, two("valuesChanged"));
    QObject::connect(
        slider, &CMwQRangeSlider::minimumPositionChanged, one("minimumPositionChanged"));
    QObject::connect(
        slider, &CMwQRangeSlider::maximumPositionChanged, one("maximumPositionChanged"));
    QObject::connect(slider, &CMwQRangeSlider::positionsChanged, two("positionsChanged"));
    QObject::connect(slider, &QAbstractSlider::actionTriggered, one("actionTriggered"));
    if (pressesAndValue) {
        QObject::connect(slider, &QAbstractSlider::sliderPressed,
            [log]() { log->append(QStringLiteral("sliderPressed")); });
        QObject::connect(slider, &QAbstractSlider::sliderReleased,
            [log]() { log->append(QStringLiteral("sliderReleased")); });
        QObject::connect(slider, &QAbstractSlider::valueChanged, one("valueChanged"));
    }
    return log;
}

// Data -------------------------------------------------------------------

// The rows of the floating-point sliders' test of inner ranges wider than the
// style's arithmetic takes.
inline void addInnerRangeRows()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<int>("innerMinimum");
    QTest::addColumn<int>("innerMaximum");
    // The value at the end of the track: the inner maximum plus the
    // fraction of a step the minimum left over (an offset of its own).
    QTest::addColumn<double>("top");

    // Rows named by the width of the inner range (single step 1). Qt 5.15's
    // style arithmetic takes widths up to 2^31 - 1 (the first row passes
    // straight to it); it divides by zero at 2^31 and wraps around above.
    QTest::newRow("2^31 - 1 wide: -2147483647..0")
        << -2147483647.0 << 0.0 << INT_MIN + 1 << 0 << 0.0;
    QTest::newRow("2^31 wide: -1e10..0") << -1e10 << 0.0 << INT_MIN << 0 << -7852516352.0;
    QTest::newRow("2^31 wide: -1..3e9") << -1.0 << 3e9 << -1 << INT_MAX << 2147483647.0;
    QTest::newRow("2^32 - 1 wide: -1e10..1e10")
        << -1e10 << 1e10 << INT_MIN << INT_MAX << -5705032705.0;
}

// Values -----------------------------------------------------------------

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

inline const char *orientationName(Qt::Orientation o)
{
    return o == Qt::Horizontal ? "horizontal" : "vertical";
}

#endif // VEL_TESTS_SLIDER_TEST_SUPPORT_H
