#include "Reliability/StreamFault.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

namespace
{

int g_CallsUntilFailure = 0;
bool g_HasFailed = false;

// No vector: a run that counts its allocations must not see any of ours.
std::array<const char*, 64> g_Calls;
std::size_t g_CallCount = 0;

/// Notes a call and tells whether it is the one to fail.
bool IsFailing(const char* call)
{
    g_Calls[g_CallCount++ % g_Calls.size()] = call;
    if (g_CallsUntilFailure == 0 || --g_CallsUntilFailure > 0)
        return false;
    g_HasFailed = true;
    errno = EIO;
    return true;
}

} // namespace

extern "C"
{

    std::FILE* __real_fopen(const char* name, const char* mode);
    int __real_fseek(std::FILE* file, long offset, int origin);
    long __real_ftell(std::FILE* file);
    std::size_t __real_fread(void* dest, std::size_t size, std::size_t count, std::FILE* file);
    std::size_t
    __real_fwrite(const void* src, std::size_t size, std::size_t count, std::FILE* file);
    int __real_fclose(std::FILE* file);

    std::FILE* __wrap_fopen(const char* name, const char* mode)
    {
        const char* call = mode[0] == 'r' ? "fopen to read" : "fopen to write";
        return IsFailing(call) ? nullptr : __real_fopen(name, mode);
    }

    int __wrap_fseek(std::FILE* file, long offset, int origin)
    {
        return IsFailing("fseek") ? -1 : __real_fseek(file, offset, origin);
    }

    long __wrap_ftell(std::FILE* file)
    {
        return IsFailing("ftell") ? -1 : __real_ftell(file);
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

namespace streamfault
{

void FailCall(int n)
{
    g_CallsUntilFailure = n;
    g_HasFailed = false;
    g_CallCount = 0;
}

bool HasFailed()
{
    return g_HasFailed;
}

std::vector<std::string> GetCalls()
{
    return {g_Calls.begin(), g_Calls.begin() + std::min(g_CallCount, g_Calls.size())};
}

} // namespace streamfault
