#pragma once

#include <string>

/// printf-style formatting into a string, the form that the rest of the system uses.
class LFormat
{
public:
    /// Returns the formatted text up to its first zero byte. A text of
    /// `formatstring::FormatBufferSize` characters or more is cut to one less than that.
    static std::string Make(const char* format, ...);
};
