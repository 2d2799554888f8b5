#include "platform/controls/ListView.h"

#include "platform/controls/ListModel.h"
#include "platform/controls/ListSelection.h"
#include "platform/controls/ListViewEvents.h"
#include "platform/controls/mouse.h"
#include "platform/twips.h"

#include <QHeaderView>
#include <QListView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTreeView>

namespace {

/// Has a view show `model` with `selection`.
void attach(QAbstractItemView& view, QAbstractItemModel* model, QItemSelectionModel* selection)
{
    if (view.model() == model)
        return;
    const QItemSelectionModel* before = view.selectionModel();
    view.setModel(model);
    const QItemSelectionModel* own = view.selectionModel();
    view.setSelectionModel(selection);
    delete own;
    delete before;
}

void set_up(QAbstractItemView& view)
{
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setMouseTracking(true);
    view.viewport()->setMouseTracking(true);
}

QTreeView* new_report(ListViewEvents& events, QWidget* parent)
{
    auto* report = new RowView<QTreeView>(events, parent);
    set_up(*report);
    report->setRootIsDecorated(false);
    report->setItemsExpandable(false);
    report->setExpandsOnDoubleClick(false);
    report->setUniformRowHeights(true);
    report->setAllColumnsShowFocus(true);
    QHeaderView* header = report->header();
    header->setSectionsClickable(true);
    header->setSectionsMovable(false);
    header->setStretchLastSection(false);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    return report;
}

QListView* new_list(ListViewEvents& events, QWidget* parent)
{
    auto* list = new RowView<QListView>(events, parent);
    set_up(*list);
    list->setViewMode(QListView::ListMode);
    list->setFlow(QListView::TopToBottom);
    list->setWrapping(true);
    list->setResizeMode(QListView::Adjust);
    list->setUniformItemSizes(true);
    list->setSelectionRectVisible(true);
    return list;
}

} // namespace

ListView::ListView(QWidget* parent)
    : QStackedWidget(parent),
      model_(std::make_unique<ListModel>()),
      selection_(std::make_unique<ListSelection>(*model_)),
      events_(std::make_unique<ListViewEvents>(*this, *model_, *selection_)),
      report_(new_report(*events_, this)),
      list_(new_list(*events_, this))
{
    addWidget(report_);
    addWidget(list_);
    attach(*report_, model_.get(), selection_->shown());
    set_MultiSelect(false);
    setFocusProxy(report_);

    QHeaderView* header = report_->header();
    header->viewport()->setMouseTracking(true);
    header->viewport()->installEventFilter(this);
    connect(header, &QHeaderView::sectionClicked, this, [this](int column) {
        // Qt has turned the arrow already; it is to tell the last sort, and this click need not sort.
        show_sort_indicator();
        Q_EMIT ColumnClick(column);
    });
    connect(selection_.get(), &ListSelection::Outdated, this, [this] { view()->viewport()->update(); });
}

ListView::~ListView()
{
    // The views use the other parts until they are gone, and are to learn nothing more meanwhile.
    model_->hold();
    events_->drop_label_edit();
    delete list_;
    delete report_;
}

void ListView::set_ColumnHeaders(const std::vector<ColumnHeader>& headers)
{
    model_->set_headers(headers);
    selection_->set_changed();
    for (int column = 0; column < static_cast<int>(headers.size()); ++column) {
        const int width = to_pixels(headers[static_cast<std::size_t>(column)].Width);
        report_->setColumnHidden(column, width == 0);
        if (width != 0)
            report_->setColumnWidth(column, width);
    }
}

const std::vector<ColumnHeader>& ListView::ColumnHeaders() const
{
    return model_->headers();
}

void ListView::set_SmallIcons(const ImageList& images)
{
    model_->set_images(images);
}

void ListView::set_Checkboxes(bool on)
{
    model_->set_checkboxes(on);
}

void ListView::set_MultiSelect(bool on)
{
    model_->set_multi_select(on);
    selection_->set_changed();
    const auto mode = on ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection;
    report_->setSelectionMode(mode);
    list_->setSelectionMode(mode);
}

ListView::ViewMode ListView::View() const
{
    return currentWidget() == report_ ? ViewMode::report : ViewMode::list;
}

void ListView::set_View(ViewMode mode)
{
    if (mode == View())
        return;
    events_->cancel_label_edit();
    const bool had_focus = view()->hasFocus();
    // The list mode's view follows the rows only while it is shown: arranging them costs time.
    if (mode == ViewMode::list)
        attach(*list_, model_.get(), selection_->shown());
    else
        list_->setModel(nullptr);
    setCurrentIndex(mode == ViewMode::list ? 1 : 0);
    setFocusProxy(currentWidget());
    if (had_focus)
        setFocus();
    if (SelectedItem() != 0)
        ensure_visible(SelectedItem());
}

