// Tick labels at the font resolutions and scale factors users run with.
// QT_FONT_DPI and QT_SCALE_FACTOR are read when the application starts, so
// CTest runs this executable once per setting (tests/CMakeLists.txt); every
// run checks that its setting took effect before it checks the labels.

#include "cmwqslider_p.h"
#include "slider_test_support.h"

#include <vel_qt_widgets/CMwQSlider.h>

#include <QtGui/QFontInfo>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOptionSlider>

#include <QtCore/QtMath>

namespace {

// The font is given in points, so that the font resolution decides its size.
constexpr int fontPoints = 9;

// Where the label of an item stands: the text's ink box centred on the
// item's position, kept inside the track, above or below the groove.
QRect labelRect(const CMwQSlider &slider, int value, const QString &text, bool above)
{
    return SliderTickGeometry(&slider).labelRect(slider.font(), value, text, above);
}

// The widget as it reaches the screen, in device pixels.
QImage grabbed(QWidget &widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// Device pixels where two pictures of the same size differ.
QRect differingPixels(const QImage &a, const QImage &b)
{
    QRect box;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                box |= QRect(x, y, 1, 1);
    return box;
}

double environmentNumber(const char *name, double fallback)
{
    bool ok = false;
    const double value = qEnvironmentVariable(name).toDouble(&ok);
    return ok ? value : fallback;
}

} // namespace

class tst_CMwQSliderLabelScale : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void settingTookEffect();
    void labelsAreWhole_data();
    void labelsAreWhole();
    void blittedLabelsAsDrawn();
};

void tst_CMwQSliderLabelScale::initTestCase()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    if (environmentNumber("QT_FONT_DPI", 96) != 96)
        QSKIP("Qt 6's offscreen platform ignores QT_FONT_DPI (fonts keep the screen's 96 DPI; "
              "Qt 6 scales through the device pixel ratio, which the QT_SCALE_FACTOR runs cover)");
#endif
}

void tst_CMwQSliderLabelScale::settingTookEffect()
{
    const double dpi = environmentNumber("QT_FONT_DPI", 96);
    const double scale = environmentNumber("QT_SCALE_FACTOR", 1);
    QCOMPARE(QFontInfo(QApplication::font()).pixelSize(), qRound(fontPoints * dpi / 72));
    CMwQSlider slider(Qt::Horizontal);
    QCOMPARE(slider.grab().devicePixelRatioF(), scale);
}

void tst_CMwQSliderLabelScale::labelsAreWhole_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("sides");
    QTest::addColumn<QString>("text");

    QTest::newRow("37 below, inside the track")
        << 37 << int(QSlider::TicksBelow) << QStringLiteral("37");
    QTest::newRow("100 °C above, at the maximum")
        << 100 << int(QSlider::TicksAbove) << QStringLiteral("100 °C");
    QTest::newRow("high on both sides")
        << 80 << int(QSlider::TicksBothSides) << QStringLiteral("high");
    QTest::newRow("low at the minimum") << 0 << int(QSlider::TicksBelow) << QStringLiteral("low");
    QTest::newRow("two words at the maximum")
        << 100 << int(QSlider::TicksBelow) << QStringLiteral("20 kHz");
    QTest::newRow("descenders above") << 50 << int(QSlider::TicksAbove) << QStringLiteral("gjqy");
}

void tst_CMwQSliderLabelScale::labelsAreWhole()
{
    QFETCH(int, value);
    QFETCH(int, sides);
    QFETCH(QString, text);

    CMwQSlider slider(Qt::Horizontal);
    slider.setRange(0, 100);
    // The handle stays clear of the labels: it is drawn over them.
    slider.setValue(15);
    slider.setTickItemList({{value, QSlider::TickPosition(sides), text}});
    slider.resize(300, slider.sizeHint().height());
    const QImage labelled = grabbed(slider);

    slider.setTickItemList({{value, QSlider::TickPosition(sides), QString()}});
    QImage expected = grabbed(slider);
    QVERIFY(expected != labelled);

    // The whole text, also where it runs past its label rectangle, and
    // nothing but it: neither cut at the rectangle nor wrapped inside it.
    const QRect widgetRect(QPoint(0, 0), expected.size());
    const QImage marksOnly = expected;
    for (bool above : {true, false}) {
        if (!(sides & (above ? QSlider::TicksAbove : QSlider::TicksBelow)))
            continue;
        const QRect r = labelRect(slider, value, text, above);
        drawLabel(&expected, slider, r, text);

        // The widget is high enough for the whole text: drawn alone with
        // room around it, none of its ink lies outside the widget.
        // A multiple of 4 logical pixels is a whole number of device pixels
        // at every scale factor run here.
        const int pad = 4 * r.height();
        const qreal ratio = expected.devicePixelRatioF();
        const int shift = qRound(pad * ratio);
        const QRect padded = widgetRect.adjusted(0, 0, 2 * shift, 2 * shift);
        QImage roomy(padded.size(), QImage::Format_ARGB32_Premultiplied);
        roomy.setDevicePixelRatio(ratio);
        roomy.fill(Qt::white);
        const QImage blank = roomy;
        drawLabel(&roomy, slider, r.translated(pad, pad), text);
        const QRect ink = differingPixels(roomy, blank);
        QVERIFY(!ink.isEmpty());
        QVERIFY2(widgetRect.contains(ink.translated(-shift, -shift)),
            qPrintable(QStringLiteral("ink outside the widget")));
    }
    QVERIFY(differingPixels(marksOnly, expected).isValid());
    QCOMPARE(labelled, expected);
}

// Marks and labels blitted from pictures made on an earlier paint give the
// pixels of drawing them again, at this setting's resolution.
void tst_CMwQSliderLabelScale::blittedLabelsAsDrawn()
{
    CMwQSlider slider(Qt::Horizontal);
    slider.setRange(0, 100);
    slider.setValue(15);
    slider.setTickPosition(QSlider::TicksBelow);
    slider.setTickInterval(10);
    CMwQSlider::TMwTickItemList items;
    for (int i = 0; i < 20; ++i)
        items.append({i * 100 / 19, QSlider::TicksBothSides, QStringLiteral("t%1").arg(i)});
    items.append({50, QSlider::TicksBelow, QStringLiteral("100 \u00b0C gjqy")});
    slider.setTickItemList(items);
    slider.resize(400, slider.sizeHint().height() + 8);
    CMwQSliderPrivate *d = CMwQSliderPrivate::get(&slider);
    const auto rendered = [&slider]() {
        QImage image(slider.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        slider.render(&image);
        return image;
    };
    for (int pass = 0; pass < 2; ++pass) {
        d->stampLabels = true;
        const QImage grabbedBlitted = grabbed(slider);
        const QImage renderedBlitted = rendered();
        d->stampLabels = false;
        const QImage grabbedDrawn = grabbed(slider);
        const QImage renderedDrawn = rendered();
        d->stampLabels = true;
        QCOMPARE(differingPixels(grabbedBlitted, grabbedDrawn), QRect());
        QCOMPARE(differingPixels(renderedBlitted, renderedDrawn), QRect());
    }
    // The labels were drawn: without their texts the picture differs.
    const QImage labelled = rendered();
    for (CMwQSlider::SMwTickItem &item : items)
        item.text.clear();
    slider.setTickItemList(items);
    QVERIFY(!differingPixels(labelled, rendered()).isEmpty());
}

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QApplication::style()->standardPalette());
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSize(fontPoints);
    QApplication::setFont(font);
    tst_CMwQSliderLabelScale tc;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&tc, argc, argv);
}

#include "tst_cmwqsliderlabelscale.moc"
