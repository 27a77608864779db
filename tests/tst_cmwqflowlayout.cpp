#include "vel_test_main.h"

#include <vel_qt_widgets/FlowLayout.h>

#include <QtCore/QPointer>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QStyleFactory>

#include <climits>

namespace {

// A layout item with fixed hints that records what the layout does to it, so
// that expected geometry does not depend on any style.
class FixedItem : public QLayoutItem
{
public:
    explicit FixedItem(const QSize &hint, const QSize &minimum = QSize(), bool empty = false,
        int *deletions = nullptr)
        : m_hint(hint)
        , m_minimum(minimum.isValid() ? minimum : hint)
        , m_empty(empty)
        , m_deletions(deletions)
    {
    }
    ~FixedItem() override
    {
        if (m_deletions)
            ++*m_deletions;
    }

    QSize sizeHint() const override { return m_hint; }
    QSize minimumSize() const override { return m_minimum; }
    QSize maximumSize() const override { return QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX); }
    Qt::Orientations expandingDirections() const override { return Qt::Orientations(); }
    void setGeometry(const QRect &rect) override
    {
        m_geometry = rect;
        ++setGeometryCalls;
    }
    QRect geometry() const override { return m_geometry; }
    bool isEmpty() const override { return m_empty; }

    int setGeometryCalls = 0;

private:
    QSize m_hint;
    QSize m_minimum;
    bool m_empty;
    int *m_deletions;
    QRect m_geometry;
};

// A widget whose size hint is fixed.
class FixedWidget : public QWidget
{
public:
    explicit FixedWidget(const QSize &hint, QWidget *parent = nullptr)
        : QWidget(parent)
        , m_hint(hint)
    {
    }
    QSize sizeHint() const override { return m_hint; }

private:
    QSize m_hint;
};

// Fusion with chosen layout metrics: the spacing the layout derives from its
// parent (PM_Layout*Spacing) and the per-item push-button spacing.
class SpacingStyle : public QProxyStyle
{
public:
    SpacingStyle(int pmHorizontal, int pmVertical, int itemHorizontal, int itemVertical)
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
        , m_pmHorizontal(pmHorizontal)
        , m_pmVertical(pmVertical)
        , m_itemHorizontal(itemHorizontal)
        , m_itemVertical(itemVertical)
    {
    }

    int pixelMetric(
        PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        switch (metric) {
        case PM_LayoutHorizontalSpacing:
            return m_pmHorizontal;
        case PM_LayoutVerticalSpacing:
            return m_pmVertical;
        case PM_LayoutLeftMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutBottomMargin:
            return 5;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

    int layoutSpacing(QSizePolicy::ControlType, QSizePolicy::ControlType,
        Qt::Orientation orientation, const QStyleOption *, const QWidget *) const override
    {
        return orientation == Qt::Horizontal ? m_itemHorizontal : m_itemVertical;
    }

private:
    int m_pmHorizontal;
    int m_pmVertical;
    int m_itemHorizontal;
    int m_itemVertical;
};

// Replaces the application style for one test and restores the fixed test
// look afterwards, also when the test fails.
struct ApplicationStyleOverride
{
    explicit ApplicationStyleOverride(QStyle *style) { QApplication::setStyle(style); }
    ~ApplicationStyleOverride() { velSetUpTestLook(); }
};

QVector<QRect> placedGeometries(const QLayout &layout)
{
    QVector<QRect> result;
    for (int i = 0; i < layout.count(); ++i)
        result.append(layout.itemAt(i)->geometry());
    return result;
}

void addFixedItems(CMwQFlowLayout &layout, const QVector<QSize> &hints)
{
    for (const QSize &hint : hints)
        layout.addItem(new FixedItem(hint));
}

} // namespace

class tst_CMwQFlowLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void constructors();
    void defaultArgumentsDeriveFromStyle();
    void itemList();
    void destructorDeletesItemsNotWidgets();
    void fixedAnswers();
    void spacingDerivation();
    void minimumSize_data();
    void minimumSize();
    void emptyLayoutHeight_data();
    void emptyLayoutHeight();
    void placement_data();
    void placement();
    void marginsAndRectangleOffset();
    void emptyItemsAreSkipped();
    void hiddenWidgetsKeepGeometry();
    void sameSizeWithoutStretching();
    void itemSpacingFromWidgetStyle();
    void itemSpacingWithoutWidgetFromHostStyle();
    void itemSpacingWithoutWidgetOrHostFromApplication();
    void onlyMinusOneFallsBack();
    void settersTakeEffectAtNextPass();
    void hugeValuesDoNotOverflow();
    void topLevelWindowRewraps();
    void nestedWidgetHeightFollowsHeightForWidth();
    void widgetConstruction();
    void kept_widgetPropertiesAreOnlyStored();
    void kept_widgetSetLayoutDoesNothing();
};

