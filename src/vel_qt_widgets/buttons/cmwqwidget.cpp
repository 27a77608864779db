#include <vel_qt_widgets/CMwQWidget.h>

CMwQWidget::CMwQWidget(QWidget *parent, Qt::WindowFlags f)
    : QWidget(parent, f)
{
}

CMwQWidget::CMwQWidget(QWidgetPrivate &dd, QWidget *parent, Qt::WindowFlags f)
    : QWidget(dd, parent, f)
{
}

CMwQWidget::~CMwQWidget() = default;
