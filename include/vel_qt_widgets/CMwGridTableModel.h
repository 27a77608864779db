#ifndef VEL_QT_WIDGETS_CMWGRIDTABLEMODEL_H
#define VEL_QT_WIDGETS_CMWGRIDTABLEMODEL_H

#include "vel_qt_widgets_export.h"

#include <vel_qt_widgets/CMwGridRoles.h>

#include <QtCore/QAbstractItemModel>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <memory>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace vel {
class GridTableCells;
}

/*!
    \brief A ready item model for CMwHierarchicalGridView: a table of values
    with a header path per column, answering every grid role.

    - Horizontal header: HeaderPathRole gives the column's path (top level
      first); Qt::DisplayRole the path joined with " / ", so that the
      filter editor can tell equal leaf captions under different parents apart.
    - Items: Qt::DisplayRole and Qt::EditRole the value; RowNumberRole the
      record's position in the table (it follows the record through sorting,
      filtering and grouping); BranchParentRole on group rows.
    - Statistics roles: whole-column statistics from QVectorCalcStatistics
      over every record, answered on any item of the column (a sorting proxy
      asks on whatever record it shows first), computed on first request and
      kept until the column's data changes.
    - VisibleRowCountRole on any vertical section: the number of rows the
      tree can show at most (group rows plus records).

    groupByColumn() builds one group row per distinct value of a column,
    in the statistics' order, with the records below it; -1 removes them.
    Changes of shape (new table, grouping) are announced with layoutChanged(),
    which the grid listens to in order to rebuild its header, row numbers and
    statistics.

    The grid computes its statistics over a selection from the values held
    here, read directly rather than through data(), for a subclass too: a
    subclass shows other figures there only by holding other values.

    \code
    auto *model = new CMwGridTableModel(grid);
    model->loadCsv(QStringLiteral("measurements.csv"));   // "Site|Depth" -> two levels
    grid->setModel(model);
    QObject::connect(grid->horizontalHeader(), SIGNAL(groupByColumn(mw_int32)),
                     model, SLOT(groupByColumn(mw_int32)));
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwGridTableModel : public QAbstractItemModel
{
    Q_OBJECT
    /*! The column whose values group the records, or -1 (the default). */
    Q_PROPERTY(int groupColumn READ groupColumn WRITE groupByColumn NOTIFY groupColumnChanged)
    /*! The largest input, in bytes, that readCsv() and loadCsv() accept
        (default defaultCsvSizeLimit, 1 GiB). */
    Q_PROPERTY(qint64 csvSizeLimit READ csvSizeLimit WRITE setCsvSizeLimit)

