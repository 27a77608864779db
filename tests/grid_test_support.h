#ifndef VEL_TESTS_GRID_TEST_SUPPORT_H
#define VEL_TESTS_GRID_TEST_SUPPORT_H

#include <vel_qt_widgets/CMwGridTableModel.h>

#include <QtCore/QAbstractItemModel>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtCore/QVector>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QTransform>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOptionHeader>
#include <QtWidgets/QStyleOptionViewItem>
#include <QtWidgets/QWidget>

// Fusion, recording every control it is asked to draw: what the widgets
// under test paint, where, and with which option.
class RecordingStyle : public QProxyStyle
{
public:
    struct Call
    {
        QStyle::ControlElement element;
        QRect rect;
        QString text;
        QStyle::State state;
        QTransform transform;
        QStyleOptionHeader::SortIndicator sortIndicator = QStyleOptionHeader::None;
        QStyleOptionHeader::SectionPosition position = QStyleOptionHeader::Middle;
        QStyleOptionHeader::SelectedPosition selectedPosition = QStyleOptionHeader::NotAdjacent;
        int section = -1;
        QPalette palette;
    };

    RecordingStyle()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
    {
    }

    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
        const QWidget *widget) const override
    {
        Call call;
        call.element = element;
        call.rect = option->rect;
        call.state = option->state;
        call.transform = painter->worldTransform();
        call.palette = option->palette;
        if (const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option)) {
            call.text = header->text;
            call.sortIndicator = header->sortIndicator;
            call.position = header->position;
            call.selectedPosition = header->selectedPosition;
            call.section = header->section;
        } else if (const auto *item = qstyleoption_cast<const QStyleOptionViewItem *>(option)) {
            call.text = item->text;
        }
        calls.append(call);
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    QVector<Call> callsOf(ControlElement element) const
    {
        QVector<Call> result;
        for (const Call &call : calls)
            if (call.element == element)
                result.append(call);
        return result;
    }

    mutable QVector<Call> calls;
};

// Renders the widget (and its viewport) as it is on screen.
inline QImage renderWidget(QWidget *widget)
{
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta);
    widget->render(&image);
    return image;
}

inline bool isDark(QRgb pixel) { return qGray(pixel) < 110; }

// Bounding box of the dark (text) pixels inside area.
inline QRect darkPixels(const QImage &image, const QRect &area)
{
    QRect box;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (image.rect().contains(x, y) && isDark(image.pixel(x, y)))
                box |= QRect(x, y, 1, 1);
    return box;
}

// Qt's model tester in fatal mode on a model, for as long as the model
// lives: the tester is the model's child. A model watched already is not
// watched twice; null is ignored.
inline QAbstractItemModelTester *watchModel(QAbstractItemModel *model)
{
    if (!model)
        return nullptr;
    if (auto *tester
        = model->findChild<QAbstractItemModelTester *>(QString(), Qt::FindDirectChildrenOnly))
        return tester;
    return new QAbstractItemModelTester(
        model, QAbstractItemModelTester::FailureReportingMode::Fatal, model);
}

// Header paths from "Level/Level" strings, one per column.
inline QVector<QStringList> paths(const QStringList &joined)
{
    QVector<QStringList> result;
    for (const QString &path : joined)
        result.append(path.split(QLatin1Char('/')));
    return result;
}

// City, Value, Note under two header levels: Oslo 1 "x" | Bergen 2 "12" |
// Oslo 3 "y" | Tromsø 4 (empty). No value is an English word of the library.
inline CMwGridTableModel *cities(QObject *parent)
{
    auto *model = new CMwGridTableModel(parent);
    model->setTable(paths({QStringLiteral("Place/City"), QStringLiteral("Data/Value"),
                        QStringLiteral("Data/Note")}),
        {{QStringLiteral("Oslo"), 1, QStringLiteral("x")},
            {QStringLiteral("Bergen"), 2, QStringLiteral("12")},
            {QStringLiteral("Oslo"), 3, QStringLiteral("y")},
            {QStringLiteral("Tromsø"), 4, QVariant()}});
    return model;
}

// What the headless platform says about every popup menu it shows.
inline void ignorePopupWarnings()
{
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support grabbing the keyboard");
    }
}

// Opens the header's context menu on a section and clicks the entry with the
// given text (none, or an empty text: the menu is closed). The menu's texts
// go to \a shown. False when no menu came up.
inline bool runHeaderMenu(
    QHeaderView *header, int section, const QString &choice, QStringList *shown = nullptr)
{
    bool handled = false;
    QTimer timer;
    timer.setInterval(10);
    QObject::connect(&timer, &QTimer::timeout, [&]() {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu || handled)
            return;
        handled = true;
        timer.stop();
        if (shown) {
            shown->clear();
            for (const QAction *action : menu->actions())
                *shown << action->text();
        }
        for (QAction *action : menu->actions()) {
            if (!choice.isEmpty() && action->text() == choice) {
                QTest::mouseClick(
                    menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
                return;
            }
        }
        menu->close();
    });
    ignorePopupWarnings();
    timer.start();
    const QPoint pos(header->sectionViewportPosition(section) + header->sectionSize(section) / 2,
        header->height() - 4);
    Q_EMIT header->customContextMenuRequested(pos);
    return handled;
}

#endif // VEL_TESTS_GRID_TEST_SUPPORT_H
