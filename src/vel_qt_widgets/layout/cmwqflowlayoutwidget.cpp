#include <vel_qt_widgets/FlowLayout.h>

CMwQFlowLayoutWidget::CMwQFlowLayoutWidget(QWidget *parent, Qt::WindowFlags f)
    : QWidget(parent, f)
    , m_margin(-1)
    , m_hSpacing(-1)
    , m_vSpacing(-1)
{
    installFlowLayout();
}

CMwQFlowLayoutWidget::CMwQFlowLayoutWidget(QWidgetPrivate &d, QWidget *parent, Qt::WindowFlags f)
    : QWidget(d, parent, f)
    , m_margin(-1)
    , m_hSpacing(-1)
    , m_vSpacing(-1)
{
    installFlowLayout();
}

CMwQFlowLayoutWidget::CMwQFlowLayoutWidget(const QWidget &)
    : QWidget(nullptr)
    , m_margin(-1)
    , m_hSpacing(-1)
    , m_vSpacing(-1)
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
int CMwQFlowLayoutWidget::margin() const { return m_margin; }

void CMwQFlowLayoutWidget::setMargin(int margin) { m_margin = margin; }

int CMwQFlowLayoutWidget::hSpacing() const { return m_hSpacing; }

void CMwQFlowLayoutWidget::setHSpacing(int spacing) { m_hSpacing = spacing; }

int CMwQFlowLayoutWidget::vSpacing() const { return m_vSpacing; }

void CMwQFlowLayoutWidget::setVSpacing(int spacing) { m_vSpacing = spacing; }
