#pragma once

#include "platform/numbers.h"

#include <QString>

/// The embedded media control: plays one MP3 file at a time. Times are in seconds.
class MediaPlayerCtl
{
public:
    virtual ~MediaPlayerCtl() = default;
    /// Takes `file`, a path of the program, in place of the one before and returns at once. It plays by itself as soon
    /// as it is ready.
    virtual void Open(const QString& file) = 0;
    /// Stops; the file stays open and stands at its beginning. Without a file nothing happens.
    virtual void Stop() = 0;
    /// An empty name releases the file: no descriptor of it is open afterwards. Any other is opened.
    virtual void set_FileName(const QString& file) = 0;
    /// The position, 0 while no file is ready. At the end of the file it stays at SelectionEnd.
    virtual double CurrentPosition() const = 0;
    /// Seeks, playing or stopped; a position outside the file goes to its nearest end. Without effect while no file is
    /// ready.
    virtual void set_CurrentPosition(double seconds) = 0;
    /// The length of the file; 0 while none is ready, and for good if it can't be read or has no MPEG frame.
    virtual double SelectionEnd() const = 0;
    /// The level in hundredths of a decibel: 0 full, -10000 silent.
    virtual void set_Volume(i32 hundredths) = 0;
};
