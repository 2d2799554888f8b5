#include "Driver.h"
#include "core/mod_of_grobal_var.h"
#include "frame/QuilmoMain.h"
#include "heard_sound.h"
#include "platform/MsgBox.h"
#include "platform/own_words.h"
#include "selection/final_list.h"
#include "tagged_files.h"
#include "test_main.h"

#include <QTest>

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace fs = std::filesystem;

namespace {

const QString folder = u"C:\\Music\\"_s;
const QString tagged_name = u"take.mp3"_s;
const QString fif_name = u"[Ann][Sea][Rock].mp3"_s;

/// How many descriptors of the file at this path the process has.
int descriptors_of(const QByteArray& native)
{
    int count = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        count += fs::read_symlink(entry.path(), gone) == native.toStdString() ? 1 : 0;
    }
    return count;
}

/// Notes, in the kernel's order, what happens to a file of a folder.
class FileWatch
{
public:
    /// The file is watched a second time by itself: the kernel makes one of two equal events that come in a row.
    FileWatch(const QByteArray& native_folder, const QByteArray& native_file) : watch_(inotify_init1(IN_NONBLOCK))
    {
        inotify_add_watch(watch_, native_folder.constData(), IN_OPEN | IN_CLOSE | IN_MOVED_FROM);
        inotify_add_watch(watch_, native_file.constData(), IN_OPEN | IN_CLOSE);
    }
    ~FileWatch() { close(watch_); }
    Q_DISABLE_COPY_MOVE(FileWatch)

    /// With how many descriptors a file of this name was moved away, if it had so many when the watch began; -1 if it
    /// was not moved.
    int descriptors_at_move(const QByteArray& name, int at_begin) const
    {
        int count = at_begin;
        alignas(inotify_event) std::array<char, 65536> events{};
        const ssize_t size = read(watch_, events.data(), events.size());
        for (ssize_t place = 0; place < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + place);
            place += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            if (event->len == 0 || name != event->name)
                continue;
            if ((event->mask & IN_MOVED_FROM) != 0)
                return count;
            count += (event->mask & IN_OPEN) != 0 ? 1 : -1;
        }
        return -1;
    }

private:
    int watch_;
};

} // namespace

class TestPlayerInWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void a_double_click_plays();
    void buttons_step_and_stop();
    void the_end_goes_on_with_the_next_row();
    void the_position_bar_seeks();
    void the_volume_bar_sets_the_level();
    void mute_and_its_picture();
    void closing_while_playing();
    void closing_ends_the_timers();
    void a_rename_brings_the_file_back();
    void a_rename_brings_the_file_back_data();
    void a_refused_rename_lets_go_of_the_file_meanwhile();
    void a_missing_sound_device_is_told_once();

private:
    void open_window();
    template<typename Control> Control& control(const QString& name) const { return driver_->control<Control>(name); }
    ListView& list() const { return control<ListView>(u"lvListView"_s); }
    QString total() const { return control<QLabel>(u"TotalTime"_s).text(); }
    void double_click(const QString& name) const { driver_->double_click_row(list(), Driver::row_of(list(), name)); }
    void play(const QString& name) const;
    QByteArray native(const QString& name) const { return disk_->native(folder + name); }
    void rename(const QString& way) const;

    std::unique_ptr<TestDisk> disk_;
    std::unique_ptr<NotedMessages> messages_;
    std::unique_ptr<QuilmoMain> window_;
    std::unique_ptr<Driver> driver_;
};

void TestPlayerInWindow::init()
{
    disk_ = std::make_unique<TestDisk>();
    shared = {};
    messages_ = std::make_unique<NotedMessages>();
    for (const QString& name : {tagged_name, u"other.mp3"_s, u"third.mp3"_s})
        disk_->write(folder + name, sample_audio({.frames = 300}) + sample_tag(tag_of("Ann", "Sea")));
}

void TestPlayerInWindow::cleanup()
{
    driver_.reset();
    window_.reset();
    messages_.reset();
    disk_.reset();
}

void TestPlayerInWindow::open_window()
{
    window_ = std::make_unique<QuilmoMain>();
    driver_ = std::make_unique<Driver>(*window_);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    driver_->open_node(u"C:"_s);
    driver_->click_node(u"C:\\Music"_s);
    QCOMPARE(list().Count(), 3);
}

/// Plays a file until its length is shown: 300 frames are 7.8 seconds.
void TestPlayerInWindow::play(const QString& name) const
{
    double_click(name);
    control<QTimer>(u"UpdatePos"_s).setInterval(10);
    QTRY_COMPARE(total(), u"00:08"_s);
}

