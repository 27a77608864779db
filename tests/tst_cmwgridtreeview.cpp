#include "grid_test_support.h"
#include "vel_test_main.h"

#include <vel_qt_widgets/CMwGridTreeView.h>
#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <QtGui/QStandardItemModel>
#include <QtWidgets/QHeaderView>

namespace {

class RecordingDelegate : public CMwGridDelegate
{
public:
    struct Call
    {
        QModelIndex index;
        QRect rect;
    };

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
        const QModelIndex &index) const override
    {
        calls.append({index, option.rect});
        CMwGridDelegate::paint(painter, option, index);
    }

    mutable QVector<Call> calls;
};

const QColor windowColour(220, 240, 220);
const QColor alternateColour(250, 220, 220);

struct Rig
{
    explicit Rig(QAbstractItemModel *model, QWidget *parent = nullptr)
        : tree(parent)
    {
        QPalette palette = tree.palette();
        palette.setColor(QPalette::Window, windowColour);
        palette.setColor(QPalette::AlternateBase, alternateColour);
        tree.setPalette(palette);
        tree.setStyle(&style);
        tree.setItemDelegate(&delegate);
        tree.setFrameShape(QFrame::NoFrame);
        tree.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        tree.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        tree.header()->setStretchLastSection(false);
        tree.setModel(model);
        watchModel(model);
        for (int c = 0; c < model->columnCount(); ++c)
            tree.setColumnWidth(c, 80);
        tree.resize(400, 300);
    }

    QImage render()
    {
        // No focus frame of the current item in the pictures.
        if (tree.selectionModel())
            tree.selectionModel()->clearCurrentIndex();
        style.calls.clear();
        delegate.calls.clear();
        QImage image(tree.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::magenta);
        tree.viewport()->render(&image);
        return image;
    }

    RecordingStyle style;
    RecordingDelegate delegate;
    CMwGridTreeView tree;
};

QList<QStandardItem *> rowOf(const QString &caption, int columns)
{
    QList<QStandardItem *> items;
    items << new QStandardItem(caption);
    for (int c = 1; c < columns; ++c)
        items << new QStandardItem(QString());
    return items;
}

// The same row marked, in every cell, as a group row.
QList<QStandardItem *> groupRowOf(const QString &caption, int columns)
{
    QList<QStandardItem *> items = rowOf(caption, columns);
    for (QStandardItem *item : items)
        item->setData(true, BranchParentRole);
    return items;
}

} // namespace

class tst_CMwGridTreeView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emptyModelShowsOneRow();
    void groupRowIsOneBand_data();
    void groupRowIsOneBand();
    void groupCaptionReadableOnBand_data();
    void groupCaptionReadableOnBand();
    void alternateColoursFromLeftEdge();
    void lastColumnRunsToRightEdge();
    void emptyCellsBelowLastRow();
    void noFillerWhenNoRoom();
};

void tst_CMwGridTreeView::emptyModelShowsOneRow()
{
    QStandardItemModel model(0, 3);
    Rig rig(&model);
    rig.tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.tree));
    rig.render();

    const QFontMetrics metrics = rig.tree.fontMetrics();
    const int bottom = metrics.descent() + metrics.lineSpacing();
    QCOMPARE(rig.delegate.calls.size(), 3);
    for (int c = 0; c < 3; ++c) {
        QVERIFY(!rig.delegate.calls.at(c).index.isValid());
        QCOMPARE(
            rig.delegate.calls.at(c).rect, QRect(QPoint(80 * c, 0), QPoint(80 * c + 79, bottom)));
    }
    // Each call draws its empty cell first at the top (the row itself).
    int topCells = 0;
    for (const auto &call : rig.style.callsOf(QStyle::CE_ItemViewItem))
        topCells += call.rect.top() == 0 ? 1 : 0;
    QCOMPARE(topCells, 3);

    // A model with rows paints through the plain tree.
    model.appendRow(rowOf("one", 3));
    rig.render();
    for (const auto &call : rig.delegate.calls)
        QVERIFY(call.index.isValid());
}

void tst_CMwGridTreeView::groupRowIsOneBand_data()
{
    QTest::addColumn<bool>("insideGrid"); // the view's parent is the grid composite
    QTest::addColumn<QColor>("band");

    QTest::newRow("alone") << false << QColor(Qt::lightGray);
    QTest::newRow("in grid") << true << QColor(200, 230, 255);
}

