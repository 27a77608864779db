#ifndef VEL_QT_WIDGETS_CMWQSLIDERACCESSIBLE_P_H
#define VEL_QT_WIDGETS_CMWQSLIDERACCESSIBLE_P_H

#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtGui/QAccessible>
#include <QtGui/QAccessibleObject>
#include <QtWidgets/QAccessibleWidget>

class CMwQRangeSlider;

// What the sliders tell assistive technology. A range slider is a group of
// two sliders, one per handle; a floating-point slider speaks in its double
// values. The integer slider inside a floating-point slider is no element of
// its own: its interface only forwards to the outer widget's, so that focus
// and value events Qt sends for it reach the element the user sees.
namespace CMwQSliderAccessibility {

// Registers the interface factory with QAccessible (once per application).
void install();

// Child indices of the two handles.
enum { LowerHandleChild = 0, UpperHandleChild = 1 };

// True when \a slider is the inner slider of a floating-point range slider.
bool isInnerRangeSlider(const CMwQRangeSlider *slider);

// A focus event for the handle \a child of a range slider (or of the
// floating-point range slider around it).
void handleFocused(CMwQRangeSlider *slider, int child);
// The same for the focused handle, once the focus event that Qt sends for
// the widget itself is out, so that the handle's comes last.
void focusedHandleLater(CMwQRangeSlider *slider);

// Value-change events for the handles of a range slider or a floating-point
// range slider; nothing for an inner slider, whose outer widget reports.
void rangeValuesChanged(QWidget *slider, bool lower, bool upper);
// A value-change event for a floating-point slider.
void valueChanged(QWidget *doubleSlider);

} // namespace CMwQSliderAccessibility

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

#endif // VEL_QT_WIDGETS_CMWQSLIDERACCESSIBLE_P_H
