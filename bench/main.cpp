// The program's work beside the bare system calls of the same work, in one run, printed as ratios.

#include "bench_disk.h"
#include "convert/FIF_convert.h"
#include "core/mod_of_grobal_var.h"
#include "explorer/FileList.h"
#include "fif/mod_of_FIF.h"
#include "file_copies.h"
#include "floor.h"
#include "platform/MsgBox.h"
#include "platform/controls/ListView.h"
#include "platform/controls/StatusBar.h"
#include "player.h"
#include "player/Transport.h"
#include "selection/Picks.h"
#include "selection/final_list.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>

using namespace Qt::StringLiterals;

namespace {

constexpr int many_files = 10000;
constexpr int listed_files = 1000;

class SilentPlayer : public Transport
{
public:
    void release() override {}
    void mp3_play(const QString& /*name*/) override {}
    void mp3_stop() override {}
    void PlayBtn_Click() override {}
    void StopBtn_Click() override {}
};

// Classification

void classify_floor(benchmark::State& state)
{
    const BenchDisk disk(many_files);
    for ([[maybe_unused]] auto round : state)
        std::ranges::for_each(disk.native_paths(), read_start_and_tag);
}

void classify_work(benchmark::State& state)
{
    const BenchDisk disk(many_files);
    for ([[maybe_unused]] auto round : state) {
        for (const QString& name : disk.names()) {
            if (Check_file_for_fif(name) != 2)
                state.SkipWithError("a file was not classified by its tag");
        }
    }
}

// Filling the file list

void fill_list_view_floor(benchmark::State& state)
{
    const BenchDisk disk(many_files);
    for ([[maybe_unused]] auto round : state)
        list_and_read(disk.native_folder());
}

void fill_list_view_work(benchmark::State& state)
{
    const BenchDisk disk(many_files);
    ListView list;
    StatusBar bar({1000, 1000, 1000});
    Picks picks(list, bar,
                {.selected_tree_key = [] { return u"C:"_s; }, .click_row = [](int) {}, .show_final_list = [] {}});
    FileList files(list, bar, picks);
    list.set_ColumnHeaders(
        {{u"Name"_s, 6700}, {u"Size"_s, 1100}, {u"Type"_s, 1800}, {u"Date"_s, 2200}, {u"Byte"_s, 0}});
    list.set_Checkboxes(true);
    list.resize(800, 600);
    list.show();
    for ([[maybe_unused]] auto round : state) {
        files.FillListView(disk.folder());
        QCoreApplication::processEvents();
        if (list.Count() != many_files)
            state.SkipWithError("a file was not listed");
    }
}

// The batch conversion dialog

void fill_final_list_floor(benchmark::State& state)
{
    const BenchDisk disk(listed_files);
    for ([[maybe_unused]] auto round : state) {
        for (const QByteArray& path : disk.native_paths()) {
            look_for(path);
            read_start_and_tag(path);
        }
    }
}

void fill_final_list_work(benchmark::State& state)
{
    const BenchDisk disk(listed_files);
    disk.list_all();
    SilentPlayer player;
    FIF_convert dialog(player, {.refresh_all = [] {}, .small_icons = {}}, nullptr);
    for ([[maybe_unused]] auto round : state)
        dialog.Fill_list();
}

void change_fif_floor(benchmark::State& state)
{
    for ([[maybe_unused]] auto round : state) {
        state.PauseTiming();
        auto disk = std::make_unique<BenchDisk>(listed_files);
        state.ResumeTiming();
        for (const QByteArray& path : disk->native_paths()) {
            read_start_and_tag(path);
            rename_file(path, path + ".new");
        }
        for (const QByteArray& path : disk->native_paths())
            look_for(path + ".new");
        state.PauseTiming();
        disk.reset();
        state.ResumeTiming();
    }
}

void change_fif_work(benchmark::State& state)
{
    SilentPlayer player;
    for ([[maybe_unused]] auto round : state) {
        state.PauseTiming();
        auto disk = std::make_unique<BenchDisk>(listed_files);
        disk->list_all();
        auto dialog = std::make_unique<FIF_convert>(
            player, FIF_convert::Surroundings{.refresh_all = [] {}, .small_icons = {}}, nullptr);
        auto* button = dialog->findChild<UsrButton*>(u"Change_FIF"_s);
        state.ResumeTiming();
        button->click();
        state.PauseTiming();
        if (std::ranges::count(final_list_slots(), 1, &FinalListEntry::kind) != listed_files)
            state.SkipWithError("a file was not renamed");
        dialog.reset();
        disk.reset();
        state.ResumeTiming();
    }
}

// Rewriting tags

void write_tags_floor(benchmark::State& state)
{
    const BenchDisk disk(listed_files);
    const QByteArray tag = "TAG" + QByteArray(125, ' ');
    for ([[maybe_unused]] auto round : state) {
        for (const QByteArray& path : disk.native_paths()) {
            read_start_and_tag(path);
            write_tag(path, tag);
        }
    }
}

void write_tags_work(benchmark::State& state)
{
    const BenchDisk disk(listed_files);
    for ([[maybe_unused]] auto round : state) {
        for (const QString& name : disk.names()) {
            QString genre = u"Hip_Hop"_s;
            Write_fif_tag(disk.folder() + name, u"New Artist"_s, u"새 제목"_s, genre);
        }
    }
}

/// Prints the usual table and then, for each piece of work, how many times its floor it takes: the best of all rounds
/// of the one by the best of the other. A second floor of the same work, "/floor_NAME", gets a line of its own.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Aggregate || run.error_occurred)
                continue;
            const auto [best, fresh] = best_.try_emplace(run.run_name.function_name, run.GetAdjustedRealTime());
            if (!fresh)
                best->second = std::min(best->second, run.GetAdjustedRealTime());
        }
    }

    void Finalize() override
    {
        std::printf("\n%-18s %10s %10s %7s\n", "work", "floor ms", "work ms", "ratio");
        const std::string floor_part = "/floor";
        for (const auto& [floor_name, floor] : best_) {
            const std::size_t part = floor_name.rfind(floor_part);
            if (part == std::string::npos)
                continue;
            const std::string name = floor_name.substr(0, part);
            const auto work = best_.find(name + "/work");
            if (work != best_.end())
                std::printf("%-18s %10.2f %10.2f %7.2f\n", (name + floor_name.substr(part + floor_part.size())).c_str(),
                            floor, work->second, work->second / floor);
        }
    }

