#include "vel_test_main.h"

#include <vel_qt_widgets/CMwFilterWidget.h>
#include <vel_qt_widgets/CMwPickerForTable.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>
#include <vel_system/MW_GetTranslation.h>

#include <QtCore/QFile>
#include <QtCore/QTranslator>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QStyleOptionComboBox>

#include <cwchar>

namespace {

QString fromW(const wchar_t *text) { return QString::fromWCharArray(text); }

} // namespace

// The German catalogue is installed before any widget exists, as an
// application would do it; the operator and comparator tables are translated
// on first use and then kept.
class tst_VelSystem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyTextIsTranslated_data();
    void everyTextIsTranslated();
    void untranslatedTextComesBack();
    void pointersStayAndDoNotGrow();
    void nullArguments();
    void filterEditorIsTranslated();
    void pickerPlaceholderIsTranslated();
    void translatedTextsReachTheProxy();

private:
    QTranslator m_translator;
};

void tst_VelSystem::initTestCase()
{
    const QString catalogue = QStringLiteral(":/vel_qt_widgets/translations/vel_qt_widgets_de.qm");
    QVERIFY(QFile::exists(catalogue));
    QVERIFY(m_translator.load(catalogue));
    QVERIFY(QCoreApplication::installTranslator(&m_translator));
}

void tst_VelSystem::everyTextIsTranslated_data()
{
    QTest::addColumn<QString>("context");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("german");
    const QString filter = QStringLiteral("CMwFilterWidget");
    QTest::newRow("AND/OR") << filter << "AND/OR"
                            << "UND/ODER";
    QTest::newRow("Column") << filter << "Column"
                            << "Spalte";
    QTest::newRow("Comparison") << filter << "Comparison"
                                << "Vergleich";
    QTest::newRow("Value") << filter << "Value"
                           << "Wert";
    QTest::newRow("AND") << filter << "AND"
                         << "UND";
    QTest::newRow("OR") << filter << "OR"
                        << "ODER";
    QTest::newRow("GE") << filter << "Is Greater or Equal"
                        << QString::fromUtf8("Ist größer oder gleich");
    QTest::newRow("LE") << filter << "Is Smaller or Equal"
                        << "Ist kleiner oder gleich";
    QTest::newRow("GT") << filter << "Is Greater" << QString::fromUtf8("Ist größer");
    QTest::newRow("LT") << filter << "Is Smaller"
                        << "Ist kleiner";
    QTest::newRow("EQ") << filter << "Is Equal"
                        << "Ist gleich";
    QTest::newRow("NE") << filter << "Is Not Equal"
                        << "Ist ungleich";
    QTest::newRow("EMPTY") << filter << "Is Empty"
                           << "Ist leer";
    QTest::newRow("NOTEMPTY") << filter << "Is Not Empty"
                              << "Ist nicht leer";
    QTest::newRow("select") << "CMwPickerForTable"
                            << "<select>" << QString::fromUtf8("<auswählen>");
}

void tst_VelSystem::everyTextIsTranslated()
{
    QFETCH(QString, context);
    QFETCH(QString, source);
    QFETCH(QString, german);
    const QByteArray contextBytes = context.toUtf8();
    const std::wstring text = source.toStdWString();
    QCOMPARE(fromW(MW_GetTranslation(text.c_str(), contextBytes.constData())), german);
    // The context matters.
    QCOMPARE(fromW(MW_GetTranslation(text.c_str(), "SomeOtherContext")), source);
}

void tst_VelSystem::untranslatedTextComesBack()
{
    QCOMPARE(fromW(MW_GetTranslation(L"Not in any catalogue", "CMwFilterWidget")),
        QStringLiteral("Not in any catalogue"));
    QCOMPARE(
        fromW(MW_GetTranslation(L"Gr\u00f6\u00dfe \u20ac", "X")), QString::fromUtf8("Größe €"));
    QCOMPARE(fromW(MW_GetTranslation(L"", "CMwFilterWidget")), QString());
}

