#include <vel_qt_widgets/CMwTextPushButton.h>

CMwTextPushButton::CMwTextPushButton(QWidget *parent)
    : QPushButton(parent)
{
}

CMwTextPushButton::CMwTextPushButton(const QString &text, QWidget *parent)
    : QPushButton(text, parent)
{
}

CMwTextPushButton::CMwTextPushButton(const QIcon &icon, const QString &text, QWidget *parent)
    : QPushButton(icon, text, parent)
{
}

CMwTextPushButton::~CMwTextPushButton() = default;
