#include "Independent/FormatString/LFormat.h"

#include <cstdarg>

#include "Independent/FormatString/FormatString.h"

std::string LFormat::Make(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    std::string text = formatstring::Format(format, args);
    va_end(args);
    return text;
}
