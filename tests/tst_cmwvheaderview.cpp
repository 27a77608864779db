#include "grid_test_support.h"
#include "vel_test_main.h"

#include <vel_qt_widgets/CMwSortFilterProxyModel.h>
#include <vel_qt_widgets/CMwVHeaderView.h>

#include <QtGui/QStandardItemModel>
#include <QtTest/QAbstractItemModelTester>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTreeView>

#include <memory>

namespace {

// Rows numbered through RowNumberRole, the count announced on the vertical header.
void fillNumbered(QStandardItemModel &model, int rows, int firstNumber = 0, int step = 1)
{
    model.clear();
    model.setColumnCount(2);
    for (int r = 0; r < rows; ++r) {
        auto *item = new QStandardItem(QStringLiteral("row %1").arg(r));
        item->setData(firstNumber + r * step, RowNumberRole);
        model.appendRow({item, new QStandardItem(QStringLiteral("x"))});
    }
    if (rows > 0)
        model.setHeaderData(0, Qt::Vertical, rows, VisibleRowCountRole);
}

// A tree beside its row-number header, as the grid arranges them.
struct Rig
{
    explicit Rig(QAbstractItemModel *model)
    {
        header = new CMwVHeaderView(Qt::Vertical, &window);
        tree = new QTreeView(&window);
        tree->setFrameShape(QFrame::NoFrame);
        tree->setHeaderHidden(true);
        tree->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        tree->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        header->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        header->setGeometry(0, 0, 40, 300);
        tree->setGeometry(40, 0, 260, 300);
        header->setStyle(&style);
        tree->setModel(model);
        header->setTreeView(tree);
        header->setModel(model);
        watchModel(model);
        watchModel(header->model());
        header->setDefaultSectionSize(tree->sizeHintForRow(0) > 0 ? tree->sizeHintForRow(0) : 20);
        QObject::connect(
            tree->verticalScrollBar(), SIGNAL(valueChanged(int)), header, SLOT(setOffset(int)));
        window.resize(300, 300);
        window.show();
    }

    // The text drawn in the header at the height y of the tree's viewport.
    QString textAt(int y) const
    {
        QString text;
        int found = 0;
        for (const auto &call : style.callsOf(QStyle::CE_Header)) {
            // Sections overlap by their dividing line.
            if (call.rect.adjusted(0, 1, 0, 0).contains(5, y)) {
                text = call.text;
                ++found;
            }
        }
        return found == 1 ? text : QStringLiteral("<%1 cells>").arg(found);
    }

    QImage render()
    {
        style.calls.clear();
        return renderWidget(header);
    }

    RecordingStyle style;
    QWidget window;
    CMwVHeaderView *header = nullptr;
    QTreeView *tree = nullptr;
};

} // namespace

class tst_CMwVHeaderView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowKShowsK();
    void numbersComeFromRole();
    void rowWithoutNumberIsBlank();
    void expandingShiftsNumbers();
    void numbersAreWhole_data();
    void numbersAreWhole();
    void blankCellsBelowLastSection();
    void emptyModelShowsBlankColumn_data();
    void emptyModelShowsBlankColumn();
    void newWrapperOnEverySetModel();
    void treeViewGone();
    void wrapperForwards();
    void wrapperModelTester();
    void wrapperResetsOnEveryShapeChange();
    void modelsDeletedWhileShown_data();
    void modelsDeletedWhileShown();
};

