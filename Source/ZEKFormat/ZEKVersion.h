#pragma once

/// The history of the ZEK model format: each name is the first version that has what its line
/// says. A walker compares the file's version with these and with no other number.
namespace zek::version
{

constexpr int TextureClamp = 1;                // texture: clamp
constexpr int MaterialRoughnessParameters = 2; // material: two floats for shader types 0 and 7
constexpr int MaterialFirstFlag = 3;           // material: first flag byte
constexpr int MaterialMainTransform = 4;       // material: transform of the main texture
constexpr int TextureFlags = 5;                // texture: four compression flags
constexpr int ColliderType = 6;                // collider: type
constexpr int Oldest = 7;                      // the oldest version that is accepted at all
constexpr int MaterialSecondTransform = 7;     // material: transform of the second texture
constexpr int NodeOffset = 8;                  // node: offset flag and vector
constexpr int MaterialSecondColor = 9;         // material: two colours more for shader type 2
constexpr int MaterialUVList = 10;             // material: list of UV pairs
constexpr int MaterialLegacyInt = 11;          // material: an int that version 24 took out
constexpr int ReflectionProbeCount = 11;       // material list: reflection-probe section
constexpr int ReflectionProbeRecords = 12;     // probe: records after the count
constexpr int NodeReference = 12;              // node: selected reference
constexpr int MaterialSecondFlag = 13;         // material: second flag byte
constexpr int MaterialRoughnessIndex = 14;     // material: roughness index for shader type 0
constexpr int MeshShortHeader = 15;            // mesh: demands just the header's own ten bytes
constexpr int NodeReservedBlock = 15;          // node: 20 bytes
constexpr int NodeAlternateReference = 16;     // node: alternate reference
constexpr int ReflectionProbeFlags = 16;       // probe: second value and compression flags
constexpr int NodeReservedWord = 17;           // node: 4 bytes
constexpr int LightmapSwitch = 18;             // lightmap list: switch
constexpr int MaterialFlippedOffset = 19;      // material: V offsets count from the other edge
constexpr int ColliderMesh = 20;               // collider: embedded mesh
constexpr int ProcessedMarker = 21;            // header: processed marker
constexpr int LightmapTrailingInt = 22;        // lightmap list: one int more
constexpr int ColliderSecondInt = 23;          // collider: an int after the type
constexpr int MaterialShader1Block = 24;       // material: index and parameters for shader type 1
constexpr int MaterialNoLegacyInt = 24;        // material: the int of version 11 is gone
constexpr int MaterialShader1SubBlock = 25;    // material: optional block for shader type 1
constexpr int TexturesOnly = 26;               // file: textures, probes and lightmaps alone
constexpr int HeaderZero = 26;                 // header: an int that must be 0
constexpr int LightmapRecords = 26;            // lightmap list: names and compression flags
constexpr int ReflectionProbeName = 26;        // probe: name

} // namespace zek::version
