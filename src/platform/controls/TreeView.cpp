#include "platform/controls/TreeView.h"

#include "platform/controls/LabelEditor.h"
#include "platform/controls/TreeModel.h"
#include "platform/controls/drag.h"
#include "platform/controls/focus.h"
#include "platform/controls/mouse.h"
#include "platform/display_text.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
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
    slow_click_.setSingleShot(true);
    connect(&slow_click_, &QTimer::timeout, this, [this] {
        if (hasFocus())
            StartLabelEdit();
    });
}

TreeView::~TreeView()
{
    delete editor_;
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

void TreeView::fill(TreeNode* node, const QString& key_start, const QStringList& texts, const QString& image)
{
    model_->fill(node, key_start, texts, image);
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
    if (expanded == Expanded(node) || (expanded && node->children().empty()))
        return;
    // The rows find their places when the view is painted or asked for one, and not at each node that code opens.
    scheduleDelayedItemsLayout();
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
    slow_click_.stop();
    Q_EMIT MouseDown(mouse_button_number(event->button()), point);
    const bool chooses = event->button() == Qt::LeftButton || event->button() == Qt::RightButton;
    const TreeNode* selected = SelectedItem();
    selected_before_ = currentIndex();
    pressed_ = chooses ? model_->index_of(clickable_at(point)) : QModelIndex();
    // Any button would select for Qt's view, and nobody would be told of it.
    if (chooses)
        QTreeView::mousePressEvent(event);
    press_selected_ = SelectedItem() != selected;
    press_point_ = point;
    has_dragged_ = false;
}

void TreeView::mouseMoveEvent(QMouseEvent* event)
{
    Q_EMIT MouseMove(mouse_buttons_number(event->buttons()), event->position().toPoint());
    // Sliding over the nodes with the button down must not choose those that it passes.
    if (event->buttons() == Qt::NoButton)
        QTreeView::mouseMoveEvent(event);
    else if (pulls_node(*event))
        start_drag();
}

void TreeView::mouseReleaseEvent(QMouseEvent* event)
{
    if (std::exchange(has_dragged_, false))
        return;
    const QPoint point = event->position().toPoint();
    const i16 button = mouse_button_number(event->button());
    QTreeView::mouseReleaseEvent(event);
    const QPersistentModelIndex pressed = std::exchange(pressed_, QPersistentModelIndex());
    const bool ends_on_it = pressed.isValid() && clickable_at(point) == TreeModel::node_at(pressed);
    const bool was_focused = !std::exchange(focused_by_press_, false);
    if (edits_labels_ && event->button() == Qt::LeftButton && ends_on_it && !press_selected_ && was_focused)
        slow_click_.start(QApplication::doubleClickInterval());
    // A press that has selected a node is told even if the mouse slid off before it ended.
    if (pressed.isValid() && (press_selected_ || ends_on_it))
        Q_EMIT NodeClick(TreeModel::node_at(pressed));
    Q_EMIT MouseUp(button, point);
}

void TreeView::mouseDoubleClickEvent(QMouseEvent* event)
{
    slow_click_.stop();
    QTreeView::mouseDoubleClickEvent(event);
}

/// The rows, and so the bar of the selected one, reach from side to side.
void TreeView::resizeEvent(QResizeEvent* event)
{
    header()->setMinimumSectionSize(viewport()->width());
    QTreeView::resizeEvent(event);
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
    if (edits_labels_ && event->key() == Qt::Key_F2 && event->modifiers() == Qt::NoModifier) {
        StartLabelEdit();
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
    focused_by_press_ = reason == Qt::MouseFocusReason;
    QTreeView::focusInEvent(event);
    if (!is_returning_focus(reason))
        Q_EMIT GotFocus();
}

void TreeView::StartLabelEdit()
{
    if (is_editing() || SelectedItem() == nullptr)
        return;
    const QPointer<TreeView> self(this);
    bool cancel = false;
    Q_EMIT BeforeLabelEdit(cancel);
    if (self.isNull() || cancel || is_editing() || SelectedItem() == nullptr)
        return;
    slow_click_.stop();
    scrollTo(currentIndex());
    editor_ = new LabelEditor(*this, currentIndex(), SelectedItem()->Text(), LabelEditor::Selects::all);
    connect(editor_, &LabelEditor::Ended, this,
            [this, edited = QPersistentModelIndex(currentIndex())](bool accepted, const QString& text) {
                end_label_edit(edited, accepted, text);
            });
}

void TreeView::end_label_edit(const QPersistentModelIndex& edited, bool accepted, const QString& text)
{
    if (!accepted)
        return;
    // The handler may remove the node, start the next edit or destroy the tree.
    const QPointer<TreeView> self(this);
    bool cancel = false;
    Q_EMIT AfterLabelEdit(cancel, text);
    if (!self.isNull() && !cancel && edited.isValid())
        set_Text(TreeModel::node_at(edited), text);
}

bool TreeView::is_editing() const
{
    return !editor_.isNull() && editor_->is_open();
}

void TreeView::set_LabelEdit_automatic(bool on)
{
    edits_labels_ = on;
}

void TreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    slow_click_.stop();
    // An edit acts on the selected node, so it can't go on when that is another one.
    if (is_editing())
        editor_->cancel();
    QTreeView::currentChanged(current, previous);
}

void TreeView::updateEditorGeometries()
{
    QTreeView::updateEditorGeometries();
    if (is_editing())
        editor_->place();
}

void TreeView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    if (is_editing())
        editor_->place(); // a long way is no scrolling to Qt's view, and leaves the box behind
}

