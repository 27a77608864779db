#include "cmwqslider_p.h"
#include "cmwqtickitemtypes_p.h"

#include "cmwglobalstrut_p.h"
#include "cmwqtcompat_p.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtCore/QStringList>
#include <QtCore/QtMath>
#include <QtGui/QFontMetrics>
#include <QtGui/QGlyphRun>
#include <QtGui/QMouseEvent>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>

#include <algorithm>
#include <limits>

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
    CMwQTickItemTypes::registerStreamable<CMwQSlider::SMwTickItem>("CMwQSlider::SMwTickItem");
    CMwQTickItemTypes::registerStreamable<CMwQSlider::TMwTickItemList>(
        "CMwQSlider::TMwTickItemList");
    // The name Qt 6 gives the list in a saved QVariant, so either Qt reads
    // what the other wrote.
    qRegisterMetaType<CMwQSlider::TMwTickItemList>("QList<CMwQSlider::SMwTickItem>");
}

constexpr int sideAbove = QSlider::TicksAbove; // also TicksLeft
constexpr int sideBelow = QSlider::TicksBelow; // also TicksRight
constexpr int sideMask = sideAbove | sideBelow;

// The geometry the slider's own tick drawing fixes (the rest comes from the
// style): marks are this long...
constexpr int tickMarkLength = 3;
// ...regular marks closer than this many pixels per single step fall back
// to the page step...
constexpr int minimumTickSpacing = 3;
// ...marks on either or both sides add this much thickness to the hint...
constexpr int tickMarksThickness = 6;
// ...labels below the groove start this far under its bottom edge (those
// above end one pixel over its top)...
constexpr int labelGapBelow = 5;
constexpr int labelGapAbove = 1;
// ...and the hinted length along the groove is this.
constexpr int sizeHintLength = 84;

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

void CMwQSliderPrivate::initStyleOption(QStyleOptionSlider *option) const
{
    Q_Q(const CMwQSlider);
    q->initStyleOption(option);
}

namespace CMwQSliderGeometry {

static int halfStep(int step) { return step > 0 ? std::max(step / 2, 1) : step; }

void fitStyleOption(QStyleOptionSlider *option)
{
    if (!isWide(option->minimum, option->maximum))
        return;
    // Division truncates toward zero on both sides of 0, which keeps the
    // order of any two values (ties aside) and the span below 2^31.
    option->minimum /= 2;
    option->maximum /= 2;
    option->sliderPosition /= 2;
    option->sliderValue /= 2;
    option->singleStep = halfStep(option->singleStep);
    option->pageStep = halfStep(option->pageStep);
    option->tickInterval = halfStep(option->tickInterval);
}

int positionFromValue(int minimum, int maximum, int value, int span, bool upsideDown)
{
    // Values outside the range and empty tracks are answered by Qt before
    // any arithmetic.
    if (!isWide(minimum, maximum) || span <= 0 || value < minimum || value > maximum)
        return QStyle::sliderPositionFromValue(minimum, maximum, value, span, upsideDown);
    return QStyle::sliderPositionFromValue(minimum / 2, maximum / 2, value / 2, span, upsideDown);
}

int valueFromPosition(int minimum, int maximum, int position, int span, bool upsideDown)
{
    if (!isWide(minimum, maximum))
        return QStyle::sliderValueFromPosition(minimum, maximum, position, span, upsideDown);
    if (span <= 0 || position <= 0)
        return upsideDown ? maximum : minimum;
    if (position >= span)
        return upsideDown ? minimum : maximum;
    // minimum + position * range / span, rounded as Qt does; in 64 bits,
    // where position * range (both below 2^32) cannot overflow.
    const quint64 range = quint64(qint64(maximum) - minimum);
    const qint64 offset
        = qint64((2 * quint64(position) * range + quint64(span)) / (2 * quint64(span)));
    return int(upsideDown ? qint64(maximum) - offset : qint64(minimum) + offset);
}

} // namespace CMwQSliderGeometry

