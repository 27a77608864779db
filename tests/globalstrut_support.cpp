// Qt 5.15 marks the global strut deprecated and the tree hides what 5.15
// deprecated; the slider still honours it in the Qt 5 build, so this file
// reaches the 5.14 API to set one.
#include <QtCore/qglobal.h>
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#undef QT_DISABLE_DEPRECATED_BEFORE
#define QT_DISABLE_DEPRECATED_BEFORE 0x050E00
#endif

#include "globalstrut_support.h"

#include <QtWidgets/QApplication>

bool setGlobalStrutForTest(const QSize &strut)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    QApplication::setGlobalStrut(strut);
    QT_WARNING_POP
    return true;
#else
    Q_UNUSED(strut);
    return false;
#endif
}
