#include <vel_qt_widgets/CMwQFlowLayoutWidget.h>

#include <vel_qt_widgets/CMwQFlowLayout.h>

class CMwQFlowLayoutWidget::Private
{
public:
    int m_margin = -1;
    int m_hSpacing = -1;
    int m_vSpacing = -1;
};

CMwQFlowLayoutWidget::CMwQFlowLayoutWidget(QWidget *parent, Qt::WindowFlags f)
    : QWidget(parent, f)
    , d(new Private)
{
    installFlowLayout();
}

CMwQFlowLayoutWidget::CMwQFlowLayoutWidget(QWidgetPrivate &dd, QWidget *parent, Qt::WindowFlags f)
    : QWidget(dd, parent, f)
    , d(new Private)
{
    installFlowLayout();
}

CMwQFlowLayoutWidget::CMwQFlowLayoutWidget(const QWidget &)
    : QWidget(nullptr)
    , d(new Private)
{
    installFlowLayout();
}

CMwQFlowLayoutWidget::~CMwQFlowLayoutWidget() = default;

void CMwQFlowLayoutWidget::installFlowLayout()
{
    // The layout is a child of this widget and goes with it.
    QWidget::setLayout(new CMwQFlowLayout(this, -1, -1, -1));
}

void CMwQFlowLayoutWidget::setLayout(QLayout *)
{
    // Empty on purpose (docs/compatibility.md).
}

// Only stored, never passed to the layout (docs/compatibility.md).
int CMwQFlowLayoutWidget::margin() const { return d->m_margin; }

void CMwQFlowLayoutWidget::setMargin(int margin) { d->m_margin = margin; }

int CMwQFlowLayoutWidget::hSpacing() const { return d->m_hSpacing; }

void CMwQFlowLayoutWidget::setHSpacing(int spacing) { d->m_hSpacing = spacing; }

int CMwQFlowLayoutWidget::vSpacing() const { return d->m_vSpacing; }

void CMwQFlowLayoutWidget::setVSpacing(int spacing) { d->m_vSpacing = spacing; }
