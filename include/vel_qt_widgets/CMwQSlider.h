#ifndef VEL_QT_WIDGETS_CMWQSLIDER_H
#define VEL_QT_WIDGETS_CMWQSLIDER_H

#include "vel_qt_widgets_export.h"

#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QScopedPointer>
#include <QtCore/QString>
#include <QtWidgets/QSlider>

QT_BEGIN_NAMESPACE
class QDataStream;
QT_END_NAMESPACE

class CMwQSliderPrivate;

/*!
    \file CMwQSlider.h
    \brief The tick-aware slider CMwQSlider, its tick item record and the
    stream operators that let tick lists be stored as properties.
*/

/*!
    \brief A QSlider that draws extra, optionally labelled tick marks and
    reports double clicks.

    Besides the regular marks of QSlider::tickPosition(), the slider draws one
    mark for each item of tickItemList() at the item's value, on the side(s)
    the item names, with the item's text as a label (horizontal sliders only).

    \code
    CMwQSlider slider(Qt::Horizontal);
    slider.setRange(0, 100);
    slider.setTickItemList({{0, QSlider::TicksBelow, "min"},
                            {50, QSlider::TicksBothSides, "mid"},
                            {100, QSlider::TicksBelow, "max"}});
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwQSlider : public QSlider
{
    Q_OBJECT
    /*! The extra tick items, drawn in list order; stored by Designer forms. */
    Q_PROPERTY(TMwTickItemList tickItemList READ tickItemList WRITE setTickItemList
            DESIGNABLE true STORED true)

public:
    /*! One extra tick mark. */
    struct SMwTickItem
    {
        int value = 0; //!< slider value at which the mark stands
        /*! Side(s) of the mark; QSlider::NoTicks keeps the item but never draws it. */
        QSlider::TickPosition tickPosition = QSlider::NoTicks;
        QString text; //!< label; empty means no label

        /*! Items are equal when value, sides and text are. */
        bool operator==(const SMwTickItem &other) const
        {
            return value == other.value && tickPosition == other.tickPosition && text == other.text;
        }
        /*! The negation of operator==(). */
        bool operator!=(const SMwTickItem &other) const { return !(*this == other); }
    };
    /*! The list of extra tick items, registered as a meta-type. */
    typedef QList<SMwTickItem> TMwTickItemList;

    /*! A vertical slider without extra tick items, like QSlider(parent). */
    explicit CMwQSlider(QWidget *parent = nullptr);
    /*! A slider in \a orientation without extra tick items. */
    explicit CMwQSlider(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwQSlider() override;

    /*! Returns a copy of the extra tick items. */
    TMwTickItemList tickItemList() const;
    /*! Replaces the extra tick items; repaints and updates the size hint. */
    void setTickItemList(const TMwTickItemList &list);

    /*! Reimplemented: QSlider's hint, made thick enough for the extra marks
        and, on horizontal sliders, their labels. */
    QSize sizeHint() const override;
    /*! Reimplemented; the same as QSlider's. */
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /*! Emitted on every mouse double click, before the base class handles it. */
    void SignalDoubleClick();

protected:
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwQSlider(CMwQSliderPrivate *d, QWidget *parent);
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwQSlider(CMwQSliderPrivate *d, Qt::Orientation orientation, QWidget *parent);

    /*! Reimplemented to emit SignalDoubleClick() first. */
    void mouseDoubleClickEvent(QMouseEvent *e) override;
    /*! Reimplemented to draw the extra tick items and their labels. */
    void paintEvent(QPaintEvent *e) override;
    /*! Reimplemented: QSlider's handling, done by this class for ranges
        wider than INT_MAX, on which QSlider's style arithmetic fails. */
    void mousePressEvent(QMouseEvent *e) override;
    /*! Reimplemented; see mousePressEvent(). */
    void mouseMoveEvent(QMouseEvent *e) override;
    /*! Reimplemented; see mousePressEvent(). */
    void mouseReleaseEvent(QMouseEvent *e) override;
    /*! Reimplemented: hover tracking is left out for ranges wider than
        INT_MAX; see mousePressEvent(). */
    bool event(QEvent *e) override;

    //! Private data; named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwQSliderPrivate> d_vel;

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwQSlider)
    Q_DISABLE_COPY(CMwQSlider)
};

/*! The tick item record at namespace scope. */
typedef CMwQSlider::SMwTickItem SMwTickItem;
/*! The tick item list at namespace scope (also registered under this name). */
typedef CMwQSlider::TMwTickItemList TMwTickItemList;

/*! Writes \a item (value, tick position, text) to \a out. */
VEL_QT_WIDGETS_EXPORT QDataStream &operator<<(
    QDataStream &out, const CMwQSlider::SMwTickItem &item);
/*! Reads \a item as written by operator<<(). */
VEL_QT_WIDGETS_EXPORT QDataStream &operator>>(QDataStream &in, CMwQSlider::SMwTickItem &item);

Q_DECLARE_METATYPE(CMwQSlider::SMwTickItem)
Q_DECLARE_METATYPE(CMwQSlider::TMwTickItemList)

#endif // VEL_QT_WIDGETS_CMWQSLIDER_H
