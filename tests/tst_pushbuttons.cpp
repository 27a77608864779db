#include "vel_test_main.h"

#include <vel_qt_widgets/Base.h>
#include <vel_qt_widgets/PushButtons.h>

#include <QtGui/QPainter>
#include <QtGui/QPixmap>

namespace {

const QColor triangleColor(200, 30, 30);

// The triangle's corners as the drawing rules give them, for a button
// occupying \a r.
QVector<QPoint> expectedTriangle(const QRect &r, int direction)
{
    const int d = (r.bottom() - r.top() + 1) / 3;
    const int x0 = r.right() - 2 * d;
    const int y0 = r.top() + d + 1;
    const int x1 = x0 + d - 1;
    const int y1 = y0 + d - 1;
    const int evenSize = d & ~1;
    const int half = d >> 1;
    switch (direction) {
    case CMwPickerPushButton::eDown:
        return {{x0, y0}, {x0 + evenSize, y0}, {x0 + half, y1}};
    case CMwPickerPushButton::eUp:
        return {{x0, y1}, {x0 + evenSize, y1}, {x0 + half, y0}};
    case CMwPickerPushButton::eLeft:
        return {{x1, y0}, {x1, y0 + evenSize}, {x0, y0 + half}};
    case CMwPickerPushButton::eRight:
        return {{x0, y0}, {x0, y0 + evenSize}, {x1, y0 + half}};
    default:
        return {{0, 0}, {0, 0}, {0, 0}};
    }
}

QImage renderToImage(QWidget *widget)
{
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

void setTriangleColor(QWidget *widget)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::ButtonText, triangleColor);
    widget->setPalette(palette);
}

// A plain push button that looks like the picker without its triangle.
QImage plainButtonImage(const QSize &size, const QString &text = QString())
{
    QPushButton plain(text);
    plain.setStyleSheet(QStringLiteral("Text-align:left"));
    setTriangleColor(&plain);
    plain.resize(size);
    return renderToImage(&plain);
}

// The plain button with the triangle drawn over it by hand.
QImage referenceImage(const QSize &size, int direction)
{
    QImage image = plainButtonImage(size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(triangleColor);
    painter.setBrush(triangleColor);
    const QVector<QPoint> points = expectedTriangle(QRect(QPoint(0, 0), size), direction);
    painter.drawConvexPolygon(points.constData(), points.size());
    return image;
}

// True when the two images agree outside \a except.
bool sameOutside(const QImage &a, const QImage &b, const QRect &except)
{
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (!except.contains(x, y) && a.pixel(x, y) != b.pixel(x, y))
                return false;
        }
    }
    return true;
}

QWidget *createByName(const QByteArray &name, QWidget *parent)
{
    if (name == "CMwQWidget")
        return new CMwQWidget(parent);
    if (name == "CMwTextPushButton")
        return new CMwTextPushButton(parent);
    if (name == "CMwIconFitButton")
        return new CMwIconFitButton(parent);
    if (name == "CMwSizedPushButtonMd")
        return new CMwSizedPushButtonMd(parent);
    if (name == "CMwPickerPushButton")
        return new CMwPickerPushButton(parent);
    if (name == "QPushButton")
        return new QPushButton(parent);
    return new QWidget(parent);
}

QIcon testIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::blue);
    return QIcon(pixmap);
}

class PaintCounter : public QObject
{
public:
    int paints = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};

} // namespace

class tst_PushButtons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void classIdentity_data();
    void classIdentity();
    void constructors();
    void pickerDefaults();
    void directionProperty();
    void outOfRangeDirection();
    void triangle_data();
    void triangle();
    void triangleOfThirtyPixelButton();
    void triangleIsSymmetric_data();
    void triangleIsSymmetric();
    void degenerateTriangle_data();
    void degenerateTriangle();
    void textStaysLeft();
    void directionChangeRepaints();
    void typeSelector_data();
    void typeSelector();
};

