#include "frame/MainControls.h"

#include "frame/pictures.h"
#include "platform/controls/faces.h"
#include "platform/controls/palette.h"
#include "platform/own_words.h"
#include "platform/twips.h"

#include <initializer_list>

using namespace Qt::StringLiterals;

namespace {

// The form is drawn on a grid of 8 logical pixels.
constexpr int line_height = to_twips(28);
constexpr int line_distance = to_twips(36);

constexpr int list_row_top = to_twips(0);
constexpr int list_row_height = to_twips(48);
constexpr int list_button_top = list_row_top + to_twips(8);
constexpr QSize list_button_size(208, 32);

constexpr int panes_top = list_row_top + list_row_height + to_twips(8);
constexpr int panes_height = to_twips(368);
constexpr int tree_width = 2760;
constexpr int splitter_width = 80;
constexpr int list_margins = splitter_width + 60;

constexpr int details_top = panes_top + panes_height + to_twips(8);
constexpr int detail_label_width = to_twips(72);
constexpr int detail_left = to_twips(80);
constexpr int detail_width = to_twips(480);
constexpr QSize save_button_size(136, 28);
constexpr int text_margin = 2;

constexpr int player_left = detail_left + detail_width + 50;
constexpr int player_width = design_form_width - 60 - player_left;
constexpr int player_height = to_twips(136);
constexpr int player_inner_left = to_twips(17); ///< within the player's ground, whose picture leaves 5 pixels free
constexpr double player_left_space = 5;
constexpr int player_inner_right = player_width - to_twips(12);
constexpr QSize transport_size(36, 36);
constexpr int transport_distance = to_twips(40);
constexpr int transport_top = to_twips(88);

constexpr QSize small_icon(16, 16);
constexpr QSize toolbar_icon(24, 24);
constexpr QSize mute_icon(24, 24);

Picture drawing(const QString& name, QSize size)
{
    return svg_picture(u":/icons/"_s + name + u".svg"_s, size);
}

void add_images(ImageList& list, QSize size, std::initializer_list<std::pair<QString, QString>> keys_and_drawings)
{
    for (const auto& [key, name] : keys_and_drawings)
        list.Add(key, icon_of(drawing(name, size)));
}

template<typename Control>
Placed<Control> placed(Control& control, const QString& name, const QString& accessible_name, int left, int top,
                       int width, int height)
{
    control.setObjectName(name);
    control.setAccessibleName(accessible_name);
    return {control, Place(control, left, top, width, height)};
}

/// The tip is the button's accessible name as well.
Placed<UsrButton> placed_button(UsrButton& button, const QString& name, const QString& tip, int left, int top)
{
    const QSize size = button.PictureUp().size;
    button.setObjectName(name);
    button.setToolTip(tip);
    return {button, Place(button, left, top, to_twips(size.width()), to_twips(size.height()))};
}

Placed<UsrButton> word_button(QWidget& form, const QString& name, Word word, const QString& tip, int left, int top,
                              QSize size)
{
    const QString caption = own_word(word);
    auto* button = new UsrButton(&form);
    button->set_faces(button_face(caption, FaceState::up, size), button_face(caption, FaceState::down, size),
                      button_face(caption, FaceState::hover, size));
    return placed_button(*button, name, tip, left, top);
}

Placed<UsrButton> sign_button(QWidget& form, const QString& name, const QString& sign, Word meaning, int left)
{
    const QString resource = u":/icons/"_s + sign + u".svg"_s;
    auto* button = new UsrButton(&form);
    button->set_faces(sign_face(resource, FaceState::up, transport_size),
                      sign_face(resource, FaceState::down, transport_size),
                      sign_face(resource, FaceState::hover, transport_size));
    return placed_button(*button, name, own_word(meaning), left, transport_top);
}

/// A picture without events of its own: the mouse over it is over what lies below.
Placed<PictureBox> still_picture(QWidget& form, const QString& name, const QString& accessible_name,
                                 const Picture& picture, int left, int top, int width, int height)
{
    auto* box = new PictureBox(picture, &form);
    box->setAttribute(Qt::WA_TransparentForMouseEvents);
    return placed(*box, name, accessible_name, left, top, width, height);
}

Placed<PictureBox> word_picture(QWidget& form, const QString& name, Word word, int left, int top, int width)
{
    const QString text = own_word(word);
    const QSize size(to_pixels(width), to_pixels(line_height));
    return still_picture(form, name, text, label_face(text, size), left, top, width, line_height);
}

Placed<TextBox> text_box(QWidget& form, const QString& name, Word meaning, int left, int top, int width)
{
    auto* box = new TextBox(&form);
    box->setTextMargins(text_margin, 0, text_margin, 0);
    return placed(*box, name, own_word(meaning), left, top, width, line_height);
}

Placed<QLabel> word_label(QWidget& form, const QString& name, const QString& text, int left, int top, int width)
{
    auto* label = new QLabel(text, &form);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    return placed(*label, name, text, left, top, width, to_twips(20));
}

QTimer* new_timer(QWidget& form, const QString& name)
{
    auto* timer = new QTimer(&form);
    timer->setObjectName(name);
    return timer;
}

} // namespace

