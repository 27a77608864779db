#pragma once

// The few calls that differ between the Qt 5 and the Qt 6 build, so that
// the sources read the same for both.

#include <QtCore/QByteArray>
#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QMouseEvent>

namespace VelQt {

// The nearest integer with halves going up (2.5 gives 3, -2.5 gives -2):
// Qt 5's qRound for doubles. Qt 6's qRound takes halves away from zero.
// The truncations are done in 64 bits, so any d within the int range is
// safe (Qt 5's own formula overflows for d = -2147483648).
inline int roundHalfUp(double d)
{
    // Adding 0.5 and truncating is the rule being reproduced, not a slip.
    if (d >= 0.0)
        return int(qint64(d + 0.5)); // NOLINT(bugprone-incorrect-roundings)
    const qint64 i = qint64(d - 1.0);
    return int(qint64(d - double(i) + 0.5) + i); // NOLINT(bugprone-incorrect-roundings)
}

// A mouse event's position in the receiving widget (Qt 6: position()).
inline QPoint eventPos(const QMouseEvent *event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->position().toPoint();
#else
    return event->pos();
#endif
}

// A mouse event's position on the screen (Qt 6: globalPosition()).
inline QPoint eventGlobalPos(const QMouseEvent *event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->globalPosition().toPoint();
#else
    return event->globalPos();
#endif
}

// Converts value in place to the meta type typeId (Qt 6 takes a QMetaType).
inline bool convert(QVariant &value, int typeId)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return value.convert(QMetaType(typeId));
#else
    return value.convert(typeId);
#endif
}

// The meta type id a variant holds (Qt 6: typeId(); userType() in both).
inline int typeId(const QVariant &value) { return value.userType(); }

} // namespace VelQt
