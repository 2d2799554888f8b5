#include "frame/ExplorerCommands.h"

#include "explorer/FolderTree.h"
#include "explorer/tree_menu.h"
#include "frame/MainControls.h"
#include "frame/MainMenus.h"
#include "platform/controls/message_window.h"
#include "platform/controls/mouse.h"

#include <QKeySequence>

#include <algorithm>

using namespace Qt::StringLiterals;

ExplorerCommands::ExplorerCommands(const MainControls& controls, const MainMenus& menus, const Panes& panes,
                                   std::function<void()> release_player, QObject* parent)
    : QObject(parent),
      controls_(controls),
      menus_(menus),
      panes_(panes),
      files_(panes),
      labels_(panes, std::move(release_player)),
      edit_(files_, {.txtArtist = *controls.txtArtist,
                     .txtFilename = *controls.txtFilename,
                     .txtTitle = *controls.txtTitle,
                     .txtGenre = *controls.txtGenre})
{
    connect_menus();
    connect_toolbar();
    connect_tree_menu();
}

void ExplorerCommands::do_on(const QString& entry, std::function<void()> handler)
{
    menus_.do_on(entry, *this, std::move(handler));
}

void ExplorerCommands::connect_menus()
{
    for (const QString& entry : {u"mnu_tree_add_folder"_s, u"menu_File_add_folder"_s})
        do_on(entry, [this] { labels_.mnu_tree_add_folder_Click(); });
    for (const QString& entry : {u"mnu_tree_paste"_s, u"mnu_ListView_paste"_s})
        do_on(entry, [this] { files_.mnu_tree_paste_Click(); });
    do_on(u"mnu_tree_copy"_s, [this] { files_.mnu_tree_copy_Click(); });
    do_on(u"mnu_ListView_copy"_s, [this] { files_.mnu_ListView_copy_Click(); });
    do_on(u"mnu_tree_delete"_s, [this] { files_.mnu_tree_delete_Click(); });
    do_on(u"mnu_ListView_delete"_s, [this] { files_.mnu_ListView_delete_Click(); });
    do_on(u"mnu_tree_rename"_s, [this] { labels_.mnu_tree_rename_Click(); });
    do_on(u"mnu_ListView_rename"_s, [this] { labels_.mnu_ListView_rename_Click(); });
    do_on(u"menu_Edit_copy"_s, [this] { edit_.menu_Edit_copy_Click(); });
    do_on(u"menu_Edit_paste"_s, [this] { edit_.menu_Edit_paste_Click(); });
    do_on(u"menu_Edit_delete"_s, [this] { edit_.menu_Edit_delete_Click(); });
    do_on(u"menu_View_refresh"_s, [this] { refresh(); });
    connect_folder_entry();
}

// The entry is grey only in the open menu: its shortcut is for whatever node is selected when it is pressed.
void ExplorerCommands::connect_folder_entry()
{
    QAction& folder_entry = menus_.entry(u"menu_File_add_folder"_s);
    folder_entry.setAutoRepeat(false); // a key held down makes one folder
    connect(&menus_.menu_File(), &QMenu::aboutToShow, &folder_entry,
            [this, &folder_entry] { folder_entry.setEnabled(commanded_node(panes_.tvTreeView) != nullptr); });
    connect(&menus_.menu_File(), &QMenu::aboutToHide, &folder_entry,
            [&folder_entry] { folder_entry.setEnabled(true); });
}

void ExplorerCommands::connect_toolbar()
{
    connect(controls_.main_toolbar, &Toolbar::ButtonClick, this,
            guarded([this](const QString& key) { ButtonClick(key); }));
}

void ExplorerCommands::ButtonClick(const QString& key)
{
    if (key == u"Add"_s)
        labels_.mnu_tree_add_folder_Click();
    else if (key == u"Copy"_s)
        files_.copy_in_pane();
    else if (key == u"Paste"_s)
        files_.mnu_tree_paste_Click();
    else if (key == u"Delete"_s)
        files_.delete_in_pane();
    else if (key == u"Refresh"_s)
        refresh();
}

// Copy, paste and drags take the current folder for the one that is listed.
void ExplorerCommands::refresh()
{
    if (commanded_node(panes_.tvTreeView) == nullptr)
        return;
    take_selected_node(panes_.tvTreeView);
    panes_.tree.refresh_all();
}

void ExplorerCommands::connect_tree_menu()
{
    const TreeView& tree = panes_.tvTreeView;
    connect(&tree, &TreeView::MouseUp, this, [this](i16 button, QPoint point) {
        if (button == mouse_button_number(Qt::RightButton))
            show_tree_menu(point);
    });
    connect(&tree, &TreeView::ContextKey, this, [this, &tree] {
        if (tree.SelectedItem() != nullptr)
            show_tree_menu(tree.node_rect(tree.SelectedItem()).bottomLeft());
    });
}

// The menu is always for the selected node, wherever the mouse is.
void ExplorerCommands::show_tree_menu(QPoint point)
{
    const QString key = panes_.tree.selected_key();
    if (!tree_menu_opens(key))
        return;
    menus_.enable_tree_entries(tree_menu_entries(key));
    menus_.mnufile().popup(panes_.tvTreeView.viewport()->mapToGlobal(point));
}

bool ExplorerCommands::is_editing_label() const
{
    return panes_.tvTreeView.is_editing() || panes_.lvListView.is_editing();
}

// Only the box that the menu acts on leaves its keys to the menu. The user may have typed in a box while a pane counts
// as the place of the last act, and a key pressed in a text must not reach files.
bool ExplorerCommands::is_for_edit_menu(const QObject* watched, const QKeyEvent& event) const
{
    if (watched == nullptr || watched != edit_.box())
        return false;
    const QKeySequence key(event.keyCombination());
    const QStringList entries = {u"menu_Edit_copy"_s, u"menu_Edit_paste"_s, u"menu_Edit_delete"_s};
    return std::ranges::any_of(entries, [&](const QString& entry) { return menus_.entry(entry).shortcut() == key; });
}