void tst_PushButtons::classIdentity_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("base");
    QTest::addColumn<int>("ownProperties");

    QTest::newRow("CMwQWidget") << QByteArray("CMwQWidget") << QByteArray("QWidget") << 0;
    QTest::newRow("CMwTextPushButton")
        << QByteArray("CMwTextPushButton") << QByteArray("QPushButton") << 0;
    QTest::newRow("CMwIconFitButton")
        << QByteArray("CMwIconFitButton") << QByteArray("QPushButton") << 0;
    QTest::newRow("CMwSizedPushButtonMd")
        << QByteArray("CMwSizedPushButtonMd") << QByteArray("QPushButton") << 0;
    QTest::newRow("CMwPickerPushButton")
        << QByteArray("CMwPickerPushButton") << QByteArray("QPushButton") << 1;
}

void tst_PushButtons::classIdentity()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, base);
    QFETCH(int, ownProperties);

    QScopedPointer<QWidget> widget(createByName(name, nullptr));
    const QMetaObject *meta = widget->metaObject();
    QCOMPARE(QByteArray(meta->className()), name);
    QCOMPARE(QByteArray(meta->superClass()->className()), base);
    QVERIFY(widget->inherits(name.constData()));
    // No signals or slots of their own.
    QCOMPARE(meta->methodCount(), meta->superClass()->methodCount());
    QCOMPARE(meta->propertyCount() - meta->superClass()->propertyCount(), ownProperties);

    QCOMPARE(qobject_cast<CMwQWidget *>(widget.data()) != nullptr, name == "CMwQWidget");
    QCOMPARE(
        qobject_cast<CMwTextPushButton *>(widget.data()) != nullptr, name == "CMwTextPushButton");
    QCOMPARE(
        qobject_cast<CMwIconFitButton *>(widget.data()) != nullptr, name == "CMwIconFitButton");
    QCOMPARE(qobject_cast<CMwSizedPushButtonMd *>(widget.data()) != nullptr,
        name == "CMwSizedPushButtonMd");
    QCOMPARE(qobject_cast<CMwPickerPushButton *>(widget.data()) != nullptr,
        name == "CMwPickerPushButton");
}

void tst_PushButtons::constructors()
{
    QWidget parent;
    const QIcon icon = testIcon();

    CMwQWidget base;
    QCOMPARE(base.parentWidget(), nullptr);
    auto *tool = new CMwQWidget(&parent, Qt::Tool);
    QCOMPARE(tool->parentWidget(), &parent);
    QVERIFY(tool->windowFlags() & Qt::Tool);

    CMwTextPushButton text;
    QCOMPARE(text.parentWidget(), nullptr);
    QVERIFY(text.text().isEmpty());
    auto *textWithText = new CMwTextPushButton(QStringLiteral("Go"), &parent);
    QCOMPARE(textWithText->text(), QStringLiteral("Go"));
    QCOMPARE(textWithText->parentWidget(), &parent);
    auto *textWithIcon = new CMwTextPushButton(icon, QStringLiteral("Open"), &parent);
    QCOMPARE(textWithIcon->text(), QStringLiteral("Open"));
    QVERIFY(!textWithIcon->icon().isNull());
    QCOMPARE(textWithIcon->parentWidget(), &parent);

    CMwIconFitButton fit;
    QVERIFY(fit.icon().isNull());
    auto *fitWithIcon = new CMwIconFitButton(icon, &parent);
    QVERIFY(!fitWithIcon->icon().isNull());
    QVERIFY(fitWithIcon->text().isEmpty());
    QCOMPARE(fitWithIcon->parentWidget(), &parent);

    CMwSizedPushButtonMd sized;
    QVERIFY(sized.text().isEmpty());
    auto *sizedWithIcon = new CMwSizedPushButtonMd(icon, QStringLiteral("Medium"), &parent);
    QCOMPARE(sizedWithIcon->text(), QStringLiteral("Medium"));
    QVERIFY(!sizedWithIcon->icon().isNull());
    QCOMPARE(sizedWithIcon->parentWidget(), &parent);

    auto *picker = new CMwPickerPushButton(&parent);
    QCOMPARE(picker->parentWidget(), &parent);
}

void tst_PushButtons::pickerDefaults()
{
    CMwPickerPushButton picker;
    QCOMPARE(picker.direction(), CMwPickerPushButton::eDown);
    QCOMPARE(picker.styleSheet(), QStringLiteral("Text-align:left"));
    QCOMPARE(picker.property("direction").toInt(), 0);
}

