#include "ZekTool/Output/Json.h"

#include <gtest/gtest.h>

namespace
{

using namespace zektool;

TEST(Json, WhatIsUTF8IsText)
{
    EXPECT_EQ(R"({"text":"a\n\"é"})", MakeJsonText("a\n\"\xC3\xA9").dump());
    EXPECT_EQ(R"({"text":""})", MakeJsonText("").dump());
}

TEST(Json, WhatIsNotIsBase64)
{
    EXPECT_EQ(R"({"bytes":"/w=="})", MakeJsonText("\xFF").dump());
    EXPECT_EQ(
        R"({"bytes":"/2E="})", MakeJsonText("\xFF"
                                            "a")
                                   .dump());
    EXPECT_EQ(
        R"({"bytes":"/2Fi"})", MakeJsonText("\xFF"
                                            "ab")
                                   .dump());
    EXPECT_EQ(
        R"({"bytes":"/2Fi++8="})", MakeJsonText("\xFF"
                                                "ab\xFB\xEF")
                                       .dump());
}

TEST(Json, AFailureIsAnObjectOfItsModel)
{
    EXPECT_EQ(
        R"({"model":{"text":"a"},"outcome":"failed","error":{"text":"no"}})"
        "\n",
        MakeFailureJson("a", EOutcome::Failed, "no"));
    EXPECT_EQ(
        R"({"model":{"text":"a"},"outcome":"not done","error":{"text":"no"}})"
        "\n",
        MakeFailureJson("a", EOutcome::NotDone, "no"));
}

} // namespace
