#ifndef VEL_QT_WIDGETS_CMWQFLOWLAYOUT_H
#define VEL_QT_WIDGETS_CMWQFLOWLAYOUT_H

#include "vel_qt_widgets_export.h"

#include <QtWidgets/QLayout>
#include <QtWidgets/QStyle>

#include <memory>

/*!
    \brief A layout that places its items left to right and starts a new
    line when the next item would pass the right edge.

    Its height depends on its width (hasHeightForWidth() is true). Items that
    are empty (hidden widgets, spacers) take no room and keep their geometry.

    In same-widgets-size mode every item gets one common size, the largest
    size hint; when the horizontal spacing is known (0 or more) that size is
    stretched so that a full line exactly fills the width, with
    fixedColumnCount() columns when it is 1 or more, otherwise as many
    columns as the widest item allows.

    \code
    auto *flow = new CMwQFlowLayout(parentWidget, 0, 6, 6);
    for (const QString &name : names)
        flow->addWidget(new QPushButton(name));
    flow->setSameWidgetsSize(true);
    flow->setFixedColumnCount(3);   // three stretched columns
    \endcode

    A negative spacing is derived: from the parent widget's style
    (QStyle::PM_LayoutHorizontalSpacing / PM_LayoutVerticalSpacing), or from
    the parent layout's spacing(). If it still comes out as exactly -1, each
    item asks its widget's style for the push-button layout spacing; items
    without a widget (nested layouts, custom items) ask the style of the
    widget the layout lives in, or the application style when there is none.
*/
class VEL_QT_WIDGETS_EXPORT CMwQFlowLayout : public QLayout
{
    Q_OBJECT

public:
    /*! Builds a layout on \a parent with \a margin on all four sides.
        The defaults (-1 everywhere) derive margins and spacings from the
        style, which is also what CMwQFlowLayoutWidget passes. */
    explicit CMwQFlowLayout(QWidget *parent, int margin = -1, int hSpacing = -1, int vSpacing = -1);
    /*! Builds a layout without parent, to be installed on a widget or
        nested in another layout; arguments as in the other constructor. */
    explicit CMwQFlowLayout(int margin = -1, int hSpacing = -1, int vSpacing = -1);
    /*! Deletes every item; widgets of widget items are not deleted. */
    ~CMwQFlowLayout() override;

    /*! Appends \a item; the layout takes ownership. */
    void addItem(QLayoutItem *item) override;
    /*! The number of items. */
    int count() const override;
    /*! The item at \a index, or null when \a index is out of range. */
    QLayoutItem *itemAt(int index) const override;
    /*! Removes and returns the item at \a index (now the caller's), or null
        when \a index is out of range. */
    QLayoutItem *takeAt(int index) override;

    /*! Returns no direction: the layout never asks for more than its hint. */
    Qt::Orientations expandingDirections() const override;
    /*! Returns true: the height depends on the width. */
    bool hasHeightForWidth() const override;
    /*! The height that a layout pass over \a width takes, margins included. */
    int heightForWidth(int width) const override;
    /*! The largest minimum size of the non-empty items plus twice the
        uniform margin; (2 * margin - 1, 2 * margin - 1) when no item is
        shown. */
    QSize minimumSize() const override;
    /*! The same as minimumSize(). */
    QSize sizeHint() const override;
    /*! Places the items inside \a rect, line by line. */
    void setGeometry(const QRect &rect) override;

    /*! The stored horizontal spacing when 0 or more, otherwise derived from
        the parent (-1 without one). */
    int horizontalSpacing() const;
    /*! The stored vertical spacing when 0 or more, otherwise derived. */
    int verticalSpacing() const;

    /*! Whether all items share one size (default false). */
    bool sameWidgetsSize() const;
    /*! Switches the common-size grid mode; takes effect at the next layout
        pass, which the caller triggers (for instance with invalidate()). */
    void setSameWidgetsSize(bool same);
    /*! The number of grid columns in same-widgets-size mode; -1 (the
        default) lets the widest item decide. */
    int fixedColumnCount() const;
    /*! Number of grid columns in same-widgets-size mode; below 1 the count
        follows from the widest item. Takes effect at the next layout pass. */
    void setFixedColumnCount(int columns);

private:
    int smartSpacing(QStyle::PixelMetric pm) const;
    int doLayout(const QRect &rect, bool testOnly) const;
    const QStyle *spacingStyle(QLayoutItem *item) const;

    class Private;
    const std::unique_ptr<Private> d;

    Q_DISABLE_COPY(CMwQFlowLayout)
};

#endif // VEL_QT_WIDGETS_CMWQFLOWLAYOUT_H
