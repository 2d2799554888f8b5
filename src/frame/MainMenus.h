#pragma once

#include "platform/controls/ListView.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

/// The menus of the main window: the bar, the pop-up menu `mnufile` of the tree and `mnu_ListView` of the list. Menus
/// and entries have their names as objectName.
class MainMenus
{
public:
    /// `form` owns the pop-up menus and shows their shortcuts' effect.
    MainMenus(QMenuBar& bar, QWidget& form);

    /// The entry of this name; a name that does not exist ends the program.
    QAction& entry(const QString& name) const;
    QMenu& mnufile() const { return *mnufile_; }
    QMenu& mnu_ListView() const { return *mnu_ListView_; }

    /// Ticks the entry of a view and unticks the other.
    void check_view(ListView::ViewMode mode) const;
    /// Switches the six entries of the list's pop-up menu that need a row.
    void enable_list_entries(bool on_row) const;

private:
    QMenuBar& bar_;
    QMenu* mnufile_;
    QMenu* mnu_ListView_;
};

/// Whether an entry's or toolbar button's command is part of this version; those without one stand disabled.
bool has_command(const QString& name);
