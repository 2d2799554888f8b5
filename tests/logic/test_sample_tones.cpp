#include "sample_melody.h"
#include "sample_tones.h"
#include "test_main.h"

#include <QCoreApplication>
#include <QTest>

#include <mpg123.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <numeric>
#include <set>
#include <span>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// A file as the decoder gives it.
struct Sound
{
    int rate = 0;
    int channels = 0;
    bool is_variable = false;
    std::int64_t told = 0;      ///< samples as far as the first frame tells
    std::int64_t length = 0;    ///< samples as counted over all frames
    std::vector<float> samples; ///< of the channels in turn

    std::int64_t sample_count() const { return std::ssize(samples) / channels; }
    double sample(std::int64_t place, int channel) const
    {
        return samples.at(static_cast<std::size_t>(place * channels + channel));
    }
};

/// Decodes a file in which nothing but frames, tags and information about them may stand.
Sound decoded(const QByteArray& file, bool gapless = false)
{
    const TestDisk disk;
    disk.write(u"C:\\a.mp3"_s, file);
    const std::unique_ptr<mpg123_handle, decltype(&mpg123_delete)> decoder(mpg123_new(nullptr, nullptr), mpg123_delete);
    mpg123_handle* const handle = decoder.get();
    mpg123_param(handle, MPG123_ADD_FLAGS, MPG123_FORCE_FLOAT | MPG123_QUIET, 0);
    if (!gapless)
        mpg123_param(handle, MPG123_REMOVE_FLAGS, MPG123_GAPLESS, 0);
    mpg123_param(handle, MPG123_RESYNC_LIMIT, 0, 0);
    Sound sound;
    long rate = 0;
    int encoding = 0;
    mpg123_frameinfo info = {};
    if (mpg123_open(handle, disk.native(u"C:\\a.mp3"_s).constData()) != MPG123_OK ||
        mpg123_getformat(handle, &rate, &sound.channels, &encoding) != MPG123_OK ||
        mpg123_info(handle, &info) != MPG123_OK)
        return {};
    sound.rate = static_cast<int>(rate);
    sound.is_variable = info.vbr == MPG123_VBR;
    sound.told = mpg123_length(handle);
    mpg123_scan(handle);
    sound.length = mpg123_length(handle);
    std::array<float, 4608> part{};
    std::size_t bytes = 0;
    while (mpg123_read(handle, part.data(), sizeof part, &bytes) == MPG123_OK || bytes > 0)
        sound.samples.insert(sound.samples.end(), part.begin(), part.begin() + bytes / sizeof(float));
    return sound;
}

/// A stretch of a channel: how loud it is in all, and how loud one step is in it.
struct Loudness
{
    double all;
    double step;
};

/// The stretch is a multiple of 1152 samples, so that the steps don't disturb each other.
Loudness loudness(const Sound& sound, int channel, int step, std::int64_t from, std::int64_t count)
{
    double cosine = 0;
    double sine = 0;
    double squares = 0;
    for (std::int64_t place = from; place < from + count; ++place) {
        const double turn = 2 * std::numbers::pi * static_cast<double>(place * step % 1152) / 1152;
        const double value = sound.sample(place, channel);
        cosine += value * std::cos(turn);
        sine += value * std::sin(turn);
        squares += value * value;
    }
    const auto samples = static_cast<double>(count);
    return {.all = std::sqrt(2 * squares / samples), .step = 2 * std::hypot(cosine, sine) / samples};
}

bool is_near(double value, double wanted, double tolerance)
{
    return std::abs(value - wanted) <= tolerance * wanted;
}

/// The same tone throughout.
std::function<Tone(int, int)> steady(Tone tone)
{
    return [tone](int, int) { return tone; };
}

constexpr std::array<int, 9> rates = {48000, 44100, 32000, 24000, 22050, 16000, 12000, 11025, 8000};

} // namespace

