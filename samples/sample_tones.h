#pragma once

#include <QByteArray>

#include <functional>
#include <vector>

// Valid MPEG Layer III audio that sounds, made from nothing: each frame plays one pure tone in each channel.

/// What a channel plays during a frame.
struct Tone
{
    int step = 0; ///< the frequency in steps of a 1152nd of the sample rate, 1 to 575; any other is silence
    int gain = 0; ///< the loudness, 0 to 210; see tone_amplitude
};

/// The peak of a tone's samples: 1, which is full scale, for a gain of 210, and 1.5 dB less for each one below. Steps
/// next to a multiple of 18 waver round it by up to a tenth.
double tone_amplitude(int gain);

enum class ToneMode
{
    stereo,
    joint_stereo,
    dual_channel,
    mono,
};

/// Audio as it should be made. A tone that goes on in the next frame is steady. A new one has half its power 528
/// samples behind the beginning of its frame, which is the delay of every Layer III decoder (some 50 more for a step
/// that is a multiple of 18).
struct ToneAudio
{
    int frames = 40;                   ///< each samples_per_frame long
    int rate = 44100;                  ///< samples in a second; says the version: MPEG 1 from 32000, 2 from 16000, 2.5
    std::vector<int> kilobits = {128}; ///< in a second, for the frames in turn: more than one make it variable
    int free_bytes = 0;                ///< bytes of each frame in free format, whatever `kilobits` says; 0 for none
    ToneMode mode = ToneMode::stereo;
    bool has_crc = false;
    bool is_original = false;
    std::function<Tone(int frame, int channel)> tone{}; ///< left out, all is silence
};

/// Samples of a frame at a sample rate: 1152 in MPEG 1, 576 else.
int samples_per_frame(int rate);

/// The frames of `audio`, padded so that the mean bit rate is exact. Empty where the version has no such sample rate or
/// bit rate, or a frame is too small for its tone.
QByteArray tone_audio(const ToneAudio& audio);

/// What the frame in front of the audio tells about it.
struct ToneInfo
{
    bool is_variable = true; ///< "Xing" rather than "Info"
    int frames = 0;          ///< how many follow; 0 to leave it untold
    int bytes = 0;           ///< of the whole file; 0 to leave it untold
    int delay = -1;          ///< samples put in front by the encoder, up to 4095; negative for no encoder's part
    int padding = 0;         ///< samples put behind, up to 4095
};

/// A frame of silence that carries `info`, to stand in front of the frames of `audio`; of the smallest bit rate that
/// holds it. Empty as with tone_audio.
QByteArray tone_info_frame(const ToneAudio& audio, const ToneInfo& info);

/// An ID3v2 tag without fields, `bytes` long in all, which is at least 10.
QByteArray sample_id3v2(int bytes);
