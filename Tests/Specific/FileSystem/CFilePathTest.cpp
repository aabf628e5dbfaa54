#include "Specific/FileSystem/CFilePath.h"

#include <limits>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "Support/LeadByte.h"

using filesystem::CFilePath;
using testsupport::IsLeadByte;

namespace
{

/// One character of two bytes, the second of which equals the backslash.
const std::string TwoByteCharacter = "\x95\x5C";

CFilePath MakePath(const std::string& path)
{
    CFilePath filePath;
    filePath.AddFileName(path);
    return filePath;
}

std::string WithSeparator(const std::string& path)
{
    CFilePath filePath = MakePath(path);
    filePath.AddSeparator();
    return filePath.GetString();
}

std::string WithoutSeparator(const std::string& path)
{
    CFilePath filePath = MakePath(path);
    filePath.DeleteSeparator();
    return filePath.GetString();
}

std::string Extend(const std::string& path, const std::string& name)
{
    CFilePath filePath = MakePath(path);
    filePath.AddFolderName(name);
    return filePath.GetString();
}

std::string BaseOfRoot(const std::string& root)
{
    CFilePath::SetRootFolderPath(root);
    CFilePath filePath = MakePath("before");
    filePath.SetBaseFolderPath();
    CFilePath::SetRootFolderPath("");
    return filePath.GetString();
}

} // namespace

static_assert(std::has_virtual_destructor_v<CFilePath>);
static_assert(std::is_copy_constructible_v<CFilePath>);
static_assert(std::is_copy_assignable_v<CFilePath>);
static_assert(std::is_nothrow_move_constructible_v<CFilePath>);
static_assert(std::is_nothrow_move_assignable_v<CFilePath>);

// The first test of the file: all others leave the root as they found it.
TEST(CFilePath, RootFolderIsEmptyAtProgramStart)
{
    CFilePath path = MakePath("before");
    path.SetBaseFolderPath();
    EXPECT_EQ("", path.GetString());
}

TEST(CFilePath, StartsEmpty)
{
    const CFilePath path;
    EXPECT_EQ("", path.GetString());
    EXPECT_STREQ("", path.c_str());
}

TEST(CFilePath, RootFolderIsSharedByAllObjects)
{
    CFilePath first;
    CFilePath second;
    CFilePath::SetRootFolderPath(R"(C:\Game)");
    first.SetBaseFolderPath();
    second.SetBaseFolderPath();
    CFilePath::SetRootFolderPath("");
    EXPECT_EQ(R"(C:\Game)", first.GetString());
    EXPECT_EQ(R"(C:\Game)", second.GetString());
}

TEST(CFilePath, SetBaseFolderPathTakesTheRootWithoutItsSeparator)
{
    EXPECT_EQ(R"(C:\Game)", BaseOfRoot(R"(C:\Game)"));
    EXPECT_EQ(R"(C:\Game)", BaseOfRoot(R"(C:\Game\)"));
    EXPECT_EQ(R"(C:\)", BaseOfRoot(R"(C:\)"));
    EXPECT_EQ("", BaseOfRoot(""));
}

TEST(CFilePath, SetBaseFolderPathLeavesTheRootAsItIs)
{
    CFilePath::SetRootFolderPath(R"(a\\)");
    CFilePath first;
    first.SetBaseFolderPath();
    CFilePath second;
    second.SetBaseFolderPath();
    CFilePath::SetRootFolderPath("");
    EXPECT_EQ(R"(a\)", first.GetString());
    EXPECT_EQ(R"(a\)", second.GetString());
}

TEST(CFilePath, SetExeFilePathOnlyDeletesTheSeparator)
{
    CFilePath path = MakePath(R"(C:\a\)");
    path.SetExeFilePath();
    EXPECT_EQ(R"(C:\a)", path.GetString());
    path.SetExeFilePath();
    EXPECT_EQ(R"(C:\a)", path.GetString());
    CFilePath root = MakePath(R"(C:\)");
    root.SetExeFilePath();
    EXPECT_EQ(R"(C:\)", root.GetString());
}

TEST(CFilePath, SetTemporaryFolderPathOnlyDeletesTheSeparator)
{
    CFilePath path = MakePath(R"(C:\a\)");
    path.SetTemporaryFolderPath();
    EXPECT_EQ(R"(C:\a)", path.GetString());
    path.SetTemporaryFolderPath();
    EXPECT_EQ(R"(C:\a)", path.GetString());
    CFilePath root = MakePath(R"(C:\)");
    root.SetTemporaryFolderPath();
    EXPECT_EQ(R"(C:\)", root.GetString());
}

TEST(CFilePath, SetPersonalFolderPathDoesNothing)
{
    CFilePath path = MakePath(R"(C:\a\)");
    path.SetPersonalFolderPath();
    EXPECT_EQ(R"(C:\a\)", path.GetString());
}