private:
    std::map<std::string, double> best_;
};

void add(const std::string& name, void (*floor)(benchmark::State&), void (*work)(benchmark::State&))
{
    for (const auto& [part, function] : {std::pair("/floor", floor), std::pair("/work", work)})
        benchmark::RegisterBenchmark((name + part).c_str(), function)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime()
            ->Repetitions(5);
}

void add_copy(const char* name, void (*function)(benchmark::State&))
{
    benchmark::RegisterBenchmark(name, function)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(1)
        ->Repetitions(3);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("SDL_AUDIODRIVER", "dummy");
    const QApplication application(argc, argv);
    set_message_box([](const QString& text, int, const QString&) { qFatal("%s", qPrintable(text)); });

    add("classify", classify_floor, classify_work);
    add("fill_list_view", fill_list_view_floor, fill_list_view_work);
    add("fill_final_list", fill_final_list_floor, fill_final_list_work);
    add("change_fif", change_fif_floor, change_fif_work);
    add("write_tags", write_tags_floor, write_tags_work);
    add("open_counted", open_counted_floor, open_counted_work);
    add("open_told", open_told_floor, open_told_work);
    benchmark::RegisterBenchmark("poll_values", poll_values);
    benchmark::RegisterBenchmark("poll_tick", poll_tick)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("play_share", play_share)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);
    add_copy("copy_large/floor", copy_large_floor);
    add_copy("copy_large/floor_synced", copy_large_floor_synced);
    add_copy("copy_large/work", copy_large_work);
    add_copy("copy_small/floor_synced", copy_small_floor_synced);
    add_copy("copy_small/work", copy_small_work);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
