#ifndef VEL_QT_WIDGETS_CMWFILTERVALUEDELEGATE_P_H
#define VEL_QT_WIDGETS_CMWFILTERVALUEDELEGATE_P_H

#include <QtCore/QPointer>
#include <QtWidgets/QStyledItemDelegate>

QT_BEGIN_NAMESPACE
class QTableWidget;
QT_END_NAMESPACE

class CMwFilterKeyNavigator;

// The value column's delegate: Tab in an open editor commits the value and
// goes on with the editor's own walk instead of opening the next cell.
class CMwFilterValueDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    CMwFilterValueDelegate(CMwFilterKeyNavigator *navigator, QTableWidget *table);

protected:
    bool eventFilter(QObject *editor, QEvent *event) override;

private:
    QPointer<CMwFilterKeyNavigator> m_navigator;
    QTableWidget *m_table;
};

#endif // VEL_QT_WIDGETS_CMWFILTERVALUEDELEGATE_P_H
