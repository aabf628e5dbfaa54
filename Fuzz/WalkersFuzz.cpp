// Runs one walker over bytes that need not be its section: the first byte chooses the walker, the
// second the version, from 0 on. Whatever the bytes say, they are not changed and nothing outside
// of them is pointed to. A walk that listens ends where the walker does, has heard of every byte up
// to there once, and says why it ends there.

#include <array>
#include <vector>

#include "FuzzTarget.h"
#include "ZEKFormat/CZEKImageSource.h"
#include "ZEKFormat/CZEKSink.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using fileimage::CFileImageAnalyser;
using fuzz::Require;
using zek::CZEKOverwriter;

namespace
{

using Walker = bool (CZEKOverwriter::*)(CFileImageAnalyser& reader, int version);

constexpr int VersionCount = 31; // from 0 on, and some that nobody knows yet
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

/// The walk that a walker is, in the same order.
template <typename FormatWalk>
bool WalkPart(FormatWalk& walk, std::size_t walker, int version)
{
    switch (walker)
    {
    case 0:
        return zek::WalkNodeList(walk, version);
    case 1:
        return zek::WalkNode(walk, version);
    case 2:
        return zek::WalkMeshList(walk, version);
    case 3:
        return zek::WalkMesh(walk, version);
    case 4:
        return zek::WalkMeshSimple(walk);
    case 5:
        return zek::WalkMaterialList(walk, version);
    case 6:
        return zek::WalkTextureList(walk, version);
    case 7:
        return zek::WalkReflectionProbes(walk, version);
    case 8:
        return zek::WalkLightmapList(walk, version);
    case 9:
        return zek::WalkSections(walk, version);
    default:
        return zek::WalkBoneTable(walk);
    }
}

/// Checks that what it hears of lies side by side.
struct CCoverSink : zek::CZEKSink
{
    void Field(
        const char*, zek::EZEKFieldType type, int count, std::int64_t offset, const unsigned char*)
    {
        Cover(offset, count * zek::GetSize(type));
    }

    void Text(const char*, std::int64_t offset, std::string_view text)
    {
        Cover(offset, static_cast<std::int64_t>(text.size()) + 1);
    }

    bool WantsElements(const char*) const { return wantsElements; }

    void Array(const char*, std::int64_t offset, int size, std::int64_t count)
    {
        Cover(offset, size * count);
    }

    void Refuse(const zek::SZEKFault& why) { fault = why; }

    void Cover(std::int64_t offset, std::int64_t size)
    {
        Require(offset == end && size >= 0, "fields follow each other");
        end += size;
    }

    bool wantsElements = false;
    std::int64_t end = 0;
    zek::SZEKFault fault = {};
};

/// Checks where a walk has stopped, and that it has heard of all before.
void CheckFault(const CCoverSink& sink, std::int64_t position, std::int64_t size)
{
    const zek::SZEKFault& fault = sink.fault;
    switch (fault.kind)
    {
    case zek::SZEKFault::TooShort:
        Require(fault.offset == position && sink.end == position, "a walk stops at the demand");
        Require(
            fault.left == size - position && fault.demanded > fault.left,
            "more is demanded than is left");
        break;
    case zek::SZEKFault::Unterminated:
        Require(
            sink.end == fault.offset && position == size,
            "a text without an end is looked for up to the last byte");
        break;
    case zek::SZEKFault::WrongValue:
        Require(
            fault.offset + 4 == position && sink.end == position,
            "a walk stops after a wrong value");
        break;
    case zek::SZEKFault::Unreadable:
        Require(false, "all of an image can be read");
    }
}

void CheckWalk(
    const std::vector<unsigned char>& section,
    std::size_t walker,
    int version,
    bool isAccepted,
    std::int64_t position)
{
    const auto size = static_cast<std::int64_t>(section.size());
    for (const bool wantsElements : {false, true})
    {
        CCoverSink sink;
        sink.wantsElements = wantsElements;
        zek::CZEKImageSource source(section.data(), size);
        zek::CZEKWalk<zek::CZEKImageSource, CCoverSink> walk(source, sink);
        Require(
            WalkPart(walk, walker, version) == isAccepted && source.GetPos() == position,
            "a walk ends where the walker does, whoever listens");
        if (isAccepted)
            Require(sink.end == position, "every byte that is walked belongs to a field");
        else
            CheckFault(sink, position, size);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::CInput input(data, size);
    const std::size_t walker = input.TakeByte() % (Walkers.size() + 1);
    const int version = input.TakeByte() % VersionCount;
    const std::string rest = input.TakeRest();
    const std::vector<unsigned char> section(rest.begin(), rest.end());

    const std::vector<unsigned char> before = section;
    CFileImageAnalyser reader(section.data(), section.data() + section.size());
    CZEKOverwriter overwriter;
    const bool isAccepted = Walk(overwriter, walker, reader, version);
    CheckWalk(section, walker, version, isAccepted, reader.GetPos());

    Require(reader.GetPos() >= 0 && reader.GetCanReadSize() >= 0, "a walker stays in its range");
    Require(section == before, "a walker changes nothing");
    CheckFlags(overwriter.GetTextureFlagQuadList(), section);
    CheckFlags(overwriter.GetLightmapFlagQuadList(), section);
    CheckFlags(overwriter.GetProbeFlagQuadList(), section);
    return 0;
}
