// The script that writes the table.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "Support/CTemporaryFolder.h"
#include "Support/RunProgram.h"

using namespace testsupport;

namespace
{

const std::string SourceFolder = ZEK_SOURCE_DIR;
const std::string TableFolder = "Source/Independent/CharacterCode/";
const std::string Script = "Scripts/generate-character-table.py";
const std::string Charmap = "/usr/share/i18n/charmaps/WINDOWS-31J.gz";

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

class GenerateCharacterTable : public testing::Test
{
protected:
    void SetUp() override
    {
        if (RunProgram({"python3", "--version"}).exitStatus != 0)
            GTEST_SKIP() << "no python3 here";
        if (!std::filesystem::exists(Charmap))
            GTEST_SKIP() << "no character map here (Debian: package locales)";
    }

    SProgramResult RunScript(const std::string& root, std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"python3", root + "/" + Script});
        return RunProgram(arguments);
    }

    /// The script in a folder of its own, with nothing for it to compare with.
    void CopyScript()
    {
        m_Folder.Write(Script, ReadFile(SourceFolder + "/" + Script));
        m_Folder.MakeFolder(TableFolder);
    }

    /// The character map with one text put for another.
    std::string MakeChangedCharmap(const std::string& from, const std::string& to)
    {
        std::string text = RunProgram({"gzip", "-dc", Charmap}).output;
        const std::size_t position = text.find(from);
        EXPECT_NE(std::string::npos, position) << from;
        m_Folder.Write("charmap", text.replace(position, from.size(), to));
        EXPECT_EQ(0, RunProgram({"gzip", m_Folder.GetPath("charmap")}).exitStatus);
        return m_Folder.GetPath("charmap.gz");
    }

    void ExpectRefusal(const std::string& charmap, const std::string& message)
    {
        const SProgramResult result = RunScript(m_Folder.GetPath(), {"--charmap", charmap});
        EXPECT_EQ(1, result.exitStatus);
        EXPECT_EQ("generate-character-table: " + message + "\n", result.errors);
        EXPECT_TRUE(std::filesystem::is_empty(m_Folder.GetPath(TableFolder)));
    }

    CTemporaryFolder m_Folder;
};

} // namespace

TEST_F(GenerateCharacterTable, CommittedTableIsAsGenerated)
{
    const SProgramResult result = RunScript(SourceFolder, {"--check"});
    EXPECT_EQ(0, result.exitStatus) << result.errors;
}

TEST_F(GenerateCharacterTable, CheckFailsForAChangedTable)
{
    CopyScript();
    ASSERT_EQ(0, RunScript(m_Folder.GetPath(), {}).exitStatus);
    ASSERT_EQ(0, RunScript(m_Folder.GetPath(), {"--check"}).exitStatus);

    const std::string name = TableFolder + "ShiftJISTable.h";
    m_Folder.Write(name, ReadFile(m_Folder.GetPath(name)) + "\n");
    const SProgramResult result = RunScript(m_Folder.GetPath(), {"--check"});
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_EQ("generate-character-table: not as generated: ShiftJISTable.h\n", result.errors);
}

TEST_F(GenerateCharacterTable, RefusesAMapWithAHole)
{
    CopyScript();
    ExpectRefusal(MakeChangedCharmap("<U4E00> ", "% "), "code ranges: 106, expected 105");
}

TEST_F(GenerateCharacterTable, RefusesAMapWithoutTheLastCode)
{
    CopyScript();
    ExpectRefusal(MakeChangedCharmap("<U9ED1>     /xfc/x4b", "%"), "codes: 7483, expected 7484");
}

TEST_F(GenerateCharacterTable, RefusesAMapThatIsNotMicrosofts)
{
    CopyScript();
    ExpectRefusal(
        MakeChangedCharmap("<UFF5E>     /x81/x60", "<U301C>     /x81/x60"),
        "character of 8160: 12316, expected 65374");
}

TEST_F(GenerateCharacterTable, NamesThePackageOfAMissingMap)
{
    CopyScript();
    ExpectRefusal("missing.gz", "missing.gz is missing (package locales)");
}
