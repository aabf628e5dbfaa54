#pragma once

#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SMatrix.h"
#include "Independent/Math3D/SQuaternion.h"

namespace math3d
{

/// A rigid motion, a rotation followed by a translation, as a unit dual quaternion: the real part
/// is the rotation r, the dual part 0.5 * (t.x, t.y, t.z, 0) * r with the translation t. Unlike
/// quaternions, dual quaternions multiply in the order of the matrices: a * b applies a first.
class CDualQuaternion
{
public:
    /// The identity: real part (0, 0, 0, 1), dual part (0, 0, 0, 0).
    constexpr CDualQuaternion() noexcept : m_Dual(0.0f, 0.0f, 0.0f, 0.0f) {}

    /// The two parts as they are.
    constexpr CDualQuaternion(const SQuaternion& real, const SQuaternion& dual) noexcept
        : m_Real(real)
        , m_Dual(dual)
    {
    }

    /// The motion that rotates by a unit quaternion, then translates.
    constexpr CDualQuaternion(const SQuaternion& rotation, const S3D& translation) noexcept
        : m_Real(rotation)
        , m_Dual(CreateDualPart(rotation, translation))
    {
    }

    /// Copies and moves all members. Virtual, so that other types may derive from this one.
    CDualQuaternion(const CDualQuaternion& other) = default;
    CDualQuaternion(CDualQuaternion&& other) = default;
    CDualQuaternion& operator=(const CDualQuaternion& other) = default;
    CDualQuaternion& operator=(CDualQuaternion&& other) = default;
    virtual ~CDualQuaternion() = default;

    /// The sum of the real parts with the quaternion product of the dual parts (this one's on the
    /// left). This is not the sum of two dual quaternions, so it does not serve for blending them.
    [[nodiscard]] CDualQuaternion operator+(const CDualQuaternion& other) const noexcept
    {
        return CDualQuaternion(m_Real + other.m_Real, m_Dual * other.m_Dual);
    }

    /// The product: this motion first, then the other.
    [[nodiscard]] CDualQuaternion operator*(const CDualQuaternion& other) const noexcept
    {
        return CDualQuaternion(
            other.m_Real * m_Real, other.m_Real * m_Dual + other.m_Dual * m_Real);
    }

    /// Becomes this * other: this motion first, then the other.
    CDualQuaternion& operator*=(const CDualQuaternion& other) noexcept
    {
        return *this = *this * other;
    }

    /// The inverse motion, for a real part of length 1: conjugate(real) and conjugate(dual) +
    /// conjugate(real) * k with k = -2 * (real . dual), which is 0 for a unit dual quaternion.
    [[nodiscard]] CDualQuaternion GetInverse() const noexcept
    {
        const float k = -2.0f * (m_Real.x * m_Dual.x + m_Real.y * m_Dual.y + m_Real.z * m_Dual.z +
                                 m_Real.w * m_Dual.w);
        const SQuaternion real = m_Real.GetInverse();
        return CDualQuaternion(real, m_Dual.GetInverse() + real * k);
    }

    /// The motion as a matrix: the real part's rotation, and the translation 2 * dual *
    /// conjugate(real) in row 3. The real part must have length 1.
    [[nodiscard]] SMatrix GetMatrix() const noexcept
    {
        const SMatrix rotation = m_Real.GetMatrix();
        const SQuaternion translation = m_Dual * m_Real.GetInverse() * 2.0f;
        const float(&m)[4][4] = rotation.m;
        return SMatrix(
            m[0][0], m[0][1], m[0][2], 0.0f, //
            m[1][0], m[1][1], m[1][2], 0.0f, //
            m[2][0], m[2][1], m[2][2], 0.0f, //
            translation.x, translation.y, translation.z, 1.0f);
    }

    /// A copy of the real part: the rotation.
    [[nodiscard]] SQuaternion GetRealPart() const noexcept { return m_Real; }

    /// A copy of the dual part.
    [[nodiscard]] SQuaternion GetDualPart() const noexcept { return m_Dual; }

private:
    [[nodiscard]] static constexpr SQuaternion
    CreateDualPart(const SQuaternion& r, const S3D& t) noexcept
    {
        return SQuaternion(
            0.5f * (t.x * r.w + t.y * r.z - t.z * r.y), 0.5f * (-t.x * r.z + t.y * r.w + t.z * r.x),
            0.5f * (t.x * r.y - t.y * r.x + t.z * r.w),
            -0.5f * (t.x * r.x + t.y * r.y + t.z * r.z));
    }

    SQuaternion m_Real;
    SQuaternion m_Dual;
};

} // namespace math3d
