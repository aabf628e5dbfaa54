#include <cstdio>
#include <exception>
#include <limits>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "ZEKOverwriter/CZEKOverwriter.h"

namespace
{

// The status that a shell sees for -1 is 255.
constexpr int ExitSuccess = 0;
constexpr int ExitFailure = -1;

/// Has the heap keep what is freed, for the lists of the next record: memory that is given back to
/// the system and taken again costs more than reading the record.
void KeepFreedMemory()
{
#ifdef __GLIBC__
    constexpr int largestMmapThreshold = 32 * 1024 * 1024;
    constexpr int largestTrimThreshold = std::numeric_limits<int>::max();
    mallopt(M_MMAP_THRESHOLD, largestMmapThreshold);
    mallopt(M_TRIM_THRESHOLD, largestTrimThreshold);
#endif
}

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

    KeepFreedMemory();
    const char* path = argv[1];
    if (!Overwrite(path))
    {
        std::printf("Error %s\n", path);
        return ExitFailure;
    }
    std::printf("Succeeded\n");
    return ExitSuccess;
}
