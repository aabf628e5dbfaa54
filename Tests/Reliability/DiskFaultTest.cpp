#include <chrono>
#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Reliability/Program.h"
#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"
#include "Support/Variants.h"

using testsupport::Bytes;
using testsupport::CTemporaryFolder;
using testsupport::FolderContents;
using testsupport::SProgramResult;

namespace
{

constexpr int StatusOfTimeout = 124; // of timeout(1), when the time was up

/// A model that a file stream does not hold back.
Bytes MakeLargeModel()
{
    testsupport::SModel model = testsupport::MakeFullModel(25);
    model.tail.assign(1024 * 1024, 't');
    return testsupport::CModelBuilder::Build(model).GetImage();
}

/// Expects a run that finds no variant to count that before it fails.
void ExpectErrorInWriting(const SProgramResult& result, const std::string& model)
{
    const std::string counts =
        testsupport::NoTextures + testsupport::NoCubemaps + testsupport::NoLightmaps;
    EXPECT_TRUE(IsError(result, model));
    EXPECT_EQ(result.output, counts + "Error " + model + "\n");
}

class DiskFaultTest : public testing::Test
{
protected:
    /// The program fails on the model and leaves all files as they were.
    void ExpectErrorAndNothingChanged(const std::string& model)
    {
        SCOPED_TRACE(model);
        const FolderContents before = m_Folder.GetContents();
        EXPECT_TRUE(IsError(RunTool(model, m_Folder.GetPath()), model));
        EXPECT_EQ(m_Folder.GetContents(), before);
    }

    /// Runs the program as a user who has no right to anything that others have not. The program
    /// is copied to where that user can reach it.
    SProgramResult RunUnprivileged(const std::string& model)
    {
        if (geteuid() != 0)
            return RunTool(model);
        chmod(m_Folder.GetPath().c_str(), 0755);
        const std::string program = m_Folder.GetPath("program");
        std::filesystem::copy_file(
            ProgramPath, program, std::filesystem::copy_options::skip_existing);
        return BecomeNobody({program, model});
    }

