#pragma once

#include <functional>
#include <span>

/// The sound output of the machine: one device that asks for samples, pairs of left and right, on a thread of its own.
/// Nothing of the machine is touched before the first open.
class AudioOutput
{
public:
    /// `fill` fills all of the samples that it is given, and never waits for a disk.
    explicit AudioOutput(std::function<void(std::span<float>)> fill);
    ~AudioOutput() = default;
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;

    /// Makes a device of `rate` samples in a second ready; it asks for nothing yet. One of the same rate that still
    /// works stays. Gives false when there is none: samples are then asked for in real time and go nowhere.
    bool open(int rate);
    /// Whether open would keep the device that is there.
    bool fits(int rate) const;
    /// Lets the device ask for samples or be silent by itself.
    void set_running(bool running);
    /// Lets the device go, if there is one. The last call of the thread that called open.
    void close();

private:
    bool open_device(const char* driver, int rate, int samples_at_once);
    void close_device();

    std::function<void(std::span<float>)> fill_;
    unsigned device_ = 0;
    int rate_ = 0;
    bool is_real_ = false;
};
