#include "cmwvariantcompare_p.h"

#include <QtCore/QBitArray>
#include <QtCore/QDate>
#include <QtCore/QDateTime>
#include <QtCore/QLine>
#include <QtCore/QLocale>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QStringList>
#include <QtCore/QTime>
#include <QtCore/QUuid>
#include <QtGui/QBitmap>
#include <QtGui/QIcon>
#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtGui/QRegion>
#include <QtGui/QVector2D>
#include <QtGui/QVector3D>
#include <QtGui/QVector4D>

#include <cmath>
#include <functional>
#include <type_traits>
#include <utility>

namespace {

// The running Qt's own conversions, for the types this file does not spell
// out. Qt 6 takes a QMetaType where Qt 5 took a type number.
bool qtCanConvert(const QVariant &value, int type)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return value.canConvert(QMetaType(type));
#else
    return value.canConvert(type);
#endif
}

bool qtConvert(QVariant &value, int type)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return value.convert(QMetaType(type));
#else
    return value.convert(type);
#endif
}

// The types whose comparisons and conversions are written out here.
bool isSpelledOut(int type)
{
    switch (type) {
    case QMetaType::UnknownType:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::QChar:
    case QMetaType::QString:
    case QMetaType::QStringList:
    case QMetaType::QByteArray:
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return true;
    default:
        return false;
    }
}

bool isFloatingPoint(int type) { return type == QMetaType::Double || type == QMetaType::Float; }

// The number a numeric value holds, read as Qt 5 read it: all bits of an
// integer, a floating-point value rounded to the nearest integer.
qlonglong signedNumber(const QVariant &v)
{
    const void *p = v.constData();
    switch (v.userType()) {
    case QMetaType::Bool:
        return *static_cast<const bool *>(p) ? 1 : 0;
    case QMetaType::Int:
        return *static_cast<const int *>(p);
    case QMetaType::UInt:
        return *static_cast<const uint *>(p);
    case QMetaType::LongLong:
        return *static_cast<const qlonglong *>(p);
    case QMetaType::ULongLong:
        return qlonglong(*static_cast<const qulonglong *>(p));
    case QMetaType::Double:
        return qRound64(*static_cast<const double *>(p));
    case QMetaType::Float:
        return qRound64(*static_cast<const float *>(p));
    case QMetaType::Long:
        return *static_cast<const long *>(p);
    case QMetaType::ULong:
        return qlonglong(*static_cast<const ulong *>(p));
    case QMetaType::Short:
        return *static_cast<const short *>(p);
    case QMetaType::UShort:
        return *static_cast<const ushort *>(p);
    case QMetaType::Char:
        return *static_cast<const char *>(p);
    case QMetaType::SChar:
        return *static_cast<const signed char *>(p);
    case QMetaType::UChar:
        return *static_cast<const uchar *>(p);
    case QMetaType::QChar:
        return static_cast<const QChar *>(p)->unicode();
    default:
        return 0;
    }
}

double realNumber(const QVariant &v)
{
    switch (v.userType()) {
    case QMetaType::Double:
        return *static_cast<const double *>(v.constData());
    case QMetaType::Float:
        return double(*static_cast<const float *>(v.constData()));
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::ULong:
        return double(qulonglong(signedNumber(v)));
    default:
        return double(signedNumber(v));
    }
}

// C++'s usual arithmetic conversions as Qt 5 applied them (always double
// for floating point): the type both sides are compared in.
int promotedType(int t1, int t2)
{
    if (isFloatingPoint(t1) || isFloatingPoint(t2))
        return QMetaType::Double;
    auto normalize = [](int t) {
        switch (t) {
        case QMetaType::Bool:
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::UChar:
        case QMetaType::Short:
        case QMetaType::UShort:
            return int(QMetaType::Int);
        case QMetaType::Long:
            return int(sizeof(long) == sizeof(int) ? QMetaType::Int : QMetaType::LongLong);
        case QMetaType::ULong:
            return int(sizeof(ulong) == sizeof(uint) ? QMetaType::UInt : QMetaType::ULongLong);
        default:
            return t;
        }
    };
    t1 = normalize(t1);
    t2 = normalize(t2);
    if (t1 == QMetaType::ULongLong || t2 == QMetaType::ULongLong)
        return QMetaType::ULongLong;
    if (t1 == QMetaType::LongLong || t2 == QMetaType::LongLong)
        return QMetaType::LongLong;
    if (t1 == QMetaType::UInt || t2 == QMetaType::UInt)
        return QMetaType::UInt;
    return QMetaType::Int;
}

