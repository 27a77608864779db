#ifndef VEL_QT_WIDGETS_CMWSORTFILTERPROXYMODEL_P_H
#define VEL_QT_WIDGETS_CMWSORTFILTERPROXYMODEL_P_H

#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include <QtCore/QPointer>

class VEL_QT_WIDGETS_EXPORT CMwSortFilterProxyModelPrivate
{
    Q_DECLARE_PUBLIC(CMwSortFilterProxyModel)

public:
    explicit CMwSortFilterProxyModelPrivate(CMwSortFilterProxyModel *q);
    virtual ~CMwSortFilterProxyModelPrivate();

    // What evaluation needs of a condition, decided once in setFilterRows
    // from the same static text tables the conditions are compared with.
    struct Compiled
    {
        bool isAnd = false;
        int comparator = -1; // VelFilterTexts::Comparator, -1 for an unknown text
    };

    void connectSource(QAbstractItemModel *model);
    void disconnectSource(QAbstractItemModel *model);
    void resolveColumns() const;
    // The condition fold over one source row, with the columns resolved.
    bool acceptsRow(const QAbstractItemModel *source, int row, const QModelIndex &parent) const;

    CMwSortFilterProxyModel *q_ptr;
    QVector<CMwSortFilterProxyModel::FilterCondition> conditions;
    QVector<Compiled> compiled;

    // Source columns of the conditions, looked up by header text once per
    // filter pass and again whenever the source's headers or columns change.
    mutable QVector<int> columns;
    mutable bool columnsValid = false;
    mutable const QAbstractItemModel *columnsModel = nullptr;
    QPointer<QAbstractItemModel> connectedSource;
};

#endif // VEL_QT_WIDGETS_CMWSORTFILTERPROXYMODEL_P_H
