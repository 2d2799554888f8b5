#pragma once

#include "platform/controls/PictureBox.h"
#include "platform/controls/Placed.h"

#include <QObject>

#include <optional>

/// A bar of a knob in its track, moved by the mouse: what the volume bar and the position bar share. It follows both
/// boxes by itself. The knob lies on the track and stays between its ends; only the horizontal way counts. Keys, while
/// the track has the focus, and assistive programs move the knob by drags of their own, in whole percents.
class KnobSlider : public QObject, private PictureBox::Slider
{
    Q_OBJECT

public:
    ~KnobSlider() override;
    Q_DISABLE_COPY_MOVE(KnobSlider)

    /// A press on the track at `x`, twips from its left end: a knob to the right comes with its left edge, one to the
    /// left with its right edge; in the knob's span nothing moves. The bar's value is taken either way.
    void main_ctl_move(float x);
    /// A press on the knob at `x`, twips from its own left edge: a drag begins.
    void mouse_down(float x);
    /// Whether a press on the knob lasts.
    bool dragging() const { return dragging_; }

protected:
    /// Both boxes live as long as the slider.
    KnobSlider(Placed<PictureBox>& knob, const Placed<PictureBox>& track, QObject* parent);

    enum class Reached
    {
        left_end,
        between,
        right_end
    };

    /// How far the keys move the knob, in percent of its way.
    struct Steps
    {
        int small;
        int large;
    };

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Brings the knob to where the mouse, at `x` in the knob, asks for; no further than to the ends.
    Reached follow(float x);
    /// Where the knob stands, in percent of its way, unrounded.
    double percent() const;

    /// The steps of the keys. Nothing: neither keys nor assistive programs move the bar now.
    virtual std::optional<Steps> steps() const = 0;
    virtual void track_pressed() = 0;
    virtual void knob_dragged() = 0;         ///< the knob has followed
    virtual void knob_released(float x) = 0; ///< the drag is over; the knob has not followed to `x` in it

private:
    void mouse_move(i16 button, float x);
    void mouse_up(float x);
    bool KeyDown(int key);
    int shown_percent() const override;
    void drag_to(int percent) override;

    Placed<PictureBox>& knob_;
    const Placed<PictureBox>& track_;
    float down_x_ = 0; ///< where the knob was pressed, twips from its left edge
    bool dragging_ = false;
};
