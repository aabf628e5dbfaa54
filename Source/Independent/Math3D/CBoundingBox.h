#pragma once

#include <limits>

#include "Independent/Math3D/S3D.h"

namespace math3d
{

/// An axis-aligned bounding box that grows around what is inserted into it.
class CBoundingBox
{
public:
    /// The empty box; see Clear.
    constexpr CBoundingBox() = default;

    /// Copies and moves all members. Virtual, so that other types may derive from this one.
    CBoundingBox(const CBoundingBox& other) = default;
    CBoundingBox(CBoundingBox&& other) = default;
    CBoundingBox& operator=(const CBoundingBox& other) = default;
    CBoundingBox& operator=(CBoundingBox&& other) = default;
    virtual ~CBoundingBox() = default;

    /// Empties the box: every minimum becomes the largest finite float and every maximum its
    /// negative, so that the first insertion sets all six. An empty box contains no point; its size
    /// and largest length are -infinity, its centre is the origin and its radius infinity.
    void Clear() noexcept { *this = CBoundingBox(); }

    /// Widens the box to include a point. A coordinate of NaN changes nothing on its axis.
    void Insert(const S3D& point) noexcept;

    /// Widens the box to include the cube around a sphere.
    void InsertSphere(const S3D& center, float radius) noexcept;

    /// Widens the box to include another box. An empty one changes nothing.
    void InsertBoundingBox(const CBoundingBox& other) noexcept;

    /// The middle of the box.
    [[nodiscard]] S3D GetCenter() const noexcept;

    /// The lengths of the box along the three axes.
    [[nodiscard]] S3D GetSize() const noexcept;

    /// The largest of the three lengths.
    [[nodiscard]] float GetMaxLength() const noexcept;

    /// The radius of the sphere around the box: half the length of its diagonal.
    [[nodiscard]] float GetRadius() const noexcept;

    /// True when the point lies in the box or on its surface.
    [[nodiscard]] bool IsIn(const S3D& point) const noexcept;

    /// The smallest x.
    [[nodiscard]] float GetMinX() const noexcept { return m_MinX; }

    /// The largest x.
    [[nodiscard]] float GetMaxX() const noexcept { return m_MaxX; }

    /// The smallest y.
    [[nodiscard]] float GetMinY() const noexcept { return m_MinY; }

    /// The largest y.
    [[nodiscard]] float GetMaxY() const noexcept { return m_MaxY; }

    /// The smallest z.
    [[nodiscard]] float GetMinZ() const noexcept { return m_MinZ; }

    /// The largest z.
    [[nodiscard]] float GetMaxZ() const noexcept { return m_MaxZ; }

private:
    static constexpr float Largest = std::numeric_limits<float>::max();

    float m_MinX = Largest;
    float m_MaxX = -Largest;
    float m_MinY = Largest;
    float m_MaxY = -Largest;
    float m_MinZ = Largest;
    float m_MaxZ = -Largest;
};

} // namespace math3d
