#include "gallerypage.h"

#include <vel_qt_widgets/FlowLayout.h>
#include <vel_qt_widgets/PushButtons.h>

#include <QtCore/QEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QVBoxLayout>

namespace {

// Writes the flow area's new height into the log whenever its width changes.
class ResizeLogger : public QObject
{
public:
    ResizeLogger(const QString &name, GalleryLog *log, QObject *parent)
        : QObject(parent)
        , m_name(name)
        , m_log(log)
    {
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize) {
            auto *widget = static_cast<QWidget *>(watched);
            if (widget->width() != m_lastWidth) {
                m_lastWidth = widget->width();
                m_log->write(QStringLiteral("%1: width %2 -> heightForWidth %3")
                                 .arg(m_name)
                                 .arg(widget->width())
                                 .arg(widget->heightForWidth(widget->width())));
            }
        }
        return false;
    }

private:
    QString m_name;
    GalleryLog *m_log;
    int m_lastWidth = -1;
};

const QStringList words {QStringLiteral("alpha"), QStringLiteral("beta"), QStringLiteral("gamma"),
    QStringLiteral("delta"), QStringLiteral("epsilon"), QStringLiteral("zeta"),
    QStringLiteral("eta"), QStringLiteral("theta"), QStringLiteral("iota"), QStringLiteral("kappa"),
    QStringLiteral("lambda"), QStringLiteral("mu"), QStringLiteral("omicron"),
    QStringLiteral("sigma"), QStringLiteral("upsilon")};

QWidget *createFlowPage(GalleryLog *log)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(
        new QLabel(QStringLiteral("Resize the window: the lines re-wrap and each box takes the "
                                  "height its width needs (heightForWidth).")));

    // Free flow: every item at its own size hint.
    auto *freeBox = new QGroupBox(QStringLiteral("CMwQFlowLayoutWidget: items at their own size"));
    auto *freeBoxLayout = new QVBoxLayout(freeBox);
    auto *flow = new CMwQFlowLayoutWidget;
    for (const QString &word : words) {
        auto *button = new CMwTextPushButton(word, flow);
        flow->layout()->addWidget(button);
        QObject::connect(button, &QAbstractButton::clicked, log,
            [log, word]() { log->write(QStringLiteral("flow: \"%1\" clicked").arg(word)); });
    }
    flow->installEventFilter(new ResizeLogger(QStringLiteral("flow"), log, flow));
    freeBoxLayout->addWidget(flow);
    layout->addWidget(freeBox);

    // Grid mode: one common size, stretched to fill the line.
    auto *gridBox
        = new QGroupBox(QStringLiteral("CMwQFlowLayout in same-widgets-size (grid) mode"));
    auto *gridBoxLayout = new QVBoxLayout(gridBox);
    auto *controls = new QHBoxLayout;
    auto *same = new QCheckBox(QStringLiteral("same widgets size"));
    same->setChecked(true);
    auto *columns = new QSpinBox;
    columns->setRange(0, 8);
    columns->setValue(4);
    columns->setSpecialValueText(QStringLiteral("from the widest item"));
    controls->addWidget(same);
    controls->addWidget(new QLabel(QStringLiteral("fixed column count:")));
    controls->addWidget(columns);
    controls->addStretch();
    gridBoxLayout->addLayout(controls);

    auto *gridHost = new QWidget;
    auto *grid = new CMwQFlowLayout(gridHost, 0, 6, 6);
    grid->setSameWidgetsSize(true);
    grid->setFixedColumnCount(columns->value());
    for (int i = 0; i < 11; ++i)
        grid->addWidget(new QPushButton(words.at(i)));
    gridHost->installEventFilter(new ResizeLogger(QStringLiteral("grid"), log, gridHost));
    gridBoxLayout->addWidget(gridHost);
    layout->addWidget(gridBox);
    layout->addStretch();

    // The setters only store; the caller triggers the next layout pass.
    QObject::connect(same, &QCheckBox::toggled, grid, [grid, log](bool on) {
        grid->setSameWidgetsSize(on);
        grid->invalidate();
        log->write(QStringLiteral("grid: sameWidgetsSize = %1").arg(on ? "true" : "false"));
    });
    QObject::connect(
        columns, QOverload<int>::of(&QSpinBox::valueChanged), grid, [grid, log](int count) {
            grid->setFixedColumnCount(count);
            grid->invalidate();
            log->write(QStringLiteral("grid: fixedColumnCount = %1").arg(count));
        });
    return page;
}

} // namespace

VEL_GALLERY_PAGE(60, "Flow layout", createFlowPage);