template<typename T>
int threeWay(T a, T b)
{
    return a < b ? -1 : (a == b ? 0 : 1);
}

int numericCompare(const QVariant &a, const QVariant &b)
{
    const int promoted = promotedType(a.userType(), b.userType());
    if (promoted != QMetaType::Double) {
        const qlonglong l1 = signedNumber(a);
        const qlonglong l2 = signedNumber(b);
        switch (promoted) {
        case QMetaType::Int:
            return threeWay(int(l1), int(l2));
        case QMetaType::UInt:
            return threeWay(uint(l1), uint(l2));
        case QMetaType::LongLong:
            return threeWay(l1, l2);
        default:
            return threeWay(qulonglong(l1), qulonglong(l2));
        }
    }
    const double r1 = realNumber(a);
    const double r2 = realNumber(b);
    if (r1 == r2)
        return 0;
    // Fuzzy only between finite non-zero numbers; NaN ends up greater on
    // either side.
    const int c1 = std::fpclassify(r1);
    const int c2 = std::fpclassify(r2);
    if ((c1 == FP_NORMAL || c1 == FP_SUBNORMAL) && (c2 == FP_NORMAL || c2 == FP_SUBNORMAL)
        && qFuzzyCompare(r1, r2)) {
        return 0;
    }
    return r1 < r2 ? -1 : 1;
}

// Qt 5 read a text as a bool this way: only an empty text, "0" and "false"
// (any case) are false.
template<typename Text>
bool textAsBool(const Text &text)
{
    const Text lower = text.toLower();
    return !(lower.isEmpty() || lower == Text("0") || lower == Text("false"));
}

// How Qt 5 read a text (QString or QByteArray) as each numeric type.
template<typename Number, typename Text>
Number textNumber(const Text &text, bool *ok)
{
    if constexpr (std::is_same_v<Number, qlonglong>)
        return text.toLongLong(ok);
    else if constexpr (std::is_same_v<Number, qulonglong>)
        return text.toULongLong(ok);
    else if constexpr (std::is_same_v<Number, float>)
        return text.toFloat(ok);
    else
        return text.toDouble(ok);
}

// Numbers Qt 5 read out of a value on its way to a numeric type. A float
// target reads texts as floats, so that one beyond a float's range does not
// convert (rather than becoming infinite or zero).
template<typename Number>
bool readNumber(const QVariant &v, Number *out)
{
    bool ok = true;
    switch (v.userType()) {
    case QMetaType::QString:
        *out = textNumber<Number>(*static_cast<const QString *>(v.constData()), &ok);
        return ok;
    case QMetaType::QByteArray:
        *out = textNumber<Number>(*static_cast<const QByteArray *>(v.constData()), &ok);
        return ok;
    default:
        if constexpr (std::is_floating_point_v<Number>)
            *out = Number(realNumber(v));
        else
            *out = Number(signedNumber(v));
        return true;
    }
}

// Reads \a v as Read and stores it as Stored, Qt 5's narrowing included.
template<typename Read, typename Stored = Read>
bool convertNumber(const QVariant &v, QVariant *out)
{
    Read n = 0;
    if (!readNumber(v, &n))
        return false;
    *out = QVariant(Stored(n));
    return true;
}

QString doubleText(double d) { return QString::number(d, 'g', QLocale::FloatingPointShortest); }

