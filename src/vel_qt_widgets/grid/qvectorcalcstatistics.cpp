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
#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/ucoleitr.h>
#include <unicode/uset.h>
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
        // Each bucket's count becomes the slot its first key goes to.
        std::exclusive_scan(count.begin(), count.end(), count.begin(), size_t(0));
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

// Always inlined, here and in the helpers built on it: a prefetch has no
// effect the optimiser can see, and a call to a function made only of one is
// dropped as useless before it is inlined.
Q_ALWAYS_INLINE void prefetchAddress(const void *address)
{
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    Q_UNUSED(address);
#endif
}

// Asks for a text's characters ahead of their use: the texts are visited in
// collation order, which is no order in memory, and a miss a text would cost
// more than comparing them.
Q_ALWAYS_INLINE void prefetchText(const QString *text)
{
#if defined(__GNUC__)
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    __builtin_prefetch(text->constData());
#else
    // Qt 5 keeps the size beside the characters: the data pointer is read
    // without following it.
    __builtin_prefetch(const_cast<QString *>(text)->data_ptr());
#endif
#else
    Q_UNUSED(text);
#endif
}

// How far ahead of a walk over texts their memory is asked for.
constexpr size_t textsAhead = 8;

// QString::localeAwareCompare for views: the same helper compares QStrings,
// so views and strings order alike.
inline int localeAwareCompare(QStringView a, QStringView b)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QString::localeAwareCompare(a, b);
#else
    return QStringRef::localeAwareCompare(a, b);
#endif
}

// The texts being ordered. Either pointers to the QStrings where the values
// keep them, so that a million texts are neither copied nor
// reference-counted; or, for texts read from UTF-8, their UTF-16 code units
// side by side in one buffer: a QString a text costs a heap block each,
// several times the characters of a short text.
class TextList
{
public:
    enum Storage { Strings, Buffer };

    explicit TextList(Storage storage)
        : m_buffered(storage == Buffer)
    {
        if (m_buffered)
            m_start.push_back(0);
    }

    void reserve(size_t texts, size_t units = 0)
    {
        if (!m_buffered) {
            m_strings.reserve(texts);
            return;
        }
        m_start.reserve(texts + 1);
        m_units.reserve(units);
    }

    void push_back(const QString *text) { m_strings.push_back(text); }

    // Appends the text that QString::fromUtf8 makes of \a bytes.
    void appendUtf8(const char *bytes, int length)
    {
        bool ascii = true;
        for (int i = 0; i < length && ascii; ++i)
            ascii = uchar(bytes[i]) < 0x80;
        if (ascii) {
            m_units.insert(m_units.end(), bytes, bytes + length);
        } else {
            const QString text = QString::fromUtf8(bytes, length);
            const auto *units = reinterpret_cast<const char16_t *>(text.constData());
            m_units.insert(m_units.end(), units, units + text.size());
        }
        m_start.push_back(m_units.size());
    }

    size_t size() const { return m_buffered ? m_start.size() - 1 : m_strings.size(); }
    bool empty() const { return size() == 0; }

    QStringView at(size_t i) const
    {
        if (!m_buffered)
            return QStringView(*m_strings[i]);
        return QStringView(m_units.data() + m_start[i], qsizetype(m_start[i + 1] - m_start[i]));
    }

    // The buffer's units and where each text begins in them (the end of the
    // last as one more), or nulls for texts kept as QStrings.
    const char16_t *units() const { return m_buffered ? m_units.data() : nullptr; }
    const size_t *starts() const { return m_buffered ? m_start.data() : nullptr; }

    // The UTF-16 code units of all texts together. The buffers made from
    // them are sized by it up front: a million texts fill tens of megabytes,
    // and growing that by doubling copies it and faults in fresh pages twice.
    size_t totalUnits() const
    {
        if (m_buffered)
            return m_units.size();
        size_t units = 0;
        for (const QString *text : m_strings)
            units += static_cast<size_t>(text->size());
        return units;
    }

    // Asks for what locates text \a i: its pointer, or its start.
    Q_ALWAYS_INLINE void prefetchSlot(size_t i) const
    {
        prefetchAddress(m_buffered ? static_cast<const void *>(&m_start[i])
                                   : static_cast<const void *>(&m_strings[i]));
    }

    // Asks for the QString of text \a i (the buffer needs no such step).
    Q_ALWAYS_INLINE void prefetchEntry(size_t i) const
    {
        if (!m_buffered)
            prefetchAddress(m_strings[i]);
    }

    // Asks for text \a i's characters.
    Q_ALWAYS_INLINE void prefetchUnits(size_t i) const
    {
        if (m_buffered)
            prefetchAddress(m_units.data() + m_start[i]);
        else
            prefetchText(m_strings[i]);
    }

private:
    bool m_buffered;
    std::vector<const QString *> m_strings;
    std::vector<char16_t> m_units;
    std::vector<size_t> m_start;
};

// True when \a order lists \a texts as a stable sort with localeAwareCompare
// does: no text before a smaller one, and texts that compare equal in the
// order of their indices. \a rises receives, per position, whether the text
// there is greater than the one before it (the ranks need exactly that);
// \a sameAsBefore, per text index, whether it is the same text as the one
// before it in \a order.
bool isLocaleOrdered(const TextList &texts, const QVector<int> &order, std::vector<bool> &rises,
    std::vector<quint8> &sameAsBefore)
{
    const int n = order.size();
    rises.assign(static_cast<size_t>(n), false);
    sameAsBefore.assign(texts.size(), 0);
    // Three steps ahead: the pointer, the QString it points to, its data.
    constexpr int ahead = 8;
    for (int i = 0; i < n; ++i) {
        if (i + 3 * ahead < n)
            texts.prefetchSlot(static_cast<size_t>(order.at(i + 3 * ahead)));
        if (i + 2 * ahead < n)
            texts.prefetchEntry(static_cast<size_t>(order.at(i + 2 * ahead)));
        if (i + ahead < n)
            texts.prefetchUnits(static_cast<size_t>(order.at(i + ahead)));
        if (i == 0)
            continue;
        const int index = order.at(i);
        const int indexBefore = order.at(i - 1);
        const QStringView text = texts.at(static_cast<size_t>(index));
        const QStringView before = texts.at(static_cast<size_t>(indexBefore));
        // Equal texts compare equal in every collation: no call needed.
        if (text == before) {
            if (index < indexBefore)
                return false;
            sameAsBefore[static_cast<size_t>(index)] = 1;
            continue;
        }
        const int c = localeAwareCompare(text, before);
        if (c < 0 || (c == 0 && index < indexBefore))
            return false;
        // A comparison's sign turns with its arguments: greater than the
        // neighbour is the neighbour being less.
        rises[static_cast<size_t>(i)] = c > 0;
    }
    return true;
}

