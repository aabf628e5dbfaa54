#pragma once

#include <chrono>
#include <cstdint>

namespace filesystem
{

/// What a file is at one moment. Two equal states are of the same file, which nobody has written to
/// or replaced between them, if the first was taken when the file was settled.
struct SFileState
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0;        ///< the file's number on the device
    std::int64_t size = 0;          ///< in bytes
    std::int64_t changeSeconds = 0; ///< time of the last change to bytes or attributes, since 1970
    std::int64_t changeNanoseconds = 0; ///< below a second

    /// Returns how long after now the file is settled: not positive if it is. Systems stamp a
    /// change with a clock that ticks some milliseconds apart, so that two changes in one tick
    /// leave the same state. A change time in the future counts as settled.
    std::chrono::nanoseconds GetTimeToSettle(std::chrono::system_clock::time_point now) const;
};

bool operator==(const SFileState& a, const SFileState& b);
bool operator!=(const SFileState& a, const SFileState& b);

} // namespace filesystem
