#include "convert/FIF_Auto_Convert.h"

#include "convert/LineButton.h"
#include "convert/form_captions.h"
#include "convert/moved_file.h"
#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "fif/mod_of_FIF.h"
#include "platform/RunTimeError.h"
#include "platform/controls/LongWork.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/column_sort.h"
#include "platform/controls/faces.h"
#include "platform/controls/message_window.h"
#include "player/Transport.h"
#include "selection/final_list.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize title_size(220, 24);
constexpr QSize field_size(64, 28);
constexpr int text_margin = 2;
constexpr int text_width = 190;
constexpr int label_margin = 8;
constexpr int folder_column = 2;

} // namespace

FIF_Auto_Convert::FIF_Auto_Convert(Transport& transport, Surroundings surroundings, QWidget* parent)
    : ButtonDialog(u"FIF_Auto_Convert"_s, own_word(Word::title_auto_convert), parent),
      transport_(transport),
      surroundings_(std::move(surroundings))
{
    create_controls();
    lay_out();
    connect_controls();
    apply_language_auto_convert();
    Fill_selected_list();
    shared.possible_sort_toggles = {};
}

void FIF_Auto_Convert::create_controls()
{
    Selected_ListView_ = new ListView(this);
    Selected_ListView_->setObjectName(u"Selected_ListView"_s);
    Selected_ListView_->setAccessibleName(own_word(Word::list_auto_convert));
    Selected_ListView_->set_SmallIcons(surroundings_.small_icons);
    Selected_ListView_->set_Checkboxes(true);
    Selected_ListView_->set_ColumnHeaders(
        {{u"Name"_s, 4550}, {u"FIF"_s, 5530}, {u"Location"_s, 2550}, {u"Size"_s, 1020, Qt::AlignRight}});
    artist_ = create_fixed(u"Artist"_s, Word::field_artist, u"Fix Artist"_s);
    genre_ = create_fixed(u"Genre"_s, Word::field_genre, u"Fix Genre"_s);
    freeview_ = add_button(u"freeview"_s, own_word(Word::button_preview));
    autoconvert_ = add_button(u"autoconvert"_s, own_word(Word::button_convert));
    Cancel_ = add_button(u"Cancel"_s, own_word(Word::button_close));
    StatusBar1_ = new StatusBar({3000, 6000}, this);
    StatusBar1_->setObjectName(u"StatusBar1"_s);
}

/// The controls of one value; `names_end` is what their names have in common, such as "Artist".
FIF_Auto_Convert::Fixed FIF_Auto_Convert::create_fixed(const QString& names_end, Word field, const QString& caption)
{
    const Fixed fixed = {.picture = new PictureBox(label_face(own_word(field), field_size), this),
                         .text = new TextBox(this),
                         .check = new LineButton<QCheckBox>(this),
                         .label = new QLabel(caption, this)};
    fixed.picture->setObjectName(u"Picture_"_s + names_end.toLower());
    fixed.picture->setAccessibleName(own_word(field));
    fixed.text->setObjectName(u"txt"_s + names_end);
    fixed.text->setAccessibleName(own_word(field));
    fixed.text->setFixedHeight(field_size.height());
    fixed.text->setTextMargins(text_margin, 0, text_margin, 0);
    fixed.check->setObjectName(u"Check_"_s + names_end);
    fixed.label->setObjectName(u"Label_fix_"_s + names_end.toLower());
    fixed.label->setAttribute(Qt::WA_TransparentForMouseEvents); // a click on it is one on the check box below it
    fixed.label->raise();
    return fixed;
}

void FIF_Auto_Convert::lay_out()
{
    auto* title = new PictureBox(label_face(own_word(Word::list_auto_convert), title_size), this);
    title->setObjectName(u"Picture_main"_s);
    title->setAccessibleName(own_word(Word::list_auto_convert));

    auto* commands = new QHBoxLayout;
    commands->addLayout(fixed_values());
    commands->addSpacing(24);
    commands->addStretch();
    commands->addLayout(buttons());

    auto* content = new QVBoxLayout;
    content->setContentsMargins(16, 12, 16, 12);
    content->setSpacing(8);
    content->addWidget(title);
    content->addWidget(Selected_ListView_);
    content->addSpacing(4);
    content->addLayout(commands);

    auto* form = new QVBoxLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->setSpacing(0);
    form->addLayout(content);
    form->addWidget(StatusBar1_);
    Selected_ListView_->setMinimumSize(868, 250);
    resize(960, 560);
    freeview_->setFocus(); // a preview comes first
}

