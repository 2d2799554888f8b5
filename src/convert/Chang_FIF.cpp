#include "convert/Chang_FIF.h"

#include "convert/form_captions.h"
#include "convert/genre_controls.h"
#include "convert/moved_file.h"
#include "core/Mod_of_nation.h"
#include "core/mod_of_grobal_var.h"
#include "fif/Check_korean.h"
#include "fif/mod_of_FIF.h"
#include "mp3/cIDV3.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/faces.h"
#include "platform/controls/message_window.h"
#include "platform/controls/palette.h"
#include "platform/own_words.h"
#include "player/Transport.h"
#include "selection/final_list.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize picture_size(88, 28);
constexpr int text_margin = 2; ///< logical pixels left and right of a text, beside those of the box itself
constexpr int text_indent = 5; ///< of a text without a box, under those in boxes

/// A box named `name` on a line of the form, with an accessible name, made on `form`.
template<typename Box> Box* named_box(QWidget* form, const QString& name, const QString& accessible_name)
{
    auto* box = new Box(form);
    box->setObjectName(name);
    box->setFixedHeight(picture_size.height());
    box->setAccessibleName(accessible_name);
    return box;
}

} // namespace

Chang_FIF::Chang_FIF(Transport& transport, Surroundings surroundings, QWidget* parent)
    : ButtonDialog(u"Chang_FIF"_s, own_word(Word::title_edit), parent),
      transport_(transport),
      surroundings_(std::move(surroundings))
{
    create_controls();
    lay_out();
    connect_controls();
    load();
}

void Chang_FIF::create_controls()
{
    txtFilename_ = named_box<TextBox>(this, u"txtFilename"_s, own_word(Word::field_filename));
    txtFilename_->setReadOnly(true);
    QPalette as_form = txtFilename_->palette();
    as_form.setColor(QPalette::Base, palette::panel);
    txtFilename_->setPalette(as_form);
    txtArtist_ = named_box<TextBox>(this, u"txtArtist"_s, own_word(Word::field_artist));
    txtTitle_ = named_box<TextBox>(this, u"txtTitle"_s, own_word(Word::field_title));
    txtGenre_ = named_box<TextBox>(this, u"txtGenre"_s, own_word(Word::field_genre));
    cboGenre_ = named_box<ComboBox>(this, u"cboGenre"_s, own_word(Word::field_genre));
    Label_filesize_ = named_box<QLabel>(this, u"Label_filesize"_s, own_word(Word::field_length));
    Label_filesize_->setTextFormat(Qt::PlainText);
    Label_filesize_->setIndent(text_indent);
    for (TextBox* box : {txtFilename_, txtArtist_, txtTitle_, txtGenre_})
        box->setTextMargins(text_margin, 0, text_margin, 0);
    cmdSave_ = add_button(u"cmdSave"_s, own_word(Word::button_save), u"Change the filename into FIF format"_s);
    cmdExit_ = add_button(u"cmdExit"_s, own_word(Word::button_leave_edit), u"Cancel"_s);
}

void Chang_FIF::lay_out()
{
    auto* genre = new QWidget(this);
    genre->setMouseTracking(true);
    auto* one_place = new QGridLayout(genre); // the two genre controls share one place
    one_place->setContentsMargins(0, 0, 0, 0);
    one_place->addWidget(cboGenre_, 0, 0);
    one_place->addWidget(txtGenre_, 0, 0);

    auto* lines = new QGridLayout;
    lines->setSpacing(8);
    add_line(*lines, u"Picture_filename"_s, Word::field_filename, txtFilename_);
    add_line(*lines, u"Picture_artist"_s, Word::field_artist, txtArtist_);
    add_line(*lines, u"Picture_title"_s, Word::field_title, txtTitle_);
    add_line(*lines, u"Picture_genre"_s, Word::field_genre, genre);
    add_line(*lines, u"Picture_length"_s, Word::field_length, Label_filesize_);
    lines->setColumnMinimumWidth(1, 380);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(cmdSave_);
    buttons->addWidget(cmdExit_);

    auto* form = new QVBoxLayout(this);
    form->setContentsMargins(16, 16, 16, 16);
    form->setSpacing(16);
    form->addLayout(lines);
    form->addLayout(buttons);
}

void Chang_FIF::add_line(QGridLayout& lines, const QString& picture_name, Word word, QWidget* box)
{
    const QString caption = own_word(word);
    auto* picture = new PictureBox(label_face(caption, picture_size), this);
    picture->setObjectName(picture_name);
    picture->setAccessibleName(caption);
    const int row = lines.rowCount();
    lines.addWidget(picture, row, 0);
    lines.addWidget(box, row, 1);
}

void Chang_FIF::connect_controls()
{
    // The name can't be edited: whatever is put into the box, the file's name comes back.
    connect(txtFilename_, &TextBox::Change, this, [this] { txtFilename_->set_Text(shared.edit_file_name); });
    connect(cmdSave_, &UsrButton::Click, this, guarded([this] { cmdSave_Click(); }));
    connect(cmdExit_, &UsrButton::Click, this, guarded([this] { cmdExit_Click(); }));
}

