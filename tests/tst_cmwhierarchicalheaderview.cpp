#include "cmwhierarchicalheaderview_p.h"
#include "grid_oracles.h"
#include "grid_test_support.h"
#include "vel_test_main.h"

#include <vel_qt_widgets/CMwHierarchicalHeaderView.h>

#include <QtGui/QStandardItemModel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>

#include <cstring>
#include <functional>
#include <memory>

namespace {

// One header cell and the cells below it.
struct Node
{
    QString caption;
    QVector<Node> children;
    QSize sizeHint;
    bool rotated = false;
};

Node leaf(const QString &caption, QSize hint = QSize())
{
    Node node;
    node.caption = caption;
    node.sizeHint = hint;
    return node;
}

Node group(const QString &caption, const QVector<Node> &children, QSize hint = QSize())
{
    Node node;
    node.caption = caption;
    node.children = children;
    node.sizeHint = hint;
    return node;
}

QStandardItem *buildItem(const Node &node)
{
    auto *item = new QStandardItem(node.caption);
    if (node.sizeHint.isValid())
        item->setData(node.sizeHint, Qt::SizeHintRole);
    if (node.rotated)
        item->setData(true, Qt::UserRole);
    for (int i = 0; i < node.children.size(); ++i)
        item->setChild(0, i, buildItem(node.children.at(i)));
    return item;
}

QStandardItemModel *buildHeaderModel(const QVector<Node> &tops, QObject *parent)
{
    auto *model = new QStandardItemModel(parent);
    for (int i = 0; i < tops.size(); ++i)
        model->setItem(0, i, buildItem(tops.at(i)));
    return model;
}

// Gives the tests the protected and private parts.
class TestHeader : public CMwHierarchicalHeaderView
{
public:
    explicit TestHeader(Qt::Orientation orientation = Qt::Horizontal, QWidget *parent = nullptr)
        : CMwHierarchicalHeaderView(new oracle::WalkingHeaderPrivate, orientation, parent)
    {
    }
    oracle::WalkingHeaderPrivate *priv() const
    {
        return static_cast<oracle::WalkingHeaderPrivate *>(d_vel.data());
    }
    using CMwHierarchicalHeaderView::sectionSizeFromContents;
};

// An item model that hands out ready-made header models through its roles.
class SupplyingModel : public QStandardItemModel
{
public:
    SupplyingModel(int rows, int columns, QObject *parent = nullptr)
        : QStandardItemModel(rows, columns, parent)
    {
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (!index.isValid() && role == HorizontalHeaderModelRole && horizontal)
            return QVariant::fromValue<QObject *>(horizontal);
        if (!index.isValid() && role == VerticalHeaderModelRole && vertical)
            return QVariant::fromValue<QObject *>(vertical);
        return QStandardItemModel::data(index, role);
    }
    QObject *horizontal = nullptr;
    QObject *vertical = nullptr;
};

// The size the style gives a one-line section, without sort indicator.
QSize styleSection(const CMwHierarchicalHeaderView &header, int section)
{
    QStyleOptionHeader opt = header.styleOptionForCell(section);
    return header.style()->sizeFromContents(QStyle::CT_HeaderSection, &opt, QSize(), &header);
}

// A style that reserves no room of its own for the sort arrow.
class NoSortRoomStyle : public QProxyStyle
{
public:
    NoSortRoomStyle()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
    {
    }
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
        const QWidget *widget) const override
    {
        if (type == CT_HeaderSection) {
            if (const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option)) {
                QStyleOptionHeader plain = *header;
                plain.sortIndicator = QStyleOptionHeader::None;
                return QProxyStyle::sizeFromContents(type, &plain, size, widget);
            }
        }
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    }
};

const RecordingStyle::Call *findCall(
    const QVector<RecordingStyle::Call> &calls, const QString &text)
{
    for (const auto &call : calls)
        if (call.text == text)
            return &call;
    return nullptr;
}

// Catches the region of every paint event of a widget.
class PaintSpy : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }
    QRegion region;
};

} // namespace

class tst_CMwHierarchicalHeaderView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void topLevelLeavesFillHeight();
    void parentSpansLeaves();
    void resizedMiddleSectionRepaintsParent();
    void onlyLeafShowsSelection();
    void rotatedCaption();
    void kept_sectionWithoutLeafIsBlank();
    void extraPieceRightOfLastSection();
    void cellBrushesAndFont();
    void sectionSizeSumsLevels();
    void kept_sortIndicatorAllowance();
    void sortIndicatorMapping();
    void positions_data();
    void positions();
    void selectedPositions();
    void selectionStates();
    void contextMenuTexts();
    void contextMenu_data();
    void contextMenu();
    void hideColumnKeepsLastVisible();
    void groupBySortsModel();
    void setModelDropsHeaderModel();
    void setModelAdoptsSuppliedModel();
    void guardedHeaderModel();
    void verticalHeader();
    void cacheMatchesWalk();
    void cacheFollowsChanges();
    void cachedPaintingMatchesWalk();
    void paintMeasuresFollowChanges();
    void spanningCellsDrawnOnceLookTheSame_data();
    void spanningCellsDrawnOnceLookTheSame();
    void modelsDeletedWhileShown_data();
    void modelsDeletedWhileShown();

private:
    // Runs the context menu at pos and clicks the action with text choice
    // (an empty choice closes the menu without choosing).
    QStringList runMenu(CMwHierarchicalHeaderView *header, const QPoint &pos, const QString &choice,
        int *minimumWidth = nullptr);
};

QStringList tst_CMwHierarchicalHeaderView::runMenu(
    CMwHierarchicalHeaderView *header, const QPoint &pos, const QString &choice, int *minimumWidth)
{
    QStringList texts;
    bool handled = false;
    QTimer timer;
    timer.setInterval(10);
    connect(&timer, &QTimer::timeout, [&]() {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu || handled)
            return;
        handled = true;
        timer.stop();
        for (QAction *action : menu->actions())
            texts << (action->isSeparator() ? QStringLiteral("|") : action->text());
        if (minimumWidth)
            *minimumWidth = menu->minimumWidth();
        if (choice.isEmpty()) {
            QTest::keyClick(menu, Qt::Key_Escape);
            return;
        }
        for (QAction *action : menu->actions()) {
            if (action->text() == choice) {
                QTest::mouseClick(
                    menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
                return;
            }
        }
        menu->close();
    });
    // What the headless platform says about every popup.
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support grabbing the keyboard");
    }
    timer.start();
    Q_EMIT header->customContextMenuRequested(pos);
    [&]() { QVERIFY(handled); }();
    return texts;
}

void tst_CMwHierarchicalHeaderView::construction()
{
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    QCOMPARE(header.orientation(), Qt::Horizontal);
    QVERIFY(header.isSortIndicatorShown());
    QCOMPARE(header.sortIndicatorSection(), 0);
    QCOMPARE(header.sortIndicatorOrder(), Qt::AscendingOrder);
    QVERIFY(header.sectionsClickable());
    QCOMPARE(header.contextMenuPolicy(), Qt::CustomContextMenu);
    QVERIFY(!header.headerModel());
}

