#pragma once

#include <QString>

/// Texts that are the program's own additions to its fixed ones: prompts, progress, tips, errors.
enum class Word
{
    run_time_error,  ///< "Run-time error '%1':", the number in place of %1
    type_mp3,        ///< type of a file called *.mp3
    type_file,       ///< type of any other file
    drive_root_name, ///< name of the drive of the file system's root
    drive_home_name, ///< name of the drive of the user's home
    drive_music_name ///< name of the drive of the user's music folder
};

/// The text of a word in the build's language.
QString own_word(Word word);
