#include "vel_test_main.h"

#include "slider_test_support.h"

#include "testvalueproxies.h"

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTranslator>
#include <QtGui/QAccessible>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyleOptionSlider>

#include <cmath>

// Events reach an update handler only while the platform's accessibility is
// active, which nothing does on the offscreen platform. Qt's own tests switch
// it on through the private platform API; its headers are not installed, so
// the two functions used are declared here (both exported by QtGui).
QT_BEGIN_NAMESPACE
class QPlatformAccessibility
{
public:
    void setActive(bool active);
};
class QPlatformIntegration
{
public:
    QPlatformAccessibility *accessibility() const;
};
class QGuiApplicationPrivate
{
public:
    static QPlatformIntegration *platform_integration;
};
QT_END_NAMESPACE

namespace {

// Every accessibility event, as text: "<type> <class> child <n> [value <v>]".
QStringList *recordedEvents = nullptr;

void recordEvent(QAccessibleEvent *event)
{
    if (!recordedEvents || !event->object())
        return;
    QString text;
    switch (event->type()) {
    case QAccessible::Focus:
        text = QStringLiteral("Focus");
        break;
    case QAccessible::ValueChanged:
        text = QStringLiteral("ValueChanged");
        break;
    default:
        return;
    }
    text += QLatin1Char(' ') + QLatin1String(event->object()->metaObject()->className());
    text += QStringLiteral(" child %1").arg(event->child());
    if (event->type() == QAccessible::ValueChanged)
        text += QStringLiteral(" value ")
            + static_cast<QAccessibleValueChangeEvent *>(event)->value().toString();
    recordedEvents->append(text);
}

class TestRangeSlider : public CMwQRangeSlider
{
    Q_OBJECT

public:
    using CMwQRangeSlider::CMwQRangeSlider;

    QRect handleRect(int position) const
    {
        QStyleOptionSlider opt;
        initStyleOption(&opt);
        opt.sliderPosition = position;
        opt.sliderValue = position;
        return style()->subControlRect(QStyle::CC_Slider, &opt, QStyle::SC_SliderHandle, this);
    }
};

QAccessibleValueInterface *valueOf(QAccessibleInterface *iface)
{
    return iface ? iface->valueInterface() : nullptr;
}

} // namespace

class tst_SliderAccessible : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void rangeSliderHandles_data();
    void rangeSliderHandles();
    void handleNames();
    void handleNamesTranslated();
    void handleBoundsWithSymmetricMoves();
    void setHandleValue_data();
    void setHandleValue();
    void handleGeometry_data();
    void handleGeometry();
    void rangeValueEvents();
    void handleFocusEvents_data();
    void handleFocusEvents();
    void doubleRangeSliderHandles_data();
    void doubleRangeSliderHandles();
    void doubleRangeSliderThroughProxy();
    void doubleRangeSliderEvents();
    void doubleRangeSliderFocusEvents();
    void doubleSliderValue_data();
    void doubleSliderValue();
    void doubleSliderThroughProxy();
    void doubleSliderInnerSliderIsNoElement();

private:
    QStringList m_events;
    QAccessible::UpdateHandler m_previousHandler = nullptr;
};

void tst_SliderAccessible::initTestCase()
{
    // The offscreen platform keeps the base class's accessibility, which the
    // non-virtual call below reaches.
    QCOMPARE(QGuiApplication::platformName(), QStringLiteral("offscreen"));
    QPlatformAccessibility *platform
        = QGuiApplicationPrivate::platform_integration->accessibility();
    QVERIFY(platform);
    platform->setActive(true);
    QVERIFY(QAccessible::isActive());
}

void tst_SliderAccessible::init()
{
    m_events.clear();
    recordedEvents = &m_events;
    m_previousHandler = QAccessible::installUpdateHandler(recordEvent);
}

void tst_SliderAccessible::cleanup()
{
    QAccessible::installUpdateHandler(m_previousHandler);
    recordedEvents = nullptr;
}

void tst_SliderAccessible::rangeSliderHandles_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::newRow("horizontal") << Qt::Horizontal;
    QTest::newRow("vertical") << Qt::Vertical;
}

