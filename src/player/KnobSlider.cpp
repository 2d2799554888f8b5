#include "player/KnobSlider.h"

#include "platform/controls/message_window.h"
#include "player/knob.h"

namespace {

constexpr i16 left_button = 1;

} // namespace

KnobSlider::KnobSlider(Placed<PictureBox>& knob, const Placed<PictureBox>& track, QObject* parent)
    : QObject(parent), knob_(knob), track_(track)
{
    knob->setCursor(Qt::PointingHandCursor);
    track->setCursor(Qt::PointingHandCursor);
    connect(&*track, &PictureBox::MouseDown, this,
            guarded([this](i16 /*button*/, i16 /*shift*/, float x, float /*y*/) { main_ctl_move(x); }));
    connect(&*knob, &PictureBox::MouseDown, this,
            [this](i16 /*button*/, i16 /*shift*/, float x, float /*y*/) { mouse_down(x); });
    connect(&*knob, &PictureBox::MouseMove, this,
            guarded([this](i16 button, i16 /*shift*/, float x, float /*y*/) { mouse_move(button, x); }));
    connect(&*knob, &PictureBox::MouseUp, this,
            guarded([this](i16 /*button*/, i16 /*shift*/, float x, float /*y*/) { mouse_up(x); }));
}

void KnobSlider::main_ctl_move(float x)
{
    const double clicked = x;
    if (knob_.Left() > clicked)
        knob_.set_Left(rounded<i32>(clicked));
    else if (knob_.Left() + knob_.Width() < clicked)
        knob_.set_Left(rounded<i32>(clicked - knob_.Width()));
    knob_.set_Top(0);
    track_pressed();
}

void KnobSlider::mouse_down(float x)
{
    down_x_ = x;
    dragging_ = true;
}

KnobSlider::Reached KnobSlider::follow(float x)
{
    const double n = knob_.Left() + double{x} - double{down_x_};
    Reached reached = Reached::between;
    if (n < 0) {
        knob_.set_Left(0);
        reached = Reached::left_end;
    } else if (knob_.Width() + n > track_.Width()) {
        knob_.set_Left(track_.Width() - knob_.Width());
        reached = Reached::right_end;
    } else {
        knob_.set_Left(rounded<i32>(n));
    }
    knob_.set_Top(0);
    return reached;
}

double KnobSlider::percent() const
{
    return knob_percent(knob_, track_);
}

void KnobSlider::mouse_move(i16 button, float x)
{
    if (button != left_button || !dragging_)
        return;
    follow(x);
    knob_dragged();
}

void KnobSlider::mouse_up(float x)
{
    if (!dragging_)
        return;
    dragging_ = false;
    knob_released(x);
}
