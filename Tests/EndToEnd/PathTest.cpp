#include <filesystem>

#include <gtest/gtest.h>

#include "Tool.h"

using namespace testsupport;

namespace
{

const CModelBuilder OneTexture = CModelBuilder::Build(
    []
    {
        SModel model;
        model.textures = {STexture{"name.png", 1, Old}};
        return model;
    }());

/// Writes a model of one texture to a file and expects a run on a path to find just these flags
/// and to write its result to a file.
void ExpectPath(
    const CTemporaryFolder& folder,
    const std::string& path,
    const std::string& readFile,
    const std::string& writtenFile,
    const Flags& flags)
{
    folder.Write(readFile, OneTexture.GetImage());
    const SItemFlags itemFlags = {{flags}, {}, {}};
    ExpectSuccess(
        folder, path, MakeCountLines(26, itemFlags), writtenFile,
        MakePatched(OneTexture, itemFlags));
}

} // namespace

TEST(Paths, WithoutAFolderTheVariantsLieInTheWorkingFolder)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/000.pvr", "");
    ExpectPath(folder, "scene.bin", "scene.bin", "scene.bin", {1, 0, 0, 0});
}

TEST(Paths, VariantsLieBesideTheModelAndNotInTheWorkingFolder)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/000.pvr", "");
    folder.Write("models/tex_etc/000.pvr", "");
    ExpectPath(folder, "models/scene.bin", "models/scene.bin", "models/scene.bin", {0, 1, 0, 0});
}

TEST(Paths, AbsolutePathIsTakenAsItIs)
{
    const CTemporaryFolder folder;
    folder.Write("models/tex_etc/000.pvr", "");
    ExpectPath(
        folder, folder.GetPath("models/scene.bin"), "models/scene.bin", "models/scene.bin",
        {0, 1, 0, 0});
}

TEST(Paths, WithDotsIsTakenAsItIs)
{
    const CTemporaryFolder folder;
    folder.Write("tex_etc/000.pvr", "");
    folder.MakeFolder("models");
    ExpectPath(folder, "./models/../scene.bin", "scene.bin", "scene.bin", {0, 1, 0, 0});
}

TEST(Paths, WithBackslashesIsReadWithSlashesAndWrittenAsItStands)
{
    const CTemporaryFolder folder;
    folder.Write("a/b/tex_pvrtc/000.pvr", "not there: the backslashes stay in the variants' paths");
    ExpectPath(folder, "a\\b\\scene.bin", "a/b/scene.bin", "a\\b\\scene.bin", None);
}

TEST(Paths, WithBackslashesVariantsAreLookedForUnderThem)
{
    const CTemporaryFolder folder;
    folder.Write("a\\tex_dxt/000.dds", "");
    ExpectPath(folder, "a\\scene.bin", "a/scene.bin", "a\\scene.bin", {0, 0, 0, 1});
}

TEST(Paths, FileWhoseNameHoldsTheBackslashIsNotTheOneThatIsRead)
{
    const CTemporaryFolder folder;
    folder.Write("a\\scene.bin", OneTexture.GetImage());
    ExpectError(folder, "a\\scene.bin");
}

TEST(Paths, FileWhoseNameHoldsTheBackslashIsOverwritten)
{
    const CTemporaryFolder folder;
    folder.Write(
        "a\\scene.bin", "something that is longer than the model: " + std::string(999, '-'));
    ExpectPath(folder, "a\\scene.bin", "a/scene.bin", "a\\scene.bin", None);
}

TEST(Paths, MissingFolderOfTheSecondFileIsAnErrorThatTouchesNothing)
{
    const CTemporaryFolder folder;
    folder.Write("a/b/scene.bin", OneTexture.GetImage());
    const FolderContents contents = folder.GetContents();
    const SProgramResult result = RunTool(folder, {"a\\b/scene.bin"});
    EXPECT_EQ(NoTextures + NoCubemaps + NoLightmaps + "Error a\\b/scene.bin\n", result.output);
    EXPECT_EQ(255, result.exitStatus);
    EXPECT_EQ(contents, folder.GetContents());
}

