#pragma once

#include <algorithm>
#include <cstdint>

#include "Independent/Math3D/Scalar.h"

/// A colour of four float channels with the nominal range 0 to 1; nothing clamps them before they
/// are packed. Comparisons are exact, and every operation treats alpha like the other channels.
struct SColor
{
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 1.0f;

    static const SColor Black; ///< (0, 0, 0, 1)
    static const SColor White; ///< (1, 1, 1, 1)
    static const SColor Zero;  ///< (0, 0, 0, 0)

    /// Opaque black: (0, 0, 0, 1).
    constexpr SColor() = default;

    /// (newR, newG, newB, newA).
    constexpr SColor(float newR, float newG, float newB, float newA) noexcept
        : r(newR)
        , g(newG)
        , b(newB)
        , a(newA)
    {
    }

    /// True when all four channels are equal.
    [[nodiscard]] constexpr bool operator==(const SColor& other) const noexcept
    {
        return r == other.r && g == other.g && b == other.b && a == other.a;
    }

    /// True when any channel differs.
    [[nodiscard]] constexpr bool operator!=(const SColor& other) const noexcept
    {
        return !(*this == other);
    }

    /// Assigns all four channels.
    constexpr void Set(float newR, float newG, float newB, float newA) noexcept
    {
        *this = SColor(newR, newG, newB, newA);
    }

    /// The sum, channel by channel.
    [[nodiscard]] constexpr SColor operator+(const SColor& other) const noexcept
    {
        return SColor(r + other.r, g + other.g, b + other.b, a + other.a);
    }

    /// The difference, channel by channel.
    [[nodiscard]] constexpr SColor operator-(const SColor& other) const noexcept
    {
        return SColor(r - other.r, g - other.g, b - other.b, a - other.a);
    }

    /// The product, channel by channel (modulation).
    [[nodiscard]] constexpr SColor operator*(const SColor& other) const noexcept
    {
        return SColor(r * other.r, g * other.g, b * other.b, a * other.a);
    }

    /// Each channel times the factor.
    [[nodiscard]] constexpr SColor operator*(float factor) const noexcept
    {
        return SColor(r * factor, g * factor, b * factor, a * factor);
    }

    /// Each channel divided by the divisor. A divisor of 0 gives infinities or NaN.
    [[nodiscard]] constexpr SColor operator/(float divisor) const noexcept
    {
        return SColor(r / divisor, g / divisor, b / divisor, a / divisor);
    }

    /// Multiplies channel by channel.
    constexpr SColor& operator*=(const SColor& other) noexcept { return *this = *this * other; }

    /// The colour packed as A << 24 | R << 16 | G << 8 | B. A channel c becomes the byte c * 255
    /// truncated toward zero and clamped to 0..255; NaN becomes 0.
    [[nodiscard]] constexpr std::uint32_t GetDWORD() const noexcept { return Pack(a, r, g, b); }

    /// The colour packed as A << 24 | B << 16 | G << 8 | R; its bytes are R, G, B, A when it is
    /// written little-endian. The channels become bytes as in GetDWORD.
    [[nodiscard]] constexpr std::uint32_t GetRGBA() const noexcept { return Pack(a, b, g, r); }

    /// Linear interpolation a + (b - a) * t, channel by channel. t is not clamped.
    [[nodiscard]] static constexpr SColor Lerp(const SColor& a, const SColor& b, float t) noexcept
    {
        return a + (b - a) * t;
    }

private:
    static constexpr std::uint32_t MakeByte(float channel) noexcept
    {
        return static_cast<std::uint32_t>(
            std::clamp(math3d::TruncateToInt(channel * 255.0f), 0, 255));
    }

    static constexpr std::uint32_t
    Pack(float first, float second, float third, float fourth) noexcept
    {
        return MakeByte(first) << 24 | MakeByte(second) << 16 | MakeByte(third) << 8 |
               MakeByte(fourth);
    }
};
