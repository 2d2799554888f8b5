#include "platform/media_player/DecodedTrack.h"
#include "test_main.h"

#include <QTest>

#include <limits>
#include <numeric>
#include <vector>

namespace {

constexpr int rate = 8000;
constexpr std::int64_t length = std::int64_t{3} * rate;

/// Pairs that bear their own number: sample n is n on the left and -n on the right.
std::vector<float> numbered(std::int64_t first, std::int64_t count)
{
    std::vector<float> samples;
    for (std::int64_t number = first; number < first + count; ++number) {
        samples.push_back(static_cast<float>(number));
        samples.push_back(static_cast<float>(-number));
    }
    return samples;
}

/// Adds numbered samples from `first` on until no more are wanted; gives how many.
std::int64_t fill(DecodedTrack& track, std::int64_t first)
{
    std::int64_t added = 0;
    while (track.wanted_samples() > 0) {
        const std::int64_t count = std::min<std::int64_t>(track.wanted_samples(), 1152);
        track.add(numbered(first + added, count));
        added += count;
    }
    return added;
}

DecodedTrack ready(std::int64_t samples = length)
{
    DecodedTrack track;
    track.begin(rate, samples);
    fill(track, 0);
    return track;
}

/// Takes as many samples; gives those that came.
std::vector<float> taken(DecodedTrack& track, std::int64_t count)
{
    std::vector<float> samples(static_cast<std::size_t>(2 * count));
    samples.resize(static_cast<std::size_t>(2 * track.take(samples).count));
    return samples;
}

} // namespace

