#ifndef VEL_QT_WIDGETS_CMWQRANGESLIDERACCESSIBLE_P_H
#define VEL_QT_WIDGETS_CMWQRANGESLIDERACCESSIBLE_P_H

#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

// A range slider or floating-point range slider: a group of two handles.
class CMwQRangeSliderAccessible : public QAccessibleWidget
{
public:
    explicit CMwQRangeSliderAccessible(QWidget *slider);
    ~CMwQRangeSliderAccessible() override;

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;

private:
    mutable QAccessible::Id m_children[2] = {0, 0};
};

#endif // VEL_QT_WIDGETS_CMWQRANGESLIDERACCESSIBLE_P_H