void tst_CMwHierarchicalHeaderView::topLevelLeavesFillHeight()
{
    RecordingStyle style;
    QStandardItemModel items(2, 3);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setStyle(&style);
    header.setStretchLastSection(false);
    header.setModel(&items);
    QStandardItemModel *cells = buildHeaderModel({leaf("a"), leaf("b"), leaf("c")}, &header);
    header.setHeaderModel(cells);
    for (int i = 0; i < 3; ++i)
        header.resizeSection(i, 60);
    QVERIFY(showAt(header, 180, 50));
    style.calls.clear();
    const QImage image = renderWidget(&header);

    const auto headers = style.callsOf(QStyle::CE_Header);
    const QStringList captions = {"a", "b", "c"};
    for (int i = 0; i < 3; ++i) {
        const auto *call = findCall(headers, captions.at(i));
        QVERIFY2(call, qPrintable(captions.at(i)));
        QCOMPARE(call->rect, QRect(60 * i, 0, 60, 50));
    }
    // One cell per section: nothing else carries a caption.
    int captioned = 0;
    for (const auto &call : headers)
        captioned += call.text.isEmpty() ? 0 : 1;
    QCOMPARE(captioned, 3);
    // Each caption is drawn halfway down its section.
    for (int i = 0; i < 3; ++i) {
        const QRect text = darkPixels(image, QRect(60 * i + 2, 2, 56, 46));
        QVERIFY(!text.isEmpty());
        QVERIFY(qAbs(text.center().y() - 25) <= 2);
    }
}

void tst_CMwHierarchicalHeaderView::parentSpansLeaves()
{
    RecordingStyle style;
    QStandardItemModel items(2, 4);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setStyle(&style);
    header.setStretchLastSection(false);
    header.setModel(&items);
    header.setHeaderModel(buildHeaderModel(
        {group("P", {leaf("a"), leaf("b"), leaf("c")}, QSize(10, 30)), leaf("Q")}, &header));
    for (int i = 0; i < 4; ++i)
        header.resizeSection(i, 50);
    QVERIFY(showAt(header, 260, 80));

    style.calls.clear();
    QImage image = renderWidget(&header);
    auto headers = style.callsOf(QStyle::CE_Header);
    QCOMPARE(findCall(headers, "P")->rect, QRect(0, 0, 150, 30));
    QCOMPARE(findCall(headers, "a")->rect, QRect(0, 30, 50, 50));
    QCOMPARE(findCall(headers, "b")->rect, QRect(50, 30, 50, 50));
    QCOMPARE(findCall(headers, "c")->rect, QRect(100, 30, 50, 50));
    QCOMPARE(findCall(headers, "Q")->rect, QRect(150, 0, 50, 80));

    // No divider inside the parent cell, dividers between the leaves.
    const int parentY = 15;
    const int leafY = 45;
    for (int x = 44; x <= 55; ++x)
        QCOMPARE(image.pixel(x, parentY), image.pixel(30, parentY));
    bool divided = false;
    for (int x = 44; x <= 55; ++x)
        divided = divided || image.pixel(x, leafY) != image.pixel(10, leafY);
    QVERIFY(divided);

    header.resizeSection(1, 90);
    style.calls.clear();
    image = renderWidget(&header);
    headers = style.callsOf(QStyle::CE_Header);
    QCOMPARE(findCall(headers, "P")->rect, QRect(0, 0, 190, 30));
    QCOMPARE(findCall(headers, "c")->rect, QRect(140, 30, 50, 50));
    QCOMPARE(findCall(headers, "Q")->rect, QRect(190, 0, 50, 80));
    // The parent now runs over what was Q's area before.
    for (int x = 150; x <= 180; ++x)
        QCOMPARE(image.pixel(x, parentY), image.pixel(30, parentY));
}

void tst_CMwHierarchicalHeaderView::resizedMiddleSectionRepaintsParent()
{
    QStandardItemModel items(2, 4);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setStretchLastSection(false);
    header.setModel(&items);
    header.setHeaderModel(
        buildHeaderModel({leaf("L"), group("P", {leaf("a"), leaf("b"), leaf("c")})}, &header));
    for (int i = 0; i < 4; ++i)
        header.resizeSection(i, 50);
    QVERIFY(showAt(header, 300, 60));
    QApplication::processEvents();

    PaintSpy spy;
    header.viewport()->installEventFilter(&spy);
    // Middle leaf of P (section 2): P starts at section 1, x = 50.
    header.resizeSection(2, 80);
    QTRY_VERIFY(!spy.region.isEmpty());
    QVERIFY(spy.region.contains(QPoint(52, 5)));
    // The top-level leaf left of P is not repainted.
    QVERIFY(!spy.region.contains(QPoint(20, 5)));

    // The first leaf of a parent has nothing spanning in from the left.
    spy.region = QRegion();
    header.resizeSection(1, 60);
    QTRY_VERIFY(!spy.region.isEmpty());
    QVERIFY(!spy.region.contains(QPoint(20, 5)));
    QVERIFY(spy.region.contains(QPoint(52, 5)));
}

void tst_CMwHierarchicalHeaderView::onlyLeafShowsSelection()
{
    RecordingStyle style;
    QStandardItemModel items(3, 3);
    QTreeView view;
    auto *header = new CMwHierarchicalHeaderView(Qt::Horizontal);
    header->setStyle(&style);
    view.setHeader(header);
    view.setModel(&items);
    header->setHeaderModel(
        buildHeaderModel({group("P", {leaf("a"), leaf("b")}), leaf("c")}, header));
    header->setHighlightSections(true);
    view.setSelectionBehavior(QAbstractItemView::SelectColumns);
    view.selectionModel()->select(
        QItemSelection(items.index(0, 0), items.index(2, 0)), QItemSelectionModel::Select);
    QVERIFY(showAt(view, 400, 200));

    style.calls.clear();
    renderWidget(header);
    const auto headers = style.callsOf(QStyle::CE_Header);
    const auto *a = findCall(headers, "a");
    QVERIFY(a);
    QVERIFY(a->state & QStyle::State_On);
    QVERIFY(a->state & QStyle::State_Sunken);
    int parents = 0;
    for (const auto &call : headers) {
        if (call.text == "P") {
            ++parents;
            QVERIFY(!(call.state & QStyle::State_On));
            QVERIFY(!(call.state & QStyle::State_Sunken));
        }
        if (call.text == "b")
            QVERIFY(!(call.state & (QStyle::State_On | QStyle::State_Sunken)));
    }
    // P is drawn once for each of its two sections.
    QCOMPARE(parents, 2);
}

