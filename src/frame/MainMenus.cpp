#include "frame/MainMenus.h"

#include "platform/controls/message_window.h"

#include <QKeySequence>

#include <span>

using namespace Qt::StringLiterals;

namespace {

/// An entry of a menu; a separator has no caption.
struct Entry
{
    const char16_t* name;
    const char16_t* caption = nullptr;
    QKeyCombination shortcut = {};
};

constexpr Entry mnufile_entries[] = {
    {u"mnu_tree_add_folder", u"New Folder"}, {u"mnufile_line_1"}, {u"mnu_tree_copy", u"Copy"},
    {u"mnu_tree_paste", u"Paste"},           {u"mnufile_line_2"}, {u"mnu_tree_delete", u"Delete"},
    {u"mnu_tree_rename", u"Rename"},
};

constexpr Entry mnu_ListView_entries[] = {
    {u"mnu_ListView_auto", u"Auto Convert"}, {u"mnu_ListView_select_all", u"Select All"}, {u"mnu_ListView_line_1"},
    {u"mnu_ListView_copy", u"Copy"},         {u"mnu_ListView_paste", u"Paste"},           {u"mnu_ListView_line_2"},
    {u"mnu_ListView_delete", u"Delete"},     {u"mnu_ListView_rename", u"Rename"},
};

constexpr Entry menu_File_entries[] = {
    {u"menu_File_add_folder", u"New Folder"},
    {u"menu_File_Exit", u"Exit"},
};

constexpr Entry menu_Edit_entries[] = {
    {u"menu_Edit_copy", u"Copy", Qt::CTRL | Qt::Key_C},
    {u"menu_Edit_paste", u"Paste", Qt::CTRL | Qt::Key_V},
    {u"menu_Edit_delete", u"Delete", QKeyCombination(Qt::Key_Delete)},
};

constexpr Entry menu_View_entries[] = {
    {u"menu_View_list", u"List"},
    {u"menu_View_details", u"Details"},
    {u"menu_View_refresh", u"Refresh", QKeyCombination(Qt::Key_F5)},
};

constexpr Entry menu_Tool_entries[] = {
    {u"menu_Tool_Select_all", u"Select All"},
    {u"menu_Tool_clear_all", u"Clear All"},
    {u"menu_Tool_line_1"},
    {u"menu_Tool_Select_FIF_Format", u"Set FIF Type"},
    {u"menu_Tool_Set_Genre_Type", u"Set Genre Type"},
    {u"menu_Tool_display_final_list", u"Display Final List"},
    {u"menu_Tool_line_2"},
    {u"menu_Tool_Burn", u"Burn"},
    {u"menu_Tool_Select_Burning_Program", u"Select Burning Program"},
};

constexpr Entry menu_Help_entries[] = {
    {u"menu_Help_about", u"About..."},
};

QString text_of(const char16_t* characters)
{
    return QString::fromUtf16(characters);
}

void fill(QMenu& menu, const QString& name, std::span<const Entry> entries)
{
    menu.setObjectName(name);
    for (const Entry& entry : entries) {
        QAction* action = entry.caption != nullptr ? menu.addAction(text_of(entry.caption)) : menu.addSeparator();
        action->setObjectName(text_of(entry.name));
        if (entry.shortcut != QKeyCombination())
            action->setShortcut(QKeySequence(entry.shortcut));
        action->setEnabled(has_command(action->objectName()));
    }
}

} // namespace

MainMenus::MainMenus(QMenuBar& bar, QWidget& form)
    : bar_(bar), menu_File_(bar.addMenu(u"File"_s)), mnufile_(new QMenu(&form)), mnu_ListView_(new QMenu(&form))
{
    fill(*mnufile_, u"mnufile"_s, mnufile_entries);
    fill(*mnu_ListView_, u"mnu_ListView"_s, mnu_ListView_entries);
    fill(*menu_File_, u"menu_File"_s, menu_File_entries);
    fill(*bar.addMenu(u"Edit"_s), u"menu_Edit"_s, menu_Edit_entries);
    fill(*bar.addMenu(u"View"_s), u"menu_View"_s, menu_View_entries);
    fill(*bar.addMenu(u"Tools"_s), u"menu_Tool"_s, menu_Tool_entries);
    fill(*bar.addMenu(u"Help"_s), u"menu_Help"_s, menu_Help_entries);
    entry(u"menu_View_list"_s).setCheckable(true);
    entry(u"menu_View_details"_s).setCheckable(true);
}

QAction& MainMenus::entry(const QString& name) const
{
    for (const QObject* menu :
         {static_cast<QObject*>(&bar_), static_cast<QObject*>(mnufile_), static_cast<QObject*>(mnu_ListView_)}) {
        if (auto* action = menu->findChild<QAction*>(name))
            return *action;
    }
    qFatal("no menu entry %ls", qUtf16Printable(name));
}

void MainMenus::do_on(const QString& entry, const QObject& context, std::function<void()> handler) const
{
    QObject::connect(&this->entry(entry), &QAction::triggered, &context,
                     guarded([handler = std::move(handler)](bool /*checked*/) { handler(); }));
}

void MainMenus::check_view(ListView::ViewMode mode) const
{
    entry(u"menu_View_list"_s).setChecked(mode == ListView::ViewMode::list);
    entry(u"menu_View_details"_s).setChecked(mode == ListView::ViewMode::report);
}

void MainMenus::enable_list_entries(bool on_row) const
{
    for (const QString& name : {u"mnu_ListView_auto"_s, u"mnu_ListView_select_all"_s, u"mnu_ListView_copy"_s,
                                u"mnu_ListView_paste"_s, u"mnu_ListView_delete"_s, u"mnu_ListView_rename"_s})
        entry(name).setEnabled(on_row);
}

void MainMenus::enable_tree_entries(const TreeMenuEntries& enabled) const
{
    entry(u"mnu_tree_add_folder"_s).setEnabled(enabled.add_folder);
    entry(u"mnu_tree_copy"_s).setEnabled(enabled.copy);
    entry(u"mnu_tree_paste"_s).setEnabled(enabled.paste);
    entry(u"mnu_tree_delete"_s).setEnabled(enabled.remove);
    entry(u"mnu_tree_rename"_s).setEnabled(enabled.rename);
}

bool has_command(const QString& name)
{
    return name != u"menu_Help_about"_s;
}
