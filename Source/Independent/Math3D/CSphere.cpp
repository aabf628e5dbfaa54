#include "Independent/Math3D/CSphere.h"

namespace math3d
{

bool CSphere::IsCollision(const S3D& origin, const S3D& dir) const noexcept
{
    // The roots of |m + t * dir|^2 = radius^2, that is t^2 + 2*b*t + c = 0.
    const S3D m = origin - m_Pos;
    const float b = S3D::DotProduct(m, dir);
    const float c = S3D::DotProduct(m, m) - m_Radius * m_Radius;
    if (c > 0.0f && b > 0.0f)
        return false;
    return !(b * b - c < 0.0f);
}

} // namespace math3d
