#pragma once

#include <cstddef>
#include <functional>

namespace testsupport
{

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
