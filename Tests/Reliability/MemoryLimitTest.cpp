#include <gtest/gtest.h>

#include "Reliability/Program.h"
#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"

using testsupport::FolderContents;

namespace
{

constexpr int StepKilobytes = 4;

testsupport::SProgramResult RunWithin(int kilobytes, const std::string& model)
{
    return RunShell("ulimit -d " + std::to_string(kilobytes) + "; exec \"$0\" \"$1\"", model);
}

} // namespace

TEST(MemoryLimitTest, WithTooLittleMemoryTheRunEndsInAnErrorAndTheFileIsUntouched)
{
#ifdef ZEK_IS_SANITIZED
    GTEST_SKIP() << "the sanitizers take memory of their own";
#endif
    const testsupport::CTemporaryFolder folder;
    testsupport::SModel model = testsupport::MakeFullModel(25);
    model.meshes[0].vertexCount = 50000;
    folder.Write("model.zek", testsupport::CModelBuilder::Build(model).GetImage());
    const FolderContents before = folder.GetContents();
    const std::string path = folder.GetPath("model.zek");

    // The least with which the program starts at all: a file that is not there needs no more.
    int kilobytes = StepKilobytes;
    while (!IsError(RunWithin(kilobytes, "missing"), "missing"))
        kilobytes += StepKilobytes;

    EXPECT_EQ(RunWithin(kilobytes, path).output, "Error " + path + "\n") << "already in reading";
    int failureCount = 0;
    for (;; kilobytes += StepKilobytes)
    {
        SCOPED_TRACE(std::to_string(kilobytes) + " KB");
        const testsupport::SProgramResult result = RunWithin(kilobytes, path);
        if (result.exitStatus == 0)
            break;
        ASSERT_TRUE(IsError(result, path));
        ASSERT_EQ(folder.GetContents(), before);
        ++failureCount;
    }
    EXPECT_GT(failureCount, 10);
    RecordProperty("failures", failureCount);
}
