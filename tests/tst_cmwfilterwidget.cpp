#include "grid_test_support.h"
#include "vel_test_main.h"

#include <vel_qt_widgets/CMwFilterWidget.h>
#include <vel_qt_widgets/CMwPickerForTable.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include <QtGui/QStandardItemModel>
#include <QtTest/QAbstractItemModelTester>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>

namespace {

typedef QVector<QVector<QVariant>> Filter;

enum Cmp { GE = 0, LE, GT, LT, EQ, NE, EMPTY, NOTEMPTY };

QString cmp(int c) { return CMwSortFilterProxyModel::comparatorTexts().at(c); }

// Opens the protected operations to the test.
class Probe : public CMwFilterWidget
{
    Q_OBJECT

public:
    using CMwFilterWidget::addRow;
    using CMwFilterWidget::CMwFilterWidget;
    using CMwFilterWidget::enableRow;
    using CMwFilterWidget::isRowEnabled;
    using CMwFilterWidget::isRowSelected;
    using CMwFilterWidget::moveRow;
    using CMwFilterWidget::onFilterChanged;
    using CMwFilterWidget::rowFromRowItem;
    using CMwFilterWidget::rowFromRowWidget;
    using CMwFilterWidget::selectedRows;
    using CMwFilterWidget::setRowData;
    using CMwFilterWidget::sizeHintForRow;
    using CMwFilterWidget::takeRowData;

    CMwPickerForTable *picker(int row, int column) const
    {
        return qobject_cast<CMwPickerForTable *>(cellWidget(row, column));
    }
    void chooseColumn(int row, const QString &header) { picker(row, 2)->setCurrentText(header); }
    int expectedMaximumHeight() const
    {
        return rowCount() * (rowHeight(0) + 1) + (horizontalHeader()->height() - 1) + 3;
    }
};

// Name | Count | Price
//  a   |   1   |  0.5
//  b   |   5   |  2.5
//  c   |  10   | 10.0
//  d   |  20   | 99.0
QStandardItemModel *makeModel(QObject *parent)
{
    auto *model = new QStandardItemModel(4, 3, parent);
    model->setHorizontalHeaderLabels({"Name", "Count", "Price"});
    const char *names[] = {"a", "b", "c", "d"};
    const int counts[] = {1, 5, 10, 20};
    const double prices[] = {0.5, 2.5, 10.0, 99.0};
    for (int r = 0; r < 4; ++r) {
        model->setData(model->index(r, 0), QString::fromLatin1(names[r]));
        model->setData(model->index(r, 1), counts[r]);
        model->setData(model->index(r, 2), prices[r]);
    }
    return model;
}

QStringList names(const QAbstractItemModel &proxy)
{
    QStringList result;
    for (int r = 0; r < proxy.rowCount(); ++r)
        result.append(proxy.index(r, 0).data().toString());
    return result;
}

struct Fixture
{
    explicit Fixture(QObject *owner)
        : model(makeModel(owner))
    {
        proxy.setSourceModel(model);
        editor.setRefModel(&proxy);
        watchModel(model);
        watchModel(&proxy);
    }
    ~Fixture() { delete model; }

    QStandardItemModel *model;
    CMwSortFilterProxyModel proxy;
    Probe editor;
};

QPoint checkBoxCenter(Probe &editor, int row)
{
    QStyleOptionViewItem option;
    option.initFrom(editor.viewport());
    option.rect = editor.visualItemRect(editor.item(row, 0));
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    option.showDecorationSelected = true;
    return editor.style()
        ->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &editor)
        .center();
}

} // namespace

class tst_CMwFilterWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void widthsHold();
    void addRowNeedsModel();
    void placeholderRow();
    void defineFilterTwiceChangesNothing();
    void choosingAColumnGrowsThePlaceholder();
    void sampleValue_data();
    void sampleValue();
    void sampleUsesTheViewsLocale();
    void onlyPlaceholder();
    void activateTwice();
    void editWhileOff();
    void filterFormat();
    void checkBoxByMouse();
    void rowSelectionHelpers();
    void popupVetoSelectsRowFirst();
    void moveKeepsCheckStates();
    void moveUpAndDown();
    void moveAtBoundsAndIntoPlaceholder();
    void removeKeepsPlaceholder();
    void kept_removeIndicesNotCorrected_data();
    void kept_removeIndicesNotCorrected();
    void rowDataRoundTrip();
    void maximumHeight();
    void drivenAsAUser();
    void refModelGoneOrMissingColumns();
    void modelsDeletedWhileShown_data();
    void modelsDeletedWhileShown();
};