TEST(Paths, UserDataPrefixIsHonouredByWritingAlone)
{
    const CTemporaryFolder folder;
    folder.Write("UserData/tex_pvrtc/000.pvr", "");
    folder.Write("UserData\\tex_etc/000.pvr", "");
    folder.Write("Tarvelquinn\\UserData\\tex_astc/000.pvr", "");
    ExpectPath(
        folder, "UserData\\scene.bin", "UserData/scene.bin", "Tarvelquinn\\UserData\\scene.bin",
        {0, 1, 0, 0});
    EXPECT_FALSE(std::filesystem::exists(folder.GetPath("Tarvelquinn")));
}

TEST(Paths, SettingPrefixIsHonouredByWritingAlone)
{
    const CTemporaryFolder folder;
    folder.Write("Setting\\tex_etc/000.pvr", "");
    ExpectPath(
        folder, "Setting\\scene.bin", "Setting/scene.bin", "Tarvelquinn\\Setting\\scene.bin",
        {0, 1, 0, 0});
}

TEST(Paths, PrefixCountsOnlyInFullAtTheStartAndInItsOwnCase)
{
    for (const std::string start : {"userdata\\", "SETTING\\", "Settings\\", "a\\Setting\\"})
    {
        const CTemporaryFolder folder;
        std::string read = start + "scene.bin";
        for (char& character : read)
            character = character == '\\' ? '/' : character;
        ExpectPath(folder, start + "scene.bin", read, start + "scene.bin", None);
    }
}

TEST(Paths, PrefixWithASlashIsAnOrdinaryFolder)
{
    const CTemporaryFolder folder;
    folder.Write("UserData/tex_pvrtc/000.pvr", "");
    ExpectPath(
        folder, "UserData/scene.bin", "UserData/scene.bin", "UserData/scene.bin", {1, 0, 0, 0});
}

TEST(Paths, TrailByteEqualToABackslashDoesNotEndTheFolderOfTheVariants)
{
    const CTemporaryFolder folder;
    folder.Write("a/tex_pvrtc/000.pvr", "");
    folder.Write("a/\x83\x5Ctex_etc/000.pvr", "");
    folder.Write("a/\x83/tex_astc/000.pvr", "");
    ExpectPath(
        folder, "a/\x83\x5Cscene.bin", "a/\x83/scene.bin", "a/\x83\x5Cscene.bin", {1, 0, 0, 0});
}

TEST(Paths, FolderNameWithATrailByteEqualToABackslashIsReadWithASlashLikeAnyOther)
{
    const CTemporaryFolder folder;
    folder.Write("\x83\x5C/tex_pvrtc/000.pvr", "");
    folder.Write("\x83/tex_etc/000.pvr", "");
    ExpectPath(folder, "\x83\x5C/scene.bin", "\x83/scene.bin", "\x83\x5C/scene.bin", {1, 0, 0, 0});
}

TEST(Paths, FolderNameInShiftJISWithoutThatByteIsTakenAsItIs)
{
    const CTemporaryFolder folder;
    folder.Write("\x83\x41/tex_pvrtc/000.pvr", "");
    ExpectPath(
        folder, "\x83\x41/scene.bin", "\x83\x41/scene.bin", "\x83\x41/scene.bin", {1, 0, 0, 0});
}

TEST(Paths, OfAFolderIsAnErrorAtOnceAndWithoutMuchMemory)
{
    const CTemporaryFolder folder;
    folder.Write("models/scene.bin", OneTexture.GetImage());
    ExpectError(folder, "models");
    ExpectError(folder, "models/");
    ExpectError(folder, ".");
    if (IsFolderAsLargeAsAFile)
        GTEST_SKIP() << WhyFoldersTakeMemory;
    constexpr long mostKilobytes = 128 * 1024; // with a sanitizer; the program itself takes 1 MB
    EXPECT_LT(RunTool(folder, {"models"}).peakKilobytes, mostKilobytes);
}

TEST(Paths, OfAFileWithASlashAtTheEndIsAnError)
{
    const CTemporaryFolder folder;
    folder.Write("scene.bin", OneTexture.GetImage());
    ExpectError(folder, "scene.bin/");
}
