#include "cmwhierarchicalgridview_p.h"

#include "cmwvariantcompare_p.h"
#include "gridlookup_p.h"
#include "gridmetrics_p.h"
#include "gridtablecells_p.h"
#include "qvectorcalcstatistics_p.h"
#include "selectedrows_p.h"
#include "statisticsheaderview_p.h"

#include <vel_system/MW_GetTranslation.h>

#include <QAction>
#include <QtCore/QEvent>
#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QFontMetrics>
#include <QtGui/QIcon>
#include <QtGui/QKeyEvent>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolBar>

#include <string>

namespace {

// Translation context of the toolbar texts: this source file, one fixed
// string whatever the build directory. The texts are marked with
// QT_TRANSLATE_NOOP in this same context, so that lupdate extracts them.
const char translationContext[] = "cmwhierarchicalgridview.cpp";

// The marked narrow literal is the source text; MW_GetTranslation gets its
// wide form (lupdate does not read wide literals).
QString translated(const char *text)
{
    const std::wstring source = QString::fromUtf8(text).toStdWString();
    return QString::fromWCharArray(MW_GetTranslation(source.c_str(), translationContext));
}

const char *const showStatisticsText
    = QT_TRANSLATE_NOOP("cmwhierarchicalgridview.cpp", "Show Statistics");
const char *const useFilterText = QT_TRANSLATE_NOOP("cmwhierarchicalgridview.cpp", "Use Filter");
const char *const defineFilterText
    = QT_TRANSLATE_NOOP("cmwhierarchicalgridview.cpp", "Define Filter");
const char *const upText = QT_TRANSLATE_NOOP("cmwhierarchicalgridview.cpp", "Up");
const char *const downText = QT_TRANSLATE_NOOP("cmwhierarchicalgridview.cpp", "Down");
const char *const removeText = QT_TRANSLATE_NOOP("cmwhierarchicalgridview.cpp", "Remove");
const char *const fitColumnsText
    = QT_TRANSLATE_NOOP("cmwhierarchicalgridview.cpp", "Fit Columns to Contents");

constexpr int statisticsRows = 6;

const char *const statisticsLabels[statisticsRows] = {
    QT_TRANSLATE_NOOP("CMwHierarchicalGridView", "Count"),
    QT_TRANSLATE_NOOP("CMwHierarchicalGridView", "Distinct"),
    QT_TRANSLATE_NOOP("CMwHierarchicalGridView", "Min"),
    QT_TRANSLATE_NOOP("CMwHierarchicalGridView", "Max"),
    QT_TRANSLATE_NOOP("CMwHierarchicalGridView", "Mean"),
    QT_TRANSLATE_NOOP("CMwHierarchicalGridView", "StDev"),
};

const int statisticsRoles[statisticsRows]
    = {StatCountRole, StatDistinctRole, StatMinRole, StatMaxRole, StatMeanRole, StatStDevRole};

} // namespace

CMwHierarchicalGridViewPrivate::~CMwHierarchicalGridViewPrivate() = default;

bool CMwHierarchicalGridViewPrivate::handleBodyMenuKey(QEvent *event)
{
    bool menuKey = false;
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const Qt::KeyboardModifiers modifiers
            = key->modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
        menuKey = (key->key() == Qt::Key_Menu && modifiers == Qt::NoModifier)
            || (key->key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier);
    } else if (event->type() == QEvent::ContextMenu) {
        // Some platforms turn the menu key into a context-menu event; a right
        // click in the body (mouse reason, sent to the viewport) stays as it is.
        menuKey = static_cast<QContextMenuEvent *>(event)->reason() == QContextMenuEvent::Keyboard;
    }
    if (!menuKey)
        return false;
    event->accept();
    CMwGridTreeView *view = dataView();
    auto *header = view ? qobject_cast<CMwHierarchicalHeaderView *>(view->header()) : nullptr;
    if (!header || header->count() == 0)
        return true;
    int section = view->currentIndex().isValid() ? view->currentIndex().column() : -1;
    // Without a current cell, the first column the user can see.
    for (int visual = 0;
         (section < 0 || header->isSectionHidden(section)) && visual < header->count(); ++visual) {
        section = header->logicalIndex(visual);
    }
    if (section >= 0 && !header->isSectionHidden(section))
        header->showColumnMenu(section);
    return true;
}

