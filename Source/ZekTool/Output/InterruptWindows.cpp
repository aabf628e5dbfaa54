#include <windows.h>

#include "ZekTool/Output/Interrupt.h"

namespace zektool
{

namespace
{

/// Called in a thread of its own.
BOOL WINAPI OnConsoleEvent(DWORD event)
{
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        return FALSE;
    OnCtrlC();
    return TRUE;
}

} // namespace

void CatchCtrlC()
{
    // A process that ignores Ctrl-C is not told of it.
    SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

} // namespace zektool
