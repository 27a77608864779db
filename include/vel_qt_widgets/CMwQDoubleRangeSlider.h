#ifndef VEL_QT_WIDGETS_CMWQDOUBLERANGESLIDER_H
#define VEL_QT_WIDGETS_CMWQDOUBLERANGESLIDER_H

#include "CMwQDoubleSlider.h"

class CMwQDoubleRangeSliderPrivate;
class CMwQRangeSlider;
class CMwQValueProxy;

/*!
    \brief A two-handle range slider over floating-point values.

    The widget owns an integer range slider and maps its double range, single
    step, two values and two positions onto it, one integer unit per
    singleStep(), keeping the fractional part of each handle apart. Like
    CMwQDoubleSlider it accepts a value proxy; unlike it, every signal
    (positions included) speaks in public units.

    valuesChanged() comes before minimumValueChanged() and
    maximumValueChanged(). NaN is never accepted (a warning, and nothing
    changes); infinite values and positions are clamped to the range, infinite
    range ends and steps are rejected with a warning.

    \code
    CMwQDoubleRangeSlider slider(Qt::Horizontal);
    slider.setRange(0.0, 1.0);
    slider.setSingleStep(0.25);
    slider.setValues(0.3, 0.7); // read back as 0.3 and 0.7
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwQDoubleRangeSlider : public QWidget
{
    Q_OBJECT
    /*! The lower end of the range, in public units. */
    Q_PROPERTY(double minimum READ minimum WRITE setMinimum)
    /*! The upper end of the range, in public units. */
    Q_PROPERTY(double maximum READ maximum WRITE setMaximum)
    /*! The size of one integer step of the inner slider, in slider units. */
    Q_PROPERTY(double singleStep READ singleStep WRITE setSingleStep)
    /*! The lower handle's value, in public units. */
    Q_PROPERTY(double minimumValue READ minimumValue WRITE setMinimumValue)
    /*! The upper handle's value, in public units. */
    Q_PROPERTY(double maximumValue READ maximumValue WRITE setMaximumValue)
    /*! Where the lower handle is drawn, in public units. */
    Q_PROPERTY(double minimumPosition READ minimumPosition WRITE setMinimumPosition)
    /*! Where the upper handle is drawn, in public units. */
    Q_PROPERTY(double maximumPosition READ maximumPosition WRITE setMaximumPosition)
    /*! Whether the values follow the handles while they are dragged. */
    Q_PROPERTY(bool tracking READ hasTracking WRITE setTracking)
    /*! The orientation of the inner slider. */
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    /*! The interval of the regular tick marks, in slider units. */
    Q_PROPERTY(double tickInterval READ tickInterval WRITE setTickInterval)
    /*! The side(s) of the regular tick marks. */
    Q_PROPERTY(QSlider::TickPosition tickPosition READ tickPosition WRITE setTickPosition)
    // Qualified: the plain name TMwTickItemList is the integer list of CMwQSlider.
    /*! The extra tick items, in public units. */
    Q_PROPERTY(
        CMwQDoubleSlider::TMwTickItemList tickItemList READ tickItemList WRITE setTickItemList)
    /*! Whether dragging one handle moves the other the opposite way. */
    Q_PROPERTY(bool symmetricMoves READ symmetricMoves WRITE setSymmetricMoves)
    /*! Tool tip template shown over either handle; %1 is that handle's value. */
    Q_PROPERTY(QString handleToolTip READ handleToolTip WRITE setHandleToolTip)

