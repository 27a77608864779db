#ifndef VEL_QT_WIDGETS_CMWFILTERWIDGET_P_H
#define VEL_QT_WIDGETS_CMWFILTERWIDGET_P_H

#include <vel_qt_widgets/CMwFilterWidget.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include <QtCore/QPointer>

class CMwFilterKeyNavigator;

class VEL_QT_WIDGETS_EXPORT CMwFilterWidgetPrivate
{
    Q_DECLARE_PUBLIC(CMwFilterWidget)

public:
    explicit CMwFilterWidgetPrivate(CMwFilterWidget *q);
    virtual ~CMwFilterWidgetPrivate();

    CMwFilterWidget *q_ptr;
    QPointer<CMwSortFilterProxyModel> m_refModel;
    QVector<QVector<QVariant>> m_lastFilter;
    bool m_bActive = false;
    // Tab walk through the cells; owned by the widget.
    CMwFilterKeyNavigator *navigator = nullptr;
};

#endif // VEL_QT_WIDGETS_CMWFILTERWIDGET_P_H