void tst_CMwQFlowLayout::constructors()
{
    CMwQFlowLayout plain(4, 3, 2);
    QCOMPARE(plain.parent(), nullptr);
    QCOMPARE(plain.contentsMargins(), QMargins(4, 4, 4, 4));
    QCOMPARE(plain.horizontalSpacing(), 3);
    QCOMPARE(plain.verticalSpacing(), 2);
    QCOMPARE(plain.sameWidgetsSize(), false);
    QCOMPARE(plain.fixedColumnCount(), -1);
    QCOMPARE(plain.count(), 0);

    QWidget host;
    auto *onHost = new CMwQFlowLayout(&host, 7, 0, 1);
    QCOMPARE(host.layout(), onHost);
    QCOMPARE(onHost->parent(), &host);
    QCOMPARE(onHost->contentsMargins(), QMargins(7, 7, 7, 7));
    QCOMPARE(onHost->horizontalSpacing(), 0); // 0 is a stored value, not a request to derive
    QCOMPARE(onHost->verticalSpacing(), 1);
    QCOMPARE(onHost->sameWidgetsSize(), false);
    QCOMPARE(onHost->fixedColumnCount(), -1);
}

void tst_CMwQFlowLayout::defaultArgumentsDeriveFromStyle()
{
    // Every argument defaults to -1: margins and spacings come from the style.
    SpacingStyle style(11, 13, 1, 1);
    QWidget host;
    host.setStyle(&style);
    auto *layout = new CMwQFlowLayout(&host);
    QCOMPARE(layout->horizontalSpacing(), 11);
    QCOMPARE(layout->verticalSpacing(), 13);
    QCOMPARE(layout->contentsMargins(), QMargins(5, 5, 5, 5));

    CMwQFlowLayout parentless;
    QCOMPARE(parentless.horizontalSpacing(), -1);
    QCOMPARE(parentless.verticalSpacing(), -1);
    // A layout without a widget has no style margins.
    QCOMPARE(parentless.contentsMargins(), QMargins(0, 0, 0, 0));
}

void tst_CMwQFlowLayout::itemList()
{
    CMwQFlowLayout layout(0, 0, 0);
    auto *a = new FixedItem(QSize(1, 1));
    auto *b = new FixedItem(QSize(2, 2));
    auto *c = new FixedItem(QSize(3, 3));
    layout.addItem(a);
    layout.addItem(b);
    layout.addItem(c);
    QCOMPARE(layout.count(), 3);
    QCOMPARE(layout.itemAt(0), a);
    QCOMPARE(layout.itemAt(2), c);
    QCOMPARE(layout.itemAt(-1), nullptr);
    QCOMPARE(layout.itemAt(3), nullptr);

    QCOMPARE(layout.takeAt(-1), nullptr);
    QCOMPARE(layout.takeAt(3), nullptr);
    QCOMPARE(layout.count(), 3);

    QTest::ignoreMessage(QtWarningMsg, "CMwQFlowLayout::addItem: cannot add a null item");
    layout.addItem(nullptr);
    QCOMPARE(layout.count(), 3);
    layout.setGeometry(QRect(0, 0, 100, 100));

    QLayoutItem *taken = layout.takeAt(1);
    QCOMPARE(taken, b);
    delete taken;
    QCOMPARE(layout.count(), 2);
    QCOMPARE(layout.itemAt(1), c);
}

void tst_CMwQFlowLayout::destructorDeletesItemsNotWidgets()
{
    int deletions = 0;
    QWidget host;
    auto *layout = new CMwQFlowLayout(&host, 0, 0, 0);
    auto *widget = new FixedWidget(QSize(10, 10));
    layout->addWidget(widget);
    layout->addItem(new FixedItem(QSize(5, 5), QSize(), false, &deletions));
    layout->addItem(new FixedItem(QSize(5, 5), QSize(), true, &deletions));
    QCOMPARE(layout->count(), 3);
    QCOMPARE(widget->parentWidget(), &host);

    delete layout;
    QCOMPARE(deletions, 2);
    QCOMPARE(host.layout(), nullptr);
    QCOMPARE(widget->parentWidget(), &host); // the widget outlives its item
}

void tst_CMwQFlowLayout::fixedAnswers()
{
    CMwQFlowLayout layout(2, 1, 1);
    addFixedItems(layout, {QSize(10, 20), QSize(30, 5)});
    QCOMPARE(layout.expandingDirections(), Qt::Orientations());
    QVERIFY(layout.hasHeightForWidth());
    QCOMPARE(layout.sizeHint(), layout.minimumSize());
    QCOMPARE(layout.sizeHint(), QSize(34, 24));
}

void tst_CMwQFlowLayout::spacingDerivation()
{
    // Parent widget: its style's layout spacing metrics.
    SpacingStyle style(11, 13, 1, 1);
    QWidget host;
    host.setStyle(&style);
    auto *onWidget = new CMwQFlowLayout(&host, 0, -3, -1);
    QCOMPARE(onWidget->horizontalSpacing(), 11);
    QCOMPARE(onWidget->verticalSpacing(), 13);

    // Parent layout: its spacing().
    auto *box = new QVBoxLayout;
    box->setSpacing(5);
    auto *nested = new CMwQFlowLayout(0, -1, -1);
    box->addLayout(nested);
    QCOMPARE(nested->parent(), box);
    QCOMPARE(nested->horizontalSpacing(), 5);
    QCOMPARE(nested->verticalSpacing(), 5);
    box->setSpacing(8);
    QCOMPARE(nested->horizontalSpacing(), 8);
    delete box;

    // No parent at all.
    CMwQFlowLayout alone(0, -1, -7);
    QCOMPARE(alone.horizontalSpacing(), -1);
    QCOMPARE(alone.verticalSpacing(), -1);
}

