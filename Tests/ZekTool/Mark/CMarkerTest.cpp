#include "ZekTool/Mark/CMarker.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Independent/FileImage/FileImage.h"
#include "Specific/FileSystem/CRandomAccessFile.h"
#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"

using testsupport::Bytes;
using testsupport::CModelBuilder;
using testsupport::CTemporaryFolder;
using testsupport::Flags;
using testsupport::FolderContents;
using testsupport::SLightmap;
using testsupport::SModel;
using testsupport::SProbe;
using testsupport::STexture;
using zek::EZEKItemKind;
using zektool::FlagBytes;
using zektool::Mark;
using zektool::SMarkItem;
using zektool::SMarkOptions;
using zektool::SMarkResult;
using zektool::SVariantCount;

namespace files = std::filesystem;

namespace
{

SVariantCount GetCount(const SMarkResult& result, EZEKItemKind kind)
{
    return result.counts[static_cast<std::size_t>(kind)];
}

/// Returns the items of which a flag differs.
std::vector<SMarkItem> GetChanges(const SMarkResult& result)
{
    std::vector<SMarkItem> changes;
    std::copy_if(
        result.items.begin(), result.items.end(), std::back_inserter(changes),
        [](const SMarkItem& item) { return item.IsDifferent(); });
    return changes;
}

struct stat GetStatus(const std::string& path)
{
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status;
}

SModel MakeModelOfTwoTextures()
{
    SModel model;
    model.textures = {STexture(), STexture()};
    model.textures[0].name = "wall.png";
    model.textures[1].name = "floor.png";
    model.textures[1].flags = {0, 7, 0, 1};
    return model;
}

class CMarkerTest : public testing::Test
{
protected:
    /// Writes a model and waits until it can be told from any that is written later.
    CModelBuilder Write(const SModel& model, const std::string& name = "model.zek") const
    {
        const CModelBuilder builder = CModelBuilder::Build(model);
        m_Folder.Write(name, builder.GetImage());
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
        return builder;
    }

    SMarkResult MarkModel(const SMarkOptions& options = {}) const { return Mark(m_Path, options); }

    /// Expects a failure with this reason, and that no file has changed.
    void ExpectFailure(
        const std::string& path, const std::string& reason, const SMarkOptions& options = {}) const
    {
        const FolderContents before = m_Folder.GetContents();
        const SMarkResult result = Mark(path, options);
        EXPECT_EQ(result.outcome, SMarkResult::Failed);
        EXPECT_EQ(result.reason, reason);
        EXPECT_EQ(m_Folder.GetContents(), before);
    }

    CTemporaryFolder m_Folder;
    const std::string m_Path = m_Folder.GetPath("model.zek");
};

} // namespace

TEST_F(CMarkerTest, TellsNoItemsOfAModelThatIsRefused)
{
    SModel model = MakeModelOfTwoTextures();
    model.textures[0].flags = {1, 1, 1, 1};
    const CModelBuilder builder = CModelBuilder::Build(model);
    const Bytes& image = builder.GetImage();
    m_Folder.Write("model.zek", Bytes(image.begin(), image.end() - 1));
    const SMarkResult result = MarkModel();
    EXPECT_EQ(result.outcome, SMarkResult::Failed);
    EXPECT_TRUE(result.items.empty());
}

TEST_F(CMarkerTest, SetsFlagsAndMarkerAndTellsEachItemThatChanged)
{
    const CModelBuilder builder = Write(MakeModelOfTwoTextures());
    m_Folder.Write("tex_dxt/000.dds", "");
    m_Folder.Write("tex_dxt/001.dds", "");
    const SMarkResult result = MarkModel();

    EXPECT_EQ(result.outcome, SMarkResult::Changed);
    EXPECT_EQ(result.version, 26);
    EXPECT_TRUE(result.isMarkerSet);
    EXPECT_EQ(result.markerFrom, 0);
    EXPECT_EQ(GetCount(result, EZEKItemKind::Texture).items, 2);
    EXPECT_EQ(
        GetCount(result, EZEKItemKind::Texture).variants,
        (std::array<std::int64_t, zek::CompressionFamilyCount>{0, 0, 0, 2}));
    EXPECT_EQ(GetCount(result, EZEKItemKind::Cubemap).items, 0);

    ASSERT_EQ(GetChanges(result).size(), 2u);
    const SMarkItem second = GetChanges(result)[1];
    EXPECT_EQ(second.kind, EZEKItemKind::Texture);
    EXPECT_EQ(second.index, 1);
    EXPECT_STREQ(second.name, "floor.png");
    EXPECT_EQ(second.offset, static_cast<std::int64_t>(builder.GetTextureFlagOffsets()[1]));
    EXPECT_EQ(second.from, (FlagBytes{0, 7, 0, 1}));
    EXPECT_EQ(second.to, (FlagBytes{0, 0, 0, 1}));

    Bytes expected = builder.GetImage();
    expected[builder.GetOffset("processedMarker")] = 1;
    expected[builder.GetTextureFlagOffsets()[0] + 3] = 1;
    expected[builder.GetTextureFlagOffsets()[1] + 1] = 0;
    EXPECT_EQ(m_Folder.Read("model.zek"), expected);
}

