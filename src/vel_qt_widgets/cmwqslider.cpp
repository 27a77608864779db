#include "cmwqslider_p.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>

#include <climits>

namespace {

// The tick list is a property, so QObject::property()/setProperty() and
// Designer's form storage need the type by every name it is spelt with, and
// stream operators to save it. Registered once, when the application starts.
void registerTickItemTypes()
{
    qRegisterMetaType<CMwQSlider::SMwTickItem>("SMwTickItem");
    qRegisterMetaType<CMwQSlider::SMwTickItem>("CMwQSlider::SMwTickItem");
    qRegisterMetaType<CMwQSlider::TMwTickItemList>("TMwTickItemList");
    qRegisterMetaType<CMwQSlider::TMwTickItemList>("CMwQSlider::TMwTickItemList");
    qRegisterMetaTypeStreamOperators<CMwQSlider::SMwTickItem>("CMwQSlider::SMwTickItem");
    qRegisterMetaTypeStreamOperators<CMwQSlider::TMwTickItemList>("CMwQSlider::TMwTickItemList");
}

constexpr int sideAbove = QSlider::TicksAbove; // also TicksLeft
constexpr int sideBelow = QSlider::TicksBelow; // also TicksRight
constexpr int sideMask = sideAbove | sideBelow;

} // namespace

Q_COREAPP_STARTUP_FUNCTION(registerTickItemTypes)

QDataStream &operator<<(QDataStream &out, const CMwQSlider::SMwTickItem &item)
{
    return out << qint32(item.value) << qint32(item.tickPosition) << item.text;
}

QDataStream &operator>>(QDataStream &in, CMwQSlider::SMwTickItem &item)
{
    qint32 value = 0;
    qint32 position = 0;
    QString text;
    in >> value >> position >> text;
    item.value = value;
    item.tickPosition = QSlider::TickPosition(position & sideMask);
    item.text = text;
    return in;
}

CMwQSliderPrivate::~CMwQSliderPrivate() = default;

namespace {

// Geometry that both tick painters share, taken from the style.
struct TickGeometry
{
    TickGeometry(const QStyleOptionSlider &opt, const QWidget *widget)
    {
        const QStyle *style = widget->style();
        half = style->pixelMetric(QStyle::PM_SliderLength, &opt, widget) / 2;
        available = style->pixelMetric(QStyle::PM_SliderSpaceAvailable, &opt, widget);
        // The uneven adjustment is intended: the marks start on the groove's
        // outline, which the styles draw one pixel inside the rectangle.
        groove = style->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderGroove, widget)
                     .adjusted(-2, -2, -1, -1);
    }

    int position(const QStyleOptionSlider &opt, int value) const
    {
        return QStyle::sliderPositionFromValue(opt.minimum, opt.maximum, value, available, false)
            + half;
    }

    int half = 0;
    int available = 0;
    QRect groove;
};

void drawMark(QPainter *painter, Qt::Orientation orientation, const QRect &groove, int pos, int sides)
{
    if (orientation == Qt::Horizontal) {
        // The "above" mark runs downward from the groove's top edge while the
        // others run outward; the asymmetry is intended.
        if (sides & sideAbove)
            painter->drawLine(pos, groove.top(), pos, groove.top() + 3);
        if (sides & sideBelow)
            painter->drawLine(pos, groove.bottom(), pos, groove.bottom() + 3);
    } else {
        if (sides & sideAbove)
            painter->drawLine(groove.left(), pos, groove.left() - 3, pos);
        if (sides & sideBelow)
            painter->drawLine(groove.right(), pos, groove.right() + 3, pos);
    }
}

int regularInterval(const QStyleOptionSlider &opt, int available)
{
    int interval = opt.tickInterval;
    if (interval < 1) {
        interval = opt.singleStep;
        const int distance =
            QStyle::sliderPositionFromValue(opt.minimum, opt.maximum, interval, available)
            - QStyle::sliderPositionFromValue(opt.minimum, opt.maximum, 0, available);
        if (distance < 3)
            interval = opt.pageStep;
    }
    return interval < 1 ? 1 : interval;
}

} // namespace

