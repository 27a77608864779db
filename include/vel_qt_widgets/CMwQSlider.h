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
    Q_PROPERTY(TMwTickItemList tickItemList READ tickItemList WRITE setTickItemList DESIGNABLE true STORED true)

public:
    /*! One extra tick mark. */
    struct SMwTickItem
    {
        int value = 0; //!< slider value at which the mark stands
        /*! Side(s) of the mark; QSlider::NoTicks keeps the item but never draws it. */
        QSlider::TickPosition tickPosition = QSlider::NoTicks;
        QString text; //!< label; empty means no label

        bool operator==(const SMwTickItem &other) const
        {
            return value == other.value && tickPosition == other.tickPosition && text == other.text;
        }
        bool operator!=(const SMwTickItem &other) const { return !(*this == other); }
    };
    typedef QList<SMwTickItem> TMwTickItemList;

    explicit CMwQSlider(QWidget *parent = nullptr);
    explicit CMwQSlider(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~CMwQSlider() override;

    /*! Returns a copy of the extra tick items. */
    TMwTickItemList tickItemList() const;
    /*! Replaces the extra tick items; repaints and updates the size hint. */
    void setTickItemList(const TMwTickItemList &list);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /*! Emitted on every mouse double click, before the base class handles it. */
    void SignalDoubleClick();

protected:
    CMwQSlider(CMwQSliderPrivate *d, QWidget *parent);
    CMwQSlider(CMwQSliderPrivate *d, Qt::Orientation orientation, QWidget *parent);

    void mouseDoubleClickEvent(QMouseEvent *e) override;
    void paintEvent(QPaintEvent *e) override;

    // Named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwQSliderPrivate> d_vel;

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwQSlider)
    Q_DISABLE_COPY(CMwQSlider)
};

typedef CMwQSlider::SMwTickItem SMwTickItem;
typedef CMwQSlider::TMwTickItemList TMwTickItemList;

VEL_QT_WIDGETS_EXPORT QDataStream &operator<<(QDataStream &out, const CMwQSlider::SMwTickItem &item);
VEL_QT_WIDGETS_EXPORT QDataStream &operator>>(QDataStream &in, CMwQSlider::SMwTickItem &item);

Q_DECLARE_METATYPE(CMwQSlider::SMwTickItem)
Q_DECLARE_METATYPE(CMwQSlider::TMwTickItemList)

#endif // VEL_QT_WIDGETS_CMWQSLIDER_H
