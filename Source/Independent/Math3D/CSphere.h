#pragma once

#include "Independent/Math3D/S3D.h"

namespace math3d
{

/// A sphere: its centre and its radius.
class CSphere
{
public:
    /// The sphere at (0, 0, 0) of radius 0.
    constexpr CSphere() = default;

    /// The sphere at a centre with a radius of 0 or more.
    constexpr CSphere(const S3D& pos, float radius) noexcept : m_Pos(pos), m_Radius(radius) {}

    /// Copies and moves all members. Virtual, so that other types may derive from this one.
    CSphere(const CSphere& other) = default;
    CSphere(CSphere&& other) = default;
    CSphere& operator=(const CSphere& other) = default;
    CSphere& operator=(CSphere&& other) = default;
    virtual ~CSphere() = default;

    /// Assigns the centre and the radius.
    void Set(const S3D& pos, float radius) noexcept
    {
        m_Pos = pos;
        m_Radius = radius;
    }

    /// The centre.
    [[nodiscard]] S3D GetPos() const noexcept { return m_Pos; }

    /// The radius.
    [[nodiscard]] float GetRadius() const noexcept { return m_Radius; }

    /// True when the ray from origin along dir, which must have length 1, meets the ball. A ray
    /// that starts inside it or on its surface does so whatever its direction, and so does one with
    /// NaN.
    [[nodiscard]] bool IsCollision(const S3D& origin, const S3D& dir) const noexcept;

private:
    S3D m_Pos;
    float m_Radius = 0.0f;
};

} // namespace math3d
