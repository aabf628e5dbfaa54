#include "Reliability/RunMain.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include "Reliability/HeapCount.h"
#include "Reliability/StreamFault.h"

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
    const std::size_t blocksBefore = heapcount::GetLiveBlocks();
    streamfault::FailCall(fault.streamCall);
    heapcount::FailAllocation(fault.allocation);

    SMainResult result;
    result.status = ZEKTexCompMain(2, arguments);

    result.hasFaultCome = heapcount::HasFailed() || streamfault::HasFailed();
    heapcount::FailAllocation(0);
    result.leakedBlocks = heapcount::GetLiveBlocks() - blocksBefore;
    result.hasLeakedFile = GetNextFileNumber() != nextFileBefore;
    result.streamCalls = streamfault::GetCalls();
    streamfault::FailCall(0);
    result.output = testing::internal::GetCapturedStdout();
    return result;
}