void tst_PushButtons::directionProperty()
{
    const QMetaObject &meta = CMwPickerPushButton::staticMetaObject;
    const QMetaEnum enumeration = meta.enumerator(meta.indexOfEnumerator("EPickerDirection"));
    QVERIFY(enumeration.isValid());
    QCOMPARE(enumeration.keyCount(), 4);
    const char *names[] = {"eDown", "eUp", "eLeft", "eRight"};
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(QByteArray(enumeration.key(i)), QByteArray(names[i]));
        QCOMPARE(enumeration.value(i), i);
    }

    const QMetaProperty property = meta.property(meta.indexOfProperty("direction"));
    QVERIFY(property.isValid());
    QVERIFY(property.isEnumType());
    QCOMPARE(QByteArray(property.enumerator().name()), QByteArray("EPickerDirection"));
    QVERIFY(property.isReadable());
    QVERIFY(property.isWritable());
    QVERIFY(property.isDesignable());
    QVERIFY(property.isStored());

    CMwPickerPushButton picker;
    picker.setDirection(CMwPickerPushButton::eRight);
    QCOMPARE(picker.direction(), CMwPickerPushButton::eRight);
    QCOMPARE(picker.property("direction").value<CMwPickerPushButton::EPickerDirection>(),
        CMwPickerPushButton::eRight);
    QVERIFY(picker.setProperty("direction", QStringLiteral("eLeft")));
    QCOMPARE(picker.direction(), CMwPickerPushButton::eLeft);
    QVERIFY(picker.setProperty("direction", QVariant::fromValue(CMwPickerPushButton::eUp)));
    QCOMPARE(picker.direction(), CMwPickerPushButton::eUp);
}

void tst_PushButtons::outOfRangeDirection()
{
    // The property system lets any int through; it is stored unchecked.
    CMwPickerPushButton picker;
    QVERIFY(picker.setProperty("direction", 7));
    QCOMPARE(int(picker.direction()), 7);
    QCOMPARE(picker.property("direction").toInt(), 7);
    picker.setDirection(static_cast<CMwPickerPushButton::EPickerDirection>(-3));
    QCOMPARE(int(picker.direction()), -3);
}

void tst_PushButtons::triangle_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("height"); // d = height / 3

    const char *names[] = {"eDown", "eUp", "eLeft", "eRight"};
    for (int direction = 0; direction < 4; ++direction) {
        for (int height : {30, 32, 33, 9, 10, 4, 5}) {
            QTest::addRow("%s, height %d (d = %d)", names[direction], height, height / 3)
                << direction << height;
        }
    }
}

void tst_PushButtons::triangle()
{
    QFETCH(int, direction);
    QFETCH(int, height);

    CMwPickerPushButton picker;
    setTriangleColor(&picker);
    picker.setDirection(CMwPickerPushButton::EPickerDirection(direction));
    picker.resize(120, height);
    const QImage image = renderToImage(&picker);

    QCOMPARE(image, referenceImage(picker.size(), direction));

    // The triangle lies within its box (plus the half-pixel pen), nowhere else.
    const int d = height / 3;
    const QRect box(picker.width() - 1 - 2 * d, d + 1, d, d);
    QVERIFY(sameOutside(image, plainButtonImage(picker.size()), box.adjusted(-1, -1, 2, 2)));
    if (d >= 2) // from d = 2 on, the triangle has an area
        QVERIFY(image != plainButtonImage(picker.size()));
}

void tst_PushButtons::triangleOfThirtyPixelButton()
{
    // d = 10: box x from R - 20 to R - 11, y from T + 11 to T + 20; pointing
    // down, the corners are (R - 20, T + 11), (R - 10, T + 11), (R - 15, T + 20).
    CMwPickerPushButton picker;
    setTriangleColor(&picker);
    picker.resize(100, 30);
    const int R = picker.rect().right();
    const int T = picker.rect().top();
    QCOMPARE(expectedTriangle(picker.rect(), CMwPickerPushButton::eDown),
        (QVector<QPoint> {{R - 20, T + 11}, {R - 10, T + 11}, {R - 15, T + 20}}));

    const QImage image = renderToImage(&picker);
    const QImage plain = plainButtonImage(picker.size());
    QCOMPARE(image, referenceImage(picker.size(), CMwPickerPushButton::eDown));

    // Fully covered inside, untouched beyond the pen's half pixel.
    QCOMPARE(image.pixelColor(R - 15, T + 13), triangleColor);
    QCOMPARE(image.pixelColor(R - 17, T + 12), triangleColor);
    QCOMPARE(image.pixelColor(R - 13, T + 12), triangleColor);
    QCOMPARE(image.pixel(R - 15, T + 9), plain.pixel(R - 15, T + 9));
    QCOMPARE(image.pixel(R - 15, T + 22), plain.pixel(R - 15, T + 22));
    QCOMPARE(image.pixel(R - 22, T + 13), plain.pixel(R - 22, T + 13));
    QCOMPARE(image.pixel(R - 8, T + 13), plain.pixel(R - 8, T + 13));
    // The top edge runs along y = T + 11, half of the pen above it.
    QVERIFY(image.pixel(R - 15, T + 10) != plain.pixel(R - 15, T + 10));
    QVERIFY(image.pixelColor(R - 15, T + 10) != triangleColor);
}

