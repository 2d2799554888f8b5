#include "platform/media_player/MediaPlayer.h"

#include "platform/wave_volume.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

constexpr int usual_rate = 44100;

/// A device that works has asked for samples long before.
constexpr std::chrono::milliseconds longest_fade(200);

} // namespace

MediaPlayer::MediaPlayer() : fader_(usual_rate), output_([this](std::span<float> samples) { fill(samples); }) {}

MediaPlayer::~MediaPlayer()
{
    {
        const Lock lock(mutex_);
        track_ = DecodedTrack();
        ends_ = true;
        cancelled_ = true;
    }
    work_came_.notify_one();
    if (worker_.joinable())
        worker_.join();
}

void MediaPlayer::Open(const QString& file)
{
    request(file);
    if (!worker_.joinable())
        worker_ = std::thread([this] { work(); });
}

void MediaPlayer::set_FileName(const QString& file)
{
    if (!file.isEmpty()) {
        Open(file);
        return;
    }
    if (!worker_.joinable())
        return;
    request(file);
    Lock lock(mutex_);
    request_taken_.wait(lock, [this] { return !request_ && !is_taking_request_; });
}

void MediaPlayer::request(const QString& file)
{
    {
        const Lock lock(mutex_);
        track_ = DecodedTrack();
        request_ = file;
        cancelled_ = true;
    }
    work_came_.notify_one();
}

void MediaPlayer::Stop()
{
    const Lock lock(mutex_);
    track_.stop();
}

double MediaPlayer::CurrentPosition() const
{
    const Lock lock(mutex_);
    return track_.position();
}

void MediaPlayer::set_CurrentPosition(double seconds)
{
    {
        const Lock lock(mutex_);
        track_.seek(seconds);
    }
    work_came_.notify_one();
}

double MediaPlayer::SelectionEnd() const
{
    const Lock lock(mutex_);
    return track_.length();
}

void MediaPlayer::set_Volume(i32 hundredths)
{
    volume_ = hundredths;
}

void MediaPlayer::work()
{
    Lock lock(mutex_);
    while (true) {
        work_came_.wait(lock, [this] { return has_work(); });
        if (ends_)
            break;
        if (request_)
            take_request(lock);
        else if (track_.wants_seek())
            seek(lock);
        else if (track_.wanted_samples() > 0)
            decode(lock);
        else
            switch_output(lock);
    }
    let_sound_end(lock);
    lock.unlock();
    output_.close();
}

bool MediaPlayer::has_work() const
{
    return ends_ || request_ || track_.wants_seek() || track_.wanted_samples() > 0 ||
           output_should_run() != output_runs_;
}

void MediaPlayer::take_request(Lock& lock)
{
    const QString file = *std::exchange(request_, std::nullopt);
    is_taking_request_ = true;
    cancelled_ = false;
    lock.unlock();
    decoder_.reset();
    if (!file.isEmpty())
        decoder_ = Decoder::open(file, cancelled_);
    if (decoder_)
        prepare_output(decoder_->rate());
    lock.lock();
    is_taking_request_ = false;
    request_taken_.notify_all();
    if (decoder_ && !request_)
        track_.begin(decoder_->rate(), decoder_->length());
}

void MediaPlayer::prepare_output(int rate)
{
    if (output_.fits(rate))
        return;
    Lock lock(mutex_);
    let_sound_end(lock);
    lock.unlock();
    if (!output_.open(rate))
        QMetaObject::invokeMethod(this, &MediaPlayer::no_audio_device, Qt::QueuedConnection);
    lock.lock();
    fader_ = Fader(rate);
    output_runs_ = false;
}

void MediaPlayer::let_sound_end(Lock& lock)
{
    work_came_.wait_for(lock, longest_fade, [this] { return !output_runs_ || fader_.is_quiet(); });
}

void MediaPlayer::seek(Lock& lock)
{
    const std::int64_t sample = track_.take_seek();
    lock.unlock();
    decoder_->seek(sample);
    lock.lock();
}

void MediaPlayer::decode(Lock& lock)
{
    const auto room = static_cast<std::size_t>(2 * track_.wanted_samples());
    const auto part = std::span(decoded_).first(std::min(room, decoded_.size()));
    lock.unlock();
    const std::int64_t count = decoder_->decode(part);
    const std::int64_t end = count > 0 ? 0 : decoder_->real_length();
    lock.lock();
    if (request_)
        return; // what was decoded belongs to a file that nobody wants any more
    if (count > 0)
        track_.add(part.first(static_cast<std::size_t>(2 * count)));
    else
        track_.end_at(end);
}

void MediaPlayer::switch_output(Lock& lock)
{
    output_runs_ = output_should_run();
    const bool runs = output_runs_;
    lock.unlock();
    output_.set_running(runs);
    lock.lock();
}

void MediaPlayer::fill(std::span<float> samples)
{
    {
        const Lock lock(mutex_);
        const DecodedTrack::Taken taken = track_.take(samples);
        fader_.apply(samples, taken.count, taken.continues, gains_of(wave_output_level(), volume_));
        if (!has_work())
            return;
    }
    work_came_.notify_one();
}
