#pragma once

#include <QString>

/// Which entries of the tree's pop-up menu are enabled.
struct TreeMenuEntries
{
    bool add_folder = false;
    bool copy = false;
    bool paste = false;
    bool remove = false;
    bool rename = false;
};

/// Whether the pop-up menu opens for the selected node of this key: not for the computer, nor on a drive that was not
/// ready at start.
bool tree_menu_opens(const QString& key);

/// The entries for the selected node of this key, by its drive and by what has been copied.
TreeMenuEntries tree_menu_entries(const QString& key);
