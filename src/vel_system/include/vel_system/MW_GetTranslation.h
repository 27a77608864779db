#ifndef VEL_SYSTEM_MW_GETTRANSLATION_H
#define VEL_SYSTEM_MW_GETTRANSLATION_H

#include <vel_system/vel_system_export.h>

/*!
    \file MW_GetTranslation.h
    \brief The translation function of the system library vel_system,
    through which the widgets' texts pass.
*/

/*!
    Returns the text to show for the source text \a text in the translation
    context \a context.

    The answer is what Qt's translators give for that pair
    (QCoreApplication::translate), or \a text itself when no installed
    translator knows it. The returned pointer stays valid for the life of the
    process: every distinct result is stored once, so calling the function
    again for the same text does not use more memory.

    A null \a text gives an empty string (with a warning); a null \a context
    is treated as the empty context.

    \code
    const wchar_t *shown = MW_GetTranslation(L"AND", "CMwFilterWidget");
    \endcode

    The language is that of the translators the application has installed;
    nothing else needs to be set up. Each call asks them anew, so installing
    or removing a translator switches the language of every text asked for
    afterwards, while pointers handed out before keep their text. Widgets ask
    for their texts when they are built (the filter's operator and comparator
    texts once per process), so the catalogue is installed before the first
    widget is created. The library's catalogues (one per language, such as
    vel_qt_widgets_de.qm) are embedded under ":/vel_qt_widgets/translations"
    and installed in share/vel_qt_widgets/translations of the prefix
    (share/vel_qt_widgets-qt6/translations for the Qt 6 build):

    \code
    QTranslator translator;
    translator.load(QLocale(), QStringLiteral("vel_qt_widgets"), QStringLiteral("_"),
                    QStringLiteral(":/vel_qt_widgets/translations"));
    QCoreApplication::installTranslator(&translator);
    \endcode

    The texts of the library are marked for lupdate with QT_TRANSLATE_NOOP in
    the context passed here, the narrow literal being the source text.
*/
VEL_SYSTEM_EXPORT const wchar_t *MW_GetTranslation(const wchar_t *text, const char *context);

#endif // VEL_SYSTEM_MW_GETTRANSLATION_H
