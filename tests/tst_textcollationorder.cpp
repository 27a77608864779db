// The statistics order texts by collation keys instead of calling
// QString::localeAwareCompare for every comparison. Over samples that stress
// collation (accents, case, digits, punctuation, empty texts, ignorable and
// canonically equivalent characters, mixed scripts) and over many locales,
// the order must be localeAwareCompare's element for element, ties (texts
// that compare equal but differ) kept in their original order, and it must
// be reached without falling back to sorting with localeAwareCompare.
//
// localeAwareCompare keeps the collator it makes on its first call in a
// thread, for the default locale of that moment. Each locale is therefore
// checked in a new thread, started after the default locale is set.
#include "qvectorcalcstatistics_p.h"

#include <vel_qt_widgets/CMwGridRoles.h>
#include <vel_qt_widgets/CMwGridStatistics.h>
#include <vel_qt_widgets/CMwGridTableModel.h>

#include "vel_test_main.h"

#include <QtCore/QBuffer>
#include <QtCore/QLocale>
#include <QtCore/QRandomGenerator>
#include <QtCore/QThread>

#include <algorithm>
#include <numeric>

namespace {

QStringList samples()
{
    QStringList texts = {
        QString(),
        QString(QLatin1String("")),
        QStringLiteral("a"),
        QStringLiteral("A"),
        QStringLiteral("b"),
        QStringLiteral("B"),
        QStringLiteral("ab"),
        QStringLiteral("aB"),
        QStringLiteral("Ab"),
        QStringLiteral("AB"),
        QStringLiteral("a b"),
        QStringLiteral("a-b"),
        QStringLiteral("a_b"),
        QStringLiteral("a.b"),
        QStringLiteral("a,b"),
        QStringLiteral("ab-"),
        QStringLiteral("'ab"),
        QStringLiteral("\"ab\""),
        QStringLiteral("(ab)"),
        QStringLiteral("1"),
        QStringLiteral("2"),
        QStringLiteral("9"),
        QStringLiteral("10"),
        QStringLiteral("010"),
        QStringLiteral("1.5"),
        QStringLiteral("-1"),
        QStringLiteral("+1"),
        QStringLiteral("1e3"),
        QStringLiteral("item 2"),
        QStringLiteral("item 10"),
        QStringLiteral("Item 2"),
        QStringLiteral(" leading"),
        QStringLiteral("trailing "),
        QString::fromUtf8("é"),
        QString::fromUtf8("e\u0301"),
        QString::fromUtf8("É"),
        QString::fromUtf8("e"),
        QString::fromUtf8("f"),
        QString::fromUtf8("ä"),
        QString::fromUtf8("a\u0308"),
        QString::fromUtf8("Ä"),
        QString::fromUtf8("z"),
        QString::fromUtf8("Z"),
        QString::fromUtf8("ö"),
        QString::fromUtf8("o"),
        QString::fromUtf8("ø"),
        QString::fromUtf8("å"),
        QString::fromUtf8("æ"),
        QString::fromUtf8("ß"),
        QString::fromUtf8("ss"),
        QString::fromUtf8("SS"),
        QString::fromUtf8("ẞ"),
        QString::fromUtf8("ch"),
        QString::fromUtf8("c"),
        QString::fromUtf8("h"),
        QString::fromUtf8("cz"),
        QString::fromUtf8("č"),
        QString::fromUtf8("ll"),
        QString::fromUtf8("l"),
        QString::fromUtf8("ñ"),
        QString::fromUtf8("n"),
        QString::fromUtf8("ı"),
        QString::fromUtf8("i"),
        QString::fromUtf8("İ"),
        QString::fromUtf8("I"),
        QString::fromUtf8("ł"),
        QString::fromUtf8("y"),
        QString::fromUtf8("ü"),
        QString::fromUtf8("w"),
        QString::fromUtf8("v"),
        QString::fromUtf8("þ"),
        QString::fromUtf8("ð"),
        QString::fromUtf8("д"),
        QString::fromUtf8("Д"),
        QString::fromUtf8("ё"),
        QString::fromUtf8("е"),
        QString::fromUtf8("α"),
        QString::fromUtf8("Ω"),
        QString::fromUtf8("ש"),
        QString::fromUtf8("ع"),
        QString::fromUtf8("ก"),
        QString::fromUtf8("เก"),
        QString::fromUtf8("日本"),
        QString::fromUtf8("中文"),
        QString::fromUtf8("한국"),
        QString::fromUtf8("カ"),
        QString::fromUtf8("か"),
        QString::fromUtf8("ｶ"),
        QString::fromUtf8("ﬁ"),
        QString::fromUtf8("fi"),
        QString::fromUtf8("①"),
        QString::fromUtf8("½"),
        QString::fromUtf8("😀"),
        QString::fromUtf8("a😀"),
        QString::fromUtf8("Zoë Ørsted"),
        QString::fromUtf8("Łódź"),
        // Ignorable characters: texts the collation sees as empty, or as
        // equal to a text without them.
        QString::fromUtf8("\u200b"),
        QString::fromUtf8("\u0001"),
        QString::fromUtf8("a\u200b"),
        QString::fromUtf8("\u00ad"),
        QString::fromUtf8("a\u00adb"),
        QChar(0x0000),
        // A lone surrogate.
        QString(QChar(0xd800)),
    };
    return texts;
}

// The samples several times over (ties between copies and between texts
// that compare equal), pieces of them put together, shuffled reproducibly.
QStringList mixedTexts()
{
    const QStringList base = samples();
    QStringList texts = base + base;
    QRandomGenerator random(2026);
    for (int i = 0; i < 1500; ++i) {
        QString text;
        const int pieces = 1 + int(random.bounded(4));
        for (int p = 0; p < pieces; ++p)
            text += base.at(int(random.bounded(base.size())));
        texts.append(text);
    }
    for (int i = texts.size() - 1; i > 0; --i)
        texts.swapItemsAt(i, int(random.bounded(i + 1)));
    // Texts the collation sees as empty, before empty ones: localeAwareCompare
    // still orders every empty text first.
    texts.prepend(QString());
    texts.prepend(QString::fromUtf8("\u0001"));
    texts.prepend(QString::fromUtf8("\u200b"));
    // Long texts whose keys share long beginnings.
    const QString longStart(300, QLatin1Char('x'));
    texts.append(longStart + QStringLiteral("b"));
    texts.append(longStart + QStringLiteral("a"));
    texts.append(longStart + QStringLiteral("A"));
    texts.append(longStart + QStringLiteral("a"));
    return texts;
}

// Texts whose first thousand and more are all different, so that they are
// ordered without being numbered first, followed by the mixed texts with
// their repeats and ties: equal texts are told apart as they are ordered.
QStringList uniqueLookingTexts()
{
    QStringList texts;
    for (int i = 0; i < 1100; ++i)
        texts.append(QStringLiteral("Text %1").arg(i * 7919 % 1100));
    return texts + mixedTexts();
}

// More texts than the sorts order by comparing alone: the large groups are
// radix-sorted word by word, and so are the large groups of texts that begin
// alike ("xxx...", pieces of the samples put together).
QStringList manyTexts()
{
    const QStringList base = samples();
    QStringList texts = mixedTexts();
    QRandomGenerator random(17);
    const QString longStart(40, QLatin1Char('x'));
    for (int i = 0; i < 9000; ++i) {
        QString text = i % 3 != 0 ? longStart : QString();
        const int pieces = 1 + int(random.bounded(6));
        for (int p = 0; p < pieces; ++p)
            text += base.at(int(random.bounded(base.size())));
        texts.append(text);
    }
    for (int i = texts.size() - 1; i > 0; --i)
        texts.swapItemsAt(i, int(random.bounded(i + 1)));
    return texts;
}

struct Outcome
{
    QVector<int> expected;
    QVector<int> actual;
    double expectedDistinct = -1;
    double distinct = -2;
    int fallbacks = -1;
    int weightFallbacks = -1;
    int weightOrders = -1;
    int codeUnitOrders = -1;
};

// Runs in a thread whose first localeAwareCompare sees the default locale.
Outcome orderInThisThread(const QStringList &texts)
{
    Outcome outcome;
    outcome.expected.resize(texts.size());
    std::iota(outcome.expected.begin(), outcome.expected.end(), 0);
    std::stable_sort(outcome.expected.begin(), outcome.expected.end(),
        [&texts](int a, int b) { return texts.at(a).localeAwareCompare(texts.at(b)) < 0; });
    // "Distinct" counts the changes between neighbours in that order.
    outcome.expectedDistinct = 1;
    for (int i = 1; i < outcome.expected.size(); ++i) {
        if (texts.at(outcome.expected.at(i)) != texts.at(outcome.expected.at(i - 1)))
            outcome.expectedDistinct += 1;
    }

    QVector<QVariant> values;
    for (const QString &text : texts)
        values.append(text);
    const int fallbacksBefore = vel::textOrderFallbacks();
    const int weightFallbacksBefore = vel::textWeightOrderFallbacks();
    const int weightOrdersBefore = vel::textWeightOrders();
    const int codeUnitOrdersBefore = vel::textCodeUnitOrders();
    for (const QVector<int> &run : vel::statisticsRuns(values))
        outcome.actual += run;
    double count, min, max, mean, stdev;
    QVectorCalcStatistics(values, count, outcome.distinct, min, max, mean, stdev);
    outcome.fallbacks = vel::textOrderFallbacks() - fallbacksBefore;
    outcome.weightFallbacks = vel::textWeightOrderFallbacks() - weightFallbacksBefore;
    outcome.weightOrders = vel::textWeightOrders() - weightOrdersBefore;
    outcome.codeUnitOrders = vel::textCodeUnitOrders() - codeUnitOrdersBefore;
    return outcome;
}

} // namespace

