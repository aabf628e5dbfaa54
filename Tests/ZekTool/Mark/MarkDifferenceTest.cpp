#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Reliability/NastyModels.h"
#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"
#include "Support/RunProgram.h"
#include "ZEKFormat/ZEKVersion.h"
#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZekTool/Mark/CMarker.h"

using testsupport::Bytes;
using testsupport::CModelBuilder;
using testsupport::CTemporaryFolder;
using zek::CZEKOverwriter;
using zektool::Mark;
using zektool::SMarkResult;

namespace
{

std::string MakeCountLine(const char* words, const zektool::SVariantCount& count)
{
    std::string line = words;
    for (std::int64_t variants : count.variants)
        line += " " + std::to_string(variants);
    return line + "\n";
}

/// The lines that ZEKTexComp prints for what was found.
std::string MakeCountLines(const SMarkResult& result)
{
    std::string lines = MakeCountLine("ExistTextureCompression", result.counts[0]);
    if (result.version >= zek::version::ReflectionProbeFlags)
        lines += MakeCountLine("ExistCubemapCompression", result.counts[1]);
    return lines + MakeCountLine("ExistLightmapCompression", result.counts[2]);
}

/// Writes some variants, of each kind and family some and not all.
void WriteVariants(const CTemporaryFolder& folder)
{
    for (const char* name :
         {"tex_pvrtc/001.pvr", "tex_etc/000.pvr", "tex_dxt/000.dds", "tex_dxt/001.dds",
          "tex_dxt/000.pvr", "tex_astc/LightMap000.pvr", "tex_dxt/LightMap000.dds"})
        folder.Write(name, "variant");
    for (const char* probe : {"0", "1", "Probe"})
    {
        for (int face = 0; face < 6; ++face)
            folder.Write(
                std::string("tex_reflection_cube_etc\\") + probe + "\\reflection_cube_" +
                    std::to_string(face) + ".pvr",
                "face");
    }
    folder.Write("tex_reflection_cube_dxt\\0\\reflection_cube_0.dds", "one of six");
}

/// A model, and what it is.
struct SCase
{
    std::string what;
    Bytes image;
};

/// Marks the models and has the overwriter do the same to their images.
class CComparison
{
public:
    CComparison() { WriteVariants(m_Folder); }

    void Add(const std::string& what, const Bytes& image)
    {
        constexpr std::size_t mostCases = 2000; // lie in the folder at once
        m_Cases.push_back({what, image});
        m_Folder.Write(MakeName(m_Cases.size() - 1), image);
        if (m_Cases.size() == mostCases)
            Compare();
    }

    void Compare()
    {
        // One that has just been written would be waited for, each by itself.
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
        std::string marked;
        std::string overwritten;
        testing::internal::CaptureStdout();
        for (std::size_t i = 0; i < m_Cases.size(); ++i)
            marked += CompareOne(m_Cases[i], MakeName(i));
        std::fflush(stdout);
        overwritten = testing::internal::GetCapturedStdout();
        EXPECT_EQ(marked, overwritten);
        m_Cases.clear();
    }

    int GetAcceptedCount() const { return m_AcceptedCount; }
    int GetRefusedCount() const { return m_RefusedCount; }

private:
    static std::string MakeName(std::size_t index) { return std::to_string(index) + ".zek"; }

    /// Returns the count lines of the marker; the overwriter prints its own.
    std::string CompareOne(const SCase& model, const std::string& name)
    {
        SCOPED_TRACE(model.what);
        const std::string path = m_Folder.GetPath(name);
        const SMarkResult result = Mark(path, {});
        Bytes image = model.image;
        const bool isAccepted = CZEKOverwriter().OverwriteImage(image, path);

        EXPECT_EQ(result.outcome != SMarkResult::Failed, isAccepted) << result.reason;
        EXPECT_EQ(m_Folder.Read(name), image);
        ++(isAccepted ? m_AcceptedCount : m_RefusedCount);
        if (!isAccepted)
            return "";
        EXPECT_EQ(result.outcome == SMarkResult::Changed, image != model.image);
        return MakeCountLines(result);
    }

    CTemporaryFolder m_Folder;
    std::vector<SCase> m_Cases;
    int m_AcceptedCount = 0;
    int m_RefusedCount = 0;
};

class MarkDifferenceTest : public testing::TestWithParam<int>
{
};

} // namespace

TEST_P(MarkDifferenceTest, CutModelsAreMarkedAsTheOverwriterMarksThem)
{
    const Bytes image = CModelBuilder::Build(testsupport::MakeFullModel(GetParam())).GetImage();
    CComparison comparison;
    // Every third, each version others, and always the whole.
    for (std::size_t size = image.size() % 3; size <= image.size(); size += 3)
        comparison.Add(
            "cut at " + std::to_string(size),
            Bytes(image.begin(), image.begin() + static_cast<std::ptrdiff_t>(size)));
    comparison.Compare();
    EXPECT_GE(comparison.GetAcceptedCount(), 1);
    EXPECT_GE(comparison.GetRefusedCount(), 50);
}

TEST_P(MarkDifferenceTest, NastyModelsAreMarkedAsTheOverwriterMarksThem)
{
    constexpr int step = 5; // takes some values of each kind from each version
    CComparison comparison;
    int index = GetParam();
    ForEachNastyModel(
        GetParam(),
        [&](const SNastyModel& model)
        {
            if (++index % step == 0)
                comparison.Add(model.what, model.image);
        });
    comparison.Compare();
    EXPECT_GE(comparison.GetAcceptedCount(), 10);
    EXPECT_GE(comparison.GetRefusedCount(), 10);
}

TEST_P(MarkDifferenceTest, TheProgramLeavesTheSameFileAndPrintsTheSameCounts)
{
    const Bytes image = CModelBuilder::Build(testsupport::MakeFullModel(GetParam())).GetImage();
    const CTemporaryFolder folder;
    WriteVariants(folder);
    folder.Write("marked.zek", image);
    folder.Write("overwritten.zek", image);
    const testsupport::SProgramResult program =
        testsupport::RunProgram({ZEKTEXCOMP_PROGRAM, folder.GetPath("overwritten.zek")});
    const SMarkResult result = Mark(folder.GetPath("marked.zek"), {});
    EXPECT_EQ(program.output, MakeCountLines(result) + "Succeeded\n");
    EXPECT_EQ(folder.Read("marked.zek"), folder.Read("overwritten.zek"));
    EXPECT_NE(folder.Read("marked.zek"), image);
}

INSTANTIATE_TEST_SUITE_P(
    Version,
    MarkDifferenceTest,
    testing::Range(testsupport::OldestVersion, testsupport::UnknownVersion + 1));
