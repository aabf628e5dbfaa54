// Writes a version 25 model for measurements:
//
//     WriteModel KIND AMOUNT FILE
//
// KIND is one of those in MakeRecords below, or "empty"; "wrong-nodes" have a mesh that is not
// there. AMOUNT counts megabytes (10^6 bytes) for the kinds that fill a file with records, items
// for textures and probes, and bytes for the empty model, which has a bone's name fill it up. It
// prints the size of the file in bytes.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "Independent/FileImage/FileImage.h"
#include "Support/CModelBuilder.h"

using testsupport::CModelBuilder;

namespace
{

constexpr int Version = 25;
constexpr int VertexCount16BitIndices = 60000;
constexpr int VertexCount32BitIndices = 70000;
constexpr int NoIndex = -1;
constexpr testsupport::StreamFlags NoStreams = {0, 0, 0, 0, 0, 0};
constexpr testsupport::StreamFlags AllStreams = {1, 1, 1, 1, 1, 1};

using Bytes = std::vector<unsigned char>;

/// The records of one section, which fill the file; the other sections are empty.
struct SRecords
{
    enum ESection
    {
        Nodes,
        Meshes,
        Materials,
        Textures,
    } section;
    Bytes record;
};

SRecords
MakeMesh(int vertexCount, const testsupport::StreamFlags& streams, int indexCount, int morphCount)
{
    testsupport::SMesh mesh;
    mesh.vertexCount = vertexCount;
    mesh.streams = streams;
    mesh.primitives.clear();
    if (indexCount > 0)
        mesh.primitives.push_back(
            {NoIndex, std::vector<int>(static_cast<std::size_t>(indexCount), 1)});
    mesh.morphNames.assign(static_cast<std::size_t>(morphCount), "smile");
    CModelBuilder builder(Version);
    builder.AddMesh(mesh);
    return {SRecords::Meshes, builder.GetImage()};
}

SRecords MakeNode(int meshIndex)
{
    testsupport::SNode node;
    node.name = "Armature/Hips/Spine";
    node.meshIndex = meshIndex;
    node.colliderShape = 0;
    CModelBuilder builder(Version);
    builder.AddNode(node);
    return {SRecords::Nodes, builder.GetImage()};
}

SRecords MakeMaterial()
{
    testsupport::SMaterial material;
    material.name = "Concrete wall";
    material.mainTextureIndex = NoIndex;
    material.shaderType = 1;
    material.subFlag = 1;
    CModelBuilder builder(Version);
    builder.AddMaterial(material);
    return {SRecords::Materials, builder.GetImage()};
}

SRecords MakeTexture()
{
    testsupport::STexture texture;
    texture.name = "concrete_wall_albedo.png";
    CModelBuilder builder(Version);
    builder.AddTextureList({texture});
    return {SRecords::Textures, Bytes(builder.GetImage().begin() + 4, builder.GetImage().end())};
}

void Append(Bytes& image, const Bytes& bytes)
{
    image.insert(image.end(), bytes.begin(), bytes.end());
}

void AppendInt(Bytes& image, int value)
{
    unsigned char bytes[4];
    fileimage::WriteInt(bytes, value);
    image.insert(image.end(), bytes, bytes + sizeof(bytes));
}

void AppendSection(Bytes& image, const Bytes& record, std::size_t count)
{
    AppendInt(image, static_cast<int>(count));
    for (std::size_t i = 0; i < count; ++i)
        Append(image, record);
}

/// Returns a model with some of the records, some probes and a bone, unless its name is empty.
Bytes MakeModel(
    const SRecords& records, std::size_t count, int probeCount, const std::string& boneName)
{
    CModelBuilder header(Version);
    header.AddHeader();
    Bytes image = header.GetImage();
    image.reserve(image.size() + count * records.record.size() + 1000);

    const auto getCount = [&](SRecords::ESection section)
    { return records.section == section ? count : 0; };
    AppendSection(image, records.record, getCount(SRecords::Nodes));
    AppendSection(image, records.record, getCount(SRecords::Meshes));

    CModelBuilder probes(Version);
    probes.AddProbeSection(std::vector<testsupport::SProbe>(static_cast<std::size_t>(probeCount)));
    AppendInt(image, static_cast<int>(getCount(SRecords::Materials)));
    Append(image, probes.GetImage());
    for (std::size_t i = 0; i < getCount(SRecords::Materials); ++i)
        Append(image, records.record);

    AppendSection(image, records.record, getCount(SRecords::Textures));

    CModelBuilder rest(Version);
    if (boneName.empty())
        rest.AddBoneTable({});
    else
        rest.AddBoneTable({testsupport::SBone{boneName, 0}});
    rest.AddLightmapList({});
    Append(image, rest.GetImage());
    return image;
}

SRecords MakeRecords(const std::string& kind)
{
    if (kind == "large-meshes")
        return MakeMesh(VertexCount16BitIndices, AllStreams, 0, 0);
    if (kind == "small-meshes") // 2,000 of them in 100 megabytes
        return MakeMesh(600, AllStreams, 950, 0);
    if (kind == "morphs")
        return MakeMesh(VertexCount16BitIndices, NoStreams, 0, 10);
    if (kind == "indices-16-bit")
        return MakeMesh(100, NoStreams, 2000000, 0);
    if (kind == "indices-32-bit")
        return MakeMesh(VertexCount32BitIndices, NoStreams, 2000000, 0);
    if (kind == "nodes")
        return MakeNode(NoIndex);
    if (kind == "wrong-nodes")
        return MakeNode(0);
    if (kind == "materials")
        return MakeMaterial();
    if (kind == "textures" || kind == "probes" || kind == "empty")
        return MakeTexture();
    return {};
}

/// Returns how many records make up an amount, at least one where it is not counted in records.
std::size_t GetRecordCount(const std::string& kind, std::size_t amount, std::size_t recordSize)
{
    constexpr std::size_t Megabyte = 1000000;
    if (kind == "probes" || kind == "empty")
        return 0;
    return kind == "textures" ? amount : std::max<std::size_t>(amount * Megabyte / recordSize, 1);
}

/// Returns the name of a bone that brings a model without anything else to a size in bytes.
std::string GetFillingBoneName(std::size_t size)
{
    const std::size_t smallestSize = MakeModel(MakeTexture(), 0, 0, "n").size();
    return std::string(size > smallestSize ? size - smallestSize + 1 : 1, 'n');
}

} // namespace

int main(int argc, char* argv[])
{
    const std::string kind = argc == 4 ? argv[1] : "";
    const SRecords records = MakeRecords(kind);
    if (records.record.empty())
    {
        std::fprintf(
            stderr,
            "usage: WriteModel KIND AMOUNT FILE\n"
            "KIND: large-meshes small-meshes morphs indices-16-bit indices-32-bit nodes wrong-nodes"
            " materials (megabytes),\n      textures probes (items), empty (bytes)\n");
        return 1;
    }

    const std::size_t amount = std::strtoul(argv[2], nullptr, 10);
    const std::size_t count = GetRecordCount(kind, amount, records.record.size());
    const int probeCount = kind == "probes" ? static_cast<int>(amount) : 0;
    const std::string boneName = kind == "empty" ? GetFillingBoneName(amount) : "";
    const Bytes image = MakeModel(records, count, probeCount, boneName);

    std::ofstream file(argv[3], std::ios::binary);
    file.write(reinterpret_cast<const char*>(image.data()), static_cast<long>(image.size()));
    if (!file.flush())
    {
        std::fprintf(stderr, "WriteModel: cannot write %s\n", argv[3]);
        return 1;
    }
    std::printf("%zu\n", image.size());
    return 0;
}
