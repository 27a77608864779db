#ifndef VEL_QT_WIDGETS_CMWVARIANTCOMPARE_P_H
#define VEL_QT_WIDGETS_CMWVARIANTCOMPARE_P_H

#include <vel_qt_widgets/vel_qt_widgets_export.h>

#include <QtCore/QString>
#include <QtCore/QVariant>

// How Qt 5.15's QVariant compared two values, written out so that every Qt
// version gives the filter and the statistics the same answers. Qt 6 dropped
// QVariant's relational operators and stopped operator== from converting
// between types; the filter's comparators and the statistics' "Distinct"
// are defined by the Qt 5 results, so nothing here asks the running Qt's
// QVariant to compare two values of different types.
//
// Rules, as Qt 5.15 applied them:
//
// Numbers (bool, int, uint, qlonglong, qulonglong, double, float and the
// small integer types) are compared with each other by value, with C++'s
// promotions: a double or float on either side compares both as doubles,
// otherwise the wider integer type wins and unsigned wins at equal width
// (so int -1 is greater than uint 0). Two unequal doubles that are both
// finite and non-zero are still equal when qFuzzyCompare says so. NaN is
// equal to nothing, and greater than everything, in both directions.
//
// equal(a, b), Qt 5's operator==:
//  1. both numbers: the numeric comparison above;
//  2. same type: the type's own equality (an invalid value equals an invalid
//     one; doubles reaching this step compare exactly);
//  3. otherwise b is converted to a's type when Qt 5 could convert that way,
//     else a to b's type; a failed conversion makes them unequal, a
//     successful one decides by step 2.
//
// compare(a, b), Qt 5's ordering (<0, 0, >0 under <, <=, >, >=):
//  1. both numbers: the numeric comparison;
//  2. equal(a, b): 0;
//  3. types differ: b converted to a's type if it converts, else a to b's;
//     still different types: the texts of both (toString()) compared case
//     insensitively, a tie going to the smaller type number; two numbers
//     after the conversion: the numeric comparison;
//  4. dates, times, date-times and string lists by their own operator<,
//     anything else by its text, case insensitively, a tie going to the
//     smaller type number of the original values (so "abc" and "ABC" are
//     each greater than the other).
//
// Conversions are Qt 5's: a text becomes a number through
// QString::toLongLong, toULongLong or toDouble (C locale, surrounding
// spaces allowed) and is then cut to the target width without a range
// check ("4294967296" converts to int 0); a text becomes a bool unless it
// is empty, "0" or "false" (any case); dates, times and date-times convert
// from ISO 8601 texts and only when the result is valid; a double becomes
// text in its shortest exact form, a float as the double it widens to
// (0.1f reads "0.10000000149011612"), times and date-times with
// milliseconds. A variant made null (QVariant(QVariant::Int)) does not
// convert, one holding a null value (QVariant(QString())) does. An invalid variant converts to
// nothing and reads as an empty text. Types beyond bool, the numbers, QChar, QString, QStringList,
// QByteArray, QDate, QTime and QDateTime use the running Qt's conversions.
namespace vel::Qt5Variant {

// True for the types Qt 5 compared as numbers.
VEL_QT_WIDGETS_EXPORT bool isNumericType(int type);

// Qt 5's QVariant::isNull(): a variant made without a value, or one holding
// a value of a type that has a null value (an empty QString() but not "", an
// invalid QDate, a QPoint(0, 0), a null image), or a null pointer.
VEL_QT_WIDGETS_EXPORT bool isNull(const QVariant &value);

// Qt 5's QVariant::operator==.
VEL_QT_WIDGETS_EXPORT bool equal(const QVariant &a, const QVariant &b);

// Qt 5's QVariant ordering: negative, zero or positive.
VEL_QT_WIDGETS_EXPORT int compare(const QVariant &a, const QVariant &b);

inline bool less(const QVariant &a, const QVariant &b) { return compare(a, b) < 0; }
inline bool lessOrEqual(const QVariant &a, const QVariant &b) { return compare(a, b) <= 0; }
inline bool greater(const QVariant &a, const QVariant &b) { return compare(a, b) > 0; }
inline bool greaterOrEqual(const QVariant &a, const QVariant &b) { return compare(a, b) >= 0; }

// Whether Qt 5's QVariant::canConvert(type) held for value.
VEL_QT_WIDGETS_EXPORT bool canConvert(const QVariant &value, int type);

// Qt 5's QVariant::convert(type) on a copy of value: true and *out set to
// the converted value, or false (and *out left alone).
VEL_QT_WIDGETS_EXPORT bool convert(const QVariant &value, int type, QVariant *out);

// Qt 5's QVariant::toString().
VEL_QT_WIDGETS_EXPORT QString toString(const QVariant &value);

// Qt 5's QVariant::toList(): a text (QString or QByteArray) is no list and
// gives an empty one, where Qt 6 makes it a one-element list.
VEL_QT_WIDGETS_EXPORT QVariantList toList(const QVariant &value);

// The statistics' ordering of two values: values of one type by value
// (int, uint, qlonglong and double numerically, texts with
// QString::localeAwareCompare), any other common type by where the two
// values are stored, so not by value at all; values of different types by
// type number, an invalid value on either side being neither less nor
// greater. Kept as the grid has always ordered its statistics.
VEL_QT_WIDGETS_EXPORT bool statisticsLess(const QVariant &a, const QVariant &b);

} // namespace vel::Qt5Variant

#endif // VEL_QT_WIDGETS_CMWVARIANTCOMPARE_P_H
