#include "Independent/Math3D/SQuaternion.h"

#include <algorithm>
#include <cmath>

void SQuaternion::SetEulerRadXYZ(const S3D& radians)
{
    *this = (SMatrix::CreateRotPRad(radians.x) * SMatrix::CreateRotHRad(radians.y) *
             SMatrix::CreateRotBRad(radians.z))
                .GetQuaternion();
}

void SQuaternion::SetEulerRadYXZ(const S3D& radians)
{
    *this = (SMatrix::CreateRotHRad(radians.y) * SMatrix::CreateRotPRad(radians.x) *
             SMatrix::CreateRotBRad(radians.z))
                .GetQuaternion();
}

void SQuaternion::SetEulerRadZXY(const S3D& radians)
{
    *this = (SMatrix::CreateRotBRad(radians.z) * SMatrix::CreateRotPRad(radians.x) *
             SMatrix::CreateRotHRad(radians.y))
                .GetQuaternion();
}

void SQuaternion::SetEulerRadZYX(const S3D& radians)
{
    *this = (SMatrix::CreateRotBRad(radians.z) * SMatrix::CreateRotHRad(radians.y) *
             SMatrix::CreateRotPRad(radians.x))
                .GetQuaternion();
}

// The matrices convert degrees by the same formula as S3D does.
void SQuaternion::SetEulerXYZ(const S3D& degrees)
{
    SetEulerRadXYZ(degrees.GetDegToRad());
}

void SQuaternion::SetEulerYXZ(const S3D& degrees)
{
    SetEulerRadYXZ(degrees.GetDegToRad());
}

S3D SQuaternion::GetEulerRadXYZ() const
{
    return GetMatrix().GetEulerRadXYZ();
}

S3D SQuaternion::GetEulerRadYXZ() const
{
    return GetMatrix().GetEulerRadYXZ();
}

S3D SQuaternion::GetEulerRadZXY() const
{
    return GetMatrix().GetEulerRadZXY();
}

S3D SQuaternion::GetEulerRadZYX() const
{
    return GetMatrix().GetEulerRadZYX();
}

S3D SQuaternion::GetEulerXYZ() const
{
    constexpr float degreesPerRadian = 57.295776f;
    return GetEulerRadXYZ() * degreesPerRadian;
}

bool SQuaternion::LimitRotate(double maxRadians)
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
