// Subclasses built from outside the library through the installed headers:
// each brings a private class derived from the library's and hands it to the
// protected constructor, which takes it over. (CMwQWidget and
// CMwQFlowLayoutWidget take Qt's own QWidgetPrivate, which needs Qt's private
// headers rather than ours; they are left out.)
#include "subclasses.h"

#include <vel_qt_widgets/CMwFilterWidget.h>
#include <vel_qt_widgets/CMwHierarchicalGridView.h>
#include <vel_qt_widgets/CMwHierarchicalHeaderView.h>
#include <vel_qt_widgets/CMwPickerForTable.h>
#include <vel_qt_widgets/CMwQDoubleRangeSlider.h>
#include <vel_qt_widgets/CMwQDoubleSlider.h>
#include <vel_qt_widgets/CMwQRangeSlider.h>
#include <vel_qt_widgets/CMwQSlider.h>
#include <vel_qt_widgets/CMwQValueProxy.h>
#include <vel_qt_widgets/CMwSortFilterProxyModel.h>
#include <vel_qt_widgets/private/cmwfilterwidget_p.h>
#include <vel_qt_widgets/private/cmwhierarchicalgridview_p.h>
#include <vel_qt_widgets/private/cmwhierarchicalheaderview_p.h>
#include <vel_qt_widgets/private/cmwpickerfortable_p.h>
#include <vel_qt_widgets/private/cmwqdoublerangeslider_p.h>
#include <vel_qt_widgets/private/cmwqdoubleslider_p.h>
#include <vel_qt_widgets/private/cmwqrangeslider_p.h>
#include <vel_qt_widgets/private/cmwqslider_p.h>
#include <vel_qt_widgets/private/cmwqvalueproxy_p.h>
#include <vel_qt_widgets/private/cmwsortfilterproxymodel_p.h>

#include <QtGui/QStandardItemModel>
#include <QtWidgets/QStyleOptionSlider>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>

#include <cstdio>

namespace {

int failures = 0;

void check(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "consumer subclass: %s\n", what);
        ++failures;
    }
}

// A member of every consumer private class: counts the private objects made
// and still alive, so that the end can tell whether the library destroyed
// each one through its virtual destructor.
int privatesMade = 0;
int privatesAlive = 0;
struct LiveCount
{
    LiveCount()
    {
        ++privatesMade;
        ++privatesAlive;
    }
    ~LiveCount() { --privatesAlive; }
    LiveCount(const LiveCount &) = delete;
    LiveCount &operator=(const LiveCount &) = delete;
};

// Paints \a widget once, shown on the (offscreen) screen.
bool showAndPaint(QWidget *widget)
{
    widget->resize(240, 120);
    widget->show();
    return !widget->grab().isNull();
}

// Tick-aware slider ----------------------------------------------------------

class ConsumerSliderPrivate : public CMwQSliderPrivate
{
public:
    ConsumerSliderPrivate()
    {
        // The slider takes the object over with an empty tick item list.
        tickItems.append({10, QSlider::TicksAbove, QStringLiteral("stale")});
    }
    QString note = QStringLiteral("consumer slider");
    LiveCount live;
};

class ConsumerSlider : public CMwQSlider
{
    Q_OBJECT

public:
    explicit ConsumerSlider(QWidget *parent = nullptr)
        : CMwQSlider(new ConsumerSliderPrivate, parent)
    {
    }
    ConsumerSlider(Qt::Orientation orientation, QWidget *parent)
        : CMwQSlider(new ConsumerSliderPrivate, orientation, parent)
    {
    }
    ConsumerSliderPrivate *priv() const
    {
        return static_cast<ConsumerSliderPrivate *>(d_vel.data());
    }
};

