#include "cmwqrangeslider_p.h"

#include "cmwqslideraccessibility_p.h"
#include "cmwqtcompat_p.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QStyleOptionSlider>
#include <QtWidgets/QStylePainter>
#include <QtWidgets/QToolTip>

#include <algorithm>
#include <cmath>
#include <limits>

CMwQRangeSlider::CMwQRangeSlider(QWidget *parent)
    : CMwQRangeSlider(new CMwQRangeSliderPrivate, parent)
{
}

CMwQRangeSlider::CMwQRangeSlider(Qt::Orientation orientation, QWidget *parent)
    : CMwQRangeSlider(new CMwQRangeSliderPrivate, orientation, parent)
{
}

CMwQRangeSlider::CMwQRangeSlider(CMwQRangeSliderPrivate *d, QWidget *parent)
    : CMwQSlider(d, parent)
{
    d->minimumValue = d->minimumPosition = minimum();
    d->maximumValue = d->maximumPosition = maximum();
    connect(this, SIGNAL(rangeChanged(int, int)), this, SLOT(onRangeChanged(int, int)));
}

CMwQRangeSlider::CMwQRangeSlider(
    CMwQRangeSliderPrivate *d, Qt::Orientation orientation, QWidget *parent)
    : CMwQSlider(d, orientation, parent)
{
    d->minimumValue = d->minimumPosition = minimum();
    d->maximumValue = d->maximumPosition = maximum();
    connect(this, SIGNAL(rangeChanged(int, int)), this, SLOT(onRangeChanged(int, int)));
}

CMwQRangeSlider::~CMwQRangeSlider() = default;

int CMwQRangeSlider::minimumValue() const
{
    Q_D(const CMwQRangeSlider);
    return d->minimumValue;
}

int CMwQRangeSlider::maximumValue() const
{
    Q_D(const CMwQRangeSlider);
    return d->maximumValue;
}

int CMwQRangeSlider::minimumPosition() const
{
    Q_D(const CMwQRangeSlider);
    return d->minimumPosition;
}

int CMwQRangeSlider::maximumPosition() const
{
    Q_D(const CMwQRangeSlider);
    return d->maximumPosition;
}

bool CMwQRangeSlider::symmetricMoves() const
{
    Q_D(const CMwQRangeSlider);
    return d->symmetricMoves;
}

void CMwQRangeSlider::setSymmetricMoves(bool symmetric)
{
    Q_D(CMwQRangeSlider);
    d->symmetricMoves = symmetric;
}

QString CMwQRangeSlider::handleToolTip() const
{
    Q_D(const CMwQRangeSlider);
    return d->handleToolTip;
}

void CMwQRangeSlider::setHandleToolTip(const QString &toolTip)
{
    Q_D(CMwQRangeSlider);
    d->handleToolTip = toolTip;
}

bool CMwQRangeSlider::isMinimumSliderDown() const
{
    Q_D(const CMwQRangeSlider);
    return d->selectedHandles.testFlag(CMwQRangeSliderPrivate::LowerHandle);
}

bool CMwQRangeSlider::isMaximumSliderDown() const
{
    Q_D(const CMwQRangeSlider);
    return d->selectedHandles.testFlag(CMwQRangeSliderPrivate::UpperHandle);
}

void CMwQRangeSlider::setMinimumValue(int min)
{
    Q_D(CMwQRangeSlider);
    setValues(min, std::max(d->maximumValue, min));
}

void CMwQRangeSlider::setMaximumValue(int max)
{
    Q_D(CMwQRangeSlider);
    setValues(std::min(d->minimumValue, max), max);
}

void CMwQRangeSlider::setMinimumPosition(int min)
{
    Q_D(CMwQRangeSlider);
    setPositions(min, std::max(min, d->maximumPosition));
}

void CMwQRangeSlider::setMaximumPosition(int max)
{
    Q_D(CMwQRangeSlider);
    setPositions(std::min(d->minimumPosition, max), max);
}

