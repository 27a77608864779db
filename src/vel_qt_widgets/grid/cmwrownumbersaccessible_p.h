#ifndef VEL_QT_WIDGETS_CMWROWNUMBERSACCESSIBLE_P_H
#define VEL_QT_WIDGETS_CMWROWNUMBERSACCESSIBLE_P_H

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

class CMwVHeaderView;

// The row-number header: one row-header element per section, named by the
// number shown beside that row.
class CMwRowNumbersAccessible : public QAccessibleWidget
{
public:
    explicit CMwRowNumbersAccessible(QWidget *header);
    ~CMwRowNumbersAccessible() override;

    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;

    CMwVHeaderView *header() const;
    // The text the header shows for section, empty when none.
    QString numberText(int section) const;
    QRect sectionRect(int section) const;

private:
    mutable QHash<int, QAccessible::Id> m_cells;
};

// One row number.
class CMwRowNumberCellAccessible : public QAccessibleInterface
{
public:
    CMwRowNumberCellAccessible(CMwRowNumbersAccessible *parent, int section);

    bool isValid() const override;
    QObject *object() const override;
    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text t, const QString &text) override;
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;

    int section() const { return m_section; }

private:
    QPointer<QWidget> m_header;
    int m_section;
};

#endif // VEL_QT_WIDGETS_CMWROWNUMBERSACCESSIBLE_P_H
