#ifndef VEL_QT_WIDGETS_CMWTEXTPUSHBUTTON_H
#define VEL_QT_WIDGETS_CMWTEXTPUSHBUTTON_H

#include "vel_qt_widgets_export.h"

#include <QtWidgets/QPushButton>

/*!
    \brief A QPushButton for text, told apart by its class name.

    Sizes, fonts and colours come from style sheets that address the class:
    \code
    app.setStyleSheet("CMwTextPushButton { padding: 2px 12px; }");
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwTextPushButton : public QPushButton
{
    Q_OBJECT

public:
    /*! A button without text. */
    explicit CMwTextPushButton(QWidget *parent = nullptr);
    /*! A button showing \a text. */
    CMwTextPushButton(const QString &text, QWidget *parent);
    /*! A button showing \a icon and \a text. */
    CMwTextPushButton(const QIcon &icon, const QString &text, QWidget *parent);
    ~CMwTextPushButton() override;

private:
    Q_DISABLE_COPY(CMwTextPushButton)
};

#endif // VEL_QT_WIDGETS_CMWTEXTPUSHBUTTON_H
