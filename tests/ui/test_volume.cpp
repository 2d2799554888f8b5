#include "core/mod_of_grobal_var.h"
#include "core/user_settings.h"
#include "platform/own_words.h"
#include "platform/wave_volume.h"
#include "player/MuteButton.h"
#include "player/ctl_slider.h"
#include "player/knob.h"
#include "player/mod_volume_ctl.h"

#include "test_main.h"
#include "ui_bars.h"
#include "ui_player.h"

#include <QAccessible>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint32_t untouched = 0x12345678;

/// A track and a knob whose way is `room` twips.
struct Knob
{
    explicit Knob(int room) : track(track_widget, 0, 0, room + 240, 240) {}

    QWidget knob_widget;
    QWidget track_widget;
    Place place{knob_widget, 0, 0, 240, 240};
    Place track;
};

/// The level of a percentage, put together from its two words.
std::uint32_t level_of(int percent)
{
    const std::uint32_t right = static_cast<std::uint32_t>(percent) * 654;
    const std::uint32_t left = percent > 50 ? right + 2 : right;
    return right << 16 | left;
}

QStringList volume(int hundredths)
{
    return {u"volume %1"_s.arg(hundredths)};
}

template<typename Statement> int error_of(Statement statement)
{
    try {
        statement();
        return 0;
    } catch (const RunTimeError& error) {
        return error.number();
    }
}

Picture plain(const QColor& colour)
{
    return {QSize(24, 24), [colour](QPainter& painter, const QRectF& rect) { painter.fillRect(rect, colour); }};
}

/// A volume bar with a mute button beside it.
struct VolumeScene : Bar
{
    VolumeScene()
    {
        shared.vol_type = 50;
        restore_volume(knob, track);
        box->show();
    }

    void click_mute() { QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(310, 40)); }
    /// The image that the button shows, from 1.
    int image() const
    {
        const QColor colour = box->grab().toImage().pixelColor(12, 12);
        return static_cast<int>(colours.indexOf(colour)) + 1;
    }
    ImageList images() const
    {
        ImageList list;
        for (const QColor& colour : colours)
            list.Add(colour.name(), icon_of(plain(colour)));
        return list;
    }

    const QList<QColor> colours{Qt::green, Qt::blue, Qt::red, Qt::yellow};
    const ImageList pictures = images();
    PictureBox* const box = new PictureBox(plain(Qt::green), &window);
    Placed<PictureBox> muteBtn{*box, Place(*box, 4500, 450, 360, 360)};
    ctl_slider slider{knob, track};
    MuteButton mute{muteBtn, pictures, knob, track};
    NotedPlayer player;
};

} // namespace

