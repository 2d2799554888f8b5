#include "player/Playback.h"

#include "core/mod_of_grobal_var.h"
#include "platform/controls/message_window.h"
#include "player/knob.h"
#include "player/mod_volume_ctl.h"
#include "player/play_time.h"

namespace {

constexpr int poll_milliseconds = 1000;
constexpr int repeat_milliseconds = 200;
constexpr int jump_seconds = 5;
constexpr int extension_characters = 4;

void restart(QTimer& timer, int milliseconds)
{
    timer.stop();
    timer.setInterval(milliseconds);
    timer.start();
}

void show_time(QLabel& label, double seconds)
{
    const QString text = MinsFromSecs(seconds);
    label.setText(text);
    label.setAccessibleName(text);
}

} // namespace

Playback::Playback(const Controls& controls, QObject* parent) : QObject(parent), controls_(controls)
{
    connect(&controls_.UpdatePos, &QTimer::timeout, this,
            guarded([this](auto /*private_signal*/) { UpdatePos_Timer(); }));
    repeat_while_held(controls_.backBtn, controls_.Timer_mp3_back, [this] { backBtn_Click(); });
    repeat_while_held(controls_.frontBtn, controls_.Timer_mp3_front, [this] { frontBtn_Click(); });
}

// A press that slides off its button ends without a MouseUp, and the next tick finds it out.
void Playback::repeat_while_held(const UsrButton& button, QTimer& timer, const std::function<void()>& jump)
{
    connect(&button, &UsrButton::MouseDown, this, [&timer] { restart(timer, repeat_milliseconds); });
    connect(&button, &UsrButton::MouseUp, this, [&timer] { timer.stop(); });
    connect(&timer, &QTimer::timeout, this, guarded([&button, &timer, jump](auto /*private_signal*/) {
        if (button.is_held())
            jump();
        else
            timer.stop();
    }));
}

void Playback::release()
{
    controls_.Player.set_FileName({});
}

void Playback::mp3_play(const QString& name)
{
    if (shared.selected_mp3_path.isEmpty())
        return;
    shared.is_playing = 1;
    shared.playing_mp3_path = shared.selected_mp3_path;
    shared.scroll_title = name.chopped(qMin(name.size(), extension_characters));
    show_time(controls_.TotalTime, 0);
    show_time(controls_.CurrentTime, 0);
    sync_player_volume(controls_.volume_button, controls_.Picture_back_volume, controls_.Player);
    controls_.Player.Open(shared.selected_mp3_path);
    restart(controls_.UpdatePos, poll_milliseconds);
    controls_.title.lay_out();
    controls_.play_index_button.set_Left(0);
    controls_.play_index_button->show();
}

void Playback::mp3_stop()
{
    controls_.UpdatePos.stop();
    shared.is_playing = 0;
    show_time(controls_.CurrentTime, 0);
    controls_.Player.Stop();
}

void Playback::PlayBtn_Click()
{
    if (const int row = controls_.lvListView.SelectedItem(); row != 0)
        mp3_play(controls_.lvListView.Item(row).Text);
}

void Playback::StopBtn_Click()
{
    mp3_stop();
    controls_.play_index_button->hide();
}

void Playback::PlayBtn_Click_old()
{
    if (const int row = controls_.lvListView.SelectedItem(); row != 0) {
        shared.scroll_tail = controls_.lvListView.Item(row).Text;
        mp3_play(shared.scroll_tail);
    }
}

void Playback::backBtn_Click()
{
    if (shared.is_playing != 1) {
        PlayBtn_Click();
        return;
    }
    const double position = controls_.Player.CurrentPosition();
    jump_to(rounded<i32>(position) - jump_seconds > 0 ? position - jump_seconds : 0);
}

void Playback::frontBtn_Click()
{
    if (shared.is_playing != 1)
        PlayBtn_Click();
    else
        jump_to(controls_.Player.CurrentPosition() + jump_seconds);
}

void Playback::jump_to(double seconds)
{
    controls_.Player.set_CurrentPosition(seconds);
    show_time(controls_.CurrentTime, controls_.Player.CurrentPosition());
}

// The end is told by the two texts, character by character, on purpose, and nothing else tells it: a track of 100:00
// ends at 10:00.
void Playback::UpdatePos_Timer()
{
    const double length = controls_.Player.SelectionEnd();
    const i32 total = rounded<i32>(length);
    const i32 position = rounded<i32>(controls_.Player.CurrentPosition());
    if (length <= 0)
        return;
    show_time(controls_.TotalTime, total);
    show_time(controls_.CurrentTime, position);
    if (controls_.CurrentTime.text() >= controls_.TotalTime.text()) {
        controls_.Player.Stop();
        Q_EMIT track_ended();
        return;
    }
    const i32 percent = rounded<i32>(static_cast<double>(position) / total * 100);
    place_knob(controls_.play_index_button, controls_.Picture_back_play_index, percent);
}