void CMwQSliderPrivate::drawTicks(QPainter *painter, const QStyleOptionSlider &option) const
{
    drawTickMarks(painter, option);
    drawTickLabels(painter, option);
}

void CMwQSliderPrivate::drawTickMarks(QPainter *painter, const QStyleOptionSlider &opt) const
{
    Q_Q(const CMwQSlider);
    const TickGeometry geometry(opt, q);

    painter->save();
    painter->translate(opt.rect.x(), opt.rect.y());
    painter->setPen(opt.palette.windowText().color());

    if (opt.tickPosition & sideMask) {
        // Regular marks stand at minimum + k * interval up to maximum + 1,
        // which is drawn at the maximum (for an interval of 1 it is left
        // out). A step whose addition would overflow ends the run.
        const qint64 interval = regularInterval(opt, geometry.available);
        const qint64 lastValue = qMin<qint64>(qint64(opt.maximum) + (interval == 1 ? 0 : 1), INT_MAX);
        const qint64 lastStep = lastValue < opt.minimum ? -1 : (lastValue - opt.minimum) / interval;
        const auto positionOfStep = [&](qint64 k) {
            return geometry.position(opt, int(qMin<qint64>(opt.minimum + k * interval, opt.maximum)));
        };
        // Marks that land on the same pixel are drawn once, and the next step
        // on a new pixel is found by bisection, so that a huge range with a
        // small interval costs one mark per pixel instead of one per step.
        // Bisection needs positions that grow with the value; Qt 5.15's
        // sliderPositionFromValue() wraps for ranges wider than INT_MAX and
        // puts every value on the first pixels of the track (under the
        // handle), where this may skip a pixel a step-by-step walk would hit.
        qint64 k = 0;
        while (k <= lastStep) {
            const int pos = positionOfStep(k);
            drawMark(painter, opt.orientation, geometry.groove, pos, opt.tickPosition);
            qint64 lo = k + 1;
            qint64 hi = lastStep + 1;
            while (lo < hi) {
                const qint64 mid = lo + (hi - lo) / 2;
                if (positionOfStep(mid) > pos)
                    hi = mid;
                else
                    lo = mid + 1;
            }
            k = lo;
        }
    }

    for (const CMwQSlider::SMwTickItem &item : tickItems) {
        if (!(item.tickPosition & sideMask) || item.value < opt.minimum || item.value > opt.maximum)
            continue;
        drawMark(painter, opt.orientation, geometry.groove, geometry.position(opt, item.value),
                 item.tickPosition);
    }

    painter->restore();
}

void CMwQSliderPrivate::drawTickLabels(QPainter *painter, const QStyleOptionSlider &opt) const
{
    // Vertical sliders draw no labels, deliberately: there is no room beside
    // a narrow groove for text that would have to be centred on the mark.
    if (opt.orientation != Qt::Horizontal)
        return;

    Q_Q(const CMwQSlider);
    const TickGeometry geometry(opt, q);

    painter->save();
    painter->translate(opt.rect.x(), opt.rect.y());
    const QFontMetrics fm(painter->font());
    // The label rectangle is the text's tight ink box, while the text is laid
    // out from the rectangle's corner by its advance: the last glyph can end
    // past the box (by more at larger font sizes). Clipping there would cut
    // it, wrapping there would drop every word after the first, so labels
    // are neither clipped nor wrapped; the rectangle only places them.
    const int labelFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip;

    for (const CMwQSlider::SMwTickItem &item : tickItems) {
        if (!(item.tickPosition & sideMask) || item.value < opt.minimum || item.value > opt.maximum)
            continue;
        const int p = QStyle::sliderPositionFromValue(opt.minimum, opt.maximum, item.value,
                                                      geometry.available, false);
        QRect r = fm.boundingRect(item.text);
        r.moveCenter(QPoint(geometry.half + p, 0));
        // Shift (never clip) a label that would stick out; the right end wins.
        if (r.left() < geometry.half)
            r.moveLeft(geometry.half);
        if (r.right() > geometry.half + geometry.available)
            r.moveRight(geometry.half + geometry.available);
        if (item.tickPosition & sideAbove) {
            r.moveBottom(geometry.groove.top() - 1);
            painter->drawText(QRectF(r), labelFlags, item.text);
        }
        if (item.tickPosition & sideBelow) {
            r.moveTop(geometry.groove.bottom() + 5);
            painter->drawText(QRectF(r), labelFlags, item.text);
        }
    }

    painter->restore();
}

