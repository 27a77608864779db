#include "gallerypage.h"

#include <QtCore/QTime>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTabWidget>

#include <algorithm>

GalleryLog::GalleryLog(QPlainTextEdit *view, QObject *parent)
    : QObject(parent)
    , m_view(view)
{
}

void GalleryLog::write(const QString &line)
{
    if (m_view)
        m_view->appendPlainText(
            QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz  ")) + line);
}

namespace {
QVector<GalleryPage> &pageRegistry()
{
    static QVector<GalleryPage> pages;
    return pages;
}
} // namespace

bool registerGalleryPage(
    int order, const QString &title, std::function<QWidget *(GalleryLog *log)> create)
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

GalleryView createGalleryView(QWidget *parent)
{
    GalleryView view;
    auto *splitter = new QSplitter(Qt::Vertical, parent);
    view.widget = splitter;
    view.tabs = new QTabWidget(splitter);
    view.logView = new QPlainTextEdit;
    view.log = new GalleryLog(view.logView, splitter);
    for (const GalleryPage &page : galleryPages())
        view.tabs->addTab(page.create(view.log), page.title);
    view.logView->setReadOnly(true);
    view.logView->setPlaceholderText(QStringLiteral("Signals of the widgets on show appear here."));
    view.logView->setMaximumBlockCount(500);
    splitter->addWidget(view.logView);
    splitter->setStretchFactor(0, 4);
    splitter->setStretchFactor(1, 1);
    return view;
}
