#include "platform/media_player/gains.h"
#include "test_main.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int rate = 44100;
constexpr std::int64_t lot = 512;
constexpr Gains full = {1.0F, 1.0F};

/// A lot of pairs that all have the same value on both sides.
std::vector<float> steady(float value, std::int64_t samples = lot)
{
    std::vector<float> all(static_cast<std::size_t>(2 * samples), value);
    return all;
}

/// The largest step from one sample to the next on the left side, that from `before` to the first one included.
float largest_step(const std::vector<float>& samples, float before)
{
    float largest = 0;
    for (std::size_t place = 0; place < samples.size(); place += 2) {
        largest = std::max(largest, std::abs(samples[place] - before));
        before = samples[place];
    }
    return largest;
}

/// What goes out for a lot of steady sound.
std::vector<float> sound_of(Fader& fader, float value, Gains gains, bool continues = true)
{
    auto samples = steady(value);
    fader.apply(samples, lot, continues, gains);
    return samples;
}

std::vector<float> silence_of(Fader& fader)
{
    auto samples = steady(0.5F); // what stands there before is no sound
    fader.apply(samples, 0, false, full);
    return samples;
}

/// A fader in the middle of steady sound.
Fader playing(float value, Gains gains)
{
    Fader fader(rate);
    sound_of(fader, value, gains, false);
    return fader;
}

} // namespace

