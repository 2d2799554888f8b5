#include "explorer/LabelCommands.h"

#include "core/Mod_of_nation.h"
#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/FileList.h"
#include "explorer/FolderTree.h"
#include "explorer/folder_nodes.h"
#include "fif/DetailFields.h"
#include "fif/fif_name.h"
#include "fif/mod_of_FIF.h"
#include "platform/controls/ListView.h"
#include "platform/controls/SHFileOperation.h"
#include "platform/controls/TreeView.h"
#include "platform/controls/message_window.h"
#include "selection/final_list.h"

namespace {

/// Gives whether it was done.
bool rename_on_disk(const QString& old_path, const QString& new_path)
{
    SHFILEOPSTRUCT operation = {.wFunc = FO_RENAME, .pFrom = old_path, .pTo = new_path};
    return SHFileOperation(operation) == 0;
}

} // namespace

LabelCommands::LabelCommands(const Panes& panes, std::function<void()> release_player, QObject* parent)
    : QObject(parent), panes_(panes), release_player_(std::move(release_player))
{
    connect(&panes_.lvListView, &ListView::BeforeLabelEdit, this,
            guarded([this](bool& cancel) { BeforeLabelEdit(cancel, pane_list_edit); }));
    connect(&panes_.lvListView, &ListView::AfterLabelEdit, this,
            guarded([this](bool& cancel, const QString& text) { list_AfterLabelEdit(cancel, text); }));
    connect(&panes_.tvTreeView, &TreeView::BeforeLabelEdit, this,
            guarded([this](bool& cancel) { BeforeLabelEdit(cancel, pane_tree_edit); }));
    connect(&panes_.tvTreeView, &TreeView::AfterLabelEdit, this,
            guarded([this](bool& cancel, const QString& text) { tree_AfterLabelEdit(cancel, text); }));
}

void LabelCommands::mnu_ListView_rename_Click()
{
    if (commanded_node(panes_.tvTreeView) == nullptr || panes_.lvListView.Count() == 0 ||
        !rows_are_of_selected_node(panes_))
        return;
    label_edit_armed_ = 1;
    panes_.lvListView.StartLabelEdit();
}

void LabelCommands::mnu_tree_rename_Click()
{
    TreeView& tree = panes_.tvTreeView;
    const TreeNode* const node = commanded_node(tree);
    // A drive is known by its parent's text, on purpose: a folder in one that is called like the computer counts too.
    if (node == nullptr || node->Parent()->Text() == tree.Item(1)->Text())
        return;
    label_edit_armed_ = 1;
    tree.StartLabelEdit();
}

void LabelCommands::rename_in_pane()
{
    if (shared.focus_pane == pane_tree)
        mnu_tree_rename_Click();
    else if (shared.focus_pane == pane_list)
        mnu_ListView_rename_Click();
}

// An edit that no command has asked for is refused.
void LabelCommands::BeforeLabelEdit(bool& cancel, i16 edit_pane)
{
    if (label_edit_armed_ != 1) {
        cancel = true;
        return;
    }
    label_edit_armed_ = 0;
    shared.focus_pane = edit_pane;
}

void LabelCommands::list_AfterLabelEdit(bool& cancel, const QString& new_text)
{
    shared.focus_pane = pane_list;
    const int row = panes_.lvListView.SelectedItem();
    cancel = new_text.isEmpty() || !rename_file(QString(panes_.lvListView.Item(row).Text), new_text);
    if (!cancel)
        show_new_name(row, new_text);
}

/// Gives whether the file has its new name.
// What a person renames is the file of the row: the selected file may still be one of the same name elsewhere.
bool LabelCommands::rename_file(const QString& old_name, const QString& new_text) const
{
    const QString old_path = shared.current_folder + old_name;
    const QString new_path = shared.current_folder + Clean_file_name(new_text);
    if (new_path == old_path)
        return false;
    if (shared.playing_mp3_path == old_path) {
        if (shared.is_playing == 1) {
            show_name_message(msg_is_playing, shared.playing_mp3_path);
            return false;
        }
        release_player_();
    }
    return rename_on_disk(old_path, new_path);
}

// The text counts as typed, on purpose: where it held characters that no name holds, only the disk has the cleaned one.
void LabelCommands::show_new_name(int row, const QString& new_text)
{
    ListView& list = panes_.lvListView;
    const QString old_name = list.Item(row).Text;
    if (list.Item(row).Checked)
        rename_in_final_list(old_name, shared.current_folder, new_text, shared.current_folder);
    shared.selected_mp3_name = new_text;
    shared.selected_mp3_full = shared.current_folder + new_text;
    show_selected_file();
    if (shared.detail_fields != nullptr)
        shared.detail_fields->set_txtFilename(new_text);
    shared.selected_mp3_path = shared.selected_mp3_full;
    list.set_SmallIcon(row, small_icon_of(new_text));
    label_edit_armed_ = 0;
}

void LabelCommands::tree_AfterLabelEdit(bool& cancel, const QString& new_text)
{
    shared.focus_pane = pane_tree;
    take_selected_node(panes_.tvTreeView);
    cancel = !rename_folder(new_text);
    label_edit_armed_ = 0;
    take_selected_node(panes_.tvTreeView);
    panes_.tree.refresh_all();
}

/// Gives whether the folder of the selected node has its new name.
bool LabelCommands::rename_folder(const QString& new_text) const
{
    TreeView& tree = panes_.tvTreeView;
    const QString new_path = shared.tree_parent_key + u'\\' + Clean_file_name(new_text);
    if (new_path == shared.tree_node_path || !rename_on_disk(shared.tree_node_path, new_path))
        return false;
    remove_stale_node(tree, new_path);
    TreeNode* const node = tree.SelectedItem();
    tree.set_Key(node, new_path);
    shared.tree_node_path = new_path;
    remove_children(tree, node);
    panes_.tree.FillNodeFolders(node, new_path + u'\\');
    return true;
}

void LabelCommands::mnu_tree_add_folder_Click()
{
    constexpr i16 ready_cd = 2;
    if (commanded_node(panes_.tvTreeView) == nullptr)
        return;
    take_selected_node(panes_.tvTreeView);
    if (get_drive_state(shared.tree_node_path.left(1)) == ready_cd)
        show_message(msg_new_folder_failed);
    else
        make_folder(new_folder_name(shared.tree_node_path));
    panes_.tree.refresh_all();
}

void LabelCommands::make_folder(const QString& name)
{
    TreeView& tree = panes_.tvTreeView;
    const QString path = shared.tree_node_path + u'\\' + name;
    // A folder that takes no new one is an everyday thing, so it is told and not the program's end.
    if (!errors_ignored([&] { shared.fso.CreateFolder(path); })) {
        show_message(msg_new_folder_failed);
        return;
    }
    remove_stale_node(tree, path);
    tree.set_Selected(tree.Add(tree.SelectedItem(), path, name, folder_image));
    take_selected_node(tree);
    panes_.tree.refresh_all();
    label_edit_armed_ = 1;
    tree.StartLabelEdit();
}
