#pragma once

// Stop-gap for the filter's QVariant ordering until the Qt 5 ordering is
// written down in one place of our own; both builds disable the relational
// operators Qt 5.15 deprecated and Qt 6 removed.

#include <QtCore/QVariant>

namespace VelVariantCompareShim {

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
// QVariant::compare() is what Qt 5's operator< and friends call; it is
// protected, so it is reached through a member pointer named via a subclass.
struct Access : QVariant
{
    static int order(const QVariant &lhs, const QVariant &rhs)
    {
        int (QVariant::*const compare)(const QVariant &) const = &Access::compare;
        return (lhs.*compare)(rhs);
    }
};
#endif

// Negative, zero or positive as lhs orders before, with or after rhs.
inline int compare(const QVariant &lhs, const QVariant &rhs)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return Access::order(lhs, rhs);
#else
    const QPartialOrdering order = QVariant::compare(lhs, rhs);
    if (order == QPartialOrdering::Less)
        return -1;
    if (order == QPartialOrdering::Equivalent)
        return 0;
    return 1;
#endif
}

} // namespace VelVariantCompareShim