void tst_CMwQFlowLayout::minimumSize_data()
{
    QTest::addColumn<QVector<int>>("margins"); // left, top, right, bottom
    QTest::addColumn<QVector<QSize>>("minimums"); // one item each
    QTest::addColumn<QVector<bool>>("empty"); // per item
    QTest::addColumn<QSize>("expected");

    QTest::newRow("largest of each dimension plus margins")
        << QVector<int> {4, 4, 4, 4} << QVector<QSize> {{10, 40}, {30, 20}}
        << QVector<bool> {false, false} << QSize(38, 48);
    QTest::newRow("empty items ignored")
        << QVector<int> {4, 4, 4, 4} << QVector<QSize> {{10, 40}, {100, 100}}
        << QVector<bool> {false, true} << QSize(18, 48);
    QTest::newRow("kept: no items, margin 4")
        << QVector<int> {4, 4, 4, 4} << QVector<QSize>() << QVector<bool>() << QSize(7, 7);
    QTest::newRow("kept: no items, margin 0")
        << QVector<int> {0, 0, 0, 0} << QVector<QSize>() << QVector<bool>() << QSize(-1, -1);
    QTest::newRow("only empty items") << QVector<int> {6, 6, 6, 6} << QVector<QSize> {{50, 50}}
                                      << QVector<bool> {true} << QSize(11, 11);
    // Unequal margins give no uniform margin: -1 on each side.
    QTest::newRow("unequal margins")
        << QVector<int> {1, 2, 3, 4} << QVector<QSize> {{10, 40}, {30, 20}}
        << QVector<bool> {false, false} << QSize(28, 38);
}

void tst_CMwQFlowLayout::minimumSize()
{
    QFETCH(QVector<int>, margins);
    QFETCH(QVector<QSize>, minimums);
    QFETCH(QVector<bool>, empty);
    QFETCH(QSize, expected);

    CMwQFlowLayout layout(0, 0, 0);
    layout.setContentsMargins(margins.at(0), margins.at(1), margins.at(2), margins.at(3));
    for (int i = 0; i < minimums.size(); ++i)
        layout.addItem(new FixedItem(QSize(1, 1), minimums.at(i), empty.at(i)));
    QCOMPARE(layout.minimumSize(), expected);
    QCOMPARE(layout.sizeHint(), expected);
}

void tst_CMwQFlowLayout::emptyLayoutHeight_data()
{
    QTest::addColumn<int>("emptyItems");
    QTest::newRow("no items") << 0;
    QTest::newRow("only empty items") << 3;
}

void tst_CMwQFlowLayout::emptyLayoutHeight()
{
    QFETCH(int, emptyItems);
    CMwQFlowLayout layout(0, 4, 4);
    layout.setContentsMargins(3, 5, 7, 11);
    for (int i = 0; i < emptyItems; ++i)
        layout.addItem(new FixedItem(QSize(20, 20), QSize(), true));
    QCOMPARE(layout.heightForWidth(100), 16);
    QCOMPARE(layout.heightForWidth(0), 16);
    QCOMPARE(layout.heightForWidth(1000), 16);
}

