#pragma once

/// A texture coordinate: u across, v down or up as the texture's user defines it. Comparisons are
/// exact.
struct SUV
{
    float u = 0.0f;
    float v = 0.0f;

    /// (0, 0).
    constexpr SUV() = default;

    /// (newU, newV).
    constexpr SUV(float newU, float newV) noexcept : u(newU), v(newV) {}

    /// True when both components are equal.
    [[nodiscard]] constexpr bool operator==(const SUV& other) const noexcept
    {
        return u == other.u && v == other.v;
    }

    /// True when any component differs.
    [[nodiscard]] constexpr bool operator!=(const SUV& other) const noexcept
    {
        return !(*this == other);
    }

    /// Adds component by component.
    constexpr SUV& operator+=(const SUV& other) noexcept
    {
        u += other.u;
        v += other.v;
        return *this;
    }

    /// Divides each component (a true division, no reciprocal). A divisor of 0 gives infinities or
    /// NaN.
    constexpr SUV& operator/=(float divisor) noexcept
    {
        u /= divisor;
        v /= divisor;
        return *this;
    }

    /// Assigns both components.
    constexpr void Set(float newU, float newV) noexcept { *this = SUV(newU, newV); }

    /// The component u.
    [[nodiscard]] constexpr float GetU() const noexcept { return u; }

    /// The component v.
    [[nodiscard]] constexpr float GetV() const noexcept { return v; }
};
