#pragma once

#include "explorer/Panes.h"
#include "platform/numbers.h"

#include <QObject>
#include <QString>

#include <functional>

/// The commands that end in the edit of a label: rename in list and tree, and new folder, whose name is edited at once.
/// While the computer is selected in the tree, nothing happens.
class LabelCommands : public QObject
{
    Q_OBJECT

public:
    /// Answers the label edits of both panes. `release_player` makes the player let go of its file.
    LabelCommands(const Panes& panes, std::function<void()> release_player, QObject* parent = nullptr);

    /// Makes a folder below the selected one. One that can't be made is shown as message 7.
    void mnu_tree_add_folder_Click();
    /// Not for drives.
    void mnu_tree_rename_Click();
    void mnu_ListView_rename_Click();
    /// Renames in the pane that the user acted in last, if it was one of the two.
    void rename_in_pane();

private:
    void BeforeLabelEdit(bool& cancel, i16 edit_pane);
    void list_AfterLabelEdit(bool& cancel, const QString& new_text);
    void tree_AfterLabelEdit(bool& cancel, const QString& new_text);
    bool rename_file(const QString& old_name, const QString& new_text) const;
    void show_new_name(int row, const QString& new_text);
    bool rename_folder(const QString& new_text) const;
    void make_folder(const QString& name);

    Panes panes_;
    std::function<void()> release_player_;
    i16 label_edit_armed_ = 0; ///< 1 from the moment that a rename is asked for until its edit opens
};
