// A flow layout of buttons: a tag bar whose buttons wrap onto new lines as
// the window narrows, styled by class name through one style sheet, with a
// picker button whose arrow turns on every click.
//
// Run with --quit (or on the offscreen platform) to build the window, run the
// event loop once and leave; that is how the test suite runs it.

#include <vel_qt_widgets/FlowLayout.h>
#include <vel_qt_widgets/PushButtons.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QVBoxLayout>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    // Type selectors reach exactly one kind of button each.
    app.setStyleSheet(QStringLiteral(
        "CMwTextPushButton { padding: 3px 10px; border: 1px solid #6a8caf; border-radius: 9px;"
        "                    background: #e8f0f8; }"
        "CMwTextPushButton:checked { background: #6a8caf; color: white; }"
        "CMwPickerPushButton { padding: 3px 24px 3px 8px; }"));

    QWidget window;
    window.setWindowTitle(QStringLiteral("Flow layout of buttons"));
    auto *layout = new QVBoxLayout(&window);

    // The widget owns its flow layout; add the buttons to that.
    auto *tags = new CMwQFlowLayoutWidget(&window);
    const QStringList names = {"alpine", "baroque", "coastal", "desert", "forest", "glacier",
        "harbour", "island", "jungle", "meadow", "prairie", "tundra"};
    for (const QString &name : names) {
        auto *button = new CMwTextPushButton(name, tags);
        button->setCheckable(true);
        tags->layout()->addWidget(button);
        QObject::connect(button, &QPushButton::toggled, button, [name](bool on) {
            std::printf("%s %s\n", qPrintable(name), on ? "on" : "off");
            std::fflush(stdout);
        });
    }

    auto *picker = new CMwPickerPushButton(&window);
    picker->setText(QStringLiteral("Sort"));
    QObject::connect(picker, &QPushButton::clicked, picker, [picker] {
        const int next = (picker->direction() + 1) % 4;
        picker->setDirection(CMwPickerPushButton::EPickerDirection(next));
        std::printf("direction %d\n", next);
        std::fflush(stdout);
    });

    // Grid mode: every button one size, three to a line.
    auto *grid = new QCheckBox(QStringLiteral("Three equal columns"), &window);
    QObject::connect(grid, &QCheckBox::toggled, tags, [tags](bool on) {
        auto *flow = qobject_cast<CMwQFlowLayout *>(tags->layout());
        if (!flow)
            return;
        flow->setSameWidgetsSize(on);
        flow->setFixedColumnCount(on ? 3 : -1);
        flow->invalidate(); // the setters only store
    });

    layout->addWidget(tags);
    layout->addWidget(grid);
    layout->addWidget(picker, 0, Qt::AlignLeft);
    layout->addStretch();

    window.resize(360, 260);
    window.show();

    if (app.arguments().contains(QStringLiteral("--quit"))
        || QGuiApplication::platformName() == QLatin1String("offscreen"))
        QTimer::singleShot(0, &app, &QCoreApplication::quit);
    return app.exec();
}