void tst_CMwQFlowLayout::placement_data()
{
    QTest::addColumn<int>("hSpacing");
    QTest::addColumn<int>("vSpacing");
    QTest::addColumn<bool>("sameSize");
    QTest::addColumn<int>("fixedColumns");
    QTest::addColumn<int>("width");
    QTest::addColumn<QVector<QSize>>("hints");
    QTest::addColumn<QVector<QRect>>("expected");
    QTest::addColumn<int>("height"); // heightForWidth(width)

    QTest::newRow("wrap when the next item passes the edge")
        << 5 << 7 << false << -1 << 100 << QVector<QSize> {{40, 10}, {40, 20}, {40, 10}}
        << QVector<QRect> {{0, 0, 40, 10}, {45, 0, 40, 20}, {0, 27, 40, 10}} << 37;
    QTest::newRow("ending on the last column stays")
        << 0 << 7 << false << -1 << 100 << QVector<QSize> {{50, 10}, {49, 10}}
        << QVector<QRect> {{0, 0, 50, 10}, {50, 0, 49, 10}} << 10;
    QTest::newRow("ending one pixel further wraps")
        << 0 << 7 << false << -1 << 100 << QVector<QSize> {{50, 10}, {50, 10}}
        << QVector<QRect> {{0, 0, 50, 10}, {0, 17, 50, 10}} << 27;
    QTest::newRow("over-wide first item overflows its line")
        << 5 << 7 << false << -1 << 50 << QVector<QSize> {{80, 10}, {10, 10}}
        << QVector<QRect> {{0, 0, 80, 10}, {0, 17, 10, 10}} << 27;
    QTest::newRow("over-wide later item wraps, then overflows")
        << 5 << 7 << false << -1 << 50 << QVector<QSize> {{10, 10}, {80, 12}, {10, 10}}
        << QVector<QRect> {{0, 0, 10, 10}, {0, 17, 80, 12}, {0, 36, 10, 10}} << 46;
    QTest::newRow("a line of zero-height items never breaks")
        << 5 << 7 << false << -1 << 50
        << QVector<QSize> {{40, 0}, {40, 0}, {40, 0}, {10, 10}, {10, 10}}
        << QVector<QRect> {{0, 0, 40, 0}, {45, 0, 40, 0}, {90, 0, 40, 0}, {135, 0, 10, 10},
               {0, 17, 10, 10}}
        << 27;
    QTest::newRow("line height is the tallest item")
        << 2 << 3 << false << -1 << 30 << QVector<QSize> {{10, 4}, {10, 9}, {10, 6}, {10, 2}}
        << QVector<QRect> {{0, 0, 10, 4}, {12, 0, 10, 9}, {0, 12, 10, 6}, {12, 12, 10, 2}} << 18;

    // Grid mode: W = (99 - 12) / 3 = 29, extra = 99 - 12 - 87 = 0.
    QTest::newRow("kept: fixed 3 columns, width 100")
        << 6 << 4 << true << 3 << 100 << QVector<QSize> {{10, 10}, {20, 10}, {15, 10}, {5, 10}}
        << QVector<QRect> {{0, 0, 29, 10}, {35, 0, 29, 10}, {70, 0, 29, 10}, {0, 14, 29, 10}} << 24;
    // W = 29, extra = 1: the first item of every line is one pixel wider.
    QTest::newRow("fixed 3 columns, width 101")
        << 6 << 4 << true << 3 << 101 << QVector<QSize> {{10, 10}, {20, 10}, {15, 10}, {5, 10}}
        << QVector<QRect> {{0, 0, 30, 10}, {36, 0, 29, 10}, {71, 0, 29, 10}, {0, 14, 30, 10}} << 24;
    QTest::newRow("fixed 3 columns, width 101, two full lines")
        << 6 << 4 << true << 3 << 101 << QVector<QSize>(6, QSize(10, 10))
        << QVector<QRect> {{0, 0, 30, 10}, {36, 0, 29, 10}, {71, 0, 29, 10}, {0, 14, 30, 10},
               {36, 14, 29, 10}, {71, 14, 29, 10}}
        << 24;
    QTest::newRow("fixed 3 columns, width 102")
        << 6 << 4 << true << 3 << 102 << QVector<QSize> {{10, 10}, {20, 10}, {15, 10}, {5, 10}}
        << QVector<QRect> {{0, 0, 30, 10}, {36, 0, 30, 10}, {72, 0, 29, 10}, {0, 14, 30, 10}} << 24;
    QTest::newRow("fixed column count squeezes wide items")
        << 6 << 4 << true << 3 << 60 << QVector<QSize> {{40, 10}, {40, 10}, {40, 10}}
        << QVector<QRect> {{0, 0, 16, 10}, {22, 0, 16, 10}, {44, 0, 15, 10}} << 10;
    QTest::newRow("fixed column count above the item count")
        << 6 << 4 << true << 5 << 100 << QVector<QSize> {{10, 8}, {20, 10}}
        << QVector<QRect> {{0, 0, 47, 10}, {53, 0, 46, 10}} << 10;
    // columns = (100 + 6) / (20 + 6) = 4, W = (99 - 18) / 4 = 20, extra = 1.
    QTest::newRow("column count from the widest item")
        << 6 << 4 << true << -1 << 100
        << QVector<QSize> {{20, 10}, {12, 10}, {20, 6}, {8, 10}, {16, 10}}
        << QVector<QRect> {{0, 0, 21, 10}, {27, 0, 20, 10}, {53, 0, 20, 10}, {79, 0, 20, 10},
               {0, 14, 21, 10}}
        << 24;
    QTest::newRow("fixed column count 0 means computed")
        << 0 << 4 << true << 0 << 60 << QVector<QSize> {{20, 10}, {20, 10}, {20, 10}}
        << QVector<QRect> {{0, 0, 20, 10}, {20, 0, 20, 10}, {40, 0, 19, 10}} << 10;
    QTest::newRow("few items stretch over the whole line")
        << 6 << 4 << true << -1 << 100 << QVector<QSize> {{10, 10}, {20, 10}}
        << QVector<QRect> {{0, 0, 47, 10}, {53, 0, 46, 10}} << 10;
    // columns = 56 / 86 = 0, so n = 0: W stays 80 and extra = 49 + 6 = 55.
    QTest::newRow("kept: widest hint wider than the line")
        << 6 << 4 << true << -1 << 50 << QVector<QSize> {{80, 10}, {30, 10}, {50, 10}}
        << QVector<QRect> {{0, 0, 81, 10}, {0, 14, 81, 10}, {0, 28, 81, 10}} << 38;
    // W + s = 0 skips the column division; n = -1 leaves W at 0, extra = 99.
    QTest::newRow("zero-width hints with zero spacing")
        << 0 << 4 << true << -1 << 100 << QVector<QSize> {{0, 10}, {0, 10}}
        << QVector<QRect> {{0, 0, 1, 10}, {1, 0, 1, 10}} << 10;
}

