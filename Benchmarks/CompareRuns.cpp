// Runs two commands in turn and compares them:
//
//     CompareRuns COUNT [before SHELL_COMMAND] COMMAND... against COMMAND...
//
// It prints one line: how often the first command's wall time is that of the second (the median,
// the smallest and the largest of COUNT pairs of runs), the first command's median wall time in
// microseconds, and its largest resident memory in kilobytes. The commands read nothing, what they
// print is dropped, and they must succeed. One pair of runs more, the first, is not measured, nor
// is what the shell does before each run.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// What one run took.
struct SRun
{
    double seconds;
    long peakKilobytes;
};

[[noreturn]] void Fail(const std::string& message)
{
    std::fprintf(stderr, "CompareRuns: %s\n", message.c_str());
    std::exit(1);
}

[[noreturn]] void FailUsage()
{
    Fail("usage: CompareRuns COUNT [before SHELL_COMMAND] COMMAND... against COMMAND...");
}

class CCommand
{
public:
    CCommand(const char* before, const std::vector<char*>& words) : m_Before(before), m_Words(words)
    {
        if (m_Words.empty())
            FailUsage();
        m_Words.push_back(nullptr);
        posix_spawn_file_actions_init(&m_Files);
        posix_spawn_file_actions_addopen(&m_Files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&m_Files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }

    CCommand(const CCommand&) = delete;
    CCommand& operator=(const CCommand&) = delete;
    ~CCommand() { posix_spawn_file_actions_destroy(&m_Files); }

    SRun Run() const
    {
        if (m_Before != nullptr && std::system(m_Before) != 0)
            Fail(std::string(m_Before) + " fails");
        using Clock = std::chrono::steady_clock;
        const Clock::time_point start = Clock::now();
        pid_t process;
        int status = 0;
        rusage usage = {};
        if (posix_spawnp(&process, m_Words[0], &m_Files, nullptr, m_Words.data(), environ) != 0 ||
            wait4(process, &status, 0, &usage) != process)
            Fail(std::string("cannot run ") + m_Words[0]);
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
            Fail(std::string(m_Words[0]) + " fails");
        return {elapsed.count(), usage.ru_maxrss};
    }

private:
    const char* m_Before; ///< for the shell, or null
    std::vector<char*> m_Words;
    posix_spawn_file_actions_t m_Files;
};

double GetMedian(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char* argv[])
{
    char** const end = argv + argc;
    char** const separator =
        std::find_if(argv, end, [](const char* word) { return std::string(word) == "against"; });
    if (argc < 5 || separator == end)
        FailUsage();
    const int count = std::max(std::atoi(argv[1]), 1);
    const bool hasBefore = std::string(argv[2]) == "before";
    const char* before = hasBefore ? argv[3] : nullptr;
    char** const words = argv + (hasBefore ? 4 : 2);
    if (words > separator)
        FailUsage();
    const CCommand first(before, std::vector<char*>(words, separator));
    const CCommand second(before, std::vector<char*>(separator + 1, end));

    first.Run();
    second.Run();
    std::vector<double> ratios;
    std::vector<double> seconds;
    long peakKilobytes = 0;
    for (int i = 0; i < count; ++i)
    {
        const SRun firstRun = first.Run();
        const SRun secondRun = second.Run();
        ratios.push_back(firstRun.seconds / secondRun.seconds);
        seconds.push_back(firstRun.seconds);
        peakKilobytes = std::max(peakKilobytes, firstRun.peakKilobytes);
    }
    const auto [smallest, largest] = std::minmax_element(ratios.begin(), ratios.end());
    std::printf(
        "%.3f %.3f %.3f %.0f %ld\n", GetMedian(ratios), *smallest, *largest,
        GetMedian(seconds) * 1e6, peakKilobytes);
    return 0;
}
