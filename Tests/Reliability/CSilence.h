#pragma once

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

/// Drops what is printed on standard output while it lives. Failing expectations print there as
/// well, so it must not span any.
class CSilence
{
public:
    CSilence()
    {
        std::fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }

    ~CSilence()
    {
        std::fflush(stdout);
        dup2(m_Output, STDOUT_FILENO);
        close(m_Output);
    }

    CSilence(const CSilence&) = delete;
    CSilence& operator=(const CSilence&) = delete;

private:
    int m_Output = dup(STDOUT_FILENO);
};
