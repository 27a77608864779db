// The filter editor over a table: users build conditions row by row (tick,
// AND/OR, column, comparator, value) and switch filtering on; the table below
// shows only the rows that pass.
//
// Run with --quit (or on the offscreen platform) to build the window, run the
// event loop once and leave; that is how the test suite runs it.

#include <vel_qt_widgets/CMwFilterWidget.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include <QtCore/QTimer>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include <cstdio>

namespace {

QStandardItemModel *makePlanets(QObject *parent)
{
    struct Planet
    {
        const char *name;
        double au;
        int moons;
        const char *kind;
    };
    static const Planet planets[] = {
        {"Mercury", 0.39, 0, "rocky"},
        {"Venus", 0.72, 0, "rocky"},
        {"Earth", 1.00, 1, "rocky"},
        {"Mars", 1.52, 2, "rocky"},
        {"Jupiter", 5.20, 95, "gas"},
        {"Saturn", 9.58, 146, "gas"},
        {"Uranus", 19.2, 28, "ice"},
        {"Neptune", 30.1, 16, "ice"},
    };
    auto *model = new QStandardItemModel(0, 4, parent);
    model->setHorizontalHeaderLabels({"Planet", "Distance (AU)", "Moons", "Kind"});
    for (const Planet &p : planets) {
        QList<QStandardItem *> row;
        for (int column = 0; column < 4; ++column)
            row << new QStandardItem;
        // Typed values, so that the comparisons are numeric where they should be.
        row[0]->setData(QString::fromLatin1(p.name), Qt::DisplayRole);
        row[1]->setData(p.au, Qt::DisplayRole);
        row[2]->setData(p.moons, Qt::DisplayRole);
        row[3]->setData(QString::fromLatin1(p.kind), Qt::DisplayRole);
        model->appendRow(row);
    }
    return model;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);

    QWidget window;
    window.setWindowTitle(QStringLiteral("Filter editor over a table"));
    auto *layout = new QVBoxLayout(&window);

    QStandardItemModel *model = makePlanets(&window);
    // The proxy does the filtering; the editor only hands it the conditions.
    auto *proxy = new CMwSortFilterProxyModel(&window);
    proxy->setSourceModel(model);

    auto *editor = new CMwFilterWidget(&window);
    editor->setRefModel(proxy);
    editor->defineFilter(); // the first, still empty condition row
    // The initial column widths are fixed in pixels; let the operator and
    // comparator columns fit their texts in the application's font.
    editor->resizeColumnToContents(1);
    editor->resizeColumnToContents(3);

    auto *bar = new QHBoxLayout;
    auto *active = new QCheckBox(QStringLiteral("Filter"), &window);
    auto *up = new QPushButton(QStringLiteral("Up"), &window);
    auto *down = new QPushButton(QStringLiteral("Down"), &window);
    auto *remove = new QPushButton(QStringLiteral("Remove"), &window);
    auto *count = new QLabel(&window);
    bar->addWidget(active);
    bar->addWidget(up);
    bar->addWidget(down);
    bar->addWidget(remove);
    bar->addStretch();
    bar->addWidget(count);
    QObject::connect(active, SIGNAL(toggled(bool)), editor, SLOT(onActivateFilter(bool)));
    QObject::connect(up, SIGNAL(clicked()), editor, SLOT(onButtonUp()));
    QObject::connect(down, SIGNAL(clicked()), editor, SLOT(onButtonDown()));
    QObject::connect(remove, SIGNAL(clicked()), editor, SLOT(onButtonRemove()));

    auto *table = new QTableView(&window);
    table->setModel(proxy);
    table->setSortingEnabled(true);
    table->sortByColumn(-1, Qt::AscendingOrder); // source order until a header is clicked
    table->horizontalHeader()->setStretchLastSection(true);
    table->resizeColumnsToContents();

    auto report = [count, proxy, model] {
        count->setText(
            QStringLiteral("%1 of %2 planets").arg(proxy->rowCount()).arg(model->rowCount()));
        for (const CMwSortFilterProxyModel::FilterCondition &c : proxy->filterConditions())
            std::printf("  %s %s %s %s\n", qPrintable(c.op), qPrintable(c.column),
                qPrintable(c.comparator), qPrintable(c.value.toString()));
        std::printf("%d of %d rows pass\n", proxy->rowCount(), model->rowCount());
        std::fflush(stdout);
    };
    QObject::connect(editor, &CMwFilterWidget::filterChanged, count, report);
    count->setText(
        QStringLiteral("%1 of %2 planets").arg(model->rowCount()).arg(model->rowCount()));

    layout->addLayout(bar);
    layout->addWidget(editor);
    layout->addWidget(table, 1);
    window.resize(560, 420);
    window.show();

    if (app.arguments().contains(QStringLiteral("--quit"))
        || QGuiApplication::platformName() == QLatin1String("offscreen")) {
        // Headless, the proxy is driven directly with the same filter list the
        // editor produces: planets with more than 10 moons, "AND" further out
        // than 10 AU.
        const QStringList ops = CMwSortFilterProxyModel::operatorTexts();
        const QStringList cmp = CMwSortFilterProxyModel::comparatorTexts();
        proxy->setFilterRows({{QVariant(), ops.at(0), QStringLiteral("Moons"), cmp.at(2), 10},
            {QVariant(), ops.at(0), QStringLiteral("Distance (AU)"), cmp.at(2), 10.0}});
        report();
        QTimer::singleShot(0, &app, &QCoreApplication::quit);
    }
    return app.exec();
}
