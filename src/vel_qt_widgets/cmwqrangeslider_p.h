#ifndef VEL_QT_WIDGETS_CMWQRANGESLIDER_P_H
#define VEL_QT_WIDGETS_CMWQRANGESLIDER_P_H

#include "cmwqslider_p.h"

#include <vel_qt_widgets/CMwQRangeSlider.h>

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
};

Q_DECLARE_OPERATORS_FOR_FLAGS(CMwQRangeSliderPrivate::Handles)

#endif // VEL_QT_WIDGETS_CMWQRANGESLIDER_P_H
