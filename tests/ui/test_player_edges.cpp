#include "Driver.h"
#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "heard_sound.h"
#include "platform/twips.h"
#include "tagged_files.h"
#include "test_main.h"

#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString music = u"C:\\Music"_s;
const QString others = u"C:\\Others"_s;

/// So many frames of silence; 300 of them are 7.8 seconds.
QByteArray sound(int frames = 300)
{
    return sample_audio({.frames = frames});
}

} // namespace

/// The player of the real window, with real files, at the borders of what it does.
class TestPlayerEdges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void a_knob_dragged_past_the_right_end_ends_the_track();
    void the_music_outlasts_its_folder_and_goes_on_in_the_new_one();
    void the_music_stays_stopped_in_a_folder_without_files();
    void a_list_of_one_row_begins_anew();
    void a_list_of_one_row_begins_anew_data();
    void short_files_go_by_one_after_the_other();
    void files_that_fail_do_no_harm();
    void a_file_that_fails_waits_for_ever();
    void a_file_removed_while_it_plays_plays_on_and_opens_no_more();
    void an_exit_while_muted_after_a_start_forgets_the_volume();
    void minutes_of_three_digits_are_shown_whole();
    void a_playing_file_is_not_renamed_in_the_list();
    void a_stopped_file_is_renamed_in_the_list_and_lost_to_the_player();

private:
    void write(const QString& name, const QByteArray& content, const QString& folder = music) const;
    void open_window(const QString& folder = music);
    void close_window();
    template<typename Control> Control& control(const QString& name) const { return driver_->control<Control>(name); }
    ListView& list() const { return control<ListView>(u"lvListView"_s); }
    QTimer& poll() const { return control<QTimer>(u"UpdatePos"_s); }
    QString time() const { return control<QLabel>(u"CurrentTime"_s).text(); }
    QString total() const { return control<QLabel>(u"TotalTime"_s).text(); }
    QString path_of(int row) const { return shared.current_folder + list().Item(row).Text; }
    /// Plays a row until its length is shown.
    void play(int row, const QString& length = u"00:08"_s) const;
    /// Drags the knob of the position bar past its right end; no poll comes in between.
    void drag_to_the_end() const;
    /// Types a new name over that of the selected row.
    void rename_selected_row(const QString& name) const;

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    std::unique_ptr<QuilmoMain> window_;
    std::unique_ptr<Driver> driver_;
};

void TestPlayerEdges::init()
{
    QSettings(QSettings::IniFormat, QSettings::UserScope, u"Quilmo"_s).clear();
    disk_ = std::make_unique<TestDisk>();
    disk_->make_folder(music);
    disk_->make_folder(others);
    messages_ = std::make_unique<NotedMessages>();
    shared = {};
}

void TestPlayerEdges::cleanup()
{
    close_window();
    messages_.reset();
    disk_.reset();
}

void TestPlayerEdges::write(const QString& name, const QByteArray& content, const QString& folder) const
{
    disk_->write(folder + u'\\' + name, content);
}

void TestPlayerEdges::open_window(const QString& folder)
{
    window_ = std::make_unique<QuilmoMain>();
    driver_ = std::make_unique<Driver>(*window_);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    driver_->open_node(u"C:"_s);
    driver_->click_node(folder);
}

void TestPlayerEdges::close_window()
{
    if (window_)
        window_->close();
    driver_.reset();
    window_.reset();
}

void TestPlayerEdges::play(int row, const QString& length) const
{
    driver_->double_click_row(list(), row);
    poll().setInterval(10);
    QTRY_COMPARE(total(), length);
}

void TestPlayerEdges::drag_to_the_end() const
{
    poll().stop();
    auto& knob = control<PictureBox>(u"play_index_button"_s);
    const QPoint grip = knob.rect().center();
    const auto past_the_end = [&] { return knob.mapFrom(knob.window(), QPoint(knob.window()->width(), 0)).x(); };
    QTest::mousePress(&knob, Qt::LeftButton, {}, grip);
    QMouseEvent move(QEvent::MouseMove, QPointF(past_the_end(), grip.y()),
                     knob.mapToGlobal(QPointF(past_the_end(), grip.y())), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&knob, &move);
    QTest::mouseRelease(&knob, Qt::LeftButton, {}, QPoint(past_the_end(), grip.y()));
}

void TestPlayerEdges::rename_selected_row(const QString& name) const
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(editor != nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, name);
    QTest::keyClick(editor, Qt::Key_Return);
}

