#include <vel_qt_widgets/CMwFilterWidget.h>
#include <vel_qt_widgets/CMwGridTableModel.h>
#include <vel_qt_widgets/CMwHierarchicalGridView.h>
#include <vel_qt_widgets/CMwPickerForTable.h>

#include "grid_test_support.h"
#include "vel_test_main.h"

#include <QAction>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QTimer>
#include <QtCore/QTranslator>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QAccessible>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyleOptionComboBox>
#include <QtWidgets/QStyleOptionHeader>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QTreeView>

#include <algorithm>

namespace {

// The German catalogue as committed: (context, source) -> translation.
struct Catalogue
{
    QHash<QPair<QString, QString>, QString> messages;

    bool read(const QString &fileName)
    {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly))
            return false;
        QXmlStreamReader xml(&file);
        QString context, source;
        while (!xml.atEnd()) {
            xml.readNext();
            if (!xml.isStartElement())
                continue;
            if (xml.name() == QLatin1String("name"))
                context = xml.readElementText();
            else if (xml.name() == QLatin1String("source"))
                source = xml.readElementText();
            else if (xml.name() == QLatin1String("translation"))
                messages.insert({context, source}, xml.readElementText());
        }
        return !xml.hasError() && !messages.isEmpty();
    }

    // English source texts that German shows differently.
    QSet<QString> englishTexts() const
    {
        QSet<QString> result;
        for (auto it = messages.cbegin(); it != messages.cend(); ++it)
            if (it.key().second != it.value())
                result.insert(it.key().second);
        return result;
    }

    QSet<QString> germanTexts() const
    {
        QSet<QString> result;
        for (const QString &text : messages)
            result.insert(text);
        return result;
    }
};

// The German texts a user must see; spelled out here so that a wrong or
// missing catalogue entry shows up as a difference.
const QStringList toolbarTexts = {
    QStringLiteral("Statistik anzeigen"),
    QStringLiteral("Filter anwenden"),
    QStringLiteral("Filter definieren"),
    QStringLiteral("Nach oben"),
    QStringLiteral("Nach unten"),
    QStringLiteral("Entfernen"),
};
const QStringList statisticsLabels = {
    QStringLiteral("Anzahl"),
    QStringLiteral("Versch."),
    QStringLiteral("Min."),
    QStringLiteral("Max."),
    QStringLiteral("Mittel"),
    QStringLiteral("StAbw"),
};
const QStringList menuTexts = {
    QStringLiteral("Spalte ausblenden"),
    QStringLiteral("Alle Spalten einblenden"),
    QString(), // separator
    QStringLiteral("Nach dieser Spalte gruppieren"),
    QStringLiteral("Gruppierung aufheben"),
};
const QStringList filterHeaders = {
    QString(),
    QStringLiteral("UND/ODER"),
    QStringLiteral("Spalte"),
    QStringLiteral("Vergleich"),
    QStringLiteral("Wert"),
};
const QStringList operatorTexts = {QStringLiteral("UND"), QStringLiteral("ODER")};
const QStringList comparatorTexts = {
    QString::fromUtf8("Ist größer oder gleich"),
    QStringLiteral("Ist kleiner oder gleich"),
    QString::fromUtf8("Ist größer"),
    QStringLiteral("Ist kleiner"),
    QStringLiteral("Ist gleich"),
    QStringLiteral("Ist ungleich"),
    QStringLiteral("Ist leer"),
    QStringLiteral("Ist nicht leer"),
};
const QString placeholder = QString::fromUtf8("<auswählen>");

// Every text the model and its headers can put on screen, at any level.
void collectModelTexts(
    const QAbstractItemModel *model, const QModelIndex &parent, QSet<QString> &texts)
{
    for (int r = 0; r < model->rowCount(parent); ++r) {
        for (int c = 0; c < model->columnCount(parent); ++c) {
            const QModelIndex index = model->index(r, c, parent);
            texts.insert(index.data(Qt::DisplayRole).toString());
            if (c == 0)
                collectModelTexts(model, index, texts);
        }
    }
    if (parent.isValid())
        return;
    for (int c = 0; c < model->columnCount(); ++c) {
        texts.insert(model->headerData(c, Qt::Horizontal).toString());
        for (const QVariant &level : model->headerData(c, Qt::Horizontal, HeaderPathRole).toList())
            texts.insert(level.toString());
    }
}

