#include "platform/controls/TreeModel.h"

#include "platform/RunTimeError.h"
#include "platform/display_text.h"
#include "platform/text.h"

#include <algorithm>

namespace {

bool stands_before(const std::unique_ptr<TreeNode>& a, const std::unique_ptr<TreeNode>& b)
{
    return compare_texts(a->Text(), b->Text()) < 0;
}

} // namespace

void TreeModel::set_images(const ImageList& images)
{
    images_ = images;
}

TreeNode* TreeModel::Add(TreeNode* parent, const QString& key, const QString& text, const QString& image)
{
    std::unique_ptr<TreeNode> added = new_node(parent, key, text, image);
    if (!added)
        throw RunTimeError(RunTimeError::key_not_unique);
    TreeNode* node = added.get();
    TreeNode& holder = holder_of(node);
    const auto place = place_for(holder, text);
    const int row = static_cast<int>(place - holder.children_.begin());
    beginInsertRows(index_of(parent), row, row);
    holder.children_.insert(place, std::move(added));
    holder.numbered_ = std::min(holder.numbered_, row);
    endInsertRows();
    return node;
}

void TreeModel::fill(TreeNode* node, const QString& key_start, const QStringList& texts, const QString& image)
{
    if (!node->children_.empty()) {
        for (const QString& text : texts)
            Add(node, key_start + text, text, image);
        set_Sorted(node);
        return;
    }
    // A table of keys that grows looks at each of them again, so it grows in large steps.
    constexpr qsizetype growth = 4;
    if (const qsizetype wanted = keys_.size() + texts.size(); wanted > keys_.capacity())
        keys_.reserve(growth * wanted);
    Nodes added;
    added.reserve(static_cast<std::size_t>(texts.size()));
    bool all_new = true;
    for (auto text = texts.begin(); all_new && text != texts.end(); ++text) {
        std::unique_ptr<TreeNode> child = new_node(node, key_start + *text, *text, image);
        all_new = child != nullptr;
        if (all_new)
            added.push_back(std::move(child));
    }
    node->sorted_ = node->sorted_ || all_new;
    if (node->sorted_)
        std::stable_sort(added.begin(), added.end(), stands_before);
    if (!added.empty()) {
        beginInsertRows(index_of(node), 0, static_cast<int>(added.size()) - 1);
        node->children_ = std::move(added);
        node->numbered_ = 0;
        endInsertRows();
    }
    if (!all_new)
        throw RunTimeError(RunTimeError::key_not_unique);
}

void TreeModel::Remove(const TreeNode* node)
{
    TreeNode& holder = holder_of(node);
    const int row = row_of(node);
    beginRemoveRows(index_of(node->parent_), row, row);
    forget(*node);
    const auto place = holder.children_.begin() + row;
    const std::unique_ptr<TreeNode> removed = std::move(*place);
    holder.children_.erase(place);
    holder.numbered_ = std::min(holder.numbered_, row);
    endRemoveRows();
}

TreeNode* TreeModel::Item(int index) const
{
    if (index < 1 || index > Count())
        throw RunTimeError(RunTimeError::subscript_out_of_range);
    return by_serial_[static_cast<std::size_t>(order_.serial(index))];
}

TreeNode* TreeModel::Item(const QString& key) const
{
    return keys_.value(key, nullptr);
}

void TreeModel::set_Key(TreeNode* node, const QString& key)
{
    if (node->key_ == key)
        return;
    check_key_is_new(key);
    keys_.remove(node->key_);
    if (!key.isEmpty())
        keys_.insert(key, node);
    node->key_ = key;
}

void TreeModel::set_Text(TreeNode* node, const QString& text)
{
    node->text_ = text;
    tell(node, Qt::DisplayRole);
}

void TreeModel::set_Image(TreeNode* node, const QString& image)
{
    node->image_ = image;
    tell(node, Qt::DecorationRole);
}

