#pragma once

#include "player/KnobSlider.h"

/// The volume bar: the level follows each press and each move of a drag.
class ctl_slider : public KnobSlider
{
    Q_OBJECT

public:
    ctl_slider(Placed<PictureBox>& knob, const Placed<PictureBox>& track, QObject* parent = nullptr);

    /// The percentage set last.
    i16 value() const { return value_; }

protected:
    std::optional<Steps> steps() const override;
    void track_pressed() override;
    void knob_dragged() override;
    void knob_released(float x) override;

private:
    void set_level();

    i16 value_ = 0;
};
