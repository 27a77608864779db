#include "velconnectshape_p.h"

#include <QtCore/QAbstractItemModel>

namespace {

void connectAll(const QAbstractItemModel *model, const char *const (&signalList)[8],
    const QObject *receiver, const char *slot)
{
    if (!model || !receiver)
        return;
    for (const char *signal : signalList)
        QObject::connect(model, signal, receiver, slot);
}

} // namespace

void velConnectShapeChanged(
    const QAbstractItemModel *model, const QObject *receiver, const char *slot)
{
    static const char *const signalList[8] = {
        SIGNAL(modelReset()),
        SIGNAL(layoutChanged(QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint)),
        SIGNAL(rowsInserted(QModelIndex, int, int)),
        SIGNAL(rowsRemoved(QModelIndex, int, int)),
        SIGNAL(rowsMoved(QModelIndex, int, int, QModelIndex, int)),
        SIGNAL(columnsInserted(QModelIndex, int, int)),
        SIGNAL(columnsRemoved(QModelIndex, int, int)),
        SIGNAL(columnsMoved(QModelIndex, int, int, QModelIndex, int)),
    };
    connectAll(model, signalList, receiver, slot);
}

void velConnectShapeAboutToChange(
    const QAbstractItemModel *model, const QObject *receiver, const char *slot)
{
    static const char *const signalList[8] = {
        SIGNAL(modelAboutToBeReset()),
        SIGNAL(layoutAboutToBeChanged(
            QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint)),
        SIGNAL(rowsAboutToBeInserted(QModelIndex, int, int)),
        SIGNAL(rowsAboutToBeRemoved(QModelIndex, int, int)),
        SIGNAL(rowsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int)),
        SIGNAL(columnsAboutToBeInserted(QModelIndex, int, int)),
        SIGNAL(columnsAboutToBeRemoved(QModelIndex, int, int)),
        SIGNAL(columnsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int)),
    };
    connectAll(model, signalList, receiver, slot);
}