CMwGridTreeView *CMwHierarchicalGridViewPrivate::dataView() const
{
    return q_ptr->findChild<CMwGridTreeView *>(QStringLiteral("DataView"));
}

QTableView *CMwHierarchicalGridViewPrivate::statisticTableView() const
{
    return q_ptr->findChild<QTableView *>(QStringLiteral("statisticTableView"));
}

CMwFilterWidget *CMwHierarchicalGridViewPrivate::filterTable() const
{
    return q_ptr->findChild<CMwFilterWidget *>(QStringLiteral("FilterTable"));
}

CMwVHeaderView *CMwHierarchicalGridViewPrivate::rowNumbers() const
{
    return q_ptr->findChild<CMwVHeaderView *>(QStringLiteral("VerticalHeader"));
}

void CMwHierarchicalGridViewPrivate::fitResizeButton() const
{
    auto *button = q_ptr->findChild<QPushButton *>(QStringLiteral("resizeButton"));
    CMwGridTreeView *view = dataView();
    if (!button || !view)
        return;
    // The height the body gives its header when it lays it out, known
    // before the grid is first shown.
    QHeaderView *header = view->header();
    const int height
        = header->isHidden() ? 0 : qMax(header->minimumHeight(), header->sizeHint().height());
    button->setMaximumHeight(height);
}

QObject *vel::GridLookup::object(CMwHierarchicalGridView *grid) { return grid; }

const CMwHierarchicalGridView *vel::GridLookup::grid(const QObject *object)
{
    return qobject_cast<const CMwHierarchicalGridView *>(object);
}

int vel::GridLookup::columnWidth(const CMwHierarchicalGridView *grid, int column)
{
    return grid->columnWidth(column);
}

QColor vel::GridLookup::branchParentColor(const CMwHierarchicalGridView *grid)
{
    return grid->colorBranchParent();
}

CMwHierarchicalGridView::CMwHierarchicalGridView(QWidget *parent)
    : CMwHierarchicalGridView(new CMwHierarchicalGridViewPrivate, parent)
{
}

CMwHierarchicalGridView::CMwHierarchicalGridView(CMwHierarchicalGridViewPrivate *d, QWidget *parent)
    : QWidget(parent)
    , d_vel(d)
{
    d_vel->q_ptr = this;
    init();
}

CMwHierarchicalGridView::~CMwHierarchicalGridView() = default;

void CMwHierarchicalGridView::init()
{
    Q_D(CMwHierarchicalGridView);
    // Creation order is the children's order, and with it the focus chain
    // before the tab order below is set.
    auto *toolbar = new QToolBar;
    toolbar->setObjectName(QStringLiteral("MainToolbar"));
    toolbar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    CMwFilterWidget *filter = d->createFilter();
    QPushButton *resizeButton = d->createResizeButton();
    CMwGridTreeView *dataView = d->createBody();
    QTableView *statistics = d->createStatisticsTable();
    d->layOut(toolbar, filter, resizeButton, dataView, statistics);
    d->fillToolbar(toolbar, filter);
    d->wire(toolbar, filter, resizeButton, dataView, statistics);
}

CMwFilterWidget *CMwHierarchicalGridViewPrivate::createFilter()
{
    Q_Q(CMwHierarchicalGridView);
    auto *filter = new CMwFilterWidget(q);
    filter->setObjectName(QStringLiteral("FilterTable"));
    // Opened by "Define Filter".
    filter->hide();
    QObject::connect(filter, SIGNAL(filterChanged()), q, SLOT(onFilterChanged()));
    return filter;
}

QPushButton *CMwHierarchicalGridViewPrivate::createResizeButton()
{
    Q_Q(CMwHierarchicalGridView);
    auto *resizeButton = new QPushButton(q);
    resizeButton->setObjectName(QStringLiteral("resizeButton"));
    resizeButton->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    resizeButton->setMaximumWidth(vel::rowNumberColumnWidth);
    resizeButton->setMaximumHeight(vel::resizeButtonInitialHeight);
    resizeButton->setIcon(QIcon(QStringLiteral(":/w32_commonres/res/AutoSize_columns.svg")));
    QObject::connect(resizeButton, SIGNAL(pressed()), q, SLOT(onResizeToContents()));
    // Icon only: screen readers need the name the picture stands for.
    resizeButton->setAccessibleName(translated(fitColumnsText));
    return resizeButton;
}