void collectViewTexts(const QAbstractItemModel *model, const QModelIndex &parent,
    const QString &where, QVector<QPair<QString, QString>> &texts)
{
    for (int r = 0; r < model->rowCount(parent); ++r) {
        for (int c = 0; c < model->columnCount(parent); ++c) {
            const QModelIndex index = model->index(r, c, parent);
            texts.append({where, index.data(Qt::DisplayRole).toString()});
            texts.append({where, index.data(Qt::ToolTipRole).toString()});
            if (c == 0)
                collectViewTexts(model, index, where, texts);
        }
    }
}

// Every text of the library that a user can see or hover over under
// widget: (where, text).
QVector<QPair<QString, QString>> visibleTexts(QWidget *widget)
{
    QVector<QPair<QString, QString>> texts;
    QList<QWidget *> widgets = widget->findChildren<QWidget *>();
    widgets.prepend(widget);
    for (QWidget *w : qAsConst(widgets)) {
        // Qt's own helpers (toolbar extension, scroll area parts) carry Qt's
        // texts, which Qt's catalogues translate.
        if (w->objectName().startsWith(QLatin1String("qt_")))
            continue;
        const QString where = QString::fromLatin1(w->metaObject()->className()) + QLatin1Char(' ')
            + w->objectName();
        texts.append({where, w->toolTip()});
        texts.append({where, w->statusTip()});
        texts.append({where, w->whatsThis()});
        texts.append({where, w->windowTitle()});
        if (auto *button = qobject_cast<QAbstractButton *>(w))
            texts.append({where, button->text()});
        if (auto *label = qobject_cast<QLabel *>(w))
            texts.append({where, label->text()});
        if (auto *edit = qobject_cast<QLineEdit *>(w)) {
            texts.append({where, edit->text()});
            texts.append({where, edit->placeholderText()});
        }
        if (auto *combo = qobject_cast<QComboBox *>(w)) {
            for (int i = 0; i < combo->count(); ++i)
                texts.append({where, combo->itemText(i)});
            texts.append({where, combo->currentText()});
        }
        if (auto *picker = qobject_cast<CMwPickerForTable *>(w)) {
            QStyleOptionComboBox option;
            picker->initStyleOption(&option);
            texts.append({where + QStringLiteral(" (shown)"), option.currentText});
        }
        if (auto *view = qobject_cast<QAbstractItemView *>(w); view && view->model())
            collectViewTexts(view->model(), view->rootIndex(), where, texts);
        if (auto *header = qobject_cast<QHeaderView *>(w); header && header->model()) {
            for (int s = 0; s < header->count(); ++s) {
                texts.append(
                    {where, header->model()->headerData(s, header->orientation()).toString()});
                texts.append({where,
                    header->model()
                        ->headerData(s, header->orientation(), Qt::ToolTipRole)
                        .toString()});
            }
        }
        for (QAction *action : w->actions()) {
            const QString at = where + QStringLiteral(" action");
            texts.append({at, action->text()});
            texts.append({at, action->iconText()});
            texts.append({at, action->toolTip()});
            texts.append({at, action->statusTip()});
            texts.append({at, action->whatsThis()});
        }
    }
    return texts;
}

bool isNumber(const QString &text)
{
    bool ok = false;
    text.toDouble(&ok);
    if (!ok)
        QLocale().toDouble(text, &ok);
    return ok;
}

QStringList actionTexts(const QList<QAction *> &actions)
{
    QStringList texts;
    for (const QAction *action : actions)
        texts << action->text();
    return texts;
}

QAction *toolbarAction(CMwHierarchicalGridView &grid, const QString &text)
{
    auto *toolbar = grid.findChild<QToolBar *>(QStringLiteral("MainToolbar"));
    for (QAction *action : toolbar->actions())
        if (action->text() == text)
            return action;
    return nullptr;
}

