#include <filesystem>

#include <gtest/gtest.h>

#include "Tool.h"

using namespace testsupport;

namespace
{

const Bytes EmptyModel = CModelBuilder::Build(SModel()).GetImage();
const Bytes PatchedEmptyModel = MakePatched(CModelBuilder::Build(SModel()), {});
const std::string NothingFound = NoTextures + NoCubemaps + NoLightmaps;

} // namespace

TEST(CommandLine, NoArgumentPrintsTheUsageLine)
{
    const CTemporaryFolder folder;
    folder.Write("model.zek", EmptyModel);
    const SProgramResult result = RunTool(folder, {});
    EXPECT_EQ("ZEKTexComp.exe infile\n", result.output);
    EXPECT_EQ("", result.errors);
    EXPECT_EQ(255, result.exitStatus);
    EXPECT_EQ(FolderContents({{"model.zek", EmptyModel}}), folder.GetContents());
}

TEST(CommandLine, OneModelIsOverwrittenInItsPlace)
{
    const CTemporaryFolder folder;
    folder.Write("model.zek", EmptyModel);
    ExpectSuccess(folder, "model.zek", NothingFound, "model.zek", PatchedEmptyModel);
}

TEST(CommandLine, MissingFileIsAnError)
{
    const CTemporaryFolder folder;
    ExpectError(folder, "missing.zek");
    ExpectError(folder, "missing/model.zek");
}

TEST(CommandLine, ModelThatIsRefusedIsAnErrorAndPrintsNoCounts)
{
    Bytes cut = EmptyModel;
    cut.pop_back();
    ExpectErrorForModel(cut);
    ExpectErrorForModel({});
}

TEST(CommandLine, EmptyPathIsAnError)
{
    ExpectError(CTemporaryFolder(), "");
}

TEST(CommandLine, SecondArgumentIsIgnored)
{
    const CTemporaryFolder folder;
    folder.Write("model.zek", EmptyModel);
    folder.Write("other.zek", EmptyModel);
    const SProgramResult result = RunTool(folder, {"model.zek", "other.zek", "-x"});
    EXPECT_EQ(NothingFound + "Succeeded\n", result.output);
    EXPECT_EQ(0, result.exitStatus);
    EXPECT_EQ(
        FolderContents({{"model.zek", PatchedEmptyModel}, {"other.zek", EmptyModel}}),
        folder.GetContents());
}

TEST(CommandLine, SecondArgumentDoesNotMendTheFirst)
{
    const CTemporaryFolder folder;
    folder.Write("model.zek", EmptyModel);
    const SProgramResult result = RunTool(folder, {"missing.zek", "model.zek"});
    EXPECT_EQ("Error missing.zek\n", result.output);
    EXPECT_EQ(255, result.exitStatus);
    EXPECT_EQ(FolderContents({{"model.zek", EmptyModel}}), folder.GetContents());
}

TEST(CommandLine, PercentSignsInThePathAreText)
{
    const CTemporaryFolder folder;
    ExpectError(folder, "%s%n");
    ExpectError(folder, "%d %% %5$s %");
    folder.Write("%s%n.zek", EmptyModel);
    ExpectSuccess(folder, "%s%n.zek", NothingFound, "%s%n.zek", PatchedEmptyModel);
}

TEST(CommandLine, AnyBytesOfThePathArePrinted)
{
    ExpectError(CTemporaryFolder(), "a b\t\n\x83\x5C\xFF\\c");
}

TEST(CommandLine, PathLongerThanTheFormatBufferIsPrintedWhole)
{
    ExpectError(CTemporaryFolder(), std::string(20000, 'p'));
}

TEST(CommandLine, ArgumentThatLooksLikeAnOptionIsAPath)
{
    const CTemporaryFolder folder;
    ExpectError(folder, "--help");
    folder.Write("-v", EmptyModel);
    ExpectSuccess(folder, "-v", NothingFound, "-v", PatchedEmptyModel);
}

TEST(CommandLine, SecondRunPrintsTheSameAndWritesTheSame)
{
    const CTemporaryFolder folder;
    SModel model = MakeFullModel(26);
    folder.Write("tex_pvrtc/001.pvr", "");
    const SItemFlags flags = {{None, {1, 0, 0, 0}}, {None, None}, {None, None}};
    ExpectFlags(folder, model, flags);
    const Bytes patched = folder.Read("model.zek");
    ExpectSuccess(folder, "model.zek", MakeCountLines(26, flags), "model.zek", patched);
}

TEST(CommandLine, FileIsOverwrittenInPlaceAndNotReplaced)
{
    const CTemporaryFolder folder;
    folder.Write("model.zek", EmptyModel);
    std::filesystem::create_hard_link(folder.GetPath("model.zek"), folder.GetPath("twin.zek"));
    EXPECT_EQ(0, RunTool(folder, {"model.zek"}).exitStatus);
    EXPECT_EQ(
        FolderContents({{"model.zek", PatchedEmptyModel}, {"twin.zek", PatchedEmptyModel}}),
        folder.GetContents());
}

TEST(CommandLine, LinkToAModelStaysALink)
{
    const CTemporaryFolder folder;
    folder.Write("model.zek", EmptyModel);
    std::filesystem::create_symlink("model.zek", folder.GetPath("link.zek"));
    EXPECT_EQ(0, RunTool(folder, {"link.zek"}).exitStatus);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.GetPath("link.zek")));
    EXPECT_EQ(PatchedEmptyModel, folder.Read("model.zek"));
}
