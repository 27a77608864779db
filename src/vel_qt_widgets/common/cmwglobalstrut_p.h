#pragma once

#include <QtCore/QSize>

// The application's global strut (QApplication::globalStrut()), the least
// size Qt 5 widgets give their size hints. Qt 6 has none: an empty size.
QSize velGlobalStrut();
