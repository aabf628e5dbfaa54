#include "ZekTool/Output/Interrupt.h"

#include <atomic>
#include <csignal>

#include <unistd.h>

#include "ZekTool/Output/EExitStatus.h"

namespace zektool
{

namespace
{

std::atomic<bool> g_IsInterrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may use no other");

void OnCtrlC(int)
{
    if (g_IsInterrupted.exchange(true))
        _exit(static_cast<int>(EExitStatus::Interrupted));
}

} // namespace

void CatchCtrlC()
{
    struct sigaction action = {};
    sigaction(SIGINT, nullptr, &action);
    if (action.sa_handler == SIG_IGN)
        return;
    action.sa_handler = OnCtrlC;
    // Models in work are finished, so what they wait for must not fail.
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
}

bool IsInterrupted()
{
    return g_IsInterrupted;
}

} // namespace zektool
