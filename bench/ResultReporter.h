#pragma once

#include <benchmark/benchmark.h>

#include <fstream>
#include <map>
#include <string>

/// Prints the usual table and then, for each piece of work, how many times its floor it takes: the best of all rounds
/// of the one by the best of the other. A second floor of the same work, "/floor_NAME", gets a line of its own.
class ResultReporter : public benchmark::ConsoleReporter
{
public:
    /// Each round goes to the end of the file `results` too, as its name and its time in seconds; empty for none.
    explicit ResultReporter(const std::string& results);

    void ReportRuns(const std::vector<Run>& runs) override;
    /// How many rounds did not do their work.
    int failures() const { return failures_; }
    void Finalize() override;

private:
    void note(const std::string& name, double value);

    std::map<std::string, double> best_; ///< seconds
    std::ofstream results_;
    int failures_ = 0;
};
