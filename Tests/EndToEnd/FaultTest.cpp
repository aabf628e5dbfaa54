#include <filesystem>

#include <gtest/gtest.h>
#include <unistd.h>

#include "Tool.h"

using namespace testsupport;
namespace files = std::filesystem;

namespace
{

const CModelBuilder FullModel = CModelBuilder::Build(MakeFullModel(26));
const std::string NothingFound = NoTextures + NoCubemaps + NoLightmaps;

/// Runs the program on "model.zek" with so much address space.
SProgramResult RunToolInMemory(const CTemporaryFolder& folder, int kilobytes)
{
    const std::string script = "ulimit -v " + std::to_string(kilobytes) + " && exec \"$0\" \"$1\"";
    return RunProgram({"sh", "-c", script, ZEKTEXCOMP_PROGRAM, "model.zek"}, folder.GetPath());
}

/// Expects a run to fail in writing to a device that is always full, reached by a backslash path.
void ExpectErrorOnFullDisk(const Bytes& image)
{
    const CTemporaryFolder folder;
    folder.Write("a/model.zek", image);
    files::create_symlink("/dev/full", folder.GetPath("a\\model.zek"));
    const SProgramResult result = RunTool(folder, {"a\\model.zek"});
    EXPECT_EQ(NothingFound + "Error a\\model.zek\n", result.output);
    EXPECT_EQ("", result.errors);
    EXPECT_EQ(255, result.exitStatus) << "signal " << result.signal;
    EXPECT_EQ(FolderContents({{"a/model.zek", image}}), folder.GetContents());
}

} // namespace

TEST(Faults, FullDiskIsAnErrorForASmallModelWhichFailsInClosing)
{
    if (!files::exists("/dev/full"))
        GTEST_SKIP() << "this system has no /dev/full";
    ExpectErrorOnFullDisk(FullModel.GetImage());
}

TEST(Faults, FullDiskIsAnErrorForALargeModelWhichFailsInWriting)
{
    if (!files::exists("/dev/full"))
        GTEST_SKIP() << "this system has no /dev/full";
    Bytes image = FullModel.GetImage();
    image.resize(1 << 20);
    ExpectErrorOnFullDisk(image);
}

TEST(Faults, ReadOnlyModelIsAnErrorAndStaysAsItIs)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "root may write to every file";
    const CTemporaryFolder folder;
    folder.Write("model.zek", FullModel.GetImage());
    files::permissions(folder.GetPath("model.zek"), files::perms::owner_read);
    const SProgramResult result = RunTool(folder, {"model.zek"});
    EXPECT_EQ(NothingFound + "Error model.zek\n", result.output);
    EXPECT_EQ(255, result.exitStatus);
    EXPECT_EQ(FullModel.GetImage(), folder.Read("model.zek"));
}

TEST(Faults, UnreadableModelIsAnError)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "root may read every file";
    const CTemporaryFolder folder;
    folder.Write("model.zek", FullModel.GetImage());
    files::permissions(folder.GetPath("model.zek"), files::perms::owner_write);
    const SProgramResult result = RunTool(folder, {"model.zek"});
    EXPECT_EQ("Error model.zek\n", result.output);
    EXPECT_EQ(255, result.exitStatus);
    files::permissions(folder.GetPath("model.zek"), files::perms::owner_read);
    EXPECT_EQ(FullModel.GetImage(), folder.Read("model.zek"));
}

TEST(Faults, ModelLargerThanTheMemoryIsAnErrorAndStaysAsItIs)
{
    if (HasAddressSanitizer)
        GTEST_SKIP() << "the address sanitizer needs more address space than the limit leaves";
    constexpr int limit = 32 * 1024;
    const CTemporaryFolder folder;
    folder.Write("model.zek", FullModel.GetImage());
    EXPECT_EQ(0, RunToolInMemory(folder, limit).exitStatus) << "the limit is enough to run at all";

    Bytes image = FullModel.GetImage();
    image.resize(40 << 20);
    folder.Write("model.zek", image);
    const SProgramResult result = RunToolInMemory(folder, limit);
    EXPECT_EQ("Error model.zek\n", result.output);
    EXPECT_EQ("", result.errors);
    EXPECT_EQ(255, result.exitStatus) << "signal " << result.signal;
    EXPECT_TRUE(image == folder.Read("model.zek"));

    EXPECT_EQ(0, RunTool(folder, {"model.zek"}).exitStatus) << "it is the limit that refuses it";
}

TEST(Faults, ModelWhoseSizeNeedsMoreThan32BitsIsAnErrorAndIsNotCutShort)
{
    const CTemporaryFolder folder;
    const Bytes& image = FullModel.GetImage();
    for (std::uintmax_t lowBits : {std::uintmax_t{0}, std::uintmax_t{image.size()}})
    {
        const std::uintmax_t size = (std::uintmax_t{1} << 32) + lowBits;
        folder.Write("model.zek", image);
        std::error_code error;
        files::resize_file(folder.GetPath("model.zek"), size, error);
        if (error)
            GTEST_SKIP() << "the file system holds no file of that size: " << error.message();
        const files::file_time_type past =
            files::last_write_time(folder.GetPath("model.zek")) - std::chrono::hours(1);
        files::last_write_time(folder.GetPath("model.zek"), past);

        const SProgramResult result = RunTool(folder, {"model.zek"});
        EXPECT_EQ("Error model.zek\n", result.output);
        EXPECT_EQ(255, result.exitStatus);
        EXPECT_LT(result.peakKilobytes, 256 * 1024);
        EXPECT_EQ(size, files::file_size(folder.GetPath("model.zek")));
        EXPECT_EQ(past, files::last_write_time(folder.GetPath("model.zek")));
    }
}