void Chang_FIF::load()
{
    apply_language_chang_fif();
    id3().init_FillComboGenre(*cboGenre_);
    shared.edit_folder = final_list_folder_of(shared.edit_file_name);
    if (Check_file_for_fif(shared.edit_file_name) == 1)
        Show_edit_fif_info(shared.edit_folder, shared.edit_file_name);
    else
        Show_edit_tag_info(shared.edit_folder, shared.edit_file_name);
    show_genre_controls(*cboGenre_, *txtGenre_, shared.genre_type, shared.fif_type);
    setFixedSize(sizeHint());
    txtArtist_->setFocus();
}

/// Tool tips in the language of the run, and the font of Korean.
void Chang_FIF::apply_language_chang_fif()
{
    apply_captions(*this, Form::Chang_FIF);
    apply_korean_font({txtFilename_, txtArtist_, txtTitle_, txtGenre_, Label_filesize_, cboGenre_});
}

void Chang_FIF::Show_edit_tag_info(const QString& folder, const QString& name)
{
    const bool has_tag = id3().load_and_has_tag(folder + name);
    txtFilename_->set_Text(name);
    for (TextBox* box : {txtArtist_, txtTitle_, txtGenre_})
        box->set_Text({});
    if (has_tag) {
        txtArtist_->set_Text(Clean_fif_field(id3().Artist()));
        txtTitle_->set_Text(Clean_fif_field(id3().Title()));
        txtGenre_->set_Text(id3().GenreText(id3().Genre()));
        id3().FillComboGenre(*cboGenre_, id3().Genre());
    }
    // The bytes of the full path, not of the name, on purpose: the two ways of filling differ in this figure.
    Label_filesize_->setText(byte_count_text(folder + name));
}

void Chang_FIF::Show_edit_fif_info(const QString& folder, const QString& name)
{
    for (TextBox* box : {txtArtist_, txtTitle_, txtGenre_})
        box->set_Text({});
    const QString stem = stem_of(name);
    i16 result = 0;
    Check_fif_format_step_1(stem, square_brackets, into_fields, result);
    if (result != 1)
        Check_fif_format_step_1(stem, round_brackets, into_fields, result);
    if (result != 1)
        Check_fif_format_step_3(stem, into_fields, result);
    if (id3().load_and_has_tag(folder + name))
        id3().FillComboGenre_FIF(*cboGenre_, txtGenre_->Text());
}

void Chang_FIF::Check_fif_format_step_1(const QString& stem, i16 bracket_kind, i16 show_mode, i16& result)
{
    store(stem, parse_brackets(stem, bracket_kind), show_mode, result);
}

void Chang_FIF::Check_fif_format_step_3(const QString& stem, i16 show_mode, i16& result)
{
    store(stem, parse_dashes(stem), show_mode, result);
}

void Chang_FIF::store(const QString& stem, const FifParse& parse, i16 show_mode, i16& result)
{
    result = parse.valid ? 1 : 0;
    if (!parse.stores || show_mode != into_fields)
        return;
    txtFilename_->set_Text(stem);
    txtArtist_->set_Text(parse.fields.artist);
    txtTitle_->set_Text(parse.fields.title);
    txtGenre_->set_Text(parse.fields.genre);
    Label_filesize_->setText(byte_count_text(stem));
}

void Chang_FIF::cmdSave_Click()
{
    if (txtArtist_->Text().isEmpty() || txtTitle_->Text().isEmpty()) {
        show_message(msg_input_artist_title);
        return;
    }
    if (shared.edit_folder + shared.edit_file_name != shared.playing_mp3_path) {
        convert_fif_edit();
        return;
    }
    const bool was_playing = shared.is_playing == 1;
    new_file_path_ = shared.playing_mp3_path;
    new_file_name_ = shared.edit_file_name;
    transport_.release();
    convert_fif_edit();
    shared.selected_mp3_path = new_file_path_;
    transport_.mp3_play(new_file_name_);
    if (!was_playing)
        transport_.mp3_stop();
}

void Chang_FIF::convert_fif_edit()
{
    FifFields fields = typed_fields({*txtArtist_, *txtTitle_, *txtGenre_, *cboGenre_});
    const QString new_name =
        Compose_fif_name(fields.artist, fields.title, fields.genre, [] { show_message(msg_artist_too_long); });
    if (new_name.isEmpty())
        return;
    if (shared.fso.FileExists(shared.edit_folder + new_name)) {
        // Compared with the main window's file and not with this dialog's, on purpose.
        if (new_name != shared.selected_mp3_name)
            show_name_message(msg_already_exists, new_name);
        else
            surroundings_.refresh_all();
        return;
    }
    if (rename_in_final_list(shared.edit_file_name, shared.edit_folder, new_name, shared.edit_folder) != 0)
        rename_and_write(new_name, fields);
    surroundings_.refresh_all();
    cmdExit_Click();
}

void Chang_FIF::rename_and_write(const QString& new_name, FifFields& fields)
{
    new_file_path_ = shared.edit_folder + new_name;
    new_file_name_ = new_name;
    const bool moved = MoveFileA(shared.edit_folder + shared.edit_file_name, new_file_path_);
    tag_moved_file(moved, new_file_path_, fields.artist, fields.title, fields.genre);
    file_changed_ = 1;
    shared.selected_mp3_name = new_name;
}

void Chang_FIF::cmdExit_Click()
{
    if (file_changed_ == 1) {
        surroundings_.Fill_list();
        surroundings_.refresh_all();
    }
    close();
}
