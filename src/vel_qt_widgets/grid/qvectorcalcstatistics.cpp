#include "cmwvariantcompare_p.h"
#include "qvectorcalcstatistics_p.h"

#include <vel_qt_widgets/CMwGridStatistics.h>

#include <QtCore/QCollator>
#include <QtCore/QHash>
#include <QtCore/QLocale>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/qalgorithms.h>

#if VEL_HAVE_ICU
#include <unicode/ucol.h>
#endif

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <numeric>
#include <string>

namespace {

// The statistics read their values through one of these: a vector of
// values, or pointers to values that stay where they are (the grid's cells
// in the model, read without copying a million QVariants).
struct VectorCells
{
    const QVector<QVariant> &values;
    int size() const { return values.size(); }
    const QVariant &at(int i) const { return values.at(i); }
    const int *textNumbers() const { return nullptr; }
    int textNumberCount() const { return 0; }
    const std::vector<const QVariant *> *inStorageOrder() const { return nullptr; }
};

struct PointerCells
{
    const std::vector<const QVariant *> &values;
    const vel::TextNumbers *numbers;
    const std::vector<const QVariant *> *stored;
    int size() const { return int(values.size()); }
    const QVariant &at(int i) const { return *values[static_cast<size_t>(i)]; }
    const int *textNumbers() const { return numbers ? numbers->ofCell.data() : nullptr; }
    int textNumberCount() const { return numbers ? numbers->count : 0; }
    const std::vector<const QVariant *> *inStorageOrder() const { return stored; }
};

// One value reduced to what the ordering looks at, so that a million values
// sort without touching QVariant in the comparator. Ordering: rank first
// (valid types by type number, NaN after the other doubles, invalid values
// last), then the value bits, then the position (address order).
struct SortKey
{
    quint64 bits;
    quint32 rank;
    qint32 pos;
};

inline quint32 keyByte(const SortKey &key, int digit)
{
    return digit < 8 ? quint32(key.bits >> (8 * digit)) & 0xffu
                     : (key.rank >> (8 * (digit - 8))) & 0xffu;
}

// Stable least-significant-digit radix sort on (rank, bits): the keys start
// in position order, so equal keys keep it. No comparator is involved and
// every write goes to a slot counted beforehand, so the sort cannot leave
// the array whatever the values are; a million keys take a few passes of
// plain copying instead of twenty rounds of mispredicted comparisons.
void radixSort(std::vector<SortKey> &keys)
{
    const size_t n = keys.size();
    if (n < 2)
        return;
    constexpr int digits = 12;
    // A digit that all keys share orders nothing: only the others are
    // counted and passed over (texts, for one, differ in two bytes of twelve).
    quint64 bitsDiffer = 0;
    quint32 rankDiffers = 0;
    for (const SortKey &key : keys) {
        bitsDiffer |= key.bits ^ keys.front().bits;
        rankDiffers |= key.rank ^ keys.front().rank;
    }
    int varying[digits];
    int varyingCount = 0;
    for (int digit = 0; digit < digits; ++digit) {
        const quint32 differs = digit < 8 ? quint32(bitsDiffer >> (8 * digit)) & 0xffu
                                          : (rankDiffers >> (8 * (digit - 8))) & 0xffu;
        if (differs)
            varying[varyingCount++] = digit;
    }
    if (varyingCount == 0)
        return;
    std::vector<std::array<size_t, 256>> counts(static_cast<size_t>(varyingCount));
    for (auto &count : counts)
        count.fill(0);
    for (const SortKey &key : keys) {
        for (int v = 0; v < varyingCount; ++v)
            ++counts[static_cast<size_t>(v)][keyByte(key, varying[v])];
    }
    // Every slot is written before it is read.
    std::unique_ptr<SortKey[]> buffer(new SortKey[n]);
    SortKey *src = keys.data();
    SortKey *dst = buffer.get();
    for (int v = 0; v < varyingCount; ++v) {
        const int digit = varying[v];
        std::array<size_t, 256> &count = counts[static_cast<size_t>(v)];
        size_t offset = 0;
        for (size_t &c : count) {
            const size_t here = c;
            c = offset;
            offset += here;
        }
        for (size_t i = 0; i < n; ++i)
            dst[count[keyByte(src[i], digit)]++] = src[i];
        std::swap(src, dst);
    }
    if (src != keys.data())
        std::copy(src, src + n, keys.data());
}

// True when QVariant equality of two values of one type is known without
// asking QVariant: identical keys are equal, and different integers, texts
// or doubles far apart (relative distance above 1e-9, a thousand times
// QVariant's fuzzy tolerance for doubles) differ. Anything else is left to
// Qt 5's QVariant equality.
enum class Equality { Equal, Different, Unknown };

Equality knownEquality(const SortKey &a, const SortKey &b)
{
    if (a.rank != b.rank)
        return Equality::Unknown;
    switch (a.rank >> 1) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return a.bits == b.bits ? Equality::Equal : Equality::Different;
    case QMetaType::Double: {
        if (a.rank & 1)
            return Equality::Unknown; // NaN
        if (a.bits == b.bits)
            return Equality::Equal;
        double x;
        double y;
        quint64 bx = (a.bits & (quint64(1) << 63)) ? (a.bits & ~(quint64(1) << 63)) : ~a.bits;
        quint64 by = (b.bits & (quint64(1) << 63)) ? (b.bits & ~(quint64(1) << 63)) : ~b.bits;
        std::memcpy(&x, &bx, sizeof x);
        std::memcpy(&y, &by, sizeof y);
        if (std::isfinite(x) && std::isfinite(y)
            && std::abs(x - y) > 1e-9 * std::max(std::abs(x), std::abs(y))) {
            return Equality::Different;
        }
        return Equality::Unknown;
    }
    default:
        return Equality::Unknown;
    }
}

