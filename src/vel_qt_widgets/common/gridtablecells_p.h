#ifndef VEL_QT_WIDGETS_GRIDTABLECELLS_P_H
#define VEL_QT_WIDGETS_GRIDTABLECELLS_P_H

#include <vel_qt_widgets/vel_qt_widgets_export.h>

#include <QtCore/QVariant>
#include <QtCore/QVector>

#include <vector>

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
class QModelIndex;
QT_END_NAMESPACE

namespace vel {

// Direct reads of a CMwGridTableModel's cells for code that walks many at
// once (the grid's statistics over a selection, the filter proxy's sort);
// data() answers the same, one call a cell. Every CMwGridTableModel offers
// them, a subclass too. Declared here, below both families that read them;
// the grid's ready model implements it.
class VEL_QT_WIDGETS_EXPORT GridTableCells
{
public:
    // The cells of \a model, or null when it is no CMwGridTableModel.
    static const GridTableCells *of(const QAbstractItemModel *model);

    // The record shown by \a index, a valid index of the model; -1 for a group row.
    virtual int record(const QModelIndex &index) const = 0;
    // What data() returns for Qt::DisplayRole in \a column of \a record.
    virtual const QVariant &cell(int record, int column) const = 0;
    // Per record, the number of the distinct text in \a column (equal numbers,
    // equal texts; -1 where the cell holds no text), empty when the column
    // holds no text; \a count receives how many distinct texts there are.
    // Kept until the column changes.
    virtual const QVector<int> &textNumbers(int column, int *count) const = 0;
    // True while no row of the model has children.
    virtual bool isFlat() const = 0;

    // A column as the model holds it, for code that reads whole columns:
    // plain arrays instead of a QVariant a cell. Kind None means the cells
    // are held as QVariants and are read through cell().
    struct Typed
    {
        enum Kind { None, Ints, Doubles, Texts };
        Kind kind = None;
        int size = 0;
        const int *ints = nullptr;
        const double *doubles = nullptr;
        // Texts: record r's UTF-8 is text[ends[r - 1] .. ends[r]) (from 0 for r = 0).
        const char *text = nullptr;
        const qint64 *ends = nullptr;
        // Whether a record's cell holds a value; an empty cell otherwise.
        const std::vector<bool> *present = nullptr;
    };
    // \a column as held now; valid until the column changes.
    virtual Typed typed(int column) const = 0;

    // Works out now the whole-column statistics (what data() answers on the
    // statistic roles) of those of \a columns not known yet, together where
    // that is faster than one by one, so that data() then just reads them.
    virtual void prepareStatistics(const std::vector<int> &columns) const = 0;

protected:
    ~GridTableCells() = default;
};

} // namespace vel

#endif // VEL_QT_WIDGETS_GRIDTABLECELLS_P_H