void tst_SliderAccessible::rangeSliderHandles()
{
    QFETCH(Qt::Orientation, orientation);
    CMwQRangeSlider slider(orientation);
    slider.setRange(0, 100);
    slider.setSingleStep(5);
    slider.setValues(20, 70);
    slider.setValue(40); // the base value, which nobody sees

    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&slider);
    QVERIFY(iface);
    QCOMPARE(iface->role(), QAccessible::Grouping);
    QCOMPARE(iface->childCount(), 2);
    QVERIFY(!iface->valueInterface());

    QAccessibleInterface *lower = iface->child(0);
    QAccessibleInterface *upper = iface->child(1);
    QVERIFY(lower && upper && lower != upper);
    QVERIFY(!iface->child(2));
    QVERIFY(!iface->child(-1));
    QCOMPARE(iface->child(0), lower); // the same element every time
    QCOMPARE(lower->role(), QAccessible::Slider);
    QCOMPARE(upper->role(), QAccessible::Slider);
    QCOMPARE(lower->parent(), iface);
    QCOMPARE(iface->indexOfChild(lower), 0);
    QCOMPARE(iface->indexOfChild(upper), 1);
    QCOMPARE(lower->childCount(), 0);

    QAccessibleValueInterface *low = valueOf(lower);
    QAccessibleValueInterface *up = valueOf(upper);
    QVERIFY(low && up);
    QCOMPARE(low->currentValue().toInt(), 20);
    QCOMPARE(low->minimumValue().toInt(), 0);
    QCOMPARE(low->maximumValue().toInt(), 70);
    QCOMPARE(low->minimumStepSize().toInt(), 5);
    QCOMPARE(up->currentValue().toInt(), 70);
    QCOMPARE(up->minimumValue().toInt(), 20);
    QCOMPARE(up->maximumValue().toInt(), 100);
    QCOMPARE(up->minimumStepSize().toInt(), 5);
    QCOMPARE(lower->text(QAccessible::Value), QStringLiteral("20"));

    slider.setValues(35, 36);
    QCOMPARE(low->currentValue().toInt(), 35);
    QCOMPARE(low->maximumValue().toInt(), 36);
    QCOMPARE(up->minimumValue().toInt(), 35);
}

void tst_SliderAccessible::handleNames()
{
    QWidget window;
    auto *layout = new QHBoxLayout(&window);
    auto *label = new QLabel(QStringLiteral("&Price"), &window);
    auto *slider = new CMwQRangeSlider(Qt::Horizontal, &window);
    layout->addWidget(label);
    layout->addWidget(slider);

    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(slider);
    QCOMPARE(iface->child(0)->text(QAccessible::Name), QStringLiteral("minimum"));
    QCOMPARE(iface->child(1)->text(QAccessible::Name), QStringLiteral("maximum"));

    label->setBuddy(slider);
    QCOMPARE(iface->text(QAccessible::Name), QStringLiteral("Price"));
    QCOMPARE(iface->child(0)->text(QAccessible::Name), QStringLiteral("Price minimum"));
    QCOMPARE(iface->child(1)->text(QAccessible::Name), QStringLiteral("Price maximum"));

    slider->setAccessibleName(QStringLiteral("Frequency band"));
    QCOMPARE(iface->child(0)->text(QAccessible::Name), QStringLiteral("Frequency band minimum"));
    QCOMPARE(iface->child(1)->text(QAccessible::Name), QStringLiteral("Frequency band maximum"));
}

void tst_SliderAccessible::handleNamesTranslated()
{
    QTranslator german;
    QVERIFY(german.load(QStringLiteral(":/vel_qt_widgets/translations/vel_qt_widgets_de.qm")));
    QCoreApplication::installTranslator(&german);
    CMwQRangeSlider slider(Qt::Horizontal);
    slider.setAccessibleName(QStringLiteral("Preis"));
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&slider);
    const QString lower = iface->child(0)->text(QAccessible::Name);
    const QString upper = iface->child(1)->text(QAccessible::Name);
    QCoreApplication::removeTranslator(&german);
    QCOMPARE(lower, QStringLiteral("Preis Minimum"));
    QCOMPARE(upper, QStringLiteral("Preis Maximum"));
}

