#pragma once

#include <string>

#include "Independent/CharacterCode/ShiftJIS.h"

namespace filesystem
{

/// Returns the index of the character after the one at index of a Shift_JIS text. After a lead
/// byte that ends the text the result is one more than the text's length.
inline std::string::size_type
NextCharacterIndex(const std::string& text, std::string::size_type index)
{
    return index +
           (charactercode::IsShiftJISLeadByte(static_cast<unsigned char>(text[index])) ? 2 : 1);
}

/// Returns the index of the last one-byte character of a Shift_JIS text that is one of characters,
/// or npos when there is none. characters are ASCII.
inline std::string::size_type
FindLastCharacter(const std::string& text, const std::string& characters)
{
    std::string::size_type last = std::string::npos;
    for (std::string::size_type i = 0; i < text.length(); i = NextCharacterIndex(text, i))
    {
        if (characters.find(text[i]) != std::string::npos)
            last = i;
    }
    return last;
}

/// Tells whether a path is the root of a drive: an ASCII letter, a colon and a backslash.
inline bool IsDriveRoot(const std::string& path)
{
    return path.length() == 3 &&
           ((path[0] >= 'a' && path[0] <= 'z') || (path[0] >= 'A' && path[0] <= 'Z')) &&
           path[1] == ':' && path[2] == '\\';
}

} // namespace filesystem
