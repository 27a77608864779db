#ifndef VEL_QT_WIDGETS_CMWQDOUBLERANGESLIDER_P_H
#define VEL_QT_WIDGETS_CMWQDOUBLERANGESLIDER_P_H

#include "cmwqstepmappedslider_p.h"

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtCore/QPair>

class VEL_QT_WIDGETS_EXPORT CMwQDoubleRangeSliderPrivate : public CMwQStepMappedSliderPrivate
{
    Q_DECLARE_PUBLIC(CMwQDoubleRangeSlider)

public:
    CMwQDoubleRangeSliderPrivate();
    ~CMwQDoubleRangeSliderPrivate() override;

    static CMwQDoubleRangeSliderPrivate *get(CMwQDoubleRangeSlider *q) { return q->d_func(); }
    static const CMwQDoubleRangeSliderPrivate *get(const CMwQDoubleRangeSlider *q)
    {
        return q->d_func();
    }

    void init();
    void connectSlider();

    enum Handle { LowerHandle, UpperHandle };

    /*! Both handles' values (slider units) for the integers \a lower and \a upper. */
    QPair<double, double> handleValues(int lower, int upper) const;
    // setMinimumValue() and setMaximumValue(), one the mirror image of the other.
    void setHandleValue(Handle handle, double value);
    void setHandlePosition(Handle handle, double position);
    // valuesChanged(), then the single sides that changed.
    void announceValues(bool lowerChanged, bool upperChanged);

    CMwQRangeSlider *slider = nullptr;
    double minimumOffset = 0.0;
    double maximumOffset = 0.0;
    double minimumValue = 0.0;
    double maximumValue = 100.0;

    // Extra tick marks in public units.
    CMwQDoubleRangeSlider::TMwTickItemList tickItems;

    void rebuildTickItems() override;

protected:
    CMwQSlider *innerSlider() const override;
    void applyPublicRange(double min, double max) override;
    void followRange() override;
    void saveValues() override;
    void reapplyValues() override;
};

#endif // VEL_QT_WIDGETS_CMWQDOUBLERANGESLIDER_P_H
