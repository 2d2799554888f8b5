#include "frame/MainMenus.h"

#include "core/captions.h"
#include "frame/mnemonics.h"
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
    {u"menu_File_add_folder", u"New Folder", Qt::CTRL | Qt::SHIFT | Qt::Key_N},
    {u"menu_File_Exit", u"Exit", Qt::CTRL | Qt::Key_Q},
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

/// `captions` of the entries in their order; that of a separator is empty.
void set_captions(const QWidget& menu, const QStringList& captions)
{
    const QList<QAction*> entries = menu.actions();
    const QStringList texts = with_mnemonics(captions);
    for (qsizetype i = 0; i < entries.size(); ++i)
        entries[i]->setText(texts[i]);
}

void fill(QMenu& menu, std::span<const Entry> entries)
{
    QStringList captions;
    for (const Entry& entry : entries) {
        QAction* action = entry.caption != nullptr ? menu.addAction(QString()) : menu.addSeparator();
        action->setObjectName(text_of(entry.name));
        if (entry.shortcut != QKeyCombination())
            action->setShortcut(QKeySequence(entry.shortcut));
        captions.append(text_of(entry.caption));
    }
    set_captions(menu, captions);
}

QMenu* add_menu(QMenuBar& bar, const QString& name, std::span<const Entry> entries)
{
    QMenu* menu = bar.addMenu(QString());
    menu->setObjectName(name);
    menu->menuAction()->setObjectName(name);
    fill(*menu, entries);
    return menu;
}

QMenu* popup_menu(QWidget& form, const QString& name, std::span<const Entry> entries)
{
    auto* menu = new QMenu(&form);
    menu->setObjectName(name);
    fill(*menu, entries);
    return menu;
}

} // namespace

MainMenus::MainMenus(QMenuBar& bar, QWidget& form)
    : bar_(bar),
      menu_File_(add_menu(bar, u"menu_File"_s, menu_File_entries)),
      mnufile_(popup_menu(form, u"mnufile"_s, mnufile_entries)),
      mnu_ListView_(popup_menu(form, u"mnu_ListView"_s, mnu_ListView_entries))
{
    add_menu(bar, u"menu_Edit"_s, menu_Edit_entries);
    add_menu(bar, u"menu_View"_s, menu_View_entries);
    add_menu(bar, u"menu_Tool"_s, menu_Tool_entries);
    add_menu(bar, u"menu_Help"_s, menu_Help_entries);
    set_captions(bar, {u"File"_s, u"Edit"_s, u"View"_s, u"Tools"_s, u"Help"_s});
    entry(u"menu_View_list"_s).setCheckable(true);
    entry(u"menu_View_details"_s).setCheckable(true);
}

QAction& MainMenus::entry(const QString& name) const
{
    for (const QWidget* menu : all()) {
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

void MainMenus::apply_language() const
{
    for (const QWidget* menu : all()) {
        QStringList captions;
        for (const QAction* entry : menu->actions())
            captions.append(caption_of(Form::QuilmoMain, entry->objectName()));
        set_captions(*menu, captions);
    }
}

QList<QWidget*> MainMenus::all() const
{
    QList<QWidget*> menus = {&bar_, mnufile_, mnu_ListView_};
    for (const QAction* title : bar_.actions())
        menus.append(title->menu());
    return menus;
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