void tst_SliderAccessible::handleBoundsWithSymmetricMoves()
{
    CMwQRangeSlider slider(Qt::Horizontal);
    slider.setRange(0, 100);
    slider.setValues(30, 71);
    slider.setSymmetricMoves(true);
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&slider);
    // Both handles move; they meet at most halfway.
    QCOMPARE(valueOf(iface->child(0))->minimumValue().toInt(), 0);
    QCOMPARE(valueOf(iface->child(0))->maximumValue().toInt(), 50);
    QCOMPARE(valueOf(iface->child(1))->minimumValue().toInt(), 51);
    QCOMPARE(valueOf(iface->child(1))->maximumValue().toInt(), 100);
}

void tst_SliderAccessible::setHandleValue_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("symmetric");
    QTest::addColumn<int>("child");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("expectedLower");
    QTest::addColumn<int>("expectedUpper");
    QTest::addColumn<QStringList>("expectedSignals");

    for (Qt::Orientation o : {Qt::Horizontal, Qt::Vertical}) {
        const char *name = orientationName(o);
        // From 30..60 on 0..100.
        QTest::addRow("%s lower to 40", name)
            << o << false << 0 << QVariant(40) << 40 << 60
            << QStringList({"sliderPressed", "valuesChanged(40,60)", "minimumValueChanged(40)",
                   "sliderReleased"});
        QTest::addRow("%s lower stops at the upper", name)
            << o << false << 0 << QVariant(90) << 60 << 60
            << QStringList({"sliderPressed", "valuesChanged(60,60)", "minimumValueChanged(60)",
                   "sliderReleased"});
        QTest::addRow("%s upper to 12.6, rounded", name)
            << o << false << 1 << QVariant(12.6) << 30 << 30
            << QStringList({"sliderPressed", "valuesChanged(30,30)", "maximumValueChanged(30)",
                   "sliderReleased"});
        QTest::addRow("%s upper to 99.6", name)
            << o << false << 1 << QVariant(99.6) << 30 << 100
            << QStringList({"sliderPressed", "valuesChanged(30,100)", "maximumValueChanged(100)",
                   "sliderReleased"});
        QTest::addRow("%s symmetric lower to 20", name)
            << o << true << 0 << QVariant(20) << 20 << 70
            << QStringList({"sliderPressed", "valuesChanged(20,70)", "minimumValueChanged(20)",
                   "maximumValueChanged(70)", "sliderReleased"});
        QTest::addRow("%s same value", name)
            << o << false << 0 << QVariant(30) << 30 << 60 << QStringList();
        QTest::addRow("%s not a number", name)
            << o << false << 0 << QVariant(QStringLiteral("x")) << 30 << 60 << QStringList();
    }
}

// Through the value interface a handle moves as the keyboard moves it.
void tst_SliderAccessible::setHandleValue()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, symmetric);
    QFETCH(int, child);
    QFETCH(QVariant, value);
    QFETCH(int, expectedLower);
    QFETCH(int, expectedUpper);
    QFETCH(QStringList, expectedSignals);

    CMwQRangeSlider slider(orientation);
    slider.setRange(0, 100);
    slider.setValues(30, 60);
    slider.setSymmetricMoves(symmetric);
    QStringList log;
    connect(&slider, &QAbstractSlider::sliderPressed,
        [&log]() { log << QStringLiteral("sliderPressed"); });
    connect(&slider, &QAbstractSlider::sliderReleased,
        [&log]() { log << QStringLiteral("sliderReleased"); });
    connect(&slider, &CMwQRangeSlider::valuesChanged,
        [&log](int a, int b) { log << QStringLiteral("valuesChanged(%1,%2)").arg(a).arg(b); });
    connect(&slider, &CMwQRangeSlider::minimumValueChanged,
        [&log](int v) { log << QStringLiteral("minimumValueChanged(%1)").arg(v); });
    connect(&slider, &CMwQRangeSlider::maximumValueChanged,
        [&log](int v) { log << QStringLiteral("maximumValueChanged(%1)").arg(v); });

    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&slider);
    valueOf(iface->child(child))->setCurrentValue(value);
    QCOMPARE(slider.minimumValue(), expectedLower);
    QCOMPARE(slider.maximumValue(), expectedUpper);
    QCOMPARE(log, expectedSignals);
}

