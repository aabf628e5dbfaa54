#pragma once

#include "Independent/Math3D/S3D.h"

namespace math3d
{

/// A sphere: its centre and its radius.
class CSphere
{
public:
    /// The sphere at (0, 0, 0) of radius 0.
    CSphere() = default;

    /// The sphere at a centre with a radius of 0 or more.
    CSphere(const S3D& pos, float radius) : m_Pos(pos), m_Radius(radius) {}

    /// Virtual, so that other types may derive from this one.
    virtual ~CSphere() = default;

    /// Assigns the centre and the radius.
    void Set(const S3D& pos, float radius)
    {
        m_Pos = pos;
        m_Radius = radius;
    }

    /// The centre.
    S3D GetPos() const { return m_Pos; }

    /// The radius.
    float GetRadius() const { return m_Radius; }

    /// True when the ray from origin along dir, which must have length 1, meets the ball. A ray
    /// that starts inside it or on its surface does so whatever its direction.
    bool IsCollision(const S3D& origin, const S3D& dir) const;

private:
    S3D m_Pos;
    float m_Radius = 0.0f;
};

} // namespace math3d
