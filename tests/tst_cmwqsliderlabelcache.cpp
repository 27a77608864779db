// Tick labels are laid out once and kept between paints. Whatever changes
// in between, a slider that has painted before must draw exactly what a new
// slider in the same state draws on its first paint.

#include "cmwqslider_p.h"
#include "vel_test_main.h"

#include <vel_qt_widgets/CMwQRangeSlider.h>
#include <vel_qt_widgets/CMwQSlider.h>

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOptionSlider>

#include <cstring>
#include <functional>
#include <memory>

namespace {

using Change = std::function<void(CMwQSlider &)>;

enum Kind { Plain, Range };

// Fusion with a handle eight pixels longer: a slider eight pixels wider
// keeps the length of its track, and only the track's start moves.
class LongHandleStyle : public QProxyStyle
{
    Q_OBJECT

public:
    LongHandleStyle()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
    {
    }
    int pixelMetric(
        PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        const int base = QProxyStyle::pixelMetric(metric, option, widget);
        return metric == PM_SliderLength ? base + 8 : base;
    }
};

std::unique_ptr<CMwQSlider> makeSlider(Kind kind)
{
    std::unique_ptr<CMwQSlider> slider;
    if (kind == Range) {
        auto *range = new CMwQRangeSlider(Qt::Horizontal);
        range->setRange(0, 100);
        range->setValues(20, 70);
        slider.reset(range);
    } else {
        slider.reset(new CMwQSlider(Qt::Horizontal));
        slider->setRange(0, 100);
        slider->setValue(30);
    }
    slider->setTickPosition(QSlider::TicksBelow);
    slider->setTickInterval(10);
    slider->setTickItemList({{0, QSlider::TicksBelow, QStringLiteral("low")},
        {37, QSlider::TicksBothSides, QStringLiteral("37")},
        {60, QSlider::TicksAbove, QStringLiteral("(a) b  ")},
        {100, QSlider::TicksBothSides, QStringLiteral("100 °C")}});
    slider->resize(300, slider->sizeHint().height() + 8);
    return slider;
}

// Renders through a painter of the given direction.
QImage renderOf(QWidget &widget, Qt::LayoutDirection direction = Qt::LayoutDirectionAuto)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    painter.setLayoutDirection(direction);
    widget.render(&painter);
    return image;
}

// The label texts removed, everything else kept.
void blankLabels(CMwQSlider &slider)
{
    CMwQSlider::TMwTickItemList items = slider.tickItemList();
    for (CMwQSlider::SMwTickItem &item : items)
        item.text.clear();
    slider.setTickItemList(items);
}

// The pixels that the labels change: where a picture differs from the same
// slider's picture without label texts.
QVector<QPoint> labelPixels(const QImage &labelled, const QImage &unlabelled)
{
    QVector<QPoint> pixels;
    for (int y = 0; y < labelled.height(); ++y) {
        for (int x = 0; x < labelled.width(); ++x) {
            if (labelled.pixel(x, y) != unlabelled.pixel(x, y))
                pixels << QPoint(x, y);
        }
    }
    return pixels;
}

// The label pixels of a slider in its current state.
QVector<QPoint> labelPixelsOf(Kind kind, const Change &change)
{
    const auto slider = makeSlider(kind);
    if (change)
        change(*slider);
    const QImage labelled = renderOf(*slider);
    blankLabels(*slider);
    return labelPixels(labelled, renderOf(*slider));
}

// Exposes the style option the slider paints with.
class OptionSlider : public CMwQSlider
{
    Q_OBJECT

public:
    using CMwQSlider::CMwQSlider;
    QStyleOptionSlider option() const
    {
        QStyleOptionSlider opt;
        initStyleOption(&opt);
        return opt;
    }
};

