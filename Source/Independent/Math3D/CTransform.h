#pragma once

#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SMatrix.h"
#include "Independent/Math3D/SQuaternion.h"

namespace math3d
{

/// The scale, rotation and position of a node.
class CTransform
{
public:
    /// The identity: scale (1, 1, 1), no rotation, position (0, 0, 0).
    constexpr CTransform() = default;

    /// The three parts; the rotation must have length 1.
    constexpr CTransform(const S3D& scale, const SQuaternion& rotate, const S3D& pos) noexcept
        : m_Scale(scale)
        , m_Rotate(rotate)
        , m_Pos(pos)
    {
    }

    /// Copies and moves all members. Virtual, so that other types may derive from this one.
    CTransform(const CTransform& other) = default;
    CTransform(CTransform&& other) = default;
    CTransform& operator=(const CTransform& other) = default;
    CTransform& operator=(CTransform&& other) = default;
    virtual ~CTransform() = default;

    /// Assigns the scale, a factor per axis.
    void SetScale(const S3D& scale) noexcept { m_Scale = scale; }

    /// The scale, a factor per axis.
    [[nodiscard]] S3D GetScale() const noexcept { return m_Scale; }

    /// Assigns the rotation, a unit quaternion.
    void SetRotate(const SQuaternion& rotate) noexcept { m_Rotate = rotate; }

    /// The rotation.
    [[nodiscard]] SQuaternion GetRotate() const noexcept { return m_Rotate; }

    /// Assigns the position.
    void SetPos(const S3D& pos) noexcept { m_Pos = pos; }

    /// The position.
    [[nodiscard]] S3D GetPos() const noexcept { return m_Pos; }

    /// The matrix that scales first, then rotates, then translates.
    [[nodiscard]] SMatrix GetMatrix() const noexcept
    {
        return SMatrix::CreateScale(m_Scale) * m_Rotate.GetMatrix() * SMatrix::CreateMove(m_Pos);
    }

private:
    S3D m_Scale = S3D(1.0f, 1.0f, 1.0f);
    SQuaternion m_Rotate;
    S3D m_Pos;
};

} // namespace math3d