void checkSlider()
{
    ConsumerSlider vertical;
    check(vertical.orientation() == Qt::Vertical, "CMwQSlider(d, parent) is not vertical");
    ConsumerSlider slider(Qt::Horizontal, nullptr);
    check(slider.orientation() == Qt::Horizontal,
        "CMwQSlider(d, orientation, parent) is not horizontal");
    check(slider.priv()->q_ptr == &slider, "CMwQSlider: the private object points elsewhere");
    check(slider.tickItemList().isEmpty(), "CMwQSlider: the private's tick items were kept");
    slider.setTickPosition(QSlider::TicksBelow);
    slider.setTickItemList({{25, QSlider::TicksBelow, QStringLiteral("quarter")}});
    check(slider.priv()->tickItems.size() == 1
            && slider.priv()->tickItems.at(0).text == QLatin1String("quarter"),
        "CMwQSlider: the tick items did not reach the subclass's private object");
    check(slider.priv()->note == QLatin1String("consumer slider"),
        "CMwQSlider: own private field lost");
    check(showAndPaint(&slider), "CMwQSlider subclass did not paint");
}

// Range slider ---------------------------------------------------------------

class ConsumerRangeSliderPrivate : public CMwQRangeSliderPrivate
{
public:
    ConsumerRangeSliderPrivate()
    {
        // Overwritten by the constructor with the slider's range.
        minimumValue = 33;
        maximumValue = 44;
    }
    mutable int lowerHandleStyled = 0;
    LiveCount live;
};

class ConsumerRangeSlider : public CMwQRangeSlider
{
    Q_OBJECT

public:
    explicit ConsumerRangeSlider(QWidget *parent = nullptr)
        : CMwQRangeSlider(new ConsumerRangeSliderPrivate, Qt::Horizontal, parent)
    {
    }
    ConsumerRangeSliderPrivate *priv() const
    {
        return static_cast<ConsumerRangeSliderPrivate *>(d_vel.data());
    }

protected:
    void initMinimumSliderStyleOption(QStyleOptionSlider *option) const override
    {
        CMwQRangeSlider::initMinimumSliderStyleOption(option);
        ++priv()->lowerHandleStyled;
    }
};

void checkRangeSlider()
{
    ConsumerRangeSlider slider;
    check(slider.minimumValue() == slider.minimum() && slider.maximumValue() == slider.maximum(),
        "CMwQRangeSlider: the handles do not start at the ends");
    slider.setRange(0, 100);
    slider.setValues(20, 60);
    check(slider.minimumValue() == 20 && slider.maximumValue() == 60,
        "CMwQRangeSlider: setValues(20, 60) did not hold");
    check(slider.priv()->minimumValue == 20 && slider.priv()->maximumValue == 60,
        "CMwQRangeSlider: the values did not reach the subclass's private object");
    check(showAndPaint(&slider), "CMwQRangeSlider subclass did not paint");
    check(slider.priv()->lowerHandleStyled > 0,
        "CMwQRangeSlider: the overridden lower handle style was not asked for");
}

// Value proxy ----------------------------------------------------------------

class ConsumerValueProxyPrivate : public CMwQValueProxyPrivate
{
public:
    double factor = 10.0;
    LiveCount live;
};

class ConsumerValueProxy : public CMwQValueProxy
{
    Q_OBJECT

public:
    explicit ConsumerValueProxy(QObject *parent = nullptr)
        : CMwQValueProxy(new ConsumerValueProxyPrivate, parent)
    {
    }
    ConsumerValueProxyPrivate *priv() const
    {
        return static_cast<ConsumerValueProxyPrivate *>(d_vel.data());
    }

    double proxyValueFromValue(double value) const override { return value * priv()->factor; }
    double valueFromProxyValue(double proxyValue) const override
    {
        return proxyValue / priv()->factor;
    }

    void setFactor(double factor)
    {
        Q_EMIT proxyAboutToBeModified();
        priv()->factor = factor;
        updateProxyValue();
        Q_EMIT proxyModified();
    }
};

void checkValueProxy()
{
    ConsumerValueProxy proxy;
    check(proxy.priv()->q_ptr == &proxy, "CMwQValueProxy: the private object points elsewhere");
    proxy.setValue(1.5);
    check(proxy.proxyValue() == 15.0 && proxy.priv()->proxyValue == 15.0,
        "CMwQValueProxy: setValue(1.5) with factor 10 did not give 15");
    proxy.setFactor(2.0);
    check(proxy.value() == 1.5 && proxy.proxyValue() == 3.0,
        "CMwQValueProxy: updateProxyValue() after a new factor did not give 3");
}

