#include <algorithm>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "Reliability/Program.h"

namespace
{

/// The object files and archives of this project's own code that the program is linked from.
const std::vector<std::string> OwnCode = {ZEK_OWN_CODE};

/// What an archive has for other programs: its name, and one of its functions.
const std::string NotLinked = "(SystemFiles";
const std::string NotLinkedFunction = "GetPathStatus";

/// Reads the headers of built files with readelf.
class HardeningTest : public testing::Test
{
protected:
    void SetUp() override
    {
#ifdef ZEK_IS_SANITIZED
        GTEST_SKIP() << "a sanitized build has checks of its own in the place of these";
#endif
        if (testsupport::RunProgram({"readelf", "--version"}).exitStatus != 0)
            GTEST_SKIP() << "readelf is missing";
    }

    /// What readelf prints for an option, line by line.
    static std::vector<std::string>
    ReadElf(const std::string& option, const std::vector<std::string>& files)
    {
        std::vector<std::string> words = {"readelf", "--wide", option};
        words.insert(words.end(), files.begin(), files.end());
        std::istringstream output(testsupport::RunProgram(words).output);
        std::vector<std::string> lines;
        for (std::string line; std::getline(output, line);)
            lines.push_back(line);
        return lines;
    }

    static long Count(const std::vector<std::string>& lines, const std::string& text)
    {
        return std::count_if(
            lines.begin(), lines.end(),
            [&](const std::string& line) { return line.find(text) != std::string::npos; });
    }

    /// The functions and variables that the project's own code takes from elsewhere.
    static std::set<std::string> GetNeededSymbols()
    {
        std::set<std::string> names;
        bool isLinked = true;
        for (const std::string& line : ReadElf("--symbols", OwnCode))
        {
            if (line.find("File: ") == 0)
                isLinked = line.find(NotLinked) == std::string::npos;
            if (isLinked && line.find(" UND ") != std::string::npos)
                names.insert(line.substr(line.rfind(' ') + 1));
        }
        return names;
    }
};

} // namespace

TEST_F(HardeningTest, TheProgramIsPositionIndependentAllOfIt)
{
    EXPECT_EQ(Count(ReadElf("--file-header", {ProgramPath}), "DYN"), 1);
    EXPECT_EQ(Count(ReadElf("--dynamic", {ProgramPath}), "(TEXTREL)"), 0);
}

TEST_F(HardeningTest, TheProgramsTablesOfAddressesAreReadOnlyOnceItRuns)
{
    EXPECT_EQ(Count(ReadElf("--program-headers", {ProgramPath}), "  GNU_RELRO "), 1);
    EXPECT_EQ(Count(ReadElf("--dynamic", {ProgramPath}), "BIND_NOW"), 1);
}

TEST_F(HardeningTest, NoMemoryOfTheProgramIsBothWritableAndExecutable)
{
    const std::vector<std::string> headers = ReadElf("--program-headers", {ProgramPath});
    EXPECT_EQ(Count(headers, "  GNU_STACK "), 1);
    EXPECT_EQ(Count(headers, " RWE "), 0);
}

TEST_F(HardeningTest, NoConstantsOfTheProgramAreExecutable)
{
    const std::vector<std::string> headers = ReadElf("--program-headers", {ProgramPath});
    long codeCount = 0;
    for (const std::string& line : headers)
    {
        if (line.find(" .text ") == std::string::npos)
            continue;
        ++codeCount;
        EXPECT_EQ(line.find(" .rodata "), std::string::npos) << line;
    }
    EXPECT_EQ(codeCount, 1);
}

// In the program itself these names would prove nothing: a static C library brings them along.
TEST_F(HardeningTest, TheProgramsOwnCodeHasStackProtectorAndFortifiedCalls)
{
    const std::set<std::string> needed = GetNeededSymbols();
    EXPECT_EQ(needed.count("__stack_chk_fail"), 1u);
    EXPECT_EQ(needed.count("__vsnprintf_chk"), 1u);
    EXPECT_EQ(needed.count("vsnprintf"), 0u);
}

// The linker drops the mark from the program when one of its inputs lacks it, as the object files
// of a C library do that was not built for it. The project's own code must not be the reason.
TEST_F(HardeningTest, TheProgramsOwnCodeHasControlFlowProtection)
{
#if !defined(__x86_64__) && !defined(__i386__)
    GTEST_SKIP() << "the mark is one of x86";
#endif
    const std::vector<std::string> notes = ReadElf("--notes", OwnCode);
    const long objectCount = Count(ReadElf("--file-header", OwnCode), "ELF Header:");
    EXPECT_GT(objectCount, 10);
    EXPECT_EQ(Count(notes, "IBT, SHSTK"), objectCount);
    const bool isMarked = Count(ReadElf("--notes", {ProgramPath}), "IBT, SHSTK") > 0;
    std::printf("the linked program is %s\n", isMarked ? "marked too" : "not marked");
}

TEST_F(HardeningTest, TheProgramsOwnCodeReachesForNoEnvironmentNetworkProcessOrNamesOfFiles)
{
    const std::vector<std::string> linked = ReadElf("--symbols", {ProgramPath});
    EXPECT_GT(Count(linked, "ReadBuffer"), 0);
    EXPECT_EQ(Count(linked, NotLinkedFunction), 0);
    EXPECT_GT(Count(ReadElf("--symbols", OwnCode), NotLinkedFunction), 0);

    const std::set<std::string> needed = GetNeededSymbols();
    EXPECT_EQ(needed.count("fopen64"), 1u);
    for (const char* name :
         {"getenv",   "secure_getenv", "environ", "__environ", "setenv",      "putenv", "setlocale",
          "socket",   "connect",       "bind",    "sendto",    "getaddrinfo", "system", "popen",
          "fork",     "vfork",         "execve",  "execvp",    "posix_spawn", "dlopen", "remove",
          "unlink",   "rename",        "mkdir",   "rmdir",     "chmod",       "chown",  "creat",
          "truncate", "ftruncate",     "symlink", "link",      "tmpfile",     "mkstemp"})
        EXPECT_EQ(needed.count(name), 0u) << name;
}
