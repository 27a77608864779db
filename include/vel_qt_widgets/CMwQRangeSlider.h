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
    /*! The committed value of the lower handle. */
    Q_PROPERTY(int minimumValue READ minimumValue WRITE setMinimumValue NOTIFY minimumValueChanged)
    /*! The committed value of the upper handle. */
    Q_PROPERTY(int maximumValue READ maximumValue WRITE setMaximumValue NOTIFY maximumValueChanged)
    /*! Where the lower handle is drawn; differs from minimumValue only while
        a handle is dragged with tracking off. */
    Q_PROPERTY(int minimumPosition READ minimumPosition WRITE setMinimumPosition NOTIFY
            minimumPositionChanged)
    /*! Where the upper handle is drawn; see minimumPosition. */
    Q_PROPERTY(int maximumPosition READ maximumPosition WRITE setMaximumPosition NOTIFY
            maximumPositionChanged)
    /*! Whether dragging one handle moves the other the opposite way. */
    Q_PROPERTY(bool symmetricMoves READ symmetricMoves WRITE setSymmetricMoves)
    /*! Tool tip template shown over a handle; %1 is that handle's value.
        Empty (the default) shows the widget's ordinary tool tip. */
    Q_PROPERTY(QString handleToolTip READ handleToolTip WRITE setHandleToolTip)

public:
    /*! A vertical range slider whose handles sit at both ends of the range. */
    explicit CMwQRangeSlider(QWidget *parent = nullptr);
    /*! A range slider in \a orientation whose handles sit at both ends of the range. */
    explicit CMwQRangeSlider(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwQRangeSlider() override;

    /*! The lower handle's value. */
    int minimumValue() const;
    /*! The upper handle's value. */
    int maximumValue() const;

    /*! The lower handle's drawn position. */
    int minimumPosition() const;
    /*! The upper handle's drawn position. */
    int maximumPosition() const;
    /*! Moves the lower handle's drawn position; the upper one gives way. */
    void setMinimumPosition(int min);
    /*! Moves the upper handle's drawn position; the lower one gives way. */
    void setMaximumPosition(int max);
    /*! Sets both positions (in either order), clamped into the range. */
    void setPositions(int min, int max);

    /*! When on, dragging one handle moves the other the opposite way. */
    bool symmetricMoves() const;
    /*! Switches symmetric moves on or off (default off). */
    void setSymmetricMoves(bool symmetric);

    /*! Tool tip template shown over a handle; %1 is the handle's value. */
    QString handleToolTip() const;
    /*! Sets the handle tool tip template; see handleToolTip(). */
    void setHandleToolTip(const QString &toolTip);

    /*! Whether the lower handle is being dragged (also during a groove drag). */
    bool isMinimumSliderDown() const;
    /*! Whether the upper handle is being dragged (also during a groove drag). */
    bool isMaximumSliderDown() const;

public Q_SLOTS:
    /*! Sets the lower value; the upper one gives way. */
    void setMinimumValue(int min);
    /*! Sets the upper value; the lower one gives way. */
    void setMaximumValue(int max);
    /*! Sets both values (in either order), clamped into the range. */
    void setValues(int min, int max);

Q_SIGNALS:
    /*! The lower value changed; emitted after valuesChanged(). */
    void minimumValueChanged(int min);
    /*! The upper value changed; emitted after minimumValueChanged(). */
    void maximumValueChanged(int max);
    /*! One or both values changed; emitted before the single-value signals. */
    void valuesChanged(int min, int max);
    /*! The lower handle's drawn position changed. */
    void minimumPositionChanged(int min);
    /*! The upper handle's drawn position changed. */
    void maximumPositionChanged(int max);
    /*! One or both drawn positions changed. From setPositions() and drags it
        follows the single-position signals; from setValues() during a drag
        it comes first. */
    void positionsChanged(int min, int max);

protected Q_SLOTS:
    /*! Clamps both values into the slider's new range (through setValues()). */
    void onRangeChanged(int minimum, int maximum);

protected:
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwQRangeSlider(CMwQRangeSliderPrivate *d, QWidget *parent);
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwQRangeSlider(CMwQRangeSliderPrivate *d, Qt::Orientation orientation, QWidget *parent);

    /*! Fills the style option of the lower handle; override to style it apart. */
    virtual void initMinimumSliderStyleOption(QStyleOptionSlider *option) const;
    /*! Fills the style option of the upper handle; override to style it apart. */
    virtual void initMaximumSliderStyleOption(QStyleOptionSlider *option) const;

    /*! Reimplemented to grab the handle under the press, or both handles on
        the groove between them; any other press is ignored. */
    void mousePressEvent(QMouseEvent *e) override;
    /*! Reimplemented to drag the grabbed handle(s). */
    void mouseMoveEvent(QMouseEvent *e) override;
    /*! Reimplemented to release the handle(s). */
    void mouseReleaseEvent(QMouseEvent *e) override;
    /*! Reimplemented to draw the groove, the ticks and both handles. */
    void paintEvent(QPaintEvent *e) override;
    /*! Reimplemented to show handleToolTip() over a handle. */
    bool event(QEvent *e) override;

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwQRangeSlider)
    Q_DISABLE_COPY(CMwQRangeSlider)
};

#endif // VEL_QT_WIDGETS_CMWQRANGESLIDER_H