void tst_CMwFilterWidget::construction()
{
    Probe editor;
    QCOMPARE(editor.rowCount(), 0);
    QCOMPARE(editor.columnCount(), 5);
    const QStringList headers {"", "AND/OR", "Column", "Comparison", "Value"};
    for (int c = 0; c < 5; ++c)
        QCOMPARE(editor.horizontalHeaderItem(c)->text(), headers.at(c));
    QVERIFY(editor.verticalHeader()->isHidden());
    QCOMPARE(editor.horizontalHeader()->sectionResizeMode(4), QHeaderView::Stretch);
    QCOMPARE(editor.horizontalHeader()->sectionResizeMode(0), QHeaderView::Interactive);
    QVERIFY(!editor.horizontalHeader()->highlightSections());
    QCOMPARE(editor.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(editor.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(editor.sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(editor.sizePolicy().controlType(), QSizePolicy::DefaultType);
    QCOMPARE(editor.verticalHeader()->defaultSectionSize(), editor.sizeHintForRow(0) + 2);
}

void tst_CMwFilterWidget::widthsHold()
{
    Probe editor;
    QVERIFY(QHeaderView(Qt::Horizontal).minimumSectionSize() > 20); // what the fix is for
    QCOMPARE(editor.columnWidth(0), 20);
    QCOMPARE(editor.columnWidth(1), 50);
    QCOMPARE(editor.columnWidth(2), 180);
    QCOMPARE(editor.columnWidth(3), 170);
    QVERIFY(showAt(editor, 700, 200));
    QCOMPARE(editor.columnWidth(0), 20);
    QCOMPARE(editor.columnWidth(1), 50);
    QCOMPARE(editor.columnWidth(2), 180);
    QCOMPARE(editor.columnWidth(3), 170);
    // The Value column takes the rest of the width.
    QCOMPARE(editor.columnWidth(4), editor.viewport()->width() - 420);
}

void tst_CMwFilterWidget::addRowNeedsModel()
{
    Probe editor;
    editor.addRow(-1);
    editor.defineFilter();
    QCOMPARE(editor.rowCount(), 0);
    QStandardItemModel *model = makeModel(this);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(model);
    editor.setRefModel(&proxy);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("addRow: row 5 out of range"));
    editor.addRow(5);
    QCOMPARE(editor.rowCount(), 0);
    editor.addRow(0);
    QCOMPARE(editor.rowCount(), 1);
    delete model;
}

void tst_CMwFilterWidget::placeholderRow()
{
    Fixture f(this);
    f.editor.defineFilter();
    QCOMPARE(f.editor.rowCount(), 1);

    QTableWidgetItem *check = f.editor.item(0, 0);
    QVERIFY(check);
    QCOMPARE(check->flags(), Qt::ItemFlags(Qt::ItemIsUserCheckable));
    QCOMPARE(check->checkState(), Qt::Checked);

    CMwPickerForTable *op = f.editor.picker(0, 1);
    QVERIFY(op);
    QCOMPARE(op->count(), 2);
    QCOMPARE(op->itemText(0), QStringLiteral("AND"));
    QCOMPARE(op->itemText(1), QStringLiteral("OR"));
    QCOMPARE(op->currentIndex(), 0);
    QVERIFY(!op->isEnabled());

    CMwPickerForTable *column = f.editor.picker(0, 2);
    QVERIFY(column);
    QCOMPARE(column->count(), 3);
    QCOMPARE(column->itemText(0), QStringLiteral("Name"));
    QCOMPARE(column->itemText(2), QStringLiteral("Price"));
    QCOMPARE(column->currentIndex(), -1);
    QVERIFY(column->isEnabled());

    CMwPickerForTable *comparator = f.editor.picker(0, 3);
    QVERIFY(comparator);
    const QStringList comparators {"Is Greater or Equal", "Is Smaller or Equal", "Is Greater",
        "Is Smaller", "Is Equal", "Is Not Equal", "Is Empty", "Is Not Empty"};
    QCOMPARE(comparator->count(), 8);
    for (int i = 0; i < 8; ++i)
        QCOMPARE(comparator->itemText(i), comparators.at(i));
    QCOMPARE(comparator->currentIndex(), 0);
    QVERIFY(!comparator->isEnabled());

    QTableWidgetItem *value = f.editor.item(0, 4);
    QVERIFY(value);
    QCOMPARE(value->text(), QString());
    QVERIFY(!(value->flags() & Qt::ItemIsEnabled));
    QVERIFY(value->flags() & Qt::ItemIsEditable);
}

void tst_CMwFilterWidget::defineFilterTwiceChangesNothing()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Count");
    QCOMPARE(f.editor.rowCount(), 2);
    QSignalSpy changed(&f.editor, SIGNAL(filterChanged()));
    const QVector<QVariant> row0 = f.editor.takeRowData(0);
    f.editor.defineFilter();
    QCOMPARE(f.editor.rowCount(), 2);
    QCOMPARE(f.editor.takeRowData(0), row0);
    QCOMPARE(changed.count(), 0);
}

void tst_CMwFilterWidget::choosingAColumnGrowsThePlaceholder()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Count");
    QCOMPARE(f.editor.rowCount(), 2);
    // Row 0 is a condition now: every cell enabled.
    QVERIFY(f.editor.item(0, 0)->flags() & Qt::ItemIsEnabled);
    QVERIFY(!(f.editor.item(0, 0)->flags() & Qt::ItemIsSelectable));
    QVERIFY(f.editor.picker(0, 1)->isEnabled());
    QVERIFY(f.editor.picker(0, 3)->isEnabled());
    QVERIFY(f.editor.item(0, 4)->flags() & Qt::ItemIsEnabled);
    QCOMPARE(f.editor.item(0, 4)->text(), QStringLiteral("1"));
    // Row 1 is the new placeholder.
    QCOMPARE(f.editor.picker(1, 2)->currentIndex(), -1);
    QVERIFY(!f.editor.picker(1, 1)->isEnabled());
    QVERIFY(!(f.editor.item(1, 4)->flags() & Qt::ItemIsEnabled));
    // Changing the column of a condition row adds no row.
    f.editor.chooseColumn(0, "Name");
    QCOMPARE(f.editor.rowCount(), 2);
    QCOMPARE(f.editor.item(0, 4)->text(), QStringLiteral("a"));
}

