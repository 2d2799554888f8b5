#include "explorer/folder_nodes.h"

#include "core/mod_of_grobal_var.h"
#include "platform/controls/TreeView.h"
#include "platform/paths.h"

using namespace Qt::StringLiterals;

QString folder_of(const TreeNode* node)
{
    return node->Key() + u'\\';
}

void add_subfolders(TreeView& tree, TreeNode* node, const QString& path)
{
    errors_ignored([&] {
        // Reading a folder tells whether it is there, so GetFolder's question for that is left out.
        tree.fill(node, path, Folder(path, native_path(path)).SubFolders(), folder_image);
    });
}

void remove_children(TreeView& tree, const TreeNode* node)
{
    // From the last, so that the nodes behind need not move up each time.
    while (!node->children().empty())
        tree.Remove(tree.Index(node->children().back().get()));
}

void remove_stale_node(TreeView& tree, const QString& key)
{
    if (const TreeNode* const stale = tree.Item(key))
        tree.Remove(tree.Index(stale));
}

QString new_folder_name(const QString& key)
{
    const QString plain = u"new folder"_s;
    QString name = plain;
    for (int number = 1; shared.fso.FolderExists(key + u'\\' + name); ++number)
        name = plain + QString::number(number);
    return name;
}
