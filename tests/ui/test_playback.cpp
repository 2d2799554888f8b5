#include "core/mod_of_grobal_var.h"
#include "platform/controls/message_window.h"
#include "player/Playback.h"
#include "player/TrackSteps.h"
#include "player/play_time.h"
#include "tagged_files.h"
#include "ui_explorer.h"
#include "ui_player.h"

#include <QDialog>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int track_width = 7000;
constexpr int knob_width = 250;
constexpr double middle = 50000; ///< of a file of 100,000 seconds
constexpr QPoint outside(200, 100);
const QString folder = u"C:\\Music\\"_s;

/// A button of the size that a press needs, on a form.
UsrButton& add_button(QWidget& form, int left)
{
    auto* button = new UsrButton(&form);
    button->setGeometry(left, 40, 30, 30);
    return *button;
}

template<typename Control> Placed<Control> add_placed(Control* control, int left, int width)
{
    return {*control, Place(*control, left, 0, width, 250)};
}

} // namespace

/// Playback and track steps on real controls, beside both panes of a folder, with a media control that plays nothing.
class PlayerCorner
{
public:
    PlayerCorner();

    /// Writes files of these names into the folder and shows it.
    void show_folder(const QStringList& names, const QString& path = folder);
    const ListRow& row(int index) const { return panes.list_view.Item(index); }
    QString path_of(int index) const { return shared.current_folder + row(index).Text; }
    /// The clicked row plays, and the media control has it ready; what it was told is forgotten.
    void play_row(int index);
    /// The media control comes to the end of the track, and the poll sees it.
    void end_track();
    /// A long file plays in its middle, in a window that takes the mouse.
    void play_long_file();
    void press(const UsrButton& button, Qt::MouseButton by = Qt::LeftButton);
    void move_to(QPoint point) { QTest::mouseMove(form.windowHandle(), point); }
    void release_at(QPoint point);
    QString times() const { return CurrentTime.text() + u" / "_s + TotalTime.text(); }

    ExplorerPanes panes;
    NotedPlayer player;
    QWidget form;
    Placed<TextBox> title_box = add_placed(new TextBox(&form), 0, 3000);
    QTimer title_timer;
    TitleScroller title{title_box, title_timer, form};
    QLabel CurrentTime;
    QLabel TotalTime;
    Placed<PictureBox> track = add_placed(new PictureBox({}, &form), 0, track_width);
    Placed<PictureBox> knob = add_placed(new PictureBox({}, &*track), 0, knob_width);
    Placed<PictureBox> volume_track = add_placed(new PictureBox({}, &form), 0, 1200);
    Placed<PictureBox> volume_knob = add_placed(new PictureBox({}, &*volume_track), 350, 200);
    UsrButton& backBtn = add_button(form, 0);
    UsrButton& frontBtn = add_button(form, 60);
    QTimer UpdatePos;
    QTimer Timer_mp3_back;
    QTimer Timer_mp3_front;
    Playback playback{{.Player = player,
                       .lvListView = panes.list_view,
                       .title = title,
                       .CurrentTime = CurrentTime,
                       .TotalTime = TotalTime,
                       .play_index_button = knob,
                       .Picture_back_play_index = track,
                       .volume_button = volume_knob,
                       .Picture_back_volume = volume_track,
                       .backBtn = backBtn,
                       .frontBtn = frontBtn,
                       .UpdatePos = UpdatePos,
                       .Timer_mp3_back = Timer_mp3_back,
                       .Timer_mp3_front = Timer_mp3_front}};
    TrackSteps steps{panes.list_view, playback};
};

PlayerCorner::PlayerCorner()
{
    QObject::connect(&playback, &Playback::track_ended, &playback, [this] { steps.FastBtn_Click(); });
    QObject::connect(&backBtn, &UsrButton::Click, &playback, &Playback::backBtn_Click);
    QObject::connect(&frontBtn, &UsrButton::Click, &playback, &Playback::frontBtn_Click);
    knob->hide();
    panes.disk.make_folder(folder);
    panes.disk.make_folder(u"C:\\Other"_s);
    panes.tree.init_main_tree();
    panes.click_folder(u"C:"_s);
}

void PlayerCorner::show_folder(const QStringList& names, const QString& path)
{
    for (const QString& name : names)
        panes.disk.write(path + name, tagged("Ann", "Sea"));
    panes.click_folder(path.chopped(1));
    QCOMPARE(panes.list_view.Count(), static_cast<int>(names.size()));
}

