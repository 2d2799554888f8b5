#include "player/ctl_slider2.h"

#include "core/mod_of_grobal_var.h"

namespace {

constexpr double small_step_seconds = 5;
constexpr double large_step_seconds = 30;

int percent_of(double seconds, double length)
{
    return qMax(1, rounded<i32>(qMin(seconds / length, 1.0) * 100));
}

} // namespace

ctl_slider2::ctl_slider2(Placed<PictureBox>& knob, const Placed<PictureBox>& track, MediaPlayerCtl& player,
                         QObject* parent)
    : KnobSlider(knob, track, parent), player_(player)
{
}

std::optional<KnobSlider::Steps> ctl_slider2::steps() const
{
    const double length = player_.SelectionEnd();
    if (shared.is_playing != 1 || length <= 0)
        return {};
    return Steps{.small = percent_of(small_step_seconds, length), .large = percent_of(large_step_seconds, length)};
}

void ctl_slider2::track_pressed()
{
    seek();
}

// The file plays on where it is until the release.
void ctl_slider2::knob_dragged() {}

void ctl_slider2::knob_released(float x)
{
    switch (follow(x)) {
    case Reached::left_end:
        player_.set_CurrentPosition(0);
        break;
    case Reached::right_end:
        player_.set_CurrentPosition(player_.SelectionEnd());
        break;
    case Reached::between:
        seek();
        break;
    }
}

void ctl_slider2::seek()
{
    const i32 whole_percent = rounded<i32>(percent());
    value_ = rounded<i32>(player_.SelectionEnd() * whole_percent / 100);
    player_.set_CurrentPosition(value_);
}
