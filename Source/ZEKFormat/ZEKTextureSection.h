#pragma once

#include "ZEKFormat/ZEKFlags.h"
#include "ZEKFormat/ZEKRecords.h"
#include "ZEKFormat/ZEKVersion.h"

/// The textures of a model file. What each function is given is a `CZEKWalk`.
namespace zek
{

template <typename Walk>
bool WalkTexture(Walk& walk, int version)
{
    std::string_view name;
    if (!walk.Text("name", name))
        return false;
    SZEKTexture texture;
    texture.name = name;
    if (version >= version::TextureClamp && !walk.Int("clamp", texture.clamp))
        return false;
    if (version >= version::TextureFlags && !WalkFlags(walk, texture.flags))
        return false;
    walk.GetSink().Texture(texture);
    return true;
}

template <typename Walk>
bool WalkTextureList(Walk& walk, int version)
{
    walk.GetSink().BeginSection("textures");
    int count;
    return walk.Int("textureCount", count) &&
           walk.Records("textures", count, [&](int) { return WalkTexture(walk, version); });
}

} // namespace zek