CMwGridTreeView *CMwHierarchicalGridViewPrivate::createBody()
{
    Q_Q(CMwHierarchicalGridView);
    auto *dataView = new CMwGridTreeView(q);
    dataView->setObjectName(QStringLiteral("DataView"));
    // Frameless, like the row numbers and the statistics table beside and
    // below it: rows, row numbers and statistics columns line up to the pixel.
    dataView->setFrameShape(QFrame::NoFrame);

    auto *rowNumbers = new CMwVHeaderView(Qt::Vertical, q);
    rowNumbers->setObjectName(QStringLiteral("VerticalHeader"));
    rowNumbers->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    rowNumbers->setMaximumWidth(vel::rowNumberColumnWidth);
    rowNumbers->verticalScrollBar()->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    rowNumbers->verticalScrollBar()->hide();
    rowNumbers->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rowNumbers->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    rowNumbers->setAutoScroll(true);
    rowNumbers->setDefaultAlignment(Qt::AlignRight);
    rowNumbers->setTreeView(dataView);

    dataView->horizontalScrollBar()->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    dataView->horizontalScrollBar()->setMaximumHeight(vel::hiddenScrollBarHeight);
    dataView->horizontalScrollBar()->hide();
    dataView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    dataView->setCornerWidget(nullptr);
    auto *header = new CMwHierarchicalHeaderView(Qt::Horizontal, dataView);
    dataView->setHeader(header);
    dataView->setSortingEnabled(true);
    dataView->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    dataView->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    dataView->setItemDelegate(new CMwGridDelegate(dataView));
    dataView->setUniformRowHeights(true);
    dataView->setSelectionBehavior(QAbstractItemView::SelectRows);
    dataView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    return dataView;
}

QTableView *CMwHierarchicalGridViewPrivate::createStatisticsTable()
{
    Q_Q(CMwHierarchicalGridView);
    auto *statistics = new QTableView(q);
    statistics->setObjectName(QStringLiteral("statisticTableView"));
    statistics->setHorizontalHeader(new vel::StatisticsHeaderView(statistics));
    statistics->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    statistics->horizontalHeader()->setDefaultAlignment(Qt::AlignRight);
    statistics->horizontalHeader()->hide();
    statistics->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    statistics->verticalHeader()->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    statistics->verticalHeader()->setMaximumWidth(vel::rowNumberColumnWidth);
    // The rows keep the body's row height, also below the style's minimum.
    statistics->verticalHeader()->setMinimumSectionSize(vel::rowSectionMinimumSize);
    statistics->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    // Its height is counted in rows (six, plus the scroll bar when shown):
    // a frame would cost the last row two pixels and bring a scroll bar.
    statistics->setFrameShape(QFrame::NoFrame);
    statistics->setItemDelegate(new CMwStatisticsDelegate(statistics));
    statistics->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    statistics->setSelectionMode(QAbstractItemView::NoSelection);
    // Tab leaves the read-only figures instead of wrapping through their
    // cells for ever; the arrow keys still move between them.
    statistics->setTabKeyNavigation(false);
    return statistics;
}

void CMwHierarchicalGridViewPrivate::layOut(QToolBar *toolbar, CMwFilterWidget *filter,
    QPushButton *resizeButton, CMwGridTreeView *dataView, QTableView *statistics)
{
    Q_Q(CMwHierarchicalGridView);
    auto *layout = new QVBoxLayout(q);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(toolbar);
    layout->addWidget(filter);
    auto *body = new QHBoxLayout;
    body->setContentsMargins(0, 0, 0, 0);
    body->setSpacing(0);
    auto *corner = new QVBoxLayout;
    corner->setContentsMargins(0, 0, 0, 0);
    corner->setSpacing(0);
    corner->addWidget(resizeButton);
    corner->addWidget(rowNumbers());
    body->addLayout(corner);
    body->addWidget(dataView);
    layout->addLayout(body);
    layout->addWidget(statistics);
}