    static bool CanRunUnprivileged()
    {
        return geteuid() != 0 || BecomeNobody({"true"}).exitStatus == 0;
    }

private:
    static SProgramResult BecomeNobody(const std::vector<std::string>& words)
    {
        std::vector<std::string> all = {
            "setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
        all.insert(all.end(), words.begin(), words.end());
        return testsupport::RunProgram(all);
    }

protected:
    CTemporaryFolder m_Folder;
};

} // namespace

TEST_F(DiskFaultTest, WhatCannotBeOpenedIsAnError)
{
    m_Folder.Write("file", "");
    ASSERT_EQ(symlink("nowhere", m_Folder.GetPath("dangling").c_str()), 0);
    ASSERT_EQ(symlink("loop", m_Folder.GetPath("loop").c_str()), 0);

    const std::string tooLongName(300, 'n');
    const std::string tooLongPath(5000, 'p');
    for (const std::string& model :
         {std::string("file/model.zek"), std::string("dangling"), std::string("loop"), tooLongName,
          tooLongPath})
        EXPECT_TRUE(IsError(RunTool(model, m_Folder.GetPath()), model));
}

TEST_F(DiskFaultTest, AModelWhoseSizeNeedsMoreThan32BitsIsAnErrorAndIsNotCutShort)
{
    for (std::uintmax_t lowBits : {std::uintmax_t{0}, std::uintmax_t{MakeSmallModel().size()}})
    {
        const std::uintmax_t size = (std::uintmax_t{1} << 32) + lowBits;
        m_Folder.Write("model.zek", MakeSmallModel());
        const std::filesystem::path path = m_Folder.GetPath("model.zek");
        std::error_code error;
        std::filesystem::resize_file(path, size, error);
        if (error)
            GTEST_SKIP() << "the file system holds no file of that size: " << error.message();
        const auto past = std::filesystem::last_write_time(path) - std::chrono::hours(1);
        std::filesystem::last_write_time(path, past);

        const SProgramResult result = RunTool(path);
        EXPECT_TRUE(IsError(result, path));
        EXPECT_EQ(result.output, "Error " + path.string() + "\n");
        EXPECT_LT(result.peakKilobytes, 256 * 1024);
        EXPECT_EQ(size, std::filesystem::file_size(path));
        EXPECT_EQ(past, std::filesystem::last_write_time(path));
    }
}

TEST_F(DiskFaultTest, ADeviceIsAnError)
{
    for (const char* model : {"/dev/null", "/dev/zero", "/dev/full", "/proc/self/stat"})
        ExpectErrorAndNothingChanged(model);
}

TEST_F(DiskFaultTest, AFifoWithAWriterIsAnErrorAndKeepsItsBytes)
{
    const std::string path = m_Folder.GetPath("fifo");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int fifo = open(path.c_str(), O_RDWR | O_NONBLOCK);
    const Bytes model = MakeSmallModel();
    ASSERT_EQ(write(fifo, model.data(), model.size()), static_cast<ssize_t>(model.size()));

    EXPECT_TRUE(IsError(RunTool(path), path));
    Bytes left(model.size());
    EXPECT_EQ(read(fifo, left.data(), left.size()), static_cast<ssize_t>(left.size()));
    EXPECT_TRUE(left == model);
    close(fifo);
}

// Opening is where the system waits, and there is nothing that the program could look at before.
TEST_F(DiskFaultTest, AFifoWithoutAWriterIsWaitedFor)
{
    const std::string path = m_Folder.GetPath("fifo");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const SProgramResult result = testsupport::RunProgram({"timeout", "0.2", ProgramPath, path});
    EXPECT_EQ(result.exitStatus, StatusOfTimeout);
    EXPECT_EQ(result.output, "");
}

TEST_F(DiskFaultTest, AFifoInThePlaceOfAVariantIsWaitedFor)
{
    m_Folder.Write("model.zek", MakeSmallModel());
    m_Folder.MakeFolder("tex_etc");
    ASSERT_EQ(mkfifo(m_Folder.GetPath("tex_etc/000.pvr").c_str(), 0600), 0);
    const SProgramResult result =
        testsupport::RunProgram({"timeout", "0.2", ProgramPath, m_Folder.GetPath("model.zek")});
    EXPECT_EQ(result.exitStatus, StatusOfTimeout);
    EXPECT_TRUE(m_Folder.Read("model.zek") == MakeSmallModel());
}

TEST_F(DiskFaultTest, AnUnreadableFileIsAnError)
{
    if (!CanRunUnprivileged())
        GTEST_SKIP() << "root may read and write everything, and setpriv is missing";
    m_Folder.Write("model.zek", MakeSmallModel());
    const std::string path = m_Folder.GetPath("model.zek");
    chmod(path.c_str(), 0);
    const SProgramResult result = RunUnprivileged(path);
    EXPECT_TRUE(IsError(result, path));
    EXPECT_EQ(result.output, "Error " + path + "\n");
    chmod(path.c_str(), 0600);
    EXPECT_TRUE(m_Folder.Read("model.zek") == MakeSmallModel());
}

TEST_F(DiskFaultTest, AReadOnlyFileIsAnErrorAndStaysAsItWas)
{
    if (!CanRunUnprivileged())
        GTEST_SKIP() << "root may read and write everything, and setpriv is missing";
    m_Folder.Write("model.zek", MakeSmallModel());
    const std::string path = m_Folder.GetPath("model.zek");
    chmod(path.c_str(), 0444);
    ExpectErrorInWriting(RunUnprivileged(path), path);
    EXPECT_TRUE(m_Folder.Read("model.zek") == MakeSmallModel());
}

TEST_F(DiskFaultTest, AVariantThatMayNotBeReadCountsAsAbsent)
{
    if (!CanRunUnprivileged())
        GTEST_SKIP() << "root may read and write everything, and setpriv is missing";
    m_Folder.Write("model.zek", MakeSmallModel());
    const std::string path = m_Folder.GetPath("model.zek");
    chmod(path.c_str(), 0666);
    m_Folder.Write("tex_etc/000.pvr", "");
    m_Folder.Write("tex_dxt/000.dds", "");
    chmod(m_Folder.GetPath("tex_etc/000.pvr").c_str(), 0);
    const SProgramResult result = RunUnprivileged(path);
    EXPECT_TRUE(IsSuccess(result));
    EXPECT_EQ(
        result.output, "ExistTextureCompression 0 0 0 1\n" + testsupport::NoCubemaps +
                           testsupport::NoLightmaps + "Succeeded\n");
}

// A path with backslashes is read from one file and written to another, which lets a test fail the
// writing alone.
TEST_F(DiskFaultTest, AFullDiskIsAnErrorWhetherWritingOrClosingFindsIt)
{
    ASSERT_EQ(symlink("/dev/full", m_Folder.GetPath("folder\\model.zek").c_str()), 0);
    for (const Bytes& model : {MakeSmallModel(), MakeLargeModel()})
    {
        m_Folder.Write("folder/model.zek", model);
        const FolderContents before = m_Folder.GetContents();
        ExpectErrorInWriting(RunTool("folder\\model.zek", m_Folder.GetPath()), "folder\\model.zek");
        EXPECT_EQ(m_Folder.GetContents(), before);
    }
}

TEST_F(DiskFaultTest, ADiskThatFillsUpInTheMiddleIsAnError)
{
    const std::string mount =
        "mount -t tmpfs -o size=64k none disk && cd disk && ln -s \"$OLDPWD/folder\" && ";
    m_Folder.Write("folder/model.zek", MakeLargeModel());
    m_Folder.MakeFolder("disk");
    const auto runOnSmallDisk = [&](const std::string& line)
    {
        return testsupport::RunProgram(
            {"unshare", "--mount", "sh", "-c", mount + line, ProgramPath, "folder\\model.zek"},
            m_Folder.GetPath());
    };
    if (runOnSmallDisk("true").exitStatus != 0)
        GTEST_SKIP() << "a small disk cannot be mounted here";

    const SProgramResult result =
        runOnSmallDisk("{ \"$0\" \"$1\"; status=$?; wc -c < \"$1\" >&2; exit $status; }");
    EXPECT_TRUE(IsError(result, "folder\\model.zek"));
    const int writtenSize = std::atoi(result.errors.c_str());
    EXPECT_GT(writtenSize, 0) << result.errors;
    EXPECT_LE(writtenSize, 64 * 1024);
    EXPECT_TRUE(m_Folder.Read("folder/model.zek") == MakeLargeModel());
}

// The limit must not hold for the output of the program, which stands in a file here.
TEST_F(DiskFaultTest, AFileSizeLimitIsAnErrorWhereItsSignalIsIgnored)
{
    m_Folder.Write("folder/model.zek", MakeLargeModel());
    for (const char* blocks : {"0", "1", "100"})
    {
        SCOPED_TRACE(blocks);
        const std::string limit = std::string("ulimit -f ") + blocks;
        const SProgramResult result = RunShell(
            "output=$(" + limit +
                "; exec env --ignore-signal=XFSZ \"$0\" \"$1\"); status=$?; "
                "echo \"$output\"; exit $status",
            "folder\\model.zek", m_Folder.GetPath());
        EXPECT_TRUE(IsError(result, "folder\\model.zek"));
        EXPECT_TRUE(m_Folder.Read("folder/model.zek") == MakeLargeModel());
    }
}

// The program leaves the signal as its caller set it. By default it ends the program in the middle
// of the write, so this is one of the ways to lose a file.
TEST_F(DiskFaultTest, AFileSizeLimitEndsTheRunByItsSignalAndCutsTheFileShort)
{
    m_Folder.Write("model.zek", MakeLargeModel());
    const SProgramResult result = RunShell(
        "ulimit -c 0; output=$(ulimit -f 1; exec \"$0\" \"$1\"); exit $?", "model.zek",
        m_Folder.GetPath());
    constexpr int statusOfSignal = 128;
    EXPECT_EQ(result.exitStatus, statusOfSignal + SIGXFSZ);
    EXPECT_LT(m_Folder.Read("model.zek").size(), 2000u);
}

TEST_F(DiskFaultTest, AFolderInThePlaceOfTheSecondFileOfABackslashPathIsAnError)
{
    m_Folder.Write("a/model.zek", MakeSmallModel());
    m_Folder.MakeFolder("a\\model.zek");
    ExpectErrorAndNothingChanged("a\\model.zek");
}

// The status tells what became of the model. What is printed may be lost, and that must neither
// hurt the model nor land in it: the numbers of closed standard streams are the next to be given
// to an opened file.
TEST_F(DiskFaultTest, ALostOutputDoesNotHurtTheModel)
{
    for (const Bytes& model : {MakeSmallModel(), MakeLargeModel()})
    {
        m_Folder.Write("model.zek", model);
        ASSERT_TRUE(IsSuccess(RunTool("model.zek", m_Folder.GetPath())));
        const FolderContents expected = m_Folder.GetContents();
        for (const char* streams :
             {"</dev/null >&-", "<&- >&-", "<&- >&- 2>&-", ">/dev/full", ">&0"})
        {
            SCOPED_TRACE(streams);
            m_Folder.Write("model.zek", model);
            const SProgramResult result = RunShell(
                std::string("exec \"$0\" \"$1\" ") + streams, "model.zek", m_Folder.GetPath());
            EXPECT_EQ(result.exitStatus, 0);
            EXPECT_EQ(result.output, "");
            EXPECT_EQ(m_Folder.GetContents(), expected);
        }
    }
}

TEST_F(DiskFaultTest, AReaderOfTheOutputWhoHasGoneEndsTheRunAfterTheWrite)
{
    m_Folder.Write("model.zek", MakeSmallModel());
    ASSERT_TRUE(IsSuccess(RunTool("model.zek", m_Folder.GetPath())));
    const FolderContents expected = m_Folder.GetContents();
    m_Folder.Write("model.zek", MakeSmallModel());
    const SProgramResult result = RunShell(
        "mkfifo pipe; exec 3<>pipe 4>pipe 3>&-; rm pipe; \"$0\" \"$1\" >&4; echo $? >&2",
        "model.zek", m_Folder.GetPath());
    EXPECT_EQ(result.errors, std::to_string(128 + SIGPIPE) + "\n");
    EXPECT_EQ(m_Folder.GetContents(), expected);
}
