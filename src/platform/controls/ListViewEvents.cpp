#include "platform/controls/ListViewEvents.h"

#include "platform/controls/LabelEditor.h"
#include "platform/controls/ListModel.h"
#include "platform/controls/ListSelection.h"
#include "platform/controls/drag.h"
#include "platform/controls/focus.h"
#include "platform/controls/mouse.h"
#include "platform/display_text.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QStyle>

namespace {

const QStyle* style_of(const QStyleOptionViewItem& option)
{
    return option.widget != nullptr ? option.widget->style() : QApplication::style();
}

} // namespace

QRect RowDelegate::check_rect(QStyleOptionViewItem option, const QModelIndex& index) const
{
    initStyleOption(&option, index);
    return style_of(option)->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, option.widget);
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (!as_longest_)
        return QStyledItemDelegate::sizeHint(option, index);
    QStyleOptionViewItem longest = option;
    initStyleOption(&longest, index);
    longest.text = static_cast<const ListModel*>(index.model())->longest_text();
    return style_of(longest)->sizeFromContents(QStyle::CT_ItemViewItem, &longest, {}, longest.widget);
}

ListViewEvents::ListViewEvents(ListView& list, ListModel& model, ListSelection& selection)
    : list_(list), model_(model), selection_(selection)
{
}

void ListViewEvents::prepare()
{
    if (!selection_.is_outdated())
        return;
    // What code selects doesn't move what is shown.
    QAbstractItemView* view = list_.view();
    view->setAutoScroll(false);
    selection_.update();
    view->setAutoScroll(true);
}

void ListViewEvents::press(const QMouseEvent& event, const PassOn& pass_on)
{
    const QPoint point = in_list(event);
    const bool is_check = takes_check_press(event);
    has_press_ = true;
    has_dragged_ = false;
    pull_from_.reset();
    Q_EMIT list_.MouseDown(mouse_button_number(event.button()), point);
    if (is_check)
        return;
    prepare();
    pass_on();
    const int row = list_.HitTest(point);
    // A press that takes the row out of the selection chooses nothing.
    if (row == 0 || !model_.Item(row).Selected)
        return;
    if (drags_rows_ && event.button() == Qt::LeftButton)
        pull_from_ = point;
    Q_EMIT list_.ItemClick(row);
}

void ListViewEvents::move(const QMouseEvent& event, const PassOn& pass_on)
{
    Q_EMIT list_.MouseMove(mouse_buttons_number(event.buttons()), in_list(event));
    const bool is_left = event.buttons().testFlag(Qt::LeftButton);
    if (is_left && pull_from_.has_value()) {
        // Qt's view would select the rows passed until the pull is long enough.
        if ((in_list(event) - *pull_from_).manhattanLength() >= QApplication::startDragDistance())
            start_drag();
        return;
    }
    // A press on a check box, or one that has become a drag, selects nothing on its way.
    if (!is_left || (pressed_check_ == 0 && !has_dragged_))
        pass_on();
}

void ListViewEvents::release(const QMouseEvent& event, const PassOn& pass_on)
{
    pull_from_.reset();
    if (std::exchange(has_dragged_, false))
        return;
    const QPoint point = in_list(event);
    const i16 button = mouse_button_number(event.button());
    if (event.button() == Qt::LeftButton && pressed_check_ != 0) {
        const int pressed = std::exchange(pressed_check_, 0);
        if (check_at(point) == pressed)
            toggle(pressed);
    } else {
        pass_on();
    }
    Q_EMIT list_.MouseUp(button, point);
}

void ListViewEvents::double_click(const QMouseEvent& event, const PassOn& pass_on)
{
    if (!takes_check_press(event))
        pass_on();
    if (event.button() == Qt::LeftButton)
        Q_EMIT list_.DblClick();
}