void CMwQRangeSlider::setValues(int min, int max)
{
    Q_D(CMwQRangeSlider);
    const int lo = qBound(minimum(), std::min(min, max), maximum());
    const int hi = qBound(minimum(), std::max(min, max), maximum());

    const bool minValueChanged = d->minimumValue != lo;
    const bool maxValueChanged = d->maximumValue != hi;
    const bool minPositionChanged = d->minimumPosition != lo;
    const bool maxPositionChanged = d->maximumPosition != hi;
    d->minimumValue = d->minimumPosition = lo;
    d->maximumValue = d->maximumPosition = hi;

    // The pair signal comes first here and last in setPositions(), on
    // purpose (docs/compatibility.md).
    if (isSliderDown()) {
        if (minPositionChanged || maxPositionChanged)
            Q_EMIT positionsChanged(d->minimumPosition, d->maximumPosition);
        if (minPositionChanged)
            Q_EMIT minimumPositionChanged(d->minimumPosition);
        if (maxPositionChanged)
            Q_EMIT maximumPositionChanged(d->maximumPosition);
    }
    if (minValueChanged || maxValueChanged)
        Q_EMIT valuesChanged(d->minimumValue, d->maximumValue);
    if (minValueChanged)
        Q_EMIT minimumValueChanged(d->minimumValue);
    if (maxValueChanged)
        Q_EMIT maximumValueChanged(d->maximumValue);
    // An inner slider is no element of its own; its outer widget reports.
    if ((minValueChanged || maxValueChanged) && !d->outerWidget)
        CMwQSliderAccessibility::handleValuesChanged(
            this, minValueChanged, d->minimumValue, maxValueChanged, d->maximumValue);

    if (minValueChanged || maxValueChanged || minPositionChanged || maxPositionChanged)
        update();
}

void CMwQRangeSlider::setPositions(int min, int max)
{
    Q_D(CMwQRangeSlider);
    const int lo = qBound(minimum(), std::min(min, max), maximum());
    const int hi = qBound(minimum(), std::max(min, max), maximum());

    const bool minPositionChanged = d->minimumPosition != lo;
    const bool maxPositionChanged = d->maximumPosition != hi;
    if (!minPositionChanged && !maxPositionChanged)
        return;

    d->minimumPosition = lo;
    d->maximumPosition = hi;
    if (!hasTracking())
        update();

    if (isSliderDown()) {
        if (minPositionChanged)
            Q_EMIT minimumPositionChanged(d->minimumPosition);
        if (maxPositionChanged)
            Q_EMIT maximumPositionChanged(d->maximumPosition);
        Q_EMIT positionsChanged(d->minimumPosition, d->maximumPosition);
    }

    if (hasTracking()) {
        triggerAction(QAbstractSlider::SliderMove);
        setValues(d->minimumPosition, d->maximumPosition);
    }
}

void CMwQRangeSlider::onRangeChanged(int minimum, int maximum)
{
    // The arguments are ignored on purpose (docs/compatibility.md).
    Q_UNUSED(minimum);
    Q_UNUSED(maximum);
    Q_D(CMwQRangeSlider);
    setValues(d->minimumValue, d->maximumValue);
}

void CMwQRangeSlider::initMinimumSliderStyleOption(QStyleOptionSlider *option) const
{
    initStyleOption(option);
}

void CMwQRangeSlider::initMaximumSliderStyleOption(QStyleOptionSlider *option) const
{
    initStyleOption(option);
}

namespace {

// Positions near the ends of a full int range must not overflow on the way to
// setPositions(), which clamps into the range anyway.
int clampToInt(double value)
{
    return int(
        qBound<double>(std::numeric_limits<int>::min(), value, std::numeric_limits<int>::max()));
}

// The pixel span along which the handles move, from the style's rectangles.
struct Track
{
    int start = 0;
    int end = 0;
    bool upsideDown = false;
};

Track trackOf(const QSlider *slider, QStyleOptionSlider option)
{
    CMwQSliderGeometry::fitStyleOption(&option);
    const QStyle *style = slider->style();
    const QRect gr
        = style->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, slider);
    const QRect sr
        = style->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider);
    Track track;
    track.upsideDown = option.upsideDown;
    if (option.orientation == Qt::Horizontal) {
        track.start = gr.x();
        track.end = gr.right() - sr.width() + 1;
    } else {
        track.start = gr.y();
        track.end = gr.bottom() - sr.height() + 1;
    }
    return track;
}

