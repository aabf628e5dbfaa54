#pragma once

#include "Independent/Math3D/S3D.h"
#include "ZEKFormat/EZEKColliderShape.h"
#include "ZEKFormat/EZEKColliderType.h"

namespace zek
{

/// The collider of a node. Immutable.
class CZEKCollider
{
public:
    /// Takes every field as the getter of its name gives it back.
    CZEKCollider(EZEKColliderShape shape, EZEKColliderType type, const S3D& center, const S3D& size)
        : m_Shape(shape)
        , m_Type(type)
        , m_Center(center)
        , m_Size(size)
    {
    }

    CZEKCollider(const CZEKCollider&) = default;
    CZEKCollider(CZEKCollider&&) = default;
    CZEKCollider& operator=(const CZEKCollider&) = default;
    CZEKCollider& operator=(CZEKCollider&&) = default;
    virtual ~CZEKCollider() = default;

    /// What the collider is.
    EZEKColliderShape GetShape() const { return m_Shape; }

    /// The type as the file states it.
    EZEKColliderType GetType() const { return m_Type; }

    /// The centre in the node's own space.
    const S3D& GetCenter() const { return m_Center; }

    /// The size; for a sphere its radius in all three components.
    const S3D& GetSize() const { return m_Size; }

private:
    EZEKColliderShape m_Shape;
    EZEKColliderType m_Type;
    S3D m_Center;
    S3D m_Size;
};

} // namespace zek
