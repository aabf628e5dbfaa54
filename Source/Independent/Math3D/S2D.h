#pragma once

#include <cmath>

namespace math3d
{
struct S2DI;
}

/// A point or vector of two floats. Comparisons are exact.
struct S2D
{
    float x = 0.0f;
    float y = 0.0f;

    /// (0, 0).
    constexpr S2D() = default;

    /// (newX, newY).
    constexpr S2D(float newX, float newY) noexcept : x(newX), y(newY) {}

    /// Copies and moves all members. Virtual, so that other types may derive from this one.
    S2D(const S2D& other) = default;
    S2D(S2D&& other) = default;
    S2D& operator=(const S2D& other) = default;
    S2D& operator=(S2D&& other) = default;
    virtual ~S2D() = default;

    /// The sum, component by component.
    [[nodiscard]] S2D operator+(const S2D& other) const noexcept
    {
        return S2D(x + other.x, y + other.y);
    }

    /// The difference, component by component.
    [[nodiscard]] S2D operator-(const S2D& other) const noexcept
    {
        return S2D(x - other.x, y - other.y);
    }

    /// The product, component by component.
    [[nodiscard]] S2D operator*(const S2D& other) const noexcept
    {
        return S2D(x * other.x, y * other.y);
    }

    /// Each component times the factor.
    [[nodiscard]] S2D operator*(float factor) const noexcept { return S2D(x * factor, y * factor); }

    /// Each component divided by the divisor. A divisor of 0 gives infinities or NaN.
    [[nodiscard]] S2D operator/(float divisor) const noexcept
    {
        return S2D(x / divisor, y / divisor);
    }

    /// Adds component by component.
    S2D& operator+=(const S2D& other) noexcept
    {
        x += other.x;
        y += other.y;
        return *this;
    }

    /// True when both components are equal.
    [[nodiscard]] bool operator==(const S2D& other) const noexcept
    {
        return x == other.x && y == other.y;
    }

    /// True when any component differs.
    [[nodiscard]] bool operator!=(const S2D& other) const noexcept { return !(*this == other); }

    /// Each component truncated toward zero. Beyond the range of int it becomes the nearest int,
    /// NaN becomes 0.
    [[nodiscard]] math3d::S2DI GetS2DI() const noexcept;

    /// Scales to length 1 in place, by the reciprocal of the length. A vector whose length is
    /// exactly 0 stays.
    void Normalize() noexcept
    {
        const float length = std::sqrt(x * x + y * y);
        if (length != 0.0f)
            *this = *this * (1.0f / length);
    }

    /// The Euclidean distance of two points.
    [[nodiscard]] static float Distance(const S2D& a, const S2D& b) noexcept
    {
        const S2D difference = a - b;
        return std::sqrt(difference.x * difference.x + difference.y * difference.y);
    }
};

// The two types convert into each other. S2DI.h also defines S2D::GetS2DI, for which it needs both.
#include "Independent/Math3D/S2DI.h"