constexpr quint32 invalidRank = std::numeric_limits<quint32>::max();

constexpr quint64 signFlip = quint64(1) << 63;

inline quint64 signedBits(qint64 v) { return quint64(v) ^ signFlip; }

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

// True when \a order lists \a texts in localeAwareCompare order; \a rises
// receives, per position, whether the text there is greater than the one
// before it (the ranks need exactly that).
bool isLocaleOrdered(
    const QVector<QString> &texts, const QVector<int> &order, std::vector<bool> &rises)
{
    rises.assign(static_cast<size_t>(order.size()), false);
    for (int i = 1; i < order.size(); ++i) {
        const QString &text = texts.at(order.at(i));
        const QString &before = texts.at(order.at(i - 1));
        // Equal texts compare equal in every collation: no call needed.
        if (text == before)
            continue;
        const int c = text.localeAwareCompare(before);
        if (c < 0)
            return false;
        // A comparison's sign turns with its arguments: greater than the
        // neighbour is the neighbour being less.
        rises[static_cast<size_t>(i)] = c > 0;
    }
    return true;
}

#if VEL_HAVE_ICU
struct UCollatorCloser
{
    void operator()(UCollator *collator) const { ucol_close(collator); }
};

// An ICU collator set up as QCollator sets up the one it makes for
// \a collator's locale and options, or null when there is none (the C
// locale compares code units, without ICU).
std::unique_ptr<UCollator, UCollatorCloser> icuCollator(const QCollator &collator)
{
    const QLocale locale = collator.locale();
    if (locale.language() == QLocale::C)
        return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    const QByteArray name = locale.bcp47Name().replace('-', '_').toLatin1();
    std::unique_ptr<UCollator, UCollatorCloser> icu(ucol_open(name.constData(), &status));
    if (U_FAILURE(status) || !icu)
        return nullptr;
    ucol_setAttribute(icu.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
    ucol_setAttribute(icu.get(), UCOL_STRENGTH,
        collator.caseSensitivity() == Qt::CaseSensitive ? UCOL_DEFAULT_STRENGTH : UCOL_SECONDARY,
        &status);
    ucol_setAttribute(
        icu.get(), UCOL_NUMERIC_COLLATION, collator.numericMode() ? UCOL_ON : UCOL_OFF, &status);
    ucol_setAttribute(icu.get(), UCOL_ALTERNATE_HANDLING,
        collator.ignorePunctuation() ? UCOL_SHIFTED : UCOL_NON_IGNORABLE, &status);
    if (U_FAILURE(status))
        return nullptr;
    return icu;
}

// One position in a sort by collation keys: the eight key bytes compared
// at the current depth, big-endian, and the text's index.
struct KeyWord
{
    quint64 word;
    int index;
};

inline bool hasZeroByte(quint64 v)
{
    return ((v - 0x0101010101010101ull) & ~v & 0x8080808080808080ull) != 0;
}

// \a order: the texts by their ICU sort keys (one zero-terminated byte
// string each, no other zero byte), equal keys by index. The keys are
// compared eight bytes at a time as integers: sorted by the first eight,
// then each group that shares them by the next eight, and so on, so that no
// comparison walks bytes one by one and most groups end after a word or two.
bool orderByCollationKeys(
    const QVector<QString> &texts, const QCollator &collator, QVector<int> &order)
{
    const std::unique_ptr<UCollator, UCollatorCloser> icu = icuCollator(collator);
    if (!icu)
        return false;
    const int n = texts.size();
    std::vector<quint8> bytes;
    bytes.reserve(static_cast<size_t>(n) * 32);
    std::vector<size_t> start(static_cast<size_t>(n) + 1);
    for (int i = 0; i < n; ++i) {
        const QString &text = texts.at(i);
        start[static_cast<size_t>(i)] = bytes.size();
        // localeAwareCompare puts an empty text before every other one, also
        // before texts the collation sees as empty: a key of just the
        // terminator is smaller than every ICU key.
        if (text.isEmpty()) {
            bytes.push_back(0);
            continue;
        }
        const size_t at = bytes.size();
        size_t room = 16 + 4 * static_cast<size_t>(text.size());
        bytes.resize(at + room);
        int length = ucol_getSortKey(icu.get(), reinterpret_cast<const UChar *>(text.utf16()),
            text.size(), bytes.data() + at, int(room));
        if (length <= 0)
            return false;
        if (size_t(length) > room) {
            room = size_t(length);
            bytes.resize(at + room);
            length = ucol_getSortKey(icu.get(), reinterpret_cast<const UChar *>(text.utf16()),
                text.size(), bytes.data() + at, int(room));
            if (length <= 0 || size_t(length) > room)
                return false;
        }
        bytes.resize(at + size_t(length));
    }
    start[static_cast<size_t>(n)] = bytes.size();

    auto wordAt = [&bytes, &start](int index, size_t depth) {
        const size_t from = start[static_cast<size_t>(index)] + 8 * depth;
        const size_t end = start[static_cast<size_t>(index) + 1];
        quint64 word = 0;
        for (size_t b = 0; b < 8; ++b)
            word = (word << 8) | (from + b < end ? bytes[from + b] : 0u);
        return word;
    };

    std::vector<KeyWord> items(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i)
        items[static_cast<size_t>(i)].index = i;
    struct Range
    {
        size_t first;
        size_t last;
        size_t depth;
    };
    std::vector<Range> pending {{0, items.size(), 0}};
    while (!pending.empty()) {
        const Range range = pending.back();
        pending.pop_back();
        for (size_t i = range.first; i < range.last; ++i)
            items[i].word = wordAt(items[i].index, range.depth);
        std::sort(items.begin() + std::ptrdiff_t(range.first),
            items.begin() + std::ptrdiff_t(range.last), [](const KeyWord &a, const KeyWord &b) {
                return a.word < b.word || (a.word == b.word && a.index < b.index);
            });
        for (size_t i = range.first; i < range.last;) {
            size_t j = i + 1;
            while (j < range.last && items[j].word == items[i].word)
                ++j;
            // A word holding the terminator ends the keys: the group is of
            // equal keys, already in index order.
            if (j - i > 1 && !hasZeroByte(items[i].word))
                pending.push_back({i, j, range.depth + 1});
            i = j;
        }
    }
    for (int i = 0; i < n; ++i)
        order[i] = items[static_cast<size_t>(i)].index;
    return true;
}
#endif

int fallbackCount = 0;

// Ranks of the strings in localeAwareCompare order; neighbours that compare
// equal share a rank, as they would in a sort of the texts themselves.
//
// A locale-aware comparison is costly, and a million of them per column
// freeze the grid. The texts are ordered instead by what decides
// localeAwareCompare: code units in the C locale, otherwise the collation
// keys of the collator that QCollator makes for the default locale, which is
// the one localeAwareCompare makes on its first call in a thread. That
// collator cannot be asked for, and it keeps the locale of that first call;
// so the order is taken only after checking each neighbouring pair with
// localeAwareCompare itself, which also decides the ties. Otherwise the
// texts are sorted with localeAwareCompare.
QVector<quint64> stringRanks(const QVector<QString> &texts)
{
    const int n = texts.size();
    QVector<int> order(n);
    std::iota(order.begin(), order.end(), 0);

    const QCollator collator;
    bool ordered = false;
#if VEL_HAVE_ICU
    ordered = orderByCollationKeys(texts, collator, order);
#endif
    if (!ordered && collator.locale().language() != QLocale::C) {
        std::vector<QCollatorSortKey> keys;
        keys.reserve(static_cast<size_t>(n));
        for (const QString &text : texts)
            keys.push_back(collator.sortKey(text));
        vel::boundedMergeSort(order.data(), n, [&keys](int a, int b) {
            return keys[static_cast<size_t>(a)].compare(keys[static_cast<size_t>(b)]) < 0;
        });
    } else if (!ordered) {
        vel::boundedMergeSort(
            order.data(), n, [&texts](int a, int b) { return texts.at(a) < texts.at(b); });
    }
    std::vector<bool> rises;
    if (!isLocaleOrdered(texts, order, rises)) {
        ++fallbackCount;
        std::iota(order.begin(), order.end(), 0);
        vel::boundedMergeSort(order.data(), n,
            [&texts](int a, int b) { return texts.at(a).localeAwareCompare(texts.at(b)) < 0; });
        rises.assign(static_cast<size_t>(n), false);
        for (int i = 1; i < n; ++i) {
            rises[static_cast<size_t>(i)]
                = texts.at(order.at(i - 1)).localeAwareCompare(texts.at(order.at(i))) < 0;
        }
    }
    QVector<quint64> ranks(n);
    quint64 rank = 0;
    for (int i = 0; i < n; ++i) {
        if (rises[static_cast<size_t>(i)])
            ++rank;
        ranks[order.at(i)] = rank;
    }
    return ranks;
}

// True when the first texts among \a values (up to a thousand) are all
// different: then texts are unlikely to repeat, and numbering the equal ones
// by hashing would cost about as much as ordering them.
template<typename Cells>
bool textsLookUnique(const Cells &values)
{
    QSet<QString> seen;
    int sampled = 0;
    for (int i = 0, n = values.size(); i < n && sampled < 1024; ++i) {
        const QVariant &v = values.at(i);
        if (v.userType() != QMetaType::QString)
            continue;
        seen.insert(*static_cast<const QString *>(v.constData()));
        ++sampled;
        if (seen.size() != sampled)
            return false;
    }
    return true;
}

// The values' keys in the statistics' order. \a textOf (if given) receives,
// per position, the number of the distinct text there, -1 for other types.
template<typename Cells>
std::vector<SortKey> sortedKeys(
    const Cells &values, QVector<int> *textOfOut = nullptr, bool *textsNumberedOut = nullptr)
{
    const int n = values.size();
    std::vector<SortKey> keys(static_cast<size_t>(n));

    QHash<QString, int> textIds;
    QVector<QString> texts;
    QVector<int> textOf;
    // Texts numbered beforehand need no hashing here: a text's first
    // appearance by position still gives it its number.
    const int *numbers = values.textNumbers();
    std::vector<int> numberedAs(numbers ? static_cast<size_t>(values.textNumberCount()) : 0, -1);
    // Texts that do not repeat are not numbered at all: each text cell gets
    // its own number, and equal texts are told apart by comparing them.
    const bool perCell = !numbers && textsLookUnique(values);

    for (int i = 0; i < n; ++i) {
        const QVariant &v = values.at(i);
        SortKey &key = keys[static_cast<size_t>(i)];
        key.pos = i;
        key.bits = 0;
        const int type = v.userType();
        if (type == QMetaType::UnknownType) {
            key.rank = invalidRank;
            continue;
        }
        key.rank = quint32(type) << 1;
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
            const QString &text = *static_cast<const QString *>(v.constData());
            if (numbers) {
                int &number = numberedAs[static_cast<size_t>(numbers[i])];
                if (number < 0) {
                    number = texts.size();
                    texts.append(text);
                }
                textOf[i] = number;
                break;
            }
            if (perCell) {
                textOf[i] = texts.size();
                texts.append(text);
                break;
            }
            auto it = textIds.constFind(text);
            if (it == textIds.constEnd()) {
                it = textIds.insert(text, texts.size());
                texts.append(text);
            }
            textOf[i] = it.value();
            break;
        }
        default:
            // Other types keep their places, unordered (docs/compatibility.md).
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

    radixSort(keys);
    if (textOfOut)
        *textOfOut = textOf;
    if (textsNumberedOut)
        *textsNumberedOut = !perCell;
    return keys;
}

// Walks the non-empty values in sorted order and tells, for each, whether it
// differs from the first value of the run before it: the one test by which
// "Distinct" counts and the ready model groups. Empty (invalid) cells, which
// equal only each other, are ordered last, so the walk ends where they
// begin. The first value is tested against itself, as the count has always
// done (a lone NaN differs from itself).
template<typename Cells, typename Visit>
void walkDistinct(const Cells &values, const std::vector<SortKey> &keys, const QVector<int> &textOf,
    bool textsNumbered, Visit visit)
{
    QVariant previous;
    SortKey previousKey {};
    bool first = true;
    for (const SortKey &key : keys) {
        if (key.rank == invalidRank)
            break;
        const QVariant &v = values.at(key.pos);
        if (first) {
            previous = v;
            previousKey = key;
        }
        Equality known = knownEquality(key, previousKey);
        // Two texts are equal exactly when they are the same distinct text
        // (numbered ones) or the same characters.
        if (known == Equality::Unknown && key.rank == previousKey.rank
            && (key.rank >> 1) == QMetaType::QString) {
            if (textsNumbered) {
                known = textOf.at(key.pos) == textOf.at(previousKey.pos) ? Equality::Equal
                                                                         : Equality::Different;
            } else {
                known = *static_cast<const QString *>(v.constData())
                        == *static_cast<const QString *>(previous.constData())
                    ? Equality::Equal
                    : Equality::Different;
            }
        }
        const bool differs = known == Equality::Different
            || (known == Equality::Unknown && !vel::Qt5Variant::equal(v, previous));
        if (differs) {
            previous = v;
            previousKey = key;
        }
        visit(key.pos, v, differs, first);
        first = false;
    }
}

} // namespace