class tst_TextCollationOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void matchesLocaleAwareCompare_data();
    void matchesLocaleAwareCompare();
    void uniqueLookingTexts_data();
    void uniqueLookingTexts();
    void manyTexts_data();
    void manyTexts();
    void localeChangedAfterFirstComparison();
    void readyModelTexts_data();
    void readyModelTexts();
};

namespace {

// Locales whose collation reorders scripts: their texts are ordered by full
// sort keys, without trying the primary weights.
bool reordersScripts(const QString &locale)
{
    static const QStringList names
        = {QStringLiteral("hr_HR"), QStringLiteral("az_AZ"), QStringLiteral("ru_RU"),
            QStringLiteral("uk_UA"), QStringLiteral("bg_BG"), QStringLiteral("el_GR"),
            QStringLiteral("he_IL"), QStringLiteral("ar_SA"), QStringLiteral("fa_IR"),
            QStringLiteral("hi_IN"), QStringLiteral("th_TH"), QStringLiteral("ja_JP"),
            QStringLiteral("zh_CN"), QStringLiteral("zh_TW"), QStringLiteral("ko_KR")};
    return names.contains(locale);
}

// Orders \a texts in a new thread under \a locale and checks the outcome
// against localeAwareCompare's: element for element, ties included, the
// distinct count, and the path taken.
void checkOrder(const QString &locale, const QStringList &texts)
{
    QLocale::setDefault(QLocale(locale));
    Outcome outcome;
    QThread *thread = QThread::create([&outcome, &texts] { outcome = orderInThisThread(texts); });
    thread->start();
    QVERIFY(thread->wait(120000));
    delete thread;

    QCOMPARE(outcome.actual.size(), texts.size());
    for (int i = 0; i < texts.size(); ++i) {
        if (outcome.actual.at(i) != outcome.expected.at(i)) {
            QFAIL(qPrintable(QStringLiteral("position %1: text %2 (\"%3\") where %4 (\"%5\")")
                                 .arg(i)
                                 .arg(outcome.actual.at(i))
                                 .arg(texts.at(outcome.actual.at(i)))
                                 .arg(outcome.expected.at(i))
                                 .arg(texts.at(outcome.expected.at(i)))));
        }
    }
    QCOMPARE(outcome.distinct, outcome.expectedDistinct);
    QCOMPARE(outcome.fallbacks, 0);
    QCOMPARE(outcome.weightFallbacks, 0);
#if VEL_TEST_HAVE_ICU
    // Both the runs and the statistics ordered by primary weights.
    if (QLocale(locale).language() != QLocale::C && !reordersScripts(locale))
        QCOMPARE(outcome.weightOrders, 2);
#endif
    // The C locale's order (code units) is radix-sorted, with ICU or without.
    if (QLocale(locale).language() == QLocale::C)
        QCOMPARE(outcome.codeUnitOrders, 2);
}

} // namespace

