#pragma once

#include "explorer/tree_menu.h"
#include "platform/controls/ListView.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <functional>

/// The menus of the main window: the bar, the pop-up menu `mnufile` of the tree and `mnu_ListView` of the list. Menus
/// and entries have their names as objectName.
class MainMenus
{
public:
    /// `form` owns the pop-up menus and shows their shortcuts' effect.
    MainMenus(QMenuBar& bar, QWidget& form);

    /// The entry of this name; a name that does not exist ends the program.
    QAction& entry(const QString& name) const;
    /// Runs `handler` whenever the entry is chosen, as long as `context` lives.
    void do_on(const QString& entry, const QObject& context, std::function<void()> handler) const;
    QMenu& menu_File() const { return *menu_File_; }
    QMenu& mnufile() const { return *mnufile_; }
    QMenu& mnu_ListView() const { return *mnu_ListView_; }

    /// Gives all menus and entries their captions in the language of the run, which is not English.
    void apply_language() const;
    /// Ticks the entry of a view and unticks the other.
    void check_view(ListView::ViewMode mode) const;
    /// Switches the six entries of the list's pop-up menu that need a row.
    void enable_list_entries(bool on_row) const;
    /// Switches the entries of the tree's pop-up menu.
    void enable_tree_entries(const TreeMenuEntries& enabled) const;

private:
    QList<QWidget*> all() const;

    QMenuBar& bar_;
    QMenu* menu_File_;
    QMenu* mnufile_;
    QMenu* mnu_ListView_;
};