// Where the label of an item stands: the text's ink box centred on the
// item's position, kept inside the track, above or below the groove.
QRect labelRect(const OptionSlider &slider, int value, const QString &text, bool above)
{
    const QStyleOptionSlider opt = slider.option();
    const QStyle *style = slider.style();
    const int half = style->pixelMetric(QStyle::PM_SliderLength, &opt, &slider) / 2;
    const int available = style->pixelMetric(QStyle::PM_SliderSpaceAvailable, &opt, &slider);
    const QRect groove
        = style->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderGroove, &slider)
              .adjusted(-2, -2, -1, -1);
    const int p
        = QStyle::sliderPositionFromValue(opt.minimum, opt.maximum, value, available, false);
    QRect r = QFontMetrics(slider.font()).boundingRect(text);
    r.moveCenter(QPoint(half + p, 0));
    if (r.left() < half)
        r.moveLeft(half);
    if (r.right() > half + available)
        r.moveRight(half + available);
    if (above)
        r.moveBottom(groove.top() - 1);
    else
        r.moveTop(groove.bottom() + 5);
    return r;
}

// What a change does to the labels themselves.
enum LabelEffect {
    LabelsMove, // other pixels are label pixels
    LabelsRecoloured, // the same pixels, in another colour
    LabelsMayStay, // the marks or handles change; the labels may stay
};

// The slider's paint with its labels blitted from images, and with them
// drawn as text, through a painter prepared by \a prepare.
using Prepare = std::function<void(QPainter &)>;
QImage renderStamped(
    CMwQSlider &slider, bool stamped, QImage::Format format, qreal ratio, const Prepare &prepare)
{
    CMwQSliderPrivate::get(&slider)->stampLabels = stamped;
    QImage image(slider.size() * ratio, format);
    image.setDevicePixelRatio(ratio);
    image.fill(QColor(60, 200, 120));
    QPainter painter(&image);
    if (prepare)
        prepare(painter);
    slider.render(&painter);
    painter.end();
    CMwQSliderPrivate::get(&slider)->stampLabels = true;
    return image;
}

bool sameBytes(const QImage &a, const QImage &b)
{
    if (a.size() != b.size() || a.format() != b.format())
        return false;
    for (int y = 0; y < a.height(); ++y) {
        // Only the pixels, not the padding at the end of a line.
        if (memcmp(a.constScanLine(y), b.constScanLine(y), size_t(a.width() * a.depth() / 8)))
            return false;
    }
    return true;
}

QPalette darkPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(40, 40, 44));
    palette.setColor(QPalette::WindowText, QColor(225, 225, 225));
    palette.setColor(QPalette::Button, QColor(55, 55, 60));
    palette.setColor(QPalette::ButtonText, QColor(230, 230, 230));
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::Highlight, QColor(40, 110, 200));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(120, 120, 120, 180));
    return palette;
}

// Labels of every kind: side by side and overlapping, several lines, length
// variants, accents, descenders, kerning pairs and ligatures.
CMwQSlider::TMwTickItemList richLabels()
{
    return {{0, QSlider::TicksBelow, QStringLiteral("low")},
        {12, QSlider::TicksBothSides, QStringLiteral("gjqy")},
        {20, QSlider::TicksAbove, QStringLiteral("two\nlines")},
        {30, QSlider::TicksBelow, QStringLiteral("AVAWAY")},
        {33, QSlider::TicksBelow, QStringLiteral("overlapping neighbour")},
        {45, QSlider::TicksAbove,
            QStringLiteral("a rather long caption") + QChar(0x9c) + QStringLiteral("short")},
        {55, QSlider::TicksBothSides, QStringLiteral("office ffi")},
        {70, QSlider::TicksBothSides, QStringLiteral("Wf 7")},
        {85, QSlider::TicksAbove, QStringLiteral("\u00e9t\u00e9 \u00df")},
        {100, QSlider::TicksBothSides, QStringLiteral("100 \u00b0C")}};
}

} // namespace

Q_DECLARE_METATYPE(Change)

class tst_CMwQSliderLabelCache : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void labelsAsDrawTextDrawsThem_data();
    void labelsAsDrawTextDrawsThem();
    void repaintWithoutChangeIsIdentical_data();
    void repaintWithoutChangeIsIdentical();
    void changeDrawsAsNewSlider_data();
    void changeDrawsAsNewSlider();
    void painterDirection_data();
    void painterDirection();
    void stampsDrawAsText();
    void stampsFollowChanges();

