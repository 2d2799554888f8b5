#include "platform/controls/ListViewEvents.h"

#include "platform/controls/ListModel.h"
#include "platform/controls/ListSelection.h"
#include "platform/controls/focus.h"
#include "platform/controls/mouse.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
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
    Q_EMIT list_.MouseDown(mouse_button_number(event.button()), point);
    if (is_check)
        return;
    prepare();
    pass_on();
    const int row = list_.HitTest(point);
    // A press that takes the row out of the selection chooses nothing.
    if (row != 0 && model_.Item(row).Selected)
        Q_EMIT list_.ItemClick(row);
}

void ListViewEvents::move(const QMouseEvent& event, const PassOn& pass_on)
{
    Q_EMIT list_.MouseMove(mouse_buttons_number(event.buttons()), in_list(event));
    const bool holds_check = pressed_check_ != 0 && event.buttons().testFlag(Qt::LeftButton);
    if (!holds_check)
        pass_on();
}

void ListViewEvents::release(const QMouseEvent& event, const PassOn& pass_on)
{
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
