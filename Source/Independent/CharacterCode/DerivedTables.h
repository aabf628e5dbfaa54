#pragma once

#include <array>
#include <cstdint>

#include "Independent/CharacterCode/ShiftJISTable.h"

/// What the compiler works out from the code ranges and the characters of the covered codes.
namespace charactercode
{

/// The index of a code that is not covered.
constexpr int NotCovered = -1;

/// Returns the index of a Shift_JIS code, or NotCovered: its place in the code ranges laid end to
/// end. Called for g_DerivedTables while compiling.
constexpr int CalcShiftJISIndex(int code)
{
    int total = 0;
    for (const SShiftJISCodeRange& range : g_ShiftJISCodeRange)
    {
        if (code < range.first)
            return NotCovered;
        if (code <= range.last)
            return total + (code - range.first);
        total += range.last - range.first + 1;
    }
    return NotCovered;
}

/// The last character that has the same one byte in every code.
constexpr unsigned LastASCII = 0x7E;

/// The last character that UTF-8 has two bytes for.
constexpr unsigned LastTwoByteForm = 0x7FF;

/// What the conversions look up.
struct SDerivedTables
{
    /// The character of each Shift_JIS code, or 0. The row of a lead byte is 0x100 codes long.
    std::array<std::uint16_t, 0x10000> characters = {};

    /// The Shift_JIS code of each character, or 0.
    std::array<std::uint16_t, 0x10000> codes = {};

    /// Whether a byte starts the two-byte UTF-8 form of a covered character.
    std::array<bool, 0x100> isTwoByteLead = {};
};

constexpr SDerivedTables MakeDerivedTables()
{
    SDerivedTables tables;
    for (const SShiftJISCodeRange& range : g_ShiftJISCodeRange)
    {
        // The scan costs the compiler too much time to be made for every code of a range.
        int index = CalcShiftJISIndex(range.first);
        for (std::uint16_t code = range.first; code <= range.last; ++code)
        {
            const std::uint16_t character = g_ShiftJISToUTF16Table[index++];
            tables.characters[code] = character;
            tables.codes[character] = code;
            if (character > LastASCII && character <= LastTwoByteForm)
                tables.isTwoByteLead[0xC0 | character >> 6] = true;
        }
    }
    return tables;
}

inline constexpr SDerivedTables g_DerivedTables = MakeDerivedTables();

} // namespace charactercode
