#ifndef VEL_TESTS_METATYPELOOKUP_H
#define VEL_TESTS_METATYPELOOKUP_H

#include <QtCore/QMetaType>

// The meta-type id registered under name, 0 for none: QMetaType::type() in
// Qt 5, QMetaType::fromName() in Qt 6, which deprecates the former.
inline int metaTypeIdOfName(const char *name)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QMetaType::fromName(name).id();
#else
    return QMetaType::type(name);
#endif
}

#endif // VEL_TESTS_METATYPELOOKUP_H