void tst_CMwFilterWidget::sampleValue_data()
{
    QTest::addColumn<QVariant>("sample");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("alignment");
    const QLocale c = QLocale::c();
    QTest::newRow("double") << QVariant(1234.56789) << c.toString(1234.56789, 'g', 6)
                            << int(Qt::AlignRight);
    QTest::newRow("double large") << QVariant(12345678.0) << c.toString(12345678.0, 'g', 6)
                                  << int(Qt::AlignRight);
    // Formatted like a double, aligned left.
    QTest::newRow("kept: float") << QVariant(2.71828183f) << c.toString(double(2.71828183f), 'g', 6)
                                 << int(Qt::AlignLeft);
    QTest::newRow("int") << QVariant(-42) << "-42" << int(Qt::AlignRight);
    QTest::newRow("uint") << QVariant(42u) << "42" << int(Qt::AlignRight);
    QTest::newRow("qlonglong") << QVariant(qlonglong(7)) << "7" << int(Qt::AlignLeft);
    QTest::newRow("string") << QVariant(QStringLiteral("text")) << "text" << int(Qt::AlignLeft);
    QTest::newRow("bool") << QVariant(true) << "true" << int(Qt::AlignLeft);
    QTest::newRow("date") << QVariant(QDate(2020, 5, 6)) << "2020-05-06" << int(Qt::AlignLeft);
    QTest::newRow("no sample") << QVariant() << "" << int(Qt::AlignLeft);
}

void tst_CMwFilterWidget::sampleValue()
{
    QFETCH(QVariant, sample);
    QFETCH(QString, text);
    QFETCH(int, alignment);
    QStandardItemModel model(sample.isValid() ? 1 : 0, 1);
    model.setHorizontalHeaderLabels({"X"});
    if (sample.isValid())
        model.setData(model.index(0, 0), sample);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    Probe editor;
    editor.setLocale(QLocale::c());
    editor.setRefModel(&proxy);
    editor.defineFilter();
    editor.chooseColumn(0, "X");
    QCOMPARE(editor.item(0, 4)->text(), text);
    QCOMPARE(editor.item(0, 4)->textAlignment(), alignment);
}

void tst_CMwFilterWidget::sampleUsesTheViewsLocale()
{
    // The editor's own locale formats the sample, not the default one.
    const QLocale german(QLocale::German, QLocale::Germany);
    QVERIFY(german.toString(1234.5, 'g', 6) != QLocale().toString(1234.5, 'g', 6));
    QStandardItemModel model(1, 2);
    model.setHorizontalHeaderLabels({"D", "F"});
    model.setData(model.index(0, 0), 1234.5);
    model.setData(model.index(0, 1), QVariant(0.25f));
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    Probe editor;
    editor.setLocale(german);
    editor.setRefModel(&proxy);
    editor.defineFilter();
    editor.chooseColumn(0, "D");
    editor.chooseColumn(1, "F");
    QCOMPARE(editor.item(0, 4)->text(), german.toString(1234.5, 'g', 6));
    QCOMPARE(editor.item(0, 4)->text(), QString::fromUtf8("1.234,5"));
    QCOMPARE(editor.item(1, 4)->text(), QStringLiteral("0,25"));
    QCOMPARE(editor.item(1, 4)->textAlignment(), int(Qt::AlignLeft));
}

void tst_CMwFilterWidget::onlyPlaceholder()
{
    Fixture f(this);
    f.editor.defineFilter();
    Filter filter {{QVariant("kept")}};
    f.editor.takeFilter(filter);
    QCOMPARE(filter.size(), 1); // appended nothing, cleared nothing
    // Switching on still hands over (an empty filter) and signals.
    f.proxy.setFilterRows({{QVariant(), "AND", "Count", cmp(GT), "100"}});
    QCOMPARE(f.proxy.rowCount(), 0);
    QSignalSpy changed(&f.editor, SIGNAL(filterChanged()));
    f.editor.onActivateFilter(true);
    QCOMPARE(changed.count(), 1);
    QVERIFY(f.proxy.filterConditions().isEmpty());
    QCOMPARE(f.proxy.rowCount(), 4);
    // A table without rows too.
    Probe empty;
    filter.clear();
    empty.takeFilter(filter);
    QVERIFY(filter.isEmpty());
}

void tst_CMwFilterWidget::activateTwice()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Count");
    QSignalSpy changed(&f.editor, SIGNAL(filterChanged()));
    f.editor.onActivateFilter(true);
    QCOMPARE(changed.count(), 1);
    f.editor.onActivateFilter(true);
    QCOMPARE(changed.count(), 1);
    // Rows changed in between: the second activation applies them.
    f.editor.blockSignals(true);
    f.editor.item(0, 4)->setText("5");
    f.editor.blockSignals(false);
    QCOMPARE(f.proxy.filterConditions().at(0).value, QVariant("1"));
    f.editor.onActivateFilter(true);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(f.proxy.filterConditions().at(0).value, QVariant("5"));
    QCOMPARE(names(f.proxy), QStringList({"b", "c", "d"}));
}