MainControls::MainControls(QWidget& form)
{
    fill_image_lists();
    create_toolbar(form);
    create_list_row(form);
    create_panes(form);
    create_details(form);
    create_player(form);
    set_tab_order();
}

void MainControls::fill_image_lists()
{
    add_images(ImageList1, small_icon,
               {{u"OPENFOLDER"_s, u"open_folder"_s},
                {u"MYCOMPUTER"_s, u"computer"_s},
                {u"DRIVE"_s, u"drive"_s},
                {u"FOLDER"_s, u"folder"_s},
                {u"Cddrive"_s, u"cd_drive"_s},
                {u"Nethood"_s, u"network"_s},
                {u"Drivenet"_s, u"network_drive"_s},
                {u"35floppy"_s, u"removable"_s}});
    add_images(ImageList_listView, small_icon, {{u"FIF"_s, u"fif"_s}, {u"NOT_FIF"_s, u"not_fif"_s}});
    add_images(ImageList_toolbar, toolbar_icon,
               {{u"Add"_s, u"new_folder"_s},
                {u"Copy"_s, u"copy"_s},
                {u"Paste"_s, u"paste"_s},
                {u"Delete"_s, u"delete"_s},
                {u"Refresh"_s, u"refresh"_s}});
    add_images(ImageList_mute, mute_icon,
               {{u"SOUND_ON"_s, u"sound_on"_s},
                {u"SOUND_ON_OVER"_s, u"sound_on_over"_s},
                {u"MUTED"_s, u"muted"_s},
                {u"MUTED_OVER"_s, u"muted_over"_s}});
}

void MainControls::create_toolbar(QWidget& form)
{
    main_toolbar = new Toolbar(&form);
    main_toolbar->setObjectName(u"main_toolbar"_s);
    main_toolbar->setAccessibleName(own_word(Word::name_toolbar));
    main_toolbar->Add(u"Add"_s, ImageList_toolbar.icon(u"Add"_s), u"New Folder"_s);
    main_toolbar->Add(u"Copy"_s, ImageList_toolbar.icon(u"Copy"_s), u"Copy"_s);
    main_toolbar->AddSeparator();
    main_toolbar->Add(u"Paste"_s, ImageList_toolbar.icon(u"Paste"_s), u"Paste"_s);
    main_toolbar->Add(u"Delete"_s, ImageList_toolbar.icon(u"Delete"_s), u"Delete"_s);
    main_toolbar->AddSeparator();
    main_toolbar->Add(u"Refresh"_s, ImageList_toolbar.icon(u"Refresh"_s), u"Refresh"_s);
}

void MainControls::create_list_row(QWidget& form)
{
    Picture_top_back = still_picture(form, u"Picture_top_back"_s, {}, panel_picture(0, 4), 0, list_row_top,
                                     design_form_width, list_row_height);
    cmd_select_all =
        word_button(form, u"cmd_select_all"_s, Word::button_select_all, u"Select all the files in the current folder"_s,
                    to_twips(8), list_button_top, list_button_size);
    cmdRemove =
        word_button(form, u"cmdRemove"_s, Word::button_clear_all, u"Cancel all selections made in the current folder"_s,
                    to_twips(264), list_button_top, list_button_size);
    Change_all = word_button(form, u"Change_all"_s, Word::button_final_list,
                             u"You can see the list of all the selected MP3 files"_s, to_twips(520), list_button_top,
                             list_button_size);
    cmdBurn = word_button(form, u"cmdBurn"_s, Word::button_burn, u"Run the burning program"_s, to_twips(776),
                          list_button_top, list_button_size);
}