// Sources from which Qt 5 converted to each written-out target type.
bool spelledOutCanConvert(const QVariant &value, int from, int to)
{
    if (from == to)
        return true;
    if (from == QMetaType::UnknownType || to == QMetaType::UnknownType)
        return false;
    // Qt 5 read a float source and target as a double here.
    if (from == QMetaType::Float)
        from = QMetaType::Double;
    if (to == QMetaType::Float)
        to = QMetaType::Double;
    if (from == to)
        return true;
    auto among = [from](std::initializer_list<int> types) {
        for (int t : types) {
            if (t == from)
                return true;
        }
        return false;
    };
    switch (to) {
    case QMetaType::Bool:
        return among({QMetaType::Double, QMetaType::Int, QMetaType::UInt, QMetaType::LongLong,
            QMetaType::ULongLong, QMetaType::QByteArray, QMetaType::QString, QMetaType::QChar});
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return among({QMetaType::Bool, QMetaType::Int, QMetaType::UInt, QMetaType::LongLong,
            QMetaType::ULongLong, QMetaType::Double, QMetaType::QString, QMetaType::QChar,
            QMetaType::QByteArray});
    case QMetaType::Double:
        return among({QMetaType::Bool, QMetaType::Int, QMetaType::UInt, QMetaType::LongLong,
            QMetaType::ULongLong, QMetaType::QString, QMetaType::QByteArray});
    case QMetaType::QChar:
        return among({QMetaType::Int, QMetaType::UInt, QMetaType::LongLong, QMetaType::ULongLong});
    case QMetaType::QString:
        if (from == QMetaType::QStringList)
            return static_cast<const QStringList *>(value.constData())->size() == 1;
        return among({QMetaType::Bool, QMetaType::Int, QMetaType::UInt, QMetaType::LongLong,
            QMetaType::ULongLong, QMetaType::Double, QMetaType::QChar, QMetaType::QByteArray,
            QMetaType::QDate, QMetaType::QTime, QMetaType::QDateTime});
    case QMetaType::QStringList:
        return among({QMetaType::QString});
    case QMetaType::QByteArray:
        return among({QMetaType::Bool, QMetaType::Int, QMetaType::UInt, QMetaType::LongLong,
            QMetaType::ULongLong, QMetaType::Double, QMetaType::QString});
    case QMetaType::QDate:
    case QMetaType::QTime:
        return among({QMetaType::QString, QMetaType::QDateTime});
    case QMetaType::QDateTime:
        return among({QMetaType::QString, QMetaType::QDate});
    default:
        return false;
    }
}

