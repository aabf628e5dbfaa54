#include "ZEKFormat/CZEKImageSource.h"

#include <gtest/gtest.h>

using zek::CZEKImageSource;

namespace
{

const unsigned char Image[] = {'a', 'b', 0, 'c', 'd'};

} // namespace

TEST(ImageSource, TakesAndSkipsWhatIsThere)
{
    CZEKImageSource source(Image, sizeof(Image), 100);
    EXPECT_EQ(100, source.GetPos());
    EXPECT_EQ(5, source.GetLeft());
    EXPECT_EQ(Image, source.GetNext());
    EXPECT_EQ(Image, source.Take(2));
    source.Skip(1);
    EXPECT_EQ(103, source.GetPos());
    EXPECT_EQ(2, source.GetLeft());
    EXPECT_EQ(Image + 3, source.GetNext());
    EXPECT_TRUE(source.Fetch(2));
    EXPECT_FALSE(source.IsUnreadable());
}

TEST(ImageSource, TakesATextWithItsZero)
{
    CZEKImageSource source(Image, sizeof(Image));
    std::string_view text;
    ASSERT_TRUE(source.TakeText(text));
    EXPECT_EQ("ab", text);
    EXPECT_EQ(3, source.GetPos());
}

TEST(ImageSource, EndsAfterATextWithoutAnEnd)
{
    CZEKImageSource source(Image + 3, 2, 3);
    std::string_view text = "as it was";
    EXPECT_FALSE(source.TakeText(text));
    EXPECT_EQ("as it was", text);
    EXPECT_EQ(5, source.GetPos());
    EXPECT_EQ(0, source.GetLeft());
    EXPECT_FALSE(source.TakeText(text));
    EXPECT_EQ(5, source.GetPos());
}

TEST(ImageSource, KeepsASizeBelowZero)
{
    CZEKImageSource source(Image, -3, 8);
    std::string_view text;
    EXPECT_EQ(-3, source.GetLeft());
    EXPECT_FALSE(source.TakeText(text));
    EXPECT_EQ(8, source.GetPos());
}
