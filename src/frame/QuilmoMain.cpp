#include "frame/QuilmoMain.h"

#include "convert/Chang_FIF.h"
#include "convert/FIF_Auto_Convert.h"
#include "convert/Select_FIF_Format.h"
#include "convert/Set_genre_type.h"
#include "convert/genre_controls.h"
#include "core/mod_of_grobal_var.h"
#include "core/user_settings.h"
#include "explorer/File_copy_Dlg.h"
#include "frame/Help_Dlg.h"
#include "frame/web_address.h"
#include "mp3/cIDV3.h"
#include "platform/controls/ShellExecute.h"
#include "platform/controls/message_window.h"
#include "platform/language.h"
#include "platform/own_words.h"
#include "platform/twips.h"
#include "player/mod_volume_ctl.h"
#include "selection/BurningProgram.h"

#include <QApplication>
#include <QCursor>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QMargins form_margins(8, 8, 4, 8); ///< the panes leave 4 pixels at their right by themselves
constexpr i32 disc_megabytes = 650;
constexpr QSize large_screen(1024, 768);

} // namespace

QuilmoMain::QuilmoMain()
    : form_(new QWidget),
      controls_(*form_),
      menus_(*menuBar(), *this),
      layout_(controls_, [this](int width, int height) { set_form_size(width, height); }),
      hover_(controls_),
      detail_boxes_(controls_),
      title_(controls_.label_title_of_player, *controls_.Timer_of_text_scroll, *this),
      playback_({.Player = player_,
                 .lvListView = *controls_.lvListView,
                 .title = title_,
                 .CurrentTime = *controls_.CurrentTime,
                 .TotalTime = *controls_.TotalTime,
                 .play_index_button = controls_.play_index_button,
                 .Picture_back_play_index = controls_.Picture_back_play_index,
                 .volume_button = controls_.volume_button,
                 .Picture_back_volume = controls_.Picture_back_volume,
                 .backBtn = *controls_.backBtn,
                 .frontBtn = *controls_.frontBtn,
                 .UpdatePos = *controls_.UpdatePos,
                 .Timer_mp3_back = *controls_.Timer_mp3_back,
                 .Timer_mp3_front = *controls_.Timer_mp3_front}),
      steps_(*controls_.lvListView, playback_),
      volume_bar_(controls_.volume_button, controls_.Picture_back_volume),
      position_bar_(controls_.play_index_button, controls_.Picture_back_play_index, player_),
      mute_(controls_.muteBtn, controls_.ImageList_mute, controls_.volume_button, controls_.Picture_back_volume),
      tree_(*controls_.tvTreeView),
      picks_(*controls_.lvListView, *controls_.StatusBar1,
             {.selected_tree_key = [this] { return tree_.selected_key(); },
              .click_row = [this](int index) { list_.ItemClick(index); },
              .show_final_list = [this] { show_final_list(); }}),
      list_(*controls_.lvListView, *controls_.StatusBar1, picks_),
      save_({.fields = {.txtArtist = *controls_.txtArtist,
                        .txtTitle = *controls_.txtTitle,
                        .txtGenre = *controls_.txtGenre,
                        .cboGenre = *controls_.cboGenre},
             .txtFilename = *controls_.txtFilename,
             .lvListView = *controls_.lvListView,
             .transport = playback_,
             .selected_tree_key = [this] { return tree_.selected_key(); },
             .click_row = [this](int index) { list_.ItemClick(index); },
             .refresh_all = [this] { tree_.refresh_all(); }}),
      panes_{.tvTreeView = *controls_.tvTreeView,
             .lvListView = *controls_.lvListView,
             .tree = tree_,
             .list = list_,
             .picks = picks_},
      commands_(controls_, menus_, panes_, [this] { playback_.release(); }),
      drag_and_drop_(panes_)
{
    build_window();
    connect_panes();
    connect_buttons();
    connect_player();
    connect_menus();
    connect_focus();
    connect_hover();
    Load();
}

void QuilmoMain::build_window()
{
    setObjectName(u"QuilmoMain"_s);
    setWindowTitle(u"Vurlo Utility Ver 1.0"_s);
    addToolBar(controls_.main_toolbar);

    auto* ground = new QWidget;
    auto* rows = new QVBoxLayout(ground);
    rows->setContentsMargins({});
    rows->setSpacing(0);
    auto* form_row = new QHBoxLayout;
    form_row->setContentsMargins(form_margins);
    form_row->addWidget(form_);
    rows->addLayout(form_row, 1);
    controls_.StatusBar1->setFixedHeight(controls_.StatusBar1->sizeHint().height());
    rows->addWidget(controls_.StatusBar1);
    setCentralWidget(ground);

    form_->setObjectName(u"form"_s);
    form_->resize(to_pixels(design_form_width), to_pixels(design_form_height));
    form_->setMinimumSize(form_->size());
    resize(layout()->totalMinimumSize());
    ground->setMouseTracking(true);
    form_->setMouseTracking(true);
    qApp->installEventFilter(this);
    controls_.tvTreeView->setFocus();
}

