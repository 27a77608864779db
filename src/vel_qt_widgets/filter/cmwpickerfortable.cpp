#include "cmwpickerfortable_p.h"

#include "cmwfiltervocabulary_p.h"

#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionComboBox>
#include <QtWidgets/QStylePainter>

CMwPickerForTablePrivate::CMwPickerForTablePrivate(CMwPickerForTable *q)
    : q_ptr(q)
{
}

CMwPickerForTablePrivate::~CMwPickerForTablePrivate() = default;

void CMwPickerForTablePrivate::updateDescription()
{
    Q_Q(CMwPickerForTable);
    if (q->accessibleDescription() != ownDescription)
        return;
    QString description;
    if (q->currentIndex() == -1 && q->currentText().isEmpty())
        description = m_text.isEmpty() ? VelFilterVocabulary::selectText() : m_text;
    ownDescription = description;
    q->setAccessibleDescription(description);
}

CMwPickerForTable::CMwPickerForTable(QWidget *parent)
    : CMwPickerForTable(new CMwPickerForTablePrivate(this), parent)
{
    init(nullptr, parent);
    setCurrentIndex(-1);
}

CMwPickerForTable::CMwPickerForTable(QAbstractItemModel *model, QWidget *parent)
    : CMwPickerForTable(new CMwPickerForTablePrivate(this), parent)
{
    init(model, parent);
    setCurrentIndex(-1);
}

CMwPickerForTable::CMwPickerForTable(
    const QString &text, QAbstractItemModel *model, QWidget *parent)
    : CMwPickerForTable(new CMwPickerForTablePrivate(this), parent)
{
    Q_D(CMwPickerForTable);
    init(model, parent);
    setCurrentIndex(findData(text, Qt::DisplayRole, Qt::MatchExactly | Qt::MatchCaseSensitive));
    d->m_text = text;
    d->updateDescription();
}

CMwPickerForTable::CMwPickerForTable(CMwPickerForTablePrivate *d, QWidget *parent)
    : QComboBox(parent)
    , d_vel(d)
{
}

CMwPickerForTable::~CMwPickerForTable() = default;

void CMwPickerForTable::init(QAbstractItemModel *model, QWidget *parent)
{
    Q_D(CMwPickerForTable);
    Q_UNUSED(parent) // already given to QComboBox
    d->m_icon = QIcon(QStringLiteral(":/w32_commonres/res/plus.svg"));
    if (model)
        setModel(model);
    connect(this, SIGNAL(currentIndexChanged(int)), this, SLOT(onCurrentIndexChanged(int)));
    setEditable(false);
    setFrame(false);
    d->updateDescription();
}

void CMwPickerForTable::setIcon(const QIcon &icon) { setItemIcon(0, icon); }

void CMwPickerForTable::setText(const QString &text) { setItemText(0, text); }

QAbstractItemModel *CMwPickerForTable::model() const { return QComboBox::model(); }

void CMwPickerForTable::initStyleOption(QStyleOptionComboBox *option) const
{
    Q_D(const CMwPickerForTable);
    if (!option)
        return;
    QComboBox::initStyleOption(option);
    if (currentIndex() != -1 || !option->currentText.isEmpty())
        return;
    if (d->m_text.isEmpty()) {
        option->currentText = VelFilterVocabulary::selectText();
        option->currentIcon = d->m_icon;
    } else {
        option->currentText = d->m_text;
    }
}

void CMwPickerForTable::showPopup()
{
    bool bShow = true;
    Q_EMIT popupWillShow(bShow);
    if (bShow)
        QComboBox::showPopup();
}

void CMwPickerForTable::hidePopup()
{
    QComboBox::hidePopup();
    Q_EMIT popupDidHide();
}

void CMwPickerForTable::focusInEvent(QFocusEvent *event)
{
    QComboBox::focusInEvent(event);
    Q_EMIT itemFocused();
}

// QComboBox paints through its own, non-virtual initStyleOption, which knows
// nothing of the placeholder; hence the widget paints itself.
void CMwPickerForTable::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    style()->drawComplexControl(QStyle::CC_ComboBox, &option, &painter, this);
    style()->drawControl(QStyle::CE_ComboBoxLabel, &option, &painter, this);
}

void CMwPickerForTable::onCurrentIndexChanged(int index)
{
    Q_D(CMwPickerForTable);
    d->updateDescription();
    // The popup closes (and says so) before the choice is reported.
    hidePopup();
    QModelIndex modelIndex;
    if (rootModelIndex().isValid())
        modelIndex = rootModelIndex().model()->index(index, 0, rootModelIndex());
    else if (model())
        modelIndex = model()->index(index, 0, QModelIndex());
    Q_EMIT itemSelected(modelIndex);
}