class TestSampleTones : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void channels_sound_as_asked_data();
    void channels_sound_as_asked();
    void every_step_sounds();
    void four_steps_of_gain_double_the_peak();
    void tone_may_change_with_each_frame();
    void melodies_differ_and_are_quiet();
    void bit_rates_are_exact_data();
    void bit_rates_are_exact();
    void variable_bit_rate_data();
    void variable_bit_rate();
    void information_tells_the_length_data();
    void information_tells_the_length();
    void encoders_part_cuts_both_ends();
    void free_format_data();
    void free_format();
    void header_says_mode_and_origin();
    void check_sum_is_right();
    void tag_in_front_is_passed_over_data();
    void tag_in_front_is_passed_over();
    void what_cannot_be_made_is_empty_data();
    void what_cannot_be_made_is_empty();
};

void TestSampleTones::channels_sound_as_asked_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<ToneMode>("mode");
    QTest::addColumn<bool>("has_crc");

    const std::vector<std::pair<const char*, ToneMode>> modes = {{"stereo", ToneMode::stereo},
                                                                 {"joint stereo", ToneMode::joint_stereo},
                                                                 {"dual channel", ToneMode::dual_channel},
                                                                 {"mono", ToneMode::mono}};
    for (const int rate : rates)
        for (const auto& [name, mode] : modes)
            for (const bool has_crc : {false, true})
                QTest::addRow("%d Hz, %s%s", rate, name, has_crc ? ", with a check sum" : "")
                    << rate << mode << has_crc;
}

void TestSampleTones::channels_sound_as_asked()
{
    QFETCH(int, rate);
    QFETCH(ToneMode, mode);
    QFETCH(bool, has_crc);
    constexpr int frames = 16;
    constexpr std::array<Tone, 2> tones = {{{.step = 26, .gain = 196}, {.step = 45, .gain = 190}}};
    const Sound sound = decoded(tone_audio({.frames = frames,
                                            .rate = rate,
                                            .kilobits = {64},
                                            .mode = mode,
                                            .has_crc = has_crc,
                                            .tone = [&](int, int channel) { return tones.at(channel); }}));

    QCOMPARE(sound.rate, rate);
    QCOMPARE(sound.channels, mode == ToneMode::mono ? 1 : 2);
    QCOMPARE(sound.length, frames * samples_per_frame(rate));
    QCOMPARE(sound.sample_count(), sound.length);
    for (int channel = 0; channel < sound.channels; ++channel) {
        const Tone tone = tones.at(channel);
        const Loudness loud = loudness(sound, channel, tone.step, 2304, 4608);
        QVERIFY(is_near(loud.step, tone_amplitude(tone.gain), 0.001));
        QVERIFY(is_near(loud.all, loud.step, 0.001));
    }
}

void TestSampleTones::every_step_sounds()
{
    constexpr int frames_each = 4;
    const Sound sound =
        decoded(tone_audio({.frames = 576 * frames_each, .mode = ToneMode::mono, .tone = [](int frame, int) {
                                return Tone{.step = frame / frames_each, .gain = 190};
                            }}));
    for (int step = 1; step < 576; ++step) {
        const Loudness loud = loudness(sound, 0, step, std::int64_t{1152} * (step * frames_each + 2), 1152);
        QVERIFY2(is_near(loud.step, tone_amplitude(190), 0.01), qPrintable(QString::number(step)));
        QVERIFY2(is_near(loud.all, loud.step, 0.02), qPrintable(QString::number(step)));
    }
}

void TestSampleTones::four_steps_of_gain_double_the_peak()
{
    constexpr int frames_each = 4;
    const Sound sound =
        decoded(tone_audio({.frames = 21 * frames_each, .mode = ToneMode::mono, .tone = [](int frame, int) {
                                return Tone{.step = 26, .gain = 110 + frame / frames_each * 5};
                            }}));
    QCOMPARE(tone_amplitude(210), 1.0);
    QCOMPARE(tone_amplitude(206), 0.5);
    for (int gain = 110; gain <= 210; gain += 5) {
        const int place = (gain - 110) / 5 * frames_each + 2;
        QVERIFY(is_near(loudness(sound, 0, 26, std::int64_t{1152} * place, 1152).step, tone_amplitude(gain), 0.001));
    }
}

