// A keyboard-only walk through every gallery page: only key events, each sent
// to the widget that has the focus, reach and operate every widget on show.

#include "gallerypage.h"
#include "vel_test_main.h"

#include <vel_qt_widgets/CMwGridTreeView.h>
#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>
#include <vel_qt_widgets/CMwQSlider.h>

#include <QtGui/QAccessible>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>

#include <memory>

namespace {

// The gallery's window as main.cpp builds it: the pages in tabs over the log.
struct GalleryWindow
{
    QMainWindow window;
    QTabWidget *tabs = nullptr;
    QPlainTextEdit *logView = nullptr;

    GalleryWindow()
    {
        const GalleryView view = createGalleryView(&window);
        window.setCentralWidget(view.widget);
        tabs = view.tabs;
        logView = view.logView;
    }
};

// The offscreen platform does not give the activation back when a popup
// closes, as a window manager does.
QWidget *galleryWindow = nullptr;
void restoreActivation() { QApplication::setActiveWindow(galleryWindow); }

QWidget *keyTarget()
{
    // A menu takes the keys itself; a combo box popup through its list.
    if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget()))
        return menu;
    return QApplication::focusWidget();
}

void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget *target = keyTarget();
    QVERIFY(target);
    QTest::keyClick(target, key, modifiers);
}

QString describe(const QWidget *widget)
{
    if (!widget)
        return QStringLiteral("(none)");
    QString text = QString::fromLatin1(widget->metaObject()->className());
    if (!widget->objectName().isEmpty())
        text += QLatin1Char('#') + widget->objectName();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        text += QStringLiteral(" \"%1\"").arg(button->text());
    if (!widget->accessibleName().isEmpty())
        text += QStringLiteral(" [%1]").arg(widget->accessibleName());
    return text;
}

// Widgets a user must be able to reach: shown, enabled, taking Tab focus.
QList<QWidget *> tabStops(QWidget *page)
{
    QList<QWidget *> stops;
    const QList<QWidget *> all = page->findChildren<QWidget *>();
    for (QWidget *widget : all) {
        if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus)
            && !widget->focusProxy())
            stops << widget;
    }
    return stops;
}

} // namespace

class tst_GalleryKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    // Before the walk, which turns the statistics off.
    void tabLeavesTheStatistics();
    void walkPage_data();
    void walkPage();
    void slidersHaveNames();
    void focusedButtonIsMarked();

private:
    // Operates the focused widget with its keys; returns why it failed, or
    // an empty string.
    QString operate(QWidget *widget, bool firstVisit);

    std::unique_ptr<GalleryWindow> m_gallery;
};

void tst_GalleryKeyboard::initTestCase()
{
    m_gallery.reset(new GalleryWindow);
    galleryWindow = &m_gallery->window;
    QVERIFY(showAt(m_gallery->window, 1100, 760));
    QApplication::setActiveWindow(&m_gallery->window);
    QVERIFY(QTest::qWaitForWindowActive(&m_gallery->window));
}