void tst_CMwGridTreeView::groupRowIsOneBand()
{
    QFETCH(bool, insideGrid);
    QFETCH(QColor, band);
    QStandardItemModel model(0, 3);
    QList<QStandardItem *> groupRow = groupRowOf("Group", 3);
    groupRow.at(1)->setText("hidden");
    model.appendRow(groupRow);
    model.appendRow(rowOf("plain", 3));

    // The delegate takes the band colour from the grid composite holding the view.
    CMwHierarchicalGridView grid;
    grid.setColorBranchParent(QColor(200, 230, 255));
    Rig rig(&model, insideGrid ? &grid : nullptr);
    if (insideGrid) {
        QVERIFY(showAt(grid, 400, 300));
    } else {
        rig.tree.show();
        QVERIFY(QTest::qWaitForWindowExposed(&rig.tree));
    }
    const QImage image = rig.render();
    const QRect row = rig.tree.visualRect(model.index(0, 0));
    const int y = row.center().y();

    // The band runs over the other columns and on to the right edge.
    for (int x : {row.left(), row.left() + 1, 85, 150, 170, 239, 250, 395})
        QCOMPARE(QColor(image.pixel(x, y)), band);
    for (int x = 160; x < 240; ++x)
        QCOMPARE(QColor(image.pixel(x, row.top() + 2)), band);
    // Column 0 shows the caption on it; column 1's own text is not drawn.
    QVERIFY(!darkPixels(image, QRect(0, row.top(), 80, row.height())).isEmpty());
    QVERIFY(darkPixels(image, QRect(80, row.top(), 80, row.height())).isEmpty());
    int painted = 0;
    for (const auto &call : rig.style.callsOf(QStyle::CE_ItemViewItem))
        painted += call.text == "hidden" ? 1 : 0;
    QCOMPARE(painted, 0);

    // An ordinary row keeps its own colours.
    const QRect plain = rig.tree.visualRect(model.index(1, 1));
    QCOMPARE(QColor(image.pixel(plain.left() + 3, plain.center().y())), alternateColour);
}

void tst_CMwGridTreeView::groupCaptionReadableOnBand_data()
{
    QTest::addColumn<QColor>("text"); // the palette's text colour
    QTest::addColumn<QColor>("caption"); // the colour the caption is drawn in

    QTest::newRow("dark text, kept") << QColor(Qt::black) << QColor(Qt::black);
    QTest::newRow("blue text, kept") << QColor(0, 0, 160) << QColor(0, 0, 160);
    QTest::newRow("light text of a dark palette") << QColor(230, 230, 230) << QColor(Qt::black);
    QTest::newRow("white text of a dark palette") << QColor(Qt::white) << QColor(Qt::black);
}

void tst_CMwGridTreeView::groupCaptionReadableOnBand()
{
    QFETCH(QColor, text);
    QFETCH(QColor, caption);
    QStandardItemModel model(0, 2);
    QList<QStandardItem *> groupRow = groupRowOf("MMMM", 2);
    model.appendRow(groupRow);

    Rig rig(&model);
    QPalette palette = rig.tree.palette();
    palette.setColor(QPalette::Text, text);
    rig.tree.setPalette(palette);
    rig.tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.tree));
    const QImage image = rig.render();
    const QRect row = rig.tree.visualRect(model.index(0, 0));

    // The darkest or lightest pixel of the caption, whichever lies farther
    // from the light grey band, is the caption's colour.
    const int bandGray = qGray(QColor(Qt::lightGray).rgb());
    int farthest = bandGray;
    for (int y = row.top(); y <= row.bottom(); ++y)
        for (int x = row.left(); x < row.left() + 80; ++x) {
            const int gray = qGray(image.pixel(x, y));
            if (qAbs(gray - bandGray) > qAbs(farthest - bandGray))
                farthest = gray;
        }
    QCOMPARE(farthest, qGray(caption.rgb()));
}

