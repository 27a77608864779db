#ifndef VEL_QT_WIDGETS_CMWICONFITBUTTON_H
#define VEL_QT_WIDGETS_CMWICONFITBUTTON_H

#include "vel_qt_widgets_export.h"

#include <QtWidgets/QPushButton>

/*!
    \brief A QPushButton showing only an icon, told apart by its class name
    (style sheets give it its size, for instance
    "CMwIconFitButton { qproperty-iconSize: 24px; }").
*/
class VEL_QT_WIDGETS_EXPORT CMwIconFitButton : public QPushButton
{
    Q_OBJECT

public:
    /*! A button without icon. */
    explicit CMwIconFitButton(QWidget *parent = nullptr);
    /*! A button with \a icon and an empty text. */
    CMwIconFitButton(const QIcon &icon, QWidget *parent);
    ~CMwIconFitButton() override;

private:
    Q_DISABLE_COPY(CMwIconFitButton)
};

#endif // VEL_QT_WIDGETS_CMWICONFITBUTTON_H