// The order of these steps is part of the program's behaviour: what fails leaves all that stands behind it undone.
void QuilmoMain::Load()
{
    GetScreenRes();
    shared.language_id = program_language();
    apply_language_main();
    keep_minimum_size();
    player_.Stop();
    tree_.init_main_tree();
    layout_.initial_ctl_position(to_twips(form_->width()), to_twips(form_->height()));
    shared.last_open_node_index = -1;
    set_list_view(ListView::ViewMode::report);
    id3().init_FillComboGenre(*controls_.cboGenre);
    shared.cd_capacity_mb = disc_megabytes;
    title_.prepare();
    picks_.show_final_total();
    shared.is_muted = 0;
    controls_.volume_button.set_Height(controls_.Picture_back_volume.Height());
    controls_.volume_button.set_Top(0);
    shared.focus_pane = pane_none;
    shared.copy_source_kind = 0;
    shared.enter_saves = 0;
    shared.is_playing = 0;
    read_settings();
    restore_volume(controls_.volume_button, controls_.Picture_back_volume);
    show_genre_controls(*controls_.cboGenre, *controls_.txtGenre, shared.genre_type, shared.fif_type);
}

void QuilmoMain::GetScreenRes()
{
    freeze_on_small_screen(*this, screen()->size());
}

void QuilmoMain::keep_minimum_size()
{
    shared.min_form_width = checked<i16>(to_twips(form_->width()));
    shared.min_form_height = checked<i16>(to_twips(form_->height()));
    form_->setMinimumSize(to_pixels(shared.min_form_width), to_pixels(shared.min_form_height));
}

// A dialog that is open ends where it was opened, once its handlers have returned.
void QuilmoMain::Unload()
{
    for (QDialog* dialog : findChildren<QDialog*>())
        dialog->close();
    player_.Stop();
    write_settings();
    for (QTimer* timer :
         {controls_.UpdatePos, controls_.Timer_mp3_back, controls_.Timer_mp3_front, controls_.Timer_of_text_scroll})
        timer->stop(); // a window that is gone plays no further track
}

void QuilmoMain::closeEvent(QCloseEvent* event)
{
    guarded([this] { Unload(); })();
    QMainWindow::closeEvent(event);
}

void QuilmoMain::connect_panes()
{
    connect(&tree_, &FolderTree::files_wanted, &list_, &FileList::FillListView);
    connect(&tree_, &FolderTree::no_files_wanted, &*controls_.lvListView, &ListView::Clear);
    connect(&list_, &FileList::folder_failed, &tree_, &FolderTree::fall_back_to_parent);
    connect(&list_, &FileList::popup_wanted, this, &QuilmoMain::show_list_menu);
    connect(&*controls_.txtFilename, &TextBox::Change, &list_, guarded([this] { bring_filename_back(); }));
}

void QuilmoMain::connect_buttons()
{
    connect(&*controls_.cmd_select_all, &UsrButton::Click, &picks_, guarded([this] { picks_.cmd_select_all_Click(); }));
    connect(&*controls_.cmdRemove, &UsrButton::Click, &picks_, guarded([this] { picks_.cmdRemove_Click(); }));
    connect(&*controls_.Change_all, &UsrButton::Click, &picks_, guarded([this] { picks_.Change_all_Click(); }));
    connect(&*controls_.cmdBurn, &UsrButton::Click, this, guarded([] { cmdBurn_Click(); }));
    connect(&*controls_.cmdSave, &UsrButton::Click, &hover_, guarded([this] { save_row(); }));
}

void QuilmoMain::connect_player()
{
    const auto plays_on_click = [this](const Placed<UsrButton>& button, auto handler) {
        connect(&*button, &UsrButton::Click, &playback_, guarded(handler));
    };
    plays_on_click(controls_.PlayBtn, [this] { playback_.PlayBtn_Click(); });
    plays_on_click(controls_.StopBtn, [this] { playback_.StopBtn_Click(); });
    plays_on_click(controls_.backBtn, [this] { playback_.backBtn_Click(); });
    plays_on_click(controls_.frontBtn, [this] { playback_.frontBtn_Click(); });
    plays_on_click(controls_.FastBtn, [this] { steps_.FastBtn_Click(); });
    plays_on_click(controls_.ReBtn, [this] { steps_.ReBtn_Click(); });
    connect(&playback_, &Playback::track_ended, &playback_, [this] { steps_.FastBtn_Click(); });
    connect(&list_, &FileList::play_wanted, &playback_, guarded([this] { playback_.PlayBtn_Click(); }));
    connect(&*controls_.Picture_mp3_back, &PictureBox::MouseMove, &mute_, &MuteButton::take_mouse_away);
    connect(&player_, &MediaPlayer::no_audio_device, this, &QuilmoMain::tell_no_audio_device,
            Qt::ConnectionType(Qt::AutoConnection | Qt::SingleShotConnection));
}