void TestSampleTones::tone_may_change_with_each_frame()
{
    // Half of the power is 1 / sqrt(2) of the amplitude.
    constexpr int step = 135;
    constexpr std::int64_t frame_length = 1152;
    const Sound sound = decoded(tone_audio({.frames = 12, .mode = ToneMode::mono, .tone = [](int frame, int) {
                                                return Tone{.step = frame == 6 ? step : 0, .gain = 190};
                                            }}));
    const double half = tone_amplitude(190) * std::numbers::sqrt2 / 2;
    const auto loud_at = [&sound](std::int64_t place) { return loudness(sound, 0, step, place - 32, 64).step; };
    for (const std::int64_t border : {6 * frame_length + 528, 7 * frame_length + 528})
        QVERIFY2(is_near(loud_at(border), half, 0.02), qPrintable(QString::number(loud_at(border) / half)));
    QVERIFY(is_near(loud_at(6 * frame_length + 528 + 576), tone_amplitude(190), 0.01));
    QVERIFY(loud_at(6 * frame_length) < 0.02 * half);
    QVERIFY(loud_at(8 * frame_length) < 0.02 * half);
}

void TestSampleTones::melodies_differ_and_are_quiet()
{
    constexpr int songs = 60;
    constexpr int frames = 400;
    std::set<QByteArray> melodies;
    for (int number = 0; number < songs; ++number)
        melodies.insert(tone_audio({.frames = frames, .kilobits = {32}, .tone = sample_melody(number)}));
    QCOMPARE(melodies.size(), std::size_t(songs));
    QVERIFY(!melodies.contains(QByteArray()));

    const Sound sound = decoded(tone_audio({.frames = frames, .mode = ToneMode::mono, .tone = sample_melody(0)}));
    const auto [lowest, highest] = std::ranges::minmax_element(sound.samples);
    QVERIFY(*lowest > -0.1 && *highest < 0.1);
    for (int frame = 1; frame < frames; ++frame)
        QVERIFY(loudness(sound, 0, 0, std::int64_t{1152} * frame, 1152).all > 0.01);
}

void TestSampleTones::bit_rates_are_exact_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("kilobits");

    for (const int rate : rates) {
        const std::vector<int> all = rate >= 32000
                                         ? std::vector{32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}
                                         : std::vector{8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
        for (const int kilobits : all)
            QTest::addRow("%d kbit/s at %d Hz", kilobits, rate) << rate << kilobits;
    }
}

void TestSampleTones::bit_rates_are_exact()
{
    QFETCH(int, rate);
    QFETCH(int, kilobits);
    constexpr int frames = 147;
    const QByteArray file = tone_audio({.frames = frames,
                                        .rate = rate,
                                        .kilobits = {kilobits},
                                        .mode = ToneMode::mono,
                                        .tone = steady({.step = 10, .gain = 190})});

    QCOMPARE(file.size(), qsizetype(samples_per_frame(rate)) * 125 * kilobits * frames / rate);
    QCOMPARE(decoded(file).sample_count(), frames * samples_per_frame(rate));
}

void TestSampleTones::variable_bit_rate_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<std::vector<int>>("kilobits");

    QTest::newRow("MPEG 1") << 44100 << std::vector{32, 320, 128, 64};
    QTest::newRow("MPEG 2") << 22050 << std::vector{160, 24, 64};
    QTest::newRow("MPEG 2.5") << 11025 << std::vector{24, 160};
}

void TestSampleTones::variable_bit_rate()
{
    QFETCH(int, rate);
    QFETCH(std::vector<int>, kilobits);
    ToneAudio audio{.frames = 60, .rate = rate, .kilobits = kilobits, .tone = steady({.step = 26, .gain = 190})};
    const QByteArray frames = tone_audio(audio);
    const std::int64_t length = std::int64_t{60} * samples_per_frame(rate);
    const int sum = std::accumulate(kilobits.begin(), kilobits.end(), 0);
    QCOMPARE(frames.size(), length / 8 * 1000 * sum / std::ssize(kilobits) / rate);

    for (const QByteArray& front : {QByteArray(), tone_info_frame(audio, {.frames = 60})}) {
        const Sound sound = decoded(front + frames);
        QCOMPARE(sound.length, length);
        QCOMPARE(sound.sample_count(), length);
        QCOMPARE(sound.is_variable, !front.isEmpty());
        QVERIFY(is_near(loudness(sound, 0, 26, 2304, length / 1152 * 1152 - 4608).all, tone_amplitude(190), 0.001));
    }
}

