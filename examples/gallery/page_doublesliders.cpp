#include "gallerypage.h"

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQValueProxy.h>

#include <QtWidgets/QGridLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <cmath>

namespace {

// Frequencies on a decade scale: the sliders move evenly in log10(Hz).
class FrequencyProxy : public CMwQValueProxy
{
    Q_OBJECT

public:
    using CMwQValueProxy::CMwQValueProxy;
    double proxyValueFromValue(double value) const override { return std::log10(value); }
    double valueFromProxyValue(double proxyValue) const override
    {
        return std::pow(10.0, proxyValue);
    }
};

QString hertz(double value)
{
    return value >= 1000.0 ? QStringLiteral("%1 kHz").arg(value / 1000.0, 0, 'f', 2)
                           : QStringLiteral("%1 Hz").arg(value, 0, 'f', 1);
}

QString number(double value) { return QString::number(value, 'g', 6); }

CMwQDoubleSlider::TMwTickItemList decadeTicks()
{
    // One word each: the slider wraps a label at its spaces.
    return {{1.0, QSlider::TicksBelow, QStringLiteral("1 Hz")},
        {10.0, QSlider::TicksBelow, QStringLiteral("10 Hz")},
        {100.0, QSlider::TicksBelow, QStringLiteral("100 Hz")},
        {1000.0, QSlider::TicksBelow, QStringLiteral("1 kHz")},
        {10000.0, QSlider::TicksBelow, QStringLiteral("10 kHz")},
        {20000.0, QSlider::TicksAbove, QStringLiteral("20 kHz")}};
}

QWidget *createDoubleSlidersPage(GalleryLog *log)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *proxy = new FrequencyProxy(page);

    // Linear sliders.
    auto *linearBox = new QGroupBox(QStringLiteral("Linear scale from 0 to 1 in steps of 0.05 "));
    auto *linear = new QGridLayout(linearBox);

    auto *single = new CMwQDoubleSlider(Qt::Horizontal);
    single->setAccessibleName(QStringLiteral("Linear value"));
    single->setRange(0.0, 1.0);
    single->setSingleStep(0.05);
    single->setPageStep(0.25);
    single->setTickPosition(QSlider::TicksAbove);
    single->setTickInterval(0.1);
    single->setTickItemList({{0.0, QSlider::TicksBelow, QStringLiteral("off")},
        {0.333, QSlider::TicksBelow, QStringLiteral("third")},
        {0.5, QSlider::TicksBelow, QStringLiteral("half")},
        {0.667, QSlider::TicksAbove, QStringLiteral("high")},
        {1.0, QSlider::TicksBelow, QStringLiteral("full")}});
    single->setHandleToolTip(QStringLiteral("value %1"));
    single->setValue(0.333);
    auto *singleLabel = new QLabel;
    const auto showSingle = [singleLabel](double v) {
        singleLabel->setText(QStringLiteral("value() = %1").arg(number(v)));
    };
    showSingle(single->value());
    QObject::connect(single, &CMwQDoubleSlider::valueChanged, singleLabel, showSingle);
    QObject::connect(single, &CMwQDoubleSlider::valueChanged, log, [log](double v) {
        log->write(QStringLiteral("double slider: valueChanged(%1)").arg(number(v)));
    });
    QObject::connect(single, &CMwQDoubleSlider::sliderMoved, log, [log](double p) {
        log->write(QStringLiteral("double slider: sliderMoved(%1)").arg(number(p)));
    });
    linear->addWidget(new QLabel(QStringLiteral("CMwQDoubleSlider, labelled ticks")), 0, 0);
    linear->addWidget(single, 0, 1);
    linear->addWidget(singleLabel, 0, 2);

