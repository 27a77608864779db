#ifndef VEL_QT_WIDGETS_CMWQDOUBLERANGESLIDER_P_H
#define VEL_QT_WIDGETS_CMWQDOUBLERANGESLIDER_P_H

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQValueProxy.h>

#include <QtCore/QPair>
#include <QtCore/QPointer>

class CMwQDoubleRangeSliderPrivate
{
    Q_DECLARE_PUBLIC(CMwQDoubleRangeSlider)

public:
    CMwQDoubleRangeSliderPrivate() = default;
    virtual ~CMwQDoubleRangeSliderPrivate();

    void init();
    void connectSlider();

    // The step mapping with this slider's step; each handle brings its offset.
    int toInteger(double v) const;
    double fromInteger(int i, double offset) const;
    double safeFromInteger(int i, double offset) const;
    double offsetFor(double v) const;
    /*! Both handles' values (slider units) for the integers \a lower and \a upper. */
    QPair<double, double> handleValues(int lower, int upper) const;

    double toSliderUnits(double value) const;
    double toValue(double sliderUnits) const;

    void rebuildTickItems();

    CMwQDoubleRangeSlider *q_ptr = nullptr;
    CMwQRangeSlider *slider = nullptr;
    double minimum = 0.0;
    double maximum = 100.0;
    bool settingRange = false;
    double minimumOffset = 0.0;
    double maximumOffset = 0.0;
    double singleStep = 1.0;
    double minimumValue = 0.0;
    double maximumValue = 100.0;
    CMwQDoubleRangeSlider::TMwTickItemList tickItems;
    QPointer<CMwQValueProxy> valueProxy;
    QString handleToolTip;
};

#endif // VEL_QT_WIDGETS_CMWQDOUBLERANGESLIDER_P_H