void CMwHierarchicalGridViewPrivate::fillToolbar(QToolBar *toolbar, CMwFilterWidget *filter)
{
    Q_Q(CMwHierarchicalGridView);
    QAction *showStatistics = toolbar->addAction(
        QIcon(QStringLiteral(":/w32_commonres/res/suma_file.svg")), translated(showStatisticsText));
    showStatistics->setToolTip(showStatistics->text());
    showStatistics->setCheckable(true);
    showStatistics->setChecked(true);
    QObject::connect(showStatistics, SIGNAL(triggered()), q, SLOT(showStatistics()));

    QAction *useFilter = toolbar->addAction(
        QIcon(QStringLiteral(":/w32_commonres/res/filter.svg")), translated(useFilterText));
    useFilter->setToolTip(useFilter->text());
    useFilter->setCheckable(true);
    QObject::connect(useFilter, SIGNAL(triggered()), q, SLOT(activateFilter()));
    QObject::connect(useFilter, SIGNAL(toggled(bool)), filter, SLOT(onActivateFilter(bool)));

    QAction *defineFilter = toolbar->addAction(
        QIcon(QStringLiteral(":/w32_commonres/res/filter_edit.svg")), translated(defineFilterText));
    defineFilter->setToolTip(defineFilter->text());
    defineFilter->setCheckable(true);
    QObject::connect(defineFilter, SIGNAL(triggered()), q, SLOT(editFilter()));

    struct RowAction
    {
        const char *icon;
        const char *text;
        const char *slot;
    };
    const RowAction rowActions[] = {
        {":/w32_commonres/res/arr/item_up.svg", upText, SLOT(onButtonUp())},
        {":/w32_commonres/res/arr/item_down.svg", downText, SLOT(onButtonDown())},
        {":/w32_commonres/res/trash.svg", removeText, SLOT(onButtonRemove())},
    };
    for (const RowAction &row : rowActions) {
        QAction *action = toolbar->addAction(QIcon(QLatin1String(row.icon)), translated(row.text));
        action->setToolTip(action->text());
        action->setVisible(false);
        QObject::connect(action, SIGNAL(triggered()), filter, row.slot);
        QObject::connect(defineFilter, SIGNAL(toggled(bool)), action, SLOT(setVisible(bool)));
    }
}

void CMwHierarchicalGridViewPrivate::wire(QToolBar *toolbar, CMwFilterWidget *filter,
    QPushButton *resizeButton, CMwGridTreeView *dataView, QTableView *statistics)
{
    Q_Q(CMwHierarchicalGridView);
    QHeaderView *header = dataView->header();
    QObject::connect(dataView, SIGNAL(expanded(QModelIndex)), q, SLOT(onExpanded(QModelIndex)));
    QObject::connect(dataView, SIGNAL(collapsed(QModelIndex)), q, SLOT(onExpanded(QModelIndex)));
    QObject::connect(
        header, SIGNAL(showColumn(mw_int32, bool)), q, SLOT(onShowColumn(mw_int32, bool)));
    QObject::connect(header, SIGNAL(sortIndicatorChanged(int, Qt::SortOrder)), q,
        SLOT(onSortIndicatorChanged(int, Qt::SortOrder)));
    QObject::connect(
        header, SIGNAL(sectionResized(int, int, int)), q, SLOT(sectionResized(int, int, int)));
    QObject::connect(dataView->verticalScrollBar(), SIGNAL(valueChanged(int)), rowNumbers(),
        SLOT(setOffset(int)));
    QObject::connect(statistics->horizontalScrollBar(), SIGNAL(valueChanged(int)),
        dataView->horizontalScrollBar(), SLOT(setValue(int)));
    statistics->horizontalScrollBar()->installEventFilter(q);

    // Tool buttons take no focus by default; Tab reaches them here, and
    // Space triggers them. A click still leaves the focus where it was.
    QList<QWidget *> buttons;
    for (QAction *action : toolbar->actions()) {
        if (QWidget *button = toolbar->widgetForAction(action)) {
            button->setFocusPolicy(Qt::TabFocus);
            buttons << button;
        }
    }
    // Tab runs top to bottom as the grid is laid out. The toolbar joined the
    // grid last, so its buttons close the chain; as a ring that looks right,
    // but where the grid sits in another window the chain is cut before the
    // grid and the toolbar would come after the statistics. The first button
    // stays, as the first stop after the grid; the others follow it.
    if (!buttons.isEmpty()) {
        const QList<QWidget *> below = {filter, resizeButton, dataView, statistics};
        QWidget *previous = buttons.first();
        for (QWidget *next : below) {
            QWidget::setTabOrder(previous, next);
            previous = next;
        }
        // Behind the first button, ahead of the editor moved there above.
        previous = buttons.first();
        for (QWidget *button : buttons.mid(1)) {
            QWidget::setTabOrder(previous, button);
            previous = button;
        }
    }
    // The menu key and Shift+F10 in the body open the column menu.
    dataView->installEventFilter(q);
    // The header's height also changes without a new model (a caption turned
    // rotated, another font); the corner button follows it.
    header->installEventFilter(q);
}

