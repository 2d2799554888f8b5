#include "player/ctl_slider.h"

#include "player/mod_volume_ctl.h"

ctl_slider::ctl_slider(Placed<PictureBox>& knob, const Placed<PictureBox>& track, QObject* parent)
    : KnobSlider(knob, track, parent)
{
}

std::optional<KnobSlider::Steps> ctl_slider::steps() const
{
    return Steps{.small = 5, .large = 20};
}

void ctl_slider::track_pressed()
{
    set_level();
}

void ctl_slider::knob_dragged()
{
    set_level();
}

// The last move has set the level.
void ctl_slider::knob_released(float /*x*/) {}

void ctl_slider::set_level()
{
    value_ = rounded<i16>(percent());
    set_volume_percent(value_);
}
