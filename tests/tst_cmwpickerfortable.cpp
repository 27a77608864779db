#include "vel_test_main.h"

#include <vel_qt_widgets/CMwPickerForTable.h>

#include <QtCore/QFile>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QStyleOptionComboBox>

namespace {

QImage render(QWidget *widget)
{
    widget->resize(160, 24);
    widget->ensurePolished();
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    widget->render(&image);
    return image;
}

QImage iconImage(const QIcon &icon)
{
    return icon.pixmap(16, 16).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QIcon plusIcon() { return QIcon(QStringLiteral(":/w32_commonres/res/plus.svg")); }

} // namespace

class tst_CMwPickerForTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void iconResources_data();
    void iconResources();
    void constructors();
    void textConstructor_data();
    void textConstructor();
    void placeholderWithoutModel();
    void placeholderText();
    void placeholderIsPainted();
    void placeholderTextPainted();
    void setTextAndIconTouchItemZero();
    void popupVeto();
    void popupOpensAndHides();
    void choosingHidesBeforeSelecting();
    void itemSelectedIndex();
    void itemSelectedUnderRoot();
    void focusIn();
};

void tst_CMwPickerForTable::iconResources_data()
{
    QTest::addColumn<QString>("path");
    for (const char *name : {"plus", "AutoSize_columns", "suma_file", "filter", "filter_edit",
             "arr/item_up", "arr/item_down", "trash"})
        QTest::newRow(name)
            << QStringLiteral(":/w32_commonres/res/%1.svg").arg(QLatin1String(name));
}

void tst_CMwPickerForTable::iconResources()
{
    QFETCH(QString, path);
    QVERIFY(QFile::exists(path));
    const QImage image = QIcon(path).pixmap(16, 16).toImage();
    QCOMPARE(image.size(), QSize(16, 16));
    // Drawn through Qt SVG: some pixels are opaque, the corners are not.
    int opaque = 0;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            opaque += qAlpha(image.pixel(x, y)) == 255;
    QVERIFY2(opaque > 20, qPrintable(QString::number(opaque)));
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
}

void tst_CMwPickerForTable::constructors()
{
    CMwPickerForTable plain;
    QCOMPARE(plain.currentIndex(), -1);
    QCOMPARE(plain.count(), 0);
    QVERIFY(!plain.isEditable());
    QVERIFY(!plain.hasFrame());
    QVERIFY(plain.model());
    QCOMPARE(plain.model(), static_cast<QComboBox &>(plain).model());

    QStandardItemModel model;
    for (const char *text : {"one", "two", "three"})
        model.appendRow(new QStandardItem(QString::fromLatin1(text)));
    CMwPickerForTable withModel(&model, nullptr);
    QCOMPARE(withModel.model(), &model);
    QCOMPARE(withModel.count(), 3);
    // Even though QComboBox picks the first row of a new model.
    QCOMPARE(withModel.currentIndex(), -1);
    QVERIFY(!withModel.isEditable());
    QVERIFY(!withModel.hasFrame());

    QWidget parent;
    CMwPickerForTable *child
        = new CMwPickerForTable(static_cast<QAbstractItemModel *>(nullptr), &parent);
    QCOMPARE(child->parentWidget(), &parent);
    QCOMPARE(child->count(), 0);
}

void tst_CMwPickerForTable::textConstructor_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("index");
    QTest::newRow("found") << "two" << 1;
    QTest::newRow("case differs") << "Two" << -1;
    QTest::newRow("prefix only") << "tw" << -1;
    QTest::newRow("absent") << "Pick one" << -1;
}

void tst_CMwPickerForTable::textConstructor()
{
    QFETCH(QString, text);
    QFETCH(int, index);
    QStandardItemModel model;
    for (const char *item : {"one", "two", "three"})
        model.appendRow(new QStandardItem(QString::fromLatin1(item)));
    CMwPickerForTable picker(text, &model, nullptr);
    QCOMPARE(picker.currentIndex(), index);
    QStyleOptionComboBox option;
    picker.initStyleOption(&option);
    QCOMPARE(option.currentText, index == -1 ? text : QStringLiteral("two"));
    if (index == -1)
        QVERIFY(option.currentIcon.isNull());
}

