#include "RatioTable.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace benchmarks
{

namespace
{

/// What happens unless the command line says otherwise.
const std::vector<std::string> DefaultArguments = {
    "--benchmark_enable_random_interleaving=true",
    "--benchmark_repetitions=21",
    "--benchmark_min_time=0.01",
};

/// How long an item takes in one library.
struct SMeasurement
{
    std::string work;
    std::string library;
    std::vector<double> nanoseconds = {}; ///< one a repetition

    double GetMedian() const
    {
        std::vector<double> sorted = nanoseconds;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }
};

void PrintHead()
{
    std::printf(
        "%-34s | %8s | %-6s | %8s | ratio | other rivals ns\n", "work", "ours ns", "rival",
        "rival ns");
}

/// Prints the line of one work, or nothing when ours or every rival was filtered out.
void PrintWork(std::vector<SMeasurement> libraries)
{
    std::sort(
        libraries.begin(), libraries.end(),
        [](const SMeasurement& a, const SMeasurement& b) { return a.GetMedian() < b.GetMedian(); });
    const auto ours = std::find_if(
        libraries.begin(), libraries.end(),
        [](const SMeasurement& measurement) { return measurement.library == Ours; });
    if (ours == libraries.end() || libraries.size() == 1)
        return;
    const double oursMedian = ours->GetMedian();
    libraries.erase(ours);

    const SMeasurement& best = libraries.front();
    std::printf(
        "%-34s | %8.3f | %-6s | %8.3f | %5.2f |", best.work.c_str(), oursMedian,
        best.library.c_str(), best.GetMedian(), oursMedian / best.GetMedian());
    for (auto other = libraries.begin() + 1; other != libraries.end(); ++other)
        std::printf(" %s %.3f", other->library.c_str(), other->GetMedian());
    std::printf("\n");
}

/// Collects the repetitions and prints nothing while they run.
class CCollector : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
        {
            if (run.run_type != Run::RT_Iteration)
                continue;
            const std::string& name = run.run_name.function_name;
            const std::size_t slash = name.rfind('/');
            SMeasurement& measurement = m_Measurements[run.family_index];
            measurement.work = name.substr(0, slash);
            measurement.library = name.substr(slash + 1);
            measurement.nanoseconds.push_back(1e9 / run.counters.at("items_per_second").value);
        }
    }

    void PrintTable() const
    {
        PrintHead();
        std::map<std::string, std::vector<SMeasurement>> works;
        for (const auto& [familyIndex, measurement] : m_Measurements)
            works[measurement.work].push_back(measurement);
        for (const auto& [familyIndex, measurement] : m_Measurements)
        {
            if (measurement.library == Ours)
                PrintWork(works[measurement.work]);
        }
    }

private:
    std::map<std::int64_t, SMeasurement> m_Measurements; ///< in the order of registration
};

} // namespace

int PrintRatioTable(int argc, char* argv[])
{
    std::vector<std::string> words = {argv[0]};
    words.insert(words.end(), DefaultArguments.begin(), DefaultArguments.end());
    words.insert(words.end(), argv + 1, argv + argc);
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    int argumentCount = static_cast<int>(arguments.size());

    benchmark::Initialize(&argumentCount, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(argumentCount, arguments.data()))
        return 1;
    CCollector collector;
    if (benchmark::RunSpecifiedBenchmarks(&collector) == 0)
        return 1;
    collector.PrintTable();
    return 0;
}

} // namespace benchmarks
