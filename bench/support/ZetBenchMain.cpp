// Runs the benchmarks and prints, beside the times, our time as a multiple of the others'.
//
//   zet_bench [OPTION of Google Benchmark...]
//   zet_bench --serve     reads the names of rows, and answers each with a line: nanoseconds for one
//                         evaluation, and what the row's answer is checked by (0: nothing); or a message

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>
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
        // they ran in any order
        std::sort(m_rows.begin(), m_rows.end());
        for (const auto& row : m_rows) {
            print(row);
        }
    }

private:
    using Times = std::vector<std::pair<std::string, double>>;

    void add(const Run& run)
    {
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.rfind('/');
        const double time = run.real_accumulated_time / static_cast<double>(run.iterations) * 1e6;
        double& least = valueOf(valueOf(m_rows, name.substr(0, slash), Times()), name.substr(slash + 1), time);
        least = std::min(least, time);
    }

    /// The value of a key, which is added at the end when it is new.
    template <class T>
    static T& valueOf(std::vector<std::pair<std::string, T>>& values, const std::string& key, const T& start)
    {
        const auto place =
            std::find_if(values.begin(), values.end(), [&](const auto& pair) { return pair.first == key; });
        return place == values.end() ? values.emplace_back(key, start).second : place->second;
    }

    /// Our time first, then each of theirs with what ours is to it.
    static void print(const std::pair<std::string, Times>& row)
    {
        std::printf("%-34s", row.first.c_str());
        Times times = row.second;
        const auto ours =
            std::find_if(times.begin(), times.end(), [](const auto& pair) { return pair.first == "zet"; });
        std::rotate(times.begin(), ours, times.end());
        for (const auto& [who, time] : times) {
            std::printf("  %s %.2f", who.c_str(), time);
            if (ours != times.end() && who != "zet") {
                std::printf(" (%.2f)", times.front().second / time);
            }
        }
        std::printf("\n");
    }

    std::vector<std::pair<std::string, Times>> m_rows;
};

/// Answers one row.
class ServeReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        const Run& run = runs.front();
        if (run.error_occurred) {
            std::printf("%s\n", run.error_message.c_str());
            return;
        }
        const auto check = run.counters.find("check");
        std::printf("%.17g %.17g\n", run.real_accumulated_time / static_cast<double>(run.iterations) * 1e9,
                    check == run.counters.end() ? 0.0 : check->second.value);
    }
};

void serve()
{
    std::string name;
    while (std::getline(std::cin, name)) {
        std::string pattern = "^";
        for (const char c : name) {
            if (std::string_view(".[]()*+?{}^$|\\").find(c) != std::string_view::npos) {
                pattern += '\\';
            }
            pattern += c;
        }
        ServeReporter reporter;
        if (benchmark::RunSpecifiedBenchmarks(&reporter, nullptr, pattern + "(/iterations:[0-9]+)?$") == 0) {
            std::printf("no such row\n");
        }
        std::fflush(stdout);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    const bool serves = argc > 1 && std::string_view(argv[1]) == "--serve";
    // What stands on the command line comes later, and so wins.
    std::string defaults[] = {serves ? "--benchmark_repetitions=1" : "--benchmark_repetitions=7",
                              "--benchmark_min_time=0.02", "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> arguments = {argv[0]};
    for (std::string& option : defaults) {
        arguments.push_back(option.data());
    }
    for (int i = serves ? 2 : 1; i < argc; ++i) {
        arguments.push_back(argv[i]);
    }
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 1;
    }
    if (serves) {
        serve();
    } else {
        RatioReporter reporter;
        benchmark::RunSpecifiedBenchmarks(&reporter);
    }
    benchmark::Shutdown();
    return 0;
}