void tst_CMwPickerForTable::placeholderWithoutModel()
{
    CMwPickerForTable picker;
    QStyleOptionComboBox option;
    picker.initStyleOption(&option);
    QCOMPARE(option.currentText, QStringLiteral("<select>"));
    QVERIFY(!option.currentIcon.isNull());
    QCOMPARE(iconImage(option.currentIcon), iconImage(plusIcon()));
    // Null option: nothing to fill.
    picker.initStyleOption(nullptr);

    // Once an item is current, the item shows instead.
    picker.addItems({"AND", "OR"});
    picker.setCurrentIndex(1);
    picker.initStyleOption(&option);
    QCOMPARE(option.currentText, QStringLiteral("OR"));
    QVERIFY(option.currentIcon.isNull());
    picker.setCurrentIndex(-1);
    picker.initStyleOption(&option);
    QCOMPARE(option.currentText, QStringLiteral("<select>"));
}

void tst_CMwPickerForTable::placeholderText()
{
    CMwPickerForTable picker(QStringLiteral("choose a column"), nullptr, nullptr);
    QStyleOptionComboBox option;
    picker.initStyleOption(&option);
    QCOMPARE(option.currentText, QStringLiteral("choose a column"));
    QVERIFY(option.currentIcon.isNull());

    // An empty text means the default placeholder.
    CMwPickerForTable empty(QString(), nullptr, nullptr);
    empty.initStyleOption(&option);
    QCOMPARE(option.currentText, QStringLiteral("<select>"));
}

void tst_CMwPickerForTable::placeholderIsPainted()
{
    // The picker with nothing chosen paints exactly like a plain combo box
    // whose current item is "<select>" with the plus icon.
    CMwPickerForTable picker;
    QComboBox reference;
    reference.setFrame(false);
    reference.addItem(plusIcon(), QStringLiteral("<select>"));
    QComboBox blank;
    blank.setFrame(false);
    const QImage shown = render(&picker);
    QCOMPARE(shown, render(&reference));
    QVERIFY(shown != render(&blank));
}

void tst_CMwPickerForTable::placeholderTextPainted()
{
    CMwPickerForTable picker(QStringLiteral("Pick"), nullptr, nullptr);
    QComboBox reference;
    reference.setFrame(false);
    reference.addItem(QStringLiteral("Pick"));
    QCOMPARE(render(&picker), render(&reference));
}

void tst_CMwPickerForTable::setTextAndIconTouchItemZero()
{
    CMwPickerForTable picker;
    const QImage before = render(&picker);
    picker.setText(QStringLiteral("changed"));
    picker.setIcon(plusIcon());
    QCOMPARE(picker.count(), 0);
    QCOMPARE(render(&picker), before);
    QStyleOptionComboBox option;
    picker.initStyleOption(&option);
    QCOMPARE(option.currentText, QStringLiteral("<select>"));

    picker.addItems({"first", "second"});
    picker.setCurrentIndex(-1);
    picker.setText(QStringLiteral("renamed"));
    QCOMPARE(picker.itemText(0), QStringLiteral("renamed"));
    QCOMPARE(picker.itemText(1), QStringLiteral("second"));
    QVERIFY(picker.itemIcon(0).isNull());
    picker.setIcon(plusIcon());
    QVERIFY(!picker.itemIcon(0).isNull());
    // The placeholder keeps its own text.
    picker.initStyleOption(&option);
    QCOMPARE(option.currentText, QStringLiteral("<select>"));
}

void tst_CMwPickerForTable::popupVeto()
{
    CMwPickerForTable picker;
    picker.addItems({"a", "b"});
    picker.show();
    QVERIFY(QTest::qWaitForWindowExposed(&picker));
    int asked = 0;
    bool incoming = false;
    QObject::connect(&picker, &CMwPickerForTable::popupWillShow, [&](bool &bShow) {
        ++asked;
        incoming = bShow;
        bShow = false;
    });
    QSignalSpy hidden(&picker, SIGNAL(popupDidHide()));
    picker.showPopup();
    QCOMPARE(asked, 1);
    QVERIFY(incoming);
    QVERIFY(!picker.view()->isVisible());
    QCOMPARE(hidden.count(), 0);
    // A click on the box asks again and is vetoed again.
    QTest::mouseClick(&picker, Qt::LeftButton, Qt::NoModifier, picker.rect().center());
    QCOMPARE(asked, 2);
    QVERIFY(!picker.view()->isVisible());
    QCOMPARE(hidden.count(), 0);
}