void TreeModel::set_Sorted(TreeNode* node)
{
    node->sorted_ = true;
    Nodes& children = node->children_;
    if (std::is_sorted(children.begin(), children.end(), stands_before))
        return;
    const QList<QPersistentModelIndex> changed{index_of(node)};
    Q_EMIT layoutAboutToBeChanged(changed, VerticalSortHint);
    std::stable_sort(children.begin(), children.end(), stands_before);
    node->numbered_ = 0;
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before)
        after.append(index_of(node_at(index)));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged(changed, VerticalSortHint);
}

TreeNode* TreeModel::neighbour(const TreeNode* node) const
{
    const Nodes& siblings = holder_of(node).children_;
    const auto row = static_cast<std::size_t>(row_of(node));
    if (row + 1 < siblings.size())
        return siblings[row + 1].get();
    return row > 0 ? siblings[row - 1].get() : node->parent_;
}

QModelIndex TreeModel::index_of(const TreeNode* node) const
{
    return node == nullptr ? QModelIndex() : createIndex(row_of(node), 0, node);
}

TreeNode* TreeModel::node_at(const QModelIndex& index)
{
    return static_cast<TreeNode*>(index.internalPointer());
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (column != 0 || row < 0 || row >= rowCount(parent))
        return {};
    const TreeNode& holder = parent.isValid() ? *node_at(parent) : top_;
    return createIndex(row, column, holder.children_[static_cast<std::size_t>(row)].get());
}

QModelIndex TreeModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? index_of(node_at(child)->parent_) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const
{
    const TreeNode& holder = parent.isValid() ? *node_at(parent) : top_;
    return static_cast<int>(holder.children_.size());
}

int TreeModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 1;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const TreeNode* node = node_at(index);
    if (role == Qt::DisplayRole)
        return display_text(node->text_);
    if (role == Qt::DecorationRole)
        return images_.icon(node->image_);
    return {};
}

std::unique_ptr<TreeNode> TreeModel::new_node(TreeNode* parent, const QString& key, const QString& text,
                                              const QString& image)
{
    auto node = std::make_unique<TreeNode>();
    if (!key.isEmpty()) {
        TreeNode*& owner = keys_[key];
        if (owner != nullptr)
            return nullptr;
        owner = node.get();
    }
    node->key_ = key;
    node->text_ = text;
    node->image_ = image;
    node->parent_ = parent;
    node->serial_ = order_.append();
    by_serial_.push_back(node.get());
    return node;
}

const TreeNode& TreeModel::holder_of(const TreeNode* node) const
{
    return node->parent_ != nullptr ? *node->parent_ : top_;
}

TreeNode& TreeModel::holder_of(const TreeNode* node)
{
    return node->parent_ != nullptr ? *node->parent_ : top_;
}

int TreeModel::row_of(const TreeNode* node) const
{
    const TreeNode& holder = holder_of(node);
    const Nodes& siblings = holder.children_;
    const bool is_numbered =
        node->row_ < holder.numbered_ && siblings[static_cast<std::size_t>(node->row_)].get() == node;
    // Numbering goes on from where it stopped and no further than needed, so that removing one sibling after the other
    // doesn't number them all each time.
    for (bool found = is_numbered; !found; ++holder.numbered_) {
        const TreeNode* sibling = siblings[static_cast<std::size_t>(holder.numbered_)].get();
        sibling->row_ = holder.numbered_;
        found = sibling == node;
    }
    return node->row_;
}

TreeModel::Nodes::iterator TreeModel::place_for(TreeNode& holder, const QString& text)
{
    Nodes& children = holder.children_;
    if (!holder.sorted_)
        return children.end();
    return std::upper_bound(children.begin(), children.end(), text,
                            [](const QString& a, const auto& child) { return compare_texts(a, child->text_) < 0; });
}

void TreeModel::check_key_is_new(const QString& key) const
{
    if (keys_.contains(key))
        throw RunTimeError(RunTimeError::key_not_unique);
}

void TreeModel::forget(const TreeNode& node)
{
    for (const auto& child : node.children_)
        forget(*child);
    keys_.remove(node.key_);
    by_serial_[static_cast<std::size_t>(node.serial_)] = nullptr;
    order_.remove(node.serial_);
}

void TreeModel::tell(const TreeNode* node, int role)
{
    const QModelIndex index = index_of(node);
    Q_EMIT dataChanged(index, index, {role});
}
