#include "ZekTool/Models/OpenModel.h"

#include <chrono>
#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Support/CTemporaryFolder.h"

namespace
{

using filesystem::CRandomAccessFile;
using testsupport::CTemporaryFolder;
using zektool::OpenModel;

TEST(OpenModel, OpensAFileAndSaysNothing)
{
    const CTemporaryFolder folder;
    folder.Write("model", "seven b");
    CRandomAccessFile file;
    EXPECT_EQ("", OpenModel(folder.GetPath("model"), file));
    EXPECT_EQ(7, file.GetSize());
}

TEST(OpenModel, SaysWhatTheSystemSays)
{
    const CTemporaryFolder folder;
    CRandomAccessFile file;
    EXPECT_EQ("No such file or directory", OpenModel(folder.GetPath("none"), file));
    folder.Write("file", "");
    EXPECT_EQ("Not a directory", OpenModel(folder.GetPath("file/model"), file));
}

TEST(OpenModel, TakesNothingButARegularFileWhateverFailedBefore)
{
    const CTemporaryFolder folder;
    ASSERT_EQ(0, mkfifo(folder.GetPath("fifo").c_str(), 0600));
    CRandomAccessFile file;
    for (const std::string& path :
         {folder.GetPath(), folder.GetPath("fifo"), std::string("/dev/null")})
    {
        EXPECT_NE("", OpenModel(folder.GetPath("none"), file));
        EXPECT_EQ("not a regular file", OpenModel(path, file)) << path;
    }
}

TEST(OpenModel, WaitsForAProgramThatHasItToItself)
{
    const CTemporaryFolder folder;
    folder.Write("model", "seven b");
    CRandomAccessFile other;
    ASSERT_TRUE(other.OpenToWrite(folder.GetPath("model")));
    if (other.IsBusy())
        GTEST_SKIP() << "the file system gives no leases";
    std::thread closing(
        [&]
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            other.Close();
        });
    CRandomAccessFile file;
    EXPECT_EQ("", OpenModel(folder.GetPath("model"), file));
    closing.join();
}

TEST(OpenModel, WaitsTwoSecondsAtMost)
{
    const CTemporaryFolder folder;
    folder.Write("file", "no model");
    CRandomAccessFile other;
    ASSERT_TRUE(other.OpenToWrite(folder.GetPath("file")));
    if (other.IsBusy())
        GTEST_SKIP() << "the file system gives no leases";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(zektool::IsModel(folder.GetPath("file"))); // for all that can be told
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    other.Close();
    EXPECT_FALSE(zektool::IsModel(folder.GetPath("file")));
}

TEST(IsModel, GoesByTheFirstBytesAlone)
{
    using namespace std::string_literals;
    const CTemporaryFolder folder;
    ASSERT_EQ(0, mkfifo(folder.GetPath("fifo").c_str(), 0600));
    folder.Write("model", "ZEK\0 and what is no model"s);
    folder.Write("cut", "ZEK");
    folder.Write("text", "ZEK ");
    EXPECT_TRUE(zektool::IsModel(folder.GetPath("model")));
    for (const char* other : {"cut", "text", "fifo", "none", ""})
        EXPECT_FALSE(zektool::IsModel(folder.GetPath(other))) << other;
}

} // namespace
