#ifndef VEL_QT_WIDGETS_VELCONNECTSHAPE_P_H
#define VEL_QT_WIDGETS_VELCONNECTSHAPE_P_H

#include <QtCore/qglobal.h>

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
class QObject;
QT_END_NAMESPACE

// Connects every signal a model sends after its rows or columns may stand
// elsewhere (reset, layout change, rows or columns inserted, removed or
// moved) to \a slot of \a receiver, in the string-based form.
void velConnectShapeChanged(
    const QAbstractItemModel *model, const QObject *receiver, const char *slot);

// The same for the matching "about to" signals.
void velConnectShapeAboutToChange(
    const QAbstractItemModel *model, const QObject *receiver, const char *slot);

#endif // VEL_QT_WIDGETS_VELCONNECTSHAPE_P_H
