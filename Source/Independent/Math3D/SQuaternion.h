#pragma once

#include <cmath>

#include "Independent/Math3D/Float4.h"

struct S3D;
struct SMatrix;

/// A rotation as a unit quaternion: the vector part (x, y, z) and the scalar w. Nothing normalises
/// by itself. In a product a * b the rotation b is applied first and a second; the matrices
/// multiply the other way round: (a * b).GetMatrix() is b.GetMatrix() * a.GetMatrix().
struct SQuaternion
{
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 1.0f;

    /// The identity (0, 0, 0, 1).
    constexpr SQuaternion() = default;

    /// (newX, newY, newZ, newW).
    constexpr SQuaternion(float newX, float newY, float newZ, float newW) noexcept
        : x(newX)
        , y(newY)
        , z(newZ)
        , w(newW)
    {
    }

    /// The identity (0, 0, 0, 1).
    [[nodiscard]] static constexpr SQuaternion CreateIdentity() noexcept { return SQuaternion(); }

    /// Sets the identity (0, 0, 0, 1).
    constexpr void Identity() noexcept { *this = SQuaternion(); }

    /// The rotation by an angle in radians about an axis: (axis * sin(radians / 2),
    /// cos(radians / 2)). The axis must have length 1; it is not normalised here.
    [[nodiscard]] static SQuaternion CreateAxisRotation(const S3D& axis, float radians) noexcept;

    /// The rotation about the X axis (pitch) by an angle in radians.
    [[nodiscard]] static SQuaternion CreateXRotation(float radians) noexcept
    {
        return SQuaternion(std::sin(radians * 0.5f), 0.0f, 0.0f, std::cos(radians * 0.5f));
    }

    /// The rotation about the Y axis (heading) by an angle in radians.
    [[nodiscard]] static SQuaternion CreateYRotation(float radians) noexcept
    {
        return SQuaternion(0.0f, std::sin(radians * 0.5f), 0.0f, std::cos(radians * 0.5f));
    }

    /// The rotation about the Z axis (bank) by an angle in radians.
    [[nodiscard]] static SQuaternion CreateZRotation(float radians) noexcept
    {
        return SQuaternion(0.0f, 0.0f, std::sin(radians * 0.5f), std::cos(radians * 0.5f));
    }

    /// The shortest rotation that turns one unit vector into another; neither is normalised here.
    /// Exactly opposite vectors, which leave the axis open, give the identity. The closer to
    /// opposite the vectors are, the less accurate is the result; it is NaN when rounding took
    /// their dot product below -1.
    [[nodiscard]] static SQuaternion CreateFromToRotation(const S3D& from, const S3D& to) noexcept;

    /// The sum, component by component.
    [[nodiscard]] constexpr SQuaternion operator+(const SQuaternion& other) const noexcept
    {
        return SQuaternion(x + other.x, y + other.y, z + other.z, w + other.w);
    }

    /// The difference, component by component.
    [[nodiscard]] constexpr SQuaternion operator-(const SQuaternion& other) const noexcept
    {
        return SQuaternion(x - other.x, y - other.y, z - other.z, w - other.w);
    }

    /// Each component times the factor.
    [[nodiscard]] constexpr SQuaternion operator*(float factor) const noexcept
    {
        return SQuaternion(x * factor, y * factor, z * factor, w * factor);
    }

    /// Each component divided by the divisor. A divisor of 0 gives infinities or NaN.
    [[nodiscard]] constexpr SQuaternion operator/(float divisor) const noexcept
    {
        return SQuaternion(x / divisor, y / divisor, z / divisor, w / divisor);
    }

    /// The Hamilton product: the rotation that applies the other first and this one second.
    [[nodiscard]] SQuaternion operator*(const SQuaternion& other) const noexcept
    {
        using math3d::detail::Float4;
        using math3d::detail::NegateLast;
        using math3d::detail::Shuffle;
        const Float4 a = math3d::detail::LoadFloat4(*this);
        const Float4 b = math3d::detail::LoadFloat4(other);
        const Float4 sum = Shuffle<3, 3, 3, 3>(a) * b +
                           NegateLast(Shuffle<0, 1, 2, 0>(a)) * Shuffle<3, 3, 3, 0>(b) +
                           NegateLast(Shuffle<1, 2, 0, 1>(a)) * Shuffle<2, 0, 1, 1>(b) -
                           Shuffle<2, 0, 1, 2>(a) * Shuffle<1, 2, 0, 2>(b);
        SQuaternion product;
        math3d::detail::StoreFloat4(product, sum);
        return product;
    }

    /// Scales to length 1 in place. A quaternion of a length of 1e-5 or less stays as it is, and so
    /// does one with NaN.
    void Normalize() noexcept { *this = GetNormalize(); }

    /// A copy of length 1. A quaternion of a length of 1e-5 or less is returned as it is.
    [[nodiscard]] SQuaternion GetNormalize() const noexcept
    {
        constexpr float smallestLength = 0.00001f;

        const float length = std::sqrt(x * x + y * y + z * z + w * w);
        return length > smallestLength ? *this / length : *this;
    }

    /// The conjugate (-x, -y, -z, w): the inverse of a unit quaternion and of no other, as it is
    /// not divided by the norm.
    [[nodiscard]] constexpr SQuaternion GetInverse() const noexcept
    {
        return SQuaternion(-x, -y, -z, w);
    }

