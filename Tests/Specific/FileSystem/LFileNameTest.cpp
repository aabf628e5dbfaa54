#include "Specific/FileSystem/LFileName.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Support/LeadByte.h"

using testsupport::IsLeadByte;
using namespace std::string_literals;

namespace
{

/// One character of two bytes, the second of which equals the backslash.
const std::string TwoByteCharacter = "\x95\x5C";

std::vector<std::string> SplitCharacters(const std::string& text)
{
    std::vector<std::string> characters;
    for (std::size_t i = 0; i < text.length(); i += characters.back().length())
        characters.push_back(text.substr(i, IsLeadByte(text[i]) ? 2 : 1));
    return characters;
}

/// A path before, at and after one of its characters; found tells whether there was one.
struct SCut
{
    bool isFound = false;
    std::string before;
    std::string at;
    std::string after;
};

/// Cuts a path at the first or last of its characters that is one of those wanted.
SCut CutAt(const std::string& wanted, const std::string& path, bool isLast)
{
    SCut cut;
    for (const std::string& character : SplitCharacters(path))
    {
        const bool isWanted =
            character.length() == 1 && wanted.find(character) != std::string::npos;
        if (isWanted && (isLast || !cut.isFound))
            cut = {true, cut.before + cut.at + cut.after, character, ""};
        else
            (cut.isFound ? cut.after : cut.before) += character;
    }
    return cut;
}

/// Every text of up to maxLength of the characters given.
std::vector<std::string> MakeAllTexts(const std::string& characters, std::size_t maxLength)
{
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; i < texts.size(); ++i)
    {
        if (texts[i].length() == maxLength)
            break;
        for (const char character : characters)
            texts.push_back(texts[i] + character);
    }
    return texts;
}

/// All short paths of a letter, both separators, a dot and a lead byte.
const std::vector<std::string> ShortPaths = MakeAllTexts("a\\/.\x95", 6);

} // namespace

TEST(LFileName, ExtensionIsTheLowerCaseTextAfterTheLastDot)
{
    EXPECT_EQ("png", LFileName::GetExtension("Model.PNG"));
    EXPECT_EQ("txt", LFileName::GetExtension("a/b.txt"));
    EXPECT_EQ("gitignore", LFileName::GetExtension(".gitignore"));
    EXPECT_EQ("", LFileName::GetExtension("a."));
}

TEST(LFileName, ExtensionIsEmptyWithoutADot)
{
    EXPECT_EQ("", LFileName::GetExtension(R"(folder\file)"));
    EXPECT_EQ("", LFileName::GetExtension(""));
}

TEST(LFileName, ExtensionOfTwoDotsIsThatAfterTheSecond)
{
    EXPECT_EQ("gz", LFileName::GetExtension("archive.tar.gz"));
}

TEST(LFileName, DotOfAFolderCountsWhenTheFileNameHasNone)
{
    EXPECT_EQ(R"(b\c)", LFileName::GetExtension(R"(a.b\c)"));
    EXPECT_EQ("a", LFileName::DeleteExtension(R"(a.b\c)"));
    EXPECT_EQ("a.pvr", LFileName::ChangeExtension(R"(a.b\c)", "pvr"));
}

TEST(LFileName, ExtensionKeepsTwoByteCharacters)
{
    EXPECT_EQ("\x83\x41z", LFileName::GetExtension("a.\x83\x41Z"));
}

TEST(LFileName, ExtensionThatEndsInALeadByteIsOneZeroByteLonger)
{
    EXPECT_EQ("x\x81\0"s, LFileName::GetExtension("a.X\x81"));
}

TEST(LFileName, DeleteExtensionGivesTheTextBeforeTheLastDot)
{
    EXPECT_EQ("Model", LFileName::DeleteExtension("Model.PNG"));
    EXPECT_EQ("archive.tar", LFileName::DeleteExtension("archive.tar.gz"));
    EXPECT_EQ("a", LFileName::DeleteExtension("a."));
    EXPECT_EQ("", LFileName::DeleteExtension(".gitignore"));
}

