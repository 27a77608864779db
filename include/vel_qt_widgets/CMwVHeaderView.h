#ifndef VEL_QT_WIDGETS_CMWVHEADERVIEW_H
#define VEL_QT_WIDGETS_CMWVHEADERVIEW_H

#include "vel_qt_widgets_export.h"

#include <vel_qt_widgets/CMwGridRoles.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QPointer>
#include <QtWidgets/QHeaderView>

#include <memory>

QT_BEGIN_NAMESPACE
class QTreeView;
QT_END_NAMESPACE

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
    explicit CMwVHeaderViewModel(QObject *parent = nullptr);
    ~CMwVHeaderViewModel() override;

    /*! Sets the model whose rows are counted (not owned, guarded). */
    void setSourceModel(QAbstractItemModel *model);
    QAbstractItemModel *sourceModel() const;

    /*! Source headerData(0, Qt::Vertical, VisibleRowCountRole).toInt(). */
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private Q_SLOTS:
    void onSourceAboutToChange();
    void onSourceChanged();
    void onSourceHeaderDataChanged(Qt::Orientation orientation);

private:
    QPointer<QAbstractItemModel> m_source;
    bool m_resetting = false;
};

/*!
    \brief A vertical header that shows, beside every row of a tree view, the
    row number the item model gives that row (RowNumberRole, shown plus one).

    The header does not number its own sections: for each section it asks the
    tree which item lies at the section's height. Its sections must therefore
    be as high as the tree's rows; give it the tree's row height as default
    section size. Its minimum section size is lowered to one pixel so that
    rows lower than the style's minimum header section keep their numbers
    beside them.

    \code
    auto *rows = new CMwVHeaderView(Qt::Vertical, parent);
    rows->setTreeView(tree);
    rows->setModel(tree->model());
    rows->setDefaultSectionSize(tree->sizeHintForRow(0));
    connect(tree->verticalScrollBar(), SIGNAL(valueChanged(int)), rows, SLOT(setOffset(int)));
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwVHeaderView : public QHeaderView
{
    Q_OBJECT

public:
    explicit CMwVHeaderView(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwVHeaderView() override;

    /*! The tree whose rows are numbered (not owned, guarded). */
    void setTreeView(QTreeView *treeView);
    QTreeView *treeView() const;

    /*! Shows \a model through a new CMwVHeaderViewModel (the previous one is deleted). */
    void setModel(QAbstractItemModel *model) override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;

private:
    class Private;
    std::unique_ptr<Private> d;

    Q_DISABLE_COPY(CMwVHeaderView)
};

#endif // VEL_QT_WIDGETS_CMWVHEADERVIEW_H
