#include "platform/controls/TreeView.h"

#include "platform/controls/TreeModel.h"
#include "platform/controls/focus.h"
#include "platform/controls/mouse.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QSignalBlocker>

TreeView::TreeView(QWidget* parent) : QTreeView(parent), model_(std::make_unique<TreeModel>())
{
    setModel(model_.get());
    setHeaderHidden(true);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setResizeContentsPrecision(0);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    connect(this, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { Q_EMIT Expand(TreeModel::node_at(index)); });
    connect(this, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { Q_EMIT Collapse(TreeModel::node_at(index)); });
}

TreeView::~TreeView()
{
    setModel(nullptr);
}

void TreeView::set_images(const ImageList& images)
{
    model_->set_images(images);
    viewport()->update();
}

TreeNode* TreeView::Add(TreeNode* parent, const QString& key, const QString& text, const QString& image)
{
    return model_->Add(parent, key, text, image);
}

void TreeView::Remove(int index)
{
    const TreeNode* node = Item(index);
    for (const TreeNode* selected = SelectedItem(); selected != nullptr; selected = selected->Parent()) {
        if (selected == node)
            set_Selected(model_->neighbour(node));
    }
    TreeNode* parent = node->Parent();
    model_->Remove(node);
    if (parent != nullptr && parent->children().empty()) {
        // A node without children is not expanded; nobody closed it, so nobody is told.
        const QSignalBlocker silent(this);
        collapse(model_->index_of(parent));
    }
}

int TreeView::Count() const
{
    return model_->Count();
}

TreeNode* TreeView::Item(int index) const
{
    return model_->Item(index);
}

TreeNode* TreeView::Item(const QString& key) const
{
    return model_->Item(key);
}

int TreeView::Index(const TreeNode* node) const
{
    return model_->Index(node);
}

void TreeView::set_Key(TreeNode* node, const QString& key)
{
    model_->set_Key(node, key);
}

void TreeView::set_Text(TreeNode* node, const QString& text)
{
    model_->set_Text(node, text);
}

void TreeView::set_Image(TreeNode* node, const QString& image)
{
    model_->set_Image(node, image);
}

void TreeView::set_Sorted(TreeNode* node)
{
    model_->set_Sorted(node);
}

bool TreeView::Expanded(const TreeNode* node) const
{
    return isExpanded(model_->index_of(node));
}

void TreeView::set_Expanded(TreeNode* node, bool expanded)
{
    if (expanded && node->children().empty())
        return;
    setExpanded(model_->index_of(node), expanded);
}

TreeNode* TreeView::SelectedItem() const
{
    const QModelIndex current = currentIndex();
    return current.isValid() ? TreeModel::node_at(current) : nullptr;
}

void TreeView::set_Selected(TreeNode* node)
{
    setCurrentIndex(model_->index_of(node));
}

TreeNode* TreeView::HitTest(QPoint point) const
{
    const QModelIndex index = viewport()->rect().contains(point) ? indexAt(point) : QModelIndex();
    return index.isValid() ? TreeModel::node_at(index) : nullptr;
}

QRect TreeView::node_rect(const TreeNode* node) const
{
    return visualRect(model_->index_of(node));
}

TreeNode* TreeView::clickable_at(QPoint point) const
{
    TreeNode* node = HitTest(point);
    if (node == nullptr || node->children().empty())
        return node;
    const int arrow_right = node_rect(node).left();
    const bool is_arrow = point.x() < arrow_right && point.x() >= arrow_right - indentation();
    return is_arrow ? nullptr : node;
}

QItemSelectionModel::SelectionFlags TreeView::selectionCommand(const QModelIndex& index, const QEvent* event) const
{
    // A press selects, with any keys held; nothing takes the selection away from a node again.
    const bool is_release = event != nullptr && event->type() == QEvent::MouseButtonRelease;
    return is_release || !index.isValid() ? QItemSelectionModel::NoUpdate : QItemSelectionModel::ClearAndSelect;
}

void TreeView::mousePressEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    Q_EMIT MouseDown(mouse_button_number(event->button()), point);
    const bool chooses = event->button() == Qt::LeftButton || event->button() == Qt::RightButton;
    const TreeNode* selected = SelectedItem();
    pressed_ = chooses ? model_->index_of(clickable_at(point)) : QModelIndex();
    QTreeView::mousePressEvent(event);
    press_selected_ = SelectedItem() != selected;
}

void TreeView::mouseMoveEvent(QMouseEvent* event)
{
    Q_EMIT MouseMove(mouse_buttons_number(event->buttons()), event->position().toPoint());
    // Sliding over the nodes with the button down must not choose those that it passes.
    if (event->buttons() == Qt::NoButton || dragEnabled())
        QTreeView::mouseMoveEvent(event);
}

void TreeView::mouseReleaseEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    const i16 button = mouse_button_number(event->button());
    QTreeView::mouseReleaseEvent(event);
    const QPersistentModelIndex pressed = std::exchange(pressed_, QPersistentModelIndex());
    // A press that has selected a node is told even if the mouse slid off before it ended.
    if (pressed.isValid() && (press_selected_ || clickable_at(point) == TreeModel::node_at(pressed)))
        Q_EMIT NodeClick(TreeModel::node_at(pressed));
    Q_EMIT MouseUp(button, point);
}

void TreeView::keyPressEvent(QKeyEvent* event)
{
    TreeNode* before = SelectedItem();
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        Q_EMIT ContextKey();
        return;
    }
    if (before != nullptr && (event->key() == Qt::Key_Plus || event->key() == Qt::Key_Asterisk)) {
        // On purpose no key expands all that is below a node: children are added as nodes open, so that would read a
        // whole drive.
        set_Expanded(before, true);
        return;
    }
    QTreeView::keyPressEvent(event);
    TreeNode* after = SelectedItem();
    if (after != nullptr && after != before)
        Q_EMIT NodeClick(after);
}

void TreeView::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Keyboard)
        Q_EMIT ContextKey();
}

void TreeView::focusInEvent(QFocusEvent* event)
{
    const Qt::FocusReason reason = event->reason();
    QTreeView::focusInEvent(event);
    if (!is_returning_focus(reason))
        Q_EMIT GotFocus();
}
