#include <algorithm>
#include <csignal>
#include <map>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "Reliability/Program.h"
#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"

using testsupport::Bytes;
using testsupport::CTemporaryFolder;
using testsupport::FolderContents;
using testsupport::SProgramResult;

namespace
{

/// A system call as strace prints it, such as `close(3) = 0`.
using Call = std::string;

std::string GetName(const Call& call)
{
    return call.substr(0, call.find('('));
}

bool IsOpenToWrite(const Call& call)
{
    return GetName(call) == "openat" && call.find("O_RDONLY") == std::string::npos;
}

bool IsInjected(const Call& call)
{
    return call.find("(INJECTED)") != std::string::npos;
}

/// Tells whether a call was to open a path for reading.
bool IsReadOf(const Call& call, const std::string& path)
{
    return call.find("\"" + path + "\", O_RDONLY") != std::string::npos;
}

/// Tells whether a call opened a file for writing, which empties it.
bool HasEmptiedAFile(const Call& call)
{
    return IsOpenToWrite(call) && call.find(" = -1 ") == std::string::npos;
}

/// Runs the program under strace on a model in a folder of its own, with calls failing or the
/// program being killed where a test asks for it.
class SystemCallTest : public testing::Test
{
protected:
    void SetUp() override
    {
#ifdef ZEK_IS_SANITIZED
        GTEST_SKIP() << "a sanitized program makes calls of its own and does not bear tracing";
#endif
        if (testsupport::RunProgram({"strace", "-o", "/dev/null", "true"}).exitStatus != 0)
            GTEST_SKIP() << "strace is missing or may not trace here";
    }

    /// Puts the model into the folder and runs the program. An injection is what strace's option
    /// -e inject takes.
    void Trace(const Bytes& model, const std::string& injection = "")
    {
        m_Folder.Write("model.zek", model);
        std::vector<std::string> words = {"strace", "-o", m_Log.GetPath("calls")};
        if (!injection.empty())
            words.insert(words.end(), {"-e", "inject=" + injection});
        words.insert(words.end(), {ProgramPath, m_Path});
        m_Result = testsupport::RunProgram(words);

        const Bytes log = m_Log.Read("calls");
        std::istringstream lines(std::string(log.begin(), log.end()));
        m_Calls.clear();
        for (std::string line; std::getline(lines, line);)
        {
            if (line.find('(') != std::string::npos)
                m_Calls.push_back(line);
        }
    }

    /// Tells whether the last run did not come to opening the model. The calls before are those of
    /// the C library, which starts the program and may give up with a message of its own.
    bool HasOnlyStarted() const
    {
        return std::none_of(
            m_Calls.begin(), m_Calls.end(),
            [&](const Call& call) { return IsReadOf(call, m_Path); });
    }

    bool HasEmptiedTheModel() const
    {
        return std::any_of(m_Calls.begin(), m_Calls.end(), HasEmptiedAFile);
    }

    /// Injects a fault such as ":error=EIO" into the n-th call of a name, for n = 1, 2, ... until a
    /// run comes through without it, and checks how each run ends.
    void TestFault(const Bytes& model, const std::string& name, const std::string& fault);

    void TestFaultsOfEveryCall(const Bytes& model);
    void TestKillAtEveryCall(const Bytes& model);