namespace vel {

int textOrderFallbacks() { return fallbackCount; }

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

QVector<QVector<int>> statisticsRuns(const QVector<QVariant> &values)
{
    QVector<int> textOf;
    bool textsNumbered = true;
    const std::vector<SortKey> keys = sortedKeys(VectorCells {values}, &textOf, &textsNumbered);
    QVector<QVector<int>> runs;
    int walked = 0;
    walkDistinct(VectorCells {values}, keys, textOf, textsNumbered,
        [&runs, &walked](int pos, const QVariant &, bool differs, bool first) {
            if (first || differs)
                runs.append(QVector<int>());
            runs.last().append(pos);
            ++walked;
        });
    if (walked < int(keys.size())) {
        runs.append(QVector<int>());
        for (size_t i = static_cast<size_t>(walked); i < keys.size(); ++i)
            runs.last().append(keys[i].pos);
    }
    return runs;
}

} // namespace vel

namespace {

constexpr int digitBits = 11;
constexpr quint64 digitMask = (quint64(1) << digitBits) - 1;

// Stable least-significant-digit radix sort of 64-bit items by keyOf(item),
// 11 bits a pass: six passes for a million values instead of eight, and
// eight bytes moved per value instead of the sixteen of a SortKey.
template<typename KeyOf>
void radixSortItems(std::vector<quint64> &items, KeyOf keyOf)
{
    const size_t n = items.size();
    if (n < 2)
        return;
    constexpr int digits = (64 + digitBits - 1) / digitBits;
    std::vector<std::array<size_t, digitMask + 1>> counts(digits);
    for (auto &count : counts)
        count.fill(0);
    for (const quint64 item : items) {
        const quint64 key = keyOf(item);
        for (int digit = 0; digit < digits; ++digit)
            ++counts[digit][(key >> (digitBits * digit)) & digitMask];
    }
    std::vector<quint64> buffer(n);
    quint64 *src = items.data();
    quint64 *dst = buffer.data();
    for (int digit = 0; digit < digits; ++digit) {
        const int shift = digitBits * digit;
        std::array<size_t, digitMask + 1> &count = counts[digit];
        if (count[(keyOf(src[0]) >> shift) & digitMask] == n)
            continue;
        size_t offset = 0;
        for (size_t &c : count) {
            const size_t here = c;
            c = offset;
            offset += here;
        }
        for (size_t i = 0; i < n; ++i)
            dst[count[(keyOf(src[i]) >> shift) & digitMask]++] = src[i];
        std::swap(src, dst);
    }
    if (src != items.data())
        std::copy(src, src + n, items.data());
}

inline double doubleOf(quint64 bits)
{
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

inline quint64 bitsOf(double d)
{
    quint64 b;
    std::memcpy(&b, &d, sizeof b);
    return b;
}

// Adds the n-th value x of a numeric column to the running figures: the
// mean updated value by value, and the spread accumulated as x times its
// distance from the mean *before* the update (kept: docs/compatibility.md).
inline void accumulate(double x, qint64 n, double &mean, double &sum, double &min, double &max)
{
    const double d = x - mean;
    mean = mean + d / double(n);
    sum += x * d;
    if (x < min)
        min = x;
    if (x > max)
        max = x;
}

inline double standardDeviation(double sum, qint64 n)
{
    double variance = n != 0 ? sum / double(n) : 0.0;
    if (variance < 0)
        variance = 0;
    return std::sqrt(variance);
}

// Takes the values of a column of one scalar type out of their QVariants,
// in the order of \a values: NaN apart, since it orders
// after every other double. Returns the type, or QMetaType::UnknownType for
// any other column; \a signedZeros tells whether a NaN or a -0.0 was seen.
template<typename Cells>
int scalarItemsIn(
    const Cells &values, std::vector<quint64> &items, std::vector<double> &nans, bool &signedZeros)
{
    int type = QMetaType::UnknownType;
    signedZeros = false;
    items.reserve(static_cast<size_t>(values.size()));
    for (int i = 0, size = values.size(); i < size; ++i) {
        const QVariant &v = values.at(i);
        const int t = v.userType();
        if (t == QMetaType::UnknownType)
            continue;
        if (t != type) {
            if (type != QMetaType::UnknownType)
                return QMetaType::UnknownType;
            if (t != QMetaType::Double && t != QMetaType::Int && t != QMetaType::LongLong
                && t != QMetaType::UInt) {
                return QMetaType::UnknownType;
            }
            type = t;
        }
        switch (type) {
        case QMetaType::Double: {
            const double x = *static_cast<const double *>(v.constData());
            if (std::isnan(x)) {
                nans.push_back(x);
                signedZeros = true;
            } else {
                if (x == 0.0 && std::signbit(x))
                    signedZeros = true;
                items.push_back(bitsOf(x));
            }
            break;
        }
        case QMetaType::Int:
            items.push_back(signedBits(*static_cast<const int *>(v.constData())));
            break;
        case QMetaType::LongLong:
            items.push_back(signedBits(*static_cast<const qlonglong *>(v.constData())));
            break;
        default:
            items.push_back(*static_cast<const uint *>(v.constData()));
            break;
        }
    }
    return type;
}

// The same in position order. The sort below is stable, and only values
// that differ in their bits but not in their key (0.0 and -0.0) or NaNs
// (kept apart in reading order) can tell one reading order from another:
// without them the cells are read in the order in which they are stored.
template<typename Cells>
int scalarItems(const Cells &values, std::vector<quint64> &items, std::vector<double> &nans)
{
    bool signedZeros = false;
    if (const std::vector<const QVariant *> *stored = values.inStorageOrder()) {
        const int type
            = scalarItemsIn(PointerCells {*stored, nullptr, nullptr}, items, nans, signedZeros);
        if (!signedZeros)
            return type;
        items.clear();
        nans.clear();
    }
    return scalarItemsIn(values, items, nans, signedZeros);
}

// The reading as a double of an item of scalarItems() of \a type.
inline double scalarValue(int type, quint64 item)
{
    switch (type) {
    case QMetaType::Double:
        return doubleOf(item);
    case QMetaType::Int:
        return double(qint32(qint64(item ^ signFlip)));
    case QMetaType::LongLong:
        return double(qint64(item ^ signFlip));
    default:
        return double(quint32(item));
    }
}

// Whether two doubles, neither NaN, of different keys are different values
// for QVariant: far apart they are; close ones are left to Qt 5's (fuzzy)
// QVariant equality.
inline bool unequalDoublesDiffer(double x, double previous)
{
    if (std::isfinite(x) && std::isfinite(previous)
        && std::abs(x - previous) > 1e-9 * std::max(std::abs(x), std::abs(previous))) {
        return true;
    }
    return !vel::Qt5Variant::equal(QVariant(x), QVariant(previous));
}

// Whether two neighbours in order are different values, as QVariant
// equality says: integers exactly, also beyond a double's 53 bits, doubles
// by their bits first and by QVariant's (fuzzy) comparison where close.
inline bool scalarsDiffer(bool isDouble, quint64 item, double x, bool isNan, quint64 previousItem,
    double previous, bool previousNan)
{
    if (!isDouble)
        return item != previousItem;
    if (isNan || previousNan)
        return !vel::Qt5Variant::equal(QVariant(x), QVariant(previous));
    if (doubleBits(x) == doubleBits(previous))
        return false; // 0.0 and -0.0 included
    return unequalDoublesDiffer(x, previous);
}

// Stable sort of 64-bit keys that are the items themselves (equal keys are
// equal items, so stability is moot). Only the bits in which the keys
// differ from the smallest are sorted: a range of whole numbers smaller than
// the count is counted instead of sorted, and wider ones take as few radix
// passes of up to 11 bits as their spread needs.
void sortKeys(std::vector<quint64> &keys)
{
    const size_t n = keys.size();
    if (n < 2)
        return;
    quint64 lo = keys.front();
    quint64 hi = lo;
    for (const quint64 key : keys) {
        lo = std::min(lo, key);
        hi = std::max(hi, key);
    }
    const quint64 range = hi - lo;
    if (range == 0)
        return;
    if (range < quint64(n) && range < (quint64(1) << 22)) {
        std::vector<quint32> counts(static_cast<size_t>(range) + 1, 0);
        for (const quint64 key : keys)
            ++counts[static_cast<size_t>(key - lo)];
        size_t at = 0;
        for (size_t v = 0; v < counts.size(); ++v) {
            for (quint32 c = counts[v]; c > 0; --c)
                keys[at++] = lo + v;
        }
        return;
    }
    const int bits = 64 - int(qCountLeadingZeroBits(range));
    const int passes = (bits + digitBits - 1) / digitBits;
    const int width = (bits + passes - 1) / passes;
    const quint64 mask = (quint64(1) << width) - 1;
    const size_t buckets = size_t(1) << width;
    std::vector<size_t> counts(static_cast<size_t>(passes) * buckets, 0);
    for (const quint64 key : keys) {
        const quint64 d = key - lo;
        for (int p = 0; p < passes; ++p)
            ++counts[size_t(p) * buckets + ((d >> (width * p)) & mask)];
    }
    std::vector<quint64> buffer(n);
    quint64 *src = keys.data();
    quint64 *dst = buffer.data();
    for (int p = 0; p < passes; ++p) {
        const int shift = width * p;
        size_t *count = counts.data() + size_t(p) * buckets;
        if (count[((src[0] - lo) >> shift) & mask] == n)
            continue;
        size_t offset = 0;
        for (size_t b = 0; b < buckets; ++b) {
            const size_t here = count[b];
            count[b] = offset;
            offset += here;
        }
        for (size_t i = 0; i < n; ++i) {
            const quint64 key = src[i];
            dst[count[((key - lo) >> shift) & mask]++] = key;
        }
        std::swap(src, dst);
    }
    if (src != keys.data())
        std::copy(src, src + n, keys.data());
}

// The inverse of doubleBits() for every double but -0.0.
inline quint64 itemOfDoubleKey(quint64 key) { return (key & signFlip) ? (key & ~signFlip) : ~key; }

// Orders the items of a column of one scalar \a type (as scalarItems()
// takes them out) and walks them as the general path walks its values,
// step for step, so every result is the same to the bit.
void scalarWalk(int type, std::vector<quint64> &items, const std::vector<double> &nans,
    double &count, double &distinct, double &min, double &max, double &mean, double &stdev)
{
    const bool isDouble = type == QMetaType::Double;
    // Without NaN and -0.0 a double is told by its key alone: the keys are
    // sorted as they are and turned back into the doubles after.
    bool plain = nans.empty();
    if (isDouble && plain)
        plain = std::find(items.begin(), items.end(), signFlip) == items.end();
    if (plain && isDouble && !items.empty()) {
        for (quint64 &item : items)
            item = doubleBits(doubleOf(item));
        sortKeys(items);
        // The walk below, on the keys: equal keys are equal bits here.
        distinct = 1;
        qint64 n = 0;
        double sum = 0;
        quint64 previousKey = items.front();
        double previous = doubleOf(itemOfDoubleKey(previousKey));
        min = max = previous;
        for (const quint64 key : items) {
            const double x = doubleOf(itemOfDoubleKey(key));
            if (key != previousKey && unequalDoublesDiffer(x, previous)) {
                previousKey = key;
                previous = x;
                distinct += 1;
            }
            n += 1;
            accumulate(x, n, mean, sum, min, max);
        }
        count = double(n);
        stdev = standardDeviation(sum, n);
        return;
    }
    if (plain) {
        sortKeys(items);
    } else if (isDouble) {
        // Doubles are kept as they are (so that -0.0 stays -0.0) and keyed by
        // the same monotone map as the general path.
        radixSortItems(items, [](quint64 item) { return doubleBits(doubleOf(item)); });
    } else {
        radixSortItems(items, [](quint64 item) { return item; });
    }

    distinct = 1;
    qint64 n = 0;
    double sum = 0;
    // The previous distinct value: its item and its reading as a double.
    quint64 previousItem = 0;
    double previous = 0;
    bool previousNan = false;
    auto visit = [&](quint64 item, double x, bool isNan) {
        if (n == 0) {
            previousItem = item;
            previous = x;
            previousNan = isNan;
            min = max = x;
        }
        if (scalarsDiffer(isDouble, item, x, isNan, previousItem, previous, previousNan)) {
            previousItem = item;
            previous = x;
            previousNan = isNan;
            distinct += 1;
        }
        n += 1;
        accumulate(x, n, mean, sum, min, max);
    };
    for (const quint64 item : items)
        visit(item, scalarValue(type, item), false);
    for (const double x : nans)
        visit(bitsOf(x), x, true);

    count = double(n);
    stdev = standardDeviation(sum, n);
}

// The common column: every non-empty cell holds one type among Int, UInt,
// LongLong and Double. The values are taken out of their QVariants once and
// sorted as plain 64-bit items. Returns false, having set nothing, for any
// other column.
template<typename Cells>
bool scalarStatistics(const Cells &values, double &count, double &distinct, double &min,
    double &max, double &mean, double &stdev)
{
    std::vector<quint64> items;
    std::vector<double> nans;
    const int type = scalarItems(values, items, nans);
    if (type == QMetaType::UnknownType)
        return false;
    scalarWalk(type, items, nans, count, distinct, min, max, mean, stdev);
    return true;
}

template<typename Cells>
void generalStatisticsOf(const Cells &values, double &count, double &distinct, double &min,
    double &max, double &mean, double &stdev)
{
    count = 0;
    distinct = 0;
    min = 0;
    max = 0;
    mean = 0;
    stdev = 0;
    if (values.size() == 0)
        return;

    distinct = 1;
    QVector<int> textOf;
    bool textsNumbered = true;
    const std::vector<SortKey> keys = sortedKeys(values, &textOf, &textsNumbered);
    const bool numeric = vel::isStatisticsNumeric(values.at(keys.front().pos));

    qint64 n = 0;
    double sum = 0;
    walkDistinct(
        values, keys, textOf, textsNumbered, [&](int, const QVariant &v, bool differs, bool first) {
            if (first)
                min = max = v.toDouble();
            if (differs)
                distinct += 1;
            n += 1;
            if (numeric)
                accumulate(v.toDouble(), n, mean, sum, min, max);
        });
    count = double(n);
    if (numeric)
        stdev = standardDeviation(sum, n);
}

template<typename Cells>
void statisticsOf(const Cells &values, double &count, double &distinct, double &min, double &max,
    double &mean, double &stdev)
{
    count = 0;
    distinct = 0;
    min = 0;
    max = 0;
    mean = 0;
    stdev = 0;
    if (values.size() == 0)
        return;
    if (!scalarStatistics(values, count, distinct, min, max, mean, stdev))
        generalStatisticsOf(values, count, distinct, min, max, mean, stdev);
}

} // namespace

namespace {

// The cells of a typed column to read, in order: the listed records, or
// every record.
struct TypedCells
{
    const vel::GridTableCells::Typed &column;
    const int *records;
    int size;

