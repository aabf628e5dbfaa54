#include "Independent/Math3D/CCamera.h"

namespace math3d
{

void CCamera::AddAngle(float degrees) noexcept
{
    m_Rotate = SMatrix::CreateRotH(degrees).GetQuaternion() * m_Rotate;
}

void CCamera::AddAngleP(float degrees) noexcept
{
    m_Rotate = m_Rotate * SMatrix::CreateRotP(degrees).GetQuaternion();
}

} // namespace math3d