    auto *range = new CMwQDoubleRangeSlider(Qt::Horizontal);
    range->setAccessibleName(QStringLiteral("Linear range"));
    range->setRange(0.0, 1.0);
    range->setSingleStep(0.05);
    range->setTickPosition(QSlider::TicksBelow);
    range->setTickInterval(0.25);
    range->setValues(0.2, 0.725);
    range->setHandleToolTip(QStringLiteral("%1"));
    auto *rangeLabel = new QLabel;
    const auto showRange = [rangeLabel](double lo, double hi) {
        rangeLabel->setText(QStringLiteral("values = [%1, %2]").arg(number(lo), number(hi)));
    };
    showRange(range->minimumValue(), range->maximumValue());
    QObject::connect(range, &CMwQDoubleRangeSlider::valuesChanged, rangeLabel, showRange);
    QObject::connect(
        range, &CMwQDoubleRangeSlider::valuesChanged, log, [log](double lo, double hi) {
            log->write(QStringLiteral("double range slider: valuesChanged(%1, %2)")
                           .arg(number(lo), number(hi)));
        });
    QObject::connect(
        range, &CMwQDoubleRangeSlider::positionsChanged, log, [log](double lo, double hi) {
            log->write(QStringLiteral("double range slider: positionsChanged(%1, %2)")
                           .arg(number(lo), number(hi)));
        });
    linear->addWidget(new QLabel(QStringLiteral("CMwQDoubleRangeSlider")), 1, 0);
    linear->addWidget(range, 1, 1);
    linear->addWidget(rangeLabel, 1, 2);
    linear->setColumnStretch(1, 1);
    layout->addWidget(linearBox);

    // Logarithmic sliders: the range is set in Hz first, then the proxy, so
    // the public range stays 1 Hz .. 20 kHz while the slider runs over decades.
    auto *logBox = new QGroupBox(
        QStringLiteral("Logarithmic value proxy from 1 Hz to 20 kHz in steps of 0.01 decade "));
    auto *logLayout = new QGridLayout(logBox);

    auto *frequency = new CMwQDoubleSlider(Qt::Horizontal);
    frequency->setAccessibleName(QStringLiteral("Frequency"));
    frequency->setRange(1.0, 20000.0);
    frequency->setValueProxy(proxy);
    frequency->setSingleStep(0.01);
    frequency->setTickItemList(decadeTicks());
    frequency->setHandleToolTip(QStringLiteral("%1 Hz"));
    frequency->setValue(440.0);
    auto *frequencyLabel = new QLabel;
    const auto showFrequency = [frequencyLabel](double v) { frequencyLabel->setText(hertz(v)); };
    showFrequency(frequency->value());
    QObject::connect(frequency, &CMwQDoubleSlider::valueChanged, frequencyLabel, showFrequency);
    QObject::connect(frequency, &CMwQDoubleSlider::valueChanged, log, [log](double v) {
        log->write(QStringLiteral("frequency: valueChanged(%1)").arg(hertz(v)));
    });
    QObject::connect(frequency, &CMwQDoubleSlider::sliderMoved, log, [log](double p) {
        log->write(
            QStringLiteral("frequency: sliderMoved(%1 decades, slider units)").arg(number(p)));
    });
    logLayout->addWidget(new QLabel(QStringLiteral("CMwQDoubleSlider")), 0, 0);
    logLayout->addWidget(frequency, 0, 1);
    logLayout->addWidget(frequencyLabel, 0, 2);

    auto *band = new CMwQDoubleRangeSlider(Qt::Horizontal);
    band->setAccessibleName(QStringLiteral("Band"));
    band->setRange(1.0, 20000.0);
    band->setValueProxy(proxy);
    band->setSingleStep(0.01);
    band->setTickItemList(decadeTicks());
    band->setValues(300.0, 3400.0);
    band->setHandleToolTip(QStringLiteral("%1 Hz"));
    auto *bandLabel = new QLabel;
    const auto showBand = [bandLabel](double lo, double hi) {
        bandLabel->setText(QStringLiteral("%1 .. %2").arg(hertz(lo), hertz(hi)));
    };
    showBand(band->minimumValue(), band->maximumValue());
    QObject::connect(band, &CMwQDoubleRangeSlider::valuesChanged, bandLabel, showBand);
    QObject::connect(band, &CMwQDoubleRangeSlider::valuesChanged, log, [log](double lo, double hi) {
        log->write(QStringLiteral("band: valuesChanged(%1, %2)").arg(hertz(lo), hertz(hi)));
    });
    QObject::connect(
        band, &CMwQDoubleRangeSlider::positionsChanged, log, [log](double lo, double hi) {
            log->write(QStringLiteral("band: positionsChanged(%1, %2)").arg(hertz(lo), hertz(hi)));
        });
    logLayout->addWidget(new QLabel(QStringLiteral("CMwQDoubleRangeSlider")), 1, 0);
    logLayout->addWidget(band, 1, 1);
    logLayout->addWidget(bandLabel, 1, 2);
    logLayout->setColumnStretch(1, 1);
    layout->addWidget(logBox);
    layout->addStretch();
    return page;
}

} // namespace

VEL_GALLERY_PAGE(20, "Floating-point sliders", createDoubleSlidersPage);

#include "page_doublesliders.moc"
