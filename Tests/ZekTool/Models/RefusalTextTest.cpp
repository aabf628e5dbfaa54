#include "ZekTool/Models/RefusalText.h"

#include <gtest/gtest.h>

#include "Support/CTemporaryFolder.h"

namespace
{

using namespace std::string_literals;

/// Returns the text for a file of these bytes.
std::string GetText(const std::string& bytes)
{
    testsupport::CTemporaryFolder folder;
    folder.Write("model", bytes);
    filesystem::CRandomAccessFile file;
    EXPECT_TRUE(file.Open(folder.GetPath("model")));
    const auto refusal = zek::WhyRefused(file);
    return refusal ? zektool::MakeRefusalText(*refusal, file) : "accepted";
}

TEST(RefusalText, SaysOfWhatIsNoModelWhatItIs)
{
    EXPECT_EQ("header: magic at 0x0: the file is empty", GetText(""));
    EXPECT_EQ("header: magic at 0x0: it looks like text", GetText("ZEN"));
    EXPECT_EQ("header: magic at 0x0: the file ends within the first 4 bytes", GetText("ZEK"));
    EXPECT_EQ("header: magic at 0x0: it looks like a PNG picture", GetText("\x89PNG\r\n\0"s));
}

TEST(RefusalText, SaysOfAModelWhatIsWrongWithIt)
{
    EXPECT_EQ("header: version at 0x4: 4 bytes needed, 2 left", GetText("ZEK\0\x07\0"s));
    EXPECT_EQ("header: version at 0x4: 6 instead of 7 or more", GetText("ZEK\0\x06\0\0\0"s));
}

TEST(RefusalText, WhatCannotBeReadMayBeAModel)
{
    testsupport::CTemporaryFolder folder;
    folder.Write("model", "text");
    filesystem::CRandomAccessFile file;
    ASSERT_TRUE(file.Open(folder.GetPath("model")));
    zek::SZEKRefusal refusal;
    refusal.kind = zek::SZEKFault::Unreadable;
    refusal.field = "magic";
    EXPECT_EQ(refusal.GetCauseText(), zektool::MakeCauseText(refusal, file));
    refusal.kind = zek::SZEKFault::Unterminated;
    EXPECT_EQ("it looks like text", zektool::MakeCauseText(refusal, file));
}

} // namespace
