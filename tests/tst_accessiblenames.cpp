#include <vel_qt_widgets/CMwFilterWidget.h>
#include <vel_qt_widgets/CMwGridTableModel.h>
#include <vel_qt_widgets/CMwGridTreeView.h>
#include <vel_qt_widgets/CMwHierarchicalGridView.h>
#include <vel_qt_widgets/CMwPickerForTable.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>
#include <vel_qt_widgets/CMwVHeaderView.h>
#include <vel_qt_widgets/PushButtons.h>

#include "grid_test_support.h"
#include "vel_test_main.h"

#include <QAction>
#include <QtGui/QAccessible>
#include <QtGui/QStandardItemModel>
#include <QtTest/QAbstractItemModelTester>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolBar>

namespace {

QString nameOf(QObject *object)
{
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(object);
    return iface ? iface->text(QAccessible::Name) : QStringLiteral("<no interface>");
}

// The names of an interface's children that have the given role, in order.
QStringList childNames(QAccessibleInterface *iface, QAccessible::Role role)
{
    QStringList names;
    for (int i = 0; i < iface->childCount(); ++i) {
        QAccessibleInterface *child = iface->child(i);
        if (child && child->role() == role)
            names << child->text(QAccessible::Name);
    }
    return names;
}

} // namespace

class tst_AccessibleNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pushButtonsNamedByText_data();
    void pushButtonsNamedByText();
    void iconOnlyButtonNamedByToolTip_data();
    void iconOnlyButtonNamedByToolTip();
    void accessibleNameWins();
    void pressActionClicks();
    void buttonState();
    void toolbarActionsNamed();
    void resizeButtonNamed();
    void pickerPlaceholderIsDescription();
    void pickerCallerPlaceholderIsDescription();
    void pickerKeepsApplicationDescription();
    void filterPickersNamedByColumn();
    void statisticsRowLabelsNamed();
    void headerCellsAreColumnHeaders();
    void rowNumbersAreRowHeaders();
    void rowNumbersFollowTheBody();
};

void tst_AccessibleNames::pushButtonsNamedByText_data()
{
    QTest::addColumn<QString>("className");
    QTest::newRow("text") << QStringLiteral("CMwTextPushButton");
    QTest::newRow("icon fit") << QStringLiteral("CMwIconFitButton");
    QTest::newRow("sized") << QStringLiteral("CMwSizedPushButtonMd");
    QTest::newRow("picker") << QStringLiteral("CMwPickerPushButton");
}

QPushButton *makeButton(const QString &className, QWidget *parent)
{
    if (className == QLatin1String("CMwTextPushButton"))
        return new CMwTextPushButton(parent);
    if (className == QLatin1String("CMwIconFitButton"))
        return new CMwIconFitButton(parent);
    if (className == QLatin1String("CMwSizedPushButtonMd"))
        return new CMwSizedPushButtonMd(parent);
    return new CMwPickerPushButton(parent);
}

void tst_AccessibleNames::pushButtonsNamedByText()
{
    QFETCH(QString, className);
    QWidget window;
    QPushButton *button = makeButton(className, &window);
    QCOMPARE(QString::fromLatin1(button->metaObject()->className()), className);
    button->setText(QStringLiteral("&Save && Close"));
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(button);
    QVERIFY(iface);
    QCOMPARE(iface->role(), QAccessible::Button);
    QCOMPARE(iface->text(QAccessible::Name), QStringLiteral("Save & Close"));
    QCOMPARE(iface->text(QAccessible::Accelerator),
        QKeySequence(QKeySequence::mnemonic(button->text())).toString(QKeySequence::NativeText));
    QVERIFY(!iface->text(QAccessible::Accelerator).isEmpty());
}

void tst_AccessibleNames::iconOnlyButtonNamedByToolTip_data() { pushButtonsNamedByText_data(); }

void tst_AccessibleNames::iconOnlyButtonNamedByToolTip()
{
    QFETCH(QString, className);
    QWidget window;
    QPushButton *button = makeButton(className, &window);
    button->setIcon(QIcon(QStringLiteral(":/w32_commonres/res/plus.svg")));
    QCOMPARE(nameOf(button), QString());
    button->setToolTip(QStringLiteral("Add a row"));
    QCOMPARE(nameOf(button), QStringLiteral("Add a row"));
    // Visible text comes first.
    button->setText(QStringLiteral("Add"));
    QCOMPARE(nameOf(button), QStringLiteral("Add"));
}

void tst_AccessibleNames::accessibleNameWins()
{
    CMwIconFitButton button(QIcon(QStringLiteral(":/w32_commonres/res/plus.svg")), nullptr);
    button.setText(QStringLiteral("+"));
    button.setToolTip(QStringLiteral("Add a row"));
    button.setAccessibleName(QStringLiteral("Add condition"));
    QCOMPARE(nameOf(&button), QStringLiteral("Add condition"));
}

