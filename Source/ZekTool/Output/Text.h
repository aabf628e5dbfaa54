#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ZekTool/Output/STally.h"

namespace zektool
{

/// Tells whether bytes are UTF-8 throughout.
bool IsUTF8(std::string_view bytes);

/// Returns a path or name as it can stand in a line of text: control characters and bytes that are
/// not UTF-8 are written as \x1b.
std::string MakeShowable(std::string_view bytes);

/// The same between quotation marks.
std::string MakeQuoted(std::string_view bytes);

/// Returns the small letter of A to Z, and any other byte as it is, whatever the character code is.
constexpr char MakeSmall(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The same of all bytes of a text.
std::string MakeSmall(std::string_view text);

/// Returns the line of a model that failed, or was not done.
std::string MakeFailureLine(std::string_view path, EOutcome outcome, std::string_view reason);

/// Returns a number and what it counts: "1 model", "2 models".
std::string MakeCount(std::uint64_t count, std::string_view one, std::string_view several);

} // namespace zektool
