#ifndef VEL_QT_WIDGETS_FLOWLAYOUT_H
#define VEL_QT_WIDGETS_FLOWLAYOUT_H

#include "vel_qt_widgets_export.h"

#include <QtCore/QList>
#include <QtWidgets/QLayout>
#include <QtWidgets/QStyle>
#include <QtWidgets/QWidget>

QT_BEGIN_NAMESPACE
class QWidgetPrivate;
QT_END_NAMESPACE

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
    explicit CMwQFlowLayout(int margin = -1, int hSpacing = -1, int vSpacing = -1);
    /*! Deletes every item; widgets of widget items are not deleted. */
    ~CMwQFlowLayout() override;

    /*! Appends \a item; the layout takes ownership. */
    void addItem(QLayoutItem *item) override;
    int count() const override;
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;

    /*! Returns no direction: the layout never asks for more than its hint. */
    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    /*! The largest minimum size of the non-empty items plus twice the
        uniform margin; (2 * margin - 1, 2 * margin - 1) when no item is
        shown. */
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect &rect) override;

    /*! The stored horizontal spacing when 0 or more, otherwise derived from
        the parent (-1 without one). */
    int horizontalSpacing() const;
    /*! The stored vertical spacing when 0 or more, otherwise derived. */
    int verticalSpacing() const;

    bool sameWidgetsSize() const;
    /*! Switches the common-size grid mode; takes effect at the next layout
        pass, which the caller triggers (for instance with invalidate()). */
    void setSameWidgetsSize(bool same);
    int fixedColumnCount() const;
    /*! Number of grid columns in same-widgets-size mode; below 1 the count
        follows from the widest item. Takes effect at the next layout pass. */
    void setFixedColumnCount(int columns);

private:
    int smartSpacing(QStyle::PixelMetric pm) const;
    int doLayout(const QRect &rect, bool testOnly) const;
    const QStyle *spacingStyle(QLayoutItem *item) const;

    QList<QLayoutItem *> m_itemList;
    int m_hSpace;
    int m_vSpace;
    bool m_sameWidgetsSize;
    int m_fixedColumnCount;

    Q_DISABLE_COPY(CMwQFlowLayout)
};

/*!
    \brief A plain widget that owns one CMwQFlowLayout.

    The margin, hSpacing and vSpacing properties are stored and read back,
    so that forms keep them, but they are deliberately not passed on to the
    layout: changing them relayouts nothing. The layout cannot be replaced
    through setLayout().

    \code
    CMwQFlowLayoutWidget box;
    box.layout()->addWidget(new QLabel("one"));
    box.layout()->addWidget(new QLabel("two"));
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwQFlowLayoutWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int margin READ margin WRITE setMargin DESIGNABLE true SCRIPTABLE true STORED true)
    Q_PROPERTY(
        int hSpacing READ hSpacing WRITE setHSpacing DESIGNABLE true SCRIPTABLE true STORED true)
    Q_PROPERTY(
        int vSpacing READ vSpacing WRITE setVSpacing DESIGNABLE true SCRIPTABLE true STORED true)

public:
    explicit CMwQFlowLayoutWidget(QWidget *parent = nullptr, Qt::WindowFlags f = Qt::WindowFlags());
    /*! The private-data form of the QWidget constructor, for subclasses built
        on Qt's private classes. */
    CMwQFlowLayoutWidget(QWidgetPrivate &d, QWidget *parent, Qt::WindowFlags f);
    ~CMwQFlowLayoutWidget() override;

    /*! Does nothing: the flow layout stays installed, and \a layout stays
        with the caller (it is neither adopted nor deleted). */
    void setLayout(QLayout *layout);

    int margin() const;
    void setMargin(int margin);
    int hSpacing() const;
    void setHSpacing(int spacing);
    int vSpacing() const;
    void setVSpacing(int spacing);

private:
    // Forbids copying; defined like the other constructors nevertheless.
    explicit CMwQFlowLayoutWidget(const QWidget &other);
    void installFlowLayout();

    int m_margin;
    int m_hSpacing;
    int m_vSpacing;

    Q_DISABLE_COPY(CMwQFlowLayoutWidget)
};

#endif // VEL_QT_WIDGETS_FLOWLAYOUT_H