TEST(LFileName, DeleteExtensionLeavesAPathWithoutADot)
{
    EXPECT_EQ(R"(Folder\File)", LFileName::DeleteExtension(R"(Folder\File)"));
    EXPECT_EQ("", LFileName::DeleteExtension(""));
}

TEST(LFileName, ChangeExtensionReplacesTheTextAfterTheLastDot)
{
    EXPECT_EQ("LightMap001.pvr", LFileName::ChangeExtension("LightMap001.png", "pvr"));
    EXPECT_EQ("archive.tar.DDS", LFileName::ChangeExtension("archive.tar.gz", "DDS"));
    EXPECT_EQ("a.", LFileName::ChangeExtension("a.png", ""));
}

TEST(LFileName, ChangeExtensionAddsADotWhereThereWasNone)
{
    EXPECT_EQ("LightMap001.pvr", LFileName::ChangeExtension("LightMap001", "pvr"));
    EXPECT_EQ(".pvr", LFileName::ChangeExtension("", "pvr"));
}

TEST(LFileName, DeleteFileNameKeepsTheLastSeparator)
{
    EXPECT_EQ(R"(a/b\)", LFileName::DeleteFileName(R"(a/b\c.x)"));
    EXPECT_EQ(R"(a\b/)", LFileName::DeleteFileName(R"(a\b/c.x)"));
    EXPECT_EQ("a/", LFileName::DeleteFileName("a/"));
    EXPECT_EQ("/", LFileName::DeleteFileName("/a"));
}

TEST(LFileName, DeleteFileNameIsEmptyWithoutASeparator)
{
    EXPECT_EQ("", LFileName::DeleteFileName("c.x"));
    EXPECT_EQ("", LFileName::DeleteFileName(""));
}

TEST(LFileName, DeleteExceptFileNameEndsBeforeTheLastSeparator)
{
    EXPECT_EQ("a/b", LFileName::DeleteExceptFileName(R"(a/b\c.x)"));
    EXPECT_EQ(R"(a\b)", LFileName::DeleteExceptFileName(R"(a\b/c.x)"));
    EXPECT_EQ("", LFileName::DeleteExceptFileName("/a"));
}

TEST(LFileName, DeleteExceptFileNameIsEmptyWithoutASeparator)
{
    EXPECT_EQ("", LFileName::DeleteExceptFileName("c.x"));
    EXPECT_EQ("", LFileName::DeleteExceptFileName(""));
}

TEST(LFileName, DeleteDirGivesTheFileName)
{
    EXPECT_EQ("c.x", LFileName::DeleteDir(R"(a/b\c.x)"));
    EXPECT_EQ("c.x", LFileName::DeleteDir(R"(a\b/c.x)"));
    EXPECT_EQ("", LFileName::DeleteDir("a/"));
}

TEST(LFileName, DeleteDirLeavesAPathWithoutASeparator)
{
    EXPECT_EQ("c.x", LFileName::DeleteDir("c.x"));
    EXPECT_EQ("", LFileName::DeleteDir(""));
}

TEST(LFileName, GetFirstDirEndsBeforeTheFirstSeparator)
{
    EXPECT_EQ("a", LFileName::GetFirstDir(R"(a/b\c.x)"));
    EXPECT_EQ("a", LFileName::GetFirstDir(R"(a\b/c.x)"));
    EXPECT_EQ("", LFileName::GetFirstDir("/a/b"));
}

TEST(LFileName, GetFirstDirIsEmptyWithoutASeparator)
{
    EXPECT_EQ("", LFileName::GetFirstDir("c.x"));
    EXPECT_EQ("", LFileName::GetFirstDir(""));
}

TEST(LFileName, DeleteFirstDirStartsAfterTheFirstSeparator)
{
    EXPECT_EQ(R"(b\c.x)", LFileName::DeleteFirstDir(R"(a/b\c.x)"));
    EXPECT_EQ("b/c.x", LFileName::DeleteFirstDir(R"(a\b/c.x)"));
    EXPECT_EQ("/a", LFileName::DeleteFirstDir("//a"));
}

