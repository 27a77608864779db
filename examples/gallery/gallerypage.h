#ifndef VEL_GALLERY_GALLERYPAGE_H
#define VEL_GALLERY_GALLERYPAGE_H

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVector>

#include <functional>

QT_BEGIN_NAMESPACE
class QPlainTextEdit;
class QTabWidget;
class QWidget;
QT_END_NAMESPACE

// The log pane every page writes the signals of its widgets into.
class GalleryLog : public QObject
{
    Q_OBJECT

public:
    explicit GalleryLog(QPlainTextEdit *view, QObject *parent = nullptr);

public Q_SLOTS:
    void write(const QString &line);

private:
    QPlainTextEdit *m_view;
};

struct GalleryPage
{
    int order;
    QString title;
    std::function<QWidget *(GalleryLog *log)> create;
};

// Pages register themselves from their own source file, so that adding a page
// touches nothing else.
bool registerGalleryPage(
    int order, const QString &title, std::function<QWidget *(GalleryLog *log)> create);
QVector<GalleryPage> galleryPages();

// The gallery's central widget: every page in a tab above the log pane. The
// log is created after the pages so that Tab runs tab bar, page, log.
struct GalleryView
{
    QWidget *widget = nullptr;
    QTabWidget *tabs = nullptr;
    QPlainTextEdit *logView = nullptr;
    GalleryLog *log = nullptr;
};
GalleryView createGalleryView(QWidget *parent);

#define VEL_GALLERY_PAGE(order, title, function)                                                   \
    static const bool velGalleryPageRegistered_##function                                          \
        = registerGalleryPage(order, QStringLiteral(title), function)

#endif // VEL_GALLERY_GALLERYPAGE_H
