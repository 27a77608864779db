// Tick labels are laid out once and kept between paints. Whatever changes
// in between, a slider that has painted before must draw exactly what a new
// slider in the same state draws on its first paint.

#include "vel_test_main.h"

#include <vel_qt_widgets/CMwQRangeSlider.h>
#include <vel_qt_widgets/CMwQSlider.h>

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOptionSlider>

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

VEL_TEST_MAIN(tst_CMwQSliderLabelCache)

#include "tst_cmwqsliderlabelcache.moc"