void QuilmoMain::connect_menus()
{
    do_on(u"menu_File_Exit"_s, [this] { close(); });
    do_on(u"menu_View_list"_s, [this] { set_list_view(ListView::ViewMode::list); });
    do_on(u"menu_View_details"_s, [this] { set_list_view(ListView::ViewMode::report); });
    do_on(u"menu_Tool_Select_all"_s, [this] { picks_.cmd_select_all_Click(); });
    do_on(u"mnu_ListView_select_all"_s, [this] { picks_.cmd_select_all_Click(); });
    do_on(u"menu_Tool_clear_all"_s, [this] { picks_.cmdRemove_Click(); });
    do_on(u"menu_Tool_display_final_list"_s, [this] { picks_.Change_all_Click(); });
    do_on(u"menu_Tool_Burn"_s, cmdBurn_Click);
    do_on(u"menu_Tool_Select_Burning_Program"_s, menu_Tool_Select_Burning_Program_Click);
    do_on(u"mnu_ListView_auto"_s, [this] { show_auto_convert(); });
    do_on(u"menu_Tool_Select_FIF_Format"_s,
          [this] { Select_FIF_Format(*controls_.cboGenre, *controls_.txtGenre, this).exec(); });
    do_on(u"menu_Tool_Set_Genre_Type"_s,
          [this] { Set_genre_type(*controls_.cboGenre, *controls_.txtGenre, this).exec(); });
    do_on(u"menu_Help_about"_s, [this] { Help_Dlg(this).exec(); });
    connect(new QShortcut(Qt::Key_F10, this), &QShortcut::activated, this,
            [this] { menuBar()->setActiveAction(menuBar()->actions().constFirst()); });
}

void QuilmoMain::do_on(const QString& entry, std::function<void()> handler)
{
    menus_.do_on(entry, *this, std::move(handler));
}

void QuilmoMain::connect_focus()
{
    const auto notes_pane = [this](const auto& control, FocusPane pane) {
        using Control = std::remove_reference_t<decltype(*control)>;
        connect(&*control, &Control::GotFocus, &hover_, [pane] {
            shared.focus_pane = pane;
            shared.enter_saves = 0;
        });
    };
    notes_pane(controls_.txtArtist, pane_artist);
    notes_pane(controls_.txtFilename, pane_filename);
    notes_pane(controls_.txtTitle, pane_title);
    notes_pane(controls_.txtGenre, pane_genre);
    notes_pane(controls_.cboGenre, pane_none);
    connect(&*controls_.label_title_of_player, &TextBox::GotFocus, &hover_,
            [] { shared.focus_pane = pane_player_title; });
    connect(&*controls_.cmdSave, &UsrButton::GotFocus, &hover_, [this] {
        controls_.cmdSave->SetMoveImg();
        shared.enter_saves = 1;
    });
    connect(&*controls_.cmdSave, &UsrButton::LostFocus, &hover_, [this] {
        controls_.cmdSave->DelMoveImg();
        shared.enter_saves = 0;
    });
}

void QuilmoMain::connect_hover()
{
    const auto puts_out_buttons = [this](const auto& control, auto mouse_move) {
        connect(&control, mouse_move, &hover_, [this] { hover_.init_ctl_over(); });
    };
    puts_out_buttons(*controls_.main_toolbar, &Toolbar::MouseMove);
    puts_out_buttons(*controls_.Picture_mp3_back, &PictureBox::MouseMove);
    puts_out_buttons(*controls_.lvListView, &ListView::MouseMove);
    puts_out_buttons(*controls_.tvTreeView, &TreeView::MouseMove);
    puts_out_buttons(*controls_.StatusBar1, &StatusBar::MouseMove);
    connect(&*controls_.cmdSave, &UsrButton::MouseMove, &hover_, [] { shared.enter_saves = 1; });
    connect(&*controls_.Label_filesize, &TextBox::MouseMove, &hover_, [] { shared.enter_saves = 0; });
}

// A click on a folder may have ended before the list took its files: what a person sees is not saved into that folder.
void QuilmoMain::save_row()
{
    if (controls_.lvListView->Count() == 0 || list_.shows(shared.current_folder))
        save_.cmdSave_Click();
    else
        tree_.refresh_all();
}

void QuilmoMain::set_list_view(ListView::ViewMode mode)
{
    list_.set_View(mode);
    menus_.check_view(mode);
}