private:
    std::unique_ptr<QStyle> m_windows;
    std::unique_ptr<QStyle> m_longHandle;
};

void tst_CMwQSliderLabelCache::initTestCase()
{
    m_windows.reset(QStyleFactory::create(QStringLiteral("Windows")));
    QVERIFY(m_windows);
    m_longHandle.reset(new LongHandleStyle);
}

void tst_CMwQSliderLabelCache::labelsAsDrawTextDrawsThem_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("sides");
    QTest::addColumn<int>("direction"); // of the painter

    const struct
    {
        QString text;
        QSlider::TickPosition sides;
    } labels[] = {
        {QStringLiteral("100 °C"), QSlider::TicksBothSides},
        {QStringLiteral(" spaces around  "), QSlider::TicksBothSides},
        // Below only: a second line above would reach under the groove,
        // which the slider draws over its labels.
        {QStringLiteral("two\nlines"), QSlider::TicksBelow},
        {QStringLiteral("tab\tand\rreturn"), QSlider::TicksBothSides},
        {QStringLiteral("(1) \u05d0\u05d1"), QSlider::TicksBothSides},
        // Length variants: drawText() takes the first that fits, else the last.
        {QStringLiteral("a long first variant\u009cshort\u009cs"), QSlider::TicksBothSides},
    };
    for (const auto &label : labels) {
        for (int direction : {int(Qt::LeftToRight), int(Qt::RightToLeft)}) {
            QString name = label.text;
            name.replace(QChar(0x9c), QLatin1Char('|'))
                .replace(QLatin1Char('\n'), QLatin1Char('|'));
            QTest::addRow("%s, %s", qPrintable(name),
                direction == Qt::RightToLeft ? "right to left" : "left to right")
                << label.text << int(label.sides) << direction;
        }
    }
}

void tst_CMwQSliderLabelCache::labelsAsDrawTextDrawsThem()
{
    // The labels are what QPainter::drawText() draws from the corner of each
    // label rectangle, unclipped, as the slider drew them before it kept
    // their layouts.
    QFETCH(QString, text);
    QFETCH(int, sides);
    QFETCH(int, direction);
    const auto layoutDirection = Qt::LayoutDirection(direction);

    OptionSlider slider(Qt::Horizontal);
    slider.setRange(0, 100);
    slider.setValue(80);
    slider.setTickItemList({{40, QSlider::TickPosition(sides), text}});
    slider.resize(260, slider.sizeHint().height() + 24);
    const QImage labelled = renderOf(slider, layoutDirection);
    QCOMPARE(renderOf(slider, layoutDirection), labelled);

    slider.setTickItemList({{40, QSlider::TickPosition(sides), QString()}});
    QImage expected = renderOf(slider, layoutDirection);
    QVERIFY(expected != labelled);
    QPainter painter(&expected);
    painter.setLayoutDirection(layoutDirection);
    painter.setFont(slider.font());
    painter.setPen(slider.palette().color(QPalette::WindowText));
    for (bool above : {true, false}) {
        if (!(sides & (above ? QSlider::TicksAbove : QSlider::TicksBelow)))
            continue;
        painter.drawText(QRectF(labelRect(slider, 40, text, above)),
            Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, text);
    }
    painter.end();
    QCOMPARE(labelled, expected);
}

void tst_CMwQSliderLabelCache::repaintWithoutChangeIsIdentical_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("CMwQSlider") << int(Plain);
    QTest::newRow("CMwQRangeSlider") << int(Range);
}

void tst_CMwQSliderLabelCache::repaintWithoutChangeIsIdentical()
{
    QFETCH(int, kind);
    const auto slider = makeSlider(Kind(kind));
    const QImage first = renderOf(*slider);
    QCOMPARE(renderOf(*slider), first);
    // The labels are there to be kept: without their texts the picture
    // loses them, above and below the groove.
    blankLabels(*slider);
    const QImage blank = renderOf(*slider);
    QVERIFY(blank != first);
}

