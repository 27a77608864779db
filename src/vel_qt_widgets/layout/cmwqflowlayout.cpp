#include <vel_qt_widgets/CMwQFlowLayout.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <limits>

namespace {

// Geometry is accumulated in 64 bits so that absurd hints, margins or
// spacings saturate instead of overflowing.
int clampToInt(qint64 value)
{
    return int(qBound(
        qint64(std::numeric_limits<int>::min()), value, qint64(std::numeric_limits<int>::max())));
}

// Coordinates and sizes handed to QRect stay within half the int range, so
// that QRect's own right = x + width - 1 cannot overflow either.
int clampToRect(qint64 value)
{
    constexpr qint64 limit = std::numeric_limits<int>::max() / 2;
    return int(qBound<qint64>(-limit, value, limit));
}

// The rectangle that the items fill: the layout's rectangle shrunk by the
// contents margins, with inclusive edges as QRect has them.
struct Area
{
    qint64 left = 0;
    qint64 top = 0;
    qint64 right = 0;
    qint64 bottomMargin = 0; // added back to the height the items need
};

Area effectiveArea(const QLayout *layout, const QRect &rect)
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    layout->getContentsMargins(&left, &top, &right, &bottom);
    Area area;
    area.left = qint64(rect.x()) + left;
    area.top = qint64(rect.y()) + top;
    area.right = qint64(rect.right()) - right;
    area.bottomMargin = bottom;
    return area;
}

// The one size every item gets in same-widgets-size mode, and the pixels a
// full line has left over, handed out one each to its first items.
struct CommonSize
{
    qint64 width = -1;
    qint64 height = -1;
    qint64 extra = 0;
};

// Fits the columns into the area's width (fixedColumns of them when 1 or
// more, else as many as the common width allows) and widens or squeezes the
// common width so that a full line fills the width.
void stretchToColumns(
    CommonSize &common, const Area &area, qint64 spacing, qint64 fixedColumns, qint64 shown)
{
    qint64 columns = fixedColumns;
    if (columns < 1 && common.width + spacing > 0)
        columns = (area.right - area.left + 1 + spacing) / (common.width + spacing);
    const qint64 n = std::min<qint64>(columns, shown);
    if (n > 0)
        common.width = (area.right - area.left - (n - 1) * spacing) / n;
    // Also for n <= 0, and a full row one pixel short of the effective
    // width: both on purpose (docs/compatibility.md).
    common.extra = (area.right - area.left) - (n - 1) * spacing - common.width * n;
}

// Between items on a line (x) and between lines (y).
struct Spacing
{
    qint64 x = 0;
    qint64 y = 0;
};

} // namespace

class CMwQFlowLayout::Private
{
public:
    Private(int hSpacing, int vSpacing)
        : m_hSpace(hSpacing)
        , m_vSpace(vSpacing)
    {
    }

    QList<QLayoutItem *> m_itemList; // owned
    int m_hSpace;
    int m_vSpace;
    bool m_sameWidgetsSize = false;
    int m_fixedColumnCount = -1;

    // The items that take room: empty ones (hidden widgets, spacers) are
    // skipped by every step of a layout pass.
    int shownCount() const;
    // The largest size hint width and height of the shown items.
    CommonSize largestHint() const;
    // Places the shown items line by line from the area's top left corner
    // (only computes when testOnly) and returns the y just below the last
    // line.
    qint64 placeItems(const CMwQFlowLayout *q, const Area &area, const CommonSize &common,
        const Spacing &spacing, bool testOnly) const;
    // The spacing after item: a part that is exactly -1 comes from the
    // item's style, as between two push buttons.
    static Spacing itemSpacing(const CMwQFlowLayout *q, QLayoutItem *item, const Spacing &spacing);
};

int CMwQFlowLayout::Private::shownCount() const
{
    int shown = 0;
    for (const QLayoutItem *item : m_itemList) {
        if (!item->isEmpty())
            ++shown;
    }
    return shown;
}