void tst_CMwQFlowLayout::placement()
{
    QFETCH(int, hSpacing);
    QFETCH(int, vSpacing);
    QFETCH(bool, sameSize);
    QFETCH(int, fixedColumns);
    QFETCH(int, width);
    QFETCH(QVector<QSize>, hints);
    QFETCH(QVector<QRect>, expected);
    QFETCH(int, height);

    CMwQFlowLayout layout(0, hSpacing, vSpacing);
    layout.setSameWidgetsSize(sameSize);
    layout.setFixedColumnCount(fixedColumns);
    addFixedItems(layout, hints);

    layout.setGeometry(QRect(0, 0, width, 500));
    QCOMPARE(placedGeometries(layout), expected);
    QCOMPARE(layout.geometry(), QRect(0, 0, width, 500));
    QCOMPARE(layout.heightForWidth(width), height);
}

void tst_CMwQFlowLayout::marginsAndRectangleOffset()
{
    CMwQFlowLayout layout(0, 5, 7);
    layout.setContentsMargins(3, 4, 6, 8);
    addFixedItems(layout, {{40, 10}, {40, 10}, {40, 10}});

    // Effective rectangle: x 13 .. 10 + 99 - 6 = 103, top 24.
    layout.setGeometry(QRect(10, 20, 100, 50));
    QCOMPARE(placedGeometries(layout),
        (QVector<QRect> {{13, 24, 40, 10}, {58, 24, 40, 10}, {13, 41, 40, 10}}));

    // At the origin the effective right edge is width - 1 - 6 and the third
    // item would span 93 .. 132: it stays from width 140 on.
    QCOMPARE(layout.heightForWidth(100), 4 + 10 + 7 + 10 + 8);
    QCOMPARE(layout.heightForWidth(139), 4 + 10 + 7 + 10 + 8);
    QCOMPARE(layout.heightForWidth(140), 4 + 10 + 8);
}

void tst_CMwQFlowLayout::emptyItemsAreSkipped()
{
    CMwQFlowLayout layout(0, 5, 5);
    layout.setSameWidgetsSize(true);
    layout.setFixedColumnCount(2);
    auto *first = new FixedItem(QSize(10, 10));
    auto *empty = new FixedItem(QSize(500, 500), QSize(), true);
    auto *second = new FixedItem(QSize(20, 10));
    layout.addItem(first);
    layout.addItem(empty);
    layout.addItem(second);

    // The empty item neither counts as a column, nor widens the common size,
    // nor receives geometry. W = (59 - 5) / 2 = 27, extra = 0.
    layout.setGeometry(QRect(0, 0, 60, 40));
    QCOMPARE(first->geometry(), QRect(0, 0, 27, 10));
    QCOMPARE(second->geometry(), QRect(32, 0, 27, 10));
    QCOMPARE(empty->setGeometryCalls, 0);
    QCOMPARE(empty->geometry(), QRect());
    QCOMPARE(layout.heightForWidth(60), 10);
}

void tst_CMwQFlowLayout::hiddenWidgetsKeepGeometry()
{
    QWidget host;
    auto *layout = new CMwQFlowLayout(&host, 0, 4, 4);
    auto *a = new FixedWidget(QSize(30, 10));
    auto *b = new FixedWidget(QSize(30, 10));
    auto *c = new FixedWidget(QSize(30, 10));
    layout->addWidget(a);
    layout->addWidget(b);
    layout->addWidget(c);

    layout->setGeometry(QRect(0, 0, 80, 100));
    QCOMPARE(a->geometry(), QRect(0, 0, 30, 10));
    QCOMPARE(b->geometry(), QRect(34, 0, 30, 10));
    QCOMPARE(c->geometry(), QRect(0, 14, 30, 10));

    b->hide();
    layout->setGeometry(QRect(0, 0, 80, 100));
    QCOMPARE(a->geometry(), QRect(0, 0, 30, 10));
    QCOMPARE(b->geometry(), QRect(34, 0, 30, 10)); // untouched
    QCOMPARE(c->geometry(), QRect(34, 0, 30, 10)); // no gap left
    QCOMPARE(layout->heightForWidth(80), 10);

    layout->setGeometry(QRect(0, 0, 40, 100));
    QCOMPARE(b->geometry(), QRect(34, 0, 30, 10));
    QCOMPARE(c->geometry(), QRect(0, 14, 30, 10));
}

