#pragma once

#include "platform/numbers.h"

#include <QObject>

#include <array>
#include <functional>

class MainControls;

/// Keeps the hand-placed main window whole while it changes its size: it notes the design geometry at start, adds to
/// named controls what the form grew since the last resize, and puts everything back when the form is smaller than at
/// design. All lengths are twips.
class Layout : public QObject
{
    Q_OBJECT

public:
    /// Sets the form's size, which raises a nested Resize.
    using SetFormSize = std::function<void(int width, int height)>;

    /// `controls` outlives it.
    Layout(MainControls& controls, SetFormSize set_form_size, QObject* parent = nullptr);

    /// Notes the design geometry of a form of this size; once, at start.
    void initial_ctl_position(int form_width, int form_height);
    /// The form has got this size. A Resize that resize_ctl_position itself has raised is passed over.
    void Resize(int form_width, int form_height);
    /// Sets the border of the two panes, at least 1500 from both edges of the form.
    void SizeControls(float x);

    i32 design(int row) const { return design_geometry.at(static_cast<std::size_t>(row)); }

private:
    static constexpr std::size_t row_count = 23;

    void resize_ctl_position();
    void default_ctl_position();
    void move_in_height(bool high);
    void move_in_width(bool wide);
    void spread_buttons();
    void detail_tops_to_design();
    void detail_widths_to_design();
    void set_form_size(int width, int height);
    void splitter_MouseDown();
    void splitter_MouseMove(float x);
    void splitter_MouseUp();
    void splitter_KeyDown(int direction);

    MainControls& controls_;
    SetFormSize set_form_size_;
    int form_width_ = 0;
    int form_height_ = 0;
    i32 delta_height = 0; ///< change since the last resize
    i32 delta_width = 0;
    i32 last_height = 0; ///< the form's size at the last resize
    i32 last_width = 0;
    std::array<i32, row_count> design_geometry{};
    bool splitter_moving = false;
    bool in_resize = false;
};
