#include "ZekTool/Models/FileKind.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "ZEKFormat/SZEKLocation.h"

namespace zektool
{

namespace
{

struct SMagic
{
    std::string_view bytes;
    std::string_view kind;
};

// What may lie in a folder of models under a wrong name.
constexpr std::array<SMagic, 9> Magics = {{
    {"\x89PNG", "a PNG picture"},
    {"\xFF\xD8\xFF", "a JPEG picture"},
    {"DDS ", "a DDS texture"},
    {"PVR\x03", "a PVR texture"},
    {"glTF", "a glTF model"},
    {"Kaydara FBX", "an FBX model"},
    {"PK\x03\x04", "a ZIP archive"},
    {"\x1F\x8B", "a gzip archive"},
    {"\x7F"
     "ELF",
     "a program"},
}};

constexpr std::size_t ShownByteCount = 4;

bool IsText(std::string_view bytes)
{
    return std::all_of(
        bytes.begin(), bytes.end(),
        [](char c)
        {
            const auto byte = static_cast<unsigned char>(c);
            return byte == '\t' || byte == '\n' || byte == '\r' || (byte >= ' ' && byte != 0x7F);
        });
}

} // namespace

std::string ReadStart(filesystem::CRandomAccessFile& file)
{
    constexpr std::size_t size = 64; // enough to tell the kinds apart
    std::string start(size, '\0');
    const std::int64_t count = file.Read(0, start.data(), static_cast<std::int64_t>(size));
    start.resize(static_cast<std::size_t>(count));
    return start;
}

std::string DescribeFileKind(std::string_view start)
{
    for (const SMagic& magic : Magics)
    {
        if (start.substr(0, magic.bytes.size()) == magic.bytes)
            return std::string(magic.kind);
    }
    if (IsText(start))
        return "text";
    return "data that starts with \"" + zek::MakeExcerpt(start.substr(0, ShownByteCount)) + "\"";
}

} // namespace zektool
