#ifndef VEL_QT_WIDGETS_CMWQINNERSLIDERACCESSIBLE_P_H
#define VEL_QT_WIDGETS_CMWQINNERSLIDERACCESSIBLE_P_H

#include <QtCore/QPointer>
#include <QtGui/QAccessible>
#include <QtGui/QAccessibleObject>
#include <QtWidgets/QWidget>

// The integer slider inside a floating-point slider: everything is the outer
// widget's interface, except for the object it belongs to.
class CMwQInnerSliderAccessible : public QAccessibleObject
{
public:
    CMwQInnerSliderAccessible(QWidget *inner, QWidget *outer);

    bool isValid() const override;
    QWindow *window() const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *focusChild() const override;
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text t, const QString &text) override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

private:
    QAccessibleInterface *outer() const;

    QPointer<QWidget> m_outer;
};

#endif // VEL_QT_WIDGETS_CMWQINNERSLIDERACCESSIBLE_P_H
