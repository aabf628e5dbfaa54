#include "CAllocationWatch.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace
{

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

} // namespace

void* operator new(std::size_t size)
{
    Tell(size);
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace testsupport
{

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