// The conversion itself, for a pair spelledOutCanConvert allows.
bool spelledOutConvert(const QVariant &v, int to, QVariant *out)
{
    const int from = v.userType();
    switch (to) {
    case QMetaType::Bool:
        switch (from) {
        case QMetaType::QString:
            *out = QVariant(textAsBool(*static_cast<const QString *>(v.constData())));
            return true;
        case QMetaType::QByteArray:
            *out = QVariant(textAsBool(*static_cast<const QByteArray *>(v.constData())));
            return true;
        case QMetaType::QChar:
            *out = QVariant(!static_cast<const QChar *>(v.constData())->isNull());
            return true;
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            *out = QVariant(qulonglong(signedNumber(v)) != 0);
            return true;
        default:
            *out = QVariant(signedNumber(v) != 0);
            return true;
        }
    case QMetaType::Int:
        return convertNumber<qlonglong, int>(v, out);
    case QMetaType::LongLong:
        return convertNumber<qlonglong>(v, out);
    case QMetaType::UInt:
        return convertNumber<qulonglong, uint>(v, out);
    case QMetaType::ULongLong:
        return convertNumber<qulonglong>(v, out);
    case QMetaType::Double:
        return convertNumber<double>(v, out);
    case QMetaType::Float:
        return convertNumber<float>(v, out);
    case QMetaType::QChar:
        *out = QVariant(QChar(ushort(signedNumber(v))));
        return true;
    case QMetaType::QString:
        *out = QVariant(vel::Qt5Variant::toString(v));
        return true;
    case QMetaType::QStringList:
        *out = QVariant(QStringList(*static_cast<const QString *>(v.constData())));
        return true;
    case QMetaType::QByteArray:
        switch (from) {
        case QMetaType::QString:
            *out = QVariant(static_cast<const QString *>(v.constData())->toUtf8());
            return true;
        case QMetaType::Double:
        case QMetaType::Float:
            *out = QVariant(doubleText(realNumber(v)).toLatin1());
            return true;
        default:
            *out = QVariant(vel::Qt5Variant::toString(v).toLatin1());
            return true;
        }
    case QMetaType::QDate: {
        const QDate date = from == QMetaType::QString
            ? QDate::fromString(*static_cast<const QString *>(v.constData()), Qt::ISODate)
            : static_cast<const QDateTime *>(v.constData())->date();
        if (!date.isValid())
            return false;
        *out = QVariant(date);
        return true;
    }
    case QMetaType::QTime: {
        const QTime time = from == QMetaType::QString
            ? QTime::fromString(*static_cast<const QString *>(v.constData()), Qt::ISODate)
            : static_cast<const QDateTime *>(v.constData())->time();
        if (!time.isValid())
            return false;
        *out = QVariant(time);
        return true;
    }
    case QMetaType::QDateTime: {
        const QDateTime dateTime = from == QMetaType::QString
            ? QDateTime::fromString(*static_cast<const QString *>(v.constData()), Qt::ISODate)
            : static_cast<const QDate *>(v.constData())->startOfDay();
        if (!dateTime.isValid())
            return false;
        *out = QVariant(dateTime);
        return true;
    }
    default:
        return false;
    }
}

template<typename T>
bool valuesEqual(const QVariant &a, const QVariant &b)
{
    return *static_cast<const T *>(a.constData()) == *static_cast<const T *>(b.constData());
}

// Equality of two values of one type, Qt 5's last step of operator==.
bool sameTypeEqual(const QVariant &a, const QVariant &b)
{
    switch (a.userType()) {
    case QMetaType::UnknownType:
        return true;
    case QMetaType::Bool:
        return valuesEqual<bool>(a, b);
    case QMetaType::Int:
        return valuesEqual<int>(a, b);
    case QMetaType::UInt:
        return valuesEqual<uint>(a, b);
    case QMetaType::LongLong:
        return valuesEqual<qlonglong>(a, b);
    case QMetaType::ULongLong:
        return valuesEqual<qulonglong>(a, b);
    case QMetaType::Double:
        return valuesEqual<double>(a, b);
    case QMetaType::Float:
        return valuesEqual<float>(a, b);
    case QMetaType::QChar:
        return valuesEqual<QChar>(a, b);
    case QMetaType::QString:
        return valuesEqual<QString>(a, b);
    case QMetaType::QStringList:
        return valuesEqual<QStringList>(a, b);
    case QMetaType::QByteArray:
        return valuesEqual<QByteArray>(a, b);
    case QMetaType::QDate:
        return valuesEqual<QDate>(a, b);
    case QMetaType::QTime:
        return valuesEqual<QTime>(a, b);
    case QMetaType::QDateTime:
        return valuesEqual<QDateTime>(a, b);
    default:
        // Both Qt versions compare two values of one type by its equality.
        return a == b;
    }
}

// A variant made null, of a type and without a value (QVariant(QVariant::Int)),
// as against a variant holding a null value (QVariant(QString())): Qt 5
// converted only the latter.
bool isNullVariant(const QVariant &v) { return v.data_ptr().is_null; }

template<typename T>
bool heldIsNull(const QVariant &v)
{
    return static_cast<const T *>(v.constData())->isNull();
}

int caseInsensitiveOrder(const QVariant &a, const QVariant &b)
{
    const int r
        = vel::Qt5Variant::toString(a).compare(vel::Qt5Variant::toString(b), Qt::CaseInsensitive);
    return r < 0 ? -1 : (r > 0 ? 1 : 0);
}

} // namespace

