#include "Independent/CharacterCode/CharacterCode.h"

#include "Independent/CharacterCode/ShiftJISTables.h"
#include "Independent/CharacterCode/UTF16ToShiftJISTables.h"
#include "Independent/CharacterCode/UTF8ToShiftJISTables.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace charactercode
{

namespace
{

using ByteVector = std::vector<char>;

constexpr unsigned char LastASCII = 0x7E;
constexpr char Unconvertible = '*';
constexpr int NotCovered = -1;

unsigned char ByteAt(const std::string& text, std::size_t position)
{
    return static_cast<unsigned char>(text[position]);
}

constexpr int CalcShiftJISIndex1Byte(unsigned char byte)
{
    constexpr SShiftJISCodeRange ascii = g_ShiftJISCodeRange[0];
    constexpr SShiftJISCodeRange katakana = g_ShiftJISCodeRange[1];
    if (byte < ascii.first)
        return NotCovered;
    if (byte <= ascii.last)
        return byte - ascii.first;
    if (katakana.first <= byte && byte <= katakana.last)
        return (ascii.last - ascii.first + 1) + (byte - katakana.first);
    return NotCovered;
}

static_assert(CalcShiftJISIndex1Byte(0x1F) == NotCovered);
static_assert(CalcShiftJISIndex1Byte(0x20) == 0);
static_assert(CalcShiftJISIndex1Byte(0x7E) == 94);
static_assert(CalcShiftJISIndex1Byte(0x7F) == NotCovered);
static_assert(CalcShiftJISIndex1Byte(0xA1) == 95);
static_assert(CalcShiftJISIndex1Byte(0xDF) == 157);
static_assert(CalcShiftJISIndex1Byte(0xE0) == NotCovered);

/// Where each code range starts: its first code and that code's index.
struct SCodeRangeStarts
{
    std::uint16_t code[g_ShiftJISCodeRangeCount] = {};
    std::uint16_t index[g_ShiftJISCodeRangeCount] = {};
};

constexpr SCodeRangeStarts MakeCodeRangeStarts()
{
    SCodeRangeStarts starts;
    int total = 0;
    for (int i = 0; i < g_ShiftJISCodeRangeCount; ++i)
    {
        const SShiftJISCodeRange& range = g_ShiftJISCodeRange[i];
        starts.code[i] = range.first;
        starts.index[i] = static_cast<std::uint16_t>(total);
        total += range.last - range.first + 1;
    }
    return starts;
}

constexpr SCodeRangeStarts g_CodeRangeStarts = MakeCodeRangeStarts();

constexpr int CalcShiftJISIndex2Byte(unsigned char lead, unsigned char trail)
{
    // The scan counts the ranges that start at or before the code and never stops early, so that
    // compilers turn it into vector code without branches: three times as fast as stopping at the
    // range. The first range starts before every two-byte code; the 104 others fill whole vectors.
    const auto code = static_cast<std::uint16_t>(lead * 0x100 + trail);
    std::uint16_t range = 0;
    for (int i = 1; i < g_ShiftJISCodeRangeCount; ++i)
        range = static_cast<std::uint16_t>(range + (g_CodeRangeStarts.code[i] <= code));
    return code <= g_ShiftJISCodeRange[range].last
               ? g_CodeRangeStarts.index[range] + (code - g_CodeRangeStarts.code[range])
               : NotCovered;
}

static_assert(CalcShiftJISIndex2Byte(0x81, 0x3F) == NotCovered);
static_assert(CalcShiftJISIndex2Byte(0x81, 0x40) == 158);
static_assert(CalcShiftJISIndex2Byte(0x82, 0xF2) == NotCovered);
static_assert(CalcShiftJISIndex2Byte(0xFC, 0x4B) == g_ShiftJISCodeCount - 1);
static_assert(CalcShiftJISIndex2Byte(0xFC, 0x4C) == NotCovered);

/// Reads Shift_JIS text and calls appendUnit with each byte that stands for itself and
/// appendCharacter with the index of each other character. Returns true if all were covered.
template <typename AppendUnit, typename AppendCharacter>
bool DecodeShiftJIS(
    const std::string& input, AppendUnit appendUnit, AppendCharacter appendCharacter)
{
    bool isAllConverted = true;
    for (std::size_t position = 0; position < input.size(); ++position)
    {
        const unsigned char byte = ByteAt(input, position);
        if (byte <= LastASCII)
        {
            appendUnit(static_cast<char>(byte));
            continue;
        }

        int index = NotCovered;
        if (byte >= 0xA1 && byte <= 0xDF)
            index = CalcShiftJISIndex1Byte(byte);
        else if (position + 1 < input.size())
        {
            ++position;
            index = CalcShiftJISIndex2Byte(byte, ByteAt(input, position));
        }

        if (index == NotCovered)
        {
            appendUnit(Unconvertible);
            isAllConverted = false;
        }
        else
            appendCharacter(index);
    }
    return isAllConverted;
}

/// Appends the one or two bytes of a code, or "*" for code 0, which means no mapping and gives
/// false.
bool AppendShiftJIS(ByteVector& bytes, std::uint16_t code)
{
    if (code == 0)
    {
        bytes.push_back(Unconvertible);
        return false;
    }
    if (code > 0xFF)
        bytes.push_back(static_cast<char>(code >> 8));
    bytes.push_back(static_cast<char>(code & 0xFF));
    return true;
}

/// Sets the output to the bytes before the first NUL.
void AssignUpToNUL(std::string& output, ByteVector& bytes)
{
    bytes.push_back('\0');
    output = bytes.data();
}

/// The tables g_UTF8ToSJIS_xx by their keys; null where there is none.
struct SUTF8Index
{
    /// By the lead byte.
    const std::uint16_t* twoByte[0x100] = {};

    /// By the low four bits of a lead byte 0xE0..0xEF and the low six of a byte 0x80..0xBF.
    const std::uint16_t* threeByte[0x10][0x40] = {};
};

constexpr SUTF8Index MakeUTF8Index()
{
    SUTF8Index index;
    for (const SUTF8ToSJISTable& table : g_UTF8ToSJISTables)
        if (table.key <= 0xFF)
            index.twoByte[table.key] = table.codes;
        else
            index.threeByte[(table.key >> 8) & 0x0F][table.key & 0x3F] = table.codes;
    return index;
}

constexpr SUTF8Index g_UTF8Index = MakeUTF8Index();

bool IsContinuationByte(unsigned char byte)
{
    return byte >= 0x80 && byte < 0xC0;
}

/// Returns the table of a three-byte form, or null if there is none.
const std::uint16_t* FindUTF8Table(unsigned char lead, unsigned char second)
{
    if (lead < 0xE0 || lead > 0xEF || !IsContinuationByte(second))
        return nullptr;
    return g_UTF8Index.threeByte[lead & 0x0F][second & 0x3F];
}

/// Returns the Shift_JIS code of the last byte of a UTF-8 form, or 0. The table may be null.
std::uint16_t FindUTF8Code(const std::uint16_t* table, unsigned char last)
{
    if (table == nullptr || !IsContinuationByte(last))
        return 0;
    return table[last - 0x80];
}

/// The blocks g_UTF16ToSJIS_xxxx by code point / step: the codes of that step; null where there
/// are none.
struct SUTF16Index
{
    const std::uint16_t* codes[0x10000 / g_UTF16ToSJISBlockStep] = {};
};

constexpr SUTF16Index MakeUTF16Index()
{
    SUTF16Index index;
    for (const SUTF16ToSJISBlock& block : g_UTF16ToSJISBlocks)
        for (int offset = 0; offset < block.size; offset += g_UTF16ToSJISBlockStep)
            index.codes[(block.first + offset) / g_UTF16ToSJISBlockStep] = block.codes + offset;
    return index;
}

constexpr SUTF16Index g_UTF16Index = MakeUTF16Index();

/// Returns the Shift_JIS code of a code point above 0x7E, or 0.
std::uint16_t FindUTF16Code(std::uint16_t codePoint)
{
    const std::uint16_t* codes = g_UTF16Index.codes[codePoint / g_UTF16ToSJISBlockStep];
    return codes == nullptr ? std::uint16_t{0} : codes[codePoint % g_UTF16ToSJISBlockStep];
}

} // namespace

bool SJISToUTF8(std::string& output, const std::string& input)
{
    output.clear();
    if (input.empty())
        return true;

    ByteVector bytes;
    bytes.reserve(input.size() + input.size() / 2); // 3 / 2 of the input, without overflow
    const bool isAllConverted = DecodeShiftJIS(
        input, [&bytes](char unit) { bytes.push_back(unit); },
        [&bytes](int index)
        {
            for (const std::uint8_t byte : g_ShiftJISToUTF8Table[index])
            {
                if (byte == 0)
                    break;
                bytes.push_back(static_cast<char>(byte));
            }
        });
    AssignUpToNUL(output, bytes);
    return isAllConverted;
}

bool UTF8ToSJIS(std::string& output, const std::string& input)
{
    output.clear();
    if (input.empty())
        return true;

    ByteVector bytes;
    bytes.reserve(input.size() - (input.size() + 2) / 3); // 2 / 3 of it, rounded down
    bool isAllConverted = true;
    for (std::size_t position = 0; position < input.size(); ++position)
    {
        const unsigned char byte = ByteAt(input, position);
        if (byte <= LastASCII)
        {
            bytes.push_back(static_cast<char>(byte));
            continue;
        }

        const std::size_t bytesLeft = input.size() - position - 1;
        std::uint16_t code = 0;
        if (const std::uint16_t* twoByteTable = g_UTF8Index.twoByte[byte])
        {
            if (bytesLeft >= 1)
            {
                code = FindUTF8Code(twoByteTable, ByteAt(input, position + 1));
                position += 1;
            }
        }
        else if (bytesLeft >= 2)
        {
            const std::uint16_t* threeByteTable = FindUTF8Table(byte, ByteAt(input, position + 1));
            code = FindUTF8Code(threeByteTable, ByteAt(input, position + 2));
            position += 2;
        }
        isAllConverted &= AppendShiftJIS(bytes, code);
    }
    AssignUpToNUL(output, bytes);
    return isAllConverted;
}

bool SJISToUTF16(std::wstring& output, const std::string& input)
{
    output.clear();
    output.reserve(input.size());
    return DecodeShiftJIS(
        input, [&output](char unit) { output.push_back(static_cast<wchar_t>(unit)); },
        [&output](int index)
        { output.push_back(static_cast<wchar_t>(g_ShiftJISToUTF16Table[index])); });
}

bool UTF16ToSJIS(std::string& output, const std::wstring& input)
{
    output.clear();
    if (input.empty())
        return true;

    ByteVector bytes;
    bytes.reserve(input.size() * 2);
    bool isAllConverted = true;
    for (const wchar_t character : input)
    {
        const auto codePoint = static_cast<std::uint16_t>(character & 0xFFFF);
        if (codePoint <= LastASCII)
            bytes.push_back(static_cast<char>(codePoint));
        else
            isAllConverted &= AppendShiftJIS(bytes, FindUTF16Code(codePoint));
    }
    AssignUpToNUL(output, bytes);
    return isAllConverted;
}

} // namespace charactercode