void tst_CMwQFlowLayout::sameSizeWithoutStretching()
{
    // A derived horizontal spacing that resolves below 0 (no parent): every
    // item gets the largest hint, no stretching and no extra pixels; the
    // spacing between items then comes from the items' widgets.
    SpacingStyle itemStyle(1, 1, 4, 3);
    QWidget owner;
    CMwQFlowLayout layout(0, -1, -1);
    layout.setSameWidgetsSize(true);
    layout.setFixedColumnCount(2);
    const QVector<QSize> hints {{20, 10}, {35, 8}, {25, 15}, {5, 5}};
    QVector<FixedWidget *> widgets;
    for (const QSize &hint : hints) {
        auto *widget = new FixedWidget(hint, &owner);
        widget->setStyle(&itemStyle);
        layout.addWidget(widget);
        widgets.append(widget);
    }
    QCOMPARE(layout.horizontalSpacing(), -1);

    layout.setGeometry(QRect(0, 0, 200, 100));
    for (int i = 0; i < widgets.size(); ++i)
        QCOMPARE(widgets.at(i)->geometry(), QRect(39 * i, 0, 35, 15));

    layout.setGeometry(QRect(0, 0, 80, 100));
    QCOMPARE(widgets.at(0)->geometry(), QRect(0, 0, 35, 15));
    QCOMPARE(widgets.at(1)->geometry(), QRect(39, 0, 35, 15));
    QCOMPARE(widgets.at(2)->geometry(), QRect(0, 18, 35, 15));
    QCOMPARE(widgets.at(3)->geometry(), QRect(39, 18, 35, 15));
    QCOMPARE(layout.heightForWidth(80), 33);
}

void tst_CMwQFlowLayout::itemSpacingFromWidgetStyle()
{
    // The host's metrics resolve the spacing to exactly -1, so each item's
    // own widget style decides the gap after it and above it.
    SpacingStyle hostStyle(-1, -1, 20, 20);
    SpacingStyle narrow(1, 1, 4, 3);
    SpacingStyle wide(1, 1, 9, 6);
    QWidget host;
    host.setStyle(&hostStyle);
    auto *layout = new CMwQFlowLayout(&host, 0, -1, -1);
    QCOMPARE(layout->horizontalSpacing(), -1);
    QCOMPARE(layout->verticalSpacing(), -1);

    auto *a = new FixedWidget(QSize(10, 10));
    auto *b = new FixedWidget(QSize(10, 10));
    auto *c = new FixedWidget(QSize(10, 10));
    a->setStyle(&narrow);
    b->setStyle(&wide);
    c->setStyle(&wide);
    layout->addWidget(a);
    layout->addWidget(b);
    layout->addWidget(c);

    layout->setGeometry(QRect(0, 0, 100, 100));
    QCOMPARE(a->geometry(), QRect(0, 0, 10, 10));
    QCOMPARE(b->geometry(), QRect(14, 0, 10, 10));
    QCOMPARE(c->geometry(), QRect(33, 0, 10, 10));

    // The item that wraps brings its own vertical spacing.
    layout->setGeometry(QRect(0, 0, 30, 100));
    QCOMPARE(b->geometry(), QRect(14, 0, 10, 10));
    QCOMPARE(c->geometry(), QRect(0, 16, 10, 10));
}

void tst_CMwQFlowLayout::itemSpacingWithoutWidgetFromHostStyle()
{
    // Nested layouts and custom items have no widget: the widget the flow
    // layout lives in gives the spacing.
    SpacingStyle hostStyle(-1, -1, 9, 5);
    QWidget host;
    host.setStyle(&hostStyle);
    auto *layout = new CMwQFlowLayout(&host, 0, -1, -1);

    auto *nested = new QHBoxLayout;
    nested->setContentsMargins(0, 0, 0, 0);
    auto *inner = new FixedItem(QSize(30, 12));
    nested->addItem(inner);
    layout->addItem(nested);
    auto *custom = new FixedItem(QSize(20, 12));
    layout->addItem(custom);
    auto *last = new FixedItem(QSize(20, 12));
    layout->addItem(last);

    layout->setGeometry(QRect(0, 0, 70, 100));
    QCOMPARE(nested->geometry(), QRect(0, 0, 30, 12));
    QCOMPARE(inner->geometry(), QRect(0, 0, 30, 12));
    QCOMPARE(custom->geometry(), QRect(39, 0, 20, 12));
    QCOMPARE(last->geometry(), QRect(0, 17, 20, 12));
    QCOMPARE(layout->heightForWidth(70), 29);
}

void tst_CMwQFlowLayout::itemSpacingWithoutWidgetOrHostFromApplication()
{
    // Neither a widget nor a host: the application style decides.
    ApplicationStyleOverride styleOverride(new SpacingStyle(-1, -1, 2, 8));
    CMwQFlowLayout layout(0, -1, -1);
    addFixedItems(layout, {{20, 10}, {20, 10}, {20, 10}});

    layout.setGeometry(QRect(0, 0, 50, 100));
    QCOMPARE(placedGeometries(layout),
        (QVector<QRect> {{0, 0, 20, 10}, {22, 0, 20, 10}, {0, 18, 20, 10}}));
    QCOMPARE(layout.heightForWidth(50), 28);
    QCOMPARE(layout.heightForWidth(70), 10);
}

