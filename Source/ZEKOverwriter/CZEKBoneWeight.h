#pragma once

#include <array>

namespace zek
{

/// How strongly four bones move a vertex. Immutable.
class CZEKBoneWeight
{
public:
    /// Takes every field as the getter of its name gives it back.
    CZEKBoneWeight(const std::array<short, 4>& indexList, const std::array<float, 4>& weightList)
        : m_IndexList(indexList)
        , m_WeightList(weightList)
    {
    }

    CZEKBoneWeight(const CZEKBoneWeight&) = default;
    CZEKBoneWeight(CZEKBoneWeight&&) = default;
    CZEKBoneWeight& operator=(const CZEKBoneWeight&) = default;
    CZEKBoneWeight& operator=(CZEKBoneWeight&&) = default;
    virtual ~CZEKBoneWeight() = default;

    /// Indices into the model's bone table.
    const std::array<short, 4>& GetIndexList() const { return m_IndexList; }

    /// The weight of each of these bones.
    const std::array<float, 4>& GetWeightList() const { return m_WeightList; }

private:
    std::array<short, 4> m_IndexList;
    std::array<float, 4> m_WeightList;
};

} // namespace zek
