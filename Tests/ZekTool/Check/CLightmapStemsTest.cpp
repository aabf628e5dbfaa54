#include "ZekTool/Check/CLightmapStems.h"

#include <deque>
#include <vector>

#include <gtest/gtest.h>

namespace
{

using zektool::CLightmapStems;
using zektool::SSurveyedItem;

std::deque<SSurveyedItem> MakeLightmaps(const std::vector<const char*>& names)
{
    std::deque<SSurveyedItem> lightmaps;
    for (const char* name : names)
    {
        lightmaps.emplace_back();
        lightmaps.back().name = name;
    }
    return lightmaps;
}

TEST(CLightmapStems, FindsStemsAsTheyAreWritten)
{
    const std::deque<SSurveyedItem> lightmaps =
        MakeLightmaps({"b.png", "Hall.png", "a.b.png", "hall.jpg", "\x83.png", "none", "A", "B"});
    const CLightmapStems stems(lightmaps);
    for (const char* stem : {"b", "Hall", "hall", "a.b", "none", "A", "B"})
        EXPECT_TRUE(stems.Has(stem)) << stem;
    for (const char* stem : {"", "a", "b.png", "HALL", "hal", "halls", "Hall.", "z"})
        EXPECT_FALSE(stems.Has(stem)) << stem;
    EXPECT_TRUE(stems.Has("\x83.png")) << "its dot is half a character";
}

TEST(CLightmapStems, FindsStemsInAnyCase)
{
    const std::deque<SSurveyedItem> lightmaps =
        MakeLightmaps({"zZ.png", "Hall[.png", "[.png", "b", "B1", "\xC4.png"});
    const CLightmapStems stems(lightmaps);
    for (const char* stem : {"zz", "ZZ", "hall[", "HALL[", "[", "B", "b1", "\xC4"})
        EXPECT_TRUE(stems.HasInAnyCase(stem)) << stem;
    for (const char* stem : {"", "z", "zzz", "hall{", "{", "b2", "\xE4"})
        EXPECT_FALSE(stems.HasInAnyCase(stem)) << stem;
}

TEST(CLightmapStems, FindsTheFirstLightmapOfAStem)
{
    const std::deque<SSurveyedItem> lightmaps =
        MakeLightmaps({"b.png", "a.png", "a.jpg", "A.png", "b", "b.b.b", "a", "a.gif"});
    const CLightmapStems stems(lightmaps);
    const std::vector<std::size_t> firsts = {0, 1, 1, 3, 0, 5, 1, 1};
    for (std::size_t i = 0; i < firsts.size(); ++i)
        EXPECT_EQ(firsts[i], stems.FindFirst(i)) << lightmaps[i].name;
}

TEST(CLightmapStems, FindsNothingWhereThereIsNone)
{
    const std::deque<SSurveyedItem> lightmaps;
    const CLightmapStems stems(lightmaps);
    EXPECT_FALSE(stems.Has(""));
    EXPECT_FALSE(stems.HasInAnyCase(""));
}

} // namespace
