#pragma once

#include "frame/Layout.h"
#include "frame/MainControls.h"

#include <array>
#include <map>
#include <vector>

/// A form whose size is a pair of numbers, with the real controls on it.
class Form
{
public:
    Form() { layout.initial_ctl_position(design_form_width, design_form_height); }

    QWidget ground;
    MainControls controls{ground};
    std::vector<QSize> sizes_set; ///< by the layout itself, in twips
    bool resizes_at_once = false; ///< a size that the layout sets comes back as a Resize inside of its own work
    Layout layout{controls, [this](int form_width, int form_height) {
                      sizes_set.emplace_back(form_width, form_height);
                      if (resizes_at_once)
                          layout.Resize(form_width, form_height);
                  }};
};

/// Left, top, width and height of each control.
using Geometry = std::map<QString, std::array<int, 4>>;

template<typename Control> void note(Geometry& geometry, const Placed<Control>& control)
{
    geometry[control->objectName()] = {control.Left(), control.Top(), control.Width(), control.Height()};
}

/// Places of all controls that a resize may move, in twips.
inline Geometry geometry_of(const Form& form)
{
    const MainControls& c = form.controls;
    Geometry geometry;
    for (const auto* button : {&c.cmd_select_all, &c.cmdRemove, &c.Change_all, &c.cmdBurn, &c.cmdSave})
        note(geometry, *button);
    for (const auto* box : {&c.txtFilename, &c.txtArtist, &c.txtTitle, &c.txtGenre, &c.Label_filesize})
        note(geometry, *box);
    for (const auto* picture : {&c.Picture_top_back, &c.Picture_mp3_back, &c.Picture_filename, &c.Picture_artist,
                                &c.Picture_title, &c.Picture_genre, &c.Picture_length})
        note(geometry, *picture);
    note(geometry, c.cboGenre);
    note(geometry, c.tvTreeView);
    note(geometry, c.lvListView);
    note(geometry, c.imgSplitter);
    return geometry;
}
