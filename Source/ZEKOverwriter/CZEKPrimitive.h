#pragma once

#include <utility>
#include <vector>

namespace zek
{

/// A sub-mesh: the triangles of a mesh that share a material. Immutable.
///
/// One of the two lists of vertex indices is filled and the other is empty: a mesh of at most
/// 65536 vertices has 16-bit indices.
class CZEKPrimitive
{
public:
    /// Takes every field as the getter of its name gives it back.
    CZEKPrimitive(
        int materialIndex,
        std::vector<unsigned short> indexListUSHORT,
        std::vector<int> indexListINT) noexcept
        : m_MaterialIndex(materialIndex)
        , m_IndexListUSHORT(std::move(indexListUSHORT))
        , m_IndexListINT(std::move(indexListINT))
    {
    }

    CZEKPrimitive(const CZEKPrimitive&) = default;
    CZEKPrimitive(CZEKPrimitive&&) = default;
    CZEKPrimitive& operator=(const CZEKPrimitive&) = default;
    CZEKPrimitive& operator=(CZEKPrimitive&&) = default;
    virtual ~CZEKPrimitive() = default;

    /// Index into the model's materials; -1 in a collision mesh, which has none.
    int GetMaterialIndex() const { return m_MaterialIndex; }

    /// The vertex indices of a mesh of at most 65536 vertices.
    const std::vector<unsigned short>& GetIndexListUSHORT() const { return m_IndexListUSHORT; }

    /// The vertex indices of a mesh of more vertices.
    const std::vector<int>& GetIndexListINT() const { return m_IndexListINT; }

private:
    int m_MaterialIndex;
    std::vector<unsigned short> m_IndexListUSHORT;
    std::vector<int> m_IndexListINT;
};

} // namespace zek
