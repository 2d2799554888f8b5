#include "ResultReporter.h"

#include <algorithm>
#include <cstdio>

ResultReporter::ResultReporter(const std::string& results)
{
    if (!results.empty())
        results_.open(results, std::ios::app);
}

void ResultReporter::ReportRuns(const std::vector<Run>& runs)
{
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        failures_ += run.error_occurred ? 1 : 0;
        if (run.run_type == Run::RT_Aggregate || run.error_occurred)
            continue;
        const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
        const auto [best, fresh] = best_.try_emplace(run.run_name.function_name, seconds);
        if (!fresh)
            best->second = std::min(best->second, seconds);
        note(run.run_name.function_name, seconds);
        for (const auto& [counter, value] : run.counters)
            note(run.run_name.function_name + "/" + counter, value);
    }
}

void ResultReporter::Finalize()
{
    constexpr double to_milliseconds = 1000;
    std::printf("\n%-28s %10s %10s %7s\n", "work", "floor ms", "work ms", "ratio");
    const std::string floor_part = "/floor";
    for (const auto& [floor_name, floor] : best_) {
        const std::size_t part = floor_name.rfind(floor_part);
        if (part == std::string::npos)
            continue;
        const std::string name = floor_name.substr(0, part);
        const auto work = best_.find(name + "/work");
        if (work != best_.end())
            std::printf("%-28s %10.2f %10.2f %7.2f\n", (name + floor_name.substr(part + floor_part.size())).c_str(),
                        floor * to_milliseconds, work->second * to_milliseconds, work->second / floor);
    }
}

void ResultReporter::note(const std::string& name, double value)
{
    if (results_.is_open())
        results_ << name << '\t' << value << std::endl;
}
