#ifndef VEL_QT_WIDGETS_CMWPICKERPUSHBUTTON_H
#define VEL_QT_WIDGETS_CMWPICKERPUSHBUTTON_H

#include "vel_qt_widgets_export.h"

#include <QtWidgets/QPushButton>

#include <memory>

/*!
    \brief A push button that draws a filled direction triangle near its right
    edge, in the palette's button-text colour.

    The text is kept at the left (the button's style sheet is
    "Text-align:left") so that the right part stays free for the triangle.
    The triangle fills a d x d box, d = height / 3, that starts 2 * d pixels
    left of the button's right edge and one pixel below its upper third.

    \code
    auto *button = new CMwPickerPushButton;
    button->setText("Columns");
    button->setDirection(CMwPickerPushButton::eUp);
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwPickerPushButton : public QPushButton
{
    Q_OBJECT
    /*! Where the triangle points; eDown by default. */
    Q_PROPERTY(
        EPickerDirection direction READ direction WRITE setDirection DESIGNABLE true STORED true)

public:
    // The fixed underlying type makes every int a valid value, so values
    // outside the four names, which the property system lets through, are
    // well defined (they draw nothing visible).
    /*! The direction the triangle points in. */
    enum EPickerDirection : int {
        eDown = 0, //!< pointing down
        eUp = 1, //!< pointing up
        eLeft = 2, //!< pointing left
        eRight = 3 //!< pointing right
    };
    Q_ENUM(EPickerDirection)

    /*! A button without text whose triangle points down. */
    explicit CMwPickerPushButton(QWidget *parent = nullptr);
    ~CMwPickerPushButton() override;

    /*! Where the triangle points. */
    EPickerDirection direction() const;
    /*! Stores \a direction unchecked and repaints. */
    void setDirection(EPickerDirection direction);

protected:
    /*! Reimplemented to draw the triangle over the ordinary button. */
    void paintEvent(QPaintEvent *event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;

    Q_DISABLE_COPY(CMwPickerPushButton)
};

#endif // VEL_QT_WIDGETS_CMWPICKERPUSHBUTTON_H