void TestPlayerEdges::a_knob_dragged_past_the_right_end_ends_the_track()
{
    write(u"a.mp3"_s, sound());
    write(u"b.mp3"_s, sound());
    open_window();
    play(1);
    drag_to_the_end();
    const auto& knob = control<PictureBox>(u"play_index_button"_s);
    QCOMPARE(knob.geometry().right(), control<PictureBox>(u"Picture_back_play_index"_s).rect().right());
    QCOMPARE(shared.playing_mp3_path, path_of(1));
    poll().start();
    QTRY_COMPARE(shared.playing_mp3_path, path_of(2));
    QCOMPARE(shared.is_playing, i16(1));
}

void TestPlayerEdges::the_music_outlasts_its_folder_and_goes_on_in_the_new_one()
{
    write(u"a.mp3"_s, sound());
    write(u"x.mp3"_s, sound(), others);
    write(u"y.mp3"_s, sound(), others);
    open_window();
    play(1);
    const QString playing = path_of(1);
    driver_->click_node(others);
    QTRY_VERIFY(time() > u"00:00"_s);
    QCOMPARE(shared.playing_mp3_path, playing);
    QCOMPARE(open_descriptors(disk_->native(playing)), 1);
    drag_to_the_end();
    poll().start();
    QTRY_COMPARE(shared.playing_mp3_path, path_of(1));
    drag_to_the_end();
    poll().start();
    QTRY_COMPARE(shared.playing_mp3_path, path_of(2));
}

void TestPlayerEdges::the_music_stays_stopped_in_a_folder_without_files()
{
    write(u"a.mp3"_s, sound());
    open_window();
    play(1);
    const QString playing = path_of(1);
    driver_->click_node(others);
    QCOMPARE(list().Count(), 0);
    poll().stop();
    control<QLabel>(u"CurrentTime"_s).setText(u"untouched"_s);
    drag_to_the_end();
    poll().start();
    QTRY_COMPARE(time(), u"00:00"_s); // the second poll: the first one shows the end
    QVERIFY(poll().isActive());
    QCOMPARE(total(), u"00:08"_s);
    QCOMPARE(shared.is_playing, i16(1));
    QCOMPARE(shared.playing_mp3_path, playing);
}

void TestPlayerEdges::a_list_of_one_row_begins_anew_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("next") << u"FastBtn"_s;
    QTest::newRow("previous") << u"ReBtn"_s;
}

void TestPlayerEdges::a_list_of_one_row_begins_anew()
{
    QFETCH(const QString, button);
    write(u"a.mp3"_s, sound());
    open_window();
    play(1);
    driver_->click(u"frontBtn"_s);
    QTRY_VERIFY(time() >= u"00:05"_s);
    poll().stop();
    driver_->click(button);
    QCOMPARE(time(), u"00:00"_s);
    QCOMPARE(control<QWidget>(u"play_index_button"_s).x(), 0);
    poll().setInterval(10);
    QTRY_COMPARE(total(), u"00:08"_s);
    QVERIFY(time() < u"00:05"_s);
    QCOMPARE(shared.playing_mp3_path, path_of(1));
}

void TestPlayerEdges::short_files_go_by_one_after_the_other()
{
    write(u"a.mp3"_s, sound(4)); // a tenth of a second
    write(u"b.mp3"_s, sound(2));
    write(u"c.mp3"_s, sound());
    open_window();
    driver_->double_click_row(list(), Driver::row_of(list(), u"a.mp3"_s));
    poll().setInterval(10);
    QTRY_COMPARE(shared.playing_mp3_path, music + u"\\b.mp3"_s);
    poll().setInterval(10);
    QTRY_COMPARE(shared.playing_mp3_path, music + u"\\c.mp3"_s);
    poll().setInterval(10);
    QTRY_COMPARE(total(), u"00:08"_s);
}

void TestPlayerEdges::files_that_fail_do_no_harm()
{
    const QList<QByteArray> contents{{}, "no music\n"_ba.repeated(200), sound(1).first(100), QByteArray(5000, '\xff')};
    for (int number = 0; number < 100; ++number)
        write(u"bad %1.mp3"_s.arg(number, 3), contents[number % contents.size()]);
    write(u"good.mp3"_s, sound());
    open_window();
    const int good = Driver::row_of(list(), u"good.mp3"_s);
    driver_->click_row(list(), good);
    driver_->click(u"PlayBtn"_s);
    for (int step = 0; step < 100; ++step) {
        driver_->click(u"FastBtn"_s);
        QCOMPARE(total(), u"00:00"_s);
        QCOMPARE(shared.is_playing, i16(1));
        QVERIFY(shared.playing_mp3_path.contains(u"bad "_s));
    }
    driver_->click(u"FastBtn"_s);
    QCOMPARE(shared.playing_mp3_path, path_of(good));
    poll().setInterval(10);
    QTRY_COMPARE(total(), u"00:08"_s);
    QCOMPARE(messages_->take(), QStringList());
}

