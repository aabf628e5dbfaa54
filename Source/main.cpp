#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <limits>

#ifdef __GLIBC__
#include <malloc.h>
#include <sys/mman.h>
#include <sys/stat.h>
#endif

#include "ZEKOverwriter/CZEKOverwriter.h"

namespace
{

// The status that a shell sees for -1 is 255.
constexpr int ExitSuccess = 0;
constexpr int ExitFailure = -1;

#ifdef __GLIBC__

constexpr int LargestMmapThreshold = 32 * 1024 * 1024;

/// Has the heap keep what is freed, for the lists of the next record: memory that is given back to
/// the system and taken again costs more than reading the record.
void KeepFreedMemory()
{
    constexpr int largestTrimThreshold = std::numeric_limits<int>::max();
    mallopt(M_MMAP_THRESHOLD, LargestMmapThreshold);
    mallopt(M_TRIM_THRESHOLD, largestTrimThreshold);
}

/// Has the heap take its memory in huge pages when a large file is read: page by page it would cost
/// as much as reading the file. Relies on a heap that keeps what is freed.
void UseHugePages(const char* path)
{
    constexpr int smallestSize = 1024 * 1024;
    constexpr std::size_t pageSize = 4096;
    constexpr std::size_t heapSize = LargestMmapThreshold - pageSize;

    struct stat status;
    if (stat(path, &status) != 0 || status.st_size < smallestSize)
        return;
    char* heap = static_cast<char*>(std::malloc(heapSize));
    if (heap == nullptr)
        return;
    const std::size_t toPageStart = -reinterpret_cast<std::uintptr_t>(heap) % pageSize;
    madvise(heap + toPageStart, heapSize - pageSize, MADV_HUGEPAGE);
    std::free(heap);
}

#endif

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

#ifdef __GLIBCXX__
namespace __gnu_cxx
{

/// Stands in for the C++ library's own, which prints the name of an exception that nobody catches.
/// All are caught here, and what decodes such names would add 60 KB to the program.
void __verbose_terminate_handler()
{
    std::abort();
}

} // namespace __gnu_cxx
#endif

int main(int argc, char* argv[])
{
    if (argc < 2)
    {
        std::printf("ZEKTexComp.exe infile\n");
        return ExitFailure;
    }

    const char* path = argv[1];
#ifdef __GLIBC__
    KeepFreedMemory();
    UseHugePages(path);
#endif
    if (!Overwrite(path))
    {
        std::printf("Error %s\n", path);
        return ExitFailure;
    }
    std::printf("Succeeded\n");
    return ExitSuccess;
}
