#include "explorer/folder_nodes.h"

#include "core/mod_of_grobal_var.h"
#include "platform/controls/TreeView.h"

using namespace Qt::StringLiterals;

QString folder_of(const TreeNode* node)
{
    return node->Key() + u'\\';
}

void add_subfolders(TreeView& tree, TreeNode* node, const QString& path)
{
    errors_ignored([&] {
        for (const QString& name : shared.fso.GetFolder(path).SubFolders())
            tree.Add(node, path + name, name, folder_image);
        tree.set_Sorted(node);
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