// One position in a sort by keys: the eight key bytes (or two primary
// weights) compared at the current depth, big-endian, and the text's index.
struct KeyWord
{
    quint64 word;
    int index;
};

// Sorts \a items[first, last) by word, equal words by index. Large ranges
// are radix-sorted (stable, and they start in index order): a comparison
// sort of a million words mispredicts its way through twenty rounds.
void sortWords(std::vector<KeyWord> &items, size_t first, size_t last)
{
    const size_t n = last - first;
    if (n < 2)
        return;
    if (n < 512) {
        std::sort(items.begin() + std::ptrdiff_t(first), items.begin() + std::ptrdiff_t(last),
            [](const KeyWord &a, const KeyWord &b) {
                return a.word < b.word || (a.word == b.word && a.index < b.index);
            });
        return;
    }
    quint64 differ = 0;
    for (size_t i = first; i < last; ++i)
        differ |= items[i].word ^ items[first].word;
    std::vector<KeyWord> buffer(n);
    KeyWord *src = items.data() + first;
    KeyWord *dst = buffer.data();
    for (int digit = 0; digit < 8; ++digit) {
        const int shift = 8 * digit;
        if (((differ >> shift) & 0xffu) == 0)
            continue;
        std::array<size_t, 256> count {};
        for (size_t i = 0; i < n; ++i)
            ++count[(src[i].word >> shift) & 0xffu];
        // Each bucket's count becomes the slot its first key goes to.
        std::exclusive_scan(count.begin(), count.end(), count.begin(), size_t(0));
        for (size_t i = 0; i < n; ++i)
            dst[count[(src[i].word >> shift) & 0xffu]++] = src[i];
        std::swap(src, dst);
    }
    if (src != items.data() + first)
        std::copy(src, src + n, items.data() + first);
}

// Sorts the texts by the words that \a wordAt gives them, depth by depth:
// sorted by the first word, then each group that shares it by the next, so
// that no comparison walks a key element by element and most groups end
// after a word or two. A group whose word tells that the keys end (\a ends)
// holds equal keys, left in index order and passed to \a equalKeys when it
// has more than one member.
template<typename WordAt, typename Ends, typename EqualKeys>
void sortByWords(std::vector<KeyWord> &items, WordAt wordAt, Ends ends, EqualKeys equalKeys)
{
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
        sortWords(items, range.first, range.last);
        for (size_t i = range.first; i < range.last;) {
            size_t j = i + 1;
            while (j < range.last && items[j].word == items[i].word)
                ++j;
            if (j - i > 1) {
                if (!ends(items[i].word))
                    pending.push_back({i, j, range.depth + 1});
                else
                    equalKeys(i, j);
            }
            i = j;
        }
    }
}