void tst_VelSystem::pointersStayAndDoNotGrow()
{
    const wchar_t *first = MW_GetTranslation(L"Column", "CMwFilterWidget");
    for (int i = 0; i < 1000; ++i)
        QCOMPARE(MW_GetTranslation(L"Column", "CMwFilterWidget"), first);
    // A caller's buffer may go away; the answer stays.
    const wchar_t *answer = nullptr;
    {
        std::wstring temporary = L"Transient text";
        answer = MW_GetTranslation(temporary.c_str(), "ctx");
        temporary.assign(temporary.size(), L'x');
    }
    QCOMPARE(fromW(answer), QStringLiteral("Transient text"));
    // Without the translator the source text is answered, from its own slot;
    // the German answer handed out before stays intact.
    QCoreApplication::removeTranslator(&m_translator);
    const wchar_t *english = MW_GetTranslation(L"Column", "CMwFilterWidget");
    QCOMPARE(fromW(english), QStringLiteral("Column"));
    QCOMPARE(fromW(first), QStringLiteral("Spalte"));
    QVERIFY(QCoreApplication::installTranslator(&m_translator));
    QCOMPARE(MW_GetTranslation(L"Column", "CMwFilterWidget"), first);
}

void tst_VelSystem::nullArguments()
{
    QTest::ignoreMessage(QtWarningMsg, "MW_GetTranslation: null text");
    const wchar_t *empty = MW_GetTranslation(nullptr, "CMwFilterWidget");
    QVERIFY(empty);
    QCOMPARE(std::wcslen(empty), size_t(0));
    QCOMPARE(fromW(MW_GetTranslation(L"Column", nullptr)), QStringLiteral("Column"));
}

void tst_VelSystem::filterEditorIsTranslated()
{
    CMwFilterWidget editor;
    const QStringList headers {"", "UND/ODER", "Spalte", "Vergleich", "Wert"};
    for (int c = 0; c < 5; ++c)
        QCOMPARE(editor.horizontalHeaderItem(c)->text(), headers.at(c));

    QStandardItemModel model(1, 1);
    model.setHorizontalHeaderLabels({"X"});
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    editor.setRefModel(&proxy);
    editor.defineFilter();
    auto *op = qobject_cast<CMwPickerForTable *>(editor.cellWidget(0, 1));
    QVERIFY(op);
    QCOMPARE(op->itemText(0), QStringLiteral("UND"));
    QCOMPARE(op->itemText(1), QStringLiteral("ODER"));
    auto *comparator = qobject_cast<CMwPickerForTable *>(editor.cellWidget(0, 3));
    QVERIFY(comparator);
    QCOMPARE(comparator->itemText(0), QString::fromUtf8("Ist größer oder gleich"));
    QCOMPARE(comparator->itemText(7), QStringLiteral("Ist nicht leer"));
}

void tst_VelSystem::pickerPlaceholderIsTranslated()
{
    CMwPickerForTable picker;
    QStyleOptionComboBox option;
    picker.initStyleOption(&option);
    QCOMPARE(option.currentText, QString::fromUtf8("<auswählen>"));
    QVERIFY(!option.currentIcon.isNull());
}

void tst_VelSystem::translatedTextsReachTheProxy()
{
    QStandardItemModel model(3, 1);
    model.setHorizontalHeaderLabels({"N"});
    for (int r = 0; r < 3; ++r)
        model.setData(model.index(r, 0), r);
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    CMwFilterWidget editor;
    editor.setRefModel(&proxy);
    editor.defineFilter();
    qobject_cast<QComboBox *>(editor.cellWidget(0, 2))->setCurrentIndex(0);
    qobject_cast<QComboBox *>(editor.cellWidget(0, 3))->setCurrentIndex(2); // Ist größer
    editor.item(0, 4)->setText("0");
    editor.onActivateFilter(true);
    QCOMPARE(proxy.filterConditions().at(0).op, QStringLiteral("UND"));
    QCOMPARE(proxy.filterConditions().at(0).comparator, QString::fromUtf8("Ist größer"));
    QCOMPARE(proxy.rowCount(), 2);
    // The English texts are not this proxy's operators any more: "Is Greater"
    // is an unknown comparator and never matches.
    proxy.setFilterRows({{QVariant(), "UND", "N", "Is Greater", "0"}});
    QCOMPARE(proxy.rowCount(), 0);
}

VEL_TEST_MAIN(tst_VelSystem)
#include "tst_vel_system.moc"
