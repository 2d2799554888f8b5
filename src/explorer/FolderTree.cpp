#include "explorer/FolderTree.h"

#include "core/Mod_of_nation.h"
#include "core/drive_table.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/folder_nodes.h"
#include "platform/controls/message_window.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// How a drive stands in the tree and in the drive table.
struct DriveLook
{
    QString image;
    QString text;
    i16 kind = 0;
};

DriveLook look_of(const Drive& drive)
{
    const QString letter = u"("_s + drive.DriveLetter + u":)"_s;
    switch (drive.Type) {
    case DriveType::removable:
        return {.image = u"35floppy"_s, .text = letter, .kind = 1};
    case DriveType::cd:
        return {.image = u"Cddrive"_s, .text = letter, .kind = 2};
    default:
        return {.image = u"DRIVE"_s, .text = drive.VolumeName + letter, .kind = 4};
    }
}

} // namespace

FolderTree::FolderTree(TreeView& tree, QObject* parent) : QObject(parent), tree_(tree)
{
    connect(&tree_, &TreeView::NodeClick, this, guarded([this](TreeNode* node) { Click_node_of_tree(node); }));
    connect(&tree_, &TreeView::Expand, this, guarded([this](TreeNode* node) { Tree_Expand(node); }));
    connect(&tree_, &TreeView::GotFocus, this, [] { shared.focus_pane = pane_tree; });
}

void FolderTree::init_main_tree()
{
    shared.main_sort_toggles = {};
    TreeNode* const root = tree_.Add(nullptr, root_key, get_computer_name(), root_key);
    tree_.set_Expanded(root, true);
    for (const Drive& drive : shared.fso.Drives()) {
        if (drive.Type == DriveType::remote)
            continue;
        const DriveLook look = look_of(drive);
        tree_.Add(root, drive.DriveLetter + u':', look.text, look.image);
        add_drive_entry(look.kind, drive.DriveLetter, drive.IsReady ? 1 : 0);
    }
    // Expanding once more reads the first level of every drive, so that drives with folders can be opened.
    tree_.set_Expanded(root, true);
    tree_.set_Selected(root);
}

void FolderTree::Click_node_of_tree(TreeNode* node)
{
    shared.current_folder = folder_of(node);
    errors_ignored([&] {
        move_open_folder_image(node);
        TreeNode* const shown = node->Key() == shared.tree_node_path ? node : show_files_of(node);
        if (shown != nullptr)
            make_current(shown);
    });
}

void FolderTree::move_open_folder_image(TreeNode* node)
{
    // Indexes shift when nodes go and the remembered one does not follow, on purpose: another node may be meant, or
    // none.
    if (shared.last_open_node_index != -1) {
        TreeNode* const last_open = tree_.Item(shared.last_open_node_index);
        if (last_open->Image() == open_folder_image)
            tree_.set_Image(last_open, folder_image);
    }
    if (node->Image() == folder_image)
        tree_.set_Image(node, open_folder_image);
}

/// Gives the node that is to become the current one: `node`, or its parent when the folder is gone; nullptr when the
/// click has ended because another node took over or there is no parent.
TreeNode* FolderTree::show_files_of(TreeNode* node)
{
    const QString key = node->Key();
    const TreeNode* const selected = tree_.SelectedItem();
    if (key.contains(root_key)) {
        Q_EMIT no_files_wanted();
        return node;
    }
    if (!shared.fso.FolderExists(key)) {
        show_name_message(msg_device_error, key);
        return select_parent_and_click();
    }
    FillNodeFolders(node, key + u'\\');
    Q_EMIT files_wanted(key + u'\\');
    return tree_.SelectedItem() == selected ? node : nullptr;
}

void FolderTree::make_current(TreeNode* node)
{
    shared.tree_node_path = node->Key();
    if (node->Parent() == nullptr)
        return;
    shared.tree_parent_key = node->Parent()->Key();
    shared.current_folder = folder_of(node);
    shared.last_open_node_index = checked<i16>(tree_.Index(node));
    shared.focus_pane = pane_tree;
}

/// Gives the parent; nullptr when there is none, or when the click on it selected yet another node.
TreeNode* FolderTree::select_parent_and_click()
{
    const TreeNode* const selected = tree_.SelectedItem();
    TreeNode* const parent = selected != nullptr ? selected->Parent() : nullptr;
    if (parent == nullptr)
        return nullptr;
    tree_.set_Selected(parent);
    Click_node_of_tree(parent);
    return tree_.SelectedItem() == parent ? parent : nullptr;
}

void FolderTree::Tree_Expand(TreeNode* node)
{
    for (const auto& child : node->children())
        FillNodeFolders_sub(child.get(), folder_of(child.get()));
}

void FolderTree::FillNodeFolders(TreeNode* node, const QString& path)
{
    errors_ignored([&] {
        const QStringList names = shared.fso.GetFolder(path).SubFolders();
        add_missing_folders(node, path, names);
        remove_vanished_folders(node, names);
    });
}

void FolderTree::add_missing_folders(TreeNode* node, const QString& path, const QStringList& names)
{
    QSet<QString> present;
    for (const auto& child : node->children())
        present.insert(child->Text());
    for (const QString& name : names) {
        if (present.contains(name))
            continue;
        tree_.Add(node, path + name, name, folder_image);
        present.insert(name); // the disk may tell it twice
    }
}

void FolderTree::remove_vanished_folders(const TreeNode* node, const QStringList& names)
{
    const QSet<QString> on_disk(names.begin(), names.end());
    std::vector<const TreeNode*> vanished;
    for (const auto& child : node->children()) {
        if (!on_disk.contains(child->Text()))
            vanished.push_back(child.get());
    }
    // From the last, so that the nodes behind need not move up each time.
    std::for_each(vanished.rbegin(), vanished.rend(),
                  [this](const TreeNode* child) { remove_tree_node(tree_.Index(child)); });
}

void FolderTree::FillNodeFolders_sub(TreeNode* node, const QString& path)
{
    add_subfolders(tree_, node, path);
}

void FolderTree::remove_tree_node(int index)
{
    tree_.Remove(index);
}

void FolderTree::refresh_all()
{
    TreeNode* const selected = tree_.SelectedItem();
    if (selected == nullptr || tree_.Index(selected) == 1)
        return;
    const QString path = folder_of(selected);
    FillNodeFolders(selected, path);
    Q_EMIT files_wanted(path);
}

void FolderTree::fall_back_to_parent()
{
    select_parent_and_click();
    refresh_all();
}

QString FolderTree::selected_key() const
{
    const TreeNode* const selected = tree_.SelectedItem();
    return selected != nullptr ? selected->Key() : QString();
}

QString get_computer_name()
{
    const QString name = GetComputerNameA();
    return name.isEmpty() ? u"Unknown"_s : name;
}

i16 check_dirve(const QString& path, const QString& selected_key)
{
    if (selected_key == root_key)
        return 2;
    const QString drive_name = path.left(2);
    const auto has_name = [&](const Drive& drive) { return drive.DriveLetter + u':' == drive_name; };
    const auto& present = shared.fso.Drives();
    const auto drive = std::ranges::find_if(present, has_name);
    if (drive == present.end())
        return 0;
    const bool is_cd = drive->Type == DriveType::cd;
    if (path.size() == 2)
        return is_cd ? 3 : 1;
    return is_cd ? 4 : 0;
}
