#pragma once

#include "platform/media_player/Decoder.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <vector>

// What the tests of the media control listen with. A sample is a pair, left and right.

using Sound = std::vector<float>; ///< pairs, left and right in turn

/// An environment variable with another value as long as the object lives.
class ChosenVariable
{
public:
    ChosenVariable(const char* name, const QByteArray& value);
    ~ChosenVariable();
    ChosenVariable(const ChosenVariable&) = delete;
    ChosenVariable& operator=(const ChosenVariable&) = delete;

private:
    const char* name_;
    bool was_set_;
    QByteArray before_;
};

/// A sound device that keeps what would be heard, as long as the object lives: it writes it into a file.
class SoundFile
{
public:
    /// A lot of samples takes so many milliseconds; 1 is some ten times faster than real time.
    explicit SoundFile(int milliseconds_a_lot = 1);

    /// Bytes written by now.
    qint64 size() const;
    /// All that was heard, silence before and behind it left out; complete once the player is gone.
    Sound heard() const;

private:
    QString path() const;

    QTemporaryDir folder_;
    ChosenVariable driver_;
    ChosenVariable file_;
    ChosenVariable delay_;
};

/// All samples that come from where the decoder stands.
Sound rest_of(Decoder& decoder);
/// All samples of the file at the program's path `path`; empty when it can't be played.
Sound sound_of(const QString& path);
/// Whether both are the same, but for the last bits: those depend on where decoding began.
bool same_sound(const Sound& one, const Sound& other);
/// The last sample of `sound` from which on it is `part`, to the length of that; -1 when there is none.
std::ptrdiff_t place_of(const Sound& part, const Sound& sound);
/// Samples of `sound` from `first` on, `count` of them or all.
Sound cut(const Sound& sound, std::ptrdiff_t first, std::ptrdiff_t count = -1);
/// The peak of the tone of so many 1152nds of the sample rate on the side `channel`, measured over 1152 samples from
/// `first` on.
double tone_peak(const Sound& sound, std::ptrdiff_t first, int channel, int step);
/// How many descriptors of this process belong to the path `native` on disk, be it deleted or not.
int open_descriptors(const QByteArray& native);
/// Threads of this process.
int thread_count();
