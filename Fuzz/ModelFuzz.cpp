// Runs the whole pass over a model file in memory, beside a folder with some variants. An
// independent reading of the file says what must come of it.

#include <fstream>
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "Support/CModelMap.h"
#include "Support/LeadByte.h"
#include "VariantFolder.h"
#include "ZEKFormat/CZEKVisitor.h"
#include "ZEKFormat/SZEKRefusal.h"
#include "ZEKOverwriter/CZEKModel.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using fuzz::Extensions;
using fuzz::Families;
using fuzz::GetVariantFolder;
using fuzz::Require;
using testsupport::CModelMap;

namespace
{

using Bytes = std::vector<unsigned char>;

bool IsOpening(const std::string& name)
{
    return std::ifstream(GetVariantFolder().GetPath(name)).is_open();
}

std::string MakeTextureName(std::size_t index)
{
    const std::string digits = std::to_string(index);
    return std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits;
}

/// A lightmap's name before its last dot; a dot that is half of a two-byte character is none.
std::string CutExtension(const std::string& name)
{
    std::size_t dot = name.size();
    for (std::size_t i = 0; i < name.size(); ++i)
    {
        if (testsupport::IsLeadByte(name[i]))
            ++i;
        else if (name[i] == '.')
            dot = i;
    }
    return name.substr(0, dot);
}

bool HasCubemap(const std::string& probe, std::size_t family)
{
    bool hasAllFaces = true;
    for (int face = 0; face < 6; ++face)
        hasAllFaces = hasAllFaces &&
                      IsOpening(
                          std::string("tex_reflection_cube_") + Families[family] + "\\" + probe +
                          "\\reflection_cube_" + std::to_string(face) + Extensions[family]);
    return hasAllFaces;
}

/// The image that an accepted file must become.
Bytes GetExpected(const Bytes& image, const CModelMap& map)
{
    Bytes expected = image;
    if (map.GetVersion() >= 21)
        expected[testsupport::MarkerOffset] = 1;
    const std::vector<std::size_t> textureFlags = map.GetTextureFlagOffsets();
    const std::vector<std::size_t> lightmapFlags = map.GetLightmapFlagOffsets();
    const std::vector<std::size_t> probeFlags = map.GetProbeFlagOffsets();
    const std::vector<std::string> probeNames = map.GetProbeNames();
    for (std::size_t family = 0; family < Families.size(); ++family)
    {
        const std::string textures = std::string("tex_") + Families[family] + "/";
        for (std::size_t i = 0; i < textureFlags.size(); ++i)
            expected[textureFlags[i] + family] =
                IsOpening(textures + MakeTextureName(i) + Extensions[family]);
        for (std::size_t i = 0; i < lightmapFlags.size(); ++i)
            expected[lightmapFlags[i] + family] = IsOpening(
                textures + CutExtension(map.GetModel().lightmaps[i].name) + Extensions[family]);
        for (std::size_t i = 0; i < probeFlags.size(); ++i)
            expected[probeFlags[i] + family] = HasCubemap(probeNames[i], family);
    }
    return expected;
}

bool Overwrite(Bytes& image)
{
    zek::CZEKOverwriter overwriter;
    return overwriter.OverwriteImage(image, GetVariantFolder().GetPath("model.zek"));
}

/// Checks that the fields lie side by side from the first byte on.
class CCoverVisitor : public zek::CZEKVisitor
{
public:
    void OnField(const zek::SZEKField& field) override { Cover(field.offset, field.size); }

    void OnArray(const zek::SZEKArray& array) override
    {
        Cover(array.offset, array.elementSize * array.count);
    }

    std::int64_t GetEnd() const { return m_End; }

private:
    void Cover(std::int64_t offset, std::int64_t size)
    {
        Require(offset == m_End && size >= 0, "fields follow each other");
        m_End += size;
    }

    std::int64_t m_End = 0;
};

/// Checks that everybody who walks the file says the same of it.
void CheckRefusal(const Bytes& image, const CModelMap& map)
{
    const auto size = static_cast<std::int64_t>(image.size());
    CCoverVisitor visitor;
    const auto refusal = zek::VisitFields(image.data(), size, visitor);
    zek::CZEKModel model;
    zek::SZEKRefusal loaderRefusal;
    const bool isLoaded = model.Load(image.data(), size, loaderRefusal);
    Require(isLoaded == map.IsAccepted(), "the loader accepts the same files");
    Require(refusal.has_value() != isLoaded, "what is refused has a reason");
    Require(
        visitor.GetEnd() == static_cast<std::int64_t>(map.GetEnd()),
        "every byte that is walked belongs to a field");
    if (!refusal.has_value())
        return;
    Require(refusal->GetText() == loaderRefusal.GetText(), "the loader has the same reason");
    Require(
        refusal->offset == static_cast<std::int64_t>(map.GetFault().offset) &&
            refusal->field == map.GetFault().field && refusal->index == map.GetFault().index,
        "the reason is in the field where the file is wrong");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // The count lines of each run would be most of the time.
    if (std::freopen("/dev/null", "w", stdout) == nullptr)
        return 1;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Bytes image(data, data + size);
    const CModelMap map(image);

    CheckRefusal(image, map);

    Bytes result = image;
    const bool isAccepted = Overwrite(result);
    Require(isAccepted == map.IsAccepted(), "the same files are accepted");
    if (!isAccepted)
    {
        Require(result == image, "a refused image is left alone");
        return 0;
    }
    Require(
        result == GetExpected(image, map), "the flags say what is there, and nothing else changes");

    Bytes again = result;
    Require(Overwrite(again) && again == result, "a second run changes nothing");
    return 0;
}