void tst_CMwHierarchicalHeaderView::rotatedCaption()
{
    RecordingStyle style;
    QStandardItemModel items(1, 2);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setStyle(&style);
    header.setStretchLastSection(false);
    header.setModel(&items);
    Node turned = leaf("WWWWWWWW");
    turned.rotated = true;
    header.setHeaderModel(buildHeaderModel({turned, leaf("WWWWWWWW")}, &header));
    header.resizeSection(0, 40);
    header.resizeSection(1, 120);
    QVERIFY(showAt(header, 200, 130));

    style.calls.clear();
    const QImage image = renderWidget(&header);
    const auto sections = style.callsOf(QStyle::CE_HeaderSection);
    const auto labels = style.callsOf(QStyle::CE_HeaderLabel);
    const auto *section = findCall(sections, "WWWWWWWW");
    QVERIFY(section);
    QCOMPARE(section->rect, QRect(0, 0, 40, 130));
    QCOMPARE(section->transform, QTransform());
    const auto *label = findCall(labels, "WWWWWWWW");
    QVERIFY(label);
    QCOMPARE(label->transform, QTransform().rotate(-90));
    QCOMPARE(label->rect.size(), QSize(130, 40));
    // Turned back, the label covers the cell.
    const QPointF turnedBack = label->transform.mapRect(QRectF(label->rect)).center();
    QVERIFY2(qAbs(turnedBack.x() - 20) <= 2 && qAbs(turnedBack.y() - 65) <= 2,
        qPrintable(QStringLiteral("%1,%2").arg(turnedBack.x()).arg(turnedBack.y())));

    // The rotated caption runs down the cell, the plain one across.
    const QRect rotatedText = darkPixels(image, QRect(2, 2, 36, 126));
    const QRect plainText = darkPixels(image, QRect(42, 2, 116, 126));
    QVERIFY(rotatedText.height() > 2 * rotatedText.width());
    QVERIFY(plainText.width() > 2 * plainText.height());

    // Measured transposed: the rotated leaf is as high as the plain one is wide.
    TestHeader measuring;
    measuring.setModel(&items);
    measuring.setHeaderModel(header.headerModel());
    measuring.setSortIndicator(-1, Qt::AscendingOrder);
    const QSize rotatedSize = measuring.sectionSizeFromContents(0);
    const QSize plainSize = measuring.sectionSizeFromContents(1);
    QFont bold = measuring.font();
    bold.setWeight(QFont::Bold);
    const QFontMetrics metrics(bold);
    const QSize decoration = styleSection(measuring, 0);
    QCOMPARE(plainSize.width(), metrics.size(0, "WWWWWWWW").width() + decoration.width());
    QCOMPARE(rotatedSize.height(),
        metrics.size(0, "WWWWWWWW").width() + decoration.height() - metrics.height());
    QCOMPARE(rotatedSize.width(), metrics.height() + decoration.width());
}

void tst_CMwHierarchicalHeaderView::kept_sectionWithoutLeafIsBlank()
{
    RecordingStyle style;
    QStandardItemModel items(1, 3);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setStyle(&style);
    header.setStretchLastSection(false);
    header.setModel(&items);
    header.setHeaderModel(buildHeaderModel({leaf("a"), leaf("b")}, &header));
    for (int i = 0; i < 3; ++i)
        header.resizeSection(i, 100);
    QVERIFY(showAt(header, 300, 40));

    style.calls.clear();
    const QImage image = renderWidget(&header);
    const QRect blank(201, 1, 98, 38);
    for (const auto &call : style.calls)
        QVERIFY2(!call.rect.intersects(blank), qPrintable(call.text));
    const QRgb background = image.pixel(blank.topLeft());
    for (int y = blank.top(); y <= blank.bottom(); ++y)
        for (int x = blank.left(); x <= blank.right(); ++x)
            QCOMPARE(image.pixel(x, y), background);
    // A drawn section is not uniform (gradient, dividers, caption).
    bool varied = false;
    for (int y = 1; y < 39 && !varied; ++y)
        for (int x = 101; x < 199 && !varied; ++x)
            varied = image.pixel(x, y) != image.pixel(101, 1);
    QVERIFY(varied);
}

void tst_CMwHierarchicalHeaderView::extraPieceRightOfLastSection()
{
    RecordingStyle style;
    QStandardItemModel items(1, 2);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setStyle(&style);
    header.setStretchLastSection(false);
    header.setModel(&items);
    header.setHeaderModel(buildHeaderModel({leaf("a"), leaf("b")}, &header));
    header.resizeSection(0, 60);
    header.resizeSection(1, 60);
    QVERIFY(showAt(header, 300, 40));

    style.calls.clear();
    const QImage image = renderWidget(&header);
    const auto headers = style.callsOf(QStyle::CE_Header);
    bool found = false;
    for (const auto &call : headers)
        found = found || (call.text.isEmpty() && call.rect == QRect(120, 0, 300, 40));
    QVERIFY(found);
    // Right of the last section the header looks like a section (same
    // gradient from top to bottom), not like Qt's flat empty area.
    for (int y : {3, 20, 36})
        QCOMPARE(image.pixel(200, y), image.pixel(70, y));
    QVERIFY(image.pixel(200, 3) != image.pixel(200, 36));
    // Only the last section carries it.
    for (const auto &call : headers)
        QVERIFY(call.text == "a" || call.text == "b" || call.rect.left() == 120);
}

void tst_CMwHierarchicalHeaderView::cellBrushesAndFont()
{
    RecordingStyle style;
    QStandardItemModel items(1, 1);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setStyle(&style);
    header.setModel(&items);
    QStandardItemModel *cells = buildHeaderModel({leaf("a")}, &header);
    cells->item(0, 0)->setForeground(QBrush(Qt::red));
    cells->item(0, 0)->setBackground(QBrush(Qt::blue));
    header.setHeaderModel(cells);
    QVERIFY(showAt(header, 120, 40));
    style.calls.clear();
    renderWidget(&header);
    const auto *call = findCall(style.callsOf(QStyle::CE_Header), "a");
    QVERIFY(call);
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(call->palette.color(group, QPalette::ButtonText), QColor(Qt::red));
        QCOMPARE(call->palette.color(group, QPalette::Button), QColor(Qt::blue));
        QCOMPARE(call->palette.color(group, QPalette::Window), QColor(Qt::blue));
    }

    // The cell's own font measures the caption (bold).
    TestHeader measuring;
    measuring.setModel(&items);
    measuring.setSortIndicator(-1, Qt::AscendingOrder);
    measuring.setHeaderModel(cells);
    QFont big = measuring.font();
    big.setPixelSize(30);
    cells->item(0, 0)->setText("Wide");
    cells->item(0, 0)->setFont(big);
    big.setWeight(QFont::Bold);
    QCOMPARE(measuring.sectionSizeFromContents(0).width(),
        QFontMetrics(big).size(0, "Wide").width() + styleSection(measuring, 0).width());
}

void tst_CMwHierarchicalHeaderView::sectionSizeSumsLevels()
{
    QStandardItemModel items(1, 3);
    TestHeader header;
    header.setModel(&items);
    header.setSortIndicator(-1, Qt::AscendingOrder);
    header.setHeaderModel(buildHeaderModel(
        {group("Top", {group("Mid", {leaf("Leaf", QSize(10, 50))}, QSize(10, 30))}, QSize(10, 40)),
            leaf("Alone", QSize(10, 70)), group("G", {group("H", {leaf("x")})})},
        &header));
    // Size hints larger than the captions set each level: 40 + 30 + 50.
    QCOMPARE(header.sectionSizeFromContents(0).height(), 120);
    QCOMPARE(header.sectionSizeFromContents(1).height(), 70);
    // Three levels of one-line captions: three times the style's section.
    QCOMPARE(header.sectionSizeFromContents(2).height(), 3 * styleSection(header, 2).height());
    // The width is the leaf's own.
    QFont bold = header.font();
    bold.setWeight(QFont::Bold);
    QCOMPARE(header.sectionSizeFromContents(2).width(),
        QFontMetrics(bold).size(0, "x").width() + styleSection(header, 2).width());

    // Without a header model (or a leaf) the plain header measures.
    QStandardItemModel wider(1, 4);
    TestHeader plain;
    plain.setModel(&wider);
    TestHeader partial;
    partial.setModel(&wider);
    partial.setHeaderModel(header.headerModel());
    QCOMPARE(partial.sectionSizeFromContents(3), plain.sectionSizeFromContents(3));
}

