#include "Reliability/HeapCount.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace
{

std::size_t g_LiveBytes = 0;
std::size_t g_LiveBlocks = 0;
std::size_t g_PeakBytes = 0;
int g_AllocationsUntilFailure = 0;
bool g_HasFailed = false;

std::size_t GetCost(void* block)
{
    constexpr std::size_t headerSize = sizeof(std::size_t);
    return malloc_usable_size(block) + headerSize;
}

} // namespace

void* operator new(std::size_t size)
{
    if (g_AllocationsUntilFailure > 0 && --g_AllocationsUntilFailure == 0)
    {
        g_HasFailed = true;
        throw std::bad_alloc();
    }
    void* block = std::malloc(size);
    if (block == nullptr)
        throw std::bad_alloc();
    g_LiveBytes += GetCost(block);
    g_LiveBlocks += 1;
    g_PeakBytes = std::max(g_PeakBytes, g_LiveBytes);
    return block;
}

void operator delete(void* block) noexcept
{
    if (block == nullptr)
        return;
    g_LiveBytes -= GetCost(block);
    g_LiveBlocks -= 1;
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

namespace heapcount
{

std::size_t GetLiveBytes()
{
    return g_LiveBytes;
}

std::size_t GetLiveBlocks()
{
    return g_LiveBlocks;
}

std::size_t GetPeakBytes()
{
    return g_PeakBytes;
}

void ResetPeak()
{
    g_PeakBytes = g_LiveBytes;
}

void FailAllocation(int n)
{
    g_AllocationsUntilFailure = n;
    g_HasFailed = false;
}

bool HasFailed()
{
    return g_HasFailed;
}

} // namespace heapcount