void tst_AccessibleNames::pressActionClicks()
{
    CMwPickerPushButton button;
    button.setText(QStringLiteral("Pick"));
    QSignalSpy clicked(&button, SIGNAL(clicked()));
    QAccessibleActionInterface *actions
        = QAccessible::queryAccessibleInterface(&button)->actionInterface();
    QVERIFY(actions);
    QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(clicked.count(), 1);

    button.setEnabled(false);
    QVERIFY(!actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    QCoreApplication::processEvents();
    QCOMPARE(clicked.count(), 1);
}

void tst_AccessibleNames::buttonState()
{
    CMwTextPushButton button(QStringLiteral("Bold"), nullptr);
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&button);
    QVERIFY(!iface->state().checkable);
    button.setCheckable(true);
    QVERIFY(iface->state().checkable);
    QVERIFY(!iface->state().checked);
    QVERIFY(iface->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::toggleAction()));
    button.setChecked(true);
    QVERIFY(iface->state().checked);
    button.setDown(true);
    QVERIFY(iface->state().pressed);
    button.setEnabled(false);
    QVERIFY(iface->state().disabled);
}

void tst_AccessibleNames::toolbarActionsNamed()
{
    CMwHierarchicalGridView grid;
    auto *toolbar = grid.findChild<QToolBar *>(QStringLiteral("MainToolbar"));
    const QStringList expected = {QStringLiteral("Show Statistics"), QStringLiteral("Use Filter"),
        QStringLiteral("Define Filter"), QStringLiteral("Up"), QStringLiteral("Down"),
        QStringLiteral("Remove")};
    QStringList names;
    for (QAction *action : toolbar->actions()) {
        QWidget *button = toolbar->widgetForAction(action);
        QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(button);
        QVERIFY(iface);
        QVERIFY(iface->role() == QAccessible::Button || iface->role() == QAccessible::CheckBox);
        QVERIFY(iface->actionInterface());
        // The filter-row actions work while the filter editor is open.
        if (action->isVisible())
            QVERIFY(!iface->actionInterface()->actionNames().isEmpty());
        names << iface->text(QAccessible::Name);
    }
    QCOMPARE(names, expected);
}

void tst_AccessibleNames::resizeButtonNamed()
{
    CMwHierarchicalGridView grid;
    auto *button = grid.findChild<QPushButton *>(QStringLiteral("resizeButton"));
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(button);
    QCOMPARE(iface->role(), QAccessible::Button);
    QCOMPARE(iface->text(QAccessible::Name), QStringLiteral("Fit Columns to Contents"));
    // Only the name: the button still shows its icon alone.
    QCOMPARE(button->text(), QString());
    QCOMPARE(button->toolTip(), QString());
}

void tst_AccessibleNames::pickerPlaceholderIsDescription()
{
    CMwPickerForTable picker(static_cast<QWidget *>(nullptr));
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&picker);
    QCOMPARE(iface->role(), QAccessible::ComboBox);
    QCOMPARE(iface->text(QAccessible::Description), QStringLiteral("<select>"));
    picker.addItems({QStringLiteral("Name"), QStringLiteral("Count")});
    picker.setCurrentIndex(-1);
    QCOMPARE(iface->text(QAccessible::Description), QStringLiteral("<select>"));
    picker.setCurrentIndex(1);
    QCOMPARE(iface->text(QAccessible::Description), QString());
    QCOMPARE(iface->text(QAccessible::Value), QStringLiteral("Count"));
    picker.setCurrentIndex(-1);
    QCOMPARE(iface->text(QAccessible::Description), QStringLiteral("<select>"));
}

void tst_AccessibleNames::pickerCallerPlaceholderIsDescription()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem(QStringLiteral("a")));
    CMwPickerForTable picker(QStringLiteral("(any)"), &model, nullptr);
    QCOMPARE(picker.currentIndex(), -1);
    QCOMPARE(QAccessible::queryAccessibleInterface(&picker)->text(QAccessible::Description),
        QStringLiteral("(any)"));
}

void tst_AccessibleNames::pickerKeepsApplicationDescription()
{
    CMwPickerForTable picker(static_cast<QWidget *>(nullptr));
    picker.setAccessibleDescription(QStringLiteral("Choose a column"));
    picker.addItem(QStringLiteral("Name"));
    picker.setCurrentIndex(-1);
    QCOMPARE(picker.accessibleDescription(), QStringLiteral("Choose a column"));
    picker.setCurrentIndex(0);
    QCOMPARE(picker.accessibleDescription(), QStringLiteral("Choose a column"));
}

