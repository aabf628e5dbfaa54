#include "Reliability/HostileModels.h"

#include <functional>
#include <limits>
#include <stdexcept>
#include <utility>

#include <sys/wait.h>
#include <unistd.h>

#include "Independent/FileImage/FileImage.h"
#include "Support/CModelBuilder.h"

using testsupport::CModelBuilder;
using testsupport::SModel;

namespace
{

/// Puts n records into a model.
using Fill = std::function<void(SModel& model, int n)>;

struct SFilling
{
    std::string what;
    int version;
    Fill fill;
    std::vector<std::string> hugeCounts = {}; ///< each is as high as an int can be
};

// One more than a std::string of the common libraries keeps within itself.
const std::string ShortestOnHeap(16, 'n');

template <typename Record>
void Repeat(std::vector<Record>& list, int n, const Record& record)
{
    list.assign(static_cast<std::size_t>(n), record);
}

/// Returns a short name for each number.
std::string MakeName(int number)
{
    constexpr int letterCount = 26;
    std::string name;
    for (; number > 0; number /= letterCount)
        name += static_cast<char>('a' + number % letterCount);
    return name;
}

void FillSimplePrimitives(SModel& model, int n, const std::vector<int>& indices)
{
    model.nodes.resize(1);
    model.nodes[0].colliderShape = 2;
    model.nodes[0].hasMesh = 1;
    Repeat(model.nodes[0].mesh.primitives, n, indices);
}

void FillMesh(SModel& model, const testsupport::SMesh& mesh)
{
    model.meshes = {mesh};
}

const std::vector<SFilling>& GetFillings()
{
    using namespace testsupport;
    static const std::vector<SFilling> fillings = {
        {"textures without names", 26,
         [](SModel& model, int n) {
             Repeat(model.textures, n, STexture{"", 0, {}});
         }},
        {"textures with names of 16 bytes", 26,
         [](SModel& model, int n) {
             Repeat(model.textures, n, STexture{ShortestOnHeap, 0, {}});
         }},
        {"lightmaps without names", 26,
         [](SModel& model, int n) {
             Repeat(model.lightmaps, n, SLightmap{"", {}});
         }},
        {"lightmaps with names of 16 bytes", 26,
         [](SModel& model, int n) {
             Repeat(model.lightmaps, n, SLightmap{ShortestOnHeap, {}});
         }},
        {"lightmaps of which every other has a name", 26,
         [](SModel& model, int n)
         {
             for (int i = 0; i < n; ++i)
                 model.lightmaps.push_back({MakeName(i % 2), {}});
         }},
        {"lightmaps with names of their own, whose flags are wrong", 26,
         [](SModel& model, int n)
         {
             for (int i = 0; i < n; ++i)
                 model.lightmaps.push_back({MakeName(i), {2, 2, 2, 2}});
         }},
        {"probes without flags", 12,
         [](SModel& model, int n) { model.probes.resize(static_cast<std::size_t>(n)); }},
        {"probes with flags", 16,
         [](SModel& model, int n) { model.probes.resize(static_cast<std::size_t>(n)); }},
        {"probes without names", 26,
         [](SModel& model, int n) {
             Repeat(model.probes, n, SProbe{0, {}, 0, {}, ""});
         }},
        {"bones without names", 25,
         [](SModel& model, int n) {
             Repeat(model.bones, n, SBone{"", 0});
         }},
        {"UV pairs", 25,
         [](SModel& model, int n)
         {
             model.materials.resize(1);
             model.materials[0].uvListFlag = 1;
             model.materials[0].uvCount = n;
         }},
        {"vertices", 25,
         [](SModel& model, int n) {
             FillMesh(model, {n, {}, {}, {}});
         }},
        {"vertices with bone weights", 25,
         [](SModel& model, int n) {
             FillMesh(model, {n, {0, 0, 0, 0, 0, 1}, {}, {}});
         }},
        {"vertices with all streams", 25,
         [](SModel& model, int n) {
             FillMesh(model, {n, {1, 1, 1, 1, 1, 1}, {}, {}});
         }},
        {"primitives without indices", 25,
         [](SModel& model, int n) {
             FillMesh(model, {0, {}, std::vector<SPrimitive>(std::size_t(n), {0, {}}), {}});
         }},
        {"primitives with one index", 25,
         [](SModel& model, int n) {
             FillMesh(model, {0, {}, std::vector<SPrimitive>(std::size_t(n), {0, {0}}), {}});
         }},
        {"morphs of no vertex, without names", 25,
         [](SModel& model, int n) {
             FillMesh(model, {0, {}, {}, std::vector<std::string>(std::size_t(n))});
         }},
        {"morphs of one vertex, without names", 25,
         [](SModel& model, int n) {
             FillMesh(model, {1, {}, {}, std::vector<std::string>(std::size_t(n))});
         }},
        {"morphs of one vertex, with names of 16 bytes", 25,
         [](SModel& model, int n) {
             FillMesh(model, {1, {}, {}, std::vector<std::string>(std::size_t(n), ShortestOnHeap)});
         }},
        {"meshes of no vertex", 25,
         [](SModel& model, int n) {
             Repeat(model.meshes, n, SMesh{0, {}, {}, {}});
         }},
        {"meshes of one vertex, primitive and morph", 25,
         [](SModel& model, int n) {
             Repeat(model.meshes, n, SMesh{1, {1, 1, 1, 1, 1, 1}, {{0, {0}}}, {""}});
         }},
        // No list fits where the one before it was.
        {"meshes each larger than the one before", 25,
         [](SModel& model, int n)
         {
             for (int size = 1; size <= n; ++size)
             {
                 model.meshes.push_back({size, {}, {}, {}});
                 n -= size;
             }
         }},
        {"vertices of a collision mesh", 25,
         [](SModel& model, int n)
         {
             FillSimplePrimitives(model, 0, {});
             model.nodes[0].mesh.vertexCount = n;
             model.nodes[0].mesh.streams[0] = 1;
         }},
        {"primitives of a collision mesh without indices", 25,
         [](SModel& model, int n) { FillSimplePrimitives(model, n, {}); }},
        {"primitives of a collision mesh with one index", 25,
         [](SModel& model, int n) { FillSimplePrimitives(model, n, {0}); }},
        // The lists of the nodes, of which there is one, have room as well.
        {"primitives with one index of a collision mesh, and huge counts",
         25,
         [](SModel& model, int n) { FillSimplePrimitives(model, n, {0}); },
         {"nodeCount", "colliderMesh.primitiveCount"}},
        {"nodes without names", 7, [](SModel& model, int n) { Repeat(model.nodes, n, SNode{""}); }},
        {"materials without names", 7,
         [](SModel& model, int n) { Repeat(model.materials, n, SMaterial{""}); }},
        // All of their flags are wrong, for which a check has four findings.
        {"the name of a texture", 26,
         [](SModel& model, int n) {
             Repeat(model.textures, 1, STexture{std::string(std::size_t(n), 'n'), 0, {2, 2, 2, 2}});
         }},
        {"the name of a lightmap", 26,
         [](SModel& model, int n) {
             Repeat(model.lightmaps, 1, SLightmap{std::string(std::size_t(n), 'n'), {2, 2, 2, 2}});
         }},
        {"the name of a probe", 26,
         [](SModel& model, int n)
         {
             model.probes.resize(1);
             model.probes[0].name.assign(std::size_t(n), 'n');
             model.probes[0].flags = {2, 2, 2, 2};
         }},
        {"bytes after the last section", 26,
         [](SModel& model, int n) { model.tail.assign(std::size_t(n), 't'); }},
    };
    return fillings;
}

const std::vector<std::pair<std::string, int>> Counts = {
    {"nodeCount", 25},
    {"colliderMesh.vertexCount", 25},
    {"colliderMesh.primitiveCount", 25},
    {"colliderMesh.primitives.indexCount", 25},
    {"meshCount", 25},
    {"meshes.vertexCount", 25},
    {"meshes.primitiveCount", 25},
    {"meshes.primitives.indexCount", 25},
    {"morphCount", 25},
    {"materialCount", 25},
    {"uvCount", 25},
    {"probeCount", 12},
    {"probeCount", 25},
    {"textureCount", 25},
    {"boneCount", 25},
    {"textureCount", 26},
    {"probeCount", 26},
    {"lightmapCount", 26},
};

/// Sets counts to the highest int, after which the model is refused.
void SetHuge(
    SHostileModel& model, const CModelBuilder& builder, const std::vector<std::string>& counts)
{
    for (const std::string& name : counts)
    {
        fileimage::WriteInt(
            model.image.data() + builder.GetOffset(name), std::numeric_limits<int>::max());
        model.isAccepted = false;
    }
}

SHostileModel MakeHostileModel(const SFilling& filling, int n)
{
    SModel content;
    content.version = filling.version;
    filling.fill(content, n);
    const CModelBuilder builder = CModelBuilder::Build(content);
    SHostileModel model{filling.what + ", " + std::to_string(n), builder.GetImage(), true};
    SetHuge(model, builder, filling.hugeCounts);
    return model;
}

/// Returns how often what a model is filled with goes into a size in bytes.
int GetMostRecords(const SFilling& filling, std::size_t size)
{
    constexpr int sample = 10000;
    const std::size_t sampleSize = MakeHostileModel(filling, 2 * sample).image.size() -
                                   MakeHostileModel(filling, sample).image.size();
    return static_cast<int>(size * sample / sampleSize);
}

/// Returns the highest power of two below a number.
int GetPowerOfTwoBelow(int number)
{
    int power = 1;
    while (2 * power < number)
        power *= 2;
    return power;
}

} // namespace