QString tst_GalleryKeyboard::operate(QWidget *widget, bool firstVisit)
{
    QSignalSpy logged(m_gallery->logView, &QPlainTextEdit::textChanged);

    if (auto *slider = qobject_cast<QAbstractSlider *>(widget)) {
        // Every handle on show, the inner slider of a floating-point one
        // included, logs each move; a range slider moves the focused handle.
        for (Qt::Key key : {Qt::Key_Up, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home}) {
            logged.clear();
            press(key);
            if (logged.isEmpty())
                return QStringLiteral("key %1 logged nothing").arg(key, 0, 16);
        }
        Q_UNUSED(slider)
        return QString();
    }
    if (!firstVisit)
        return QString();
    if (auto *spin = qobject_cast<QSpinBox *>(widget)) {
        const int before = spin->value();
        press(Qt::Key_Up);
        if (spin->value() == before)
            return QStringLiteral("Up did not change the value");
        press(Qt::Key_Down);
        return QString();
    }
    if (auto *combo = qobject_cast<QComboBox *>(widget)) {
        // In the filter editor the first key may only select the row.
        for (int attempt = 0; attempt < 2 && !combo->view()->isVisible(); ++attempt)
            press(Qt::Key_Down, Qt::AltModifier);
        if (!combo->view()->isVisible())
            return QStringLiteral("Alt+Down opened no popup");
        press(Qt::Key_Escape);
        if (combo->view()->isVisible())
            return QStringLiteral("Escape left the popup open");
        if (QApplication::focusWidget() != widget)
            restoreActivation();
        if (QApplication::focusWidget() != widget)
            return QStringLiteral("the focus did not come back from the popup");
        return QString();
    }
    if (auto *button = qobject_cast<QAbstractButton *>(widget)) {
        QSignalSpy clicked(button, &QAbstractButton::clicked);
        press(Qt::Key_Space);
        if (clicked.count() != 1)
            return QStringLiteral("Space clicked %1 times").arg(clicked.count());
        return QString();
    }
    if (qobject_cast<CMwGridTreeView *>(widget)) {
        // The column menu runs its own event loop: close it from inside.
        bool sawMenu = false;
        QTimer::singleShot(0, this, [&sawMenu] {
            if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
                sawMenu = true;
                QTest::keyClick(menu, Qt::Key_Escape);
            }
        });
        press(Qt::Key_Menu);
        if (QApplication::focusWidget() != widget)
            restoreActivation();
        if (QApplication::focusWidget() != widget)
            return QStringLiteral("the focus did not come back from the column menu");
        if (!sawMenu)
            return QStringLiteral("the menu key opened no column menu");
        if (QApplication::activePopupWidget())
            return QStringLiteral("Escape left the column menu open");
        return QString();
    }
    if (auto *view = qobject_cast<QAbstractItemView *>(widget)) {
        press(Qt::Key_Down);
        if (!view->currentIndex().isValid())
            return QStringLiteral("Down made no cell current");
        // Back to the row Tab came to, so that the walk goes on from there.
        press(Qt::Key_Up);
        return QString();
    }
    return QString();
}

void tst_GalleryKeyboard::walkPage_data()
{
    QTest::addColumn<int>("index");
    const QVector<GalleryPage> pages = galleryPages();
    for (int index = 0; index < pages.size(); ++index)
        QTest::newRow(qPrintable(pages.at(index).title)) << index;
}

void tst_GalleryKeyboard::walkPage()
{
    QFETCH(int, index);
    QTabWidget *tabs = m_gallery->tabs;
    QCOMPARE(tabs->count(), 7);
    restoreActivation();
    tabs->tabBar()->setFocus(Qt::OtherFocusReason);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(tabs->tabBar()));

    // From the tab bar: Ctrl+Tab to the page, Tab into it.
    while (tabs->currentIndex() != index)
        press(Qt::Key_Tab, Qt::ControlModifier);
    QWidget *page = tabs->currentWidget();
    press(Qt::Key_Tab);
    QVERIFY2(page->isAncestorOf(QApplication::focusWidget()),
        qPrintable(describe(QApplication::focusWidget())));

    QStringList failures;
    QSet<QWidget *> visited;
    for (int step = 0; step < 200 && page->isAncestorOf(QApplication::focusWidget()); ++step) {
        QWidget *focus = QApplication::focusWidget();
        const bool first = !visited.contains(focus);
        visited.insert(focus);
        if (qEnvironmentVariableIsSet("VEL_WALK_TRACE"))
            qDebug().noquote() << "  focus:" << describe(focus);
        const QString failure = operate(focus, first);
        if (!failure.isEmpty())
            failures << QStringLiteral("%1: %2").arg(describe(focus), failure);
        // A user's keys come at least one event-loop turn apart, so layouts
        // the last one asked for (a toolbar showing the buttons of actions it
        // made visible) have run before the next.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        press(Qt::Key_Tab);
    }
    if (page->isAncestorOf(QApplication::focusWidget()))
        failures << QStringLiteral("Tab never leaves the page");
    // A composite counts as reached when the focus went into it: Tab enters
    // the grid's fresh filter editor at its placeholder row's column picker.
    const auto reached = [&visited](QWidget *widget) {
        for (QWidget *focus : qAsConst(visited)) {
            if (focus == widget || widget->isAncestorOf(focus))
                return true;
        }
        return false;
    };
    const QList<QWidget *> stops = tabStops(page);
    for (QWidget *widget : stops) {
        if (!reached(widget))
            failures << QStringLiteral("never reached: %1").arg(describe(widget));
    }

    QVERIFY2(failures.isEmpty(), qPrintable(failures.join(QLatin1Char('\n'))));
}