void CMwHierarchicalGridView::setModel(QAbstractItemModel *model)
{
    Q_D(CMwHierarchicalGridView);
    if (!model)
        return;

    if (CMwGridTreeView *view = d->dataView()) {
        QPointer<QAbstractItemModel> previous = view->model();
        auto *proxy = new CMwSortFilterProxyModel(this);
        proxy->setSourceModel(model);
        view->setModel(proxy);
        connect(view->selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)),
            this, SLOT(onTreeViewSelectionChanged(QItemSelection, QItemSelection)));
        if (CMwFilterWidget *filter = d->filterTable())
            filter->setRefModel(proxy);
        d->shownProxy = proxy;
        connect(proxy, SIGNAL(destroyed()), this, SLOT(onProxyDestroyed()));
        // The replaced proxy is released once nothing shows it any more: the
        // filter editor and the row numbers hold guarded pointers to it.
        if (previous && previous != proxy && previous->parent() == this
            && qobject_cast<CMwSortFilterProxyModel *>(previous)) {
            disconnect(previous, SIGNAL(destroyed()), this, SLOT(onProxyDestroyed()));
            delete previous.data();
        }
    }

    // Only the model shown now rebuilds the grid on its layout changes.
    if (d->sourceModel && d->sourceModel != model) {
        disconnect(d->sourceModel, SIGNAL(layoutChanged()), this, SLOT(onDataChanged()));
        disconnect(d->sourceModel, SIGNAL(destroyed()), this, SLOT(onSourceModelDestroyed()));
    }
    d->sourceModel = model;
    connect(model, SIGNAL(layoutChanged()), this, SLOT(onDataChanged()), Qt::UniqueConnection);
    // Connected after the proxy's own handling, which has emptied the proxy
    // by the time the grid hears of it.
    connect(model, SIGNAL(destroyed()), this, SLOT(onSourceModelDestroyed()), Qt::UniqueConnection);

    onDataChanged();
}

void CMwHierarchicalGridView::onSourceModelDestroyed()
{
    Q_D(CMwHierarchicalGridView);
    // The guarded pointer to the model shown is null by now; a live one
    // means some other model went, one a subclass may have connected.
    if (d->sourceModel)
        return;
    d->showNoModel();
}

void CMwHierarchicalGridView::onProxyDestroyed()
{
    Q_D(CMwHierarchicalGridView);
    if (sender() != d->shownProxy)
        return;
    d->shownProxy = nullptr;
    d->showNoModel();
}

void CMwHierarchicalGridViewPrivate::showNoModel()
{
    Q_Q(CMwHierarchicalGridView);
    if (sourceModel) {
        QObject::disconnect(sourceModel, SIGNAL(layoutChanged()), q, SLOT(onDataChanged()));
        QObject::disconnect(sourceModel, SIGNAL(destroyed()), q, SLOT(onSourceModelDestroyed()));
    }
    sourceModel = nullptr;
    statisticsOnSelection = false;

    QAbstractItemModel *proxy = nullptr;
    if (CMwGridTreeView *view = dataView()) {
        proxy = view->model();
        // Resets the body and its header at once; a destroyed model would
        // only be reset by the view at the next event loop pass.
        view->setModel(nullptr);
        if (auto *header = qobject_cast<CMwHierarchicalHeaderView *>(view->header()))
            header->setHeaderModel(nullptr);
    }
    delete headerModel.data();
    if (CMwFilterWidget *filter = filterTable())
        filter->setRefModel(nullptr);
    if (CMwVHeaderView *rows = rowNumbers())
        rows->setModel(nullptr);
    if (QTableView *table = statisticTableView()) {
        QAbstractItemModel *previous = table->model();
        table->setModel(nullptr);
        delete previous;
    }
    if (proxy && proxy->parent() == q && qobject_cast<CMwSortFilterProxyModel *>(proxy)) {
        QObject::disconnect(proxy, SIGNAL(destroyed()), q, SLOT(onProxyDestroyed()));
        shownProxy = nullptr;
        delete proxy;
    }
    q->updateControl();
}