void MainControls::create_panes(QWidget& form)
{
    tvTreeView = placed(*new TreeView(&form), u"tvTreeView"_s, own_word(Word::name_folders), 0, panes_top, tree_width,
                        panes_height);
    tvTreeView->set_images(ImageList1);
    lvListView = placed(*new ListView(&form), u"lvListView"_s, own_word(Word::name_files), tree_width + splitter_width,
                        panes_top, design_form_width - tree_width - list_margins, panes_height);
    lvListView->set_SmallIcons(ImageList_listView);
    lvListView->set_ColumnHeaders({{.Text = u"Name"_s, .Width = 6700},
                                   {.Text = u"Size"_s, .Width = 1100},
                                   {.Text = u"Type"_s, .Width = 1800},
                                   {.Text = u"Date"_s, .Width = 2200},
                                   {.Text = u"Byte"_s, .Width = 0}});
    lvListView->set_Checkboxes(true);
    lvListView->set_MultiSelect(true);
    imgSplitter = placed(*new SplitterGrip(&form), u"imgSplitter"_s, own_word(Word::name_splitter), tree_width,
                         panes_top, splitter_width, panes_height);
    picSplitter = still_picture(form, u"picSplitter"_s, {}, splitter_picture(), tree_width, panes_top, splitter_width,
                                panes_height);
    picSplitter->hide();

    constexpr int panel_1_width = 2400;
    constexpr int panel_2_width = 9600;
    constexpr int panel_3_width = 3000;
    StatusBar1 = new StatusBar({panel_1_width, panel_2_width, panel_3_width}, &form);
    StatusBar1->setObjectName(u"StatusBar1"_s);
    StatusBar1->setAccessibleName(own_word(Word::name_totals));
}

void MainControls::create_details(QWidget& form)
{
    const auto line = [](int number) { return details_top + number * line_distance; };
    Picture_filename = word_picture(form, u"Picture_filename"_s, Word::field_filename, 0, line(0), detail_label_width);
    Picture_artist = word_picture(form, u"Picture_artist"_s, Word::field_artist, 0, line(1), detail_label_width);
    Picture_title = word_picture(form, u"Picture_title"_s, Word::field_title, 0, line(2), detail_label_width);
    Picture_genre = word_picture(form, u"Picture_genre"_s, Word::field_genre, 0, line(3), detail_label_width);
    txtFilename = text_box(form, u"txtFilename"_s, Word::field_filename, detail_left, line(0), detail_width);
    txtFilename->setReadOnly(true);
    txtArtist = text_box(form, u"txtArtist"_s, Word::field_artist, detail_left, line(1), detail_width);
    txtTitle = text_box(form, u"txtTitle"_s, Word::field_title, detail_left, line(2), detail_width);

    constexpr int genre_width = to_twips(184);
    cboGenre = placed(*new ComboBox(&form), u"cboGenre"_s, own_word(Word::field_genre), detail_left, line(3),
                      genre_width, line_height);
    txtGenre = text_box(form, u"txtGenre"_s, Word::field_genre, detail_left, line(3), genre_width);
    txtGenre->hide();
    Picture_length = word_picture(form, u"Picture_length"_s, Word::field_length, to_twips(280), line(3), to_twips(48));
    Label_filesize = text_box(form, u"Label_filesize"_s, Word::field_length, to_twips(336), line(3), to_twips(80));
    Label_filesize->setReadOnly(true);
    cmdSave = word_button(form, u"cmdSave"_s, Word::button_save, u"Change the filename into FIF format"_s,
                          to_twips(424), line(3), save_button_size);
}

void MainControls::create_player(QWidget& form)
{
    auto* ground = new PictureBox(panel_picture(player_left_space, 0), &form);
    Picture_mp3_back = placed(*ground, u"Picture_mp3_back"_s, own_word(Word::name_player), player_left, details_top,
                              player_width, player_height);
    create_title_line(*ground);
    create_position_bar(*ground);
    create_transport(*ground);
    create_volume(*ground);

    UpdatePos = new_timer(form, u"UpdatePos"_s);
    Timer_mp3_back = new_timer(form, u"Timer_mp3_back"_s);
    Timer_mp3_front = new_timer(form, u"Timer_mp3_front"_s);
    Timer_of_text_scroll = new_timer(form, u"Timer_of_text_scroll"_s);
}

void MainControls::create_title_line(QWidget& ground)
{
    constexpr int top = to_twips(16);
    constexpr int time_width = to_twips(48); ///< minutes may take three digits
    constexpr int stroke_width = to_twips(8);
    constexpr int title_left = player_inner_left + to_twips(24);
    constexpr int total_left = player_inner_right - time_width;
    constexpr int current_left = total_left - stroke_width - time_width;
    Picture1 = still_picture(ground, u"Picture1"_s, {}, drawing(u"track"_s, small_icon), player_inner_left, top,
                             to_twips(small_icon.width()), to_twips(small_icon.height()));
    auto* title = new TextBox(&ground);
    title->setReadOnly(true);
    title->setFrame(false);
    title->setFocusPolicy(Qt::ClickFocus); // often empty, so the focus would be lost to sight
    QPalette colours = title->palette();
    colours.setColor(QPalette::Base, palette::panel_dark);
    title->setPalette(colours);
    label_title_of_player = placed(*title, u"label_title_of_player"_s, own_word(Word::name_playing_title), title_left,
                                   top, current_left - to_twips(8) - title_left, to_twips(16));
    constexpr int times_top = top - to_twips(3); // on one base line with the title
    CurrentTime = word_label(ground, u"CurrentTime"_s, u"00:00"_s, current_left, times_top, time_width);
    Label3 = word_label(ground, u"Label3"_s, u"/"_s, total_left - stroke_width, times_top, stroke_width);
    TotalTime = word_label(ground, u"TotalTime"_s, u"00:00"_s, total_left, times_top, time_width);
}

