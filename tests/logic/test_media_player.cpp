#include "heard_sound.h"
#include "platform/media_player/MediaPlayer.h"
#include "sample_tones.h"
#include "test_main.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <limits>
#include <malloc.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

const QString path = u"C:\\Music\\a.mp3"_s;
const QString other = u"C:\\Music\\b.mp3"_s;
const QString endless = u"C:\\Music\\endless.mp3"_s;
constexpr int frames = 100;
constexpr double seconds = 100 * 1152 / 44100.0;

QByteArray audio(int count = frames)
{
    return tone_audio({.frames = count, .tone = [](int, int) { return Tone{.step = 20, .gain = 200}; }});
}

/// A player with a disk, and a device on which time runs some ten times as fast.
struct Machine
{
    Machine()
    {
        disk.write(path, audio());
        disk.write(other, audio(2 * frames));
    }

    /// Opens the file and waits until it is ready.
    bool open(const QString& file)
    {
        player.Open(file);
        return QTest::qWaitFor([this] { return player.SelectionEnd() > 0; });
    }

    bool reaches_the_end()
    {
        return QTest::qWaitFor([this] { return player.CurrentPosition() >= player.SelectionEnd(); });
    }

    /// Waits until the device has got as many seconds of sound or silence.
    bool listen(double device_seconds)
    {
        const qint64 size = sound.size() + static_cast<qint64>(device_seconds * 44100) * 8;
        return QTest::qWaitFor([&] { return sound.size() >= size; });
    }

    /// Writes a file in which no frame follows the first ones for many seconds of looking.
    void write_endless() const
    {
        disk.write(endless, audio(10));
        QVERIFY(truncate(disk.native(endless).constData(), off_t{4} << 30U) == 0);
    }

    TestDisk disk;
    SoundFile sound;
    MediaPlayer player;
};

/// Brings the player into one of the states that it can be in.
bool bring(Machine& machine, const QByteArray& state)
{
    MediaPlayer& player = machine.player;
    if (state == "searching" || state == "just opened") {
        machine.write_endless();
        player.Open(endless);
        const QByteArray native = machine.disk.native(endless);
        return state == "just opened" || QTest::qWaitFor([&] { return open_descriptors(native) == 1; });
    }
    if (state == "refused") {
        machine.disk.write(other, "no music");
        player.Open(other);
        return true;
    }
    if (!machine.open(path))
        return false;
    if (state == "stopped")
        player.Stop();
    if (state == "at the end")
        return machine.reaches_the_end();
    if (state == "seeking")
        player.set_CurrentPosition(1);
    return true;
}

void state_rows()
{
    QTest::addColumn<QByteArray>("state");
    for (const char* state : {"just opened", "searching", "refused", "playing", "seeking", "stopped", "at the end"})
        QTest::newRow(state) << QByteArray(state);
}

} // namespace

