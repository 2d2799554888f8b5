// The program's work beside the bare system calls of the same work, in one run, printed as ratios.

#include "ResultReporter.h"
#include "file_copies.h"
#include "platform/MsgBox.h"
#include "player.h"
#include "work.h"

#include <QApplication>
#include <QCommandLineParser>

#include <algorithm>
#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace {

struct Options
{
    std::string results; ///< file
    int largest = 0;     ///< most files of a piece of work
    int rounds = 0;
};

/// Takes the program's own options out of the command line.
Options take_options(int& argc, char** argv)
{
    QCommandLineParser parser;
    const QCommandLineOption results(u"results"_s, {}, u"file"_s);
    const QCommandLineOption largest(u"largest"_s, {}, u"files"_s, u"100000"_s);
    const QCommandLineOption rounds(u"rounds"_s, {}, u"number"_s, u"9"_s);
    parser.addOptions({results, largest, rounds});
    QStringList own = {QString()};
    const auto is_own = [](const char* argument) {
        return std::ranges::any_of(std::array{"--results=", "--largest=", "--rounds="}, [argument](const char* start) {
            return QByteArrayView(argument).startsWith(start);
        });
    };
    for (const char* argument : std::span(argv, static_cast<std::size_t>(argc))) {
        if (is_own(argument))
            own.append(QString::fromLocal8Bit(argument));
    }
    argc = static_cast<int>(std::remove_if(argv, argv + argc, is_own) - argv);
    parser.process(own);
    return {.results = parser.value(results).toStdString(),
            .largest = parser.value(largest).toInt(),
            .rounds = parser.value(rounds).toInt()};
}

/// A third of the rounds for what takes long.
int few_rounds(const Options& options)
{
    return std::max(1, options.rounds / 3);
}

void add(const Work& work, const Options& options)
{
    constexpr int many_files = 20000;
    for (const int size : work.sizes) {
        if (size > options.largest)
            continue;
        const std::string name = work.name + "/" + std::to_string(size);
        for (const auto& [part, measure] : {std::pair("/floor", work.floor), std::pair("/work", work.work)}) {
            if (measure != nullptr)
                benchmark::RegisterBenchmark((name + part).c_str(), measure, size)
                    ->Unit(benchmark::kMillisecond)
                    ->UseRealTime()
                    ->Iterations(std::max(1, work.files_a_round / size))
                    ->Repetitions(size > many_files ? few_rounds(options) : options.rounds);
        }
    }
}

void add_player(const char* name, void (*function)(benchmark::State&), const Options& options)
{
    benchmark::RegisterBenchmark(name, function)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Repetitions(few_rounds(options));
}

void add_copy(const char* name, void (*function)(benchmark::State&))
{
    benchmark::RegisterBenchmark(name, function)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(1)
        ->Repetitions(3);
}

void add_all(const Options& options)
{
    for (const std::vector<Work>& works : {file_works(), list_works(), dialog_works(), tree_works()}) {
        for (const Work& work : works)
            add(work, options);
    }
    add_player("open_counted/floor", open_counted_floor, options);
    add_player("open_counted/work", open_counted_work, options);
    add_player("open_told/floor", open_told_floor, options);
    add_player("open_told/work", open_told_work, options);
    add_player("poll_values", poll_values, options);
    add_player("poll_tick", poll_tick, options);
    benchmark::RegisterBenchmark("play_share", play_share)->Iterations(1)->UseRealTime()->Unit(benchmark::kMillisecond);
    add_copy("copy_large/floor", copy_large_floor);
    add_copy("copy_large/floor_synced", copy_large_floor_synced);
    add_copy("copy_large/work", copy_large_work);
    add_copy("copy_small/floor_synced", copy_small_floor_synced);
    add_copy("copy_small/work", copy_small_work);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("SDL_AUDIODRIVER", "dummy");
    const QApplication application(argc, argv);
    set_message_box([](const QString& text, int, const QString&) { qFatal("%s", qPrintable(text)); });
    const Options options = take_options(argc, argv);
    add_all(options);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    ResultReporter reporter(options.results);
    const std::size_t done = benchmark::RunSpecifiedBenchmarks(&reporter);
    return done > 0 && reporter.failures() == 0 ? 0 : 1;
}
