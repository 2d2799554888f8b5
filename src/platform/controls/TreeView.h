#pragma once

#include "platform/controls/ImageList.h"
#include "platform/numbers.h"

#include <QItemSelectionModel>
#include <QPersistentModelIndex>
#include <QString>
#include <QTreeView>

#include <memory>
#include <vector>

class TreeModel;

/// A node of a tree. Owned by its tree.
class TreeNode
{
public:
    const QString& Key() const { return key_; }
    const QString& Text() const { return text_; }
    const QString& Image() const { return image_; } ///< key in the tree's images
    TreeNode* Parent() const { return parent_; }    ///< nullptr for a root
    /// The children in the order shown.
    const std::vector<std::unique_ptr<TreeNode>>& children() const { return children_; }
    bool Sorted() const { return sorted_; }

private:
    friend class TreeModel;
    QString key_;
    QString text_;
    QString image_;
    TreeNode* parent_ = nullptr;
    std::vector<std::unique_ptr<TreeNode>> children_;
    bool sorted_ = false;
    int serial_ = 0;           ///< order of adding
    mutable int row_ = 0;      ///< place among the siblings, if it is one of those that are numbered
    mutable int numbered_ = 0; ///< how many of the children, from the first, know their place
};

/// A tree whose nodes are found by key and by an index from 1 in the order of adding; the indexes close up when a node
/// goes. Removing the selected node selects its next sibling, else the one before, else the parent. Made for a hundred
/// thousand nodes. Nothing that code does raises an event, but for set_Expanded, which raises Expand or Collapse where
/// it changes something.
class TreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit TreeView(QWidget* parent = nullptr);
    ~TreeView() override;
    Q_DISABLE_COPY_MOVE(TreeView)

    void set_images(const ImageList& images);

    /// Adds a node as last child of `parent` (nullptr: as root), or at its place by text when the parent is Sorted.
    /// Raises "Key is not unique in collection".
    TreeNode* Add(TreeNode* parent, const QString& key, const QString& text, const QString& image);
    /// Removes the node with this index and all below it. Raises "Subscript out of range".
    void Remove(int index);
    int Count() const;
    /// The node with an index from 1; raises "Subscript out of range".
    TreeNode* Item(int index) const;
    /// The node with a key; nullptr for none.
    TreeNode* Item(const QString& key) const;
    int Index(const TreeNode* node) const;

    void set_Key(TreeNode* node, const QString& key); ///< raises "Key is not unique in collection"
    void set_Text(TreeNode* node, const QString& text);
    void set_Image(TreeNode* node, const QString& image);
    /// Sorts the children by text, case ignored, and keeps later children sorted as well.
    void set_Sorted(TreeNode* node);
    bool Expanded(const TreeNode* node) const;
    /// A node without children can't be expanded and stays as it is.
    void set_Expanded(TreeNode* node, bool expanded);
    /// The selected node; nullptr for none.
    TreeNode* SelectedItem() const;
    void set_Selected(TreeNode* node);
    /// The node under a point of this widget's viewport, nullptr for none.
    TreeNode* HitTest(QPoint point) const;
    QRect node_rect(const TreeNode* node) const;

Q_SIGNALS:
    void NodeClick(TreeNode* node); ///< a person chose a node by mouse or key; also when it was the selected one
    void Expand(TreeNode* node);
    void Collapse(TreeNode* node);
    void MouseDown(i16 button, QPoint point);
    void MouseMove(i16 buttons, QPoint point);
    void MouseUp(i16 button, QPoint point);
    void ContextKey(); ///< the menu key
    void GotFocus();

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    /// The node whose picture or text, not its arrow, is at a point of the viewport; nullptr for none.
    TreeNode* clickable_at(QPoint point) const;

    std::unique_ptr<TreeModel> model_;
    QPersistentModelIndex pressed_; ///< the node pressed, until the mouse is released
    bool press_selected_ = false;   ///< whether that press has changed the selection
};