TEST_F(CMarkerTest, EachKindOfItemIsCountedAndNamed)
{
    SModel model;
    model.probes = {SProbe(), SProbe()};
    model.probes[1].name = "Hall";
    model.lightmaps = {SLightmap()};
    Write(model);
    for (int face = 0; face < 6; ++face)
        m_Folder.Write(
            "tex_reflection_cube_etc\\Hall\\reflection_cube_" + std::to_string(face) + ".pvr", "");
    m_Folder.Write("tex_astc/LightMap000.pvr", "");

    const SMarkResult result = MarkModel();
    EXPECT_EQ(GetCount(result, EZEKItemKind::Cubemap).items, 2);
    EXPECT_EQ(GetCount(result, EZEKItemKind::Lightmap).items, 1);
    ASSERT_EQ(result.items.size(), 3u);
    const std::vector<SMarkItem> changes = GetChanges(result);
    ASSERT_EQ(changes.size(), 2u);
    EXPECT_EQ(changes[0].kind, EZEKItemKind::Cubemap);
    EXPECT_EQ(changes[0].index, 1);
    EXPECT_STREQ(changes[0].name, "Hall");
    EXPECT_EQ(changes[0].to, (FlagBytes{0, 1, 0, 0}));
    EXPECT_EQ(changes[1].kind, EZEKItemKind::Lightmap);
    EXPECT_EQ(changes[1].index, 0);
    EXPECT_STREQ(changes[1].name, "LightMap000.png");
    EXPECT_EQ(changes[1].to, (FlagBytes{0, 0, 1, 0}));
}

TEST_F(CMarkerTest, KeepsTheFileItsLinksAndItsMode)
{
    Write(MakeModelOfTwoTextures());
    files::create_hard_link(m_Path, m_Folder.GetPath("link.zek"));
    files::permissions(m_Path, files::perms(0640));
    const struct stat before = GetStatus(m_Path);

    EXPECT_EQ(MarkModel().outcome, SMarkResult::Changed);
    const struct stat after = GetStatus(m_Path);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_nlink, 2u);
    EXPECT_EQ(m_Folder.Read("link.zek"), m_Folder.Read("model.zek"));
}

TEST_F(CMarkerTest, ASecondTimeNothingIsWritten)
{
    Write(MakeModelOfTwoTextures());
    EXPECT_EQ(MarkModel().outcome, SMarkResult::Changed);
    const struct stat before = GetStatus(m_Path);
    std::this_thread::sleep_for(std::chrono::milliseconds(25));

    const SMarkResult result = MarkModel();
    EXPECT_EQ(result.outcome, SMarkResult::Unchanged);
    EXPECT_FALSE(result.isMarkerSet);
    EXPECT_TRUE(GetChanges(result).empty());
    const struct stat after = GetStatus(m_Path);
    EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
    EXPECT_EQ(after.st_ctim.tv_sec, before.st_ctim.tv_sec);
}

TEST_F(CMarkerTest, AlwaysTouchesAModelThatIsAsItHasToBe)
{
    Write(MakeModelOfTwoTextures());
    MarkModel();
    const Bytes marked = m_Folder.Read("model.zek");
    files::last_write_time(m_Path, files::file_time_type::clock::now() - std::chrono::hours(1));
    const files::file_time_type before = files::last_write_time(m_Path);

    SMarkOptions options;
    options.isAlways = true;
    EXPECT_EQ(MarkModel(options).outcome, SMarkResult::Unchanged);
    EXPECT_GT(files::last_write_time(m_Path), before + std::chrono::minutes(59));
    EXPECT_EQ(m_Folder.Read("model.zek"), marked);
}