// Presses the toolbar button of an action as a user would.
bool clickToolbar(CMwHierarchicalGridView &grid, const QString &text)
{
    auto *toolbar = grid.findChild<QToolBar *>(QStringLiteral("MainToolbar"));
    QAction *action = toolbarAction(grid, text);
    QWidget *button = action ? toolbar->widgetForAction(action) : nullptr;
    if (!button || !button->isVisible())
        return false;
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}

// Shows the grid and opens its filter editor from the German tool bar; null
// when the editor does not come up.
CMwFilterWidget *openFilterEditor(CMwHierarchicalGridView &grid)
{
    if (!showAt(grid, 800, 500) || !clickToolbar(grid, QStringLiteral("Filter definieren")))
        return nullptr;
    auto *editor = grid.findChild<CMwFilterWidget *>(QStringLiteral("FilterTable"));
    if (!editor || !QTest::qWaitFor([editor]() { return editor->isVisible(); }))
        return nullptr;
    return editor;
}

// Opens the header's column menu on a section, records its texts and
// chooses the entry with the given text (none: the menu is closed).
QStringList runMenu(QHeaderView *header, int section, const QString &choice)
{
    QStringList shown;
    runHeaderMenu(header, section, choice, &shown);
    return shown;
}

// The values of the Value column on the rows the grid shows, ascending.
QList<int> shownValues(CMwHierarchicalGridView &grid)
{
    QList<int> values;
    const QAbstractItemModel *model = grid.model();
    for (int r = 0; r < model->rowCount(); ++r)
        values << model->index(r, 1).data().toInt();
    std::sort(values.begin(), values.end());
    return values;
}

} // namespace

// The library as a German user meets it: the catalogue is installed the way
// an application does it, before any widget exists, and a grid over the
// ready model is shown and walked.
class tst_TranslationsDe : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void catalogueIsWhatTheLibraryShows();
    void toolbar();
    void resizeButton();
    void headerMenu();
    void headerMenuChoicesWork();
    void statisticsLabels();
    void filterEditor();
    void readyModelGroupRows();
    void everyVisibleTextIsGerman();
    void accessibleTextsAreGerman();
    void germanConditionsFilter_data();
    void germanConditionsFilter();
    void germanOperatorsFold();

private:
    QTranslator m_translator;
    Catalogue m_catalogue;
};

void tst_TranslationsDe::initTestCase()
{
    // As an application does it: the embedded catalogue, installed before
    // the first widget is built. MW_GetTranslation needs nothing more: it
    // asks the installed translators.
    QVERIFY(m_translator.load(QLocale(QLocale::German, QLocale::Germany),
        QStringLiteral("vel_qt_widgets"), QStringLiteral("_"),
        QStringLiteral(":/vel_qt_widgets/translations")));
    QVERIFY(QCoreApplication::installTranslator(&m_translator));
    QVERIFY(m_catalogue.read(QStringLiteral(VEL_TS_DE)));
}

// The compiled catalogue answers every message of the committed one, and
// the texts this test expects are the catalogue's.
void tst_TranslationsDe::catalogueIsWhatTheLibraryShows()
{
    for (auto it = m_catalogue.messages.cbegin(); it != m_catalogue.messages.cend(); ++it) {
        const QByteArray context = it.key().first.toUtf8();
        const QByteArray source = it.key().second.toUtf8();
        QCOMPARE(QCoreApplication::translate(context.constData(), source.constData()), it.value());
    }
    const QSet<QString> german = m_catalogue.germanTexts();
    for (const QStringList &list : {toolbarTexts, ::statisticsLabels, menuTexts, filterHeaders,
             operatorTexts, comparatorTexts})
        for (const QString &text : list)
            QVERIFY2(text.isEmpty() || german.contains(text), qPrintable(text));
    QVERIFY(german.contains(placeholder));
}

