#include "Independent/CharacterCode/CharacterCode.h"

#include "Independent/CharacterCode/ShiftJISTables.h"
#include "Independent/CharacterCode/UTF16ToShiftJISTables.h"
#include "Independent/CharacterCode/UTF8ToShiftJISTables.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
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

/// How many codes are compared at once: as many as fill the registers of every processor.
constexpr int LaneCount = 8;
using Lanes = std::int16_t __attribute__((vector_size(2 * LaneCount)));

/// The ranges but for the first, which starts before every two-byte code, fill whole registers.
constexpr int ScannedRangeCount = g_ShiftJISCodeRangeCount - 1;
static_assert(ScannedRangeCount % LaneCount == 0);

/// A code as a signed number of the same order: x86 compares only signed ones.
constexpr std::int16_t ToSigned(int code)
{
    return static_cast<std::int16_t>(code - 0x8000);
}

/// The code ranges for the scan.
struct SCodeRangeScan
{
    /// The first code of each range but the first.
    alignas(Lanes) std::int16_t signedFirst[ScannedRangeCount] = {};

    /// The last code of each range, and what makes a code of the range an index.
    int last[g_ShiftJISCodeRangeCount] = {};
    int toIndex[g_ShiftJISCodeRangeCount] = {};
};

constexpr SCodeRangeScan MakeCodeRangeScan()
{
    SCodeRangeScan scan;
    int index = 0;
    for (int i = 0; i < g_ShiftJISCodeRangeCount; ++i)
    {
        const SShiftJISCodeRange& range = g_ShiftJISCodeRange[i];
        if (i > 0)
            scan.signedFirst[i - 1] = ToSigned(range.first);
        scan.last[i] = range.last;
        scan.toIndex[i] = index - range.first;
        index += range.last - range.first + 1;
    }
    return scan;
}

constexpr SCodeRangeScan g_CodeRangeScan = MakeCodeRangeScan();

inline int CalcShiftJISIndex2Byte(unsigned char lead, unsigned char trail)
{
    // The scan counts the ranges that start behind the code and never stops early. Without branches
    // and eight ranges at a time it is several times as fast as stopping at the range.
    const int code = lead * 0x100 + trail;
    const Lanes codes = Lanes{} + ToSigned(code);
    Lanes counts = {};
    for (int i = 0; i < ScannedRangeCount; i += LaneCount)
    {
        Lanes starts;
        std::memcpy(&starts, &g_CodeRangeScan.signedFirst[i], sizeof(starts));
        counts -= starts > codes;
    }

    // The upper quarter of the product is the sum of all four quarters of the factor.
    std::uint64_t halves[2];
    std::memcpy(halves, &counts, sizeof(halves));
    const int rangesBehind = static_cast<int>((halves[0] + halves[1]) * 0x0001000100010001 >> 48);

    const int range = ScannedRangeCount - rangesBehind;
    return code <= g_CodeRangeScan.last[range] ? code + g_CodeRangeScan.toIndex[range] : NotCovered;
}

/// Reads Shift_JIS text and writes to dest each byte that stands for itself, and through
/// writeCharacter, which returns the new end, the character of each index. Moves dest to the end of
/// what was written, which must have room. Returns true if all were covered.
template <typename Unit, typename WriteCharacter>
bool DecodeShiftJIS(Unit*& dest, const std::string& input, WriteCharacter writeCharacter)
{
    bool isAllConverted = true;
    for (std::size_t position = 0; position < input.size(); ++position)
    {
        const unsigned char byte = ByteAt(input, position);
        if (byte <= LastASCII)
        {
            *dest++ = static_cast<Unit>(byte);
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
            *dest++ = Unconvertible;
            isAllConverted = false;
        }
        else
            dest = writeCharacter(dest, index);
    }
    return isAllConverted;
}

/// Writes the one or two bytes of a code, or "*" for code 0, which means no mapping and gives
/// false.
bool WriteShiftJIS(char*& dest, std::uint16_t code)
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

/// Returns zero bytes for as many characters as the input has units, and one more. What no memory
/// can hold is memory that has run out.
ByteVector MakeRoom(std::size_t unitCount, std::size_t bytesPerCharacter)
{
    if (unitCount > (ByteVector().max_size() - 1) / bytesPerCharacter)
        throw std::bad_alloc();
    return ByteVector(unitCount * bytesPerCharacter + 1);
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

    ByteVector bytes = MakeRoom(input.size(), 3);
    char* dest = bytes.data();
    const bool isAllConverted = DecodeShiftJIS(
        dest, input,
        [](char* end, int index)
        {
            const std::uint8_t* character = g_ShiftJISToUTF8Table[index];
            std::memcpy(end, character, 3);
            return end + 1 + (character[1] != 0) + (character[2] != 0);
        });
    output = bytes.data(); // up to the first NUL
    return isAllConverted;
}

bool UTF8ToSJIS(std::string& output, const std::string& input)
{
    output.clear();
    if (input.empty())
        return true;

    ByteVector bytes = MakeRoom(input.size(), 1);
    char* dest = bytes.data();
    bool isAllConverted = true;
    for (std::size_t position = 0; position < input.size(); ++position)
    {
        const unsigned char byte = ByteAt(input, position);
        if (byte <= LastASCII)
        {
            *dest++ = static_cast<char>(byte);
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
        isAllConverted &= WriteShiftJIS(dest, code);
    }
    output = bytes.data(); // up to the first NUL
    return isAllConverted;
}

bool SJISToUTF16(std::wstring& output, const std::string& input)
{
    output.clear();
    output.resize(input.size());
    wchar_t* dest = output.data();
    const bool isAllConverted = DecodeShiftJIS(
        dest, input,
        [](wchar_t* end, int index)
        {
            *end = static_cast<wchar_t>(g_ShiftJISToUTF16Table[index]);
            return end + 1;
        });
    output.resize(static_cast<std::size_t>(dest - output.data()));
    return isAllConverted;
}

bool UTF16ToSJIS(std::string& output, const std::wstring& input)
{
    output.clear();
    if (input.empty())
        return true;

    ByteVector bytes = MakeRoom(input.size(), 2);
    char* dest = bytes.data();
    bool isAllConverted = true;
    for (const wchar_t character : input)
    {
        const auto codePoint = static_cast<std::uint16_t>(character & 0xFFFF);
        if (codePoint <= LastASCII)
            *dest++ = static_cast<char>(codePoint);
        else
            isAllConverted &= WriteShiftJIS(dest, FindUTF16Code(codePoint));
    }
    output = bytes.data(); // up to the first NUL
    return isAllConverted;
}

} // namespace charactercode
