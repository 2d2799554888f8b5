#include "selection/Picks.h"

#include "core/Mod_of_nation.h"
#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "fif/DetailFields.h"
#include "fif/mod_of_FIF.h"
#include "platform/controls/message_window.h"
#include "selection/final_list.h"

#include <optional>
#include <utility>

namespace {

constexpr i16 ready_cd = 2;

/// The exact size that a row tells. Raises "Overflow" from 2 GiB on.
i32 size_of(const ListRow& row)
{
    return checked<i32>(row.column(4).toLongLong());
}

/// Runs `statement`; the run-time error that ended it, if any.
template<typename Statement> std::optional<RunTimeError> error_of(const Statement& statement)
{
    try {
        statement();
        return std::nullopt;
    } catch (const RunTimeError& error) {
        return error;
    }
}

} // namespace

void select_file(const QString& name)
{
    if (shared.detail_fields != nullptr)
        shared.detail_fields->set_txtFilename(name);
    shared.selected_mp3_name = name;
    shared.selected_mp3_full = shared.current_folder + name;
    show_selected_file();
    shared.selected_mp3_path = shared.selected_mp3_full;
}

Picks::Picks(ListView& list, StatusBar& status_bar, Surroundings surroundings, QObject* parent)
    : QObject(parent), list_(list), status_bar_(status_bar), surroundings_(std::move(surroundings))
{
    connect(&list_, &ListView::ItemCheck, this, guarded([this](int index) { ItemCheck(index); }));
}

void Picks::ItemCheck(int index)
{
    const bool on_cd = state_of_folder_drive() == ready_cd;
    last_row_index = checked<i16>(index);
    if (on_cd) {
        shared.focus_pane = pane_none;
        list_.set_Checked(index, false);
        show_message(msg_cd_not_checkable);
        return;
    }
    shared.focus_pane = pane_list;
    // The row is selected first: the file name box shows the key of the row that keys act on, whatever is put into it.
    list_.clear_selection();
    list_.set_Selected(index, true);
    select_file(QString(list_.Item(index).Text));
    tick_by_hand(index);
    show_final_total();
}

void Picks::tick_by_hand(int index)
{
    const bool ticked = list_.Item(index).Checked;
    i16 added_as = added;
    const auto error = error_of([&] {
        if (ticked)
            added_as = add_row(index);
        else
            remove_row(index);
    });
    if (error) {
        list_.set_Checked(index, !ticked);
        show_run_time_error(*error);
        return;
    }
    if (added_as != added)
        list_.set_Checked(index, false);
    if (added_as == already_listed)
        show_name_message(msg_already_selected, QString(list_.Item(index).Text));
}

void Picks::cmd_select_all_Click()
{
    if (state_of_folder_drive() == ready_cd) {
        show_message(msg_cd_not_selectable);
        return;
    }
    if (shared.folder_mp3_count <= 0)
        return;
    pick_all_rows();
    show_final_total();
}

void Picks::pick_all_rows()
{
    std::optional<RunTimeError> first_error;
    {
        const ListView::Update update(list_);
        const int rows = list_.Count();
        i16 added_as = added;
        for (int index = 1; index <= rows; ++index) {
            if (!list_.Item(index).Checked) {
                const auto error = error_of([&] { added_as = add_row(index); });
                if (error && !first_error)
                    first_error = error;
                if (!error && added_as == list_full)
                    break;
                list_.set_Checked(index, !error && added_as == added);
            }
            list_.set_Selected(index, true);
        }
        for (int index = 1; index <= rows; ++index) {
            if (list_.Item(index).Key == shared.selected_mp3_name)
                list_.set_Selected(index, true);
        }
    }
    if (first_error)
        show_run_time_error(*first_error);
}

void Picks::cmdRemove_Click()
{
    if (shared.folder_mp3_count <= 0)
        return;
    const auto error = error_of([this] { drop_ticked_rows(); });
    if (error)
        show_run_time_error(*error);
    if (list_.Count() > 0 && last_row_index > 0)
        surroundings_.click_row(last_row_index);
    show_final_total();
}

void Picks::drop_ticked_rows()
{
    const ListView::Update update(list_);
    const int rows = list_.Count();
    for (int index = 1; index <= rows; ++index) {
        if (!list_.Item(index).Checked)
            continue;
        if (remove_row(index) == 0)
            return;
        list_.set_Checked(index, false);
        list_.set_Selected(index, false);
    }
}

void Picks::Change_all_Click()
{
    if (shared.final_list_count < 1)
        show_message(msg_select_mp3);
    else
        surroundings_.show_final_list();
}

void Picks::show_final_total()
{
    status_bar_.set_panel_text(3, final_total_text());
}

i16 Picks::add_row(int index)
{
    const ListRow& row = list_.Item(index);
    return add_to_final_list(row.Text, shared.current_folder, shared.current_folder + row.Text, size_of(row),
                             row.column(2), row.column(3));
}

i16 Picks::remove_row(int index)
{
    const ListRow& row = list_.Item(index);
    return remove_from_final_list(row.Text, shared.current_folder, shared.current_folder + row.Text, size_of(row));
}

i16 Picks::state_of_folder_drive() const
{
    return get_drive_state(surroundings_.selected_tree_key().left(1));
}
