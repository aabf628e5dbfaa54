#pragma once

#include <cstdint>

#include "Independent/Math3D/SColor.h"

namespace math3d
{

/// A colour of four bytes, 0 to 255 each.
struct SColor32
{
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
    std::uint8_t a = 0;

    /// Transparent black: (0, 0, 0, 0).
    constexpr SColor32() = default;

    /// (newR, newG, newB, newA).
    constexpr SColor32(
        std::uint8_t newR, std::uint8_t newG, std::uint8_t newB, std::uint8_t newA) noexcept
        : r(newR)
        , g(newG)
        , b(newB)
        , a(newA)
    {
    }

    /// Copies and moves all members. Virtual, so that other types may derive from this one.
    SColor32(const SColor32& other) = default;
    SColor32(SColor32&& other) = default;
    SColor32& operator=(const SColor32& other) = default;
    SColor32& operator=(SColor32&& other) = default;
    virtual ~SColor32() = default;

    /// The colour with channels from 0 to 1: each byte divided by 255.
    [[nodiscard]] SColor ToSColor() const noexcept
    {
        return SColor(
            static_cast<float>(r) / 255.0f, static_cast<float>(g) / 255.0f,
            static_cast<float>(b) / 255.0f, static_cast<float>(a) / 255.0f);
    }
};

} // namespace math3d
