#ifndef VEL_QT_WIDGETS_CMWQFLOWLAYOUTWIDGET_H
#define VEL_QT_WIDGETS_CMWQFLOWLAYOUTWIDGET_H

#include "vel_qt_widgets_export.h"

#include <QtWidgets/QWidget>

#include <memory>

QT_BEGIN_NAMESPACE
class QWidgetPrivate;
QT_END_NAMESPACE

/*!
    \brief A plain widget that owns one CMwQFlowLayout.

    The margin, hSpacing and vSpacing properties are stored and read back,
    so that forms keep them, but they are deliberately not passed on to the
    layout: changing them relayouts nothing. The layout cannot be replaced
    through setLayout().

    \code
    CMwQFlowLayoutWidget box;
    box.layout()->addWidget(new QLabel("one"));
    box.layout()->addWidget(new QLabel("two"));
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwQFlowLayoutWidget : public QWidget
{
    Q_OBJECT
    /*! Margin kept for forms; not applied to the layout. */
    Q_PROPERTY(int margin READ margin WRITE setMargin DESIGNABLE true SCRIPTABLE true STORED true)
    /*! Horizontal spacing kept for forms; not applied to the layout. */
    Q_PROPERTY(
        int hSpacing READ hSpacing WRITE setHSpacing DESIGNABLE true SCRIPTABLE true STORED true)
    /*! Vertical spacing kept for forms; not applied to the layout. */
    Q_PROPERTY(
        int vSpacing READ vSpacing WRITE setVSpacing DESIGNABLE true SCRIPTABLE true STORED true)

public:
    /*! A widget with a flow layout whose margins and spacings come from the style. */
    explicit CMwQFlowLayoutWidget(QWidget *parent = nullptr, Qt::WindowFlags f = Qt::WindowFlags());
    /*! The private-data form of the QWidget constructor, for subclasses built
        on Qt's private classes; \a dd is Qt's own QWidgetPrivate, handed on
        to QWidget's protected constructor. */
    CMwQFlowLayoutWidget(QWidgetPrivate &dd, QWidget *parent, Qt::WindowFlags f);
    ~CMwQFlowLayoutWidget() override;

    /*! Does nothing: the flow layout stays installed, and \a layout stays
        with the caller (it is neither adopted nor deleted). */
    void setLayout(QLayout *layout);

    /*! The stored margin (-1 by default). */
    int margin() const;
    /*! Stores \a margin; the layout is not changed. */
    void setMargin(int margin);
    /*! The stored horizontal spacing (-1 by default). */
    int hSpacing() const;
    /*! Stores \a spacing; the layout is not changed. */
    void setHSpacing(int spacing);
    /*! The stored vertical spacing (-1 by default). */
    int vSpacing() const;
    /*! Stores \a spacing; the layout is not changed. */
    void setVSpacing(int spacing);

private:
    // Forbids copying; defined like the other constructors nevertheless.
    explicit CMwQFlowLayoutWidget(const QWidget &other);
    void installFlowLayout();

    class Private;
    const std::unique_ptr<Private> d;

    Q_DISABLE_COPY(CMwQFlowLayoutWidget)
};

#endif // VEL_QT_WIDGETS_CMWQFLOWLAYOUTWIDGET_H