void tst_CMwVHeaderView::rowKShowsK()
{
    QStandardItemModel model;
    fillNumbered(model, 40);
    Rig rig(&model);
    QVERIFY(QTest::qWaitForWindowExposed(&rig.window));

    // The style's minimum header section is higher than a tree row here;
    // the header must not be held to it.
    const int rowHeight = rig.tree->sizeHintForRow(0);
    QVERIFY(rowHeight > 0);
    QVERIFY(rig.header->minimumSectionSize() <= rowHeight);
    QCOMPARE(rig.header->defaultSectionSize(), rowHeight);
    QCOMPARE(rig.header->count(), 40);

    const QImage image = rig.render();
    int checked = 0;
    for (int k = 0; k < 40; ++k) {
        const QRect row = rig.tree->visualRect(model.index(k, 0));
        if (row.bottom() >= rig.header->height())
            break;
        QCOMPARE(rig.header->sectionViewportPosition(k), row.top());
        QCOMPARE(rig.header->sectionSize(k), row.height());
        QCOMPARE(rig.textAt(row.center().y()), QString::number(k + 1));
        // The digits stand inside the row's band, at the right.
        const QRect digits = darkPixels(image, QRect(0, row.top() + 1, 39, row.height() - 2));
        QVERIFY2(!digits.isEmpty(), qPrintable(QString::number(k)));
        QVERIFY(digits.right() > 25);
        ++checked;
    }
    QVERIFY(checked >= 10);

    // Scrolled together, the numbers stay beside their rows.
    rig.tree->verticalScrollBar()->setValue(rowHeight * 5);
    rig.render();
    const QRect row = rig.tree->visualRect(model.index(7, 0));
    QCOMPARE(rig.textAt(row.center().y()), QString("8"));
}

void tst_CMwVHeaderView::numbersComeFromRole()
{
    QStandardItemModel model;
    fillNumbered(model, 12, 100, 2);
    Rig rig(&model);
    QVERIFY(QTest::qWaitForWindowExposed(&rig.window));
    rig.render();
    for (int k = 0; k < 5; ++k) {
        const QRect row = rig.tree->visualRect(model.index(k, 0));
        QCOMPARE(rig.textAt(row.center().y()), QString::number(100 + 2 * k + 1));
    }
}

void tst_CMwVHeaderView::rowWithoutNumberIsBlank()
{
    QStandardItemModel model;
    fillNumbered(model, 6);
    model.item(2, 0)->setData(QVariant(), RowNumberRole);
    Rig rig(&model);
    QVERIFY(QTest::qWaitForWindowExposed(&rig.window));
    const QImage image = rig.render();
    const QRect row = rig.tree->visualRect(model.index(2, 0));
    QCOMPARE(rig.textAt(row.center().y()), QString());
    QVERIFY(darkPixels(image, QRect(0, row.top() + 1, 39, row.height() - 2)).isEmpty());
    const QRect next = rig.tree->visualRect(model.index(3, 0));
    QCOMPARE(rig.textAt(next.center().y()), QString("4"));
}

void tst_CMwVHeaderView::expandingShiftsNumbers()
{
    QStandardItemModel model;
    model.setColumnCount(1);
    for (int r = 0; r < 3; ++r) {
        auto *parent = new QStandardItem(QStringLiteral("parent %1").arg(r));
        parent->setData(r, RowNumberRole);
        model.appendRow(parent);
    }
    for (int c = 0; c < 2; ++c) {
        auto *child = new QStandardItem(QStringLiteral("child %1").arg(c));
        child->setData(10 + c, RowNumberRole);
        model.item(0)->appendRow(child);
    }
    model.setHeaderData(0, Qt::Vertical, 5, VisibleRowCountRole);
    Rig rig(&model);
    QVERIFY(QTest::qWaitForWindowExposed(&rig.window));
    const int h = rig.header->defaultSectionSize();

    rig.render();
    QCOMPARE(rig.textAt(h / 2), QString("1"));
    QCOMPARE(rig.textAt(h + h / 2), QString("2"));
    QCOMPARE(rig.textAt(2 * h + h / 2), QString("3"));
    QCOMPARE(rig.textAt(3 * h + h / 2), QString());

    rig.tree->expand(model.index(0, 0));
    rig.render();
    QCOMPARE(rig.textAt(h / 2), QString("1"));
    QCOMPARE(rig.textAt(h + h / 2), QString("11"));
    QCOMPARE(rig.textAt(2 * h + h / 2), QString("12"));
    QCOMPARE(rig.textAt(3 * h + h / 2), QString("2"));
    QCOMPARE(rig.textAt(4 * h + h / 2), QString("3"));
}

