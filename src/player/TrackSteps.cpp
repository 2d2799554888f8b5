#include "player/TrackSteps.h"

#include "core/mod_of_grobal_var.h"
#include "fif/Check_korean.h"
#include "fif/DetailFields.h"
#include "fif/mod_of_FIF.h"

namespace {

/// Whether a person has chosen another file since the play began.
bool another_file_was_chosen()
{
    return shared.selected_mp3_path != shared.playing_mp3_path;
}

} // namespace

void TrackSteps::FastBtn_Click()
{
    if (shared.folder_mp3_count <= 0)
        return;
    errors_ignored([this] {
        choose_next();
        play_chosen_row();
    });
}

void TrackSteps::ReBtn_Click()
{
    if (shared.folder_mp3_count <= 0)
        return;
    errors_ignored([this] {
        choose_previous();
        play_chosen_row();
    });
}

void TrackSteps::choose_next()
{
    track_index_ = checked<i16>(list_.SelectedItem());
    if (another_file_was_chosen())
        return;
    list_.set_Selected(track_index_, false);
    track_index_ = track_index_ == list_.Count() ? i16{1} : checked<i16>(track_index_ + 1);
}

void TrackSteps::choose_previous()
{
    track_index_ = checked<i16>(list_.SelectedItem());
    if (another_file_was_chosen())
        return;
    list_.set_Selected(track_index_, false);
    track_index_ = checked<i16>(track_index_ == 1 ? list_.Count() : track_index_ - 1);
}

void TrackSteps::play_chosen_row()
{
    const QString name = list_.Item(track_index_).Text;
    shared.selected_mp3_name = name;
    shared.selected_mp3_full = shared.current_folder + name;
    show_selected_file();
    shared.selected_mp3_path = shared.selected_mp3_full;
    list_.set_Selected(track_index_, true);
    list_.ensure_visible(track_index_);
    // Behind the selection: the file name box shows the key of the row that keys act on, whatever is put into it.
    if (shared.detail_fields != nullptr) {
        shared.detail_fields->set_txtFilename(name);
        shared.detail_fields->set_Label_filesize(byte_count_text(name));
    }
    transport_.PlayBtn_Click();
}
