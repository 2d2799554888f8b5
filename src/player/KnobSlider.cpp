#include "player/KnobSlider.h"

#include "platform/controls/message_window.h"
#include "player/knob.h"

#include <QKeyEvent>

namespace {

constexpr i16 left_button = 1;
constexpr int against_left_end = -1; ///< percent
constexpr int against_right_end = 101;

/// Where a key brings a knob that stands at `percent`; nothing for a key that is none of the bar's.
std::optional<int> percent_for(int key, int percent, int small_step, int large_step)
{
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Down:
        return percent - small_step;
    case Qt::Key_Right:
    case Qt::Key_Up:
        return percent + small_step;
    case Qt::Key_PageDown:
        return percent - large_step;
    case Qt::Key_PageUp:
        return percent + large_step;
    case Qt::Key_Home:
        return against_left_end;
    case Qt::Key_End:
        return against_right_end;
    default:
        return {};
    }
}

} // namespace

KnobSlider::KnobSlider(Placed<PictureBox>& knob, const Placed<PictureBox>& track, QObject* parent)
    : QObject(parent), knob_(knob), track_(track)
{
    knob->setCursor(Qt::PointingHandCursor);
    track->setCursor(Qt::PointingHandCursor);
    track->setFocusPolicy(Qt::StrongFocus);
    track->set_slider(this);
    track->installEventFilter(this);
    knob->installEventFilter(this);
    connect(&*track, &PictureBox::MouseDown, this,
            guarded([this](i16 /*button*/, i16 /*shift*/, float x, float /*y*/) { main_ctl_move(x); }));
    connect(&*knob, &PictureBox::MouseDown, this,
            [this](i16 /*button*/, i16 /*shift*/, float x, float /*y*/) { mouse_down(x); });
    connect(&*knob, &PictureBox::MouseMove, this,
            guarded([this](i16 button, i16 /*shift*/, float x, float /*y*/) { mouse_move(button, x); }));
    connect(&*knob, &PictureBox::MouseUp, this,
            guarded([this](i16 /*button*/, i16 /*shift*/, float x, float /*y*/) { mouse_up(x); }));
}

KnobSlider::~KnobSlider()
{
    track_->set_slider(nullptr);
}

void KnobSlider::main_ctl_move(float x)
{
    const double clicked = x;
    if (knob_.Left() > clicked)
        knob_.set_Left(rounded<i32>(clicked));
    else if (knob_.Left() + knob_.Width() < clicked)
        knob_.set_Left(rounded<i32>(clicked - knob_.Width()));
    knob_.set_Top(0);
    track_->follow_slider();
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
    track_->follow_slider();
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

// The knob is also moved by others, such as the player's poll: that is seen by its own moves.
bool KnobSlider::eventFilter(QObject* watched, QEvent* event)
{
    bool taken = false;
    if (event->type() == QEvent::KeyPress && watched == &*track_) {
        const auto& press = *static_cast<QKeyEvent*>(event);
        if ((press.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier)
            guarded([&] { taken = KeyDown(press.key()); })();
    } else if (event->type() == QEvent::Move && watched == &*knob_) {
        track_->follow_slider();
    }
    return taken || QObject::eventFilter(watched, event);
}

/// Gives whether the key was one of the bar's.
bool KnobSlider::KeyDown(int key)
{
    const Steps wide = steps().value_or(Steps{0, 0});
    const std::optional<int> wanted = percent_for(key, shown_percent(), wide.small, wide.large);
    if (wanted)
        drag_to(*wanted);
    return wanted.has_value();
}

int KnobSlider::shown_percent() const
{
    const bool has_way = knob_.Width() != track_.Width();
    return has_way ? qBound(0, rounded<i32>(percent()), 100) : 0;
}

// The mouse that it makes up is pressed on the knob's left edge, and is released where it was dragged to.
void KnobSlider::drag_to(int percent)
{
    if (!steps() || dragging_)
        return;
    const double wanted = (track_.Width() - knob_.Width()) / 100.0 * percent;
    mouse_down(0);
    mouse_move(left_button, static_cast<float>(wanted - knob_.Left()));
    mouse_up(static_cast<float>(wanted - knob_.Left()));
}
