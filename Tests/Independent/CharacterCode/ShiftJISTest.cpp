#include "Independent/CharacterCode/ShiftJIS.h"

#include <gtest/gtest.h>

#include "Support/LeadByte.h"

using charactercode::IsShiftJISLeadByte;

TEST(ShiftJIS, LeadBytesAre81To9FAndE0ToEF)
{
    for (int byte = 0; byte <= 0xFF; ++byte)
    {
        EXPECT_EQ(
            testsupport::IsLeadByte(static_cast<char>(byte)),
            IsShiftJISLeadByte(static_cast<unsigned char>(byte)))
            << byte;
    }
}

TEST(ShiftJIS, BackslashIsNoLeadByte)
{
    EXPECT_FALSE(IsShiftJISLeadByte(0x5C));
}

TEST(ShiftJIS, HalfWidthKatakanaAreNoLeadBytes)
{
    EXPECT_FALSE(IsShiftJISLeadByte(0xA0));
    EXPECT_FALSE(IsShiftJISLeadByte(0xB1));
    EXPECT_FALSE(IsShiftJISLeadByte(0xDF));
}

TEST(ShiftJIS, BytesFromF0OnAreNoLeadBytes)
{
    EXPECT_FALSE(IsShiftJISLeadByte(0xF0));
    EXPECT_FALSE(IsShiftJISLeadByte(0xFC));
}