int ListView::Count() const
{
    return model_->Count();
}

void ListView::Clear()
{
    events_->cancel_label_edit();
    model_->Clear();
    selection_->set_changed();
    is_sorted_ = false;
    show_sort_indicator();
    view()->verticalScrollBar()->setValue(0);
    view()->horizontalScrollBar()->setValue(0);
}

int ListView::Add(const QString& key, const QString& text)
{
    const int index = model_->Add(key, text);
    if (index == 1)
        selection_->set_changed();
    return index;
}

const ListRow& ListView::Item(int index) const
{
    return model_->Item(index);
}

void ListView::set_Key(int index, const QString& key)
{
    model_->set_Key(index, key);
}

void ListView::set_Text(int index, const QString& text)
{
    model_->set_Text(index, text);
}

void ListView::set_SmallIcon(int index, int image)
{
    model_->set_SmallIcon(index, image);
}

void ListView::set_SubItem(int index, int column, const QString& text)
{
    model_->set_SubItem(index, column, text);
}

void ListView::set_Checked(int index, bool checked)
{
    model_->set_Checked(index, checked);
}

void ListView::set_Selected(int index, bool selected)
{
    const int before = SelectedItem();
    if (model_->set_Selected(index, selected))
        selection_->set_changed();
    if (SelectedItem() != before)
        events_->cancel_label_edit();
}

void ListView::clear_selection()
{
    if (model_->clear_selection())
        selection_->set_changed();
}

int ListView::SelectedItem() const
{
    return model_->SelectedItem();
}

int ListView::HitTest(QPoint point) const
{
    const QPoint inside = view()->viewport()->mapFrom(this, point);
    return view()->viewport()->rect().contains(inside) ? view()->indexAt(inside).row() + 1 : 0;
}

void ListView::ensure_visible(int index)
{
    const QModelIndex row = model_->index(index - 1, 0);
    if (row.isValid())
        view()->scrollTo(row);
}

void ListView::StartLabelEdit()
{
    events_->start_label_edit();
}

bool ListView::is_editing() const
{
    return events_->is_editing();
}

void ListView::set_OLEDragMode(bool automatic)
{
    events_->set_drags_rows(automatic);
}

void ListView::sort(int column, Order order)
{
    events_->cancel_label_edit();
    model_->sort(column, order);
    selection_->set_changed();
    sort_key_ = column;
    sort_order_ = order;
    is_sorted_ = true;
    show_sort_indicator();
}

void ListView::show_sort_indicator()
{
    report_->header()->setSortIndicator(is_sorted_ ? sort_key_ : -1,
                                        sort_order_ == Order::ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

int ListView::SortKey() const
{
    return sort_key_;
}

ListView::Order ListView::SortOrder() const
{
    return sort_order_;
}

ListView::Update::Update(ListView& list) : list_(list)
{
    list_.model_->hold();
}

ListView::Update::~Update()
{
    if (!list_.model_->release())
        return;
    list_.selection_->set_changed();
    if (list_.SelectedItem() != 0)
        list_.ensure_visible(list_.SelectedItem());
}

QAbstractItemView* ListView::view() const
{
    return View() == ViewMode::report ? static_cast<QAbstractItemView*>(report_) : list_;
}

QRect ListView::shown_rect(QRect rect) const
{
    const QWidget* viewport = view()->viewport();
    const QRect shown = rect.intersected(viewport->rect());
    return shown.isEmpty() ? QRect() : QRect(viewport->mapTo(this, shown.topLeft()), shown.size());
}

QRect ListView::row_rect(int index) const
{
    return shown_rect(view()->visualRect(model_->index(index - 1, 0)));
}

QRect ListView::check_rect(int index) const
{
    const QModelIndex row = model_->index(index - 1, 0);
    if (!row.isValid() || !model_->has_checkboxes())
        return {};
    return shown_rect(View() == ViewMode::report ? static_cast<RowView<QTreeView>*>(report_)->check_rect(row)
                                                 : static_cast<RowView<QListView>*>(list_)->check_rect(row));
}

bool ListView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseMove) {
        const auto* move = static_cast<QMouseEvent*>(event);
        const QPoint point = report_->header()->viewport()->mapTo(this, move->position().toPoint());
        Q_EMIT MouseMove(mouse_buttons_number(move->buttons()), point);
    }
    return QStackedWidget::eventFilter(watched, event);
}

void ListView::showEvent(QShowEvent* event)
{
    report_->setAccessibleName(accessibleName());
    list_->setAccessibleName(accessibleName());
    QStackedWidget::showEvent(event);
}
