#include <algorithm>
#include <chrono>
#include <csignal>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"
#include "Support/RunProgram.h"

using testsupport::Bytes;
using testsupport::CModelBuilder;
using testsupport::CTemporaryFolder;
using testsupport::FolderContents;
using testsupport::SProgramResult;

namespace
{

/// A system call of a run: its name, and which of its name it is, from 1.
struct SCall
{
    std::string name;
    int ordinal;
    std::string line; ///< as strace prints it
};

Bytes MakeModel()
{
    testsupport::SModel model = testsupport::MakeFullModel(26);
    for (testsupport::STexture& texture : model.textures)
        texture.flags = {9, 9, 9, 9};
    return CModelBuilder::Build(model).GetImage();
}

/// Runs the marker under strace on a model in a folder of its own, again and again, with a call
/// failing or the program being killed at it.
class MarkSystemCallTest : public testing::Test
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

    /// Puts the model into the folder, and runs with these words on it. An injection is what
    /// strace's option -e inject takes.
    SProgramResult Trace(const std::string& injection = "")
    {
        for (const auto& [name, bytes] : m_Folder.GetContents())
            m_Folder.Remove(name);
        m_Folder.Write("tex_dxt/000.dds", "");
        m_Folder.Write("model.zek", m_Model);
        if (!m_Output.empty())
            m_Folder.Write(m_Output, "old");
        std::this_thread::sleep_for(std::chrono::milliseconds(25)); // or it would wait itself

        std::vector<std::string> words = {"strace", "-f", "-qq", "-o", m_Log.GetPath("calls")};
        if (!injection.empty())
            words.insert(words.end(), {"-e", "inject=" + injection});
        words.push_back(ZEK_MARK_MODELS);
        if (!m_Output.empty())
            words.insert(words.end(), {"-o", m_Folder.GetPath(m_Output)});
        words.insert(words.end(), m_Options.begin(), m_Options.end());
        words.push_back(m_Folder.GetPath("model.zek"));
        return testsupport::RunProgram(words);
    }

    /// The calls of the last run from opening the model on. Those before are the C library's.
    std::vector<SCall> GetCalls() const
    {
        const Bytes log = m_Log.Read("calls");
        std::istringstream lines(std::string(log.begin(), log.end()));
        std::vector<SCall> calls;
        std::map<std::string, int> ordinals;
        bool hasBegun = false;
        for (std::string line; std::getline(lines, line);)
        {
            const std::size_t start = line.find_first_not_of("0123456789 ");
            const std::size_t parenthesis = line.find('(');
            if (parenthesis == std::string::npos)
                continue;
            const std::string name = line.substr(start, parenthesis - start);
            const int ordinal = ++ordinals[name];
            hasBegun = hasBegun || line.find("model.zek\", O_RDONLY") != std::string::npos;
            if (hasBegun && name != "exit_group")
                calls.push_back({name, ordinal, line});
        }
        return calls;
    }

    /// Expects of the file that is written that each byte is the old or one that a mark may be,
    /// and of the others that they are as they were.
    void ExpectWholeFiles(bool mayLeaveTemporary)
    {
        FolderContents contents = m_Folder.GetContents();
        const Bytes old = m_Output.empty() ? m_Model : Bytes{'o', 'l', 'd'};
        const std::string name = m_Output.empty() ? "model.zek" : m_Output;
        const Bytes written = contents[name];
        EXPECT_TRUE(written == old || IsMarked(written));
        if (!m_Output.empty())
        {
            EXPECT_EQ(contents["model.zek"], m_Model);
        }
        contents.erase(name);
        contents.erase("model.zek");
        contents.erase("tex_dxt/000.dds");
        EXPECT_TRUE(mayLeaveTemporary || contents.empty()) << contents.begin()->first;
    }

    bool IsMarked(const Bytes& bytes) const
    {
        if (bytes.size() != m_Model.size())
            return false;
        const CModelBuilder builder = CModelBuilder::Build(testsupport::MakeFullModel(26));
        std::vector<std::size_t> marks = {builder.GetOffset("processedMarker")};
        for (const auto& offsets :
             {builder.GetTextureFlagOffsets(), builder.GetProbeFlagOffsets(),
              builder.GetLightmapFlagOffsets()})
        {
            for (std::size_t offset : offsets)
                marks.insert(marks.end(), {offset, offset + 1, offset + 2, offset + 3});
        }
        for (std::size_t i = 0; i < bytes.size(); ++i)
        {
            const bool mayDiffer =
                bytes[i] <= 1 && std::find(marks.begin(), marks.end(), i) != marks.end();
            if (bytes[i] != m_Model[i] && !mayDiffer)
                return false;
        }
        return true;
    }