void tst_SliderAccessible::handleGeometry_data() { rangeSliderHandles_data(); }

void tst_SliderAccessible::handleGeometry()
{
    QFETCH(Qt::Orientation, orientation);
    TestRangeSlider slider(orientation);
    slider.setRange(0, 100);
    slider.setValues(10, 90);
    QVERIFY(showAt(slider, orientation == Qt::Horizontal ? 215 : 40,
        orientation == Qt::Horizontal ? 40 : 215));

    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&slider);
    const QPoint origin = slider.mapToGlobal(QPoint(0, 0));
    const QRect lowerRect = slider.handleRect(10).translated(origin);
    const QRect upperRect = slider.handleRect(90).translated(origin);
    QVERIFY(lowerRect != upperRect);
    QCOMPARE(iface->child(0)->rect(), lowerRect);
    QCOMPARE(iface->child(1)->rect(), upperRect);
    QCOMPARE(iface->childAt(lowerRect.center().x(), lowerRect.center().y()), iface->child(0));
    QCOMPARE(iface->childAt(upperRect.center().x(), upperRect.center().y()), iface->child(1));
    const QPoint between = (lowerRect.center() + upperRect.center()) / 2;
    QVERIFY(!iface->childAt(between.x(), between.y()));

    QVERIFY(!iface->child(0)->state().invisible);
    slider.hide();
    QVERIFY(iface->child(0)->state().invisible);
}

void tst_SliderAccessible::rangeValueEvents()
{
    CMwQRangeSlider slider(Qt::Horizontal);
    slider.setRange(0, 100);
    m_events.clear();

    slider.setValues(10, 20);
    QCOMPARE(m_events,
        QStringList({"ValueChanged CMwQRangeSlider child 0 value 10",
            "ValueChanged CMwQRangeSlider child 1 value 20"}));
    m_events.clear();
    slider.setMaximumValue(25);
    QCOMPARE(m_events, QStringList({"ValueChanged CMwQRangeSlider child 1 value 25"}));
    m_events.clear();
    slider.setMaximumValue(25);
    QCOMPARE(m_events, QStringList());

    QTest::keyClick(&slider, Qt::Key_Right);
    QCOMPARE(m_events, QStringList({"ValueChanged CMwQRangeSlider child 0 value 11"}));
    m_events.clear();
    slider.setRange(15, 22);
    // (QAbstractSlider reports its own clamped base value as well.)
    QCOMPARE(m_events.filter(QRegularExpression(QStringLiteral("child [01]"))),
        QStringList({"ValueChanged CMwQRangeSlider child 0 value 15",
            "ValueChanged CMwQRangeSlider child 1 value 22"}));
}

void tst_SliderAccessible::handleFocusEvents_data() { rangeSliderHandles_data(); }

