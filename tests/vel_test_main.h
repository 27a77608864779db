#ifndef VEL_TEST_MAIN_H
#define VEL_TEST_MAIN_H

#include <QtGui/QFont>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>

// Like QTEST_MAIN, but with the fixed look every rendering check relies on:
// the Fusion style with its own palette and one font at one size.
inline void velSetUpTestLook()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QApplication::style()->standardPalette());
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    QApplication::setFont(font);
}

// Shows a widget at a given size and waits until it is on screen.
inline bool showAt(QWidget &widget, int width, int height)
{
    widget.resize(width, height);
    widget.show();
    return QTest::qWaitForWindowExposed(&widget);
}

#define VEL_TEST_MAIN(TestObject)                                                                  \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        QApplication app(argc, argv);                                                              \
        app.setAttribute(Qt::AA_Use96Dpi, true);                                                   \
        velSetUpTestLook();                                                                        \
        TestObject tc;                                                                             \
        QTEST_SET_MAIN_SOURCE_PATH                                                                 \
        return QTest::qExec(&tc, argc, argv);                                                      \
    }

#endif // VEL_TEST_MAIN_H