void tst_PushButtons::triangleIsSymmetric_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("height");
    QTest::newRow("eDown, even d") << int(CMwPickerPushButton::eDown) << 30;
    QTest::newRow("eDown, odd d") << int(CMwPickerPushButton::eDown) << 33;
    QTest::newRow("eUp, even d") << int(CMwPickerPushButton::eUp) << 30;
    QTest::newRow("eUp, odd d") << int(CMwPickerPushButton::eUp) << 33;
}

void tst_PushButtons::triangleIsSymmetric()
{
    // The even-size corner one pixel beyond the box keeps the apex in the
    // middle: the drawing mirrors around the apex column line.
    QFETCH(int, direction);
    QFETCH(int, height);
    CMwPickerPushButton picker;
    setTriangleColor(&picker);
    picker.setDirection(CMwPickerPushButton::EPickerDirection(direction));
    picker.resize(100, height);
    const QImage image = renderToImage(&picker);
    const int d = height / 3;
    const int x0 = picker.rect().right() - 2 * d;
    const int apex = x0 + (d >> 1);
    // The mirror line is the boundary just before column apex, for odd and
    // even d alike; the pen reaches half a pixel beyond the corners.
    const int reach = (d >> 1) + 3;
    for (int y = d; y <= 2 * d + 2; ++y) {
        for (int k = 0; k < reach; ++k) {
            // The rasteriser's rounding may differ by a level or two.
            const QColor left = image.pixelColor(apex - 1 - k, y);
            const QColor right = image.pixelColor(apex + k, y);
            QVERIFY2(qAbs(left.red() - right.red()) <= 2 && qAbs(left.green() - right.green()) <= 2
                    && qAbs(left.blue() - right.blue()) <= 2,
                qPrintable(QStringLiteral("row %1, columns %2 and %3: %4 vs %5")
                               .arg(y)
                               .arg(apex - 1 - k)
                               .arg(apex + k)
                               .arg(left.name(), right.name())));
        }
    }
    QCOMPARE(image.pixelColor(apex, d + 3), triangleColor);
    QCOMPARE(image.pixelColor(apex - 1, d + 3), triangleColor);
}

void tst_PushButtons::degenerateTriangle_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("height");
    QTest::addColumn<QRect>("touched"); // where the zero-area outline may leave a trace

    // d = 0: the three points lie on one line at the right edge.
    for (int direction = 0; direction < 4; ++direction) {
        QTest::addRow("d = 0, height 2, direction %d", direction)
            << direction << 2 << QRect(97, 0, 3, 2);
        QTest::addRow("d = 0, height 1, direction %d", direction)
            << direction << 1 << QRect(97, 0, 3, 1);
    }
    // Values outside 0..3: all three points at the origin.
    QTest::newRow("direction 4") << 4 << 30 << QRect(0, 0, 1, 1);
    QTest::newRow("direction 7") << 7 << 33 << QRect(0, 0, 1, 1);
    QTest::newRow("direction -1") << -1 << 30 << QRect(0, 0, 1, 1);
}

void tst_PushButtons::degenerateTriangle()
{
    QFETCH(int, direction);
    QFETCH(int, height);
    QFETCH(QRect, touched);

    CMwPickerPushButton picker;
    setTriangleColor(&picker);
    picker.setProperty("direction", direction);
    QCOMPARE(int(picker.direction()), direction);
    picker.resize(100, height);
    const QImage image = renderToImage(&picker);

    QCOMPARE(image, referenceImage(picker.size(), direction));
    QVERIFY(sameOutside(image, plainButtonImage(picker.size()), touched));
}

