#include "ZekTool/Report/SModelReport.h"

#include "ReportFixture.h"

namespace
{

using namespace testsupport;
using namespace zektool;

using SModelReportTest = ReportFixture;

TEST_F(SModelReportTest, TellsEachItemsFlagsAndMissingFiles)
{
    const SModelReport report = MakeReport();
    EXPECT_FALSE(report.IsRefused());
    EXPECT_EQ(26, report.version);
    EXPECT_EQ(static_cast<std::int64_t>(m_Folder.Read("model.zek").size()), report.size);
    ASSERT_EQ(2U, report.items[0].size());
    EXPECT_EQ("<wall>", report.items[0][1].name);
    EXPECT_EQ("001", report.items[0][1].variant.name);
    EXPECT_EQ((Flags{0, 0, 0, 7}), report.items[0][1].flags);
    EXPECT_EQ((MissingFiles{0, 1, 1, 1}), report.items[0][1].missing);
    ASSERT_EQ(1U, report.items[1].size());
    EXPECT_EQ((MissingFiles{63, 8, 63, 63}), report.items[1][0].missing);
    ASSERT_EQ(1U, report.items[2].size());
    EXPECT_EQ("Light", report.items[2][0].variant.name);
}

TEST_F(SModelReportTest, CountsItemsThatHaveVariants)
{
    const VariantCounts counts = MakeReport().GetCounts();
    EXPECT_EQ(2, counts[0].items);
    EXPECT_EQ((std::array<std::int64_t, 4>{1, 0, 0, 0}), counts[0].variants);
    EXPECT_EQ(1, counts[1].items);
    EXPECT_EQ((std::array<std::int64_t, 4>{0, 0, 0, 0}), counts[1].variants);
    EXPECT_EQ((std::array<std::int64_t, 4>{0, 0, 0, 1}), counts[2].variants);
}

TEST_F(SModelReportTest, KeepsTheFindingsThatItsItemsDoNotShow)
{
    const SModelReport report = MakeReport();
    EXPECT_EQ(1U, report.check.GetCount(EFinding::FlagWithoutVariant));
    EXPECT_EQ(1U, report.check.GetCount(EFinding::VariantWithoutFlag));
    EXPECT_EQ(1U, report.check.GetCount(EFinding::WrongFlag));
    EXPECT_EQ(1U, report.check.GetCount(EFinding::PartialFamily));
    ASSERT_EQ(1U, report.check.findings.size());
    EXPECT_EQ(EFinding::IncompleteCubemap, report.check.findings[0].finding);
    EXPECT_EQ(0U, report.check.suppressedCount);
}

TEST_F(SModelReportTest, IsStaleWhenTheFlagsOrTheMarkerAre)
{
    EXPECT_TRUE(MakeReport().IsStale());
    m_Model.textures = {{"floor.png", 1, {0, 0, 0, 0}}};
    m_Folder.Remove("tex_pvrtc");
    EXPECT_FALSE(MakeReport().IsStale());
    m_Model.marker = 0;
    EXPECT_TRUE(MakeReport().IsStale());
}

TEST_F(SModelReportTest, LeavesOutItemsOfVersionsWithoutFlags)
{
    m_Model = MakeFullModel(15);
    EXPECT_TRUE(MakeReport().items[1].empty());
    m_Model = MakeFullModel(16);
    EXPECT_EQ(m_Model.probes.size(), MakeReport().items[1].size());
}

TEST_F(SModelReportTest, SaysWhyAModelIsRefused)
{
    m_Folder.Write("model.zek", "text");
    const SModelReport report = MakeModelReport(m_Path, false);
    EXPECT_TRUE(report.IsRefused());
    EXPECT_EQ("header: magic at 0x0: it looks like text", report.refusal);
    EXPECT_EQ(1U, report.check.GetCount(EFinding::NotAModel));
    EXPECT_FALSE(report.IsStale());
    EXPECT_TRUE(MakeModelReport(m_Folder.GetPath("none"), false).IsRefused());
}

TEST_F(SModelReportTest, NamesEveryFileThatIsMissing)
{
    m_Model.textures.resize(1);
    m_Model.lightmaps.clear();
    std::vector<std::string> paths;
    ForEachMissing(
        m_Path, MakeReport(), false, [&](const std::string& path) { paths.push_back(path); });
    ASSERT_EQ(4U + 6 + 1 + 6 + 6, paths.size());
    EXPECT_EQ(m_Folder.GetPath("tex_pvrtc/000.pvr"), paths[0]);
    EXPECT_EQ(m_Folder.GetPath("tex_dxt/000.dds"), paths[3]);
    EXPECT_EQ(m_Folder.GetPath("tex_reflection_cube_etc\\Hall\\reflection_cube_3.pvr"), paths[10]);
}

} // namespace