void tst_AccessibleNames::filterPickersNamedByColumn()
{
    QStandardItemModel model(2, 2);
    model.setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Count")});
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
    CMwFilterWidget editor;
    editor.setRefModel(&proxy);
    editor.defineFilter();
    // The name assistive technology reads on Windows; on Linux Qt reads a
    // combo box's current text as its name and its label through relations.
    QCOMPARE(editor.cellWidget(0, 1)->accessibleName(), QStringLiteral("AND/OR"));
    QCOMPARE(editor.cellWidget(0, 2)->accessibleName(), QStringLiteral("Column"));
    QCOMPARE(editor.cellWidget(0, 3)->accessibleName(), QStringLiteral("Comparison"));
    QCOMPARE(QAccessible::queryAccessibleInterface(editor.cellWidget(0, 2))
                 ->text(QAccessible::Description),
        QStringLiteral("<select>"));
}

void tst_AccessibleNames::statisticsRowLabelsNamed()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    QVERIFY(showAt(grid, 600, 400));
    auto *table = grid.findChild<QTableView *>(QStringLiteral("statisticTableView"));
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(table);
    QVERIFY(iface);
    QCOMPARE(childNames(iface, QAccessible::RowHeader),
        (QStringList {QStringLiteral("Count"), QStringLiteral("Distinct"), QStringLiteral("Min"),
            QStringLiteral("Max"), QStringLiteral("Mean"), QStringLiteral("StDev")}));
}

void tst_AccessibleNames::headerCellsAreColumnHeaders()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    QVERIFY(showAt(grid, 600, 400));
    auto *body = grid.findChild<CMwGridTreeView *>(QStringLiteral("DataView"));
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(body);
    QVERIFY(iface);
    QCOMPARE(childNames(iface, QAccessible::ColumnHeader),
        (QStringList {QStringLiteral("Place / City"), QStringLiteral("Data / Value"),
            QStringLiteral("Data / Note")}));
    QAccessibleTableInterface *table = iface->tableInterface();
    QVERIFY(table);
    QCOMPARE(table->columnCount(), 3);
    QAccessibleTableCellInterface *cell = table->cellAt(0, 1)->tableCellInterface();
    QVERIFY(cell);
    const QList<QAccessibleInterface *> headers = cell->columnHeaderCells();
    QCOMPARE(headers.size(), 1);
    QCOMPARE(headers.first()->role(), QAccessible::ColumnHeader);
    QCOMPARE(headers.first()->text(QAccessible::Name), QStringLiteral("Data / Value"));
    // Qt's table cell makes its header cells fresh for the caller and keeps
    // none of them: each is handed to Qt's cache (uniqueId) and freed there.
    for (QAccessibleInterface *header : headers)
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(header));
}

void tst_AccessibleNames::rowNumbersAreRowHeaders()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    QVERIFY(showAt(grid, 600, 400));
    QHeaderView *rows = grid.verticalHeader();
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(rows);
    QVERIFY(iface);
    QCOMPARE(iface->childCount(), rows->count());
    QCOMPARE(rows->count(), 4);
    // Sorted by City: Bergen (row 2), Oslo (1), Oslo (3), Tromsø (4).
    QCOMPARE(childNames(iface, QAccessible::RowHeader),
        (QStringList {
            QStringLiteral("2"), QStringLiteral("1"), QStringLiteral("3"), QStringLiteral("4")}));
    QAccessibleInterface *second = iface->child(1);
    QCOMPARE(iface->indexOfChild(second), 1);
    QCOMPARE(second->parent(), iface);
    QCOMPARE(iface->child(1), second); // one element per row, kept
    QVERIFY(!iface->child(4));
    QVERIFY(!iface->child(-1));
    const QRect expected(rows->viewport()->mapToGlobal(QPoint(0, rows->sectionViewportPosition(1))),
        QSize(rows->viewport()->width(), rows->sectionSize(1)));
    QCOMPARE(second->rect(), expected);
    QCOMPARE(iface->childAt(expected.center().x(), expected.center().y()), second);
    QVERIFY(!second->state().invisible);
}

// The names are the numbers beside the rows, also after sorting.
void tst_AccessibleNames::rowNumbersFollowTheBody()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    QVERIFY(showAt(grid, 600, 400));
    grid.horizontalHeader()->setSortIndicator(1, Qt::DescendingOrder);
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(grid.verticalHeader());
    QStringList expected;
    auto *body = grid.findChild<CMwGridTreeView *>(QStringLiteral("DataView"));
    for (int r = 0; r < 4; ++r)
        expected << QString::number(grid.model()->index(r, 0).data(RowNumberRole).toInt() + 1);
    QCOMPARE(childNames(iface, QAccessible::RowHeader), expected);
    QCOMPARE(grid.model()->index(0, 1).data().toInt(), 4);
    QVERIFY(body);
}

VEL_TEST_MAIN(tst_AccessibleNames)
#include "tst_accessiblenames.moc"
