#include "ZekTool/Check/SFinding.h"

#include <gtest/gtest.h>

#include "ZekTool/Check/CFindingList.h"

using namespace zektool;

TEST(SFinding, TellsNamesWholeThatAFileCouldHave)
{
    const std::string name(32768, 'n');
    EXPECT_EQ(MakeTold(name), name);
    EXPECT_EQ(MakeTold(name + "n"), name + "...");
}

TEST(SFinding, IsKeptWithTheNameThatIsTold)
{
    const SCheckOptions options;
    CFindingList findings(options);
    findings.Add(
        EFinding::WrongFlag,
        []
        {
            SFinding finding;
            finding.location.name.assign(100000, 'n');
            return finding;
        });
    EXPECT_EQ(findings.TakeResult().findings.at(0).location.name.size(), 32768U + 3);
}
