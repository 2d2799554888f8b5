#pragma once

#include "platform/FileSystemObject.h"
#include "platform/numbers.h"

#include <QHash>
#include <QString>

#include <array>
#include <memory>
#include <vector>

class cIDV3;
class DetailFields;

/// A drive seen at start. `kind`: 1 removable, 2 CD, 4 any other local drive.
struct DriveEntry
{
    i16 kind = 0;
    i16 in_use = 0;
    QString letter; ///< without colon
    i16 ready = 0;  ///< 1 if the drive was ready at start
};

/// A file chosen for the disc.
struct FinalListEntry
{
    i16 in_use = 0;  ///< 1 used, 0 free; a freed slot keeps its other fields
    i16 kind = 0;    ///< 0 neither, 1 a FIF name, 2 convertible from the tag
    i16 convert = 0; ///< 1 when the batch conversion is to rename it
    QString name;
    QString folder;    ///< with trailing backslash
    QString full_path; ///< folder and name
    i32 size = 0;      ///< bytes
    QString type_text;
    QString date_text;
};

/// Finds slots of the final list without a walk through them. Only the final list's own routines change it.
struct FinalListIndex
{
    QHash<QString, std::vector<std::size_t>> slots_of_name; ///< in use or not, rising; the empty name has no entry
    std::size_t lowest_free = 0;                            ///< no slot below it is free
};

/// A name taken by Copy or a drag from the file list.
struct CopyListEntry
{
    i16 in_use = 0;
    QString name;
};

/// Where the user acted last in the main window.
enum FocusPane : i16
{
    pane_none = 0,
    pane_tree = 1,
    pane_list = 2,
    pane_artist = 3,
    pane_filename = 4,
    pane_title = 5,
    pane_genre = 6,
    pane_player_title = 7,
    pane_tree_edit = 11, ///< a label edit of the tree is open
    pane_list_edit = 22, ///< a label edit of the file list is open
};

/// All state that more than one form or module needs. `shared = {}` is a fresh run.
struct Shared
{
    FileSystemObject fso;
    i16 language_id = 0; ///< 1 English, 2 Korean, 3 German

    QString fif_artist; ///< results of the last parse, overwritten by each
    QString fif_title;
    QString fif_genre;

    QString burn_program_path;
    i16 fif_type = 0;   ///< shape of new names, 1 to 6; odd shapes carry a genre
    i16 genre_type = 0; ///< how a genre is entered: 1 list, 2 free text
    i16 vol_type = 0;   ///< volume, 0 to 100

    QString current_folder;    ///< the folder shown, with trailing backslash
    QString selected_mp3_name; ///< name of the selected file
    QString selected_mp3_full; ///< current_folder and selected_mp3_name joined
    QString selected_mp3_path; ///< full path of the selected file, the one that the player takes
    QString edit_folder;       ///< folder of the file handed to a dialog
    QString edit_file_name;    ///< name of the file handed to a dialog

    i16 is_playing = 0; ///< 1 while the player is playing
    i16 is_muted = 0;
    i32 volume_word = 0;      ///< last level given to the wave device: left in the low word, right in the high word
    QString playing_mp3_path; ///< what the player took last; kept after a stop
    QString scroll_title;     ///< the title line as it stands now, with any lead of blanks
    QString scroll_tail;

    i16 list_drag_active = 0;     ///< 1 if the last mouse press hit a row
    i16 last_open_node_index = 0; ///< tree node that shows the open folder, -1 for none
    std::array<i16, 3> main_sort_toggles{};
    std::array<i16, 2> fif_sort_toggles{};
    std::array<i16, 2> impossible_sort_toggles{};
    std::array<i16, 3> possible_sort_toggles{};
    i16 focus_pane = pane_none;
    i16 copy_source_kind = 0; ///< clipboard of the Edit menu: 0 nothing, 1 a folder, 2 files
    i16 enter_saves = 0;      ///< 1 while the Enter key is to save
    i16 drag_source_kind = 0; ///< where the last press or drag came from: 1 the tree, 2 the file list

    std::array<DriveEntry, 21> drive_table{}; ///< slots 0 to 19 are used
    i32 cd_capacity_mb = 0;

    std::array<FinalListEntry, 1001> final_list{}; ///< slots 0 to 999 are used
    FinalListIndex final_list_index;
    i32 final_list_count = 0;
    i32 final_list_bytes = 0;

    std::array<CopyListEntry, 301> copy_list{}; ///< all slots are used
    QString copy_source_folder;                 ///< the folder of those names, with trailing backslash
    QString copied_folder_path;                 ///< key of the folder taken by the tree's Copy
    i16 copy_list_count = 0;

    i16 drag_node_index = 0; ///< index of the tree node pressed last
    i32 folder_mp3_mb = 0;   ///< running total of whole megabytes of the listed files
    QString drag_node_key;   ///< key of the tree node pressed last; also the list of paths of a drop of files
    QString tree_node_path;  ///< key of the current tree node
    QString tree_parent_key; ///< key of its parent

    QString dest_folder_path; ///< key of the node chosen as a destination
    QString dest_node_key;    ///< key of its parent

    i16 folder_mp3_count = 0;
    i16 min_form_width = 0; ///< size of the main form at start, in twips
    i16 min_form_height = 0;
    i16 file_number_1_open = 0; ///< 1 once a short file has left file number 1 open

    std::shared_ptr<cIDV3> id3_object;     ///< made by id3() at its first use
    DetailFields* detail_fields = nullptr; ///< the main window's six fields; nullptr while there is no window
};

extern Shared shared;