void tst_CMwVHeaderView::numbersAreWhole_data()
{
    QTest::addColumn<QString>("styleName");
    QTest::addColumn<int>("pixelSize"); // 9 pt at font DPI 96, 120, 144, 192

    for (const char *name : {"Fusion", "Windows"}) {
        for (int pixels : {12, 15, 18, 24})
            QTest::addRow("%s, %d px", name, pixels) << QString::fromLatin1(name) << pixels;
    }
}

void tst_CMwVHeaderView::numbersAreWhole()
{
    QFETCH(QString, styleName);
    QFETCH(int, pixelSize);

    const std::unique_ptr<QStyle> style(QStyleFactory::create(styleName));
    QVERIFY(style);
    QStandardItemModel model;
    fillNumbered(model, 20, 40);
    Rig rig(&model);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    for (QWidget *widget : {static_cast<QWidget *>(rig.header), static_cast<QWidget *>(rig.tree)}) {
        widget->setStyle(style.get());
        widget->setFont(font);
    }
    // The sections follow the tree's rows, below the style's own header size
    // (17 px rows under Windows at 12 px).
    const int rowHeight = rig.tree->sizeHintForRow(0);
    rig.header->setDefaultSectionSize(rowHeight);
    QVERIFY(QTest::qWaitForWindowExposed(&rig.window));
    QCOMPARE(rig.header->sectionSize(0), rowHeight);
    const QImage image = renderWidget(rig.header);

    // Each number's ink is that of the same text drawn whole in the same font.
    for (int k = 0; k < 4; ++k) {
        const QString text = QString::number(40 + k + 1);
        QImage alone(200, 100, QImage::Format_ARGB32_Premultiplied);
        alone.fill(Qt::white);
        {
            QPainter painter(&alone);
            painter.setFont(font);
            painter.setPen(Qt::black);
            painter.drawText(QPoint(20, 70), text);
        }
        const QRect whole = darkPixels(alone, alone.rect());
        const QRect row = rig.tree->visualRect(model.index(k, 0));
        const QRect digits
            = darkPixels(image, QRect(0, row.top(), rig.header->width(), row.height()));
        QVERIFY2(!digits.isEmpty(), qPrintable(text));
        QCOMPARE(digits.height(), whole.height());
        QVERIFY2(qAbs(digits.width() - whole.width()) <= 1, qPrintable(text));
        // Beside its own row, not reaching into the neighbours.
        QVERIFY(digits.top() > row.top() && digits.bottom() < row.bottom());
    }
}

void tst_CMwVHeaderView::blankCellsBelowLastSection()
{
    QStandardItemModel model;
    fillNumbered(model, 3);
    Rig rig(&model);
    rig.header->setDefaultSectionSize(20);
    QVERIFY(QTest::qWaitForWindowExposed(&rig.window));
    const QImage image = rig.render();
    const int height = rig.header->height();
    QVERIFY(height > 150);

    // Last section: y 40 to 59; blank cells follow every 20 pixels.
    QVector<QRect> expected;
    for (QRect r(0, 39 + 20, 40, 21); r.top() < height; r.translate(0, 20))
        expected << r;
    // Drawn by the last section and again over Qt's empty area.
    QVector<QRect> fillers;
    for (const auto &call : rig.style.callsOf(QStyle::CE_Header))
        if (call.rect.top() >= 59 && !fillers.contains(call.rect))
            fillers << call.rect;
    QCOMPARE(fillers, expected);
    for (const auto &call : rig.style.callsOf(QStyle::CE_Header))
        if (call.rect.top() >= 59)
            QCOMPARE(call.text, QString());

    // Drawn as header cells: the same gradient as a real section, no digits.
    for (int k = 0; k < expected.size() - 1; ++k) {
        const int top = expected.at(k).top() + 1;
        for (int dy : {3, 10, 16})
            QCOMPARE(image.pixel(3, top + dy), image.pixel(3, dy));
        QVERIFY(darkPixels(image, QRect(0, top + 1, 39, 17)).isEmpty());
    }
}

