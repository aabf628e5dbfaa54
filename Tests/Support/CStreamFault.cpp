#include "Support/CStreamFault.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <string_view>

#include <sys/types.h>

namespace
{

std::string_view g_FailingFunction; ///< empty for any
int g_CallsUntilFailure = 0;
bool g_HasFailed = false;

// No vector: a run that counts its allocations must not see any of ours.
std::array<const char*, 64> g_Calls;
std::size_t g_CallCount = 0;

/// Notes a call and tells whether it is the one to fail.
bool IsFailing(const char* function)
{
    if (g_CallCount < g_Calls.size())
        g_Calls[g_CallCount++] = function;
    if (!g_FailingFunction.empty() && g_FailingFunction != function)
        return false;
    if (g_CallsUntilFailure == 0 || --g_CallsUntilFailure > 0)
        return false;
    g_HasFailed = true;
    errno = EIO;
    return true;
}

} // namespace

// With --wrap=f the linker sends every call of f to __wrap_f, and __real_f is f itself. Those with
// 64 in their names are what the C library makes of fopen, fseeko and ftello for large files.
extern "C"
{

    std::FILE* __real_fopen64(const char* name, const char* mode);
    int __real_fseeko64(std::FILE* file, off_t offset, int origin);
    off_t __real_ftello64(std::FILE* file);
    std::size_t __real_fread(void* dest, std::size_t size, std::size_t count, std::FILE* file);
    std::size_t
    __real_fwrite(const void* src, std::size_t size, std::size_t count, std::FILE* file);
    int __real_fclose(std::FILE* file);

    std::FILE* __wrap_fopen64(const char* name, const char* mode)
    {
        const char* call = mode[0] == 'r' ? "fopen to read" : "fopen to write";
        return IsFailing(call) ? nullptr : __real_fopen64(name, mode);
    }

    int __wrap_fseeko64(std::FILE* file, off_t offset, int origin)
    {
        return IsFailing("fseeko") ? -1 : __real_fseeko64(file, offset, origin);
    }

    off_t __wrap_ftello64(std::FILE* file)
    {
        return IsFailing("ftello") ? -1 : __real_ftello64(file);
    }

    std::size_t __wrap_fread(void* dest, std::size_t size, std::size_t count, std::FILE* file)
    {
        return __real_fread(dest, size, IsFailing("fread") ? count / 2 : count, file);
    }

    std::size_t __wrap_fwrite(const void* src, std::size_t size, std::size_t count, std::FILE* file)
    {
        return __real_fwrite(src, size, IsFailing("fwrite") ? count / 2 : count, file);
    }

    int __wrap_fclose(std::FILE* file)
    {
        const bool isFailing = IsFailing("fclose");
        const int result = __real_fclose(file);
        return isFailing ? EOF : result;
    }

} // extern "C"

namespace testsupport
{

CStreamFault::CStreamFault(const char* function, int n)
{
    g_FailingFunction = function;
    g_CallsUntilFailure = n;
    g_HasFailed = false;
    g_CallCount = 0;
}

CStreamFault::~CStreamFault()
{
    g_CallsUntilFailure = 0;
}

bool CStreamFault::HasFailed() const
{
    return g_HasFailed;
}

std::vector<std::string> CStreamFault::GetCalls() const
{
    return {g_Calls.begin(), g_Calls.begin() + g_CallCount};
}

} // namespace testsupport
