#pragma once

#include <string>

/// What Windows' own functions take and give, as this program has it. Only for sources that are
/// built for Windows.
namespace filesystem
{

/// Converts from UTF-8; empty when it is none.
std::wstring MakeWideText(const std::string& text);

/// Converts to UTF-8.
std::string MakeNarrowText(const std::wstring& text);

/// Returns a path as Windows' functions take it, however long it is.
std::wstring MakeWindowsPath(const std::string& path);

/// Returns Windows' words for one of its error numbers, without the full stop at their end.
std::string MakeWindowsErrorText(unsigned long error);

/// Returns those for the last error.
std::string MakeLastErrorText();

} // namespace filesystem
