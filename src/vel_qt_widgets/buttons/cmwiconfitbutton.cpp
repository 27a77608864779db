#include <vel_qt_widgets/CMwIconFitButton.h>

CMwIconFitButton::CMwIconFitButton(QWidget *parent)
    : QPushButton(parent)
{
}

CMwIconFitButton::CMwIconFitButton(const QIcon &icon, QWidget *parent)
    : QPushButton(icon, QString(), parent)
{
}

CMwIconFitButton::~CMwIconFitButton() = default;
