#ifndef VEL_QT_WIDGETS_CMWQSTEPMAPPEDSLIDER_P_H
#define VEL_QT_WIDGETS_CMWQSTEPMAPPEDSLIDER_P_H

#include "cmwqstepmapping_p.h"

#include <vel_qt_widgets/vel_qt_widgets_export.h>

#include <vel_qt_widgets/CMwQSlider.h>
#include <vel_qt_widgets/CMwQValueProxy.h>

#include <QtCore/QPointer>
#include <QtCore/QString>

#include <cmath>
#include <initializer_list>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

/*!
    The private data both floating-point sliders share: the double range, the
    single step and the value proxy, with the algorithms that work on them
    alone. What differs (one value or two handles, each with its own offset,
    and the widget's own tick item type) is left to the subclasses through
    the hooks below. It names no widget above CMwQSlider, so that the
    widgets' own headers can include it.
*/
class VEL_QT_WIDGETS_EXPORT CMwQStepMappedSliderPrivate
{
public:
    // \a name prefixes the warnings, e.g. "CMwQDoubleSlider".
    explicit CMwQStepMappedSliderPrivate(const char *name);
    virtual ~CMwQStepMappedSliderPrivate();

    // Puts the inner slider into a margin-less layout on the widget, takes
    // its range and step, and its size policy as the widget's default one.
    void embedInnerSlider();

    // The step mapping with this slider's step and range.
    int toInteger(double v) const;
    double fromInteger(int i, double offset) const;
    double safeFromInteger(int i, double offset) const;
    double offsetFor(double v) const;
    double toSliderUnits(double value) const;
    double toValue(double sliderUnits) const;
    // toSliderUnits() for the public setters: false (after a warning naming
    // \a function) when a value has no place in slider units.
    bool mapToSliderUnits(const char *function, double value, double *units) const;
    bool mapToSliderUnits(
        const char *function, double a, double b, double *unitsA, double *unitsB) const;
    // Moves far below one step are rounding noise of the mapping (or of a
    // proxy's round trip): applied, but not announced.
    bool movedBeyondNoise(double now, double before) const;

    // The ends in public units, ordered after mapping, so that a decreasing
    // proxy still gives minimum() <= maximum().
    double publicMinimum() const;
    double publicMaximum() const;
    void setPublicMinimum(double end);
    void setPublicMaximum(double end);

    // The steps of setRange() that do not depend on the values: maps and
    // orders the ends, stores them, lets followRange() move the offsets and
    // re-ranges the inner slider. Returns false (after a warning) when the
    // range is refused; \a announce tells whether rangeChanged() is due.
    bool setRange(double min, double max, bool *announce);
    // After a change of mapping that the public range could not follow: the
    // ends kept in slider units are pulled in to where they still stand for
    // finite values, through the public setRange().
    void keepEndsFinite();
    // The inner slider's range from ours, without reacting to its report.
    void applyInnerRange();
    // Follows a range change made on the inner slider from outside; the two
    // ends are mapped back with the given offsets.
    void innerRangeChanged(int min, int max, double minimumOffset, double maximumOffset);

    bool isValidStep(double step) const;
    // isValidStep(), with the warning when it is not.
    bool acceptsSingleStep(double step) const;

    double tickInterval() const;
    void setTickInterval(double interval);
    // Hands the inner slider the integer form of the widget's tick items;
    // the items are in public units, so they follow a change of mapping.
    virtual void rebuildTickItems() = 0;

    void setOrientation(Qt::Orientation orientation);

    // The value-proxy protocol: the public range and values are kept as
    // dynamic properties of the inner slider before the mapping changes and
    // re-applied through the new mapping after it, without any signal.
    void setValueProxy(CMwQValueProxy *proxy);
    void saveInputs();
    void reapplyInputs();

    // CMwQStepMapping::warnIgnored() for "<className>::<function>".
    void warnRejected(
        const char *function, std::initializer_list<double> arguments, const char *reason) const;

    // The owning widget; each subclass's Q_DECLARE_PUBLIC casts it back.
    QWidget *q_ptr = nullptr;
    const char *const className;
    double minimum = 0.0;
    double maximum = 100.0;
    bool settingRange = false;
    double singleStep = 1.0;
    QPointer<CMwQValueProxy> valueProxy;
    QString handleToolTip;

protected:
    virtual CMwQSlider *innerSlider() const = 0;
    // The public setRange() of the widget, in public units.
    virtual void applyPublicRange(double min, double max) = 0;
    // Within setRange(): moves the offsets of values the new range cuts off.
    virtual void followRange() = 0;
    // The value side of saveInputs() and reapplyInputs().
    virtual void saveValues() = 0;
    virtual void reapplyValues() = 0;

