// Runs one walker over bytes that need not be its section: the first byte chooses the walker, the
// second the version, from 0 on. Whatever the bytes say, they are not changed and nothing outside
// of them is pointed to.

#include <array>
#include <vector>

#include "FuzzTarget.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using fileimage::CFileImageAnalyser;
using fuzz::Require;
using zek::CZEKOverwriter;

namespace
{

using Walker = bool (CZEKOverwriter::*)(CFileImageAnalyser& reader, int version);

constexpr int NewestVersion = 30;
constexpr std::array<Walker, 10> Walkers = {
    &CZEKOverwriter::AnalyseNodeList,     &CZEKOverwriter::AnalyseNode,
    &CZEKOverwriter::AnalyseMeshList,     &CZEKOverwriter::AnalyseMesh,
    &CZEKOverwriter::AnalyseMeshSimple,   &CZEKOverwriter::AnalyseMaterialList,
    &CZEKOverwriter::AnalyseTextureList,  &CZEKOverwriter::AnalyseReflectionProbe,
    &CZEKOverwriter::AnalyseLightmapList, &CZEKOverwriter::AnalyseSections,
};

/// The walker of the bone table is the one that takes no version.
bool Walk(CZEKOverwriter& overwriter, std::size_t walker, CFileImageAnalyser& reader, int version)
{
    if (walker == Walkers.size())
        return overwriter.AnalyseBoneTable(reader);
    return (overwriter.*Walkers[walker])(reader, version);
}

void CheckFlags(const std::vector<zek::FlagQuad>& quads, const std::vector<unsigned char>& section)
{
    for (const zek::FlagQuad& quad : quads)
    {
        Require(quad.size() == 4, "an item has four flags");
        const bool isNull = quad[0] == nullptr;
        for (std::size_t family = 0; family < quad.size(); ++family)
        {
            if (isNull)
                Require(quad[family] == nullptr, "an item has all of its flags or none");
            else
                Require(
                    quad[family] >= section.data() &&
                        quad[family] < section.data() + section.size() &&
                        quad[family] == quad[0] + family,
                    "flags lie in the section, one after the other");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::CInput input(data, size);
    const std::size_t walker = input.TakeByte() % (Walkers.size() + 1);
    const int version = input.TakeByte() % (NewestVersion + 1);
    const std::string rest = input.TakeRest();
    const std::vector<unsigned char> section(rest.begin(), rest.end());

    const std::vector<unsigned char> before = section;
    CFileImageAnalyser reader(section.data(), section.data() + section.size());
    CZEKOverwriter overwriter;
    Walk(overwriter, walker, reader, version);

    Require(reader.GetPos() >= 0 && reader.GetCanReadSize() >= 0, "a walker stays in its range");
    Require(section == before, "a walker changes nothing");
    CheckFlags(overwriter.GetTextureFlagQuadList(), section);
    CheckFlags(overwriter.GetLightmapFlagQuadList(), section);
    CheckFlags(overwriter.GetProbeFlagQuadList(), section);
    return 0;
}
