#include "vel_test_main.h"

#include <vel_qt_widgets/Base.h>

#include <type_traits>

static_assert(!std::is_copy_constructible<CMwQWidget>::value, "CMwQWidget must not be copyable");
static_assert(!std::is_copy_assignable<CMwQWidget>::value, "CMwQWidget must not be assignable");

namespace {

const QColor sheetColour(40, 90, 160);

QImage renderWithoutWindowBackground(QWidget *widget)
{
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

// A subclass, as applications derive their panels from the base widget.
class Panel : public CMwQWidget
{
public:
    using CMwQWidget::CMwQWidget;
};

} // namespace

class tst_CMwQWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void identity();
    void constructor();
    void styleSheetBackgroundOnlyWhenStyled();
    void subclassMatchesTypeSelector();
};

void tst_CMwQWidget::identity()
{
    CMwQWidget widget;
    QCOMPARE(QByteArray(widget.metaObject()->className()), QByteArray("CMwQWidget"));
    QCOMPARE(widget.metaObject()->superClass(), &QWidget::staticMetaObject);
    QVERIFY(widget.inherits("CMwQWidget"));
    QCOMPARE(qobject_cast<CMwQWidget *>(static_cast<QObject *>(&widget)), &widget);
    QWidget plain;
    QCOMPARE(qobject_cast<CMwQWidget *>(&plain), nullptr);
}

void tst_CMwQWidget::constructor()
{
    CMwQWidget top;
    QVERIFY(top.isWindow());
    QCOMPARE(top.parentWidget(), nullptr);

    auto *child = new CMwQWidget(&top);
    QCOMPARE(child->parentWidget(), &top);
    QVERIFY(!child->isWindow());

    auto *tool = new CMwQWidget(&top, Qt::Tool | Qt::FramelessWindowHint);
    QVERIFY(tool->isWindow());
    QVERIFY(tool->windowFlags().testFlag(Qt::FramelessWindowHint));
    QCOMPARE(tool->windowType(), Qt::Tool);
}

void tst_CMwQWidget::styleSheetBackgroundOnlyWhenStyled()
{
    // The widget paints nothing itself: a style-sheet background appears
    // through QWidget's own Qt::WA_StyledBackground handling only.
    QWidget container;
    container.setStyleSheet(QStringLiteral("CMwQWidget { background: rgb(40, 90, 160); }"));
    auto *unstyled = new CMwQWidget(&container);
    unstyled->resize(40, 20);
    auto *styled = new CMwQWidget(&container);
    styled->setAttribute(Qt::WA_StyledBackground);
    styled->resize(40, 20);

    QCOMPARE(renderWithoutWindowBackground(unstyled).pixelColor(20, 10), QColor(Qt::white));
    QCOMPARE(renderWithoutWindowBackground(styled).pixelColor(20, 10), sheetColour);
}

void tst_CMwQWidget::subclassMatchesTypeSelector()
{
    QWidget container;
    container.setStyleSheet(QStringLiteral("CMwQWidget { background: rgb(40, 90, 160); }"));
    auto *panel = new Panel(&container);
    panel->setAttribute(Qt::WA_StyledBackground);
    panel->resize(40, 20);
    QCOMPARE(renderWithoutWindowBackground(panel).pixelColor(5, 5), sheetColour);
}

VEL_TEST_MAIN(tst_CMwQWidget)
#include "tst_cmwqwidget.moc"
