#include <algorithm>

#include <gtest/gtest.h>

#include "Reliability/RunMain.h"
#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"

using testsupport::Bytes;

TEST(StreamFaultTest, AnyCallOnAFileMayFailAndTheRunEndsInErrorWithNothingWrittenBeforeTheWrite)
{
    const testsupport::CTemporaryFolder folder;
    const auto model = testsupport::CModelBuilder::Build(testsupport::MakeFullModel(26));
    const std::string path = folder.GetPath("model.zek");

    std::vector<std::string> failedCalls;
    SFault fault;
    for (fault.streamCall = 1;; ++fault.streamCall)
    {
        SCOPED_TRACE("call " + std::to_string(fault.streamCall));
        folder.Write("model.zek", model.GetImage());
        const SMainResult result = RunMain(path, fault);
        EXPECT_EQ(result.leakedBlocks, 0u);
        EXPECT_FALSE(result.hasLeakedFile);
        if (!result.hasFaultCome)
        {
            EXPECT_EQ(result.status, 0) << result.output;
            break;
        }

        EXPECT_EQ(result.status, -1);
        EXPECT_NE(result.output.find("Error " + path + "\n"), std::string::npos) << result.output;
        failedCalls.push_back(result.streamCalls[static_cast<std::size_t>(fault.streamCall) - 1]);
        const bool hasWriteBegun = std::count(failedCalls.begin(), failedCalls.end(), "fwrite") > 0;
        if (!hasWriteBegun)
        {
            EXPECT_TRUE(folder.Read("model.zek") == model.GetImage());
        }
    }

    const std::vector<std::string> allCalls = {"fopen to read",  "fseeko", "ftello",
                                               "fseeko",         "fread",  "fclose",
                                               "fopen to write", "fwrite", "fclose"};
    EXPECT_EQ(failedCalls, allCalls);
}

TEST(StreamFaultTest, AStreamIsClosedOnceWhateverClosingItAnswers)
{
    const testsupport::CTemporaryFolder folder;
    const auto model = testsupport::CModelBuilder::Build(testsupport::MakeFullModel(26));
    folder.Write("model.zek", model.GetImage());

    constexpr int firstClose = 6;
    SFault fault;
    fault.streamCall = firstClose;
    const SMainResult result = RunMain(folder.GetPath("model.zek"), fault);
    EXPECT_EQ(std::count(result.streamCalls.begin(), result.streamCalls.end(), "fclose"), 1);
}
