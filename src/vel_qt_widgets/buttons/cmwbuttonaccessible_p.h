#ifndef VEL_QT_WIDGETS_CMWBUTTONACCESSIBLE_P_H
#define VEL_QT_WIDGETS_CMWBUTTONACCESSIBLE_P_H

#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

QT_BEGIN_NAMESPACE
class QAbstractButton;
QT_END_NAMESPACE

// What assistive technology sees of the library's push buttons: Qt's button
// description, with a name also for a button that shows only an icon (its
// tool tip, when no accessible name is set).
class CMwButtonAccessible : public QAccessibleWidget
{
public:
    explicit CMwButtonAccessible(QWidget *button);

    QString text(QAccessible::Text t) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString &actionName) override;
    QStringList keyBindingsForAction(const QString &actionName) const override;

private:
    QAbstractButton *button() const;
};

#endif // VEL_QT_WIDGETS_CMWBUTTONACCESSIBLE_P_H