void tst_TranslationsDe::toolbar()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    QVERIFY(showAt(grid, 700, 400));
    auto *toolbar = grid.findChild<QToolBar *>(QStringLiteral("MainToolbar"));
    QVERIFY(toolbar);
    const QList<QAction *> actions = toolbar->actions();
    QCOMPARE(actionTexts(actions), toolbarTexts);
    for (QAction *action : actions) {
        QCOMPARE(action->toolTip(), action->text());
        QCOMPARE(action->iconText(), action->text());
    }
    // What the pointer shows: the buttons' tool tips; the filter-row actions
    // appear once the filter editor is open.
    QVERIFY(clickToolbar(grid, QStringLiteral("Filter definieren")));
    for (QAction *action : actions) {
        QWidget *button = toolbar->widgetForAction(action);
        QVERIFY(button);
        QTRY_VERIFY(button->isVisible());
        QCOMPARE(button->toolTip(), action->text());
    }
}

// The resize button carries only its icon: nothing there is English.
void tst_TranslationsDe::resizeButton()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    QVERIFY(showAt(grid, 700, 400));
    auto *button = grid.findChild<QPushButton *>(QStringLiteral("resizeButton"));
    QVERIFY(button);
    QCOMPARE(button->text(), QString());
    QVERIFY(!button->icon().isNull());
    const QSet<QString> english = m_catalogue.englishTexts();
    QVERIFY2(!english.contains(button->toolTip()) || button->toolTip().isEmpty(),
        qPrintable(button->toolTip()));
    QVERIFY(button->toolTip().isEmpty() || m_catalogue.germanTexts().contains(button->toolTip()));
}

void tst_TranslationsDe::headerMenu()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    QVERIFY(showAt(grid, 700, 400));
    QCOMPARE(runMenu(grid.horizontalHeader(), 1, QString()), menuTexts);
}

// The menu recognises the chosen entry by its shown text, German here.
void tst_TranslationsDe::headerMenuChoicesWork()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    QVERIFY(connect(grid.horizontalHeader(), SIGNAL(groupByColumn(mw_int32)), model,
        SLOT(groupByColumn(mw_int32))));
    QVERIFY(showAt(grid, 700, 400));
    QHeaderView *header = grid.horizontalHeader();
    auto *statistics = grid.findChild<QTableView *>(QStringLiteral("statisticTableView"));

    runMenu(header, 1, QStringLiteral("Spalte ausblenden"));
    QVERIFY(header->isSectionHidden(1));
    QVERIFY(statistics->isColumnHidden(1));

    runMenu(header, 0, QStringLiteral("Alle Spalten einblenden"));
    QVERIFY(!header->isSectionHidden(1));
    QVERIFY(!statistics->isColumnHidden(1));

    runMenu(header, 0, QStringLiteral("Nach dieser Spalte gruppieren"));
    QCOMPARE(model->groupColumn(), 0);

    runMenu(header, 0, QStringLiteral("Gruppierung aufheben"));
    QCOMPARE(model->groupColumn(), -1);
}

void tst_TranslationsDe::statisticsLabels()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    QVERIFY(showAt(grid, 700, 400));
    auto *statistics = grid.findChild<QTableView *>(QStringLiteral("statisticTableView"));
    QVERIFY(statistics && statistics->model());
    QStringList labels;
    for (int row = 0; row < statistics->model()->rowCount(); ++row)
        labels << statistics->model()->headerData(row, Qt::Vertical).toString();
    QCOMPARE(labels, ::statisticsLabels);
    // The label column is at most 50 pixels wide; no German label is cut.
    QHeaderView *labelColumn = statistics->verticalHeader();
    QStyleOptionHeader option;
    option.initFrom(labelColumn);
    option.rect = QRect(0, 0, labelColumn->width(), labelColumn->defaultSectionSize());
    const int room = labelColumn->style()
                         ->subElementRect(QStyle::SE_HeaderLabel, &option, labelColumn)
                         .width();
    QVERIFY(room > 0);
    for (const QString &label : qAsConst(labels))
        QVERIFY2(labelColumn->fontMetrics().horizontalAdvance(label) <= room, qPrintable(label));
}

