#include "ZEKFormat/SZEKLocation.h"

#include <string>

#include <gtest/gtest.h>

namespace
{

using zek::MakeExcerpt;
using zek::SZEKLocation;

TEST(SZEKLocation, SaysOfARecordItsNumberNameFieldAndOffset)
{
    SZEKLocation location;
    location.section = "meshes";
    EXPECT_EQ("meshes", location.GetLocationText());
    location.index = 3;
    EXPECT_EQ("mesh 3", location.GetLocationText());
    location.name = "door\n";
    EXPECT_EQ("mesh 3 \"door\\x0a\"", location.GetLocationText());
    location.field = "primitives[0].indices";
    location.offset = 0x13A;
    EXPECT_EQ("mesh 3 \"door\\x0a\": primitives[0].indices at 0x13a", location.GetLocationText());
    location.section = "textures";
    location.index = 0;
    location.name.clear();
    location.field.clear();
    EXPECT_EQ("texture 0", location.GetLocationText());
}

TEST(SZEKLocation, AnExcerptHasNoControlCharactersAndAtMost80Bytes)
{
    EXPECT_EQ("", MakeExcerpt(""));
    EXPECT_EQ("a\\x01\\x1f \\x7f\xE9", MakeExcerpt("a\x01\x1F \x7F\xE9"));
    EXPECT_EQ(std::string(80, 'a'), MakeExcerpt(std::string(80, 'a')));
    EXPECT_EQ(std::string(80, 'a') + "...", MakeExcerpt(std::string(81, 'a')));
}

} // namespace
