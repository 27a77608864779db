#include <vel_qt_widgets/CMwQWidget.h>

CMwQWidget::CMwQWidget(QWidget *parent, Qt::WindowFlags f)
    : QWidget(parent, f)
{
}

CMwQWidget::CMwQWidget(QWidgetPrivate &d, QWidget *parent, Qt::WindowFlags f)
    : QWidget(d, parent, f)
{
}

CMwQWidget::~CMwQWidget() = default;
