#include "ZekTool/Check/VariantState.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "Support/CTemporaryFolder.h"

namespace
{

using testsupport::CTemporaryFolder;
using zektool::EVariantState;
using zektool::GetVariantState;
using zektool::IsThere;

/// Looks at a path, and holds what counts as there to the one test of that.
EVariantState LookAt(const std::string& path)
{
    const EVariantState state = GetVariantState(path);
    EXPECT_EQ(filesystem::CRandomAccessFile::CanOpen(path), IsThere(state)) << path;
    return state;
}

TEST(VariantState, TellsWhatLiesAtThePath)
{
    const CTemporaryFolder folder;
    folder.Write("file", "bytes");
    folder.Write("empty", "");
    ASSERT_EQ(0, mkfifo(folder.GetPath("fifo").c_str(), 0600));
    EXPECT_EQ(EVariantState::File, LookAt(folder.GetPath("file")));
    EXPECT_EQ(EVariantState::Empty, LookAt(folder.GetPath("empty")));
    EXPECT_EQ(EVariantState::NotAFile, LookAt(folder.GetPath("fifo"))) << "without waiting";
    EXPECT_EQ(EVariantState::NotAFile, LookAt(folder.GetPath("")));
    EXPECT_EQ(EVariantState::NotAFile, LookAt("/dev/null"));
    EXPECT_EQ(EVariantState::Absent, LookAt(folder.GetPath("other")));
    EXPECT_EQ(EVariantState::Absent, LookAt(folder.GetPath("file/other")));
    EXPECT_EQ(EVariantState::Absent, LookAt(folder.GetPath(std::string(10000, 'a'))));
}

TEST(VariantState, FollowsLinksAndTakesOneThatLeadsNowhereForUnreadable)
{
    const CTemporaryFolder folder;
    folder.Write("file", "bytes");
    std::filesystem::create_symlink("file", folder.GetPath("link"));
    std::filesystem::create_symlink("nothing", folder.GetPath("broken"));
    std::filesystem::create_symlink("circle", folder.GetPath("circle"));
    EXPECT_EQ(EVariantState::File, LookAt(folder.GetPath("link")));
    EXPECT_EQ(EVariantState::Unreadable, LookAt(folder.GetPath("broken")));
    EXPECT_EQ(EVariantState::Unreadable, LookAt(folder.GetPath("circle")));
}

TEST(VariantState, OfAFolderThatMayNotBeSearchedIsUnreadable)
{
    const CTemporaryFolder folder;
    folder.Write("closed/file", "bytes");
    const uid_t user = geteuid();
    constexpr uid_t nobody = 65534;
    chmod(folder.GetPath("closed").c_str(), 0);
    if (user == 0) // who may do everything
    {
        ASSERT_EQ(0, seteuid(nobody));
    }
    const EVariantState state = GetVariantState(folder.GetPath("closed/file"));
    ASSERT_EQ(0, seteuid(user));
    chmod(folder.GetPath("closed").c_str(), 0700);
    EXPECT_EQ(EVariantState::Unreadable, state);
}

} // namespace