void tst_GalleryKeyboard::slidersHaveNames()
{
    // Assistive technology announces a slider by its name; on one page no two
    // sliders (or range handles) may share one, as they would when all fall
    // back to their group box's title.
    QStringList failures;
    for (int index = 0; index < m_gallery->tabs->count(); ++index) {
        QStringList seen;
        const QList<QAbstractSlider *> sliders
            = m_gallery->tabs->widget(index)->findChildren<QAbstractSlider *>();
        for (QAbstractSlider *slider : sliders) {
            if (qobject_cast<QScrollBar *>(slider))
                continue;
            // The inner slider of a floating-point one answers as the outer widget.
            QWidget *widget = slider;
            if (qobject_cast<CMwQDoubleSlider *>(slider->parentWidget())
                || qobject_cast<CMwQDoubleRangeSlider *>(slider->parentWidget()))
                widget = slider->parentWidget();
            QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(widget);
            QVERIFY(iface);
            QStringList names;
            if (iface->childCount() == 2) {
                for (int child = 0; child < 2; ++child)
                    names << iface->child(child)->text(QAccessible::Name);
            } else {
                names << iface->text(QAccessible::Name);
            }
            for (const QString &name : names) {
                if (name.trimmed().isEmpty() || seen.contains(name))
                    failures << QStringLiteral("%1: %2 is named \"%3\"")
                                    .arg(m_gallery->tabs->tabText(index), describe(widget), name);
                seen << name;
            }
        }
    }
    if (!failures.isEmpty())
        QFAIL(qPrintable(failures.join(QLatin1Char('\n'))));
}

void tst_GalleryKeyboard::tabLeavesTheStatistics()
{
    // The grid's read-only figures are one Tab stop, not a cell-by-cell loop.
    QTabWidget *tabs = m_gallery->tabs;
    tabs->setCurrentIndex(2);
    restoreActivation();
    auto *table
        = tabs->currentWidget()->findChild<QTableView *>(QStringLiteral("statisticTableView"));
    QVERIFY(table);
    QVERIFY(table->isVisible());
    QVERIFY(table->model() && table->model()->columnCount() > 1);
    table->setFocus(Qt::TabFocusReason);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(table));
    press(Qt::Key_Tab);
    QVERIFY2(
        QApplication::focusWidget() != table, qPrintable(describe(QApplication::focusWidget())));
}

void tst_GalleryKeyboard::focusedButtonIsMarked()
{
    // The gallery's style sheet draws the buttons itself; the focused one
    // must still look different from the others.
    QTabWidget *tabs = m_gallery->tabs;
    tabs->setCurrentIndex(5);
    restoreActivation();
    const QList<QAbstractButton *> buttons
        = tabs->currentWidget()->findChildren<QAbstractButton *>();
    QVERIFY(!buttons.isEmpty());
    for (QAbstractButton *button : buttons) {
        tabs->tabBar()->setFocus(Qt::OtherFocusReason);
        QTRY_VERIFY(!button->hasFocus());
        const QImage plain = button->grab().toImage();
        button->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(button->hasFocus());
        const QImage focused = button->grab().toImage();
        QVERIFY2(plain != focused, qPrintable(describe(button)));
    }
}

VEL_TEST_MAIN(tst_GalleryKeyboard)

#include "tst_gallerykeyboard.moc"
