#pragma once

class FileList;
class FolderTree;
class ListView;
class Picks;
class TreeNode;
class TreeView;

/// Both panes of the explorer, for the commands that act on them. All of it outlives those commands.
struct Panes
{
    TreeView& tvTreeView;
    ListView& lvListView;
    FolderTree& tree;
    FileList& list;
    Picks& picks;
};

/// The selected node of the tree, on which every folder and file command acts; nullptr while the computer is selected:
/// then no command does anything.
TreeNode* commanded_node(const TreeView& tree);

/// Brings the shared state's current node in line with the selected one: its key, its parent's key and its folder.
void take_selected_node(const TreeView& tree);

/// Makes the selected folder, which is not the computer, the current one, and gives whether the list shows its files. A
/// click on a folder may have ended before it filled the list: then the files are listed now, and nothing is to be done
/// to rows that were those of another folder.
bool rows_are_of_selected_node(const Panes& panes);
