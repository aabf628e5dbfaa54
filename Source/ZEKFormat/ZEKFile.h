#pragma once

#include <string_view>

#include "ZEKFormat/SZEKFault.h"
#include "ZEKFormat/ZEKBoneTable.h"
#include "ZEKFormat/ZEKLightmapSection.h"
#include "ZEKFormat/ZEKMaterialSection.h"
#include "ZEKFormat/ZEKMeshSection.h"
#include "ZEKFormat/ZEKNodeSection.h"
#include "ZEKFormat/ZEKReflectionProbeSection.h"
#include "ZEKFormat/ZEKTextureSection.h"
#include "ZEKFormat/ZEKVersion.h"

/// A model file as a whole. What each function is given is a `CZEKWalk`.
namespace zek
{

/// Walks the magic, which is a text: that it has four bytes is the result.
template <typename Walk>
bool WalkMagic(Walk& walk)
{
    std::string_view magic;
    if (!walk.Text("magic", magic))
        return false;
    return magic == "ZEK" ||
           walk.Refuse({SZEKFault::WrongValue, "magic", 0, 0, 0, magic, 0, "\"ZEK\""});
}

/// Walks what stands before the first section.
template <typename Walk>
bool WalkHeader(Walk& walk, SZEKHeader& header)
{
    walk.GetSink().BeginSection("header");
    if (!WalkMagic(walk) || !walk.Int("version", header.version) ||
        !walk.Expect(header.version >= version::Oldest, "version", header.version, "7 or more"))
        return false;

    const auto walkMarker = [&](auto& fields)
    {
        header.processedMarker = fields.GetPlace();
        header.processedMarkerValue = fields.Int("processedMarker");
    };
    if (header.version >= version::ProcessedMarker && !walk.Block("processedMarker", walkMarker))
        return false;

    int zero = 0;
    if (header.version >= version::HeaderZero &&
        (!walk.Int("zero", zero) || !walk.Expect(zero == 0, "zero", zero, "0")))
        return false;
    walk.GetSink().Header(header);
    return true;
}

/// Walks all sections in the order that the version prescribes. What follows the last one is not
/// walked.
template <typename Walk>
bool WalkSections(Walk& walk, int version)
{
    if (version < version::TexturesOnly)
        return WalkNodeList(walk, version) && WalkMeshList(walk, version) &&
               WalkMaterialList(walk, version) && WalkTextureList(walk, version) &&
               WalkBoneTable(walk) && WalkLightmapList(walk, version);
    return WalkTextureList(walk, version) && WalkReflectionProbes(walk, version) &&
           WalkLightmapList(walk, version);
}

/// Walks a file whole.
template <typename Walk>
bool WalkFile(Walk& walk)
{
    SZEKHeader header;
    return WalkHeader(walk, header) && WalkSections(walk, header.version);
}

} // namespace zek
