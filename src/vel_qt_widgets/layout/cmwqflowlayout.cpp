#include <vel_qt_widgets/FlowLayout.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <limits>

namespace {

// Geometry is accumulated in 64 bits so that absurd hints, margins or
// spacings saturate instead of overflowing.
int clampToInt(qint64 value)
{
    return int(
        qBound(qint64(std::numeric_limits<int>::min()), value, qint64(std::numeric_limits<int>::max())));
}

// Coordinates and sizes handed to QRect stay within half the int range, so
// that QRect's own right = x + width - 1 cannot overflow either.
int clampToRect(qint64 value)
{
    constexpr qint64 limit = std::numeric_limits<int>::max() / 2;
    return int(qBound<qint64>(-limit, value, limit));
}

} // namespace

CMwQFlowLayout::CMwQFlowLayout(QWidget *parent, int margin, int hSpacing, int vSpacing)
    : QLayout(parent)
    , m_hSpace(hSpacing)
    , m_vSpace(vSpacing)
    , m_sameWidgetsSize(false)
    , m_fixedColumnCount(-1)
{
    setContentsMargins(margin, margin, margin, margin);
}

CMwQFlowLayout::CMwQFlowLayout(int margin, int hSpacing, int vSpacing)
    : QLayout()
    , m_hSpace(hSpacing)
    , m_vSpace(vSpacing)
    , m_sameWidgetsSize(false)
    , m_fixedColumnCount(-1)
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
    m_itemList.append(item);
}

int CMwQFlowLayout::count() const { return m_itemList.size(); }

QLayoutItem *CMwQFlowLayout::itemAt(int index) const
{
    if (index < 0 || index >= m_itemList.size())
        return nullptr;
    return m_itemList.at(index);
}

QLayoutItem *CMwQFlowLayout::takeAt(int index)
{
    if (index < 0 || index >= m_itemList.size())
        return nullptr;
    return m_itemList.takeAt(index);
}

Qt::Orientations CMwQFlowLayout::expandingDirections() const { return Qt::Orientations(); }

bool CMwQFlowLayout::hasHeightForWidth() const { return true; }

int CMwQFlowLayout::heightForWidth(int width) const
{
    return doLayout(QRect(0, 0, width, 0), true);
}

QSize CMwQFlowLayout::minimumSize() const
{
    // Starts from the invalid (-1, -1) size on purpose: with nothing shown
    // the result is (2 * margin - 1, 2 * margin - 1), which callers rely on.
    QSize size;
    for (const QLayoutItem *item : m_itemList) {
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
    if (m_hSpace >= 0)
        return m_hSpace;
    return smartSpacing(QStyle::PM_LayoutHorizontalSpacing);
}

int CMwQFlowLayout::verticalSpacing() const
{
    if (m_vSpace >= 0)
        return m_vSpace;
    return smartSpacing(QStyle::PM_LayoutVerticalSpacing);
}

bool CMwQFlowLayout::sameWidgetsSize() const { return m_sameWidgetsSize; }

void CMwQFlowLayout::setSameWidgetsSize(bool same) { m_sameWidgetsSize = same; }

int CMwQFlowLayout::fixedColumnCount() const { return m_fixedColumnCount; }

void CMwQFlowLayout::setFixedColumnCount(int columns) { m_fixedColumnCount = columns; }

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
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    getContentsMargins(&left, &top, &right, &bottom);
    // The effective rectangle: rect shrunk by the margins (inclusive edges).
    const qint64 effLeft = qint64(rect.x()) + left;
    const qint64 effRight = qint64(rect.right()) - right;
    qint64 x = effLeft;
    qint64 y = qint64(rect.y()) + top;
    qint64 lineHeight = 0;

    int nonEmpty = 0;
    for (const QLayoutItem *item : m_itemList) {
        if (!item->isEmpty())
            ++nonEmpty;
    }

    const int hSpacing = horizontalSpacing();
    const int vSpacing = verticalSpacing();
    const bool stretch = m_sameWidgetsSize && nonEmpty >= 1 && hSpacing >= 0;

    qint64 commonWidth = -1;
    qint64 commonHeight = -1;
    qint64 extra = 0;
    if (m_sameWidgetsSize) {
        for (const QLayoutItem *item : m_itemList) {
            if (item->isEmpty())
                continue;
            const QSize hint = item->sizeHint();
            if (!(commonWidth > hint.width()))
                commonWidth = hint.width();
            if (!(commonHeight > hint.height()))
                commonHeight = hint.height();
        }
    }

    if (stretch) {
        const qint64 s = hSpacing;
        qint64 columns = m_fixedColumnCount;
        if (columns < 1 && commonWidth + s > 0)
            columns = (effRight - effLeft + 1 + s) / (commonWidth + s);
        const qint64 n = std::min<qint64>(columns, nonEmpty);
        if (n > 0)
            commonWidth = (effRight - effLeft - (n - 1) * s) / n;
        // Also for n <= 0, on purpose: a lone over-wide item then still gets
        // the extra pixels, one line per item. A full row covers
        // effective width - 1 pixels, exactly what the wrapping test below
        // lets through.
        extra = (effRight - effLeft) - (n - 1) * s - commonWidth * n;
    }

    qint64 remaining = extra;
    for (QLayoutItem *item : m_itemList) {
        if (item->isEmpty())
            continue;

        qint64 spaceX = hSpacing;
        qint64 spaceY = vSpacing;
        if (spaceX == -1 || spaceY == -1) {
            const QStyle *style = spacingStyle(item);
            if (style && spaceX == -1)
                spaceX = style->layoutSpacing(
                    QSizePolicy::PushButton, QSizePolicy::PushButton, Qt::Horizontal);
            if (style && spaceY == -1)
                spaceY = style->layoutSpacing(
                    QSizePolicy::PushButton, QSizePolicy::PushButton, Qt::Vertical);
        }

        qint64 itemWidth;
        qint64 itemHeight;
        if (m_sameWidgetsSize) {
            itemWidth = commonWidth;
            itemHeight = commonHeight;
        } else {
            const QSize hint = item->sizeHint();
            itemWidth = hint.width();
            itemHeight = hint.height();
        }
        qint64 width = itemWidth + (remaining > 0 ? 1 : 0);
        --remaining;

        // Compares the exclusive right end with the inclusive right edge.
        // The first item of a line never wraps, and neither does anything
        // after a line of zero-height items.
        if (x + width > effRight && lineHeight > 0) {
            y = y + lineHeight + spaceY;
            x = effLeft;
            lineHeight = 0;
            width = itemWidth + (extra > 0 ? 1 : 0);
            remaining = extra - 1;
        }

        if (!testOnly)
            item->setGeometry(
                QRect(clampToRect(x), clampToRect(y), clampToRect(width), clampToRect(itemHeight)));

        lineHeight = std::max(lineHeight, itemHeight);
        x = x + width + spaceX;
    }

    return clampToInt(y + lineHeight - qint64(rect.y()) + bottom);
}
