#include "ZekTool/Output/Interrupt.h"

#include <atomic>
#include <cstdlib>

#include "ZekTool/Output/EExitStatus.h"

namespace zektool
{

namespace
{

std::atomic<bool> g_IsInterrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may use no other");

} // namespace

void OnCtrlC()
{
    if (g_IsInterrupted.exchange(true))
        std::_Exit(static_cast<int>(EExitStatus::Interrupted));
}

bool IsInterrupted()
{
    return g_IsInterrupted;
}

} // namespace zektool
