#include "Independent/Math3D/SColor.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"

using namespace mathtest;

namespace
{

/// The channel times 255 as a float, truncated and clamped.
std::uint32_t ToByte(float channel)
{
    const float scaled = channel * 255.0f;
    if (std::isnan(scaled))
        return 0;
    const double truncated = std::trunc(static_cast<double>(scaled));
    return static_cast<std::uint32_t>(std::max(std::min(truncated, 255.0), 0.0));
}

} // namespace

TEST(SColor, IsFourFloatsInOrderWithoutAVirtualTable)
{
    static_assert(!std::is_polymorphic_v<SColor>);
    static_assert(std::is_standard_layout_v<SColor>);
    static_assert(std::is_trivially_copyable_v<SColor>);
    static_assert(sizeof(SColor) == 4 * sizeof(float));
    static_assert(offsetof(SColor, r) == 0);
    static_assert(offsetof(SColor, g) == 4);
    static_assert(offsetof(SColor, b) == 8);
    static_assert(offsetof(SColor, a) == 12);
}

TEST(SColor, DefaultIsOpaqueBlack)
{
    EXPECT_SAME_BITS(SColor(0.0f, 0.0f, 0.0f, 1.0f), SColor());
}

TEST(SColor, ConstantsAreBlackWhiteAndZero)
{
    EXPECT_SAME_BITS(SColor(0.0f, 0.0f, 0.0f, 1.0f), SColor::Black);
    EXPECT_SAME_BITS(SColor(1.0f, 1.0f, 1.0f, 1.0f), SColor::White);
    EXPECT_SAME_BITS(SColor(0.0f, 0.0f, 0.0f, 0.0f), SColor::Zero);
}

TEST(SColor, ConstructorAndSetTakeTheFieldsInOrder)
{
    const SColor constructed(1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_EQ(1.0f, constructed.r);
    EXPECT_EQ(2.0f, constructed.g);
    EXPECT_EQ(3.0f, constructed.b);
    EXPECT_EQ(4.0f, constructed.a);
    SColor assigned;
    assigned.Set(5.0f, 6.0f, 7.0f, 8.0f);
    EXPECT_EQ(5.0f, assigned.r);
    EXPECT_EQ(6.0f, assigned.g);
    EXPECT_EQ(7.0f, assigned.b);
    EXPECT_EQ(8.0f, assigned.a);
}

TEST(SColor, EqualMeansAllFourChannelsExactlyEqual)
{
    const SColor colour(1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_TRUE(colour == SColor(1.0f, 2.0f, 3.0f, 4.0f));
    EXPECT_FALSE(colour != SColor(1.0f, 2.0f, 3.0f, 4.0f));
    for (const SColor& other :
         {SColor(9.0f, 2.0f, 3.0f, 4.0f), SColor(1.0f, 9.0f, 3.0f, 4.0f),
          SColor(1.0f, 2.0f, 9.0f, 4.0f), SColor(1.0f, 2.0f, 3.0f, 9.0f),
          SColor(std::nextafter(1.0f, 2.0f), 2.0f, 3.0f, 4.0f)})
    {
        EXPECT_FALSE(colour == other) << Print(other);
        EXPECT_TRUE(colour != other) << Print(other);
    }
    EXPECT_FALSE(SColor(0.0f, 0.0f, 0.0f, NaN) == SColor(0.0f, 0.0f, 0.0f, NaN));
}

TEST(SColor, SumDifferenceAndProductAreFormedByChannelAlphaIncluded)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SColor a = random.Colour();
        const SColor b = random.Colour();
        const SColor product(a.r * b.r, a.g * b.g, a.b * b.b, a.a * b.a);
        SColor inPlace = a;
        EXPECT_EQ(&inPlace, &(inPlace *= b));
        ASSERT_SAME_BITS(SColor(a.r + b.r, a.g + b.g, a.b + b.b, a.a + b.a), a + b)
            << PrintInput(a, b);
        ASSERT_SAME_BITS(SColor(a.r - b.r, a.g - b.g, a.b - b.b, a.a - b.a), a - b)
            << PrintInput(a, b);
        ASSERT_SAME_BITS(product, a * b) << PrintInput(a, b);
        ASSERT_SAME_BITS(product, inPlace) << PrintInput(a, b);
    }
}

TEST(SColor, FactorMultipliesAndDivisorDividesEachChannelAlphaIncluded)
{
    // The product with the reciprocal would be 0x1.aaaaacp+0.
    EXPECT_SAME_BITS(
        SColor(0x1.aaaaaap+0f, 1.0f, 0.0f, 0x1.aaaaaap+0f), SColor(5.0f, 3.0f, 0.0f, 5.0f) / 3.0f);
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SColor c = random.Colour();
        const float number = random.Float();
        ASSERT_SAME_BITS(SColor(c.r * number, c.g * number, c.b * number, c.a * number), c * number)
            << PrintInput(c, number);
        ASSERT_SAME_BITS(SColor(c.r / number, c.g / number, c.b / number, c.a / number), c / number)
            << PrintInput(c, number);
    }
}

TEST(SColor, DivisionByZeroGivesInfinitiesAndNaN)
{
    EXPECT_SAME_BITS(
        SColor(Infinity, -Infinity, NaN, Infinity), SColor(1.0f, -1.0f, 0.0f, 1.0f) / 0.0f);
}

