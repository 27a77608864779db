// The grid's parts before the grid composite: the multi-level header on the
// grid body, the row-number header beside it, group rows and alternating rows.
#include "gallerypage.h"

#include <vel_qt_widgets/CMwGridRoles.h>
#include <vel_qt_widgets/CMwGridTreeView.h>
#include <vel_qt_widgets/CMwHierarchicalHeaderView.h>
#include <vel_qt_widgets/CMwVHeaderView.h>

#include <QtGui/QKeyEvent>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

namespace {

// The menu key and Shift+F10 in the body open the header's column menu for
// the current column, as the composed grid does; the mouse is left alone.
class ColumnMenuKey : public QObject
{
    Q_OBJECT

public:
    ColumnMenuKey(CMwGridTreeView *body, CMwHierarchicalHeaderView *header)
        : QObject(body)
        , m_body(body)
        , m_header(header)
    {
        body->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched != m_body || event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool menuKey = (key->key() == Qt::Key_Menu && key->modifiers() == Qt::NoModifier)
            || (key->key() == Qt::Key_F10 && key->modifiers() == Qt::ShiftModifier);
        if (!menuKey)
            return QObject::eventFilter(watched, event);
        int section = m_body->currentIndex().isValid() ? m_body->currentIndex().column() : -1;
        for (int visual = 0;
             (section < 0 || m_header->isSectionHidden(section)) && visual < m_header->count();
             ++visual)
            section = m_header->logicalIndex(visual);
        if (section >= 0 && !m_header->isSectionHidden(section))
            m_header->showColumnMenu(section);
        return true;
    }

private:
    CMwGridTreeView *m_body;
    CMwHierarchicalHeaderView *m_header;
};

QStandardItem *cell(const QString &caption, bool rotated = false, int minimumWidth = 0)
{
    auto *item = new QStandardItem(caption);
    if (rotated)
        item->setData(true, Qt::UserRole);
    // Columns are sized by their leaves only: a leaf may ask for room for
    // a wide parent caption.
    if (minimumWidth > 0)
        item->setData(QSize(minimumWidth, 0), Qt::SizeHintRole);
    return item;
}

QStandardItem *parentCell(const QString &caption, const QList<QStandardItem *> &children)
{
    QStandardItem *item = cell(caption);
    for (int i = 0; i < children.size(); ++i)
        item->setChild(0, i, children.at(i));
    return item;
}

// Sample | Measurements (Temperature: Min, Max | Pressure, rotated) | Note
QStandardItemModel *createHeaderModel(QObject *parent)
{
    auto *model = new QStandardItemModel(parent);
    model->setItem(0, 0, parentCell(QStringLiteral("Sample"), {cell("Id"), cell("Name")}));
    model->setItem(0, 1,
        parentCell(QStringLiteral("Measurements"),
            {parentCell(QStringLiteral("Temperature °C"),
                 {cell("Min", false, 72), cell("Max", false, 72)}),
                cell(QStringLiteral("Pressure kPa"), true)}));
    model->setItem(0, 2, cell(QStringLiteral("Note")));
    return model;
}

// Two batches as group rows, their samples below them; the samples are
// numbered through, the group rows carry no number.
QStandardItemModel *createItemModel(QObject *parent)
{
    auto *model = new QStandardItemModel(0, 6, parent);
    const QStringList names = {"Basalt", "Granite", "Marble", "Slate", "Quartz", "Shale", "Gneiss"};
    int number = 0;
    int visible = 0;
    for (int batch = 0; batch < 2; ++batch) {
        QList<QStandardItem *> group;
        for (int c = 0; c < 6; ++c) {
            auto *item = new QStandardItem(
                c == 0 ? QStringLiteral("Batch %1").arg(QChar('A' + batch)) : QString());
            item->setData(true, BranchParentRole);
            group << item;
        }
        model->appendRow(group);
        ++visible;
        for (int s = 0; s < (batch == 0 ? 4 : 3); ++s, ++number, ++visible) {
            QList<QStandardItem *> row;
            row << new QStandardItem(QStringLiteral("S-%1").arg(100 + number))
                << new QStandardItem(names.at(number % names.size()))
                << new QStandardItem(QString::number(12.5 + number * 1.5, 'f', 1))
                << new QStandardItem(QString::number(18.0 + number * 2.25, 'f', 2))
                << new QStandardItem(QString::number(101 + number * 3))
                << new QStandardItem(number % 3 == 0 ? QStringLiteral("recheck") : QString());
            for (QStandardItem *item : row)
                item->setData(number, RowNumberRole);
            group.first()->appendRow(row);
        }
    }
    model->setHeaderData(0, Qt::Vertical, visible, VisibleRowCountRole);
    return model;
}

QWidget *createGridPage(GalleryLog *log)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(new QLabel(QStringLiteral("CMwHierarchicalHeaderView over CMwGridTreeView "
                                                "(CMwGridDelegate), CMwVHeaderView on the left. "
                                                "Right-click the header for its menu.")));

    auto *grid = new QGridLayout;
    grid->setSpacing(0);
    layout->addLayout(grid, 1);

    auto *body = new CMwGridTreeView;
    body->setItemDelegate(new CMwGridDelegate(body));
    body->setFrameShape(QFrame::NoFrame);
    body->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    auto *header = new CMwHierarchicalHeaderView(Qt::Horizontal, body);
    header->setHighlightSections(true);
    body->setHeader(header);
    new ColumnMenuKey(body, header);
    QStandardItemModel *items = createItemModel(body);
    body->setModel(items);
    header->setHeaderModel(createHeaderModel(header));
    body->expandAll();
    header->resizeSections(QHeaderView::ResizeToContents);

    auto *rows = new CMwVHeaderView(Qt::Vertical);
    rows->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    rows->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rows->setDefaultAlignment(Qt::AlignRight);
    rows->setMaximumWidth(50);
    rows->setTreeView(body);
    rows->setModel(items);
    rows->setDefaultSectionSize(body->sizeHintForRow(0));
    QObject::connect(
        body->verticalScrollBar(), SIGNAL(valueChanged(int)), rows, SLOT(setOffset(int)));

    auto *fit = new QPushButton(QStringLiteral("↔"));
    fit->setToolTip(QStringLiteral("Resize the columns to their contents"));
    fit->setMaximumWidth(50);
    fit->setFixedHeight(header->sizeHint().height());
    QObject::connect(fit, &QPushButton::clicked, header,
        [header]() { header->resizeSections(QHeaderView::ResizeToContents); });

    grid->addWidget(fit, 0, 0);
    grid->addWidget(rows, 1, 0);
    grid->addWidget(body, 0, 1, 2, 1);
    grid->setRowStretch(1, 1);

    QObject::connect(
        header, &CMwHierarchicalHeaderView::showColumn, log, [log](mw_int32 column, bool show) {
            log->write(
                QStringLiteral("showColumn(%1, %2)").arg(column).arg(show ? "true" : "false"));
        });
    QObject::connect(header, &CMwHierarchicalHeaderView::groupByColumn, log,
        [log](mw_int32 column) { log->write(QStringLiteral("groupByColumn(%1)").arg(column)); });
    return page;
}

} // namespace

VEL_GALLERY_PAGE(30, "Grid parts", createGridPage);

#include "page_grid.moc"
