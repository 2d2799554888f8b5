#pragma once

#include "platform/media_player/AudioOutput.h"
#include "platform/media_player/DecodedTrack.h"
#include "platform/media_player/Decoder.h"
#include "platform/media_player/MediaPlayerCtl.h"
#include "platform/media_player/gains.h"

#include <QObject>
#include <QString>

#include <array>
#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

/// The control on the machine's decoder and sound output. A thread of its own, begun by the first Open, reads and
/// decodes ahead; the sound output takes what is decoded and gives it the wave output level and the control's Volume.
/// The calls come from one thread, that of the object.
class MediaPlayer : public QObject, public MediaPlayerCtl
{
    Q_OBJECT

public:
    MediaPlayer();
    ~MediaPlayer() override;
    Q_DISABLE_COPY_MOVE(MediaPlayer)

    void Open(const QString& file) override;
    void Stop() override;
    void set_FileName(const QString& file) override;
    double CurrentPosition() const override;
    void set_CurrentPosition(double seconds) override;
    double SelectionEnd() const override;
    void set_Volume(i32 hundredths) override;

Q_SIGNALS:
    /// The file just opened plays without being heard: the machine has no sound output that works.
    void no_audio_device();

private:
    using Lock = std::unique_lock<std::mutex>;

    /// Hands the file to take next to the worker; empty: none.
    void request(const QString& file);
    void work();
    bool has_work() const;
    void take_request(Lock& lock);
    void prepare_output(int rate);
    /// Waits until the file that is given up has faded out, so that the device goes without a click.
    void let_sound_end(Lock& lock);
    void seek(Lock& lock);
    void decode(Lock& lock);
    void switch_output(Lock& lock);
    bool output_should_run() const { return track_.is_sounding() || !fader_.is_quiet(); }
    /// What the sound output calls on its own thread.
    void fill(std::span<float> samples);

    mutable std::mutex mutex_; // guards the next six; never held while a library is called
    DecodedTrack track_;
    Fader fader_;
    std::optional<QString> request_;
    bool is_taking_request_ = false;
    bool output_runs_ = false;
    bool ends_ = false;
    std::condition_variable work_came_;
    std::condition_variable request_taken_;
    std::atomic<bool> cancelled_ = false; ///< breaks off reading a file that nobody wants any more
    std::atomic<i32> volume_ = 0;

    // The worker's own.
    std::unique_ptr<Decoder> decoder_;
    AudioOutput output_;
    std::array<float, 2304> decoded_{};
    std::thread worker_;
};