void PlayerCorner::play_row(int index)
{
    panes.list_view.clear_selection();
    panes.list.ItemClick(index);
    playback.PlayBtn_Click();
    player.length = 187.4;
    player.position = 60;
    player.take();
}

void PlayerCorner::end_track()
{
    player.position = player.length;
    playback.UpdatePos_Timer();
}

void PlayerCorner::play_long_file()
{
    form.resize(300, 200);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    show_folder({u"a.mp3"_s});
    play_row(1);
    player.length = 2 * middle;
    player.position = middle;
}

void PlayerCorner::press(const UsrButton& button, Qt::MouseButton by)
{
    QTest::mousePress(form.windowHandle(), by, {}, button.geometry().center());
}

void PlayerCorner::release_at(QPoint point)
{
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::LeftButton})
        QTest::mouseRelease(form.windowHandle(), button, {}, point);
}

class TestPlayback : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void minutes_and_seconds();
    void minutes_and_seconds_data();
    void minutes_are_a_16_bit_number();
    void fraction();

    void play_starts_the_selected_file();
    void play_without_a_selected_file_does_nothing();
    void play_without_rows_does_nothing();
    void play_again_starts_from_the_beginning();
    void play_begins_a_new_second();
    void play_opens_the_clicked_file_under_the_title_of_the_row();
    void a_short_name_leaves_no_title();
    void a_long_title_turns_on_after_stop();
    void old_play_keeps_the_text();

    void stop_keeps_what_was_played();
    void stop_button_hides_the_knob();
    void release_empties_the_file_name();

    void poll();
    void poll_data();
    void poll_waits_for_the_file();
    void poll_is_driven_by_its_timer();
    void poll_runs_while_a_dialog_is_open();
    void knob_follows_the_whole_percent();
    void knob_follows_the_whole_percent_data();
    void the_end_starts_the_next_row();

    void back();
    void back_data();
    void front();
    void front_data();
    void front_past_the_end_ends_the_track();
    void a_jump_shows_the_unrounded_position();
    void jumps_play_while_nothing_plays();
    void jumps_play_while_nothing_plays_data();
    void a_held_button_jumps_again_and_again();
    void a_held_button_jumps_again_and_again_data();
    void a_press_that_slides_off_stops_jumping();
    void a_press_that_slides_off_stops_jumping_data();
    void a_second_press_starts_the_interval_anew();

    void steps_select_and_play();
    void steps_select_and_play_data();
    void a_list_of_one_row_replays_it();
    void a_list_of_one_row_replays_it_data();
    void a_click_elsewhere_is_played_by_either_step();
    void a_click_elsewhere_is_played_by_either_step_data();
    void steps_show_the_file_they_play();
    void steps_show_the_file_they_play_data();
    void a_step_scrolls_to_its_row();
    void a_refresh_keeps_the_row_that_a_step_chose();
    void a_step_leaves_other_selected_rows_alone();
    void another_folder_is_played_from_its_first_row();
    void a_folder_with_a_file_of_the_same_name_is_stepped_on();
    void a_folder_without_rows_leaves_the_control_stopped();
    void steps_without_a_folder_do_nothing();
    void steps_without_rows_end_quietly();

private:
    std::unique_ptr<PlayerCorner> corner_;
};

void TestPlayback::init()
{
    corner_ = std::make_unique<PlayerCorner>();
}

void TestPlayback::cleanup()
{
    corner_.reset();
}

void TestPlayback::minutes_and_seconds_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("the beginning") << 0.0 << u"00:00"_s;
    QTest::newRow("a digit gets a zero in front") << 65.0 << u"01:05"_s;
    QTest::newRow("below a half") << 187.4 << u"03:07"_s;
    QTest::newRow("a half goes down to the even second") << 0.5 << u"00:00"_s;
    QTest::newRow("a half goes up to the even second") << 1.5 << u"00:02"_s;
    QTest::newRow("a half at an even second stays") << 2.5 << u"00:02"_s;
    QTest::newRow("rounded up without a carry") << 59.7 << u"00:60"_s;
    QTest::newRow("a half without a carry") << 119.5 << u"01:60"_s;
    QTest::newRow("a whole minute") << 60.0 << u"01:00"_s;
    QTest::newRow("ten minutes") << 600.0 << u"10:00"_s;
    QTest::newRow("three digits") << 6000.0 << u"100:00"_s;
    QTest::newRow("the last minute of all") << 32767.0 * 60 << u"32767:00"_s;
}

