#ifndef VEL_QT_WIDGETS_CMWQSLIDER_P_H
#define VEL_QT_WIDGETS_CMWQSLIDER_P_H

#include <vel_qt_widgets/CMwQSlider.h>

#include <QtCore/QLine>
#include <QtCore/QSharedPointer>
#include <QtCore/QVector>
#include <QtGui/QFont>
#include <QtGui/QImage>
#include <QtGui/QRgba64>
#include <QtGui/QTextLayout>
#include <QtWidgets/QStyle>

#include <limits>

QT_BEGIN_NAMESPACE
class QMouseEvent;
class QPainter;
class QStyleOptionSlider;
QT_END_NAMESPACE

// Qt 5.15's QStyle::sliderPositionFromValue() computes in 32 bits: a range
// exactly 2^31 wide divides by zero (SIGFPE) and wider ones wrap around, so
// the style draws and hit-tests handles in the wrong place. A range wider
// than INT_MAX is therefore shown to the style at half resolution (every
// value halved), which keeps each value's place on the track and the order
// of all values. Ranges up to INT_MAX wide go to the style unchanged.
namespace CMwQSliderGeometry {

// True when max - min does not fit in an int.
inline bool isWide(int minimum, int maximum)
{
    return qint64(maximum) - minimum > qint64(std::numeric_limits<int>::max());
}

// Halves the range, positions, values and steps of an option filled from a
// slider whose range is wide; leaves any other option as it is.
VEL_QT_WIDGETS_EXPORT void fitStyleOption(QStyleOptionSlider *option);

// QStyle::sliderPositionFromValue() and QStyle::sliderValueFromPosition()
// for every int range, in agreement with where the style draws a handle for
// an option passed through fitStyleOption(). Qt's own results for ranges up
// to INT_MAX wide.
VEL_QT_WIDGETS_EXPORT int positionFromValue(
    int minimum, int maximum, int value, int span, bool upsideDown);
VEL_QT_WIDGETS_EXPORT int valueFromPosition(
    int minimum, int maximum, int position, int span, bool upsideDown);

} // namespace CMwQSliderGeometry

// Exported (the header is not installed) so that tests and subclasses
// elsewhere can hand the protected constructors a private object.
class VEL_QT_WIDGETS_EXPORT CMwQSliderPrivate
{
    Q_DECLARE_PUBLIC(CMwQSlider)

public:
    CMwQSliderPrivate() = default;
    virtual ~CMwQSliderPrivate();

    static CMwQSliderPrivate *get(CMwQSlider *q) { return q->d_func(); }
    static const CMwQSliderPrivate *get(const CMwQSlider *q) { return q->d_func(); }

    // QSlider::initStyleOption() (protected) for the widgets that wrap one of
    // our sliders and hit-test on its behalf.
    void initStyleOption(QStyleOptionSlider *option) const;

    /*! Draws the regular marks, the extra marks and the labels, in that
        order, for the slider described by \a option. Shared with every
        slider that derives from CMwQSlider. */
    void drawTicks(QPainter *painter, const QStyleOptionSlider &option) const;

    // QSlider's mouse handling, for the ranges it cannot take (see
    // CMwQSliderGeometry); true when the event was handled here.
    bool widePress(QMouseEvent *e);
    bool wideMove(QMouseEvent *e);
    bool wideRelease(QMouseEvent *e);

    CMwQSlider *q_ptr = nullptr;
    TMwTickItemList tickItems;
    // Labels are blitted from images of them drawn once (see
    // drawTickLabels()); cleared, they are drawn as text every time.
    bool stampLabels = true;

private:
    int pixelToValue(int pixel) const;

    // The part pressed while this class, not QSlider, handles the mouse.
    QStyle::SubControl widePressedControl = QStyle::SC_None;
    int wideClickOffset = 0;

    void drawTickMarks(QPainter *painter, const QStyleOptionSlider &opt) const;
    void drawTickLabels(QPainter *painter, const QStyleOptionSlider &opt) const;

    // The tick labels laid out and placed, kept from one paint to the next:
    // laying the texts out took most of a labelled paint. Everything the layout
    // depends on is part of the key, so any change of the list, font,
    // resolution, direction, range, size or style lays them out again.
    struct TickLabelCache
    {
        struct Label
        {
            QSharedPointer<QTextLayout> layout;
            QRect rect; // where the text is drawn from, before the side is chosen
            int sides = 0;
            // The label drawn on a transparent image; offset is the image's
            // corner from the pixel the text is drawn from. Made for one pen,
            // one set of render hints and one fraction of a pixel.
            struct Stamp
            {
                QImage image;
                QPoint offset;
                QRgba64 pen;
                int hints = -1;
                QPointF fraction;
                bool usable = false;
            };
            Stamp stamp;
        };
        TMwTickItemList items;
        QFont font;
        int dpiX = 0;
        int dpiY = 0;
        Qt::LayoutDirection direction = Qt::LeftToRight;
        int minimum = 0;
        int maximum = 0;
        int half = 0;
        int available = 0;
        bool valid = false;
        QVector<Label> labels;
        // The marks and every label's stamp on a few pictures, blitted in
        // turn, for one set of marks, groove, pair of pens and render hints;
        // not usable when a label is drawn as text.
        struct Layer
        {
            QVector<QImage> images;
            QVector<QPoint> corners;
            QVector<QLine> lines;
            QRgba64 markPen;
            bool labelled = false;
            int grooveTop = 0;
            int grooveBottom = 0;
            QRgba64 pen;
            int hints = -1;
            bool built = false;
            bool usable = false;
        };
        Layer layer;
    };
    bool canStamp(const QPainter *painter) const;
    // The label's stamp for painter, made if need be, and in corner the
    // place of its image; null when the label is to be drawn as text.
    const TickLabelCache::Label::Stamp *stampFor(const QPainter *painter,
        TickLabelCache::Label &label, const QRect &r, Qt::LayoutDirection direction,
        QPoint *corner) const;
    void drawStamped(QPainter *painter, TickLabelCache::Label &label, const QRect &r,
        Qt::LayoutDirection direction) const;
    // Draws marks and labels from the layer, made if need be; false when
    // they are to be drawn one by one.
    bool drawTickLayer(QPainter *painter, const QStyleOptionSlider &opt) const;
    void buildTickLayer(const QPainter *painter, const QStyleOptionSlider &opt, const QRect &groove,
        const QVector<QLine> &lines, bool labelled) const;
    const TickLabelCache &tickLabels(
        const QPainter *painter, const QStyleOptionSlider &option, int half, int available) const;
    mutable TickLabelCache tickLabelCache;
};

#endif // VEL_QT_WIDGETS_CMWQSLIDER_P_H
