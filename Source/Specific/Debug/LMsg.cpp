#include "Specific/Debug/LMsg.h"

#include <cstdarg>
#include <cstdio>
#include <string>

#include "Independent/FormatString/FormatString.h"

namespace debug
{

HWND g_WindowHandle = nullptr;

void SetHWND(HWND window)
{
    g_WindowHandle = window;
}

bool Error(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    formatstring::Format(format, args);
    va_end(args);
    return false;
}

void Output(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    const std::string text = formatstring::Format(format, args);
    va_end(args);

    // The text never reaches printf as a format: a conversion in it would read an argument that
    // is not there.
    std::string message;
    for (std::size_t i = 0; i < text.length(); ++i)
    {
        message.push_back(text[i]);
        if (text.compare(i, 2, "%%") == 0)
            ++i;
    }
    std::fputs(message.c_str(), stdout);
}

} // namespace debug
