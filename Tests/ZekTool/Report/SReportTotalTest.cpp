#include "ZekTool/Report/SReportTotal.h"

#include "ReportFixture.h"

namespace
{

using namespace testsupport;
using namespace zektool;

using SReportTotalTest = ReportFixture;

TEST_F(SReportTotalTest, IsTheSumOfItsModels)
{
    SReportTotal total;
    const SModelReport report = MakeReport();
    total.Add(report);
    total.Add(report);
    total.Add(MakeModelReport(m_Folder.GetPath("none"), false));
    EXPECT_EQ(3U, total.models);
    EXPECT_EQ(1U, total.refused);
    EXPECT_EQ(2U, total.stale);
    EXPECT_EQ(2 * report.check.errorCount + 1, total.errors);
    EXPECT_EQ(2 * report.check.warningCount, total.warnings);
    EXPECT_EQ(8, GetItemCount(total.counts));
    EXPECT_EQ(2 * (7 + 4 + 3), GetMissingCount(total.counts));
}

} // namespace