CMwQSlider::CMwQSlider(QWidget *parent)
    : CMwQSlider(new CMwQSliderPrivate, parent)
{
}

CMwQSlider::CMwQSlider(Qt::Orientation orientation, QWidget *parent)
    : CMwQSlider(new CMwQSliderPrivate, orientation, parent)
{
}

CMwQSlider::CMwQSlider(CMwQSliderPrivate *d, QWidget *parent)
    : QSlider(parent)
    , d_vel(d)
{
    d->q_ptr = this;
    d->tickItems.clear();
}

CMwQSlider::CMwQSlider(CMwQSliderPrivate *d, Qt::Orientation orientation, QWidget *parent)
    : QSlider(orientation, parent)
    , d_vel(d)
{
    d->q_ptr = this;
    d->tickItems.clear();
}

CMwQSlider::~CMwQSlider() = default;

TMwTickItemList CMwQSlider::tickItemList() const
{
    Q_D(const CMwQSlider);
    return d->tickItems;
}

void CMwQSlider::setTickItemList(const TMwTickItemList &list)
{
    Q_D(CMwQSlider);
    d->tickItems = list;
    update();
    updateGeometry();
}

QSize CMwQSlider::sizeHint() const
{
    Q_D(const CMwQSlider);
    ensurePolished();
    QStyleOptionSlider opt;
    initStyleOption(&opt);
    int thick = style()->pixelMetric(QStyle::PM_SliderThickness, &opt, this);

    bool marks = opt.tickPosition & sideMask;
    bool labels = false;
    for (const SMwTickItem &item : d->tickItems) {
        if (!(item.tickPosition & sideMask))
            continue;
        marks = true;
        if (!item.text.isEmpty()) {
            labels = true;
            break;
        }
    }
    if (marks)
        thick += 6;
    if (labels)
        thick += 2 * fontMetrics().height();

    const int length = 84;
    const QSize size = orientation() == Qt::Horizontal ? QSize(length, thick) : QSize(thick, length);
    return style()->sizeFromContents(QStyle::CT_Slider, &opt, size, this)
        .expandedTo(QApplication::globalStrut());
}

QSize CMwQSlider::minimumSizeHint() const
{
    return QSlider::minimumSizeHint();
}

void CMwQSlider::mouseDoubleClickEvent(QMouseEvent *e)
{
    Q_EMIT SignalDoubleClick();
    QWidget::mouseDoubleClickEvent(e);
}

void CMwQSlider::paintEvent(QPaintEvent *)
{
    Q_D(CMwQSlider);
    QPainter painter(this);
    QStyleOptionSlider opt;
    initStyleOption(&opt);

    // All marks are ours and lie under the groove and the handle; the style is
    // never asked for SC_SliderTickmarks.
    d->drawTicks(&painter, opt);

    opt.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
    if (isSliderDown()) {
        // A pressed handle looks pressed, as it does on a plain QSlider.
        opt.activeSubControls = QStyle::SC_SliderHandle;
        opt.state |= QStyle::State_Sunken;
    }
    style()->drawComplexControl(QStyle::CC_Slider, &opt, &painter, this);
}