QLayout* FIF_Auto_Convert::fixed_values()
{
    auto* lines = new QGridLayout;
    lines->setSpacing(8);
    for (const Fixed& fixed : {artist_, genre_}) {
        const int row = lines->rowCount();
        lines->addWidget(fixed.picture, row, 0);
        lines->addWidget(fixed.text, row, 1);
        lines->addWidget(fixed.check, row, 2, 1, 2);
        lines->addWidget(fixed.label, row, 3);
        fixed.label->setContentsMargins(0, 0, label_margin, 0);
    }
    lines->setColumnMinimumWidth(1, text_width);
    lines->setColumnMinimumWidth(2, LineButton<QCheckBox>::caption_left - lines->spacing());
    return lines;
}

QLayout* FIF_Auto_Convert::buttons()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    for (UsrButton* button : {freeview_, autoconvert_, Cancel_})
        row->addWidget(button, 0, Qt::AlignBottom);
    return row;
}

void FIF_Auto_Convert::connect_controls()
{
    connect(freeview_, &UsrButton::Click, this, guarded([this] { freeview_Click(); }));
    connect(autoconvert_, &UsrButton::Click, this, guarded([this] { autoconvert_Click(); }));
    connect(Cancel_, &UsrButton::Click, this, &QDialog::close);
    connect(Selected_ListView_, &ListView::MouseMove, this, [this] { init_ctl(); });
    connect(StatusBar1_, &StatusBar::MouseMove, this, [this] { init_ctl(); });
    connect(Selected_ListView_, &ListView::ColumnClick, this, guarded([this](int column) {
                sort_by_toggle(*Selected_ListView_, column, {0, 1, 2}, shared.possible_sort_toggles);
            }));
}

/// Headers and labels in the language of the run, and the font of Korean.
void FIF_Auto_Convert::apply_language_auto_convert()
{
    apply_captions(*this, Form::FIF_Auto_Convert);
    for (const Fixed& fixed : {artist_, genre_})
        fixed.check->setAccessibleName(fixed.label->text());
    apply_korean_font({artist_.text, genre_.text, artist_.label, genre_.label});
}

void FIF_Auto_Convert::Fill_selected_list()
{
    const ListView::Update update(*Selected_ListView_);
    const ListView& main_list = surroundings_.lvListView;
    Selected_ListView_->Clear();
    for (int row = 1; row <= main_list.Count(); ++row) {
        const ListRow& source = main_list.Item(row);
        if (!source.Selected)
            continue;
        // Two rows of one name are one file: a row of a file that is gone may have been given another's name.
        if (!errors_ignored([&] { Selected_ListView_->Add(source.Text, source.Text); }))
            continue;
        const int index = Selected_ListView_->Count();
        Selected_ListView_->set_SmallIcon(index, source.SmallIcon);
        Selected_ListView_->set_Checked(index, true);
        Selected_ListView_->set_SubItem(index, folder_column, shared.current_folder);
        Selected_ListView_->set_SubItem(index, 3, source.column(1));
    }
    StatusBar1_->set_panel_text(2, u"%1files"_s.arg(Selected_ListView_->Count()));
}

bool FIF_Auto_Convert::fixed_values_are_there() const
{
    const auto is_missing = [](const Fixed& fixed) {
        return fixed.check->isChecked() && trimmed_and_cleaned(fixed.text->Text()).isEmpty();
    };
    if (is_missing(artist_)) {
        show_message(msg_input_artist);
        return false;
    }
    if (is_missing(genre_)) {
        show_message(msg_input_genre);
        return false;
    }
    return true;
}

// When the folder of the rows goes away, the main window turns to another one. Files of the same names there were never
// chosen.
bool FIF_Auto_Convert::is_convertible(const ListRow& row)
{
    return row.column(folder_column) == shared.current_folder && Check_file_for_fif(row.Text) > 0;
}