public:
    /*! The default csvSizeLimit: 1 GiB, well above the CSV files the model
        is meant for, well below what an endless stream would take. */
    static constexpr qint64 defaultCsvSizeLimit = qint64(1) << 30;

    /*! An empty model: no columns, no records, no grouping. */
    explicit CMwGridTableModel(QObject *parent = nullptr);
    ~CMwGridTableModel() override;

    /*! Replaces columns and records. Records shorter than the column count
        read as empty cells; longer ones are cut. Removes any grouping. */
    void setTable(
        const QVector<QStringList> &headerPaths, const QVector<QVector<QVariant>> &records);
    /*! Replaces the columns, keeping the records. */
    void setHeaderPaths(const QVector<QStringList> &headerPaths);
    /*! Replaces the records, keeping the columns. */
    void setRecords(const QVector<QVector<QVariant>> &records);
    /*! Appends one record. */
    void appendRecord(const QVector<QVariant> &record);
    /*! Removes every record and column. */
    void clear();

    /*! The header path of \a column (top level first); empty outside the table. */
    QStringList headerPath(int column) const;
    /*! The number of records (group rows not counted). */
    int recordCount() const;
    /*! The value of a record's cell; invalid outside the table. */
    QVariant value(int record, int column) const;
    /*! Changes one cell (emits dataChanged for the record's row). */
    void setValue(int record, int column, const QVariant &value);

    /*!
        Reads a comma-separated table (UTF-8): the first line holds the
        captions (a caption "A|B|C" becomes the three-level path A, B, C),
        every further line one record; lines holding nothing are skipped.

        Fields follow RFC 4180: a double quote at the start of a field
        encloses separators, line breaks and doubled quotes, and the text
        inside is kept as it stands (a CR LF stays CR LF, whatever the
        device's text mode). Malformed input is read as spreadsheet programs
        read it: a quote inside an unquoted field (5'10") is an ordinary
        character, and text after a closing quote joins the field. A quote
        that is never closed takes the rest of the input into its field,
        with a warning naming the line where it opened. Non-empty fields
        beyond the header's count are dropped with one warning per read,
        naming the first line concerned.

        A column whose non-empty fields all read as numbers (C locale) holds
        numbers (int when they all fit, else double); other columns hold
        text; empty fields are empty cells.

        The input is read and parsed in blocks of a few MiB; the model's
        table is replaced only once the device has been read to its end.
        Returns false with a warning, and keeps the model as it was, when
        the input holds no line, holds a NUL byte (it is not text), or is
        larger than csvSizeLimit() (an endless stream stops there). After
        each block csvReadProgress() is emitted; a receiver may call
        cancelCsvRead(), and readCsv() then returns false, without a
        warning, with the model as it was.

        Loaded columns are held typed (numbers as such, texts as UTF-8 in
        one buffer), so that the model costs about the size of the file.
    */
    bool readCsv(QIODevice *device, QChar separator = QLatin1Char(','),
        QChar levelSeparator = QLatin1Char('|'));
    /*! readCsv() from a file, or returns false with a warning if the file
        cannot be opened. */
    bool loadCsv(const QString &fileName, QChar separator = QLatin1Char(','),
        QChar levelSeparator = QLatin1Char('|'));

    /*! The largest input readCsv() accepts, in bytes. */
    qint64 csvSizeLimit() const;
    /*! Sets the largest input readCsv() accepts; a value below 1 is
        refused with a warning. */
    void setCsvSizeLimit(qint64 bytes);

    /*! The grouped column, or -1. */
    int groupColumn() const;

    /*! The index of a record (top level, or below its group row when grouped)
        or of a group row. */
    QModelIndex index(
        int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    /*! The group row of a record while grouped, otherwise the root. */
    QModelIndex parent(const QModelIndex &child) const override;
    /*! Records (or group rows, when grouped) at the root; a group row's records below it. */
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    /*! The number of columns. */
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    /*! True where rowCount() is above 0. */
    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override;
    /*! The values and grid roles listed in the class description. */
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /*! The captions and grid roles listed in the class description. */
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /*! Enabled and selectable; records never have children. */
    Qt::ItemFlags flags(const QModelIndex &index) const override;

public Q_SLOTS:
    /*! Groups the records by \a iLogicalIndex's values; -1 ungroups.
        Connect the grid header's groupByColumn(mw_int32) here. */
    void groupByColumn(mw_int32 iLogicalIndex);

    /*! Stops the readCsv() or loadCsv() under way, which then returns
        false and leaves the model as it was. Meant to be called from a
        receiver of csvReadProgress() (for example a progress dialog's
        cancel button, while the receiver processes events); does nothing
        when no read is under way. */
    void cancelCsvRead();

Q_SIGNALS:
    /*! The grouped column changed (-1: no grouping). */
    void groupColumnChanged(int column);
    /*! Emitted by readCsv() and loadCsv() after each block read:
        \a bytesRead bytes of the input so far, out of \a bytesTotal, or
        -1 when the device cannot tell its size (a sequential device). The
        last emission of a complete read has \a bytesRead equal to the
        size of the input. */
    void csvReadProgress(qint64 bytesRead, qint64 bytesTotal);

private:
    class Private;
    // The grid's statistics over a selection read the cells through it.
    friend class vel::GridTableCells;
    std::unique_ptr<Private> const d;

    Q_DISABLE_COPY(CMwGridTableModel)
};

#endif // VEL_QT_WIDGETS_CMWGRIDTABLEMODEL_H