QAbstractItemModel *CMwHierarchicalGridView::model() const
{
    Q_D(const CMwHierarchicalGridView);
    CMwGridTreeView *view = d->dataView();
    return view ? view->model() : nullptr;
}

QHeaderView *CMwHierarchicalGridView::horizontalHeader() const
{
    Q_D(const CMwHierarchicalGridView);
    CMwGridTreeView *view = d->dataView();
    return view ? view->header() : nullptr;
}

QHeaderView *CMwHierarchicalGridView::verticalHeader() const
{
    Q_D(const CMwHierarchicalGridView);
    return d->rowNumbers();
}

int CMwHierarchicalGridView::columnWidth(int column) const
{
    Q_D(const CMwHierarchicalGridView);
    CMwGridTreeView *view = d->dataView();
    return view ? view->columnWidth(column) : 0;
}

QColor CMwHierarchicalGridView::colorBranchParent() const
{
    Q_D(const CMwHierarchicalGridView);
    return d->branchParentColor;
}

void CMwHierarchicalGridView::setColorBranchParent(const QColor &color)
{
    Q_D(CMwHierarchicalGridView);
    // Read by the body at its next paint; no repaint forced here.
    d->branchParentColor = color;
}

void CMwHierarchicalGridView::onDataChanged()
{
    createHierarchicalHeaderItemModel();
    updateVerticalHeader();
    updateStatisticDataModel();
    updateControl();
}

void CMwHierarchicalGridView::createHierarchicalHeaderItemModel()
{
    Q_D(CMwHierarchicalGridView);
    CMwGridTreeView *view = d->dataView();
    if (!view)
        return;
    QAbstractItemModel *source = view->model();

    auto *headerModel = new QStandardItemModel(this);
    const int columns = source ? source->columnCount() : 0;
    for (int column = 0; column < columns; ++column) {
        const QVariant pathValue = source->headerData(column, Qt::Horizontal, HeaderPathRole);
        // A lone text is no path: it adds no cell.
        const QVariantList path = vel::Qt5Variant::toList(pathValue);
        QStandardItem *candidate = headerModel->item(0, qMax(headerModel->columnCount() - 1, 0));
        QStandardItem *parent = candidate;
        for (int level = 0; level < path.size(); ++level) {
            QStandardItem *item = nullptr;
            const QVariant caption = candidate ? candidate->data(Qt::DisplayRole) : QVariant();
            // Single-level columns are never merged (docs/compatibility.md).
            if (candidate && caption.isValid() && path.size() > 1
                && vel::Qt5Variant::equal(caption, path.at(level))) {
                item = candidate;
            } else {
                item = new QStandardItem;
                item->setData(path.at(level), Qt::DisplayRole);
                if (!parent || candidate == parent)
                    headerModel->setItem(0, headerModel->columnCount(), item);
                else
                    parent->setChild(0, parent->columnCount(), item);
            }
            parent = item;
            candidate = item->columnCount() > 0 ? item->child(0, item->columnCount() - 1) : nullptr;
        }
    }

    auto *header = qobject_cast<CMwHierarchicalHeaderView *>(view->header());
    if (header) {
        header->setHeaderModel(headerModel);
        // QHeaderView caches its size hint: a header with more or fewer
        // levels must be measured again, and the body must lay it out anew.
        if (header->count() > 0)
            header->headerDataChanged(Qt::Horizontal, 0, header->count() - 1);
        view->updateGeometries();
        header->viewport()->update();
    }
    delete d->headerModel.data();
    d->headerModel = headerModel;
}

