#pragma once

#include <filesystem>
#include <iterator>

#include "Support/CTemporaryFolder.h"

namespace testsupport
{

/// A temporary folder that is the working folder while the object lives.
class CTemporaryWorkingFolder : public CTemporaryFolder
{
public:
    CTemporaryWorkingFolder() : m_Former(std::filesystem::current_path())
    {
        std::filesystem::current_path(GetPath());
    }

    ~CTemporaryWorkingFolder() { std::filesystem::current_path(m_Former); }

private:
    std::filesystem::path m_Former;
};

/// Returns how many descriptors the test program has open.
inline long CountOpenDescriptors()
{
    return std::distance(
        std::filesystem::directory_iterator("/proc/self/fd"),
        std::filesystem::directory_iterator());
}

} // namespace testsupport
