#ifndef VEL_QT_WIDGETS_CMWSIZEDPUSHBUTTONMD_H
#define VEL_QT_WIDGETS_CMWSIZEDPUSHBUTTONMD_H

#include "vel_qt_widgets_export.h"

#include <QtWidgets/QPushButton>

/*!
    \brief A medium-sized QPushButton, told apart by its class name; the size
    itself comes from the style sheet.
*/
class VEL_QT_WIDGETS_EXPORT CMwSizedPushButtonMd : public QPushButton
{
    Q_OBJECT

public:
    /*! A button without text. */
    explicit CMwSizedPushButtonMd(QWidget *parent = nullptr);
    /*! A button showing \a icon and \a text. */
    CMwSizedPushButtonMd(const QIcon &icon, const QString &text, QWidget *parent);
    ~CMwSizedPushButtonMd() override;

private:
    Q_DISABLE_COPY(CMwSizedPushButtonMd)
};

#endif // VEL_QT_WIDGETS_CMWSIZEDPUSHBUTTONMD_H
