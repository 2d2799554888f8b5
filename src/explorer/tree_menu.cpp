#include "explorer/tree_menu.h"

#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/FileCommands.h"
#include "explorer/folder_nodes.h"

bool tree_menu_opens(const QString& key)
{
    return key != root_key && get_drive_state(key.left(1)) != 0;
}

TreeMenuEntries tree_menu_entries(const QString& key)
{
    const bool is_drive = key.size() == 2;
    const bool can_change = get_drive_state(key.left(1)) == 1;
    // On a drive a copy of no files counts as well, on purpose.
    const bool has_files = is_drive ? shared.copy_source_kind == copied_files : shared.copy_list_count > 0;
    const bool has_copied = shared.copy_source_kind == copied_folder || has_files;
    return {.add_folder = can_change,
            .copy = !is_drive,
            .paste = can_change && has_copied,
            .remove = can_change && !is_drive,
            .rename = can_change && !is_drive};
}
