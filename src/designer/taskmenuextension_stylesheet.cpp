#include "taskmenuextension_stylesheet.h"

#include "qssdirectory.h"

#include <QAction>
#include <QtCore/QSignalMapper>
#include <QtDesigner/QExtensionManager>
#include <QtWidgets/QWidget>

namespace {
const char taskMenuIid[] = "org.qt-project.Qt.Designer.TaskMenu";
const char clearKey[] = "CLEAR";
} // namespace

TaskMenuExtension_StyleSheet::TaskMenuExtension_StyleSheet(
    QWidget *widget, QObject *parent, const QString &directory)
    : QObject(parent)
    , m_widget(widget)
{
    auto *mapper = new QSignalMapper(this);
    // Qt 6 names the mapper's string signal mappedString.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    connect(mapper, SIGNAL(mappedString(QString const &)), this, SLOT(editState(QString const &)));
#else
    connect(mapper, SIGNAL(mapped(QString const &)), this, SLOT(editState(QString const &)));
#endif

    const auto addAction = [&](const QString &text, const QString &mapping) {
        auto *action = new QAction(text, this);
        mapper->setMapping(action, mapping);
        connect(action, SIGNAL(triggered()), mapper, SLOT(map()));
        m_actions.append(action);
    };
    // The mapping carries the absolute path, so a file named CLEAR.qss still
    // applies that file rather than clearing.
    for (const QFileInfo &file : velStyleSheetFiles(directory))
        addAction(file.completeBaseName(), file.absoluteFilePath());
    addAction(QStringLiteral("Clear styleSheet"), QLatin1String(clearKey));
}

TaskMenuExtension_StyleSheet::~TaskMenuExtension_StyleSheet() = default;

QAction *TaskMenuExtension_StyleSheet::preferredEditAction() const
{
    return m_actions.isEmpty() ? nullptr : m_actions.first();
}

QList<QAction *> TaskMenuExtension_StyleSheet::taskActions() const { return m_actions; }

void TaskMenuExtension_StyleSheet::editState(const QString &rFile)
{
    if (!m_widget)
        return;
    if (rFile == QLatin1String(clearKey)) {
        m_widget->setStyleSheet(QString());
        return;
    }
    // Applied straight to the widget, not through the form's property sheet.
    const QString styleSheet = velReadStyleSheet(rFile);
    if (!styleSheet.isNull())
        m_widget->setStyleSheet(styleSheet);
}

TaskMenuExtension_StyleSheetFactory::TaskMenuExtension_StyleSheetFactory(QExtensionManager *parent)
    : QExtensionFactory(parent)
    , m_styleDirectory(velStyleSheetDirectory())
{
}

QObject *TaskMenuExtension_StyleSheetFactory::createExtension(
    QObject *object, const QString &iid, QObject *parent) const
{
    // Every widget of a form gets the entries, whatever library it comes from.
    if (iid != QLatin1String(taskMenuIid) || !object || !object->isWidgetType())
        return nullptr;
    return new TaskMenuExtension_StyleSheet(
        static_cast<QWidget *>(object), parent, m_styleDirectory);
}
