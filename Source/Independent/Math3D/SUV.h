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
    constexpr SUV(float newU, float newV) : u(newU), v(newV) {}

    /// True when both components are equal.
    constexpr bool operator==(const SUV& other) const { return u == other.u && v == other.v; }

    /// True when any component differs.
    constexpr bool operator!=(const SUV& other) const { return !(*this == other); }

    /// Adds component by component.
    SUV& operator+=(const SUV& other)
    {
        u += other.u;
        v += other.v;
        return *this;
    }

    /// Divides each component (a true division, no reciprocal). A divisor of 0 gives infinities or
    /// NaN.
    SUV& operator/=(float divisor)
    {
        u /= divisor;
        v /= divisor;
        return *this;
    }

    /// Assigns both components.
    void Set(float newU, float newV) { *this = SUV(newU, newV); }

    /// The component u.
    constexpr float GetU() const { return u; }

    /// The component v.
    constexpr float GetV() const { return v; }
};
