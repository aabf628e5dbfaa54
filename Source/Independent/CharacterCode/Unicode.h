#pragma once

#include <string>
#include <string_view>

/// The forms of Unicode, for names of systems whose names are UTF-16, or anything else.
namespace charactercode
{

/// Tells whether a code is half of a surrogate pair, which is no character.
constexpr bool IsSurrogate(char32_t code)
{
    return code >= 0xD800 && code <= 0xDFFF;
}

/// Takes the first character from a text that is not empty. Half of a surrogate pair is taken for
/// one. False, with an unchanged text, when no character of UTF-8 starts there.
bool TakeUTF8Character(std::string_view& text, char32_t& code);

/// Converts UTF-8 to UTF-16. Three bytes of half a surrogate pair, which are not UTF-8 but come
/// from `UTF16ToUTF8`, become that half again. False, with an empty output, when there are other
/// bytes that are not UTF-8.
bool UTF8ToUTF16(std::u16string& output, std::string_view input);

/// Converts UTF-16 to UTF-8. Half a surrogate pair without the other gives three bytes, as if it
/// were a character, so that nothing is lost.
std::string UTF16ToUTF8(std::u16string_view input);

} // namespace charactercode
