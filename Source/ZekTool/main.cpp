#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "ZekTool/CommandLine.h"
#include "ZekTool/EExitStatus.h"

int main(int argc, char* argv[])
{
    using namespace zektool;
    try
    {
        const SCommandLine line =
            ParseCommandLine(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
        std::fputs(line.message.c_str(), stdout);
        return static_cast<int>(EExitStatus::Success);
    }
    catch (const CUsageError& error)
    {
        std::fprintf(stderr, "zek: %s\n", error.what());
        return static_cast<int>(EExitStatus::Usage);
    }
    catch (const std::exception& error)
    {
        std::fprintf(stderr, "zek: %s\n", error.what());
        return static_cast<int>(EExitStatus::Failure);
    }
}
