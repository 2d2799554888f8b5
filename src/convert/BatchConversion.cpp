#include "convert/BatchConversion.h"

#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "fif/mod_of_FIF.h"
#include "mp3/cIDV3.h"
#include "player/Transport.h"
#include "selection/final_list.h"

QString BatchConversion::rename_to_fif(const QString& folder, const QString& name, i16 do_rename)
{
    const QString old_path = folder + name;
    if (id3().load_and_has_tag(old_path))
        texts_ = texts_of_tag();
    const auto [artist, title, genre] = trimmed_and_cleaned(texts_);
    const QString new_name = Compose_fif_name(artist, title, genre, [] { show_message(msg_artist_too_long); });
    // No test for an existing target stands here, on purpose: the move itself never replaces a file.
    if (do_rename == 1 && !new_name.isEmpty() && rename_in_final_list(name, folder, new_name, folder) != 0)
        MoveFileA(old_path, folder + new_name);
    return new_name;
}

void BatchConversion::Update_FIF_id3_tag(const std::function<void()>& between_files)
{
    for (const FinalListEntry& record : final_list_slots()) {
        if (record.in_use != 1 || record.kind != 1)
            continue;
        if (parse_fif_stem(stem_of(record.name), into_results) && record.full_path != shared.playing_mp3_path)
            Write_fif_tag(record.full_path, shared.fif_artist, shared.fif_title, shared.fif_genre);
        between_files();
    }
}

void BatchConversion::Change_FIF(const std::function<void()>& between_files)
{
    Update_FIF_id3_tag(between_files);
    for (const FinalListEntry& slot : final_list_slots()) {
        if (slot.in_use != 1 || slot.kind != 2 || slot.convert != 1)
            continue;
        const FinalListEntry record = slot; // a copy, as the rename changes the slot
        if (record.full_path == shared.playing_mp3_path)
            rename_file_in_player(record);
        else
            rename_to_fif(record.folder, record.name, 1);
        between_files();
    }
}

void BatchConversion::rename_file_in_player(const FinalListEntry& record)
{
    const bool was_playing = shared.is_playing == 1;
    transport_.release();
    const QString new_name = rename_to_fif(record.folder, record.name, 1);
    const QString name = new_name.isEmpty() ? record.name : new_name;
    shared.selected_mp3_path = record.folder + name;
    transport_.mp3_play(name);
    if (!was_playing)
        transport_.mp3_stop();
    shared.selected_mp3_name = name;
    shared.selected_mp3_full = shared.selected_mp3_path;
}