// Double slider --------------------------------------------------------------

class ConsumerDoubleSliderPrivate : public CMwQDoubleSliderPrivate
{
public:
    QString unit = QStringLiteral("mm");
    LiveCount live;
};

class ConsumerDoubleSlider : public CMwQDoubleSlider
{
    Q_OBJECT

public:
    explicit ConsumerDoubleSlider(QWidget *parent = nullptr)
        : CMwQDoubleSlider(new ConsumerDoubleSliderPrivate, Qt::Horizontal, parent)
    {
    }
    ConsumerDoubleSliderPrivate *priv() const
    {
        return static_cast<ConsumerDoubleSliderPrivate *>(d_vel.data());
    }
};

void checkDoubleSlider()
{
    ConsumerDoubleSlider slider;
    check(slider.orientation() == Qt::Horizontal, "CMwQDoubleSlider: not horizontal");
    check(slider.slider() && slider.priv()->slider == slider.slider(),
        "CMwQDoubleSlider: the private object holds no inner slider");
    slider.setRange(0.0, 1.0);
    slider.setSingleStep(0.25);
    slider.setValue(0.5);
    check(slider.value() == 0.5 && slider.slider()->value() == 2,
        "CMwQDoubleSlider: 0.5 in steps of 0.25 is not inner position 2");
    ConsumerValueProxy proxy;
    slider.setValueProxy(&proxy);
    check(slider.valueProxy() == &proxy && slider.priv()->valueProxy == &proxy,
        "CMwQDoubleSlider: the value proxy did not reach the private object");
    slider.setValueProxy(nullptr);
    check(slider.priv()->unit == QLatin1String("mm"), "CMwQDoubleSlider: own private field lost");
    check(showAndPaint(&slider), "CMwQDoubleSlider subclass did not paint");
}

// Double range slider --------------------------------------------------------

class ConsumerDoubleRangeSliderPrivate : public CMwQDoubleRangeSliderPrivate
{
public:
    LiveCount live;
};

class ConsumerDoubleRangeSlider : public CMwQDoubleRangeSlider
{
    Q_OBJECT

public:
    explicit ConsumerDoubleRangeSlider(QWidget *parent = nullptr)
        : CMwQDoubleRangeSlider(new ConsumerDoubleRangeSliderPrivate, Qt::Horizontal, parent)
    {
    }
    ConsumerDoubleRangeSliderPrivate *priv() const
    {
        return static_cast<ConsumerDoubleRangeSliderPrivate *>(d_vel.data());
    }
    // The inner slider is protected.
    CMwQRangeSlider *inner() const { return slider(); }
};

void checkDoubleRangeSlider()
{
    ConsumerDoubleRangeSlider slider;
    check(slider.inner() && slider.priv()->slider == slider.inner(),
        "CMwQDoubleRangeSlider: the private object holds no inner slider");
    slider.setRange(0.0, 1.0);
    slider.setSingleStep(0.25);
    slider.setValues(0.25, 0.75);
    check(slider.minimumValue() == 0.25 && slider.maximumValue() == 0.75,
        "CMwQDoubleRangeSlider: setValues(0.25, 0.75) did not hold");
    check(slider.inner()->minimumValue() == 1 && slider.inner()->maximumValue() == 3,
        "CMwQDoubleRangeSlider: 0.25 and 0.75 in steps of 0.25 are not inner values 1 and 3");
    check(showAndPaint(&slider), "CMwQDoubleRangeSlider subclass did not paint");
}

// Filter proxy model and filter editor ---------------------------------------

// Three rows with a "Price" column of 5, 15 and 20.
void fillPrices(QStandardItemModel *model)
{
    model->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Price")});
    const int prices[] = {5, 15, 20};
    for (int price : prices) {
        auto *name = new QStandardItem(QStringLiteral("item %1").arg(price));
        auto *value = new QStandardItem;
        value->setData(price, Qt::DisplayRole);
        model->appendRow({name, value});
    }
}

