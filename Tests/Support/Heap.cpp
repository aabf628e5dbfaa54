#include "Support/Heap.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>
#include <utility>

#include <malloc.h>

namespace
{

// Atomic, since a test elsewhere in the program may have several threads.
std::atomic<std::size_t> g_LiveBytes = 0;
std::atomic<std::size_t> g_LiveBlocks = 0;
std::atomic<std::size_t> g_PeakBytes = 0;
std::function<void(std::size_t)> g_Watch;
bool g_IsWatching = false;

void Tell(std::size_t size)
{
    if (!g_IsWatching)
        return;
    g_IsWatching = false;
    try
    {
        g_Watch(size);
    }
    catch (...)
    {
        g_IsWatching = true;
        throw;
    }
    g_IsWatching = true;
}

std::size_t GetCost(void* block)
{
    constexpr std::size_t headerSize = sizeof(std::size_t);
    return malloc_usable_size(block) + headerSize;
}

void* Count(void* block)
{
    if (block == nullptr)
        throw std::bad_alloc();
    g_LiveBytes += GetCost(block);
    g_LiveBlocks += 1;
    g_PeakBytes = std::max(g_PeakBytes.load(), g_LiveBytes.load());
    return block;
}

} // namespace

// The forms for arrays and those that do not throw come down to these.
void* operator new(std::size_t size)
{
    Tell(size);
    return Count(std::malloc(size == 0 ? 1 : size));
}

void* operator new(std::size_t size, std::align_val_t alignment)
{
    Tell(size);
    const auto unit = static_cast<std::size_t>(alignment);
    return Count(
        std::aligned_alloc(unit, (std::max<std::size_t>(size, 1) + unit - 1) / unit * unit));
}

void operator delete(void* block) noexcept
{
    if (block == nullptr)
        return;
    g_LiveBytes -= GetCost(block);
    g_LiveBlocks -= 1;
    std::free(block);
}

void operator delete(void* block, std::align_val_t) noexcept
{
    operator delete(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

namespace testsupport
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
    g_PeakBytes = g_LiveBytes.load();
}

CAllocationWatch::CAllocationWatch(std::function<void(std::size_t)> watch)
{
    g_Watch = std::move(watch);
    g_IsWatching = true;
}

CAllocationWatch::~CAllocationWatch()
{
    g_IsWatching = false;
    g_Watch = nullptr;
}

} // namespace testsupport
