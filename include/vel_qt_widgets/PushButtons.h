#ifndef VEL_QT_WIDGETS_PUSHBUTTONS_H
#define VEL_QT_WIDGETS_PUSHBUTTONS_H

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
    explicit CMwTextPushButton(QWidget *parent = nullptr);
    CMwTextPushButton(const QString &text, QWidget *parent);
    CMwTextPushButton(const QIcon &icon, const QString &text, QWidget *parent);
    ~CMwTextPushButton() override;

private:
    Q_DISABLE_COPY(CMwTextPushButton)
};

/*!
    \brief A QPushButton showing only an icon, told apart by its class name
    (style sheets give it its size, for instance
    "CMwIconFitButton { qproperty-iconSize: 24px; }").
*/
class VEL_QT_WIDGETS_EXPORT CMwIconFitButton : public QPushButton
{
    Q_OBJECT

public:
    explicit CMwIconFitButton(QWidget *parent = nullptr);
    /*! A button with \a icon and an empty text. */
    CMwIconFitButton(const QIcon &icon, QWidget *parent);
    ~CMwIconFitButton() override;

private:
    Q_DISABLE_COPY(CMwIconFitButton)
};

/*!
    \brief A medium-sized QPushButton, told apart by its class name; the size
    itself comes from the style sheet.
*/
class VEL_QT_WIDGETS_EXPORT CMwSizedPushButtonMd : public QPushButton
{
    Q_OBJECT

public:
    explicit CMwSizedPushButtonMd(QWidget *parent = nullptr);
    CMwSizedPushButtonMd(const QIcon &icon, const QString &text, QWidget *parent);
    ~CMwSizedPushButtonMd() override;

private:
    Q_DISABLE_COPY(CMwSizedPushButtonMd)
};

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
    Q_PROPERTY(
        EPickerDirection direction READ direction WRITE setDirection DESIGNABLE true STORED true)

public:
    // The fixed underlying type makes every int a valid value, so values
    // outside the four names, which the property system lets through, are
    // well defined (they draw nothing visible).
    enum EPickerDirection : int { eDown = 0, eUp = 1, eLeft = 2, eRight = 3 };
    Q_ENUM(EPickerDirection)

    explicit CMwPickerPushButton(QWidget *parent = nullptr);
    ~CMwPickerPushButton() override;

    EPickerDirection direction() const;
    /*! Stores \a direction unchecked and repaints. */
    void setDirection(EPickerDirection direction);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    EPickerDirection m_direction;

    Q_DISABLE_COPY(CMwPickerPushButton)
};

#endif // VEL_QT_WIDGETS_PUSHBUTTONS_H
