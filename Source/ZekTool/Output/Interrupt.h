#pragma once

namespace zektool
{

/// Has Ctrl-C no longer end the program but be remembered. A second one ends it at once with
/// `EExitStatus::Interrupted`. Where Ctrl-C was ignored before, it stays so.
void CatchCtrlC();

/// What happens at a Ctrl-C. A signal handler may call it.
void OnCtrlC();

/// Tells whether there was a Ctrl-C.
bool IsInterrupted();

} // namespace zektool
