#include "ZekTool/Output/CProgress.h"

#include <gtest/gtest.h>

namespace
{

using namespace zektool;

TEST(CProgress, TheLineTellsWhatIsDoneFailedAndLeft)
{
    STally tally;
    EXPECT_EQ("0 of 100 done, 0 failed", MakeProgressLine(tally, 100, 0.5));
    tally.well = 10;
    tally.changed = 5;
    tally.failed = 5;
    EXPECT_EQ("20 of 100 done, 5 failed, 10 a second, 8 s left", MakeProgressLine(tally, 100, 2));
    EXPECT_EQ("20 done, 5 failed, 10 a second", MakeProgressLine(tally, 0, 2));
    EXPECT_EQ("20 of 20 done, 5 failed, 10 a second", MakeProgressLine(tally, 20, 2));
    EXPECT_EQ("20 of 20 done, 5 failed", MakeProgressLine(tally, 20, 0));
}

TEST(STally, KeepsNoMoreNamesThanItSays)
{
    STally tally;
    for (std::size_t i = 0; i < STally::MostPaths + 5; ++i)
        tally.Add(EOutcome::Failed, "name");
    tally.Add(EOutcome::NotDone, "name");
    EXPECT_EQ(STally::MostPaths, tally.failedPaths.size());
    EXPECT_EQ(STally::MostPaths + 5, tally.GetDone());
    EXPECT_EQ(STally::MostPaths + 6, tally.GetTotal());
}

} // namespace