    CTemporaryFolder m_Folder;
    CTemporaryFolder m_Log;
    const std::string m_Path = m_Folder.GetPath("model.zek");
    SProgramResult m_Result;
    std::vector<Call> m_Calls;
    int m_InjectionCount = 0;
    int m_ToleratedCount = 0; // injections that the run succeeded in spite of
};

void SystemCallTest::TestFault(
    const Bytes& model, const std::string& name, const std::string& fault)
{
    Trace(model);
    const FolderContents expected = m_Folder.GetContents();
    m_Folder.Write("model.zek", model);
    const FolderContents before = m_Folder.GetContents();

    for (int n = 1;; ++n)
    {
        const std::string injection = name + fault + ":when=" + std::to_string(n);
        SCOPED_TRACE(injection);
        Trace(model, injection);
        const FolderContents after = m_Folder.GetContents();
        if (std::none_of(m_Calls.begin(), m_Calls.end(), IsInjected))
        {
            EXPECT_TRUE(IsSuccess(m_Result));
            EXPECT_EQ(after, expected);
            return;
        }
        ++m_InjectionCount;

        // Some faults the C library makes up for, and what it prints of ours may be lost.
        if (m_Result.exitStatus == 0)
        {
            EXPECT_EQ(after, expected);
            ++m_ToleratedCount;
        }
        else if (HasOnlyStarted())
        {
            EXPECT_NE(m_Result.errors, "");
        }
        else
        {
            EXPECT_TRUE(IsError(m_Result, m_Path));
        }
        if (m_Result.exitStatus != 0 && !HasEmptiedTheModel())
        {
            EXPECT_EQ(after, before);
        }
    }
}

void SystemCallTest::TestFaultsOfEveryCall(const Bytes& model)
{
    Trace(model);
    ASSERT_TRUE(IsSuccess(m_Result));
    std::set<std::string> names;
    for (const Call& call : m_Calls)
        names.insert(GetName(call));
    names.erase("execve");     // is strace's own
    names.erase("exit_group"); // cannot fail
    names.erase("brk");        // fails by an answer that no fixed one can stand for

    for (const std::string& name : names)
        TestFault(model, name, ":error=EIO");
    TestFault(model, "openat", ":error=EMFILE");
    TestFault(model, "write", ":error=ENOSPC");
    for (const char* name : {"read", "write"})
    {
        TestFault(model, name, ":error=EINTR");
        TestFault(model, name, ":retval=0");
    }
    RecordProperty("injections", m_InjectionCount);
    RecordProperty("tolerated", m_ToleratedCount);
}

void SystemCallTest::TestKillAtEveryCall(const Bytes& model)
{
    m_Folder.Write("model.zek", model);
    const FolderContents before = m_Folder.GetContents();
    Trace(model);
    ASSERT_TRUE(IsSuccess(m_Result));
    const FolderContents expected = m_Folder.GetContents();

    const std::vector<Call> calls = m_Calls;
    std::map<std::string, int> ordinals;
    bool hasWriteBegun = false;
    bool isWritten = false;
    for (const Call& call : calls)
    {
        const std::string name = GetName(call);
        const int ordinal = ++ordinals[name];
        if (name == "execve")
            continue;

        SCOPED_TRACE(call);
        Trace(model, name + ":signal=KILL:when=" + std::to_string(ordinal));
        ASSERT_EQ(m_Result.signal, SIGKILL);
        if (!hasWriteBegun || isWritten)
        {
            ASSERT_EQ(m_Folder.GetContents(), isWritten ? expected : before);
        }
        ++m_InjectionCount;
        isWritten = isWritten || (hasWriteBegun && name == "close");
        hasWriteBegun = hasWriteBegun || HasEmptiedAFile(call);
    }
    EXPECT_TRUE(isWritten);
    RecordProperty("kills", m_InjectionCount);
}

/// A model too large for a file stream's buffer, whose records take memory from the system.
Bytes MakeModelOfMeshes()
{
    testsupport::SModel model = testsupport::MakeFullModel(25);
    model.meshes[0].vertexCount = 50000;
    return testsupport::CModelBuilder::Build(model).GetImage();
}

} // namespace

TEST_F(SystemCallTest, AnyCallMayFailOnAModelOfTextures)
{
    TestFaultsOfEveryCall(MakeSmallModel());
}

TEST_F(SystemCallTest, AnyCallMayFailOnAModelOfMeshes)
{
    TestFaultsOfEveryCall(MakeModelOfMeshes());
}

TEST_F(SystemCallTest, KilledBeforeTheWriteTheRunLeavesAModelOfTexturesUntouched)
{
    TestKillAtEveryCall(MakeSmallModel());
}

TEST_F(SystemCallTest, KilledBeforeTheWriteTheRunLeavesAModelOfMeshesUntouched)
{
    TestKillAtEveryCall(MakeModelOfMeshes());
}

