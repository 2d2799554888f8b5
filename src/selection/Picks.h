#pragma once

#include "platform/controls/ListView.h"
#include "platform/controls/StatusBar.h"
#include "platform/numbers.h"

#include <QObject>
#include <QString>

#include <functional>

/// Makes `name` of the current folder the selected file and shows it in the detail fields.
void select_file(const QString& name);

/// Picking files for the disc in the main window: the ticks of the file list, Select All, Clear All and Display Final
/// List.
class Picks : public QObject
{
    Q_OBJECT

public:
    /// What picking needs of the rooms above it.
    struct Surroundings
    {
        std::function<QString()> selected_tree_key; ///< key of the selected node of the folder tree
        std::function<void(int)> click_row;         ///< what a click on a row of the file list does
        std::function<void()> show_final_list;      ///< shows the dialog of the final list and waits for its end
    };

    /// Acts on the file list, whose ItemCheck it answers, and on panel 3 of `status_bar`; both outlive it.
    Picks(ListView& list, StatusBar& status_bar, Surroundings surroundings, QObject* parent = nullptr);

    /// A tick set or cleared by a person. One that passes the range of the sizes is shown as "Overflow" and taken back.
    void ItemCheck(int index);
    /// Picks all rows of the folder shown. Rows that pass the range of the sizes stay unticked; "Overflow" is shown
    /// once.
    void cmd_select_all_Click();
    /// Clear All: takes the rows of the folder shown out of the final list.
    void cmdRemove_Click();
    /// Display Final List.
    void Change_all_Click();
    /// Writes panel 3 of the status bar.
    void show_final_total();

    /// Index of the row last clicked or ticked, 0 until then.
    i16 last_row_index = 0;

private:
    void tick_by_hand(int index);
    void pick_all_rows();
    void drop_ticked_rows();
    i16 add_row(int index);
    i16 remove_row(int index);
    i16 state_of_folder_drive() const;

    ListView& list_;
    StatusBar& status_bar_;
    Surroundings surroundings_;
};