class TestMediaPlayerGains : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void the_two_levels_multiply_data()
    {
        QTest::addColumn<quint32>("wave_level");
        QTest::addColumn<int>("volume");
        QTest::addColumn<double>("left");
        QTest::addColumn<double>("right");
        QTest::newRow("full") << 0xFFFFFFFFU << 0 << 1.0 << 1.0;
        QTest::newRow("the left channel is in the low word") << 0x0000FFFFU << 0 << 1.0 << 0.0;
        QTest::newRow("the right channel is in the high word") << 0xFFFF0000U << 0 << 0.0 << 1.0;
        QTest::newRow("0 percent") << 0x00000000U << 0 << 0.0 << 0.0;
        QTest::newRow("1 percent") << 0x028E028EU << 0 << 654 / 65535.0 << 654 / 65535.0;
        QTest::newRow("35 percent") << 0x596A596AU << 0 << 22890 / 65535.0 << 22890 / 65535.0;
        QTest::newRow("50 percent") << 0x7FBC7FBCU << 0 << 32700 / 65535.0 << 32700 / 65535.0;
        QTest::newRow("51 percent") << 0x824A824CU << 0 << 33356 / 65535.0 << 33354 / 65535.0;
        QTest::newRow("100 percent") << 0xFF78FF7AU << 0 << 65402 / 65535.0 << 65400 / 65535.0;
        QTest::newRow("20 decibels down") << 0xFFFFFFFFU << -2000 << 0.1 << 0.1;
        QTest::newRow("the level of 35 percent") << 0xFFFFFFFFU << -845 << 0.378007 << 0.378007;
        QTest::newRow("the level of 4 percent") << 0xFFFFFFFFU << -1920 << 0.109648 << 0.109648;
        QTest::newRow("the level of 3 percent") << 0xFFFFFFFFU << -9700 << 1.41254e-5 << 1.41254e-5;
        QTest::newRow("just above silence") << 0xFFFFFFFFU << -9999 << 1.00115e-5 << 1.00115e-5;
        QTest::newRow("silence") << 0xFFFFFFFFU << -10000 << 0.0 << 0.0;
        QTest::newRow("below silence") << 0xFFFFFFFFU << -2000000000 << 0.0 << 0.0;
        QTest::newRow("above full") << 0xFFFFFFFFU << 500 << 1.0 << 1.0;
        QTest::newRow("both") << 0x80008000U << -2000 << 0.1 * 32768 / 65535 << 0.1 * 32768 / 65535;
    }

    void the_two_levels_multiply()
    {
        QFETCH(const quint32, wave_level);
        QFETCH(const int, volume);
        QFETCH(const double, left);
        QFETCH(const double, right);
        const Gains gains = gains_of(wave_level, volume);
        const auto is_near = [](double gain, double wanted) { return std::abs(gain - wanted) <= 1e-5 * wanted; };
        QVERIFY2(is_near(gains[0], left), qPrintable(QString::number(gains[0])));
        QVERIFY2(is_near(gains[1], right), qPrintable(QString::number(gains[1])));
    }

    void at_full_level_steady_sound_stays_as_it_is()
    {
        Fader fader = playing(0.3F, full);
        QCOMPARE(sound_of(fader, 0.3F, full), steady(0.3F));
    }

    void each_side_has_its_own_level()
    {
        Fader fader = playing(0.5F, {0.5F, 0.25F});
        const auto samples = sound_of(fader, 0.5F, {0.5F, 0.25F});
        QCOMPARE(samples[100], 0.25F);
        QCOMPARE(samples[101], 0.125F);
    }

    void a_change_of_level_is_a_ramp_of_some_milliseconds()
    {
        Fader fader = playing(1.0F, full);
        const auto samples = sound_of(fader, 1.0F, {0.0F, 0.0F});
        QVERIFY(largest_step(samples, 1.0F) < 0.003F);
        const auto end = std::ranges::find(samples, 0.0F) - samples.begin();
        QVERIFY2(end / 2 >= rate * 5 / 1000 && end / 2 <= rate * 10 / 1000, qPrintable(QString::number(end)));
        QVERIFY(std::ranges::is_sorted(samples, std::ranges::greater()));
        QCOMPARE(sound_of(fader, 1.0F, {0.0F, 0.0F}), steady(0.0F));
    }

    void a_ramp_reaches_the_new_level_exactly()
    {
        Fader fader = playing(1.0F, {0.25F, 0.25F});
        QCOMPARE(sound_of(fader, 1.0F, {0.7F, 0.1F})[1022], 0.7F);
        QCOMPARE(sound_of(fader, 1.0F, full)[1023], 1.0F);
    }

    void a_jump_to_other_sound_is_smoothed()
    {
        Fader fader = playing(-0.8F, full);
        const auto samples = sound_of(fader, 0.8F, full, false);
        QVERIFY(largest_step(samples, -0.8F) < 0.01F);
        QCOMPARE(samples.back(), 0.8F);
    }

    void sound_that_goes_on_is_not_smoothed()
    {
        Fader fader = playing(-0.8F, full);
        QCOMPARE(sound_of(fader, 0.8F, full, true), steady(0.8F));
    }

    void the_start_and_the_end_of_sound_are_smoothed()
    {
        Fader fader(rate);
        QVERIFY(largest_step(sound_of(fader, 0.9F, full, false), 0.0F) < 0.01F);
        const auto end = silence_of(fader);
        QVERIFY(largest_step(end, 0.9F) < 0.01F);
        QCOMPARE(end.back(), 0.0F);
    }

    void an_end_in_the_middle_of_a_lot_is_smoothed()
    {
        Fader fader = playing(0.9F, full);
        auto samples = steady(0.9F);
        fader.apply(samples, 100, true, full);
        QCOMPARE(samples[198], 0.9F);
        QVERIFY(largest_step(samples, 0.9F) < 0.01F);
        QCOMPARE(samples.back(), 0.0F);
        QVERIFY(!fader.is_quiet()); // the device plays this lot before it may rest
        silence_of(fader);
        QVERIFY(fader.is_quiet());
    }

    void a_seek_during_smoothing_stays_smooth()
    {
        Fader fader = playing(0.9F, full);
        auto part = steady(-0.9F, 50);
        fader.apply(part, 50, false, full);
        const float before = part[98];
        QVERIFY(largest_step(sound_of(fader, 0.9F, full, false), before) < 0.01F);
    }

    void the_first_sound_after_silence_has_its_own_level_at_once()
    {
        Fader fader = playing(1.0F, full);
        silence_of(fader);
        silence_of(fader);
        QVERIFY(fader.is_quiet());
        QCOMPARE(sound_of(fader, 1.0F, {0.0F, 0.0F}, false), steady(0.0F)); // muted meanwhile: not a breath of sound
    }

    void a_short_lot_goes_on_in_the_next_one()
    {
        Fader whole = playing(1.0F, full);
        const auto expected = sound_of(whole, 1.0F, {0.2F, 0.2F});
        Fader fader = playing(1.0F, full);
        std::vector<float> samples;
        for (int part = 0; part < 8; ++part) {
            auto piece = steady(1.0F, lot / 8);
            fader.apply(piece, lot / 8, true, {0.2F, 0.2F});
            samples.insert(samples.end(), piece.begin(), piece.end());
        }
        QCOMPARE(samples, expected);
    }
};

QUILMO_LOGIC_TEST(TestMediaPlayerGains)

#include "test_media_player_gains.moc"
