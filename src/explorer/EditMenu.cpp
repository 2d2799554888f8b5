#include "explorer/EditMenu.h"

#include "core/mod_of_grobal_var.h"
#include "explorer/FileCommands.h"
#include "platform/controls/TextBox.h"

#include <QClipboard>
#include <QGuiApplication>

TextBox* EditMenu::box() const
{
    switch (shared.focus_pane) {
    case pane_artist:
        return &boxes_.txtArtist;
    case pane_filename:
        return &boxes_.txtFilename;
    case pane_title:
        return &boxes_.txtTitle;
    case pane_genre:
        return &boxes_.txtGenre;
    default:
        return nullptr;
    }
}

void EditMenu::menu_Edit_copy_Click()
{
    const TextBox* const text_box = box();
    if (text_box == nullptr) {
        commands_.copy_in_pane();
        return;
    }
    QGuiApplication::clipboard()->clear();
    QGuiApplication::clipboard()->setText(text_box->selectedText());
}

// The file name box is emptied and not pasted into, on purpose: its text comes back at once.
void EditMenu::menu_Edit_paste_Click()
{
    TextBox* const text_box = box();
    if (shared.focus_pane == pane_tree || shared.focus_pane == pane_list)
        commands_.mnu_tree_paste_Click();
    else if (shared.focus_pane == pane_filename)
        text_box->set_Text({});
    else if (text_box != nullptr)
        text_box->insert(QGuiApplication::clipboard()->text());
}

void EditMenu::menu_Edit_delete_Click()
{
    TextBox* const text_box = box();
    if (text_box == nullptr)
        commands_.delete_in_pane();
    else if (shared.focus_pane == pane_filename)
        text_box->set_Text({});
    else
        text_box->del();
}