void ListViewEvents::key(const QKeyEvent& event, const PassOn& pass_on)
{
    const int before = model_.SelectedItem();
    if (event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier) {
        Q_EMIT list_.ContextKey();
        return;
    }
    if (event.key() == Qt::Key_Space && event.modifiers() == Qt::NoModifier && model_.has_checkboxes()) {
        if (before != 0 && !event.isAutoRepeat())
            toggle(before);
        return;
    }
    pass_on();
    const int after = model_.SelectedItem();
    if (after != before && after != 0 && model_.Item(after).Selected)
        Q_EMIT list_.ItemClick(after);
}

void ListViewEvents::context_menu(const QContextMenuEvent& event)
{
    if (event.reason() == QContextMenuEvent::Keyboard)
        Q_EMIT list_.ContextKey();
}

void ListViewEvents::focus_in(Qt::FocusReason reason)
{
    if (!is_returning_focus(reason))
        Q_EMIT list_.GotFocus();
}

QPoint ListViewEvents::in_list(const QMouseEvent& event) const
{
    return list_.view()->viewport()->mapTo(&list_, event.position().toPoint());
}

int ListViewEvents::check_at(QPoint point) const
{
    const int row = list_.HitTest(point);
    return row != 0 && list_.check_rect(row).contains(point) ? row : 0;
}

bool ListViewEvents::takes_check_press(const QMouseEvent& event)
{
    pressed_check_ = event.button() == Qt::LeftButton ? check_at(in_list(event)) : 0;
    return pressed_check_ != 0;
}

void ListViewEvents::toggle(int index)
{
    model_.set_Checked(index, !model_.Item(index).Checked);
    Q_EMIT list_.ItemCheck(index);
}

void ListViewEvents::start_label_edit()
{
    if (is_editing() || list_.SelectedItem() == 0)
        return;
    const QPointer<ListView> list(&list_);
    bool cancel = false;
    Q_EMIT list_.BeforeLabelEdit(cancel);
    if (list.isNull() || cancel || is_editing() || list_.SelectedItem() == 0)
        return;
    prepare();
    list_.ensure_visible(list_.SelectedItem());
    const QModelIndex index = model_.index(list_.SelectedItem() - 1, 0);
    const QString text = model_.Item(list_.SelectedItem()).Text;
    editor_ = new LabelEditor(*list_.view(), index, text, LabelEditor::Selects::stem);
    QObject::connect(editor_, &LabelEditor::Ended, &list_,
                     [this, edited = QPersistentModelIndex(index)](bool accepted, const QString& typed) {
                         end_label_edit(edited, accepted, typed);
                     });
}

void ListViewEvents::end_label_edit(const QPersistentModelIndex& edited, bool accepted, const QString& text)
{
    if (!accepted)
        return;
    // The handler may refill the list, start the next edit or destroy the list.
    const QPointer<ListView> list(&list_);
    bool cancel = false;
    Q_EMIT list_.AfterLabelEdit(cancel, text);
    if (!list.isNull() && !cancel && edited.isValid())
        list_.set_Text(edited.row() + 1, text);
}

void ListViewEvents::cancel_label_edit()
{
    if (is_editing())
        editor_->cancel();
}

void ListViewEvents::drop_label_edit()
{
    delete editor_;
}

bool ListViewEvents::is_editing() const
{
    return !editor_.isNull() && editor_->is_open();
}

void ListViewEvents::place_editor()
{
    if (is_editing())
        editor_->place();
}

void ListViewEvents::start_drag()
{
    pull_from_.reset();
    has_dragged_ = true;
    QStringList texts;
    for (int index = 1; index <= model_.Count(); ++index) {
        if (model_.Item(index).Selected)
            texts.append(model_.Item(index).Text);
    }
    if (texts.isEmpty())
        return;
    auto data = std::make_unique<QMimeData>();
    data->setText(texts.join(u'\n'));
    const auto icon = model_.index(model_.SelectedItem() - 1, 0).data(Qt::DecorationRole).value<QIcon>();
    const QPixmap picture =
        drag_picture(list_, icon, texts.size() == 1 ? display_text(texts.first()) : QString::number(texts.size()));
    const QPointer<ListView> list(&list_);
    Q_EMIT list_.OLEStartDrag(*data);
    if (!list.isNull())
        run_drag(list_, std::move(data), picture);
}
