#include "platform/media_player/AudioOutput.h"

#define SDL_MAIN_HANDLED // the program's own main function stays the main function
#include <SDL.h>

#include <bit>
#include <cstdint>
#include <utility>

namespace {

constexpr int channels = 2;

/// A device holds two lots of samples at a time: at this length each, a change of level is heard within 50 ms.
constexpr int longest_lot = 16;
/// Without a device time is kept in whole milliseconds: at this length no rate leaves a rest.
constexpr int silent_lot = 40;

int samples_in(int milliseconds, int rate)
{
    return rate * milliseconds / 1000;
}

void fill_from(void* fill, Uint8* bytes, int size)
{
    auto* samples = static_cast<float*>(static_cast<void*>(bytes));
    (*static_cast<std::function<void(std::span<float>)>*>(fill))(
        {samples, static_cast<std::size_t>(size) / sizeof(float)});
}

} // namespace

AudioOutput::AudioOutput(std::function<void(std::span<float>)> fill) : fill_(std::move(fill)) {}

bool AudioOutput::fits(int rate) const
{
    return is_real_ && rate == rate_ && SDL_GetAudioDeviceStatus(device_) != SDL_AUDIO_STOPPED;
}

bool AudioOutput::open(int rate)
{
    if (fits(rate))
        return true;
    close_device();
    rate_ = rate;
    const auto lot = static_cast<int>(std::bit_floor(static_cast<unsigned>(samples_in(longest_lot, rate))));
    is_real_ = open_device(nullptr, rate, lot);
    if (!is_real_)
        open_device("dummy", rate, samples_in(silent_lot, rate));
    return is_real_;
}

bool AudioOutput::open_device(const char* driver, int rate, int samples_at_once)
{
    SDL_SetHint(SDL_HINT_APP_NAME, "Quilmo");
    SDL_AudioSpec wanted = {};
    wanted.freq = rate;
    wanted.format = AUDIO_F32SYS;
    wanted.channels = channels;
    wanted.samples = static_cast<Uint16>(samples_at_once);
    wanted.callback = fill_from;
    wanted.userdata = &fill_;
    if (SDL_AudioInit(driver) == 0)
        device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device_ == 0)
        SDL_AudioQuit();
    return device_ != 0;
}

void AudioOutput::set_running(bool running)
{
    if (device_ != 0)
        SDL_PauseAudioDevice(device_, running ? 0 : 1);
}

void AudioOutput::close()
{
    close_device();
    SDL_TLSCleanup(); // each thread has the text of its last error
}

void AudioOutput::close_device()
{
    if (device_ == 0)
        return;
    SDL_CloseAudioDevice(device_);
    SDL_AudioQuit();
    device_ = 0;
    is_real_ = false;
}
