#include <vel_qt_widgets/CMwGridTreeView.h>

#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>

CMwGridTreeView::CMwGridTreeView(QWidget *parent)
    : QTreeView(parent)
{
}

CMwGridTreeView::~CMwGridTreeView() = default;

void CMwGridTreeView::paintEvent(QPaintEvent *event)
{
    QAbstractItemDelegate *delegate = itemDelegate();
    if (!model() || model()->rowCount() != 0 || !delegate) {
        QTreeView::paintEvent(event);
        return;
    }
    // An empty model still shows one empty row, so that the grid does not
    // look broken and the columns keep their cells.
    QPainter painter(viewport());
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QStyleOptionViewItem option;
    initViewItemOption(&option);
#else
    QStyleOptionViewItem option = viewOptions();
#endif
    const QFontMetrics metrics = fontMetrics();
    const int bottom = metrics.descent() + metrics.lineSpacing();
    const int columns = model()->columnCount();
    int x = 0;
    for (int c = 0; c < columns; ++c) {
        const int w = columnWidth(c);
        option.rect = QRect(QPoint(x, 0), QPoint(x + w - 1, bottom));
        delegate->paint(&painter, option, QModelIndex());
        x += w;
    }
}