void tst_CMwFilterWidget::editWhileOff()
{
    Fixture f(this);
    QSignalSpy changed(&f.editor, SIGNAL(filterChanged()));
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Count");
    f.editor.picker(0, 3)->setCurrentIndex(GT);
    f.editor.item(0, 4)->setText("5");
    f.editor.picker(0, 1)->setCurrentIndex(1);
    f.editor.picker(0, 1)->setCurrentIndex(0);
    QCOMPARE(changed.count(), 0);
    QVERIFY(f.proxy.filterConditions().isEmpty());
    QCOMPARE(f.proxy.rowCount(), 4);
    f.editor.onActivateFilter(true);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(names(f.proxy), QStringList({"c", "d"}));
    // Switching off hands over an empty filter.
    f.editor.onActivateFilter(false);
    QCOMPARE(changed.count(), 2);
    QVERIFY(f.proxy.filterConditions().isEmpty());
    QCOMPARE(f.proxy.rowCount(), 4);
    f.editor.onActivateFilter(false);
    QCOMPARE(changed.count(), 2);
}

void tst_CMwFilterWidget::filterFormat()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Price");
    f.editor.picker(0, 1)->setCurrentIndex(1);
    f.editor.picker(0, 3)->setCurrentIndex(EQ);
    f.editor.chooseColumn(1, "Name");
    f.editor.item(1, 4)->setText("c");
    QCOMPARE(f.editor.rowCount(), 3);
    Filter filter;
    f.editor.takeFilter(filter);
    QCOMPARE(filter.size(), 2);
    const QVector<QVariant> first = filter.at(0);
    QCOMPARE(first.size(), 5);
    QVERIFY(!first.at(0).isValid());
    QCOMPARE(first.at(1), QVariant("OR"));
    QCOMPARE(first.at(2), QVariant("Price"));
    QCOMPARE(first.at(3), QVariant(cmp(EQ)));
    QCOMPARE(first.at(4).userType(), int(QMetaType::QString));
    QCOMPARE(first.at(4), QVariant(QLocale().toString(0.5, 'g', 6)));
    QCOMPARE(filter.at(1), QVector<QVariant>({QVariant(), "AND", "Name", cmp(GE), "c"}));
    // The placeholder row, read on its own: no column chosen.
    const QVector<QVariant> placeholder = f.editor.takeRowData(2);
    QCOMPARE(placeholder.size(), 5);
    QVERIFY(!placeholder.at(2).isValid());
    // Disabled rows are left out.
    f.editor.item(0, 0)->setCheckState(Qt::Unchecked);
    filter.clear();
    f.editor.takeFilter(filter);
    QCOMPARE(filter.size(), 1);
    QCOMPARE(filter.at(0).at(2), QVariant("Name"));
    f.editor.item(0, 0)->setCheckState(Qt::PartiallyChecked);
    filter.clear();
    f.editor.takeFilter(filter);
    QCOMPARE(filter.size(), 2);
}

void tst_CMwFilterWidget::checkBoxByMouse()
{
    Fixture f(this);
    f.editor.resize(700, 300);
    f.editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.editor));
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Count");
    f.editor.picker(0, 3)->setCurrentIndex(GT);
    f.editor.item(0, 4)->setText("5");
    f.editor.onActivateFilter(true);
    QCOMPARE(names(f.proxy), QStringList({"c", "d"}));
    QSignalSpy changed(&f.editor, SIGNAL(filterChanged()));

    // Uncheck: the row's other cells are disabled and it leaves the filter.
    QTest::mouseClick(
        f.editor.viewport(), Qt::LeftButton, Qt::NoModifier, checkBoxCenter(f.editor, 0));
    QCOMPARE(f.editor.item(0, 0)->checkState(), Qt::Unchecked);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(f.proxy.rowCount(), 4);
    QVERIFY(!f.editor.picker(0, 1)->isEnabled());
    QVERIFY(!f.editor.picker(0, 2)->isEnabled());
    QVERIFY(!f.editor.picker(0, 3)->isEnabled());
    QVERIFY(!(f.editor.item(0, 4)->flags() & Qt::ItemIsEnabled));
    QVERIFY(f.editor.item(0, 0)->flags() & Qt::ItemIsEnabled);
    QVERIFY(!f.editor.isRowEnabled(0));

    // Check again: both restored.
    QTest::mouseClick(
        f.editor.viewport(), Qt::LeftButton, Qt::NoModifier, checkBoxCenter(f.editor, 0));
    QCOMPARE(f.editor.item(0, 0)->checkState(), Qt::Checked);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(names(f.proxy), QStringList({"c", "d"}));
    QVERIFY(f.editor.picker(0, 1)->isEnabled());
    QVERIFY(f.editor.item(0, 4)->flags() & Qt::ItemIsEnabled);

    // The placeholder's check box is not enabled: a click changes nothing.
    QTest::mouseClick(
        f.editor.viewport(), Qt::LeftButton, Qt::NoModifier, checkBoxCenter(f.editor, 1));
    QCOMPARE(f.editor.item(1, 0)->checkState(), Qt::Checked);
    // And onItemPressed ignores the placeholder and foreign items.
    f.editor.item(1, 0)->setCheckState(Qt::Unchecked);
    f.editor.onItemPressed(f.editor.item(1, 0));
    QVERIFY(f.editor.picker(1, 2)->isEnabled());
    QTableWidgetItem foreign;
    f.editor.onItemPressed(&foreign);
    f.editor.onItemPressed(nullptr);
    QCOMPARE(changed.count(), 2);
}