void MainControls::create_position_bar(QWidget& ground)
{
    constexpr int height = to_twips(16);
    auto* track = new PictureBox(groove_picture(), &ground);
    Picture_back_play_index = placed(*track, u"Picture_back_play_index"_s, own_word(Word::name_position),
                                     player_inner_left, to_twips(52), player_inner_right - player_inner_left, height);
    play_index_button = placed(*new PictureBox(knob_picture(), track), u"play_index_button"_s,
                               own_word(Word::name_position_knob), 0, 0, height, height);
    play_index_button->hide();
}

void MainControls::create_transport(QWidget& ground)
{
    const auto place = [](int number) { return player_inner_left + number * transport_distance; };
    ReBtn = sign_button(ground, u"ReBtn"_s, u"previous"_s, Word::track_previous, place(0));
    backBtn = sign_button(ground, u"backBtn"_s, u"back_5"_s, Word::seconds_back, place(1));
    PlayBtn = sign_button(ground, u"PlayBtn"_s, u"play"_s, Word::play, place(2));
    StopBtn = sign_button(ground, u"StopBtn"_s, u"stop"_s, Word::stop, place(3));
    frontBtn = sign_button(ground, u"frontBtn"_s, u"forward_5"_s, Word::seconds_forward, place(4));
    FastBtn = sign_button(ground, u"FastBtn"_s, u"next"_s, Word::track_next, place(5));
}

void MainControls::create_volume(QWidget& ground)
{
    constexpr int middle = transport_top + to_twips(18);
    constexpr int sign_width = to_twips(12);
    constexpr int mute_left = to_twips(272);
    constexpr int quiet_left = mute_left + to_twips(28);
    constexpr int track_left = quiet_left + sign_width + to_twips(4);
    constexpr int loud_left = player_inner_right - sign_width;
    constexpr int track_width = loud_left - to_twips(4) - track_left;
    constexpr int track_height = to_twips(16);

    auto* mute = new PictureBox(drawing(u"sound_on"_s, mute_icon), &ground);
    mute->setToolTip(u"Mute"_s);
    muteBtn = placed(*mute, u"muteBtn"_s, u"Mute"_s, mute_left, middle - to_twips(12), to_twips(24), to_twips(24));
    Label1 = word_label(ground, u"Label1"_s, u"−"_s, quiet_left, middle - to_twips(10), sign_width);
    Label2 = word_label(ground, u"Label2"_s, u"+"_s, loud_left, middle - to_twips(10), sign_width);
    auto* track = new PictureBox(groove_picture(), &ground);
    Picture_back_volume = placed(*track, u"Picture_back_volume"_s, own_word(Word::name_volume), track_left,
                                 middle - track_height / 2, track_width, track_height);
    volume_button = placed(*new PictureBox(knob_picture(), track), u"volume_button"_s, own_word(Word::name_volume_knob),
                           0, 0, track_height, track_height);
}

// From left to right and from top to bottom, behind the toolbar. File name and length are stops too, so that they can
// be read out and copied.
void MainControls::set_tab_order() const
{
    QWidget* previous = &*cmd_select_all;
    for (QWidget* next : std::initializer_list<QWidget*>{&*cmdRemove,   &*Change_all,
                                                         &*cmdBurn,     &*tvTreeView,
                                                         &*imgSplitter, &*lvListView,
                                                         &*txtFilename, &*txtArtist,
                                                         &*txtTitle,    &*cboGenre,
                                                         &*txtGenre,    &*Label_filesize,
                                                         &*cmdSave,     &*Picture_back_play_index,
                                                         &*ReBtn,       &*backBtn,
                                                         &*PlayBtn,     &*StopBtn,
                                                         &*frontBtn,    &*FastBtn,
                                                         &*muteBtn,     &*Picture_back_volume}) {
        QWidget::setTabOrder(previous, next);
        previous = next;
    }
}
