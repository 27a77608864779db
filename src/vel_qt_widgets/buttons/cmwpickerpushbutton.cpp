#include <vel_qt_widgets/CMwPickerPushButton.h>

#include <QtGui/QPainter>
#include <QtGui/QPolygon>

class CMwPickerPushButton::Private
{
public:
    EPickerDirection m_direction = eDown;
};

CMwPickerPushButton::CMwPickerPushButton(QWidget *parent)
    : QPushButton(parent)
    , d(new Private)
{
    // Keeps the text at the left, clear of the triangle.
    setStyleSheet(QStringLiteral("Text-align:left"));
}

CMwPickerPushButton::~CMwPickerPushButton() = default;

CMwPickerPushButton::EPickerDirection CMwPickerPushButton::direction() const
{
    return d->m_direction;
}

void CMwPickerPushButton::setDirection(EPickerDirection direction)
{
    d->m_direction = direction;
    update();
}

void CMwPickerPushButton::paintEvent(QPaintEvent *event)
{
    QPushButton::paintEvent(event);

    QPainter painter(this);
    painter.save();

    const QRect r = rect();
    const int side = (r.bottom() - r.top() + 1) / 3;
    const QRect box(r.right() - 2 * side, r.top() + side + 1, side, side);
    const int w = box.width();
    const int h = box.height();
    const int x0 = box.left();
    const int x1 = box.right();
    const int y0 = box.top();
    const int y1 = box.bottom();

    // For an even size the second point lies one pixel beyond the box: that
    // keeps the triangle symmetric around its apex.
    QPoint points[3];
    switch (d->m_direction) {
    case eDown:
        points[0] = QPoint(x0, y0);
        points[1] = QPoint(x0 + (w & ~1), y0);
        points[2] = QPoint(x0 + (w >> 1), y1);
        break;
    case eUp:
        points[0] = QPoint(x0, y1);
        points[1] = QPoint(x0 + (w & ~1), y1);
        points[2] = QPoint(x0 + (w >> 1), y0);
        break;
    case eLeft:
        points[0] = QPoint(x1, y0);
        points[1] = QPoint(x1, y0 + (h & ~1));
        points[2] = QPoint(x0, y0 + (h >> 1));
        break;
    case eRight:
        points[0] = QPoint(x0, y0);
        points[1] = QPoint(x0, y0 + (h & ~1));
        points[2] = QPoint(x1, y0 + (h >> 1));
        break;
    default:
        // Unknown values keep all three points at the origin: nothing with
        // an area is drawn.
        break;
    }

    painter.setRenderHint(QPainter::Antialiasing, true);
    const QColor color = palette().color(QPalette::ButtonText);
    painter.setPen(color);
    painter.setBrush(color);
    painter.drawConvexPolygon(points, 3);
    painter.restore();
}