void tst_SliderAccessible::handleFocusEvents()
{
    QFETCH(Qt::Orientation, orientation);
    QWidget window;
    auto *layout = new QHBoxLayout(&window);
    auto *before = new QLineEdit(&window);
    auto *slider = new CMwQRangeSlider(orientation, &window);
    layout->addWidget(before);
    layout->addWidget(slider);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    before->setFocus();
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(slider);
    QVERIFY(!iface->focusChild());
    QVERIFY(!iface->child(0)->state().focused);

    m_events.clear();
    QTest::keyClick(before, Qt::Key_Tab);
    QVERIFY(slider->hasFocus());
    // The handle's focus comes after the one Qt sends for the widget.
    QTRY_COMPARE(
        m_events.value(m_events.size() - 1), QStringLiteral("Focus CMwQRangeSlider child 0"));
    QCOMPARE(iface->focusChild(), iface->child(0));
    QVERIFY(iface->child(0)->state().focused);
    QVERIFY(iface->child(0)->state().focusable);
    QVERIFY(!iface->child(1)->state().focused);

    m_events.clear();
    QTest::keyClick(slider, Qt::Key_Tab);
    QCOMPARE(m_events, QStringList({"Focus CMwQRangeSlider child 1"}));
    QCOMPARE(iface->focusChild(), iface->child(1));
    QVERIFY(!iface->child(0)->state().focused);
    QVERIFY(iface->child(1)->state().focused);

    // Entering backwards lands on the upper handle.
    QTest::keyClick(slider, Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(slider, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(before->hasFocus());
    m_events.clear();
    QTest::keyClick(before, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(slider->hasFocus());
    QTRY_COMPARE(
        m_events.value(m_events.size() - 1), QStringLiteral("Focus CMwQRangeSlider child 1"));

    // No handle focus events without the widget's focus.
    before->setFocus();
    QCoreApplication::processEvents();
    m_events.clear();
    slider->setValues(slider->minimumValue(), slider->maximumValue());
    QTest::keyClick(slider, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(!m_events.join(QLatin1Char('\n')).contains(QStringLiteral("Focus CMwQRangeSlider")));
}

void tst_SliderAccessible::doubleRangeSliderHandles_data() { rangeSliderHandles_data(); }

void tst_SliderAccessible::doubleRangeSliderHandles()
{
    QFETCH(Qt::Orientation, orientation);
    QWidget window;
    auto *layout = new QHBoxLayout(&window);
    auto *label = new QLabel(QStringLiteral("Share"), &window);
    auto *slider = new CMwQDoubleRangeSlider(orientation, &window);
    label->setBuddy(slider);
    layout->addWidget(label);
    layout->addWidget(slider);
    slider->setRange(0.0, 1.0);
    slider->setSingleStep(0.25);
    slider->setValues(0.3, 0.7);

    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(slider);
    QCOMPARE(iface->role(), QAccessible::Grouping);
    QCOMPARE(iface->childCount(), 2);
    QAccessibleInterface *lower = iface->child(0);
    QAccessibleInterface *upper = iface->child(1);
    QCOMPARE(lower->text(QAccessible::Name), QStringLiteral("Share minimum"));
    QCOMPARE(upper->text(QAccessible::Name), QStringLiteral("Share maximum"));
    QCOMPARE(valueOf(lower)->currentValue().toDouble(), 0.3);
    QCOMPARE(valueOf(lower)->minimumValue().toDouble(), 0.0);
    QCOMPARE(valueOf(lower)->maximumValue().toDouble(), 0.7);
    QCOMPARE(valueOf(lower)->minimumStepSize().toDouble(), 0.25);
    QCOMPARE(valueOf(upper)->currentValue().toDouble(), 0.7);
    QCOMPARE(valueOf(upper)->minimumValue().toDouble(), 0.3);
    QCOMPARE(valueOf(upper)->maximumValue().toDouble(), 1.0);

    // The inner integer slider is no element of its own: asked directly, it
    // answers as the outer widget and hands out the same handles.
    QAccessibleInterface *inner
        = QAccessible::queryAccessibleInterface(slider->findChild<CMwQRangeSlider *>());
    QVERIFY(inner);
    QCOMPARE(inner->role(), QAccessible::Grouping);
    QCOMPARE(inner->text(QAccessible::Name), QStringLiteral("Share"));
    QCOMPARE(inner->childCount(), 2);
    QCOMPARE(inner->child(0), lower);
    QCOMPARE(inner->child(1), upper);
    QCOMPARE(inner->parent(), iface->parent());
    QCOMPARE(inner->rect(), iface->rect());
    QAccessibleInterface *windowIface = QAccessible::queryAccessibleInterface(&window);
    QCOMPARE(windowIface->indexOfChild(iface), 1);

    // Set through the interface: onto a step, as the keyboard moves it.
    valueOf(lower)->setCurrentValue(0.5);
    QCOMPARE(slider->minimumValue(), 0.5);
    valueOf(lower)->setCurrentValue(0.9);
    QCOMPARE(slider->minimumValue(), 0.7);
    QCOMPARE(slider->maximumValue(), 0.7);
    valueOf(upper)->setCurrentValue(1.0);
    QCOMPARE(slider->maximumValue(), 1.0);
}

void tst_SliderAccessible::doubleRangeSliderThroughProxy()
{
    // 20 Hz to 20 kHz in decades, a tenth of a decade per step.
    LogProxy proxy;
    CMwQDoubleRangeSlider slider(Qt::Horizontal);
    slider.setValueProxy(&proxy);
    slider.setSingleStep(0.1);
    slider.setRange(20.0, 20000.0);
    slider.setValues(100.0, 1000.0);

    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&slider);
    QAccessibleValueInterface *lower = valueOf(iface->child(0));
    QAccessibleValueInterface *upper = valueOf(iface->child(1));
    QCOMPARE(lower->currentValue().toDouble(), 100.0);
    QCOMPARE(lower->minimumValue().toDouble(), 20.0);
    QCOMPARE(lower->maximumValue().toDouble(), 1000.0);
    QCOMPARE(upper->maximumValue().toDouble(), 20000.0);
    // One step up from 100 Hz is a tenth of a decade: 10^2.1 - 10^2.
    QVERIFY(std::abs(lower->minimumStepSize().toDouble() - (std::pow(10.0, 2.1) - 100.0)) < 1e-9);
    QVERIFY(std::abs(upper->minimumStepSize().toDouble() - (std::pow(10.0, 3.1) - 1000.0)) < 1e-9);

    upper->setCurrentValue(10000.0);
    QVERIFY(std::abs(slider.maximumValue() - 10000.0) < 1e-6);
}

void tst_SliderAccessible::doubleRangeSliderEvents()
{
    CMwQDoubleRangeSlider slider(Qt::Horizontal);
    slider.setRange(0.0, 1.0);
    slider.setSingleStep(0.25);
    m_events.clear();

    // Once per handle, from the outer widget, in its double values.
    slider.setValues(0.3, 0.7);
    QCOMPARE(m_events,
        QStringList({"ValueChanged CMwQDoubleRangeSlider child 0 value 0.3",
            "ValueChanged CMwQDoubleRangeSlider child 1 value 0.7"}));
    m_events.clear();
    // Within the same step the inner slider does not move; still reported.
    slider.setMinimumValue(0.2);
    QCOMPARE(m_events, QStringList({"ValueChanged CMwQDoubleRangeSlider child 0 value 0.2"}));
}

void tst_SliderAccessible::doubleRangeSliderFocusEvents()
{
    QWidget window;
    auto *layout = new QHBoxLayout(&window);
    auto *before = new QLineEdit(&window);
    auto *slider = new CMwQDoubleRangeSlider(Qt::Horizontal, &window);
    layout->addWidget(before);
    layout->addWidget(slider);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    before->setFocus();
    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(slider);

    // The handles' focus is the outer widget's, whose children they are.
    m_events.clear();
    QTest::keyClick(before, Qt::Key_Tab);
    QVERIFY(slider->hasFocus());
    QTRY_COMPARE(
        m_events.value(m_events.size() - 1), QStringLiteral("Focus CMwQDoubleRangeSlider child 0"));
    QCOMPARE(iface->focusChild(), iface->child(0));
    QVERIFY(iface->child(0)->state().focused);
    m_events.clear();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(m_events, QStringList({"Focus CMwQDoubleRangeSlider child 1"}));
    QVERIFY(iface->child(1)->state().focused);
}

void tst_SliderAccessible::doubleSliderValue_data() { rangeSliderHandles_data(); }

void tst_SliderAccessible::doubleSliderValue()
{
    QFETCH(Qt::Orientation, orientation);
    CMwQDoubleSlider slider(orientation);
    slider.setRange(0.0, 1.0);
    slider.setSingleStep(0.05);
    slider.setValue(0.333);
    slider.setAccessibleName(QStringLiteral("Opacity"));
    // The inner slider stands on 7 of 0..20.
    QCOMPARE(slider.slider()->value(), 7);

    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(&slider);
    QCOMPARE(iface->role(), QAccessible::Slider);
    QCOMPARE(iface->text(QAccessible::Name), QStringLiteral("Opacity"));
    QCOMPARE(iface->childCount(), 0);
    QAccessibleValueInterface *value = valueOf(iface);
    QVERIFY(value);
    QCOMPARE(value->currentValue().toDouble(), 0.333);
    QCOMPARE(value->minimumValue().toDouble(), 0.0);
    QCOMPARE(value->maximumValue().toDouble(), 1.0);
    QCOMPARE(value->minimumStepSize().toDouble(), 0.05);
    QCOMPARE(iface->text(QAccessible::Value),
        QLocale().toString(0.333, 'g', QLocale::FloatingPointShortest));

    value->setCurrentValue(0.5);
    QCOMPARE(slider.value(), 0.5);

    m_events.clear();
    slider.setValue(0.75);
    QCOMPARE(m_events.filter(QStringLiteral("CMwQDoubleSlider")),
        QStringList({"ValueChanged CMwQDoubleSlider child -1 value 0.75"}));
    m_events.clear();
    slider.setValue(0.76); // the same step
    QCOMPARE(m_events, QStringList({"ValueChanged CMwQDoubleSlider child -1 value 0.76"}));
}

void tst_SliderAccessible::doubleSliderThroughProxy()
{
    // 440 Hz on 20 Hz .. 20 kHz in hundredths of a decade: the inner slider
    // runs 130..430 and stands on 264.
    LogProxy proxy;
    CMwQDoubleSlider slider(Qt::Horizontal);
    slider.setValueProxy(&proxy);
    slider.setSingleStep(0.01);
    slider.setRange(20.0, 20000.0);
    slider.setValue(440.0);
    QCOMPARE(slider.slider()->value(), 264);

    QAccessibleValueInterface *value = valueOf(QAccessible::queryAccessibleInterface(&slider));
    QVERIFY(std::abs(value->currentValue().toDouble() - 440.0) < 1e-9);
    QVERIFY(std::abs(value->minimumValue().toDouble() - 20.0) < 1e-9);
    QVERIFY(std::abs(value->maximumValue().toDouble() - 20000.0) < 1e-6);
    const double step = std::pow(10.0, std::log10(440.0) + 0.01) - 440.0;
    QVERIFY(std::abs(value->minimumStepSize().toDouble() - step) < 1e-9);
}

void tst_SliderAccessible::doubleSliderInnerSliderIsNoElement()
{
    QWidget window;
    auto *layout = new QHBoxLayout(&window);
    auto *before = new QLineEdit(&window);
    auto *slider = new CMwQDoubleSlider(Qt::Horizontal, &window);
    layout->addWidget(before);
    layout->addWidget(slider);
    slider->setRange(0.0, 1.0);
    slider->setSingleStep(0.25);
    slider->setValue(0.5);
    slider->setAccessibleName(QStringLiteral("Mix"));

    QAccessibleInterface *iface = QAccessible::queryAccessibleInterface(slider);
    QAccessibleInterface *inner = QAccessible::queryAccessibleInterface(slider->slider());
    QVERIFY(inner && inner != iface);
    QCOMPARE(iface->childCount(), 0);
    QCOMPARE(inner->role(), QAccessible::Slider);
    QCOMPARE(inner->text(QAccessible::Name), QStringLiteral("Mix"));
    QCOMPARE(inner->parent(), iface->parent());
    QCOMPARE(valueOf(inner)->currentValue().toDouble(), 0.5);
    QCOMPARE(valueOf(inner)->maximumValue().toDouble(), 1.0);

    // Focus reaches the widget the application placed.
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    slider->setFocus();
    QVERIFY(iface->state().focused);
    QVERIFY(inner->state().focused);
    QVERIFY(iface->state().focusable);
}

VEL_TEST_MAIN(tst_SliderAccessible)

#include "tst_slideraccessible.moc"
