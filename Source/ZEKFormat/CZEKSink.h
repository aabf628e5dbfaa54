#pragma once

#include <cstdint>
#include <string_view>

#include "ZEKFormat/EZEKFieldType.h"
#include "ZEKFormat/SZEKFault.h"
#include "ZEKFormat/SZEKFlags.h"
#include "ZEKFormat/ZEKRecords.h"

namespace zek
{

/// All that a walk tells, and nothing done about it. A sink derives from this and has functions of
/// the same names for what it wants to hear; the walk knows its type, so that the others cost
/// nothing and none is virtual. A function with a name that is not here is therefore never called,
/// and no compiler complains; one whose arguments do not fit does not compile.
///
/// Texts and addresses are valid until the function returns.
struct CZEKSink
{
    // Where the walk is. Records and parts stand in each other: a morph in a mesh, a mesh in the
    // collider of a node.
    void BeginSection(const char*) {}
    // A list of records begins: its kind, the count that the file states, the bytes that are left.
    void BeginRecords(const char*, int, std::int64_t) {}
    void BeginRecord(const char*, int) {}
    void EndRecord() {}
    void BeginPart(const char*) {}
    void EndPart() {}

    // What it walks over: name, type, number of values, offset, bytes.
    void Field(const char*, EZEKFieldType, int, std::int64_t, const unsigned char*) {}
    void Text(const char*, std::int64_t, std::string_view) {}

    // A list of elements of one size: name, offset, size of an element, number of elements. A sink
    // that wants the elements hears of each instead.
    bool WantsElements(const char*) const { return false; }
    void Array(const char*, std::int64_t, int, std::int64_t) {}
    void BeginElement(const char*, std::int64_t) {}
    void EndElement() {}

    // Why it stopped.
    void Refuse(const SZEKFault&) {}

    // What the fields come to, record by record.
    void Header(const SZEKHeader&) {}
    void Node(const SZEKNode&) {}
    void BeginColliderMesh(const SZEKMeshHeader&) {}
    void EndColliderMesh() {}
    void BeginMesh(const SZEKMeshHeader&) {}
    void Vertex(const SZEKMeshHeader&, const SZEKVertex&) {}
    void BoundingBox(const S3D&, const S3D&) {}
    void BeginPrimitive(int) {}
    void Index(int) {}
    void EndPrimitive() {}
    void BeginMorph(std::string_view) {}
    void MorphPosition(const S3D&) {}
    void EndMorph() {}
    void EndMesh() {}
    void Material(const SZEKMaterial&) {}
    void Texture(const SZEKTexture&) {}
    void Bone(std::string_view) {}
    void LightmapName(std::string_view) {}
    void Lightmap(const SZEKLightmap&) {}
    void LightmapCount(int) {}
    void ProbeFlags(const SZEKFlags&) {}
    void Probe(const SZEKProbe&) {}
    void ProbeCount(int) {}
};

} // namespace zek
