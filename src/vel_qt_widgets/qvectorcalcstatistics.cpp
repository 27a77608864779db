#include "cmwstatisticsorder_p.h"

#include <vel_qt_widgets/CMwGridStatistics.h>

#include <QtCore/QHash>
#include <QtCore/QString>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

// One value reduced to what the ordering looks at, so that a million values
// sort without touching QVariant in the comparator. Ordering: rank first
// (valid types by type number, NaN after the other doubles, invalid values
// last), then the value bits, then the position (address order).
struct SortKey
{
    quint64 rank;
    quint64 bits;
    qint32 pos;
};

inline bool keyLess(const SortKey &a, const SortKey &b)
{
    if (a.rank != b.rank)
        return a.rank < b.rank;
    if (a.bits != b.bits)
        return a.bits < b.bits;
    return a.pos < b.pos;
}

constexpr quint64 signFlip = quint64(1) << 63;

inline quint64 signedBits(qint64 v)
{
    return quint64(v) ^ signFlip;
}

// Monotone map of a non-NaN double onto unsigned integers; -0.0 and 0.0 are
// equal for operator< and must stay equal here.
inline quint64 doubleBits(double d)
{
    if (d == 0.0)
        d = 0.0;
    quint64 b;
    std::memcpy(&b, &d, sizeof b);
    return (b & signFlip) ? ~b : (b | signFlip);
}

// Ranks of the distinct strings in localeAwareCompare order. Each distinct
// text is compared once per merge step instead of once per occurrence;
// neighbours that compare equal share a rank, as they would in a sort of the
// texts themselves.
QVector<quint64> stringRanks(const QVector<QString> &texts)
{
    QVector<int> order(texts.size());
    for (int i = 0; i < order.size(); ++i)
        order[i] = i;
    vel::boundedMergeSort(order.data(), order.size(), [&texts](int a, int b) {
        return texts.at(a).localeAwareCompare(texts.at(b)) < 0;
    });
    QVector<quint64> ranks(texts.size());
    quint64 rank = 0;
    for (int i = 0; i < order.size(); ++i) {
        if (i > 0 && texts.at(order.at(i - 1)).localeAwareCompare(texts.at(order.at(i))) < 0)
            ++rank;
        ranks[order.at(i)] = rank;
    }
    return ranks;
}

} // namespace

namespace vel {

bool isStatisticsNumeric(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Double:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

QVector<int> statisticsOrder(const QVector<QVariant> &values)
{
    const int n = values.size();
    std::vector<SortKey> keys(static_cast<size_t>(n));

    QHash<QString, int> textIds;
    QVector<QString> texts;
    QVector<int> textOf;

    for (int i = 0; i < n; ++i) {
        const QVariant &v = values.at(i);
        SortKey &key = keys[static_cast<size_t>(i)];
        key.pos = i;
        key.bits = 0;
        const int type = v.userType();
        if (type == QMetaType::UnknownType) {
            key.rank = std::numeric_limits<quint64>::max();
            continue;
        }
        key.rank = quint64(quint32(type)) << 1;
        switch (type) {
        case QMetaType::Int:
            key.bits = signedBits(v.toInt());
            break;
        case QMetaType::LongLong:
            key.bits = signedBits(v.toLongLong());
            break;
        case QMetaType::UInt:
            key.bits = v.toUInt();
            break;
        case QMetaType::Double: {
            const double d = v.toDouble();
            if (std::isnan(d))
                key.rank |= 1;
            else
                key.bits = doubleBits(d);
            break;
        }
        case QMetaType::QString: {
            if (textOf.isEmpty())
                textOf.fill(-1, n);
            const QString text = v.toString();
            auto it = textIds.constFind(text);
            if (it == textIds.constEnd()) {
                it = textIds.insert(text, texts.size());
                texts.append(text);
            }
            textOf[i] = it.value();
            break;
        }
        default:
            // Other types are not ordered by value; they keep their places.
            break;
        }
    }

    if (!texts.isEmpty()) {
        const QVector<quint64> ranks = stringRanks(texts);
        for (int i = 0; i < n; ++i) {
            if (textOf.at(i) >= 0)
                keys[static_cast<size_t>(i)].bits = ranks.at(textOf.at(i));
        }
    }

    boundedMergeSort(keys.data(), n, keyLess);

    QVector<int> order(n);
    for (int i = 0; i < n; ++i)
        order[i] = keys[static_cast<size_t>(i)].pos;
    return order;
}

} // namespace vel

void QVectorCalcStatistics(const QVector<QVariant> &values, double &count, double &distinct,
                           double &min, double &max, double &mean, double &stdev)
{
    count = 0;
    distinct = 0;
    min = 0;
    max = 0;
    mean = 0;
    stdev = 0;
    if (values.isEmpty())
        return;

    distinct = 1;
    const QVector<int> order = vel::statisticsOrder(values);
    const bool numeric = vel::isStatisticsNumeric(values.at(order.first()));

    const QVariant empty;
    qint64 n = 0;
    double sum = 0;
    QVariant previous;
    for (int position : order) {
        const QVariant &v = values.at(position);
        if (v == empty)
            continue;
        if (n == 0) {
            previous = v;
            min = max = v.toDouble();
        }
        if (v != previous) {
            previous = v;
            distinct += 1;
        }
        n += 1;
        if (numeric) {
            const double x = v.toDouble();
            const double d = x - mean;
            mean = mean + d / double(n);
            // x times its distance from the mean *before* the update: the
            // spread the grid has always shown, kept on purpose.
            sum += x * d;
            if (x < min)
                min = x;
            if (x > max)
                max = x;
        }
    }
    count = double(n);
    if (numeric) {
        double variance = n != 0 ? sum / double(n) : 0.0;
        if (variance < 0)
            variance = 0;
        stdev = std::sqrt(variance);
    }
}