void tst_CMwQSliderLabelCache::changeDrawsAsNewSlider_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<Change>("change");
    QTest::addColumn<int>("effect"); // LabelEffect

    struct Row
    {
        const char *name;
        Change change;
        LabelEffect effect;
    };
    QStyle *windows = m_windows.get();
    QStyle *longHandle = m_longHandle.get();
    const Row rows[] = {
        {"font",
            [](CMwQSlider &s) {
                QFont font = s.font();
                font.setPixelSize(17);
                font.setBold(true);
                s.setFont(font);
            },
            LabelsMove},
        {"tick list",
            [](CMwQSlider &s) {
                s.setTickItemList({{10, QSlider::TicksBothSides, QStringLiteral("ten")},
                    {37, QSlider::TicksBelow, QStringLiteral("thirty-seven")},
                    {90, QSlider::TicksAbove, QStringLiteral("high")}});
            },
            LabelsMove},
        {"tick list, same texts at other values",
            [](CMwQSlider &s) {
                CMwQSlider::TMwTickItemList items = s.tickItemList();
                for (CMwQSlider::SMwTickItem &item : items)
                    item.value = qMax(0, item.value - 9);
                s.setTickItemList(items);
            },
            LabelsMove},
        {"size", [](CMwQSlider &s) { s.resize(410, s.height()); }, LabelsMove},
        {"style", [windows](CMwQSlider &s) { s.setStyle(windows); }, LabelsMove},
        {"orientation and back",
            [](CMwQSlider &s) {
                s.setOrientation(Qt::Vertical);
                s.resize(s.height(), 300);
                s.setOrientation(Qt::Horizontal);
                s.resize(260, s.sizeHint().height() + 8);
            },
            LabelsMove},
        {"tick position", [](CMwQSlider &s) { s.setTickPosition(QSlider::TicksAbove); },
            LabelsMayStay},
        {"handle length, same track length",
            [longHandle](CMwQSlider &s) {
                s.setStyle(longHandle);
                s.resize(s.width() + 8, s.height());
            },
            LabelsMove},
        {"minimum", [](CMwQSlider &s) { s.setMinimum(-30); }, LabelsMove},
        {"maximum", [](CMwQSlider &s) { s.setMaximum(130); }, LabelsMove},
        {"range", [](CMwQSlider &s) { s.setRange(-50, 150); }, LabelsMove},
        // The handles mirror; the labels follow the painter's direction
        // (painterDirection below), which is not the widget's.
        {"layout direction", [](CMwQSlider &s) { s.setLayoutDirection(Qt::RightToLeft); },
            LabelsMayStay},
        {"text colour",
            [](CMwQSlider &s) {
                QPalette palette = s.palette();
                palette.setColor(QPalette::WindowText, Qt::darkRed);
                s.setPalette(palette);
            },
            LabelsRecoloured},
    };
    for (int kind : {int(Plain), int(Range)}) {
        for (const Row &row : rows) {
            QTest::addRow("%s, %s", kind == Range ? "CMwQRangeSlider" : "CMwQSlider", row.name)
                << kind << row.change << int(row.effect);
        }
    }
}

void tst_CMwQSliderLabelCache::changeDrawsAsNewSlider()
{
    QFETCH(int, kind);
    QFETCH(Change, change);
    QFETCH(int, effect);

    const auto slider = makeSlider(Kind(kind));
    const auto fresh = makeSlider(Kind(kind));
    const QImage before = renderOf(*slider);
    QCOMPARE(before, renderOf(*fresh));

    change(*slider);
    const auto changed = makeSlider(Kind(kind));
    change(*changed);
    const QImage expected = renderOf(*changed);
    const QImage after = renderOf(*slider);
    QCOMPARE(after, expected);
    QVERIFY(after != before);

    // Where the labels are drawn, before and after the change.
    const QVector<QPoint> labelsBefore = labelPixelsOf(Kind(kind), Change());
    const QVector<QPoint> labelsAfter = labelPixelsOf(Kind(kind), change);
    QVERIFY(!labelsBefore.isEmpty());
    QVERIFY(!labelsAfter.isEmpty());
    if (effect == LabelsMove)
        QVERIFY(labelsAfter != labelsBefore);
    if (effect == LabelsRecoloured) {
        QCOMPARE(labelsAfter, labelsBefore);
        bool recoloured = false;
        for (const QPoint &p : labelsAfter)
            recoloured = recoloured || after.pixel(p) != before.pixel(p);
        QVERIFY(recoloured);
    }
}

