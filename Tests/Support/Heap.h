#pragma once

#include <cstddef>
#include <functional>

/// What a test program takes from the heap. Heap.cpp replaces the global operator new and delete in
/// the programs that use it, so that everything of the C++ libraries goes through it; what the C
/// library takes for itself, such as the buffer of a stream, does not.
namespace testsupport
{

/// Bytes in use, as the allocator counts them: with rounding and with a block's own header.
std::size_t GetLiveBytes();

/// Blocks in use.
std::size_t GetLiveBlocks();

/// The most bytes in use since `ResetPeak`, while the program has one thread.
std::size_t GetPeakBytes();
void ResetPeak();

/// Calls a function with the size of every allocation by `new` while the object lives, before the
/// memory is taken. The function may throw std::bad_alloc; its own allocations are not watched.
/// One object at a time, in a program with one thread.
class CAllocationWatch
{
public:
    explicit CAllocationWatch(std::function<void(std::size_t)> watch);
    ~CAllocationWatch();
    CAllocationWatch(const CAllocationWatch&) = delete;
    CAllocationWatch& operator=(const CAllocationWatch&) = delete;
};

} // namespace testsupport
