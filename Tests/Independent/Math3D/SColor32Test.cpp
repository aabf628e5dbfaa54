#include "Independent/Math3D/SColor32.h"

#include <cstdint>
#include <type_traits>

#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"

using namespace mathtest;
using math3d::SColor32;

TEST(SColor32, IsFourBytesInOrderBehindAVirtualDestructor)
{
    static_assert(std::has_virtual_destructor_v<SColor32>);
    static_assert(sizeof(SColor32) <= 2 * sizeof(void*));
    static_assert(std::is_same_v<decltype(SColor32::r), std::uint8_t>);
    const SColor32 colour;
    EXPECT_EQ(&colour.r + 1, &colour.g);
    EXPECT_EQ(&colour.g + 1, &colour.b);
    EXPECT_EQ(&colour.b + 1, &colour.a);
}

TEST(SColor32, DefaultIsAllZero)
{
    const SColor32 colour;
    EXPECT_EQ(0, colour.r);
    EXPECT_EQ(0, colour.g);
    EXPECT_EQ(0, colour.b);
    EXPECT_EQ(0, colour.a);
}

TEST(SColor32, ConstructorTakesTheFieldsInOrder)
{
    const SColor32 colour(1, 2, 3, 255);
    EXPECT_EQ(1, colour.r);
    EXPECT_EQ(2, colour.g);
    EXPECT_EQ(3, colour.b);
    EXPECT_EQ(255, colour.a);
}

TEST(SColor32, CopyHasTheSameFields)
{
    static_assert(std::is_copy_constructible_v<SColor32>);
    const SColor32 colour(1, 2, 3, 4);
    const SColor32 copy(colour);
    SColor32 assigned;
    assigned = colour;
    for (const SColor32* other : {&copy, static_cast<const SColor32*>(&assigned)})
    {
        EXPECT_EQ(1, other->r);
        EXPECT_EQ(2, other->g);
        EXPECT_EQ(3, other->b);
        EXPECT_EQ(4, other->a);
    }
}

TEST(SColor32, ToSColorDividesEachByteBy255)
{
    EXPECT_SAME_BITS(SColor(0.0f, 1.0f, 0.2f, 0.4f), SColor32(0, 255, 51, 102).ToSColor());
    for (int value = 0; value < 256; ++value)
    {
        const auto byte = static_cast<std::uint8_t>(value);
        const auto channel = static_cast<float>(value / 255.0);
        EXPECT_SAME_BITS(SColor(channel, 0, 0, 0), SColor32(byte, 0, 0, 0).ToSColor());
        EXPECT_SAME_BITS(SColor(0, channel, 0, 0), SColor32(0, byte, 0, 0).ToSColor());
        EXPECT_SAME_BITS(SColor(0, 0, channel, 0), SColor32(0, 0, byte, 0).ToSColor());
        EXPECT_SAME_BITS(SColor(0, 0, 0, channel), SColor32(0, 0, 0, byte).ToSColor());
    }
}