TEST_F(SystemCallTest, AVariantThatCannotBeOpenedCountsAsAbsentAndOneThatCannotBeClosedAsPresent)
{
    m_Folder.Write("tex_pvrtc/000.pvr", "");
    const Bytes model = MakeSmallModel();
    constexpr const char* ofThePvrtcVariant = ":when=2"; // the first call is for the model

    Trace(model, std::string("openat:error=EMFILE") + ofThePvrtcVariant);
    EXPECT_TRUE(IsSuccess(m_Result));
    EXPECT_EQ(m_Result.output.find("ExistTextureCompression 0 0 0 0\n"), 0u);

    Trace(model, std::string("close:error=EIO") + ofThePvrtcVariant);
    EXPECT_TRUE(IsSuccess(m_Result));
    EXPECT_EQ(m_Result.output.find("ExistTextureCompression 1 0 0 0\n"), 0u);
}

TEST_F(SystemCallTest, OnlyTheModelIsOpenedToBeWrittenAndOnlyOnce)
{
    for (const Bytes& model : {MakeSmallModel(), MakeModelOfMeshes()})
    {
        Trace(model);
        std::vector<Call> opened;
        std::copy_if(m_Calls.begin(), m_Calls.end(), std::back_inserter(opened), IsOpenToWrite);
        ASSERT_EQ(opened.size(), 1u);
        EXPECT_NE(opened[0].find("\"" + m_Path + "\""), std::string::npos) << opened[0];
    }
}

// The name of a lightmap is taken from the file as it is, and may lead anywhere.
TEST_F(SystemCallTest, AVariantIsOnlyOpenedToBeReadWhereverItsNameLeads)
{
    testsupport::SModel model = testsupport::MakeFullModel(26);
    model.lightmaps[0].name = "../../outside.png";
    Trace(testsupport::CModelBuilder::Build(model).GetImage());
    EXPECT_TRUE(IsSuccess(m_Result));
    const std::string candidate = m_Folder.GetPath("tex_etc/../../outside.pvr");
    EXPECT_EQ(
        std::count_if(
            m_Calls.begin(), m_Calls.end(),
            [&](const Call& call) { return IsReadOf(call, candidate); }),
        1);
    EXPECT_EQ(std::count_if(m_Calls.begin(), m_Calls.end(), IsOpenToWrite), 1);
}

TEST_F(SystemCallTest, NoCallGoesToTheNetworkAnotherProcessOrTheNamesOfFiles)
{
    const std::set<std::string> calls = {
        // files and their bytes
        "openat", "newfstatat", "fstat", "statx", "lseek", "read", "pread64", "write", "close",
        // memory
        "brk", "mmap", "munmap", "mprotect", "madvise",
        // the C library's start and end
        "execve", "arch_prctl", "set_tid_address", "set_robust_list", "rseq", "prlimit64",
        "readlink", "readlinkat", "access", "faccessat", "getrandom", "exit_group"};
    for (const Bytes& model : {MakeSmallModel(), MakeModelOfMeshes()})
    {
        Trace(model);
        for (const Call& call : m_Calls)
            EXPECT_EQ(calls.count(GetName(call)), 1u) << call;
    }
}

TEST_F(SystemCallTest, AllFacesOfAProbeAreTriedAndFaceByFace)
{
    testsupport::SModel model;
    model.probes.resize(1);
    model.probes[0].name = "Hall";
    // Neither a face that is there nor one that is missing ends the search.
    m_Folder.Write("tex_reflection_cube_etc\\Hall\\reflection_cube_0.pvr", "");
    Trace(testsupport::CModelBuilder::Build(model).GetImage());
    ASSERT_TRUE(IsSuccess(m_Result));

    std::vector<Call> tried;
    for (const Call& call : m_Calls)
    {
        if (call.find("reflection_cube_") != std::string::npos)
            tried.push_back(call);
    }
    ASSERT_EQ(tried.size(), 24u);
    const std::string families[] = {"pvrtc", "etc", "astc", "dxt"};
    for (std::size_t i = 0; i < tried.size(); ++i)
    {
        // strace prints a backslash as two.
        const std::string path = m_Folder.GetPath("tex_reflection_cube_") + families[i % 4] +
                                 "\\\\Hall\\\\reflection_cube_" + std::to_string(i / 4) +
                                 (i % 4 == 3 ? ".dds" : ".pvr");
        EXPECT_TRUE(IsReadOf(tried[i], path)) << tried[i];
    }
}
