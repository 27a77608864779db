#ifndef VEL_QT_WIDGETS_CMWSORTFILTERPROXYMODEL_H
#define VEL_QT_WIDGETS_CMWSORTFILTERPROXYMODEL_H

#include "vel_qt_widgets_export.h"

#include <QtCore/QScopedPointer>
#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtCore/QVector>

class CMwSortFilterProxyModelPrivate;

/*!
    \brief A QSortFilterProxyModel that filters rows by a list of conditions.

    Sorting is Qt's own. Row filtering follows the filter list of
    CMwFilterWidget: one five-element row per condition (an unused element,
    the operator text, the header text of a source column, the comparator
    text and the value). The conditions are folded strictly from left to
    right starting from true, with no precedence and no early exit:
    "AND" narrows the running result, anything else widens it. A condition
    whose column header is not found is skipped. A group row (valid
    BranchParentRole data) is not tested itself: it passes when any of its
    records passes.

    \code
    CMwSortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    const QStringList ops = CMwSortFilterProxyModel::operatorTexts();
    const QStringList cmp = CMwSortFilterProxyModel::comparatorTexts();
    proxy.setFilterRows({{QVariant(), ops.at(0), QStringLiteral("Price"), cmp.at(2),
   QStringLiteral("10")}}); \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwSortFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /*! One condition, built from one filter row. */
    struct FilterCondition
    {
        QString op; //!< "AND" or "OR" (translated); anything else acts as "OR"
        QString column; //!< header text of the source column
        QString comparator; //!< one of comparatorTexts(); anything else never matches
        QVariant value; //!< the value the cell is compared with
    };

    /*! A proxy without source model and without conditions (every row passes). */
    explicit CMwSortFilterProxyModel(QObject *parent = nullptr);
    ~CMwSortFilterProxyModel() override;

    /*! Reimplemented to look the condition columns up again in the new
        source, and whenever its header or columns change. When the source is
        destroyed the proxy is reset: it has no rows and no columns. */
    void setSourceModel(QAbstractItemModel *model) override;

    /*!
        Replaces the conditions by those of \a filter (the filter list of
        CMwFilterWidget) and re-evaluates every row at once. Rows shorter than
        five elements are ignored with a warning.
    */
    void setFilterRows(QVector<QVector<QVariant>> filter);

    /*! Returns a copy of the current conditions, in evaluation order. */
    QVector<FilterCondition> filterConditions() const;

    /*!
        Returns the display data of source row 0 in the source column whose
        header text is \a column; an invalid QVariant if there is no such
        column (or no row).
    */
    QVariant firstValueOfColumn(const QString &column) const;

    /*!
        Returns the first source column whose horizontal header display data,
        as a string, equals \a column; -1 if there is none.
    */
    int sourceColumnFromName(const QString &column) const;

    /*! Folds the conditions over the source row \a source_row, as the class
        description says (a group row passes when one of its records does);
        true without conditions. */
    bool filterAcceptsRow(int source_row, const QModelIndex &source_parent) const override;

    /*! The two operator texts ("AND", "OR") as translated for this library. */
    static QStringList operatorTexts();
    /*! The eight comparator texts, as translated for this library, in picker order. */
    static QStringList comparatorTexts();

protected:
    /*! For subclasses that extend the private data: takes ownership of \a d. */
    CMwSortFilterProxyModel(CMwSortFilterProxyModelPrivate *d, QObject *parent);

    //! Private data; named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwSortFilterProxyModelPrivate> d_vel;

private Q_SLOTS:
    void onSourceHeaderChanged();
    void onSourceDestroyed();

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwSortFilterProxyModel)
    Q_DISABLE_COPY(CMwSortFilterProxyModel)
};

Q_DECLARE_TYPEINFO(CMwSortFilterProxyModel::FilterCondition, Q_MOVABLE_TYPE);

#endif // VEL_QT_WIDGETS_CMWSORTFILTERPROXYMODEL_H
