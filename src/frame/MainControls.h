#pragma once

#include "frame/SplitterGrip.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/ImageList.h"
#include "platform/controls/ListView.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/Placed.h"
#include "platform/controls/StatusBar.h"
#include "platform/controls/TextBox.h"
#include "platform/controls/Toolbar.h"
#include "platform/controls/TreeView.h"
#include "platform/controls/UsrButton.h"

#include <QLabel>
#include <QTimer>

/// The size of the main form's area of hand-placed controls at design, in twips: between toolbar and status bar.
constexpr int design_form_width = 14940;
constexpr int design_form_height = 8520;

/// All controls of the main window, each with its name as objectName, at their design places.
class MainControls
{
public:
    /// `form` is the area that the placed controls stand on; it owns all controls.
    explicit MainControls(QWidget& form);

    ImageList ImageList1;         ///< the tree's
    ImageList ImageList_listView; ///< 1 a FIF name, 2 any other
    ImageList ImageList_toolbar;
    ImageList ImageList_mute; ///< 1 sound on, 2 the same under the mouse, 3 muted, 4 the same under the mouse

    Toolbar* main_toolbar = nullptr;
    StatusBar* StatusBar1 = nullptr; ///< panels: files of the folder, their megabytes, the final list's total
    QTimer* UpdatePos = nullptr;     ///< the player's poll
    QTimer* Timer_mp3_back = nullptr;
    QTimer* Timer_mp3_front = nullptr;
    QTimer* Timer_of_text_scroll = nullptr;

    Placed<PictureBox> Picture_top_back;
    Placed<UsrButton> cmd_select_all;
    Placed<UsrButton> cmdRemove;
    Placed<UsrButton> Change_all;
    Placed<UsrButton> cmdBurn;

    Placed<TreeView> tvTreeView;
    Placed<ListView> lvListView;
    Placed<SplitterGrip> imgSplitter;
    Placed<PictureBox> picSplitter;

    Placed<PictureBox> Picture_filename;
    Placed<PictureBox> Picture_artist;
    Placed<PictureBox> Picture_title;
    Placed<PictureBox> Picture_genre;
    Placed<PictureBox> Picture_length;
    Placed<TextBox> txtFilename;
    Placed<TextBox> txtArtist;
    Placed<TextBox> txtTitle;
    Placed<TextBox> txtGenre;
    Placed<ComboBox> cboGenre;
    Placed<TextBox> Label_filesize;
    Placed<UsrButton> cmdSave;

    Placed<PictureBox> Picture_mp3_back; ///< the player's ground, which its controls stand on
    Placed<PictureBox> Picture1;
    Placed<TextBox> label_title_of_player;
    Placed<QLabel> CurrentTime;
    Placed<QLabel> Label3; ///< between the two times
    Placed<QLabel> TotalTime;
    Placed<PictureBox> Picture_back_play_index;
    Placed<PictureBox> play_index_button;
    Placed<UsrButton> ReBtn;
    Placed<UsrButton> backBtn;
    Placed<UsrButton> PlayBtn;
    Placed<UsrButton> StopBtn;
    Placed<UsrButton> frontBtn;
    Placed<UsrButton> FastBtn;
    Placed<PictureBox> muteBtn;
    Placed<QLabel> Label1; ///< the quiet end of the volume bar
    Placed<QLabel> Label2; ///< its loud end
    Placed<PictureBox> Picture_back_volume;
    Placed<PictureBox> volume_button;

private:
    void fill_image_lists();
    void create_toolbar(QWidget& form);
    void create_list_row(QWidget& form);
    void create_panes(QWidget& form);
    void create_details(QWidget& form);
    void create_player(QWidget& form);
    void create_title_line(QWidget& ground);
    void create_position_bar(QWidget& ground);
    void create_transport(QWidget& ground);
    void create_volume(QWidget& ground);
    void set_tab_order() const;
};