public:
    /*! The same item as the double slider's, so one list serves both. */
    typedef CMwQDoubleSlider::SMwTickItem SMwTickItem;
    /*! The same list as the double slider's. */
    typedef CMwQDoubleSlider::TMwTickItemList TMwTickItemList;

    /*! A range slider with the inner slider's default (vertical) orientation. */
    explicit CMwQDoubleRangeSlider(QWidget *parent = nullptr);
    /*! A range slider in \a orientation with its inner integer range slider. */
    explicit CMwQDoubleRangeSlider(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwQDoubleRangeSlider() override;

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

    /*! Size of one integer unit of the inner slider, in slider units. */
    double singleStep() const;
    /*! Changes the step if isValidStep() and \a step is finite; otherwise
        warns and changes nothing. Emits no signal.

        On an empty range any finite step is taken, zero and negative ones
        too. Such a step cannot divide: until a positive step is set, the
        inner slider stands on 0 and cannot move, while the values are still
        kept (as doubles, clamped into the range) when the range widens. */
    void setSingleStep(double step);
    /*! True if \a step may become singleStep() for the current range: always
        on an empty range, otherwise when it lies between the larger of
        maximum / DBL_MAX and DBL_EPSILON and the smaller of the range's width
        and INT_MAX. */
    bool isValidStep(double step) const;

    /*! The lower handle's value, in public units. */
    double minimumValue() const;
    /*! The upper handle's value, in public units. */
    double maximumValue() const;

    /*! The lower handle's drawn position, in public units. */
    double minimumPosition() const;
    /*! The upper handle's drawn position, in public units. */
    double maximumPosition() const;
    /*! Moves the lower handle's drawn position; NaN is refused with a warning. */
    void setMinimumPosition(double position);
    /*! Moves the upper handle's drawn position; NaN is refused with a warning. */
    void setMaximumPosition(double position);
    /*! Moves both drawn positions; NaN is refused with a warning. */
    void setPositions(double minPosition, double maxPosition);

    /*! Whether the values follow the handles while they are dragged. */
    bool hasTracking() const;
    /*! Switches tracking on or off. */
    void setTracking(bool enable);

    /*! The orientation of the inner slider. */
    Qt::Orientation orientation() const;
    /*! Turns the inner slider. */
    void setOrientation(Qt::Orientation orientation);

    /*! Regular tick interval in slider units (not mapped through the proxy). */
    double tickInterval() const;
    /*! Sets the regular tick interval, in slider units. */
    void setTickInterval(double interval);

    /*! The side(s) of the regular tick marks. */
    QSlider::TickPosition tickPosition() const;
    /*! Sets the side(s) of the regular tick marks. */
    void setTickPosition(QSlider::TickPosition position);

    /*! The extra tick items, in public units. */
    TMwTickItemList tickItemList() const;
    /*! Stores \a list (public units) and hands the inner slider its integer
        form, mapped through the value proxy. */
    void setTickItemList(const TMwTickItemList &list);

    /*! Forwarded to the inner slider (so it is lost when setSlider() replaces it). */
    bool symmetricMoves() const;
    /*! Switches symmetric moves of the inner slider on or off. */
    void setSymmetricMoves(bool symmetric);

    /*! Tool tip template shown over either handle; %1 is that handle's value
        in public units. The widget's own setting: it survives setSlider(). */
    QString handleToolTip() const;
    /*! Sets the handle tool tip template; see handleToolTip(). */
    void setHandleToolTip(const QString &toolTip);

    /*! Triggers \a action on the inner slider, as QAbstractSlider::triggerAction(). */
    void triggerAction(QAbstractSlider::SliderAction action);

    /*! The value proxy, or null (also after it was destroyed). */
    CMwQValueProxy *valueProxy() const;
    /*! Converts through \a proxy from now on, keeping the public range, values
        and ticks. The proxy is not owned; when it is destroyed, every mapping
        becomes the identity again and nothing is re-applied. */
    void setValueProxy(CMwQValueProxy *proxy);

    /*! Shows handleToolTip() when a tool tip is asked for over a handle of
        the inner slider. */
    bool eventFilter(QObject *watched, QEvent *event) override;

public Q_SLOTS:
    /*! Sets the lower value; the upper one gives way. */
    void setMinimumValue(double minVal);
    /*! Sets the upper value; the lower one gives way. */
    void setMaximumValue(double maxVal);
    /*! Sets both values (in either order), clamped into the range. */
    void setValues(double minVal, double maxVal);

Q_SIGNALS:
    /*! The lower value changed; emitted after valuesChanged(). */
    void minimumValueChanged(double minVal);
    /*! The upper value changed; emitted after minimumValueChanged(). */
    void maximumValueChanged(double maxVal);
    /*! One or both values changed; emitted before the single-value signals. */
    void valuesChanged(double minVal, double maxVal);
    /*! The lower handle's drawn position changed (public units). */
    void minimumPositionChanged(double minPos);
    /*! The upper handle's drawn position changed (public units). */
    void maximumPositionChanged(double maxPos);
    /*! One or both drawn positions changed (public units). */
    void positionsChanged(double minPos, double maxPos);
    /*! A handle (or the groove between them) of the inner slider was pressed. */
    void sliderPressed();
    /*! The inner slider's handle(s) were released. */
    void sliderReleased();
    /*! The range changed (public units). */
    void rangeChanged(double min, double max);

protected Q_SLOTS:
    /*! The inner values changed: emits the value signals in public units if they moved. */
    void onValuesChanged(int min, int max);
    /*! The inner lower position changed: emits minimumPositionChanged(). */
    void onMinPosChanged(int value);
    /*! The inner upper position changed: emits maximumPositionChanged(). */
    void onMaxPosChanged(int value);
    /*! The inner positions changed: emits positionsChanged(). */
    void onPositionsChanged(int min, int max);
    /*! The inner slider's range changed from outside: follows it in public
        units, or puts it back (with a warning) when no finite range matches. */
    void onRangeChanged(int min, int max);
    /*! The value proxy is about to change: remembers values and range. */
    void onValueProxyAboutToBeModified();
    /*! The value proxy changed: restores values, range and ticks silently. */
    void onValueProxyModified();

protected:
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwQDoubleRangeSlider(CMwQDoubleRangeSliderPrivate *d, QWidget *parent);
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwQDoubleRangeSlider(
        CMwQDoubleRangeSliderPrivate *d, Qt::Orientation orientation, QWidget *parent);

    /*! The inner integer range slider. */
    CMwQRangeSlider *slider() const;
    /*! Replaces the inner slider by \a newSlider (taking ownership) and deletes
        the old one. Orientation, range, values, single step, tracking, tick
        interval and tick position are copied; the old slider's handle tool
        tip and symmetric-move setting are not. */
    void setSlider(CMwQRangeSlider *newSlider);

    //! Private data; named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwQDoubleRangeSliderPrivate> d_vel;

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwQDoubleRangeSlider)
    Q_DISABLE_COPY(CMwQDoubleRangeSlider)
};

#endif // VEL_QT_WIDGETS_CMWQDOUBLERANGESLIDER_H
