#include "core/mod_of_grobal_var.h"
#include "platform/wave_volume.h"
#include "player/ctl_slider.h"
#include "player/ctl_slider2.h"

#include "test_main.h"
#include "ui_bars.h"
#include "ui_player.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

/// A volume bar, alone in its window.
struct VolumeBar : Bar
{
    ctl_slider slider{knob, track};
};

QStringList seek_to(double seconds)
{
    return {u"seek %1"_s.arg(seconds)};
}

/// A position bar of a file of `length` seconds.
struct PositionBar : Bar
{
    explicit PositionBar(double length) { player.length = length; }

    /// The seeks since the last look.
    QStringList seeks() { return player.take(); }

    NotedPlayer player;
    ctl_slider2 slider{knob, track, player};
};

} // namespace

class TestSliders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        shared = {};
        waveOutSetVolume(0, 0);
    }

    void cleanup()
    {
        shared = {};
        waveOutSetVolume(0, -1);
    }

    // Presses on the track

    void a_press_on_the_track_brings_the_knob_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("percent");

        QTest::newRow("left of the knob: its left edge comes") << 1500 << 40 << 600 << 20;
        QTest::newRow("right of the knob: its right edge comes") << 0 << 100 << 1260 << 42;
        QTest::newRow("at the track's left end") << 1500 << 0 << 0 << 0;
        QTest::newRow("on the track's last pixel") << 0 << 215 << 2985 << 100;
        QTest::newRow("inside the knob's span nothing moves") << 1500 << 108 << 1500 << 50;
        QTest::newRow("on the knob's left edge nothing moves") << 1500 << 100 << 1500 << 50;
        QTest::newRow("a pixel before the left edge it moves") << 1500 << 99 << 1485 << 50;
        QTest::newRow("on the knob's right edge nothing moves") << 1500 << 116 << 1500 << 50;
        QTest::newRow("a pixel behind the right edge it moves") << 1500 << 117 << 1515 << 50;
        QTest::newRow("half a percent is none") << 1500 << 1 << 15 << 0;
        QTest::newRow("one and a half are two") << 1500 << 3 << 45 << 2;
        QTest::newRow("two and a half are two") << 1500 << 5 << 75 << 2;
        QTest::newRow("three and a half are four") << 1500 << 7 << 105 << 4;
        QTest::newRow("a knob between two pixels is held against the point exactly") << 1507 << 100 << 1500 << 50;
    }

    void a_press_on_the_track_brings_the_knob()
    {
        QFETCH(const int, from);
        QFETCH(const int, x);
        QFETCH(const int, percent);
        VolumeBar volume;
        volume.knob.set_Left(from);
        volume.press(x, Qt::LeftButton, Bar::below_the_knob);
        QTEST(volume.knob.Left(), "left");
        QCOMPARE(volume.slider.value(), percent);
        QCOMPARE(shared.vol_type, percent);
        QCOMPARE(wave_output_level() >> 16, static_cast<std::uint32_t>(percent * 654));
        volume.release(x);

        PositionBar position(1000);
        position.knob.set_Left(from);
        position.press(x, Qt::LeftButton, Bar::below_the_knob);
        QTEST(position.knob.Left(), "left");
        QCOMPARE(position.seeks(), seek_to(percent * 10.0));
        QCOMPARE(position.slider.value(), percent * 10);
        position.release(x);
        QCOMPARE(position.seeks(), QStringList());
    }

    void a_press_on_the_track_is_the_whole_of_it()
    {
        VolumeBar volume;
        volume.press(100, Qt::LeftButton, Bar::below_the_knob);
        QCOMPARE(volume.knob.Left(), 1260);
        QVERIFY(!volume.slider.dragging());
        volume.move(150);
        volume.release(180);
        volume.move(95);
        QCOMPARE(volume.knob.Left(), 1260);
        QCOMPARE(shared.vol_type, 42);
    }

    void any_button_presses_the_track()
    {
        VolumeBar volume;
        volume.press(100, Qt::RightButton, Bar::below_the_knob);
        QCOMPARE(volume.knob.Left(), 1260);
        QCOMPARE(shared.vol_type, 42);
        volume.release(100, Qt::RightButton);
    }

    void each_step_brings_the_knob_to_the_top()
    {
        VolumeBar volume;
        volume.knob.set_Top(45);
        volume.press(100, Qt::LeftButton, 1);
        QCOMPARE(volume.knob.Top(), 0);
        volume.release(100);
        volume.knob.set_Top(45);
        volume.press(90);
        volume.move(95);
        QCOMPARE(volume.knob.Top(), 0);
        volume.release(95);

        PositionBar position(100);
        position.knob.set_Top(45);
        position.press(5);
        QCOMPARE(position.knob.Top(), 45);
        position.release(5);
        QCOMPARE(position.knob.Top(), 0);
    }

    void a_muted_bar_keeps_the_volume_and_the_silence()
    {
        VolumeBar volume;
        shared.is_muted = 1;
        volume.press(100, Qt::LeftButton, Bar::below_the_knob);
        volume.release(100);
        QCOMPARE(shared.vol_type, 42);
        QCOMPARE(wave_output_level(), 0U);
    }

    void a_seek_goes_by_whole_percents_to_whole_seconds_data()
    {
        QTest::addColumn<double>("length");
        QTest::addColumn<int>("x"); ///< where the knob's left edge is brought
        QTest::addColumn<int>("seconds");
        QTest::newRow("a fifth") << 240.4 << 40 << 48;
        QTest::newRow("the percent is rounded before the seconds") << 1000.0 << 41 << 200;
        QTest::newRow("half a second is none") << 50.0 << 2 << 0;
        QTest::newRow("one and a half are two") << 50.0 << 6 << 2;
        QTest::newRow("two and a half are two") << 50.0 << 10 << 2;
        QTest::newRow("a file that is not open yet") << 0.0 << 40 << 0;
        QTest::newRow("beyond 16 bits") << 100000.0 << 100 << 50000;
    }

    void a_seek_goes_by_whole_percents_to_whole_seconds()
    {
        QFETCH(const double, length);
        QFETCH(const int, x);
        QFETCH(const int, seconds);
        PositionBar pressed(length);
        pressed.knob.set_Left(Bar::way);
        pressed.press(x);
        pressed.release(x);
        QCOMPARE(pressed.seeks(), seek_to(seconds));
        QCOMPARE(pressed.slider.value(), seconds);

        PositionBar dragged(length);
        dragged.press(5);
        dragged.move(5 + x);
        dragged.release(5 + x);
        QCOMPARE(dragged.seeks(), seek_to(seconds));
        QCOMPARE(dragged.slider.value(), seconds);
    }

    // Drags

    void a_drag_moves_the_knob_with_the_mouse_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("pressed"); ///< pixels from the knob's left edge
        QTest::addColumn<QList<int>>("moves");
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("percent");

        QTest::newRow("to the right") << 0 << 5 << QList<int>{25} << 300 << 10;
        QTest::newRow("to the left") << 1500 << 5 << QList<int>{85} << 1200 << 40;
        QTest::newRow("in many steps") << 0 << 5 << QList<int>{6, 7, 9, 20, 19, 65} << 900 << 30;
        QTest::newRow("there and back") << 1500 << 15 << QList<int>{200, 3, 115} << 1500 << 50;
        QTest::newRow("to the left end exactly") << 1500 << 5 << QList<int>{5} << 0 << 0;
        QTest::newRow("a pixel past the left end") << 1500 << 5 << QList<int>{4} << 0 << 0;
        QTest::newRow("far past the left end") << 1500 << 5 << QList<int>{-300} << 0 << 0;
        QTest::newRow("to the right end exactly") << 1500 << 5 << QList<int>{205} << 3000 << 100;
        QTest::newRow("a pixel past the right end") << 1500 << 5 << QList<int>{206} << 3000 << 100;
        QTest::newRow("far past the right end") << 1500 << 5 << QList<int>{370} << 3000 << 100;
        QTest::newRow("past an end and back: the mouse holds it where it was pressed")
            << 1500 << 5 << QList<int>{-300, 370, 45} << 600 << 20;
        QTest::newRow("half a percent is none") << 1500 << 5 << QList<int>{6} << 15 << 0;
        QTest::newRow("one and a half are two") << 1500 << 5 << QList<int>{8} << 45 << 2;
        QTest::newRow("two and a half are two") << 1500 << 5 << QList<int>{10} << 75 << 2;
        QTest::newRow("from between two pixels") << 1507 << 5 << QList<int>{107} << 1537 << 51;
    }

    void a_drag_moves_the_knob_with_the_mouse()
    {
        QFETCH(const int, from);
        QFETCH(const int, pressed);
        QFETCH(const QList<int>, moves);
        QFETCH(const int, percent);
        VolumeBar volume;
        volume.knob.set_Left(from);
        volume.press(to_pixels(from) + pressed);
        QCOMPARE(volume.knob.Left(), from);
        QVERIFY(volume.slider.dragging());
        for (const int x : moves)
            volume.move(x);
        QTEST(volume.knob.Left(), "left");
        QCOMPARE(volume.slider.value(), percent);
        QCOMPARE(shared.vol_type, percent);
        QCOMPARE(wave_output_level() >> 16, static_cast<std::uint32_t>(percent * 654));
        volume.release(moves.last());
        QVERIFY(!volume.slider.dragging());

        PositionBar position(1000);
        position.knob.set_Left(from);
        position.press(to_pixels(from) + pressed);
        for (const int x : moves)
            position.move(x);
        QTEST(position.knob.Left(), "left");
        QCOMPARE(position.seeks(), QStringList());
        position.release(moves.last());
        QTEST(position.knob.Left(), "left");
        QCOMPARE(position.seeks(), seek_to(percent * 10.0));
        QVERIFY(!position.slider.dragging());
    }

    void the_level_follows_each_move()
    {
        VolumeBar volume;
        volume.press(5);
        QCOMPARE(wave_output_level(), 0U);
        volume.move(7);
        QCOMPARE(wave_output_level(), 0x028E028EU);
        volume.move(105);
        QCOMPARE(wave_output_level(), 0x7FBC7FBCU);
        volume.move(205);
        QCOMPARE(wave_output_level(), 0xFF78FF7AU);
        volume.move(-5);
        QCOMPARE(wave_output_level(), 0U);
        volume.release(-5);
    }

    void a_press_without_a_move_leaves_the_level()
    {
        VolumeBar volume;
        volume.knob.set_Left(1500);
        shared.vol_type = 7;
        volume.press(105);
        volume.release(105);
        QCOMPARE(shared.vol_type, 7);
        QCOMPARE(wave_output_level(), 0U);
        QCOMPARE(volume.knob.Left(), 1500);
    }

    void a_press_without_a_move_seeks_to_the_whole_percent()
    {
        PositionBar position(1000);
        position.knob.set_Left(1510);
        position.press(105);
        QCOMPARE(position.seeks(), QStringList());
        position.release(105);
        QCOMPARE(position.seeks(), seek_to(500));
        QCOMPARE(position.knob.Left(), 1510);
    }

    void a_release_at_an_end_seeks_there_data()
    {
        QTest::addColumn<int>("x");
        QTest::addColumn<double>("seconds");
        QTest::newRow("past the left end") << -40 << 0.0;
        QTest::newRow("at the left end") << 5 << 0.0;
        QTest::newRow("at the right end, by the percent") << 205 << 240.0;
        QTest::newRow("past the right end, to the end exactly") << 206 << 240.4;
        QTest::newRow("far past the right end, to the end exactly") << 350 << 240.4;
    }

    void a_release_at_an_end_seeks_there()
    {
        QFETCH(const int, x);
        QFETCH(const double, seconds);
        PositionBar position(240.4);
        position.knob.set_Left(1500);
        position.press(105);
        position.move(x);
        position.release(x, Qt::LeftButton, 60);
        QCOMPARE(position.seeks(), seek_to(seconds));
    }

    // The knob's own place is where the mouse is measured from.
    void the_mouse_keeps_a_knob_that_is_moved_meanwhile()
    {
        PositionBar position(1000);
        position.press(5);
        position.move(45);
        QCOMPARE(position.knob.Left(), 600);
        position.knob.set_Left(1500);
        position.move(46);
        QCOMPARE(position.knob.Left(), 615);
        position.knob.set_Left(0);
        position.move(65);
        QCOMPARE(position.knob.Left(), 900);
        position.knob.set_Left(2400);
        position.release(65);
        QCOMPARE(position.knob.Left(), 900);
        QCOMPARE(position.seeks(), seek_to(300));
    }

    void the_mouse_keeps_a_knob_that_is_moved_meanwhile_and_goes_past_an_end()
    {
        PositionBar position(240.4);
        position.press(5);
        position.move(45);
        position.knob.set_Left(30);
        position.release(230);
        QCOMPARE(position.knob.Left(), 3000);
        QCOMPARE(position.seeks(), seek_to(240.4));
    }

    void only_the_left_button_alone_drags_data()
    {
        QTest::addColumn<QList<Qt::MouseButton>>("buttons");
        QTest::addColumn<int>("left");
        QTest::newRow("left") << QList<Qt::MouseButton>{Qt::LeftButton} << 1800;
        QTest::newRow("right") << QList<Qt::MouseButton>{Qt::RightButton} << 1500;
        QTest::newRow("middle") << QList<Qt::MouseButton>{Qt::MiddleButton} << 1500;
        QTest::newRow("left and right") << QList<Qt::MouseButton>{Qt::LeftButton, Qt::RightButton} << 1500;
    }

    void only_the_left_button_alone_drags()
    {
        QFETCH(const QList<Qt::MouseButton>, buttons);
        QFETCH(const int, left);
        VolumeBar volume;
        volume.knob.set_Left(1500);
        for (const Qt::MouseButton button : buttons)
            volume.press(105, button);
        volume.move(125);
        QCOMPARE(volume.knob.Left(), left);
        QCOMPARE(shared.vol_type, left == 1500 ? 0 : 60);
        for (const Qt::MouseButton button : buttons)
            volume.release(125, button);
        QCOMPARE(volume.knob.Left(), left);
    }

    void a_release_ends_the_drag()
    {
        VolumeBar volume;
        volume.press(5, Qt::LeftButton);
        volume.press(5, Qt::RightButton);
        volume.release(5, Qt::RightButton);
        volume.move(105);
        QCOMPARE(volume.knob.Left(), 0);
        volume.release(105, Qt::LeftButton);
        volume.move(10);
        QCOMPARE(volume.knob.Left(), 0);

        PositionBar position(1000);
        position.press(5, Qt::LeftButton);
        position.press(5, Qt::RightButton);
        position.release(5, Qt::RightButton);
        position.release(105, Qt::LeftButton);
        QCOMPARE(position.seeks(), seek_to(0));
    }

    void a_press_on_the_knob_does_not_reach_the_track()
    {
        VolumeBar volume;
        const QSignalSpy presses(volume.track_box, &PictureBox::MouseDown);
        const QSignalSpy releases(volume.track_box, &PictureBox::MouseUp);
        volume.press(5);
        volume.release(5);
        QCOMPARE(presses.size(), 0);
        QCOMPARE(releases.size(), 0);
    }

    void a_second_drag_begins_anew()
    {
        PositionBar position(1000);
        position.press(5);
        position.move(45);
        position.release(45);
        position.press(50);
        position.move(70);
        position.release(70);
        QCOMPARE(position.knob.Left(), 900);
        QCOMPARE(position.seeks(), seek_to(200) + seek_to(300));
    }

    void a_knob_as_wide_as_its_track_can_not_be_asked()
    {
        VolumeBar volume;
        volume.knob.set_Width(volume.track.Width());
        try {
            volume.slider.main_ctl_move(0);
            QFAIL("nothing was raised");
        } catch (const RunTimeError& error) {
            QCOMPARE(error.number(), RunTimeError::division_by_zero);
        }
    }
};

QUILMO_UI_TEST(TestSliders)

#include "test_sliders.moc"
