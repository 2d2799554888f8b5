#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "platform/controls/palette.h"
#include "platform/wave_volume.h"
#include "player/ctl_slider.h"
#include "player/ctl_slider2.h"
#include "player/knob.h"
#include "test_main.h"
#include "ui_bars.h"
#include "ui_player.h"

#include <QAccessible>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A volume bar, alone in its window.
struct VolumeBar : Bar
{
    explicit VolumeBar(int percent = 0) { place_knob(knob, track, percent); }

    void press_key(Qt::Key key, Qt::KeyboardModifiers held = {}) const { QTest::keyClick(track_box, key, held); }

    ctl_slider slider{knob, track};
};

/// A position bar of a file of `length` seconds that plays.
struct PositionBar : Bar
{
    PositionBar(double length, int percent)
    {
        shared.is_playing = 1;
        player.length = length;
        place_knob(knob, track, percent);
    }

    void press_key(Qt::Key key) const { QTest::keyClick(track_box, key); }
    QStringList seeks() { return player.take(); }

    NotedPlayer player;
    ctl_slider2 slider{knob, track, player};
};

QAccessibleInterface& face_of(QWidget& widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

QStringList seek_to(double seconds)
{
    return {u"seek %1"_s.arg(seconds)};
}

bool shows_accent(QWidget& widget)
{
    const QImage picture = widget.grab().toImage();
    for (int x = 0; x < picture.width(); ++x) {
        if (picture.pixelColor(x, 0) == palette::accent)
            return true;
    }
    return false;
}

} // namespace

