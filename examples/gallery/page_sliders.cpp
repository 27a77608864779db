#include "gallerypage.h"

#include <vel_qt_widgets/CMwQRangeSlider.h>
#include <vel_qt_widgets/CMwQSlider.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace {

// Labels are laid out with a default QTextOption, which wraps at spaces, so
// one word each keeps them on one line.
TMwTickItemList temperatureTicks()
{
    return {{0, QSlider::TicksBelow, QStringLiteral("freezing")},
        {37, QSlider::TicksBothSides, QStringLiteral("body")},
        {60, QSlider::TicksAbove, QStringLiteral("hot")},
        {100, QSlider::TicksBelow, QStringLiteral("boiling")},
        // Kept in the list, never drawn: no side, or outside the range.
        {20, QSlider::NoTicks, QStringLiteral("room")},
        {120, QSlider::TicksBelow, QStringLiteral("steam")}};
}

TMwTickItemList percentTicks()
{
    return {{0, QSlider::TicksBelow, QStringLiteral("0%")},
        {25, QSlider::TicksAbove, QStringLiteral("quarter")},
        {50, QSlider::TicksBelow, QStringLiteral("half")},
        {75, QSlider::TicksAbove, QStringLiteral("three-quarters")},
        {100, QSlider::TicksBelow, QStringLiteral("100%")}};
}

QLabel *caption(const QString &text)
{
    auto *label = new QLabel(text);
    label->setWordWrap(true);
    return label;
}

CMwQSlider *makeSlider(Qt::Orientation orientation, GalleryLog *log, const QString &name)
{
    auto *slider = new CMwQSlider(orientation);
    slider->setRange(0, 100);
    slider->setValue(37);
    slider->setTickPosition(QSlider::TicksBothSides);
    slider->setTickInterval(10);
    slider->setTickItemList(temperatureTicks());
    QObject::connect(slider, &QSlider::valueChanged, log, [log, name](int value) {
        log->write(QStringLiteral("%1: valueChanged(%2)").arg(name).arg(value));
    });
    QObject::connect(slider, &CMwQSlider::SignalDoubleClick, log,
        [log, name]() { log->write(QStringLiteral("%1: SignalDoubleClick()").arg(name)); });
    return slider;
}

CMwQRangeSlider *makeRangeSlider(Qt::Orientation orientation, GalleryLog *log, const QString &name)
{
    auto *slider = new CMwQRangeSlider(orientation);
    slider->setRange(0, 100);
    slider->setValues(25, 70);
    slider->setTickPosition(
        orientation == Qt::Horizontal ? QSlider::NoTicks : QSlider::TicksBothSides);
    slider->setTickInterval(5);
    slider->setTickItemList(percentTicks());
    slider->setHandleToolTip(QStringLiteral("%1%"));
    QObject::connect(slider, &CMwQRangeSlider::valuesChanged, log, [log, name](int min, int max) {
        log->write(QStringLiteral("%1: valuesChanged(%2, %3)").arg(name).arg(min).arg(max));
    });
    QObject::connect(
        slider, &CMwQRangeSlider::positionsChanged, log, [log, name](int min, int max) {
            log->write(QStringLiteral("%1: positionsChanged(%2, %3)").arg(name).arg(min).arg(max));
        });
    QObject::connect(slider, &CMwQSlider::SignalDoubleClick, log,
        [log, name]() { log->write(QStringLiteral("%1: SignalDoubleClick()").arg(name)); });
    return slider;
}

QWidget *createSlidersPage(GalleryLog *log)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);

    // CMwQSlider, both orientations.
    auto *tickBox
        = new QGroupBox(QStringLiteral("CMwQSlider: regular marks every 10, extra labelled marks"));
    auto *tickLayout = new QGridLayout(tickBox);
    tickLayout->addWidget(
        caption(QStringLiteral(
            "Horizontal: labels above (\"body\", \"hot\") and below; the end labels "
            "are shifted inwards, not clipped. Double-click to log SignalDoubleClick().")),
        0, 0);
    // Named for assistive technology: otherwise both sliders of a group
    // are announced by the group's title.
    auto *horizontal = makeSlider(Qt::Horizontal, log, QStringLiteral("slider"));
    horizontal->setAccessibleName(QStringLiteral("Temperature"));
    tickLayout->addWidget(horizontal, 1, 0);
    tickLayout->setRowStretch(2, 1);
    auto *vertical = makeSlider(Qt::Vertical, log, QStringLiteral("vertical slider"));
    vertical->setAccessibleName(QStringLiteral("Temperature, vertical"));
    vertical->setMinimumHeight(200);
    tickLayout->addWidget(vertical, 0, 1, 3, 1);
    tickLayout->addWidget(
        caption(QStringLiteral("Vertical: the same items draw their marks, no labels.")), 0, 2, 3,
        1, Qt::AlignTop);
    tickLayout->setColumnStretch(0, 3);
    tickLayout->setColumnStretch(2, 1);
    layout->addWidget(tickBox);

    // CMwQRangeSlider, both orientations.
    auto *rangeBox
        = new QGroupBox(QStringLiteral("CMwQRangeSlider: two handles, a tool tip \"%1%\" over the "
                                       "slider's own handle position"));
    auto *rangeLayout = new QGridLayout(rangeBox);
    auto *horizontalRange = makeRangeSlider(Qt::Horizontal, log, QStringLiteral("range"));
    horizontalRange->setAccessibleName(QStringLiteral("Percent range"));
    rangeLayout->addWidget(
        caption(
            QStringLiteral("Drag a handle, or the groove between the handles to move both. With "
                           "symmetric moves, one handle moves the other the opposite way.")),
        0, 0);
    rangeLayout->addWidget(horizontalRange, 1, 0);
    auto *symmetric = new QCheckBox(QStringLiteral("Symmetric moves"));
    QObject::connect(
        symmetric, &QCheckBox::toggled, horizontalRange, &CMwQRangeSlider::setSymmetricMoves);
    rangeLayout->addWidget(symmetric, 2, 0);
    auto *tracking
        = new QCheckBox(QStringLiteral("Tracking (off: a drag only moves the positions)"));
    tracking->setChecked(true);
    QObject::connect(tracking, &QCheckBox::toggled, horizontalRange, &QAbstractSlider::setTracking);
    rangeLayout->addWidget(tracking, 3, 0);
    rangeLayout->setRowStretch(4, 1);
    auto *verticalRange = makeRangeSlider(Qt::Vertical, log, QStringLiteral("vertical range"));
    verticalRange->setAccessibleName(QStringLiteral("Percent range, vertical"));
    verticalRange->setMinimumHeight(200);
    rangeLayout->addWidget(verticalRange, 0, 1, 5, 1);
    rangeLayout->addWidget(
        caption(QStringLiteral(
            "Vertical, regular marks every 5 on both sides. Each handle redraws the "
            "groove across its full length here, so the upper one lies over the lower "
            "one until the lower one is pressed.")),
        0, 2, 5, 1, Qt::AlignTop);
    rangeLayout->setColumnStretch(0, 3);
    rangeLayout->setColumnStretch(2, 1);
    layout->addWidget(rangeBox);
    layout->addStretch();
    return page;
}

} // namespace

VEL_GALLERY_PAGE(10, "Sliders", createSlidersPage);
