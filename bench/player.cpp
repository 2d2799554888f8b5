#include "player.h"

#include "bench_disk.h"
#include "floor.h"
#include "platform/controls/ListView.h"
#include "platform/media_player/MediaPlayer.h"
#include "player/Playback.h"
#include "sample_tones.h"

#include <QCoreApplication>
#include <QFile>

#include <sys/resource.h>

#include <chrono>
#include <functional>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr int frames_of_5_mb = 11963;

enum class Length
{
    counted,
    told,
};

/// A drive with one song on it.
class SongDisk
{
public:
    explicit SongDisk(Length length)
    {
        // High tones, so that the decoder has the whole range of frequencies to work out, as with music.
        const ToneAudio audio{.frames = frames_of_5_mb, .tone = [](int frame, int channel) {
                                  return Tone{.step = 480 + frame % 50 + channel, .gain = 180};
                              }};
        const QByteArray front = length == Length::told
                                     ? tone_info_frame(audio, {.is_variable = false, .frames = audio.frames})
                                     : QByteArray();
        QFile file(QFile::decodeName(native_path()));
        if (!file.open(QIODevice::WriteOnly) || file.write(front + tone_audio(audio)) < 0)
            qFatal("can't write %s", native_path().constData());
    }

    QByteArray native_path() const { return disk_.native() + "/song.mp3"; }
    QString path() const { return u"C:\\song.mp3"_s; }

private:
    BenchDisk disk_;
};

void wait_until(const std::function<bool()>& has_come)
{
    while (!has_come())
        std::this_thread::sleep_for(std::chrono::microseconds(20));
}

/// Opens the song and waits for its first sample to go out; gives the seconds until its length was known.
double play(MediaPlayer& player, const SongDisk& song)
{
    const auto start = std::chrono::steady_clock::now();
    player.Open(song.path());
    wait_until([&player] { return player.SelectionEnd() > 0; });
    const std::chrono::duration<double> until_ready = std::chrono::steady_clock::now() - start;
    wait_until([&player] { return player.CurrentPosition() > 0; });
    return until_ready.count();
}

void open_work(benchmark::State& state, Length length)
{
    const SongDisk song(length);
    MediaPlayer player;
    play(player, song);
    double seconds = 0;
    for ([[maybe_unused]] auto round : state)
        seconds += play(player, song);
    state.counters["ready"] = benchmark::Counter(seconds, benchmark::Counter::kAvgIterations);
}

/// Playback with the controls that it acts on, on a form that is shown.
struct PlayerPanel
{
    explicit PlayerPanel(MediaPlayer& media_player) : player(media_player)
    {
        form.resize(600, 100);
        form.show();
    }

    template<typename Control> Placed<Control> placed(Control* control, int width)
    {
        return {*control, Place(*control, 0, 0, width, 250)};
    }

    MediaPlayer& player;
    QWidget form;
    ListView list;
    Placed<TextBox> title_box = placed(new TextBox(&form), 3000);
    QTimer title_timer;
    TitleScroller title{title_box, title_timer, form};
    QLabel CurrentTime{&form};
    QLabel TotalTime{&form};
    Placed<PictureBox> track = placed(new PictureBox({}, &form), 7000);
    Placed<PictureBox> knob = placed(new PictureBox({}, &*track), 250);
    Placed<PictureBox> volume_track = placed(new PictureBox({}, &form), 1200);
    Placed<PictureBox> volume_knob = placed(new PictureBox({}, &*volume_track), 200);
    UsrButton backBtn{&form};
    UsrButton frontBtn{&form};
    QTimer UpdatePos;
    QTimer Timer_mp3_back;
    QTimer Timer_mp3_front;
    Playback playback{{.Player = player,
                       .lvListView = list,
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
};

/// Seconds that the process has spent on a processor.
double processor_seconds()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

} // namespace

void open_counted_floor(benchmark::State& state)
{
    const SongDisk song(Length::counted);
    for ([[maybe_unused]] auto round : state)
        read_whole(song.native_path().constData());
}

void open_counted_work(benchmark::State& state)
{
    open_work(state, Length::counted);
}

void open_told_floor(benchmark::State& state)
{
    const SongDisk song(Length::told);
    for ([[maybe_unused]] auto round : state)
        read_first_buffer(song.native_path().constData());
}

void open_told_work(benchmark::State& state)
{
    open_work(state, Length::told);
}

void poll_values(benchmark::State& state)
{
    const SongDisk song(Length::counted);
    MediaPlayer player;
    play(player, song);
    for ([[maybe_unused]] auto round : state) {
        benchmark::DoNotOptimize(player.SelectionEnd());
        benchmark::DoNotOptimize(player.CurrentPosition());
    }
}

void poll_tick(benchmark::State& state)
{
    const SongDisk song(Length::counted);
    MediaPlayer player;
    play(player, song);
    PlayerPanel panel(player);
    for ([[maybe_unused]] auto round : state) {
        panel.playback.UpdatePos_Timer();
        QCoreApplication::processEvents();
    }
}

void play_share(benchmark::State& state)
{
    constexpr auto listening = std::chrono::seconds(4);
    const SongDisk song(Length::counted);
    MediaPlayer player;
    play(player, song);
    for ([[maybe_unused]] auto round : state) {
        const double before = processor_seconds();
        std::this_thread::sleep_for(listening);
        state.counters["cpu_percent"] =
            100 * (processor_seconds() - before) / std::chrono::duration<double>(listening).count();
    }
}
