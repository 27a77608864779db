#ifndef VEL_QT_WIDGETS_CMWQDOUBLESLIDER_P_H
#define VEL_QT_WIDGETS_CMWQDOUBLESLIDER_P_H

#include "cmwqstepmappedslider_p.h"

#include <vel_qt_widgets/CMwQDoubleSlider.h>

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

class VEL_QT_WIDGETS_EXPORT CMwQDoubleSliderPrivate : public CMwQStepMappedSliderPrivate
{
    Q_DECLARE_PUBLIC(CMwQDoubleSlider)

public:
    CMwQDoubleSliderPrivate();
    ~CMwQDoubleSliderPrivate() override;

    static CMwQDoubleSliderPrivate *get(CMwQDoubleSlider *q) { return q->d_func(); }
    static const CMwQDoubleSliderPrivate *get(const CMwQDoubleSlider *q) { return q->d_func(); }

    void init();

    // The step mapping with this slider's one offset.
    using CMwQStepMappedSliderPrivate::safeFromInteger;
    double safeFromInteger(int i) const;
    void updateOffset(double v);

    CMwQSlider *slider = nullptr;
    double offset = 0.0;
    double pageStep = 10.0;
    double value = 0.0;

    // Extra tick marks in public units.
    CMwQDoubleSlider::TMwTickItemList tickItems;

    void rebuildTickItems() override;

protected:
    CMwQSlider *innerSlider() const override;
    void applyPublicRange(double min, double max) override;
    void followRange() override;
    void saveValues() override;
    void reapplyValues() override;
};

#endif // VEL_QT_WIDGETS_CMWQDOUBLESLIDER_P_H
