#pragma once

#include "platform/numbers.h"

#include <QString>

/// Codes of the complete messages.
enum MessageCode : i16
{
    msg_artist_too_long = 1,
    msg_select_mp3 = 2,
    msg_cd_not_selectable = 3,
    msg_cd_not_renamable = 4,
    msg_input_artist_title = 5,
    msg_cd_not_checkable = 6,
    msg_new_folder_failed = 7,
    msg_click_preview = 8,
    msg_input_artist = 9,
    msg_input_genre = 10,
    msg_tag_write_failed = 11,
};

/// Codes of the messages that are joined to a name.
enum NameMessageCode : i16
{
    msg_name_too_long = 101,
    msg_is_playing = 102,
    msg_already_selected = 103,
    msg_device_error = 104,
    msg_already_exists = 105,
    msg_exists_in_list = 106,
};

/// The title of every message box.
QString application_title();

/// Shows the message of the code in the language of the run; an unknown code shows nothing.
void show_message(i16 code);

/// Shows the message of the code joined to `name`; an unknown code shows nothing.
void show_name_message(i16 code, const QString& name);
