#include "AllocatedBytes.h"

#include <cstdlib>
#include <new>

namespace
{
std::size_t allocatedBytes = 0;
} // namespace

// The forms for arrays and those that do not throw come down to these three.
void* operator new(std::size_t size)
{
    allocatedBytes += size;
    if (void* block = std::malloc(size == 0 ? 1 : size))
        return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

namespace testsupport
{

std::size_t GetAllocatedBytes()
{
    return allocatedBytes;
}

} // namespace testsupport
