#include "cmwbuttonaccessible_p.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeySequence>
#include <QtWidgets/QAbstractButton>

namespace {

// A mnemonic's ampersand is not read out; a doubled one stands for itself.
QString withoutMnemonic(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('&')) {
            if (i + 1 < text.size() && text.at(i + 1) == QLatin1Char('&'))
                ++i;
            else
                continue;
        }
        result.append(text.at(i));
    }
    return result;
}

// The library's push buttons, told apart by class name as style sheets do.
QAccessibleInterface *buttonAccessibleFactory(const QString &className, QObject *object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    if (className == QLatin1String("CMwTextPushButton")
        || className == QLatin1String("CMwIconFitButton")
        || className == QLatin1String("CMwSizedPushButtonMd")
        || className == QLatin1String("CMwPickerPushButton")) {
        return new CMwButtonAccessible(static_cast<QWidget *>(object));
    }
    return nullptr;
}

void installButtonAccessibleFactory()
{
    // Runs for every application object the process creates; one
    // installation is enough.
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    QAccessible::installFactory(buttonAccessibleFactory);
}

} // namespace

// Each family installs its own factory; QAccessible asks all of them.
Q_COREAPP_STARTUP_FUNCTION(installButtonAccessibleFactory)

CMwButtonAccessible::CMwButtonAccessible(QWidget *button)
    : QAccessibleWidget(button, QAccessible::Button)
{
}

QAbstractButton *CMwButtonAccessible::button() const
{
    return qobject_cast<QAbstractButton *>(object());
}

QString CMwButtonAccessible::text(QAccessible::Text t) const
{
    QAbstractButton *b = button();
    if (!b)
        return QString();
    if (t == QAccessible::Name) {
        QString name = b->accessibleName();
        if (name.isEmpty())
            name = withoutMnemonic(b->text());
        // An icon-only button is named by its tool tip.
        if (name.isEmpty())
            name = b->toolTip();
        return name;
    }
    if (t == QAccessible::Accelerator) {
        const QKeySequence mnemonic = QKeySequence::mnemonic(b->text());
        return mnemonic.isEmpty() ? QString() : mnemonic.toString(QKeySequence::NativeText);
    }
    return QAccessibleWidget::text(t);
}

QAccessible::State CMwButtonAccessible::state() const
{
    QAccessible::State st = QAccessibleWidget::state();
    if (QAbstractButton *b = button()) {
        if (b->isDown())
            st.pressed = true;
        if (b->isCheckable()) {
            st.checkable = true;
            st.checked = b->isChecked();
        }
    }
    return st;
}

QStringList CMwButtonAccessible::actionNames() const
{
    QStringList names;
    if (widget()->isEnabled()) {
        names << (button() && button()->isCheckable() ? toggleAction() : pressAction());
    }
    return names + QAccessibleWidget::actionNames();
}

void CMwButtonAccessible::doAction(const QString &actionName)
{
    QAbstractButton *b = button();
    if (b && b->isEnabled() && (actionName == pressAction() || actionName == toggleAction())) {
        b->animateClick();
        return;
    }
    QAccessibleWidget::doAction(actionName);
}

QStringList CMwButtonAccessible::keyBindingsForAction(const QString &actionName) const
{
    QStringList keys;
    if (actionName == pressAction() || actionName == toggleAction()) {
        const QString mnemonic = text(QAccessible::Accelerator);
        if (!mnemonic.isEmpty())
            keys << mnemonic;
    }
    return keys;
}
