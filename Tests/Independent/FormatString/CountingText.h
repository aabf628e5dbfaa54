#pragma once

#include <cstddef>
#include <string>

/// The longest text that the fixed buffer holds besides its terminator.
constexpr std::size_t LongestText = 16383;

/// A text of that length, each part of which looks different from the others.
inline std::string MakeCountingText(std::size_t length)
{
    std::string text;
    while (text.length() < length)
        text += std::to_string(text.length()) + ' ';
    return text.substr(0, length);
}