void TestPlayerInWindow::rename(const QString& way) const
{
    if (way == u"save"_s) {
        driver_->click(u"cmdSave"_s);
    } else if (way == u"auto convert"_s) {
        Driver::in_next_dialog([](QDialog& dialog) {
            const Driver in_dialog(dialog);
            in_dialog.click(u"freeview"_s);
            in_dialog.click(u"autoconvert"_s);
            in_dialog.click(u"Cancel"_s);
        });
        driver_->right_click_row(list(), list().SelectedItem());
        driver_->choose_from_popup(u"mnu_ListView"_s, u"mnu_ListView_auto"_s);
    } else {
        driver_->click_check_box(list(), list().SelectedItem());
        Driver::in_next_dialog([&](QDialog& dialog) {
            const Driver in_dialog(dialog);
            if (way == u"batch"_s) {
                in_dialog.click(u"Change_FIF"_s);
            } else {
                Driver::in_next_dialog([](QDialog& edit) { Driver(edit).click(u"cmdSave"_s); });
                in_dialog.double_click_row(in_dialog.control<ListView>(u"Possible_ListView"_s), 1);
            }
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        driver_->click(u"Change_all"_s);
    }
}

void TestPlayerInWindow::a_double_click_plays()
{
    open_window();
    double_click(u"other.mp3"_s);
    QCOMPARE(shared.is_playing, i16(1));
    QCOMPARE(shared.playing_mp3_path, folder + u"other.mp3"_s);
    QCOMPARE(control<TextBox>(u"label_title_of_player"_s).Text(), u"other"_s);
    QVERIFY(control<QWidget>(u"play_index_button"_s).isVisible());
    QTRY_COMPARE(total(), u"00:08"_s);
    QTRY_VERIFY(control<QLabel>(u"CurrentTime"_s).text() >=
                u"00:01"_s); // the second poll, and it is heard in real time
    QVERIFY(control<QWidget>(u"play_index_button"_s).x() > 0);
}

void TestPlayerInWindow::buttons_step_and_stop()
{
    open_window();
    const QStringList names = {list().Item(1).Text, list().Item(2).Text, list().Item(3).Text};
    driver_->click_row(list(), 1);
    driver_->click(u"PlayBtn"_s);
    QCOMPARE(shared.playing_mp3_path, folder + names[0]);
    driver_->click(u"FastBtn"_s);
    QCOMPARE(shared.playing_mp3_path, folder + names[1]);
    QCOMPARE(control<TextBox>(u"txtFilename"_s).Text(), names[1]);
    QCOMPARE(list().SelectedItem(), 2);
    driver_->click(u"ReBtn"_s);
    driver_->click(u"ReBtn"_s);
    QCOMPARE(shared.playing_mp3_path, folder + names[2]);
    QTRY_COMPARE(descriptors_of(native(names[2])), 1);
    QCOMPARE(descriptors_of(native(names[0])), 0);
    driver_->click(u"StopBtn"_s);
    QCOMPARE(shared.is_playing, i16(0));
    QVERIFY(!control<QWidget>(u"play_index_button"_s).isVisible());
    QCOMPARE(shared.playing_mp3_path, folder + names[2]);
}

void TestPlayerInWindow::the_end_goes_on_with_the_next_row()
{
    open_window();
    play(list().Item(1).Text);
    driver_->click(u"frontBtn"_s);
    QCOMPARE(shared.playing_mp3_path, folder + list().Item(1).Text);
    driver_->click(u"backBtn"_s);
    driver_->click(u"frontBtn"_s);
    control<UsrButton>(u"frontBtn"_s).setFocus();
    QTest::keyClick(&control<UsrButton>(u"frontBtn"_s), Qt::Key_Space);
    QTRY_COMPARE(shared.playing_mp3_path, folder + list().Item(2).Text);
    QCOMPARE(shared.is_playing, i16(1));
}

void TestPlayerInWindow::the_position_bar_seeks()
{
    open_window();
    play(tagged_name);
    auto& track = control<PictureBox>(u"Picture_back_play_index"_s);
    QTest::mouseClick(&track, Qt::LeftButton, {}, QPoint(track.width() / 2, 4));
    QTRY_VERIFY(control<QLabel>(u"CurrentTime"_s).text() >= u"00:03"_s);
}

void TestPlayerInWindow::the_volume_bar_sets_the_level()
{
    open_window();
    QCOMPARE(shared.volume_word, i32(0x596A596A));
    auto& track = control<PictureBox>(u"Picture_back_volume"_s);
    QTest::mouseClick(&track, Qt::LeftButton, {}, QPoint(track.width() - 1, 4));
    QCOMPARE(shared.vol_type, i16(99));
    QTest::mouseClick(&track, Qt::LeftButton, {}, QPoint(0, 4));
    QCOMPARE(shared.vol_type, i16(0));
    QCOMPARE(shared.volume_word, i32(0));
}

void TestPlayerInWindow::mute_and_its_picture()
{
    open_window();
    auto& button = control<PictureBox>(u"muteBtn"_s);
    const QImage rest = button.grab().toImage();
    QTest::mouseMove(&button, QPoint(5, 5));
    QTRY_VERIFY(button.grab().toImage() != rest);
    QTest::mouseMove(&control<PictureBox>(u"Picture_mp3_back"_s), QPoint(12, 12));
    QTRY_VERIFY(button.grab().toImage() == rest);
    control<UsrButton>(u"PlayBtn"_s).SetMoveImg();
    QTest::mouseMove(&control<PictureBox>(u"Picture_mp3_back"_s), QPoint(14, 12));
    QTRY_COMPARE(control<UsrButton>(u"PlayBtn"_s).shown(), UsrButton::Shown::up);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(shared.is_muted, i16(1));
    QCOMPARE(shared.volume_word, i32(0));
}

void TestPlayerInWindow::closing_while_playing()
{
    open_window();
    play(tagged_name);
    QCOMPARE(descriptors_of(native(tagged_name)), 1);
    window_->close();
    driver_.reset();
    window_.reset();
    QCOMPARE(descriptors_of(native(tagged_name)), 0);
}

void TestPlayerInWindow::closing_ends_the_timers()
{
    disk_->write(folder + u"third.mp3"_s, sample_audio({.frames = 10})); // a length that rounds to nothing
    open_window();
    double_click(u"third.mp3"_s);
    window_->close();
    for (const QString& timer : {u"UpdatePos"_s, u"Timer_of_text_scroll"_s, u"Timer_mp3_back"_s, u"Timer_mp3_front"_s})
        QVERIFY(!control<QTimer>(timer).isActive());
}

void TestPlayerInWindow::a_rename_brings_the_file_back_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("playing");
    for (const QString& way : {u"save"_s, u"auto convert"_s, u"batch"_s, u"edit"_s}) {
        QTest::newRow(qPrintable(way + u" while it plays"_s)) << way << true;
        QTest::newRow(qPrintable(way + u" while it stands stopped"_s)) << way << false;
    }
}

void TestPlayerInWindow::a_rename_brings_the_file_back()
{
    QFETCH(const QString, way);
    QFETCH(const bool, playing);
    open_window();
    play(tagged_name);
    if (!playing)
        driver_->click(u"StopBtn"_s);
    const FileWatch watch(disk_->native(folder.chopped(1)), native(tagged_name));
    const int open_before = descriptors_of(native(tagged_name));
    QCOMPARE(open_before, 1);
    rename(way);
    QCOMPARE(messages_->take(), QStringList());
    QVERIFY(!disk_->exists(folder + tagged_name));
    QCOMPARE(watch.descriptors_at_move(tagged_name.toUtf8(), open_before), 0);
    QCOMPARE(shared.playing_mp3_path, folder + fif_name);
    QCOMPARE(shared.is_playing, i16(playing ? 1 : 0));
    QCOMPARE(control<QTimer>(u"UpdatePos"_s).isActive(), playing);
    QCOMPARE(shared.scroll_title, fif_name.chopped(4));
    // Both dialogs of the final list stop without the stop button, which alone hides the knob.
    const auto& knob = control<QWidget>(u"play_index_button"_s);
    QCOMPARE(knob.isVisible(), playing || way == u"batch"_s || way == u"edit"_s);
    QTRY_COMPARE(descriptors_of(native(fif_name)), 1);
    if (playing) {
        QTRY_COMPARE(total(), u"00:08"_s);
    } else {
        QCOMPARE(control<QLabel>(u"CurrentTime"_s).text(), u"00:00"_s);
        QCOMPARE(total(), u"00:00"_s); // no poll shows the length
        QCOMPARE(knob.x(), 0);
    }
}

void TestPlayerInWindow::a_refused_rename_lets_go_of_the_file_meanwhile()
{
    fs::rename(native(u"third.mp3"_s).toStdString(), native(fif_name).toStdString());
    open_window();
    play(tagged_name);
    int descriptors_at_message = -1;
    set_message_box(
        [&](const QString&, int, const QString&) { descriptors_at_message = descriptors_of(native(tagged_name)); });
    driver_->click(u"cmdSave"_s);
    QCOMPARE(descriptors_at_message, 0);
    QCOMPARE(shared.playing_mp3_path, folder + tagged_name);
    QCOMPARE(shared.is_playing, i16(1));
    QTRY_COMPARE(total(), u"00:08"_s);
}

void TestPlayerInWindow::a_missing_sound_device_is_told_once()
{
    const ChosenVariable chosen("SDL_AUDIODRIVER", "nonsense");
    open_window();
    double_click(tagged_name);
    auto& bar = control<StatusBar>(u"StatusBar1"_s);
    QTRY_COMPARE(bar.notice(), own_word(Word::no_audio_device));
    QCOMPARE(control<PictureBox>(u"muteBtn"_s).toolTip(), own_word(Word::no_audio_device));
    QCOMPARE(messages_->take(), QStringList());
    QTRY_COMPARE(total(), u"00:08"_s);
    bar.show_notice(u"another"_s);
    double_click(u"other.mp3"_s);
    QTRY_COMPARE(total(), u"00:08"_s);
    QCOMPARE(bar.notice(), u"another"_s);
}

QUILMO_UI_TEST(TestPlayerInWindow)
#include "test_player_in_window.moc"
