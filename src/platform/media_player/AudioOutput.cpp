#include "platform/media_player/AudioOutput.h"

#include "platform/late_library.h"

#define SDL_MAIN_HANDLED // the program's own main function stays the main function
#include <SDL.h>

#include <bit>
#include <cstdint>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A function of SDL, nothing where the system has no SDL.
template<typename Function> Function loaded(const char* name)
{
    return late_function<Function>(u"SDL2-2.0"_s, 0, name);
}

struct Sdl
{
    decltype(&SDL_SetHint) SetHint = loaded<decltype(SetHint)>("SDL_SetHint");
    decltype(&SDL_AudioInit) AudioInit = loaded<decltype(AudioInit)>("SDL_AudioInit");
    decltype(&SDL_AudioQuit) AudioQuit = loaded<decltype(AudioQuit)>("SDL_AudioQuit");
    decltype(&SDL_OpenAudioDevice) OpenAudioDevice = loaded<decltype(OpenAudioDevice)>("SDL_OpenAudioDevice");
    decltype(&SDL_GetAudioDeviceStatus) GetAudioDeviceStatus =
        loaded<decltype(GetAudioDeviceStatus)>("SDL_GetAudioDeviceStatus");
    decltype(&SDL_PauseAudioDevice) PauseAudioDevice = loaded<decltype(PauseAudioDevice)>("SDL_PauseAudioDevice");
    decltype(&SDL_CloseAudioDevice) CloseAudioDevice = loaded<decltype(CloseAudioDevice)>("SDL_CloseAudioDevice");
    decltype(&SDL_TLSCleanup) TLSCleanup = loaded<decltype(TLSCleanup)>("SDL_TLSCleanup");
};

/// SDL, loaded at the first sound: with all that it needs that takes almost as long as the rest of a start.
const Sdl& sdl()
{
    static const Sdl functions;
    return functions;
}

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
    return is_real_ && rate == rate_ && sdl().GetAudioDeviceStatus(device_) != SDL_AUDIO_STOPPED;
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
    if (sdl().AudioInit == nullptr)
        return false;
    sdl().SetHint(SDL_HINT_APP_NAME, "Quilmo");
    SDL_AudioSpec wanted = {};
    wanted.freq = rate;
    wanted.format = AUDIO_F32SYS;
    wanted.channels = channels;
    wanted.samples = static_cast<Uint16>(samples_at_once);
    wanted.callback = fill_from;
    wanted.userdata = &fill_;
    if (sdl().AudioInit(driver) == 0)
        device_ = sdl().OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device_ == 0)
        sdl().AudioQuit();
    return device_ != 0;
}

void AudioOutput::set_running(bool running)
{
    if (device_ != 0)
        sdl().PauseAudioDevice(device_, running ? 0 : 1);
}

void AudioOutput::close()
{
    close_device();
    if (rate_ != 0 && sdl().TLSCleanup != nullptr)
        sdl().TLSCleanup(); // each thread has the text of its last error
}

void AudioOutput::close_device()
{
    if (device_ == 0)
        return;
    sdl().CloseAudioDevice(device_);
    sdl().AudioQuit();
    device_ = 0;
    is_real_ = false;
}
