#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace testsupport
{

constexpr int OldestVersion = 7;  ///< that is accepted
constexpr int NewestVersion = 26; ///< with which something changed

/// That nobody knows yet; the same as the newest.
constexpr int UnknownVersion = NewestVersion + 1;

// Where the header's fields stand.
constexpr std::size_t VersionOffset = 4;
constexpr std::size_t MarkerOffset = 8; ///< from version 21 on

/// Flags of one item in the order PVRTC, ETC, ASTC, DXT.
using Flags = std::array<unsigned char, 4>;

struct STexture
{
    std::string name = "texture.png";
    int clamp = 1;
    Flags flags = {};
};

struct SLightmap
{
    std::string name = "LightMap000.png";
    Flags flags = {};
};

struct SProbe
{
    int value = 64;
    std::array<float, 6> floats = {1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f};
    int secondValue = 3;
    Flags flags = {};
    std::string name = "Probe";
};

/// The six bytes after a mesh's vertex count: normal, tangent, UV, UV2, colour, bone weight.
using StreamFlags = std::array<unsigned char, 6>;

struct SPrimitive
{
    int materialIndex = 0;
    std::vector<int> indices = {0, 1, 2};
};

struct SMesh
{
    int vertexCount = 3;
    StreamFlags streams = {};
    std::vector<SPrimitive> primitives = {SPrimitive()};
    std::vector<std::string> morphNames = {};
};

/// The mesh in a node's collider: of the streams only the normal is written, and a primitive has no
/// material index.
struct SSimpleMesh
{
    int vertexCount = 3;
    StreamFlags streams = {};
    std::vector<std::vector<int>> primitives = {{0, 1, 2}};
};

struct SNode
{
    std::string name = "node";
    int parentIndex = -1;
    int meshIndex = 0;
    int colliderShape = -1;
    int colliderType = 1;
    int colliderSecondInt = 0;
    int hasMesh = 0; ///< the mesh is written when this is 1
    SSimpleMesh mesh = {};
    int offsetFlag = 0;
    int referenceSelector = 0;
    int selectedReference = 5;
    int alternateReference = 6;
};

struct SMaterial
{
    std::string name = "material";
    int shaderType = 4;
    int blendMode = 0;
    float cutoff = 0.5f;
    std::array<unsigned char, 3> flags = {1, 0, 1};
    int mainTextureIndex = 0;
    int normalTextureIndex = -1;
    int emissionTextureIndex = -1;
    int roughnessTextureIndex = -1;
    int shader1Index = -1;
    float mainScaleV = 1.0f;
    float mainOffsetV = 0.25f;
    float secondScaleV = 1.0f;
    float secondOffsetV = 0.0f;
    int uvListFlag = 0;
    int uvCount = 2; ///< pairs written when the flag is not 0
    int legacyInt = 9;
    int parameterInt = 1;
    int subFlag = 0; ///< of shader type 1
};

struct SBone
{
    std::string name = "bone";
    int value = 7;
};

/// What a model file holds; the version decides which of it is written.
struct SModel
{
    int version = 26;
    int marker = 0;
    int headerZero = 0;
    std::vector<SNode> nodes = {};
    std::vector<SMesh> meshes = {};
    std::vector<SMaterial> materials = {};
    std::vector<SProbe> probes = {};
    std::vector<STexture> textures = {};
    bool hasBoneTable = true;
    std::vector<SBone> bones = {};
    std::vector<SLightmap> lightmaps = {}; ///< below version 26 only their number is written
    int lightmapSwitch = 1;
    int lightmapTrailingInt = 2;
    std::string tail = ""; ///< bytes after the last section
};

/// Returns a small model with every kind of record that its version has: all collider shapes with
/// and without a mesh, a mesh without and one with all streams, every shader type, two of
/// everything that carries flags.
SModel MakeFullModel(int version);

} // namespace testsupport