int along(Qt::Orientation orientation, const QPoint &point)
{
    return orientation == Qt::Horizontal ? point.x() : point.y();
}

struct HandleHit
{
    CMwQRangeSliderPrivate::Handle handle = CMwQRangeSliderPrivate::NoHandle;
    QRect rect;
};

HandleHit hitTestHandles(const CMwQRangeSlider *q, const CMwQRangeSliderPrivate *d,
    const QStyleOptionSlider &base, const QPoint &pos)
{
    const QStyle *style = q->style();
    QStyleOptionSlider option = base;

    option.sliderPosition = d->minimumPosition;
    option.sliderValue = d->minimumValue;
    CMwQSliderGeometry::fitStyleOption(&option);
    const QStyle::SubControl hitMin
        = style->hitTestComplexControl(QStyle::CC_Slider, &option, pos, q);
    const QRect minRect
        = style->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, q);

    option = base;
    option.sliderPosition = d->maximumPosition;
    option.sliderValue = d->maximumValue;
    CMwQSliderGeometry::fitStyleOption(&option);
    const QStyle::SubControl hitMax
        = style->hitTestComplexControl(QStyle::CC_Slider, &option, pos, q);
    const QRect maxRect
        = style->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, q);

    HandleHit hit;
    if (hitMin == QStyle::SC_SliderHandle && hitMax == QStyle::SC_SliderHandle) {
        int dMin;
        int dMax;
        if (option.orientation == Qt::Horizontal) {
            dMin = pos.x() - minRect.left();
            dMax = maxRect.right() - pos.x();
        } else {
            dMin = minRect.bottom() - pos.y();
            dMax = pos.y() - maxRect.top();
        }
        // The lower handle wins only when the press is nearer its outer edge;
        // a tie goes to the upper handle.
        if (dMin < dMax) {
            hit.handle = CMwQRangeSliderPrivate::LowerHandle;
            hit.rect = minRect;
        } else {
            hit.handle = CMwQRangeSliderPrivate::UpperHandle;
            hit.rect = maxRect;
        }
    } else if (hitMin == QStyle::SC_SliderHandle) {
        hit.handle = CMwQRangeSliderPrivate::LowerHandle;
        hit.rect = minRect;
    } else if (hitMax == QStyle::SC_SliderHandle) {
        hit.handle = CMwQRangeSliderPrivate::UpperHandle;
        hit.rect = maxRect;
    } else {
        hit.rect = minRect.united(maxRect);
    }
    return hit;
}

} // namespace

void CMwQRangeSlider::mousePressEvent(QMouseEvent *e)
{
    Q_D(CMwQRangeSlider);
    if (minimum() == maximum() || e->buttons() != e->button()) {
        e->ignore();
        return;
    }

    QStyleOptionSlider option;
    initStyleOption(&option);
    const int mepos = along(orientation(), VelQt::eventPos(e));
    const HandleHit hit = hitTestHandles(this, d, option, VelQt::eventPos(e));
    const bool horizontal = orientation() == Qt::Horizontal;

    if (hit.handle != CMwQRangeSliderPrivate::NoHandle) {
        d->dragAnchorPosition = hit.handle == CMwQRangeSliderPrivate::LowerHandle
            ? d->minimumPosition
            : d->maximumPosition;
        d->dragClickOffset = mepos - (horizontal ? hit.rect.left() : hit.rect.top());
        setSliderDown(true);
        if (d->selectedHandles != CMwQRangeSliderPrivate::Handles(hit.handle)) {
            d->selectedHandles = hit.handle;
            update(hit.rect);
        }
        e->accept();
        return;
    }

    QStyleOptionSlider fitted = option;
    CMwQSliderGeometry::fitStyleOption(&fitted);
    const QStyle::SubControl control
        = style()->hitTestComplexControl(QStyle::CC_Slider, &fitted, VelQt::eventPos(e), this);
    const QRect groove
        = style()->subControlRect(QStyle::CC_Slider, &fitted, QStyle::SC_SliderGroove, this);
    const int low = horizontal ? hit.rect.left() : hit.rect.top();
    const int high = horizontal ? hit.rect.right() : hit.rect.bottom();
    if (control == QStyle::SC_SliderGroove && mepos > low && mepos < high) {
        const Track track = trackOf(this, option);
        // In double precision: the sum of two ints may overflow.
        d->dragAnchorPosition = int((double(d->minimumPosition) + d->maximumPosition) * 0.5);
        d->dragClickOffset = mepos
            - (CMwQSliderGeometry::positionFromValue(minimum(), maximum(), d->dragAnchorPosition,
                   track.end - track.start, track.upsideDown)
                + track.start);
        d->dragHalfWidth = float((double(d->maximumPosition) - d->minimumPosition) * 0.5);
        setSliderDown(true);
        const CMwQRangeSliderPrivate::Handles both
            = CMwQRangeSliderPrivate::LowerHandle | CMwQRangeSliderPrivate::UpperHandle;
        if (d->selectedHandles != both) {
            d->selectedHandles = both;
            update(hit.rect.united(groove));
        }
        e->accept();
        return;
    }
    e->ignore();
}

