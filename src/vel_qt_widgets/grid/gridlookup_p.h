#ifndef VEL_QT_WIDGETS_GRIDLOOKUP_P_H
#define VEL_QT_WIDGETS_GRIDLOOKUP_P_H

#include <QtGui/QColor>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

class CMwHierarchicalGridView;

namespace vel {

// What the parts of the grid ask of the composite that holds them. The
// composite creates those parts, so they must not include its header (and
// the whole family behind it); this narrow door is defined beside the
// composite, in cmwhierarchicalgridview.cpp.
class GridLookup
{
public:
    // \a grid as the QObject it is, for parenting to it where the
    // composite is only declared.
    static QObject *object(CMwHierarchicalGridView *grid);
    // \a object as the composite, or null when it is something else.
    static const CMwHierarchicalGridView *grid(const QObject *object);
    // The composite's body width of \a column.
    static int columnWidth(const CMwHierarchicalGridView *grid, int column);
    // The composite's band colour of group rows.
    static QColor branchParentColor(const CMwHierarchicalGridView *grid);
};

} // namespace vel

#endif // VEL_QT_WIDGETS_GRIDLOOKUP_P_H
