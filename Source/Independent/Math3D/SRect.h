#pragma once

#include "Independent/Math3D/S2DI.h"

namespace math3d
{

/// A rectangle of 32-bit ints: the corner (x, y), which lies inside, and the size. The right and
/// the lower edge, x + width and y + height, lie outside; sums beyond 32 bits wrap around.
struct SRect
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    /// (0, 0, 0, 0).
    constexpr SRect() = default;

    /// (newX, newY, newWidth, newHeight).
    constexpr SRect(int newX, int newY, int newWidth, int newHeight) noexcept
        : x(newX)
        , y(newY)
        , width(newWidth)
        , height(newHeight)
    {
    }

    /// True when any of the four fields differs.
    [[nodiscard]] constexpr bool operator!=(const SRect& other) const noexcept
    {
        return x != other.x || y != other.y || width != other.width || height != other.height;
    }

    /// Assigns all four fields.
    constexpr void Set(int newX, int newY, int newWidth, int newHeight) noexcept
    {
        *this = SRect(newX, newY, newWidth, newHeight);
    }

    /// The corner (x, y).
    [[nodiscard]] S2DI GetPos() const noexcept { return S2DI(x, y); }

    /// The size (width, height).
    [[nodiscard]] S2DI GetSize() const noexcept { return S2DI(width, height); }

    /// The point moved into the rectangle, the last column being x + width - 1 and the last row
    /// y + height - 1. The upper limit has the last word: width 0 gives x - 1, height 0 gives y
    /// - 1.
    [[nodiscard]] S2DI Limit(const S2DI& point) const noexcept
    {
        return S2DI(LimitAxis(point.x, x, width), LimitAxis(point.y, y, height));
    }

private:
    [[nodiscard]] static constexpr int LimitAxis(int value, int start, int length) noexcept
    {
        const int end = WrappingAdd(start, length);
        if (value < start)
            value = start;
        return value >= end ? WrappingSubtract(end, 1) : value;
    }
};

} // namespace math3d
