#pragma once

#include "platform/controls/ImageList.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/Placed.h"

#include <QObject>

/// The mute button, a picture box: it cuts the wave level and gives it back, and leaves volume bar and player level as
/// they are. It can be reached by the tab key and pressed by the space bar.
class MuteButton : public QObject
{
    Q_OBJECT

public:
    /// `pictures`: 1 sound on, 2 the same under the mouse, 3 muted, 4 the same under the mouse. Box, volume knob and
    /// its track live as long as the button.
    MuteButton(Placed<PictureBox>& box, const ImageList& pictures, const Place& volume_knob, const Place& volume_track,
               QObject* parent = nullptr);

    /// The mouse is elsewhere: the picture without it comes back.
    void take_mouse_away();

private:
    void Click();
    void MouseMove();
    void show_image(int index);

    PictureBox& box_;
    const ImageList& pictures_;
    const Place& knob_;
    const Place& track_;
};