std::vector<SHostileModel> MakeHostileModels(std::size_t size)
{
    std::vector<SHostileModel> models;
    for (const SFilling& filling : GetFillings())
    {
        // With one record more than a power of two, a list that doubles has twice the room that it
        // needs, and while it moves there, the old one besides.
        const int most = GetMostRecords(filling, size);
        for (const int n : {most, GetPowerOfTwoBelow(most) + 1})
            models.push_back(MakeHostileModel(filling, n));
    }
    for (const auto& [name, version] : Counts)
    {
        SModel content = testsupport::MakeFullModel(version);
        content.tail.assign(size, 't');
        const CModelBuilder builder = CModelBuilder::Build(content);
        models.push_back(
            {"huge " + name + ", version " + std::to_string(version), builder.GetImage(), true});
        SetHuge(models.back(), builder, {name});
    }
    return models;
}

std::set<std::filesystem::path>
WriteHostileModels(const testsupport::CTemporaryFolder& folder, std::size_t size)
{
    const pid_t writer = fork();
    if (writer == 0)
    {
        for (const SHostileModel& model : MakeHostileModels(size))
            folder.Write(
                std::string(model.isAccepted ? AcceptedStart : RefusedStart) + model.what,
                model.image);
        _exit(0);
    }
    int status = -1;
    if (waitpid(writer, &status, 0) != writer || status != 0)
        throw std::runtime_error("cannot write the hostile models");
    std::set<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder.GetPath()))
        paths.insert(entry.path());
    return paths;
}
