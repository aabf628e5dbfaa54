#include <algorithm>
#include <array>
#include <system_error>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "Specific/FileSystem/CWindowsHandle.h"
#include "Specific/FileSystem/SystemFiles.h"
#include "Specific/FileSystem/WindowsPath.h"

namespace filesystem
{

namespace
{

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE OpenHandle(const std::string& path, DWORD access, DWORD sharing, DWORD disposition)
{
    return CreateFileW(
        MakeWindowsPath(path).c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
        nullptr);
}

/// Tells whether an error of opening says nothing about the file.
bool IsAnswerMissing(DWORD error)
{
    constexpr std::array<DWORD, 8> errors = {ERROR_TOO_MANY_OPEN_FILES, ERROR_NOT_ENOUGH_MEMORY,
                                             ERROR_OUTOFMEMORY,         ERROR_NO_SYSTEM_RESOURCES,
                                             ERROR_IO_DEVICE,           ERROR_CRC,
                                             ERROR_SEM_TIMEOUT,         ERROR_NETNAME_DELETED};
    return std::find(errors.begin(), errors.end(), error) != errors.end();
}

/// Makes a descriptor, which owns the handle. Returns -1 when there are none left.
int MakeDescriptor(HANDLE handle, int flags)
{
    const int file = _open_osfhandle(reinterpret_cast<std::intptr_t>(handle), flags);
    if (file < 0)
        CloseHandle(handle);
    return file;
}

HANDLE GetHandle(int file)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(file));
}

std::uint64_t JoinParts(DWORD high, DWORD low)
{
    return std::uint64_t{high} << 32 | low;
}

/// Asks for the state of an open file. False when it cannot be told.
bool ReadState(HANDLE file, SFileState& state)
{
    BY_HANDLE_FILE_INFORMATION information;
    FILE_BASIC_INFO times;
    if (!GetFileInformationByHandle(file, &information) ||
        !GetFileInformationByHandleEx(file, FileBasicInfo, &times, sizeof(times)))
        return false;

    constexpr std::int64_t ticksPerSecond = 10'000'000;
    constexpr std::int64_t nanosecondsPerTick = 100;
    constexpr std::int64_t secondsFrom1601To1970 = 11'644'473'600;
    // Some file systems keep no time of change.
    const std::int64_t changed = std::max(times.ChangeTime.QuadPart, times.LastWriteTime.QuadPart);
    state.device = information.dwVolumeSerialNumber;
    state.inode = JoinParts(information.nFileIndexHigh, information.nFileIndexLow);
    state.size =
        static_cast<std::int64_t>(JoinParts(information.nFileSizeHigh, information.nFileSizeLow));
    state.changeSeconds = changed / ticksPerSecond - secondsFrom1601To1970;
    state.changeNanoseconds = changed % ticksPerSecond * nanosecondsPerTick;
    return true;
}

/// Says where in a file to read or write.
OVERLAPPED MakePlace(std::int64_t pos)
{
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(pos & MAXDWORD);
    place.OffsetHigh = static_cast<DWORD>(pos >> 32);
    return place;
}

DWORD LimitSize(std::int64_t size)
{
    constexpr std::int64_t largestPiece = 1 << 30;
    return static_cast<DWORD>(std::min(size, largestPiece));
}

} // namespace

CRandomAccessFile::~CRandomAccessFile()
{
    Close();
}

bool CRandomAccessFile::CanOpen(const std::string& path)
{
    const CWindowsHandle file(OpenHandle(path, GENERIC_READ, ShareAll, OPEN_EXISTING));
    const DWORD error = file.IsOpen() ? ERROR_SUCCESS : GetLastError();
    if (IsAnswerMissing(error))
        throw std::system_error(static_cast<int>(error), std::system_category());
    // What somebody else has to himself can be opened when he is done.
    return file.IsOpen() || error == ERROR_SHARING_VIOLATION;
}

bool CRandomAccessFile::Open(const std::string& path)
{
    return OpenWith(path, _O_RDONLY);
}

bool CRandomAccessFile::OpenToWrite(const std::string& path)
{
    return OpenWith(path, _O_RDWR);
}

bool CRandomAccessFile::Create(const std::string& path)
{
    Close();
    m_State = {};
    const HANDLE handle = OpenHandle(
        path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, CREATE_NEW);
    if (handle == INVALID_HANDLE_VALUE)
        return Fail(static_cast<int>(GetLastError()));
    m_File = MakeDescriptor(handle, _O_RDWR);
    return m_File >= 0 || Fail(ERROR_TOO_MANY_OPEN_FILES);
}

/// Whoever writes has the file opened by nobody else for writing. Who reads stands in nobody's way.
bool CRandomAccessFile::OpenWith(const std::string& path, int flags)
{
    Close();
    const bool isWriting = flags == _O_RDWR;
    const HANDLE handle = OpenHandle(
        path, isWriting ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ,
        isWriting ? FILE_SHARE_READ | FILE_SHARE_DELETE : ShareAll, OPEN_EXISTING);
    const DWORD error = GetLastError();
    m_IsBusy = handle == INVALID_HANDLE_VALUE && error == ERROR_SHARING_VIOLATION;
    if (handle == INVALID_HANDLE_VALUE)
        return Fail(IsFolder(path) ? NotRegular : static_cast<int>(error));
    m_File = MakeDescriptor(handle, flags);
    if (m_File < 0)
        return Fail(ERROR_TOO_MANY_OPEN_FILES);
    if (GetFileType(handle) != FILE_TYPE_DISK)
        return Fail(NotRegular);
    return ReadState(handle, m_State) || Fail(static_cast<int>(GetLastError()));
}

bool CRandomAccessFile::Fail(int error)
{
    Close();
    m_Error = error;
    return false;
}

void CRandomAccessFile::Close()
{
    if (m_File >= 0)
        _close(m_File);
    m_File = -1;
}

bool CRandomAccessFile::IsUnchanged() const
{
    SFileState state;
    return ReadState(GetHandle(m_File), state) && state == m_State;
}

std::int64_t CRandomAccessFile::Read(std::int64_t pos, void* dest, std::int64_t size)
{
    std::int64_t total = 0;
    while (total < size)
    {
        OVERLAPPED place = MakePlace(pos + total);
        DWORD count = 0;
        if (!ReadFile(
                GetHandle(m_File), static_cast<char*>(dest) + total, LimitSize(size - total),
                &count, &place) ||
            count == 0)
            break;
        total += count;
    }
    return total;
}

bool CRandomAccessFile::Write(std::int64_t pos, const void* source, std::int64_t size)
{
    std::int64_t total = 0;
    while (total < size)
    {
        OVERLAPPED place = MakePlace(pos + total);
        DWORD count = 0;
        if (!WriteFile(
                GetHandle(m_File), static_cast<const char*>(source) + total,
                LimitSize(size - total), &count, &place))
        {
            m_Error = static_cast<int>(GetLastError());
            return false;
        }
        total += count;
    }
    return true;
}

bool CRandomAccessFile::Touch()
{
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    if (SetFileTime(GetHandle(m_File), nullptr, nullptr, &now))
        return true;
    m_Error = static_cast<int>(GetLastError());
    return false;
}

bool CRandomAccessFile::Flush()
{
    if (FlushFileBuffers(GetHandle(m_File)))
        return true;
    m_Error = static_cast<int>(GetLastError());
    return false;
}

std::string CRandomAccessFile::GetError() const
{
    return m_Error == NotRegular ? "Not a regular file"
                                 : MakeWindowsErrorText(static_cast<unsigned long>(m_Error));
}

} // namespace filesystem
