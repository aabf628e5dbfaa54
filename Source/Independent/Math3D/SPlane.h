#pragma once

#include "Independent/Math3D/S3D.h"

/// The plane a*x + b*y + c*z + d = 0 with the normal (a, b, c), and tests of lines and polygons. No
/// function normalises the normals that it is given.
struct SPlane
{
    float a = 0.0f;
    float b = 0.0f;
    float c = 0.0f;
    float d = 0.0f;

    /// All four zero, which is no plane yet.
    constexpr SPlane() = default;

    /// (newA, newB, newC, newD).
    constexpr SPlane(float newA, float newB, float newC, float newD) noexcept
        : a(newA)
        , b(newB)
        , c(newC)
        , d(newD)
    {
    }

    /// The plane through a point with a normal of any length, which is kept as it is.
    constexpr SPlane(const S3D& point, const S3D& normal) noexcept
        : SPlane(normal.x, normal.y, normal.z, -S3D::DotProduct(normal, point))
    {
    }

    /// The plane through three points with the unit normal CalcNormal(p0, p1, p2). Where that is
    /// (0, 0, 0), so is the plane.
    SPlane(const S3D& p0, const S3D& p1, const S3D& p2) noexcept
        : SPlane(p0, CalcNormal(p0, p1, p2))
    {
    }

    /// The unit normal (p1 - p0) x (p2 - p1). The corners run clockwise as seen from the side that
    /// it points to (left-handed axes). It is (0, 0, 0) where the length of the product comes out
    /// as exactly 0: for coinciding corners, or edges so short (about 1e-12) that it underflows.
    /// For points on one line rounding may leave a length above 0, and a unit vector that means
    /// nothing.
    [[nodiscard]] static S3D CalcNormal(const S3D& p0, const S3D& p1, const S3D& p2) noexcept
    {
        const S3D cross = S3D::CrossProduct(p1 - p0, p2 - p1);
        const float length = cross.Length();
        return cross * (length == 0.0f ? 0.0f : 1.0f / length);
    }

    /// Where the segment from start to end, both included, meets this plane. False, with out
    /// unwritten, when it does not or is parallel to the plane, as one within the plane is. NaN
    /// gives true, and NaN in out.
    [[nodiscard]] bool
    CalcIntersectSegment(const S3D& start, const S3D& end, S3D& out) const noexcept;

    /// Where the endless line through point along direction (of any length) meets this plane.
    /// False, with out unwritten, when it is parallel to the plane.
    [[nodiscard]] bool
    CalcIntersectVector(const S3D& point, const S3D& direction, S3D& out) const noexcept;

    /// True on the side that the normal points to and on the plane itself.
    [[nodiscard]] constexpr bool TestFrontPos(const S3D& point) const noexcept
    {
        return S3D::DotProduct(GetNormal(), point) + d >= 0.0f;
    }

    /// Where an endless line meets the plane through planePos with planeNormal; direction and
    /// normal may have any length. False, with out unwritten, when the two are parallel.
    [[nodiscard]] static bool LinePolyCrossPoint(
        const S3D& linePos,
        const S3D& lineDir,
        const S3D& planePos,
        const S3D& planeNormal,
        S3D& out) noexcept;

    /// True when the point, as seen along the normal, lies in the triangle or on its boundary. The
    /// triangle must be wound so that CalcNormal(p0, p1, p2) points along the normal. Every point
    /// lies in a triangle that is too small for a normal, and so does NaN.
    [[nodiscard]] static bool PointTriangleSide(
        const S3D& p0, const S3D& p1, const S3D& p2, const S3D& point, const S3D& normal) noexcept;

    /// True when the point lies in the axis-aligned box of the four corners (bounds included) and,
    /// as seen along the normal, in the convex quadrilateral or on its boundary. It must be wound
    /// so that its CalcNormal points along the normal.
    [[nodiscard]] static bool PointPolygonSide(
        const S3D& p0,
        const S3D& p1,
        const S3D& p2,
        const S3D& p3,
        const S3D& point,
        const S3D& normal) noexcept;

    /// True when the point is on the side that planeNormal points to or on the plane itself.
    [[nodiscard]] static constexpr bool
    PointPolySide(const S3D& point, const S3D& planePos, const S3D& planeNormal) noexcept
    {
        return CalcHeight(point, planePos, planeNormal) >= 0.0f;
    }

    /// The distance of the point from the plane for a unit normal: the larger of CalcHeight and its
    /// negation.
    [[nodiscard]] static constexpr float
    CalcDistance(const S3D& point, const S3D& planePos, const S3D& planeNormal) noexcept
    {
        const float height = CalcHeight(point, planePos, planeNormal);
        return height < -height ? -height : height;
    }

    /// The signed distance of the point from the plane for a unit normal, (point - planePos) .
    /// planeNormal: positive on the side that the normal points to.
    [[nodiscard]] static constexpr float
    CalcHeight(const S3D& point, const S3D& planePos, const S3D& planeNormal) noexcept
    {
        return S3D::DotProduct(point - planePos, planeNormal);
    }

    /// The weights with point = u * p0 + v * p1 + w * p2, by Cramer's rule: the barycentric
    /// coordinates of a point of the triangle, as long as its plane does not contain the origin.
    /// Vectors in one plane with the origin give infinities or NaN where their triple product comes
    /// out as exactly 0, and weights that mean nothing where rounding leaves more of it.
    static void CalcCenterGravity(
        const S3D& p0,
        const S3D& p1,
        const S3D& p2,
        const S3D& point,
        float& u,
        float& v,
        float& w) noexcept;

    /// The direction reflected by a mirror with a unit normal, v - 2 * (normal . v) * normal,
    /// normalised. A zero vector stays zero.
    [[nodiscard]] static S3D CalcMirrorVector(const S3D& vector, const S3D& normal) noexcept
    {
        return (vector - 2.0f * S3D::DotProduct(normal, vector) * normal).GetNormalize();
    }

private:
    [[nodiscard]] constexpr S3D GetNormal() const noexcept { return S3D(a, b, c); }
};