void tst_CMwHierarchicalHeaderView::kept_sortIndicatorAllowance()
{
    QStandardItemModel items(1, 2);
    TestHeader header;
    header.setModel(&items);
    header.setHeaderModel(buildHeaderModel({leaf("Alpha"), leaf("Alpha")}, &header));
    header.setSortIndicator(0, Qt::AscendingOrder);

    // Under Fusion: the style's own room for the arrow plus 12 pixels.
    QStyleOptionHeader withArrow = header.styleOptionForCell(0);
    QStyleOptionHeader without = withArrow;
    without.sortIndicator = QStyleOptionHeader::None;
    const int styleRoom
        = header.style()
              ->sizeFromContents(QStyle::CT_HeaderSection, &withArrow, QSize(), &header)
              .width()
        - header.style()
              ->sizeFromContents(QStyle::CT_HeaderSection, &without, QSize(), &header)
              .width();
    QCOMPARE(header.sectionSizeFromContents(0).width() - header.sectionSizeFromContents(1).width(),
        styleRoom + 12);

    // With a style that reserves nothing, exactly 12.
    NoSortRoomStyle style;
    header.setStyle(&style);
    QCOMPARE(
        header.sectionSizeFromContents(0).width() - header.sectionSizeFromContents(1).width(), 12);
    header.setSortIndicator(1, Qt::DescendingOrder);
    QCOMPARE(
        header.sectionSizeFromContents(1).width() - header.sectionSizeFromContents(0).width(), 12);
    header.setStyle(nullptr);
}

void tst_CMwHierarchicalHeaderView::sortIndicatorMapping()
{
    QStandardItemModel items(1, 3);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setModel(&items);
    header.setSortIndicator(1, Qt::AscendingOrder);
    QCOMPARE(header.styleOptionForCell(1).sortIndicator, QStyleOptionHeader::SortDown);
    QCOMPARE(header.styleOptionForCell(0).sortIndicator, QStyleOptionHeader::None);
    header.setSortIndicator(1, Qt::DescendingOrder);
    QCOMPARE(header.styleOptionForCell(1).sortIndicator, QStyleOptionHeader::SortUp);
    QCOMPARE(header.styleOptionForCell(2).sortIndicator, QStyleOptionHeader::None);

    const QStyleOptionHeader opt = header.styleOptionForCell(2);
    QCOMPARE(opt.section, 2);
    QCOMPARE(opt.textAlignment, Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(opt.iconAlignment, Qt::Alignment(Qt::AlignVCenter));
}

void tst_CMwHierarchicalHeaderView::positions_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("section");
    QTest::addColumn<int>("movedTo"); // visual index section 0 is moved to, -1 for none
    QTest::addColumn<int>("position");

    QTest::newRow("only one") << 1 << 0 << -1 << int(QStyleOptionHeader::OnlyOneSection);
    QTest::newRow("first") << 4 << 0 << -1 << int(QStyleOptionHeader::Beginning);
    QTest::newRow("second") << 4 << 1 << -1 << int(QStyleOptionHeader::Middle);
    QTest::newRow("third") << 4 << 2 << -1 << int(QStyleOptionHeader::Middle);
    QTest::newRow("last") << 4 << 3 << -1 << int(QStyleOptionHeader::End);
    QTest::newRow("moved first to end") << 4 << 0 << 3 << int(QStyleOptionHeader::End);
    QTest::newRow("moved, new first") << 4 << 1 << 3 << int(QStyleOptionHeader::Beginning);
}

void tst_CMwHierarchicalHeaderView::positions()
{
    QFETCH(int, columns);
    QFETCH(int, section);
    QFETCH(int, movedTo);
    QFETCH(int, position);
    QStandardItemModel items(1, columns);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setModel(&items);
    if (movedTo >= 0)
        header.moveSection(0, movedTo);
    QCOMPARE(int(header.styleOptionForCell(section).position), position);
}

void tst_CMwHierarchicalHeaderView::selectedPositions()
{
    QStandardItemModel items(2, 4);
    QTreeView view;
    auto *header = new CMwHierarchicalHeaderView(Qt::Horizontal);
    view.setHeader(header);
    view.setModel(&items);
    QItemSelectionModel *selection = view.selectionModel();
    const auto selectColumns = [&](const QVector<int> &columns) {
        selection->clearSelection();
        for (int c : columns)
            selection->select(
                QItemSelection(items.index(0, c), items.index(1, c)), QItemSelectionModel::Select);
    };

    selectColumns({0, 2});
    QCOMPARE(header->styleOptionForCell(0).selectedPosition, QStyleOptionHeader::NotAdjacent);
    QCOMPARE(header->styleOptionForCell(1).selectedPosition,
        QStyleOptionHeader::NextAndPreviousAreSelected);
    QCOMPARE(header->styleOptionForCell(2).selectedPosition, QStyleOptionHeader::NotAdjacent);
    QCOMPARE(
        header->styleOptionForCell(3).selectedPosition, QStyleOptionHeader::PreviousIsSelected);

    selectColumns({1});
    QCOMPARE(header->styleOptionForCell(0).selectedPosition, QStyleOptionHeader::NextIsSelected);
    QCOMPARE(
        header->styleOptionForCell(2).selectedPosition, QStyleOptionHeader::PreviousIsSelected);
    QCOMPARE(header->styleOptionForCell(3).selectedPosition, QStyleOptionHeader::NotAdjacent);

    // A column selected in part is not a selected neighbour.
    selection->clearSelection();
    selection->select(items.index(0, 1), QItemSelectionModel::Select);
    QCOMPARE(header->styleOptionForCell(0).selectedPosition, QStyleOptionHeader::NotAdjacent);
}

void tst_CMwHierarchicalHeaderView::selectionStates()
{
    QStandardItemModel items(2, 3);
    QTreeView view;
    auto *header = new CMwHierarchicalHeaderView(Qt::Horizontal);
    view.setHeader(header);
    view.setModel(&items);
    QItemSelectionModel *selection = view.selectionModel();
    selection->select(
        QItemSelection(items.index(0, 2), items.index(1, 2)), QItemSelectionModel::Select);
    selection->select(items.index(0, 1), QItemSelectionModel::Select);

    header->setHighlightSections(false);
    QVERIFY(!(header->styleOptionForCell(2).state & (QStyle::State_On | QStyle::State_Sunken)));

    header->setHighlightSections(true);
    QVERIFY(header->styleOptionForCell(2).state & QStyle::State_On);
    QVERIFY(header->styleOptionForCell(2).state & QStyle::State_Sunken);
    QVERIFY(header->styleOptionForCell(1).state & QStyle::State_On);
    QVERIFY(!(header->styleOptionForCell(1).state & QStyle::State_Sunken));
    QVERIFY(!(header->styleOptionForCell(0).state & (QStyle::State_On | QStyle::State_Sunken)));
}

