#include "Independent/Math3D/SQuaternion.h"

#include <algorithm>
#include <cmath>

namespace
{

/// The rotation about axis A (0 is X, 1 is Y, 2 is Z), then B, then C by angles in radians: the
/// quaternion of the product of the three matrices, of which only the terms that are not zero are
/// computed.
template <int A, int B, int C>
SQuaternion FromEulerAngles(float radiansA, float radiansB, float radiansC)
{
    // Against the order X, Y, Z, X the sines have the other sign.
    constexpr float sign = B == (A + 1) % 3 ? 1.0f : -1.0f;
    const float cosA = std::cos(radiansA);
    const float sinA = std::sin(radiansA) * sign;
    const float cosB = std::cos(radiansB);
    const float sinB = std::sin(radiansB) * sign;
    const float cosC = std::cos(radiansC);
    const float sinC = std::sin(radiansC) * sign;

    // The matrix product ends each sum with 0 * 0, which makes 0 of -0. On the diagonal, whose
    // elements are only added and compared, the sign of a zero is never seen.
    constexpr float zero = 0.0f;
    SMatrix matrix;
    matrix.m[A][A] = cosB * cosC;
    matrix.m[A][B] = cosB * sinC + zero;
    matrix.m[A][C] = -sinB + zero;
    matrix.m[B][A] = sinA * sinB * cosC - cosA * sinC + zero;
    matrix.m[B][B] = sinA * sinB * sinC + cosA * cosC;
    matrix.m[B][C] = sinA * cosB + zero;
    matrix.m[C][A] = cosA * sinB * cosC + sinA * sinC + zero;
    matrix.m[C][B] = cosA * sinB * sinC - sinA * cosC + zero;
    matrix.m[C][C] = cosA * cosB;
    return matrix.GetQuaternion();
}

} // namespace

void SQuaternion::SetEulerRadXYZ(const S3D& radians) noexcept
{
    *this = FromEulerAngles<0, 1, 2>(radians.x, radians.y, radians.z);
}

void SQuaternion::SetEulerRadYXZ(const S3D& radians) noexcept
{
    *this = FromEulerAngles<1, 0, 2>(radians.y, radians.x, radians.z);
}

void SQuaternion::SetEulerRadZXY(const S3D& radians) noexcept
{
    *this = FromEulerAngles<2, 0, 1>(radians.z, radians.x, radians.y);
}

void SQuaternion::SetEulerRadZYX(const S3D& radians) noexcept
{
    *this = FromEulerAngles<2, 1, 0>(radians.z, radians.y, radians.x);
}

// The matrices convert degrees by the same formula as S3D does.
void SQuaternion::SetEulerXYZ(const S3D& degrees) noexcept
{
    SetEulerRadXYZ(degrees.GetDegToRad());
}

void SQuaternion::SetEulerYXZ(const S3D& degrees) noexcept
{
    SetEulerRadYXZ(degrees.GetDegToRad());
}

S3D SQuaternion::GetEulerRadXYZ() const noexcept
{
    return GetMatrix().GetEulerRadXYZ();
}

S3D SQuaternion::GetEulerRadYXZ() const noexcept
{
    return GetMatrix().GetEulerRadYXZ();
}

S3D SQuaternion::GetEulerRadZXY() const noexcept
{
    return GetMatrix().GetEulerRadZXY();
}

S3D SQuaternion::GetEulerRadZYX() const noexcept
{
    return GetMatrix().GetEulerRadZYX();
}

S3D SQuaternion::GetEulerXYZ() const noexcept
{
    constexpr float degreesPerRadian = 57.295776f;
    return GetEulerRadXYZ() * degreesPerRadian;
}

bool SQuaternion::LimitRotate(double maxRadians) noexcept
{
    constexpr double smallestLength = 0.00001;

    const double angleX = 2.0 * std::asin(static_cast<double>(x));
    const double angleY = 2.0 * std::asin(static_cast<double>(y));
    const double angleZ = 2.0 * std::asin(static_cast<double>(z));
    const double angleW = 2.0 * std::acos(static_cast<double>(w));
    const double largest =
        std::max({std::abs(angleX), std::abs(angleY), std::abs(angleZ), std::abs(angleW)});
    if (largest <= maxRadians)
        return false;

    const double factor = maxRadians / largest;
    const double newX = std::sin(angleX * factor / 2.0);
    const double newY = std::sin(angleY * factor / 2.0);
    const double newZ = std::sin(angleZ * factor / 2.0);
    const double newW = std::cos(angleW * factor / 2.0);
    const double length = std::sqrt(newX * newX + newY * newY + newZ * newZ + newW * newW);
    if (!(length > smallestLength))
        return false;
    *this = SQuaternion(
        static_cast<float>(newX / length), static_cast<float>(newY / length),
        static_cast<float>(newZ / length), static_cast<float>(newW / length));
    return true;
}