class TestBarKeys : public QObject
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

    void keys_move_the_volume_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("percent");
        const auto row = [](const char* name, Qt::Key key, int from, int percent) {
            QTest::newRow(name) << static_cast<int>(key) << from << percent;
        };
        row("Right is louder", Qt::Key_Right, 35, 40);
        row("Up is louder", Qt::Key_Up, 35, 40);
        row("Left is quieter", Qt::Key_Left, 35, 30);
        row("Down is quieter", Qt::Key_Down, 35, 30);
        row("Page Up is much louder", Qt::Key_PageUp, 35, 55);
        row("Page Down is much quieter", Qt::Key_PageDown, 35, 15);
        row("Home is the quiet end", Qt::Key_Home, 35, 0);
        row("End is the loud end", Qt::Key_End, 35, 100);
        row("Left stops at the quiet end", Qt::Key_Left, 3, 0);
        row("Page Down stops at the quiet end", Qt::Key_PageDown, 3, 0);
        row("Right stops at the loud end", Qt::Key_Right, 98, 100);
        row("Page Up stops at the loud end", Qt::Key_PageUp, 98, 100);
        row("Left at the quiet end", Qt::Key_Left, 0, 0);
        row("Right at the loud end", Qt::Key_Right, 100, 100);
        row("Home at the quiet end", Qt::Key_Home, 0, 0);
        row("End at the loud end", Qt::Key_End, 100, 100);
    }

    void keys_move_the_volume()
    {
        QFETCH(const int, key);
        QFETCH(const int, from);
        QFETCH(const int, percent);
        const VolumeBar volume(from);
        volume.press_key(static_cast<Qt::Key>(key));
        QCOMPARE(volume.knob.Left(), percent * Bar::way / 100);
        QCOMPARE(volume.slider.value(), percent);
        QCOMPARE(shared.vol_type, percent);
        QCOMPARE(wave_output_level() >> 16, static_cast<std::uint32_t>(percent * 654));
        QVERIFY(!volume.slider.dragging());
    }

    void keys_go_from_whole_percent_to_whole_percent()
    {
        VolumeBar volume;
        volume.knob.set_Left(1046); // 34.87 percent
        volume.press_key(Qt::Key_Right);
        QCOMPARE(volume.knob.Left(), 1200);
        for (int step = 0; step < 20; ++step)
            volume.press_key(Qt::Key_Left);
        QCOMPARE(volume.knob.Left(), 0);
    }

    void keys_of_a_muted_bar_keep_the_silence()
    {
        const VolumeBar volume(35);
        shared.is_muted = 1;
        volume.press_key(Qt::Key_Right);
        QCOMPARE(shared.vol_type, 40);
        QCOMPARE(wave_output_level(), 0U);
    }

    void other_keys_are_left_to_the_form_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("held");
        QTest::newRow("Alt and Right") << int(Qt::Key_Right) << Qt::KeyboardModifiers(Qt::AltModifier);
        QTest::newRow("Control and Home") << int(Qt::Key_Home) << Qt::KeyboardModifiers(Qt::ControlModifier);
        QTest::newRow("Shift and Up") << int(Qt::Key_Up) << Qt::KeyboardModifiers(Qt::ShiftModifier);
        QTest::newRow("Enter") << int(Qt::Key_Return) << Qt::KeyboardModifiers();
        QTest::newRow("Delete") << int(Qt::Key_Delete) << Qt::KeyboardModifiers();
        QTest::newRow("F2") << int(Qt::Key_F2) << Qt::KeyboardModifiers();
    }

    void other_keys_are_left_to_the_form()
    {
        QFETCH(const int, key);
        QFETCH(const Qt::KeyboardModifiers, held);
        const VolumeBar volume(35);
        shared.vol_type = 7;
        QKeyEvent press(QEvent::KeyPress, key, held);
        QApplication::sendEvent(volume.track_box, &press);
        QVERIFY(!press.isAccepted());
        QCOMPARE(volume.knob.Left(), 1050);
        QCOMPARE(shared.vol_type, 7);
    }

    void keys_of_the_keypad_count()
    {
        const VolumeBar volume(35);
        volume.press_key(Qt::Key_Right, Qt::KeypadModifier);
        QCOMPARE(shared.vol_type, 40);
    }

    void keys_seek_data()
    {
        QTest::addColumn<double>("length");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("percent");
        QTest::addColumn<double>("seconds");
        const auto row = [](const char* name, double length, int from, Qt::Key key, int percent, double seconds) {
            QTest::newRow(name) << length << from << static_cast<int>(key) << percent << seconds;
        };
        row("Right is 5 seconds later", 100, 20, Qt::Key_Right, 25, 25);
        row("Up is 5 seconds later", 100, 20, Qt::Key_Up, 25, 25);
        row("Left is 5 seconds earlier", 100, 20, Qt::Key_Left, 15, 15);
        row("Down is 5 seconds earlier", 100, 20, Qt::Key_Down, 15, 15);
        row("Page Up is 30 seconds later", 100, 20, Qt::Key_PageUp, 50, 50);
        row("Page Down is 30 seconds earlier", 100, 50, Qt::Key_PageDown, 20, 20);
        row("5 seconds are about 2 percent of 4 minutes", 240.4, 10, Qt::Key_Right, 12, 29);
        row("a percent is the least that a long file goes forward", 3600, 1, Qt::Key_Right, 2, 72);
        row("a percent is the least that a long file goes back", 3600, 2, Qt::Key_Left, 1, 36);
        row("Home is the beginning", 240.4, 50, Qt::Key_Home, 0, 0);
        row("End is the end exactly", 240.4, 50, Qt::Key_End, 100, 240.4);
        row("Right stops at the end exactly", 240.4, 99, Qt::Key_Right, 100, 240.4);
        row("Left stops at the beginning", 100, 3, Qt::Key_Left, 0, 0);
        row("a file shorter than a step", 3, 0, Qt::Key_Right, 100, 3);
    }

    void keys_seek()
    {
        QFETCH(const double, length);
        QFETCH(const int, from);
        QFETCH(const int, key);
        QFETCH(const int, percent);
        QFETCH(const double, seconds);
        PositionBar position(length, from);
        position.press_key(static_cast<Qt::Key>(key));
        QCOMPARE(position.knob.Left(), percent * Bar::way / 100);
        QCOMPARE(position.seeks(), seek_to(seconds));
    }

    void without_a_playing_file_the_position_stays_data()
    {
        QTest::addColumn<int>("is_playing");
        QTest::addColumn<double>("length");
        QTest::newRow("nothing was opened") << 0 << 0.0;
        QTest::newRow("stopped") << 0 << 240.0;
        QTest::newRow("not ready yet") << 1 << 0.0;
    }

    void without_a_playing_file_the_position_stays()
    {
        QFETCH(const int, is_playing);
        QFETCH(const double, length);
        PositionBar position(length, 20);
        shared.is_playing = checked<i16>(is_playing);
        for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End})
            position.press_key(key);
        face_of(*position.track_box).valueInterface()->setCurrentValue(70);
        QCOMPARE(position.knob.Left(), 600);
        QCOMPARE(position.seeks(), QStringList());
    }

    void the_mouse_keeps_a_knob_that_it_drags()
    {
        VolumeBar volume(35);
        volume.press(75);
        volume.press_key(Qt::Key_End);
        QCOMPARE(volume.knob.Left(), 1050);
        volume.move(85);
        QCOMPARE(shared.vol_type, 40);
        volume.release(85);
    }

    void the_focus_comes_by_the_tab_key_and_shows()
    {
        VolumeBar volume;
        auto* other = new QWidget(&volume.window);
        other->setFocusPolicy(Qt::StrongFocus);
        other->show();
        other->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&volume.window));
        QVERIFY(!shows_accent(*volume.track_box));
        QTest::keyClick(&volume.window, Qt::Key_Tab);
        QVERIFY(volume.track_box->hasFocus());
        QVERIFY(shows_accent(*volume.track_box));
        QTest::keyClick(volume.track_box, Qt::Key_Tab);
        QVERIFY(other->hasFocus());
        QVERIFY(!shows_accent(*volume.track_box));
    }

    // Assistive programs

    void assistive_programs_know_a_bar()
    {
        const VolumeBar volume(35);
        volume.track_box->setAccessibleName(u"Volume"_s);
        QAccessibleInterface& face = face_of(*volume.track_box);
        QCOMPARE(face.role(), QAccessible::Slider);
        QCOMPARE(face.text(QAccessible::Name), u"Volume"_s);
        QVERIFY(face.state().focusable);
        QVERIFY(!face.state().checkable);
        const QAccessibleValueInterface* value = face.valueInterface();
        QVERIFY(value != nullptr);
        QCOMPARE(value->minimumValue(), QVariant(0));
        QCOMPARE(value->maximumValue(), QVariant(100));
        QCOMPARE(value->currentValue(), QVariant(35));
    }

    void a_knob_outside_its_track_is_at_the_nearer_end()
    {
        VolumeBar volume;
        const QAccessibleValueInterface* value = face_of(*volume.track_box).valueInterface();
        place_knob(volume.knob, volume.track, 150);
        QCOMPARE(value->currentValue(), QVariant(100));
        place_knob(volume.knob, volume.track, -50);
        QCOMPARE(value->currentValue(), QVariant(0));
    }

    void assistive_programs_set_the_volume_data()
    {
        QTest::addColumn<QVariant>("asked");
        QTest::addColumn<int>("percent");
        QTest::newRow("between") << QVariant(62) << 62;
        QTest::newRow("as a real") << QVariant(62.0) << 62;
        QTest::newRow("a percent more") << QVariant(36) << 36;
        QTest::newRow("the quiet end") << QVariant(0) << 0;
        QTest::newRow("the loud end") << QVariant(100) << 100;
        QTest::newRow("below") << QVariant(-2000000000) << 0;
        QTest::newRow("above") << QVariant(2000000000) << 100;
    }

    void assistive_programs_set_the_volume()
    {
        QFETCH(const QVariant, asked);
        QFETCH(const int, percent);
        const VolumeBar volume(35);
        QAccessibleValueInterface* value = face_of(*volume.track_box).valueInterface();
        value->setCurrentValue(asked);
        QCOMPARE(value->currentValue(), QVariant(percent));
        QCOMPARE(shared.vol_type, percent);
        QCOMPARE(wave_output_level() >> 16, static_cast<std::uint32_t>(percent * 654));
        QCOMPARE(volume.knob.Left(), percent * Bar::way / 100);
    }

    void assistive_programs_seek()
    {
        PositionBar position(200, 0);
        face_of(*position.track_box).valueInterface()->setCurrentValue(30);
        QCOMPARE(position.seeks(), seek_to(60));
        QCOMPARE(position.knob.Left(), 900);
    }

    void each_new_percent_is_told_once()
    {
        PositionBar position(100, 0);
        position.window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&position.window));
        QSignalSpy told(position.track_box, &PictureBox::ValueChanged);
        const auto take = [&told] {
            QList<int> percents;
            for (const QList<QVariant>& arguments : std::exchange(static_cast<QList<QList<QVariant>>&>(told), {}))
                percents.append(arguments.first().toInt());
            return percents;
        };
        place_knob(position.knob, position.track, 3); // as the player's poll does
        QCOMPARE(take(), QList<int>{3});
        place_knob(position.knob, position.track, 3);
        QCOMPARE(take(), QList<int>());
        position.press_key(Qt::Key_Right);
        QCOMPARE(take(), QList<int>{8});
        face_of(*position.track_box).valueInterface()->setCurrentValue(9);
        QCOMPARE(take(), QList<int>{9});
        position.press(50, Qt::LeftButton, Bar::below_the_knob);
        position.release(50);
        QCOMPARE(take(), QList<int>{17});
    }

    void a_percent_of_less_than_a_pixel_is_told()
    {
        VolumeBar volume(35);
        volume.track.set_Width(240 + 500);
        place_knob(volume.knob, volume.track, 35);
        const QSignalSpy told(volume.track_box, &PictureBox::ValueChanged);
        face_of(*volume.track_box).valueInterface()->setCurrentValue(36);
        QCOMPARE(told.size(), 1);
    }

    void a_bar_whose_slider_went_is_a_picture()
    {
        Bar bar;
        {
            const ctl_slider slider(bar.knob, bar.track);
            QCOMPARE(face_of(*bar.track_box).role(), QAccessible::Slider);
        }
        QAccessibleInterface& face = face_of(*bar.track_box);
        QCOMPARE(face.role(), QAccessible::Grouping);
        QVERIFY(face.valueInterface() == nullptr);
    }

    void a_still_picture_is_a_graphic_with_its_name()
    {
        PictureBox box({});
        box.setAccessibleName(u"Artist"_s);
        const QAccessibleInterface& face = face_of(box);
        QCOMPARE(face.role(), QAccessible::Graphic);
        QCOMPARE(face.text(QAccessible::Name), u"Artist"_s);
        QVERIFY(!face.state().checkable);
        QVERIFY(!face.state().focusable);
    }

    void the_bars_of_the_main_window()
    {
        const TestDisk disk;
        QuilmoMain window;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto& volume = *window.findChild<PictureBox*>(u"Picture_back_volume"_s);
        auto& position = *window.findChild<PictureBox*>(u"Picture_back_play_index"_s);
        auto& mute = *window.findChild<PictureBox*>(u"muteBtn"_s);
        QCOMPARE(face_of(volume).role(), QAccessible::Slider);
        QCOMPARE(face_of(position).role(), QAccessible::Slider);
        QCOMPARE(face_of(volume).valueInterface()->currentValue(), QVariant(35));
        QCOMPARE(face_of(position).valueInterface()->currentValue(), QVariant(0));

        mute.setFocus();
        QTest::keyClick(&mute, Qt::Key_Tab);
        QVERIFY(volume.hasFocus());
        QTest::keyClick(&volume, Qt::Key_Right);
        QCOMPARE(shared.vol_type, 40);
        QCOMPARE(face_of(volume).valueInterface()->currentValue(), QVariant(40));
        QTest::keyClick(&position, Qt::Key_Right);
        QCOMPARE(face_of(position).valueInterface()->currentValue(), QVariant(0));
    }
};

QUILMO_UI_TEST(TestBarKeys)

#include "test_bar_keys.moc"
