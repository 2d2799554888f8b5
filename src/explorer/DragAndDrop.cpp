#include "explorer/DragAndDrop.h"

#include "core/mod_of_grobal_var.h"
#include "explorer/FileCommands.h"
#include "explorer/FileList.h"
#include "explorer/FolderTree.h"
#include "platform/controls/ListView.h"
#include "platform/controls/SHFileOperation.h"
#include "platform/controls/TreeView.h"
#include "platform/controls/message_window.h"
#include "platform/file_address.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

/// Values of `shared.drag_source_kind`.
enum DragSourceKind : i16
{
    from_tree = 1,
    from_list = 2
};

const QString plain_text = u"text/plain"_s;

/// Lets other programs take the files as well.
void offer_files(QMimeData& data, const QStringList& paths)
{
    QByteArray addresses;
    for (const QString& path : paths) {
        if (const QByteArray address = file_address(path); !address.isEmpty())
            addresses += address + "\r\n";
    }
    if (!addresses.isEmpty())
        data.setData(u"text/uri-list"_s, addresses);
}

/// Gives whether all was done.
bool move_on_disk(const QString& from, const QString& folder)
{
    SHFILEOPSTRUCT operation = {.wFunc = FO_MOVE, .pFrom = from, .pTo = folder};
    return SHFileOperation(operation) == 0;
}

} // namespace

DragAndDrop::DragAndDrop(const Panes& panes, QObject* parent) : QObject(parent), panes_(panes)
{
    TreeView& tree = panes_.tvTreeView;
    ListView& list = panes_.lvListView;
    tree.set_OLEDragMode(true);
    tree.set_OLEDropMode(true);
    list.set_OLEDragMode(true);
    connect(&tree, &TreeView::MouseDown, this,
            guarded([this](i16 /*button*/, QPoint point) { tree_MouseDown(point); }));
    connect(&tree, &TreeView::OLEStartDrag, this, guarded([this](QMimeData& data) { tree_OLEStartDrag(data); }));
    connect(&list, &ListView::OLEStartDrag, this, guarded([this](QMimeData& data) { list_OLEStartDrag(data); }));
    connect(&tree, &TreeView::OLEDragOver, this,
            guarded([this](const QMimeData& data, QPoint point) { OLEDragOver(data, point); }));
    connect(&tree, &TreeView::OLEDragDrop, this,
            guarded([this](const QMimeData& data, QPoint point) { OLEDragDrop(data, point); }));
}

void DragAndDrop::tree_MouseDown(QPoint point) const
{
    shared.drag_source_kind = from_tree;
    const TreeNode* const node = panes_.tvTreeView.HitTest(point);
    if (node == nullptr)
        return;
    shared.drag_node_key = node->Key();
    errors_ignored([&] { shared.drag_node_index = checked<i16>(panes_.tvTreeView.Index(node)); });
}

void DragAndDrop::tree_OLEStartDrag(QMimeData& data)
{
    dragged_ = &data;
    offer_files(data, {shared.drag_node_key});
}

void DragAndDrop::list_OLEStartDrag(QMimeData& data)
{
    load_copy_list(panes_.lvListView);
    shared.copy_source_kind = copied_files;
    shared.drag_source_kind = from_list;
    dragged_ = &data;
    offer_files(data, copied_file_paths());
}

// The data of an own drag may outlive it, so that another program can still fetch it after a drop there.
void DragAndDrop::OLEDragOver(const QMimeData& data, QPoint point) const
{
    const bool is_own = dragged_ == &data;
    panes_.tvTreeView.set_DropHighlight(is_own ? panes_.tvTreeView.HitTest(point) : nullptr);
}

void DragAndDrop::OLEDragDrop(const QMimeData& data, QPoint point)
{
    TreeNode* const target = panes_.tvTreeView.HitTest(point);
    const bool is_highlighted = panes_.tvTreeView.DropHighlight() != nullptr;
    panes_.tvTreeView.set_DropHighlight(nullptr);
    dragged_.clear();
    if (target != nullptr && target->Key() != shared.tree_node_path && is_highlighted)
        errors_ignored([&] { drop_on(target, data); });
}

// Nothing can be dropped on the computer: it has no folder, and no parent to become the current one.
void DragAndDrop::drop_on(TreeNode* target, const QMimeData& data)
{
    if (target->Parent() == nullptr)
        return;
    shared.tree_node_path = target->Key();
    shared.tree_parent_key = target->Parent()->Key();
    shared.current_folder = target->Key() + u'\\';
    panes_.tvTreeView.set_Selected(target);
    if (shared.drag_source_kind == from_tree)
        move_folder();
    else if (shared.drag_source_kind == from_list)
        move_files(data);
}

// Indexes shift when nodes go and the remembered one does not follow, on purpose: what the disk still has, stays.
void DragAndDrop::move_folder() const
{
    if (move_on_disk(shared.drag_node_key, shared.tree_node_path)) {
        const TreeNode* const moved = panes_.tvTreeView.Item(shared.drag_node_index);
        if (!shared.fso.FolderExists(moved->Key()))
            panes_.tree.remove_tree_node(shared.drag_node_index);
    }
    panes_.tree.refresh_all();
}

void DragAndDrop::move_files(const QMimeData& data) const
{
    if (data.hasFormat(plain_text) && shared.copy_list_count >= 1) {
        shared.drag_node_key = copied_file_paths().join(QChar(QChar::Null));
        move_on_disk(shared.drag_node_key, shared.tree_node_path);
    }
    panes_.list.FillListView(shared.tree_node_path);
}
