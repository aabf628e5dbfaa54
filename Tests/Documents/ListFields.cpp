// Lists the fields of a model file in file order, a line each: path, type, number of values, offset
// and size in bytes, between tabs.
//
//     ListFields MODEL
//
// Of a version before the oldest that is accepted, the sections are listed all the same, with the
// fields' own names for paths.

#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Independent/FileImage/FileImage.h"
#include "ZEKFormat/CZEKImageSource.h"
#include "ZEKFormat/CZEKSink.h"
#include "ZEKFormat/CZEKVisitor.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"

namespace
{

constexpr std::int64_t VersionOffset = 4;
constexpr std::int64_t OldSectionsOffset = 8;

void Print(
    std::string_view path,
    zek::EZEKFieldType type,
    int count,
    std::int64_t offset,
    std::int64_t size)
{
    std::printf(
        "%.*s\t%s\t%d\t%lld\t%lld\n", static_cast<int>(path.size()), path.data(), GetName(type),
        count, static_cast<long long>(offset), static_cast<long long>(size));
}

class CPrinter : public zek::CZEKVisitor
{
public:
    void OnField(const zek::SZEKField& field) override
    {
        Print(field.path, field.type, field.count, field.offset, field.size);
    }

    bool IsElementsWanted(std::string_view) override { return true; }
};

/// Prints fields by their own names.
struct CNamePrinter : zek::CZEKSink
{
    void Field(
        const char* name,
        zek::EZEKFieldType type,
        int count,
        std::int64_t offset,
        const unsigned char*)
    {
        Print(name, type, count, OldSectionsOffset + offset, count * zek::GetSize(type));
    }

    void Text(const char* name, std::int64_t offset, std::string_view value)
    {
        Print(
            name, zek::EZEKFieldType::Text, 1, OldSectionsOffset + offset,
            static_cast<std::int64_t>(value.size()) + 1);
    }

    bool WantsElements(const char*) const { return true; }
};

bool ListOldSections(const unsigned char* image, std::int64_t size, int version)
{
    CNamePrinter printer;
    zek::CZEKImageSource source(image + OldSectionsOffset, size - OldSectionsOffset);
    zek::CZEKWalk<zek::CZEKImageSource, CNamePrinter> walk(source, printer);
    return zek::WalkSections(walk, version);
}

bool ListFile(const unsigned char* image, std::int64_t size)
{
    CPrinter printer;
    const std::optional<zek::SZEKRefusal> refusal = zek::VisitFields(image, size, printer);
    if (refusal)
        std::fprintf(stderr, "%s\n", refusal->GetText().c_str());
    return !refusal;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: ListFields MODEL\n");
        return 2;
    }
    std::ifstream file(argv[1], std::ios::binary);
    const std::vector<char> bytes{
        std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const unsigned char* image = reinterpret_cast<const unsigned char*>(bytes.data());
    const std::int64_t size = static_cast<std::int64_t>(bytes.size());

    const int version =
        size < OldSectionsOffset ? zek::version::Oldest : fileimage::ReadInt(image + VersionOffset);
    const bool isListed = version < zek::version::Oldest ? ListOldSections(image, size, version)
                                                         : ListFile(image, size);
    if (!isListed)
        std::fprintf(stderr, "ListFields: %s is not a whole model\n", argv[1]);
    return isListed ? 0 : 1;
}
