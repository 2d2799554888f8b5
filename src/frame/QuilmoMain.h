#pragma once

#include "convert/FIF_convert.h"
#include "convert/SaveButton.h"
#include "explorer/DragAndDrop.h"
#include "explorer/FileList.h"
#include "explorer/FolderTree.h"
#include "explorer/Panes.h"
#include "frame/DetailBoxes.h"
#include "frame/ExplorerCommands.h"
#include "frame/Layout.h"
#include "frame/MainControls.h"
#include "frame/MainMenus.h"
#include "frame/hover.h"
#include "platform/media_player/MediaPlayer.h"
#include "player/MuteButton.h"
#include "player/Playback.h"
#include "player/TitleScroller.h"
#include "player/TrackSteps.h"
#include "player/ctl_slider.h"
#include "player/ctl_slider2.h"
#include "selection/Picks.h"

#include <QMainWindow>

#include <memory>

/// The main window. It only composes: it places the controls, owns the components that act on them and wires these
/// together. At most one exists at a time.
class QuilmoMain : public QMainWindow
{
    Q_OBJECT

public:
    /// Runs the whole Load. Raises "Type mismatch" for a stored setting that should be a number and is none.
    QuilmoMain();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build_window();
    void Load();
    void GetScreenRes();
    void apply_language_main();
    void keep_minimum_size();
    void Unload();

    void connect_panes();
    void connect_buttons();
    void connect_player();
    void connect_menus();
    void connect_focus();
    void connect_hover();
    void do_on(const QString& entry, std::function<void()> handler);

    void save_row();
    void set_list_view(ListView::ViewMode mode);
    void set_form_size(int width, int height);
    void show_final_list();
    void refresh_behind_final_list();
    void show_single_edit();
    void show_destination_choice();
    void show_auto_convert();
    void show_list_menu(bool on_row);
    void tell_no_audio_device();
    void bring_filename_back();
    bool KeyDown(const QKeyEvent& event);

    QWidget* form_; ///< the area of the hand-placed controls
    MainControls controls_;
    MainMenus menus_;
    Layout layout_;
    HoverRows hover_;
    DetailBoxes detail_boxes_;
    MediaPlayer player_;
    TitleScroller title_;
    Playback playback_;
    TrackSteps steps_;
    ctl_slider volume_bar_;
    ctl_slider2 position_bar_;
    MuteButton mute_;
    FolderTree tree_;
    Picks picks_;
    FileList list_;
    SaveButton save_;
    Panes panes_;
    ExplorerCommands commands_;
    DragAndDrop drag_and_drop_;
    std::unique_ptr<FIF_convert> final_list_dialog_;
};

/// On a screen below 1024 pixels in width and 768 in height the window keeps its size and can't be maximised.
void freeze_on_small_screen(QWidget& window, QSize screen);