    /// The rotation as a matrix without translation. The quaternion must have length 1.
    [[nodiscard]] constexpr SMatrix GetMatrix() const noexcept;

    /// Sets the rotation of the matrix product P(x) * H(y) * B(z), angles in radians: first about
    /// X, then about Y, then about Z.
    void SetEulerRadXYZ(const S3D& radians) noexcept;

    /// Sets the rotation of the matrix product H(y) * P(x) * B(z), angles in radians: first about
    /// Y, then about X, then about Z.
    void SetEulerRadYXZ(const S3D& radians) noexcept;

    /// Sets the rotation of the matrix product B(z) * P(x) * H(y), angles in radians: first about
    /// Z, then about X, then about Y.
    void SetEulerRadZXY(const S3D& radians) noexcept;

    /// Sets the rotation of the matrix product B(z) * H(y) * P(x), angles in radians: first about
    /// Z, then about Y, then about X.
    void SetEulerRadZYX(const S3D& radians) noexcept;

    /// As SetEulerRadXYZ with angles in degrees.
    void SetEulerXYZ(const S3D& degrees) noexcept;

    /// As SetEulerRadYXZ with angles in degrees.
    void SetEulerYXZ(const S3D& degrees) noexcept;

    /// SMatrix::GetEulerRadXYZ of the rotation's matrix: angles in radians for SetEulerRadXYZ.
    /// Rounding may take the sine of the middle angle past 1 close to the poles, which makes that
    /// angle NaN, here and in the other orders.
    [[nodiscard]] S3D GetEulerRadXYZ() const noexcept;

    /// SMatrix::GetEulerRadYXZ of the rotation's matrix: angles in radians for SetEulerRadYXZ.
    [[nodiscard]] S3D GetEulerRadYXZ() const noexcept;

    /// SMatrix::GetEulerRadZXY of the rotation's matrix: angles in radians for SetEulerRadZXY.
    [[nodiscard]] S3D GetEulerRadZXY() const noexcept;

    /// SMatrix::GetEulerRadZYX of the rotation's matrix: angles in radians for SetEulerRadZYX.
    [[nodiscard]] S3D GetEulerRadZYX() const noexcept;

    /// GetEulerRadXYZ in degrees: times 57.295776.
    [[nodiscard]] S3D GetEulerXYZ() const noexcept;

    /// Limits the rotation of a unit quaternion to an angle in radians. The angles 2*asin(x),
    /// 2*asin(y), 2*asin(z) and 2*acos(w) are all scaled by the factor that brings the largest
    /// magnitude down to maxRadians (0 or more), and the quaternion that they give is normalised:
    /// an approximation of the clamp about the rotation's own axis, exact about X, Y or Z for w >=
    /// 0. True when the quaternion changed. False leaves it as it was: no angle is above the limit,
    /// the result is too short to normalise (1e-5), or a component is outside -1..1 or NaN.
    bool LimitRotate(double maxRadians) noexcept;

    /// Linear interpolation this + (target - this) * t, component by component. Not normalised, t
    /// not clamped.
    [[nodiscard]] constexpr SQuaternion Lerp(const SQuaternion& target, float t) const noexcept
    {
        return *this + (target - *this) * t;
    }

    /// Spherical linear interpolation between two unit quaternions along the shorter arc: this one
    /// at t = 0, the target (or its negative, the same rotation) at t = 1. t is not clamped and the
    /// result not normalised. From a dot product of 0.99 on, of either sign, the weights are
    /// linear.
    [[nodiscard]] SQuaternion Slerp(const SQuaternion& target, float t) const noexcept
    {
        constexpr float linearBelow = 0.01f;

        const float dot = x * target.x + y * target.y + z * target.z + w * target.w;
        float weight = 1.0f - t;
        float targetWeight = t;
        if (1.0f - std::abs(dot) > linearBelow)
        {
            const float theta = std::acos(std::abs(dot));
            const float sinTheta = std::sin(theta);
            weight = std::sin((1.0f - t) * theta) / sinTheta;
            targetWeight = std::sin(t * theta) / sinTheta;
        }
        if (dot < 0.0f) // the negative of the target is nearer
            targetWeight = -targetWeight;

        return *this * weight + target * targetWeight;
    }

    /// (x, y, z, -w): the conjugate with all four signs changed, the inverse rotation.
    [[nodiscard]] constexpr SQuaternion GetOpenGL() const noexcept
    {
        return SQuaternion(x, y, z, -w);
    }
};

// S3D.h leads back here by way of the matrix, so the members that need it stand after the type.
// SMatrix.h defines SQuaternion::GetMatrix.
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SMatrix.h"

inline SQuaternion SQuaternion::CreateAxisRotation(const S3D& axis, float radians) noexcept
{
    const S3D vector = axis * std::sin(radians * 0.5f);
    return SQuaternion(vector.x, vector.y, vector.z, std::cos(radians * 0.5f));
}

inline SQuaternion SQuaternion::CreateFromToRotation(const S3D& from, const S3D& to) noexcept
{
    const float s = std::sqrt(2.0f + 2.0f * S3D::DotProduct(from, to));
    if (s == 0.0f)
        return SQuaternion();
    const S3D vector = S3D::CrossProduct(from, to) * (1.0f / s);
    return SQuaternion(vector.x, vector.y, vector.z, 0.5f * s);
}
