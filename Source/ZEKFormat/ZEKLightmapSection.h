#pragma once

#include "ZEKFormat/ZEKFlags.h"
#include "ZEKFormat/ZEKRecords.h"
#include "ZEKFormat/ZEKVersion.h"

/// The lightmaps of a model file. What each function is given is a `CZEKWalk`.
namespace zek
{

template <typename Walk>
bool WalkLightmap(Walk& walk)
{
    std::string_view name;
    if (!walk.Text("name", name))
        return false;
    SZEKLightmap lightmap;
    lightmap.name = name;
    walk.GetSink().LightmapName(lightmap.name);
    if (!WalkFlags(walk, lightmap.flags))
        return false;
    walk.GetSink().Lightmap(lightmap);
    return true;
}

/// Walks the lightmaps; before version 26 one has no bytes of its own.
template <typename Walk>
bool WalkLightmapList(Walk& walk, int version)
{
    walk.GetSink().BeginSection("lightmaps");
    int count;
    if (!walk.Int("lightmapCount", count))
        return false;
    if (version >= version::LightmapRecords &&
        !walk.Records("lightmaps", count, [&](int) { return WalkLightmap(walk); }))
        return false;
    walk.GetSink().LightmapCount(count);

    int lightmapSwitch;
    if (version >= version::LightmapSwitch && !walk.Int("lightmapSwitch", lightmapSwitch))
        return false;
    int trailingInt;
    return version < version::LightmapTrailingInt || walk.Int("trailingInt", trailingInt);
}

} // namespace zek
