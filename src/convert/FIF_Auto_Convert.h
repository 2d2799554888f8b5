#pragma once

#include "fif/fif_name.h"
#include "platform/controls/ButtonDialog.h"
#include "platform/controls/ListView.h"
#include "platform/controls/StatusBar.h"
#include "platform/numbers.h"
#include "platform/own_words.h"

#include <QString>

#include <functional>

class PictureBox;
class QCheckBox;
class QLabel;
class QLayout;
class TextBox;
class Transport;

/// The dialog that converts the rows selected in the main file list, all of one folder, with a fixed artist and genre
/// if wanted. A preview must be run first.
class FIF_Auto_Convert : public ButtonDialog
{
    Q_OBJECT

public:
    /// What the dialog needs of the main window.
    struct Surroundings
    {
        const ListView& lvListView;        ///< the main file list; outlives the dialog
        ImageList small_icons;             ///< image 1 a FIF name, image 2 any other
        std::function<void()> refresh_all; ///< reloads the main window's tree node and file list
    };

    /// Loads the dialog with the rows selected in the main file list. `transport` outlives it.
    FIF_Auto_Convert(Transport& transport, Surroundings surroundings, QWidget* parent);

private:
    /// A value that can be forced on all files: a text box with the picture that names it, and the check box that
    /// forces it with its label.
    struct Fixed
    {
        PictureBox* picture = nullptr;
        TextBox* text = nullptr;
        QCheckBox* check = nullptr;
        QLabel* label = nullptr;
    };

    void create_controls();
    Fixed create_fixed(const QString& names_end, Word field, const QString& caption);
    void lay_out();
    QLayout* fixed_values();
    QLayout* buttons();
    void connect_controls();
    void apply_language_auto_convert();

    /// Copies the main list's selected rows.
    void Fill_selected_list();
    /// Whether a row's file has a name or a tag to make a FIF name of, whose fields are in the result strings then.
    static bool is_convertible(const ListRow& row);
    void freeview_Click();
    void autoconvert_Click();
    void convert_row(int index);
    QString convert_file_in_player(const QString& name);
    /// Whether every forced value holds something; if not, says so.
    bool fixed_values_are_there() const;
    /// The values that are forced on all files now.
    FixedFields forced_values() const;
    /// Looks at a file and converts it; gives the new name, empty when none could be made.
    QString rename_to_freeview(const QString& folder, const QString& name, i16 do_rename);
    /// The same for a file that has just been looked at: its fields are in the result strings.
    QString convert_found(const QString& name, i16 do_rename);
    /// Composes the name and, if `do_rename` is 1 and no such file is there, renames the file, brings the final list
    /// along and writes the tag.
    QString auto_convert(const QString& old_name, const QString& artist, const QString& title, const QString& genre,
                         i16 do_rename);
    void init_ctl() { put_out_buttons(); }

    Transport& transport_;
    Surroundings surroundings_;
    ListView* Selected_ListView_ = nullptr;
    Fixed artist_;
    Fixed genre_;
    UsrButton* freeview_ = nullptr;
    UsrButton* autoconvert_ = nullptr;
    UsrButton* Cancel_ = nullptr;
    StatusBar* StatusBar1_ = nullptr;
    i16 previewed_ = 0; ///< 1 once a preview has run over a list that is not empty
};