void tst_CMwQSliderLabelCache::painterDirection_data() { repaintWithoutChangeIsIdentical_data(); }

void tst_CMwQSliderLabelCache::painterDirection()
{
    // Labels are laid out in the direction of the painter they are drawn
    // with (a widget painter's is the one of the painter it renders into).
    QFETCH(int, kind);
    const auto slider = makeSlider(Kind(kind));
    slider->setTickItemList({{50, QSlider::TicksBothSides, QStringLiteral("(1) \u05d0\u05d1")}});
    const QImage leftToRight = renderOf(*slider, Qt::LeftToRight);
    const QImage rightToLeft = renderOf(*slider, Qt::RightToLeft);
    QVERIFY(rightToLeft != leftToRight);
    const auto fresh = makeSlider(Kind(kind));
    fresh->setTickItemList(slider->tickItemList());
    QCOMPARE(rightToLeft, renderOf(*fresh, Qt::RightToLeft));
    QCOMPARE(renderOf(*slider, Qt::LeftToRight), leftToRight);
}

// Labels blitted from images of them give the very pixels of the text drawn
// again, or are drawn as text.
void tst_CMwQSliderLabelCache::stampsDrawAsText()
{
    QFont italic = QApplication::font();
    italic.setItalic(true);
    italic.setPointSize(11);
    QFont bold = QApplication::font();
    bold.setBold(true);
    bold.setPointSize(15);
    QFont small = QApplication::font();
    small.setPointSize(7);
    QFont large = QApplication::font();
    large.setPixelSize(40);
    QFont underlined = QApplication::font();
    underlined.setUnderline(true);
    // Glyphs drawn over each other.
    QFont tight = QApplication::font();
    tight.setPointSize(13);
    tight.setLetterSpacing(QFont::AbsoluteSpacing, -5);
    const QVector<QFont> fonts {
        QApplication::font(), small, italic, bold, large, underlined, tight};
    const Prepare none;
    const QVector<QPair<const char *, Prepare>> painters {{"plain", none},
        {"translated", [](QPainter &p) { p.translate(3, 5); }},
        {"half a pixel", [](QPainter &p) { p.translate(0.5, 0.25); }},
        {"right to left", [](QPainter &p) { p.setLayoutDirection(Qt::RightToLeft); }},
        {"translucent", [](QPainter &p) { p.setOpacity(0.6); }},
        {"antialiased", [](QPainter &p) { p.setRenderHint(QPainter::Antialiasing); }},
        {"no antialiasing",
            [](QPainter &p) { p.setRenderHint(QPainter::TextAntialiasing, false); }}};
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
    const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
    int compared = 0;
    for (int kind : {int(Plain), int(Range)}) {
        const auto slider = makeSlider(Kind(kind));
        slider->setTickItemList(richLabels());
        for (QStyle *style : {fusion.get(), windows.get()}) {
            slider->setStyle(style);
            for (bool dark : {false, true}) {
                slider->setPalette(dark ? darkPalette() : QPalette());
                for (bool enabled : {true, false}) {
                    slider->setEnabled(enabled);
                    for (const QFont &font : fonts) {
                        slider->setFont(font);
                        slider->resize(380, slider->sizeHint().height() + 8);
                        for (const auto &painter : painters) {
                            for (QImage::Format format :
                                {QImage::Format_ARGB32_Premultiplied, QImage::Format_RGB32}) {
                                for (qreal ratio : {1.0, 2.0}) {
                                    // Twice: the second paint blits what the first made.
                                    for (int pass = 0; pass < 2; ++pass) {
                                        const QImage stamped = renderStamped(
                                            *slider, true, format, ratio, painter.second);
                                        const QImage text = renderStamped(
                                            *slider, false, format, ratio, painter.second);
                                        QVERIFY2(sameBytes(stamped, text),
                                            qPrintable(QStringLiteral(
                                                "%1 %2 %3 %4 %5 %6 format %7 ratio %8")
                                                           .arg(kind == Range ? "range" : "plain",
                                                               style->objectName(),
                                                               dark ? "dark" : "light",
                                                               enabled ? "enabled" : "disabled",
                                                               font.toString(),
                                                               QLatin1String(painter.first))
                                                           .arg(int(format))
                                                           .arg(ratio)));
                                        ++compared;
                                    }
                                }
                            }
                        }
                    }
                }
            }
        }
    }
    QCOMPARE(compared, 2 * 2 * 2 * 2 * 7 * 7 * 2 * 2 * 2);
}

