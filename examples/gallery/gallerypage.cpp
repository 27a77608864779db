#include "gallerypage.h"

#include <QtCore/QTime>
#include <QtWidgets/QPlainTextEdit>

#include <algorithm>

GalleryLog::GalleryLog(QPlainTextEdit *view, QObject *parent)
    : QObject(parent)
    , m_view(view)
{
}

void GalleryLog::write(const QString &line)
{
    if (m_view)
        m_view->appendPlainText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz  ")) + line);
}

namespace {
QVector<GalleryPage> &pageRegistry()
{
    static QVector<GalleryPage> pages;
    return pages;
}
} // namespace

bool registerGalleryPage(int order, const QString &title,
                         std::function<QWidget *(GalleryLog *log)> create)
{
    pageRegistry().append({order, title, std::move(create)});
    return true;
}

QVector<GalleryPage> galleryPages()
{
    QVector<GalleryPage> pages = pageRegistry();
    std::stable_sort(pages.begin(), pages.end(),
                     [](const GalleryPage &a, const GalleryPage &b) { return a.order < b.order; });
    return pages;
}
