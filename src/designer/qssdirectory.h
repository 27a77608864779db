#ifndef VEL_QT_WIDGETS_QSSDIRECTORY_H
#define VEL_QT_WIDGETS_QSSDIRECTORY_H

#include <QtCore/QFileInfoList>
#include <QtCore/QString>

// The ".qss" files offered in Designer: readable files of <directory>/Qss,
// by name ignoring case. An empty directory means the current one; a missing
// "Qss" subdirectory offers nothing.
QFileInfoList velStyleSheetFiles(const QString &directory);

// The value of QT_DESIGNER_ZUN_DIR, or an empty string.
QString velStyleSheetDirectory();

// The whole file as UTF-8 text; a null string when it does not open.
QString velReadStyleSheet(const QString &path);

#endif // VEL_QT_WIDGETS_QSSDIRECTORY_H
