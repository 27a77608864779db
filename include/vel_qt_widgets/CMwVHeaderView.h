#ifndef VEL_QT_WIDGETS_CMWVHEADERVIEW_H
#define VEL_QT_WIDGETS_CMWVHEADERVIEW_H

#include "vel_qt_widgets_export.h"

#include <vel_qt_widgets/CMwGridRoles.h>
#include <vel_qt_widgets/CMwVHeaderViewModel.h>

#include <QtWidgets/QHeaderView>

#include <memory>

QT_BEGIN_NAMESPACE
class QTreeView;
QT_END_NAMESPACE

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
    /*! A header in \a orientation (Qt::Vertical beside a tree); see the class example. */
    explicit CMwVHeaderView(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwVHeaderView() override;

    /*! The tree whose rows are numbered (not owned, guarded). */
    void setTreeView(QTreeView *treeView);
    /*! The tree whose rows are numbered, or null. */
    QTreeView *treeView() const;

    /*! Shows \a model through a new CMwVHeaderViewModel (the previous one is deleted). */
    void setModel(QAbstractItemModel *model) override;

protected:
    /*! Reimplemented so that empty cells continue below the last section,
        and a model of no rows still shows a column of cells. */
    void paintEvent(QPaintEvent *event) override;
    /*! Reimplemented to show the RowNumberRole (plus one) of the tree item
        at the height of \a rect. */
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;

private:
    class Private;
    std::unique_ptr<Private> const d;

    Q_DISABLE_COPY(CMwVHeaderView)
};

#endif // VEL_QT_WIDGETS_CMWVHEADERVIEW_H
