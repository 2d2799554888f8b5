#include "heard_sound.h"
#include "platform/media_player/MediaPlayer.h"
#include "platform/wave_volume.h"
#include "sample_tones.h"
#include "test_main.h"

#include <QTest>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString path = u"C:\\Music\\a.mp3"_s;
constexpr int rate = 44100;
constexpr int gain = 206;
constexpr std::uint32_t full = 0xFFFFFFFF;
/// Samples at the beginning and behind the end of sound that are smoothed, and those of a ramp; ten milliseconds.
constexpr std::ptrdiff_t smoothed = 441;
/// Frames that are decoded whole before the first sample is heard, so that nothing can tear them apart.
constexpr int few_frames = 18;

/// A tone of its own for every frame and side.
Tone clock_tone(int frame, int channel)
{
    return {.step = 20 + frame + 200 * channel, .gain = gain};
}

/// The same all the time, another on each side.
Tone steady_tone(int, int channel)
{
    return {.step = channel == 0 ? 40 : 60, .gain = gain};
}

/// So low that its own steps are small beside those of a click.
Tone low_tone(int, int)
{
    return {.step = 2, .gain = gain};
}

/// A player with a disk and a device that keeps what is heard.
class Listener
{
public:
    explicit Listener(const QByteArray& content, int milliseconds_a_lot = 1) : sound_(milliseconds_a_lot)
    {
        disk_.write(path, content);
        player.emplace();
    }
    ~Listener() { waveOutSetVolume(0, std::bit_cast<i32>(full)); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    bool open()
    {
        player->Open(path);
        return QTest::qWaitFor([this] { return player->SelectionEnd() > 0; });
    }
    bool plays_to(double seconds)
    {
        return QTest::qWaitFor([&] { return player->CurrentPosition() >= seconds; });
    }
    bool plays_to_the_end() { return plays_to(player->SelectionEnd()) && listen(); }
    /// Waits until the device has got as much as the end of a sound takes, and more.
    bool listen() const
    {
        const qint64 size = sound_.size() + qint64{8} * rate / 4;
        return QTest::qWaitFor([&] { return sound_.size() >= size; });
    }
    /// All that was heard; the player goes.
    Sound heard()
    {
        player.reset();
        return sound_.heard();
    }
    /// What the file holds.
    Sound content() const { return sound_of(path); }
    std::ptrdiff_t sample_now() const { return std::lround(player->CurrentPosition() * rate); }

private:
    TestDisk disk_;
    SoundFile sound_;

public:
    std::optional<MediaPlayer> player;
};

float largest_step(const Sound& sound)
{
    float largest = 0;
    for (std::size_t place = 2; place < sound.size(); ++place)
        largest = std::max(largest, std::abs(sound[place] - sound[place - 2]));
    return largest;
}

/// Whether the last samples are the end of a fade: without one they hold a whole period of the steady tone.
bool fades_out(const Sound& sound)
{
    constexpr std::ptrdiff_t period = 29;
    const float limit = static_cast<float>(tone_amplitude(gain)) / 5;
    const auto is_low = [limit](float value) { return std::abs(value) < limit; };
    return std::ssize(sound) > 4 * smoothed && std::all_of(sound.end() - 2 * period, sound.end(), is_low);
}

/// The steps that the low tone makes by itself, doubled: clicks of half its height are ten times as large.
float allowed_step()
{
    return static_cast<float>(2 * tone_amplitude(gain) * 2 * std::numbers::pi * 2 / 1152) + 0.003F;
}

} // namespace

