#pragma once

#include "convert/BatchConversion.h"
#include "platform/controls/ListView.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/UsrButton.h"

#include <QDialog>
#include <QLabel>

#include <functional>

/// The batch conversion dialog: the whole final list in three lists, and one button that brings all of it into FIF.
class FIF_convert : public QDialog
{
    Q_OBJECT

public:
    /// What the dialog needs of the main window.
    struct Surroundings
    {
        std::function<void()> refresh_all; ///< reloads the main window's tree node and file list
        const ImageList* small_icons = nullptr; ///< image 1 a FIF name, image 2 any other
    };

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
    /// The final list's files are to be copied into a folder.
    void copy_wanted();
};
