#pragma once

#include "convert/typed_fields.h"
#include "platform/numbers.h"

#include <QString>

#include <functional>

class ListView;
class Transport;

/// The save button of the main window: what stands in the detail fields becomes the selected file's FIF name and tag.
class SaveButton
{
public:
    /// What saving needs of the main window; all outlive it.
    struct Surroundings
    {
        FieldControls fields;
        TextBox& txtFilename;
        ListView& lvListView;
        Transport& transport;
        std::function<QString()> selected_tree_key; ///< key of the selected node of the folder tree
        std::function<void(int)> click_row;         ///< what a click on a row of the file list does
        std::function<void()> refresh_all;          ///< reloads the tree node and the file list
    };

    explicit SaveButton(Surroundings surroundings) : main_(std::move(surroundings)) {}

    /// What a press of the button does.
    void cmdSave_Click();
    /// Composes the name, renames the selected file, writes its tag and brings row and selection along. The final list
    /// comes first, then the file, then the tag.
    void convert_fif();
    /// Renames the selected file into [artist][title][code].mp3, whatever the shape of new names is. No tag is written.
    void rename_mp3();

private:
    void save_selected_file();
    void take_file_of_row();
    bool final_list_takes(const QString& new_name) const;
    void show_new_name(int row, const QString& new_name, const QString& new_path);

    Surroundings main_;
};

/// The stem [artist][title][code] within 60 bytes, the title cut where it must be; empty when the artist leaves no
/// room.
QString coded_stem(const QString& artist, const QString& title, const QString& code);