    int record(int i) const { return records ? records[i] : i; }
    bool present(int record) const { return (*column.present)[static_cast<size_t>(record)]; }
    const char *bytes(int record) const
    {
        return column.text + (record == 0 ? 0 : column.ends[record - 1]);
    }
    int length(int record) const
    {
        return int(column.ends[record] - (record == 0 ? 0 : column.ends[record - 1]));
    }
    QString text(int record) const { return QString::fromUtf8(bytes(record), length(record)); }
};

// True when the first texts among the cells (up to a thousand) are all
// different: then texts are unlikely to repeat, and numbering the equal
// ones would cost about as much as ranking each cell's text.
bool typedTextsLookUnique(const TypedCells &cells)
{
    QSet<QString> seen;
    int sampled = 0;
    for (int i = 0; i < cells.size && sampled < 1024; ++i) {
        const int record = cells.record(i);
        if (!cells.present(record))
            continue;
        seen.insert(cells.text(record));
        ++sampled;
        if (seen.size() != sampled)
            return false;
    }
    return true;
}

// The distinct texts among some cells of a column of UTF-8 texts, numbered
// by their bytes without a QString a cell. Texts that are not ASCII are
// numbered by the UTF-8 of what QString::fromUtf8 makes of them, so that
// two cells share a number exactly when their QStrings are equal (an
// invalid sequence and U+FFFD read alike, for one).
class TextNumbering
{
public:
    explicit TextNumbering(const char *text)
        : m_text(text)
    {
    }

