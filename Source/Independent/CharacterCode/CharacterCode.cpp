#include "Independent/CharacterCode/CharacterCode.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

#include "Independent/CharacterCode/DerivedTables.h"

namespace charactercode
{

namespace
{

constexpr char Unconvertible = '*';

/// How many units are looked at, and copied, at once where the text is ASCII.
constexpr std::ptrdiff_t RunSize = 8;

/// How many units are converted one by one before the next run is looked for: in text that is not
/// ASCII, looking costs more than it saves.
constexpr std::ptrdiff_t StretchSize = 32;

constexpr unsigned ToCode(char byte)
{
    return static_cast<unsigned char>(byte);
}

constexpr unsigned ToCode(wchar_t unit)
{
    return static_cast<std::uint16_t>(unit);
}

/// Tells whether the next RunSize units are ASCII: none has a bit above 0x7F, and none would have
/// one if it were 1 more.
bool IsASCIIRun(const char* source)
{
    std::uint64_t bytes; // only 0xFF carries into the next byte, and has that bit itself
    std::memcpy(&bytes, source, sizeof(bytes));
    return ((bytes | (bytes + 0x0101010101010101)) & 0x8080808080808080) == 0;
}

bool IsASCIIRun(const wchar_t* source)
{
    unsigned bits = 0;
    for (int i = 0; i < RunSize; ++i)
        bits |= ToCode(source[i]) + 1;
    return bits <= LastASCII + 1;
}

/// Converts a text to output, which must have room, and moves output to the end of what was
/// written. ASCII is copied. convertCharacter(dest, source, end) moves dest and source past any
/// other character and tells whether it was converted. Returns true if all were.
template <typename Output, typename Input, typename ConvertCharacter>
bool Convert(
    Output*& output, const std::basic_string<Input>& input, ConvertCharacter convertCharacter)
{
    bool isAllConverted = true;
    Output* dest = output;
    const Input* source = input.data();
    const Input* const end = source + input.size();
    while (source != end)
    {
        if (end - source >= RunSize && IsASCIIRun(source))
        {
            dest = std::copy_n(source, RunSize, dest);
            source += RunSize;
            continue;
        }

        const Input* const stretchEnd = source + std::min(end - source, StretchSize);
        while (source < stretchEnd)
        {
            if (ToCode(*source) <= LastASCII)
                *dest++ = static_cast<Output>(ToCode(*source++));
            else
                isAllConverted &= convertCharacter(dest, source, end);
        }
    }
    output = dest;
    return isAllConverted;
}

/// Returns the character that Shift_JIS text starts with, or 0, and moves source past it. The text
/// does not start with ASCII.
inline unsigned ReadShiftJIS(const char*& source, const char* end)
{
    const unsigned byte = ToCode(*source++);
    if (byte >= 0xA1 && byte <= 0xDF)
        return g_DerivedTables.characters[byte];
    if (source == end)
        return 0;
    return g_DerivedTables.characters[byte << 8 | ToCode(*source++)];
}

/// Writes the one or two bytes of a code, or "*" for code 0, which means no mapping and gives
/// false.
inline bool WriteShiftJIS(char*& dest, unsigned code)
{
    if (code == 0)
    {
        *dest++ = Unconvertible;
        return false;
    }
    if (code > 0xFF)
        *dest++ = static_cast<char>(code >> 8);
    *dest++ = static_cast<char>(code & 0xFF);
    return true;
}

/// Returns the Shift_JIS code of the character that UTF-8 text starts with, or 0, and moves source
/// past it. The text does not start with ASCII.
inline unsigned ReadUTF8(const char*& source, const char* end)
{
    const unsigned lead = ToCode(*source++);
    if (g_DerivedTables.isTwoByteLead[lead])
    {
        if (source == end)
            return 0;
        const unsigned last = ToCode(*source++);
        const bool isForm = (last & 0xC0) == 0x80;
        return isForm ? g_DerivedTables.codes[(lead & 0x1F) << 6 | (last & 0x3F)] : 0u;
    }

    if (end - source < 2)
        return 0;
    const unsigned bytes = lead << 16 | ToCode(source[0]) << 8 | ToCode(source[1]);
    source += 2;
    const unsigned character = (bytes >> 4 & 0xF000) | (bytes >> 2 & 0x0FC0) | (bytes & 0x3F);
    const bool isForm = (bytes & 0xF0C0C0) == 0xE08080 && character > LastTwoByteForm;
    return isForm ? g_DerivedTables.codes[character] : 0u;
}

/// Writes the two or three bytes of a character above ASCII.
inline void WriteUTF8(char*& dest, unsigned character)
{
    if (character <= LastTwoByteForm)
        *dest++ = static_cast<char>(0xC0 | character >> 6);
    else
    {
        *dest++ = static_cast<char>(0xE0 | character >> 12);
        *dest++ = static_cast<char>(0x80 | (character >> 6 & 0x3F));
    }
    *dest++ = static_cast<char>(0x80 | (character & 0x3F));
}

/// Gives the output room for as many characters as the input has units, and one byte more, and
/// returns its start. What no memory can hold is memory that has run out.
char* MakeRoom(std::string& output, std::size_t unitCount, std::size_t bytesPerCharacter)
{
    if (unitCount > (output.max_size() - 1) / bytesPerCharacter)
        throw std::bad_alloc();
    output.resize(unitCount * bytesPerCharacter + 1);
    return output.data();
}

/// Ends the output at dest, or before the first NUL.
void CutAtNUL(std::string& output, char* dest)
{
    *dest = '\0';
    output.resize(std::strlen(output.c_str()));
}

} // namespace

bool SJISToUTF8(std::string& output, const std::string& input)
{
    output.clear();
    if (input.empty())
        return true;

    char* outputEnd = MakeRoom(output, input.size(), 3);
    const bool isAllConverted = Convert(
        outputEnd, input,
        [](char*& dest, const char*& source, const char* end)
        {
            const unsigned character = ReadShiftJIS(source, end);
            if (character == 0)
                *dest++ = Unconvertible;
            else
                WriteUTF8(dest, character);
            return character != 0;
        });
    CutAtNUL(output, outputEnd);
    return isAllConverted;
}

bool UTF8ToSJIS(std::string& output, const std::string& input)
{
    output.clear();
    if (input.empty())
        return true;

    char* outputEnd = MakeRoom(output, input.size(), 1);
    const bool isAllConverted = Convert(
        outputEnd, input,
        [](char*& dest, const char*& source, const char* end)
        { return WriteShiftJIS(dest, ReadUTF8(source, end)); });
    CutAtNUL(output, outputEnd);
    return isAllConverted;
}

bool SJISToUTF16(std::wstring& output, const std::string& input)
{
    output.clear();
    output.resize(input.size());
    wchar_t* outputEnd = output.data();
    const bool isAllConverted = Convert(
        outputEnd, input,
        [](wchar_t*& dest, const char*& source, const char* end)
        {
            const unsigned character = ReadShiftJIS(source, end);
            *dest++ = static_cast<wchar_t>(character == 0 ? Unconvertible : character);
            return character != 0;
        });
    output.resize(static_cast<std::size_t>(outputEnd - output.data()));
    return isAllConverted;
}

bool UTF16ToSJIS(std::string& output, const std::wstring& input)
{
    output.clear();
    if (input.empty())
        return true;

    char* outputEnd = MakeRoom(output, input.size(), 2);
    const bool isAllConverted = Convert(
        outputEnd, input,
        [](char*& dest, const wchar_t*& source, const wchar_t*)
        { return WriteShiftJIS(dest, g_DerivedTables.codes[ToCode(*source++)]); });
    CutAtNUL(output, outputEnd);
    return isAllConverted;
}

} // namespace charactercode
