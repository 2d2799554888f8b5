#pragma once

#include "explorer/EditMenu.h"
#include "explorer/FileCommands.h"
#include "explorer/LabelCommands.h"
#include "explorer/Panes.h"

#include <QKeyEvent>
#include <QObject>
#include <QPoint>

#include <functional>

class MainControls;
class MainMenus;

/// The explorer's commands behind the main window's menus, pop-up menus, toolbar and keys.
class ExplorerCommands : public QObject
{
    Q_OBJECT

public:
    /// All outlive it. `release_player` makes the player let go of its file.
    ExplorerCommands(const MainControls& controls, const MainMenus& menus, const Panes& panes,
                     std::function<void()> release_player, QObject* parent = nullptr);

    /// The key F2: a rename in the pane that the user acted in last.
    void rename_in_pane() { labels_.rename_in_pane(); }
    /// Whether a label is being edited: the keys belong to its box then.
    bool is_editing_label() const;
    /// Whether a key pressed in `watched` is a shortcut of the Edit menu that this text box must not take for itself.
    bool is_for_edit_menu(const QObject* watched, const QKeyEvent& event) const;

private:
    void connect_menus();
    void connect_folder_entry();
    void connect_toolbar();
    void connect_tree_menu();
    void do_on(const QString& entry, std::function<void()> handler);
    void ButtonClick(const QString& key);
    void refresh();
    void show_tree_menu(QPoint point);

    const MainControls& controls_;
    const MainMenus& menus_;
    Panes panes_;
    FileCommands files_;
    LabelCommands labels_;
    EditMenu edit_;
};
