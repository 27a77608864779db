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
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged USER true)
    Q_PROPERTY(double sliderPosition READ sliderPosition WRITE setSliderPosition)
    Q_PROPERTY(double singleStep READ singleStep WRITE setSingleStep)
    Q_PROPERTY(double pageStep READ pageStep WRITE setPageStep)
    Q_PROPERTY(double minimum READ minimum WRITE setMinimum)
    Q_PROPERTY(double maximum READ maximum WRITE setMaximum)
    Q_PROPERTY(double tickInterval READ tickInterval WRITE setTickInterval)
    Q_PROPERTY(QSlider::TickPosition tickPosition READ tickPosition WRITE setTickPosition)
    Q_PROPERTY(bool tracking READ hasTracking WRITE setTracking)
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation)
    // Qualified: the plain name TMwTickItemList is the integer list of CMwQSlider.
    Q_PROPERTY(CMwQDoubleSlider::TMwTickItemList tickItemList READ tickItemList WRITE setTickItemList)
    Q_PROPERTY(QString handleToolTip READ handleToolTip WRITE setHandleToolTip)
    Q_PROPERTY(bool invertedAppearance READ invertedAppearance WRITE setInvertedAppearance)
    Q_PROPERTY(bool invertedControls READ invertedControls WRITE setInvertedControls)

public:
    /*! One extra tick mark, at a value in public units. */
    struct SMwTickItem
    {
        double value = 0.0; //!< value at which the mark stands (public units)
        /*! Side(s) of the mark; QSlider::NoTicks keeps the item but never draws it. */
        QSlider::TickPosition tickPosition = QSlider::NoTicks;
        QString text; //!< label; empty means no label

        bool operator==(const SMwTickItem &other) const
        {
            return value == other.value && tickPosition == other.tickPosition && text == other.text;
        }
        bool operator!=(const SMwTickItem &other) const { return !(*this == other); }
    };
    typedef QList<SMwTickItem> TMwTickItemList;

    explicit CMwQDoubleSlider(QWidget *parent = nullptr);
    explicit CMwQDoubleSlider(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwQDoubleSlider() override;

    double value() const;

    /*! Position of the handle, in public units. */
    double sliderPosition() const;
    /*! Moves the handle to \a position (public units), unclamped beyond the
        inner slider's own bounds. */
    void setSliderPosition(double position);

    /*! Size of one integer unit of the inner slider, in slider units. */
    double singleStep() const;
    /*! Changes the step if isValidStep(); otherwise warns and changes nothing.
        Emits no signal. */
    void setSingleStep(double step);

    double pageStep() const;
    /*! Page step in slider units (not mapped through the proxy). */
    void setPageStep(double step);

    double minimum() const;
    void setMinimum(double minimum);
    double maximum() const;
    void setMaximum(double maximum);
    /*! Sets the range in public units; the ends may come in either order. */
    void setRange(double minimum, double maximum);

    /*! Regular tick interval in slider units (not mapped through the proxy). */
    double tickInterval() const;
    void setTickInterval(double interval);

    QSlider::TickPosition tickPosition() const;
    void setTickPosition(QSlider::TickPosition position);

    bool hasTracking() const;
    void setTracking(bool enable);

    Qt::Orientation orientation() const;

    TMwTickItemList tickItemList() const;
    /*! Stores \a list (public units) and hands the inner slider its integer
        form, mapped through the value proxy. */
    void setTickItemList(const TMwTickItemList &list);

    /*! Tool tip template shown over the handle; %1 is value(). */
    QString handleToolTip() const;
    void setHandleToolTip(const QString &toolTip);

    bool invertedAppearance() const;
    void setInvertedAppearance(bool inverted);
    bool invertedControls() const;
    void setInvertedControls(bool inverted);

    /*! True if \a step may become singleStep() for the current range. */
    bool isValidStep(double step) const;

    void triggerAction(QAbstractSlider::SliderAction action);

    /*! The inner integer slider. */
    CMwQSlider *slider() const;

    CMwQValueProxy *valueProxy() const;
    /*! Converts through \a proxy from now on, keeping the public range, value
        and ticks. The proxy is not owned; when it is destroyed, every mapping
        becomes the identity again and nothing is re-applied. */
    void setValueProxy(CMwQValueProxy *proxy);

    bool eventFilter(QObject *watched, QEvent *event) override;

public Q_SLOTS:
    void setValue(double value);
    void setOrientation(Qt::Orientation orientation);

Q_SIGNALS:
    /*! The value changed (public units). */
    void valueChanged(double value);
    /*! The handle was dragged; \a position is in slider (proxy) units. */
    void sliderMoved(double position);
    void sliderPressed();
    void sliderReleased();
    /*! The range changed (public units). */
    void rangeChanged(double min, double max);

protected Q_SLOTS:
    void onValueChanged(int value);
    void onSliderMoved(int position);
    void onRangeChanged(int min, int max);
    void onValueProxyAboutToBeModified();
    void onValueProxyModified();

protected:
    CMwQDoubleSlider(CMwQDoubleSliderPrivate *d, QWidget *parent);
    CMwQDoubleSlider(CMwQDoubleSliderPrivate *d, Qt::Orientation orientation, QWidget *parent);

    // Named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwQDoubleSliderPrivate> d_vel;

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwQDoubleSlider)
    Q_DISABLE_COPY(CMwQDoubleSlider)
};

VEL_QT_WIDGETS_EXPORT QDataStream &operator<<(QDataStream &out, const CMwQDoubleSlider::SMwTickItem &item);
VEL_QT_WIDGETS_EXPORT QDataStream &operator>>(QDataStream &in, CMwQDoubleSlider::SMwTickItem &item);

Q_DECLARE_METATYPE(CMwQDoubleSlider::SMwTickItem)
Q_DECLARE_METATYPE(CMwQDoubleSlider::TMwTickItemList)

#endif // VEL_QT_WIDGETS_CMWQDOUBLESLIDER_H
