#ifndef VEL_QT_WIDGETS_CMWQDOUBLESLIDERACCESSIBLE_P_H
#define VEL_QT_WIDGETS_CMWQDOUBLESLIDERACCESSIBLE_P_H

#include <QtCore/QVariant>
#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

// A floating-point slider: one slider element in double values.
class CMwQDoubleSliderAccessible : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit CMwQDoubleSliderAccessible(QWidget *slider);

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QString text(QAccessible::Text t) const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant &value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;
};

#endif // VEL_QT_WIDGETS_CMWQDOUBLESLIDERACCESSIBLE_P_H
