#pragma once

#include <cstddef>

/// Counts what this test program takes from the heap. HeapCount.cpp replaces the global operator
/// new and delete, so that everything of the C++ libraries goes through it; what the C library
/// takes for itself, such as the buffer of a stream, does not.
namespace heapcount
{

/// Bytes in use, as the allocator counts them: with rounding and with a block's own header.
std::size_t GetLiveBytes();

/// Blocks in use.
std::size_t GetLiveBlocks();

/// The most bytes in use since `ResetPeak`.
std::size_t GetPeakBytes();
void ResetPeak();

/// Has the n-th allocation from now on, counted from 1, fail with std::bad_alloc; 0 for none.
void FailAllocation(int n);

/// True when the allocation that was to fail has come.
bool HasFailed();

} // namespace heapcount
