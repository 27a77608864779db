#ifndef VEL_QT_WIDGETS_CMWQDOUBLESLIDER_H
#define VEL_QT_WIDGETS_CMWQDOUBLESLIDER_H

#include "CMwQSlider.h"

#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QScopedPointer>
#include <QtCore/QString>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QSlider>
#include <QtWidgets/QWidget>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

class CMwQDoubleSliderPrivate;
class CMwQValueProxy;

/*!
    \file CMwQDoubleSlider.h
    \brief The floating-point slider CMwQDoubleSlider, its tick item record
    and the stream operators that let tick lists be stored as properties.
*/

/*!
    \brief A slider over floating-point values.

    The widget owns an integer slider (slider()) and maps its double range,
    steps, value, tick interval and tick items onto it, one integer unit per
    singleStep(). A value between two steps is kept exactly: the fractional
    part is remembered and added back when the integer slider reports it.

    With a value proxy (setValueProxy()), the inner slider moves linearly in
    proxy units while value(), minimum(), maximum() and the tick items stay in
    values; sliderMoved() alone reports slider (proxy) units.

    NaN is never accepted: setters given a NaN, or a value that the proxy maps
    to NaN, warn and change nothing. Infinite values and positions are clamped
    to the range like any other value out of range; infinite range ends, steps
    and tick intervals are rejected with a warning.

    \code
    CMwQDoubleSlider slider(Qt::Horizontal);
    slider.setRange(0.0, 1.0);
    slider.setSingleStep(0.25);
    slider.setValue(0.3); // the handle stands on 0.25; value() is 0.3
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwQDoubleSlider : public QWidget
{
    Q_OBJECT
    /*! The value, in public units (through the value proxy, if any). */
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged USER true)
    /*! Where the handle is drawn, in public units. */
    Q_PROPERTY(double sliderPosition READ sliderPosition WRITE setSliderPosition)
    /*! The size of one integer step of the inner slider, in slider units. */
    Q_PROPERTY(double singleStep READ singleStep WRITE setSingleStep)
    /*! The page step, in slider units. */
    Q_PROPERTY(double pageStep READ pageStep WRITE setPageStep)
    /*! The lower end of the range, in public units. */
    Q_PROPERTY(double minimum READ minimum WRITE setMinimum)
    /*! The upper end of the range, in public units. */
    Q_PROPERTY(double maximum READ maximum WRITE setMaximum)
    /*! The interval of the regular tick marks, in slider units. */
    Q_PROPERTY(double tickInterval READ tickInterval WRITE setTickInterval)
    /*! The side(s) of the regular tick marks, as QSlider::tickPosition. */
    Q_PROPERTY(QSlider::TickPosition tickPosition READ tickPosition WRITE setTickPosition)
    /*! Whether the value follows the handle while it is dragged, as QAbstractSlider::tracking. */
    Q_PROPERTY(bool tracking READ hasTracking WRITE setTracking)
    /*! The orientation of the inner slider. */
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    // Qualified: the plain name TMwTickItemList is the integer list of CMwQSlider.
    /*! The extra tick items, in public units. */
    Q_PROPERTY(
        CMwQDoubleSlider::TMwTickItemList tickItemList READ tickItemList WRITE setTickItemList)
    /*! Tool tip template shown over the handle; %1 is value(). */
    Q_PROPERTY(QString handleToolTip READ handleToolTip WRITE setHandleToolTip)
    /*! As QAbstractSlider::invertedAppearance of the inner slider. */
    Q_PROPERTY(bool invertedAppearance READ invertedAppearance WRITE setInvertedAppearance)
    /*! As QAbstractSlider::invertedControls of the inner slider. */
    Q_PROPERTY(bool invertedControls READ invertedControls WRITE setInvertedControls)