void CMwQRangeSlider::mouseMoveEvent(QMouseEvent *e)
{
    Q_D(CMwQRangeSlider);
    if (!d->selectedHandles) {
        e->ignore();
        return;
    }

    QStyleOptionSlider option;
    initStyleOption(&option);
    const int mepos = along(orientation(), VelQt::eventPos(e));
    const int m = style()->pixelMetric(QStyle::PM_MaximumDragDistance, &option, this);
    const Track track = trackOf(this, option);
    int newPos = CMwQSliderGeometry::valueFromPosition(minimum(), maximum(),
        mepos - d->dragClickOffset - track.start, track.end - track.start, track.upsideDown);
    // Too far away from the widget, the drag snaps back to where it started.
    if (m >= 0 && !rect().adjusted(-m, -m, m, m).contains(VelQt::eventPos(e)))
        newPos = d->dragAnchorPosition;

    const bool lower = d->selectedHandles.testFlag(CMwQRangeSliderPrivate::LowerHandle);
    const bool upper = d->selectedHandles.testFlag(CMwQRangeSliderPrivate::UpperHandle);
    if (lower && !upper) {
        const int newMin = std::min(newPos, d->maximumPosition);
        const double s = d->symmetricMoves ? double(d->minimumPosition) - newMin : 0.0;
        setPositions(newMin, clampToInt(d->maximumPosition + s));
    } else if (upper && !lower) {
        const int newMax = std::max(d->minimumPosition, newPos);
        const double s = d->symmetricMoves ? double(newMax) - d->maximumPosition : 0.0;
        setPositions(clampToInt(d->minimumPosition - s), newMax);
    } else {
        // The lower side truncates and the upper side rounds, so the span
        // keeps its width.
        const qint64 below = qint64(d->dragHalfWidth);
        const qint64 above = std::llround(double(d->dragHalfWidth));
        setPositions(clampToInt(double(newPos - below)), clampToInt(double(newPos + above)));
    }
    e->accept();
}

void CMwQRangeSlider::mouseReleaseEvent(QMouseEvent *e)
{
    Q_D(CMwQRangeSlider);
    // Past CMwQSlider's release, which ends a drag of its single handle.
    QSlider::mouseReleaseEvent(e); // NOLINT(bugprone-parent-virtual-call)
    setSliderDown(false);
    d->selectedHandles = CMwQRangeSliderPrivate::NoHandle;
    update();
}