void tst_CMwQFlowLayout::onlyMinusOneFallsBack()
{
    // A derived spacing of -2 is used as it is: items overlap by two pixels,
    // although the widgets' styles would give 50.
    SpacingStyle hostStyle(-2, -2, 50, 50);
    QWidget host;
    host.setStyle(&hostStyle);
    auto *layout = new CMwQFlowLayout(&host, 0, -1, -1);
    auto *a = new FixedWidget(QSize(10, 10));
    auto *b = new FixedWidget(QSize(10, 10));
    auto *c = new FixedWidget(QSize(10, 10));
    for (FixedWidget *widget : {a, b, c}) {
        widget->setStyle(&hostStyle);
        layout->addWidget(widget);
    }
    layout->setGeometry(QRect(0, 0, 20, 100));
    QCOMPARE(a->geometry(), QRect(0, 0, 10, 10));
    QCOMPARE(b->geometry(), QRect(8, 0, 10, 10));
    QCOMPARE(c->geometry(), QRect(0, 8, 10, 10));
}

void tst_CMwQFlowLayout::settersTakeEffectAtNextPass()
{
    CMwQFlowLayout layout(0, 6, 4);
    auto *a = new FixedItem(QSize(10, 10));
    auto *b = new FixedItem(QSize(20, 10));
    layout.addItem(a);
    layout.addItem(b);
    layout.setGeometry(QRect(0, 0, 100, 50));
    QCOMPARE(b->geometry(), QRect(16, 0, 20, 10));

    layout.setSameWidgetsSize(true);
    layout.setFixedColumnCount(4);
    QCOMPARE(layout.sameWidgetsSize(), true);
    QCOMPARE(layout.fixedColumnCount(), 4);
    QCOMPARE(b->geometry(), QRect(16, 0, 20, 10)); // nothing moved yet

    // n = min(4, 2) = 2: W = (99 - 6) / 2 = 46, extra = 1.
    layout.setGeometry(QRect(0, 0, 100, 50));
    QCOMPARE(a->geometry(), QRect(0, 0, 47, 10));
    QCOMPARE(b->geometry(), QRect(53, 0, 46, 10));
}

void tst_CMwQFlowLayout::hugeValuesDoNotOverflow()
{
    CMwQFlowLayout layout(0, INT_MAX, INT_MAX);
    layout.setSameWidgetsSize(true);
    layout.setFixedColumnCount(INT_MAX);
    addFixedItems(layout, {{INT_MAX, INT_MAX}, {10, 10}, {10, 10}});
    layout.setGeometry(QRect(0, 0, 100, 100));
    QCOMPARE(layout.itemAt(0)->geometry().topLeft(), QPoint(0, 0));
    QCOMPARE(layout.heightForWidth(100), INT_MAX);
    QCOMPARE(layout.heightForWidth(INT_MAX), INT_MAX);

    CMwQFlowLayout margins(INT_MAX, 0, 0);
    addFixedItems(margins, {{10, 10}});
    QCOMPARE(margins.minimumSize(), QSize(INT_MAX, INT_MAX));
    margins.setGeometry(QRect(0, 0, 100, 100));
    QCOMPARE(margins.heightForWidth(100), INT_MAX);
}

void tst_CMwQFlowLayout::topLevelWindowRewraps()
{
    CMwQFlowLayoutWidget window;
    auto *layout = qobject_cast<CMwQFlowLayout *>(window.layout());
    QVERIFY(layout);
    QVector<FixedWidget *> widgets;
    for (int i = 0; i < 6; ++i) {
        auto *widget = new FixedWidget(QSize(40, 20), &window);
        layout->addWidget(widget);
        widgets.append(widget);
    }
    const QMargins m = layout->contentsMargins();
    const int s = layout->horizontalSpacing();
    const int v = layout->verticalSpacing();
    QVERIFY(s >= 0 && v >= 0);

    // Exactly three per line: the third ends on the last column.
    const int threeWide = m.left() + 3 * 40 + 2 * s + m.right() + 1;
    QVERIFY(showAt(window, threeWide, 300));
    for (int i = 0; i < 6; ++i) {
        QCOMPARE(widgets.at(i)->geometry(),
            QRect(m.left() + (i % 3) * (40 + s), m.top() + (i / 3) * (20 + v), 40, 20));
    }
    QCOMPARE(layout->heightForWidth(threeWide), m.top() + 2 * 20 + v + m.bottom());
    QCOMPARE(window.heightForWidth(threeWide), layout->heightForWidth(threeWide));

    // One pixel narrower: two per line, three lines.
    window.resize(threeWide - 1, 300);
    QTRY_COMPARE(widgets.at(2)->geometry(), QRect(m.left(), m.top() + 20 + v, 40, 20));
    for (int i = 0; i < 6; ++i) {
        QCOMPARE(widgets.at(i)->geometry(),
            QRect(m.left() + (i % 2) * (40 + s), m.top() + (i / 2) * (20 + v), 40, 20));
    }
    QCOMPARE(layout->heightForWidth(threeWide - 1), m.top() + 3 * 20 + 2 * v + m.bottom());
    QCOMPARE(window.heightForWidth(threeWide - 1), layout->heightForWidth(threeWide - 1));

    // Wide enough for all six on one line.
    window.resize(m.left() + 6 * 40 + 5 * s + m.right() + 1, 300);
    QTRY_COMPARE(widgets.at(5)->geometry(), QRect(m.left() + 5 * (40 + s), m.top(), 40, 20));
    QCOMPARE(window.heightForWidth(window.width()), m.top() + 20 + m.bottom());
}