namespace vel::Qt5Variant {

bool isNumericType(int type)
{
    switch (type) {
    case QMetaType::Bool:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

bool isNull(const QVariant &value)
{
    if (isNullVariant(value))
        return true;
    if (isNumericType(value.userType()))
        return false;
    switch (value.userType()) {
    case QMetaType::QChar:
        return heldIsNull<QChar>(value);
    case QMetaType::QString:
        return heldIsNull<QString>(value);
    case QMetaType::QByteArray:
        return heldIsNull<QByteArray>(value);
    case QMetaType::QBitArray:
        return heldIsNull<QBitArray>(value);
    case QMetaType::QDate:
        return heldIsNull<QDate>(value);
    case QMetaType::QTime:
        return heldIsNull<QTime>(value);
    case QMetaType::QDateTime:
        return heldIsNull<QDateTime>(value);
    case QMetaType::QRect:
        return heldIsNull<QRect>(value);
    case QMetaType::QRectF:
        return heldIsNull<QRectF>(value);
    case QMetaType::QSize:
        return heldIsNull<QSize>(value);
    case QMetaType::QSizeF:
        return heldIsNull<QSizeF>(value);
    case QMetaType::QLine:
        return heldIsNull<QLine>(value);
    case QMetaType::QLineF:
        return heldIsNull<QLineF>(value);
    case QMetaType::QPoint:
        return heldIsNull<QPoint>(value);
    case QMetaType::QPointF:
        return heldIsNull<QPointF>(value);
    case QMetaType::QUuid:
        return heldIsNull<QUuid>(value);
    case QMetaType::QImage:
        return heldIsNull<QImage>(value);
    case QMetaType::QPixmap:
        return heldIsNull<QPixmap>(value);
    case QMetaType::QBitmap:
        return heldIsNull<QBitmap>(value);
    case QMetaType::QIcon:
        return heldIsNull<QIcon>(value);
    case QMetaType::QRegion:
        return heldIsNull<QRegion>(value);
    case QMetaType::QVector2D:
        return heldIsNull<QVector2D>(value);
    case QMetaType::QVector3D:
        return heldIsNull<QVector3D>(value);
    case QMetaType::QVector4D:
        return heldIsNull<QVector4D>(value);
    default:
        // Qt's own answer: a null variant or a null pointer.
        return value.isNull();
    }
}

bool canConvert(const QVariant &value, int type)
{
    const int from = value.userType();
    if (from == type)
        return true;
    if (isSpelledOut(from) && isSpelledOut(type))
        return spelledOutCanConvert(value, from, type);
    return qtCanConvert(value, type);
}

bool convert(const QVariant &value, int type, QVariant *out)
{
    const int from = value.userType();
    if (from == type) {
        *out = value;
        return true;
    }
    if (!canConvert(value, type) || isNullVariant(value))
        return false;
    if (isSpelledOut(from) && isSpelledOut(type))
        return spelledOutConvert(value, type, out);
    QVariant converted = value;
    if (!qtConvert(converted, type))
        return false;
    *out = converted;
    return true;
}

QString toString(const QVariant &value)
{
    const void *p = value.constData();
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return QString();
    case QMetaType::Bool:
        return *static_cast<const bool *>(p) ? QStringLiteral("true") : QStringLiteral("false");
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QString::number(signedNumber(value));
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return QString::number(qulonglong(signedNumber(value)));
    case QMetaType::Double:
    case QMetaType::Float:
        return doubleText(realNumber(value));
    case QMetaType::QChar:
        return QString(*static_cast<const QChar *>(p));
    case QMetaType::QString:
        return *static_cast<const QString *>(p);
    case QMetaType::QStringList: {
        const QStringList &list = *static_cast<const QStringList *>(p);
        return list.size() == 1 ? list.first() : QString();
    }
    case QMetaType::QByteArray:
        return QString::fromUtf8(*static_cast<const QByteArray *>(p));
    case QMetaType::QDate:
        return static_cast<const QDate *>(p)->toString(Qt::ISODate);
    case QMetaType::QTime:
        return static_cast<const QTime *>(p)->toString(Qt::ISODateWithMs);
    case QMetaType::QDateTime:
        return static_cast<const QDateTime *>(p)->toString(Qt::ISODateWithMs);
    default:
        return value.toString();
    }
}

bool equal(const QVariant &a, const QVariant &b)
{
    if (isNumericType(a.userType()) && isNumericType(b.userType()))
        return numericCompare(a, b) == 0;
    if (a.userType() == b.userType())
        return sameTypeEqual(a, b);
    QVariant converted;
    if (canConvert(b, a.userType())) {
        if (!convert(b, a.userType(), &converted))
            return false;
        return sameTypeEqual(a, converted);
    }
    // Qt 5 tried the other way round, without asking first.
    if (!convert(a, b.userType(), &converted))
        return false;
    return sameTypeEqual(b, converted);
}

int compare(const QVariant &a, const QVariant &b)
{
    if (isNumericType(a.userType()) && isNumericType(b.userType()))
        return numericCompare(a, b);
    if (equal(a, b))
        return 0;

    QVariant v1 = a;
    QVariant v2 = b;
    if (a.userType() != b.userType()) {
        QVariant converted;
        if (canConvert(v2, v1.userType()) && convert(v2, v1.userType(), &converted))
            v2 = converted;
        if (v1.userType() != v2.userType() && canConvert(v1, v2.userType())
            && convert(v1, v2.userType(), &converted)) {
            v1 = converted;
        }
        if (v1.userType() != v2.userType()) {
            const int r = caseInsensitiveOrder(v1, v2);
            if (r != 0)
                return r;
            // Not equal, as equal() said: the smaller type number first.
            return v1.userType() < v2.userType() ? -1 : 1;
        }
        if (isNumericType(v1.userType()) && isNumericType(v2.userType()))
            return numericCompare(v1, v2);
    }
    switch (v1.userType()) {
    case QMetaType::QDate:
        return *static_cast<const QDate *>(v1.constData())
                < *static_cast<const QDate *>(v2.constData())
            ? -1
            : 1;
    case QMetaType::QTime:
        return *static_cast<const QTime *>(v1.constData())
                < *static_cast<const QTime *>(v2.constData())
            ? -1
            : 1;
    case QMetaType::QDateTime:
        return *static_cast<const QDateTime *>(v1.constData())
                < *static_cast<const QDateTime *>(v2.constData())
            ? -1
            : 1;
    case QMetaType::QStringList:
        return *static_cast<const QStringList *>(v1.constData())
                < *static_cast<const QStringList *>(v2.constData())
            ? -1
            : 1;
    default:
        break;
    }
    const int r = caseInsensitiveOrder(v1, v2);
    if (r != 0)
        return r;
    return a.userType() < b.userType() ? -1 : 1;
}

QVariantList toList(const QVariant &value)
{
    const int type = value.userType();
    if (type == QMetaType::QString || type == QMetaType::QByteArray)
        return QVariantList();
    return value.toList();
}

bool statisticsLess(const QVariant &a, const QVariant &b)
{
    const int type = a.userType();
    if (type == b.userType()) {
        switch (type) {
        case QMetaType::Int:
            return a.toInt() < b.toInt();
        case QMetaType::UInt:
            return a.toUInt() < b.toUInt();
        case QMetaType::LongLong:
            return a.toLongLong() < b.toLongLong();
        case QMetaType::Double:
            return a.toDouble() < b.toDouble();
        case QMetaType::QString:
            return a.toString().localeAwareCompare(b.toString()) < 0;
        default:
            return std::less<const void *>()(&a, &b);
        }
    }
    if (type == QMetaType::UnknownType || b.userType() == QMetaType::UnknownType)
        return false;
    return type < b.userType();
}

} // namespace vel::Qt5Variant
