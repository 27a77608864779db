#ifndef VEL_TESTS_QT5VARIANTORACLE_H
#define VEL_TESTS_QT5VARIANTORACLE_H

#include "cmwvariantcompare_p.h"

#include <QtCore/QDebug>
#include <QtCore/QVariant>

// The filter and the statistics compare values as Qt 5's QVariant did; the
// library writes those rules out in vel::Qt5Variant, and the tests take
// their expected answers from there. Built against Qt 5, every answer is
// also checked against QVariant's own operators, so the written-out rules
// are the real ones; Qt 6 has no relational operators left to ask. A test
// ends with QCOMPARE(Qt5Oracle::mismatches(), 0).
namespace Qt5Oracle {

inline int &mismatches()
{
    static int count = 0;
    return count;
}

inline bool checked(bool ours, bool qt, const char *op, const QVariant &a, const QVariant &b)
{
    if (ours != qt) {
        ++mismatches();
        qWarning() << "Qt 5 says" << qt << "for" << a << op << b;
    }
    return ours;
}

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#define VEL_QT5_ORACLE_CHECK(ours, expression, op, a, b) checked(ours, expression, op, a, b)
#else
#define VEL_QT5_ORACLE_CHECK(ours, expression, op, a, b) ours
#endif

// Qt 5's own ordering, which its relational operators call; the build hides
// those operators (deprecated in 5.15), so QVariant::compare is reached
// through a member pointer named via a subclass.
struct Qt5VariantCompareAccess : QVariant
{
    static int order(const QVariant &a, const QVariant &b)
    {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        int (QVariant::*const cmp)(const QVariant &) const = &Qt5VariantCompareAccess::compare;
        return (a.*cmp)(b);
#else
        Q_UNUSED(a);
        Q_UNUSED(b);
        return 0;
#endif
    }
};

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
inline bool equal(const QVariant &a, const QVariant &b)
{
    return VEL_QT5_ORACLE_CHECK(vel::Qt5Variant::equal(a, b), a == b, "==", a, b);
}
inline bool less(const QVariant &a, const QVariant &b)
{
    return VEL_QT5_ORACLE_CHECK(
        vel::Qt5Variant::less(a, b), Qt5VariantCompareAccess::order(a, b) < 0, "<", a, b);
}
inline bool lessOrEqual(const QVariant &a, const QVariant &b)
{
    return VEL_QT5_ORACLE_CHECK(
        vel::Qt5Variant::lessOrEqual(a, b), Qt5VariantCompareAccess::order(a, b) <= 0, "<=", a, b);
}
inline bool greater(const QVariant &a, const QVariant &b)
{
    return VEL_QT5_ORACLE_CHECK(
        vel::Qt5Variant::greater(a, b), Qt5VariantCompareAccess::order(a, b) > 0, ">", a, b);
}
inline bool greaterOrEqual(const QVariant &a, const QVariant &b)
{
    return VEL_QT5_ORACLE_CHECK(vel::Qt5Variant::greaterOrEqual(a, b),
        Qt5VariantCompareAccess::order(a, b) >= 0, ">=", a, b);
}
inline bool isNull(const QVariant &a)
{
    return VEL_QT5_ORACLE_CHECK(vel::Qt5Variant::isNull(a), a.isNull(), "isNull", a, QVariant());
}
QT_WARNING_POP

#undef VEL_QT5_ORACLE_CHECK

// A variant of a type without a value (Qt 5's QVariant(QVariant::Int)).
inline QVariant nullOfType(int type)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QVariant(QMetaType(type));
#else
    return QVariant(QVariant::Type(type));
#endif
}

} // namespace Qt5Oracle

#endif // VEL_TESTS_QT5VARIANTORACLE_H
