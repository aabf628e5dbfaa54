#include "ZekTool/Report/ReportText.h"

#include <algorithm>

#include "ReportFixture.h"
#include "ZekTool/Output/Json.h"

namespace
{

using namespace testsupport;
using namespace zektool;

using ReportText = ReportFixture;

TEST_F(ReportText, OfAModelIsALineOfJson)
{
    const std::string line = MakeReportJson(m_Path, MakeReport(), false);
    EXPECT_EQ('\n', line.back());
    const Json json = Json::parse(line);
    EXPECT_EQ(m_Path, json["model"]["text"]);
    EXPECT_EQ("read", json["outcome"]);
    EXPECT_EQ(26, json["version"]);
    EXPECT_EQ(true, json["stale"]);
    EXPECT_EQ(1, json["codes"]["wrong-flag"]);
    EXPECT_EQ(2, json["counts"]["texture"]["items"]);
    EXPECT_EQ(1, json["counts"]["texture"]["variants"]["PVRTC"]);
    EXPECT_EQ(7U + 19 + 3, json["missing"].size());
    EXPECT_EQ(m_Folder.GetPath("tex_pvrtc/000.pvr"), json["missing"][0]["text"]);
}

TEST_F(ReportText, OfARefusedModelSaysWhy)
{
    const SModelReport report = MakeModelReport(m_Folder.GetPath("none"), false);
    const Json json = Json::parse(MakeReportJson("\xff", report, false));
    EXPECT_EQ("/w==", json["model"]["bytes"]);
    EXPECT_EQ("refused", json["outcome"]);
    EXPECT_EQ("No such file or directory", json["error"]["text"]);
    EXPECT_EQ(1, json["errors"]);
    EXPECT_FALSE(json.contains("missing"));
    EXPECT_EQ(
        "\\xff,refused,0,0,no,1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,cannot-open,"
        "No such file or directory\n",
        MakeCsvLine("\xff", report));
}

TEST_F(ReportText, OfAllIsTheTotal)
{
    SReportTotal total;
    total.Add(MakeReport());
    const Json json = Json::parse(MakeTotalJson(total))["total"];
    EXPECT_EQ(1, json["models"]);
    EXPECT_EQ(0, json["refused"]);
    EXPECT_EQ(1, json["stale"]);
    EXPECT_EQ(3, json["errors"]);
    EXPECT_EQ(2, json["warnings"]);
    EXPECT_EQ(1, json["counts"]["lightmap"]["variants"]["DXT"]);
}

TEST_F(ReportText, HasAValueInEachColumn)
{
    const std::string header = MakeCsvHeader();
    EXPECT_EQ(
        "model,outcome,version,size,stale,errors,warnings,missing,textures,textures PVRTC,"
        "textures ETC,textures ASTC,textures DXT,cubemaps,cubemaps PVRTC,cubemaps ETC,"
        "cubemaps ASTC,cubemaps DXT,lightmaps,lightmaps PVRTC,lightmaps ETC,lightmaps ASTC,"
        "lightmaps DXT,codes,error\n",
        header);
    const SModelReport report = MakeReport();
    const std::string line = MakeCsvLine("model", report);
    EXPECT_EQ(
        "model,read,26," + std::to_string(report.size) +
            ",yes,3,2,14,2,1,0,0,0,1,0,0,0,0,1,0,0,0,1,"
            "flag-without-variant variant-without-flag wrong-flag incomplete-cubemap "
            "partial-family,\n",
        line);
    EXPECT_EQ(
        std::count(header.begin(), header.end(), ','), std::count(line.begin(), line.end(), ','));
}

TEST_F(ReportText, OfAnUnfriendlyPathIsOneFieldOfOneLine)
{
    const SModelReport report = MakeReport();
    EXPECT_EQ("\"a, \"\"b\"\".zek\",read,", MakeCsvLine("a, \"b\".zek", report).substr(0, 20));
    EXPECT_EQ("a\\x0ab.zek,read,", MakeCsvLine("a\nb.zek", report).substr(0, 16));
}

} // namespace
