#ifndef VEL_SYSTEM_MW_GETTRANSLATION_H
#define VEL_SYSTEM_MW_GETTRANSLATION_H

#include <vel_system/vel_system_export.h>

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
*/
VEL_SYSTEM_EXPORT const wchar_t *MW_GetTranslation(const wchar_t *text, const char *context);

#endif // VEL_SYSTEM_MW_GETTRANSLATION_H