// \a order: the texts by their UTF-16 code units, as QString's operator<
// orders them (a text before the longer ones it begins), equal texts by
// index: the order of the C locale, radix-sorted instead of compared a
// million times over texts scattered in memory. The units are copied into
// one buffer first; a word holds three of them, each one above its value,
// so that a zero marks the end of a text also when it holds U+0000.
void orderByCodeUnits(const TextList &texts, QVector<int> &order)
{
    const size_t n = texts.size();
    // Texts already side by side are read where they are.
    std::vector<char16_t> copiedUnits;
    std::vector<size_t> copiedStart;
    const char16_t *units = texts.units();
    const size_t *start = texts.starts();
    if (!units) {
        copiedUnits.reserve(texts.totalUnits());
        copiedStart.resize(n + 1);
        for (size_t i = 0; i < n; ++i) {
            if (i + 2 * textsAhead < n)
                texts.prefetchEntry(i + 2 * textsAhead);
            if (i + textsAhead < n)
                texts.prefetchUnits(i + textsAhead);
            copiedStart[i] = copiedUnits.size();
            const QStringView text = texts.at(i);
            copiedUnits.insert(copiedUnits.end(), text.utf16(), text.utf16() + text.size());
        }
        copiedStart[n] = copiedUnits.size();
        units = copiedUnits.data();
        start = copiedStart.data();
    }

    constexpr int unitBits = 17;
    constexpr quint64 unitMask = (quint64(1) << unitBits) - 1;
    auto wordAt = [units, start](int index, size_t depth) {
        const size_t from = start[static_cast<size_t>(index)] + 3 * depth;
        const size_t end = start[static_cast<size_t>(index) + 1];
        quint64 word = 0;
        for (size_t u = 0; u < 3; ++u)
            word = (word << unitBits) | (from + u < end ? quint64(units[from + u]) + 1 : 0u);
        return word;
    };
    std::vector<KeyWord> items(n);
    for (size_t i = 0; i < n; ++i)
        items[i].index = int(i);
    // The last unit of a word is past the end only when the text ends there.
    sortByWords(
        items, wordAt, [](quint64 word) { return (word & unitMask) == 0; }, [](size_t, size_t) {});
    for (size_t i = 0; i < n; ++i)
        order[int(i)] = items[i].index;
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

// Appends \a text's ICU sort key, zero-terminated, to \a bytes. The empty
// text gets the terminator alone: localeAwareCompare puts it before every
// other text, also before texts the collation sees as empty, and no ICU key
// is that small.
bool appendSortKey(const UCollator *icu, QStringView text, std::vector<quint8> &bytes)
{
    if (text.isEmpty()) {
        bytes.push_back(0);
        return true;
    }
    const size_t at = bytes.size();
    size_t room = 16 + 4 * static_cast<size_t>(text.size());
    bytes.resize(at + room);
    const auto *units = reinterpret_cast<const UChar *>(text.utf16());
    const int size = int(text.size());
    int length = ucol_getSortKey(icu, units, size, bytes.data() + at, int(room));
    if (length <= 0)
        return false;
    if (size_t(length) > room) {
        room = size_t(length);
        bytes.resize(at + room);
        length = ucol_getSortKey(icu, units, size, bytes.data() + at, int(room));
        if (length <= 0 || size_t(length) > room)
            return false;
    }
    bytes.resize(at + size_t(length));
    return true;
}

inline bool hasZeroByte(quint64 v)
{
    return ((v - 0x0101010101010101ull) & ~v & 0x8080808080808080ull) != 0;
}

inline bool hasZeroHalf(quint64 v) { return (v >> 32) == 0 || quint32(v) == 0; }

// \a order: the texts by their ICU sort keys (one zero-terminated byte
// string each, no other zero byte), equal keys by index, compared eight
// bytes at a time as integers.
bool orderByCollationKeys(const TextList &texts, const UCollator *icu, QVector<int> &order)
{
    const size_t n = texts.size();
    std::vector<quint8> bytes;
    bytes.reserve(n * 32);
    std::vector<size_t> start(n + 1);
    for (size_t i = 0; i < n; ++i) {
        if (i + 2 * textsAhead < n)
            texts.prefetchEntry(i + 2 * textsAhead);
        if (i + textsAhead < n)
            texts.prefetchUnits(i + textsAhead);
        start[i] = bytes.size();
        if (!appendSortKey(icu, texts.at(i), bytes))
            return false;
    }
    start[n] = bytes.size();

    auto wordAt = [&bytes, &start](int index, size_t depth) {
        const size_t from = start[static_cast<size_t>(index)] + 8 * depth;
        const size_t end = start[static_cast<size_t>(index) + 1];
        quint64 word = 0;
        for (size_t b = 0; b < 8; ++b)
            word = (word << 8) | (from + b < end ? bytes[from + b] : 0u);
        return word;
    };
    std::vector<KeyWord> items(n);
    for (size_t i = 0; i < n; ++i)
        items[i].index = int(i);
    // A word holding the terminator ends the keys.
    sortByWords(items, wordAt, hasZeroByte, [](size_t, size_t) {});
    for (size_t i = 0; i < n; ++i)
        order[int(i)] = items[i].index;
    return true;
}

// Primary collation weights per UTF-16 code unit, asked of the collator once
// per unit. The collation compares texts by their sequences of primary
// weights first; most texts are sequences of units whose weights do not
// depend on their neighbours, and for those the sequence is put together
// from the units' own weights, many times faster than ICU builds a sort key.
// A unit is unsafe where its weights may depend on its neighbours: part of a
// contraction or a prefix rule, a mark that canonical reordering moves, or a
// surrogate; so is a pair of units that begins a contraction or a prefix
// rule. A text holding one is weighed whole by the collator's element
// iterator.
class PrimaryWeights
{
public:
    explicit PrimaryWeights(const UCollator *icu)
    {
        UErrorCode status = U_ZERO_ERROR;
        const UChar none = 0;
        m_elements = ucol_openElements(icu, &none, 0, &status);
        if (U_FAILURE(status) || !m_elements)
            return;
        USet *contractions = uset_openEmpty();
        ucol_getContractionsAndExpansions(icu, contractions, nullptr, true, &status);
        m_slot.assign(65536, unknown);
        m_startsPair.assign(65536, 0);
        bool complete = U_SUCCESS(status);
        const int32_t items = complete ? uset_getItemCount(contractions) : 0;
        for (int32_t item = 0; item < items && complete; ++item) {
            UChar text[256];
            UChar32 first = 0;
            UChar32 last = 0;
            UErrorCode itemStatus = U_ZERO_ERROR;
            const int32_t length
                = uset_getItem(contractions, item, &first, &last, text, 256, &itemStatus);
            if (U_FAILURE(itemStatus)) {
                complete = false;
            } else if (length == 0) {
                for (UChar32 c = first; c <= last && c < 65536; ++c)
                    m_slot[static_cast<size_t>(c)] = unsafe;
            } else if (length == 1) {
                m_slot[text[0]] = unsafe;
            } else {
                // A contraction (or a prefix and the unit it governs) takes
                // effect only where its first two units stand side by side.
                m_startsPair[text[0]] = 1;
                m_pairs.push_back((quint32(text[0]) << 16) | text[1]);
            }
        }
        uset_close(contractions);
        std::sort(m_pairs.begin(), m_pairs.end());
        m_usable = complete;
    }
    ~PrimaryWeights()
    {
        if (m_elements)
            ucol_closeElements(m_elements);
    }
    PrimaryWeights(const PrimaryWeights &) = delete;
    PrimaryWeights &operator=(const PrimaryWeights &) = delete;

    bool usable() const { return m_usable; }

    // Appends the primary weights of \a text to \a out (none is zero).
    bool append(QStringView text, std::vector<quint32> &out)
    {
        const size_t at = out.size();
        const QChar *units = text.data();
        for (int k = 0, size = int(text.size()); k < size; ++k) {
            const ushort unit = units[k].unicode();
            qint32 slot = m_slot[unit];
            if (slot == unknown)
                slot = learn(unit);
            if (slot == unsafe
                || (m_startsPair[unit] && k + 1 < size && isPair(unit, units[k + 1].unicode()))) {
                out.resize(at);
                return appendWhole(units, size, out);
            }
            const size_t from = static_cast<size_t>(slot >> 2);
            for (size_t w = 0, count = size_t(slot & 3); w < count; ++w)
                out.push_back(m_weights[from + w]);
        }
        return true;
    }

private:
    static constexpr qint32 unknown = -1;

    bool isPair(ushort first, ushort second) const
    {
        return std::binary_search(m_pairs.begin(), m_pairs.end(), (quint32(first) << 16) | second);
    }

    static constexpr qint32 unsafe = -2;

    // The iterator gives a 64-bit collation element as one or two 32-bit
    // ones; the second (a continuation) carries the primary's low half.
    bool collect(std::vector<quint32> &out)
    {
        UErrorCode status = U_ZERO_ERROR;
        quint32 primary = 0;
        for (;;) {
            const int32_t element = ucol_next(m_elements, &status);
            if (U_FAILURE(status))
                return false;
            if (element == UCOL_NULLORDER)
                break;
            const quint32 bits = quint32(element);
            if ((bits & 0xc0u) == 0xc0u) {
                primary |= bits >> 16;
                continue;
            }
            if (primary != 0)
                out.push_back(primary);
            primary = bits & 0xffff0000u;
        }
        if (primary != 0)
            out.push_back(primary);
        return true;
    }

    bool appendWhole(const QChar *units, int size, std::vector<quint32> &out)
    {
        UErrorCode status = U_ZERO_ERROR;
        ucol_setText(m_elements, reinterpret_cast<const UChar *>(units), size, &status);
        return U_SUCCESS(status) && collect(out);
    }

    qint32 learn(ushort unit)
    {
        qint32 &slot = m_slot[unit];
        slot = unsafe;
        if (QChar::isSurrogate(unit)
            || u_getIntPropertyValue(UChar32(unit), UCHAR_LEAD_CANONICAL_COMBINING_CLASS) != 0) {
            return slot;
        }
        std::vector<quint32> weights;
        const UChar single = unit;
        UErrorCode status = U_ZERO_ERROR;
        ucol_setText(m_elements, &single, 1, &status);
        if (U_FAILURE(status) || !collect(weights) || weights.size() > 3)
            return slot;
        slot = qint32(m_weights.size() << 2) | qint32(weights.size());
        m_weights.insert(m_weights.end(), weights.begin(), weights.end());
        return slot;
    }

    UCollationElements *m_elements = nullptr;
    std::vector<qint32> m_slot;
    std::vector<quint8> m_startsPair;
    std::vector<quint32> m_pairs;
    std::vector<quint32> m_weights;
    bool m_usable = false;
};

// \a order: the texts by their sequences of primary weights, and those that
// share one by their ICU sort keys, equal keys by index: the order of the
// sort keys, with a sort key built only where the primary weights tie.
// False where ICU fails.
bool orderByPrimaryWeights(const TextList &texts, const UCollator *icu, QVector<int> &order)
{
    PrimaryWeights weights(icu);
    if (!weights.usable())
        return false;

    const size_t n = texts.size();
    std::vector<quint32> primaries;
    // Most units weigh one primary; expansions and whole texts add a few.
    const size_t units = texts.totalUnits();
    primaries.reserve(units + units / 8 + n);
    std::vector<size_t> start(n + 1);
    for (size_t i = 0; i < n; ++i) {
        // The values may be read in any order (a sorted view's selection).
        if (i + 2 * textsAhead < n)
            texts.prefetchEntry(i + 2 * textsAhead);
        if (i + textsAhead < n)
            texts.prefetchUnits(i + textsAhead);
        start[i] = primaries.size();
        if (!weights.append(texts.at(i), primaries))
            return false;
    }
    start[n] = primaries.size();

    auto wordAt = [&primaries, &start](int index, size_t depth) {
        const size_t from = start[static_cast<size_t>(index)] + 2 * depth;
        const size_t end = start[static_cast<size_t>(index) + 1];
        const quint64 high = from < end ? primaries[from] : 0u;
        const quint64 low = from + 1 < end ? primaries[from + 1] : 0u;
        return (high << 32) | low;
    };
    std::vector<KeyWord> items(n);
    for (size_t i = 0; i < n; ++i)
        items[i].index = int(i);
    bool keysMade = true;
    std::vector<quint8> bytes;
    std::vector<size_t> keyStart;
    std::vector<KeyWord> group;
    // Equal primaries: the group is put in the order of its sort keys.
    auto byKeys = [&](size_t first, size_t last) {
        bytes.clear();
        keyStart.clear();
        group.assign(items.begin() + std::ptrdiff_t(first), items.begin() + std::ptrdiff_t(last));
        for (const KeyWord &item : group) {
            keyStart.push_back(bytes.size());
            keysMade
                = keysMade && appendSortKey(icu, texts.at(static_cast<size_t>(item.index)), bytes);
        }
        if (!keysMade)
            return;
        keyStart.push_back(bytes.size());
        std::vector<int> members(group.size());
        std::iota(members.begin(), members.end(), 0);
        std::sort(members.begin(), members.end(), [&](int a, int b) {
            const quint8 *ka = bytes.data() + keyStart[static_cast<size_t>(a)];
            const quint8 *kb = bytes.data() + keyStart[static_cast<size_t>(b)];
            const int c = std::strcmp(
                reinterpret_cast<const char *>(ka), reinterpret_cast<const char *>(kb));
            return c < 0 || (c == 0 && group[size_t(a)].index < group[size_t(b)].index);
        });
        for (size_t m = 0; m < members.size(); ++m)
            items[first + m] = group[static_cast<size_t>(members[m])];
    };
    sortByWords(items, wordAt, hasZeroHalf, byKeys);
    if (!keysMade)
        return false;
    for (size_t i = 0; i < n; ++i)
        order[int(i)] = items[i].index;
    return true;
}

// True unless the collator's settings weigh primaries other than as the
// plain sequence of the units' weights: numbers compared by value,
// punctuation shifted, scripts reordered (the iterator gives the weights
// before reordering).
bool primaryWeightsApply(const UCollator *icu)
{
    UErrorCode status = U_ZERO_ERROR;
    if (ucol_getAttribute(icu, UCOL_NUMERIC_COLLATION, &status) != UCOL_OFF
        || ucol_getAttribute(icu, UCOL_ALTERNATE_HANDLING, &status) != UCOL_NON_IGNORABLE
        || U_FAILURE(status)) {
        return false;
    }
    UErrorCode reorderStatus = U_ZERO_ERROR;
    return ucol_getReorderCodes(icu, nullptr, 0, &reorderStatus) == 0;
}
#endif

int fallbackCount = 0;
int primaryFallbackCount = 0;
int primaryOrderCount = 0;
int codeUnitOrderCount = 0;

// Ranks of the strings in localeAwareCompare order; neighbours that compare
// equal share a rank, as they would in a sort of the texts themselves.
// \a sameAsBefore receives, per text, whether it is the same text as the one
// before it in that order.
//
// A locale-aware comparison is costly, and a million of them per column
// freeze the grid. The texts are ordered instead by what decides
// localeAwareCompare: code units in the C locale, otherwise the collation
// of the collator that QCollator makes for the default locale, which is the
// one localeAwareCompare makes on its first call in a thread. That collator
// cannot be asked for, and it keeps the locale of that first call; so the
// order is taken only after checking each neighbouring pair with
// localeAwareCompare itself, which also decides the ties. Otherwise the
// texts are sorted with localeAwareCompare.
QVector<quint64> stringRanks(const TextList &texts, std::vector<quint8> &sameAsBefore)
{
    const int n = int(texts.size());
    QVector<int> order(n);
    std::iota(order.begin(), order.end(), 0);

    const QCollator collator;
    std::vector<bool> rises;
    bool ordered = false;
    bool keyed = false;
#if VEL_HAVE_ICU
    if (const std::unique_ptr<UCollator, UCollatorCloser> icu = icuCollator(collator)) {
        keyed = true;
        if (primaryWeightsApply(icu.get())) {
            ordered = orderByPrimaryWeights(texts, icu.get(), order)
                && isLocaleOrdered(texts, order, rises, sameAsBefore);
            ++(ordered ? primaryOrderCount : primaryFallbackCount);
        }
        if (!ordered) {
            std::iota(order.begin(), order.end(), 0);
            ordered = orderByCollationKeys(texts, icu.get(), order)
                && isLocaleOrdered(texts, order, rises, sameAsBefore);
        }
    }
#endif
    if (!keyed) {
        std::iota(order.begin(), order.end(), 0);
        if (collator.locale().language() != QLocale::C) {
            std::vector<QCollatorSortKey> keys;
            keys.reserve(static_cast<size_t>(n));
            for (size_t i = 0; i < texts.size(); ++i)
                keys.push_back(collator.sortKey(texts.at(i).toString()));
            vel::boundedMergeSort(order.data(), n, [&keys](int a, int b) {
                return keys[static_cast<size_t>(a)].compare(keys[static_cast<size_t>(b)]) < 0;
            });
        } else {
            orderByCodeUnits(texts, order);
            ++codeUnitOrderCount;
        }
        ordered = isLocaleOrdered(texts, order, rises, sameAsBefore);
    }
    if (!ordered) {
        ++fallbackCount;
        std::iota(order.begin(), order.end(), 0);
        vel::boundedMergeSort(order.data(), n, [&texts](int a, int b) {
            return localeAwareCompare(
                       texts.at(static_cast<size_t>(a)), texts.at(static_cast<size_t>(b)))
                < 0;
        });
        rises.assign(static_cast<size_t>(n), false);
        sameAsBefore.assign(static_cast<size_t>(n), 0);
        for (int i = 1; i < n; ++i) {
            const QStringView before = texts.at(static_cast<size_t>(order.at(i - 1)));
            const QStringView text = texts.at(static_cast<size_t>(order.at(i)));
            rises[static_cast<size_t>(i)] = localeAwareCompare(before, text) < 0;
            sameAsBefore[static_cast<size_t>(order.at(i))] = before == text ? 1 : 0;
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
// per position, the number of the distinct text there, -1 for other types;
// \a sameAsBefore, per text number, whether the text is the same as the one
// before it in order (asked only where texts are not numbered by value).
template<typename Cells>
std::vector<SortKey> sortedKeys(const Cells &values, QVector<int> *textOfOut = nullptr,
    bool *textsNumberedOut = nullptr, std::vector<quint8> *sameAsBeforeOut = nullptr)
{
    const int n = values.size();
    std::vector<SortKey> keys(static_cast<size_t>(n));

    QHash<QString, int> textIds;
    TextList texts(TextList::Strings);
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
                    number = int(texts.size());
                    texts.push_back(&text);
                }
                textOf[i] = number;
                break;
            }
            if (perCell) {
                textOf[i] = int(texts.size());
                texts.push_back(&text);
                break;
            }
            auto it = textIds.constFind(text);
            if (it == textIds.constEnd()) {
                it = textIds.insert(text, int(texts.size()));
                texts.push_back(&text);
            }
            textOf[i] = it.value();
            break;
        }
        default:
            // Other types keep their places, unordered (docs/compatibility.md).
            break;
        }
    }

    std::vector<quint8> sameAsBefore;
    if (!texts.empty()) {
        const QVector<quint64> ranks = stringRanks(texts, sameAsBefore);
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
    if (sameAsBeforeOut)
        *sameAsBeforeOut = std::move(sameAsBefore);
    return keys;
}

