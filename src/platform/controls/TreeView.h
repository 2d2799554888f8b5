#pragma once

#include "platform/controls/ImageList.h"
#include "platform/numbers.h"

#include <QItemSelectionModel>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QTreeView>

#include <memory>
#include <vector>

class LabelEditor;
class QMimeData;
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
    /// Adds a child for each of `texts`, its key the text behind `key_start`, and makes `node` Sorted: the same as an
    /// Add of each in turn and set_Sorted, but heard of by the view at once where there were no children yet. The first
    /// key that is in use ends it with Add's error; the children before it stay.
    void fill(TreeNode* node, const QString& key_start, const QStringList& texts, const QString& image);
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

    /// Lets a person edit the selected node's Text in its place: raises BeforeLabelEdit and, when the edit is accepted,
    /// AfterLabelEdit. It is accepted by Enter, Tab or a click elsewhere, and cancelled by Esc or when another node
    /// gets selected or the node goes. The focus is the tree's again after it. Nothing without a selected node or while
    /// an edit is open.
    void StartLabelEdit();
    bool is_editing() const;
    /// Whether F2 and a second, unhurried click on the selected node start a label edit. Off at first.
    void set_LabelEdit_automatic(bool on);

    /// Whether pulling a node with the left button drags its text. Off at first. A press that ends in a drag selects
    /// nothing and raises neither NodeClick nor MouseUp.
    void set_OLEDragMode(bool automatic);
    /// Whether the nodes can be dropped on; off at first. A drag is welcome while there is a DropHighlight.
    void set_OLEDropMode(bool on);
    /// The node marked as target of a drag; nullptr for none. There is none once the drag has left or ended.
    TreeNode* DropHighlight() const;
    void set_DropHighlight(TreeNode* node);

Q_SIGNALS:
    void NodeClick(TreeNode* node); ///< a person chose a node by mouse or key; also when it was the selected one
    void Expand(TreeNode* node);
    void Collapse(TreeNode* node);
    void MouseDown(i16 button, QPoint point);
    void MouseMove(i16 buttons, QPoint point);
    void MouseUp(i16 button, QPoint point);
    void ContextKey(); ///< the menu key
    void GotFocus();
    void BeforeLabelEdit(bool& cancel); ///< an edit of the selected node's Text is about to open, unless cancelled
    /// An edit was accepted; the box is gone. The node's Text becomes `text`, unless cancelled. Once for each edit.
    void AfterLabelEdit(bool& cancel, const QString& text);
    /// A node is about to be dragged. `data` holds its text; more may be added.
    void OLEStartDrag(QMimeData& data);
    void OLEDragOver(const QMimeData& data, QPoint point); ///< a drag has come to or moved to a point of the viewport
    void OLEDragLeave();                                   ///< a drag went away without a drop
    void OLEDragDrop(const QMimeData& data, QPoint point);

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void updateEditorGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    /// The node whose picture or text, not its arrow, is at a point of the viewport; nullptr for none.
    TreeNode* clickable_at(QPoint point) const;

    void end_label_edit(const QPersistentModelIndex& edited, bool accepted, const QString& text);
    bool pulls_node(const QMouseEvent& event) const;
    void start_drag();
    /// Selects what was selected before the press, without scrolling there.
    void take_back_press();

    std::unique_ptr<TreeModel> model_;
    QPersistentModelIndex pressed_;         ///< the node pressed, until the mouse is released or drags it
    QPersistentModelIndex selected_before_; ///< the node that was selected before that press
    QPoint press_point_;
    bool press_selected_ = false; ///< whether that press has changed the selection
    bool has_dragged_ = false;    ///< whether that press has become a drag
    bool drags_nodes_ = false;

    QPersistentModelIndex drop_highlight_;

    QPointer<LabelEditor> editor_;
    QTimer slow_click_; ///< runs from a click on the selected node until it can't be a double click
    bool edits_labels_ = false;
    bool focused_by_press_ = false; ///< whether the last press gave the tree the focus
};
