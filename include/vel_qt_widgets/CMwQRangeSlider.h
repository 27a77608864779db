#ifndef VEL_QT_WIDGETS_CMWQRANGESLIDER_H
#define VEL_QT_WIDGETS_CMWQRANGESLIDER_H

#include "CMwQSlider.h"

class CMwQRangeSliderPrivate;

/*!
    \brief An integer slider with two handles selecting the sub-range
    [minimumValue(), maximumValue()] of the slider's range.

    Each handle has a value (committed) and a position (where it is drawn
    while dragged); with tracking on, both are kept equal. A press on the
    groove between the handles drags both, keeping their distance.

    \code
    CMwQRangeSlider slider(Qt::Horizontal);
    slider.setRange(0, 99);
    slider.setValues(20, 70);
    slider.setHandleToolTip(QStringLiteral("Value: %1"));
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwQRangeSlider : public CMwQSlider
{
    Q_OBJECT
    Q_PROPERTY(int minimumValue READ minimumValue WRITE setMinimumValue NOTIFY minimumValueChanged)
    Q_PROPERTY(int maximumValue READ maximumValue WRITE setMaximumValue NOTIFY maximumValueChanged)
    Q_PROPERTY(int minimumPosition READ minimumPosition WRITE setMinimumPosition NOTIFY minimumPositionChanged)
    Q_PROPERTY(int maximumPosition READ maximumPosition WRITE setMaximumPosition NOTIFY maximumPositionChanged)
    Q_PROPERTY(bool symmetricMoves READ symmetricMoves WRITE setSymmetricMoves)
    Q_PROPERTY(QString handleToolTip READ handleToolTip WRITE setHandleToolTip)

public:
    explicit CMwQRangeSlider(QWidget *parent = nullptr);
    explicit CMwQRangeSlider(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwQRangeSlider() override;

    int minimumValue() const;
    int maximumValue() const;

    int minimumPosition() const;
    int maximumPosition() const;
    /*! Moves the lower handle's drawn position; the upper one gives way. */
    void setMinimumPosition(int min);
    /*! Moves the upper handle's drawn position; the lower one gives way. */
    void setMaximumPosition(int max);
    /*! Sets both positions (in either order), clamped into the range. */
    void setPositions(int min, int max);

    /*! When on, dragging one handle moves the other the opposite way. */
    bool symmetricMoves() const;
    void setSymmetricMoves(bool symmetric);

    /*! Tool tip template shown over a handle; %1 is the handle's value. */
    QString handleToolTip() const;
    void setHandleToolTip(const QString &toolTip);

    bool isMinimumSliderDown() const;
    bool isMaximumSliderDown() const;

public Q_SLOTS:
    /*! Sets the lower value; the upper one gives way. */
    void setMinimumValue(int min);
    /*! Sets the upper value; the lower one gives way. */
    void setMaximumValue(int max);
    /*! Sets both values (in either order), clamped into the range. */
    void setValues(int min, int max);

Q_SIGNALS:
    void minimumValueChanged(int min);
    void maximumValueChanged(int max);
    void valuesChanged(int min, int max);
    void minimumPositionChanged(int min);
    void maximumPositionChanged(int max);
    void positionsChanged(int min, int max);

protected Q_SLOTS:
    void onRangeChanged(int minimum, int maximum);

protected:
    CMwQRangeSlider(CMwQRangeSliderPrivate *d, QWidget *parent);
    CMwQRangeSlider(CMwQRangeSliderPrivate *d, Qt::Orientation orientation, QWidget *parent);

    /*! Fills the style option of the lower handle; override to style it apart. */
    virtual void initMinimumSliderStyleOption(QStyleOptionSlider *option) const;
    /*! Fills the style option of the upper handle; override to style it apart. */
    virtual void initMaximumSliderStyleOption(QStyleOptionSlider *option) const;

    void mousePressEvent(QMouseEvent *e) override;
    void mouseMoveEvent(QMouseEvent *e) override;
    void mouseReleaseEvent(QMouseEvent *e) override;
    void paintEvent(QPaintEvent *e) override;
    bool event(QEvent *e) override;

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwQRangeSlider)
    Q_DISABLE_COPY(CMwQRangeSlider)
};

#endif // VEL_QT_WIDGETS_CMWQRANGESLIDER_H
