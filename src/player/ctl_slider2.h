#pragma once

#include "platform/media_player/MediaPlayerCtl.h"
#include "player/KnobSlider.h"

/// The position bar: a press on the track seeks at once, a drag when it is released. A seek goes by whole percents of
/// the file and lands on whole seconds, except at the right end, which is the end of the file exactly. Keys go about 5
/// and 30 seconds, by whole percents too and one at least.
class ctl_slider2 : public KnobSlider
{
    Q_OBJECT

public:
    ctl_slider2(Placed<PictureBox>& knob, const Placed<PictureBox>& track, MediaPlayerCtl& player,
                QObject* parent = nullptr);

    /// The whole second that the knob's place was last taken for.
    i32 value() const { return value_; }

protected:
    /// Nothing while no file plays.
    std::optional<Steps> steps() const override;
    void track_pressed() override;
    void knob_dragged() override;
    void knob_released(float x) override;

private:
    void seek();

    MediaPlayerCtl& player_;
    i32 value_ = 0;
};