void tst_CMwHierarchicalHeaderView::contextMenuTexts()
{
    QStandardItemModel items(1, 3);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setModel(&items);
    QVERIFY(showAt(header, 300, 30));
    int minimumWidth = 0;
    const QStringList texts = runMenu(&header, QPoint(5, 5), QString(), &minimumWidth);
    QCOMPARE(texts, QStringList({"Hide Column", "Show All Columns", "|", "Group By", "Ungroup"}));
    QCOMPARE(minimumWidth, 150);
}

void tst_CMwHierarchicalHeaderView::contextMenu_data()
{
    QTest::addColumn<QString>("choice"); // action clicked, empty for none
    QTest::addColumn<int>("hiddenBefore"); // section hidden before, -1 for none
    QTest::addColumn<QVector<bool>>("hidden"); // hidden state of the 4 sections afterwards
    QTest::addColumn<QStringList>("signalList");

    const QVector<bool> none = {false, false, false, false};
    QTest::newRow("hide") << "Hide Column" << -1 << QVector<bool>({false, true, false, false})
                          << QStringList({"show 1 0"});
    QTest::newRow("show all") << "Show All Columns" << 3 << none
                              << QStringList({"show 0 1", "show 1 1", "show 2 1", "show 3 1"});
    QTest::newRow("group by") << "Group By" << -1 << none << QStringList({"group 1"});
    QTest::newRow("ungroup") << "Ungroup" << -1 << none << QStringList({"group -1"});
    QTest::newRow("no choice") << QString() << 3 << QVector<bool>({false, false, false, true})
                               << QStringList();
}

void tst_CMwHierarchicalHeaderView::contextMenu()
{
    QFETCH(QString, choice);
    QFETCH(int, hiddenBefore);
    QFETCH(QVector<bool>, hidden);
    QFETCH(QStringList, signalList);

    QStandardItemModel items(1, 4);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setStretchLastSection(false);
    header.setModel(&items);
    for (int i = 0; i < 4; ++i)
        header.resizeSection(i, 50);
    if (hiddenBefore >= 0)
        header.setSectionHidden(hiddenBefore, true);
    QVERIFY(showAt(header, 300, 30));

    QStringList emitted;
    connect(&header, &CMwHierarchicalHeaderView::showColumn, this, [&](mw_int32 column, bool show) {
        emitted << QStringLiteral("show %1 %2").arg(column).arg(show);
    });
    connect(&header, &CMwHierarchicalHeaderView::groupByColumn, this,
        [&](mw_int32 column) { emitted << QStringLiteral("group %1").arg(column); });

    // Section 1 lies at x 50 to 99.
    runMenu(&header, QPoint(header.sectionViewportPosition(1) + 10, 10), choice);
    QCOMPARE(emitted, signalList);
    for (int i = 0; i < 4; ++i)
        QCOMPARE(header.isSectionHidden(i), hidden.at(i));
}

void tst_CMwHierarchicalHeaderView::hideColumnKeepsLastVisible()
{
    QStandardItemModel items(1, 2);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setStretchLastSection(false);
    header.setModel(&items);
    header.resizeSection(0, 80);
    header.resizeSection(1, 80);
    header.setSectionHidden(0, true);
    QVERIFY(showAt(header, 200, 30));
    QSignalSpy spy(&header, SIGNAL(showColumn(mw_int32, bool)));
    QVERIFY(spy.isValid());

    const QPoint inSection1(header.sectionViewportPosition(1) + 10, 10);
    QCOMPARE(header.logicalIndexAt(inSection1), 1);
    runMenu(&header, inSection1, "Hide Column");
    QVERIFY(!header.isSectionHidden(1));
    QCOMPARE(header.hiddenSectionCount(), 1);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 1);
    QCOMPARE(spy.at(0).at(1).toBool(), false);
}

void tst_CMwHierarchicalHeaderView::groupBySortsModel()
{
    QStandardItemModel items(3, 2);
    const QStringList values = {"pear", "apple", "fig"};
    for (int r = 0; r < 3; ++r) {
        items.setItem(r, 0, new QStandardItem(QString::number(r)));
        items.setItem(r, 1, new QStandardItem(values.at(r)));
    }
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setStretchLastSection(false);
    header.setModel(&items);
    watchModel(&items);
    header.resizeSection(0, 60);
    header.resizeSection(1, 60);
    QVERIFY(showAt(header, 200, 30));
    QSignalSpy spy(&header, SIGNAL(groupByColumn(mw_int32)));
    runMenu(&header, QPoint(header.sectionViewportPosition(1) + 5, 10), "Group By");
    QCOMPARE(items.index(0, 1).data().toString(), QString("apple"));
    QCOMPARE(items.index(1, 1).data().toString(), QString("fig"));
    QCOMPARE(items.index(2, 1).data().toString(), QString("pear"));
    QCOMPARE(items.index(0, 0).data().toString(), QString("1"));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), 1);

    // Without a model the choice is still reported (outside any section: -1).
    CMwHierarchicalHeaderView bare(Qt::Horizontal);
    QVERIFY(showAt(bare, 200, 30));
    QSignalSpy bareSpy(&bare, SIGNAL(groupByColumn(mw_int32)));
    runMenu(&bare, QPoint(10, 10), "Group By");
    QCOMPARE(bareSpy.count(), 1);
    QCOMPARE(bareSpy.at(0).at(0).toInt(), -1);
}

void tst_CMwHierarchicalHeaderView::setModelDropsHeaderModel()
{
    QStandardItemModel items(1, 2);
    CMwHierarchicalHeaderView header(Qt::Horizontal);
    QStandardItemModel *cells = buildHeaderModel({leaf("a"), leaf("b")}, &header);
    header.setHeaderModel(cells);
    QCOMPARE(header.headerModel(), cells);
    header.setModel(&items);
    QVERIFY(!header.headerModel());
    QCOMPARE(header.count(), 2);
    // Set afterwards, it stays; the header model is not owned.
    header.setHeaderModel(cells);
    QCOMPARE(header.headerModel(), cells);
    QCOMPARE(cells->parent(), &header);
    header.setModel(nullptr);
    QVERIFY(!header.headerModel());
}

void tst_CMwHierarchicalHeaderView::setModelAdoptsSuppliedModel()
{
    SupplyingModel items(2, 2);
    QStandardItemModel supplied;
    QStandardItemModel suppliedVertical;
    items.horizontal = &supplied;
    items.vertical = &suppliedVertical;
    QStandardItemModel earlier;

    CMwHierarchicalHeaderView header(Qt::Horizontal);
    header.setHeaderModel(&earlier);
    header.setModel(&items);
    QCOMPARE(header.headerModel(), &supplied);

    CMwHierarchicalHeaderView vertical(Qt::Vertical);
    vertical.setHeaderModel(&earlier);
    vertical.setModel(&items);
    QCOMPARE(vertical.headerModel(), &suppliedVertical);
    QCOMPARE(vertical.count(), 2);

    // A value that is not an item model is ignored.
    QObject notAModel;
    items.horizontal = &notAModel;
    QStandardItemModel other(1, 1);
    header.setModel(&other);
    header.setModel(&items);
    QVERIFY(!header.headerModel());
}

