#include "metatypelookup.h"
#include "vel_test_main.h"

#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>
#include <vel_qt_widgets/CMwQSlider.h>

#include <QtCore/QDataStream>
#include <QtCore/QMetaProperty>

#include <climits>
#include <cmath>
#include <limits>
#include <memory>

typedef CMwQSlider::TMwTickItemList IntItems;
typedef CMwQDoubleSlider::TMwTickItemList DoubleItems;

// The tick item lists as meta-types: the sliders' tickItemList property, in
// QVariant, through QDataStream, by every name they are registered under,
// and as either Qt version saves them.
class tst_TickItemMetaTypes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void propertyOfEverySlider_data();
    void propertyOfEverySlider();
    void registeredNames_data();
    void registeredNames();
    void variantHoldsTheLists();
    void streamRoundTrip();
    void streamLayout();
    void streamedVariantNamedByEitherQt_data();
    void streamedVariantNamedByEitherQt();
};

namespace {

const IntItems intItems {{INT_MIN, QSlider::TicksAbove, QStringLiteral("lowest")},
    {0, QSlider::NoTicks, QString()}, {7, QSlider::TicksBothSides, QStringLiteral("")},
    {INT_MAX, QSlider::TicksBelow, QStringLiteral("h\u00f6chste")}};

const DoubleItems doubleItems {{-0.0, QSlider::TicksBelow, QStringLiteral("zero")},
    {1e-300, QSlider::TicksAbove, QString()},
    {std::numeric_limits<double>::infinity(), QSlider::NoTicks, QStringLiteral("far")},
    {0.1, QSlider::TicksBothSides, QStringLiteral("a tenth")}};

QWidget *makeSlider(const QString &kind)
{
    if (kind == QLatin1String("CMwQSlider"))
        return new CMwQSlider(Qt::Horizontal);
    if (kind == QLatin1String("CMwQRangeSlider"))
        return new CMwQRangeSlider(Qt::Horizontal);
    if (kind == QLatin1String("CMwQDoubleSlider"))
        return new CMwQDoubleSlider(Qt::Horizontal);
    return new CMwQDoubleRangeSlider(Qt::Horizontal);
}

// A QVariant as QDataStream saves one of a registered type: the type number
// of user types, the null flag, the type's name, then the value.
template<typename List>
QByteArray savedVariant(const char *name, const List &items)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << quint32(QMetaType::User) << qint8(0) << name << items;
    return bytes;
}

} // namespace

void tst_TickItemMetaTypes::propertyOfEverySlider_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QVariant>("items");
    QTest::newRow("CMwQSlider") << "CMwQSlider" << QVariant::fromValue(intItems);
    QTest::newRow("CMwQRangeSlider") << "CMwQRangeSlider" << QVariant::fromValue(intItems);
    QTest::newRow("CMwQDoubleSlider") << "CMwQDoubleSlider" << QVariant::fromValue(doubleItems);
    QTest::newRow("CMwQDoubleRangeSlider")
        << "CMwQDoubleRangeSlider" << QVariant::fromValue(doubleItems);
}

void tst_TickItemMetaTypes::propertyOfEverySlider()
{
    QFETCH(QString, kind);
    QFETCH(QVariant, items);
    const std::unique_ptr<QWidget> slider(makeSlider(kind));
    const QMetaObject *meta = slider->metaObject();
    const int index = meta->indexOfProperty("tickItemList");
    QVERIFY(index >= 0);
    const QMetaProperty property = meta->property(index);
    QCOMPARE(property.userType(), items.userType());
    QVERIFY(property.isReadable());
    QVERIFY(property.isWritable());
    QVERIFY(property.isDesignable());

    const QVariant empty = slider->property("tickItemList");
    QCOMPARE(empty.userType(), items.userType());
    QVERIFY(slider->setProperty("tickItemList", items));
    const QVariant back = slider->property("tickItemList");
    QCOMPARE(back.userType(), items.userType());
    if (items.userType() == qMetaTypeId<IntItems>())
        QCOMPARE(back.value<IntItems>(), intItems);
    else
        QCOMPARE(back.value<DoubleItems>(), doubleItems);

    // A value of another type is refused and changes nothing.
    QVERIFY(!slider->setProperty("tickItemList", QVariant(QStringLiteral("5"))));
    QCOMPARE(slider->property("tickItemList").userType(), items.userType());
    if (items.userType() == qMetaTypeId<IntItems>())
        QCOMPARE(slider->property("tickItemList").value<IntItems>(), intItems);
    else
        QCOMPARE(slider->property("tickItemList").value<DoubleItems>(), doubleItems);
}

