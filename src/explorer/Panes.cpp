#include "explorer/Panes.h"

#include "core/mod_of_grobal_var.h"
#include "explorer/FileList.h"
#include "explorer/FolderTree.h"
#include "platform/controls/TreeView.h"

TreeNode* commanded_node(const TreeView& tree)
{
    TreeNode* const selected = tree.SelectedItem();
    return selected == nullptr || tree.Index(selected) == 1 ? nullptr : selected;
}

void take_selected_node(const TreeView& tree)
{
    const TreeNode* const selected = tree.SelectedItem();
    shared.tree_node_path = selected->Key();
    if (selected->Parent() != nullptr)
        shared.tree_parent_key = selected->Parent()->Key();
    shared.current_folder = selected->Key() + u'\\';
}

bool rows_are_of_selected_node(const Panes& panes)
{
    take_selected_node(panes.tvTreeView);
    if (panes.list.shows(shared.current_folder))
        return true;
    panes.tree.refresh_all();
    return false;
}