void TestPlayerEdges::a_file_that_fails_waits_for_ever()
{
    write(u"a.mp3"_s, "no music");
    write(u"b.mp3"_s, sound());
    open_window();
    driver_->double_click_row(list(), Driver::row_of(list(), u"a.mp3"_s));
    poll().setInterval(1);
    int polls = 0;
    connect(&poll(), &QTimer::timeout, this, [&polls] { ++polls; });
    QTRY_VERIFY(polls > 50);
    QCOMPARE(shared.playing_mp3_path, music + u"\\a.mp3"_s);
    QCOMPARE(shared.is_playing, i16(1));
    QCOMPARE(time() + total(), u"00:0000:00"_s);
    driver_->click(u"frontBtn"_s);
    driver_->click(u"backBtn"_s);
    QCOMPARE(time(), u"00:00"_s);
}

void TestPlayerEdges::a_file_removed_while_it_plays_plays_on_and_opens_no_more()
{
    write(u"a.mp3"_s, sound());
    open_window();
    play(1);
    QVERIFY(QFile::remove(QFile::decodeName(disk_->native(path_of(1)))));
    QTRY_VERIFY(time() > u"00:00"_s);
    QCOMPARE(total(), u"00:08"_s);
    driver_->click(u"PlayBtn"_s);
    poll().setInterval(1);
    int polls = 0;
    connect(&poll(), &QTimer::timeout, this, [&polls] { ++polls; });
    QTRY_VERIFY(polls > 50);
    QCOMPARE(total(), u"00:00"_s);
    QCOMPARE(messages_->take(), QStringList());
}

void TestPlayerEdges::an_exit_while_muted_after_a_start_forgets_the_volume()
{
    write(u"a.mp3"_s, sound());
    open_window();
    auto* knob = &control<PictureBox>(u"volume_button"_s);
    const int place = knob->x();
    QVERIFY(place > 0);
    QTest::mouseClick(&control<PictureBox>(u"muteBtn"_s), Qt::LeftButton);
    driver_->double_click_row(list(), 1);
    QCOMPARE(knob->x(), place);
    close_window();
    shared = {};
    open_window();
    knob = &control<PictureBox>(u"volume_button"_s);
    QCOMPARE(shared.vol_type, i16(0));
    QCOMPARE(knob->x(), 0);
    QCOMPARE(shared.is_muted, i16(0));
}

void TestPlayerEdges::minutes_of_three_digits_are_shown_whole()
{
    open_window();
    for (const QString& name : {u"CurrentTime"_s, u"TotalTime"_s}) {
        auto& label = control<QLabel>(name);
        label.setText(u"100:00"_s);
        QVERIFY(label.sizeHint().width() <= label.width());
    }
}

void TestPlayerEdges::a_playing_file_is_not_renamed_in_the_list()
{
    write(u"a.mp3"_s, sound());
    open_window();
    play(1);
    const QString path = path_of(1);
    rename_selected_row(u"new.mp3"_s);
    QCOMPARE(messages_->take(), QStringList{path + u" is playing"_s});
    QVERIFY(disk_->exists(path));
    QCOMPARE(open_descriptors(disk_->native(path)), 1);
    QTRY_VERIFY(time() > u"00:00"_s);
}

void TestPlayerEdges::a_stopped_file_is_renamed_in_the_list_and_lost_to_the_player()
{
    write(u"a.mp3"_s, sound());
    open_window();
    play(1);
    const QString path = path_of(1);
    driver_->click(u"StopBtn"_s);
    QCOMPARE(open_descriptors(disk_->native(path)), 1);
    driver_->click_row(list(), 1);
    rename_selected_row(u"new.mp3"_s);
    QCOMPARE(messages_->take(), QStringList());
    QVERIFY(!disk_->exists(path));
    QVERIFY(disk_->exists(music + u"\\new.mp3"_s));
    QCOMPARE(open_descriptors(disk_->native(music + u"\\new.mp3"_s)), 0);
    QCOMPARE(shared.is_playing, i16(0));
    driver_->click(u"PlayBtn"_s);
    poll().setInterval(10);
    QTRY_COMPARE(total(), u"00:08"_s);
    QCOMPARE(shared.playing_mp3_path, music + u"\\new.mp3"_s);
}

QUILMO_UI_TEST(TestPlayerEdges)
#include "test_player_edges.moc"
