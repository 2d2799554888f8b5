#pragma once

#include <QString>

/// What a converter needs of the player: to let go of a file before its rename and to take it up again afterwards.
class Transport
{
public:
    virtual ~Transport() = default;
    /// Releases the file that is open in the player: no descriptor of it is open afterwards.
    virtual void release() = 0;
    /// Starts `shared.selected_mp3_path`, with `name` as the source of the title.
    virtual void mp3_play(const QString& name) = 0;
    /// Stops and resets the time display.
    virtual void mp3_stop() = 0;
    /// What a press of the play button does: the selected row plays.
    virtual void PlayBtn_Click() = 0;
    /// What a press of the stop button does: mp3_stop, and the position knob goes.
    virtual void StopBtn_Click() = 0;
};
