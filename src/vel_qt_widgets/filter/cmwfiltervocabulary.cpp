#include "cmwfiltervocabulary_p.h"

#include <vel_system/MW_GetTranslation.h>

#include <string>

namespace VelFilterVocabulary {

const char *const filterContext = "CMwFilterWidget";
const char *const pickerContext = "CMwPickerForTable";

QString translate(const char *text, const char *context)
{
    const std::wstring source = QString::fromUtf8(text).toStdWString();
    return QString::fromWCharArray(MW_GetTranslation(source.c_str(), context));
}

namespace {

    QStringList translateAll(const char *const *texts, int count)
    {
        QStringList result;
        result.reserve(count);
        for (int i = 0; i < count; ++i)
            result.append(translate(texts[i], filterContext));
        return result;
    }

} // namespace

// The tables are translated once, on first use rather than when the library
// is loaded: our MW_GetTranslation asks Qt's translators, which an
// application can only install once its QCoreApplication exists. With a
// translation source that is ready at load time both give the same texts.
const QStringList &operatorTexts()
{
    static const char *const texts[] = {
        QT_TRANSLATE_NOOP("CMwFilterWidget", "AND"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "OR"),
    };
    static const QStringList translated = translateAll(texts, 2);
    return translated;
}

const QStringList &comparatorTexts()
{
    static const char *const texts[ComparatorCount] = {
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Is Greater or Equal"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Is Smaller or Equal"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Is Greater"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Is Smaller"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Is Equal"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Is Not Equal"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Is Empty"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Is Not Empty"),
    };
    static const QStringList translated = translateAll(texts, ComparatorCount);
    return translated;
}

QStringList headerTexts()
{
    static const char *const texts[] = {
        "",
        QT_TRANSLATE_NOOP("CMwFilterWidget", "AND/OR"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Column"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Comparison"),
        QT_TRANSLATE_NOOP("CMwFilterWidget", "Value"),
    };
    return translateAll(texts, 5);
}

QString selectText()
{
    static const char *const text = QT_TRANSLATE_NOOP("CMwPickerForTable", "<select>");
    return translate(text, pickerContext);
}

} // namespace VelFilterVocabulary
