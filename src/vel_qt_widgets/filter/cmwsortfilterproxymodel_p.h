#ifndef VEL_QT_WIDGETS_CMWSORTFILTERPROXYMODEL_P_H
#define VEL_QT_WIDGETS_CMWSORTFILTERPROXYMODEL_P_H

#include <vel_qt_widgets/CMwSortFilterProxyModel.h>

#include <QtCore/QPointer>

#include <vector>

class VEL_QT_WIDGETS_EXPORT CMwSortFilterProxyModelPrivate
{
    Q_DECLARE_PUBLIC(CMwSortFilterProxyModel)

public:
    explicit CMwSortFilterProxyModelPrivate(CMwSortFilterProxyModel *q);
    virtual ~CMwSortFilterProxyModelPrivate();

    // What evaluation needs of a condition, decided once in setFilterRows
    // from the same static text tables the conditions are compared with.
    // How a cell of one type is compared with a condition's value.
    enum class CellKind {
        Generic, // Qt 5's comparison, conversions and all, for every row
        Signed, // int and qlonglong cells against the value as a qlonglong
        Unsigned, // uint and qulonglong cells against the value as a qulonglong
        Boolean, // bool cells against the value as a bool
        Real, // double cells against the value as a double
    };

    // The condition's value converted once to a cell type, so that each row
    // does only the cell's side of the comparison.
    struct ForCellType
    {
        int cellType = QMetaType::UnknownType;
        CellKind kind = CellKind::Generic;
        QVariant converted; // the value as that type (Real only)
        qlonglong i = 0;
        qulonglong u = 0;
        double d = 0.0;
    };

    struct Compiled
    {
        bool isAnd = false;
        int comparator = -1; // VelFilterTexts::Comparator, -1 for an unknown text
        // Filled lazily, one entry for each cell type met; the value does not
        // change for the condition's lifetime, so neither do the entries.
        mutable std::vector<ForCellType> forCellTypes;
    };

    // Finds (or makes) the entry of cell type type for condition index.
    const ForCellType &forCellType(int index, int type) const;
    // One condition against one cell: the same answer as Qt's QVariant
    // comparison of cell with the condition's value (vel::Qt5Variant).
    bool matches(int index, const QVariant &cell) const;

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
