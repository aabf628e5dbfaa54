#include "Specific/FileSystem/SFileState.h"

#include <limits>

#include <gtest/gtest.h>

using filesystem::SFileState;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;
using std::chrono::system_clock;

namespace
{

const system_clock::time_point
    Now(std::chrono::duration_cast<system_clock::duration>(seconds(1000000000)));

SFileState MakeStateChangedAt(system_clock::time_point time)
{
    SFileState state;
    const nanoseconds sinceEpoch = time.time_since_epoch();
    state.changeSeconds = std::chrono::floor<seconds>(sinceEpoch).count();
    state.changeNanoseconds = (sinceEpoch - seconds(state.changeSeconds)).count();
    return state;
}

} // namespace

TEST(SFileState, IsAnotherWhenAnyMemberIs)
{
    const SFileState state = {1, 2, 3, 4, 5};
    EXPECT_TRUE(state == (SFileState{1, 2, 3, 4, 5}));
    EXPECT_FALSE(state != (SFileState{1, 2, 3, 4, 5}));
    for (const SFileState& other :
         {SFileState{0, 2, 3, 4, 5}, SFileState{1, 0, 3, 4, 5}, SFileState{1, 2, 0, 4, 5},
          SFileState{1, 2, 3, 0, 5}, SFileState{1, 2, 3, 4, 0}})
    {
        EXPECT_TRUE(state != other);
        EXPECT_FALSE(state == other);
    }
}

TEST(SFileState, IsSettledTwentyMillisecondsAfterTheChange)
{
    EXPECT_EQ(MakeStateChangedAt(Now).GetTimeToSettle(Now), milliseconds(20));
    EXPECT_EQ(MakeStateChangedAt(Now - milliseconds(5)).GetTimeToSettle(Now), milliseconds(15));
    EXPECT_EQ(MakeStateChangedAt(Now - milliseconds(20)).GetTimeToSettle(Now), nanoseconds(0));
    EXPECT_LE(MakeStateChangedAt(Now - milliseconds(900)).GetTimeToSettle(Now), nanoseconds(0));
    EXPECT_LE(MakeStateChangedAt(Now - seconds(5)).GetTimeToSettle(Now), nanoseconds(0));
}

TEST(SFileState, CountsAsSettledWhenItsChangeIsToCome)
{
    EXPECT_LE(MakeStateChangedAt(Now + milliseconds(5)).GetTimeToSettle(Now), nanoseconds(0));
    EXPECT_LE(MakeStateChangedAt(Now + seconds(5)).GetTimeToSettle(Now), nanoseconds(0));
    SFileState state;
    state.changeSeconds = std::numeric_limits<std::int64_t>::max();
    EXPECT_LE(state.GetTimeToSettle(Now), nanoseconds(0));
    state.changeSeconds = std::numeric_limits<std::int64_t>::min();
    EXPECT_LE(state.GetTimeToSettle(Now), nanoseconds(0));
}