void TestPlayback::minutes_and_seconds()
{
    QFETCH(const double, seconds);
    QTEST(MinsFromSecs(seconds), "text");
}

void TestPlayback::minutes_are_a_16_bit_number()
{
    QVERIFY(!errors_ignored([] { MinsFromSecs(32768.0 * 60); }));
}

void TestPlayback::fraction()
{
    QCOMPARE(Fraction(0), 0.0);
    QCOMPARE(Fraction(3), 0.0);
    QCOMPARE(Fraction(3.25), 0.25);
    QCOMPARE(Fraction(0.875), 0.875);
}

void TestPlayback::play_starts_the_selected_file()
{
    corner_->show_folder({u"song one.mp3"_s});
    corner_->TotalTime.setText(u"04:00"_s);
    corner_->CurrentTime.setText(u"01:00"_s);
    corner_->knob.set_Left(900);
    corner_->playback.mp3_play(u"song one.mp3"_s);
    QCOMPARE(shared.is_playing, i16(1));
    QCOMPARE(shared.playing_mp3_path, folder + u"song one.mp3"_s);
    QCOMPARE(shared.scroll_title, u"song one"_s);
    QCOMPARE(corner_->title_box->Text(), u"song one"_s);
    QCOMPARE(corner_->times(), u"00:00 / 00:00"_s);
    QCOMPARE(corner_->TotalTime.accessibleName(), u"00:00"_s);
    // The volume knob stands at 35 percent; the level comes before the file.
    QCOMPARE(corner_->player.take(), (QStringList{u"volume -845"_s, u"open "_s + folder + u"song one.mp3"_s}));
    QCOMPARE(shared.vol_type, i16(35));
    QVERIFY(corner_->UpdatePos.isActive());
    QCOMPARE(corner_->UpdatePos.interval(), 1000);
    QCOMPARE(corner_->knob.Left(), 0);
    QVERIFY(!corner_->knob->isHidden());
}

void TestPlayback::play_without_a_selected_file_does_nothing()
{
    shared.selected_mp3_path.clear();
    shared.playing_mp3_path = u"C:\\before.mp3"_s;
    corner_->playback.mp3_play(u"a.mp3"_s);
    QCOMPARE(corner_->player.take(), QStringList());
    QCOMPARE(shared.is_playing, i16(0));
    QCOMPARE(shared.playing_mp3_path, u"C:\\before.mp3"_s);
    QVERIFY(!corner_->UpdatePos.isActive());
    QVERIFY(corner_->knob->isHidden());
}

void TestPlayback::play_without_rows_does_nothing()
{
    corner_->show_folder({});
    shared.selected_mp3_path = u"C:\\before.mp3"_s;
    corner_->playback.PlayBtn_Click();
    corner_->playback.PlayBtn_Click_old();
    QCOMPARE(corner_->player.take(), QStringList());
    QCOMPARE(shared.is_playing, i16(0));
}

void TestPlayback::play_again_starts_from_the_beginning()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->playback.UpdatePos_Timer();
    QCOMPARE(corner_->times(), u"01:00 / 03:07"_s);
    corner_->playback.PlayBtn_Click();
    QCOMPARE(corner_->player.take().last(), u"open "_s + folder + u"a.mp3"_s);
    QCOMPARE(corner_->times(), u"00:00 / 00:00"_s);
    QCOMPARE(corner_->knob.Left(), 0);
}

void TestPlayback::play_begins_a_new_second()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    QTRY_VERIFY(corner_->UpdatePos.remainingTime() < 950);
    corner_->playback.PlayBtn_Click();
    QVERIFY(corner_->UpdatePos.remainingTime() >= 950);
}

void TestPlayback::play_opens_the_clicked_file_under_the_title_of_the_row()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->panes.list.ItemClick(1);
    // The new folder has a file of that name, whose row comes up selected and isn't clicked.
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s}, u"C:\\Other\\"_s);
    QCOMPARE(corner_->panes.selected_names(), QStringList{u"a.mp3"_s});
    corner_->playback.PlayBtn_Click();
    QCOMPARE(corner_->player.take().last(), u"open "_s + folder + u"a.mp3"_s);
    QCOMPARE(shared.playing_mp3_path, folder + u"a.mp3"_s);

    // A row that is selected only, as code does it, gives no more than the title.
    corner_->panes.list_view.set_Selected(corner_->panes.row_of(u"b.mp3"_s), true);
    corner_->playback.PlayBtn_Click();
    QCOMPARE(corner_->player.take().last(), u"open "_s + folder + u"a.mp3"_s);
    QCOMPARE(shared.scroll_title, u"b"_s);
}

