#pragma once

#include <QtCore/QtGlobal>

// Qt 5's qRound64: the nearest integer with halves going up (-2.5 gives -2).
// The sliders round this way in both builds; Qt 6's qRound64 takes halves
// away from zero, so the tests carry Qt 5's formula as their reference.
inline qint64 qt5Round64(double d)
{
    return d >= 0.0 ? qint64(d + 0.5) : qint64(d - double(qint64(d - 1.0)) + 0.5) + qint64(d - 1.0);
}
