#include "Independent/Math3D/SMatrix.h"

#include <cmath>

#include "Independent/Math3D/Float4.h"

using math3d::detail::Float4;
using math3d::detail::LoadFloat4;
using math3d::detail::Shuffle;
using math3d::detail::StoreFloat4;

SMatrix SMatrix::GetInverse() const noexcept
{
    // The columns, rows 0 and 1 swapped in them and rows 2 and 3: the cofactors of a row are made
    // of the row beside it and of the 2x2 determinants of the two others.
    Float4 c0 = LoadFloat4(m[1]);
    Float4 c1 = LoadFloat4(m[0]);
    Float4 c2 = LoadFloat4(m[3]);
    Float4 c3 = LoadFloat4(m[2]);
    math3d::detail::Transpose(c0, c1, c2, c3);

    // The 2x2 determinants of columns i and j: twice that of rows 2 and 3, twice that of 0 and 1.
    const auto determinants = [](Float4 i, Float4 j)
    {
        return Shuffle<3, 3, 1, 1>(i) * Shuffle<2, 2, 0, 0>(j) -
               Shuffle<3, 3, 1, 1>(j) * Shuffle<2, 2, 0, 0>(i);
    };
    const Float4 d01 = determinants(c0, c1);
    const Float4 d02 = determinants(c0, c2);
    const Float4 d03 = determinants(c0, c3);
    const Float4 d12 = determinants(c1, c2);
    const Float4 d13 = determinants(c1, c3);
    const Float4 d23 = determinants(c2, c3);

    // The rows of the adjugate but for their signs, which alternate.
    const Float4 row0 = c1 * d23 - c2 * d13 + c3 * d12;
    const Float4 row1 = c0 * d23 - c2 * d03 + c3 * d02;
    const Float4 row2 = c0 * d13 - c1 * d03 + c3 * d01;
    const Float4 row3 = c0 * d12 - c1 * d02 + c2 * d01;

    const float determinant =
        m[0][0] * row0[0] - m[0][1] * row1[0] + m[0][2] * row2[0] - m[0][3] * row3[0];
    const float reciprocal = 1.0f / determinant;
    const Float4 signedReciprocal = {reciprocal, -reciprocal, reciprocal, -reciprocal};
    SMatrix inverse(0);
    StoreFloat4(inverse.m[0], row0 * signedReciprocal);
    StoreFloat4(inverse.m[1], row1 * -signedReciprocal);
    StoreFloat4(inverse.m[2], row2 * signedReciprocal);
    StoreFloat4(inverse.m[3], row3 * -signedReciprocal);
    return inverse;
}

SMatrix SMatrix::CreateRotAxis(const S3D& axis, float radians) noexcept
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

SMatrix SMatrix::CreateLookAt(const S3D& eye, const S3D& at, const S3D& up) noexcept
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

S3D SMatrix::GetEulerRadXYZ() const noexcept
{
    const float sinY = -m[0][2];
    float x = 0.0f;
    float z;
    if (sinY == 1.0f)
        z = std::atan2(-m[1][0], m[1][1]);
    else if (sinY == -1.0f)
        z = std::atan2(-m[1][0], -m[1][1]);
    else
    {
        x = std::atan2(m[1][2], m[2][2]);
        z = std::atan2(m[0][1], m[0][0]);
    }
    return S3D(x, std::asin(sinY), z);
}

S3D SMatrix::GetEulerRadYXZ() const noexcept
{
    const float sinX = m[1][2];
    const float z = std::abs(sinX) == 1.0f ? 0.0f : std::atan2(-m[1][0], m[1][1]);

    // With the bank taken back, M * B(-z) = H(y) * P(x), column 0 is (cos y, 0, sin y). Read from
    // there y fits whatever z is, also close to a pole, where rounding alone decides z.
    const float c = std::cos(z);
    const float s = std::sin(z);
    const float y = std::atan2(m[2][0] * c + m[2][1] * s, m[0][0] * c + m[0][1] * s);
    return S3D(std::asin(sinX), y, z);
}

S3D SMatrix::GetEulerRadZXY() const noexcept
{
    const float sinX = -m[2][1];
    const float z = std::abs(sinX) == 1.0f ? 0.0f : std::atan2(m[0][1], m[1][1]);

    // With the bank taken back, B(-z) * M = P(x) * H(y), row 0 is (cos y, 0, -sin y). Read from
    // there y fits whatever z is, also close to a pole, where rounding alone decides z.
    const float c = std::cos(z);
    const float s = std::sin(z);
    const float y = std::atan2(s * m[1][2] - c * m[0][2], c * m[0][0] - s * m[1][0]);
    return S3D(std::asin(sinX), y, z);
}

S3D SMatrix::GetEulerRadZYX() const noexcept
{
    const float sinY = m[2][0];
    return S3D(std::atan2(-m[2][1], m[2][2]), std::asin(sinY), std::atan2(-m[1][0], m[0][0]));
}