TEST(SColor, PackedColourIsARGB)
{
    static_assert(std::is_same_v<decltype(SColor().GetDWORD()), std::uint32_t>);
    EXPECT_EQ(0xFFFF7F00u, SColor(1.0f, 0.5f, 0.0f, 1.0f).GetDWORD());
    EXPECT_EQ(0x04010203u, SColor(1.5f / 255, 2.5f / 255, 3.5f / 255, 4.5f / 255).GetDWORD());
}

TEST(SColor, PackedColourForOpenGLIsABGR)
{
    static_assert(std::is_same_v<decltype(SColor().GetRGBA()), std::uint32_t>);
    EXPECT_EQ(0xFF007FFFu, SColor(1.0f, 0.5f, 0.0f, 1.0f).GetRGBA());
    EXPECT_EQ(0x04030201u, SColor(1.5f / 255, 2.5f / 255, 3.5f / 255, 4.5f / 255).GetRGBA());
}

TEST(SColor, PackingClampsAChannelToAByte)
{
    EXPECT_EQ(0x00FF00FFu, SColor(2.0f, -1.0f, 1.01f, -0.1f).GetDWORD());
    EXPECT_EQ(0x00FF00FFu, SColor(2.0f, -1.0f, 1.01f, -0.1f).GetRGBA());
    EXPECT_EQ(0x00FF00FFu, SColor(1e10f, -1e10f, 1e38f, -1e38f).GetDWORD());
    EXPECT_EQ(0x00FF00FFu, SColor(Infinity, -Infinity, Infinity, -Infinity).GetDWORD());
    EXPECT_EQ(0x00FF00FFu, SColor(Infinity, -Infinity, Infinity, -Infinity).GetRGBA());
}

TEST(SColor, PackingTakesNaNAsZero)
{
    EXPECT_EQ(0x00FF00FFu, SColor(1.0f, NaN, 1.0f, -NaN).GetDWORD());
    EXPECT_EQ(0xFF00FF00u, SColor(NaN, 1.0f, NaN, 1.0f).GetRGBA());
}

TEST(SColor, PackingTruncatesWithoutRounding)
{
    // Just below 1 and just below the first step.
    EXPECT_EQ(0xFEFEFEFEu, SColor(0.99999f, 0.99999f, 0.99999f, 0.99999f).GetDWORD());
    EXPECT_EQ(0u, SColor(0.0039f, 0.0039f, 0.0039f, 0.0039f).GetDWORD());
    CRandom random(3);
    for (int i = 0; i < RandomCases; ++i)
    {
        const auto channel = [&random, i]
        {
            return i % 4 == 0   ? random.AnyFloat()
                   : i % 4 == 1 ? static_cast<float>(random.Below(256)) / 255.0f
                                : random.Between(-0.1f, 1.1f);
        };
        const SColor colour{channel(), channel(), channel(), channel()};
        const std::uint32_t r = ToByte(colour.r);
        const std::uint32_t g = ToByte(colour.g);
        const std::uint32_t b = ToByte(colour.b);
        const std::uint32_t a = ToByte(colour.a);
        ASSERT_EQ(a << 24 | r << 16 | g << 8 | b, colour.GetDWORD()) << PrintInput(colour);
        ASSERT_EQ(a << 24 | b << 16 | g << 8 | r, colour.GetRGBA()) << PrintInput(colour);
    }
}

TEST(SColor, LerpGoesFromTheOneColourToTheOther)
{
    const SColor a(0.0f, 1.0f, 2.0f, 3.0f);
    const SColor b(4.0f, 3.0f, 2.0f, 1.0f);
    EXPECT_SAME_BITS(a, SColor::Lerp(a, b, 0.0f));
    EXPECT_SAME_BITS(b, SColor::Lerp(a, b, 1.0f));
    EXPECT_SAME_BITS(SColor(1.0f, 1.5f, 2.0f, 2.5f), SColor::Lerp(a, b, 0.25f));
}

TEST(SColor, LerpDoesNotClamp)
{
    const SColor a(0.0f, 1.0f, 2.0f, 3.0f);
    const SColor b(4.0f, 3.0f, 2.0f, 1.0f);
    EXPECT_SAME_BITS(SColor(8.0f, 5.0f, 2.0f, -1.0f), SColor::Lerp(a, b, 2.0f));
    EXPECT_SAME_BITS(SColor(-4.0f, -1.0f, 2.0f, 5.0f), SColor::Lerp(a, b, -1.0f));
}

TEST(SColor, LerpAddsTheScaledDifference)
{
    CRandom random(4);
    const auto lerp = [](float a, float b, float t)
    {
        const float difference = b - a;
        const float scaled = difference * t;
        return a + scaled;
    };
    for (int i = 0; i < RandomCases; ++i)
    {
        const SColor a = random.Colour();
        const SColor b = random.Colour();
        const float t = random.Float();
        const SColor expected(
            lerp(a.r, b.r, t), lerp(a.g, b.g, t), lerp(a.b, b.b, t), lerp(a.a, b.a, t));
        ASSERT_SAME_BITS(expected, SColor::Lerp(a, b, t)) << PrintInput(a, b, t);
    }
}
