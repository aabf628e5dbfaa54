#pragma once

#include <array>
#include <string_view>

#include "ZEKFormat/CZEKRefusalSink.h"
#include "ZekTool/Mark/SMarkResult.h"

namespace zektool
{

/// Keeps of a walk what marking needs: the header and the items that have flags.
class CMarkSink : public zek::CZEKRefusalSink
{
public:
    /// Borrows the result, which gets the items in file order, and their names.
    explicit CMarkSink(SMarkResult& result) : m_Result(result) {}

    void Header(const zek::SZEKHeader& header) { m_Header = header; }

    void Texture(const zek::SZEKTexture& texture)
    {
        Add(zek::EZEKItemKind::Texture, texture.name, texture.flags);
    }

    void Probe(const zek::SZEKProbe& probe)
    {
        Add(zek::EZEKItemKind::Cubemap, zek::GetProbeName(probe), probe.flags);
    }

    void Lightmap(const zek::SZEKLightmap& lightmap)
    {
        Add(zek::EZEKItemKind::Lightmap, lightmap.name, lightmap.flags);
    }

    const zek::SZEKHeader& GetHeader() const { return m_Header; }

private:
    void Add(zek::EZEKItemKind kind, std::string_view name, const zek::SZEKFlags& flags);

    SMarkResult& m_Result;
    zek::SZEKHeader m_Header;
    std::array<int, ItemKindCount> m_Counts = {};
};

} // namespace zektool