TEST(CFilePath, SetAppDataFolderPathDoesNothing)
{
    CFilePath path = MakePath(R"(C:\a\)");
    path.SetAppDataFolderPath();
    EXPECT_EQ(R"(C:\a\)", path.GetString());
}

TEST(CFilePath, AddSeparatorLeavesAnEmptyPathEmpty)
{
    CFilePath path;
    path.AddSeparator();
    EXPECT_EQ("", path.GetString());
}

TEST(CFilePath, AddSeparatorAppendsOneBackslash)
{
    EXPECT_EQ(R"(a\)", WithSeparator("a"));
    EXPECT_EQ(R"(C:\)", WithSeparator("C:"));
    EXPECT_EQ(R"(a\b\)", WithSeparator(R"(a\b)"));
}

TEST(CFilePath, AddSeparatorLeavesAPathThatEndsInABackslash)
{
    EXPECT_EQ(R"(a\)", WithSeparator(R"(a\)"));
    EXPECT_EQ(R"(\)", WithSeparator(R"(\)"));
    EXPECT_EQ(R"(a\\)", WithSeparator(R"(a\\)"));
}

TEST(CFilePath, AddSeparatorTakesASlashForAnOrdinaryCharacter)
{
    EXPECT_EQ(R"(a/\)", WithSeparator("a/"));
}

TEST(CFilePath, AddSeparatorDoesNotTakeATrailByteForASeparator)
{
    EXPECT_EQ("a" + TwoByteCharacter + R"(\)", WithSeparator("a" + TwoByteCharacter));
    EXPECT_EQ(R"(a\)" + TwoByteCharacter + R"(\)", WithSeparator(R"(a\)" + TwoByteCharacter));
}

TEST(CFilePath, AddSeparatorSeesABackslashAfterATwoByteCharacter)
{
    EXPECT_EQ(TwoByteCharacter + R"(\)", WithSeparator(TwoByteCharacter + R"(\)"));
}

TEST(CFilePath, AddSeparatorAppendsAfterALeadByteThatEndsThePath)
{
    EXPECT_EQ("a\\\x81\\", WithSeparator("a\\\x81"));
}

TEST(CFilePath, DeleteSeparatorLeavesTheRootOfADrive)
{
    EXPECT_EQ(R"(C:\)", WithoutSeparator(R"(C:\)"));
    EXPECT_EQ(R"(z:\)", WithoutSeparator(R"(z:\)"));
}

TEST(CFilePath, OnlyAnAsciiLetterNamesADrive)
{
    for (int byte = 1; byte <= 255; ++byte)
    {
        const bool isLetter = ('A' <= byte && byte <= 'Z') || ('a' <= byte && byte <= 'z');
        const std::string start = static_cast<char>(byte) + std::string(":");
        EXPECT_EQ(isLetter ? start + "\\" : start, WithoutSeparator(start + "\\")) << byte;
    }
}

TEST(CFilePath, OnlyThreeCharactersAreTheRootOfADrive)
{
    EXPECT_EQ("CC:", WithoutSeparator(R"(CC:\)"));
    EXPECT_EQ(R"(C:\)", WithoutSeparator(R"(C:\\)"));
    EXPECT_EQ("C;", WithoutSeparator(R"(C;\)"));
    EXPECT_EQ("C", WithoutSeparator(R"(C\)"));
    EXPECT_EQ("C:/", WithoutSeparator("C:/"));
}

TEST(CFilePath, DeleteSeparatorRemovesOneBackslash)
{
    EXPECT_EQ(R"(C:\a)", WithoutSeparator(R"(C:\a\)"));
    EXPECT_EQ(R"(a\)", WithoutSeparator(R"(a\\)"));
    EXPECT_EQ("", WithoutSeparator(R"(\)"));
}

TEST(CFilePath, DeleteSeparatorLeavesAPathWithoutABackslashAtItsEnd)
{
    EXPECT_EQ("", WithoutSeparator(""));
    EXPECT_EQ(R"(a\b)", WithoutSeparator(R"(a\b)"));
    EXPECT_EQ("a/", WithoutSeparator("a/"));
}

TEST(CFilePath, DeleteSeparatorDoesNotTakeATrailByteForASeparator)
{
    EXPECT_EQ("a" + TwoByteCharacter, WithoutSeparator("a" + TwoByteCharacter));
    EXPECT_EQ(R"(a\)" + TwoByteCharacter, WithoutSeparator(R"(a\)" + TwoByteCharacter));
    EXPECT_EQ(TwoByteCharacter, WithoutSeparator(TwoByteCharacter + R"(\)"));
}

TEST(CFilePath, DeleteSeparatorLeavesALeadByteThatEndsThePath)
{
    EXPECT_EQ("a\\\x81", WithoutSeparator("a\\\x81"));
}

