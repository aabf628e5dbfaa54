#pragma once

/// The channel for messages to the person at the program.
namespace debug
{

/// Handle of a platform window. This platform has none; it takes what one that has windows calls
/// HWND outside of all namespaces, as long as that is a pointer.
using HWND = void*;

/// The window that messages belong to; null at program start. Nothing in this system reads it.
extern HWND g_WindowHandle;

/// Stores the handle in `g_WindowHandle`.
void SetHWND(HWND window);

/// Formats the message as printf would, drops it, as this platform has no message window, and
/// returns false, so that a caller can report a failure and return it in one statement.
bool Error(const char* format, ...);

/// Formats the message as printf would and prints the result as a format of its own: a percent
/// sign meant for the reader is written `%%%%`. The second pass has no arguments, so it turns each
/// `%%` into `%` and prints every other percent sign as it stands. A message of
/// `formatstring::FormatBufferSize` characters or more is cut to one less than that.
void Output(const char* format, ...);

} // namespace debug
