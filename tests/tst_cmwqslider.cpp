#include "vel_test_main.h"

#include <vel_qt_widgets/CMwQSlider.h>

class tst_CMwQSlider : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tickItemListProperty();
};

void tst_CMwQSlider::tickItemListProperty()
{
    CMwQSlider slider(Qt::Horizontal);
    const TMwTickItemList items {{5, QSlider::TicksAbove, QStringLiteral("five")},
                                 {7, QSlider::NoTicks, QString()}};
    QVERIFY(slider.setProperty("tickItemList", QVariant::fromValue(items)));
    QCOMPARE(slider.tickItemList(), items);
    QCOMPARE(slider.property("tickItemList").value<TMwTickItemList>(), items);
}

VEL_TEST_MAIN(tst_CMwQSlider)
#include "tst_cmwqslider.moc"