void tst_TranslationsDe::filterEditor()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    QVERIFY(showAt(grid, 700, 400));
    auto *editor = grid.findChild<CMwFilterWidget *>(QStringLiteral("FilterTable"));
    QVERIFY(editor);
    QVERIFY(clickToolbar(grid, QStringLiteral("Filter definieren")));
    QTRY_VERIFY(editor->isVisible());
    QCOMPARE(editor->rowCount(), 1);

    QStringList headers;
    for (int c = 0; c < editor->columnCount(); ++c)
        headers << editor->horizontalHeaderItem(c)->text();
    QCOMPARE(headers, filterHeaders);

    // The placeholder row: every picker shows its German item or placeholder.
    auto *op = qobject_cast<CMwPickerForTable *>(editor->cellWidget(0, 1));
    auto *column = qobject_cast<CMwPickerForTable *>(editor->cellWidget(0, 2));
    auto *comparator = qobject_cast<CMwPickerForTable *>(editor->cellWidget(0, 3));
    QVERIFY(op && column && comparator);
    QStringList items;
    for (int i = 0; i < op->count(); ++i)
        items << op->itemText(i);
    QCOMPARE(items, operatorTexts);
    QCOMPARE(op->currentText(), QStringLiteral("UND"));
    items.clear();
    for (int i = 0; i < comparator->count(); ++i)
        items << comparator->itemText(i);
    QCOMPARE(items, comparatorTexts);
    QCOMPARE(comparator->currentText(), comparatorTexts.at(0));

    QStyleOptionComboBox shown;
    column->initStyleOption(&shown);
    QCOMPARE(shown.currentText, placeholder);
    QVERIFY(!shown.currentIcon.isNull());

    // Choosing a column turns the row into a condition and adds a new
    // placeholder row, again in German.
    column->setCurrentIndex(column->findText(QStringLiteral("Data / Value")));
    QCOMPARE(editor->rowCount(), 2);
    auto *next = qobject_cast<CMwPickerForTable *>(editor->cellWidget(1, 2));
    QVERIFY(next);
    QStyleOptionComboBox nextShown;
    next->initStyleOption(&nextShown);
    QCOMPARE(nextShown.currentText, placeholder);
    column->initStyleOption(&shown);
    QCOMPARE(shown.currentText, QStringLiteral("Data / Value"));
}

// The ready model's group rows: caption, value or "(leer)", row count.
void tst_TranslationsDe::readyModelGroupRows()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    QVERIFY(showAt(grid, 700, 400));
    model->groupByColumn(2);
    QStringList groups;
    for (int r = 0; r < model->rowCount(); ++r)
        groups << model->index(r, 0).data().toString();
    groups.sort();
    QCOMPARE(groups,
        QStringList({QStringLiteral("Note: (leer) (1)"), QStringLiteral("Note: 12 (1)"),
            QStringLiteral("Note: x (1)"), QStringLiteral("Note: y (1)")}));
}

// Every text the shown grid offers (with the filter editor open, a
// condition row, grouping and statistics) is German or the model's own.
void tst_TranslationsDe::everyVisibleTextIsGerman()
{
    CMwHierarchicalGridView grid;
    CMwGridTableModel *model = cities(&grid);
    grid.setModel(model);
    CMwFilterWidget *editor = openFilterEditor(grid);
    QVERIFY(editor);
    auto *column = qobject_cast<QComboBox *>(editor->cellWidget(0, 2));
    column->setCurrentIndex(column->findText(QStringLiteral("Data / Note")));
    model->groupByColumn(2);

    QSet<QString> modelTexts;
    collectModelTexts(model, QModelIndex(), modelTexts);
    collectModelTexts(grid.model(), QModelIndex(), modelTexts);
    const QSet<QString> german = m_catalogue.germanTexts();
    const QSet<QString> english = m_catalogue.englishTexts();

    QSet<QString> seen;
    for (const auto &entry : visibleTexts(&grid)) {
        const QString &text = entry.second;
        if (text.isEmpty())
            continue;
        seen.insert(text);
        QVERIFY2(!english.contains(text),
            qPrintable(QStringLiteral("English \"%1\" in %2").arg(text, entry.first)));
        QVERIFY2(german.contains(text) || modelTexts.contains(text) || isNumber(text),
            qPrintable(QStringLiteral("untranslated \"%1\" in %2").arg(text, entry.first)));
    }
    // And the German texts are really there.
    for (const QStringList &list : {toolbarTexts, ::statisticsLabels, filterHeaders, operatorTexts,
             comparatorTexts, QStringList {placeholder}}) {
        for (const QString &text : list)
            QVERIFY2(text.isEmpty() || seen.contains(text), qPrintable(text));
    }
    QVERIFY(seen.contains(QStringLiteral("Note: (leer) (1)")));
}

