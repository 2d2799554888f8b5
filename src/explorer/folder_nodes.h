#pragma once

#include <QString>

class TreeNode;
class TreeView;

// What both trees of drives and folders, the main window's and the destination dialog's, have in common.

/// Key of the root, and of its picture.
inline const QString root_key = QStringLiteral("MYCOMPUTER");
/// Pictures of a folder and of the one that is shown.
inline const QString folder_image = QStringLiteral("FOLDER");
inline const QString open_folder_image = QStringLiteral("OPENFOLDER");

/// The folder of a node, with trailing backslash.
QString folder_of(const TreeNode* node);

/// Adds all subfolders of `path`, which ends in a backslash, as children of `node` and sorts them. Any failure ends it
/// silently: a node that has these children already ends it at its first folder.
void add_subfolders(TreeView& tree, TreeNode* node, const QString& path);

/// Removes all that is below `node`.
void remove_children(TreeView& tree, const TreeNode* node);

/// Removes the node of this key, if there is one: a folder that others have removed keeps its node for a while, and its
/// key is wanted for a new one.
void remove_stale_node(TreeView& tree, const QString& key);

/// The first of "new folder", "new folder1", "new folder2" and so on that is no folder in the folder of this key.
QString new_folder_name(const QString& key);
