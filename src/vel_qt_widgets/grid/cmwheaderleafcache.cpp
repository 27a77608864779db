#include "cmwheaderleafcache_p.h"

#include "velconnectshape_p.h"

#include <QtCore/QAbstractItemModel>

CMwHeaderLeafCache::CMwHeaderLeafCache(QObject *parent)
    : QObject(parent)
{
}

void CMwHeaderLeafCache::watch(QAbstractItemModel *model)
{
    if (m_watched != model) {
        if (m_watched)
            disconnect(m_watched, nullptr, this, nullptr);
        m_watched = model;
        if (model) {
            // Any change of shape can move leaves between sections.
            connect(model, SIGNAL(destroyed()), this, SLOT(invalidate()));
            velConnectShapeChanged(model, this, SLOT(invalidate()));
        }
    }
    invalidate();
}

void CMwHeaderLeafCache::invalidate()
{
    valid = false;
    leaves.clear();
    spans.clear();
    m_builtFor = nullptr;
    m_sectionCount = -1;
}

void CMwHeaderLeafCache::ensure(const QAbstractItemModel *model, int sectionCount)
{
    if (valid && m_builtFor == model && m_sectionCount == sectionCount)
        return;
    invalidate();
    if (model) {
        const int top = model->columnCount();
        for (int i = 0; i < top; ++i)
            collect(model, model->index(0, i));
    }
    m_builtFor = model;
    m_sectionCount = sectionCount;
    valid = true;
}

void CMwHeaderLeafCache::collect(const QAbstractItemModel *model, const QModelIndex &cell)
{
    if (!cell.isValid())
        return;
    const int children = model->columnCount(cell);
    if (children == 0) {
        leaves.append(cell);
        return;
    }
    Span span;
    span.firstLeaf = leaves.size();
    for (int i = 0; i < children; ++i)
        collect(model, model->index(0, i, cell));
    span.leafCount = leaves.size() - span.firstLeaf;
    spans.insert(cell, span);
}