void tst_CMwFilterWidget::rowSelectionHelpers()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Name");
    f.editor.chooseColumn(1, "Count");
    f.editor.chooseColumn(2, "Price");
    QCOMPARE(f.editor.rowCount(), 4);
    QItemSelectionModel *selection = f.editor.selectionModel();
    QVERIFY(!f.editor.isRowSelected(0));
    QVERIFY(f.editor.selectedRows().isEmpty());
    selection->select(
        f.editor.model()->index(2, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection->select(
        f.editor.model()->index(0, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QCOMPARE(f.editor.selectedRows(), QVector<int>({2, 0}));
    // Only the first selected index counts.
    QVERIFY(f.editor.isRowSelected(2));
    QVERIFY(!f.editor.isRowSelected(0));

    QCOMPARE(f.editor.rowFromRowWidget(f.editor.picker(2, 3), 3), 2);
    QCOMPARE(f.editor.rowFromRowWidget(f.editor.picker(2, 3), 2), -1);
    QCOMPARE(f.editor.rowFromRowWidget(nullptr, 2), -1);
    QCOMPARE(f.editor.rowFromRowWidget(f.editor.picker(1, 1), 7), -1);
    QCOMPARE(f.editor.rowFromRowItem(f.editor.item(3, 4), 4), 3);
    QCOMPARE(f.editor.rowFromRowItem(f.editor.item(3, 4), 0), -1);
    QCOMPARE(f.editor.rowFromRowItem(nullptr, 0), -1);
}

void tst_CMwFilterWidget::popupVetoSelectsRowFirst()
{
    Fixture f(this);
    f.editor.resize(700, 300);
    f.editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.editor));
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Count");
    QCOMPARE(f.editor.rowCount(), 2);
    // showPopup() is what a click or Alt+Down on the picker calls. (A click
    // on an unfocused picker first moves the focus, and Qt's view makes the
    // focused cell widget's row current, so that click already finds its row
    // selected.)
    for (int column = 1; column <= 3; ++column) {
        f.editor.clearSelection();
        CMwPickerForTable *picker = f.editor.picker(0, column);
        // First attempt: only selects the row.
        picker->showPopup();
        QVERIFY(!picker->view()->isVisible());
        QVERIFY(f.editor.isRowSelected(0));
        QCOMPARE(f.editor.selectedRows(), QVector<int>({0}));
        // Second attempt: the popup opens.
        picker->showPopup();
        QTRY_VERIFY(picker->view()->isVisible());
        picker->hidePopup();
        QTRY_VERIFY(!picker->view()->isVisible());
    }
    // A selected other row does not count: the placeholder's picker selects first.
    CMwPickerForTable *placeholder = f.editor.picker(1, 2);
    placeholder->showPopup();
    QVERIFY(!placeholder->view()->isVisible());
    QCOMPARE(f.editor.selectedRows(), QVector<int>({1}));
    // Called directly, without a sender: no row, no popup.
    bool show = true;
    f.editor.onComboColumnPopupWillShow(show);
    QVERIFY(!show);
}

void tst_CMwFilterWidget::moveKeepsCheckStates()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Name");
    f.editor.chooseColumn(1, "Count");
    f.editor.item(1, 0)->setCheckState(Qt::Unchecked);
    f.editor.enableRow(1, false);
    f.editor.selectRow(1);
    f.editor.onButtonUp();
    // Data travelled, check and enabled states stayed.
    QCOMPARE(f.editor.picker(0, 2)->currentText(), QStringLiteral("Count"));
    QCOMPARE(f.editor.item(0, 4)->text(), QStringLiteral("1"));
    QCOMPARE(f.editor.picker(1, 2)->currentText(), QStringLiteral("Name"));
    QCOMPARE(f.editor.item(1, 4)->text(), QStringLiteral("a"));
    QCOMPARE(f.editor.item(0, 0)->checkState(), Qt::Checked);
    QCOMPARE(f.editor.item(1, 0)->checkState(), Qt::Unchecked);
    QVERIFY(f.editor.isRowEnabled(0));
    QVERIFY(!f.editor.isRowEnabled(1));
    QCOMPARE(f.editor.selectedRows(), QVector<int>({0}));
    // So the unchecked condition that moved up is in the filter, the one that
    // moved down is not.
    f.editor.onActivateFilter(true);
    QCOMPARE(f.proxy.filterConditions().size(), 1);
    QCOMPARE(f.proxy.filterConditions().at(0).column, QStringLiteral("Count"));
}

