#include "Independent/Math3D/SMatrix.h"

SMatrix SMatrix::CreateRotAxis(const S3D& axis, float radians)
{
    const auto& [x, y, z] = axis;
    const float c = std::cos(radians);
    const float s = std::sin(radians);
    const float t = 1.0f - c;
    return SMatrix(
        t * x * x + c, t * x * y + s * z, t * x * z - s * y, 0.0f, //
        t * x * y - s * z, t * y * y + c, t * y * z + s * x, 0.0f, //
        t * x * z + s * y, t * y * z - s * x, t * z * z + c, 0.0f, //
        0.0f, 0.0f, 0.0f, 1.0f);
}

SMatrix SMatrix::CreateLookAt(const S3D& eye, const S3D& at, const S3D& up)
{
    const S3D z = (at - eye).GetNormalize();
    const S3D x = S3D::CrossProduct(up, z).GetNormalize();
    const S3D y = S3D::CrossProduct(z, x);
    return SMatrix(
        x.x, x.y, x.z, 0.0f, //
        y.x, y.y, y.z, 0.0f, //
        z.x, z.y, z.z, 0.0f, //
        -S3D::DotProduct(x, eye), -S3D::DotProduct(y, eye), -S3D::DotProduct(z, eye), 1.0f);
}

SMatrix SMatrix::GetOpenGLMatrix() const
{
    SMatrix result = *this;
    result.m[0][2] = -m[0][2];
    result.m[1][2] = -m[1][2];
    result.m[2][0] = -m[2][0];
    result.m[2][1] = -m[2][1];
    result.m[3][2] = -m[3][2];
    return result;
}
