#pragma once

#include <QString>

/// Texts that are the program's own additions to its fixed ones: prompts, progress, tips, errors.
enum class Word
{
    run_time_error,   ///< "Run-time error '%1':", the number in place of %1
    type_mp3,         ///< type of a file called *.mp3
    type_file,        ///< type of any other file
    drive_root_name,  ///< name of the drive of the file system's root
    drive_home_name,  ///< name of the drive of the user's home
    drive_music_name, ///< name of the drive of the user's music folder

    field_filename, ///< labels of the detail fields
    field_artist,
    field_title,
    field_genre,
    field_length,

    title_edit, ///< window titles of the converting forms
    title_auto_convert,
    title_choose_format,
    title_choose_genre_type,
    title_final_list,

    button_ok,
    button_cancel,
    button_close,
    button_preview,
    button_convert,
    button_save,       ///< on forms whose buttons keep their English captions in Korean
    button_leave_edit, ///< likewise
    button_select_all, ///< likewise, as the next three
    button_clear_all,
    button_final_list,
    button_burn,

    list_fif,            ///< the three lists of the final list: those with FIF names,
    list_auto_convert,   ///< those to be converted,
    list_manual_convert, ///< and those that must be named by hand
    picture_list_fif,    ///< the same on a form whose pictures and buttons stay English in Korean
    picture_list_auto_convert,
    picture_list_manual_convert,
    button_change_to_fif, ///< on that form
    button_copy_to_folder,
    button_close_list,

    option_genre_from_list, ///< the two ways of entering a genre
    option_genre_as_text,

    sound_on, ///< the two states of the mute button
    sound_off,
    no_audio_device,

    track_previous, ///< what the player's buttons do
    seconds_back,
    play,
    stop,
    seconds_forward,
    track_next,

    name_toolbar, ///< what controls of the main window are called by assistive programs
    name_folders,
    name_files,
    name_splitter,
    name_totals,
    name_player,
    name_playing_title,
    name_position,
    name_position_knob,
    name_volume,
    name_volume_knob,

    button_yes, ///< the buttons of prompts, with their mnemonics
    button_yes_to_all,
    button_no,
    button_no_to_all,
    button_skip,

    title_copying, ///< window titles of file operations under way
    title_moving,
    title_deleting,
    title_renaming,
    progress_amount, ///< "%1 of %2": the bytes done and all bytes, with their units
    progress_cancelling,

    title_replace, ///< window titles of the prompts of file operations
    title_error,
    title_trash,
    title_delete,
    ask_replace,       ///< the name of a file that stands in the way in place of %1
    replace_here,      ///< heads the facts of that file
    replace_with,      ///< heads the facts of the file that is to take its place
    replace_newer,     ///< marks the newer one of the two
    error_with,        ///< the path of what an error is about in place of %1; the reason follows
    ask_trash_one,     ///< the name of the item in place of %1
    ask_trash_several, ///< the number of the items in place of %1
    ask_delete_one,
    ask_delete_several,

    copy_of,          ///< name of a copy beside its source, whose name without ending stands in place of %1
    copy_of_numbered, ///< likewise, the number of the copy in place of %2

    reason_no_place,          ///< why a file operation can't be done: the path leads nowhere
    reason_drive,             ///< a drive's root is no file or folder to copy, move or delete
    reason_into_itself,       ///< a folder was to go into itself
    reason_same_file,         ///< source and target are one file
    reason_file_in_the_way,   ///< a file stands where a folder is to go
    reason_folder_in_the_way, ///< a folder stands where a file is to go
    reason_special_file,      ///< neither file nor folder nor link
    reason_changed,           ///< the source changed while it was copied
    reason_changed_later,     ///< the source or its copy changed before the source could be deleted

    all_files,           ///< second choice of kinds of files in a chooser
    program_not_started, ///< the program's path in place of %1, the system's reason in place of %2
};

/// The text of a word in the program's language.
QString own_word(Word word);
