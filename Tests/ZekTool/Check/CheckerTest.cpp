#include "ZekTool/Check/Checker.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <utility>

#include <sys/stat.h>

#include "CheckerFixture.h"
#include "Support/SModel.h"

using namespace testsupport;
using zektool::EFinding;

namespace
{

class Checker : public CheckerFixture
{
protected:
    /// Returns a model with a texture, none of whose variants are there.
    static SModel MakeModelWithTexture(const Flags& flags)
    {
        SModel model = MakeModel();
        model.textures = {{"wall.png", 1, flags}};
        return model;
    }

    static Bytes Cut(const SModel& model, std::size_t size)
    {
        Bytes image = CModelBuilder::Build(model).GetImage();
        image.resize(size);
        return image;
    }
};

TEST_F(Checker, FindsNothingWrongWithFullModelsOfAllVersionsWhoseFlagsAreTrue)
{
    for (int version = testsupport::OldestVersion; version <= testsupport::UnknownVersion;
         ++version)
    {
        SModel model = MakeModel(version);
        model.nodes = {SNode()};
        model.meshes = {SMesh()};
        model.materials = {SMaterial()};
        model.textures = {STexture()};
        model.probes = {SProbe()};
        model.bones = {SBone()};
        model.lightmaps = {SLightmap()};
        EXPECT_EQ(Lines(), Check(model)) << version;
        EXPECT_FALSE(m_Result.HasError());
    }
}

TEST_F(Checker, SaysWhyAModelCannotBeOpened)
{
    EXPECT_EQ(
        (Lines{"error: model: No such file or directory; give the path of a model that can be read "
               "[cannot-open]"}),
        Check("missing.zek"));
    EXPECT_TRUE(m_Result.HasError());
    EXPECT_EQ(0, m_Result.findings.at(0).location.offset);
    m_Folder.MakeFolder("folder.zek");
    EXPECT_EQ(
        (Lines{"error: model: not a regular file; give the path of a model that can be read "
               "[cannot-open]"}),
        Check("folder.zek"));
    ASSERT_EQ(0, mkfifo(m_Folder.GetPath("fifo.zek").c_str(), 0600));
    EXPECT_EQ(
        (Lines{"error: model: not a regular file; give the path of a model that can be read "
               "[cannot-open]"}),
        Check("fifo.zek"));
}

TEST_F(Checker, SaysWhatAFileThatIsNoModelLooksLike)
{
    EXPECT_EQ(
        (Lines{"error: header: magic at 0x0: the file is empty; export or copy the model again "
               "[empty-file]"}),
        Check(Bytes()));
    EXPECT_EQ(
        (Lines{"error: header: magic at 0x0: it looks like text; give a ZEK model, or keep other "
               "files out of the list [not-a-model]"}),
        Check(Bytes{'Z', 'E', 'K', '\n'}));
    EXPECT_EQ(
        (Lines{
            "error: header: magic at 0x0: it looks like a PNG picture; give a ZEK model, or keep "
            "other files out of the list [not-a-model]"}),
        Check(Bytes{0x89, 'P', 'N', 'G', 0}));
    EXPECT_EQ(
        (Lines{"error: header: magic at 0x0: it looks like data that starts with \"Z\\x00A\\x01\"; "
               "give a ZEK model, or keep other files out of the list [not-a-model]"}),
        Check(Bytes{'Z', 0, 'A', 1, 2}));
    EXPECT_EQ(
        (Lines{"error: header: magic at 0x0: the file ends within the first 4 bytes; export or "
               "copy the model again [truncated]"}),
        Check(Bytes{'Z', 'E', 'K'}));
}

TEST_F(Checker, SaysThatAFileGivesFewerBytesThanItHas)
{
    // A file of the system's with a size of 4096 and a number in it.
    const std::string path = "/sys/kernel/uevent_seqnum";
    std::error_code error;
    if (std::filesystem::file_size(path, error) != 4096 || error)
        GTEST_SKIP() << "There is no " << path << " here.";
    const zektool::SCheckResult result = zektool::Check(path, m_Options);
    ASSERT_EQ(1U, result.findings.size());
    EXPECT_EQ(EFinding::Unreadable, result.findings[0].finding);
    EXPECT_EQ("magic", result.findings[0].location.field);
    EXPECT_TRUE(result.HasError());
}

TEST_F(Checker, SaysWhichFieldOfTheHeaderIsWrong)
{
    EXPECT_EQ(
        (Lines{"error: header: version at 0x4: 6 instead of 7 or more; export the model again with "
               "a newer exporter [too-old]"}),
        Check(MakeModel(6)));
    SModel model = MakeModel();
    model.headerZero = 3;
    EXPECT_EQ(
        (Lines{"error: header: zero at 0xc: 3 instead of 0; export or copy the model again "
               "[wrong-header]"}),
        Check(model));
}

TEST_F(Checker, NamesTheFieldWhereAModelHasToBeRefused)
{
    SModel model = MakeModel(25);
    model.nodes = {SNode(), SNode()};
    model.nodes[1].name = "door";
    model.nodes[1].offsetFlag = 2;
    model.meshes = {SMesh()};
    EXPECT_EQ(
        (Lines{"error: node 1 \"door\": hasOffset at 0xa6: 2 instead of 0 or 1; export the model "
               "again [wrong-switch]"}),
        Check(model));
    model = MakeModelWithTexture(None);
    EXPECT_EQ(
        (Lines{"error: texture 0: name at 0x14: text without an end in the 4 bytes left; export or "
               "copy the model again [unterminated-name]"}),
        Check(Cut(model, 24)));
    EXPECT_EQ(
        (Lines{
            "error: texture 0 \"wall.png\": flags at 0x21: 4 bytes needed, 3 left; export or copy "
            "the model again [truncated]"}),
        Check(Cut(model, 36)));
}

TEST_F(Checker, GoesOnWithAModelOfMoreThan4GiB)
{
    SModel model = MakeModelWithTexture(OnlyDXT);
    model.tail = "tail";
    const Bytes image = CModelBuilder::Build(model).GetImage();
    m_Folder.Write("model.zek", image);
    constexpr std::uintmax_t size = std::uintmax_t{5} << 30;
    std::filesystem::resize_file(m_Folder.GetPath("model.zek"), size);
    EXPECT_EQ(
        (Lines{
            "error: model: it has 5368709120 bytes; cut the model into smaller ones [too-large]",
            "error: texture 0 \"wall.png\": flags[3] at 0x24: DXT is 1, and tex_dxt/000.dds is not "
            "there; make the variant, or run zek mark [flag-without-variant]",
            "warning: model: end at 0x35: 5368709067 bytes are never read; export the model again "
            "if they are not meant [bytes-after-end]"}),
        Check());
    std::filesystem::resize_file(m_Folder.GetPath("model.zek"), (std::uintmax_t{4} << 30) - 1);
    EXPECT_EQ(1U, (Check(), m_Result.errorCount)) << "the largest that ZEKTexComp takes";
}

TEST_F(Checker, FindsTheProcessedMarkerThatIsNotSetFromVersion21On)
{
    for (int version : {20, 21, 25, 26})
    {
        SModel model = MakeModel(version);
        model.marker = 0x100;
        const Lines found = {
            "error: header: processedMarker at 0x8: its first byte is 0 instead of "
            "1; run zek mark [not-marked]"};
        EXPECT_EQ(version < 21 ? Lines() : found, Check(model)) << version;
        model.marker = 0x0101;
        EXPECT_EQ(Lines(), Check(model)) << version << ": the other bytes mean nothing";
    }
}

TEST_F(Checker, LooksForVariantsInTheModelsFolderAsTheSystemHasIt)
{
    // As Shift_JIS the last byte of the folder would take the slash after it for its own.
    const std::string folder = "\xE6\x97\xA5\xE8\xAA\x9E back\\slash \x83/";
    m_Folder.Write(folder + "tex_dxt/000.dds", "variant");
    m_Folder.Write(
        folder + "model.zek", CModelBuilder::Build(MakeModelWithTexture(OnlyDXT)).GetImage());
    EXPECT_EQ(Lines(), Check(folder + "model.zek"));

    const std::filesystem::path workingFolder = std::filesystem::current_path();
    std::filesystem::current_path(m_Folder.GetPath(folder));
    EXPECT_TRUE(zektool::Check("model.zek", m_Options).findings.empty());
    std::filesystem::current_path(workingFolder);
}

TEST_F(Checker, ChangesNothing)
{
    SModel model = MakeModelWithTexture({7, 1, 0, 0});
    model.marker = 0;
    m_Folder.Write("tex_dxt/000.dds", "variant");
    m_Folder.Write("model.zek", CModelBuilder::Build(model).GetImage());
    const FolderContents before = m_Folder.GetContents();
    EXPECT_EQ(4U, Check().size());
    EXPECT_EQ(before, m_Folder.GetContents());
}

TEST_F(Checker, ShowsErrorsFirstAndCountsWhatIsAboveTheLimit)
{
    SModel model = MakeModelWithTexture({1, 1, 1, 1});
    model.textures[0].name = "../wall.png";
    model.tail = "tail";
    m_Options.maxFindings = 5;
    const Lines lines = Check(model);
    ASSERT_EQ(5U, lines.size());
    EXPECT_EQ("error: ", lines[3].substr(0, 7));
    EXPECT_EQ("warning: texture 0 \"../wall.png\": name ", lines[4].substr(0, 39));
    EXPECT_EQ(1U, m_Result.suppressedCount);
    EXPECT_EQ(4U, m_Result.errorCount);
    EXPECT_EQ(2U, m_Result.warningCount);
    m_Options.maxFindings = 0;
    EXPECT_EQ(Lines(), Check());
    EXPECT_TRUE(m_Result.HasError()) << "what is not shown counts all the same";
    EXPECT_EQ(6U, m_Result.suppressedCount);
}

TEST_F(Checker, CountsEachKindAlsoOfWhatItDoesNotKeep)
{
    SModel model = MakeModelWithTexture({1, 1, 1, 7});
    model.tail = "tail";
    m_Options.countedOnly = {EFinding::FlagWithoutVariant};
    EXPECT_EQ(2U, Check(model).size());
    EXPECT_EQ(3U, m_Result.GetCount(EFinding::FlagWithoutVariant));
    EXPECT_EQ(1U, m_Result.GetCount(EFinding::WrongFlag));
    EXPECT_EQ(1U, m_Result.GetCount(EFinding::BytesAfterEnd));
    EXPECT_EQ(0U, m_Result.GetCount(EFinding::NotMarked));
    EXPECT_EQ(4U, m_Result.errorCount);
    EXPECT_EQ(3U, m_Result.suppressedCount);
    m_Options.ignored = {EFinding::WrongFlag};
    Check();
    EXPECT_EQ(0U, m_Result.GetCount(EFinding::WrongFlag));
}

TEST_F(Checker, LeavesOutAndRaisesWhatIsAskedFor)
{
    SModel model = MakeModelWithTexture(OnlyDXT);
    model.tail = "tail";
    m_Options.ignored = {EFinding::FlagWithoutVariant};
    EXPECT_EQ(1U, Check(model).size());
    EXPECT_FALSE(m_Result.HasError());
    m_Options.raised = {EFinding::BytesAfterEnd};
    EXPECT_EQ("error: model: end at 0x35:", Check()[0].substr(0, 26));
    EXPECT_TRUE(m_Result.HasError());
    m_Options.ignored.insert(EFinding::BytesAfterEnd);
    EXPECT_EQ(Lines(), Check());
}

/// Returns how long the check of a model takes, the least of some runs.
double MeasureSeconds(const CTemporaryFolder& folder, const SModel& model, int runCount)
{
    folder.Write("model.zek", CModelBuilder::Build(model).GetImage());
    double least = HUGE_VAL;
    for (int run = 0; run < runCount; ++run)
    {
        const std::clock_t start = std::clock();
        zektool::Check(folder.GetPath("model.zek"), {});
        least = std::min(least, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return least;
}

/// Makes models that a search for duplicates, circles or variants could take long for.
const std::vector<std::pair<const char*, SModel (*)(int)>> HostileModels = {
    {"one circle of all nodes",
     [](int count)
     {
         SModel model;
         model.version = 20;
         model.nodes.resize(static_cast<std::size_t>(count));
         for (int i = 0; i < count; ++i)
             model.nodes[static_cast<std::size_t>(i)].parentIndex = (i + 1) % count;
         return model;
     }},
    {"chains that end in the same node",
     [](int count)
     {
         SModel model;
         model.version = 20;
         model.nodes.resize(static_cast<std::size_t>(count));
         for (int i = 0; i < count; ++i)
             model.nodes[static_cast<std::size_t>(i)].parentIndex =
                 i < count / 2 ? i + 1 : count / 2;
         return model;
     }},
    {"lightmaps that have the same variants",
     [](int count)
     {
         SModel model;
         for (int i = 0; i < count; ++i)
             model.lightmaps.push_back({"light." + std::to_string(i), {2, 2, 2, 2}});
         return model;
     }},
    {"lightmaps with names of their own",
     [](int count)
     {
         SModel model;
         for (int i = 0; i < count; ++i)
             model.lightmaps.push_back({std::to_string(i), None});
         return model;
     }},
    {"lightmaps whose names start alike",
     [](int count)
     {
         SModel model;
         for (int i = 0; i < count; ++i)
             model.lightmaps.push_back({std::string(200, 'a') + std::to_string(i), None});
         return model;
     }},
    {"textures of which every flag is wrong",
     [](int count)
     {
         SModel model;
         model.textures.assign(static_cast<std::size_t>(count), {"..", 0, {2, 2, 2, 2}});
         return model;
     }},
};

/// Returns how many records such a model has when its file is of about a size in bytes.
int CountRecords(SModel (*make)(int), std::size_t size)
{
    constexpr int sample = 1000;
    const auto getSize = [&](int count)
    { return CModelBuilder::Build(make(count)).GetImage().size(); };
    return static_cast<int>(size * sample / (getSize(2 * sample) - getSize(sample)));
}

TEST_F(Checker, TakesTimeThatGrowsWithTheSizeOfHostileModels)
{
    constexpr std::size_t smallSize = std::size_t{2} * 1024 * 1024;
    constexpr int factor = 8;
    for (const auto& [name, make] : HostileModels)
    {
        const int count = CountRecords(make, smallSize);
        const double small = MeasureSeconds(m_Folder, make(count), 2);
        const double large = MeasureSeconds(m_Folder, make(count * factor), 1);
        std::printf("%7.3f s, %7.3f s: %s\n", small, large, name);
        // Quadratic time would give 64; the clock's own unrest is left room.
        EXPECT_LT(large, 3 * factor * small + 0.05) << name;
    }
}

} // namespace