// Walks the non-empty values in sorted order and tells, for each position,
// whether the value there differs from the first value of the run before it:
// the one test by which "Distinct" counts and the ready model groups. Empty
// (invalid) cells, which equal only each other, are ordered last, so the
// walk ends where they begin. The first value is tested against itself, as
// the count has always done (a lone NaN differs from itself). Values are
// read only where their keys leave equality open: in sorted order each read
// is a cache miss.
template<typename Cells, typename Visit>
void walkDistinct(const Cells &values, const std::vector<SortKey> &keys, const QVector<int> &textOf,
    bool textsNumbered, const std::vector<quint8> &sameAsBefore, Visit visit)
{
    SortKey previousKey {};
    bool first = true;
    for (const SortKey &key : keys) {
        if (key.rank == invalidRank)
            break;
        if (first)
            previousKey = key;
        Equality known = knownEquality(key, previousKey);
        // Two texts are equal exactly when they are the same distinct text
        // (numbered ones) or the same characters. Unnumbered texts follow
        // one another here as they did when they were ranked, which noted
        // whether each is the same as the one before it.
        if (known == Equality::Unknown && key.rank == previousKey.rank
            && (key.rank >> 1) == QMetaType::QString) {
            const bool same = textsNumbered
                ? textOf.at(key.pos) == textOf.at(previousKey.pos)
                : first || sameAsBefore[static_cast<size_t>(textOf.at(key.pos))] != 0;
            known = same ? Equality::Equal : Equality::Different;
        }
        const bool differs = known == Equality::Different
            || (known == Equality::Unknown
                && !vel::Qt5Variant::equal(values.at(key.pos), values.at(previousKey.pos)));
        if (differs)
            previousKey = key;
        visit(key.pos, differs, first);
        first = false;
    }
}

} // namespace

