#include "Reliability/RunMain.h"

#include <new>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "Support/CStreamFault.h"
#include "Support/Heap.h"

using testsupport::CAllocationWatch;
using testsupport::CStreamFault;

/// The main of Source/main.cpp, which is compiled under this name for the test.
int ZEKTexCompMain(int argc, char* argv[]);

namespace
{

/// Returns the number that the next file to be opened gets: it grows when one is left open.
int GetNextFileNumber()
{
    const int file = open("/dev/null", O_RDONLY);
    close(file);
    return file;
}

} // namespace

SMainResult RunMain(const std::string& path, const SFault& fault)
{
    std::string program = "ZEKTexComp";
    std::string argument = path;
    char* arguments[] = {program.data(), argument.data(), nullptr};

    testing::internal::CaptureStdout();
    const int nextFileBefore = GetNextFileNumber();
    const std::size_t blocksBefore = testsupport::GetLiveBlocks();

    SMainResult result;
    bool hasAllocationFailed = false;
    {
        const CStreamFault streamFault(fault.streamCall);
        {
            int allocationsLeft = fault.allocation;
            const CAllocationWatch watch(
                [&](std::size_t)
                {
                    if (--allocationsLeft != 0)
                        return;
                    hasAllocationFailed = true;
                    throw std::bad_alloc();
                });
            result.status = ZEKTexCompMain(2, arguments);
        }
        result.leakedBlocks = testsupport::GetLiveBlocks() - blocksBefore;
        result.hasFaultCome = hasAllocationFailed || streamFault.HasFailed();
        result.streamCalls = streamFault.GetCalls();
    }
    result.hasLeakedFile = GetNextFileNumber() != nextFileBefore;
    result.output = testing::internal::GetCapturedStdout();
    return result;
}
