#include "grid_oracles.h"

#include <algorithm>
#include <cmath>

namespace oracle {

namespace {

    bool statisticsLess(const QVariant &a, const QVariant &b)
    {
        if (!a.isValid() || !b.isValid())
            return a.isValid() && !b.isValid();
        if (a.userType() != b.userType())
            return a.userType() < b.userType();
        switch (a.userType()) {
        case QMetaType::Int:
            return a.toInt() < b.toInt();
        case QMetaType::UInt:
            return a.toUInt() < b.toUInt();
        case QMetaType::LongLong:
            return a.toLongLong() < b.toLongLong();
        case QMetaType::Double: {
            const double x = a.toDouble();
            const double y = b.toDouble();
            if (std::isnan(x) || std::isnan(y))
                return !std::isnan(x);
            return x < y;
        }
        case QMetaType::QString:
            return a.toString().localeAwareCompare(b.toString()) < 0;
        default:
            return false;
        }
    }

    bool isNumeric(const QVariant &value)
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

} // namespace

void generalStatistics(const QVector<QVariant> &values, double &count, double &distinct,
    double &min, double &max, double &mean, double &stdev)
{
    count = distinct = min = max = mean = stdev = 0;
    if (values.isEmpty())
        return;
    QVector<QVariant> sorted = values;
    std::stable_sort(sorted.begin(), sorted.end(), statisticsLess);
    distinct = 1;
    const bool numeric = isNumeric(sorted.first());
    double n = 0;
    double sum = 0;
    QVariant previous;
    for (const QVariant &v : qAsConst(sorted)) {
        if (v == QVariant())
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
            mean = mean + d / n;
            sum += x * d;
            if (x < min)
                min = x;
            if (x > max)
                max = x;
        }
    }
    count = n;
    if (numeric) {
        double variance = n != 0 ? sum / n : 0.0;
        if (variance < 0)
            variance = 0;
        stdev = std::sqrt(variance);
    }
}

} // namespace oracle
