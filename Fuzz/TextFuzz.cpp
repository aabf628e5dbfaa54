// Holds the functions on texts and paths against models that are as simple as possible: the text is
// first taken apart into characters, and then nothing has to know of two-byte characters any more.

#include <vector>

#include "FuzzTarget.h"
#include "Independent/FormatString/FormatString.h"
#include "Specific/FileSystem/CFilePath.h"
#include "Specific/FileSystem/LFileName.h"
#include "Support/LeadByte.h"

using fuzz::Require;
using testsupport::IsLeadByte;

namespace
{

using Characters = std::vector<std::string>;

/// One- and two-byte characters; a lead byte at the end is one by itself.
Characters TakeApart(const std::string& text)
{
    Characters characters;
    for (std::size_t i = 0; i < text.size();)
    {
        characters.push_back(text.substr(i, IsLeadByte(text[i]) ? 2 : 1));
        i += characters.back().size();
    }
    return characters;
}

std::string Join(const Characters& characters, std::size_t begin, std::size_t end)
{
    std::string text;
    for (std::size_t i = begin; i < end; ++i)
        text += characters[i];
    return text;
}

bool IsSeparator(const std::string& character)
{
    return character == "/" || character == "\\";
}

/// A path before and after the last character that passes a test.
struct SParts
{
    bool isFound = false;
    std::string before;
    std::string character;
    std::string after;
};

template <typename Test>
SParts CutAtLast(const std::string& path, Test test)
{
    const Characters characters = TakeApart(path);
    for (std::size_t i = characters.size(); i-- > 0;)
    {
        if (test(characters[i]))
            return {
                true, Join(characters, 0, i), characters[i],
                Join(characters, i + 1, characters.size())};
    }
    return {};
}

template <typename Test>
SParts CutAtFirst(const std::string& path, Test test)
{
    const Characters characters = TakeApart(path);
    for (std::size_t i = 0; i < characters.size(); ++i)
    {
        if (test(characters[i]))
            return {
                true, Join(characters, 0, i), characters[i],
                Join(characters, i + 1, characters.size())};
    }
    return {};
}

std::string ToLower(const std::string& text)
{
    std::string result;
    for (const std::string& character : TakeApart(text))
    {
        const bool isLoneLead = character.size() == 1 && IsLeadByte(character[0]);
        if (character.size() == 1 && character[0] >= 'A' && character[0] <= 'Z')
            result += static_cast<char>(character[0] - 'A' + 'a');
        else
            result += character;
        if (isLoneLead)
            result += '\0';
    }
    return result;
}

void CheckFileName(const std::string& path)
{
    const SParts file = CutAtLast(path, IsSeparator);
    Require(
        LFileName::DeleteFileName(path) == (file.isFound ? file.before + file.character : ""),
        "DeleteFileName keeps what ends in the last separator");
    Require(LFileName::DeleteExceptFileName(path) == file.before, "DeleteExceptFileName");
    Require(LFileName::DeleteDir(path) == (file.isFound ? file.after : path), "DeleteDir");
    const bool endsInSeparator = file.isFound && file.after.empty();
    Require(LFileName::AddPunct(path) == (endsInSeparator ? path : path + "/"), "AddPunct");
    Require(LFileName::DeletePunct(path) == (endsInSeparator ? file.before : path), "DeletePunct");
    Require(
        LFileName::GetParent(path) == file.before, "GetParent is what precedes the last separator");

    const SParts first = CutAtFirst(path, IsSeparator);
    Require(LFileName::GetFirstDir(path) == first.before, "GetFirstDir");
    Require(
        LFileName::DeleteFirstDir(path) == (first.isFound ? first.after : path), "DeleteFirstDir");

    const SParts dot =
        CutAtLast(path, [](const std::string& character) { return character == "."; });
    Require(
        LFileName::GetExtension(path) == (dot.isFound ? ToLower(dot.after) : ""), "GetExtension");
    const std::string base = dot.isFound ? dot.before : path;
    Require(LFileName::DeleteExtension(path) == base, "DeleteExtension");
    Require(LFileName::ChangeExtension(path, "pvr") == base + ".pvr", "ChangeExtension");
    Require(LFileName::ToLower(path) == ToLower(path), "ToLower");
}

void CheckFilePath(const std::string& text)
{
    filesystem::CFilePath path;
    path.AddFolderName(text);
    Require(path.GetString() == text, "a name on an empty path is the path");

    const SParts last =
        CutAtLast(text, [](const std::string& character) { return character == "\\"; });
    const bool endsInSeparator = last.isFound && last.after.empty();
    Require(path.GetParentPath() == last.before, "GetParentPath");
    Require(path.GetChildFileName() == (last.isFound ? last.after : text), "GetChildFileName");
    path.AddFileName("x");
    const bool isAsItIs = text.empty() || endsInSeparator;
    Require(path.GetString() == text + (isAsItIs ? "x" : "\\x"), "AddFileName");
}

/// The text is scanned only as far as the searched text still fits, and the rest is dropped.
std::string Replace(const std::string& text, const std::string& from, const std::string& to)
{
    std::string result;
    std::size_t i = 0;
    while (i + from.size() <= text.size())
    {
        if (text.substr(i, from.size()) == from)
        {
            result += to;
            i += from.size();
            continue;
        }
        std::string character = TakeApart(text.substr(i))[0];
        if (IsLeadByte(character[0]) && character.size() == 1)
            character += '\0';
        result += character;
        i += character.size();
    }
    return result;
}

void CheckReplaceAndSplit(const std::string& text, const std::string& from, const std::string& to)
{
    if (from.empty())
        return;
    Require(formatstring::Replace(text, from, to) == Replace(text, from, to), "Replace");

    const std::vector<std::string> pieces = formatstring::Split(text, from);
    std::string joined = pieces[0];
    for (std::size_t i = 1; i < pieces.size(); ++i)
        joined += from + pieces[i];
    Require(joined == text, "the pieces and the separators between them make up the text");
    for (const std::string& piece : pieces)
        Require(piece.find(from) == std::string::npos, "no piece holds a separator");
}

void CheckFormatAndScan(const std::string& text)
{
    Require(
        formatstring::ToString(text) == text.substr(0, text.find('\0')).substr(0, 16383),
        "a formatted text is the text, cut");
    int value = 0;
    if (formatstring::ScanInt(text, value))
    {
        int again = 0;
        Require(
            formatstring::ScanInt(formatstring::ToString(value), again), "a number can be read");
        Require(again == value, "a number is read as it was written");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::CInput input(data, size);
    const std::string from = input.TakeText();
    const std::string to = input.TakeText();
    const std::string text = input.TakeRest();
    CheckFileName(text);
    CheckFilePath(text);
    CheckReplaceAndSplit(text, from, to);
    CheckFormatAndScan(text);
    return 0;
}