void tst_TickItemMetaTypes::registeredNames_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("type");
    const int intList = qMetaTypeId<IntItems>();
    const int intItem = qMetaTypeId<CMwQSlider::SMwTickItem>();
    const int doubleList = qMetaTypeId<DoubleItems>();
    const int doubleItem = qMetaTypeId<CMwQDoubleSlider::SMwTickItem>();
    QTest::newRow("TMwTickItemList") << QByteArray("TMwTickItemList") << intList;
    QTest::newRow("CMwQSlider::TMwTickItemList")
        << QByteArray("CMwQSlider::TMwTickItemList") << intList;
    QTest::newRow("QList<CMwQSlider::SMwTickItem>")
        << QByteArray("QList<CMwQSlider::SMwTickItem>") << intList;
    QTest::newRow("SMwTickItem") << QByteArray("SMwTickItem") << intItem;
    QTest::newRow("CMwQSlider::SMwTickItem") << QByteArray("CMwQSlider::SMwTickItem") << intItem;
    QTest::newRow("CMwQDoubleSlider::TMwTickItemList")
        << QByteArray("CMwQDoubleSlider::TMwTickItemList") << doubleList;
    QTest::newRow("CMwQDoubleRangeSlider::TMwTickItemList")
        << QByteArray("CMwQDoubleRangeSlider::TMwTickItemList") << doubleList;
    QTest::newRow("QList<CMwQDoubleSlider::SMwTickItem>")
        << QByteArray("QList<CMwQDoubleSlider::SMwTickItem>") << doubleList;
    QTest::newRow("CMwQDoubleSlider::SMwTickItem")
        << QByteArray("CMwQDoubleSlider::SMwTickItem") << doubleItem;
    QTest::newRow("CMwQDoubleRangeSlider::SMwTickItem")
        << QByteArray("CMwQDoubleRangeSlider::SMwTickItem") << doubleItem;
}

void tst_TickItemMetaTypes::registeredNames()
{
    QFETCH(QByteArray, name);
    QFETCH(int, type);
    QVERIFY(type >= int(QMetaType::User));
    QCOMPARE(metaTypeIdOfName(name.constData()), type);
}

void tst_TickItemMetaTypes::variantHoldsTheLists()
{
    const QVariant ints = QVariant::fromValue(intItems);
    QCOMPARE(ints.userType(), qMetaTypeId<IntItems>());
    QVERIFY(ints.canConvert<IntItems>());
    QCOMPARE(ints.value<IntItems>(), intItems);
    QVERIFY(ints.value<DoubleItems>().isEmpty());

    const QVariant doubles = QVariant::fromValue(doubleItems);
    QCOMPARE(doubles.userType(), qMetaTypeId<DoubleItems>());
    QVERIFY(doubles.userType() != ints.userType());
    QCOMPARE(doubles.value<DoubleItems>(), doubleItems);
    QVERIFY(doubles.value<IntItems>().isEmpty());

    const QVariant item = QVariant::fromValue(doubleItems.at(3));
    QCOMPARE(item.userType(), qMetaTypeId<CMwQDoubleSlider::SMwTickItem>());
    QCOMPARE(item.value<CMwQDoubleSlider::SMwTickItem>(), doubleItems.at(3));
}