void tst_CMwHierarchicalHeaderView::guardedHeaderModel()
{
    RecordingStyle style;
    QStandardItemModel items(1, 2);
    TestHeader header;
    header.setStyle(&style);
    header.setModel(&items);
    auto *cells = buildHeaderModel({leaf("a"), leaf("b")}, nullptr);
    header.setHeaderModel(cells);
    QVERIFY(showAt(header, 200, 30));
    const QSize measured = header.sectionSizeFromContents(0);
    delete cells;
    QVERIFY(!header.headerModel());

    TestHeader plain;
    plain.setModel(&items);
    QCOMPARE(header.sectionSizeFromContents(0), plain.sectionSizeFromContents(0));
    QVERIFY(measured != plain.sectionSizeFromContents(0));
    style.calls.clear();
    renderWidget(&header);
    // Only the piece right of the last section is drawn.
    for (const auto &call : style.callsOf(QStyle::CE_Header))
        QVERIFY(call.rect.left() >= header.sectionViewportPosition(1) + header.sectionSize(1));
}

void tst_CMwHierarchicalHeaderView::verticalHeader()
{
    RecordingStyle style;
    QStandardItemModel items(3, 1);
    TestHeader header(Qt::Vertical);
    header.setStyle(&style);
    header.setModel(&items);
    header.setSortIndicator(-1, Qt::AscendingOrder);
    header.setHeaderModel(
        buildHeaderModel({group("P", {leaf("a"), leaf("b")}, QSize(40, 10)), leaf("c")}, &header));
    QCOMPARE(header.count(), 3);
    for (int i = 0; i < 3; ++i)
        header.resizeSection(i, 30);
    QVERIFY(showAt(header, 100, 120));
    style.calls.clear();
    renderWidget(&header);
    const auto headers = style.callsOf(QStyle::CE_Header);
    QCOMPARE(findCall(headers, "P")->rect, QRect(0, 0, 40, 60));
    QCOMPARE(findCall(headers, "a")->rect, QRect(40, 0, 60, 30));
    QCOMPARE(findCall(headers, "b")->rect, QRect(40, 30, 60, 30));
    QCOMPARE(findCall(headers, "c")->rect, QRect(0, 60, 100, 30));
    // Levels add up across the header.
    QFont bold = header.font();
    bold.setWeight(QFont::Bold);
    QCOMPARE(header.sectionSizeFromContents(0).width(),
        40 + QFontMetrics(bold).size(0, "a").width() + styleSection(header, 0).width());
}

namespace {

QVector<Node> irregularTree()
{
    return {group("A", {leaf("a1"), group("B", {leaf("b1"), leaf("b2"), leaf("b3")}), leaf("a2")}),
        leaf("L1"), group("C", {group("D", {leaf("d1")}), group("E", {leaf("e1"), leaf("e2")})}),
        group("F", {leaf("f1"), group("G", {group("H", {leaf("h1"), leaf("h2")})})})};
}

// Every cached answer against the plain walk, for every section and cell.
void compareWithWalk(TestHeader &header)
{
    oracle::WalkingHeaderPrivate *d = header.priv();
    QVERIFY(!d->walk);
    for (int s = -2; s < header.count() + 2; ++s) {
        const QModelIndex cached = d->leafForSection(s);
        const QModelIndex walked = oracle::walkLeafForSection(d, s);
        QCOMPARE(cached, walked);
        if (!walked.isValid())
            continue;
        QCOMPARE(d->indexInRoot(cached, s), oracle::walkIndexInRoot(d, walked));
        const int start = header.sectionPosition(s);
        for (const QModelIndex &cell : d->pathTo(walked)) {
            QCOMPARE(d->spanLength(cell, cached, s), oracle::walkSpanLength(d, cell, walked, s));
            QCOMPARE(d->spanStart(cell, cached, s, start),
                oracle::walkSpanStart(d, cell, walked, s, start));
        }
    }
}

} // namespace

void tst_CMwHierarchicalHeaderView::cacheMatchesWalk()
{
    // More sections than leaves: the last ones have none.
    QStandardItemModel items(1, 15);
    TestHeader header;
    header.setModel(&items);
    QStandardItemModel *cells = buildHeaderModel(irregularTree(), &header);
    // An inner cell with columns but no row under it has no leaves.
    auto *hollow = new QStandardItem("hollow");
    hollow->setColumnCount(2);
    cells->setItem(0, 4, hollow);
    header.setHeaderModel(cells);
    for (int i = 0; i < header.count(); ++i)
        header.resizeSection(i, 20 + 3 * i);

    CMwHierarchicalHeaderViewPrivate *d = header.priv();
    QCOMPARE(oracle::walkLeafForSection(d, 0).data().toString(), QString("a1"));
    QCOMPARE(oracle::walkLeafForSection(d, 3).data().toString(), QString("b3"));
    QCOMPARE(oracle::walkLeafForSection(d, 5).data().toString(), QString("L1"));
    QCOMPARE(oracle::walkLeafForSection(d, 11).data().toString(), QString("h2"));
    QVERIFY(!oracle::walkLeafForSection(d, 12).isValid());
    compareWithWalk(header);

    header.setSectionHidden(2, true);
    compareWithWalk(header);
    header.moveSection(1, 7);
    QVERIFY(header.sectionsMoved());
    compareWithWalk(header);
}

void tst_CMwHierarchicalHeaderView::cacheFollowsChanges()
{
    QStandardItemModel items(1, 13);
    TestHeader header;
    header.setModel(&items);
    QStandardItemModel *cells = buildHeaderModel(irregularTree(), &header);
    header.setHeaderModel(cells);
    watchModel(&items);
    watchModel(cells);
    CMwHierarchicalHeaderViewPrivate *d = header.priv();
    compareWithWalk(header);
    QCOMPARE(d->leafForSection(5).data().toString(), QString("L1"));

    // A new leaf in B moves every later leaf one section on.
    QStandardItem *b = cells->item(0, 0)->child(0, 1);
    QCOMPARE(b->text(), QString("B"));
    b->insertColumn(1, {new QStandardItem("bNew")});
    QCOMPARE(d->leafForSection(2).data().toString(), QString("bNew"));
    QCOMPARE(d->leafForSection(6).data().toString(), QString("L1"));
    compareWithWalk(header);

    // More sections than before.
    items.insertColumns(13, 2);
    QCOMPARE(header.count(), 15);
    compareWithWalk(header);
    items.removeColumns(0, 3);
    compareWithWalk(header);

    // A reset header model and a different one.
    cells->removeColumns(0, 2);
    QCOMPARE(d->leafForSection(0).data().toString(), QString("d1"));
    compareWithWalk(header);
    QStandardItemModel *other = buildHeaderModel({leaf("x"), group("Y", {leaf("y")})}, &header);
    header.setHeaderModel(other);
    watchModel(other);
    QCOMPARE(d->leafForSection(1).data().toString(), QString("y"));
    compareWithWalk(header);
    delete other;
    QVERIFY(!d->leafForSection(0).isValid());
}

