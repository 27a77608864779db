#include <vel_qt_widgets/CMwSizedPushButtonMd.h>

CMwSizedPushButtonMd::CMwSizedPushButtonMd(QWidget *parent)
    : QPushButton(parent)
{
}

CMwSizedPushButtonMd::CMwSizedPushButtonMd(const QIcon &icon, const QString &text, QWidget *parent)
    : QPushButton(icon, text, parent)
{
}

CMwSizedPushButtonMd::~CMwSizedPushButtonMd() = default;
