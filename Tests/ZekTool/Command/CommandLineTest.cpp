#include "ZekTool/Command/CommandLine.h"

#include <gtest/gtest.h>

namespace
{

using zektool::CUsageError;
using zektool::ECommand;
using zektool::ParseCommandLine;
using Words = std::vector<std::string>;

TEST(CommandLine, PathsStandAsTheyAreGiven)
{
    const Words paths = {"[a,b]", "++b", "%%", "{}", "-", "", "mark", "--", "-n"};
    Words words = {"info", "--"};
    words.insert(words.end(), paths.begin(), paths.end());
    EXPECT_EQ(paths, ParseCommandLine(words).paths);
    EXPECT_EQ(
        (Words{"[a,b]", "mark", "-"}), ParseCommandLine({"info", "[a,b]", "mark", "-"}).paths);
}

TEST(CommandLine, OptionsAreTakenBeforeAfterAndBetweenPaths)
{
    const auto line = ParseCommandLine({"mark", "-n", "a", "--json", "b", "-j3", "-o", "out"});
    EXPECT_EQ(ECommand::Mark, line.command);
    EXPECT_TRUE(line.isDryRun);
    EXPECT_TRUE(line.isJson);
    EXPECT_EQ(3U, line.threadCount);
    EXPECT_EQ("out", line.outputPath);
    EXPECT_EQ((Words{"a", "b"}), line.paths);
}

TEST(CommandLine, RepeatedNamesStandInPlaceOfTheDefault)
{
    EXPECT_EQ(Words{"*.zek"}, ParseCommandLine({"info", "a"}).names);
    const auto line = ParseCommandLine({"info", "--name", "[ab]", "a", "--name=*.x", "b"});
    EXPECT_EQ((Words{"[ab]", "*.x"}), line.names);
    EXPECT_EQ((Words{"a", "b"}), line.paths);
}

TEST(CommandLine, AReportMayGoToAFileFromAnyList)
{
    const auto line = ParseCommandLine(
        {"report", "--files0-from", "list", "-o", "out.csv", "--csv", "--cubemap-folders"});
    EXPECT_EQ(ECommand::Report, line.command);
    EXPECT_EQ("out.csv", line.outputPath);
    EXPECT_TRUE(line.isCsv);
    EXPECT_FALSE(line.isJson);
    EXPECT_TRUE(line.isCubemapFolders);
}

TEST(CommandLine, WrongUseIsAnError)
{
    for (const Words& words : std::vector<Words>{
             {},
             {"frob", "a"},
             {"info"},
             {"info", "--frob", "a"},
             {"info", "-n", "a"},
             {"info", "-j", "0", "a"},
             {"info", "-j", "many", "a"},
             {"info", "-j"},
             {"dump"},
             {"dump", "a", "b"},
             {"dump", "--section", "walls", "a"},
             {"mark", "-o", "a", "-o", "b", "c"},
             {"mark", "--files0-from", "list", "a"},
             {"mark", "--files0-from", "list", "-o", "out"},
             {"report", "--csv", "--json", "a"},
             {"check", "--max-findings", "-1", "a"},
             {"check", "--max-findings", "all", "a"},
             {"check", "--json", "--explain", "not-marked"},
             {"report", "--deep", "a"},
             {"help", "frob"}})
        EXPECT_THROW(ParseCommandLine(words), CUsageError) << ::testing::PrintToString(words);
}

TEST(CommandLine, HelpAndVersionArePrinted)
{
    EXPECT_EQ(ECommand::Print, ParseCommandLine({"help"}).command);
    EXPECT_NE(std::string::npos, ParseCommandLine({"help", "mark"}).message.find("--dry-run"));
    EXPECT_EQ(
        ParseCommandLine({"help", "mark"}).message, ParseCommandLine({"mark", "--help"}).message);
    EXPECT_EQ(0U, ParseCommandLine({"--version"}).message.find("zek "));
}

} // namespace
