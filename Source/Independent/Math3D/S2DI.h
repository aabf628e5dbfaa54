#pragma once

#include <cmath>

#include "Independent/Math3D/S2D.h"
#include "Independent/Math3D/Scalar.h"

namespace math3d
{

/// A point or size of two 32-bit ints. Results that do not fit into 32 bits wrap around.
struct S2DI
{
    int x = 0;
    int y = 0;

    /// (0, 0).
    constexpr S2DI() = default;

    /// (newX, newY).
    constexpr S2DI(int newX, int newY) noexcept : x(newX), y(newY) {}

    /// Copies and moves all members. Virtual, so that other types may derive from this one.
    S2DI(const S2DI& other) = default;
    S2DI(S2DI&& other) = default;
    S2DI& operator=(const S2DI& other) = default;
    S2DI& operator=(S2DI&& other) = default;
    virtual ~S2DI() = default;

    /// The sum, component by component.
    [[nodiscard]] S2DI operator+(const S2DI& other) const noexcept
    {
        return S2DI(WrappingAdd(x, other.x), WrappingAdd(y, other.y));
    }

    /// The difference, component by component.
    [[nodiscard]] S2DI operator-(const S2DI& other) const noexcept
    {
        return S2DI(WrappingSubtract(x, other.x), WrappingSubtract(y, other.y));
    }

    /// Each component times the factor.
    [[nodiscard]] S2DI operator*(int factor) const noexcept
    {
        return S2DI(WrappingMultiply(x, factor), WrappingMultiply(y, factor));
    }

    /// Each component divided by the divisor and truncated toward zero. A divisor of 0 is the
    /// caller's error: it is not checked and may end the program. The smallest int divided by -1
    /// wraps around to itself.
    [[nodiscard]] S2DI operator/(int divisor) const noexcept
    {
        return S2DI(WrappingDivide(x, divisor), WrappingDivide(y, divisor));
    }

    /// Each component converted to float, divided, and truncated toward zero. A quotient beyond the
    /// range of int becomes the nearest int, NaN (0 divided by 0) becomes 0.
    [[nodiscard]] S2DI operator/(float divisor) const noexcept
    {
        return S2DI(
            TruncateToInt(static_cast<float>(x) / divisor),
            TruncateToInt(static_cast<float>(y) / divisor));
    }

    /// Adds component by component.
    S2DI& operator+=(const S2DI& other) noexcept { return *this = *this + other; }

    /// True when both components are equal.
    [[nodiscard]] bool operator==(const S2DI& other) const noexcept
    {
        return x == other.x && y == other.y;
    }

    /// True when any component differs.
    [[nodiscard]] bool operator!=(const S2DI& other) const noexcept { return !(*this == other); }

    /// Both components converted to float; above 2^24 the nearest float.
    [[nodiscard]] S2D GetS2D() const noexcept
    {
        return S2D(static_cast<float>(x), static_cast<float>(y));
    }

    /// Assigns both components.
    void Set(int newX, int newY) noexcept { *this = S2DI(newX, newY); }

    /// The Euclidean distance of two points. dx * dx + dy * dy is summed up in 32-bit ints, so the
    /// result is right up to a distance of 46340; beyond, the sum wraps around (NaN when it comes
    /// out negative).
    [[nodiscard]] static float Distance(const S2DI& a, const S2DI& b) noexcept
    {
        const S2DI difference = a - b;
        return std::sqrt(static_cast<float>(WrappingAdd(
            WrappingMultiply(difference.x, difference.x),
            WrappingMultiply(difference.y, difference.y))));
    }
};

} // namespace math3d

inline math3d::S2DI S2D::GetS2DI() const noexcept
{
    return math3d::S2DI(math3d::TruncateToInt(x), math3d::TruncateToInt(y));
}
