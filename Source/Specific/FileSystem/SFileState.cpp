#include "Specific/FileSystem/SFileState.h"

#include <tuple>

namespace filesystem
{

namespace
{

constexpr std::chrono::milliseconds SettlingTime(20);

auto GetMembers(const SFileState& state)
{
    return std::tie(
        state.device, state.inode, state.size, state.changeSeconds, state.changeNanoseconds);
}

} // namespace

std::chrono::nanoseconds
SFileState::GetTimeToSettle(std::chrono::system_clock::time_point now) const
{
    using std::chrono::nanoseconds;
    const nanoseconds sinceEpoch = now.time_since_epoch();
    const std::int64_t nowSeconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch).count();
    if (changeSeconds > nowSeconds || changeSeconds < nowSeconds - 1)
        return nanoseconds(0);
    const nanoseconds changed =
        std::chrono::seconds(changeSeconds) + nanoseconds(changeNanoseconds);
    return changed > sinceEpoch ? nanoseconds(0) : changed + SettlingTime - sinceEpoch;
}

bool operator==(const SFileState& a, const SFileState& b)
{
    return GetMembers(a) == GetMembers(b);
}

bool operator!=(const SFileState& a, const SFileState& b)
{
    return !(a == b);
}

} // namespace filesystem
