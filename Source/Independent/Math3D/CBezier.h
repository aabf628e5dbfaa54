#pragma once

#include <array>

#include "Independent/Math3D/S2D.h"

namespace math3d
{

/// Evaluates cubic Bezier curves.
class CBezier
{
public:
    /// Nothing to set: all functions are static.
    constexpr CBezier() = default;

    /// Virtual, so that other types may derive from this one.
    CBezier(const CBezier& other) = default;
    CBezier(CBezier&& other) = default;
    CBezier& operator=(const CBezier& other) = default;
    CBezier& operator=(CBezier&& other) = default;
    virtual ~CBezier() = default;

    /// The Bernstein polynomial B(i, n) at t: n! / (i! * (n - i)!) * t^i * (1 - t)^(n - i). Exact
    /// factorials end at n = 12: they are formed in 32 bits and wrap around beyond, to 0 from 34
    /// on, where the result is 0 or NaN. The factorial of a negative number counts as 1.
    [[nodiscard]] static float Bernstein(int i, int n, float t) noexcept;

    /// The point of the cubic Bezier curve with four control points at t: the first point at 0, the
    /// last at 1. t is not clamped.
    [[nodiscard]] static S2D CalcBezier(const std::array<S2D, 4>& points, float t) noexcept;
};

} // namespace math3d
