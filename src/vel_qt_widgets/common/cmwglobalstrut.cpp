// Qt 5.15 marks the global strut deprecated, and the whole tree hides what
// 5.15 deprecated; the slider's size hint still honours an application's
// strut in the Qt 5 build, so this one file sees the 5.14 API.
#include <QtCore/qglobal.h>
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#undef QT_DISABLE_DEPRECATED_BEFORE
#define QT_DISABLE_DEPRECATED_BEFORE 0x050E00
#endif

#include "cmwglobalstrut_p.h"

#include <QtWidgets/QApplication>

QSize velGlobalStrut()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return QApplication::globalStrut();
    QT_WARNING_POP
#else
    return QSize();
#endif
}
