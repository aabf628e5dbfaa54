#include "ZekTool/Report/CReportPage.h"

#include <ctime>

#include "ReportFixture.h"
#include "ZekTool/Output/Json.h"
#include "ZekTool/Report/ReportTemplate.h"

namespace
{

using namespace testsupport;
using namespace zektool;

constexpr std::time_t Time = 1'000'000'000;

class CReportPageTest : public ReportFixture
{
protected:
    /// Returns the page, whose template has to be around the data.
    static std::string Write(CReportPage& page)
    {
        std::string text;
        COutput output(
            [&](std::string_view part)
            {
                text += part;
                return 0;
            });
        page.Write(output);
        output.Flush();
        EXPECT_EQ(ReportTemplateStart, text.substr(0, ReportTemplateStart.size()));
        EXPECT_EQ(ReportTemplateEnd, text.substr(text.size() - ReportTemplateEnd.size()));
        return text;
    }

    static Json ReadData(const std::string& page)
    {
        const std::size_t end = page.size() - ReportTemplateEnd.size();
        return Json::parse(
            page.substr(ReportTemplateStart.size(), end - ReportTemplateStart.size()));
    }
};

TEST_F(CReportPageTest, HasStyleProgramAndPlaceOfTheDataInItsTemplate)
{
    const std::string start(ReportTemplateStart);
    const std::string end(ReportTemplateEnd);
    EXPECT_EQ("<!DOCTYPE html>", start.substr(0, 15));
    EXPECT_NE(std::string::npos, start.find("prefers-color-scheme"));
    const std::string element = "<script type=\"application/json\" id=\"data\">";
    EXPECT_EQ(element, start.substr(start.size() - element.size()));
    EXPECT_EQ("</script>", end.substr(0, 9));
    EXPECT_NE(std::string::npos, end.find("JSON.parse"));
    EXPECT_EQ("</html>\n", end.substr(end.size() - 8));
    for (const std::string& part : {start, end})
    {
        EXPECT_EQ(std::string::npos, part.find("innerHTML"));
        EXPECT_EQ(std::string::npos, part.find("http://"));
        EXPECT_EQ(std::string::npos, part.find("https://"));
    }
}

TEST_F(CReportPageTest, HasOfAModelWhatTheReportHas)
{
    const SModelReport report = MakeReport();
    const Json row = Json::parse(CReportPage::MakeRow(m_Path, report));
    ASSERT_EQ(13U, row.size());
    EXPECT_EQ("model.zek", row[0]);
    EXPECT_EQ("", row[1]);
    EXPECT_EQ(26, row[2]);
    EXPECT_EQ(report.size, row[3]);
    EXPECT_EQ(1, row[4]);
    EXPECT_EQ(3, row[5]);
    EXPECT_EQ(2, row[6]);
    EXPECT_EQ(10U, row[7].size());
    ASSERT_EQ(1U, row[8].size());
    EXPECT_EQ(static_cast<int>(EFinding::IncompleteCubemap), row[8][0][0]);
    EXPECT_EQ("probe 0 \"Hall\": flags[1] at ", row[8][0][1].get<std::string>().substr(0, 28));
    EXPECT_EQ(0, row[9]);
    EXPECT_EQ(Json({"floor.png", "<wall>"}), row[10][0]);
    EXPECT_EQ(Json({65, 1, 1, 1, 0, 1, 1, 129}), row[10][1]);
    EXPECT_EQ(Json({63, 8, 63, 63}), row[11][1]);
    EXPECT_EQ(Json::array({"Light"}), row[12][2]);
    EXPECT_EQ(Json({1, 1, 1, 64}), row[12][1]);
}

TEST_F(CReportPageTest, HasNoMarkupInItsData)
{
    m_Model.textures[0].name = "</script><!--";
    m_Model.textures[1].name = "\xff\x1b";
    const std::string row = CReportPage::MakeRow(m_Path, MakeReport());
    EXPECT_EQ(std::string::npos, row.find('<'));
    EXPECT_EQ(Json({"</script><!--", "\\xff\\x1b"}), Json::parse(row)[10][0]);
}

TEST_F(CReportPageTest, HasEachFolderOnceInByteOrder)
{
    CReportPage page(false, Time);
    page.Add("b/<c>/x.zek", "[1]");
    page.Add("b/z.zek", "[2]");
    page.Add("a.zek", "[3]");
    page.Add("b/a.zek", "[4]");
    const std::string text = Write(page);
    EXPECT_EQ(
        Json::parse("[[\"\",[3]],[\"b/\",[4],[2]],[\"b/<c>/\",[1]]]"), ReadData(text)["folders"]);
    EXPECT_EQ(std::string::npos, text.find("<c>"));
}

TEST_F(CReportPageTest, HasTheTimeThatItIsGiven)
{
    CReportPage page(false, Time);
    EXPECT_EQ("2001-09-09T01:46:40Z", ReadData(Write(page))["time"]);
}

TEST_F(CReportPageTest, HasFamiliesFindingsAndPathsOfVariants)
{
    CReportPage page(false, Time);
    const Json data = ReadData(Write(page));
    EXPECT_EQ(Json({"PVRTC", "ETC", "ASTC", "DXT"}), data["families"]);
    EXPECT_EQ(FindingKindCount, data["kinds"].size());
    EXPECT_EQ("cannot-open", data["kinds"][0][0]);
    EXPECT_EQ("error", data["kinds"][0][1]);
    EXPECT_EQ(Json::parse("[[\"tex_dxt/\",\".dds\"]]"), data["paths"][0][3]);
    EXPECT_EQ(6U, data["paths"][1][1].size());
    EXPECT_EQ(
        Json({"tex_reflection_cube_etc\\", "\\reflection_cube_5.pvr"}), data["paths"][1][1][5]);
    EXPECT_EQ(Json::array(), data["folders"]);
}

TEST_F(CReportPageTest, LooksForCubemapsInFoldersWhenAskedTo)
{
    CReportPage page(true, Time);
    EXPECT_EQ(
        Json({"tex_reflection_cube_etc/", "/reflection_cube_5.pvr"}),
        ReadData(Write(page))["paths"][1][1][5]);
}

} // namespace
