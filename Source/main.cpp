#include <cstdio>
#include <exception>

#include "ZEKOverwriter/CZEKOverwriter.h"

namespace
{

// The status that a shell sees for -1 is 255.
constexpr int ExitSuccess = 0;
constexpr int ExitFailure = -1;

bool Overwrite(const char* path)
{
    try
    {
        zek::CZEKOverwriter overwriter;
        return overwriter.Overwrite(path);
    }
    catch (const std::exception&)
    {
        // Memory ran out, which happens before the file is opened for writing or not at all.
        return false;
    }
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 2)
    {
        std::printf("ZEKTexComp.exe infile\n");
        return ExitFailure;
    }

    const char* path = argv[1];
    if (!Overwrite(path))
    {
        std::printf("Error %s\n", path);
        return ExitFailure;
    }
    std::printf("Succeeded\n");
    return ExitSuccess;
}