void TestPlayback::a_short_name_leaves_no_title()
{
    corner_->show_folder({u"MP3"_s});
    shared.scroll_title = u"before"_s;
    corner_->playback.PlayBtn_Click();
    QCOMPARE(shared.scroll_title, QString());
    QCOMPARE(corner_->player.take().last(), u"open "_s + folder + u"MP3"_s);
}

void TestPlayback::a_long_title_turns_on_after_stop()
{
    corner_->show_folder({QString(80, u'w') + u".mp3"_s});
    corner_->title.prepare();
    corner_->playback.PlayBtn_Click();
    QVERIFY(corner_->title_timer.isActive());
    corner_->playback.StopBtn_Click();
    QVERIFY(corner_->title_timer.isActive());
}

void TestPlayback::old_play_keeps_the_text()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->playback.PlayBtn_Click_old();
    QCOMPARE(shared.scroll_tail, u"a.mp3"_s);
    QCOMPARE(corner_->player.take().last(), u"open "_s + folder + u"a.mp3"_s);
    QCOMPARE(shared.scroll_title, u"a"_s);
}

void TestPlayback::stop_keeps_what_was_played()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->playback.UpdatePos_Timer();
    const int left = corner_->knob.Left();
    QVERIFY(left > 0);
    corner_->playback.mp3_stop();
    QCOMPARE(corner_->player.take(), QStringList{u"stop"_s});
    QCOMPARE(shared.is_playing, i16(0));
    QCOMPARE(shared.playing_mp3_path, folder + u"a.mp3"_s);
    QVERIFY(!corner_->UpdatePos.isActive());
    QCOMPARE(corner_->times(), u"00:00 / 03:07"_s);
    QVERIFY(!corner_->knob->isHidden());
    QCOMPARE(corner_->knob.Left(), left);
}

void TestPlayback::stop_button_hides_the_knob()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->playback.StopBtn_Click();
    QCOMPARE(corner_->player.take(), QStringList{u"stop"_s});
    QCOMPARE(shared.is_playing, i16(0));
    QVERIFY(corner_->knob->isHidden());
    corner_->playback.PlayBtn_Click();
    QVERIFY(!corner_->knob->isHidden());
}

void TestPlayback::release_empties_the_file_name()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->playback.release();
    QCOMPARE(corner_->player.take(), QStringList{u"file "_s});
    QCOMPARE(shared.is_playing, i16(1));
    QCOMPARE(shared.playing_mp3_path, folder + u"a.mp3"_s);
    corner_->playback.UpdatePos_Timer();
    QCOMPARE(corner_->player.take(), QStringList());
}

void TestPlayback::poll_data()
{
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("position");
    QTest::addColumn<QString>("times");
    QTest::addColumn<bool>("ends");
    QTest::newRow("in the middle") << 187.4 << 60.2 << u"01:00 / 03:07"_s << false;
    QTest::newRow("a half goes to the even second") << 100.5 << 50.5 << u"00:50 / 01:40"_s << false;
    QTest::newRow("just before the last second") << 187.4 << 186.4 << u"03:06 / 03:07"_s << false;
    QTest::newRow("the same second, before the real end") << 187.4 << 186.9 << u"03:07 / 03:07"_s << true;
    QTest::newRow("the very end") << 187.4 << 187.4 << u"03:07 / 03:07"_s << true;
    QTest::newRow("minutes of fewer digits") << 600.0 << 599.0 << u"09:59 / 10:00"_s << false;
    QTest::newRow("100 minutes, at 9:59") << 6000.0 << 599.0 << u"09:59 / 100:00"_s << false;
    QTest::newRow("100 minutes end at 10:00") << 6000.0 << 600.0 << u"10:00 / 100:00"_s << true;
    QTest::newRow("110 minutes end at 11:00") << 6600.0 << 660.0 << u"11:00 / 110:00"_s << true;
    QTest::newRow("110 minutes go on at 10:59") << 6600.0 << 659.0 << u"10:59 / 110:00"_s << false;
    QTest::newRow("a length that rounds to nothing") << 0.3 << 0.0 << u"00:00 / 00:00"_s << true;
    QTest::newRow("half a second") << 0.5 << 0.1 << u"00:00 / 00:00"_s << true;
    QTest::newRow("a second, begun") << 1.0 << 0.4 << u"00:00 / 00:01"_s << false;
}

