#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Independent/Math3D/S3D.h"

namespace zek
{

/// A blend shape of a mesh. Immutable.
class CZEKMorph
{
public:
    /// Takes every field as the getter of its name gives it back.
    CZEKMorph(std::string name, std::vector<S3D> posList) noexcept
        : m_Name(std::move(name))
        , m_PosList(std::move(posList))
    {
    }

    CZEKMorph(const CZEKMorph&) = default;
    CZEKMorph(CZEKMorph&&) = default;
    CZEKMorph& operator=(const CZEKMorph&) = default;
    CZEKMorph& operator=(CZEKMorph&&) = default;
    virtual ~CZEKMorph() = default;

    /// The name of the blend shape.
    const std::string& GetName() const { return m_Name; }

    /// One position per vertex of the mesh.
    const std::vector<S3D>& GetPosList() const { return m_PosList; }

private:
    std::string m_Name;
    std::vector<S3D> m_PosList;
};

} // namespace zek