CommonSize CMwQFlowLayout::Private::largestHint() const
{
    CommonSize common;
    for (const QLayoutItem *item : m_itemList) {
        if (item->isEmpty())
            continue;
        const QSize hint = item->sizeHint();
        if (!(common.width > hint.width()))
            common.width = hint.width();
        if (!(common.height > hint.height()))
            common.height = hint.height();
    }
    return common;
}

Spacing CMwQFlowLayout::Private::itemSpacing(
    const CMwQFlowLayout *q, QLayoutItem *item, const Spacing &spacing)
{
    Spacing result = spacing;
    if (result.x != -1 && result.y != -1)
        return result;
    const QStyle *style = q->spacingStyle(item);
    if (style && result.x == -1)
        result.x = style->layoutSpacing(
            QSizePolicy::PushButton, QSizePolicy::PushButton, Qt::Horizontal);
    if (style && result.y == -1)
        result.y
            = style->layoutSpacing(QSizePolicy::PushButton, QSizePolicy::PushButton, Qt::Vertical);
    return result;
}

qint64 CMwQFlowLayout::Private::placeItems(const CMwQFlowLayout *q, const Area &area,
    const CommonSize &common, const Spacing &spacing, bool testOnly) const
{
    qint64 x = area.left;
    qint64 y = area.top;
    qint64 lineHeight = 0;
    qint64 remaining = common.extra;
    for (QLayoutItem *item : m_itemList) {
        if (item->isEmpty())
            continue;

        const Spacing space = itemSpacing(q, item, spacing);
        qint64 itemWidth = common.width;
        qint64 itemHeight = common.height;
        if (!m_sameWidgetsSize) {
            const QSize hint = item->sizeHint();
            itemWidth = hint.width();
            itemHeight = hint.height();
        }
        qint64 width = itemWidth + (remaining > 0 ? 1 : 0);
        --remaining;

        // Compares the exclusive right end with the inclusive right edge.
        // The first item of a line never wraps, and neither does anything
        // after a line of zero-height items.
        if (x + width > area.right && lineHeight > 0) {
            y = y + lineHeight + space.y;
            x = area.left;
            lineHeight = 0;
            width = itemWidth + (common.extra > 0 ? 1 : 0);
            remaining = common.extra - 1;
        }

        if (!testOnly)
            item->setGeometry(
                QRect(clampToRect(x), clampToRect(y), clampToRect(width), clampToRect(itemHeight)));

        lineHeight = std::max(lineHeight, itemHeight);
        x = x + width + space.x;
    }
    return y + lineHeight;
}

CMwQFlowLayout::CMwQFlowLayout(QWidget *parent, int margin, int hSpacing, int vSpacing)
    : QLayout(parent)
    , d(new Private(hSpacing, vSpacing))
{
    setContentsMargins(margin, margin, margin, margin);
}

CMwQFlowLayout::CMwQFlowLayout(int margin, int hSpacing, int vSpacing)
    : QLayout()
    , d(new Private(hSpacing, vSpacing))
{
    setContentsMargins(margin, margin, margin, margin);
}

CMwQFlowLayout::~CMwQFlowLayout()
{
    // Deleting a QWidgetItem deletes only the wrapper; the widget stays with
    // its parent widget.
    while (QLayoutItem *item = takeAt(0))
        delete item;
}

void CMwQFlowLayout::addItem(QLayoutItem *item)
{
    if (!item) {
        qWarning("CMwQFlowLayout::addItem: cannot add a null item");
        return;
    }
    d->m_itemList.append(item);
}

int CMwQFlowLayout::count() const { return d->m_itemList.size(); }

QLayoutItem *CMwQFlowLayout::itemAt(int index) const
{
    if (index < 0 || index >= d->m_itemList.size())
        return nullptr;
    return d->m_itemList.at(index);
}