class TestMediaPlayerSound : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void a_file_is_heard_whole_and_without_gap()
    {
        Listener listener(tone_audio({.frames = few_frames, .kilobits = {192}, .tone = clock_tone}));
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to_the_end());
        const Sound expected = cut(listener.content(), smoothed);
        QVERIFY(place_of(expected, listener.heard()) >= 0);
    }

    void a_long_file_is_decoded_in_time()
    {
        Listener listener(tone_audio({.frames = 3 * few_frames, .kilobits = {192}, .tone = clock_tone}), 12);
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to_the_end());
        const Sound expected = cut(listener.content(), smoothed);
        QVERIFY(place_of(expected, listener.heard()) >= 0);
    }

    void the_levels_are_heard_data()
    {
        QTest::addColumn<quint32>("wave_level");
        QTest::addColumn<int>("volume");
        QTest::addColumn<double>("left");
        QTest::addColumn<double>("right");
        QTest::newRow("full") << full << 0 << 1.0 << 1.0;
        QTest::newRow("wave level of 1 percent") << 0x028E028EU << 0 << 0.00997940 << 0.00997940;
        QTest::newRow("wave level of 35 percent") << 0x596A596AU << 0 << 0.349279 << 0.349279;
        QTest::newRow("wave level of 50 percent") << 0x7FBC7FBCU << 0 << 0.498970 << 0.498970;
        QTest::newRow("wave level of 51 percent") << 0x824A824CU << 0 << 0.508980 << 0.508949;
        QTest::newRow("wave level of 100 percent") << 0xFF78FF7AU << 0 << 0.997971 << 0.997940;
        QTest::newRow("left only") << 0x0000FFFFU << 0 << 1.0 << 0.0;
        QTest::newRow("right only") << 0xFFFF0000U << 0 << 0.0 << 1.0;
        QTest::newRow("level of 3 percent") << full << -9700 << 1.41254e-5 << 1.41254e-5;
        QTest::newRow("level of 4 percent") << full << -1920 << 0.109648 << 0.109648;
        QTest::newRow("level of 35 percent") << full << -845 << 0.378007 << 0.378007;
        QTest::newRow("both of 35 percent") << 0x596A596AU << -845 << 0.132030 << 0.132030;
        QTest::newRow("both of 51 percent") << 0x824A824CU << -637 << 0.244442 << 0.244427;
    }

    void the_levels_are_heard()
    {
        QFETCH(const quint32, wave_level);
        QFETCH(const int, volume);
        QFETCH(const double, left);
        QFETCH(const double, right);
        Listener listener(tone_audio({.frames = few_frames, .kilobits = {192}, .tone = steady_tone}));
        waveOutSetVolume(0, std::bit_cast<i32>(wave_level));
        listener.player->set_Volume(volume);
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to_the_end());
        const Sound heard = listener.heard();
        const double peak = tone_amplitude(gain);
        const auto is_near = [peak](double heard_peak, double wanted) {
            return std::abs(heard_peak - peak * wanted) <= 1e-3 * peak * wanted;
        };
        for (const std::ptrdiff_t place : {3000, 15000}) {
            const double heard_left = tone_peak(heard, place, 0, steady_tone(0, 0).step);
            const double heard_right = tone_peak(heard, place, 1, steady_tone(0, 1).step);
            QVERIFY2(is_near(heard_left, left), qPrintable(QString::number(heard_left / peak)));
            QVERIFY2(is_near(heard_right, right), qPrintable(QString::number(heard_right / peak)));
        }
    }

    void silence_is_exact_data()
    {
        QTest::addColumn<quint32>("wave_level");
        QTest::addColumn<int>("volume");
        QTest::newRow("no wave level") << 0U << 0;
        QTest::newRow("lowest level") << full << -10000;
        QTest::newRow("below the lowest level") << full << -20000;
    }

    void silence_is_exact()
    {
        QFETCH(const quint32, wave_level);
        QFETCH(const int, volume);
        Listener listener(tone_audio({.frames = few_frames, .tone = low_tone}));
        waveOutSetVolume(0, std::bit_cast<i32>(wave_level));
        listener.player->set_Volume(volume);
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to_the_end());
        QVERIFY(listener.heard().empty());
    }

    void a_mono_file_is_heard_on_both_sides()
    {
        Listener listener(tone_audio({.frames = few_frames, .mode = ToneMode::mono, .tone = clock_tone}));
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to_the_end());
        const Sound heard = listener.heard();
        QVERIFY(heard.size() > std::size_t{2} * 1152);
        for (std::size_t place = 0; place < heard.size(); place += 2)
            QCOMPARE(heard[place], heard[place + 1]);
    }

    void a_seek_is_heard_at_its_sample_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::newRow("forward") << 3.0;
        QTest::newRow("between samples") << 3.14159;
        QTest::newRow("back") << 0.05;
        QTest::newRow("to the beginning") << 0.0;
    }

    void a_seek_is_heard_at_its_sample()
    {
        QFETCH(const double, seconds);
        Listener listener(tone_audio({.frames = 150, .kilobits = {192, 320}, .tone = clock_tone}));
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to(0.2));
        listener.player->set_CurrentPosition(seconds);
        QVERIFY(listener.plays_to(seconds + 0.3));
        listener.player->Stop();
        QVERIFY(listener.listen());
        const Sound content = listener.content();
        const Sound heard = listener.heard();
        const std::ptrdiff_t sample = std::lround(seconds * rate);
        const std::ptrdiff_t place = place_of(cut(content, sample + smoothed, rate / 5), heard);
        QVERIFY(place >= smoothed);
        const std::ptrdiff_t begin = place - smoothed; // nothing from before the sample was played on the way
        QVERIFY(sample < 100 || !same_sound(cut(heard, begin - 100, 100), cut(content, sample - 100, 100)));
    }

    void a_change_of_level_comes_with_the_next_lot_and_without_click()
    {
        Listener listener(tone_audio({.frames = 200, .tone = low_tone}), 4);
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to(0.1));
        for (int change = 0; change < 10; ++change) {
            const bool loud = change % 2 == 1;
            if (change % 3 == 0)
                listener.player->set_Volume(loud ? 0 : -10000);
            else
                waveOutSetVolume(0, loud ? std::bit_cast<i32>(full) : 0);
            const double now = listener.player->CurrentPosition();
            QVERIFY(listener.plays_to(now + 0.05));
            listener.player->set_Volume(0);
            waveOutSetVolume(0, std::bit_cast<i32>(full));
            QVERIFY(listener.plays_to(listener.player->CurrentPosition() + 0.05));
        }
        QVERIFY(largest_step(listener.heard()) < allowed_step());
    }

    void a_change_of_level_is_heard_within_50_milliseconds()
    {
        constexpr std::ptrdiff_t bound = rate / 20;
        Listener listener(tone_audio({.frames = few_frames, .tone = low_tone}), 10);
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to(0.1));
        listener.player->set_Volume(-10000);
        const std::ptrdiff_t changed = listener.sample_now();
        QVERIFY(listener.plays_to(listener.player->SelectionEnd()));
        const Sound heard = listener.heard();
        QVERIFY2(std::ssize(heard) / 2 < changed + bound, qPrintable(QString::number(std::ssize(heard) / 2 - changed)));
    }

    void stops_seeks_and_starts_do_not_click()
    {
        Listener listener(tone_audio({.frames = 200, .tone = low_tone}), 4);
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to(0.1));
        for (const double seconds : {1.0, 0.503, 2.1111, 0.2, 3.3, 1.7777}) {
            listener.player->set_CurrentPosition(seconds);
            QVERIFY(listener.plays_to(seconds + 0.03));
        }
        for (int step = 0; step < 5; ++step) {
            listener.player->Open(path); // in the middle of the sound
            QTRY_VERIFY(listener.player->CurrentPosition() > 0.02 * step);
        }
        listener.player->Stop();
        QVERIFY(listener.listen());
        QVERIFY(largest_step(listener.heard()) < allowed_step());
    }

    void a_player_that_goes_does_not_click()
    {
        Listener listener(tone_audio({.frames = 200, .tone = steady_tone}), 20);
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to(0.1));
        QVERIFY(fades_out(listener.heard()));
    }

    void a_device_that_makes_way_for_another_rate_does_not_click()
    {
        const QString other = u"C:\\Music\\b.mp3"_s;
        const TestDisk disk;
        disk.write(path, tone_audio({.frames = 200, .tone = steady_tone}));
        disk.write(other, tone_audio({.frames = 20, .rate = 22050, .kilobits = {64}}));
        const SoundFile first(20);
        MediaPlayer player;
        player.Open(path);
        QTRY_VERIFY(player.CurrentPosition() > 0.1);
        const SoundFile second;
        player.Open(other);
        QTRY_VERIFY(player.SelectionEnd() > 0);
        QVERIFY(fades_out(first.heard()));
    }

    void a_stopped_file_is_silent_at_once()
    {
        Listener listener(tone_audio({.frames = 200, .tone = low_tone}), 4);
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to(0.1));
        listener.player->Stop();
        QVERIFY(listener.listen());
        listener.player->set_CurrentPosition(1);
        QVERIFY(listener.listen());
        QVERIFY(std::ssize(listener.heard()) / 2 < rate); // of more than five seconds
    }

    void what_lies_behind_the_told_length_is_not_heard()
    {
        const ToneAudio audio{.frames = 40, .kilobits = {192}, .tone = clock_tone};
        Listener listener(tone_info_frame(audio, {.frames = 10}) + tone_audio(audio));
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to_the_end());
        const Sound heard = listener.heard();
        constexpr std::ptrdiff_t told = 11520;
        QVERIFY(std::ssize(heard) / 2 <= told + smoothed);
    }

    void the_next_file_has_the_level_of_the_moment()
    {
        Listener listener(tone_audio({.frames = few_frames, .tone = low_tone}));
        QVERIFY(listener.open());
        listener.player->Stop();
        QVERIFY(listener.listen());
        listener.player->set_Volume(-10000);
        QVERIFY(listener.open());
        QVERIFY(listener.plays_to_the_end());
        QVERIFY(std::ssize(listener.heard()) / 2 < 10000); // the first one, until it was stopped
    }
};

QUILMO_LOGIC_TEST(TestMediaPlayerSound)

#include "test_media_player_sound.moc"