void tst_CMwPickerForTable::popupOpensAndHides()
{
    CMwPickerForTable picker;
    picker.addItems({"a", "b"});
    picker.show();
    QVERIFY(QTest::qWaitForWindowExposed(&picker));
    int asked = 0;
    QObject::connect(&picker, &CMwPickerForTable::popupWillShow, [&](bool &) { ++asked; });
    QSignalSpy hidden(&picker, SIGNAL(popupDidHide()));
    picker.showPopup();
    QCOMPARE(asked, 1);
    QTRY_VERIFY(picker.view()->isVisible());
    picker.hidePopup();
    QCOMPARE(hidden.count(), 1);
    QTRY_VERIFY(!picker.view()->isVisible());
}

void tst_CMwPickerForTable::choosingHidesBeforeSelecting()
{
    CMwPickerForTable picker;
    picker.addItems({"a", "b", "c"});
    picker.setCurrentIndex(-1);
    QStringList order;
    QObject::connect(&picker, &CMwPickerForTable::popupDidHide, [&] { order << "popupDidHide"; });
    QObject::connect(&picker, &CMwPickerForTable::itemSelected,
        [&](QModelIndex index) { order << QStringLiteral("itemSelected(%1)").arg(index.row()); });
    picker.setCurrentIndex(2);
    QCOMPARE(order, QStringList({"popupDidHide", "itemSelected(2)"}));
    order.clear();
    picker.setCurrentIndex(2); // no change, no signals
    QCOMPARE(order, QStringList());
    picker.setCurrentIndex(-1);
    QCOMPARE(order, QStringList({"popupDidHide", "itemSelected(-1)"}));
}

void tst_CMwPickerForTable::itemSelectedIndex()
{
    QStandardItemModel model;
    for (const char *text : {"one", "two", "three"})
        model.appendRow(new QStandardItem(QString::fromLatin1(text)));
    CMwPickerForTable picker(&model, nullptr);
    QSignalSpy selected(&picker, SIGNAL(itemSelected(QModelIndex)));
    picker.setCurrentIndex(1);
    QCOMPARE(selected.count(), 1);
    QModelIndex index = selected.at(0).at(0).value<QModelIndex>();
    QCOMPARE(index, model.index(1, 0));
    // Back to no item: an invalid index.
    picker.setCurrentIndex(-1);
    QCOMPARE(selected.count(), 2);
    index = selected.at(1).at(0).value<QModelIndex>();
    QVERIFY(!index.isValid());
}

void tst_CMwPickerForTable::itemSelectedUnderRoot()
{
    QStandardItemModel model;
    auto *group = new QStandardItem("group");
    group->appendRow(new QStandardItem("inner0"));
    group->appendRow(new QStandardItem("inner1"));
    model.appendRow(new QStandardItem("top"));
    model.appendRow(group);
    CMwPickerForTable picker(&model, nullptr);
    picker.setRootModelIndex(group->index());
    QSignalSpy selected(&picker, SIGNAL(itemSelected(QModelIndex)));
    picker.setCurrentIndex(1);
    QVERIFY(selected.count() >= 1);
    const QModelIndex index = selected.last().at(0).value<QModelIndex>();
    QCOMPARE(index, model.index(1, 0, group->index()));
    QCOMPARE(index.data().toString(), QStringLiteral("inner1"));
}

void tst_CMwPickerForTable::focusIn()
{
    QWidget window;
    auto *first = new QComboBox(&window);
    auto *picker = new CMwPickerForTable(&window);
    picker->move(0, 40);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    first->setFocus();
    QSignalSpy focused(picker, SIGNAL(itemFocused()));
    picker->setFocus(Qt::TabFocusReason);
    QTRY_COMPARE(focused.count(), 1);
    QVERIFY(picker->hasFocus());
}

VEL_TEST_MAIN(tst_CMwPickerForTable)
#include "tst_cmwpickerfortable.moc"