void TestPlayback::poll()
{
    QFETCH(const double, length);
    QFETCH(const double, position);
    QFETCH(const bool, ends);
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    QObject::disconnect(&corner_->playback, &Playback::track_ended, nullptr, nullptr);
    QStringList calls_at_the_end;
    const QSignalSpy ended(&corner_->playback, &Playback::track_ended);
    QObject::connect(&corner_->playback, &Playback::track_ended, this,
                     [&] { calls_at_the_end = corner_->player.take(); });
    corner_->player.length = length;
    corner_->player.position = position;
    corner_->knob.set_Left(17);
    corner_->playback.UpdatePos_Timer();
    QTEST(corner_->times(), "times");
    QCOMPARE(ended.size(), ends ? 1 : 0);
    QCOMPARE(calls_at_the_end, ends ? QStringList{u"stop"_s} : QStringList());
    QCOMPARE(corner_->knob.Left() == 17, ends);
    QCOMPARE(shared.is_playing, i16(1));
}

void TestPlayback::poll_waits_for_the_file()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->player.length = 0;
    corner_->CurrentTime.setText(u"00:02"_s);
    corner_->knob.set_Left(17);
    corner_->playback.UpdatePos_Timer();
    QCOMPARE(corner_->times(), u"00:02 / 00:00"_s);
    QCOMPARE(corner_->knob.Left(), 17);
    QCOMPARE(corner_->player.take(), QStringList());
    QVERIFY(corner_->UpdatePos.isActive());
}

void TestPlayback::poll_is_driven_by_its_timer()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->UpdatePos.setInterval(1);
    QTRY_COMPARE(corner_->times(), u"01:00 / 03:07"_s);
}

void TestPlayback::poll_runs_while_a_dialog_is_open()
{
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s});
    corner_->play_row(1);
    corner_->UpdatePos.setInterval(1);
    corner_->player.position = corner_->player.length;
    QDialog dialog;
    // The poll of the file that comes next sees a new length only now, and closes the dialog.
    connect(&corner_->playback, &Playback::track_ended, &dialog, &QDialog::accept);
    QTimer::singleShot(5000, &dialog, &QDialog::reject);
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    QCOMPARE(shared.playing_mp3_path, corner_->path_of(2));
}

void TestPlayback::knob_follows_the_whole_percent_data()
{
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("position");
    QTest::addColumn<int>("left"); ///< the way is 6750 twips, 67.5 for each percent
    QTest::newRow("the beginning") << 200.0 << 0.0 << 0;
    QTest::newRow("a quarter") << 200.0 << 50.0 << 1688; // 1687.5
    QTest::newRow("half a percent is none") << 200.0 << 1.0 << 0;
    QTest::newRow("one percent and a half are two") << 200.0 << 3.0 << 135;
    QTest::newRow("two percent and a half are two") << 200.0 << 5.0 << 135;
    QTest::newRow("a third") << 3.0 << 1.0 << 2228; // 2227.5
    QTest::newRow("of whole seconds, not of the exact ones") << 3.4 << 1.4 << 2228;
    QTest::newRow("nearly all") << 1000.0 << 999.0 << 6750;
}

void TestPlayback::knob_follows_the_whole_percent()
{
    QFETCH(const double, length);
    QFETCH(const double, position);
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->player.length = length;
    corner_->player.position = position;
    corner_->playback.UpdatePos_Timer();
    QTEST(corner_->knob.Left(), "left");
}

void TestPlayback::the_end_starts_the_next_row()
{
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s});
    corner_->play_row(1);
    corner_->end_track();
    QCOMPARE(corner_->player.take(), (QStringList{u"stop"_s, u"volume -845"_s, u"open "_s + corner_->path_of(2)}));
    QCOMPARE(corner_->times(), u"00:00 / 00:00"_s);
    corner_->end_track();
    QCOMPARE(shared.playing_mp3_path, corner_->path_of(1)); // round and round
    QVERIFY(corner_->UpdatePos.isActive());
}

void TestPlayback::back_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<QString>("seek");
    QTest::addColumn<double>("reached");
    QTest::newRow("from 4") << 4.0 << u"seek 0"_s << 0.0;
    QTest::newRow("from 5.4, which is 5 in whole seconds") << 5.4 << u"seek 0"_s << 0.0;
    QTest::newRow("from 5.5, which is the even 6") << 5.5 << u"seek 0.5"_s << 0.5;
    QTest::newRow("from 5.6, which is 6 in whole seconds") << 5.6 << u"seek 0.6"_s << 0.6;
    QTest::newRow("from 70") << 70.0 << u"seek 65"_s << 65.0;
}