// What a screen reader reads out: the names and descriptions of every
// element of the grid, its row labels and cells, in German.
void tst_TranslationsDe::accessibleTextsAreGerman()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    CMwFilterWidget *editor = openFilterEditor(grid);
    QVERIFY(editor);

    const QSet<QString> english = m_catalogue.englishTexts();
    QList<QWidget *> widgets = grid.findChildren<QWidget *>();
    widgets.prepend(&grid);
    QVector<QAccessibleInterface *> pending;
    for (QWidget *w : qAsConst(widgets)) {
        if (QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(w))
            pending << iface;
    }
    int checked = 0;
    while (!pending.isEmpty()) {
        QAccessibleInterface *iface = pending.takeLast();
        for (QAccessible::Text t : {QAccessible::Name, QAccessible::Description}) {
            const QString text = iface->text(t);
            ++checked;
            QVERIFY2(text.isEmpty() || !english.contains(text),
                qPrintable(QStringLiteral("English \"%1\" read out").arg(text)));
        }
        // Item views' cells and header cells have no widget of their own.
        if (!iface->object() || qobject_cast<QAbstractItemView *>(iface->object())) {
            for (int i = 0; i < iface->childCount(); ++i) {
                QAccessibleInterface *child = iface->child(i);
                if (child && !child->object())
                    pending << child;
            }
        }
    }
    QVERIFY(checked > 100);

    auto *button = grid.findChild<QPushButton *>(QStringLiteral("resizeButton"));
    QCOMPARE(QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name),
        QStringLiteral("Spalten an Inhalt anpassen"));
    auto *toolbar = grid.findChild<QToolBar *>(QStringLiteral("MainToolbar"));
    QStringList toolNames;
    for (QAction *action : toolbar->actions())
        toolNames << QAccessible::queryAccessibleInterface(toolbar->widgetForAction(action))
                         ->text(QAccessible::Name);
    QCOMPARE(toolNames, toolbarTexts);
    for (int column = 1; column <= 3; ++column)
        QCOMPARE(editor->cellWidget(0, column)->accessibleName(), filterHeaders.at(column));
    QCOMPARE(QAccessible::queryAccessibleInterface(editor->cellWidget(0, 2))
                 ->text(QAccessible::Description),
        placeholder);
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(
        grid.findChild<QTableView *>(QStringLiteral("statisticTableView")));
    QStringList rowLabels;
    for (int i = 0; i < table->childCount(); ++i)
        if (table->child(i)->role() == QAccessible::RowHeader)
            rowLabels << table->child(i)->text(QAccessible::Name);
    QCOMPARE(rowLabels, ::statisticsLabels);
}

