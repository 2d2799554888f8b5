#include "heard_sound.h"
#include "platform/media_player/MediaPlayer.h"
#include "sample_tones.h"
#include "test_main.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {

const QString path = u"C:\\Music\\a.mp3"_s;
constexpr int frames = 20;

/// A player with a disk that notes every time when no device was there.
struct Machine
{
    Machine()
    {
        disk.write(path, tone_audio({.frames = frames, .tone = [](int, int) { return Tone{20, 200}; }}));
    }

    bool open(const QString& file = path)
    {
        player.Open(file);
        return QTest::qWaitFor([this] { return player.SelectionEnd() > 0; });
    }

    bool plays_to_the_end()
    {
        return QTest::qWaitFor([this] { return player.CurrentPosition() >= player.SelectionEnd(); });
    }

    TestDisk disk;
    MediaPlayer player;
    QSignalSpy no_device{&player, &MediaPlayer::no_audio_device};
};

} // namespace

class TestMediaPlayerDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void without_a_device_it_plays_in_real_time_and_tells_data()
    {
        QTest::addColumn<QByteArray>("driver");
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("no driver of this name") << "nonsense"_ba
                                                << ""_ba;
        QTest::newRow("a driver whose device can't be opened") << "disk"_ba
                                                               << "/nowhere/sound.raw"_ba;
    }

    void without_a_device_it_plays_in_real_time_and_tells()
    {
        QFETCH(const QByteArray, driver);
        QFETCH(const QByteArray, file);
        const ChosenVariable chosen("SDL_AUDIODRIVER", driver);
        const ChosenVariable sound("SDL_DISKAUDIOFILE", file);
        Machine machine;
        QThread* thread = nullptr;
        connect(&machine.player, &MediaPlayer::no_audio_device, &machine.player,
                [&thread] { thread = QThread::currentThread(); });
        QVERIFY(machine.open());
        QElapsedTimer time;
        time.start();
        QVERIFY(machine.plays_to_the_end());
        const double seconds = machine.player.SelectionEnd();
        QVERIFY2(time.elapsed() > 600 * seconds, qPrintable(QString::number(time.elapsed())));
        QTRY_COMPARE(machine.no_device.count(), 1);
        QCOMPARE(thread, machine.player.thread());
    }

    void every_open_without_a_device_tells()
    {
        const ChosenVariable chosen("SDL_AUDIODRIVER", "nonsense");
        Machine machine;
        for (int count = 1; count <= 3; ++count) {
            QVERIFY(machine.open());
            QTRY_COMPARE(machine.no_device.count(), count);
        }
        QVERIFY(machine.plays_to_the_end());
    }

    void a_seek_or_a_stop_without_a_device_tells_nothing()
    {
        const ChosenVariable chosen("SDL_AUDIODRIVER", "nonsense");
        Machine machine;
        QVERIFY(machine.open());
        machine.player.set_CurrentPosition(0.1);
        machine.player.Stop();
        machine.player.set_FileName({});
        QCoreApplication::processEvents();
        QCOMPARE(machine.no_device.count(), 1);
    }

    void the_next_open_tries_the_device_again()
    {
        Machine machine;
        {
            const ChosenVariable chosen("SDL_AUDIODRIVER", "nonsense");
            QVERIFY(machine.open());
            QTRY_COMPARE(machine.no_device.count(), 1);
        }
        const SoundFile sound;
        QVERIFY(machine.open());
        QVERIFY(machine.plays_to_the_end());
        QCOMPARE(machine.no_device.count(), 1);
        QVERIFY(sound.size() > 0);
    }

    void a_device_that_works_is_kept_for_the_next_file()
    {
        Machine machine;
        const SoundFile sound;
        QVERIFY(machine.open());
        const ChosenVariable chosen("SDL_AUDIODRIVER", "nonsense"); // asked again, there would be none
        QVERIFY(machine.open());
        QVERIFY(machine.plays_to_the_end());
        QCoreApplication::processEvents();
        QCOMPARE(machine.no_device.count(), 0);
    }

    void a_file_of_another_rate_opens_the_device_anew()
    {
        Machine machine;
        const SoundFile sound;
        machine.disk.write(u"C:\\b.mp3"_s, tone_audio({.frames = frames, .rate = 22050, .kilobits = {64}}));
        QVERIFY(machine.open());
        const ChosenVariable chosen("SDL_AUDIODRIVER", "nonsense");
        QVERIFY(machine.open(u"C:\\b.mp3"_s));
        QTRY_COMPARE(machine.no_device.count(), 1);
    }

    void a_device_that_vanishes_does_not_stop_the_player()
    {
        Machine machine;
        {
            const SoundFile lost;
            const ChosenVariable full("SDL_DISKAUDIOFILE", "/dev/full"); // it opens, and then takes nothing
            QVERIFY(machine.open());
            QVERIFY(machine.plays_to_the_end());
        }
        const SoundFile sound;
        QVERIFY(machine.open());
        QVERIFY(machine.plays_to_the_end());
        QTRY_VERIFY(sound.size() > 0);
        QCoreApplication::processEvents();
        QCOMPARE(machine.no_device.count(), 0);
    }

    void a_silent_device_that_a_person_chose_is_a_device()
    {
        const ChosenVariable chosen("SDL_AUDIODRIVER", "dummy");
        Machine machine;
        QVERIFY(machine.open());
        QVERIFY(machine.plays_to_the_end());
        QCoreApplication::processEvents();
        QCOMPARE(machine.no_device.count(), 0);
    }

    void a_file_that_is_refused_asks_for_no_device()
    {
        const ChosenVariable chosen("SDL_AUDIODRIVER", "nonsense");
        Machine machine;
        machine.player.Open(u"C:\\none.mp3"_s);
        machine.player.set_FileName({});
        QCoreApplication::processEvents();
        QCOMPARE(machine.no_device.count(), 0);
        QCOMPARE(machine.player.SelectionEnd(), 0.0);
    }

    void the_player_can_go_before_it_told()
    {
        const ChosenVariable chosen("SDL_AUDIODRIVER", "nonsense");
        int told = 0;
        {
            Machine machine;
            connect(&machine.player, &MediaPlayer::no_audio_device, this, [&told] { ++told; });
            machine.player.Open(path);
            const QDeadlineTimer limit(5000);
            while (machine.player.SelectionEnd() == 0.0 && !limit.hasExpired())
                QThread::yieldCurrentThread();
        }
        QCoreApplication::processEvents();
        QCOMPARE(told, 0);
    }
};

QUILMO_LOGIC_TEST(TestMediaPlayerDevice)

#include "test_media_player_device.moc"
