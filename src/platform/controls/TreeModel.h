#pragma once

#include "platform/controls/ImageList.h"
#include "platform/controls/OrderIndex.h"
#include "platform/controls/TreeView.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QStringList>

#include <memory>
#include <vector>

/// The nodes of a TreeView, for its view.
class TreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    using QAbstractItemModel::QAbstractItemModel;

    void set_images(const ImageList& images);

    TreeNode* Add(TreeNode* parent, const QString& key, const QString& text, const QString& image);
    void fill(TreeNode* node, const QString& key_start, const QStringList& texts, const QString& image);
    void Remove(const TreeNode* node);
    int Count() const { return order_.count(); }
    TreeNode* Item(int index) const;
    TreeNode* Item(const QString& key) const;
    int Index(const TreeNode* node) const { return order_.place(node->serial_); }

    void set_Key(TreeNode* node, const QString& key);
    void set_Text(TreeNode* node, const QString& text);
    void set_Image(TreeNode* node, const QString& image);
    void set_Sorted(TreeNode* node);

    /// The node that a removal of `node` leaves in its place: the next sibling, else the one before, else the parent.
    TreeNode* neighbour(const TreeNode* node) const;
    QModelIndex index_of(const TreeNode* node) const;
    static TreeNode* node_at(const QModelIndex& index);

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    using Nodes = std::vector<std::unique_ptr<TreeNode>>;

    /// A node that is found by key and index, but stands nowhere yet; nullptr when the key is in use.
    std::unique_ptr<TreeNode> new_node(TreeNode* parent, const QString& key, const QString& text, const QString& image);
    const TreeNode& holder_of(const TreeNode* node) const;
    TreeNode& holder_of(const TreeNode* node);
    int row_of(const TreeNode* node) const;
    static Nodes::iterator place_for(TreeNode& holder, const QString& text);
    void check_key_is_new(const QString& key) const;
    /// Takes a node and all below it out of the keys and indexes.
    void forget(const TreeNode& node);
    void tell(const TreeNode* node, int role);

    TreeNode top_; ///< holds the roots; no node's Parent
    QHash<QString, TreeNode*> keys_;
    std::vector<TreeNode*> by_serial_;
    OrderIndex order_;
    ImageList images_;
};