void tst_CMwHierarchicalHeaderView::cachedPaintingMatchesWalk()
{
    QStandardItemModel items(1, 13);
    TestHeader header;
    header.setStretchLastSection(false);
    header.setModel(&items);
    header.setHeaderModel(buildHeaderModel(irregularTree(), &header));
    header.resizeSections(QHeaderView::ResizeToContents);
    QVERIFY(showAt(header, 900, header.sizeHint().height()));

    QVector<QSize> cachedSizes;
    for (int i = 0; i < header.count(); ++i)
        cachedSizes << header.sectionSizeFromContents(i);
    const QImage cached = renderWidget(&header);

    header.priv()->walk = true;
    QVector<QSize> walkedSizes;
    for (int i = 0; i < header.count(); ++i)
        walkedSizes << header.sectionSizeFromContents(i);
    const QImage walked = renderWidget(&header);
    header.priv()->walk = false;

    QCOMPARE(cachedSizes, walkedSizes);
    QCOMPARE(cached, walked);
    // The drawing is not empty: the widest top cell spans several sections.
    QVERIFY(!darkPixels(cached, cached.rect()).isEmpty());
}

// Three levels, drawn once with every cache in use and once without, after
// changes to captions, fonts and rotation between paints: a measure kept
// from an earlier paint would put a level at the wrong height.
void tst_CMwHierarchicalHeaderView::paintMeasuresFollowChanges()
{
    QStandardItemModel items(1, 8);
    TestHeader header;
    header.setStretchLastSection(false);
    header.setDefaultSectionSize(70);
    header.setModel(&items);
    Node first = group("Block 0", {leaf("c0"), leaf("c1"), leaf("c2")});
    first.children[0].rotated = true;
    QStandardItemModel *cells = buildHeaderModel(
        {group("Group 0", {first, group("Block 1", {leaf("c3"), leaf("c4")})}),
            group("Group 1", {group("Block 2", {leaf("c5"), leaf("c6"), leaf("c7")})})},
        &header);
    header.setHeaderModel(cells);
    QVERIFY(showAt(header, 600, 110));

    // Fonts may be given in points or in pixels.
    const auto scaled = [](QFont font, double factor) {
        if (font.pointSizeF() > 0)
            font.setPointSizeF(font.pointSizeF() * factor);
        else
            font.setPixelSize(qMax(1, int(font.pixelSize() * factor)));
        return font;
    };
    const auto cachedAndWalked = [&header](QImage *cached, QImage *walked) {
        *cached = renderWidget(&header);
        header.priv()->walk = true;
        *walked = renderWidget(&header);
        header.priv()->walk = false;
    };
    QImage before;
    QImage walked;
    cachedAndWalked(&before, &walked);
    QCOMPARE(before, walked);

    // A taller top level, a longer middle caption and a rotated middle cell.
    QStandardItem *group0 = cells->item(0, 0);
    group0->setData(scaled(header.font(), 2), Qt::FontRole);
    group0->child(0, 1)->setText(QStringLiteral("Block 1, now longer"));
    group0->child(0, 0)->setData(true, Qt::UserRole);
    QImage after;
    cachedAndWalked(&after, &walked);
    QCOMPARE(after, walked);
    QVERIFY(after != before);

    // The header's own font measures every caption without a font of its own.
    header.setFont(scaled(header.font(), 0.6));
    QImage smaller;
    cachedAndWalked(&smaller, &walked);
    QCOMPARE(smaller, walked);
    QVERIFY(smaller != after);
}

void tst_CMwHierarchicalHeaderView::spanningCellsDrawnOnceLookTheSame_data()
{
    QTest::addColumn<QString>("styleName");
    QTest::addColumn<QString>("setup");
    const QStringList setups {"plain", "vertical", "rightToLeft", "sortedInGroup",
        "sortedInGroupVertical", "selected", "scrolled", "hiddenLast", "emptyLast", "moved",
        "translucentGroup", "opaqueGroup", "gradientGroup", "dark", "disabled", "partial",
        "partialVertical", "rotatedGroup", "groupFont"};
    for (const QString &styleName : {QStringLiteral("Fusion"), QStringLiteral("Windows")})
        for (const QString &setup : setups)
            QTest::newRow(qPrintable(styleName + ' ' + setup)) << styleName << setup;
}