class TestVolume : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        shared = {};
        waveOutSetVolume(0, untouched);
        QSettings(QSettings::IniFormat, QSettings::UserScope, u"Quilmo"_s).clear();
    }

    void cleanup()
    {
        shared = {};
        waveOutSetVolume(0, -1);
    }

    // The wave level

    void told_levels_data()
    {
        QTest::addColumn<int>("percent");
        QTest::addColumn<quint32>("level");
        QTest::newRow("0") << 0 << 0x00000000U;
        QTest::newRow("1") << 1 << 0x028E028EU;
        QTest::newRow("35") << 35 << 0x596A596AU;
        QTest::newRow("50") << 50 << 0x7FBC7FBCU;
        QTest::newRow("51") << 51 << 0x824A824CU;
        QTest::newRow("100") << 100 << 0xFF78FF7AU;
        QTest::newRow("-1") << -1 << 0xFD71FD72U;
        QTest::newRow("-50") << -50 << 0x80438044U;
    }

    void told_levels()
    {
        QFETCH(const int, percent);
        QFETCH(const quint32, level);
        set_wave_volume(checked<i16>(percent));
        QCOMPARE(wave_output_level(), level);
        QCOMPARE(static_cast<quint32>(shared.volume_word), level);
    }

    void every_percentage_doubles_both_words()
    {
        for (i16 percent = 0; percent <= 100; ++percent) {
            set_wave_volume(percent);
            QCOMPARE(wave_output_level(), level_of(percent));
            QCOMPARE(static_cast<quint32>(shared.volume_word), level_of(percent));
        }
    }

    void a_percentage_beyond_its_numbers_is_an_overflow_data()
    {
        QTest::addColumn<int>("percent");
        QTest::newRow("the product passes 16 bits") << 101;
        QTest::newRow("the largest") << 32767;
        QTest::newRow("the doubled product passes 32 bits downwards") << -51;
        QTest::newRow("the product is just inside 16 bits, the doubled one is not") << -100;
        QTest::newRow("the product passes 16 bits downwards") << -101;
        QTest::newRow("the smallest") << -32768;
    }

    void a_percentage_beyond_its_numbers_is_an_overflow()
    {
        QFETCH(const int, percent);
        shared.volume_word = 7;
        QCOMPARE(error_of([percent] { set_wave_volume(checked<i16>(percent)); }), RunTimeError::overflow);
        QCOMPARE(wave_output_level(), untouched);
        QCOMPARE(shared.volume_word, 7);
    }

    void a_level_is_folded_into_32_bits_data()
    {
        QTest::addColumn<double>("doubled");
        QTest::addColumn<int>("level");
        QTest::newRow("none") << 0.0 << 0;
        QTest::newRow("the last that stands") << 2147483646.0 << 2147483646;
        QTest::newRow("the first that is folded") << 2147483647.0 << -2147483647;
        QTest::newRow("2 more than the bits say") << 4294967292.0 << -2;
        QTest::newRow("-65536 is never given") << 4294901758.0 << -65537;
        QTest::newRow("-65536 is never given, unfolded") << -65536.0 << -65537;
        QTest::newRow("the one below") << 4294901757.0 << -65537;
        QTest::newRow("the one above") << 4294901759.0 << -65535;
        QTest::newRow("half a step to the even") << 2.5 << 2;
        QTest::newRow("one and a half to the even") << 1.5 << 2;
        QTest::newRow("the least") << -2147483648.0 << -2147483647 - 1;
    }

    void a_level_is_folded_into_32_bits()
    {
        QFETCH(const double, doubled);
        QTEST(folded_level(doubled), "level");
    }

    void a_level_below_32_bits_is_an_overflow()
    {
        QCOMPARE(error_of([] { folded_level(-2147483649.0); }), RunTimeError::overflow);
    }

    void the_wave_level_is_set_muted_or_not()
    {
        shared.is_muted = 1;
        set_wave_volume(35);
        QCOMPARE(wave_output_level(), 0x596A596AU);
    }

    // The volume asked for

    void the_volume_asked_for_is_kept_as_it_is_data()
    {
        QTest::addColumn<int>("percent");
        QTest::addColumn<int>("set");
        QTest::newRow("the smallest") << -32768 << 0;
        QTest::newRow("below 0") << -1 << 0;
        QTest::newRow("0") << 0 << 0;
        QTest::newRow("1") << 1 << 1;
        QTest::newRow("35") << 35 << 35;
        QTest::newRow("99") << 99 << 99;
        QTest::newRow("100") << 100 << 100;
        QTest::newRow("above 100") << 101 << 100;
        QTest::newRow("the largest") << 32767 << 100;
    }

    void the_volume_asked_for_is_kept_as_it_is()
    {
        QFETCH(const int, percent);
        QFETCH(const int, set);
        set_volume_percent(checked<i16>(percent));
        QCOMPARE(shared.vol_type, percent);
        QCOMPARE(wave_output_level(), level_of(set));

        waveOutSetVolume(0, untouched);
        shared.vol_type = 5;
        shared.is_muted = 1;
        set_volume_percent(checked<i16>(percent));
        QCOMPARE(shared.vol_type, percent);
        QCOMPARE(wave_output_level(), untouched);
    }

    // The player's level

    void told_player_levels_data()
    {
        QTest::addColumn<int>("percent");
        QTest::addColumn<int>("hundredths");
        QTest::newRow("0") << 0 << -10000;
        QTest::newRow("3, the last of its band") << 3 << -9700;
        QTest::newRow("4, the first of its band") << 4 << -1920;
        QTest::newRow("10, the last of its band") << 10 << -1800;
        QTest::newRow("11, the first of its band") << 11 << -1424;
        QTest::newRow("15, the last of its band") << 15 << -1360;
        QTest::newRow("16, the first of its band") << 16 << -1092;
        QTest::newRow("35") << 35 << -845;
        QTest::newRow("100") << 100 << 0;
    }

    void told_player_levels()
    {
        QFETCH(const int, percent);
        QFETCH(const int, hundredths);
        Knob knob(10000);
        NotedPlayer player;
        knob.place.set_Left(percent * 100);
        sync_player_volume(knob.place, knob.track, player);
        QCOMPARE(player.take(), volume(hundredths));
        QCOMPARE(shared.vol_type, percent);
        QCOMPARE(wave_output_level(), level_of(percent));
    }

    void every_place_of_the_knob_has_its_level()
    {
        Knob knob(10000);
        NotedPlayer player;
        for (int percent = 0; percent <= 100; ++percent) {
            const int hundredths = percent < 4    ? 100 * percent - 10000
                                   : percent < 11 ? 20 * percent - 2000
                                   : percent < 16 ? 16 * percent - 1600
                                                  : 13 * percent - 1300;
            knob.place.set_Left(percent * 100);
            sync_player_volume(knob.place, knob.track, player);
            QCOMPARE(player.take(), volume(hundredths));
            QCOMPARE(shared.vol_type, percent);
            QCOMPARE(wave_output_level(), level_of(percent));
        }
    }

    void a_knob_outside_its_track_leaves_the_player_level_data()
    {
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("percent");
        QTest::newRow("101 percent is full") << 10100 << 100;
        QTest::newRow("200 percent is full") << 20000 << 100;
        QTest::newRow("201 percent is none") << 20100 << 0;
        QTest::newRow("the largest is none") << 3276700 << 0;
        QTest::newRow("-1 percent is none") << -100 << 0;
        QTest::newRow("the smallest is none") << -3276800 << 0;
    }

    void a_knob_outside_its_track_leaves_the_player_level()
    {
        QFETCH(const int, left);
        QFETCH(const int, percent);
        Knob knob(10000);
        NotedPlayer player;
        knob.place.set_Left(left);
        sync_player_volume(knob.place, knob.track, player);
        QCOMPARE(player.take(), QStringList());
        QCOMPARE(shared.vol_type, percent);
        QCOMPARE(wave_output_level(), level_of(percent));
    }

    void the_percentage_is_rounded_with_ties_to_even_data()
    {
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("percent");
        QTest::newRow("0.49") << 49 << 0;
        QTest::newRow("0.5") << 50 << 0;
        QTest::newRow("0.51") << 51 << 1;
        QTest::newRow("1.5") << 150 << 2;
        QTest::newRow("2.5") << 250 << 2;
        QTest::newRow("3.5, in the band of 4") << 350 << 4;
        QTest::newRow("99.5") << 9950 << 100;
        QTest::newRow("100.5, in the band of 100") << 10050 << 100;
        QTest::newRow("-0.5") << -50 << 0;
    }

    void the_percentage_is_rounded_with_ties_to_even()
    {
        QFETCH(const int, left);
        QFETCH(const int, percent);
        Knob knob(10000);
        NotedPlayer player;
        knob.place.set_Left(left);
        sync_player_volume(knob.place, knob.track, player);
        QCOMPARE(shared.vol_type, percent);
        QCOMPARE(player.take(), volume(percent == 4 ? -1920 : percent == 100 ? 0 : (100 - percent) * -100));
    }

    void a_knob_that_gives_no_percentage_raises_an_error()
    {
        NotedPlayer player;
        Knob far_out(100);
        far_out.place.set_Left(32768);
        QCOMPARE(error_of([&] { sync_player_volume(far_out.place, far_out.track, player); }), RunTimeError::overflow);
        Knob as_wide(0);
        QCOMPARE(error_of([&] { sync_player_volume(as_wide.place, as_wide.track, player); }),
                 RunTimeError::division_by_zero);
        QCOMPARE(player.take(), QStringList());
        QCOMPARE(wave_output_level(), untouched);
    }

    void a_muted_start_wipes_the_volume_and_leaves_the_knob()
    {
        Knob knob(10000);
        NotedPlayer player;
        knob.place.set_Left(3500);
        shared.vol_type = 35;
        shared.is_muted = 1;
        sync_player_volume(knob.place, knob.track, player);
        QCOMPARE(shared.vol_type, 0);
        QCOMPARE(player.take(), volume(-10000));
        QCOMPARE(knob.place.Left(), 3500);
        QCOMPARE(wave_output_level(), untouched);
    }

    // The start

    void the_knob_is_restored_data()
    {
        QTest::addColumn<int>("room");
        QTest::addColumn<int>("volume");
        QTest::addColumn<int>("left");
        QTest::newRow("the left end") << 10000 << 0 << 0;
        QTest::newRow("35 percent") << 10000 << 35 << 3500;
        QTest::newRow("the right end") << 10000 << 100 << 10000;
        QTest::newRow("half a twip to the even") << 50 << 1 << 0;
        QTest::newRow("one and a half to the even") << 150 << 1 << 2;
        QTest::newRow("beyond the right end") << 10000 << 150 << 15000;
        QTest::newRow("before the left end") << 10000 << -20 << -2000;
    }

    void the_knob_is_restored()
    {
        QFETCH(const int, room);
        QFETCH(const int, volume);
        Knob knob(room);
        shared.vol_type = checked<i16>(volume);
        restore_volume(knob.place, knob.track);
        QTEST(knob.place.Left(), "left");
        QCOMPARE(shared.vol_type, volume);
        QCOMPARE(wave_output_level(), level_of(qBound(0, volume, 100)));
    }

    void a_restored_knob_gives_its_percentage_back()
    {
        for (const int room : {300, 777, 1380, 2045}) {
            for (i16 percent = 0; percent <= 100; ++percent) {
                Knob knob(room);
                shared.vol_type = percent;
                restore_volume(knob.place, knob.track);
                QCOMPARE(rounded<i16>(knob_percent(knob.place, knob.track)), percent);
            }
        }
    }

    void a_first_start_has_35_percent()
    {
        Knob knob(10000);
        read_settings();
        restore_volume(knob.place, knob.track);
        QCOMPARE(shared.vol_type, 35);
        QCOMPARE(knob.place.Left(), 3500);
        QCOMPARE(wave_output_level(), 0x596A596AU);
    }

    // Mute

    void a_click_mutes_and_gives_the_sound_back()
    {
        VolumeScene scene;
        QCOMPARE(scene.image(), 1);
        scene.click_mute();
        QCOMPARE(shared.is_muted, 1);
        QCOMPARE(scene.image(), 3);
        QCOMPARE(wave_output_level(), 0U);
        QCOMPARE(shared.volume_word, 0);
        QCOMPARE(shared.vol_type, 50);
        QCOMPARE(scene.knob.Left(), 1500);
        scene.click_mute();
        QCOMPARE(shared.is_muted, 0);
        QCOMPARE(scene.image(), 1);
        QCOMPARE(wave_output_level(), 0x7FBC7FBCU);
        QCOMPARE(shared.vol_type, 50);
        QCOMPARE(scene.player.take(), QStringList());
    }

    void the_image_follows_the_mouse()
    {
        VolumeScene scene;
        QTest::mouseMove(scene.window.windowHandle(), QPoint(312, 42));
        QCOMPARE(scene.image(), 2);
        scene.mute.take_mouse_away();
        QCOMPARE(scene.image(), 1);
        scene.click_mute();
        QTest::mouseMove(scene.window.windowHandle(), QPoint(314, 44));
        QCOMPARE(scene.image(), 4);
        scene.mute.take_mouse_away();
        QCOMPARE(scene.image(), 3);
    }

    void only_a_left_click_mutes()
    {
        const VolumeScene scene;
        QTest::mouseClick(scene.window.windowHandle(), Qt::RightButton, {}, QPoint(310, 40));
        QCOMPARE(shared.is_muted, 0);
    }

    void the_space_bar_mutes()
    {
        const VolumeScene scene;
        QVERIFY((scene.box->focusPolicy() & Qt::TabFocus) != 0);
        QTest::keyClick(scene.box, Qt::Key_Space);
        QCOMPARE(shared.is_muted, 1);
        QTest::keyClick(scene.box, Qt::Key_Space);
        QCOMPARE(shared.is_muted, 0);
    }

    void assistive_programs_know_the_state()
    {
        VolumeScene scene;
        const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(scene.box);
        QCOMPARE(face->text(QAccessible::Description), own_word(Word::sound_on));
        scene.click_mute();
        QCOMPARE(face->text(QAccessible::Description), own_word(Word::sound_off));
        scene.click_mute();
        QCOMPARE(face->text(QAccessible::Description), own_word(Word::sound_on));
    }

    void assistive_programs_press_it()
    {
        const VolumeScene scene;
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(scene.box);
        QCOMPARE(face->role(), QAccessible::CheckBox);
        QVERIFY(face->state().checkable);
        QVERIFY(!face->state().checked);
        QVERIFY(face->valueInterface() == nullptr);
        QVERIFY(face->actionInterface()->actionNames().contains(QAccessibleActionInterface::toggleAction()));
        face->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(shared.is_muted, 1);
        QCOMPARE(wave_output_level(), 0U);
        QVERIFY(face->state().checked);
        face->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(shared.is_muted, 0);
        QVERIFY(!face->state().checked);
        scene.box->setEnabled(false);
        face->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(shared.is_muted, 0);
    }

    void a_muted_bar_is_dragged_in_silence()
    {
        VolumeScene scene;
        scene.click_mute();
        scene.press(105);
        scene.move(65);
        QCOMPARE(shared.vol_type, 30);
        scene.move(45);
        scene.release(45);
        QCOMPARE(shared.vol_type, 20);
        QCOMPARE(wave_output_level(), 0U);
        scene.click_mute();
        QCOMPARE(shared.vol_type, 20);
        QCOMPARE(wave_output_level(), level_of(20));
    }

    void a_file_started_while_muted_stays_silent_in_the_player()
    {
        VolumeScene scene;
        scene.click_mute();
        sync_player_volume(scene.knob, scene.track, scene.player);
        QCOMPARE(scene.player.take(), volume(-10000));
        QCOMPARE(shared.vol_type, 0);
        scene.click_mute();
        QCOMPARE(scene.player.take(), QStringList());
        QCOMPARE(wave_output_level(), 0x7FBC7FBCU);
        QCOMPARE(shared.vol_type, 50);
        sync_player_volume(scene.knob, scene.track, scene.player);
        QCOMPARE(scene.player.take(), volume(-650));
    }

    void an_exit_while_muted_after_a_start_forgets_the_volume()
    {
        VolumeScene scene;
        scene.click_mute();
        sync_player_volume(scene.knob, scene.track, scene.player);
        write_settings();
        shared = {};
        read_settings();
        restore_volume(scene.knob, scene.track);
        QCOMPARE(shared.vol_type, 0);
        QCOMPARE(scene.knob.Left(), 0);
        QCOMPARE(wave_output_level(), 0U);
    }

    void an_exit_while_muted_alone_keeps_the_volume()
    {
        VolumeScene scene;
        scene.click_mute();
        write_settings();
        shared = {};
        read_settings();
        QCOMPARE(shared.vol_type, 50);
        QCOMPARE(shared.is_muted, 0);
    }
};

QUILMO_UI_TEST(TestVolume)

#include "test_volume.moc"