TEST_F(CMarkerTest, ADryRunTellsTheSameAndWritesNothing)
{
    Write(MakeModelOfTwoTextures());
    m_Folder.Write("tex_etc/000.pvr", "");
    const FolderContents before = m_Folder.GetContents();
    SMarkOptions options;
    options.isDryRun = true;
    options.isAlways = true;
    options.outputPath = m_Folder.GetPath("out.zek");
    options.depfilePath = m_Folder.GetPath("out.d");

    const SMarkResult result = MarkModel(options);
    EXPECT_EQ(result.outcome, SMarkResult::Changed);
    EXPECT_EQ(GetChanges(result).size(), 2u);
    EXPECT_EQ(m_Folder.GetContents(), before);
}

TEST_F(CMarkerTest, AnOutputIsMadeOfAModelThatHasSettled)
{
    m_Folder.Write("model.zek", CModelBuilder::Build(MakeModelOfTwoTextures()).GetImage());
    SMarkOptions options;
    options.outputPath = m_Folder.GetPath("out.zek");
    EXPECT_EQ(SMarkResult::Changed, MarkModel(options).outcome);
    filesystem::CRandomAccessFile model;
    ASSERT_TRUE(model.Open(m_Path));
    const auto now = std::chrono::system_clock::now();
    EXPECT_LE(model.GetState().GetTimeToSettle(now).count(), 0);
}

TEST_F(CMarkerTest, AnOutputIsWrittenAndTheModelLeftAlone)
{
    const CModelBuilder builder = Write(MakeModelOfTwoTextures());
    m_Folder.Write("tex_etc/000.pvr", "");
    m_Folder.Write("out/tex_dxt/000.dds", "not beside the model");
    m_Folder.Write("out/out.zek", "old");
    SMarkOptions options;
    options.outputPath = m_Folder.GetPath("out/out.zek");
    EXPECT_EQ(MarkModel(options).outcome, SMarkResult::Changed);

    FolderContents expected = {
        {"model.zek", builder.GetImage()},
        {"tex_etc/000.pvr", {}},
        {"out/tex_dxt/000.dds", m_Folder.Read("out/tex_dxt/000.dds")}};
    EXPECT_EQ(MarkModel().outcome, SMarkResult::Changed);
    expected["out/out.zek"] = m_Folder.Read("model.zek");
    expected["model.zek"] = m_Folder.Read("model.zek");
    EXPECT_EQ(m_Folder.GetContents(), expected);

    // Also when there is nothing to change.
    m_Folder.Remove("out/out.zek");
    EXPECT_EQ(MarkModel(options).outcome, SMarkResult::Unchanged);
    EXPECT_EQ(m_Folder.GetContents(), expected);
}

TEST_F(CMarkerTest, AnOutputThatCannotBeWrittenIsAFailure)
{
    Write(MakeModelOfTwoTextures());
    m_Folder.MakeFolder("folder");
    const auto expectFailure = [&](const std::string& output, const std::string& error)
    {
        SMarkOptions options;
        options.outputPath = output;
        ExpectFailure(m_Path, "\"" + output + "\" cannot be written: " + error, options);
    };
    expectFailure(m_Folder.GetPath("folder"), "Not a regular file");
    expectFailure("/dev/null", "Not a regular file");
    expectFailure(m_Folder.GetPath("missing/out.zek"), "No such file or directory");

    SMarkOptions options;
    files::create_hard_link(m_Path, m_Folder.GetPath("link.zek"));
    options.outputPath = m_Folder.GetPath("link.zek");
    ExpectFailure(m_Path, "the output is the model itself", options);
}

