// The gallery: every widget of the library, live, with its signals logged.
// Without a display it renders one PNG per page instead of opening a window.

#include "gallerypage.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QTabWidget>

#include <cstdio>

namespace {

bool haveDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY")
        || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

QString fileNameFor(int index, const QString &title, const QString &suffix)
{
    QString slug = title.toLower();
    for (QChar &c : slug) {
        if (!c.isLetterOrNumber())
            c = QLatin1Char('-');
    }
    return QStringLiteral("%1-%2%3.png")
        .arg(index + 1, 2, 10, QLatin1Char('0'))
        .arg(slug, suffix.isEmpty() ? QString() : QLatin1Char('-') + suffix);
}

// A dark palette for the Fusion style, as dark desktop themes set it: light
// text on dark windows and bases, and a blue highlight.
QPalette darkPalette()
{
    const QColor window(53, 53, 53);
    const QColor base(35, 35, 35);
    const QColor text(230, 230, 230);
    const QColor disabledText(127, 127, 127);
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, disabledText);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, Qt::red);
    palette.setColor(QPalette::Link, QColor(42, 130, 218));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Light, window.lighter(150));
    palette.setColor(QPalette::Midlight, window.lighter(125));
    palette.setColor(QPalette::Mid, window.darker(120));
    palette.setColor(QPalette::Dark, window.darker(150));
    palette.setColor(QPalette::Shadow, Qt::black);
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, disabledText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(80, 80, 80));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, disabledText);
    return palette;
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
        const GalleryView view = createGalleryView(&window);
        tabs = view.tabs;
        logView = view.logView;
        log = view.log;
        window.setCentralWidget(view.widget);
        window.resize(1100, 760);
    }
};

int writeScreenshots(Gallery &gallery, const QString &folder, const QString &suffix)
{
    QDir().mkpath(folder);
    gallery.window.show();
    const QVector<GalleryPage> pages = galleryPages();
    for (int i = 0; i < gallery.tabs->count(); ++i) {
        gallery.tabs->setCurrentIndex(i);
        QApplication::processEvents();
        const QString path = QDir(folder).filePath(fileNameFor(i, pages.at(i).title, suffix));
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
    const QCommandLineOption darkOption(QStringLiteral("dark"),
        QStringLiteral("Use the Fusion style with a dark palette (also: VEL_GALLERY_DARK=1)."));
    const QCommandLineOption suffixOption(QStringLiteral("suffix"),
        QStringLiteral("Append -<text> to the name of every PNG written."), QStringLiteral("text"));
    parser.addOption(shotsOption);
    parser.addOption(styleOption);
    parser.addOption(darkOption);
    parser.addOption(suffixOption);
    parser.process(app);

    const bool dark
        = parser.isSet(darkOption) || qEnvironmentVariableIntValue("VEL_GALLERY_DARK") != 0;
    if (headless || dark || parser.isSet(styleOption))
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (dark)
        QApplication::setPalette(darkPalette());

    Gallery gallery;
    if (headless || parser.isSet(shotsOption)) {
        const QString folder = parser.isSet(shotsOption) ? parser.value(shotsOption)
                                                         : QStringLiteral("gallery-shots");
        if (headless)
            std::printf("gallery: no display; writing one PNG per page into %s\n",
                qPrintable(QDir(folder).absolutePath()));
        return writeScreenshots(gallery, folder, parser.value(suffixOption));
    }
    gallery.window.show();
    return app.exec();
}
