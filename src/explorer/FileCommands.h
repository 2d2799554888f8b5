#pragma once

#include "explorer/Panes.h"
#include "platform/numbers.h"

#include <QStringList>

#include <QString>

/// Values of `shared.copy_source_kind`.
enum CopySourceKind : i16
{
    copied_folder = 1,
    copied_files = 2,
};

/// Puts the names of the selected rows, in their order, and the folder shown into the shared list of copied files.
/// Raises "Subscript out of range" at the 302nd selected row, with the slots filled and the old folder kept.
void load_copy_list(const ListView& list);

/// The paths of these files.
QStringList copied_file_paths();

/// Copy, paste and delete in both panes. What is copied is remembered by the program itself, apart from the system's
/// clipboard. While the computer is selected in the tree, nothing happens.
class FileCommands
{
public:
    explicit FileCommands(const Panes& panes) : panes_(panes) {}

    void mnu_tree_copy_Click();     ///< the selected folder is remembered
    void mnu_ListView_copy_Click(); ///< the selected rows are remembered; errors as load_copy_list
    /// Copies what is remembered into the folder shown. Serves the entries of both panes.
    void mnu_tree_paste_Click();
    void mnu_tree_delete_Click();
    /// Deleted files leave the final list as well.
    void mnu_ListView_delete_Click();

    /// The toolbar's Copy and Delete: the command of the pane that the user acted in last, if it was one of the two.
    void copy_in_pane();
    void delete_in_pane();

private:
    void paste_folder();
    void paste_files();

    Panes panes_;
};
