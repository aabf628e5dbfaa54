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

/// A file that another program has to itself.
class OpenModelOfAnother : public testing::Test
{
protected:
    void SetUp() override
    {
        m_Folder.Write("file", "no model");
        ASSERT_TRUE(m_Owner.OpenToWrite(m_Path));
        if (m_Owner.IsBusy())
            GTEST_SKIP() << "the file system gives no leases";
    }

    CTemporaryFolder m_Folder;
    const std::string m_Path = m_Folder.GetPath("file");
    CRandomAccessFile m_Owner;
};

TEST_F(OpenModelOfAnother, WaitsForIt)
{
    std::thread closing(
        [&]
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            m_Owner.Close();
        });
    CRandomAccessFile file;
    EXPECT_EQ("", OpenModel(m_Path, file));
    closing.join();
}

TEST_F(OpenModelOfAnother, WaitsTwoSecondsAtMost)
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(zektool::IsModel(m_Path)); // for all that can be told
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    m_Owner.Close();
    EXPECT_FALSE(zektool::IsModel(m_Path));
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
