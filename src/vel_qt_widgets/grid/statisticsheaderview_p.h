#ifndef VEL_QT_WIDGETS_STATISTICSHEADERVIEW_P_H
#define VEL_QT_WIDGETS_STATISTICSHEADERVIEW_P_H

#include <QtWidgets/QHeaderView>

namespace vel {

// The statistics table's horizontal header: QTableView's own, plus a way to
// have it announce its geometry, on which the table lays itself out again
// (QTableView::updateGeometries() is protected and connected to that signal).
class StatisticsHeaderView : public QHeaderView
{
    Q_OBJECT

public:
    explicit StatisticsHeaderView(QWidget *parent = nullptr)
        : QHeaderView(Qt::Horizontal, parent)
    {
        // As QTableView sets up the header it makes itself.
        setSectionsClickable(true);
        setHighlightSections(true);
    }

    void announceGeometries() { Q_EMIT geometriesChanged(); }
};

} // namespace vel

#endif // VEL_QT_WIDGETS_STATISTICSHEADERVIEW_P_H
