#include "player/MuteButton.h"

#include "core/mod_of_grobal_var.h"
#include "platform/controls/message_window.h"
#include "platform/own_words.h"
#include "player/knob.h"
#include "player/mod_volume_ctl.h"

namespace {

constexpr int sound_on = 1;
constexpr int sound_on_over = 2;
constexpr int muted = 3;
constexpr int muted_over = 4;

} // namespace

MuteButton::MuteButton(Placed<PictureBox>& box, const ImageList& pictures, const Place& volume_knob,
                       const Place& volume_track, QObject* parent)
    : QObject(parent), box_(*box), pictures_(pictures), knob_(volume_knob), track_(volume_track)
{
    box_.setFocusPolicy(Qt::StrongFocus);
    take_mouse_away();
    connect(&box_, &PictureBox::Click, this, guarded([this] { Click(); }));
    connect(&box_, &PictureBox::MouseMove, this, &MuteButton::MouseMove);
}

void MuteButton::take_mouse_away()
{
    show_image(shared.is_muted != 0 ? muted : sound_on);
}

void MuteButton::Click()
{
    if (shared.is_muted == 0) {
        shared.is_muted = 1;
        show_image(muted);
        set_wave_volume(0);
    } else {
        shared.is_muted = 0;
        show_image(sound_on);
        set_volume_percent(rounded<i16>(knob_percent(knob_, track_)));
    }
}

void MuteButton::MouseMove()
{
    show_image(shared.is_muted != 0 ? muted_over : sound_on_over);
}

void MuteButton::show_image(int index)
{
    box_.set_picture(picture_of(pictures_.icon(index), box_.picture().size));
    box_.set_checked(shared.is_muted != 0);
    if (const QString state = own_word(shared.is_muted != 0 ? Word::sound_off : Word::sound_on);
        box_.accessibleDescription() != state)
        box_.setAccessibleDescription(state);
}
