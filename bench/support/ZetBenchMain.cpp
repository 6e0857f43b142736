// Runs the benchmarks and prints, beside the times, our time as a multiple of the others'.

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "support/ZetHandLoops"

namespace {

/// Rows are named row/who, such as "add U8/zet" and "add U8/hand". The least time of all
/// repetitions counts.
class RatioReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override
    {
        std::printf("microseconds, and our time over theirs; loops by hand are built for %s\n",
                    bench::instructionSet());
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
                add(run);
            }
        }
    }

    void Finalize() override
    {
        std::printf("%-34s %10s", "", "zet");
        for (const std::string& who : m_others) {
            std::printf(" %20s", who.c_str());
        }
        std::printf("\n");
        for (const std::string& row : m_rows) {
            print(row);
        }
    }

private:
    void add(const Run& run)
    {
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.rfind('/');
        const std::string row = name.substr(0, slash);
        const std::string who = name.substr(slash + 1);
        if (std::find(m_rows.begin(), m_rows.end(), row) == m_rows.end()) {
            m_rows.push_back(row);
        }
        if (who != "zet" && std::find(m_others.begin(), m_others.end(), who) == m_others.end()) {
            m_others.push_back(who);
        }
        const double time = run.real_accumulated_time / static_cast<double>(run.iterations) * 1e6;
        const auto [place, isNew] = m_times[row].insert({who, time});
        place->second = isNew ? time : std::min(place->second, time);
    }

    void print(const std::string& row)
    {
        const std::map<std::string, double>& times = m_times[row];
        const auto ours = times.find("zet");
        std::printf("%-34s", row.c_str());
        if (ours == times.end()) {
            std::printf(" %10s", "");
        } else {
            std::printf(" %10.2f", ours->second);
        }
        for (const std::string& who : m_others) {
            const auto theirs = times.find(who);
            if (theirs == times.end()) {
                std::printf(" %20s", "");
            } else if (ours == times.end()) {
                std::printf(" %20.2f", theirs->second);
            } else {
                std::printf(" %12.2f (%5.2f)", theirs->second, ours->second / theirs->second);
            }
        }
        std::printf("\n");
    }

    std::vector<std::string> m_rows;
    std::vector<std::string> m_others;
    std::map<std::string, std::map<std::string, double>> m_times;
};

}  // namespace

int main(int argc, char** argv)
{
    // What stands on the command line comes later, and so wins.
    std::string defaults[] = {"--benchmark_repetitions=7", "--benchmark_min_time=0.02",
                              "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> arguments = {argv[0]};
    for (std::string& option : defaults) {
        arguments.push_back(option.data());
    }
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 1;
    }
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
