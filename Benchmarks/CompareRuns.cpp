// Runs two commands in turn and compares them:
//
//     CompareRuns COUNT COMMAND... against COMMAND...
//
// It prints one line: how often the first command's wall time is that of the second (the median,
// the smallest and the largest of COUNT pairs of runs), the first command's median wall time in
// microseconds, and its largest resident memory in kilobytes. The commands read nothing, what they
// print is dropped, and they must succeed. One pair of runs more, the first, is not measured.

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

class CCommand
{
public:
    explicit CCommand(const std::vector<char*>& words) : m_Words(words)
    {
        if (m_Words.empty())
            Fail("usage: CompareRuns COUNT COMMAND... against COMMAND...");
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
        Fail("usage: CompareRuns COUNT COMMAND... against COMMAND...");
    const int count = std::max(std::atoi(argv[1]), 1);
    const CCommand first(std::vector<char*>(argv + 2, separator));
    const CCommand second(std::vector<char*>(separator + 1, end));

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
