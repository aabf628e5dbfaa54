#include "Independent/Math3D/SPlane.h"

#include <algorithm>

namespace
{

// True when the corner at the point, toward the edge, does not turn against the normal.
bool IsInsideEdge(const S3D& point, const S3D& start, const S3D& end, const S3D& normal)
{
    return !(S3D::DotProduct(SPlane::CalcNormal(point, start, end), normal) < 0.0f);
}

// True when the value lies within the range of the four others, bounds included.
bool IsBetween(float value, float a, float b, float c, float d)
{
    const auto [smallest, largest] = std::minmax({a, b, c, d});
    return smallest <= value && value <= largest;
}

} // namespace

bool SPlane::CalcIntersectSegment(const S3D& start, const S3D& end, S3D& out) const noexcept
{
    const S3D direction = end - start;
    const float denominator = S3D::DotProduct(GetNormal(), direction);
    if (denominator == 0.0f)
        return false;
    const float t = (-d - S3D::DotProduct(GetNormal(), start)) / denominator;
    if (t < 0.0f || t > 1.0f)
        return false;
    out = start + direction * t;
    return true;
}

bool SPlane::CalcIntersectVector(const S3D& point, const S3D& direction, S3D& out) const noexcept
{
    const float denominator = S3D::DotProduct(GetNormal(), direction);
    if (denominator == 0.0f)
        return false;
    const float t = (-d - S3D::DotProduct(GetNormal(), point)) / denominator;
    out = point + direction * t;
    return true;
}

bool SPlane::LinePolyCrossPoint(
    const S3D& linePos,
    const S3D& lineDir,
    const S3D& planePos,
    const S3D& planeNormal,
    S3D& out) noexcept
{
    const float numerator = S3D::DotProduct(planePos - linePos, planeNormal);
    const float denominator = S3D::DotProduct(lineDir, planeNormal);
    if (denominator == 0.0f)
        return false;
    const float t = numerator / denominator;
    out = linePos + lineDir * t;
    return true;
}

bool SPlane::PointTriangleSide(
    const S3D& p0, const S3D& p1, const S3D& p2, const S3D& point, const S3D& normal) noexcept
{
    return IsInsideEdge(point, p0, p1, normal) && IsInsideEdge(point, p1, p2, normal) &&
           IsInsideEdge(point, p2, p0, normal);
}

bool SPlane::PointPolygonSide(
    const S3D& p0,
    const S3D& p1,
    const S3D& p2,
    const S3D& p3,
    const S3D& point,
    const S3D& normal) noexcept
{
    if (!IsBetween(point.x, p0.x, p1.x, p2.x, p3.x) ||
        !IsBetween(point.y, p0.y, p1.y, p2.y, p3.y) || !IsBetween(point.z, p0.z, p1.z, p2.z, p3.z))
        return false;
    return IsInsideEdge(point, p0, p1, normal) && IsInsideEdge(point, p1, p2, normal) &&
           IsInsideEdge(point, p2, p3, normal) && IsInsideEdge(point, p3, p0, normal);
}

void SPlane::CalcCenterGravity(
    const S3D& p0,
    const S3D& p1,
    const S3D& p2,
    const S3D& point,
    float& u,
    float& v,
    float& w) noexcept
{
    const S3D cross12 = S3D::CrossProduct(p1, p2);
    const S3D cross20 = S3D::CrossProduct(p2, p0);
    const S3D cross01 = S3D::CrossProduct(p0, p1);
    const float k = 1.0f / S3D::DotProduct(p0, cross12);

    // All three are formed before any is written, which may be to a component of an input.
    const S3D weights(
        k * S3D::DotProduct(cross12, point), k * S3D::DotProduct(cross20, point),
        k * S3D::DotProduct(cross01, point));
    u = weights.x;
    v = weights.y;
    w = weights.z;
}
