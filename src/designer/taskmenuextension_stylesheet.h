#ifndef VEL_QT_WIDGETS_TASKMENUEXTENSION_STYLESHEET_H
#define VEL_QT_WIDGETS_TASKMENUEXTENSION_STYLESHEET_H

#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionFactory>

QT_BEGIN_NAMESPACE
class QAction;
class QExtensionManager;
QT_END_NAMESPACE

// Context-menu entries on every widget of a Designer form: one per ".qss"
// file of $QT_DESIGNER_ZUN_DIR/Qss, applying that file, and a last entry
// that clears the widget's style sheet.
class TaskMenuExtension_StyleSheet : public QObject, public QDesignerTaskMenuExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)

public:
    TaskMenuExtension_StyleSheet(QWidget *widget, QObject *parent, const QString &directory);
    ~TaskMenuExtension_StyleSheet() override;

    QAction *preferredEditAction() const override;
    QList<QAction *> taskActions() const override;

public Q_SLOTS:
    // Applies the style sheet file rFile, or clears the style sheet for "CLEAR".
    void editState(const QString &rFile);

private:
    QList<QAction *> m_actions;
    // Plain pointer: Designer deletes the extension together with its widget.
    QWidget *m_widget;
};

class TaskMenuExtension_StyleSheetFactory : public QExtensionFactory
{
    Q_OBJECT

public:
    explicit TaskMenuExtension_StyleSheetFactory(QExtensionManager *parent = nullptr);

protected:
    QObject *createExtension(QObject *object, const QString &iid, QObject *parent) const override;

private:
    QString m_styleDirectory;
};

#endif // VEL_QT_WIDGETS_TASKMENUEXTENSION_STYLESHEET_H
