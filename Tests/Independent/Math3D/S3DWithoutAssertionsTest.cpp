// What a caller sees who compiles without assertions.
#ifndef NDEBUG
#define NDEBUG
#endif

#include <csignal>

#include <gtest/gtest.h>

#include "Independent/Math3D/S3D.h"

TEST(S3DWithoutAssertionsDeathTest, IndexOutOfRangeFailsTheAssertionAllTheSame)
{
    const char* const message = "S3D\\.(cpp|h).*operator\\[\\].*!\"S3D\\[\\] out of range\"";
    const S3D vector(1.0f, 2.0f, 3.0f);
    EXPECT_EXIT(static_cast<void>(vector[3]), testing::KilledBySignal(SIGABRT), message);
    EXPECT_EXIT(static_cast<void>(vector[~0ul]), testing::KilledBySignal(SIGABRT), message);
}

TEST(S3DWithoutAssertions, IndexZeroOneTwoGivesXYZ)
{
    const S3D vector(1.0f, 2.0f, 3.0f);
    EXPECT_EQ(1.0f, vector[0]);
    EXPECT_EQ(2.0f, vector[1]);
    EXPECT_EQ(3.0f, vector[2]);
}
