#include "gallerypage.h"

#include <vel_qt_widgets/CMwFilterWidget.h>
#include <vel_qt_widgets/CMwPickerForTable.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include <QtGui/QIcon>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

namespace {

QStandardItemModel *makeOrders(QObject *parent)
{
    static const char *const cities[] = {"Berlin", "Lisbon", "Oslo", "Prague", "Vienna", "Zagreb"};
    static const char *const products[] = {"Bolt", "Gear", "Hinge", "Nut", "Spring", "Valve"};
    const int rows = 5000;
    auto *model = new QStandardItemModel(rows, 6, parent);
    model->setHorizontalHeaderLabels({"Order", "City", "Product", "Quantity", "Price", "Note"});
    quint32 seed = 12345;
    auto next = [&seed](quint32 range) {
        seed = seed * 1664525u + 1013904223u;
        return (seed >> 8) % range;
    };
    for (int r = 0; r < rows; ++r) {
        model->setData(model->index(r, 0), 100000 + r);
        model->setData(model->index(r, 1), QString::fromLatin1(cities[next(6)]));
        model->setData(model->index(r, 2), QString::fromLatin1(products[next(6)]));
        model->setData(model->index(r, 3), int(1 + next(500)));
        model->setData(model->index(r, 4), (50 + next(20000)) / 100.0);
        if (next(4) == 0)
            model->setData(model->index(r, 5), QStringLiteral("urgent"));
    }
    return model;
}

QToolButton *toolButton(const QString &icon, const QString &tip, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setIcon(QIcon(icon));
    button->setToolTip(tip);
    button->setAutoRaise(true);
    return button;
}

void choose(CMwFilterWidget *editor, int row, int column, const QString &text)
{
    if (auto *combo = qobject_cast<QComboBox *>(editor->cellWidget(row, column)))
        combo->setCurrentText(text);
}

QWidget *createFilterPage(GalleryLog *log)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    QStandardItemModel *model = makeOrders(page);
    auto *proxy = new CMwSortFilterProxyModel(page);
    proxy->setSourceModel(model);

    auto *bar = new QHBoxLayout;
    QToolButton *activate = toolButton(QStringLiteral(":/w32_commonres/res/filter.svg"),
        QStringLiteral("Switch filtering on or off"), page);
    activate->setCheckable(true);
    QToolButton *up = toolButton(QStringLiteral(":/w32_commonres/res/arr/item_up.svg"),
        QStringLiteral("Move the selected conditions up"), page);
    QToolButton *down = toolButton(QStringLiteral(":/w32_commonres/res/arr/item_down.svg"),
        QStringLiteral("Move the selected conditions down"), page);
    QToolButton *remove = toolButton(QStringLiteral(":/w32_commonres/res/trash.svg"),
        QStringLiteral("Remove the selected conditions"), page);
    auto *count = new QLabel(page);
    bar->addWidget(activate);
    bar->addWidget(up);
    bar->addWidget(down);
    bar->addWidget(remove);
    bar->addSpacing(12);
    bar->addWidget(count);
    bar->addStretch();
    layout->addLayout(bar);

    auto *editor = new CMwFilterWidget(page);
    editor->setRefModel(proxy);
    layout->addWidget(editor);

    auto *view = new QTableView(page);
    view->setModel(proxy);
    view->setSortingEnabled(true);
    view->sortByColumn(-1, Qt::AscendingOrder);
    view->horizontalHeader()->setStretchLastSection(true);
    // Tab goes on to the log instead of wrapping through every cell.
    view->setTabKeyNavigation(false);
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 6);
    layout->addWidget(view, 1);

    auto showCount = [count, proxy, model] {
        count->setText(QStringLiteral("%1 of %2 rows pass the filter")
                           .arg(proxy->rowCount())
                           .arg(model->rowCount()));
    };
    showCount();
    QObject::connect(activate, SIGNAL(toggled(bool)), editor, SLOT(onActivateFilter(bool)));
    QObject::connect(up, SIGNAL(clicked()), editor, SLOT(onButtonUp()));
    QObject::connect(down, SIGNAL(clicked()), editor, SLOT(onButtonDown()));
    QObject::connect(remove, SIGNAL(clicked()), editor, SLOT(onButtonRemove()));
    QObject::connect(editor, &CMwFilterWidget::filterChanged, log, [log, proxy, showCount] {
        showCount();
        QStringList conditions;
        for (const CMwSortFilterProxyModel::FilterCondition &c : proxy->filterConditions())
            conditions << QStringLiteral("%1 %2 %3 '%4'")
                              .arg(c.op, c.column, c.comparator, c.value.toString());
        log->write(QStringLiteral("filterChanged(): %1 rows; %2")
                       .arg(proxy->rowCount())
                       .arg(conditions.isEmpty() ? QStringLiteral("no conditions")
                                                 : conditions.join(QStringLiteral(", "))));
    });

    // Two conditions to start with: Quantity >= 100 AND City == "Oslo".
    editor->defineFilter();
    choose(editor, 0, 2, QStringLiteral("Quantity"));
    editor->item(0, 4)->setText(QStringLiteral("100"));
    choose(editor, 1, 2, QStringLiteral("City"));
    choose(editor, 1, 3, CMwSortFilterProxyModel::comparatorTexts().at(4));
    editor->item(1, 4)->setText(QStringLiteral("Oslo"));
    // The editor's initial widths are fixed in pixels; widen the operator and
    // comparator columns so that "AND" and the longest comparator fit this font.
    editor->resizeColumnToContents(1);
    editor->resizeColumnToContents(3);
    activate->setChecked(true);
    return page;
}

} // namespace

VEL_GALLERY_PAGE(40, "Filter", createFilterPage);