TEST(LFileName, DeleteFirstDirLeavesAPathWithoutASeparator)
{
    EXPECT_EQ("c.x", LFileName::DeleteFirstDir("c.x"));
    EXPECT_EQ("", LFileName::DeleteFirstDir(""));
}

TEST(LFileName, DeletePunctRemovesOneSeparatorFromTheEnd)
{
    EXPECT_EQ("a", LFileName::DeletePunct("a/"));
    EXPECT_EQ("a", LFileName::DeletePunct(R"(a\)"));
    EXPECT_EQ("a/", LFileName::DeletePunct(R"(a/\)"));
    EXPECT_EQ("", LFileName::DeletePunct("/"));
}

TEST(LFileName, DeletePunctLeavesAPathWithoutASeparatorAtItsEnd)
{
    EXPECT_EQ("a/b", LFileName::DeletePunct("a/b"));
    EXPECT_EQ("", LFileName::DeletePunct(""));
}

TEST(LFileName, DeletePunctDoesNotSpareTheRootOfADrive)
{
    EXPECT_EQ("C:", LFileName::DeletePunct(R"(C:\)"));
}

TEST(LFileName, AddPunctAppendsASlash)
{
    EXPECT_EQ(R"(a\b/)", LFileName::AddPunct(R"(a\b)"));
}

TEST(LFileName, AddPunctLeavesAPathThatEndsInASeparator)
{
    EXPECT_EQ("a/", LFileName::AddPunct("a/"));
    EXPECT_EQ(R"(a\)", LFileName::AddPunct(R"(a\)"));
}

TEST(LFileName, AddPunctOfAnEmptyPathIsASlash)
{
    EXPECT_EQ("/", LFileName::AddPunct(""));
}

TEST(LFileName, ParentEndsBeforeTheLastSeparator)
{
    EXPECT_EQ("a/b", LFileName::GetParent(R"(a/b\c.x)"));
    EXPECT_EQ("a/b", LFileName::GetParent("a/b/"));
    EXPECT_EQ("a/", LFileName::GetParent("a//b"));
    EXPECT_EQ("C:", LFileName::GetParent(R"(C:\a)"));
    EXPECT_EQ("", LFileName::GetParent("/a"));
}

TEST(LFileName, ParentIsEmptyWithoutASeparator)
{
    EXPECT_EQ("", LFileName::GetParent("c.x"));
    EXPECT_EQ("", LFileName::GetParent(""));
}

TEST(LFileName, ToLowerChangesTheLettersAToZAlone)
{
    for (int byte = 0; byte <= 255; ++byte)
    {
        const char character = static_cast<char>(byte);
        const bool isUpper = 'A' <= byte && byte <= 'Z';
        std::string expected{isUpper ? static_cast<char>(byte + 32) : character};
        if (IsLeadByte(character))
            expected += '\0';
        EXPECT_EQ(expected, LFileName::ToLower(std::string{character})) << byte;
    }
}

TEST(LFileName, ToLowerKeepsTheByteAfterALeadByteAlone)
{
    for (int byte = 0; byte <= 255; ++byte)
    {
        const char character = static_cast<char>(byte);
        const std::string text{'a', character, 'B', 'C'};
        const bool isLead = IsLeadByte(character);
        const std::string end = LFileName::ToLower(text).substr(2);
        EXPECT_EQ(isLead ? "Bc" : "bc", end) << byte;
    }
}

TEST(LFileName, ToLowerAddsAZeroByteAfterALeadByteThatEndsThePath)
{
    EXPECT_EQ("ab\x81\0"s, LFileName::ToLower("AB\x81"));
    EXPECT_EQ("\x81\x81", LFileName::ToLower("\x81\x81"));
    EXPECT_EQ("\x81\x81\xEF\0"s, LFileName::ToLower("\x81\x81\xEF"));
}

