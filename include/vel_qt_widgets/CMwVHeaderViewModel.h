#ifndef VEL_QT_WIDGETS_CMWVHEADERVIEWMODEL_H
#define VEL_QT_WIDGETS_CMWVHEADERVIEWMODEL_H

#include "vel_qt_widgets_export.h"

#include <QtCore/QAbstractTableModel>

#include <memory>

/*!
    \brief The section count of the row-number header: as many rows as the
    item model announces through VisibleRowCountRole.

    Everything else is passed on to the source model; an index of this model
    stands for the source's top-level index at the same row and column. Any
    change of the source's shape resets this model.
*/
class VEL_QT_WIDGETS_EXPORT CMwVHeaderViewModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /*! A model of no rows until setSourceModel() is called. */
    explicit CMwVHeaderViewModel(QObject *parent = nullptr);
    ~CMwVHeaderViewModel() override;

    /*! Sets the model whose rows are counted (not owned, guarded). */
    void setSourceModel(QAbstractItemModel *model);
    /*! The source model, or null (also after it was destroyed). */
    QAbstractItemModel *sourceModel() const;

    /*! Source headerData(0, Qt::Vertical, VisibleRowCountRole).toInt(). */
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    /*! The source's top-level column count. */
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    /*! The source's data at the same top-level row and column. */
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /*! The source's header data. */
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private Q_SLOTS:
    void onSourceAboutToChange();
    void onSourceChanged();
    void onSourceHeaderDataChanged(Qt::Orientation orientation);

private:
    class Private;
    std::unique_ptr<Private> const d;

    Q_DISABLE_COPY(CMwVHeaderViewModel)
};

#endif // VEL_QT_WIDGETS_CMWVHEADERVIEWMODEL_H