class ConsumerProxyModelPrivate : public CMwSortFilterProxyModelPrivate
{
public:
    explicit ConsumerProxyModelPrivate(CMwSortFilterProxyModel *q)
        : CMwSortFilterProxyModelPrivate(q)
    {
    }
    LiveCount live;
};

class ConsumerProxyModel : public CMwSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ConsumerProxyModel(QObject *parent = nullptr)
        : CMwSortFilterProxyModel(new ConsumerProxyModelPrivate(this), parent)
    {
    }
    ConsumerProxyModelPrivate *priv() const
    {
        return static_cast<ConsumerProxyModelPrivate *>(d_vel.data());
    }
};

void checkProxyModel()
{
    QStandardItemModel model;
    fillPrices(&model);
    ConsumerProxyModel proxy;
    check(proxy.priv()->q_ptr == &proxy,
        "CMwSortFilterProxyModel: the private object points elsewhere");
    proxy.setSourceModel(&model);
    check(
        proxy.rowCount() == 3, "CMwSortFilterProxyModel: not all three rows pass without a filter");
    const QStringList ops = CMwSortFilterProxyModel::operatorTexts();
    const QStringList cmp = CMwSortFilterProxyModel::comparatorTexts();
    // Index 2 of the comparators is "greater than".
    proxy.setFilterRows(
        {{QVariant(), ops.at(0), QStringLiteral("Price"), cmp.at(2), QStringLiteral("10")}});
    check(proxy.priv()->conditions.size() == 1,
        "CMwSortFilterProxyModel: the condition did not reach the private object");
    check(proxy.rowCount() == 2, "CMwSortFilterProxyModel: Price > 10 does not leave two rows");
}

class ConsumerFilterWidgetPrivate : public CMwFilterWidgetPrivate
{
public:
    explicit ConsumerFilterWidgetPrivate(CMwFilterWidget *q)
        : CMwFilterWidgetPrivate(q)
    {
    }
    LiveCount live;
};

class ConsumerFilterWidget : public CMwFilterWidget
{
    Q_OBJECT

public:
    explicit ConsumerFilterWidget(QWidget *parent = nullptr)
        : CMwFilterWidget(new ConsumerFilterWidgetPrivate(this), parent)
    {
    }
    ConsumerFilterWidgetPrivate *priv() const
    {
        return static_cast<ConsumerFilterWidgetPrivate *>(d_vel.data());
    }
    // addRow() is protected.
    void appendRow() { addRow(-1); }
};

void checkFilterWidget()
{
    QStandardItemModel model;
    fillPrices(&model);
    ConsumerProxyModel proxy;
    proxy.setSourceModel(&model);
    ConsumerFilterWidget editor;
    check(editor.priv()->q_ptr == &editor, "CMwFilterWidget: the private object points elsewhere");
    check(editor.columnCount() == 5, "CMwFilterWidget: not five columns");
    editor.setRefModel(&proxy);
    check(editor.priv()->m_refModel == &proxy,
        "CMwFilterWidget: the reference model did not reach the private object");
    const int rows = editor.rowCount();
    editor.appendRow();
    check(editor.rowCount() == rows + 1, "CMwFilterWidget: addRow(-1) appended no row");
    check(showAndPaint(&editor), "CMwFilterWidget subclass did not paint");
}

// Table picker ---------------------------------------------------------------

class ConsumerPickerPrivate : public CMwPickerForTablePrivate
{
public:
    explicit ConsumerPickerPrivate(CMwPickerForTable *q)
        : CMwPickerForTablePrivate(q)
    {
    }
    LiveCount live;
};

class ConsumerPicker : public CMwPickerForTable
{
    Q_OBJECT

public:
    explicit ConsumerPicker(QAbstractItemModel *model, QWidget *parent = nullptr)
        : CMwPickerForTable(new ConsumerPickerPrivate(this), parent)
    {
        // What the public constructors do after the private object is set.
        init(model, parent);
        setCurrentIndex(-1);
    }
    ConsumerPickerPrivate *priv() const
    {
        return static_cast<ConsumerPickerPrivate *>(d_vel.data());
    }
};