namespace {

// Geometry that both tick painters share, taken from the style.
struct TickGeometry
{
    TickGeometry(const QStyleOptionSlider &slider, const QWidget *widget)
    {
        QStyleOptionSlider opt = slider;
        CMwQSliderGeometry::fitStyleOption(&opt);
        const QStyle *style = widget->style();
        half = style->pixelMetric(QStyle::PM_SliderLength, &opt, widget) / 2;
        available = style->pixelMetric(QStyle::PM_SliderSpaceAvailable, &opt, widget);
        // Uneven on purpose (docs/compatibility.md).
        groove = style->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderGroove, widget)
                     .adjusted(-2, -2, -1, -1);
    }

    int position(const QStyleOptionSlider &opt, int value) const
    {
        return CMwQSliderGeometry::positionFromValue(
                   opt.minimum, opt.maximum, value, available, false)
            + half;
    }

    int half = 0;
    int available = 0;
    QRect groove;
};

// The marks are gathered and drawn in one call: each line is drawn on its
// own either way, and one call costs far less than one per line.
void addMark(
    QVector<QLine> *lines, Qt::Orientation orientation, const QRect &groove, int pos, int sides)
{
    if (orientation == Qt::Horizontal) {
        // The "above" mark runs inward, on purpose (docs/compatibility.md).
        if (sides & sideAbove)
            lines->append(QLine(pos, groove.top(), pos, groove.top() + tickMarkLength));
        if (sides & sideBelow)
            lines->append(QLine(pos, groove.bottom(), pos, groove.bottom() + tickMarkLength));
    } else {
        if (sides & sideAbove)
            lines->append(QLine(groove.left(), pos, groove.left() - tickMarkLength, pos));
        if (sides & sideBelow)
            lines->append(QLine(groove.right(), pos, groove.right() + tickMarkLength, pos));
    }
}

int regularInterval(const QStyleOptionSlider &opt, int available)
{
    int interval = opt.tickInterval;
    if (interval < 1) {
        interval = opt.singleStep;
        const int distance = CMwQSliderGeometry::positionFromValue(
                                 opt.minimum, opt.maximum, interval, available, false)
            - CMwQSliderGeometry::positionFromValue(opt.minimum, opt.maximum, 0, available, false);
        if (distance < minimumTickSpacing)
            interval = opt.pageStep;
    }
    return interval < 1 ? 1 : interval;
}

} // namespace