TEST(CFilePath, OnlyALeadByteHidesTheByteAfterIt)
{
    for (int byte = 0; byte <= 255; ++byte)
    {
        const bool isLead = IsLeadByte(static_cast<char>(byte));
        const std::string start = std::string("ab") + static_cast<char>(byte);
        const std::string path = start + "\\";
        EXPECT_EQ(isLead ? path : start, WithoutSeparator(path)) << byte;
        EXPECT_EQ(isLead ? path + "\\" : path, WithSeparator(path)) << byte;
        const std::size_t index = MakePath(path).GetLastSeparatorIndex();
        EXPECT_EQ(isLead ? std::string::npos : 3, index) << byte;
    }
}

TEST(CFilePath, AddFolderNameToAnEmptyPathIsTheName)
{
    EXPECT_EQ("x", Extend("", "x"));
}

TEST(CFilePath, AddFolderNameSeparatesTheNameByOneBackslash)
{
    EXPECT_EQ(R"(C:\x)", Extend("C:", "x"));
    EXPECT_EQ(R"(C:\x)", Extend(R"(C:\)", "x"));
    EXPECT_EQ(R"(a/\x)", Extend("a/", "x"));
    EXPECT_EQ(TwoByteCharacter + R"(\x)", Extend(TwoByteCharacter, "x"));
}

TEST(CFilePath, AddFolderNameAppendsTheNameAsItIs)
{
    EXPECT_EQ(R"(a\\x\)", Extend("a", R"(\x\)"));
    EXPECT_EQ(R"(a\)", Extend("a", ""));
}

TEST(CFilePath, AddFileNameDoesTheSameAsAddFolderName)
{
    CFilePath path;
    path.AddFileName("C:");
    path.AddFileName("a");
    path.AddSeparator();
    path.AddFileName("b.txt");
    EXPECT_EQ(R"(C:\a\b.txt)", path.GetString());
}

TEST(CFilePath, GetStringRefersToThePathItself)
{
    CFilePath path = MakePath("a");
    const std::string& text = path.GetString();
    path.AddFolderName("b");
    EXPECT_EQ(R"(a\b)", text);
}

TEST(CFilePath, CStrGivesThePathsCharacters)
{
    const CFilePath path = MakePath(R"(a\b)");
    EXPECT_STREQ(R"(a\b)", path.c_str());
}

TEST(CFilePath, LastSeparatorIndexIsThatOfTheLastBackslash)
{
    EXPECT_EQ(3u, MakePath(R"(a\b\c)").GetLastSeparatorIndex());
    EXPECT_EQ(0u, MakePath(R"(\a)").GetLastSeparatorIndex());
    EXPECT_EQ(1u, MakePath(R"(a\b/c)").GetLastSeparatorIndex());
    EXPECT_EQ(2u, MakePath(TwoByteCharacter + R"(\)" + TwoByteCharacter).GetLastSeparatorIndex());
}

TEST(CFilePath, LastSeparatorIndexIsAllOnesWithoutABackslash)
{
    constexpr std::size_t allOnes = std::numeric_limits<std::size_t>::max();
    EXPECT_EQ(allOnes, MakePath("a/b").GetLastSeparatorIndex());
    EXPECT_EQ(allOnes, MakePath("").GetLastSeparatorIndex());
    EXPECT_EQ(allOnes, MakePath(TwoByteCharacter).GetLastSeparatorIndex());
}

TEST(CFilePath, ParentPathEndsBeforeTheLastBackslash)
{
    EXPECT_EQ(R"(C:\a)", MakePath(R"(C:\a\b.txt)").GetParentPath());
    EXPECT_EQ(R"(a)", MakePath(R"(a\)").GetParentPath());
    EXPECT_EQ("", MakePath(R"(\a)").GetParentPath());
    EXPECT_EQ("a/b", MakePath(R"(a/b\c)").GetParentPath());
    EXPECT_EQ("a", MakePath(R"(a\)" + TwoByteCharacter + "b").GetParentPath());
}

TEST(CFilePath, ParentPathIsEmptyWithoutABackslash)
{
    EXPECT_EQ("", MakePath("a/b").GetParentPath());
    EXPECT_EQ("", MakePath("").GetParentPath());
}

TEST(CFilePath, ChildFileNameStandsAfterTheLastBackslash)
{
    EXPECT_EQ("b.txt", MakePath(R"(C:\a\b.txt)").GetChildFileName());
    EXPECT_EQ("", MakePath(R"(a\)").GetChildFileName());
    EXPECT_EQ("b/c", MakePath(R"(a\b/c)").GetChildFileName());
    EXPECT_EQ(
        TwoByteCharacter + "b", MakePath(R"(a\)" + TwoByteCharacter + "b").GetChildFileName());
}

TEST(CFilePath, ChildFileNameIsTheWholePathWithoutABackslash)
{
    EXPECT_EQ("a/b", MakePath("a/b").GetChildFileName());
    EXPECT_EQ("", MakePath("").GetChildFileName());
}