// The new size comes back as a resize of its own, behind the one that is being worked on.
void QuilmoMain::set_form_size(int width, int height)
{
    const QSize wanted(to_pixels(width), to_pixels(height));
    QMetaObject::invokeMethod(
        this, [this, wanted] { resize(size() + wanted - form_->size()); }, Qt::QueuedConnection);
}

void QuilmoMain::show_final_list()
{
    final_list_dialog_ =
        std::make_unique<FIF_convert>(playback_,
                                      FIF_convert::Surroundings{.refresh_all = [this] { refresh_behind_final_list(); },
                                                                .small_icons = controls_.ImageList_listView},
                                      this);
    connect(final_list_dialog_.get(), &FIF_convert::edit_wanted, this, guarded([this] { show_single_edit(); }));
    connect(final_list_dialog_.get(), &FIF_convert::copy_wanted, this, guarded([this] { show_destination_choice(); }));
    final_list_dialog_->exec();
    final_list_dialog_.reset();
    picks_.show_final_total();
}

/// The panes, and the total of a final list that has just dropped what has vanished.
void QuilmoMain::refresh_behind_final_list()
{
    tree_.refresh_all();
    picks_.show_final_total();
}

void QuilmoMain::show_single_edit()
{
    Chang_FIF edit(playback_,
                   {.refresh_all = [this] { refresh_behind_final_list(); },
                    .Fill_list = [this] { final_list_dialog_->Fill_list(); }},
                   final_list_dialog_.get());
    edit.exec();
}

void QuilmoMain::show_destination_choice()
{
    File_copy_Dlg dialog({.refresh_all = [this] { tree_.refresh_all(); }, .images = controls_.ImageList1},
                         final_list_dialog_.get());
    dialog.exec();
}

void QuilmoMain::show_auto_convert()
{
    FIF_Auto_Convert dialog(playback_,
                            {.lvListView = *controls_.lvListView,
                             .small_icons = controls_.ImageList_listView,
                             .refresh_all = [this] { tree_.refresh_all(); }},
                            this);
    dialog.exec();
}

// The menu opens at the mouse, or at the row that keys act on when the menu key asked for it.
void QuilmoMain::show_list_menu(bool on_row)
{
    const ListView& list = *controls_.lvListView;
    menus_.enable_list_entries(on_row);
    const QPoint mouse = list.mapFromGlobal(QCursor::pos());
    const int row = list.SelectedItem();
    const bool at_mouse = row == 0 || list.rect().contains(mouse);
    menus_.mnu_ListView().popup(list.mapToGlobal(at_mouse ? mouse : list.row_rect(row).bottomLeft()));
}

void QuilmoMain::tell_no_audio_device()
{
    const QString text = own_word(Word::no_audio_device);
    controls_.muteBtn->setToolTip(text);
    controls_.StatusBar1->show_notice(text);
}

// The box shows the row's key, so a row renamed in place shows its old name here until the next fill, on purpose.
void QuilmoMain::bring_filename_back()
{
    const QString text = list_.filename_box_text();
    if (controls_.txtFilename->Text() != text)
        controls_.txtFilename->set_Text(text);
}

bool QuilmoMain::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        // Keys that choose in the menu bar are none of the form's.
        if (const auto* widget = qobject_cast<QWidget*>(watched);
            widget != nullptr && widget->window() == this && !menuBar()->hasFocus())
            return KeyDown(*static_cast<QKeyEvent*>(event));
        break;
    case QEvent::ShortcutOverride:
        if (commands_.is_for_edit_menu(watched, *static_cast<QKeyEvent*>(event)))
            return true;
        break;
    case QEvent::MouseMove:
        if (watched == centralWidget()) // moves over the form come on to it
            hover_.init_ctl_over();
        break;
    case QEvent::Resize:
        if (watched == form_)
            errors_ignored([this] { layout_.Resize(to_twips(form_->width()), to_twips(form_->height())); });
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(watched, event);
}

/// The form sees keys before its controls do. Gives whether the key was one of its own. Held down it acts once.
bool QuilmoMain::KeyDown(const QKeyEvent& event)
{
    const bool acts = !event.isAutoRepeat();
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (shared.enter_saves != 1 || commands_.is_editing_label())
            return false;
        if (acts) {
            Q_EMIT controls_.cmdSave->Click();
            controls_.cmdSave->DelMoveImg();
        }
        return true;
    case Qt::Key_F1:
        if (acts)
            ShellExecuteA(web_address());
        return true;
    case Qt::Key_F2:
        commands_.rename_in_pane();
        return true;
    default:
        return false;
    }
}

void freeze_on_small_screen(QWidget& window, QSize screen)
{
    if (screen.width() >= large_screen.width() || screen.height() >= large_screen.height())
        return;
    window.setFixedSize(window.size());
    window.setWindowFlag(Qt::WindowMaximizeButtonHint, false);
}