void tst_CMwVHeaderView::emptyModelShowsBlankColumn_data()
{
    QTest::addColumn<int>("rows"); // rows of the source model
    QTest::addColumn<bool>("announced"); // whether VisibleRowCountRole is answered

    QTest::newRow("empty model") << 0 << false;
    QTest::newRow("count absent") << 3 << false;
    QTest::newRow("count zero") << 3 << true;
}

void tst_CMwVHeaderView::emptyModelShowsBlankColumn()
{
    QFETCH(int, rows);
    QFETCH(bool, announced);
    QStandardItemModel model;
    fillNumbered(model, rows);
    if (rows > 0)
        model.setHeaderData(
            0, Qt::Vertical, announced ? QVariant(0) : QVariant(), VisibleRowCountRole);

    // Without a tree the header still lays the column out; with no tree rows
    // every cell stays blank.
    RecordingStyle style;
    CMwVHeaderView header(Qt::Vertical);
    header.setStyle(&style);
    QStandardItemModel emptyTreeModel;
    QTreeView tree;
    tree.setModel(&emptyTreeModel);
    header.setTreeView(&tree);
    header.setModel(&model);
    QCOMPARE(header.count(), 0);
    QVERIFY(showAt(header, 40, 200));
    style.calls.clear();
    const QImage image = renderWidget(&header);

    const QFontMetrics metrics = header.fontMetrics();
    const int step = metrics.descent() + metrics.lineSpacing() + 1;
    QVector<QRect> expected;
    for (int y = 0; y <= header.viewport()->height(); y += step)
        expected << QRect(QPoint(0, y - 1), QPoint(39, y + step - 1));
    QVector<QRect> drawn;
    for (const auto &call : style.callsOf(QStyle::CE_Header)) {
        drawn << call.rect;
        QCOMPARE(call.text, QString());
    }
    QCOMPARE(drawn, expected);
    QVERIFY(darkPixels(image, QRect(0, 2, 39, 190)).isEmpty());
}

void tst_CMwVHeaderView::newWrapperOnEverySetModel()
{
    QStandardItemModel first;
    fillNumbered(first, 4);
    QStandardItemModel second;
    fillNumbered(second, 7);
    CMwVHeaderView header(Qt::Vertical);
    header.setModel(&first);
    watchModel(&first);
    watchModel(&second);
    watchModel(header.model());
    QPointer<CMwVHeaderViewModel> wrapper = qobject_cast<CMwVHeaderViewModel *>(header.model());
    QVERIFY(wrapper);
    QCOMPARE(wrapper->parent(), &header);
    QCOMPARE(wrapper->sourceModel(), &first);
    QCOMPARE(header.count(), 4);

    header.setModel(&second);
    watchModel(header.model());
    auto *next = qobject_cast<CMwVHeaderViewModel *>(header.model());
    QVERIFY(next);
    QVERIFY(next != wrapper.data());
    QVERIFY(wrapper.isNull());
    QCOMPARE(next->sourceModel(), &second);
    QCOMPARE(header.count(), 7);

    header.setModel(nullptr);
    QVERIFY(qobject_cast<CMwVHeaderViewModel *>(header.model()));
    QCOMPARE(header.count(), 0);
}