void tst_CMwGridTreeView::alternateColoursFromLeftEdge()
{
    QStandardItemModel model(0, 2);
    model.appendRow(rowOf("parent", 2));
    model.appendRow(rowOf("second", 2));
    for (int r = 0; r < 3; ++r)
        model.item(0)->appendRow(rowOf(QStringLiteral("child %1").arg(r), 2));
    Rig rig(&model);
    rig.tree.expandAll();
    rig.tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.tree));
    const QImage image = rig.render();

    const QModelIndex parent = model.index(0, 0);
    const QRect child0 = rig.tree.visualRect(model.index(0, 0, parent));
    const QRect child1 = rig.tree.visualRect(model.index(1, 0, parent));
    const QRect child2 = rig.tree.visualRect(model.index(2, 0, parent));
    QVERIFY(child0.left() >= rig.tree.indentation());
    // Colour by the row within its parent, from x = 0 through the indentation.
    for (int x : {0, 2, child0.left() / 2, child0.left() - 1, child0.left() + 60}) {
        QCOMPARE(QColor(image.pixel(x, child0.top() + 1)), windowColour);
        QCOMPARE(QColor(image.pixel(x, child1.top() + 1)), alternateColour);
        QCOMPARE(QColor(image.pixel(x, child2.top() + 1)), windowColour);
    }
    // The top-level rows count on their own: "second" is row 1.
    const QRect second = rig.tree.visualRect(model.index(1, 0));
    QCOMPARE(QColor(image.pixel(0, second.top() + 1)), alternateColour);
    QCOMPARE(QColor(image.pixel(120, second.top() + 1)), alternateColour);
}

void tst_CMwGridTreeView::lastColumnRunsToRightEdge()
{
    QStandardItemModel model(0, 2);
    for (int r = 0; r < 3; ++r)
        model.appendRow(rowOf(QStringLiteral("row %1").arg(r), 2));
    Rig rig(&model);
    rig.tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.tree));
    const QImage image = rig.render();
    const int right = rig.tree.viewport()->width() - 1;
    for (int r = 0; r < 3; ++r) {
        const QRect row = rig.tree.visualRect(model.index(r, 1));
        const QColor expected = r % 2 == 0 ? windowColour : alternateColour;
        for (int x : {row.right() + 1, row.right() + 50, right})
            QCOMPARE(QColor(image.pixel(x, row.center().y())), expected);
        // An empty item is drawn there, beside the cell.
        bool found = false;
        for (const auto &call : rig.style.callsOf(QStyle::CE_ItemViewItem))
            found = found
                || (call.rect.left() == row.right() + 1 && call.rect.top() == row.top()
                    && call.text.isEmpty());
        QVERIFY(found);
    }
}

void tst_CMwGridTreeView::emptyCellsBelowLastRow()
{
    QStandardItemModel model(0, 2);
    for (int r = 0; r < 2; ++r)
        model.appendRow(rowOf(QStringLiteral("row %1").arg(r), 2));
    Rig rig(&model);
    rig.tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.tree));
    rig.render();

    const QRect last0 = rig.tree.visualRect(model.index(1, 0));
    const QRect last1 = rig.tree.visualRect(model.index(1, 1));
    const int widgetHeight = rig.tree.height();
    QVector<QRect> expected;
    for (QRect r = last0.adjusted(-last0.left(), 0, 0, 0); r.bottom() < widgetHeight;) {
        r.translate(0, r.height());
        expected << r;
    }
    for (QRect r = last1; r.bottom() < widgetHeight;) {
        r.translate(0, r.height());
        expected << r << QRect(r.right() + 1, r.top(), rig.tree.width(), r.height());
    }
    QVector<QRect> fillers;
    for (const auto &call : rig.style.callsOf(QStyle::CE_ItemViewItem)) {
        if (call.rect.top() > last0.bottom()) {
            fillers << call.rect;
            QCOMPARE(call.state, QStyle::State(QStyle::State_Enabled));
        }
    }
    QCOMPARE(fillers, expected);
    QVERIFY(fillers.size() > 10);
}

void tst_CMwGridTreeView::noFillerWhenNoRoom()
{
    QStandardItemModel model(0, 1);
    for (int r = 0; r < 40; ++r)
        model.appendRow(rowOf(QStringLiteral("row %1").arg(r), 1));
    Rig rig(&model);
    rig.tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.tree));
    rig.render();
    // Only the painted rows' own items: none with the filler's bare state.
    for (const auto &call : rig.style.callsOf(QStyle::CE_ItemViewItem))
        QVERIFY(!call.text.isEmpty());
}

VEL_TEST_MAIN(tst_CMwGridTreeView)
#include "tst_cmwgridtreeview.moc"