void CMwHierarchicalGridView::updateVerticalHeader()
{
    Q_D(CMwHierarchicalGridView);
    QAbstractItemModel *proxy = model();
    if (!proxy)
        return;
    CMwGridTreeView *view = d->dataView();
    if (CMwVHeaderView *rowNumbers = d->rowNumbers()) {
        rowNumbers->setModel(proxy);
        if (view) {
            const int rowHeight = view->sizeHintForRow(0);
            if (rowHeight > 0) {
                // Qt raises a default section size below the minimum to the minimum.
                if (rowNumbers->minimumSectionSize() > rowHeight)
                    rowNumbers->setMinimumSectionSize(rowHeight);
                rowNumbers->setDefaultSectionSize(rowHeight);
            }
        }
    }
    d->fitResizeButton();
}

void CMwHierarchicalGridView::updateStatisticDataModel()
{
    Q_D(CMwHierarchicalGridView);
    QTableView *table = d->statisticTableView();
    QAbstractItemModel *proxy = model();
    if (!table || !proxy)
        return;
    CMwGridTreeView *view = d->dataView();

    QItemSelectionModel *selection = view ? view->selectionModel() : nullptr;
    // The rows of selectedRows(0), read without building its index lists.
    vel::SelectedRows rows(selection);
    int rowHeight = view ? view->sizeHintForRow(0) : 0;
    d->statisticsOnSelection = rows.count() > 1;

    const int columns = proxy->columnCount();
    auto *statistics = new CMwStatisticsItemModel(this);
    // Six labelled rows also when there is no column to fill them.
    statistics->setRowCount(statisticsRows);
    statistics->setColumnCount(columns);
    // selectedRows(column) lists the rows of selectedRows(0) in the same
    // order (a row counts as selected whatever the column asked for), so the
    // rows are found once for all columns, and the typed columns among them
    // are summed up together.
    std::vector<vel::StatisticsResult> typed;
    if (d->statisticsOnSelection) {
        rows.typedStatistics(columns, typed);
    } else if (const auto *sorter = qobject_cast<const QSortFilterProxyModel *>(proxy)) {
        // Over the ready model, the whole columns' statistics are worked out
        // together before they are read one by one.
        if (const vel::GridTableCells *ready = vel::GridTableCells::of(sorter->sourceModel())) {
            std::vector<int> sourceColumns;
            for (int column = 0; column < columns; ++column) {
                const QModelIndex cell = sorter->mapToSource(sorter->index(0, column));
                if (cell.isValid())
                    sourceColumns.push_back(cell.column());
            }
            ready->prepareStatistics(sourceColumns);
        }
    }
    for (int column = 0; column < columns; ++column) {
        QVariant values[statisticsRows];
        if (d->statisticsOnSelection) {
            vel::StatisticsResult r = typed[static_cast<size_t>(column)];
            if (!r.done) {
                const std::vector<const QVariant *> &cells = rows.displayCells(column);
                vel::calcStatistics(cells, rows.textNumbers(), rows.storageCells(), r.count,
                    r.distinct, r.min, r.max, r.mean, r.stdev);
            }
            const double results[statisticsRows]
                = {r.count, r.distinct, r.min, r.max, r.mean, r.stdev};
            for (int i = 0; i < statisticsRows; ++i)
                values[i] = results[i];
        } else {
            const QModelIndex first = proxy->index(0, column);
            for (int i = 0; i < statisticsRows; ++i)
                values[i] = proxy->data(first, statisticsRoles[i]);
        }
        for (int i = 0; i < statisticsRows; ++i) {
            auto *item = new QStandardItem;
            item->setData(values[i], Qt::DisplayRole);
            item->setData(int(Qt::AlignRight), Qt::TextAlignmentRole);
            statistics->setItem(i, column, item);
        }
    }
    for (int i = 0; i < statisticsRows; ++i)
        statistics->setHeaderData(i, Qt::Vertical, tr(statisticsLabels[i]));

    if (rowHeight < 1)
        rowHeight = fontMetrics().descent() + fontMetrics().lineSpacing();
    // Qt raises a default section size below the minimum to the minimum.
    QHeaderView *labels = table->verticalHeader();
    if (labels->minimumSectionSize() > rowHeight)
        labels->setMinimumSectionSize(rowHeight);
    labels->setDefaultSectionSize(rowHeight);
    QAbstractItemModel *previous = table->model();
    table->setModel(statistics);
    delete previous;
    // A new model starts with default widths: take the body's columns again.
    if (view) {
        for (int column = 0; column < columns; ++column) {
            table->setColumnWidth(column, view->columnWidth(column));
            table->setColumnHidden(column, view->isColumnHidden(column));
        }
    }
    table->setMaximumHeight(statisticsRows * rowHeight);
    table->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
}

