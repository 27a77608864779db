#ifndef VEL_QT_WIDGETS_CMWPICKERFORTABLE_H
#define VEL_QT_WIDGETS_CMWPICKERFORTABLE_H

#include "vel_qt_widgets_export.h"

#include <QtCore/QModelIndex>
#include <QtCore/QScopedPointer>
#include <QtWidgets/QComboBox>

QT_BEGIN_NAMESPACE
class QStyleOptionComboBox;
QT_END_NAMESPACE

class CMwPickerForTablePrivate;

/*!
    \brief A frameless, non-editable combo box for table cells.

    While no item is current it shows a placeholder: "<select>" (translated)
    with a plus icon, or the text given to the constructor. Listeners of
    popupWillShow() may keep the popup from opening; the chosen item is also
    reported as a model index (itemSelected()), after popupDidHide().

    \code
    auto *picker = new CMwPickerForTable(table);
    picker->addItems({"AND", "OR"});
    picker->setCurrentIndex(-1); // shows "<select>"
    connect(picker, SIGNAL(popupWillShow(bool&)), this, SLOT(onPopupWillShow(bool&)));
    \endcode
*/
class VEL_QT_WIDGETS_EXPORT CMwPickerForTable : public QComboBox
{
    Q_OBJECT

public:
    /*! An empty picker with nothing chosen. */
    explicit CMwPickerForTable(QWidget *parent = nullptr);
    /*! A picker over \a model (may be null) with nothing chosen. */
    explicit CMwPickerForTable(QAbstractItemModel *model, QWidget *parent = nullptr);
    /*!
        A picker over \a model whose current item is the one showing exactly
        \a text (none if there is no such item), and which shows \a text as
        placeholder, without icon, while nothing is chosen.
    */
    CMwPickerForTable(const QString &text, QAbstractItemModel *model, QWidget *parent = nullptr);
    ~CMwPickerForTable() override;

    /*! Sets the icon of item 0 (not the placeholder icon); nothing if there is no item. */
    virtual void setIcon(const QIcon &icon);
    /*! Sets the text of item 0 (not the placeholder text); nothing if there is no item. */
    virtual void setText(const QString &text);
    /*! The combo box's model. */
    virtual QAbstractItemModel *model() const;

    /*! Fills \a option like QComboBox does, plus the placeholder when nothing is chosen. */
    void initStyleOption(QStyleOptionComboBox *option) const;

    /*! Emits popupWillShow() and opens the popup only if no listener vetoed it. */
    void showPopup() override;
    /*! Closes the popup, then emits popupDidHide(). */
    void hidePopup() override;

Q_SIGNALS:
    /*! Emitted before the popup opens; set \a bShow to false to keep it closed. */
    void popupWillShow(bool &bShow);
    /*! Emitted after every hidePopup(). */
    void popupDidHide();
    /*! Emitted after every change of the current item; invalid for no item. */
    void itemSelected(QModelIndex index);
    /*! Emitted after every focus-in. */
    void itemFocused();

protected Q_SLOTS:
    void onCurrentIndexChanged(int index);

protected:
    CMwPickerForTable(CMwPickerForTablePrivate *d, QWidget *parent);

    void init(QAbstractItemModel *model, QWidget *parent);

    void focusInEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

    // Named apart from QObject::d_ptr, which it would otherwise hide.
    const QScopedPointer<CMwPickerForTablePrivate> d_vel;

private:
    Q_DECLARE_PRIVATE_D(d_vel, CMwPickerForTable)
    Q_DISABLE_COPY(CMwPickerForTable)
};

#endif // VEL_QT_WIDGETS_CMWPICKERFORTABLE_H
