// The grid as an application uses it: a generated 100 000-row table in the
// ready model, a three-level header, grouping from the header menu, the
// filter editor and the statistics table.
#include "gallerypage.h"

#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <QtCore/QRandomGenerator>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace {

CMwGridTableModel *createOrders(QObject *parent)
{
    const QStringList regions = {QStringLiteral("North"), QStringLiteral("South"),
        QStringLiteral("East"), QStringLiteral("West")};
    const QStringList cities
        = {QStringLiteral("Arden"), QStringLiteral("Brask"), QStringLiteral("Corvel"),
            QStringLiteral("Dunmore"), QStringLiteral("Elsby"), QStringLiteral("Farrow")};
    const QStringList products = {QStringLiteral("Bolts"), QStringLiteral("Cables"),
        QStringLiteral("Gears"), QStringLiteral("Valves")};
    const QStringList states
        = {QStringLiteral("open"), QStringLiteral("shipped"), QStringLiteral("paid")};

    QRandomGenerator random(4711);
    QVector<QVector<QVariant>> records;
    const int rows = 100000;
    records.reserve(rows);
    for (int i = 0; i < rows; ++i) {
        const int quantity = 1 + int(random.bounded(40));
        const double price = 2.5 + random.bounded(200) / 4.0;
        const int city = int(random.bounded(cities.size()));
        QVector<QVariant> record {100000 + i, regions.at(city % regions.size()), cities.at(city),
            products.at(int(random.bounded(products.size()))), quantity, price, quantity * price,
            states.at(int(random.bounded(states.size())))};
        // Some orders have no delivery time yet: empty cells.
        record.insert(7, random.bounded(10) == 0 ? QVariant() : QVariant(int(random.bounded(30))));
        records.append(record);
    }

    auto *model = new CMwGridTableModel(parent);
    const QString order = QStringLiteral("Order");
    const QString figures = QStringLiteral("Figures");
    model->setTable(
        {{order, QStringLiteral("Ref"), QStringLiteral("No.")},
            {order, QStringLiteral("Place"), QStringLiteral("Region")},
            {order, QStringLiteral("Place"), QStringLiteral("City")},
            {order, QStringLiteral("Item"), QStringLiteral("Product")},
            {figures, QStringLiteral("Amount"), QStringLiteral("Qty")},
            {figures, QStringLiteral("Amount"), QStringLiteral("Price")},
            {figures, QStringLiteral("Amount"), QStringLiteral("Total")},
            {figures, QStringLiteral("Time"), QStringLiteral("Days")}, {QStringLiteral("Status")}},
        records);
    return model;
}

QWidget *createHierarchicalGridPage(GalleryLog *log)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *intro = new QLabel(QStringLiteral(
        "100 000 orders in CMwGridTableModel. Right-click a column header for Hide Column, "
        "Group By and Ungroup; select several rows for statistics over the selection; "
        "the funnel buttons define and apply a filter."));
    intro->setWordWrap(true);
    layout->addWidget(intro);

    auto *grid = new CMwHierarchicalGridView(page);
    CMwGridTableModel *model = createOrders(grid);
    grid->setModel(model);
    QObject::connect(grid->horizontalHeader(), SIGNAL(groupByColumn(mw_int32)), model,
        SLOT(groupByColumn(mw_int32)));
    QObject::connect(model, &CMwGridTableModel::groupColumnChanged, log,
        [log](int column) { log->write(QStringLiteral("groupColumnChanged(%1)").arg(column)); });
    QObject::connect(grid->findChild<CMwFilterWidget *>(QStringLiteral("FilterTable")),
        &CMwFilterWidget::filterChanged, log, [log, grid]() {
            log->write(
                QStringLiteral("filterChanged(): %1 rows shown").arg(grid->model()->rowCount()));
        });
    // Show a few rows selected, so that the statistics are the selection's.
    if (auto *view = grid->findChild<QTreeView *>(QStringLiteral("DataView"))) {
        view->selectionModel()->select(
            QItemSelection(grid->model()->index(2, 0), grid->model()->index(6, 0)),
            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    grid->onResizeToContents();
    layout->addWidget(grid, 1);
    return page;
}

} // namespace

VEL_GALLERY_PAGE(25, "Hierarchical grid", createHierarchicalGridPage);
