#pragma once

#include <QtCore/QSize>

// Sets the application's global strut. Qt 6 removed it: returns false there
// and sets nothing.
bool setGlobalStrutForTest(const QSize &strut);
