#pragma once

#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SMatrix.h"
#include "Independent/Math3D/SQuaternion.h"

namespace math3d
{

/// A viewer's position and orientation. In its own space the camera looks along +z, with +y up and
/// +x to the right; its rotation takes that space into the world.
class CCamera
{
public:
    /// At (0, 0, 0), looking along +z.
    constexpr CCamera() = default;

    /// Copies and moves all members. Virtual, so that other types may derive from this one.
    CCamera(const CCamera& other) = default;
    CCamera(CCamera&& other) = default;
    CCamera& operator=(const CCamera& other) = default;
    CCamera& operator=(CCamera&& other) = default;
    virtual ~CCamera() = default;

    /// Moves the camera to (x, y, z).
    void SetPos(float x, float y, float z) noexcept { m_Pos = S3D(x, y, z); }

    /// Moves the camera to a position.
    void SetPos(const S3D& pos) noexcept { m_Pos = pos; }

    /// The position.
    [[nodiscard]] S3D GetPos() const noexcept { return m_Pos; }

    /// The position's x.
    [[nodiscard]] float GetX() const noexcept { return m_Pos.x; }

    /// The position's y.
    [[nodiscard]] float GetY() const noexcept { return m_Pos.y; }

    /// The position's z.
    [[nodiscard]] float GetZ() const noexcept { return m_Pos.z; }

    /// Assigns the rotation from camera to world space, a unit quaternion.
    void SetRotate(const SQuaternion& rotate) noexcept { m_Rotate = rotate; }

    /// The rotation from camera to world space.
    [[nodiscard]] SQuaternion GetQuaternion() const noexcept { return m_Rotate; }

    /// Turns back to look along +z.
    void ResetRotate() noexcept { m_Rotate = SQuaternion(); }

    /// Turns by an angle in degrees about the world's Y axis (heading), to the right if positive.
    /// The rotation is not normalised: after very many turns the caller does that.
    void AddAngle(float degrees) noexcept;

    /// Turns by an angle in degrees about the camera's own X axis (pitch), downwards if positive;
    /// not normalised either.
    void AddAngleP(float degrees) noexcept;

    /// Moves by a distance along the direction of view.
    void AddForward(float distance) noexcept
    {
        m_Pos += S3D(0.0f, 0.0f, distance) * GetRotInvMatrix();
    }

    /// Moves by a distance along the world's Y axis.
    void AddY(float distance) noexcept { m_Pos.y += distance; }

    /// The rotation from camera to world space.
    [[nodiscard]] SMatrix GetRotInvMatrix() const noexcept { return m_Rotate.GetMatrix(); }

    /// The rotation from world to camera space.
    [[nodiscard]] SMatrix GetRotMatrix() const noexcept
    {
        return m_Rotate.GetInverse().GetMatrix();
    }

    /// The view matrix: from world to camera space.
    [[nodiscard]] SMatrix GetMatrix() const noexcept
    {
        return SMatrix::CreateMove(-m_Pos) * GetRotMatrix();
    }

    /// The inverse of the view matrix: from camera to world space.
    [[nodiscard]] SMatrix GetInvMatrix() const noexcept
    {
        return GetRotInvMatrix() * SMatrix::CreateMove(m_Pos);
    }

    /// The unit direction of view in world space.
    [[nodiscard]] S3D GetViewVec() const noexcept
    {
        return S3D(0.0f, 0.0f, 1.0f) * GetRotInvMatrix();
    }

    /// The unit direction upward in world space.
    [[nodiscard]] S3D GetViewUpVec() const noexcept
    {
        return S3D(0.0f, 1.0f, 0.0f) * GetRotInvMatrix();
    }

    /// The unit direction to the right in world space.
    [[nodiscard]] S3D GetViewRightVec() const noexcept
    {
        return S3D(1.0f, 0.0f, 0.0f) * GetRotInvMatrix();
    }

private:
    S3D m_Pos;
    SQuaternion m_Rotate;
};

} // namespace math3d