TEST_F(CMarkerTest, ADepfileNamesTheOutputOrTheModelAndTheFolders)
{
    Write(MakeModelOfTwoTextures());
    m_Folder.MakeFolder("tex_dxt");
    const std::string folders =
        ": \\\n " + m_Folder.GetPath() + "/ \\\n " + m_Folder.GetPath("tex_dxt") + "/\n";
    SMarkOptions options;
    options.depfilePath = m_Folder.GetPath("out.d");
    EXPECT_EQ(MarkModel(options).outcome, SMarkResult::Changed);
    const std::string ofModel = m_Path + folders;
    EXPECT_EQ(m_Folder.Read("out.d"), Bytes(ofModel.begin(), ofModel.end()));

    options.outputPath = m_Folder.GetPath("out.zek");
    EXPECT_EQ(MarkModel(options).outcome, SMarkResult::Unchanged);
    const std::string ofOutput = options.outputPath + folders;
    EXPECT_EQ(m_Folder.Read("out.d"), Bytes(ofOutput.begin(), ofOutput.end()));
}

TEST_F(CMarkerTest, WithoutItsDepfileNothingIsWritten)
{
    Write(MakeModelOfTwoTextures());
    SMarkOptions options;
    options.depfilePath = m_Folder.GetPath("missing/out.d");
    ExpectFailure(
        m_Path,
        "the depfile \"" + options.depfilePath + "\" cannot be written: No such file or directory",
        options);
}

TEST_F(CMarkerTest, VariantsLieBesideTheSymbolicLinkThatIsNamedWhichStays)
{
    Write(MakeModelOfTwoTextures());
    m_Folder.Write("links/tex_dxt/000.dds", "");
    const std::string link = m_Folder.GetPath("links/link.zek");
    files::create_symlink("../model.zek", link);
    EXPECT_EQ(GetCount(Mark(link, {}), EZEKItemKind::Texture).variants[3], 1);
    EXPECT_TRUE(files::is_symlink(link));
    EXPECT_EQ(Mark(link, {}).outcome, SMarkResult::Unchanged);
}

TEST_F(CMarkerTest, PathsAreTheSystemsOwn)
{
    // Names that end in a byte which Shift_JIS takes for a lead byte, and a backslash.
    for (const std::string folder : {"\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", "\x83", "a\\b"})
    {
        SCOPED_TRACE(folder);
        for (const std::string name : {"/model.zek", "/a\\model.zek", "/UserData\\model.zek"})
        {
            Write(MakeModelOfTwoTextures(), folder + name);
            m_Folder.Write(folder + "/tex_pvrtc/000.pvr", "");
            const SMarkResult result = Mark(m_Folder.GetPath(folder + name), {});
            EXPECT_EQ(result.outcome, SMarkResult::Changed) << result.reason;
            EXPECT_EQ(GetCount(result, EZEKItemKind::Texture).variants[0], 1);
            EXPECT_EQ(Mark(m_Folder.GetPath(folder + name), {}).outcome, SMarkResult::Unchanged);
        }
    }
}

TEST_F(CMarkerTest, CubemapsInFoldersCountWhenAskedFor)
{
    SModel model;
    model.probes = {SProbe()};
    Write(model);
    for (int face = 0; face < 6; ++face)
        m_Folder.Write(
            "tex_reflection_cube_dxt/Probe/reflection_cube_" + std::to_string(face) + ".dds", "");
    SMarkOptions options;
    EXPECT_EQ(GetCount(MarkModel(options), EZEKItemKind::Cubemap).variants[3], 0);
    options.isCubemapFolders = true;
    EXPECT_EQ(GetCount(MarkModel(options), EZEKItemKind::Cubemap).variants[3], 1);
    m_Folder.Remove("tex_reflection_cube_dxt/Probe/reflection_cube_5.dds");
    EXPECT_EQ(GetCount(MarkModel(options), EZEKItemKind::Cubemap).variants[3], 0);
}