public:
    /*! One extra tick mark, at a value in public units. */
    struct SMwTickItem
    {
        double value = 0.0; //!< value at which the mark stands (public units)
        /*! Side(s) of the mark; QSlider::NoTicks keeps the item but never draws it. */
        QSlider::TickPosition tickPosition = QSlider::NoTicks;
        QString text; //!< label; empty means no label

        /*! Items are equal when value, sides and text are. */
        bool operator==(const SMwTickItem &other) const
        {
            return value == other.value && tickPosition == other.tickPosition && text == other.text;
        }
        /*! The negation of operator==(). */
        bool operator!=(const SMwTickItem &other) const { return !(*this == other); }
    };
    /*! The list of extra tick items, registered as a meta-type. */
    typedef QList<SMwTickItem> TMwTickItemList;

    /*! A slider with the inner slider's default (vertical) orientation. */
    explicit CMwQDoubleSlider(QWidget *parent = nullptr);
    /*! A slider in \a orientation with its inner integer slider. */
    explicit CMwQDoubleSlider(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwQDoubleSlider() override;

    /*! The value, in public units. */
    double value() const;

    /*! Position of the handle, in public units. */
    double sliderPosition() const;
    /*! Moves the handle to \a position (public units), unclamped beyond the
        inner slider's own bounds. */
    void setSliderPosition(double position);

    /*! Size of one integer unit of the inner slider, in slider units. */
    double singleStep() const;
    /*! Changes the step if isValidStep() and \a step is finite; otherwise
        warns and changes nothing. Emits no signal.

        On an empty range any finite step is taken, zero and negative ones
        too. Such a step cannot divide: until a positive step is set, the
        inner slider stands on 0 and cannot move, while the values are still
        kept (as doubles, clamped into the range) when the range widens. */
    void setSingleStep(double step);

    /*! The page step, in slider units. */
    double pageStep() const;
    /*! Page step in slider units (not mapped through the proxy). */
    void setPageStep(double step);

    /*! The lower end of the range, in public units. */
    double minimum() const;
    /*! Sets the lower end; the upper end follows if it lay below. */
    void setMinimum(double minimum);
    /*! The upper end of the range, in public units. */
    double maximum() const;
    /*! Sets the upper end; the lower end follows if it lay above. */
    void setMaximum(double maximum);
    /*! Sets the range in public units; the ends may come in either order. */
    void setRange(double min, double max);

    /*! Regular tick interval in slider units (not mapped through the proxy). */
    double tickInterval() const;
    /*! Sets the regular tick interval, in slider units. */
    void setTickInterval(double interval);

    /*! The side(s) of the regular tick marks. */
    QSlider::TickPosition tickPosition() const;
    /*! Sets the side(s) of the regular tick marks. */
    void setTickPosition(QSlider::TickPosition position);

    /*! Whether the value follows the handle while it is dragged. */
    bool hasTracking() const;
    /*! Switches tracking on or off, as QAbstractSlider::setTracking(). */
    void setTracking(bool enable);

    /*! The orientation of the inner slider. */
    Qt::Orientation orientation() const;

    /*! The extra tick items, in public units. */
    TMwTickItemList tickItemList() const;
    /*! Stores \a list (public units) and hands the inner slider its integer
        form, mapped through the value proxy. */
    void setTickItemList(const TMwTickItemList &list);

    /*! Tool tip template shown over the handle; %1 is value(). */
    QString handleToolTip() const;
    /*! Sets the handle tool tip template; see handleToolTip(). */
    void setHandleToolTip(const QString &toolTip);

    /*! Whether the inner slider is drawn inverted. */
    bool invertedAppearance() const;
    /*! Draws the inner slider inverted, as QAbstractSlider::setInvertedAppearance(). */
    void setInvertedAppearance(bool inverted);
    /*! Whether wheel and keys act inverted. */
    bool invertedControls() const;
    /*! Inverts wheel and keys, as QAbstractSlider::setInvertedControls(). */
    void setInvertedControls(bool inverted);

    /*! True if \a step may become singleStep() for the current range: always
        on an empty range, otherwise when it lies between the larger of
        maximum / DBL_MAX and DBL_EPSILON and the smaller of the range's width
        and INT_MAX. */
    bool isValidStep(double step) const;

    /*! Triggers \a action on the inner slider, as QAbstractSlider::triggerAction(). */
    void triggerAction(QAbstractSlider::SliderAction action);

    /*! The inner integer slider. */
    CMwQSlider *slider() const;

    /*! The value proxy, or null (also after it was destroyed). */
    CMwQValueProxy *valueProxy() const;
    /*! Converts through \a proxy from now on, keeping the public range, value
        and ticks. The proxy is not owned; when it is destroyed, every mapping
        becomes the identity again and nothing is re-applied. */
    void setValueProxy(CMwQValueProxy *proxy);

    /*! Shows handleToolTip() when a tool tip is asked for over the inner
        slider's handle. */
    bool eventFilter(QObject *watched, QEvent *event) override;

public Q_SLOTS:
    /*! Sets the value (public units), clamped into the range; NaN is refused with a warning. */
    void setValue(double value);
    /*! Turns the inner slider; a size policy left at its default turns with it. */
    void setOrientation(Qt::Orientation orientation);

Q_SIGNALS:
    /*! The value changed (public units). */
    void valueChanged(double value);
    /*! The handle was dragged; \a position is in slider (proxy) units. */
    void sliderMoved(double position);
    /*! The inner slider's handle was pressed. */
    void sliderPressed();
    /*! The inner slider's handle was released. */
    void sliderReleased();
    /*! The range changed (public units). */
    void rangeChanged(double min, double max);

protected Q_SLOTS:
    /*! The inner slider's value changed: emits valueChanged() in public units if it moved. */
    void onValueChanged(int value);
    /*! The inner slider was dragged: emits sliderMoved() in slider units. */
    void onSliderMoved(int position);
    /*! The inner slider's range changed from outside: follows it in public
        units, or puts it back (with a warning) when no finite range matches. */
    void onRangeChanged(int min, int max);
    /*! The value proxy is about to change: remembers value and range. */
    void onValueProxyAboutToBeModified();
    /*! The value proxy changed: restores value, range and ticks silently. */
    void onValueProxyModified();

protected:
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwQDoubleSlider(CMwQDoubleSliderPrivate *d, QWidget *parent);
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwQDoubleSlider(CMwQDoubleSliderPrivate *d, Qt::Orientation orientation, QWidget *parent);

    //! Private data; named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwQDoubleSliderPrivate> d_vel;

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwQDoubleSlider)
    Q_DISABLE_COPY(CMwQDoubleSlider)
};

/*! Writes \a item (value, tick position, text) to \a out. */
VEL_QT_WIDGETS_EXPORT QDataStream &operator<<(
    QDataStream &out, const CMwQDoubleSlider::SMwTickItem &item);
/*! Reads \a item as written by operator<<(). */
VEL_QT_WIDGETS_EXPORT QDataStream &operator>>(QDataStream &in, CMwQDoubleSlider::SMwTickItem &item);

Q_DECLARE_METATYPE(CMwQDoubleSlider::SMwTickItem)
Q_DECLARE_METATYPE(CMwQDoubleSlider::TMwTickItemList)

#endif // VEL_QT_WIDGETS_CMWQDOUBLESLIDER_H
