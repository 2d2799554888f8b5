#pragma once

#include "platform/controls/Picture.h"
#include "platform/numbers.h"

#include <QWidget>

#include <optional>

/// A box that shows one picture, drawn to fill it. A press on it never reaches what lies below; a move of the mouse
/// does if nobody listens to the box's own. One that was given a focus policy is pressed by the space bar as well, and
/// shows the focus. Assistive programs know it as a graphic, as a group of what stands on it, or as a slider or a check
/// box once it was made one.
class PictureBox : public QWidget
{
    Q_OBJECT

public:
    /// What a box stands for that is the track of a slider.
    class Slider
    {
    public:
        virtual ~Slider() = default;
        virtual int shown_percent() const = 0; ///< 0 to 100
        virtual void drag_to(int percent) = 0; ///< as a person would; below 0 and above 100 to the end and against it
    };

    explicit PictureBox(const Picture& picture, QWidget* parent = nullptr);

    const Picture& picture() const { return picture_; }
    void set_picture(const Picture& picture);

    /// Makes the box a slider to assistive programs; null makes it none. The box doesn't own it.
    void set_slider(Slider* slider);
    Slider* slider() const { return slider_; }
    /// The slider may have another value: tells it if so.
    void follow_slider();

    /// Makes the box a check box to assistive programs, with this state; its Click is what changes it.
    void set_checked(bool checked);
    std::optional<bool> checked() const { return checked_; } ///< nothing: no check box

    QSize sizeHint() const override;

Q_SIGNALS:
    /// Numbers as in mouse.h; x and y in twips from the box's upper left corner, where it stands when the event comes.
    /// A press holds the mouse: until the release, moves and releases outside the box are told too, with places below 0
    /// or beyond its size. The second press of a double click is a press like any other.
    void MouseDown(i16 button, i16 shift, float x, float y);
    void MouseMove(i16 button, i16 shift, float x, float y);
    void MouseUp(i16 button, i16 shift, float x, float y);
    /// The left button was pressed and released inside, after its MouseUp; or the space bar was pressed; or an
    /// assistive program pressed the check box.
    void Click();
    /// The slider has another value; any assistive programs have been told.
    void ValueChanged(int percent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    Picture picture_;
    bool left_press_ = false; ///< a press of the left button that may become a Click
    Slider* slider_ = nullptr;
    int told_percent_ = 0; ///< the slider's value told last
    std::optional<bool> checked_;
};
