#include <vel_qt_widgets/CMwVHeaderViewModel.h>

#include "velconnectshape_p.h"

#include <vel_qt_widgets/CMwGridRoles.h>

#include <QtCore/QPointer>

class CMwVHeaderViewModel::Private
{
public:
    QPointer<QAbstractItemModel> source;
    // Between the source's "about to" signal and the one after it.
    bool resetting = false;
};

CMwVHeaderViewModel::CMwVHeaderViewModel(QObject *parent)
    : QAbstractTableModel(parent)
    , d(new Private)
{
}

CMwVHeaderViewModel::~CMwVHeaderViewModel() = default;

void CMwVHeaderViewModel::setSourceModel(QAbstractItemModel *model)
{
    if (d->source == model)
        return;
    beginResetModel();
    if (d->source)
        disconnect(d->source, nullptr, this, nullptr);
    d->source = model;
    if (model) {
        // The visible row count may change with any change of the source's
        // shape, and nothing tells by how much: every such change resets.
        velConnectShapeAboutToChange(model, this, SLOT(onSourceAboutToChange()));
        velConnectShapeChanged(model, this, SLOT(onSourceChanged()));
        connect(model, SIGNAL(headerDataChanged(Qt::Orientation, int, int)), this,
            SLOT(onSourceHeaderDataChanged(Qt::Orientation)));
        connect(model, SIGNAL(destroyed()), this, SLOT(onSourceAboutToChange()));
        connect(model, SIGNAL(destroyed()), this, SLOT(onSourceChanged()));
    }
    endResetModel();
}

QAbstractItemModel *CMwVHeaderViewModel::sourceModel() const { return d->source.data(); }

int CMwVHeaderViewModel::rowCount(const QModelIndex &parent) const
{
    // A table: indexes of this model have no children.
    if (!d->source || parent.isValid())
        return 0;
    return qMax(0, d->source->headerData(0, Qt::Vertical, VisibleRowCountRole).toInt());
}

int CMwVHeaderViewModel::columnCount(const QModelIndex &parent) const
{
    if (!d->source || parent.isValid())
        return 0;
    return d->source->columnCount();
}

QVariant CMwVHeaderViewModel::data(const QModelIndex &index, int role) const
{
    if (!d->source || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return QVariant();
    return d->source->index(index.row(), index.column()).data(role);
}

QVariant CMwVHeaderViewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (!d->source)
        return QVariant();
    return d->source->headerData(section, orientation, role);
}

void CMwVHeaderViewModel::onSourceAboutToChange()
{
    if (d->resetting)
        return;
    d->resetting = true;
    beginResetModel();
}

void CMwVHeaderViewModel::onSourceChanged()
{
    if (!d->resetting)
        return;
    d->resetting = false;
    endResetModel();
}

void CMwVHeaderViewModel::onSourceHeaderDataChanged(Qt::Orientation orientation)
{
    if (orientation != Qt::Vertical || d->resetting)
        return;
    // The count may already be different; only a reset may say so.
    beginResetModel();
    endResetModel();
}