void CMwQRangeSlider::paintEvent(QPaintEvent *)
{
    Q_D(CMwQRangeSlider);
    QStylePainter painter(this);

    QStyleOptionSlider option;
    initStyleOption(&option);
    d->drawTicks(&painter, option);

    // The empty groove: a slider value outside the range keeps the style
    // from filling any part of it up to a handle. A full int range has no
    // such value; its minimum leaves the groove empty as well.
    option.subControls = QStyle::SC_SliderGroove;
    option.sliderValue = option.sliderPosition = clampToInt(double(minimum()) - maximum());
    CMwQSliderGeometry::fitStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_Slider, option);

    const auto drawHandle = [&](bool lowerHandle) {
        QStyleOptionSlider handle;
        if (lowerHandle)
            initMinimumSliderStyleOption(&handle);
        else
            initMaximumSliderStyleOption(&handle);
        handle.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
        handle.sliderValue = lowerHandle ? d->minimumValue : d->maximumValue;
        handle.sliderPosition = lowerHandle ? d->minimumPosition : d->maximumPosition;
        if (lowerHandle ? isMinimumSliderDown() : isMaximumSliderDown()) {
            handle.activeSubControls = QStyle::SC_SliderHandle;
            handle.state |= QStyle::State_Sunken;
        }
        CMwQSliderGeometry::fitStyleOption(&handle);
        // Only the focused handle shows the focus; the groove on the other
        // handle's side still does, as it would on a focused QSlider.
        const CMwQRangeSliderPrivate::Handle which = lowerHandle
            ? CMwQRangeSliderPrivate::LowerHandle
            : CMwQRangeSliderPrivate::UpperHandle;
        const bool focusElsewhere
            = (handle.state & QStyle::State_HasFocus) && d->focusedHandle != which;
        const QRect grooveRect
            = style()->subControlRect(QStyle::CC_Slider, &handle, QStyle::SC_SliderGroove, this);
        const QRect handleRect
            = style()->subControlRect(QStyle::CC_Slider, &handle, QStyle::SC_SliderHandle, this);
        // Each handle redraws the groove on its outer side with itself; only
        // the horizontal edges are cut (docs/compatibility.md).
        QRect clip = grooveRect.united(handleRect);
        if (lowerHandle)
            clip.setRight(handleRect.right());
        else
            clip.setLeft(handleRect.left());
        painter.setClipRect(clip, Qt::ReplaceClip);
        if (focusElsewhere) {
            QStyleOptionSlider groove = handle;
            groove.subControls = QStyle::SC_SliderGroove;
            painter.drawComplexControl(QStyle::CC_Slider, groove);
            handle.subControls = QStyle::SC_SliderHandle;
            handle.state &= ~QStyle::State_HasFocus;
        }
        painter.drawComplexControl(QStyle::CC_Slider, handle);
        painter.setClipRect(QRect(), Qt::NoClip);
    };

    // A pressed lower handle is drawn last, on top.
    if (isMinimumSliderDown()) {
        drawHandle(false);
        drawHandle(true);
    } else {
        drawHandle(true);
        drawHandle(false);
    }

    if (option.state & QStyle::State_HasFocus)
        d->drawFocusFrame(&painter);
}

bool CMwQRangeSlider::event(QEvent *e)
{
    Q_D(CMwQRangeSlider);
    // Keys and focus go to the handles; the base slider's own value, which
    // no one sees, must not move.
    if (e->type() == QEvent::MouseButtonPress) {
        const bool result = CMwQSlider::event(e);
        d->followPressedHandle();
        return result;
    }
    if (d->keyboardEvent(e))
        return true;
    if (e->type() == QEvent::ToolTip && !d->handleToolTip.isEmpty()) {
        auto *helpEvent = static_cast<QHelpEvent *>(e);
        QStyleOptionSlider option;
        // initStyleOption() overwrites the handle fields set first; kept
        // (docs/compatibility.md).
        option.sliderPosition = d->minimumPosition;
        option.sliderValue = d->minimumValue;
        initStyleOption(&option);
        CMwQSliderGeometry::fitStyleOption(&option);
        if (style()->hitTestComplexControl(QStyle::CC_Slider, &option, helpEvent->pos(), this)
            == QStyle::SC_SliderHandle) {
            QToolTip::showText(helpEvent->globalPos(), d->handleToolTip.arg(d->minimumValue));
            e->accept();
            return true;
        }
        option.sliderPosition = d->maximumPosition;
        option.sliderValue = d->maximumValue;
        initStyleOption(&option);
        CMwQSliderGeometry::fitStyleOption(&option);
        if (style()->hitTestComplexControl(QStyle::CC_Slider, &option, helpEvent->pos(), this)
            == QStyle::SC_SliderHandle) {
            QToolTip::showText(helpEvent->globalPos(), d->handleToolTip.arg(d->maximumValue));
            e->accept();
            return true;
        }
    }
    return CMwQSlider::event(e);
}

