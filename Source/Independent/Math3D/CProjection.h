#pragma once

#include <vector>

#include "Independent/Math3D/CCamera.h"
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SMatrix.h"
#include "Independent/Math3D/SPlane.h"

namespace math3d
{

/// The projection from view space (the camera looks along +z) to clip space with a depth of 0 to 1,
/// and the view frustum that belongs to it.
class CProjection
{
public:
    /// The identity matrix, sizes and distances 0 and no frustum normals: of no use before Set.
    CProjection() = default;

    /// Copies and moves all members; what was moved from has no frustum normals left. Virtual, so
    /// that other types may derive from this one.
    CProjection(const CProjection& other) = default;
    CProjection(CProjection&& other) = default;
    CProjection& operator=(const CProjection& other) = default;
    CProjection& operator=(CProjection&& other) = default;
    virtual ~CProjection() = default;

    /// Keeps the screen size in pixels, the clip distances and the field of view in degrees, and
    /// builds the matrix and the frustum's normals from them.
    ///
    /// deg above 0 is the horizontal field of view of a perspective, below 180. On a screen higher
    /// than wide it is first scaled by width / height. With t = tan(deg / 2): m00 = 1 / t,
    /// m11 = width / (t * height), m22 = far / (far - near), m23 = 1, m32 = -far * near /
    /// (far - near), all else 0.
    ///
    /// deg of 0 or below selects an orthographic form with the scale -deg: m00 = -deg,
    /// m11 = -deg * width / height, m22 = 1 / (far - near), m33 = 1, all else 0. The depth there
    /// does not start at near: near is not subtracted.
    ///
    /// Equal clip distances and a height of 0 give infinite or NaN elements. So does a width of 0
    /// in the perspective form; in the orthographic one it makes m11 0.
    void Set(int width, int height, float near, float far, float deg);

    /// Set with a new screen size in pixels and the distances and field of view kept.
    void Resize(int width, int height) { Set(width, height, m_Near, m_Far, m_Deg); }

    /// The screen's width in pixels.
    [[nodiscard]] int GetWidth() const noexcept { return m_Width; }

    /// The screen's height in pixels.
    [[nodiscard]] int GetHeight() const noexcept { return m_Height; }

    /// The near clip distance.
    [[nodiscard]] float GetNear() const noexcept { return m_Near; }

    /// The far clip distance.
    [[nodiscard]] float GetFar() const noexcept { return m_Far; }

    /// The field of view in degrees as it was set; 0 or below for the orthographic form.
    [[nodiscard]] float GetDeg() const noexcept { return m_Deg; }

    /// The projection matrix.
    [[nodiscard]] const SMatrix& GetMatrix() const noexcept { return m_Matrix; }

    /// The unit normals of the frustum's six planes in view space, pointing out of the frustum:
    /// left, right, top, bottom, near, far. Empty before the first Set.
    [[nodiscard]] const std::vector<S3D>& GetNormalList() const noexcept { return m_NormalList; }

    /// The view-space point of the near plane under a pixel, by the scales of a perspective matrix:
    /// in the orthographic form x and y come out multiplied by near. Pixel (0, 0) is the top-left
    /// corner of the screen, (width, height) the bottom-right one.
    [[nodiscard]] S3D GetPosOnNearPlane(int x, int y) const noexcept;

    /// The frustum's six planes in world space, as seen by the camera, in the order of
    /// GetNormalList. A point in the frustum is on the negative side of all six. Empty before the
    /// first Set.
    ///
    /// In the perspective form the points inside are those that the matrix projects into range. In
    /// the orthographic form the side planes meet at the camera, too, so that they agree with the
    /// matrix, whose sides are parallel, only at a depth of 1: nearer, points are left out that are
    /// shown, and farther, points are taken in that are not.
    [[nodiscard]] std::vector<SPlane> CalcViewFrustumPlaneList(const CCamera& camera) const;

    /// The off-centre perspective matrix of a field of view that differs per side, such as a
    /// head-mounted display's. left, right, top and bottom are angles in degrees between the
    /// direction of view and that side's edge, each positive outward (a negative one puts the edge
    /// beyond the middle) and above -90, below 90; then the clip distances. With l, r, t, b the
    /// tangents: m00 = 2 / (l + r), m11 = 2 / (t + b), m20 = (l - r) / (l + r),
    /// m21 = (b - t) / (t + b), and m22, m23 and m32 as in Set. Four equal angles give the matrix
    /// that Set builds for twice the angle on a square screen. Sides that coincide give infinite or
    /// NaN elements.
    [[nodiscard]] static SMatrix
    CalcFOVMatrix(float left, float right, float top, float bottom, float near, float far) noexcept;

private:
    void BuildNormalList();

    SMatrix m_Matrix;
    int m_Width = 0;
    int m_Height = 0;
    float m_Near = 0.0f;
    float m_Far = 0.0f;
    float m_Deg = 0.0f;
    std::vector<S3D> m_NormalList;
};

} // namespace math3d