// A cell over several sections drawn only by the last section a paint event
// draws under it gives the very pixels of drawing it for every section.
void tst_CMwHierarchicalHeaderView::spanningCellsDrawnOnceLookTheSame()
{
    QFETCH(QString, styleName);
    QFETCH(QString, setup);
    const std::unique_ptr<QStyle> style(QStyleFactory::create(styleName));
    QVERIFY(style);
    const bool vertical = setup.contains("Vertical") || setup == "vertical";
    QStandardItemModel items(14, 14);
    TestHeader header(vertical ? Qt::Vertical : Qt::Horizontal);
    header.setStyle(style.get());
    header.setStretchLastSection(false);
    header.setModel(&items);
    QStandardItemModel *cells = buildHeaderModel(
        {group("Group 0",
             {group("Block 0", {leaf("c0"), leaf("c1"), leaf("c2")}),
                 group("Block 1", {leaf("c3"), leaf("c4")})}),
            leaf("c5"),
            group("Group 1",
                {group("Block 2", {leaf("c6"), leaf("c7"), leaf("c8"), leaf("c9")}),
                    group("Block 3", {leaf("c10"), leaf("c11"), leaf("c12"), leaf("c13")})})},
        &header);
    header.setHeaderModel(cells);
    header.setDefaultSectionSize(vertical ? 24 : 46);
    for (int i = 0; i < header.count(); ++i)
        header.resizeSection(i, vertical ? 20 + i % 3 * 4 : 40 + i % 4 * 7);
    QStandardItem *group0 = cells->item(0, 0);
    QStandardItem *group1 = cells->item(0, 2);
    QRegion region;
    if (setup == "rightToLeft")
        header.setLayoutDirection(Qt::RightToLeft);
    if (setup.startsWith("sortedInGroup"))
        header.setSortIndicator(3, Qt::DescendingOrder);
    if (setup == "selected") {
        header.setHighlightSections(true);
        auto *selection = new QItemSelectionModel(&items, &header);
        header.setSelectionModel(selection);
        selection->select(QItemSelection(items.index(0, 7), items.index(13, 8)),
            QItemSelectionModel::Select | QItemSelectionModel::Columns);
    }
    if (setup == "hiddenLast")
        header.hideSection(4);
    if (setup == "emptyLast")
        header.resizeSection(13, 0);
    if (setup == "moved")
        header.moveSection(7, 11);
    if (setup == "translucentGroup")
        group1->setData(QColor(0, 160, 0, 90), Qt::BackgroundRole);
    if (setup == "opaqueGroup")
        group1->child(0, 1)->setData(QColor(200, 220, 90), Qt::BackgroundRole);
    if (setup == "gradientGroup") {
        QLinearGradient gradient(0, 0, 0, 20);
        gradient.setColorAt(0, QColor(255, 0, 0, 40));
        gradient.setColorAt(1, Qt::blue);
        group0->setData(QBrush(gradient), Qt::BackgroundRole);
    }
    if (setup == "dark") {
        QPalette palette = header.palette();
        palette.setColor(QPalette::Button, QColor(45, 45, 48));
        palette.setColor(QPalette::Window, QColor(37, 37, 38));
        palette.setColor(QPalette::ButtonText, QColor(230, 230, 230));
        palette.setColor(QPalette::Light, QColor(80, 80, 80));
        palette.setColor(QPalette::Dark, QColor(20, 20, 20));
        header.setPalette(palette);
    }
    if (setup == "disabled")
        header.setEnabled(false);
    if (setup == "rotatedGroup")
        group1->child(0, 0)->setData(true, Qt::UserRole);
    if (setup == "groupFont") {
        QFont font = header.font();
        font.setItalic(true);
        items.setHeaderData(9, header.orientation(), font, Qt::FontRole);
        items.setHeaderData(7, header.orientation(), QColor(Qt::red), Qt::ForegroundRole);
    }
    const QSize size = vertical ? QSize(header.sizeHint().width() + 10, 250)
                                : QSize(420, header.sizeHint().height() + 6);
    QVERIFY(showAt(header, size.width(), size.height()));
    if (setup == "scrolled")
        header.setOffset(vertical ? 47 : 95);
    // Only a piece of each spanning cell lies in the painted rectangle.
    if (setup == "partial")
        region = QRect(70, 0, 150, header.height());
    if (setup == "partialVertical")
        region = QRect(0, 30, header.width(), 90);

    const auto render = [&header, &region](bool skip) {
        header.priv()->skipCoveredCells = skip;
        QImage image(header.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::magenta);
        header.render(&image, QPoint(), region);
        return image;
    };
    const QImage once = render(true);
    const QImage every = render(false);
    header.priv()->skipCoveredCells = true;
    QCOMPARE(once.size(), every.size());
    for (int y = 0; y < once.height(); ++y)
        QVERIFY2(
            memcmp(once.constScanLine(y), every.constScanLine(y), size_t(once.bytesPerLine())) == 0,
            qPrintable(QStringLiteral("line %1 differs").arg(y)));
    // The header was drawn, and with captions: more than its fill colours.
    // render() puts the painted region's corner at the image's.
    const QRect painted
        = region.isEmpty() ? once.rect() : QRect(QPoint(), region.boundingRect().size());
    QSet<QRgb> colours;
    for (int y = painted.top(); y <= painted.bottom(); ++y)
        for (int x = painted.left(); x <= painted.right(); ++x)
            colours.insert(once.pixel(x, y));
    QVERIFY(!colours.contains(QColor(Qt::magenta).rgba()));
    QVERIFY(colours.size() > 20);
}

void tst_CMwHierarchicalHeaderView::modelsDeletedWhileShown_data()
{
    // Deleted in this order while a table shows both headers: "horizontal"
    // and "vertical" the header models supplied through the item model's
    // roles, "items" the item model itself.
    QTest::addColumn<QStringList>("order");
    QTest::newRow("horizontal") << QStringList {"horizontal"};
    QTest::newRow("vertical") << QStringList {"vertical"};
    QTest::newRow("items") << QStringList {"items"};
    QTest::newRow("horizontal, vertical, items") << QStringList {"horizontal", "vertical", "items"};
    QTest::newRow("items, horizontal, vertical") << QStringList {"items", "horizontal", "vertical"};
    QTest::newRow("vertical, items, horizontal") << QStringList {"vertical", "items", "horizontal"};
}

void tst_CMwHierarchicalHeaderView::modelsDeletedWhileShown()
{
    QFETCH(QStringList, order);
    QPointer<SupplyingModel> items = new SupplyingModel(3, 3);
    QPointer<QStandardItemModel> horizontal
        = buildHeaderModel({group("A", {leaf("x"), leaf("y")}), leaf("z")}, nullptr);
    QPointer<QStandardItemModel> vertical
        = buildHeaderModel({leaf("r0"), group("B", {leaf("r1"), leaf("r2")})}, nullptr);
    items->horizontal = horizontal;
    items->vertical = vertical;
    watchModel(items);
    watchModel(horizontal);
    watchModel(vertical);

    QTableView table;
    auto *top = new TestHeader(Qt::Horizontal);
    auto *side = new TestHeader(Qt::Vertical);
    table.setHorizontalHeader(top);
    table.setVerticalHeader(side);
    table.setModel(items);
    QCOMPARE(top->headerModel(), horizontal.data());
    QCOMPARE(side->headerModel(), vertical.data());
    QVERIFY(showAt(table, 300, 200));
    table.selectRow(1);
    QTest::mouseMove(top->viewport(), QPoint(top->sectionViewportPosition(1) + 3, 3));
    QTest::mouseMove(side->viewport(), QPoint(3, side->sectionViewportPosition(2) + 3));
    const QSize groupedTop = top->sectionSizeFromContents(0);
    table.repaint();

    for (const QString &what : order) {
        if (what == QLatin1String("horizontal"))
            delete horizontal.data();
        else if (what == QLatin1String("vertical"))
            delete vertical.data();
        else
            delete items.data();
        // Painted, measured and resized at once and after the event loop ran.
        table.repaint();
        for (TestHeader *header : {top, side}) {
            for (int section = 0; section < header->count(); ++section)
                header->sectionSizeFromContents(section);
            header->resizeSections(QHeaderView::ResizeToContents);
            header->resizeSection(0, 40);
        }
        QVERIFY(!table.grab().isNull());
        QCoreApplication::processEvents();
        table.repaint();
        QTest::mouseMove(top->viewport(), QPoint(5, 3));
        QTest::mouseClick(top->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 3));
    }
    // Without its header model a header falls back to the plain one.
    if (!horizontal)
        QVERIFY(!top->headerModel());
    if (!vertical)
        QVERIFY(!side->headerModel());
    if (!items) {
        QCOMPARE(top->count(), 0);
        QCOMPARE(side->count(), 0);
    } else if (!horizontal) {
        QCOMPARE(top->count(), 3);
        QVERIFY(top->sectionSizeFromContents(0).height() < groupedTop.height());
    }
    table.resize(200, 150);
    table.repaint();

    // A new item model with its own header model is shown as usual.
    SupplyingModel next(2, 2);
    QStandardItemModel nextHeader;
    nextHeader.setItem(0, 0, new QStandardItem(QStringLiteral("p")));
    nextHeader.setItem(0, 1, new QStandardItem(QStringLiteral("q")));
    next.horizontal = &nextHeader;
    watchModel(&next);
    watchModel(&nextHeader);
    table.setModel(&next);
    QCOMPARE(top->headerModel(), &nextHeader);
    QCOMPARE(top->count(), 2);
    QCOMPARE(side->count(), 2);
    table.repaint();
    table.setModel(nullptr);
    delete items.data();
    delete horizontal.data();
    delete vertical.data();
}

VEL_TEST_MAIN(tst_CMwHierarchicalHeaderView)
#include "tst_cmwhierarchicalheaderview.moc"