void TreeView::set_OLEDragMode(bool automatic)
{
    drags_nodes_ = automatic;
}

bool TreeView::pulls_node(const QMouseEvent& event) const
{
    return drags_nodes_ && event.buttons() == Qt::LeftButton && pressed_.isValid() &&
           (event.position().toPoint() - press_point_).manhattanLength() >= QApplication::startDragDistance();
}

void TreeView::start_drag()
{
    const TreeNode* node = TreeModel::node_at(pressed_);
    auto content = std::make_unique<QMimeData>();
    content->setText(node->Text());
    const QPixmap picture =
        drag_picture(*this, pressed_.data(Qt::DecorationRole).value<QIcon>(), display_text(node->Text()));
    take_back_press();
    pressed_ = QModelIndex();
    has_dragged_ = true;
    const QPointer<TreeView> self(this);
    Q_EMIT OLEStartDrag(*content);
    if (!self.isNull())
        run_drag(*this, std::move(content), picture);
}

void TreeView::take_back_press()
{
    if (!press_selected_ || currentIndex() != pressed_)
        return;
    setAutoScroll(false);
    if (selected_before_.isValid())
        setCurrentIndex(selected_before_);
    else
        selectionModel()->clear();
    setAutoScroll(true);
}

void TreeView::set_OLEDropMode(bool on)
{
    setAcceptDrops(on);
}

TreeNode* TreeView::DropHighlight() const
{
    return drop_highlight_.isValid() ? TreeModel::node_at(drop_highlight_) : nullptr;
}

void TreeView::set_DropHighlight(TreeNode* node)
{
    if (node == DropHighlight())
        return;
    drop_highlight_ = model_->index_of(node);
    viewport()->update();
}

void TreeView::dragEnterEvent(QDragEnterEvent* event)
{
    Q_EMIT OLEDragOver(*event->mimeData(), event->position().toPoint());
    // Only a drag that may enter is heard of again; whether it may be dropped is answered at each move.
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void TreeView::dragMoveEvent(QDragMoveEvent* event)
{
    Q_EMIT OLEDragOver(*event->mimeData(), event->position().toPoint());
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(DropHighlight() != nullptr);
}

void TreeView::dragLeaveEvent(QDragLeaveEvent* /*event*/)
{
    Q_EMIT OLEDragLeave();
    set_DropHighlight(nullptr);
}

void TreeView::dropEvent(QDropEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(DropHighlight() != nullptr);
    const QPointer<TreeView> self(this);
    Q_EMIT OLEDragDrop(*event->mimeData(), event->position().toPoint());
    if (!self.isNull())
        set_DropHighlight(nullptr);
}

void TreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QTreeView::drawRow(painter, option, index);
    if (index != drop_highlight_)
        return;
    constexpr int line = 2;
    QColor fill = palette().color(QPalette::Highlight);
    painter->save();
    painter->setPen(QPen(fill, line));
    fill.setAlphaF(0.25F);
    painter->setBrush(fill);
    painter->drawRect(visualRect(index).adjusted(line / 2, line / 2, -line / 2, -line / 2));
    painter->restore();
}
