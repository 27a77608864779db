#ifndef VEL_QT_WIDGETS_CMWQTICKITEMTYPES_P_H
#define VEL_QT_WIDGETS_CMWQTICKITEMTYPES_P_H

#include <QtCore/QDataStream>
#include <QtCore/QMetaType>

namespace CMwQTickItemTypes {

// Registers T (declared with Q_DECLARE_METATYPE, its QDataStream operators
// declared beside it) under name, so that QVariant, QObject properties and
// Designer find it by that name and QDataStream can save it inside a
// QVariant. Qt 6 takes the stream operators from the declaration itself;
// Qt 5 has to be told.
template<typename T>
void registerStreamable(const char *name)
{
    qRegisterMetaType<T>(name);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    qRegisterMetaTypeStreamOperators<T>(name);
#endif
}

} // namespace CMwQTickItemTypes

#endif // VEL_QT_WIDGETS_CMWQTICKITEMTYPES_P_H
