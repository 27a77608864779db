#ifndef VEL_QT_WIDGETS_CMWHEADERLEAFCACHE_P_H
#define VEL_QT_WIDGETS_CMWHEADERLEAFCACHE_P_H

#include <vel_qt_widgets/vel_qt_widgets_export.h>

#include <QtCore/QHash>
#include <QtCore/QModelIndex>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QVector>

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
QT_END_NAMESPACE

/*!
    The leaves of a header model in section order, with the range of
    sections under every inner cell, built in one walk and kept until the
    header model changes shape or the header's section count changes.

    Without it every section would walk the header tree from the start,
    which makes painting and resizing to contents quadratic in the number
    of columns.
*/
class VEL_QT_WIDGETS_EXPORT CMwHeaderLeafCache : public QObject
{
    Q_OBJECT

public:
    explicit CMwHeaderLeafCache(QObject *parent = nullptr);

    /*! Watches \a model for changes of shape; drops what was cached. */
    void watch(QAbstractItemModel *model);
    /*! Builds the table for \a model unless it is current for \a sectionCount. */
    void ensure(const QAbstractItemModel *model, int sectionCount);

    // Range of leaves under an inner cell; a leaf has none (count 0).
    struct Span
    {
        int firstLeaf = 0;
        int leafCount = 0;
    };

    QVector<QModelIndex> leaves; // leaf of section k at position k
    QHash<QModelIndex, Span> spans; // every inner cell met on the walk
    bool valid = false;

public Q_SLOTS:
    void invalidate();

private:
    void collect(const QAbstractItemModel *model, const QModelIndex &cell);

    QPointer<QAbstractItemModel> m_watched;
    const QAbstractItemModel *m_builtFor = nullptr;
    int m_sectionCount = -1;
};

#endif // VEL_QT_WIDGETS_CMWHEADERLEAFCACHE_P_H
