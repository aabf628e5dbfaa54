#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Independent/Math3D/S2D.h"
#include "Independent/Math3D/S2DI.h"
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/S4D.h"
#include "Independent/Math3D/SColor.h"
#include "Independent/Math3D/SMatrix.h"
#include "Independent/Math3D/SPlane.h"
#include "Independent/Math3D/SQuaternion.h"
#include "Independent/Math3D/SUV.h"

/// For expectations that hold bit by bit: comparison, printing and random input.

/// Passes when all floats of two values have the same bits. A NaN is the same as any other NaN:
/// their signs and payloads differ between processors.
#define EXPECT_SAME_BITS(expected, actual) EXPECT_PRED_FORMAT2(mathtest::SameBits, expected, actual)
#define ASSERT_SAME_BITS(expected, actual) ASSERT_PRED_FORMAT2(mathtest::SameBits, expected, actual)

namespace mathtest
{

inline constexpr float Pi = 3.1415927f;
inline constexpr float Infinity = std::numeric_limits<float>::infinity();
inline constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
inline constexpr int IntMin = std::numeric_limits<int>::min();
inline constexpr int IntMax = std::numeric_limits<int>::max();

/// How many random inputs a test tries.
inline constexpr int RandomCases = 20000;

inline std::vector<float> ToFloats(float value)
{
    return {value};
}

inline std::vector<float> ToFloats(const S2D& value)
{
    return {value.x, value.y};
}

inline std::vector<float> ToFloats(const S3D& value)
{
    return {value.x, value.y, value.z};
}

inline std::vector<float> ToFloats(const S4D& value)
{
    return {value.x, value.y, value.z, value.w};
}

inline std::vector<float> ToFloats(const SUV& value)
{
    return {value.u, value.v};
}

inline std::vector<float> ToFloats(const SColor& value)
{
    return {value.r, value.g, value.b, value.a};
}

inline std::vector<float> ToFloats(const SQuaternion& value)
{
    return {value.x, value.y, value.z, value.w};
}

inline std::vector<float> ToFloats(const SMatrix& value)
{
    return std::vector<float>(&value.m[0][0], &value.m[0][0] + 16);
}

inline bool IsSameFloat(float a, float b)
{
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

/// The floats of a value, each so that it can be pasted into a test.
template <typename Value>
std::string Print(const Value& value)
{
    std::string text = "(";
    for (const float element : ToFloats(value))
    {
        char buffer[64];
        std::snprintf(
            buffer, sizeof buffer, "%s%af = %.9g", text.size() == 1 ? "" : ", ",
            static_cast<double>(element), static_cast<double>(element));
        text += buffer;
    }
    return text + ")";
}

inline std::string Print(const math3d::S2DI& value)
{
    return "(" + std::to_string(value.x) + ", " + std::to_string(value.y) + ")";
}

/// The inputs of a random case, for the message of a failure.
template <typename... Values>
std::string PrintInput(const Values&... values)
{
    std::string text = "input:";
    ((text += "\n  " + Print(values)), ...);
    return text;
}

template <typename Value>
testing::AssertionResult SameBits(
    const char* expectedText, const char* actualText, const Value& expected, const Value& actual)
{
    const std::vector<float> expectedFloats = ToFloats(expected);
    const std::vector<float> actualFloats = ToFloats(actual);
    for (std::size_t i = 0; i < expectedFloats.size(); ++i)
    {
        if (!IsSameFloat(expectedFloats[i], actualFloats[i]))
            return testing::AssertionFailure()
                   << actualText << "\n  is " << Print(actual) << "\nbut " << expectedText
                   << "\n  is " << Print(expected) << "\n(float " << i << " differs)\n";
    }
    return testing::AssertionSuccess();
}

/// The numbers of a plane, to compare and print.
inline S4D Coefficients(const SPlane& plane)
{
    return S4D(plane.a, plane.b, plane.c, plane.d);
}

/// Random values, the same with every compiler and library.
class CRandom
{
public:
    explicit CRandom(std::uint32_t seed) : m_Engine(seed) {}

    std::uint32_t Bits() { return static_cast<std::uint32_t>(m_Engine()); }

    std::uint32_t Below(std::uint32_t limit) { return Bits() % limit; }

    /// Any int, every magnitude as likely as another.
    int Int()
    {
        const std::uint32_t bits = Bits() >> Below(32);
        return static_cast<int>(Below(2) == 0 ? bits : 0u - bits);
    }

    /// A whole number from low to high, both included.
    int Whole(int low, int high)
    {
        return low + static_cast<int>(Below(static_cast<std::uint32_t>(high - low + 1)));
    }

    double BetweenDouble(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(Bits()) / 4294967296.0);
    }

    float Between(float low, float high) { return static_cast<float>(BetweenDouble(low, high)); }

    /// Mostly of one magnitude, so that the order of a sum shows; now and then a value that
    /// arithmetic treats in its own way, or any bits at all.
    float Float()
    {
        static constexpr std::array<float, 12> Special = {
            0.0f, -0.0f,    1.0f,      -1.0f, 2.0f,   0.5f,
            NaN,  Infinity, -Infinity, 1e38f, 1e-38f, std::numeric_limits<float>::denorm_min()};
        const std::uint32_t kind = Below(40);
        if (kind == 0)
            return AnyFloat();
        if (kind == 1)
            return Special[Below(Special.size())];
        return Between(-10.0f, 10.0f);
    }

    /// Any bits: every exponent, infinities, NaN.
    float AnyFloat()
    {
        const std::uint32_t bits = Bits();
        float value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    // Braces, because they evaluate from left to right with every compiler.
    S2D Vector2() { return S2D{Float(), Float()}; }
    S3D Vector3() { return S3D{Float(), Float(), Float()}; }
    S4D Vector4() { return S4D{Float(), Float(), Float(), Float()}; }
    SUV TextureCoordinate() { return SUV{Float(), Float()}; }
    SColor Colour() { return SColor{Float(), Float(), Float(), Float()}; }
    SQuaternion Quaternion() { return SQuaternion{Float(), Float(), Float(), Float()}; }

    SMatrix Matrix()
    {
        SMatrix matrix(0);
        for (float(&row)[4] : matrix.m)
            for (float& element : row)
                element = Float();
        return matrix;
    }

    S3D Vector3Between(float low, float high)
    {
        return S3D{Between(low, high), Between(low, high), Between(low, high)};
    }

    /// Whole coordinates up to a limit, with which every decision is exact.
    S3D GridVector(int limit)
    {
        const auto coordinate = [&] { return static_cast<float>(Whole(-limit, limit)); };
        return S3D{coordinate(), coordinate(), coordinate()};
    }

private:
    std::mt19937 m_Engine;
};

} // namespace mathtest
