#include <csignal>

#include "ZekTool/Output/Interrupt.h"

namespace zektool
{

void CatchCtrlC()
{
    struct sigaction action = {};
    sigaction(SIGINT, nullptr, &action);
    if (action.sa_handler == SIG_IGN)
        return;
    action.sa_handler = [](int) { OnCtrlC(); };
    // Models in work are finished, so what they wait for must not fail.
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
}

} // namespace zektool