// Each input of a label's picture, changed after a paint, shows in the next.
void tst_CMwQSliderLabelCache::stampsFollowChanges()
{
    const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
    QStyle *windowsStyle = windows.get();
    const QVector<QPair<const char *, Change>> changes {
        {"text colour",
            [](CMwQSlider &s) {
                QPalette palette = s.palette();
                palette.setColor(QPalette::WindowText, Qt::darkRed);
                s.setPalette(palette);
            }},
        {"dark palette", [](CMwQSlider &s) { s.setPalette(darkPalette()); }},
        {"disabled", [](CMwQSlider &s) { s.setEnabled(false); }},
        {"font",
            [](CMwQSlider &s) {
                QFont font = s.font();
                font.setPointSize(12);
                s.setFont(font);
            }},
        {"tick list",
            [](CMwQSlider &s) {
                s.setTickItemList({{10, QSlider::TicksBothSides, QStringLiteral("ten")}});
            }},
        {"size", [](CMwQSlider &s) { s.resize(s.width() + 37, s.height()); }},
        {"style", [windowsStyle](CMwQSlider &s) { s.setStyle(windowsStyle); }},
        {"tick interval", [](CMwQSlider &s) { s.setTickInterval(7); }},
        {"tick position", [](CMwQSlider &s) { s.setTickPosition(QSlider::TicksAbove); }},
        {"range", [](CMwQSlider &s) { s.setRange(-50, 150); }},
        {"vertical",
            [](CMwQSlider &s) {
                s.setOrientation(Qt::Vertical);
                s.resize(s.height(), 300);
            }},
    };
    for (int kind : {int(Plain), int(Range)}) {
        for (const auto &change : changes) {
            const auto slider = makeSlider(Kind(kind));
            slider->setTickItemList(richLabels());
            const QImage before
                = renderStamped(*slider, true, QImage::Format_ARGB32_Premultiplied, 1.0, Prepare());
            change.second(*slider);
            const QImage after
                = renderStamped(*slider, true, QImage::Format_ARGB32_Premultiplied, 1.0, Prepare());
            const QImage text = renderStamped(
                *slider, false, QImage::Format_ARGB32_Premultiplied, 1.0, Prepare());
            QVERIFY2(sameBytes(after, text), change.first);
            QVERIFY2(after != before, change.first);
        }
        // At two device pixels per pixel as at one.
        const auto slider = makeSlider(Kind(kind));
        const QImage plain
            = renderStamped(*slider, true, QImage::Format_ARGB32_Premultiplied, 1.0, Prepare());
        const QImage magnified
            = renderStamped(*slider, true, QImage::Format_ARGB32_Premultiplied, 2.0, Prepare());
        const QImage magnifiedText
            = renderStamped(*slider, false, QImage::Format_ARGB32_Premultiplied, 2.0, Prepare());
        QVERIFY(sameBytes(magnified, magnifiedText));
        QCOMPARE(magnified.size(), plain.size() * 2);
    }
}

VEL_TEST_MAIN(tst_CMwQSliderLabelCache)

#include "tst_cmwqsliderlabelcache.moc"
