#include <cstdio>
#include <filesystem>
#include <set>

#include <gtest/gtest.h>

#include "Reliability/HostileModels.h"
#include "Reliability/MemoryBound.h"
#include "Reliability/NastyModels.h"
#include "Reliability/Program.h"
#include "Support/CTemporaryFolder.h"
#include "Support/SModel.h"

using testsupport::CTemporaryFolder;
using testsupport::FolderContents;
using testsupport::SProgramResult;

namespace
{

#ifdef ZEK_IS_SANITIZED
constexpr long ProgramKilobytes = 1024 * 1024; // the address sanitizer keeps what is freed
#else
constexpr long ProgramKilobytes = 16 * 1024; // the program, and what this test hands down to it
#endif

class NastyProgramTest : public testing::TestWithParam<int>
{
};

} // namespace

TEST_P(NastyProgramTest, ANastyModelIsRewrittenOrRefusedAndNoOtherFileChanges)
{
    constexpr int step = 67; // takes a few values of each kind from each version
    const CTemporaryFolder folder;
    folder.Write("tex_dxt/000.dds", "variant");
    folder.Write("other.zek", "bystander");
    const std::string path = folder.GetPath("model.zek");

    int index = GetParam();
    int runCount = 0;
    ForEachNastyModel(
        GetParam(),
        [&](const SNastyModel& model)
        {
            if (++index % step != 0)
                return;
            SCOPED_TRACE(model.what);
            folder.Write("model.zek", model.image);
            FolderContents before = folder.GetContents();
            const SProgramResult result = RunTool(path);
            FolderContents after = folder.GetContents();
            EXPECT_LT(result.peakKilobytes, ProgramKilobytes);
            EXPECT_EQ(result.errors, "");
            if (result.exitStatus == 0)
            {
                EXPECT_TRUE(IsSuccess(result));
                EXPECT_EQ(after["model.zek"].size(), before["model.zek"].size());
                after.erase("model.zek");
                before.erase("model.zek");
            }
            else
            {
                EXPECT_EQ(result.exitStatus, 255);
                EXPECT_EQ(result.output, "Error " + path + "\n");
            }
            EXPECT_EQ(after, before);
            ++runCount;
        });
    EXPECT_GE(runCount, 4);
    RecordProperty("runs", runCount);
}

INSTANTIATE_TEST_SUITE_P(
    Version,
    NastyProgramTest,
    testing::Range(testsupport::OldestVersion, testsupport::UnknownVersion + 1));

TEST(HostileProgramTest, AHostileModelTakesNoMoreOfTheMachinesMemoryThanTheBound)
{
    const CTemporaryFolder folder;
    constexpr std::size_t modelSize = 1024 * 1024;
    const std::set<std::filesystem::path> paths = WriteHostileModels(folder, modelSize);
    EXPECT_GT(paths.size(), 40u);

    for (const std::filesystem::path& path : paths)
    {
        SCOPED_TRACE(path);
        const bool isAccepted = path.filename().string().find(AcceptedStart) == 0;
        const auto size = static_cast<std::size_t>(std::filesystem::file_size(path));
        const SProgramResult result = RunTool(path);
        EXPECT_EQ(result.exitStatus, isAccepted ? 0 : 255);
        const long bound = static_cast<long>(GetMostHeapBytes(size) / 1024) + ProgramKilobytes;
        EXPECT_LT(result.peakKilobytes, bound);
        std::printf(
            "%7ld KB resident: %s\n", result.peakKilobytes, path.filename().string().c_str());
    }
}