void tst_TextCollationOrder::cleanup() { QLocale::setDefault(QLocale::system()); }

void tst_TextCollationOrder::matchesLocaleAwareCompare_data()
{
    QTest::addColumn<QString>("locale");
    // The system locale of the run (C or C.UTF-8 on the build machines),
    // then locales whose collations differ from the root one in the ways
    // the samples probe: contractions (cs, sk, es traditional), letters
    // after z (sv, fi, da, nb, is), dotted and dotless i (tr, az),
    // backwards accents (fr_CA), other scripts (ru, el, he, ar, th, ja, zh,
    // ko, vi) and several Latin-script tailorings.
    QTest::newRow("system") << QLocale::system().name();
    const char *const names[] = {"C", "en_US", "en_GB", "de_DE", "de_AT", "fr_FR", "fr_CA", "es_ES",
        "it_IT", "pt_BR", "nl_NL", "sv_SE", "fi_FI", "da_DK", "nb_NO", "is_IS", "cs_CZ", "sk_SK",
        "pl_PL", "hu_HU", "ro_RO", "hr_HR", "sl_SI", "lt_LT", "lv_LV", "et_EE", "tr_TR", "az_AZ",
        "ru_RU", "uk_UA", "bg_BG", "el_GR", "he_IL", "ar_SA", "fa_IR", "hi_IN", "th_TH", "vi_VN",
        "ja_JP", "zh_CN", "zh_TW", "ko_KR", "cy_GB", "ga_IE", "mt_MT"};
    for (const char *name : names)
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_TextCollationOrder::matchesLocaleAwareCompare()
{
    QFETCH(QString, locale);
    QLocale::setDefault(QLocale(locale));
    const QStringList texts = mixedTexts();
    Outcome outcome;
    QThread *thread = QThread::create([&outcome, &texts] { outcome = orderInThisThread(texts); });
    thread->start();
    QVERIFY(thread->wait(120000));
    delete thread;

    QCOMPARE(outcome.actual.size(), texts.size());
    for (int i = 0; i < texts.size(); ++i) {
        if (outcome.actual.at(i) != outcome.expected.at(i)) {
            QFAIL(qPrintable(QStringLiteral("position %1: text %2 (\"%3\") where %4 (\"%5\")")
                                 .arg(i)
                                 .arg(outcome.actual.at(i))
                                 .arg(texts.at(outcome.actual.at(i)))
                                 .arg(outcome.expected.at(i))
                                 .arg(texts.at(outcome.expected.at(i)))));
        }
    }
    QCOMPARE(outcome.distinct, outcome.expectedDistinct);
    // The order came from the collation keys, not from sorting with
    // localeAwareCompare.
    QCOMPARE(outcome.fallbacks, 0);
    QCOMPARE(outcome.weightFallbacks, 0);
#if VEL_TEST_HAVE_ICU
    // Both the runs and the statistics ordered by primary weights.
    if (QLocale(locale).language() != QLocale::C && !reordersScripts(locale))
        QCOMPARE(outcome.weightOrders, 2);
#endif
    // The C locale's order (code units) is radix-sorted, with ICU or without.
    if (QLocale(locale).language() == QLocale::C)
        QCOMPARE(outcome.codeUnitOrders, 2);
}

void tst_TextCollationOrder::uniqueLookingTexts_data()
{
    QTest::addColumn<QString>("locale");
    const char *const names[] = {"C", "en_US", "de_DE", "fr_CA", "es_ES", "sv_SE", "cs_CZ", "pl_PL",
        "tr_TR", "vi_VN", "ru_RU", "ja_JP"};
    for (const char *name : names)
        QTest::newRow(name) << QString::fromLatin1(name);
}

// Texts that look unique are ordered without numbering equal ones first;
// repeats and ties further on must still come out as localeAwareCompare
// orders them, and count once each in "Distinct".
void tst_TextCollationOrder::uniqueLookingTexts()
{
    QFETCH(QString, locale);
    checkOrder(locale, ::uniqueLookingTexts());
}

void tst_TextCollationOrder::manyTexts_data()
{
    QTest::addColumn<QString>("locale");
    // Code units, primary weights, sort keys (scripts reordered), and a
    // tailoring whose letters sort after z.
    const char *const names[] = {"C", "en_US", "sv_SE", "ru_RU"};
    for (const char *name : names)
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_TextCollationOrder::manyTexts()
{
    QFETCH(QString, locale);
    checkOrder(locale, ::manyTexts());
}

// localeAwareCompare keeps the collator of its first call in a thread (Qt 5;
// Qt 6 follows later changes of the default locale); when the default
// locale changes after it, the collation keys of the new locale no longer
// give its order. The check of each neighbouring pair finds that, and the
// texts are sorted with localeAwareCompare itself.
void tst_TextCollationOrder::localeChangedAfterFirstComparison()
{
    const QStringList texts = mixedTexts();
    QLocale::setDefault(QLocale(QStringLiteral("sv_SE")));
    Outcome outcome;
    bool stillSwedish = false;
    QThread *thread = QThread::create([&outcome, &texts, &stillSwedish] {
        // Swedish puts ö after z, English beside o.
        const auto swedish
            = [] { return QStringLiteral("z").localeAwareCompare(QString::fromUtf8("ö")) < 0; };
        const bool wasSwedish = swedish();
        QLocale::setDefault(QLocale(QStringLiteral("en_US")));
        // Qt 5 keeps the first collator; Qt 6 follows the new default.
        stillSwedish = swedish();
        if (wasSwedish)
            outcome = orderInThisThread(texts);
    });
    thread->start();
    QVERIFY(thread->wait(120000));
    delete thread;

    QCOMPARE(outcome.actual.size(), texts.size());
    QCOMPARE(outcome.actual, outcome.expected);
    QCOMPARE(outcome.distinct, outcome.expectedDistinct);
    if (stillSwedish) {
        // The order by the keys of the new locale did not hold.
        QVERIFY(outcome.fallbacks > 0);
    } else {
        // localeAwareCompare orders as the new locale's keys do.
        QCOMPARE(outcome.fallbacks, 0);
    }
}

void tst_TextCollationOrder::readyModelTexts_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<bool>("unique");
    const char *const names[] = {"C", "en_US", "sv_SE", "ru_RU"};
    for (const char *name : names) {
        QTest::newRow(qPrintable(QStringLiteral("%1, unique-looking").arg(QLatin1String(name))))
            << QString::fromLatin1(name) << true;
        QTest::newRow(qPrintable(QStringLiteral("%1, many").arg(QLatin1String(name))))
            << QString::fromLatin1(name) << false;
    }
}

// The ready model keeps its texts as UTF-8 and orders them without a
// QString a cell; that order must be localeAwareCompare's as well, and
// reached without falling back.
void tst_TextCollationOrder::readyModelTexts()
{
    QFETCH(QString, locale);
    QFETCH(bool, unique);
    // Texts the loader keeps as they are: not numbers, not empty, nothing
    // UTF-8 cannot carry. Surrogate pairs (above U+FFFF) stay in, beside
    // U+E000..U+FFFF, which order before them by code units.
    QStringList texts;
    const QStringList candidates = (unique ? ::uniqueLookingTexts() : ::manyTexts())
        + QStringList {QString::fromUtf8("\xf0\x9f\x98\x80 a"), QString::fromUtf8("\xee\x80\x80 a"),
            QString::fromUtf8("\xef\xbf\xbd a"), QString::fromUtf8("\xf0\x90\x80\x80 b")};
    for (const QString &text : candidates) {
        bool number = false;
        text.toDouble(&number);
        if (!number && !text.trimmed().isEmpty() && !text.contains(QChar(0))
            && QString::fromUtf8(text.toUtf8()) == text) {
            texts.append(text);
        }
    }
    QByteArray csv = "Text\n";
    for (const QString &text : qAsConst(texts)) {
        QByteArray field = text.toUtf8();
        field.replace('"', "\"\"");
        csv += '"' + field + "\"\n";
    }

    QLocale::setDefault(QLocale(locale));
    Outcome outcome;
    QStringList loaded;
    double count = -1;
    QThread *thread = QThread::create([&] {
        outcome = orderInThisThread(texts);
        QBuffer buffer(&csv);
        buffer.open(QIODevice::ReadOnly);
        CMwGridTableModel model;
        if (!model.readCsv(&buffer))
            return;
        for (int r = 0; r < model.recordCount(); ++r)
            loaded.append(model.value(r, 0).toString());
        const int fallbacksBefore = vel::textOrderFallbacks();
        const int weightFallbacksBefore = vel::textWeightOrderFallbacks();
        const int weightOrdersBefore = vel::textWeightOrders();
        const int codeUnitOrdersBefore = vel::textCodeUnitOrders();
        count = model.index(0, 0).data(StatCountRole).toDouble();
        outcome.distinct = model.index(0, 0).data(StatDistinctRole).toDouble();
        outcome.fallbacks = vel::textOrderFallbacks() - fallbacksBefore;
        outcome.weightFallbacks = vel::textWeightOrderFallbacks() - weightFallbacksBefore;
        outcome.weightOrders = vel::textWeightOrders() - weightOrdersBefore;
        outcome.codeUnitOrders = vel::textCodeUnitOrders() - codeUnitOrdersBefore;
    });
    thread->start();
    QVERIFY(thread->wait(120000));
    delete thread;

    QCOMPARE(loaded, texts);
    QCOMPARE(count, double(texts.size()));
    QCOMPARE(outcome.distinct, outcome.expectedDistinct);
    QCOMPARE(outcome.fallbacks, 0);
    QCOMPARE(outcome.weightFallbacks, 0);
#if VEL_TEST_HAVE_ICU
    if (QLocale(locale).language() != QLocale::C && !reordersScripts(locale))
        QCOMPARE(outcome.weightOrders, 1);
#endif
    if (QLocale(locale).language() == QLocale::C)
        QCOMPARE(outcome.codeUnitOrders, 1);
}

VEL_TEST_MAIN(tst_TextCollationOrder)

#include "tst_textcollationorder.moc"