    int number(const char *bytes, int length)
    {
        bool ascii = true;
        for (int i = 0; i < length && ascii; ++i)
            ascii = uchar(bytes[i]) < 0x80;
        QByteArray canonical;
        if (!ascii) {
            canonical = QString::fromUtf8(bytes, length).toUtf8();
            bytes = canonical.constData();
            length = canonical.size();
        }
        const uint hash = uint(qHashBits(bytes, size_t(length), 0));
        if (2 * (m_texts.size() + 1) > m_slots.size())
            grow();
        const size_t mask = m_slots.size() - 1;
        for (size_t slot = hash & mask;; slot = (slot + 1) & mask) {
            const int id = m_slots[slot];
            if (id < 0) {
                m_slots[slot] = int(m_texts.size());
                Text text {qint64(bytes - m_text), length, hash};
                if (!ascii) {
                    text.begin = -1 - qint64(m_side.size());
                    m_side.append(bytes, size_t(length));
                }
                m_texts.push_back(text);
                return int(m_texts.size()) - 1;
            }
            const Text &known = m_texts[static_cast<size_t>(id)];
            if (known.hash == hash && known.length == length
                && std::memcmp(bytesOf(known), bytes, size_t(length)) == 0) {
                return id;
            }
        }
    }

    // The numbered texts as QStrings, by number; the numbering is dropped.
    QVector<QString> takeTexts()
    {
        m_slots = {};
        QVector<QString> texts;
        texts.reserve(int(m_texts.size()));
        for (const Text &text : m_texts)
            texts.append(QString::fromUtf8(bytesOf(text), text.length));
        m_texts = {};
        m_side = {};
        return texts;
    }

private:
    // Where a text's bytes are: at begin in the column's buffer, or, for a
    // negative begin, at -1 - begin in m_side.
    struct Text
    {
        qint64 begin;
        int length;
        uint hash;
    };

