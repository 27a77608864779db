#ifndef VEL_QT_WIDGETS_CMWQRANGESLIDER_P_H
#define VEL_QT_WIDGETS_CMWQRANGESLIDER_P_H

#include "cmwqslider_p.h"

#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtCore/QPointer>

QT_BEGIN_NAMESPACE
class QEvent;
class QKeyEvent;
class QStylePainter;
QT_END_NAMESPACE

class VEL_QT_WIDGETS_EXPORT CMwQRangeSliderPrivate : public CMwQSliderPrivate
{
    Q_DECLARE_PUBLIC(CMwQRangeSlider)

public:
    enum Handle { NoHandle = 0x0, LowerHandle = 0x1, UpperHandle = 0x2 };
    Q_DECLARE_FLAGS(Handles, Handle)

    int maximumValue = 100;
    int minimumValue = 0;
    int maximumPosition = 100;
    int minimumPosition = 0;
    int dragClickOffset = 0;
    int dragAnchorPosition = 0;
    float dragHalfWidth = 0.0f;
    Handles selectedHandles;
    bool symmetricMoves = false;
    QString handleToolTip;
    // The handle that keys move and that is drawn with the focus state.
    Handle focusedHandle = LowerHandle;
    // The floating-point range slider this one is the inner slider of, set
    // by it; that widget is what assistive technology sees and hears from.
    QPointer<QWidget> outerWidget;

    static CMwQRangeSliderPrivate *get(CMwQRangeSlider *q) { return q->d_func(); }
    static const CMwQRangeSliderPrivate *get(const CMwQRangeSlider *q) { return q->d_func(); }

    // Keyboard and focus handling, reached through CMwQRangeSlider::event():
    // true when the event was consumed.
    bool keyboardEvent(QEvent *e);
    // A press on one handle makes it the focused handle.
    void followPressedHandle();
    void setFocusedHandle(Handle handle);
    // Tells assistive technology which handle has the focus, once the focus
    // event that Qt sends for the widget itself is out, so that it comes last.
    void announceFocusedHandleLater();

    // The positions a handle may take without pushing the other one; with
    // symmetric moves, up to where both meet.
    void handleBounds(Handle handle, int *lowest, int *highest) const;
    // Moves a handle to \a position (clamped to handleBounds()) as one
    // complete drag with tracking on: press, one move, release, with the
    // signals of each. False when the handle stays where it is.
    bool moveHandle(Handle handle, int position);

    // The style option of one handle alone, fitted for the style.
    void initHandleStyleOption(Handle handle, QStyleOptionSlider *option) const;
    // The handle's rectangle in the widget, where the style draws it.
    QRect handleRect(Handle handle) const;
    // The focus of a focused widget outside its handles.
    void drawFocusFrame(QStylePainter *painter) const;

private:
    // Where a key takes the focused handle; false for keys that are not ours.
    bool keyTarget(const QKeyEvent *e, int *target) const;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(CMwQRangeSliderPrivate::Handles)

#endif // VEL_QT_WIDGETS_CMWQRANGESLIDER_P_H
