#pragma once

#include <cstddef>
#include <random>
#include <string>

namespace testsupport
{

/// A text of so many characters of an alphabet, which is to be small enough for matches to happen.
inline std::string MakeRandomText(
    std::mt19937& random, const std::string& alphabet, std::size_t minLength, std::size_t maxLength)
{
    std::string text(minLength + random() % (maxLength - minLength + 1), 'a');
    for (char& character : text)
        character = alphabet[random() % alphabet.length()];
    return text;
}

} // namespace testsupport
