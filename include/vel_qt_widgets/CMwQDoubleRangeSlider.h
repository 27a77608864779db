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
    Q_PROPERTY(double minimum READ minimum WRITE setMinimum)
    Q_PROPERTY(double maximum READ maximum WRITE setMaximum)
    Q_PROPERTY(double singleStep READ singleStep WRITE setSingleStep)
    Q_PROPERTY(double minimumValue READ minimumValue WRITE setMinimumValue)
    Q_PROPERTY(double maximumValue READ maximumValue WRITE setMaximumValue)
    Q_PROPERTY(double minimumPosition READ minimumPosition WRITE setMinimumPosition)
    Q_PROPERTY(double maximumPosition READ maximumPosition WRITE setMaximumPosition)
    Q_PROPERTY(bool tracking READ hasTracking WRITE setTracking)
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    Q_PROPERTY(double tickInterval READ tickInterval WRITE setTickInterval)
    Q_PROPERTY(QSlider::TickPosition tickPosition READ tickPosition WRITE setTickPosition)
    // Qualified: the plain name TMwTickItemList is the integer list of CMwQSlider.
    Q_PROPERTY(CMwQDoubleSlider::TMwTickItemList tickItemList READ tickItemList WRITE setTickItemList)
    Q_PROPERTY(bool symmetricMoves READ symmetricMoves WRITE setSymmetricMoves)
    Q_PROPERTY(QString handleToolTip READ handleToolTip WRITE setHandleToolTip)

public:
    /*! The same item as the double slider's, so one list serves both. */
    typedef CMwQDoubleSlider::SMwTickItem SMwTickItem;
    typedef CMwQDoubleSlider::TMwTickItemList TMwTickItemList;

    explicit CMwQDoubleRangeSlider(QWidget *parent = nullptr);
    explicit CMwQDoubleRangeSlider(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwQDoubleRangeSlider() override;

    double minimum() const;
    void setMinimum(double minimum);
    double maximum() const;
    void setMaximum(double maximum);
    /*! Sets the range in public units; the ends may come in either order. */
    void setRange(double minimum, double maximum);

    /*! Size of one integer unit of the inner slider, in slider units. */
    double singleStep() const;
    /*! Changes the step if isValidStep(); otherwise warns and changes nothing.
        Emits no signal. */
    void setSingleStep(double step);
    /*! True if \a step may become singleStep() for the current range. */
    bool isValidStep(double step) const;

    double minimumValue() const;
    double maximumValue() const;

    double minimumPosition() const;
    double maximumPosition() const;
    void setMinimumPosition(double position);
    void setMaximumPosition(double position);
    void setPositions(double minPosition, double maxPosition);

    bool hasTracking() const;
    void setTracking(bool enable);

    Qt::Orientation orientation() const;
    void setOrientation(Qt::Orientation orientation);

    /*! Regular tick interval in slider units (not mapped through the proxy). */
    double tickInterval() const;
    void setTickInterval(double interval);

    QSlider::TickPosition tickPosition() const;
    void setTickPosition(QSlider::TickPosition position);

    TMwTickItemList tickItemList() const;
    /*! Stores \a list (public units) and hands the inner slider its integer
        form, mapped through the value proxy. */
    void setTickItemList(const TMwTickItemList &list);

    /*! Forwarded to the inner slider (so it is lost when setSlider() replaces it). */
    bool symmetricMoves() const;
    void setSymmetricMoves(bool symmetric);

    /*! Tool tip template shown over either handle; %1 is that handle's value
        in public units. The widget's own setting: it survives setSlider(). */
    QString handleToolTip() const;
    void setHandleToolTip(const QString &toolTip);

    void triggerAction(QAbstractSlider::SliderAction action);

    CMwQValueProxy *valueProxy() const;
    /*! Converts through \a proxy from now on, keeping the public range, values
        and ticks. The proxy is not owned; when it is destroyed, every mapping
        becomes the identity again and nothing is re-applied. */
    void setValueProxy(CMwQValueProxy *proxy);

    bool eventFilter(QObject *watched, QEvent *event) override;

public Q_SLOTS:
    /*! Sets the lower value; the upper one gives way. */
    void setMinimumValue(double minVal);
    /*! Sets the upper value; the lower one gives way. */
    void setMaximumValue(double maxVal);
    /*! Sets both values (in either order), clamped into the range. */
    void setValues(double minVal, double maxVal);

Q_SIGNALS:
    void minimumValueChanged(double minVal);
    void maximumValueChanged(double maxVal);
    void valuesChanged(double minVal, double maxVal);
    void minimumPositionChanged(double minPos);
    void maximumPositionChanged(double maxPos);
    void positionsChanged(double minPos, double maxPos);
    void sliderPressed();
    void sliderReleased();
    void rangeChanged(double min, double max);

protected Q_SLOTS:
    void onValuesChanged(int min, int max);
    void onMinPosChanged(int value);
    void onMaxPosChanged(int value);
    void onPositionsChanged(int min, int max);
    void onRangeChanged(int min, int max);
    void onValueProxyAboutToBeModified();
    void onValueProxyModified();

protected:
    CMwQDoubleRangeSlider(CMwQDoubleRangeSliderPrivate *d, QWidget *parent);
    CMwQDoubleRangeSlider(CMwQDoubleRangeSliderPrivate *d, Qt::Orientation orientation,
                          QWidget *parent);

    /*! The inner integer range slider. */
    CMwQRangeSlider *slider() const;
    /*! Replaces the inner slider by \a newSlider (taking ownership) and deletes
        the old one. Orientation, range, values, single step, tracking, tick
        interval and tick position are copied; the old slider's handle tool
        tip and symmetric-move setting are not. */
    void setSlider(CMwQRangeSlider *newSlider);

    // Named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwQDoubleRangeSliderPrivate> d_vel;

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwQDoubleRangeSlider)
    Q_DISABLE_COPY(CMwQDoubleRangeSlider)
};

#endif // VEL_QT_WIDGETS_CMWQDOUBLERANGESLIDER_H
