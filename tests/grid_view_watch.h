#ifndef VEL_TESTS_GRID_VIEW_WATCH_H
#define VEL_TESTS_GRID_VIEW_WATCH_H

// Apart from grid_test_support.h, for the tests that need no composite.
#include "grid_test_support.h"

#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <QtCore/QAbstractProxyModel>
#include <QtCore/QItemSelectionModel>
#include <QtWidgets/QTableView>

// Watches every model a grid shows: the model handed to setModel(), the
// grid's proxy, the header model, the row-number model and the statistics
// model. The grid builds new header and statistics models when the model's
// layout or the selection changes; those are watched as they come, since
// these connections are made after the grid's own. Call again after
// setModel(), which brings a new proxy and selection model.
inline void watchGrid(CMwHierarchicalGridView &grid)
{
    const QPointer<CMwHierarchicalGridView> guarded(&grid);
    const auto watchShown = [guarded]() {
        if (!guarded)
            return;
        QAbstractItemModel *proxy = guarded->model();
        watchModel(proxy);
        if (auto *filter = qobject_cast<QAbstractProxyModel *>(proxy))
            watchModel(filter->sourceModel());
        if (auto *header = qobject_cast<CMwHierarchicalHeaderView *>(guarded->horizontalHeader()))
            watchModel(header->headerModel());
        if (QHeaderView *rows = guarded->verticalHeader())
            watchModel(rows->model());
        if (auto *table = guarded->findChild<QTableView *>(QStringLiteral("statisticTableView")))
            watchModel(table->model());
    };
    watchShown();

    auto *proxy = qobject_cast<QAbstractProxyModel *>(grid.model());
    // Queued: the grid's own reaction to a change may reset a model across
    // several handlers, and Qt 6's tester must not start watching it halfway.
    if (QAbstractItemModel *source = proxy ? proxy->sourceModel() : nullptr) {
        QObject::connect(
            source, &QAbstractItemModel::layoutChanged, &grid, watchShown, Qt::QueuedConnection);
        QObject::connect(
            source, &QAbstractItemModel::modelReset, &grid, watchShown, Qt::QueuedConnection);
        QObject::connect(
            source, &QAbstractItemModel::rowsInserted, &grid, watchShown, Qt::QueuedConnection);
        QObject::connect(
            source, &QAbstractItemModel::rowsRemoved, &grid, watchShown, Qt::QueuedConnection);
    }
    auto *view = grid.findChild<QAbstractItemView *>(QStringLiteral("DataView"));
    if (QItemSelectionModel *selection = view ? view->selectionModel() : nullptr)
        QObject::connect(selection, &QItemSelectionModel::selectionChanged, &grid, watchShown);
}

#endif // VEL_TESTS_GRID_VIEW_WATCH_H