void tst_PushButtons::textStaysLeft()
{
    // "Text-align:left" moves the text from the centre to the left edge.
    const QString text = QStringLiteral("Abc");
    CMwPickerPushButton picker;
    picker.setText(text);
    picker.resize(200, 30);
    QPushButton centred(text);
    centred.resize(200, 30);

    const auto leftmostInk = [](const QImage &image) {
        for (int x = 0; x < image.width() / 2; ++x) {
            for (int y = 8; y < 22; ++y) {
                if (qGray(image.pixel(x, y)) < 80)
                    return x;
            }
        }
        return -1;
    };
    const int pickerInk = leftmostInk(renderToImage(&picker));
    const int centredInk = leftmostInk(renderToImage(&centred));
    QVERIFY(pickerInk > 0);
    QVERIFY2(pickerInk < 50, qPrintable(QString::number(pickerInk)));
    QVERIFY2(centredInk > 50, qPrintable(QString::number(centredInk)));
}

void tst_PushButtons::directionChangeRepaints()
{
    CMwPickerPushButton picker;
    setTriangleColor(&picker);
    QVERIFY(showAt(picker, 100, 30));
    PaintCounter counter;
    picker.installEventFilter(&counter);
    QCoreApplication::processEvents();

    // (R - 18, T + 12) lies inside the downward triangle only, (R - 13, T + 16)
    // inside the leftward one only.
    const int R = picker.rect().right();
    QCOMPARE(picker.grab().toImage().pixelColor(R - 18, 12), triangleColor);
    QVERIFY(picker.grab().toImage().pixelColor(R - 13, 16) != triangleColor);

    const int before = counter.paints;
    picker.setDirection(CMwPickerPushButton::eLeft);
    QTRY_VERIFY(counter.paints > before);
    QVERIFY(picker.grab().toImage().pixelColor(R - 18, 12) != triangleColor);
    QCOMPARE(picker.grab().toImage().pixelColor(R - 13, 16), triangleColor);

    const int afterSetter = counter.paints;
    QVERIFY(picker.setProperty("direction", int(CMwPickerPushButton::eUp)));
    QTRY_VERIFY(counter.paints > afterSetter);
}

void tst_PushButtons::typeSelector_data()
{
    QTest::addColumn<QByteArray>("selector");
    QTest::addColumn<QByteArrayList>("styled"); // classes that take the colour

    for (const char *name : {"CMwQWidget", "CMwTextPushButton", "CMwIconFitButton",
             "CMwSizedPushButtonMd", "CMwPickerPushButton"}) {
        QTest::newRow(name) << QByteArray(name) << QByteArrayList {QByteArray(name)};
    }
    // The Qt base class selector reaches every button through inheritance.
    QTest::newRow("QPushButton") << QByteArray("QPushButton")
                                 << QByteArrayList {"CMwTextPushButton", "CMwIconFitButton",
                                        "CMwSizedPushButtonMd", "CMwPickerPushButton",
                                        "QPushButton"};
}

void tst_PushButtons::typeSelector()
{
    QFETCH(QByteArray, selector);
    QFETCH(QByteArrayList, styled);

    const QColor colour(0, 200, 0);
    QWidget container;
    container.setStyleSheet(QStringLiteral("%1 { background: rgb(0, 200, 0); border: none; }")
                                .arg(QString::fromLatin1(selector)));
    const QByteArrayList all {"CMwQWidget", "CMwTextPushButton", "CMwIconFitButton",
        "CMwSizedPushButtonMd", "CMwPickerPushButton", "QPushButton", "QWidget"};
    for (const QByteArray &name : all) {
        QWidget *widget = createByName(name, &container);
        // Plain widgets draw a style-sheet background only when asked to.
        widget->setAttribute(Qt::WA_StyledBackground);
        widget->resize(60, 30);
        const QImage image = renderToImage(widget);
        const bool coloured = image.pixelColor(5, 5) == colour;
        QVERIFY2(coloured == styled.contains(name), name.constData());
    }
}

VEL_TEST_MAIN(tst_PushButtons)
#include "tst_pushbuttons.moc"
