#pragma once

#include "convert/BatchConversion.h"
#include "platform/controls/ButtonDialog.h"
#include "platform/controls/ListView.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/UsrButton.h"
#include "platform/own_words.h"

#include <QLabel>

#include <functional>
#include <span>

struct FinalListEntry;

/// The batch conversion dialog: the whole final list in three lists, and one button that brings all of it into FIF.
class FIF_convert : public ButtonDialog
{
    Q_OBJECT

public:
    /// What the dialog needs of the main window.
    struct Surroundings
    {
        std::function<void()> refresh_all; ///< reloads the main window's tree node and file list
        ImageList small_icons;             ///< image 1 a FIF name, image 2 any other
    };

    /// Loads the dialog: its lists are filled. `transport` outlives it.
    FIF_convert(Transport& transport, Surroundings surroundings, QWidget* parent);

    /// Rebuilds the three lists from the final list; files that have vanished are dropped from it.
    void Fill_list();
    /// Writes the three caption labels.
    void display_selected_file_info();
    /// Writes panel 2 of the status bar.
    void show_final_total_in_dialog();

Q_SIGNALS:
    /// The file `shared.edit_file_name` was double-clicked: it is to be edited by hand.
    void edit_wanted();
    /// The files of the final list are to be copied into a folder.
    void copy_wanted();

protected:
    /// Enter on a row edits it by hand, as a double click does.
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// One of the three lists with its caption, and the counters of its last fill.
    struct Group
    {
        ListView* list = nullptr;
        PictureBox* picture = nullptr;
        QLabel* label = nullptr;
        i16 files = 0;
        i32 bytes = 0;
    };

    /// What the controls of a group are called, and the words for it.
    struct GroupNames
    {
        QString list;
        QString label;
        QString picture;
        Word in_picture;
        Word of_list;
    };

    void create_group(Group& group, const GroupNames& names);
    void set_columns();
    void create_buttons();
    void apply_language_fif_convert();
    void lay_out();
    /// `toggles` holds one direction for each of `sortable_columns`; the other columns do nothing.
    void connect_list(const Group& group, std::span<i16> toggles, const std::vector<int>& sortable_columns);
    void connect_buttons();
    void Change_FIF_Click();
    void edit_selected(const ListView& list);
    void add_record(FinalListEntry& record);

    Surroundings surroundings_;
    BatchConversion batch_;
    Group fif_;
    Group possible_;
    Group impossible_;
    UsrButton* change_fif_ = nullptr;
    UsrButton* cmd_transfer_ = nullptr;
    UsrButton* cancel_ = nullptr;
    StatusBar* status_bar_ = nullptr;
};
