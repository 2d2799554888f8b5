#include "heard_sound.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstring>
#include <filesystem>
#include <numbers>

using namespace Qt::StringLiterals;

namespace {

constexpr std::ptrdiff_t channels = 2;

bool is_near(float one, float other)
{
    return std::abs(one - other) < 1e-5F;
}

} // namespace

SoundFile::SoundFile(int milliseconds_a_lot)
    : driver_("SDL_AUDIODRIVER", "disk"),
      file_("SDL_DISKAUDIOFILE", QFile::encodeName(path())),
      delay_("SDL_DISKAUDIODELAY", QByteArray::number(milliseconds_a_lot))
{
}

QString SoundFile::path() const
{
    return folder_.filePath(u"sound.raw"_s);
}

qint64 SoundFile::size() const
{
    return QFileInfo(path()).size();
}

Sound SoundFile::heard() const
{
    QFile file(path());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    Sound sound(static_cast<std::size_t>(bytes.size()) / sizeof(float));
    std::memcpy(sound.data(), bytes.constData(), sound.size() * sizeof(float));
    const auto sounds = [](float value) { return value != 0; };
    const auto first = std::ranges::find_if(sound, sounds) - sound.begin();
    const auto behind = std::find_if(sound.rbegin(), sound.rend(), sounds).base() - sound.begin();
    return first < behind ? cut(sound, first / channels, (behind - first / channels * channels + 1) / channels)
                          : Sound();
}

ChosenVariable::ChosenVariable(const char* name, const QByteArray& value)
    : name_(name), was_set_(qEnvironmentVariableIsSet(name)), before_(qgetenv(name))
{
    qputenv(name, value);
}

ChosenVariable::~ChosenVariable()
{
    if (was_set_)
        qputenv(name_, before_);
    else
        qunsetenv(name_);
}

Sound rest_of(Decoder& decoder)
{
    Sound sound;
    std::array<float, 2304> part{};
    for (std::int64_t count = decoder.decode(part); count > 0; count = decoder.decode(part))
        sound.insert(sound.end(), part.begin(), part.begin() + channels * count);
    return sound;
}

Sound sound_of(const QString& path)
{
    const std::atomic<bool> cancelled = false;
    const auto decoder = Decoder::open(path, cancelled);
    return decoder ? rest_of(*decoder) : Sound();
}

bool same_sound(const Sound& one, const Sound& other)
{
    return std::ranges::equal(one, other, is_near);
}

std::ptrdiff_t place_of(const Sound& part, const Sound& sound)
{
    const auto found = std::find_end(sound.begin(), sound.end(), part.begin(), part.end(), is_near);
    return found == sound.end() ? -1 : (found - sound.begin()) / channels;
}

Sound cut(const Sound& sound, std::ptrdiff_t first, std::ptrdiff_t count)
{
    const std::ptrdiff_t size = std::ssize(sound);
    const std::ptrdiff_t begin = std::min(channels * first, size);
    const std::ptrdiff_t end = count < 0 ? size : std::min(begin + channels * count, size);
    return {sound.begin() + begin, sound.begin() + end};
}

double tone_peak(const Sound& sound, std::ptrdiff_t first, int channel, int step)
{
    constexpr int window = 1152;
    std::complex<double> sum = 0;
    for (int number = 0; number < window; ++number) {
        const auto place = static_cast<std::size_t>(channels * (first + number) + channel);
        sum += static_cast<double>(sound.at(place)) * std::polar(1.0, 2 * std::numbers::pi * step * number / window);
    }
    return 2 * std::abs(sum) / window;
}

int open_descriptors(const QByteArray& native)
{
    int count = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const std::string target = std::filesystem::read_symlink(entry.path(), error).string();
        if (target == native.toStdString() || target == native.toStdString() + " (deleted)")
            ++count;
    }
    return count;
}

int thread_count()
{
    const auto tasks = std::filesystem::directory_iterator("/proc/self/task");
    return static_cast<int>(std::distance(begin(tasks), end(tasks)));
}
