#ifndef VEL_QT_WIDGETS_CMWQDOUBLESLIDER_P_H
#define VEL_QT_WIDGETS_CMWQDOUBLESLIDER_P_H

#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQValueProxy.h>

#include <QtCore/QPointer>

/*!
    The integer slider inside CMwQDoubleSlider. It adds nothing to CMwQSlider;
    it exists so that the inner slider can be told apart by its class.
*/
class CMwQSliderEx : public CMwQSlider
{
    Q_OBJECT

public:
    explicit CMwQSliderEx(QWidget *parent = nullptr);
    ~CMwQSliderEx() override;
};

class CMwQDoubleSliderPrivate
{
    Q_DECLARE_PUBLIC(CMwQDoubleSlider)

public:
    CMwQDoubleSliderPrivate() = default;
    virtual ~CMwQDoubleSliderPrivate();

    void init();

    // The step mapping with this slider's step and offset.
    int toInteger(double v) const;
    double fromInteger(int i) const;
    double safeFromInteger(int i) const;
    void updateOffset(double v);

    double toSliderUnits(double value) const;
    double toValue(double sliderUnits) const;

    void rebuildTickItems();

    CMwQDoubleSlider *q_ptr = nullptr;
    CMwQSlider *slider = nullptr;
    QString handleToolTip;
    double minimum = 0.0;
    double maximum = 100.0;
    bool settingRange = false;
    double offset = 0.0;
    double singleStep = 1.0;
    double pageStep = 10.0;
    double value = 0.0;
    CMwQDoubleSlider::TMwTickItemList tickItems;
    QPointer<CMwQValueProxy> valueProxy;
};

#endif // VEL_QT_WIDGETS_CMWQDOUBLESLIDER_P_H
