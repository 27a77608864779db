#include "gallerypage.h"

#include <vel_qt_widgets/CMwQSlider.h>

#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace {

TMwTickItemList labelledTicks()
{
    return {{0, QSlider::TicksBelow, QStringLiteral("cold")},
            {37, QSlider::TicksBothSides, QStringLiteral("body")},
            {60, QSlider::TicksAbove, QStringLiteral("warm")},
            {100, QSlider::TicksBelow, QStringLiteral("boiling")}};
}

CMwQSlider *makeSlider(Qt::Orientation orientation, GalleryLog *log, const QString &name)
{
    auto *slider = new CMwQSlider(orientation);
    slider->setRange(0, 100);
    slider->setValue(37);
    slider->setTickPosition(QSlider::TicksBothSides);
    slider->setTickInterval(10);
    slider->setTickItemList(labelledTicks());
    QObject::connect(slider, &QSlider::valueChanged, log,
                     [log, name](int value) { log->write(QStringLiteral("%1: valueChanged(%2)").arg(name).arg(value)); });
    QObject::connect(slider, &CMwQSlider::SignalDoubleClick, log,
                     [log, name]() { log->write(QStringLiteral("%1: SignalDoubleClick()").arg(name)); });
    return slider;
}

QWidget *createSlidersPage(GalleryLog *log)
{
    auto *page = new QWidget;
    auto *layout = new QHBoxLayout(page);

    auto *tickBox = new QGroupBox(QStringLiteral("CMwQSlider: regular ticks every 10, labelled extra ticks"));
    auto *tickLayout = new QHBoxLayout(tickBox);
    auto *horizontal = new QVBoxLayout;
    horizontal->addWidget(new QLabel(QStringLiteral("Horizontal (labels above and below)")));
    horizontal->addWidget(makeSlider(Qt::Horizontal, log, QStringLiteral("horizontal")));
    horizontal->addStretch();
    tickLayout->addLayout(horizontal, 1);
    tickLayout->addWidget(makeSlider(Qt::Vertical, log, QStringLiteral("vertical")));
    layout->addWidget(tickBox);
    return page;
}

} // namespace

VEL_GALLERY_PAGE(10, "Sliders", createSlidersPage);