void TestSampleTones::information_tells_the_length_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<ToneMode>("mode");
    QTest::addColumn<bool>("has_crc");
    QTest::addColumn<bool>("is_variable");
    QTest::addColumn<int>("free_bytes");

    for (const int rate : rates)
        for (const ToneMode mode : {ToneMode::stereo, ToneMode::mono})
            for (const bool has_crc : {false, true})
                for (const bool is_variable : {false, true})
                    QTest::addRow("%s, %d Hz, %s%s", is_variable ? "Xing" : "Info", rate,
                                  mode == ToneMode::mono ? "mono" : "stereo", has_crc ? ", with a check sum" : "")
                        << rate << mode << has_crc << is_variable << 0;
    QTest::newRow("Info, free format") << 44100 << ToneMode::stereo << false << false << 500;
}

void TestSampleTones::information_tells_the_length()
{
    QFETCH(int, rate);
    QFETCH(ToneMode, mode);
    QFETCH(bool, has_crc);
    QFETCH(bool, is_variable);
    QFETCH(int, free_bytes);
    const ToneAudio audio{.frames = 20, .rate = rate, .free_bytes = free_bytes, .mode = mode, .has_crc = has_crc};
    const QByteArray frames = tone_audio(audio);
    // The number of frames told is not the true one, to see which of them is believed.
    const QByteArray front =
        tone_info_frame(audio, {.is_variable = is_variable, .frames = 30, .bytes = static_cast<int>(frames.size())});

    QVERIFY(front.contains(is_variable ? "Xing" : "Info"));
    const Sound sound = decoded(front + frames);
    QCOMPARE(sound.told, 30 * samples_per_frame(rate));
    QCOMPARE(sound.length, 20 * samples_per_frame(rate));
    QCOMPARE(sound.is_variable, is_variable);

    const Sound untold = decoded(tone_info_frame(audio, {.is_variable = is_variable}) + frames);
    QCOMPARE(untold.length, 20 * samples_per_frame(rate));
}

void TestSampleTones::encoders_part_cuts_both_ends()
{
    const ToneAudio audio{.frames = 20, .tone = steady({.step = 26, .gain = 190})};
    const ToneInfo info{.is_variable = false, .frames = 20, .delay = 576, .padding = 1000};
    const QByteArray file = tone_info_frame(audio, info) + tone_audio(audio);

    QCOMPARE(decoded(file).length, 20 * 1152);
    const Sound sound = decoded(file, true);
    QCOMPARE(sound.length, 20 * 1152 - 576 - 1000);
    QCOMPARE(sound.sample_count(), sound.length);
}

void TestSampleTones::free_format_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<ToneMode>("mode");
    QTest::addColumn<int>("free_bytes");

    QTest::newRow("MPEG 1, stereo") << 44100 << ToneMode::stereo << 500;
    QTest::newRow("MPEG 1, mono, small frames") << 48000 << ToneMode::mono << 80;
    QTest::newRow("MPEG 2, stereo") << 22050 << ToneMode::stereo << 333;
    QTest::newRow("MPEG 2.5, mono") << 8000 << ToneMode::mono << 100;
}

void TestSampleTones::free_format()
{
    QFETCH(int, rate);
    QFETCH(ToneMode, mode);
    QFETCH(int, free_bytes);
    const QByteArray file = tone_audio({.frames = 30,
                                        .rate = rate,
                                        .kilobits = {},
                                        .free_bytes = free_bytes,
                                        .mode = mode,
                                        .tone = steady({.step = 26, .gain = 190})});
    QCOMPARE(file.size(), 30 * free_bytes);
    const Sound sound = decoded(file);

    QCOMPARE(sound.rate, rate);
    QCOMPARE(sound.length, 30 * samples_per_frame(rate));
    QCOMPARE(sound.sample_count(), sound.length);
    QVERIFY(is_near(loudness(sound, 0, 26, 2304, 6912).all, tone_amplitude(190), 0.001));
}