namespace {

// The regular marks and those of the tick items, in the order they are drawn.
QVector<QLine> tickLines(const QStyleOptionSlider &opt, const TickGeometry &geometry,
    const CMwQSlider::TMwTickItemList &items)
{
    QVector<QLine> lines;
    if (opt.tickPosition & sideMask) {
        // Regular marks stand at minimum + k * interval up to maximum + 1,
        // which is drawn at the maximum (for an interval of 1 it is left
        // out). A step whose addition would overflow ends the run.
        const qint64 interval = regularInterval(opt, geometry.available);
        const qint64 lastValue = qMin<qint64>(
            qint64(opt.maximum) + (interval == 1 ? 0 : 1), std::numeric_limits<int>::max());
        const qint64 lastStep = lastValue < opt.minimum ? -1 : (lastValue - opt.minimum) / interval;
        const auto positionOfStep = [&](qint64 k) {
            return geometry.position(
                opt, int(qMin<qint64>(opt.minimum + k * interval, opt.maximum)));
        };
        // Marks that land on the same pixel are drawn once, and the next step
        // on a new pixel is found by bisection, so that a huge range with a
        // small interval costs one mark per pixel instead of one per step.
        // Bisection needs positions that grow with the value, which
        // CMwQSliderGeometry keeps true for every range.
        qint64 k = 0;
        while (k <= lastStep) {
            const int pos = positionOfStep(k);
            addMark(&lines, opt.orientation, geometry.groove, pos, opt.tickPosition);
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

    for (const CMwQSlider::SMwTickItem &item : items) {
        if (!(item.tickPosition & sideMask) || item.value < opt.minimum || item.value > opt.maximum)
            continue;
        addMark(&lines, opt.orientation, geometry.groove, geometry.position(opt, item.value),
            item.tickPosition);
    }
    return lines;
}

} // namespace

void CMwQSliderPrivate::drawTicks(QPainter *painter, const QStyleOptionSlider &option) const
{
    if (canStamp(painter) && drawTickLayer(painter, option))
        return;
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
    painter->drawLines(tickLines(opt, geometry, tickItems));
    painter->restore();
}

namespace {

// A label laid out as QPainter::drawText() lays out a text for a rectangle
// with Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, so that drawing the
// lines at the rectangle's corner gives the very pixels drawText() would.
// Its size is what drawText() checks against the rectangle.
QSharedPointer<QTextLayout> layOutText(
    QString text, const QFont &font, Qt::LayoutDirection direction, QSizeF *size)
{
    // drawText() shows a carriage return or a tab as a space and breaks
    // lines only at a line feed.
    for (QChar &c : text) {
        if (c == QLatin1Char('\r') || c == QLatin1Char('\t'))
            c = QLatin1Char(' ');
        else if (c == QLatin1Char('\n'))
            c = QChar::LineSeparator;
    }
    auto layout = QSharedPointer<QTextLayout>::create(text, font);
    QTextOption option;
    option.setTextDirection(direction);
    option.setAlignment(Qt::AlignLeft);
    layout->setTextOption(option);
    layout->setCacheEnabled(true);
    const QFontMetricsF fm(font);
    if (text.isEmpty()) {
        *size = QSizeF(0, fm.height());
        return layout;
    }
    const qreal leading = fm.leading();
    qreal height = -leading;
    qreal width = 0;
    layout->beginLayout();
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(0x01000000);
        height = qCeil(height + leading);
        line.setPosition(QPointF(0, height));
        height += line.height();
        width = qMax(width, line.naturalTextWidth());
    }
    layout->endLayout();
    *size = QSizeF(width, height);
    return layout;
}

// Of a text with length variants (separated by U+009C), drawText() shows
// the first that fits the rectangle, else the last.
QSharedPointer<QTextLayout> layOutLabel(
    const QString &text, const QFont &font, Qt::LayoutDirection direction, const QSize &room)
{
    const QStringList variants = text.split(QChar(0x9c));
    QSharedPointer<QTextLayout> layout;
    for (const QString &variant : variants) {
        QSizeF size;
        layout = layOutText(variant, font, direction, &size);
        if (size.width() <= room.width() && size.height() <= room.height())
            break;
    }
    return layout;
}

void drawLabel(
    QPainter *painter, const QTextLayout &layout, const QRect &r, Qt::LayoutDirection direction)
{
    for (int i = 0; i < layout.lineCount(); ++i) {
        const QTextLine line = layout.lineAt(i);
        // Right to left, "left" is the rectangle's right edge.
        const qreal x
            = direction == Qt::RightToLeft ? r.x() + r.width() - line.horizontalAdvance() : r.x();
        line.draw(painter, QPointF(x, r.y()));
    }
}

} // namespace

const CMwQSliderPrivate::TickLabelCache &CMwQSliderPrivate::tickLabels(
    const QPainter *painter, const QStyleOptionSlider &opt, int half, int available) const
{
    TickLabelCache &cache = tickLabelCache;
    const QFont &font = painter->font();
    const QPaintDevice *device = painter->device();
    const Qt::LayoutDirection direction = painter->layoutDirection();
    if (cache.valid && cache.items == tickItems && cache.font == font
        && cache.dpiX == device->logicalDpiX() && cache.dpiY == device->logicalDpiY()
        && cache.direction == direction && cache.minimum == opt.minimum
        && cache.maximum == opt.maximum && cache.half == half && cache.available == available) {
        return cache;
    }

    cache.items = tickItems;
    cache.font = font;
    cache.dpiX = device->logicalDpiX();
    cache.dpiY = device->logicalDpiY();
    cache.direction = direction;
    cache.minimum = opt.minimum;
    cache.maximum = opt.maximum;
    cache.half = half;
    cache.available = available;
    cache.valid = true;
    cache.labels.clear();
    cache.layer = TickLabelCache::Layer();

    const QFontMetrics fm(font);
    for (const CMwQSlider::SMwTickItem &item : tickItems) {
        if (!(item.tickPosition & sideMask) || item.value < opt.minimum || item.value > opt.maximum
            || item.text.isEmpty())
            continue;
        const int p = CMwQSliderGeometry::positionFromValue(
            opt.minimum, opt.maximum, item.value, available, false);
        QRect r = fm.boundingRect(item.text);
        r.moveCenter(QPoint(half + p, 0));
        // Shift (never clip) a label that would stick out; the right end wins.
        if (r.left() < half)
            r.moveLeft(half);
        if (r.right() > half + available)
            r.moveRight(half + available);
        cache.labels.append(
            {layOutLabel(item.text, font, direction, r.size()), r, item.tickPosition, {}});
    }
    return cache;
}

// Blending glyphs into the raster engine's 32-bit pixels and blitting an
// image over them use the same arithmetic: a glyph pixel of coverage c adds
// pen * c and keeps the rest of what was there, and so does a pixel of the
// pen drawn at coverage c on a transparent image. Blitting a label drawn
// once therefore gives the pixels of drawing it again, as long as no pixel
// is blended twice (overlapping glyphs, decorations) and the painter does
// nothing else to them: plain source-over, full opacity, a solid pen, a
// whole-pixel translation, one device pixel per pixel, and a 32-bit image
// underneath. Anything else draws the text as before.
bool CMwQSliderPrivate::canStamp(const QPainter *painter) const
{
    if (!stampLabels || painter->paintEngine()->type() != QPaintEngine::Raster
        || painter->compositionMode() != QPainter::CompositionMode_SourceOver
        || painter->opacity() != 1.0 || painter->pen().style() != Qt::SolidLine
        || painter->pen().brush().style() != Qt::SolidPattern)
        return false;
    const QFont &font = painter->font();
    if (font.underline() || font.overline() || font.strikeOut())
        return false;
    const QTransform &transform = painter->deviceTransform();
    if (transform.type() > QTransform::TxTranslate || transform.dx() != qFloor(transform.dx())
        || transform.dy() != qFloor(transform.dy()))
        return false;
    const QPaintDevice *device = painter->paintEngine()->paintDevice();
    if (!device || device->devType() != QInternal::Image)
        return false;
    const QImage *image = static_cast<const QImage *>(device);
    if (image->devicePixelRatio() != 1.0)
        return false;
    return image->format() == QImage::Format_ARGB32_Premultiplied
        || image->format() == QImage::Format_RGB32;
}

namespace {

// The smallest rectangle holding every pixel of a 32-bit image that is not
// fully transparent.
QRect inkedRect(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        const QRgb *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (line[x])
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

// Every pixel that more than one glyph of the layout touches: drawn one by
// one, a second glyph over the first blends differently from the pair
// blitted at once.
bool glyphsOverlap(
    const QTextLayout &layout, const QPointF &origin, const QSize &size, const QPainter &like)
{
    QImage total(size, QImage::Format_ARGB32_Premultiplied);
    total.fill(Qt::transparent);
    QImage single(size, QImage::Format_ARGB32_Premultiplied);
    const QList<QGlyphRun> runs = layout.glyphRuns();
    for (const QGlyphRun &run : runs) {
        const QVector<quint32> indexes = run.glyphIndexes();
        const QVector<QPointF> positions = run.positions();
        for (int i = 0; i < indexes.size(); ++i) {
            QGlyphRun glyph = run;
            glyph.setGlyphIndexes({indexes.at(i)});
            glyph.setPositions({positions.at(i)});
            single.fill(Qt::transparent);
            {
                QPainter painter(&single);
                painter.setRenderHints(like.renderHints());
                painter.setPen(Qt::black);
                painter.drawGlyphRun(origin, glyph);
            }
            for (int y = 0; y < size.height(); ++y) {
                const QRgb *from = reinterpret_cast<const QRgb *>(single.constScanLine(y));
                QRgb *to = reinterpret_cast<QRgb *>(total.scanLine(y));
                for (int x = 0; x < size.width(); ++x) {
                    if (!from[x])
                        continue;
                    if (to[x])
                        return true;
                    to[x] = from[x];
                }
            }
        }
    }
    return false;
}

} // namespace

const CMwQSliderPrivate::TickLabelCache::Label::Stamp *CMwQSliderPrivate::stampFor(
    const QPainter *painter, TickLabelCache::Label &label, const QRect &r,
    Qt::LayoutDirection direction, QPoint *corner) const
{
    const QTextLayout &layout = *label.layout;
    TickLabelCache::Label::Stamp &stamp = label.stamp;
    if (layout.lineCount() == 0) {
        // Nothing to draw: an empty, usable stamp.
        stamp = TickLabelCache::Label::Stamp();
        stamp.usable = true;
        return &stamp;
    }
    // Where drawLabel() puts the text; the lines keep their places in it.
    const qreal advance = layout.lineAt(0).horizontalAdvance();
    const QPointF origin(
        direction == Qt::RightToLeft ? r.x() + r.width() - advance : qreal(r.x()), r.y());
    for (int i = 1; i < layout.lineCount(); ++i) {
        // Lines of different advances move apart right to left.
        if (direction == Qt::RightToLeft && layout.lineAt(i).horizontalAdvance() != advance)
            return nullptr;
    }
    const QPoint whole(qFloor(origin.x()), qFloor(origin.y()));
    const QPointF fraction = origin - QPointF(whole);
    const QRgba64 pen = painter->pen().color().rgba64();
    const int hints = int(painter->renderHints());

    if (stamp.hints != hints || stamp.pen != pen || stamp.fraction != fraction) {
        stamp = TickLabelCache::Label::Stamp();
        stamp.hints = hints;
        stamp.pen = pen;
        stamp.fraction = fraction;
        // Room for glyphs reaching out of their advances on every side.
        const QFontMetrics fm(layout.font());
        const int pad = fm.height() + fm.maxWidth();
        const QRectF bounds = layout.boundingRect();
        const QSize size(qCeil(bounds.right()) + 2 * pad, qCeil(bounds.bottom()) + 2 * pad);
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        const QPointF at = QPointF(pad, pad) + fraction;
        {
            QPainter stampPainter(&image);
            stampPainter.setRenderHints(painter->renderHints());
            stampPainter.setFont(painter->font());
            stampPainter.setPen(painter->pen());
            for (int i = 0; i < layout.lineCount(); ++i)
                layout.lineAt(i).draw(&stampPainter, at);
        }
        // Only the inked part is kept.
        const QRect ink = inkedRect(image);
        stamp.usable = !glyphsOverlap(layout, at, size, *painter);
        if (stamp.usable && !ink.isEmpty()) {
            stamp.image = image.copy(ink);
            stamp.offset = ink.topLeft() - QPoint(pad, pad);
        }
    }
    if (!stamp.usable)
        return nullptr;
    *corner = whole + stamp.offset;
    return &stamp;
}

void CMwQSliderPrivate::drawStamped(QPainter *painter, TickLabelCache::Label &label, const QRect &r,
    Qt::LayoutDirection direction) const
{
    QPoint corner;
    const TickLabelCache::Label::Stamp *stamp = stampFor(painter, label, r, direction, &corner);
    if (!stamp)
        drawLabel(painter, *label.layout, r, direction);
    else if (!stamp->image.isNull())
        painter->drawImage(corner, stamp->image);
}

void CMwQSliderPrivate::buildTickLayer(const QPainter *painter, const QStyleOptionSlider &opt,
    const QRect &groove, const QVector<QLine> &lines, bool labelled) const
{
    TickLabelCache &cache = tickLabelCache;
    TickLabelCache::Layer &layer = cache.layer;
    layer = TickLabelCache::Layer();
    layer.lines = lines;
    layer.markPen = opt.palette.windowText().color().rgba64();
    layer.labelled = labelled;
    layer.grooveTop = groove.top();
    layer.grooveBottom = groove.bottom();
    layer.pen = painter->pen().color().rgba64();
    layer.hints = int(painter->renderHints());
    layer.built = true;

    // What is drawn, in the order it is drawn: each mark on its own and each
    // label's stamp.
    struct Placed
    {
        const QImage *image;
        QPoint corner;
    };
    QVector<QImage> marks;
    marks.reserve(lines.size());
    QVector<Placed> placed;
    for (const QLine &line : lines) {
        // Room for antialiasing around the line.
        const QRect box = QRect(line.p1(), line.p2()).normalized().adjusted(-2, -2, 2, 2);
        QImage image(box.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        {
            QPainter markPainter(&image);
            markPainter.setRenderHints(painter->renderHints());
            markPainter.setPen(opt.palette.windowText().color());
            markPainter.drawLine(line.translated(-box.topLeft()));
        }
        marks.append(image);
        placed.append({&marks.last(), box.topLeft()});
    }
    if (labelled) {
        for (TickLabelCache::Label &label : cache.labels) {
            for (int side : {sideAbove, sideBelow}) {
                if (!(label.sides & side))
                    continue;
                QRect r = label.rect;
                if (side == sideAbove)
                    r.moveBottom(groove.top() - labelGapAbove);
                else
                    r.moveTop(groove.bottom() + labelGapBelow);
                QPoint corner;
                const TickLabelCache::Label::Stamp *stamp
                    = stampFor(painter, label, r, cache.direction, &corner);
                if (!stamp)
                    return;
                if (!stamp->image.isNull())
                    placed.append({&stamp->image, corner});
            }
        }
    }
    QRect all;
    for (const Placed &p : qAsConst(placed))
        all |= QRect(p.corner, p.image->size());
    if (all.isEmpty()) {
        layer.usable = true;
        return;
    }
    // A pixel that several marks or labels share is blended once for each,
    // in the order they are drawn: the first one's part of it goes on the
    // first picture, the second's on the second, and so on, and the
    // pictures are blitted in that order.
    QVector<QImage> images;
    QVector<quint8> count(all.width() * all.height(), 0);
    for (const Placed &p : qAsConst(placed)) {
        const QImage &from = *p.image;
        const QPoint at = p.corner - all.topLeft();
        for (int y = 0; y < from.height(); ++y) {
            const QRgb *source = reinterpret_cast<const QRgb *>(from.constScanLine(y));
            for (int x = 0; x < from.width(); ++x) {
                if (!source[x])
                    continue;
                quint8 &n = count[(at.y() + y) * all.width() + at.x() + x];
                // Far more on one pixel than anyone reads: drawn as before.
                if (n == 255)
                    return;
                if (n == images.size()) {
                    images.append(QImage(all.size(), QImage::Format_ARGB32_Premultiplied));
                    images.last().fill(Qt::transparent);
                }
                reinterpret_cast<QRgb *>(images[n].scanLine(at.y() + y))[at.x() + x] = source[x];
                ++n;
            }
        }
    }
    for (const QImage &image : qAsConst(images)) {
        // Cut where whole rows are empty (the groove between the rows of
        // labels, say), which are then not blitted.
        const QRect ink = inkedRect(image);
        int top = -1;
        for (int y = ink.top(); y <= ink.bottom() + 1; ++y) {
            bool empty = y > ink.bottom();
            if (!empty) {
                const QRgb *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
                empty = std::all_of(line + ink.left(), line + ink.right() + 1,
                    [](QRgb pixel) { return pixel == 0; });
            }
            if (!empty && top < 0) {
                top = y;
            } else if (empty && top >= 0) {
                const QRect band = inkedRect(image.copy(ink.left(), top, ink.width(), y - top))
                                       .translated(ink.left(), top);
                layer.images.append(image.copy(band));
                layer.corners.append(band.topLeft() + all.topLeft());
                top = -1;
            }
        }
    }
    layer.usable = true;
}

bool CMwQSliderPrivate::drawTickLayer(QPainter *painter, const QStyleOptionSlider &opt) const
{
    Q_Q(const CMwQSlider);
    const TickGeometry geometry(opt, q);
    const QVector<QLine> lines = tickLines(opt, geometry, tickItems);
    // Vertical sliders draw no labels, on purpose (docs/compatibility.md).
    const bool labelled = opt.orientation == Qt::Horizontal;

    painter->save();
    painter->translate(opt.rect.x(), opt.rect.y());
    if (labelled)
        tickLabels(painter, opt, geometry.half, geometry.available);
    const TickLabelCache::Layer &layer = tickLabelCache.layer;
    if (!layer.built || layer.lines != lines || layer.labelled != labelled
        || layer.markPen != opt.palette.windowText().color().rgba64()
        || layer.grooveTop != geometry.groove.top()
        || layer.grooveBottom != geometry.groove.bottom()
        || layer.pen != painter->pen().color().rgba64()
        || layer.hints != int(painter->renderHints()))
        buildTickLayer(painter, opt, geometry.groove, lines, labelled);
    if (layer.usable) {
        for (int i = 0; i < layer.images.size(); ++i)
            painter->drawImage(layer.corners.at(i), layer.images.at(i));
    }
    painter->restore();
    return layer.usable;
}

void CMwQSliderPrivate::drawTickLabels(QPainter *painter, const QStyleOptionSlider &opt) const
{
    // Vertical sliders draw no labels, on purpose (docs/compatibility.md).
    if (opt.orientation != Qt::Horizontal)
        return;

    Q_Q(const CMwQSlider);
    const TickGeometry geometry(opt, q);

    painter->save();
    painter->translate(opt.rect.x(), opt.rect.y());
    // The label rectangle is the text's tight ink box, while the text is laid
    // out from the rectangle's corner by its advance: the last glyph can end
    // past the box (by more at larger font sizes). Clipping there would cut
    // it, wrapping there would drop every word after the first, so labels
    // are neither clipped nor wrapped; the rectangle only places them.
    tickLabels(painter, opt, geometry.half, geometry.available);
    TickLabelCache &cache = tickLabelCache;
    const bool stamped = canStamp(painter);
    for (TickLabelCache::Label &label : cache.labels) {
        QRect r = label.rect;
        if (label.sides & sideAbove) {
            r.moveBottom(geometry.groove.top() - labelGapAbove);
            if (stamped)
                drawStamped(painter, label, r, cache.direction);
            else
                drawLabel(painter, *label.layout, r, cache.direction);
        }
        if (label.sides & sideBelow) {
            r.moveTop(geometry.groove.bottom() + labelGapBelow);
            if (stamped)
                drawStamped(painter, label, r, cache.direction);
            else
                drawLabel(painter, *label.layout, r, cache.direction);
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
        thick += tickMarksThickness;
    if (labels)
        thick += 2 * fontMetrics().height();

    const QSize size = orientation() == Qt::Horizontal ? QSize(sizeHintLength, thick)
                                                       : QSize(thick, sizeHintLength);
    return style()
        ->sizeFromContents(QStyle::CT_Slider, &opt, size, this)
        .expandedTo(velGlobalStrut());
}

QSize CMwQSlider::minimumSizeHint() const { return QSlider::minimumSizeHint(); }

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
    CMwQSliderGeometry::fitStyleOption(&opt);
    style()->drawComplexControl(QStyle::CC_Slider, &opt, &painter, this);
}

void CMwQSlider::mousePressEvent(QMouseEvent *e)
{
    Q_D(CMwQSlider);
    if (!d->widePress(e))
        QSlider::mousePressEvent(e);
}

void CMwQSlider::mouseMoveEvent(QMouseEvent *e)
{
    Q_D(CMwQSlider);
    if (!d->wideMove(e))
        QSlider::mouseMoveEvent(e);
}

void CMwQSlider::mouseReleaseEvent(QMouseEvent *e)
{
    Q_D(CMwQSlider);
    if (!d->wideRelease(e))
        QSlider::mouseReleaseEvent(e);
}

bool CMwQSlider::event(QEvent *e)
{
    switch (e->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::HoverMove:
        // QSlider's hover tracking asks the style for the handle over the
        // real range; this slider paints no hover state, so it is skipped.
        if (CMwQSliderGeometry::isWide(minimum(), maximum()))
            return QAbstractSlider::event(e); // NOLINT(bugprone-parent-virtual-call)
        break;
    default:
        break;
    }
    return QSlider::event(e);
}

// QSlider's own mouse handling, over an option fit for the style. It takes
// over when a press comes on a wide range and keeps the mouse until the
// release, even if the range narrows meanwhile.
bool CMwQSliderPrivate::widePress(QMouseEvent *e)
{
    Q_Q(CMwQSlider);
    widePressedControl = QStyle::SC_None;
    if (!CMwQSliderGeometry::isWide(q->minimum(), q->maximum()))
        return false;
    if (e->buttons() ^ e->button()) {
        e->ignore();
        return true;
    }
    e->accept();

    const QStyle *style = q->style();
    QStyleOptionSlider opt;
    q->initStyleOption(&opt);
    CMwQSliderGeometry::fitStyleOption(&opt);
    const QRect handle = style->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderHandle, q);
    // The press point minus half the handle: where the handle would start.
    const QPoint start = VelQt::eventPos(e) - (handle.center() - handle.topLeft());
    const auto along
        = [q](const QPoint &p) { return q->orientation() == Qt::Horizontal ? p.x() : p.y(); };

    if ((e->button() & style->styleHint(QStyle::SH_Slider_AbsoluteSetButtons)) == e->button()) {
        q->setSliderPosition(pixelToValue(along(start)));
        q->triggerAction(QAbstractSlider::SliderMove);
        q->setRepeatAction(QAbstractSlider::SliderNoAction);
        widePressedControl = QStyle::SC_SliderHandle;
        q->update();
    } else if ((e->button() & style->styleHint(QStyle::SH_Slider_PageSetButtons)) == e->button()) {
        widePressedControl
            = style->hitTestComplexControl(QStyle::CC_Slider, &opt, VelQt::eventPos(e), q);
        if (widePressedControl == QStyle::SC_SliderGroove) {
            const int pressValue = pixelToValue(along(start));
            QAbstractSlider::SliderAction action = QAbstractSlider::SliderNoAction;
            if (pressValue > q->value())
                action = QAbstractSlider::SliderPageStepAdd;
            else if (pressValue < q->value())
                action = QAbstractSlider::SliderPageStepSub;
            if (action != QAbstractSlider::SliderNoAction) {
                q->triggerAction(action);
                q->setRepeatAction(action);
            }
        }
    } else {
        e->ignore();
        return true;
    }

    if (widePressedControl == QStyle::SC_SliderHandle) {
        q->setRepeatAction(QAbstractSlider::SliderNoAction);
        q->initStyleOption(&opt);
        CMwQSliderGeometry::fitStyleOption(&opt);
        const QRect moved
            = style->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderHandle, q);
        wideClickOffset = along(VelQt::eventPos(e) - moved.topLeft());
        q->update(moved);
        q->setSliderDown(true);
    }
    return true;
}

bool CMwQSliderPrivate::wideMove(QMouseEvent *e)
{
    Q_Q(CMwQSlider);
    if (widePressedControl == QStyle::SC_None) {
        if (!CMwQSliderGeometry::isWide(q->minimum(), q->maximum()))
            return false;
        // A press QSlider took on a narrower range: it cannot follow the
        // mouse over this one.
        e->ignore();
        return true;
    }
    if (widePressedControl != QStyle::SC_SliderHandle) {
        e->ignore();
        return true;
    }
    e->accept();
    const QPoint p = VelQt::eventPos(e);
    q->setSliderPosition(
        pixelToValue((q->orientation() == Qt::Horizontal ? p.x() : p.y()) - wideClickOffset));
    return true;
}

bool CMwQSliderPrivate::wideRelease(QMouseEvent *e)
{
    Q_Q(CMwQSlider);
    if (widePressedControl == QStyle::SC_None) {
        if (!CMwQSliderGeometry::isWide(q->minimum(), q->maximum()))
            return false;
        // Ends a press QSlider took on a narrower range without asking the
        // style for geometry it cannot compute.
        e->accept();
        q->setRepeatAction(QAbstractSlider::SliderNoAction);
        q->setSliderDown(false);
        q->update();
        return true;
    }
    if (e->buttons()) {
        e->ignore();
        return true;
    }
    e->accept();
    const QStyle::SubControl released = widePressedControl;
    widePressedControl = QStyle::SC_None;
    q->setRepeatAction(QAbstractSlider::SliderNoAction);
    if (released == QStyle::SC_SliderHandle)
        q->setSliderDown(false);
    q->update();
    return true;
}

// QSlider's conversion of a pixel (where the handle starts) to a value.
int CMwQSliderPrivate::pixelToValue(int pixel) const
{
    Q_Q(const CMwQSlider);
    QStyleOptionSlider opt;
    q->initStyleOption(&opt);
    CMwQSliderGeometry::fitStyleOption(&opt);
    const QStyle *style = q->style();
    const QRect groove = style->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderGroove, q);
    const QRect handle = style->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderHandle, q);
    int start = 0;
    int end = 0;
    if (q->orientation() == Qt::Horizontal) {
        start = groove.x();
        end = groove.right() - handle.width() + 1;
    } else {
        start = groove.y();
        end = groove.bottom() - handle.height() + 1;
    }
    return CMwQSliderGeometry::valueFromPosition(
        q->minimum(), q->maximum(), pixel - start, end - start, opt.upsideDown);
}