void TestPlayback::back()
{
    QFETCH(const double, position);
    QFETCH(const QString, seek);
    QFETCH(const double, reached);
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->player.position = position;
    corner_->playback.backBtn_Click();
    QCOMPARE(corner_->player.take(), QStringList{seek});
    QCOMPARE(corner_->player.position, reached);
    QCOMPARE(corner_->CurrentTime.text(), MinsFromSecs(reached));
}

void TestPlayback::front_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<QString>("seek");
    QTest::addColumn<QString>("shown");
    QTest::newRow("in the middle") << 60.0 << u"seek 65"_s << u"01:05"_s;
    QTest::newRow("the step past the end is the media control's affair") << 185.0 << u"seek 190"_s << u"03:07"_s;
}

void TestPlayback::front()
{
    QFETCH(const double, position);
    QFETCH(const QString, seek);
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->player.position = position;
    corner_->playback.frontBtn_Click();
    QCOMPARE(corner_->player.take(), QStringList{seek});
    QTEST(corner_->CurrentTime.text(), "shown");
}

void TestPlayback::front_past_the_end_ends_the_track()
{
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s});
    corner_->play_row(1);
    corner_->player.position = 185;
    corner_->playback.frontBtn_Click();
    QCOMPARE(shared.playing_mp3_path, corner_->path_of(1));
    corner_->playback.UpdatePos_Timer();
    QCOMPARE(shared.playing_mp3_path, corner_->path_of(2));
}

void TestPlayback::a_jump_shows_the_unrounded_position()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->player.position = 64.7;
    corner_->playback.backBtn_Click();
    QCOMPARE(corner_->CurrentTime.text(), u"00:60"_s);
}

void TestPlayback::jumps_play_while_nothing_plays_data()
{
    QTest::addColumn<bool>("back");
    QTest::newRow("back") << true;
    QTest::newRow("front") << false;
}

void TestPlayback::jumps_play_while_nothing_plays()
{
    QFETCH(const bool, back);
    corner_->show_folder({u"a.mp3"_s});
    corner_->player.length = 100;
    if (back)
        corner_->playback.backBtn_Click();
    else
        corner_->playback.frontBtn_Click();
    QCOMPARE(corner_->player.take(), (QStringList{u"volume -845"_s, u"open "_s + folder + u"a.mp3"_s}));
    QCOMPARE(shared.is_playing, i16(1));
}

void TestPlayback::a_held_button_jumps_again_and_again_data()
{
    QTest::addColumn<bool>("back");
    QTest::newRow("back") << true;
    QTest::newRow("front") << false;
}

void TestPlayback::a_held_button_jumps_again_and_again()
{
    QFETCH(const bool, back);
    UsrButton& button = back ? corner_->backBtn : corner_->frontBtn;
    QTimer& timer = back ? corner_->Timer_mp3_back : corner_->Timer_mp3_front;
    corner_->play_long_file();
    QVERIFY(!timer.isActive());
    corner_->press(button);
    QVERIFY(timer.isActive());
    QCOMPARE(timer.interval(), 200);
    QCOMPARE(corner_->player.take(), QStringList());
    timer.setInterval(1);
    QTRY_VERIFY(qAbs(corner_->player.position - middle) > 10);
    corner_->player.take();
    const double position = corner_->player.position;
    corner_->release_at(button.geometry().center());
    QVERIFY(!timer.isActive());
    // The Click that ends the press adds one more jump.
    QCOMPARE(corner_->player.take().size(), 1);
    QCOMPARE(corner_->player.position, position + (back ? -5 : 5));
}

void TestPlayback::a_press_that_slides_off_stops_jumping_data()
{
    a_held_button_jumps_again_and_again_data();
}

void TestPlayback::a_press_that_slides_off_stops_jumping()
{
    QFETCH(const bool, back);
    QTimer& timer = back ? corner_->Timer_mp3_back : corner_->Timer_mp3_front;
    corner_->play_long_file();
    corner_->press(back ? corner_->backBtn : corner_->frontBtn);
    corner_->move_to(outside);
    corner_->player.take();
    timer.setInterval(1);
    QTRY_VERIFY(qAbs(corner_->player.position - middle) > 10); // held outside, it goes on
    corner_->release_at(outside);
    corner_->player.take();
    QTRY_VERIFY(!timer.isActive());
    QCOMPARE(corner_->player.take(), QStringList());
}

