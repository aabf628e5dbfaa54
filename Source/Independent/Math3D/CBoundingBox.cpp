#include "Independent/Math3D/CBoundingBox.h"

#include <algorithm>

namespace math3d
{

void CBoundingBox::Insert(const S3D& point) noexcept
{
    m_MinX = std::min(m_MinX, point.x);
    m_MaxX = std::max(m_MaxX, point.x);
    m_MinY = std::min(m_MinY, point.y);
    m_MaxY = std::max(m_MaxY, point.y);
    m_MinZ = std::min(m_MinZ, point.z);
    m_MaxZ = std::max(m_MaxZ, point.z);
}

void CBoundingBox::InsertSphere(const S3D& center, float radius) noexcept
{
    const S3D extent(radius, radius, radius);
    Insert(center - extent);
    Insert(center + extent);
}

void CBoundingBox::InsertBoundingBox(const CBoundingBox& other) noexcept
{
    m_MinX = std::min(m_MinX, other.m_MinX);
    m_MaxX = std::max(m_MaxX, other.m_MaxX);
    m_MinY = std::min(m_MinY, other.m_MinY);
    m_MaxY = std::max(m_MaxY, other.m_MaxY);
    m_MinZ = std::min(m_MinZ, other.m_MinZ);
    m_MaxZ = std::max(m_MaxZ, other.m_MaxZ);
}

S3D CBoundingBox::GetCenter() const noexcept
{
    return S3D((m_MinX + m_MaxX) * 0.5f, (m_MinY + m_MaxY) * 0.5f, (m_MinZ + m_MaxZ) * 0.5f);
}

S3D CBoundingBox::GetSize() const noexcept
{
    return S3D(m_MaxX - m_MinX, m_MaxY - m_MinY, m_MaxZ - m_MinZ);
}

float CBoundingBox::GetMaxLength() const noexcept
{
    const S3D size = GetSize();
    return std::max({size.x, size.y, size.z});
}

float CBoundingBox::GetRadius() const noexcept
{
    return GetSize().Length() * 0.5f;
}

bool CBoundingBox::IsIn(const S3D& point) const noexcept
{
    return m_MinX <= point.x && point.x <= m_MaxX && m_MinY <= point.y && point.y <= m_MaxY &&
           m_MinZ <= point.z && point.z <= m_MaxZ;
}

} // namespace math3d