QLayoutItem *CMwQFlowLayout::takeAt(int index)
{
    if (index < 0 || index >= d->m_itemList.size())
        return nullptr;
    return d->m_itemList.takeAt(index);
}

Qt::Orientations CMwQFlowLayout::expandingDirections() const { return Qt::Orientations(); }

bool CMwQFlowLayout::hasHeightForWidth() const { return true; }

int CMwQFlowLayout::heightForWidth(int width) const
{
    return doLayout(QRect(0, 0, width, 0), true);
}

QSize CMwQFlowLayout::minimumSize() const
{
    // Starts from the invalid (-1, -1) size on purpose (docs/compatibility.md).
    QSize size;
    for (const QLayoutItem *item : d->m_itemList) {
        if (!item->isEmpty())
            size = size.expandedTo(item->minimumSize());
    }
    // The uniform margin, -1 when the four sides differ (what the deprecated
    // QLayout::margin() returns).
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    getContentsMargins(&left, &top, &right, &bottom);
    const qint64 margin = (left == top && top == right && right == bottom) ? left : -1;
    return QSize(clampToInt(size.width() + 2 * margin), clampToInt(size.height() + 2 * margin));
}

QSize CMwQFlowLayout::sizeHint() const { return minimumSize(); }

void CMwQFlowLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    doLayout(rect, false);
}

int CMwQFlowLayout::horizontalSpacing() const
{
    if (d->m_hSpace >= 0)
        return d->m_hSpace;
    return smartSpacing(QStyle::PM_LayoutHorizontalSpacing);
}

int CMwQFlowLayout::verticalSpacing() const
{
    if (d->m_vSpace >= 0)
        return d->m_vSpace;
    return smartSpacing(QStyle::PM_LayoutVerticalSpacing);
}

bool CMwQFlowLayout::sameWidgetsSize() const { return d->m_sameWidgetsSize; }

void CMwQFlowLayout::setSameWidgetsSize(bool same) { d->m_sameWidgetsSize = same; }

int CMwQFlowLayout::fixedColumnCount() const { return d->m_fixedColumnCount; }

void CMwQFlowLayout::setFixedColumnCount(int columns) { d->m_fixedColumnCount = columns; }

int CMwQFlowLayout::smartSpacing(QStyle::PixelMetric pm) const
{
    QObject *parent = this->parent();
    if (!parent)
        return -1;
    if (parent->isWidgetType()) {
        auto *parentWidget = static_cast<QWidget *>(parent);
        return parentWidget->style()->pixelMetric(pm, nullptr, parentWidget);
    }
    // A layout's QObject parent is either its widget or its parent layout.
    return static_cast<QLayout *>(parent)->spacing();
}

const QStyle *CMwQFlowLayout::spacingStyle(QLayoutItem *item) const
{
    if (const QWidget *widget = item->widget())
        return widget->style();
    // Items without a widget (nested layouts, custom items) take the style of
    // the widget the layout lives in, else the application's; spacers never
    // get here, they are always empty.
    if (const QWidget *host = parentWidget())
        return host->style();
    return qobject_cast<QApplication *>(QCoreApplication::instance()) ? QApplication::style()
                                                                      : nullptr;
}

int CMwQFlowLayout::doLayout(const QRect &rect, bool testOnly) const
{
    const Area area = effectiveArea(this, rect);
    Spacing spacing;
    spacing.x = horizontalSpacing();
    spacing.y = verticalSpacing();

    CommonSize common;
    if (d->m_sameWidgetsSize) {
        common = d->largestHint();
        // Stretching needs a known spacing; one that is still derived leaves
        // every item at the largest hint, without extra pixels.
        const int shown = d->shownCount();
        if (shown >= 1 && spacing.x >= 0)
            stretchToColumns(common, area, spacing.x, d->m_fixedColumnCount, shown);
    }

    const qint64 bottom = d->placeItems(this, area, common, spacing, testOnly);
    return clampToInt(bottom - qint64(rect.y()) + area.bottomMargin);
}
