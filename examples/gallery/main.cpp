// The gallery: every widget of the library, live, with its signals logged.
// Without a display it renders one PNG per page instead of opening a window.

#include "gallerypage.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QTabWidget>

#include <cstdio>

namespace {

bool haveDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

QString fileNameFor(int index, const QString &title)
{
    QString slug = title.toLower();
    for (QChar &c : slug) {
        if (!c.isLetterOrNumber())
            c = QLatin1Char('-');
    }
    return QStringLiteral("%1-%2.png").arg(index + 1, 2, 10, QLatin1Char('0')).arg(slug);
}

struct Gallery
{
    QMainWindow window;
    QTabWidget *tabs = nullptr;
    QPlainTextEdit *logView = nullptr;
    GalleryLog *log = nullptr;

    Gallery()
    {
        window.setWindowTitle(QStringLiteral("vel_qt_widgets gallery"));
        auto *splitter = new QSplitter(Qt::Vertical, &window);
        tabs = new QTabWidget(splitter);
        logView = new QPlainTextEdit(splitter);
        logView->setReadOnly(true);
        logView->setPlaceholderText(QStringLiteral("Signals of the widgets on show appear here."));
        logView->setMaximumBlockCount(500);
        splitter->setStretchFactor(0, 4);
        splitter->setStretchFactor(1, 1);
        window.setCentralWidget(splitter);
        log = new GalleryLog(logView, &window);
        for (const GalleryPage &page : galleryPages())
            tabs->addTab(page.create(log), page.title);
        window.resize(1100, 760);
    }
};

int writeScreenshots(Gallery &gallery, const QString &folder)
{
    QDir().mkpath(folder);
    gallery.window.show();
    const QVector<GalleryPage> pages = galleryPages();
    for (int i = 0; i < gallery.tabs->count(); ++i) {
        gallery.tabs->setCurrentIndex(i);
        QApplication::processEvents();
        const QString path = QDir(folder).filePath(fileNameFor(i, pages.at(i).title));
        if (!gallery.window.grab().save(path)) {
            std::fprintf(stderr, "gallery: could not write %s\n", qPrintable(path));
            return 1;
        }
        std::printf("gallery: wrote %s\n", qPrintable(QDir(path).absolutePath()));
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const bool headless = !haveDisplay();
    if (headless)
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("gallery"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Every widget of vel_qt_widgets on show."));
    parser.addHelpOption();
    const QCommandLineOption shotsOption(QStringLiteral("screenshots"),
        QStringLiteral("Write one PNG per page into <folder> and quit."), QStringLiteral("folder"));
    const QCommandLineOption styleOption(QStringLiteral("fusion"),
        QStringLiteral("Use the Fusion style (the default without a display)."));
    parser.addOption(shotsOption);
    parser.addOption(styleOption);
    parser.process(app);

    if (headless || parser.isSet(styleOption))
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));

    Gallery gallery;
    if (headless || parser.isSet(shotsOption)) {
        const QString folder = parser.isSet(shotsOption) ? parser.value(shotsOption)
                                                         : QStringLiteral("gallery-shots");
        if (headless)
            std::printf("gallery: no display; writing one PNG per page into %s\n",
                        qPrintable(QDir(folder).absolutePath()));
        return writeScreenshots(gallery, folder);
    }
    gallery.window.show();
    return app.exec();
}