void tst_CMwFilterWidget::moveUpAndDown()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Name");
    f.editor.chooseColumn(1, "Count");
    f.editor.chooseColumn(2, "Price");
    f.editor.onActivateFilter(true);
    QSignalSpy changed(&f.editor, SIGNAL(filterChanged()));
    auto columns = [&] {
        QStringList list;
        for (int r = 0; r < f.editor.rowCount(); ++r)
            list << f.editor.picker(r, 2)->currentText();
        return list;
    };
    QCOMPARE(columns(), QStringList({"Name", "Count", "Price", ""}));

    // Up over the selection in list order: rows 1 then 2 → Count, Price, Name.
    QItemSelectionModel *selection = f.editor.selectionModel();
    selection->select(
        f.editor.model()->index(1, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection->select(
        f.editor.model()->index(2, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    f.editor.onButtonUp();
    QCOMPARE(columns(), QStringList({"Count", "Price", "Name", ""}));
    QVERIFY(changed.count() > 0);
    QCOMPARE(f.proxy.filterConditions().size(), 3);
    QCOMPARE(f.proxy.filterConditions().at(0).column, QStringLiteral("Count"));
    QCOMPARE(f.proxy.filterConditions().at(2).column, QStringLiteral("Name"));
    changed.clear();

    // Down over the selection from last to first: rows 0 and 1 listed, row 1
    // moves to 2 first, then row 0 to 1.
    f.editor.clearSelection();
    selection->select(
        f.editor.model()->index(0, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection->select(
        f.editor.model()->index(1, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    f.editor.onButtonDown();
    QCOMPARE(columns(), QStringList({"Name", "Count", "Price", ""}));
    QVERIFY(changed.count() > 0);
    QCOMPARE(f.proxy.filterConditions().at(0).column, QStringLiteral("Name"));
    changed.clear();

    // Nothing selected: nothing moves, the filter is the same, no signal.
    f.editor.clearSelection();
    f.editor.onButtonUp();
    f.editor.onButtonDown();
    QCOMPARE(columns(), QStringList({"Name", "Count", "Price", ""}));
    QCOMPARE(changed.count(), 0);
}

void tst_CMwFilterWidget::moveAtBoundsAndIntoPlaceholder()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Count");
    f.editor.item(0, 4)->setText("v");
    f.editor.moveRow(0, true); // no row above
    QCOMPARE(f.editor.picker(0, 2)->currentText(), QStringLiteral("Count"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("moveRow: row 9 out of range"));
    f.editor.moveRow(9, true);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("moveRow: row -1 out of range"));
    f.editor.moveRow(-1, false);
    QCOMPARE(f.editor.rowCount(), 2);

    // Down into the placeholder: the placeholder's column text is not among
    // the items, so row 0 keeps "Count"; row 1 takes "Count" and, being the
    // last row with a column, gets a new placeholder below it.
    f.editor.selectRow(0);
    f.editor.onButtonDown();
    QCOMPARE(f.editor.rowCount(), 3);
    QCOMPARE(f.editor.picker(0, 2)->currentText(), QStringLiteral("Count"));
    QCOMPARE(f.editor.item(0, 4)->text(), QString());
    QCOMPARE(f.editor.picker(1, 2)->currentText(), QStringLiteral("Count"));
    QCOMPARE(f.editor.item(1, 4)->text(), QStringLiteral("v"));
    QCOMPARE(f.editor.picker(2, 2)->currentIndex(), -1);
    QCOMPARE(f.editor.selectedRows(), QVector<int>({1}));
}

void tst_CMwFilterWidget::removeKeepsPlaceholder()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Count");
    f.editor.onActivateFilter(true);
    QSignalSpy changed(&f.editor, SIGNAL(filterChanged()));
    f.editor.selectRow(1);
    f.editor.onButtonRemove();
    QCOMPARE(f.editor.rowCount(), 2);
    QCOMPARE(f.editor.picker(1, 2)->currentIndex(), -1);
    QCOMPARE(changed.count(), 0);
    // Removing the condition leaves only the placeholder.
    f.editor.selectRow(0);
    f.editor.onButtonRemove();
    QCOMPARE(f.editor.rowCount(), 1);
    QCOMPARE(f.editor.picker(0, 2)->currentIndex(), -1);
    QCOMPARE(changed.count(), 1);
    QVERIFY(f.proxy.filterConditions().isEmpty());
}

void tst_CMwFilterWidget::kept_removeIndicesNotCorrected_data()
{
    QTest::addColumn<int>("conditions");
    QTest::addColumn<QStringList>("remaining");
    // Rows Name, Count, Price, Name(+), placeholder; rows 1 and 2 selected:
    // row 1 goes, then the row now at 2 (the former row 3).
    QTest::newRow("former row 3 removed") << 4 << QStringList({"Name", "Price", ""});
    // Rows Name, Count, Price, placeholder: after row 1 goes, index 2 is the
    // placeholder and stays.
    QTest::newRow("placeholder reached") << 3 << QStringList({"Name", "Price", ""});
}

void tst_CMwFilterWidget::kept_removeIndicesNotCorrected()
{
    QFETCH(int, conditions);
    QFETCH(QStringList, remaining);
    Fixture f(this);
    f.editor.defineFilter();
    const QStringList headers {"Name", "Count", "Price", "Name"};
    for (int r = 0; r < conditions; ++r)
        f.editor.chooseColumn(r, headers.at(r));
    QCOMPARE(f.editor.rowCount(), conditions + 1);
    QItemSelectionModel *selection = f.editor.selectionModel();
    selection->select(
        f.editor.model()->index(1, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection->select(
        f.editor.model()->index(2, 1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QCOMPARE(f.editor.selectedRows(), QVector<int>({1, 2}));
    f.editor.onButtonRemove();
    QStringList columns;
    for (int r = 0; r < f.editor.rowCount(); ++r)
        columns << f.editor.picker(r, 2)->currentText();
    QCOMPARE(columns, remaining);
    QCOMPARE(f.editor.picker(f.editor.rowCount() - 1, 2)->currentIndex(), -1);
}

void tst_CMwFilterWidget::rowDataRoundTrip()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Count");
    f.editor.chooseColumn(1, "Price");
    const QVector<QVariant> data {QVariant(), "OR", "Name", cmp(NOTEMPTY), "zz"};
    f.editor.setRowData(0, data);
    QCOMPARE(f.editor.takeRowData(0), data);
    // Shorter data touches only the columns it has.
    f.editor.setRowData(1, {QVariant(), "OR"});
    QCOMPARE(f.editor.takeRowData(1).at(1), QVariant("OR"));
    QCOMPARE(f.editor.takeRowData(1).at(2), QVariant("Price"));
    // A text that is not among a picker's items keeps its current item.
    f.editor.setRowData(1, {QVariant(), "XOR", "Nope", "Is Bigger", 5});
    const QVector<QVariant> kept = f.editor.takeRowData(1);
    QCOMPARE(kept.at(1), QVariant("OR"));
    QCOMPARE(kept.at(2), QVariant("Price"));
    QCOMPARE(kept.at(3), QVariant(cmp(GE)));
    QCOMPARE(kept.at(4), QVariant(5));
    // Rows that do not exist give and take nothing.
    QVERIFY(f.editor.takeRowData(17).isEmpty());
    f.editor.setRowData(17, data);
    QCOMPARE(f.editor.rowCount(), 3);
}

void tst_CMwFilterWidget::maximumHeight()
{
    Fixture f(this);
    f.editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.editor));
    f.editor.defineFilter();
    QCOMPARE(f.editor.maximumHeight(), f.editor.expectedMaximumHeight());
    f.editor.chooseColumn(0, "Count");
    f.editor.chooseColumn(1, "Name");
    QCOMPARE(f.editor.rowCount(), 3);
    QCOMPARE(f.editor.maximumHeight(), f.editor.expectedMaximumHeight());
    f.editor.selectRow(0);
    f.editor.onButtonRemove();
    QCOMPARE(f.editor.rowCount(), 2);
    QCOMPARE(f.editor.maximumHeight(), f.editor.expectedMaximumHeight());

    // Before the first show the limit uses the height the header will get.
    Fixture hidden(this);
    hidden.editor.defineFilter();
    hidden.editor.chooseColumn(0, "Count");
    const int before = hidden.editor.maximumHeight();
    hidden.editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&hidden.editor));
    QCOMPARE(before, hidden.editor.expectedMaximumHeight());
}

void tst_CMwFilterWidget::drivenAsAUser()
{
    Fixture f(this);
    QAbstractItemModelTester tester(
        &f.proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
    f.editor.resize(700, 300);
    f.editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.editor));
    QSignalSpy changed(&f.editor, SIGNAL(filterChanged()));

    f.editor.defineFilter();
    f.editor.onActivateFilter(true);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(f.proxy.rowCount(), 4);

    // Choose a column: Count >= 1 (sample), every row passes, but the filter changed.
    f.editor.chooseColumn(0, "Count");
    QCOMPARE(f.editor.rowCount(), 2);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(names(f.proxy), QStringList({"a", "b", "c", "d"}));

    // Comparator Is Greater: Count > 1.
    f.editor.picker(0, 3)->setCurrentIndex(GT);
    QCOMPARE(changed.count(), 3);
    QCOMPARE(names(f.proxy), QStringList({"b", "c", "d"}));

    // Value typed by the user: Count > 5.
    f.editor.editItem(f.editor.item(0, 4));
    QLineEdit *lineEdit = nullptr;
    QTRY_VERIFY((lineEdit = f.editor.viewport()->findChild<QLineEdit *>()));
    QTest::keyClick(lineEdit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(lineEdit, "5");
    QTest::keyClick(lineEdit, Qt::Key_Return);
    QTRY_COMPARE(f.editor.item(0, 4)->text(), QStringLiteral("5"));
    QCOMPARE(changed.count(), 4);
    QCOMPARE(names(f.proxy), QStringList({"c", "d"}));

    // Second condition: OR Name == a.
    f.editor.chooseColumn(1, "Name");
    QCOMPARE(f.editor.rowCount(), 3);
    QCOMPARE(changed.count(), 5); // a new condition, AND Name >= "a", which narrows nothing
    QCOMPARE(names(f.proxy), QStringList({"c", "d"}));
    f.editor.picker(1, 1)->setCurrentIndex(1);
    f.editor.picker(1, 3)->setCurrentIndex(EQ);
    QCOMPARE(changed.count(), 7);
    QCOMPARE(names(f.proxy), QStringList({"a", "c", "d"}));

    // Uncheck the first condition: true OR Name == a → every row.
    f.editor.item(0, 0)->setCheckState(Qt::Unchecked);
    QCOMPARE(changed.count(), 8);
    QCOMPARE(f.proxy.rowCount(), 4);
    f.editor.item(0, 0)->setCheckState(Qt::Checked);
    QCOMPARE(changed.count(), 9);
    QCOMPARE(names(f.proxy), QStringList({"a", "c", "d"}));

    // Move the OR row up: (true OR Name == a) AND Count > 5. Each swapped
    // cell reports its own change, so the filter passes through intermediate
    // states on the way; it is the final state that counts.
    f.editor.selectRow(1);
    f.editor.onButtonUp();
    QVERIFY(changed.count() > 9);
    QCOMPARE(f.proxy.filterConditions().at(0).op, QStringLiteral("OR"));
    QCOMPARE(names(f.proxy), QStringList({"c", "d"}));
    // And back down.
    int before = changed.count();
    f.editor.selectRow(0);
    f.editor.onButtonDown();
    QVERIFY(changed.count() > before);
    QCOMPARE(names(f.proxy), QStringList({"a", "c", "d"}));

    // Remove the Count condition.
    before = changed.count();
    f.editor.selectRow(0);
    f.editor.onButtonRemove();
    QCOMPARE(f.editor.rowCount(), 2);
    QCOMPARE(changed.count(), before + 1);
    QCOMPARE(f.proxy.rowCount(), 4); // "OR" first: every row

    // Deactivate and activate again.
    f.editor.onActivateFilter(false);
    QCOMPARE(changed.count(), before + 2);
    f.editor.picker(0, 1)->setCurrentIndex(0);
    QCOMPARE(changed.count(), before + 2);
    QCOMPARE(f.proxy.rowCount(), 4);
    f.editor.onActivateFilter(true);
    QCOMPARE(changed.count(), before + 3);
    QCOMPARE(names(f.proxy), QStringList({"a"}));
}

void tst_CMwFilterWidget::refModelGoneOrMissingColumns()
{
    Fixture f(this);
    f.editor.defineFilter();
    f.editor.chooseColumn(0, "Count");
    f.editor.picker(0, 3)->setCurrentIndex(GT);
    f.editor.item(0, 4)->setText("5");
    f.editor.onActivateFilter(true);
    QCOMPARE(f.proxy.rowCount(), 2);
    // The column's header changes: the condition no longer applies.
    f.model->setHeaderData(1, Qt::Horizontal, "Amount");
    f.proxy.invalidate();
    QCOMPARE(f.proxy.rowCount(), 4);
    f.model->setHeaderData(1, Qt::Horizontal, "Count");
    f.proxy.invalidate();
    QCOMPARE(f.proxy.rowCount(), 2);

    // The reference model goes away: the editor keeps working, adds no rows.
    QSignalSpy changed(&f.editor, SIGNAL(filterChanged()));
    auto *proxy = new CMwSortFilterProxyModel;
    proxy->setSourceModel(f.model);
    watchModel(proxy);
    Probe editor;
    editor.setRefModel(proxy);
    editor.defineFilter();
    editor.chooseColumn(0, "Count");
    editor.onActivateFilter(true);
    delete proxy;
    editor.item(0, 4)->setText("7");
    editor.chooseColumn(1, "Name"); // no model: no sample and no new placeholder
    QCOMPARE(editor.rowCount(), 2);
    QCOMPARE(editor.item(1, 4)->text(), QString());
    editor.onActivateFilter(false);
    editor.addRow(-1);
    QCOMPARE(editor.rowCount(), 2);
}

void tst_CMwFilterWidget::modelsDeletedWhileShown_data()
{
    // Deleted in this order while the editor is shown with its filter on:
    // "source" the table model, "proxy" the reference model.
    QTest::addColumn<QStringList>("order");
    QTest::newRow("source") << QStringList {"source"};
    QTest::newRow("proxy") << QStringList {"proxy"};
    QTest::newRow("source, proxy") << QStringList {"source", "proxy"};
    QTest::newRow("proxy, source") << QStringList {"proxy", "source"};
}

void tst_CMwFilterWidget::modelsDeletedWhileShown()
{
    QFETCH(QStringList, order);
    QPointer<QStandardItemModel> source = makeModel(nullptr);
    QPointer<CMwSortFilterProxyModel> proxy = new CMwSortFilterProxyModel;
    proxy->setSourceModel(source);
    watchModel(source);
    watchModel(proxy);
    QTreeView view;
    view.setModel(proxy);
    Probe editor;
    editor.setRefModel(proxy);
    QVERIFY(showAt(editor, 700, 200));
    view.show();
    editor.defineFilter();
    editor.chooseColumn(0, "Count");
    editor.picker(0, 3)->setCurrentIndex(GT);
    editor.item(0, 4)->setText("5");
    editor.onActivateFilter(true);
    QCOMPARE(names(*proxy), QStringList({"c", "d"}));
    editor.selectRow(0);
    QTest::mouseMove(editor.viewport(), editor.visualItemRect(editor.item(0, 4)).center());

    for (const QString &what : order) {
        if (what == QLatin1String("source"))
            delete source.data();
        else
            delete proxy.data();
        editor.repaint();
        view.repaint();
        QCoreApplication::processEvents();
        if (proxy)
            QCOMPARE(proxy->rowCount(), 0);
    }

    // The rows stay and can still be edited; only what needs the model is skipped.
    QCOMPARE(editor.rowCount(), 2);
    editor.item(0, 4)->setText("7");
    editor.chooseColumn(1, "Name");
    editor.onButtonDown();
    editor.onButtonUp();
    editor.onActivateFilter(false);
    editor.onActivateFilter(true);
    editor.onButtonRemove();
    editor.resize(500, 150);
    editor.repaint();
    view.repaint();

    // A new reference model takes the filter as usual.
    QStandardItemModel *next = makeModel(&editor);
    CMwSortFilterProxyModel nextProxy;
    nextProxy.setSourceModel(next);
    watchModel(next);
    watchModel(&nextProxy);
    editor.setRefModel(&nextProxy);
    editor.onActivateFilter(false);
    editor.clearSelection();
    editor.setRowCount(0);
    editor.defineFilter();
    editor.chooseColumn(0, "Count");
    editor.picker(0, 3)->setCurrentIndex(LT);
    editor.item(0, 4)->setText("10");
    editor.onActivateFilter(true);
    QCOMPARE(names(nextProxy), QStringList({"a", "b"}));
    delete proxy.data();
    delete source.data();
}

VEL_TEST_MAIN(tst_CMwFilterWidget)
#include "tst_cmwfilterwidget.moc"
