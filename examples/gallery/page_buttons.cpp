#include "gallerypage.h"

#include <vel_qt_widgets/Base.h>
#include <vel_qt_widgets/PushButtons.h>

#include <QtCore/QFile>
#include <QtCore/QMetaEnum>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>

namespace {

QString loadStyleSheet()
{
    QFile file(QStringLiteral(":/gallery/buttons.qss"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    return QString::fromUtf8(file.readAll());
}

void logClicks(QAbstractButton *button, GalleryLog *log, const QString &name)
{
    QObject::connect(button, &QAbstractButton::clicked, log,
        [log, name]() { log->write(QStringLiteral("%1: clicked()").arg(name)); });
}

QString directionName(CMwPickerPushButton::EPickerDirection direction)
{
    const QMetaEnum names = QMetaEnum::fromType<CMwPickerPushButton::EPickerDirection>();
    const char *key = names.valueToKey(direction);
    return key ? QString::fromLatin1(key) : QString::number(int(direction));
}

QWidget *createButtonsPage(GalleryLog *log)
{
    auto *page = new QWidget;
    // The whole page takes its looks from class-name selectors in buttons.qss.
    page->setStyleSheet(loadStyleSheet());
    auto *layout = new QVBoxLayout(page);

    auto *textBox = new QGroupBox(QStringLiteral("CMwTextPushButton"));
    auto *textRow = new QHBoxLayout(textBox);
    for (const QString &text :
        {QStringLiteral("Apply"), QStringLiteral("Cancel"), QStringLiteral("Details...")}) {
        auto *button = new CMwTextPushButton(text, textBox);
        logClicks(button, log, QStringLiteral("CMwTextPushButton \"%1\"").arg(text));
        textRow->addWidget(button);
    }
    textRow->addStretch();
    layout->addWidget(textBox);

    auto *iconBox = new QGroupBox(QStringLiteral("CMwIconFitButton and CMwSizedPushButtonMd"));
    auto *iconRow = new QHBoxLayout(iconBox);
    const QStyle *style = page->style();
    const QStyle::StandardPixmap icons[] = {QStyle::SP_DialogOpenButton,
        QStyle::SP_DialogSaveButton, QStyle::SP_BrowserReload, QStyle::SP_TrashIcon};
    for (QStyle::StandardPixmap icon : icons) {
        auto *button = new CMwIconFitButton(style->standardIcon(icon), iconBox);
        logClicks(button, log, QStringLiteral("CMwIconFitButton %1").arg(int(icon)));
        iconRow->addWidget(button);
    }
    iconRow->addSpacing(24);
    auto *sized = new CMwSizedPushButtonMd(
        style->standardIcon(QStyle::SP_DialogApplyButton), QStringLiteral("Medium"), iconBox);
    logClicks(sized, log, QStringLiteral("CMwSizedPushButtonMd"));
    iconRow->addWidget(sized);
    iconRow->addStretch();
    layout->addWidget(iconBox);

    auto *pickerBox
        = new QGroupBox(QStringLiteral("CMwPickerPushButton: click to turn the triangle"));
    auto *pickerRow = new QHBoxLayout(pickerBox);
    for (int i = 0; i < 4; ++i) {
        const auto direction = CMwPickerPushButton::EPickerDirection(i);
        auto *picker = new CMwPickerPushButton(pickerBox);
        picker->setDirection(direction);
        picker->setText(directionName(direction));
        QObject::connect(picker, &QAbstractButton::clicked, log, [picker, log]() {
            const auto next
                = CMwPickerPushButton::EPickerDirection((int(picker->direction()) + 1) % 4);
            picker->setDirection(next);
            picker->setText(directionName(next));
            log->write(
                QStringLiteral("CMwPickerPushButton: direction -> %1").arg(directionName(next)));
        });
        pickerRow->addWidget(picker);
    }
    pickerRow->addStretch();
    layout->addWidget(pickerBox);

    auto *panelBox = new QGroupBox(QStringLiteral("CMwQWidget with a styled background"));
    auto *panelRow = new QHBoxLayout(panelBox);
    auto *panel = new CMwQWidget(panelBox);
    panel->setAttribute(Qt::WA_StyledBackground);
    auto *panelLayout = new QHBoxLayout(panel);
    panelLayout->addWidget(new QLabel(
        QStringLiteral("A plain CMwQWidget: its look comes from the \"CMwQWidget\" selector."),
        panel));
    panelRow->addWidget(panel);
    layout->addWidget(panelBox);

    layout->addStretch();
    return page;
}

} // namespace

VEL_GALLERY_PAGE(50, "Buttons", createButtonsPage);
