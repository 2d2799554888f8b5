#include "convert/SaveButton.h"

#include "convert/moved_file.h"
#include "core/Mod_of_nation.h"
#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "fif/Check_korean.h"
#include "fif/genre_codes.h"
#include "fif/mod_of_FIF.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/ListView.h"
#include "platform/controls/TextBox.h"
#include "player/Transport.h"
#include "selection/final_list.h"

using namespace Qt::StringLiterals;

void SaveButton::cmdSave_Click()
{
    const i16 drive_state = get_drive_state(main_.selected_tree_key().left(1));
    if (shared.folder_mp3_count < 1) {
        show_message(msg_select_mp3);
        return;
    }
    if (drive_state == 2)
        show_message(msg_cd_not_renamable);
    else if (main_.fields.txtArtist.Text().isEmpty() || main_.fields.txtTitle.Text().isEmpty())
        show_message(msg_input_artist_title);
    else if (main_.lvListView.SelectedItem() == 0) // the fields outlive the rows when the tree's root is clicked
        show_message(msg_select_mp3);
    else
        save_selected_file();
    main_.click_row(main_.lvListView.SelectedItem());
}

void SaveButton::save_selected_file()
{
    take_file_of_row();
    if (shared.selected_mp3_path != shared.playing_mp3_path) {
        convert_fif();
        return;
    }
    const bool was_playing = shared.is_playing == 1;
    main_.transport.release();
    convert_fif();
    main_.transport.PlayBtn_Click();
    if (!was_playing)
        main_.transport.StopBtn_Click();
}

// A fill selects a row by its name alone, and the paths may still be those of a file in another folder, or of one that
// bears another name by now. What a person saves is the file of the row.
void SaveButton::take_file_of_row()
{
    shared.selected_mp3_name = main_.lvListView.Item(main_.lvListView.SelectedItem()).Text;
    shared.selected_mp3_full = shared.current_folder + shared.selected_mp3_name;
    shared.selected_mp3_path = shared.selected_mp3_full;
}

void SaveButton::convert_fif()
{
    const int row = main_.lvListView.SelectedItem(); // the player may select its next one while a message stands
    FifFields fields = typed_fields(main_.fields);
    const QString new_name =
        Compose_fif_name(fields.artist, fields.title, fields.genre, [] { show_message(msg_artist_too_long); });
    if (new_name.isEmpty())
        return;
    const QString new_path = shared.current_folder + new_name;
    if (shared.fso.FileExists(new_path)) {
        if (new_name != shared.selected_mp3_name)
            show_name_message(msg_already_exists, new_name);
        return;
    }
    if (!final_list_takes(new_name))
        return;
    const bool moved = MoveFileA(shared.selected_mp3_full, new_path);
    tag_moved_file(moved, new_path, fields.artist, fields.title, fields.genre);
    show_new_name(row, new_name, new_path);
    shared.selected_mp3_path = shared.selected_mp3_full;
}

void SaveButton::rename_mp3()
{
    main_.fields.txtArtist.set_Text(Clean_fif_field(main_.fields.txtArtist.Text()));
    main_.fields.txtTitle.set_Text(Clean_fif_field(main_.fields.txtTitle.Text()));
    const QString stem = coded_stem(main_.fields.txtArtist.Text(), main_.fields.txtTitle.Text(),
                                    genre_code(main_.fields.cboGenre.ListIndex()));
    if (stem.isEmpty()) {
        show_message(msg_artist_too_long);
        return;
    }
    const QString new_name = stem + u".mp3"_s;
    const QString new_path = shared.current_folder + new_name;
    if (!shared.fso.FileExists(new_path) && final_list_takes(new_name))
        MoveFileA(shared.selected_mp3_full, new_path);
    shared.selected_mp3_name = new_name;
    shared.selected_mp3_full = new_path;
    main_.refresh_all();
}

/// Whether nothing in the final list stands against the new name; the record of a ticked file has then taken it.
bool SaveButton::final_list_takes(const QString& new_name) const
{
    if (!main_.lvListView.Item(main_.lvListView.SelectedItem()).Checked)
        return true;
    return rename_in_final_list(shared.selected_mp3_name, shared.current_folder, new_name, shared.current_folder) != 0;
}

void SaveButton::show_new_name(int row, const QString& new_name, const QString& new_path)
{
    constexpr int fif_icon = 1;
    shared.selected_mp3_name = new_name;
    shared.selected_mp3_full = new_path;
    // A row that other programs left behind may bear this key already; the next fill drops it.
    errors_ignored([&] { main_.lvListView.set_Key(row, new_name); });
    main_.lvListView.set_Text(row, new_name);
    main_.lvListView.set_SmallIcon(row, fif_icon);
    main_.txtFilename.set_Text(new_name);
}

QString coded_stem(const QString& artist, const QString& title, const QString& code)
{
    const auto stem_with = [&](const QString& middle) {
        return u"["_s + artist + u"]["_s + middle + u"]["_s + code + u"]"_s;
    };
    constexpr int stem_bytes = 60;
    constexpr int title_and_artist_bytes = 49; // 60 less the brackets, two full stops and the code
    if (Byte_count(stem_with(title)) <= stem_bytes)
        return stem_with(title);
    const int room = title_and_artist_bytes - Byte_count(artist);
    if (room < 1)
        return {};
    QString cut = title.left(room);
    if (Byte_count(cut) > room) {
        cut.clear();
        for (qsizetype place = 0; place < title.size() && Byte_count(cut) <= room - 2; ++place)
            cut += title[place];
    }
    if (!cut.isEmpty() && cut.back().isHighSurrogate())
        cut.chop(1); // half of a character makes no name
    return stem_with(cut + u".."_s);
}
