#include "frame/Layout.h"

#include "frame/MainControls.h"
#include "platform/twips.h"

namespace {

/// Rows of the design geometry.
enum Row
{
    form_height_row,
    form_width_row,
    filename_left,
    filename_width,
    filename_top,
    artist_left,
    artist_width,
    artist_top,
    title_left,
    title_width,
    title_top,
    player_left,
    player_width,
    player_top,
    tree_height,
    picture_filename_top,
    picture_artist_top,
    picture_title_top,
    last_line_top, ///< Picture_genre and all that stands beside it
    remove_left,
    change_left,
    burn_left,
    panel_2_width
};

constexpr int moving_panel = 2;
constexpr int player_distance = 50; ///< between the detail boxes and the player
constexpr float pane_limit = 1500;  ///< least width of tree and list
constexpr float bar_limit = 500;    ///< least distance of the splitter's bar from the edges, on purpose another
constexpr int list_distance = 80;   ///< between the tree's right edge and the list
constexpr int list_margins = 140;   ///< that distance and the space at the right of the list
constexpr int bar_shortening = 20;
constexpr int key_step = to_twips(16);
constexpr i32 longest_spread = 32766; ///< a shift is a 16-bit number; whole thirds

} // namespace

Layout::Layout(MainControls& controls, SetFormSize set_form_size, QObject* parent)
    : QObject(parent), controls_(controls), set_form_size_(std::move(set_form_size))
{
    const SplitterGrip& grip = *controls_.imgSplitter;
    connect(&grip, &SplitterGrip::MouseDown, this, &Layout::splitter_MouseDown);
    connect(&grip, &SplitterGrip::MouseMove, this, &Layout::splitter_MouseMove);
    connect(&grip, &SplitterGrip::MouseUp, this, &Layout::splitter_MouseUp);
    connect(&grip, &SplitterGrip::KeyDown, this, &Layout::splitter_KeyDown);
}

void Layout::initial_ctl_position(int form_width, int form_height)
{
    const MainControls& c = controls_;
    form_width_ = last_width = form_width;
    form_height_ = last_height = form_height;
    controls_.txtGenre.set_Left(c.cboGenre.Left());
    controls_.txtGenre.set_Top(c.cboGenre.Top());
    design_geometry = {form_height,
                       form_width,
                       c.txtFilename.Left(),
                       c.txtFilename.Width(),
                       c.txtFilename.Top(),
                       c.txtArtist.Left(),
                       c.txtArtist.Width(),
                       c.txtArtist.Top(),
                       c.txtTitle.Left(),
                       c.txtTitle.Width(),
                       c.txtTitle.Top(),
                       c.Picture_mp3_back.Left(),
                       c.Picture_mp3_back.Width(),
                       c.Picture_mp3_back.Top(),
                       c.tvTreeView.Height(),
                       c.Picture_filename.Top(),
                       c.Picture_artist.Top(),
                       c.Picture_title.Top(),
                       c.Picture_genre.Top(),
                       c.cmdRemove.Left(),
                       c.Change_all.Left(),
                       c.cmdBurn.Left(),
                       c.StatusBar1->panel_width(moving_panel)};
}

void Layout::Resize(int form_width, int form_height)
{
    form_width_ = form_width;
    form_height_ = form_height;
    if (in_resize)
        in_resize = false;
    else
        resize_ctl_position();
}

void Layout::resize_ctl_position()
{
    in_resize = true;
    delta_height = delta_width = 0;
    const bool high = form_height_ >= design(form_height_row);
    const bool wide = form_width_ >= design(form_width_row);
    if (!high && !wide) {
        default_ctl_position();
        return; // the Resize that the form's new size raises ends in_resize
    }

    if (high)
        delta_height = form_height_ - last_height;
    if (wide)
        delta_width = form_width_ - last_width;
    last_height = high ? form_height_ : design(form_height_row);
    last_width = wide ? form_width_ : design(form_width_row);

    if (!high || !wide)
        set_form_size(last_width, last_height);
    move_in_height(high);
    move_in_width(wide);
    SizeControls(static_cast<float>(controls_.imgSplitter.Left()));
    in_resize = false;
}

void Layout::default_ctl_position()
{
    last_height = design(form_height_row);
    last_width = design(form_width_row);
    set_form_size(last_width, last_height);
    detail_widths_to_design();
    detail_tops_to_design();
    controls_.tvTreeView.set_Height(design(tree_height));
    SizeControls(static_cast<float>(controls_.imgSplitter.Left()));
    controls_.cmdRemove.set_Left(design(remove_left));
    controls_.Change_all.set_Left(design(change_left));
    controls_.cmdBurn.set_Left(design(burn_left));
    controls_.StatusBar1->set_panel_width(moving_panel, design(panel_2_width));
    controls_.Picture_top_back.set_Width(design(form_width_row));
}