class TestMediaPlayer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void before_the_first_open_nothing_happens()
    {
        const int threads = thread_count();
        MediaPlayer player;
        player.Stop();
        player.set_Volume(-845);
        player.set_CurrentPosition(3);
        player.set_FileName({});
        QCOMPARE(player.CurrentPosition(), 0.0);
        QCOMPARE(player.SelectionEnd(), 0.0);
        QCOMPARE(thread_count(), threads);
    }

    void a_file_plays_by_itself_to_its_end_and_stays_there()
    {
        Machine machine;
        QVERIFY(machine.open(path));
        QCOMPARE(machine.player.SelectionEnd(), seconds);
        QVERIFY(machine.reaches_the_end());
        QCOMPARE(machine.player.CurrentPosition(), seconds);
        QVERIFY(machine.listen(1));
        QCOMPARE(machine.player.CurrentPosition(), seconds);
        QCOMPARE(machine.player.SelectionEnd(), seconds);
    }

    void a_very_short_file_plays()
    {
        Machine machine;
        machine.disk.write(path, audio(4));
        QVERIFY(machine.open(path));
        QCOMPARE(machine.player.SelectionEnd(), 4 * 1152 / 44100.0);
        QVERIFY(machine.reaches_the_end());
        QCOMPARE(machine.player.CurrentPosition(), machine.player.SelectionEnd());
    }

    void a_name_that_is_set_is_opened()
    {
        Machine machine;
        machine.player.set_FileName(path);
        QVERIFY(machine.reaches_the_end());
        QTRY_COMPARE(machine.player.SelectionEnd(), seconds);
        QVERIFY(machine.reaches_the_end());
    }

    void while_it_opens_there_is_no_position()
    {
        Machine machine;
        QVERIFY(bring(machine, "searching"));
        QCOMPARE(machine.player.SelectionEnd(), 0.0);
        machine.player.set_CurrentPosition(5);
        QCOMPARE(machine.player.CurrentPosition(), 0.0);
    }

    void a_stop_before_it_is_ready_holds()
    {
        Machine machine;
        machine.player.Open(path);
        machine.player.Stop();
        QTRY_COMPARE(machine.player.SelectionEnd(), seconds);
        QVERIFY(machine.listen(1));
        QCOMPARE(machine.player.CurrentPosition(), 0.0);
    }

    void a_stopped_file_takes_positions_and_stays_stopped_data()
    {
        QTest::addColumn<double>("written");
        QTest::addColumn<double>("read");
        QTest::newRow("a number that binary can't hold") << 0.6 << 0.6;
        QTest::newRow("before the beginning") << -5.0 << 0.0;
        QTest::newRow("the end") << seconds << seconds;
        QTest::newRow("behind the end") << 5.0 << seconds;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0.0;
    }

    void a_stopped_file_takes_positions_and_stays_stopped()
    {
        QFETCH(const double, written);
        QFETCH(const double, read);
        Machine machine;
        QVERIFY(bring(machine, "stopped"));
        QCOMPARE(machine.player.CurrentPosition(), 0.0);
        QCOMPARE(machine.player.SelectionEnd(), seconds);
        machine.player.set_CurrentPosition(written);
        QCOMPARE(machine.player.CurrentPosition(), read);
        QVERIFY(machine.listen(1));
        QCOMPARE(machine.player.CurrentPosition(), read);
        machine.player.Stop();
        QCOMPARE(machine.player.CurrentPosition(), 0.0);
    }

    void a_seek_goes_on_from_there()
    {
        Machine machine;
        QVERIFY(machine.open(other));
        machine.player.set_CurrentPosition(4.6);
        const double read = machine.player.CurrentPosition();
        QVERIFY2(read >= 4.6 && read < 5, qPrintable(QString::number(read)));
        QTRY_VERIFY(machine.player.CurrentPosition() > 4.6);
        machine.player.set_CurrentPosition(0.5);
        QVERIFY(machine.player.CurrentPosition() < 4.6);
        QVERIFY(machine.reaches_the_end());
    }

    void a_seek_to_the_end_ends_the_file()
    {
        Machine machine;
        QVERIFY(machine.open(path));
        machine.player.set_CurrentPosition(machine.player.SelectionEnd());
        QCOMPARE(machine.player.CurrentPosition(), seconds);
        QVERIFY(machine.listen(1));
        QCOMPARE(machine.player.CurrentPosition(), seconds);
    }

    void a_seek_back_from_the_end_plays_on()
    {
        Machine machine;
        QVERIFY(bring(machine, "at the end"));
        QVERIFY(machine.listen(1));
        machine.player.set_CurrentPosition(0.5);
        QVERIFY(machine.player.CurrentPosition() < seconds);
        QTRY_VERIFY(machine.player.CurrentPosition() > 0.5);
        QVERIFY(machine.reaches_the_end());
    }

    void a_stop_at_the_end_goes_to_the_beginning()
    {
        Machine machine;
        QVERIFY(bring(machine, "at the end"));
        machine.player.Stop();
        QCOMPARE(machine.player.CurrentPosition(), 0.0);
        QVERIFY(machine.open(path)); // and it plays again
        QVERIFY(machine.reaches_the_end());
    }

    void many_seeks_in_a_row_come_to_the_last()
    {
        Machine machine;
        QVERIFY(machine.open(other));
        for (int step = 0; step < 500; ++step)
            machine.player.set_CurrentPosition(step % 5);
        machine.player.set_CurrentPosition(3);
        QTRY_VERIFY(machine.player.CurrentPosition() > 3);
        QVERIFY(machine.reaches_the_end());
    }

    void a_released_file_is_closed_when_the_call_returns_data() { state_rows(); }

    void a_released_file_is_closed_when_the_call_returns()
    {
        QFETCH(const QByteArray, state);
        Machine machine;
        QVERIFY(bring(machine, state));
        machine.player.set_FileName({});
        for (const QString& file : {path, other, endless})
            QCOMPARE(open_descriptors(machine.disk.native(file)), 0);
        QCOMPARE(machine.player.SelectionEnd(), 0.0);
        QCOMPARE(machine.player.CurrentPosition(), 0.0);
        machine.disk.write(path, audio());
        QVERIFY(machine.open(path));
        QVERIFY(machine.reaches_the_end());
    }

    void another_file_takes_its_place_data() { state_rows(); }

    void another_file_takes_its_place()
    {
        QFETCH(const QByteArray, state);
        Machine machine;
        QVERIFY(bring(machine, state));
        machine.disk.write(u"C:\\c.mp3"_s, audio(50));
        machine.player.Open(u"C:\\c.mp3"_s);
        QTRY_COMPARE(machine.player.SelectionEnd(), 50 * 1152 / 44100.0);
        QVERIFY(machine.reaches_the_end());
        QCOMPARE(machine.player.SelectionEnd(), 50 * 1152 / 44100.0);
        for (const QString& file : {path, other, endless})
            QCOMPARE(open_descriptors(machine.disk.native(file)), 0);
    }

    void the_player_can_go_at_any_time_data() { state_rows(); }

    void the_player_can_go_at_any_time()
    {
        QFETCH(const QByteArray, state);
        const int threads = thread_count();
        const TestDisk disk;
        QElapsedTimer time;
        {
            Machine machine;
            QVERIFY(bring(machine, state));
            time.start();
        }
        QVERIFY2(time.elapsed() < 3000, qPrintable(QString::number(time.elapsed())));
        QCOMPARE(thread_count(), threads);
    }

    void of_many_opens_the_last_one_plays()
    {
        Machine machine;
        machine.write_endless();
        for (int step = 0; step < 100; ++step) {
            machine.player.Open(endless);
            machine.player.Open(step % 2 == 0 ? path : other);
        }
        machine.player.Open(path);
        QTRY_COMPARE(machine.player.SelectionEnd(), seconds);
        QVERIFY(machine.reaches_the_end());
        QCOMPARE(machine.player.SelectionEnd(), seconds);
    }

    void a_file_of_another_rate_plays_next()
    {
        Machine machine;
        QVERIFY(machine.open(path));
        machine.disk.write(other, tone_audio({.frames = 50, .rate = 22050, .kilobits = {64}}));
        machine.player.Open(other);
        QTRY_COMPARE(machine.player.SelectionEnd(), 50 * 576 / 22050.0);
        QVERIFY(machine.reaches_the_end());
    }

    void files_that_fail_in_turn_do_no_harm()
    {
        Machine machine;
        machine.disk.write(u"C:\\text.mp3"_s, "no music"_ba.repeated(1000));
        machine.disk.write(u"C:\\empty.mp3"_s, {});
        machine.disk.make_folder(u"C:\\Folder"_s);
        QCOMPARE(mkfifo(machine.disk.native(u"C:\\fifo.mp3"_s).constData(), 0600), 0);
        const QStringList bad{u"C:\\text.mp3"_s, u"C:\\empty.mp3"_s, u"C:\\Folder"_s, u"C:\\fifo.mp3"_s,
                              u"C:\\none.mp3"_s};
        for (int step = 0; step < 100; ++step) {
            machine.player.Open(bad[step % bad.size()]);
            if (step % 3 == 0)
                machine.player.set_FileName({});
            QCOMPARE(machine.player.SelectionEnd(), 0.0);
            QCOMPARE(machine.player.CurrentPosition(), 0.0);
        }
        QVERIFY(machine.open(path));
        QVERIFY(machine.reaches_the_end());
    }

    void a_refused_file_stays_without_length()
    {
        Machine machine;
        QVERIFY(machine.open(path));
        machine.disk.write(other, "no music");
        machine.player.Open(other);
        QVERIFY(machine.listen(2));
        QCOMPARE(machine.player.SelectionEnd(), 0.0);
        machine.player.set_CurrentPosition(1);
        QCOMPARE(machine.player.CurrentPosition(), 0.0);
    }

    void a_file_that_is_cut_off_ends_where_it_ends()
    {
        Machine machine;
        const ToneAudio whole{.frames = frames};
        machine.disk.write(path, tone_info_frame(whole, {.frames = frames}) + tone_audio({.frames = 40}));
        QVERIFY(machine.open(path));
        QTRY_COMPARE(machine.player.CurrentPosition(), 40 * 1152 / 44100.0);
        QCOMPARE(machine.player.SelectionEnd(), 40 * 1152 / 44100.0);
    }

    void a_seek_into_the_missing_part_comes_to_the_real_end()
    {
        Machine machine;
        const ToneAudio whole{.frames = 2 * frames};
        machine.disk.write(path, tone_info_frame(whole, {.frames = 2 * frames}) + tone_audio({.frames = frames}));
        QVERIFY(machine.open(path));
        machine.player.set_CurrentPosition(2 * seconds - 1);
        QTRY_COMPARE(machine.player.SelectionEnd(), seconds);
        QCOMPARE(machine.player.CurrentPosition(), seconds);
    }

    void what_lies_behind_the_told_length_is_not_played()
    {
        Machine machine;
        machine.disk.write(path, tone_info_frame({}, {.frames = 40}) + audio());
        QVERIFY(machine.open(path));
        QCOMPARE(machine.player.SelectionEnd(), 40 * 1152 / 44100.0);
        QVERIFY(machine.reaches_the_end());
        QVERIFY(machine.listen(1));
        QCOMPARE(machine.player.CurrentPosition(), 40 * 1152 / 44100.0);
    }

    void a_change_on_disk_does_not_stop_the_sound_data()
    {
        QTest::addColumn<QByteArray>("change");
        QTest::newRow("removed") << "removed"_ba;
        QTest::newRow("replaced") << "replaced"_ba;
        QTest::newRow("renamed") << "renamed"_ba;
    }

    void a_change_on_disk_does_not_stop_the_sound()
    {
        QFETCH(const QByteArray, change);
        Machine machine;
        const QByteArray native = machine.disk.native(other);
        QVERIFY(machine.open(other));
        if (change == "removed")
            QCOMPARE(unlink(native.constData()), 0);
        else if (change == "replaced")
            QCOMPARE(rename(machine.disk.native(path).constData(), native.constData()), 0);
        else
            QCOMPARE(rename(native.constData(), machine.disk.native(u"C:\\new.mp3"_s).constData()), 0);
        QTRY_COMPARE(machine.player.CurrentPosition(), 2 * seconds);
        QCOMPARE(machine.player.SelectionEnd(), 2 * seconds);
    }

    void a_file_cut_off_while_it_plays_comes_to_an_end()
    {
        Machine machine;
        machine.disk.write(path, audio(2000));
        QVERIFY(machine.open(path));
        QCOMPARE(truncate(machine.disk.native(path).constData(), 417L * 200), 0);
        QVERIFY(machine.reaches_the_end());
        QVERIFY(machine.player.SelectionEnd() > 0 && machine.player.SelectionEnd() < 2000 * 1152 / 44100.0);
        QCOMPARE(machine.player.CurrentPosition(), machine.player.SelectionEnd());
    }

    void thousands_of_calls_leave_nothing_behind()
    {
        Machine machine;
        const auto round = [&machine](int count) {
            for (int step = 0; step < count; ++step) {
                machine.player.Open(step % 2 == 0 ? path : other);
                const QDeadlineTimer limit(5000);
                while (step % 4 < 2 && machine.player.SelectionEnd() == 0.0 && !limit.hasExpired())
                    std::this_thread::yield();
                machine.player.set_CurrentPosition(step % 7);
                machine.player.Stop();
                if (step % 10 == 0)
                    machine.player.set_FileName({});
            }
            machine.player.set_FileName({});
        };
        const auto descriptors = [] { return std::distance(begin(folder("/proc/self/fd")), {}); };
        round(100);
        const auto descriptors_before = descriptors();
        const int threads_before = thread_count();
        const auto memory_before = mallinfo2().uordblks;
        round(2000);
        QCOMPARE(descriptors(), descriptors_before);
        QCOMPARE(thread_count(), threads_before);
        QVERIFY(mallinfo2().uordblks < memory_before + 1000000);
    }

private:
    static std::filesystem::directory_iterator folder(const char* name)
    {
        return std::filesystem::directory_iterator(name);
    }
};

QUILMO_LOGIC_TEST(TestMediaPlayer)

#include "test_media_player.moc"
