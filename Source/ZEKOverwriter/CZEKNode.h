#pragma once

#include <string>
#include <utility>

#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SQuaternion.h"
#include "ZEKOverwriter/CZEKCollider.h"

namespace zek
{

/// A node of a model's scene. Immutable.
class CZEKNode
{
public:
    /// Takes every field as the getter of its name gives it back.
    CZEKNode(
        std::string name,
        const S3D& localPos,
        const SQuaternion& localRotate,
        const S3D& localScale,
        int parentNodeIndex,
        int meshIndex,
        const CZEKCollider& collider)
        : m_Name(std::move(name))
        , m_LocalPos(localPos)
        , m_LocalRotate(localRotate)
        , m_LocalScale(localScale)
        , m_ParentNodeIndex(parentNodeIndex)
        , m_MeshIndex(meshIndex)
        , m_Collider(collider)
    {
    }

    CZEKNode(const CZEKNode&) = default;
    CZEKNode(CZEKNode&&) = default;
    CZEKNode& operator=(const CZEKNode&) = default;
    CZEKNode& operator=(CZEKNode&&) = default;
    virtual ~CZEKNode() = default;

    /// The name of the node.
    const std::string& GetName() const { return m_Name; }

    /// The position relative to the parent node.
    const S3D& GetLocalPos() const { return m_LocalPos; }

    /// The rotation relative to the parent node, a unit quaternion.
    const SQuaternion& GetLocalRotate() const { return m_LocalRotate; }

    /// The scale relative to the parent node.
    const S3D& GetLocalScale() const { return m_LocalScale; }

    /// Index into the model's nodes; -1 for a root.
    int GetParentNodeIndex() const { return m_ParentNodeIndex; }

    /// Index into the model's meshes; -1 for none.
    int GetMeshIndex() const { return m_MeshIndex; }

    /// The collider; its shape is `None` where there is none.
    const CZEKCollider& GetCollider() const { return m_Collider; }

private:
    std::string m_Name;
    S3D m_LocalPos;
    SQuaternion m_LocalRotate;
    S3D m_LocalScale;
    int m_ParentNodeIndex;
    int m_MeshIndex;
    CZEKCollider m_Collider;
};

} // namespace zek