class TestMediaPlayerTrack : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void without_a_file_there_is_nothing()
    {
        DecodedTrack track;
        track.seek(1);
        QCOMPARE(track.position(), 0.0);
        QCOMPARE(track.length(), 0.0);
        QVERIFY(!track.is_sounding() && !track.wants_seek());
        QCOMPARE(track.wanted_samples(), std::int64_t{0});
        QVERIFY(taken(track, 10).empty());
    }

    void samples_come_out_in_order_however_they_are_taken()
    {
        DecodedTrack track = ready();
        std::int64_t added = rate / 2;
        std::int64_t expected = 0;
        for (std::int64_t count = 1; expected < length; count = (count * 7 + 3) % 1000) {
            const auto samples = taken(track, count);
            QCOMPARE(samples, numbered(expected, std::ssize(samples) / 2));
            expected += std::ssize(samples) / 2;
            QCOMPARE(track.position(), static_cast<double>(expected) / rate);
            added += fill(track, added);
        }
        QCOMPARE(track.position(), track.length());
    }

    void nothing_is_taken_until_the_store_is_full()
    {
        DecodedTrack track;
        track.begin(rate, length);
        track.add(numbered(0, 1000));
        QVERIFY(taken(track, 10).empty());
        QVERIFY(track.is_sounding());
        fill(track, 1000);
        QCOMPARE(taken(track, 10), numbered(0, 10));
    }

    void a_file_shorter_than_the_store_is_taken_when_whole()
    {
        DecodedTrack track;
        track.begin(rate, 100);
        track.add(numbered(0, 99));
        QVERIFY(taken(track, 10).empty());
        track.add(numbered(99, 1));
        QCOMPARE(taken(track, 200), numbered(0, 100));
        QVERIFY(!track.is_sounding());
    }

    void the_store_is_filled_again_from_half_empty_on()
    {
        DecodedTrack track = ready();
        taken(track, rate / 4);
        QCOMPARE(track.wanted_samples(), std::int64_t{0});
        taken(track, 1);
        QCOMPARE(track.wanted_samples(), std::int64_t{rate / 4 + 1});
        track.add(numbered(rate / 2, 10));
        QCOMPARE(track.wanted_samples(), std::int64_t{rate / 4 - 9});
    }

    void a_store_run_dry_is_filled_before_sound_goes_on()
    {
        DecodedTrack track = ready();
        QCOMPARE(std::ssize(taken(track, length)), std::ssize(numbered(0, rate / 2)));
        track.add(numbered(rate / 2, 10));
        QVERIFY(taken(track, 10).empty());
        fill(track, rate / 2 + 10);
        QCOMPARE(taken(track, 10), numbered(rate / 2, 10));
    }

    void what_lies_behind_the_told_length_is_left_out()
    {
        DecodedTrack track;
        track.begin(rate, 100);
        track.add(numbered(0, 1152));
        QCOMPARE(taken(track, 1152), numbered(0, 100));
        QCOMPARE(track.position(), track.length());
        QCOMPARE(track.wanted_samples(), std::int64_t{0});
    }

    void a_file_that_ends_early_has_its_real_length()
    {
        DecodedTrack track;
        track.begin(rate, length);
        track.add(numbered(0, 700));
        track.end_at(700);
        QCOMPARE(track.length(), 700.0 / rate);
        QCOMPARE(taken(track, 1000), numbered(0, 700));
        QCOMPARE(track.position(), track.length());
        track.end_at(5000); // never longer than known
        QCOMPARE(track.length(), 700.0 / rate);
    }

    void a_seek_behind_the_real_end_comes_to_the_end()
    {
        DecodedTrack track = ready();
        track.seek(2.5);
        QVERIFY(track.wants_seek());
        QCOMPARE(track.take_seek(), std::int64_t{20000});
        track.end_at(700);
        QCOMPARE(track.length(), 700.0 / rate);
        QCOMPARE(track.position(), track.length());
        QVERIFY(!track.is_sounding());
    }

    void a_position_is_read_as_it_was_written_data()
    {
        QTest::addColumn<double>("written");
        QTest::addColumn<double>("read");
        QTest::addColumn<qint64>("sample");
        QTest::newRow("the beginning") << 0.0 << 0.0 << qint64{0};
        QTest::newRow("a number between samples") << 0.6000001 << 0.6000001 << qint64{4800};
        QTest::newRow("a number that binary can't hold") << 0.6 << 0.6 << qint64{4800};
        QTest::newRow("before the beginning") << -3.0 << 0.0 << qint64{0};
        QTest::newRow("just before the end") << 2.999999999 << 2.999999999 << qint64{length - 1};
        QTest::newRow("the end") << 3.0 << 3.0 << qint64{length};
        QTest::newRow("behind the end") << 1e300 << 3.0 << qint64{length};
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0.0 << qint64{0};
        QTest::newRow("without end") << std::numeric_limits<double>::infinity() << 3.0 << qint64{length};
    }

    void a_position_is_read_as_it_was_written()
    {
        QFETCH(const double, written);
        QFETCH(const double, read);
        QFETCH(const qint64, sample);
        DecodedTrack track = ready();
        taken(track, 100);
        track.seek(written);
        QCOMPARE(track.position(), read);
        QCOMPARE(track.wants_seek(), sample < length);
        if (sample == length)
            return;
        QVERIFY(taken(track, 10).empty());
        QCOMPARE(track.take_seek(), std::int64_t{sample});
        QVERIFY(!track.wants_seek());
        fill(track, sample);
        QCOMPARE(track.position(), read);
        QCOMPARE(taken(track, 1), numbered(sample, 1));
        QCOMPARE(track.position(), static_cast<double>(sample + 1) / rate);
    }

    void samples_decoded_before_a_seek_are_left_out()
    {
        DecodedTrack track;
        track.begin(rate, length);
        track.seek(1);
        track.add(numbered(0, 1152));
        track.take_seek();
        fill(track, rate);
        QCOMPARE(taken(track, 10), numbered(rate, 10));
    }

    void a_stop_goes_to_the_beginning_and_stays()
    {
        DecodedTrack track = ready();
        taken(track, 100);
        track.stop();
        QCOMPARE(track.position(), 0.0);
        QCOMPARE(track.length(), 3.0);
        QVERIFY(!track.is_sounding() && !track.wants_seek());
        QVERIFY(taken(track, 10).empty());
        track.seek(1.25);
        QCOMPARE(track.position(), 1.25);
        QVERIFY(!track.is_sounding() && !track.wants_seek());
        QVERIFY(taken(track, 10).empty());
    }

    void a_file_stopped_before_it_is_ready_does_not_play()
    {
        DecodedTrack track;
        track.stop();
        track.begin(rate, length);
        QCOMPARE(track.length(), 3.0);
        QVERIFY(!track.is_sounding());
    }

    void takes_tell_whether_they_continue()
    {
        DecodedTrack track = ready();
        std::vector<float> samples(20);
        QVERIFY(!track.take(samples).continues);
        QVERIFY(track.take(samples).continues);
        track.seek(1);
        track.take_seek();
        fill(track, rate);
        QVERIFY(!track.take(samples).continues);
        QVERIFY(track.take(samples).continues);
    }

    void a_seek_back_from_the_end_goes_on()
    {
        DecodedTrack track = ready(1000);
        taken(track, 1000);
        QVERIFY(!track.is_sounding());
        track.seek(0.1);
        QVERIFY(track.is_sounding() && track.wants_seek());
    }
};

QUILMO_LOGIC_TEST(TestMediaPlayerTrack)

#include "test_media_player_track.moc"
