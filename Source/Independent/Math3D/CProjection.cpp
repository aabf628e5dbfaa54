#include "Independent/Math3D/CProjection.h"

#include <cmath>
#include <cstddef>

namespace math3d
{

namespace
{

double TangentOfDegrees(double degrees)
{
    constexpr double pi = 3.141592653589793;
    return std::tan(degrees * pi / 180.0);
}

SMatrix CreatePerspective(
    double scaleX, double scaleY, double offsetX, double offsetY, double near, double far)
{
    const auto m00 = static_cast<float>(scaleX);
    const auto m11 = static_cast<float>(scaleY);
    const auto m20 = static_cast<float>(offsetX);
    const auto m21 = static_cast<float>(offsetY);
    const auto m22 = static_cast<float>(far / (far - near));
    const auto m32 = static_cast<float>(-far * near / (far - near));
    return SMatrix(
        m00, 0.0f, 0.0f, 0.0f, //
        0.0f, m11, 0.0f, 0.0f, //
        m20, m21, m22, 1.0f,   //
        0.0f, 0.0f, m32, 0.0f);
}

SMatrix CreateOrthographic(float scaleX, float scaleY, float near, float far)
{
    return SMatrix(
        scaleX, 0.0f, 0.0f, 0.0f,              //
        0.0f, scaleY, 0.0f, 0.0f,              //
        0.0f, 0.0f, 1.0f / (far - near), 0.0f, //
        0.0f, 0.0f, 0.0f, 1.0f);
}

} // namespace

void CProjection::Set(int width, int height, float near, float far, float deg)
{
    m_Width = width;
    m_Height = height;
    m_Near = near;
    m_Far = far;
    m_Deg = deg;

    const auto floatWidth = static_cast<float>(width);
    const auto floatHeight = static_cast<float>(height);
    if (deg > 0.0f)
    {
        if (height > width)
            deg = deg * floatWidth / floatHeight;
        const double t = TangentOfDegrees(deg * 0.5);
        m_Matrix = CreatePerspective(1.0 / t, width / (t * height), 0.0, 0.0, near, far);
    }
    else
    {
        m_Matrix = CreateOrthographic(-deg, -deg * floatWidth / floatHeight, near, far);
    }
    BuildNormalList();
}

void CProjection::BuildNormalList()
{
    const float m00 = m_Matrix.m[0][0];
    const float m11 = m_Matrix.m[1][1];
    m_NormalList = {
        S3D(-m00, 0.0f, -1.0f).GetNormalize(),
        S3D(m00, 0.0f, -1.0f).GetNormalize(),
        S3D(0.0f, m11, -1.0f).GetNormalize(),
        S3D(0.0f, -m11, -1.0f).GetNormalize(),
        S3D(0.0f, 0.0f, -1.0f),
        S3D(0.0f, 0.0f, 1.0f),
    };
}

S3D CProjection::GetPosOnNearPlane(int x, int y) const noexcept
{
    const float right = m_Near * (1.0f / m_Matrix.m[0][0]);
    const float top = m_Near * (1.0f / m_Matrix.m[1][1]);
    const float left = -right;
    const float bottom = -top;
    const float u = static_cast<float>(x) / static_cast<float>(m_Width);
    const float v = static_cast<float>(y) / static_cast<float>(m_Height);
    return S3D(left + (right - left) * u, top + (bottom - top) * v, m_Near);
}

std::vector<SPlane> CProjection::CalcViewFrustumPlaneList(const CCamera& camera) const
{
    constexpr std::size_t nearPlane = 4;
    constexpr std::size_t farPlane = 5;

    const SMatrix rotation = camera.GetRotInvMatrix();
    std::vector<SPlane> planes;
    for (std::size_t i = 0; i < m_NormalList.size(); ++i)
    {
        S3D point = camera.GetPos();
        if (i == nearPlane)
            point += camera.GetViewVec() * m_Near;
        else if (i == farPlane)
            point += camera.GetViewVec() * m_Far;
        planes.emplace_back(point, m_NormalList[i].MulMatrixRot(rotation));
    }
    return planes;
}

SMatrix CProjection::CalcFOVMatrix(
    float left, float right, float top, float bottom, float near, float far) noexcept
{
    const double l = TangentOfDegrees(left);
    const double r = TangentOfDegrees(right);
    const double t = TangentOfDegrees(top);
    const double b = TangentOfDegrees(bottom);
    return CreatePerspective(
        2.0 / (l + r), 2.0 / (t + b), (l - r) / (l + r), (b - t) / (t + b), near, far);
}

} // namespace math3d
