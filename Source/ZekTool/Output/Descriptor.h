#pragma once

#include <chrono>
#include <cstddef>
#include <string>

/// What the system does with descriptors. The numbers of its errors are in `errno`.
namespace zektool
{

constexpr int StandardInput = 0;
constexpr int StandardOutput = 1;
constexpr int StandardError = 2;

/// Has the standard streams pass every byte as it is, and a closed pipe be an error of writing. One
/// that is closed itself stays so, and its number is given to no file.
void PrepareStandardStreams();

/// Opens a file for reading. Returns -1 when it cannot be opened.
int OpenToRead(const std::string& path);

void CloseDescriptor(int descriptor);

/// Waits at most for a while until reading need not wait. Tells whether that is so.
bool WaitForBytes(int descriptor, std::chrono::milliseconds most);

/// Reads at most size bytes. Returns their number, 0 at the end, or -1.
std::ptrdiff_t ReadBytes(int descriptor, char* bytes, std::size_t size);

/// Writes at most size bytes of UTF-8, waiting until that can be done. Returns their number, or -1.
/// A console shows them whatever its own character code is.
std::ptrdiff_t WriteBytes(int descriptor, const char* bytes, std::size_t size);

/// Tells whether a descriptor is of a terminal whose cursor can be moved, and line be cleared, by
/// ANSI's sequences.
bool IsTerminalWithCursor(int descriptor);

/// Returns how many columns a terminal shows, or 0 when that is not known.
std::size_t GetColumnCount(int descriptor);

} // namespace zektool