    // rebuildTickItems() for a list of items in public units (value, sides,
    // text); the item type is the widget's own.
    template<class Items>
    void setInnerTickItems(const Items &list) const
    {
        CMwQSlider::TMwTickItemList items;
        items.reserve(list.size());
        for (const auto &item : list) {
            const double units = toSliderUnits(item.value);
            if (std::isnan(units)) {
                // Kept in tickItemList(), but there is no place to draw it.
                warnRejected("setTickItemList", {item.value}, CMwQStepMapping::notANumberReason);
                continue;
            }
            items.append({toInteger(units), item.tickPosition, item.text});
        }
        innerSlider()->setTickItemList(items);
    }
};

// The members that both floating-point sliders offer alike, with one body
// each: they are separate QWidget classes (each is the root of its own
// hierarchy), so the surface is written once here and stamped into both.
#define VEL_STEP_MAPPED_SLIDER_SURFACE(Class)                                                      \
    double Class::minimum() const                                                                  \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->publicMinimum();                                                                 \
    }                                                                                              \
    double Class::maximum() const                                                                  \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->publicMaximum();                                                                 \
    }                                                                                              \
    void Class::setMinimum(double minimum)                                                         \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->setPublicMinimum(minimum);                                                              \
    }                                                                                              \
    void Class::setMaximum(double maximum)                                                         \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->setPublicMaximum(maximum);                                                              \
    }                                                                                              \
    double Class::singleStep() const                                                               \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->singleStep;                                                                      \
    }                                                                                              \
    bool Class::isValidStep(double step) const                                                     \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->isValidStep(step);                                                               \
    }                                                                                              \
    double Class::tickInterval() const                                                             \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->tickInterval();                                                                  \
    }                                                                                              \
    void Class::setTickInterval(double interval)                                                   \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->setTickInterval(interval);                                                              \
    }                                                                                              \
    QSlider::TickPosition Class::tickPosition() const                                              \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->slider->tickPosition();                                                          \
    }                                                                                              \
    void Class::setTickPosition(QSlider::TickPosition position)                                    \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->slider->setTickPosition(position);                                                      \
    }                                                                                              \
    bool Class::hasTracking() const                                                                \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->slider->hasTracking();                                                           \
    }                                                                                              \
    void Class::setTracking(bool enable)                                                           \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->slider->setTracking(enable);                                                            \
    }                                                                                              \
    Qt::Orientation Class::orientation() const                                                     \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->slider->orientation();                                                           \
    }                                                                                              \
    void Class::setOrientation(Qt::Orientation orientation)                                        \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->setOrientation(orientation);                                                            \
    }                                                                                              \
    Class::TMwTickItemList Class::tickItemList() const                                             \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->tickItems;                                                                       \
    }                                                                                              \
    void Class::setTickItemList(const TMwTickItemList &list)                                       \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->tickItems = list;                                                                       \
        d->rebuildTickItems();                                                                     \
    }                                                                                              \
    QString Class::handleToolTip() const                                                           \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->handleToolTip;                                                                   \
    }                                                                                              \
    void Class::setHandleToolTip(const QString &toolTip)                                           \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->handleToolTip = toolTip;                                                                \
    }                                                                                              \
    void Class::triggerAction(QAbstractSlider::SliderAction action)                                \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->slider->triggerAction(action);                                                          \
    }                                                                                              \
    CMwQValueProxy *Class::valueProxy() const                                                      \
    {                                                                                              \
        Q_D(const Class);                                                                          \
        return d->valueProxy.data();                                                               \
    }                                                                                              \
    void Class::setValueProxy(CMwQValueProxy *proxy)                                               \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->setValueProxy(proxy);                                                                   \
    }                                                                                              \
    void Class::onValueProxyAboutToBeModified()                                                    \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->saveInputs();                                                                           \
    }                                                                                              \
    void Class::onValueProxyModified()                                                             \
    {                                                                                              \
        Q_D(Class);                                                                                \
        d->reapplyInputs();                                                                        \
    }

#endif // VEL_QT_WIDGETS_CMWQSTEPMAPPEDSLIDER_P_H
