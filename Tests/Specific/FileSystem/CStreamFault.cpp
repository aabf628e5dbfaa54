#include "CStreamFault.h"

#include <cstdio>

namespace
{

using testsupport::EStreamCall;

EStreamCall g_FailingCall = EStreamCall::None;
int g_CallsLeft = 0;

bool IsToFail(EStreamCall call)
{
    return call == g_FailingCall && --g_CallsLeft == 0;
}

} // namespace

// With --wrap=f the linker sends every call of f to __wrap_f, and __real_f is f itself.
extern "C"
{
    int __real_fseek(std::FILE* file, long offset, int origin);
    long __real_ftell(std::FILE* file);
    int __real_fclose(std::FILE* file);

    int __wrap_fseek(std::FILE* file, long offset, int origin)
    {
        return IsToFail(EStreamCall::Seek) ? -1 : __real_fseek(file, offset, origin);
    }

    long __wrap_ftell(std::FILE* file)
    {
        return IsToFail(EStreamCall::Tell) ? -1 : __real_ftell(file);
    }

    int __wrap_fclose(std::FILE* file)
    {
        const int result = __real_fclose(file);
        return IsToFail(EStreamCall::Close) ? EOF : result;
    }
}

namespace testsupport
{

CStreamFault::CStreamFault(EStreamCall call, int n)
{
    g_FailingCall = call;
    g_CallsLeft = n;
}

CStreamFault::~CStreamFault()
{
    g_FailingCall = EStreamCall::None;
}

} // namespace testsupport
