#pragma once

#include <cstdint>
#include <string_view>

namespace zek
{

/// What a walk found wrong when it stopped.
struct SZEKFault
{
    enum EKind
    {
        TooShort,     ///< fewer bytes are left than the format demands
        Unterminated, ///< a text without a zero byte before the end
        WrongValue,   ///< a field with a value that the format does not have
        Unreadable,   ///< the file gave fewer bytes than it has
    };

    EKind kind;
    const char* field;          ///< or the block of fields, or the list
    std::int64_t offset;        ///< where it starts
    std::int64_t demanded = 0;  ///< bytes
    std::int64_t left = 0;      ///< bytes from offset to the end
    std::string_view text = {}; ///< the wrong value, if it is a text
    int value = 0;              ///< the wrong value, if it is a number
    const char* expected = "";  ///< the right ones, in words
};

} // namespace zek
