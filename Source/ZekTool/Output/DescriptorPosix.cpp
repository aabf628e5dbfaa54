#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "ZekTool/Output/Descriptor.h"

namespace zektool
{

namespace
{

/// Waits until a descriptor that does not block takes more.
void WaitForRoom(int descriptor)
{
    constexpr int withoutEnd = -1;
    pollfd request = {descriptor, POLLOUT, 0};
    poll(&request, 1, withoutEnd);
}

/// Takes the place of a standard stream that is closed, so that no file that is opened gets its
/// number: output would be written into a model. What is written there, or read, goes on failing.
void KeepClosed(int descriptor)
{
    if (fcntl(descriptor, F_GETFD) < 0)
        open("/dev/null", descriptor == StandardInput ? O_WRONLY : O_RDONLY);
}

} // namespace

void PrepareStandardStreams()
{
    // In this order: each opens the lowest that is closed.
    for (int descriptor : {StandardInput, StandardOutput, StandardError})
        KeepClosed(descriptor);
    // Both make a write fail, with the reason, instead of ending the program.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

int OpenToRead(const std::string& path)
{
    return open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

void CloseDescriptor(int descriptor)
{
    close(descriptor);
}

bool WaitForBytes(int descriptor, std::chrono::milliseconds most)
{
    pollfd request = {descriptor, POLLIN, 0};
    return poll(&request, 1, static_cast<int>(most.count())) > 0;
}

std::ptrdiff_t ReadBytes(int descriptor, char* bytes, std::size_t size)
{
    return read(descriptor, bytes, size);
}

std::ptrdiff_t WriteBytes(int descriptor, const char* bytes, std::size_t size)
{
    for (;;)
    {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno == EAGAIN)
            WaitForRoom(descriptor);
        else if (written >= 0 || errno != EINTR)
            return written;
    }
}

bool IsTerminalWithCursor(int descriptor)
{
    const char* terminal = std::getenv("TERM");
    return isatty(descriptor) != 0 && terminal != nullptr && std::string_view(terminal) != "dumb";
}

std::size_t GetColumnCount(int descriptor)
{
    winsize size = {};
    return ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

} // namespace zektool
