#ifndef VEL_QT_WIDGETS_CMWPICKERFORTABLE_P_H
#define VEL_QT_WIDGETS_CMWPICKERFORTABLE_P_H

#include <vel_qt_widgets/CMwPickerForTable.h>

#include <QtCore/QString>
#include <QtGui/QIcon>

class VEL_QT_WIDGETS_EXPORT CMwPickerForTablePrivate
{
    Q_DECLARE_PUBLIC(CMwPickerForTable)

public:
    explicit CMwPickerForTablePrivate(CMwPickerForTable *q);
    virtual ~CMwPickerForTablePrivate();

    CMwPickerForTable *q_ptr;
    QIcon m_icon; // beside the "<select>" placeholder
    QString m_text; // caller's placeholder; empty means "<select>"
    // The accessible description this picker set itself (the placeholder);
    // one the application set is left alone.
    QString ownDescription;

    // Describes the placeholder to assistive technology while nothing is chosen.
    void updateDescription();
};

#endif // VEL_QT_WIDGETS_CMWPICKERFORTABLE_P_H
