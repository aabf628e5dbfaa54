#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace zektool
{

/// Keeps names of a model's items at little more than their own bytes: a name takes one byte for
/// its end, and nothing when it is empty. That counts where a file has millions of them.
class CNamePool
{
public:
    /// Keeps a copy of a name, which has no zero byte, and returns it with a zero byte at its end.
    /// It stays where it is for as long as the pool, or one that the pool has been moved to.
    const char* Add(std::string_view name);

private:
    std::vector<std::unique_ptr<char[]>> m_Blocks;
    char* m_Next = nullptr; // of the bytes that are left in the last block
    std::size_t m_Left = 0;
};

} // namespace zektool