void TestSampleTones::header_says_mode_and_origin()
{
    QCOMPARE(tone_audio({.frames = 1}).first(4).toHex(), QByteArray("fffb9000"));
    QCOMPARE(tone_audio({.frames = 1, .kilobits = {64}, .mode = ToneMode::joint_stereo, .is_original = true})
                 .first(4)
                 .toHex(),
             QByteArray("fffb5044"));
    QCOMPARE(tone_audio({.frames = 1, .rate = 48000, .mode = ToneMode::dual_channel, .has_crc = true}).first(4).toHex(),
             QByteArray("fffa9480"));
    QCOMPARE(tone_audio({.frames = 1, .rate = 16000, .mode = ToneMode::mono}).first(4).toHex(), QByteArray("fff3c8c0"));
    QCOMPARE(tone_audio({.frames = 1, .rate = 11025, .mode = ToneMode::mono}).first(4).toHex(), QByteArray("ffe3c0c0"));
}

void TestSampleTones::check_sum_is_right()
{
    // The check sum (0x8005, begun with 0xFFFF) of the last two bytes of the header and side information of zeros.
    QCOMPARE(tone_audio({.frames = 1, .mode = ToneMode::mono, .has_crc = true}).first(6).toHex(),
             QByteArray("fffa90c0d0bf"));
    QCOMPARE(tone_audio({.frames = 1, .rate = 22050, .kilobits = {64}, .has_crc = true}).first(6).toHex(),
             QByteArray("fff28000981b"));
    // The information begins where the last two bytes of the side information stand, with "Xi".
    QCOMPARE(tone_info_frame({.mode = ToneMode::mono, .has_crc = true}, {}).first(6).toHex(),
             QByteArray("fffa10c0bdf0"));
}

void TestSampleTones::tag_in_front_is_passed_over_data()
{
    QTest::addColumn<int>("bytes");

    QTest::newRow("a header alone") << 10;
    QTest::newRow("a size of one byte") << 137;
    QTest::newRow("a size of two bytes") << 5000;
    QTest::newRow("a size of three bytes") << 100000;
    QTest::newRow("a size of four bytes") << 3000000;
}

void TestSampleTones::tag_in_front_is_passed_over()
{
    QFETCH(int, bytes);
    const QByteArray tag = sample_id3v2(bytes);
    QCOMPARE(tag.size(), bytes);
    const Sound sound = decoded(tag + tone_audio({.frames = 10, .tone = steady({.step = 26, .gain = 190})}));
    QCOMPARE(sound.rate, 44100);
    QCOMPARE(sound.sample_count(), 10 * 1152);
}

void TestSampleTones::what_cannot_be_made_is_empty_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<std::vector<int>>("kilobits");
    QTest::addColumn<int>("step");

    QTest::newRow("no such sample rate") << 44000 << std::vector{128} << 0;
    QTest::newRow("a bit rate of MPEG 2 in MPEG 1") << 44100 << std::vector{128, 8} << 0;
    QTest::newRow("a bit rate of MPEG 1 in MPEG 2") << 22050 << std::vector{128, 192} << 0;
    QTest::newRow("a bit rate of 0") << 44100 << std::vector{0} << 0;
    QTest::newRow("no bit rate") << 44100 << std::vector<int>() << 0;
    QTest::newRow("a tone too long for its frame") << 24000 << std::vector{8} << 200;
}

void TestSampleTones::what_cannot_be_made_is_empty()
{
    QFETCH(int, rate);
    QFETCH(std::vector<int>, kilobits);
    QFETCH(int, step);
    QVERIFY(tone_audio({.rate = rate, .kilobits = kilobits, .tone = steady({.step = step, .gain = 190})}).isEmpty());
    QVERIFY(!tone_audio({.rate = 24000, .kilobits = {8}, .tone = steady({.step = 9, .gain = 190})}).isEmpty());
}

QUILMO_LOGIC_TEST(TestSampleTones)
#include "test_sample_tones.moc"