void tst_TranslationsDe::germanConditionsFilter_data()
{
    QTest::addColumn<QString>("column"); // the column picker's text
    QTest::addColumn<QString>("comparator"); // German, as the picker shows it
    QTest::addColumn<QString>("value"); // typed into the Value cell
    QTest::addColumn<QList<int>>("shown"); // Value column of the rows left

    const QString value = QStringLiteral("Data / Value");
    const QString note = QStringLiteral("Data / Note");
    QTest::newRow("greater or equal") << value << comparatorTexts.at(0) << "3" << QList<int> {3, 4};
    QTest::newRow("smaller or equal") << value << comparatorTexts.at(1) << "2" << QList<int> {1, 2};
    QTest::newRow("greater") << value << comparatorTexts.at(2) << "3" << QList<int> {4};
    QTest::newRow("smaller") << value << comparatorTexts.at(3) << "2" << QList<int> {1};
    QTest::newRow("equal") << value << comparatorTexts.at(4) << "2" << QList<int> {2};
    QTest::newRow("not equal") << value << comparatorTexts.at(5) << "2" << QList<int> {1, 3, 4};
    QTest::newRow("empty") << note << comparatorTexts.at(6) << "" << QList<int> {4};
    QTest::newRow("not empty") << note << comparatorTexts.at(7) << "" << QList<int> {1, 2, 3};
}

// A condition built through the German editor filters the grid's rows:
// the proxy compares with the same translated texts the pickers show.
void tst_TranslationsDe::germanConditionsFilter()
{
    QFETCH(QString, column);
    QFETCH(QString, comparator);
    QFETCH(QString, value);
    QFETCH(QList<int>, shown);

    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    CMwFilterWidget *editor = openFilterEditor(grid);
    QVERIFY(editor);

    auto *columnPicker = qobject_cast<QComboBox *>(editor->cellWidget(0, 2));
    auto *comparatorPicker = qobject_cast<QComboBox *>(editor->cellWidget(0, 3));
    columnPicker->setCurrentIndex(columnPicker->findText(column));
    QVERIFY(columnPicker->currentIndex() >= 0);
    comparatorPicker->setCurrentIndex(comparatorPicker->findText(comparator));
    QCOMPARE(comparatorPicker->currentText(), comparator);
    editor->item(0, 4)->setText(value);

    QCOMPARE(shownValues(grid), QList<int>({1, 2, 3, 4}));
    QVERIFY(clickToolbar(grid, QStringLiteral("Filter anwenden")));
    QCOMPARE(shownValues(grid), shown);
    QVERIFY(clickToolbar(grid, QStringLiteral("Filter anwenden")));
    QCOMPARE(shownValues(grid), QList<int>({1, 2, 3, 4}));
}

// "UND" and "ODER" chosen in German fold the conditions as the operators do.
void tst_TranslationsDe::germanOperatorsFold()
{
    CMwHierarchicalGridView grid;
    grid.setModel(cities(&grid));
    CMwFilterWidget *editor = openFilterEditor(grid);
    QVERIFY(editor);

    const auto condition
        = [editor](int row, const QString &op, const QString &comparator, const QString &value) {
              auto *column = qobject_cast<QComboBox *>(editor->cellWidget(row, 2));
              column->setCurrentIndex(column->findText(QStringLiteral("Data / Value")));
              auto *opPicker = qobject_cast<QComboBox *>(editor->cellWidget(row, 1));
              opPicker->setCurrentIndex(opPicker->findText(op));
              auto *comparatorPicker = qobject_cast<QComboBox *>(editor->cellWidget(row, 3));
              comparatorPicker->setCurrentIndex(comparatorPicker->findText(comparator));
              editor->item(row, 4)->setText(value);
              return opPicker->currentText() == op && comparatorPicker->currentText() == comparator;
          };
    // Value = 1 ODER Value = 4, starting from UND: (true AND v = 1) OR v = 4.
    QVERIFY(condition(0, QStringLiteral("UND"), comparatorTexts.at(4), QStringLiteral("1")));
    QVERIFY(condition(1, QStringLiteral("ODER"), comparatorTexts.at(4), QStringLiteral("4")));
    QVERIFY(clickToolbar(grid, QStringLiteral("Filter anwenden")));
    QCOMPARE(shownValues(grid), QList<int>({1, 4}));

    // Adding "UND Value > 2" narrows it: ((v = 1) OR (v = 4)) AND v > 2.
    QVERIFY(condition(2, QStringLiteral("UND"), comparatorTexts.at(2), QStringLiteral("2")));
    QCOMPARE(shownValues(grid), QList<int>({4}));
}

VEL_TEST_MAIN(tst_TranslationsDe)
#include "tst_translations_de.moc"
