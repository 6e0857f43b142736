// What an equation costs in a process that has just started: the first evaluations, before any memory
// is warm, beside those that come long after.
//
//   zet_fresh WORK SIZE
//
// Prints one line: nanoseconds of the first evaluation, the median of the first 20, and the median of 20
// warm ones; page faults of the first evaluation, and for each of the 19 behind it.

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "support/ZetWorks"

namespace {

using bench::Work;
using bench::WorkEvaluation;

constexpr int kEvaluations = 20;
constexpr int kWarming = 500;

long pageFaults()
{
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

double nanosecondsOf(WorkEvaluation& evaluate)
{
    const auto start = std::chrono::steady_clock::now();
    evaluate();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

double medianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void measure(const Work& work, unsigned long size)
{
    WorkEvaluation evaluate(work, size);
    std::vector<double> fresh(kEvaluations);
    std::vector<double> warm(kEvaluations);
    long faults[kEvaluations + 1] = {pageFaults()};
    for (int i = 0; i < kEvaluations; ++i) {
        fresh[static_cast<std::size_t>(i)] = nanosecondsOf(evaluate);
        faults[i + 1] = pageFaults();
    }
    for (int i = 0; i < kWarming; ++i) {
        evaluate();
    }
    std::generate(warm.begin(), warm.end(), [&] { return nanosecondsOf(evaluate); });
    std::printf("%.0f %.0f %.0f %ld %.2f\n", fresh.front(), medianOf(fresh), medianOf(warm), faults[1] - faults[0],
                static_cast<double>(faults[kEvaluations] - faults[1]) / (kEvaluations - 1));
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<Work>& works = bench::works();
    const auto work = std::find_if(works.begin(), works.end(), [=](const Work& candidate) {
        return argc == 3 && std::string_view(argv[1]) == candidate.name;
    });
    const unsigned long size = argc == 3 ? std::strtoul(argv[2], nullptr, 10) : 0;
    if (work == works.end() || size == 0) {
        std::fprintf(stderr, "usage: zet_fresh WORK SIZE\n");
        return 2;
    }
    measure(*work, size);
    return 0;
}
