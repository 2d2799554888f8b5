#include "explorer/FileCommands.h"

#include "core/mod_of_grobal_var.h"
#include "explorer/FileList.h"
#include "explorer/FolderTree.h"
#include "platform/controls/ListView.h"
#include "platform/controls/SHFileOperation.h"
#include "platform/controls/TreeView.h"
#include "selection/Picks.h"
#include "selection/final_list.h"

#include <QStringList>

#include <vector>

namespace {

/// Copies of the selected rows in their order: while an operation runs, the player may select another one.
std::vector<ListRow> selected_rows(const ListView& list)
{
    std::vector<ListRow> rows;
    for (int index = 1; index <= list.Count(); ++index) {
        if (list.Item(index).Selected)
            rows.push_back(list.Item(index));
    }
    return rows;
}

void remove_row_from_final_list(const ListRow& row)
{
    remove_from_final_list(row.Text, shared.current_folder, shared.current_folder + row.Text,
                           checked<i32>(row.column(4).toLongLong()));
}

} // namespace

void load_copy_list(const ListView& list)
{
    for (CopyListEntry& slot : shared.copy_list)
        slot.in_use = 0;
    shared.copy_list_count = 0;
    for (int index = 1; index <= list.Count(); ++index) {
        if (!list.Item(index).Selected)
            continue;
        const auto slot = static_cast<std::size_t>(shared.copy_list_count);
        if (slot >= shared.copy_list.size())
            throw RunTimeError(RunTimeError::subscript_out_of_range);
        shared.copy_list.at(slot) = {.in_use = 1, .name = list.Item(index).Text};
        ++shared.copy_list_count;
    }
    shared.copy_source_folder = shared.tree_node_path + u'\\';
}

QStringList copied_file_paths()
{
    QStringList paths;
    for (i16 slot = 0; slot < shared.copy_list_count; ++slot)
        paths.append(shared.copy_source_folder + shared.copy_list.at(static_cast<std::size_t>(slot)).name);
    return paths;
}

void FileCommands::mnu_tree_copy_Click()
{
    const TreeNode* const node = commanded_node(panes_.tvTreeView);
    if (node == nullptr)
        return;
    shared.copy_source_kind = copied_folder;
    shared.copied_folder_path = node->Key();
}

void FileCommands::mnu_ListView_copy_Click()
{
    if (commanded_node(panes_.tvTreeView) == nullptr)
        return;
    shared.copy_source_kind = copied_files;
    load_copy_list(panes_.lvListView);
}

void FileCommands::mnu_tree_paste_Click()
{
    if (commanded_node(panes_.tvTreeView) == nullptr)
        return;
    if (shared.copy_source_kind == copied_folder)
        paste_folder();
    else if (shared.copy_source_kind == copied_files && shared.copy_list_count >= 1)
        paste_files();
}

void FileCommands::paste_folder()
{
    shared.dest_folder_path = commanded_node(panes_.tvTreeView)->Key();
    SHFILEOPSTRUCT operation = {.wFunc = FO_COPY, .pFrom = shared.copied_folder_path, .pTo = shared.dest_folder_path};
    SHFileOperation(operation);
    panes_.tree.refresh_all();
}

void FileCommands::paste_files()
{
    SHFILEOPSTRUCT operation = {
        .wFunc = FO_COPY, .pFrom = copied_file_paths().join(QChar(QChar::Null)), .pTo = shared.tree_node_path};
    SHFileOperation(operation);
    if (!operation.fAnyOperationsAborted)
        panes_.list.FillListView(shared.tree_node_path);
}

void FileCommands::mnu_tree_delete_Click()
{
    TreeView& tree = panes_.tvTreeView;
    if (commanded_node(tree) == nullptr)
        return;
    take_selected_node(tree);
    SHFILEOPSTRUCT operation = {
        .wFunc = FO_DELETE, .pFrom = shared.tree_node_path + QString(2, QChar::Null), .pTo = {}};
    SHFileOperation(operation);
    if (shared.fso.FolderExists(shared.tree_node_path))
        return;
    panes_.tree.remove_tree_node(tree.Index(tree.SelectedItem()));
    take_selected_node(tree);
    panes_.tree.refresh_all();
}

void FileCommands::mnu_ListView_delete_Click()
{
    if (commanded_node(panes_.tvTreeView) == nullptr || !rows_are_of_selected_node(panes_))
        return;
    const std::vector<ListRow> rows = selected_rows(panes_.lvListView);
    QString paths;
    for (const ListRow& row : rows)
        paths += shared.tree_node_path + u'\\' + row.Text + QChar::Null;
    SHFILEOPSTRUCT operation = {.wFunc = FO_DELETE, .pFrom = paths + QChar::Null, .pTo = {}};
    const int result = SHFileOperation(operation);
    if (operation.fAnyOperationsAborted)
        return;
    for (const ListRow& row : rows) {
        const bool is_gone = result == 0 || !shared.fso.FileExists(shared.current_folder + row.Text);
        if (row.Checked && is_gone)
            remove_row_from_final_list(row);
    }
    panes_.list.FillListView(shared.tree_node_path);
    panes_.picks.show_final_total();
}

void FileCommands::copy_in_pane()
{
    if (shared.focus_pane == pane_tree)
        mnu_tree_copy_Click();
    else if (shared.focus_pane == pane_list)
        mnu_ListView_copy_Click();
}

void FileCommands::delete_in_pane()
{
    if (shared.focus_pane == pane_tree)
        mnu_tree_delete_Click();
    else if (shared.focus_pane == pane_list)
        mnu_ListView_delete_Click();
}