void checkPicker()
{
    QStandardItemModel model;
    for (const char *text : {"a", "b", "c"})
        model.appendRow(new QStandardItem(QString::fromLatin1(text)));
    ConsumerPicker picker(&model);
    check(
        picker.priv()->q_ptr == &picker, "CMwPickerForTable: the private object points elsewhere");
    check(picker.count() == 3 && picker.currentIndex() == -1,
        "CMwPickerForTable: not three items with none chosen");
    check(picker.model() == &model, "CMwPickerForTable: init() did not take the model");
    picker.setCurrentIndex(1);
    check(picker.currentText() == QLatin1String("b"), "CMwPickerForTable: item 1 is not \"b\"");
    check(showAndPaint(&picker), "CMwPickerForTable subclass did not paint");
}

// Hierarchical header and grid -----------------------------------------------

class ConsumerHeaderPrivate : public CMwHierarchicalHeaderViewPrivate
{
public:
    LiveCount live;
};

class ConsumerHeader : public CMwHierarchicalHeaderView
{
    Q_OBJECT

public:
    explicit ConsumerHeader(QWidget *parent = nullptr)
        : CMwHierarchicalHeaderView(new ConsumerHeaderPrivate, Qt::Horizontal, parent)
    {
    }
    ConsumerHeaderPrivate *priv() const
    {
        return static_cast<ConsumerHeaderPrivate *>(d_vel.data());
    }
};

void checkHeader()
{
    QStandardItemModel model;
    fillPrices(&model);
    QStandardItemModel captions;
    captions.setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Price")});
    QTreeView tree;
    auto *header = new ConsumerHeader(&tree);
    check(header->priv()->q_ptr == header && header->priv()->cache,
        "CMwHierarchicalHeaderView: the private object is not set up");
    tree.setHeader(header);
    tree.setModel(&model);
    header->setHeaderModel(&captions);
    check(header->headerModel() == &captions && header->priv()->headerModel == &captions,
        "CMwHierarchicalHeaderView: the header model did not reach the private object");
    check(showAndPaint(&tree), "CMwHierarchicalHeaderView subclass did not paint");
}

class ConsumerGridPrivate : public CMwHierarchicalGridViewPrivate
{
public:
    LiveCount live;
};

class ConsumerGrid : public CMwHierarchicalGridView
{
    Q_OBJECT

public:
    explicit ConsumerGrid(QWidget *parent = nullptr)
        : CMwHierarchicalGridView(new ConsumerGridPrivate, parent)
    {
    }
    ConsumerGridPrivate *priv() const { return static_cast<ConsumerGridPrivate *>(d_vel.data()); }
};

void checkGrid()
{
    QStandardItemModel model;
    fillPrices(&model);
    ConsumerGrid grid;
    check(grid.priv()->q_ptr == &grid,
        "CMwHierarchicalGridView: the private object points elsewhere");
    check(grid.priv()->dataView() && grid.priv()->statisticTableView() && grid.priv()->filterTable()
            && grid.priv()->rowNumbers(),
        "CMwHierarchicalGridView: the private object does not find the grid's children");
    grid.setModel(&model);
    auto *proxy = grid.priv()->dataView()
        ? qobject_cast<CMwSortFilterProxyModel *>(grid.priv()->dataView()->model())
        : nullptr;
    check(proxy && proxy->sourceModel() == &model && proxy->rowCount() == 3,
        "CMwHierarchicalGridView: the body does not show the model through a filter proxy");
    check(showAndPaint(&grid), "CMwHierarchicalGridView subclass did not paint");
}

} // namespace

int runSubclassChecks()
{
    checkSlider();
    checkRangeSlider();
    checkValueProxy();
    checkDoubleSlider();
    checkDoubleRangeSlider();
    checkProxyModel();
    checkFilterWidget();
    checkPicker();
    checkHeader();
    checkGrid();
    // One private object per subclass object made above, each destroyed with
    // its owner: the value proxy twice, the slider twice and the proxy model
    // twice.
    check(privatesMade == 13, "not every subclass made its own private object");
    check(privatesAlive == 0, "a private object outlived its widget");
    return failures;
}

#include "subclasses.moc"