void tst_TickItemMetaTypes::streamRoundTrip()
{
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << intItems << doubleItems << QVariant::fromValue(intItems)
            << QVariant::fromValue(doubleItems) << QVariant::fromValue(intItems.at(3))
            << QVariant::fromValue(doubleItems.at(0));
    }
    QDataStream in(bytes);
    IntItems ints;
    DoubleItems doubles;
    QVariant intsVariant;
    QVariant doublesVariant;
    QVariant intItem;
    QVariant doubleItem;
    in >> ints >> doubles >> intsVariant >> doublesVariant >> intItem >> doubleItem;
    QCOMPARE(in.status(), QDataStream::Ok);
    QVERIFY(in.atEnd());
    QCOMPARE(ints, intItems);
    QCOMPARE(doubles, doubleItems);
    // -0.0 stays negative, null and empty texts stay apart.
    QVERIFY(std::signbit(doubles.at(0).value));
    QVERIFY(ints.at(1).text.isNull());
    QVERIFY(!ints.at(2).text.isNull());
    QCOMPARE(intsVariant.userType(), qMetaTypeId<IntItems>());
    QCOMPARE(intsVariant.value<IntItems>(), intItems);
    QCOMPARE(doublesVariant.userType(), qMetaTypeId<DoubleItems>());
    QCOMPARE(doublesVariant.value<DoubleItems>(), doubleItems);
    QCOMPARE(intItem.value<CMwQSlider::SMwTickItem>(), intItems.at(3));
    QCOMPARE(doubleItem.value<CMwQDoubleSlider::SMwTickItem>(), doubleItems.at(0));
}

void tst_TickItemMetaTypes::streamLayout()
{
    // One item is its value (a 32-bit integer or a double), its sides as a
    // 32-bit integer and its text: the same bytes from either Qt version.
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << CMwQSlider::SMwTickItem {5, QSlider::TicksAbove, QStringLiteral("a")};
        out << CMwQDoubleSlider::SMwTickItem {0.5, QSlider::TicksBelow, QString()};
    }
    QCOMPARE(bytes.toHex(),
        QByteArray("00000005"
                   "00000001"
                   "000000020061"
                   "3fe0000000000000"
                   "00000002"
                   "ffffffff"));

    // Sides beyond both bits are dropped on reading.
    QByteArray odd;
    {
        QDataStream out(&odd, QIODevice::WriteOnly);
        out << qint32(9) << qint32(7) << QStringLiteral("x");
    }
    QDataStream in(odd);
    CMwQSlider::SMwTickItem item;
    in >> item;
    QCOMPARE(in.status(), QDataStream::Ok);
    QCOMPARE(item.value, 9);
    QCOMPARE(item.tickPosition, QSlider::TicksBothSides);
    QCOMPARE(item.text, QStringLiteral("x"));
}

void tst_TickItemMetaTypes::streamedVariantNamedByEitherQt_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("doubleForm");
    // Qt 5 saves a list under the name it was declared with, Qt 6 under its
    // own spelling of the type; each build reads both.
    QTest::newRow("Qt 5 name, int") << QByteArray("CMwQSlider::TMwTickItemList") << false;
    QTest::newRow("Qt 6 name, int") << QByteArray("QList<CMwQSlider::SMwTickItem>") << false;
    QTest::newRow("Qt 5 name, double") << QByteArray("CMwQDoubleSlider::TMwTickItemList") << true;
    QTest::newRow("Qt 6 name, double")
        << QByteArray("QList<CMwQDoubleSlider::SMwTickItem>") << true;
}

void tst_TickItemMetaTypes::streamedVariantNamedByEitherQt()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, doubleForm);
    const QByteArray bytes = doubleForm ? savedVariant(name.constData(), doubleItems)
                                        : savedVariant(name.constData(), intItems);
    QDataStream in(bytes);
    QVariant read;
    in >> read;
    QCOMPARE(in.status(), QDataStream::Ok);
    QVERIFY(in.atEnd());
    if (doubleForm) {
        QCOMPARE(read.userType(), qMetaTypeId<DoubleItems>());
        QCOMPARE(read.value<DoubleItems>(), doubleItems);
    } else {
        QCOMPARE(read.userType(), qMetaTypeId<IntItems>());
        QCOMPARE(read.value<IntItems>(), intItems);
    }
}

VEL_TEST_MAIN(tst_TickItemMetaTypes)
#include "tst_tickitemmetatypes.moc"