void FIF_Auto_Convert::freeview_Click()
{
    if (!fixed_values_are_there() || Selected_ListView_->Count() == 0)
        return;
    LongWork work;
    for (int row = 1; row <= Selected_ListView_->Count(); ++row) {
        const ListRow& item = Selected_ListView_->Item(row);
        Selected_ListView_->set_SubItem(
            row, 1, is_convertible(item) ? convert_found(QString(item.Text), 0) : u"Can't Auto Convert"_s);
        work.step();
    }
    previewed_ = 1;
}

void FIF_Auto_Convert::autoconvert_Click()
{
    if (previewed_ == 0) {
        show_message(msg_click_preview);
        return;
    }
    if (!fixed_values_are_there())
        return;
    LongWork work;
    for (int row = 1; row <= Selected_ListView_->Count(); ++row) {
        const ListRow& item = Selected_ListView_->Item(row);
        if (item.Checked && is_convertible(item))
            convert_row(row);
        work.step();
    }
    surroundings_.refresh_all();
}

void FIF_Auto_Convert::convert_row(int index)
{
    const QString name = Selected_ListView_->Item(index).Text;
    QString new_name =
        shared.current_folder + name == shared.playing_mp3_path ? convert_file_in_player(name) : convert_found(name, 1);
    if (new_name.isEmpty())
        return;
    Selected_ListView_->set_Text(index, new_name);
    if (const i16 kind = Check_file_for_fif(new_name); kind > 0)
        Selected_ListView_->set_SmallIcon(index, kind);
}

QString FIF_Auto_Convert::convert_file_in_player(const QString& name)
{
    const bool was_playing = shared.is_playing == 1;
    transport_.release();
    // The release may take its time, so the file is looked at once more.
    QString new_name = rename_to_freeview(shared.current_folder, name, 1);
    const QString name_now = new_name.isEmpty() ? name : new_name;
    shared.selected_mp3_path = shared.current_folder + name_now;
    transport_.mp3_play(name_now);
    if (!was_playing)
        transport_.StopBtn_Click();
    return new_name;
}

FixedFields FIF_Auto_Convert::forced_values() const
{
    const auto value = [](const Fixed& fixed) {
        return fixed.check->isChecked() ? std::optional(fixed.text->Text()) : std::nullopt;
    };
    return {.artist = value(artist_), .genre = value(genre_)};
}

QString FIF_Auto_Convert::rename_to_freeview(const QString& /*folder*/, const QString& name, i16 do_rename)
{
    Check_file_for_fif(name);
    return convert_found(name, do_rename);
}

QString FIF_Auto_Convert::convert_found(const QString& name, i16 do_rename)
{
    const FifFields found = {.artist = shared.fif_artist, .title = shared.fif_title, .genre = shared.fif_genre};
    const auto [artist, title, genre] = fields_to_convert(found, forced_values());
    shared.fif_artist = artist;
    shared.fif_title = title;
    shared.fif_genre = genre;
    return auto_convert(name, artist, title, genre, do_rename);
}

QString FIF_Auto_Convert::auto_convert(const QString& old_name, const QString& artist, const QString& title,
                                       const QString& genre, i16 do_rename)
{
    QString new_name = Compose_fif_name(artist, title, genre, [&] { show_name_message(msg_name_too_long, old_name); });
    if (do_rename != 1 || new_name.isEmpty())
        return new_name;
    const QString new_path = shared.current_folder + new_name;
    if (shared.fso.FileExists(new_path))
        return new_name;
    const bool moved = MoveFileA(shared.current_folder + old_name, new_path);
    if (rename_in_final_list(old_name, shared.current_folder, new_name, shared.current_folder) == 0) {
        // While a message stood the player may have gone on to another file, whose fields are no business of this one.
        shared.fif_artist = artist;
        shared.fif_title = title;
        shared.fif_genre = genre;
    }
    // The shared results and not the arguments, on purpose: for a listed file they hold by now what the new name says,
    // so that the tag agrees with a title that was cut.
    tag_moved_file(moved, new_path, QString(shared.fif_artist), QString(shared.fif_title), shared.fif_genre);
    return new_name;
}
