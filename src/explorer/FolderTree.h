#pragma once

#include "platform/controls/TreeView.h"

#include <QObject>
#include <QString>
#include <QStringList>

/// The left pane: the computer's local drives and their folders. A click on a node sets the current folder and asks for
/// its files. The tree is filled one level ahead of what is seen.
class FolderTree : public QObject
{
    Q_OBJECT

public:
    /// Acts on `tree`, which outlives it.
    explicit FolderTree(TreeView& tree, QObject* parent = nullptr);

    /// Makes the roots and the table of drives, and selects the computer. Once, at start.
    void init_main_tree();
    /// Makes `node` the current node: open-folder picture, children in line with the disk, its files listed.
    void Click_node_of_tree(TreeNode* node);
    /// Reads the subfolders of each child of `node`.
    void Tree_Expand(TreeNode* node);
    /// Brings the children of `node` in line with the subfolders of `path`. Any failure ends it silently.
    void FillNodeFolders(TreeNode* node, const QString& path);
    /// Adds all subfolders of `path` as children of `node` and sorts them. Any failure ends it silently.
    void FillNodeFolders_sub(TreeNode* node, const QString& path);
    /// Removes the node with this index.
    void remove_tree_node(int index);
    /// Reloads the current node's children and its files; nothing while the computer is selected.
    void refresh_all();
    /// What follows on a folder that can't be listed: the parent of the selected node is selected and clicked, and
    /// everything is reloaded.
    void fall_back_to_parent();

    /// Key of the selected node.
    QString selected_key() const;

Q_SIGNALS:
    /// The files of `path` (with trailing backslash) are to be listed.
    void files_wanted(const QString& path);
    /// The rows of the file list are to be emptied, and nothing else.
    void no_files_wanted();

private:
    void move_open_folder_image(TreeNode* node);
    TreeNode* show_files_of(TreeNode* node);
    void make_current(TreeNode* node);
    TreeNode* select_parent_and_click();
    void add_missing_folders(TreeNode* node, const QString& path, const QStringList& names);
    void remove_vanished_folders(const TreeNode* node, const QStringList& names);

    TreeView& tree_;
};

/// The text of the tree's root: the computer's name, or "Unknown".
QString get_computer_name();

/// What a path is, in the light of the tree's selected key: 2 the computer is selected, 3 exactly a CD drive, 1 exactly
/// another drive, 4 below a CD drive, 0 anything else.
i16 check_dirve(const QString& path, const QString& selected_key);