void CMwQRangeSliderPrivate::drawFocusFrame(QStylePainter *painter) const
{
    Q_Q(const CMwQRangeSlider);
    // Styles that frame a whole focused slider (Windows) draw the frame with
    // the handle, inside the handle's clip above; this pass draws the focused
    // handle once more with both handles clipped out, so that the frame goes
    // all round and nothing else changes.
    QStyleOptionSlider option;
    initHandleStyleOption(focusedHandle, &option);
    option.subControls = QStyle::SC_SliderHandle;
    QRegion clip(q->rect());
    clip -= handleRect(LowerHandle);
    clip -= handleRect(UpperHandle);
    painter->setClipRegion(clip);
    painter->drawComplexControl(QStyle::CC_Slider, option);
    painter->setClipping(false);
}

void CMwQRangeSliderPrivate::initHandleStyleOption(Handle handle, QStyleOptionSlider *option) const
{
    Q_Q(const CMwQRangeSlider);
    if (handle == UpperHandle)
        q->initMaximumSliderStyleOption(option);
    else
        q->initMinimumSliderStyleOption(option);
    option->sliderPosition = handle == UpperHandle ? maximumPosition : minimumPosition;
    option->sliderValue = handle == UpperHandle ? maximumValue : minimumValue;
    CMwQSliderGeometry::fitStyleOption(option);
}

QRect CMwQRangeSliderPrivate::handleRect(Handle handle) const
{
    Q_Q(const CMwQRangeSlider);
    QStyleOptionSlider option;
    initHandleStyleOption(handle, &option);
    return q->style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, q);
}

void CMwQRangeSliderPrivate::handleBounds(Handle handle, int *lowest, int *highest) const
{
    Q_Q(const CMwQRangeSlider);
    // In 64 bits: the gap between the handles may exceed the int range.
    const qint64 halfGap = (qint64(maximumPosition) - minimumPosition) / 2;
    if (handle == UpperHandle) {
        *lowest = symmetricMoves ? int(maximumPosition - halfGap) : minimumPosition;
        *highest = q->maximum();
    } else {
        *lowest = q->minimum();
        *highest = symmetricMoves ? int(minimumPosition + halfGap) : maximumPosition;
    }
}

bool CMwQRangeSliderPrivate::moveHandle(Handle handle, int position)
{
    Q_Q(CMwQRangeSlider);
    // A mouse drag owns the handles until it ends.
    if (q->isSliderDown() || handle == NoHandle)
        return false;
    int lowest = 0;
    int highest = 0;
    handleBounds(handle, &lowest, &highest);
    const int target = qBound(lowest, position, highest);
    const int from = handle == LowerHandle ? minimumPosition : maximumPosition;
    if (target == from)
        return false;

    // One whole drag of the handle, so that listeners see exactly what a
    // drag with tracking on shows them: pressed, the moves, released.
    const bool tracking = q->hasTracking();
    q->setTracking(true);
    selectedHandles = handle;
    dragAnchorPosition = from;
    q->setSliderDown(true);
    if (handle == LowerHandle) {
        const double s = symmetricMoves ? double(minimumPosition) - target : 0.0;
        q->setPositions(target, clampToInt(maximumPosition + s));
    } else {
        const double s = symmetricMoves ? double(target) - maximumPosition : 0.0;
        q->setPositions(clampToInt(minimumPosition - s), target);
    }
    q->setSliderDown(false);
    selectedHandles = NoHandle;
    q->setTracking(tracking);
    q->update();
    return true;
}

void CMwQRangeSliderPrivate::setFocusedHandle(Handle handle)
{
    Q_Q(CMwQRangeSlider);
    if (handle == focusedHandle || handle == NoHandle)
        return;
    focusedHandle = handle;
    q->update();
    if (q->hasFocus())
        CMwQSliderAccessibility::handleFocused(outerWidget ? outerWidget.data() : q,
            handle == LowerHandle ? CMwQSliderAccessibility::LowerHandleChild
                                  : CMwQSliderAccessibility::UpperHandleChild);
}

