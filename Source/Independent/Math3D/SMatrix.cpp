#include "Independent/Math3D/SMatrix.h"

#include <algorithm>

namespace
{

// The arc sine of a matrix element that rounding may have taken past the sine's range.
float ClampedSine(float sine)
{
    return std::clamp(sine, -1.0f, 1.0f);
}

bool IsPole(float sine)
{
    return sine == 1.0f || sine == -1.0f;
}

} // namespace

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

SQuaternion SMatrix::GetQuaternion() const
{
    // Four times the square of w, and further down of the largest of x, y and z: the division is
    // never by a small number.
    const float trace = m[0][0] + m[1][1] + m[2][2] + m[3][3];
    if (trace >= 1.0f)
    {
        const float r = 2.0f * std::sqrt(trace);
        return SQuaternion(
            (m[1][2] - m[2][1]) / r, (m[2][0] - m[0][2]) / r, (m[0][1] - m[1][0]) / r, r / 4.0f);
    }

    int i = m[0][0] > m[1][1] ? 0 : 1;
    if (m[2][2] > m[i][i])
        i = 2;
    const int j = (i + 1) % 3;
    const int k = (j + 1) % 3;
    const float r = 2.0f * std::sqrt(m[i][i] - m[j][j] - m[k][k] + 1.0f);
    float q[3];
    q[i] = r / 4.0f;
    q[j] = (m[i][j] + m[j][i]) / r;
    q[k] = (m[i][k] + m[k][i]) / r;
    return SQuaternion(q[0], q[1], q[2], (m[j][k] - m[k][j]) / r);
}

S3D SMatrix::GetEulerRadXYZ() const
{
    const float sinY = ClampedSine(-m[0][2]);
    const float y = std::asin(sinY);
    if (sinY == 1.0f)
        return S3D(0.0f, y, std::atan2(-m[1][0], m[1][1]));
    if (sinY == -1.0f)
        return S3D(0.0f, y, std::atan2(-m[1][0], -m[1][1]));
    return S3D(std::atan2(m[1][2], m[2][2]), y, std::atan2(m[0][1], m[0][0]));
}

S3D SMatrix::GetEulerRadYXZ() const
{
    const float sinX = ClampedSine(m[1][2]);
    const float z = IsPole(sinX) ? 0.0f : std::atan2(-m[1][0], m[1][1]);

    // With the bank taken back, M * B(-z) = H(y) * P(x), column 0 is (cos y, 0, sin y). Read from
    // there y fits whatever z is, also close to a pole, where rounding alone decides z.
    const float c = std::cos(z);
    const float s = std::sin(z);
    const float y = std::atan2(m[2][0] * c + m[2][1] * s, m[0][0] * c + m[0][1] * s);
    return S3D(std::asin(sinX), y, z);
}

S3D SMatrix::GetEulerRadZXY() const
{
    const float sinX = ClampedSine(-m[2][1]);
    const float z = IsPole(sinX) ? 0.0f : std::atan2(m[0][1], m[1][1]);

    // With the bank taken back, B(-z) * M = P(x) * H(y), row 0 is (cos y, 0, -sin y). Read from
    // there y fits whatever z is, also close to a pole, where rounding alone decides z.
    const float c = std::cos(z);
    const float s = std::sin(z);
    const float y = std::atan2(s * m[1][2] - c * m[0][2], c * m[0][0] - s * m[1][0]);
    return S3D(std::asin(sinX), y, z);
}

S3D SMatrix::GetEulerRadZYX() const
{
    const float sinY = ClampedSine(m[2][0]);
    return S3D(std::atan2(-m[2][1], m[2][2]), std::asin(sinY), std::atan2(-m[1][0], m[0][0]));
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
