#include "qssdirectory.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcessEnvironment>

QFileInfoList velStyleSheetFiles(const QString &directory)
{
    QDir dir(directory, QStringLiteral("*.qss"), QDir::IgnoreCase, QDir::Files | QDir::Readable);
    // QDir::cd() stays where it is when the subdirectory is missing; listing
    // the parent then would offer files from the wrong place.
    if (!dir.cd(QStringLiteral("Qss")))
        return {};
    return dir.entryInfoList();
}

QString velStyleSheetDirectory()
{
    return QProcessEnvironment::systemEnvironment().value(
        QStringLiteral("QT_DESIGNER_ZUN_DIR"), QString());
}

QString velReadStyleSheet(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    const QString text = QString::fromUtf8(file.readAll());
    file.close();
    return text.isNull() ? QString(QLatin1String("")) : text;
}