void CMwHierarchicalGridView::updateControl()
{
    Q_D(CMwHierarchicalGridView);
    if (QTableView *table = d->statisticTableView()) {
        if (auto *header = qobject_cast<vel::StatisticsHeaderView *>(table->horizontalHeader()))
            header->announceGeometries();
        table->update();
    }
    if (CMwVHeaderView *rowNumbers = d->rowNumbers())
        rowNumbers->update();
}

void CMwHierarchicalGridView::onTreeGeometriesChanged() { }

void CMwHierarchicalGridView::onShowColumn(mw_int32 iCol, bool bShow)
{
    Q_D(CMwHierarchicalGridView);
    if (QTableView *table = d->statisticTableView())
        table->setColumnHidden(iCol, !bShow);
}

void CMwHierarchicalGridView::onExpanded(QModelIndex) { }

// By value: the public signature is fixed.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void CMwHierarchicalGridView::onTreeViewSelectionChanged(QItemSelection, QItemSelection)
{
    Q_D(CMwHierarchicalGridView);
    CMwGridTreeView *view = d->dataView();
    if (!view)
        return;
    view->repaint();
    // Whether two rows are selected is known after finding two.
    const int selectedRows = vel::SelectedRows(view->selectionModel(), 2).count();
    // After statistics over a selection, any change goes back to the model's.
    if (selectedRows >= 2 || d->statisticsOnSelection)
        updateStatisticDataModel();
}

void CMwHierarchicalGridView::onSortIndicatorChanged(int, Qt::SortOrder) { updateControl(); }

void CMwHierarchicalGridView::sectionResized(int logicalIndex, int, int newSize)
{
    Q_D(CMwHierarchicalGridView);
    if (QTableView *table = d->statisticTableView()) {
        table->setColumnWidth(logicalIndex, newSize);
        table->update();
    }
}

void CMwHierarchicalGridView::onResizeToContents()
{
    if (QHeaderView *header = horizontalHeader())
        header->resizeSections(QHeaderView::ResizeToContents);
}

void CMwHierarchicalGridView::showStatistics()
{
    Q_D(CMwHierarchicalGridView);
    // isHidden(), not isVisible(): the toggle works before the grid is shown.
    if (QTableView *table = d->statisticTableView())
        table->setHidden(!table->isHidden());
}

void CMwHierarchicalGridView::activateFilter() { }

void CMwHierarchicalGridView::editFilter()
{
    Q_D(CMwHierarchicalGridView);
    CMwFilterWidget *filter = d->filterTable();
    if (!filter)
        return;
    filter->setHidden(!filter->isHidden());
    if (!filter->isHidden())
        filter->defineFilter();
}

void CMwHierarchicalGridView::onFilterChanged() { }

bool CMwHierarchicalGridView::eventFilter(QObject *watched, QEvent *event)
{
    Q_D(CMwHierarchicalGridView);
    if ((event->type() == QEvent::KeyPress || event->type() == QEvent::ContextMenu)
        && watched == d->dataView() && d->handleBodyMenuKey(event)) {
        return true;
    }
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show
        || event->type() == QEvent::Hide) {
        if (watched == horizontalHeader())
            d->fitResizeButton();
    }
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide) {
        QTableView *table = d->statisticTableView();
        auto *bar = qobject_cast<QScrollBar *>(watched);
        if (table && bar && bar == table->horizontalScrollBar()) {
            const int rows = statisticsRows * table->rowHeight(0);
            if (event->type() == QEvent::Show) {
                table->setMinimumHeight(rows);
                table->setMaximumHeight(bar->height() + rows);
            } else {
                table->setMinimumHeight(rows);
                table->setMaximumHeight(rows);
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}