void Layout::move_in_height(bool high)
{
    MainControls& c = controls_;
    if (!high) {
        detail_tops_to_design();
        c.tvTreeView.set_Height(design(tree_height));
        return;
    }
    for (Place* place :
         std::initializer_list<Place*>{&c.txtFilename, &c.txtArtist, &c.txtTitle, &c.Picture_mp3_back,
                                       &c.Picture_filename, &c.Picture_artist, &c.Picture_title, &c.Picture_genre,
                                       &c.cboGenre, &c.txtGenre, &c.Picture_length, &c.Label_filesize, &c.cmdSave})
        place->set_Top(place->Top() + delta_height);
    c.tvTreeView.set_Height(c.tvTreeView.Height() + delta_height);
}

void Layout::move_in_width(bool wide)
{
    MainControls& c = controls_;
    if (!wide) {
        detail_widths_to_design();
        c.StatusBar1->set_panel_width(moving_panel, design(panel_2_width));
        c.cmdRemove.set_Left(design(remove_left));
        c.Change_all.set_Left(design(change_left));
        c.cmdBurn.set_Left(design(burn_left));
        return;
    }
    for (Place* place : std::initializer_list<Place*>{&c.txtFilename, &c.txtArtist, &c.txtTitle, &c.Picture_top_back})
        place->set_Width(place->Width() + delta_width);
    c.Picture_mp3_back.set_Left(c.txtFilename.Left() + c.txtFilename.Width() + player_distance);
    c.StatusBar1->set_panel_width(moving_panel, c.StatusBar1->panel_width(moving_panel) + delta_width);
    spread_buttons();
}

// Each step rounds by itself, so many small steps leave a drift in the buttons. A jump to a very large screen is gone
// in more steps than one.
void Layout::spread_buttons()
{
    MainControls& c = controls_;
    for (i32 rest = delta_width; rest != 0;) {
        const i32 step = qBound(-longest_spread, rest, longest_spread);
        const double third = step / 3.0;
        c.cmdRemove.set_Left(c.cmdRemove.Left() + rounded<i16>(third));
        c.Change_all.set_Left(c.Change_all.Left() + rounded<i16>(2 * third));
        c.cmdBurn.set_Left(c.cmdBurn.Left() + rounded<i16>(3 * third));
        rest -= step;
    }
}

void Layout::detail_tops_to_design()
{
    MainControls& c = controls_;
    c.txtFilename.set_Top(design(filename_top));
    c.txtArtist.set_Top(design(artist_top));
    c.txtTitle.set_Top(design(title_top));
    c.Picture_mp3_back.set_Top(design(player_top));
    c.Picture_filename.set_Top(design(picture_filename_top));
    c.Picture_artist.set_Top(design(picture_artist_top));
    c.Picture_title.set_Top(design(picture_title_top));
    for (Place* place : std::initializer_list<Place*>{&c.Picture_genre, &c.cboGenre, &c.txtGenre, &c.Picture_length,
                                                      &c.Label_filesize, &c.cmdSave})
        place->set_Top(design(last_line_top));
}

void Layout::detail_widths_to_design()
{
    MainControls& c = controls_;
    c.txtFilename.set_Left(design(filename_left));
    c.txtFilename.set_Width(design(filename_width));
    c.txtArtist.set_Left(design(artist_left));
    c.txtArtist.set_Width(design(artist_width));
    c.txtTitle.set_Left(design(title_left));
    c.txtTitle.set_Width(design(title_width));
    c.Picture_mp3_back.set_Left(design(player_left));
    c.Picture_mp3_back.set_Width(design(player_width));
}

void Layout::set_form_size(int width, int height)
{
    form_width_ = width;
    form_height_ = height;
    set_form_size_(width, height);
}

void Layout::SizeControls(float x)
{
    MainControls& c = controls_;
    const auto form_width = static_cast<float>(form_width_);
    const int border = rounded<i32>(qMin(qMax(x, pane_limit), form_width - pane_limit));
    c.tvTreeView.set_Width(border);
    c.imgSplitter.set_Left(border);
    c.lvListView.set_Left(border + list_distance);
    c.lvListView.set_Width(form_width_ - (c.tvTreeView.Width() + list_margins));
    c.lvListView.set_Height(c.tvTreeView.Height());
    c.imgSplitter.set_Top(c.tvTreeView.Top());
    c.imgSplitter.set_Height(c.tvTreeView.Height());
}

void Layout::splitter_MouseDown()
{
    const Place& grip = controls_.imgSplitter;
    controls_.picSplitter.Move(grip.Left(), grip.Top(), grip.Width() / 2, grip.Height() - bar_shortening);
    controls_.picSplitter->show();
    controls_.picSplitter->raise();
    splitter_moving = true;
}

void Layout::splitter_MouseMove(float x)
{
    if (!splitter_moving)
        return;
    const float wanted = static_cast<float>(controls_.imgSplitter.Left()) + x;
    const float limit = static_cast<float>(form_width_) - bar_limit;
    controls_.picSplitter.set_Left(rounded<i32>(wanted < bar_limit ? bar_limit : qMin(wanted, limit)));
}

void Layout::splitter_MouseUp()
{
    SizeControls(static_cast<float>(controls_.picSplitter.Left()));
    controls_.picSplitter->hide();
    splitter_moving = false;
}

void Layout::splitter_KeyDown(int direction)
{
    if (!splitter_moving)
        SizeControls(static_cast<float>(controls_.imgSplitter.Left() + direction * key_step));
}