void TestPlayback::a_second_press_starts_the_interval_anew()
{
    corner_->play_long_file();
    corner_->press(corner_->backBtn);
    QTRY_VERIFY(corner_->Timer_mp3_back.remainingTime() < 150);
    corner_->press(corner_->backBtn, Qt::RightButton);
    QVERIFY(corner_->Timer_mp3_back.remainingTime() > 150);
    corner_->release_at(outside);
}

void TestPlayback::steps_select_and_play_data()
{
    QTest::addColumn<int>("playing");
    QTest::addColumn<bool>("next");
    QTest::addColumn<int>("reached");
    QTest::newRow("next from the first") << 1 << true << 2;
    QTest::newRow("next from the middle") << 2 << true << 3;
    QTest::newRow("next from the last wraps to the first") << 3 << true << 1;
    QTest::newRow("previous from the last") << 3 << false << 2;
    QTest::newRow("previous from the middle") << 2 << false << 1;
    QTest::newRow("previous from the first wraps to the last") << 1 << false << 3;
}

void TestPlayback::steps_select_and_play()
{
    QFETCH(const int, playing);
    QFETCH(const bool, next);
    QFETCH(const int, reached);
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s});
    corner_->play_row(playing);
    if (next)
        corner_->steps.FastBtn_Click();
    else
        corner_->steps.ReBtn_Click();
    const QString path = corner_->path_of(reached);
    QCOMPARE(corner_->player.take(), (QStringList{u"volume -845"_s, u"open "_s + path}));
    QCOMPARE(shared.selected_mp3_full, path);
    QCOMPARE(shared.selected_mp3_path, path);
    QCOMPARE(shared.playing_mp3_path, path);
    QCOMPARE(shared.selected_mp3_name, corner_->row(reached).Text);
    QCOMPARE(corner_->panes.selected_names(), QStringList{corner_->row(reached).Text});
    QCOMPARE(corner_->panes.list_view.SelectedItem(), reached);
    QCOMPARE(shared.scroll_title + u".mp3"_s, corner_->row(reached).Text);
}

void TestPlayback::a_list_of_one_row_replays_it_data()
{
    QTest::addColumn<bool>("next");
    QTest::newRow("next") << true;
    QTest::newRow("previous") << false;
}

void TestPlayback::a_list_of_one_row_replays_it()
{
    QFETCH(const bool, next);
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    if (next)
        corner_->steps.FastBtn_Click();
    else
        corner_->steps.ReBtn_Click();
    QCOMPARE(corner_->player.take(), (QStringList{u"volume -845"_s, u"open "_s + folder + u"a.mp3"_s}));
    QCOMPARE(corner_->panes.selected_names(), QStringList{u"a.mp3"_s});
}

void TestPlayback::a_click_elsewhere_is_played_by_either_step_data()
{
    a_list_of_one_row_replays_it_data();
}

void TestPlayback::a_click_elsewhere_is_played_by_either_step()
{
    QFETCH(const bool, next);
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s});
    corner_->play_row(1);
    corner_->panes.list_view.clear_selection();
    corner_->panes.list.ItemClick(2);
    if (next)
        corner_->steps.FastBtn_Click();
    else
        corner_->steps.ReBtn_Click();
    QCOMPARE(shared.playing_mp3_path, corner_->path_of(2));
    QCOMPARE(corner_->panes.selected_names(), QStringList{corner_->row(2).Text});
}

void TestPlayback::steps_show_the_file_they_play_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("size");
    QTest::newRow("a FIF name") << u"[Band][One].mp3"_s << u"Band"_s << u"One"_s << u"15 byte"_s;
    QTest::newRow("a tag") << u"two.mp3"_s << u"Ann"_s << u"Sea"_s << u"7 byte"_s;
    QTest::newRow("neither") << u"노래.mp3"_s << QString() << QString() << u"8 byte"_s;
}

void TestPlayback::steps_show_the_file_they_play()
{
    QFETCH(const QString, name);
    corner_->show_folder({u"first.mp3"_s, name});
    if (name == u"노래.mp3"_s)
        corner_->panes.disk.write(folder + name, sample_audio());
    corner_->play_row(corner_->panes.row_of(u"first.mp3"_s));
    corner_->steps.FastBtn_Click();
    const NotedFields& fields = corner_->panes.fields;
    QCOMPARE(fields.filename, name);
    QTEST(fields.artist, "artist");
    QTEST(fields.title, "title");
    QTEST(fields.filesize, "size");
}

