#pragma once

#include <string>

/// Text conversion between Shift_JIS and Unicode.
///
/// Shift_JIS here is Microsoft code page 932 with Microsoft's mapping (0x5C is U+005C, 0x7E is
/// U+007E, 0x8160 is U+FF5E), of which only codes with a Unicode character of their own are
/// covered: not the user-defined characters 0xF040..0xF9FC, not the NEC selection of IBM
/// extensions 0xED40..0xEEFC, and of codes for one character only the first. So every covered code
/// comes back unchanged from Unicode.
///
/// What cannot be converted becomes "*" in the output; the rest of the input is still converted
/// and the function returns false. Control bytes below 0x20 are copied. The output is cleared
/// first, so an empty input leaves it empty and succeeds, and input and output must be two strings:
/// the same string passed as both is an empty input. Narrow output ends before the first NUL.
///
/// The output is given room for the largest result of any input of that length, and a conversion
/// takes no other memory: three bytes for each byte from Shift_JIS to UTF-8, two for each wide
/// character to Shift_JIS, a wide character or a byte for each byte otherwise.
namespace charactercode
{

/// Converts Shift_JIS to UTF-8. Returns true if every character was converted.
///
/// A byte above 0x7E other than half-width katakana (0xA1..0xDF) takes the byte after it along,
/// whatever that is, and the two give one character or one "*"; this includes 0x7F, 0x80, 0xA0 and
/// 0xF0..0xFF. As the last byte it gives "*" alone. A NUL in the input ends the output there.
bool SJISToUTF8(std::string& output, const std::string& input);

/// Converts UTF-8 to Shift_JIS. Returns true if every character was converted.
///
/// The bytes 0xC2, 0xC3, 0xCE, 0xCF, 0xD0 and 0xD1 take one byte along, every other byte above 0x7E
/// takes two, whatever they are, and gives one character or one "*". So the first three bytes of a
/// four-byte form give "*", and its last byte takes the two after it along. Where fewer bytes are
/// left, the byte alone gives "*". A NUL in the input ends the output there.
bool UTF8ToSJIS(std::string& output, const std::string& input);

/// Converts Shift_JIS to UTF-16, one 16-bit value in each wide character. Returns true if every
/// character was converted.
///
/// Reads its input as SJISToUTF8 does. A NUL in the input is copied and does not end the output.
bool SJISToUTF16(std::wstring& output, const std::string& input);

/// Converts UTF-16, one 16-bit value in each wide character, to Shift_JIS. Returns true if every
/// character was converted.
///
/// Only the low 16 bits of a wide character count: U+24E00 is read as U+4E00. Each value gives one
/// character or one "*", so a surrogate pair gives two. A value whose low 16 bits are zero ends the
/// output there.
bool UTF16ToSJIS(std::string& output, const std::wstring& input);

} // namespace charactercode
