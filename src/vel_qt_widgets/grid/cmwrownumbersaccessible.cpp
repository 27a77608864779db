#include "cmwrownumbersaccessible_p.h"

#include <vel_qt_widgets/CMwVHeaderView.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QTreeView>

namespace {

// The row-number header beside the grid's body.
QAccessibleInterface *rowNumbersAccessibleFactory(const QString &className, QObject *object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    if (className == QLatin1String("CMwVHeaderView"))
        return new CMwRowNumbersAccessible(static_cast<QWidget *>(object));
    return nullptr;
}

void installRowNumbersAccessibleFactory()
{
    // Runs for every application object the process creates; one
    // installation is enough.
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    QAccessible::installFactory(rowNumbersAccessibleFactory);
}

} // namespace

// Each family installs its own factory; QAccessible asks all of them.
Q_COREAPP_STARTUP_FUNCTION(installRowNumbersAccessibleFactory)

CMwRowNumbersAccessible::CMwRowNumbersAccessible(QWidget *header)
    : QAccessibleWidget(header, QAccessible::List)
{
}

CMwRowNumbersAccessible::~CMwRowNumbersAccessible()
{
    for (QAccessible::Id id : qAsConst(m_cells))
        QAccessible::deleteAccessibleInterface(id);
}

CMwVHeaderView *CMwRowNumbersAccessible::header() const
{
    return qobject_cast<CMwVHeaderView *>(object());
}

int CMwRowNumbersAccessible::childCount() const
{
    const CMwVHeaderView *view = header();
    return view ? view->count() : 0;
}

QAccessibleInterface *CMwRowNumbersAccessible::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto found = m_cells.constFind(index);
    if (found != m_cells.constEnd())
        return QAccessible::accessibleInterface(found.value());
    auto *cell = new CMwRowNumberCellAccessible(const_cast<CMwRowNumbersAccessible *>(this), index);
    m_cells.insert(index, QAccessible::registerAccessibleInterface(cell));
    return cell;
}

int CMwRowNumbersAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    if (!child || child->role() != QAccessible::RowHeader || child->parent() != this)
        return -1;
    return static_cast<const CMwRowNumberCellAccessible *>(child)->section();
}

QAccessibleInterface *CMwRowNumbersAccessible::childAt(int x, int y) const
{
    const CMwVHeaderView *view = header();
    if (!view)
        return nullptr;
    const QPoint local = view->viewport()->mapFromGlobal(QPoint(x, y));
    const int section = view->logicalIndexAt(local);
    return section >= 0 ? child(section) : nullptr;
}

QRect CMwRowNumbersAccessible::sectionRect(int section) const
{
    const CMwVHeaderView *view = header();
    if (!view || section < 0 || section >= view->count())
        return QRect();
    return QRect(0, view->sectionViewportPosition(section), view->viewport()->width(),
        view->sectionSize(section));
}

QString CMwRowNumbersAccessible::numberText(int section) const
{
    const CMwVHeaderView *view = header();
    const QTreeView *tree = view ? view->treeView() : nullptr;
    const QRect rect = sectionRect(section);
    if (!tree || !tree->model() || !rect.isValid())
        return QString();
    // The same item the header paints the number of: the tree row at the
    // section's middle.
    const QModelIndex index = tree->indexAt(QPoint(0, (rect.top() + rect.bottom()) / 2));
    const QVariant number = index.isValid() ? index.data(RowNumberRole) : QVariant();
    return number.isValid() ? QString::number(number.toInt() + 1) : QString();
}

CMwRowNumberCellAccessible::CMwRowNumberCellAccessible(CMwRowNumbersAccessible *parent, int section)
    : m_header(parent->header())
    , m_section(section)
{
}

bool CMwRowNumberCellAccessible::isValid() const
{
    const auto *view = qobject_cast<CMwVHeaderView *>(m_header.data());
    return view && m_section < view->count();
}

QObject *CMwRowNumberCellAccessible::object() const { return nullptr; }

QWindow *CMwRowNumberCellAccessible::window() const
{
    QAccessibleInterface *p = parent();
    return p ? p->window() : nullptr;
}

QAccessibleInterface *CMwRowNumberCellAccessible::parent() const
{
    return m_header ? QAccessible::queryAccessibleInterface(m_header.data()) : nullptr;
}

QAccessibleInterface *CMwRowNumberCellAccessible::child(int) const { return nullptr; }

int CMwRowNumberCellAccessible::childCount() const { return 0; }

int CMwRowNumberCellAccessible::indexOfChild(const QAccessibleInterface *) const { return -1; }

QAccessibleInterface *CMwRowNumberCellAccessible::childAt(int, int) const { return nullptr; }

QAccessibleInterface *CMwRowNumberCellAccessible::focusChild() const { return nullptr; }

QString CMwRowNumberCellAccessible::text(QAccessible::Text t) const
{
    auto *p = static_cast<CMwRowNumbersAccessible *>(parent());
    if (t != QAccessible::Name || !p || !isValid())
        return QString();
    return p->numberText(m_section);
}

void CMwRowNumberCellAccessible::setText(QAccessible::Text, const QString &) { }

QRect CMwRowNumberCellAccessible::rect() const
{
    auto *p = static_cast<CMwRowNumbersAccessible *>(parent());
    const auto *view = qobject_cast<CMwVHeaderView *>(m_header.data());
    if (!p || !view || !isValid())
        return QRect();
    const QRect local = p->sectionRect(m_section);
    return QRect(view->viewport()->mapToGlobal(local.topLeft()), local.size());
}

QAccessible::Role CMwRowNumberCellAccessible::role() const { return QAccessible::RowHeader; }

QAccessible::State CMwRowNumberCellAccessible::state() const
{
    QAccessible::State st;
    const auto *view = qobject_cast<CMwVHeaderView *>(m_header.data());
    if (!view || !isValid()) {
        st.invalid = true;
        return st;
    }
    const QRect local = static_cast<CMwRowNumbersAccessible *>(parent())->sectionRect(m_section);
    if (!view->isVisible() || view->isSectionHidden(m_section)
        || !view->viewport()->rect().intersects(local)) {
        st.invisible = true;
    }
    return st;
}