void tst_CMwVHeaderView::treeViewGone()
{
    QStandardItemModel model;
    fillNumbered(model, 4);
    CMwVHeaderView header(Qt::Vertical);
    auto *tree = new QTreeView;
    tree->setModel(&model);
    header.setTreeView(tree);
    QCOMPARE(header.treeView(), tree);
    header.setModel(&model);
    QVERIFY(showAt(header, 40, 120));
    delete tree;
    QVERIFY(!header.treeView());
    // Falls back to the plain header: still four sections, nothing breaks.
    const QImage image = renderWidget(&header);
    QCOMPARE(header.count(), 4);
    QVERIFY(!image.isNull());
}

void tst_CMwVHeaderView::wrapperForwards()
{
    QStandardItemModel source;
    fillNumbered(source, 5);
    source.setHeaderData(1, Qt::Horizontal, QStringLiteral("second"));
    CMwVHeaderViewModel wrapper;
    QCOMPARE(wrapper.rowCount(), 0);
    QCOMPARE(wrapper.columnCount(), 0);
    QVERIFY(!wrapper.headerData(1, Qt::Horizontal).isValid());
    wrapper.setSourceModel(&source);
    watchModel(&wrapper);
    watchModel(&source);
    QCOMPARE(wrapper.rowCount(), 5);
    QCOMPARE(wrapper.columnCount(), 2);
    QCOMPARE(wrapper.index(3, 0).data().toString(), QString("row 3"));
    QCOMPARE(wrapper.index(3, 0).data(RowNumberRole).toInt(), 3);
    QCOMPARE(wrapper.headerData(1, Qt::Horizontal).toString(), QString("second"));
    QCOMPARE(wrapper.headerData(0, Qt::Vertical, VisibleRowCountRole).toInt(), 5);
    // Children of the table's cells: none.
    QCOMPARE(wrapper.rowCount(wrapper.index(0, 0)), 0);

    // The count is the announced one, not the source's row count.
    source.setHeaderData(0, Qt::Vertical, 2, VisibleRowCountRole);
    QCOMPARE(wrapper.rowCount(), 2);
    source.setHeaderData(0, Qt::Vertical, 9, VisibleRowCountRole);
    QCOMPARE(wrapper.rowCount(), 9);
    QVERIFY(!wrapper.index(7, 0).data().isValid());
}

void tst_CMwVHeaderView::wrapperModelTester()
{
    auto *source = new QStandardItemModel;
    fillNumbered(*source, 5);
    CMwVHeaderViewModel wrapper;
    QAbstractItemModelTester tester(
        &wrapper, QAbstractItemModelTester::FailureReportingMode::QtTest);
    wrapper.setSourceModel(source);
    watchModel(&wrapper);
    watchModel(source);
    QCOMPARE(wrapper.rowCount(), 5);

    auto *extra = new QStandardItem("extra");
    extra->setData(5, RowNumberRole);
    source->appendRow({extra, new QStandardItem("y")});
    source->setHeaderData(0, Qt::Vertical, 6, VisibleRowCountRole);
    QCOMPARE(wrapper.rowCount(), 6);

    source->item(0)->appendRow(new QStandardItem("nested"));
    source->removeRows(0, 2);
    source->setHeaderData(0, Qt::Vertical, 4, VisibleRowCountRole);
    QCOMPARE(wrapper.rowCount(), 4);

    source->insertColumns(1, 2);
    QCOMPARE(wrapper.columnCount(), 4);
    source->removeColumns(0, 1);
    QCOMPARE(wrapper.columnCount(), 3);

    source->sort(0, Qt::DescendingOrder);
    fillNumbered(*source, 3);
    QCOMPARE(wrapper.rowCount(), 3);

    delete source;
    QVERIFY(!wrapper.sourceModel());
    QCOMPARE(wrapper.rowCount(), 0);
    QCOMPARE(wrapper.columnCount(), 0);
}