    void TestFaultsOfEveryCall();
    void TestKillAtEveryCall();

    const Bytes m_Model = MakeModel();
    std::string m_Output; // name of a file to write instead of the model; or empty
    CTemporaryFolder m_Folder;
    CTemporaryFolder m_Log;
    std::vector<std::string> m_Options; // more of them
};

void MarkSystemCallTest::TestFaultsOfEveryCall()
{
    ASSERT_EQ(Trace().exitStatus, 0);
    const FolderContents expected = m_Folder.GetContents();
    int failedCount = 0;
    for (const SCall& call : GetCalls())
    {
        for (const char* fault : {":error=EIO", ":error=ENOSPC", ":error=EINTR"})
        {
            SCOPED_TRACE(call.line + fault);
            const SProgramResult result =
                Trace(call.name + fault + ":when=" + std::to_string(call.ordinal));
            // The removal itself may be what fails.
            ExpectWholeFiles(call.name == "unlink" || call.name == "close");
            // A variant that cannot be opened counts as absent.
            const bool isOpening = call.name == "openat";
            const bool isPrinting = call.line.find("done") != std::string::npos;
            if (result.exitStatus == 0 && !isOpening)
            {
                EXPECT_EQ(m_Folder.GetContents(), expected);
            }
            if (result.exitStatus != 0 && !isPrinting)
            {
                EXPECT_EQ(result.exitStatus, 1);
                EXPECT_EQ(result.output.find(m_Folder.GetPath("model.zek") + ": "), 0u);
                ++failedCount;
            }
        }
    }
    EXPECT_GE(failedCount, 3); // opening, reading and writing the model
}

void MarkSystemCallTest::TestKillAtEveryCall()
{
    ASSERT_EQ(Trace().exitStatus, 0);
    const std::vector<SCall> calls = GetCalls();
    EXPECT_GE(calls.size(), 20u);
    for (const SCall& call : calls)
    {
        SCOPED_TRACE(call.line);
        const SProgramResult result =
            Trace(call.name + ":signal=KILL:when=" + std::to_string(call.ordinal));
        EXPECT_EQ(result.signal, SIGKILL);
        ExpectWholeFiles(true);
    }
}

} // namespace

TEST_F(MarkSystemCallTest, AnyCallMayFailInPlace)
{
    TestFaultsOfEveryCall();
}

TEST_F(MarkSystemCallTest, AnyCallMayFailForAnOutput)
{
    m_Output = "out.zek";
    TestFaultsOfEveryCall();
}

TEST_F(MarkSystemCallTest, KilledAtAnyCallItLeavesAWholeModel)
{
    TestKillAtEveryCall();
}

TEST_F(MarkSystemCallTest, KilledAtAnyCallItLeavesAWholeOutputOrTheOldOne)
{
    m_Output = "out.zek";
    TestKillAtEveryCall();
}

TEST_F(MarkSystemCallTest, OnlyBytesThatDifferAreWritten)
{
    ASSERT_EQ(Trace().exitStatus, 0);
    int byteCount = 0;
    for (const SCall& call : GetCalls())
    {
        EXPECT_EQ(call.line.find("O_TRUNC"), std::string::npos) << call.line;
        if (call.name == "pwrite64")
            byteCount += std::stoi(call.line.substr(call.line.rfind('=') + 1));
    }
    const Bytes marked = m_Folder.Read("model.zek");
    int differenceCount = 0;
    for (std::size_t i = 0; i < marked.size(); ++i)
        differenceCount += marked[i] != m_Model[i] ? 1 : 0;
    EXPECT_EQ(byteCount, differenceCount);
    EXPECT_GT(byteCount, 4);
}

TEST_F(MarkSystemCallTest, AnyCallMayFailWhenADepfileIsWritten)
{
    m_Options = {"--always", "--depfile", m_Log.GetPath("depfile")};
    TestFaultsOfEveryCall();
}

TEST_F(MarkSystemCallTest, AnyCallMayBeTheLastWhenADepfileIsWritten)
{
    m_Options = {"--always", "--depfile", m_Log.GetPath("depfile")};
    TestKillAtEveryCall();
}