void CMwQRangeSliderPrivate::announceFocusedHandleLater()
{
    Q_Q(CMwQRangeSlider);
    QMetaObject::invokeMethod(
        q,
        [this, q]() {
            if (q->hasFocus())
                CMwQSliderAccessibility::handleFocused(outerWidget ? outerWidget.data() : q,
                    focusedHandle == UpperHandle ? CMwQSliderAccessibility::UpperHandleChild
                                                 : CMwQSliderAccessibility::LowerHandleChild);
        },
        Qt::QueuedConnection);
}

void CMwQRangeSliderPrivate::followPressedHandle()
{
    if (selectedHandles == LowerHandle || selectedHandles == UpperHandle)
        setFocusedHandle(selectedHandles == LowerHandle ? LowerHandle : UpperHandle);
}

bool CMwQRangeSliderPrivate::keyTarget(const QKeyEvent *e, int *target) const
{
    Q_Q(const CMwQRangeSlider);
    // The directions of QAbstractSlider::keyPressEvent(): every key follows
    // invertedControls, left and right the layout direction as well.
    enum Step { None, SingleAdd, SingleSub, PageAdd, PageSub, ToLowest, ToHighest };
    Step step = None;
    const bool inverted = q->invertedControls();
    switch (e->key()) {
    case Qt::Key_Left:
        if (q->isRightToLeft())
            step = inverted ? SingleSub : SingleAdd;
        else
            step = inverted ? SingleAdd : SingleSub;
        break;
    case Qt::Key_Right:
        if (q->isRightToLeft())
            step = inverted ? SingleAdd : SingleSub;
        else
            step = inverted ? SingleSub : SingleAdd;
        break;
    case Qt::Key_Up:
        step = inverted ? SingleSub : SingleAdd;
        break;
    case Qt::Key_Down:
        step = inverted ? SingleAdd : SingleSub;
        break;
    case Qt::Key_PageUp:
        step = inverted ? PageSub : PageAdd;
        break;
    case Qt::Key_PageDown:
        step = inverted ? PageAdd : PageSub;
        break;
    case Qt::Key_Home:
        step = ToLowest;
        break;
    case Qt::Key_End:
        step = ToHighest;
        break;
    default:
        return false;
    }

    int lowest = 0;
    int highest = 0;
    handleBounds(focusedHandle, &lowest, &highest);
    const qint64 from = focusedHandle == LowerHandle ? minimumPosition : maximumPosition;
    qint64 to = from;
    switch (step) {
    case SingleAdd:
        to = from + q->singleStep();
        break;
    case SingleSub:
        to = from - q->singleStep();
        break;
    case PageAdd:
        to = from + q->pageStep();
        break;
    case PageSub:
        to = from - q->pageStep();
        break;
    case ToLowest:
        to = lowest;
        break;
    case ToHighest:
        to = highest;
        break;
    case None:
        break;
    }
    *target = int(qBound(qint64(lowest), to, qint64(highest)));
    return true;
}

bool CMwQRangeSliderPrivate::keyboardEvent(QEvent *e)
{
    switch (e->type()) {
    case QEvent::FocusIn: {
        // Tab enters at the lower handle, Shift+Tab at the upper one; other
        // reasons keep the handle that had the focus last.
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(e)->reason();
        if (reason == Qt::TabFocusReason)
            focusedHandle = LowerHandle;
        else if (reason == Qt::BacktabFocusReason)
            focusedHandle = UpperHandle;
        announceFocusedHandleLater();
        return false;
    }
    case QEvent::KeyPress: {
        auto *key = static_cast<QKeyEvent *>(e);
        if (!(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            const bool backward = key->key() == Qt::Key_Backtab
                || (key->key() == Qt::Key_Tab && (key->modifiers() & Qt::ShiftModifier));
            const bool forward = !backward && key->key() == Qt::Key_Tab;
            // Each handle is a stop of its own: Tab leaves the widget only
            // from the upper handle, Shift+Tab only from the lower one.
            if (forward && focusedHandle == LowerHandle) {
                setFocusedHandle(UpperHandle);
                return true;
            }
            if (backward && focusedHandle == UpperHandle) {
                setFocusedHandle(LowerHandle);
                return true;
            }
            if (forward || backward)
                return false;
        }
        int target = 0;
        if (!keyTarget(key, &target))
            return false;
        moveHandle(focusedHandle, target);
        key->accept();
        return true;
    }
    default:
        return false;
    }
}
