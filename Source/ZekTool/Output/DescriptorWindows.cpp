#include <algorithm>
#include <cerrno>
#include <limits>
#include <thread>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "Specific/FileSystem/WindowsPath.h"
#include "ZekTool/Output/Descriptor.h"

namespace zektool
{

namespace
{

HANDLE GetHandle(int descriptor)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

bool IsConsole(int descriptor)
{
    DWORD mode;
    return GetConsoleMode(GetHandle(descriptor), &mode) != 0;
}

bool WriteToConsole(HANDLE console, const std::wstring& text)
{
    constexpr std::size_t largestPiece = 8192; // more than a console takes at once is refused
    for (std::size_t start = 0; start < text.size();)
    {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min(largestPiece, text.size() - start));
        if (!WriteConsoleW(console, text.data() + start, size, &written, nullptr))
            return false;
        start += written;
    }
    return true;
}

unsigned LimitSize(std::size_t size)
{
    constexpr std::size_t largest = std::numeric_limits<int>::max();
    return static_cast<unsigned>(std::min(size, largest));
}

} // namespace

void PrepareStandardStreams()
{
    for (int descriptor : {StandardInput, StandardOutput, StandardError})
        _setmode(descriptor, _O_BINARY);
}

int OpenToRead(const std::string& path)
{
    return _wopen(filesystem::MakeWindowsPath(path).c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
}

void CloseDescriptor(int descriptor)
{
    _close(descriptor);
}

bool WaitForBytes(int descriptor, std::chrono::milliseconds most)
{
    const HANDLE handle = GetHandle(descriptor);
    DWORD count = 0;
    // Only a pipe makes its reader wait without hearing of Ctrl-C. One without a writer is at its
    // end.
    if (GetFileType(handle) != FILE_TYPE_PIPE ||
        !PeekNamedPipe(handle, nullptr, 0, nullptr, &count, nullptr) || count > 0)
        return true;
    std::this_thread::sleep_for(most);
    return false;
}

std::ptrdiff_t ReadBytes(int descriptor, char* bytes, std::size_t size)
{
    return _read(descriptor, bytes, LimitSize(size));
}

std::ptrdiff_t WriteBytes(int descriptor, const char* bytes, std::size_t size)
{
    if (!IsConsole(descriptor))
        return _write(descriptor, bytes, LimitSize(size));
    if (WriteToConsole(GetHandle(descriptor), filesystem::MakeWideText(std::string(bytes, size))))
        return static_cast<std::ptrdiff_t>(size);
    errno = EIO;
    return -1;
}

bool IsTerminalWithCursor(int descriptor)
{
    DWORD mode;
    const HANDLE handle = GetHandle(descriptor);
    return GetConsoleMode(handle, &mode) != 0 &&
           SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::size_t GetColumnCount(int descriptor)
{
    CONSOLE_SCREEN_BUFFER_INFO information;
    if (!GetConsoleScreenBufferInfo(GetHandle(descriptor), &information))
        return 0;
    const SMALL_RECT& window = information.srWindow;
    return static_cast<std::size_t>(window.Right - window.Left + 1);
}

} // namespace zektool
