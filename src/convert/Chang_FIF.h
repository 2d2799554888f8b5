#pragma once

#include "convert/typed_fields.h"
#include "platform/controls/ButtonDialog.h"
#include "platform/numbers.h"
#include "platform/own_words.h"

#include <QString>

#include <functional>

class QGridLayout;
class QLabel;
class Transport;

/// The dialog in which the artist, title and genre of one file of the final list are typed by hand.
class Chang_FIF : public ButtonDialog
{
    Q_OBJECT

public:
    /// What the dialog needs of the forms below it.
    struct Surroundings
    {
        std::function<void()> refresh_all; ///< reloads the main window's tree node and file list
        std::function<void()> Fill_list;   ///< rebuilds the lists of the batch conversion dialog
    };

    /// Loads the dialog for the file `shared.edit_file_name`. `transport` outlives it.
    Chang_FIF(Transport& transport, Surroundings surroundings, QWidget* parent);

private:
    void create_controls();
    void lay_out();
    void add_line(QGridLayout& lines, const QString& picture_name, Word word, QWidget* box);
    void connect_controls();
    void load();
    void apply_language_chang_fif();

    /// Fills the fields from the tag.
    void Show_edit_tag_info(const QString& folder, const QString& name);
    /// Fills the fields from the name.
    void Show_edit_fif_info(const QString& folder, const QString& name);
    /// The bracket parser, showing in this dialog for `show_mode` 1; `result` becomes 1 for a bracket form, else 0.
    void Check_fif_format_step_1(const QString& stem, i16 bracket_kind, i16 show_mode, i16& result);
    /// The dash parser, likewise.
    void Check_fif_format_step_3(const QString& stem, i16 show_mode, i16& result);
    void store(const QString& stem, const FifParse& parse, i16 show_mode, i16& result);

    void cmdSave_Click();
    void cmdExit_Click();
    /// Composes the name, renames the file, updates the final list and writes the tag.
    void convert_fif_edit();
    void rename_and_write(const QString& new_name, FifFields& fields);

    Transport& transport_;
    Surroundings surroundings_;
    TextBox* txtFilename_ = nullptr;
    TextBox* txtArtist_ = nullptr;
    TextBox* txtTitle_ = nullptr;
    TextBox* txtGenre_ = nullptr;
    ComboBox* cboGenre_ = nullptr;
    QLabel* Label_filesize_ = nullptr;
    UsrButton* cmdSave_ = nullptr;
    UsrButton* cmdExit_ = nullptr;
    i16 file_changed_ = 0;  ///< 1 after a rename in this dialog
    QString new_file_path_; ///< full path after the rename
    QString new_file_name_; ///< name after the rename
};