void TestPlayback::a_step_scrolls_to_its_row()
{
    QStringList names;
    for (int i = 0; i < 40; ++i)
        names.append(u"song %1.mp3"_s.arg(i));
    corner_->show_folder(names);
    ListView& list = corner_->panes.list_view;
    list.resize(500, 200);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    corner_->play_row(1);
    corner_->steps.ReBtn_Click();
    QCOMPARE(list.SelectedItem(), 40);
    QVERIFY(!list.row_rect(40).isEmpty());
    QVERIFY(list.row_rect(1).isEmpty());
    corner_->steps.FastBtn_Click();
    QVERIFY(!list.row_rect(1).isEmpty());
}

void TestPlayback::a_refresh_keeps_the_row_that_a_step_chose()
{
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s});
    corner_->play_row(1);
    corner_->steps.FastBtn_Click();
    const QString playing = shared.playing_mp3_path;
    corner_->panes.tree.refresh_all();
    QCOMPARE(corner_->panes.list_view.SelectedItem(), 2);
    QCOMPARE(shared.selected_mp3_path, playing);
    corner_->steps.FastBtn_Click();
    QCOMPARE(shared.playing_mp3_path, corner_->path_of(1));
}

void TestPlayback::a_step_leaves_other_selected_rows_alone()
{
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s});
    corner_->panes.list.ItemClick(3);
    corner_->panes.list.ItemClick(1); // with the Ctrl key: both rows are selected
    corner_->playback.PlayBtn_Click();
    corner_->steps.FastBtn_Click();
    QVERIFY(!corner_->row(1).Selected);
    QVERIFY(corner_->row(2).Selected);
    QVERIFY(corner_->row(3).Selected);
}

void TestPlayback::another_folder_is_played_from_its_first_row()
{
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s});
    corner_->play_row(1);
    corner_->show_folder({u"x.mp3"_s, u"y.mp3"_s}, u"C:\\Other\\"_s);
    QCOMPARE(corner_->player.take(), QStringList());
    QVERIFY(corner_->UpdatePos.isActive());
    QCOMPARE(shared.playing_mp3_path, folder + u"a.mp3"_s);
    corner_->end_track();
    QCOMPARE(shared.playing_mp3_path, corner_->path_of(1));
    corner_->end_track();
    QCOMPARE(shared.playing_mp3_path, corner_->path_of(2));
}

void TestPlayback::a_folder_with_a_file_of_the_same_name_is_stepped_on()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s}, u"C:\\Other\\"_s);
    corner_->steps.FastBtn_Click();
    QCOMPARE(shared.playing_mp3_path, u"C:\\Other\\b.mp3"_s);
}

void TestPlayback::a_folder_without_rows_leaves_the_control_stopped()
{
    corner_->show_folder({u"a.mp3"_s});
    corner_->play_row(1);
    corner_->show_folder({}, u"C:\\Other\\"_s);
    QCOMPARE(corner_->player.take(), QStringList());
    corner_->end_track();
    QCOMPARE(corner_->player.take(), QStringList{u"stop"_s});
    QVERIFY(corner_->UpdatePos.isActive());
    corner_->playback.UpdatePos_Timer();
    QCOMPARE(corner_->player.take(), QStringList());
    QCOMPARE(corner_->times(), u"00:00 / 03:07"_s);
}

void TestPlayback::steps_without_a_folder_do_nothing()
{
    corner_->steps.FastBtn_Click();
    corner_->steps.ReBtn_Click();
    QCOMPARE(corner_->player.take(), QStringList());
    QCOMPARE(shared.selected_mp3_full, QString());
}

void TestPlayback::steps_without_rows_end_quietly()
{
    corner_->show_folder({u"a.mp3"_s, u"b.mp3"_s});
    corner_->play_row(1);
    const QString playing = shared.playing_mp3_path;
    Q_EMIT corner_->panes.tree_view.NodeClick(corner_->panes.tree_view.Item(u"MYCOMPUTER"_s));
    QCOMPARE(corner_->panes.list_view.Count(), 0);
    QVERIFY(shared.folder_mp3_count > 0);
    corner_->steps.FastBtn_Click();
    corner_->steps.ReBtn_Click();
    QCOMPARE(corner_->player.take(), QStringList());
    QCOMPARE(shared.selected_mp3_path, playing);
    QCOMPARE(corner_->panes.messages.take(), QStringList());
}

QUILMO_UI_TEST(TestPlayback)
#include "test_playback.moc"
