#pragma once

#include "Independent/Math3D/S3D.h"

namespace math3d
{

/// An axis-aligned bounding box that grows around what is inserted into it.
class CBoundingBox
{
public:
    /// The empty box; see Clear.
    CBoundingBox() { Clear(); }

    /// Virtual, so that other types may derive from this one.
    virtual ~CBoundingBox() = default;

    /// Empties the box: every minimum becomes the largest finite float and every maximum its
    /// negative, so that the first insertion sets all six. An empty box contains no point; its size
    /// is -infinity on each axis.
    void Clear();

    /// Widens the box to include a point.
    void Insert(const S3D& point);

    /// Widens the box to include the cube around a sphere.
    void InsertSphere(const S3D& center, float radius);

    /// Widens the box to include another box. An empty one changes nothing.
    void InsertBoundingBox(const CBoundingBox& other);

    /// The middle of the box.
    S3D GetCenter() const;

    /// The lengths of the box along the three axes.
    S3D GetSize() const;

    /// The largest of the three lengths.
    float GetMaxLength() const;

    /// The radius of the sphere around the box: half the length of its diagonal.
    float GetRadius() const;

    /// True when the point lies in the box or on its surface.
    bool IsIn(const S3D& point) const;

    /// The smallest x.
    float GetMinX() const { return m_MinX; }

    /// The largest x.
    float GetMaxX() const { return m_MaxX; }

    /// The smallest y.
    float GetMinY() const { return m_MinY; }

    /// The largest y.
    float GetMaxY() const { return m_MaxY; }

    /// The smallest z.
    float GetMinZ() const { return m_MinZ; }

    /// The largest z.
    float GetMaxZ() const { return m_MaxZ; }

private:
    float m_MinX;
    float m_MaxX;
    float m_MinY;
    float m_MaxY;
    float m_MinZ;
    float m_MaxZ;
};

} // namespace math3d