void tst_CMwQFlowLayout::nestedWidgetHeightFollowsHeightForWidth()
{
    // Inside a vertical box the flow widget gets the height its width needs.
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    auto *flow = new CMwQFlowLayoutWidget;
    column->addWidget(flow);
    column->addStretch(1);
    for (int i = 0; i < 5; ++i)
        flow->layout()->addWidget(new FixedWidget(QSize(50, 16)));

    QVERIFY(showAt(window, 400, 400));
    QTRY_COMPARE(flow->height(), flow->heightForWidth(flow->width()));
    const int wideHeight = flow->height();

    window.resize(150, 400);
    QTRY_COMPARE(flow->height(), flow->heightForWidth(flow->width()));
    QVERIFY(flow->height() > wideHeight);
    const auto *layout = static_cast<CMwQFlowLayout *>(flow->layout());
    int bottom = 0;
    for (int i = 0; i < layout->count(); ++i)
        bottom = qMax(bottom, layout->itemAt(i)->geometry().bottom() + 1);
    QCOMPARE(bottom + layout->contentsMargins().bottom(), flow->height());
}

void tst_CMwQFlowLayout::widgetConstruction()
{
    QWidget parent;
    CMwQFlowLayoutWidget *child = new CMwQFlowLayoutWidget(&parent, Qt::Tool);
    QCOMPARE(child->parentWidget(), &parent);
    QVERIFY(child->windowFlags() & Qt::Tool);
    QCOMPARE(QByteArray(child->metaObject()->className()), QByteArray("CMwQFlowLayoutWidget"));

    auto *layout = qobject_cast<CMwQFlowLayout *>(child->layout());
    QVERIFY(layout);
    QCOMPARE(layout->parent(), child);
    QCOMPARE(layout->count(), 0);
    // Built with -1 everywhere: spacings derived from the widget's style.
    QCOMPARE(layout->horizontalSpacing(),
        child->style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing));
    QCOMPARE(
        layout->verticalSpacing(), child->style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing));
    QCOMPARE(child->margin(), -1);
    QCOMPARE(child->hSpacing(), -1);
    QCOMPARE(child->vSpacing(), -1);

    QPointer<CMwQFlowLayout> guard(layout);
    delete child;
    QVERIFY(guard.isNull()); // the layout goes with its widget
}

void tst_CMwQFlowLayout::kept_widgetPropertiesAreOnlyStored()
{
    CMwQFlowLayoutWidget widget;
    auto *layout = static_cast<CMwQFlowLayout *>(widget.layout());
    auto *a = new FixedWidget(QSize(30, 10));
    auto *b = new FixedWidget(QSize(30, 10));
    layout->addWidget(a);
    layout->addWidget(b);
    QVERIFY(showAt(widget, 200, 100));
    const QRect aBefore = a->geometry();
    QCOMPARE(
        aBefore, QRect(layout->contentsMargins().left(), layout->contentsMargins().top(), 30, 10));
    const QRect bBefore = b->geometry();
    const QMargins marginsBefore = layout->contentsMargins();
    const int hBefore = layout->horizontalSpacing();
    const int vBefore = layout->verticalSpacing();

    const QMetaObject *meta = widget.metaObject();
    for (const char *name : {"margin", "hSpacing", "vSpacing"}) {
        const QMetaProperty property = meta->property(meta->indexOfProperty(name));
        QVERIFY2(property.isValid(), name);
        QCOMPARE(property.type(), QVariant::Int);
        QVERIFY(property.isReadable());
        QVERIFY(property.isWritable());
        QVERIFY(property.isDesignable());
        QVERIFY(property.isScriptable());
        QVERIFY(property.isStored());
    }

    widget.setMargin(20);
    QVERIFY(widget.setProperty("hSpacing", 30));
    widget.setVSpacing(40);
    QCOMPARE(widget.margin(), 20);
    QCOMPARE(widget.property("margin").toInt(), 20);
    QCOMPARE(widget.hSpacing(), 30);
    QCOMPARE(widget.vSpacing(), 40);
    QCOMPARE(widget.property("vSpacing").toInt(), 40);

    layout->invalidate();
    layout->activate();
    QCOMPARE(layout->contentsMargins(), marginsBefore);
    QCOMPARE(layout->horizontalSpacing(), hBefore);
    QCOMPARE(layout->verticalSpacing(), vBefore);
    QCOMPARE(a->geometry(), aBefore);
    QCOMPARE(b->geometry(), bBefore);
}

void tst_CMwQFlowLayout::kept_widgetSetLayoutDoesNothing()
{
    CMwQFlowLayoutWidget widget;
    QLayout *flow = widget.layout();
    auto *other = new QVBoxLayout;
    widget.setLayout(other);
    QCOMPARE(widget.layout(), flow);
    QCOMPARE(other->parent(), nullptr); // not adopted: still the caller's
    delete other;
    widget.setLayout(nullptr);
    QCOMPARE(widget.layout(), flow);
}

VEL_TEST_MAIN(tst_CMwQFlowLayout)
#include "tst_cmwqflowlayout.moc"