void tst_CMwVHeaderView::wrapperResetsOnEveryShapeChange()
{
    // Views over the wrapper learn of every change of the source's shape by
    // one completed reset, also on the second and later changes.
    QStandardItemModel source;
    fillNumbered(source, 3);
    CMwVHeaderViewModel wrapper;
    wrapper.setSourceModel(&source);
    watchModel(&wrapper);
    watchModel(&source);
    QSignalSpy aboutToReset(&wrapper, &QAbstractItemModel::modelAboutToBeReset);
    QSignalSpy reset(&wrapper, &QAbstractItemModel::modelReset);

    source.appendRow(new QStandardItem(QStringLiteral("d")));
    QCOMPARE(aboutToReset.count(), 1);
    QCOMPARE(reset.count(), 1);
    source.removeRows(0, 1);
    QCOMPARE(reset.count(), 2);
    source.insertColumn(1);
    QCOMPARE(reset.count(), 3);
    source.sort(0, Qt::DescendingOrder);
    QCOMPARE(reset.count(), 4);
    QCOMPARE(aboutToReset.count(), reset.count());
}

void tst_CMwVHeaderView::modelsDeletedWhileShown_data()
{
    // Deleted in this order while shown: "source" the numbered model,
    // "proxy" the filter proxy that tree and header show, as in the grid.
    QTest::addColumn<QStringList>("order");
    QTest::newRow("source") << QStringList {"source"};
    QTest::newRow("proxy") << QStringList {"proxy"};
    QTest::newRow("source, proxy") << QStringList {"source", "proxy"};
    QTest::newRow("proxy, source") << QStringList {"proxy", "source"};
}

void tst_CMwVHeaderView::modelsDeletedWhileShown()
{
    QFETCH(QStringList, order);
    QPointer<QStandardItemModel> source = new QStandardItemModel;
    fillNumbered(*source, 6);
    QPointer<CMwSortFilterProxyModel> proxy = new CMwSortFilterProxyModel;
    proxy->setSourceModel(source);
    watchModel(source);
    watchModel(proxy);
    Rig rig(proxy);
    watchModel(rig.header->model());
    QVERIFY(QTest::qWaitForWindowExposed(&rig.window));
    rig.tree->selectionModel()->select(
        QItemSelection(proxy->index(1, 0), proxy->index(3, 1)), QItemSelectionModel::Select);
    QTest::mouseMove(rig.header->viewport(), QPoint(5, 5));
    QTest::mouseMove(rig.tree->viewport(), QPoint(20, 5));
    rig.render();
    const int rowHeight = rig.tree->sizeHintForRow(0);
    QCOMPARE(rig.textAt(rowHeight / 2), QStringLiteral("1"));
    QCOMPARE(rig.header->count(), 6);

    for (const QString &what : order) {
        if (what == QLatin1String("source"))
            delete source.data();
        else
            delete proxy.data();
        rig.window.repaint();
        rig.render();
        QCoreApplication::processEvents();
        rig.window.repaint();
        // No rows left to number: blank cells only.
        QCOMPARE(rig.header->count(), 0);
        const auto cells = rig.style.callsOf(QStyle::CE_Header);
        QVERIFY(!cells.isEmpty());
        for (const auto &cell : cells)
            QCOMPARE(cell.text, QString());
        QTest::mouseMove(rig.header->viewport(), QPoint(5, 25));
        QTest::mouseClick(rig.tree->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 5));
    }
    rig.window.resize(200, 150);
    rig.window.repaint();

    // Shown again with a new model, the numbers come back.
    QStandardItemModel next;
    fillNumbered(next, 3, 10);
    watchModel(&next);
    rig.tree->setModel(&next);
    rig.header->setModel(&next);
    watchModel(rig.header->model());
    rig.render();
    QCOMPARE(rig.header->count(), 3);
    QCOMPARE(rig.textAt(rowHeight / 2), QStringLiteral("11"));
    rig.tree->setModel(nullptr);
    rig.header->setModel(nullptr);
    delete proxy.data();
    delete source.data();
}

VEL_TEST_MAIN(tst_CMwVHeaderView)
#include "tst_cmwvheaderview.moc"