namespace vel {

int textOrderFallbacks() { return fallbackCount; }

int textWeightOrderFallbacks() { return primaryFallbackCount; }

int textWeightOrders() { return primaryOrderCount; }

int textCodeUnitOrders() { return codeUnitOrderCount; }

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
    std::vector<quint8> sameAsBefore;
    const std::vector<SortKey> keys
        = sortedKeys(VectorCells {values}, &textOf, &textsNumbered, &sameAsBefore);
    QVector<QVector<int>> runs;
    int walked = 0;
    walkDistinct(VectorCells {values}, keys, textOf, textsNumbered, sameAsBefore,
        [&runs, &walked](int pos, bool differs, bool first) {
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
        // Each bucket's count becomes the slot its first key goes to.
        std::exclusive_scan(count.begin(), count.end(), count.begin(), size_t(0));
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

constexpr size_t lowBuckets = size_t(1) << digitBits;

// Where some keys lie, and how many end in each value of their lowest
// digitBits bits: what sortKeys() needs before its first pass, gathered
// while the keys are made.
struct KeySpread
{
    quint64 lo = std::numeric_limits<quint64>::max();
    quint64 hi = 0;
    std::vector<quint32> low = std::vector<quint32>(lowBuckets, 0);

    Q_ALWAYS_INLINE void add(quint64 key)
    {
        lo = std::min(lo, key);
        hi = std::max(hi, key);
        ++low[key & digitMask];
    }
};

// Stable sort of 64-bit keys that are the items themselves (equal keys are
// equal items, so stability is moot). Only the bits in which the keys
// differ from the smallest are sorted: a range of whole numbers smaller than
// the count is counted instead of sorted, and wider ones take as few radix
// passes of up to 11 bits as their spread needs, each pass counting the
// digit of the next.
//
// \a scratch (if given) is the room the passes move the keys through, kept
// by the caller across columns: fresh room costs a page fault every 4 KiB.
void sortKeys(std::vector<quint64> &keys, const KeySpread &spread, std::vector<quint64> *scratch)
{
    const size_t n = keys.size();
    if (n < 2)
        return;
    const quint64 lo = spread.lo;
    const std::vector<quint32> &low = spread.low;
    const quint64 range = spread.hi - lo;
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
    // Counts fit in 32 bits (a column has fewer than 2^31 cells), and so
    // two digits' counts stay in the first-level cache.
    std::vector<quint32> count(buckets, 0);
    std::vector<quint32> next(buckets, 0);
    // The lowest digit of key - lo is (key - lo) mod 2^width: the keys' own
    // lowest bits, counted before lo was known, tell it.
    for (size_t j = 0; j < lowBuckets; ++j)
        count[(j - lo) & mask] += low[j];
    std::vector<quint64> ownScratch;
    std::vector<quint64> &buffer = scratch ? *scratch : ownScratch;
    buffer.resize(n);
    quint64 *src = keys.data();
    quint64 *dst = buffer.data();
    for (int p = 0; p < passes; ++p) {
        const int shift = width * p;
        const bool last = p + 1 == passes;
        std::fill(next.begin(), next.end(), 0);
        if (count[((src[0] - lo) >> shift) & mask] == n) {
            // Every key shares this digit: nothing moves; the next digit is
            // counted on its own.
            if (!last) {
                for (size_t i = 0; i < n; ++i)
                    ++next[((src[i] - lo) >> (shift + width)) & mask];
            }
        } else {
            std::exclusive_scan(count.begin(), count.end(), count.begin(), quint32(0));
            if (last) {
                for (size_t i = 0; i < n; ++i) {
                    const quint64 key = src[i];
                    dst[count[((key - lo) >> shift) & mask]++] = key;
                }
            } else {
                // The next digit is counted in the same pass.
                for (size_t i = 0; i < n; ++i) {
                    const quint64 key = src[i];
                    const quint64 d = key - lo;
                    dst[count[(d >> shift) & mask]++] = key;
                    ++next[(d >> (shift + width)) & mask];
                }
            }
            std::swap(src, dst);
        }
        std::swap(count, next);
    }
    if (src != keys.data())
        std::copy(src, src + n, keys.data());
}

void sortKeys(std::vector<quint64> &keys, std::vector<quint64> *scratch = nullptr)
{
    if (keys.size() < 2)
        return;
    KeySpread spread;
    for (const quint64 key : keys)
        spread.add(key);
    sortKeys(keys, spread, scratch);
}

// The inverse of doubleBits() for every double but -0.0.
inline quint64 itemOfDoubleKey(quint64 key) { return (key & signFlip) ? (key & ~signFlip) : ~key; }

// The walk below for the sorted keys of a double column that holds neither
// NaN nor -0.0, where equal keys are equal bits: a key a step. Ascending
// keys are ascending values, so the first is the minimum and the last the
// maximum. The mean is one chain of dependent divisions whose latency, not
// its work, is the cost; walks of several columns stepped side by side
// overlap their chains, each doing the same operations in the same order.
class SortedDoubleWalk
{
public:
    explicit SortedDoubleWalk(quint64 firstKey)
        : m_previousKey(firstKey)
        , m_previous(doubleOf(itemOfDoubleKey(firstKey)))
    {
    }

    // Whether every key of \a keys (sorted) is a finite double >= +0.0, for
    // which step<true>() is step<false>() done in fewer operations.
    static bool nonNegativeFinite(const std::vector<quint64> &keys)
    {
        return keys.front() >= signFlip && keys.back() < doubleBits(qInf());
    }

    // \a n: how many keys have been walked, this one included.
    template<bool NonNegativeFinite = false>
    Q_ALWAYS_INLINE void step(quint64 key, double n)
    {
        double x;
        bool differs;
        if constexpr (NonNegativeFinite) {
            // As below: the keys ascend, so x > m_previous >= 0 where they
            // differ; the distance and the larger magnitude need no abs().
            x = doubleOf(key ^ signFlip);
            differs = key != m_previousKey
                && (x - m_previous > 1e-9 * x
                    || !vel::Qt5Variant::equal(QVariant(x), QVariant(m_previous)));
        } else {
            x = doubleOf(itemOfDoubleKey(key));
            differs = key != m_previousKey && unequalDoublesDiffer(x, m_previous);
        }
        if (differs) {
            m_previousKey = key;
            m_previous = x;
            ++m_distinct;
        }
        const double d = x - m_mean;
        m_mean = m_mean + d / n;
        m_sum += x * d;
    }

    void results(quint64 lastKey, qint64 n, double &count, double &distinct, double &min,
        double &max, double &mean, double &stdev) const
    {
        count = double(n);
        distinct = double(m_distinct);
        min = m_first;
        max = doubleOf(itemOfDoubleKey(lastKey));
        mean = m_mean;
        stdev = standardDeviation(m_sum, n);
    }

private:
    quint64 m_previousKey;
    double m_previous;
    double m_first = m_previous;
    double m_mean = 0;
    double m_sum = 0;
    qint64 m_distinct = 1;
};

// SortedDoubleWalk over the sorted \a keys (not empty) of one column alone.
void walkSortedKeys(const std::vector<quint64> &keys, double &count, double &distinct, double &min,
    double &max, double &mean, double &stdev)
{
    SortedDoubleWalk walk(keys.front());
    qint64 n = 0;
    for (const quint64 key : keys)
        walk.step(key, double(++n));
    walk.results(keys.back(), n, count, distinct, min, max, mean, stdev);
}

// Orders the items of a column of one scalar \a type (as scalarItems()
// takes them out) and walks them as the general path walks its values,
// step for step, so every result is the same to the bit.
void scalarWalk(int type, std::vector<quint64> &items, const std::vector<double> &nans,
    double &count, double &distinct, double &min, double &max, double &mean, double &stdev,
    std::vector<quint64> *scratch = nullptr)
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
        sortKeys(items, scratch);
        walkSortedKeys(items, count, distinct, min, max, mean, stdev);
        return;
    }
    if (plain) {
        sortKeys(items, scratch);
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
    count = distinct = min = max = mean = stdev = 0;
    if (values.size() == 0)
        return;

    distinct = 1;
    QVector<int> textOf;
    bool textsNumbered = true;
    std::vector<quint8> sameAsBefore;
    const std::vector<SortKey> keys = sortedKeys(values, &textOf, &textsNumbered, &sameAsBefore);
    const bool numeric = vel::isStatisticsNumeric(values.at(keys.front().pos));

    qint64 n = 0;
    double sum = 0;
    walkDistinct(
        values, keys, textOf, textsNumbered, sameAsBefore, [&](int pos, bool differs, bool first) {
            if (first)
                min = max = values.at(pos).toDouble();
            if (differs)
                distinct += 1;
            n += 1;
            if (numeric)
                accumulate(values.at(pos).toDouble(), n, mean, sum, min, max);
        });
    count = double(n);
    if (numeric)
        stdev = standardDeviation(sum, n);
}

template<typename Cells>
void statisticsOf(const Cells &values, double &count, double &distinct, double &min, double &max,
    double &mean, double &stdev)
{
    count = distinct = min = max = mean = stdev = 0;
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

    // The numbered texts, by number; the numbering is dropped.
    TextList takeTexts()
    {
        m_slots = {};
        size_t bytes = 0;
        for (const Text &text : m_texts)
            bytes += static_cast<size_t>(text.length);
        TextList texts(TextList::Buffer);
        // A text has no more UTF-16 code units than UTF-8 bytes.
        texts.reserve(m_texts.size(), bytes);
        for (const Text &text : m_texts)
            texts.appendUtf8(bytesOf(text), text.length);
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
    TextList texts(TextList::Buffer);
    qint64 present = 0;
    // Texts that do not repeat are not numbered at all: each cell's text
    // gets its own number, and equal texts are told apart by comparing them.
    const bool perCell = typedTextsLookUnique(cells);
    if (perCell) {
        size_t textCount = 0;
        size_t bytes = 0;
        for (int i = 0; i < cells.size; ++i) {
            const int record = cells.record(i);
            if (cells.present(record)) {
                ++textCount;
                bytes += static_cast<size_t>(cells.length(record));
            }
        }
        // A text has no more UTF-16 code units than UTF-8 bytes.
        texts.reserve(textCount, bytes);
        for (int i = 0; i < cells.size; ++i) {
            const int record = cells.record(i);
            if (!cells.present(record))
                continue;
            numberOf[static_cast<size_t>(i)] = int(texts.size());
            texts.appendUtf8(cells.bytes(record), cells.length(record));
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

    std::vector<quint8> sameAsBefore;
    const QVector<quint64> ranks = stringRanks(texts, sameAsBefore);
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
            if (perCell ? texts.at(size_t(number)) != texts.at(size_t(previous))
                        : number != previous) {
                previous = number;
                distinct += 1;
            }
        }
    }
    min = max = QVariant(texts.at(size_t(first)).toString()).toDouble();
}

// The numbers of a typed column of ints or doubles among \a records (all
// of them if null), as scalarItems() takes them out of QVariants: in storage
// order (\a inStorageOrder, if given) unless a NaN or a -0.0 makes the
// reading order tell.
void readTypedNumbers(const vel::GridTableCells::Typed &column, const int *records, int size,
    const int *inStorageOrder, std::vector<quint64> &items, std::vector<double> &nans)
{
    if (!records)
        size = column.size;
    const bool isDouble = column.kind == vel::GridTableCells::Typed::Doubles;
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
}

// Steps the walks of sizeof...(W) columns over their first \a count keys,
// one key of each in turn.
template<bool NonNegativeFinite, size_t... W>
void stepTogether(SortedDoubleWalk *walks, const std::vector<quint64> *const *keys, size_t count,
    std::index_sequence<W...>)
{
    // Locals, so that the walks' figures stay in registers.
    SortedDoubleWalk local[] = {walks[W]...};
    const quint64 *key[] = {keys[W]->data()...};
    for (size_t i = 0; i < count; ++i) {
        const double n = double(i + 1);
        (local[W].template step<NonNegativeFinite>(key[W][i], n), ...);
    }
    ((walks[W] = local[W]), ...);
}

template<size_t Walks>
void stepTogether(SortedDoubleWalk *walks, const std::vector<quint64> *const *keys, size_t count,
    bool nonNegativeFinite)
{
    if (nonNegativeFinite)
        stepTogether<true>(walks, keys, count, std::make_index_sequence<Walks>());
    else
        stepTogether<false>(walks, keys, count, std::make_index_sequence<Walks>());
}

// The results of SortedDoubleWalk over the sorted keys of each of up to four
// columns: side by side while every column has keys left, then each alone.
void walkSideBySide(const std::vector<const std::vector<quint64> *> &keys,
    const std::vector<vel::StatisticsResult *> &results)
{
    std::vector<SortedDoubleWalk> walks;
    walks.reserve(keys.size());
    size_t common = keys.front()->size();
    bool nonNegativeFinite = true;
    for (const std::vector<quint64> *k : keys) {
        walks.emplace_back(k->front());
        common = std::min(common, k->size());
        nonNegativeFinite = nonNegativeFinite && SortedDoubleWalk::nonNegativeFinite(*k);
    }
    switch (keys.size()) {
    case 4:
        stepTogether<4>(walks.data(), keys.data(), common, nonNegativeFinite);
        break;
    case 3:
        stepTogether<3>(walks.data(), keys.data(), common, nonNegativeFinite);
        break;
    case 2:
        stepTogether<2>(walks.data(), keys.data(), common, nonNegativeFinite);
        break;
    default:
        common = 0;
        break;
    }
    for (size_t w = 0; w < keys.size(); ++w) {
        const std::vector<quint64> &k = *keys[w];
        for (size_t i = common; i < k.size(); ++i)
            walks[w].step(k[i], double(i + 1));
        vel::StatisticsResult &r = *results[w];
        walks[w].results(
            k.back(), qint64(k.size()), r.count, r.distinct, r.min, r.max, r.mean, r.stdev);
    }
}

// The keys (doubleBits()) of the cells of a double column among \a records
// (all of them if null), read in storage order (\a inStorageOrder, if
// given), and their spread, in one pass: the reading of readTypedNumbers()
// when no cell holds NaN or -0.0. False, at the first that does.
bool readPlainDoubleKeys(const vel::GridTableCells::Typed &column, const int *records, int size,
    const int *inStorageOrder, std::vector<quint64> &keys, KeySpread &spread)
{
    const int *order = records && inStorageOrder ? inStorageOrder : records;
    if (!records)
        size = column.size;
    const TypedCells cells {column, order, size};
    keys.resize(static_cast<size_t>(size));
    size_t at = 0;
    for (int i = 0; i < size; ++i) {
        const int record = cells.record(i);
        if (!cells.present(record))
            continue;
        const double x = column.doubles[record];
        if (std::isnan(x) || (x == 0.0 && std::signbit(x)))
            return false;
        const quint64 key = doubleBits(x);
        keys[at++] = key;
        spread.add(key);
    }
    keys.resize(at);
    return true;
}

// What statisticsOrSortedKeys() did.
enum class TypedOutcome { NotTyped, Done, KeysLeft };

// typedStatistics(), except that with \a sortedKeys, a double column
// without NaN and -0.0 is only read and sorted: its keys are left in
// *sortedKeys for the caller to walk (with SortedDoubleWalk), and nothing
// else is set. *sortedKeys keeps its room from call to call, so that the
// keys of the next column need no fresh memory. \a scratch: as for
// sortKeys().
TypedOutcome statisticsOrSortedKeys(const vel::GridTableCells::Typed &column, const int *records,
    int size, const int *inStorageOrder, double &count, double &distinct, double &min, double &max,
    double &mean, double &stdev, std::vector<quint64> *sortedKeys, std::vector<quint64> *scratch)
{
    if (column.kind == vel::GridTableCells::Typed::None)
        return TypedOutcome::NotTyped;
    count = distinct = min = max = mean = stdev = 0;
    if (!records)
        size = column.size;
    if (size <= 0)
        return TypedOutcome::Done;
    if (column.kind == vel::GridTableCells::Typed::Texts) {
        textStatistics(TypedCells {column, records, size}, count, distinct, min, max);
        return TypedOutcome::Done;
    }

    std::vector<quint64> ownItems;
    std::vector<quint64> &items = sortedKeys ? *sortedKeys : ownItems;
    if (column.kind == vel::GridTableCells::Typed::Doubles) {
        KeySpread spread;
        if (readPlainDoubleKeys(column, records, size, inStorageOrder, items, spread)) {
            if (items.empty()) {
                distinct = 1;
                return TypedOutcome::Done;
            }
            sortKeys(items, spread, scratch);
            if (sortedKeys)
                return TypedOutcome::KeysLeft;
            walkSortedKeys(items, count, distinct, min, max, mean, stdev);
            return TypedOutcome::Done;
        }
    }
    std::vector<double> nans;
    readTypedNumbers(column, records, size, inStorageOrder, items, nans);
    if (items.empty() && nans.empty()) {
        distinct = 1;
        return TypedOutcome::Done;
    }
    scalarWalk(
        column.kind == vel::GridTableCells::Typed::Doubles ? QMetaType::Double : QMetaType::Int,
        items, nans, count, distinct, min, max, mean, stdev, scratch);
    return TypedOutcome::Done;
}

} // namespace

namespace vel {

bool typedStatistics(const GridTableCells::Typed &column, const int *records, int size,
    const int *inStorageOrder, double &count, double &distinct, double &min, double &max,
    double &mean, double &stdev)
{
    return statisticsOrSortedKeys(column, records, size, inStorageOrder, count, distinct, min, max,
               mean, stdev, nullptr, nullptr)
        != TypedOutcome::NotTyped;
}

void typedStatistics(const std::vector<GridTableCells::Typed> &columns, const int *records,
    int size, const int *inStorageOrder, std::vector<StatisticsResult> &results)
{
    results.assign(columns.size(), StatisticsResult());
    // Up to four columns' sorted keys wait for their walks at a time, so
    // that no more keys than theirs are held at once.
    constexpr size_t together = 4;
    std::vector<std::vector<quint64>> keys(together);
    std::vector<quint64> scratch;
    std::vector<const std::vector<quint64> *> waiting;
    std::vector<StatisticsResult *> waitingResults;
    auto walkWaiting = [&] {
        walkSideBySide(waiting, waitingResults);
        waiting.clear();
        waitingResults.clear();
    };
    for (size_t c = 0; c < columns.size(); ++c) {
        const GridTableCells::Typed &column = columns[c];
        StatisticsResult &r = results[c];
        const TypedOutcome outcome = statisticsOrSortedKeys(column, records, size, inStorageOrder,
            r.count, r.distinct, r.min, r.max, r.mean, r.stdev, &keys[waiting.size()], &scratch);
        r.done = outcome != TypedOutcome::NotTyped;
        if (outcome == TypedOutcome::KeysLeft) {
            waiting.push_back(&keys[waiting.size()]);
            waitingResults.push_back(&r);
            if (waiting.size() == together)
                walkWaiting();
        }
    }
    if (!waiting.empty())
        walkWaiting();
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