TEST_F(CMarkerTest, NeitherAModelNorAVariantThatIsAFifoIsWaitedFor)
{
    Write(MakeModelOfTwoTextures());
    m_Folder.MakeFolder("tex_pvrtc");
    ASSERT_EQ(mkfifo(m_Folder.GetPath("tex_pvrtc/000.pvr").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo(m_Folder.GetPath("fifo.zek").c_str(), 0600), 0);
    EXPECT_EQ(GetCount(MarkModel(), EZEKItemKind::Texture).variants[0], 1);
    ExpectFailure(m_Folder.GetPath("fifo.zek"), "cannot be opened: Not a regular file");
}

TEST_F(CMarkerTest, WhatIsNoModelIsAFailureWithItsReason)
{
    ExpectFailure(m_Path, "cannot be opened: No such file or directory");
    ExpectFailure(m_Folder.GetPath(), "cannot be opened: Not a regular file");
    m_Folder.Write("model.zek", "text");
    ExpectFailure(m_Path, "header: magic at 0x0: it looks like text");
}

TEST_F(CMarkerTest, AModelThatHasJustBeenWrittenIsWaitedFor)
{
    const auto start = std::chrono::system_clock::now();
    m_Folder.Write("model.zek", CModelBuilder::Build(MakeModelOfTwoTextures()).GetImage());
    EXPECT_EQ(MarkModel().outcome, SMarkResult::Changed);
    const auto waited = std::chrono::system_clock::now() - start;
    EXPECT_GE(waited, std::chrono::milliseconds(10)); // 20, less a tick of the file system's clock
    EXPECT_LT(waited, std::chrono::seconds(2));
    EXPECT_EQ(MarkModel().outcome, SMarkResult::Unchanged);
}

TEST_F(CMarkerTest, AModelThatAnotherProgramKeepsOpenIsMarkedAllTheSame)
{
    Write(MakeModelOfTwoTextures());
    filesystem::CRandomAccessFile other;
    ASSERT_TRUE(other.Open(m_Path));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(MarkModel().outcome, SMarkResult::Changed);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST_F(CMarkerTest, AModelThatAnotherProgramHasToItselfIsWaitedFor)
{
    Write(MakeModelOfTwoTextures());
    filesystem::CRandomAccessFile other;
    ASSERT_TRUE(other.OpenToWrite(m_Path));
    std::thread closing(
        [&]
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            other.Close();
        });
    EXPECT_EQ(MarkModel().outcome, SMarkResult::Changed);
    closing.join();
}

TEST_F(CMarkerTest, AModelThatIsOnlyTouchedMayBeTouchedByOthers)
{
    Write(MakeModelOfTwoTextures());
    ASSERT_EQ(MarkModel().outcome, SMarkResult::Changed);
    std::atomic<bool> isMarked = false;
    std::thread touching(
        [&]
        {
            while (!isMarked)
                std::filesystem::last_write_time(
                    m_Path, std::filesystem::file_time_type::clock::now());
        });
    SMarkOptions options;
    options.isAlways = true;
    const SMarkResult result = MarkModel(options);
    isMarked = true;
    touching.join();
    EXPECT_EQ(result.outcome, SMarkResult::Unchanged) << result.reason;
}

TEST_F(CMarkerTest, AModelOverFourGigabytesIsMarked)
{
    // Three meshes of 1.6 GB, whose vertices are holes in the file.
    constexpr int vertexCount = 50 * 1000 * 1000;
    constexpr std::int64_t vertexSize = 32; // position, normal, UV
    constexpr std::size_t meshHeaderSize = 10;
    SModel model = MakeModelOfTwoTextures();
    model.version = 25;
    model.meshes.assign(3, testsupport::SMesh());
    for (testsupport::SMesh& mesh : model.meshes)
        mesh = {0, {1, 0, 1, 0, 0, 0}, {}, {}};
    const CModelBuilder builder = CModelBuilder::Build(model);
    Bytes image = builder.GetImage();

    std::ofstream file(m_Path, std::ios::binary);
    std::size_t written = 0;
    const auto writeUpTo = [&](std::size_t end)
    {
        file.write(
            reinterpret_cast<const char*>(image.data() + written),
            static_cast<std::streamsize>(end - written));
        written = end;
    };
    for (int mesh = 0; mesh < 3; ++mesh)
    {
        const std::size_t count = builder.GetOffset("meshes.vertexCount", mesh);
        fileimage::WriteInt(image.data() + count, vertexCount);
        writeUpTo(count + meshHeaderSize);
        file.seekp(vertexCount * vertexSize, std::ios::cur);
    }
    writeUpTo(image.size());
    file.close();
    std::this_thread::sleep_for(std::chrono::milliseconds(25));

    m_Folder.Write("tex_dxt/000.dds", "");
    const SMarkResult result = MarkModel();
    ASSERT_EQ(result.outcome, SMarkResult::Changed) << result.reason;
    EXPECT_EQ(
        GetChanges(result)[0].offset,
        3 * vertexCount * vertexSize +
            static_cast<std::int64_t>(builder.GetTextureFlagOffsets()[0]));
    EXPECT_EQ(MarkModel().outcome, SMarkResult::Unchanged);
}