TEST(LFileName, TrailByteIsNoSeparatorAtTheEnd)
{
    EXPECT_EQ("a" + TwoByteCharacter, LFileName::DeletePunct("a" + TwoByteCharacter));
    EXPECT_EQ("a" + TwoByteCharacter + "/", LFileName::AddPunct("a" + TwoByteCharacter));
}

TEST(LFileName, TrailByteIsNoSeparatorInside)
{
    const std::string name = TwoByteCharacter + "b";
    EXPECT_EQ("a/", LFileName::DeleteFileName("a/" + name));
    EXPECT_EQ("a", LFileName::DeleteExceptFileName("a/" + name));
    EXPECT_EQ(name, LFileName::DeleteDir("a/" + name));
    EXPECT_EQ(name, LFileName::GetFirstDir(name + "/a"));
    EXPECT_EQ("a", LFileName::DeleteFirstDir(name + "/a"));
    EXPECT_EQ("a", LFileName::GetParent("a/" + name));
}

TEST(LFileName, TrailByteIsNoDot)
{
    const std::string path = "a.b\x81.c";
    EXPECT_EQ("b\x81.c", LFileName::GetExtension(path));
    EXPECT_EQ("a", LFileName::DeleteExtension(path));
    EXPECT_EQ("a.x", LFileName::ChangeExtension(path, "x"));
}

TEST(LFileName, OnlyALeadByteHidesTheByteAfterIt)
{
    for (int byte = 0; byte <= 255; ++byte)
    {
        const char character = static_cast<char>(byte);
        const bool isHidden = IsLeadByte(character);
        const std::string start{'a', character};
        EXPECT_EQ(isHidden ? start + "\\" : start, LFileName::DeletePunct(start + "\\")) << byte;
        EXPECT_EQ(isHidden ? start + ".X" : start, LFileName::DeleteExtension(start + ".X"))
            << byte;
    }
}

TEST(LFileName, LastSeparatorIsFoundCharacterByCharacter)
{
    for (const std::string& path : ShortPaths)
    {
        const SCut cut = CutAt("\\/", path, true);
        EXPECT_EQ(cut.isFound ? cut.before + cut.at : "", LFileName::DeleteFileName(path)) << path;
        EXPECT_EQ(cut.isFound ? cut.before : "", LFileName::DeleteExceptFileName(path)) << path;
        EXPECT_EQ(cut.isFound ? cut.after : path, LFileName::DeleteDir(path)) << path;
        const bool isAtEnd = cut.isFound && cut.after.empty();
        EXPECT_EQ(isAtEnd ? cut.before : path, LFileName::DeletePunct(path)) << path;
        EXPECT_EQ(isAtEnd ? path : path + "/", LFileName::AddPunct(path)) << path;
        EXPECT_EQ(cut.isFound ? cut.before : "", LFileName::GetParent(path)) << path;
    }
}

TEST(LFileName, FirstSeparatorIsFoundCharacterByCharacter)
{
    for (const std::string& path : ShortPaths)
    {
        const SCut cut = CutAt("\\/", path, false);
        EXPECT_EQ(cut.isFound ? cut.before : "", LFileName::GetFirstDir(path)) << path;
        EXPECT_EQ(cut.isFound ? cut.after : path, LFileName::DeleteFirstDir(path)) << path;
    }
}

TEST(LFileName, LastDotIsFoundCharacterByCharacter)
{
    for (const std::string& path : ShortPaths)
    {
        const SCut cut = CutAt(".", path, true);
        EXPECT_EQ(LFileName::ToLower(cut.after), LFileName::GetExtension(path)) << path;
        EXPECT_EQ(cut.isFound ? cut.before : path, LFileName::DeleteExtension(path)) << path;
        EXPECT_EQ((cut.isFound ? cut.before : path) + ".x", LFileName::ChangeExtension(path, "x"))
            << path;
    }
}
