#ifndef VEL_QT_WIDGETS_CMWQWIDGET_H
#define VEL_QT_WIDGETS_CMWQWIDGET_H

#include "vel_qt_widgets_export.h"

#include <QtWidgets/QWidget>

QT_BEGIN_NAMESPACE
class QWidgetPrivate;
QT_END_NAMESPACE

/*!
    \brief A plain QWidget with a class name of its own.

    It adds no behaviour: it exists so that style sheets can address it with
    a type selector and so that Designer lists it as a widget of its own. It
    paints nothing itself; like any QWidget subclass it shows a style-sheet
    background only with Qt::WA_StyledBackground (or autoFillBackground).

    \code
    auto *panel = new CMwQWidget;
    panel->setAttribute(Qt::WA_StyledBackground);
    app.setStyleSheet("CMwQWidget { background: #202830; }");
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwQWidget : public QWidget
{
    Q_OBJECT

public:
    /*! The same as QWidget(parent, f). */
    explicit CMwQWidget(QWidget *parent = nullptr, Qt::WindowFlags f = Qt::WindowFlags());
    ~CMwQWidget() override;

protected:
    /*! For subclasses built on Qt's private-data classes; \a dd is Qt's own
        QWidgetPrivate, handed on to QWidget's protected constructor. */
    CMwQWidget(QWidgetPrivate &dd, QWidget *parent, Qt::WindowFlags f);

private:
    Q_DISABLE_COPY(CMwQWidget)
};

#endif // VEL_QT_WIDGETS_CMWQWIDGET_H
