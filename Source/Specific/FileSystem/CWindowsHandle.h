#pragma once

#include <string>

#include <windows.h>

namespace filesystem
{

/// A handle that is closed with the object. Only for sources that are built for Windows.
class CWindowsHandle
{
public:
    explicit CWindowsHandle(HANDLE handle) : m_Handle(handle) {}

    ~CWindowsHandle()
    {
        if (IsOpen())
            CloseHandle(m_Handle);
    }

    CWindowsHandle(const CWindowsHandle&) = delete;
    CWindowsHandle& operator=(const CWindowsHandle&) = delete;

    bool IsOpen() const { return m_Handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return m_Handle; }

private:
    HANDLE m_Handle;
};

} // namespace filesystem
