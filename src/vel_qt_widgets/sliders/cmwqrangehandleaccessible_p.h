#ifndef VEL_QT_WIDGETS_CMWQRANGEHANDLEACCESSIBLE_P_H
#define VEL_QT_WIDGETS_CMWQRANGEHANDLEACCESSIBLE_P_H

#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtGui/QAccessible>
#include <QtWidgets/QWidget>

// One handle of a range slider (integer or floating-point).
class CMwQRangeHandleAccessible : public QAccessibleInterface, public QAccessibleValueInterface
{
public:
    CMwQRangeHandleAccessible(QWidget *slider, int child);

    bool isValid() const override;
    QObject *object() const override;
    QWindow *window() const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text t, const QString &text) override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant &value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    // The lowest or highest value the handle can take, in public values.
    QVariant valueBound(bool highestBound) const;

    QPointer<QWidget> m_slider;
    int m_child;
};

#endif // VEL_QT_WIDGETS_CMWQRANGEHANDLEACCESSIBLE_P_H