    const char *bytesOf(const Text &text) const
    {
        return text.begin >= 0 ? m_text + text.begin : m_side.data() + (-1 - text.begin);
    }

    void grow()
    {
        std::vector<int> slots(std::max<size_t>(1024, 2 * m_slots.size()), -1);
        const size_t mask = slots.size() - 1;
        for (size_t id = 0; id < m_texts.size(); ++id) {
            size_t slot = m_texts[id].hash & mask;
            while (slots[slot] >= 0)
                slot = (slot + 1) & mask;
            slots[slot] = int(id);
        }
        m_slots = std::move(slots);
    }

    const char *m_text;
    std::vector<int> m_slots;
    std::vector<Text> m_texts;
    std::string m_side;
};

// The general path for a column of texts (and empty cells), without its
// QVariants: the texts numbered, the distinct ones ranked by stringRanks(),
// the cells ordered by (rank, position) and walked for "Distinct" and the
// first value.
void textStatistics(
    const TypedCells &cells, double &count, double &distinct, double &min, double &max)
{
    const vel::GridTableCells::Typed &column = cells.column;
    std::vector<int> numberOf(static_cast<size_t>(cells.size), -1);
    QVector<QString> texts;
    qint64 present = 0;
    // Texts that do not repeat are not numbered at all: each cell's text
    // gets its own number, and equal texts are told apart by comparing them.
    const bool perCell = typedTextsLookUnique(cells);
    if (perCell) {
        texts.reserve(cells.size);
        for (int i = 0; i < cells.size; ++i) {
            const int record = cells.record(i);
            if (!cells.present(record))
                continue;
            numberOf[static_cast<size_t>(i)] = texts.size();
            texts.append(cells.text(record));
            ++present;
        }
    } else {
        TextNumbering numbering(column.text);
        for (int i = 0; i < cells.size; ++i) {
            const int record = cells.record(i);
            if (!cells.present(record))
                continue;
            numberOf[static_cast<size_t>(i)]
                = numbering.number(cells.bytes(record), cells.length(record));
            ++present;
        }
        texts = numbering.takeTexts();
    }
    distinct = 1;
    if (present == 0)
        return;
    count = double(present);

    const QVector<quint64> ranks = stringRanks(texts);
    // Ranks run from 0 without gaps; texts that collate alike share one.
    size_t rankCount = 0;
    for (const quint64 rank : ranks)
        rankCount = std::max(rankCount, static_cast<size_t>(rank) + 1);
    std::vector<int> textsOfRank(rankCount, 0);
    for (const quint64 rank : ranks)
        ++textsOfRank[static_cast<size_t>(rank)];
    const bool shared = std::any_of(
        textsOfRank.begin(), textsOfRank.end(), [](int textCount) { return textCount > 1; });

    int first = -1;
    if (!shared) {
        // One text a rank: the order is the texts' own, each a run.
        distinct = double(rankCount);
        first = int(std::find(ranks.begin(), ranks.end(), quint64(0)) - ranks.begin());
    } else {
        // Texts of one rank follow each other in position order, and each
        // change of text among them counts.
        std::vector<size_t> start(rankCount + 1, 0);
        for (const int number : numberOf) {
            if (number >= 0)
                ++start[static_cast<size_t>(ranks.at(number)) + 1];
        }
        std::partial_sum(start.begin(), start.end(), start.begin());
        std::vector<int> order(static_cast<size_t>(present));
        for (size_t i = 0; i < numberOf.size(); ++i) {
            const int number = numberOf[i];
            if (number >= 0)
                order[start[static_cast<size_t>(ranks.at(number))]++] = number;
        }
        first = order.front();
        int previous = first;
        for (const int number : order) {
            if (perCell ? texts.at(number) != texts.at(previous) : number != previous) {
                previous = number;
                distinct += 1;
            }
        }
    }
    min = max = QVariant(texts.at(first)).toDouble();
}

} // namespace

namespace vel {

bool typedStatistics(const GridTableCells::Typed &column, const int *records, int size,
    const int *inStorageOrder, double &count, double &distinct, double &min, double &max,
    double &mean, double &stdev)
{
    if (column.kind == GridTableCells::Typed::None)
        return false;
    count = 0;
    distinct = 0;
    min = 0;
    max = 0;
    mean = 0;
    stdev = 0;
    if (!records)
        size = column.size;
    if (size <= 0)
        return true;
    if (column.kind == GridTableCells::Typed::Texts) {
        textStatistics(TypedCells {column, records, size}, count, distinct, min, max);
        return true;
    }

    // As scalarItems() takes them out of QVariants: in storage order unless
    // a NaN or a -0.0 makes the reading order tell.
    const bool isDouble = column.kind == GridTableCells::Typed::Doubles;
    std::vector<quint64> items;
    std::vector<double> nans;
    auto read = [&](const int *order) {
        const TypedCells cells {column, order, size};
        items.clear();
        nans.clear();
        items.reserve(static_cast<size_t>(size));
        bool signedZeros = false;
        for (int i = 0; i < size; ++i) {
            const int record = cells.record(i);
            if (!cells.present(record))
                continue;
            if (!isDouble) {
                items.push_back(signedBits(column.ints[record]));
                continue;
            }
            const double x = column.doubles[record];
            if (std::isnan(x)) {
                nans.push_back(x);
                signedZeros = true;
            } else {
                if (x == 0.0 && std::signbit(x))
                    signedZeros = true;
                items.push_back(bitsOf(x));
            }
        }
        return signedZeros;
    };
    const int *first = records && inStorageOrder ? inStorageOrder : records;
    if (read(first) && first != records)
        read(records);
    if (items.empty() && nans.empty()) {
        distinct = 1;
        return true;
    }
    scalarWalk(isDouble ? QMetaType::Double : QMetaType::Int, items, nans, count, distinct, min,
        max, mean, stdev);
    return true;
}

void calcStatistics(const std::vector<const QVariant *> &values, const TextNumbers *textNumbers,
    const std::vector<const QVariant *> *inStorageOrder, double &count, double &distinct,
    double &min, double &max, double &mean, double &stdev)
{
    statisticsOf(
        PointerCells {values, textNumbers, inStorageOrder}, count, distinct, min, max, mean, stdev);
}

} // namespace vel

void QVectorCalcStatistics(const QVector<QVariant> &values, double &count, double &distinct,
    double &min, double &max, double &mean, double &stdev)
{
    statisticsOf(VectorCells {values}, count, distinct, min, max, mean, stdev);
}
