#include "Specific/Debug/LMsg.h"

#include <cstdio>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

// As <windows.h> declares it.
struct HWND__;
using HWND = HWND__*;

static_assert(std::is_same_v<decltype(&debug::Error), bool (*)(const char*, ...)>);
static_assert(std::is_same_v<decltype(&debug::Output), void (*)(const char*, ...)>);
static_assert(std::is_same_v<decltype(&debug::SetHWND), void (*)(debug::HWND)>);
static_assert(std::is_same_v<decltype(debug::g_WindowHandle), debug::HWND>);

namespace
{

/// The longest text that the fixed buffer holds besides its terminator.
constexpr std::size_t LongestText = 16383;

/// Before main, and so before any test.
const debug::HWND WindowHandleAtStart = debug::g_WindowHandle;

template <typename... Arguments>
std::string Output(const char* format, Arguments... arguments)
{
    testing::internal::CaptureStdout();
    debug::Output(format, arguments...);
    return testing::internal::GetCapturedStdout();
}

/// Expects a call of `debug::Error` to return false and to print nothing anywhere.
template <typename... Arguments>
void ExpectSilentError(const char* format, Arguments... arguments)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const bool result = debug::Error(format, arguments...);
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_FALSE(result);
}

} // namespace

TEST(Error, ReturnsFalseAndPrintsNothing)
{
    ExpectSilentError("failed");
    ExpectSilentError("failed: %s at %d", "model.zek", 7);
    ExpectSilentError("");
}

TEST(Error, SurvivesAMessageLongerThanTheBuffer)
{
    for (std::size_t length : {LongestText, LongestText + 1, std::size_t{20000}})
        ExpectSilentError("%s", std::string(length, 'e').c_str());
}

TEST(Error, FormatsItsMessageAllTheSame)
{
    int count = 0;
    ExpectSilentError("%d bytes%n", 12, &count);
    EXPECT_EQ(8, count);
}

TEST(Error, DoesNotInterpretItsResultAgain)
{
    ExpectSilentError("%s", "%n%s%s%s%s");
}

TEST(Output, PrintsTheFormattedText)
{
    EXPECT_EQ("3 of scene\n", Output("%d of %s\n", 3, "scene"));
    EXPECT_EQ("", Output(""));
}

TEST(Output, InterpretsAPercentTwice)
{
    EXPECT_EQ("%", Output("%%%%"));
    EXPECT_EQ("50% done", Output("50%%%% done"));
    EXPECT_EQ("%%", Output("%%%%%%%%"));
    EXPECT_EQ("100%", Output("%d%%%%", 100));
}

TEST(Output, InterpretsAPercentInAnArgumentOnce)
{
    EXPECT_EQ("a%b", Output("%s", "a%%b"));
}

TEST(Output, PrintsAConversionThatSurvivesTheFirstPassAsText)
{
    EXPECT_EQ("%d", Output("%%d"));
    EXPECT_EQ("%d", Output("%%%%d"));
    EXPECT_EQ("%s%x%5.2f", Output("%s", "%s%x%5.2f"));
}

TEST(Output, NeverReadsOrWritesAnArgumentOfTheSecondPass)
{
    int count = 7;
    EXPECT_EQ("%n", Output("%s", "%n", &count));
    EXPECT_EQ("%s%s%s%s%n", Output("%s", "%s%s%s%s%n", &count));
    EXPECT_EQ("%1$n", Output("%s", "%1$n", &count));
    EXPECT_EQ(7, count);
}

TEST(Output, PrintsALonePercentAsItStands)
{
    EXPECT_EQ("100%", Output("100%%"));
    EXPECT_EQ("% ", Output("%% "));
    EXPECT_EQ("%%", Output("%%%%%%")) << "a pair and a lone one";
}

TEST(Output, EndsAtTheFirstZeroByteOfTheResult)
{
    EXPECT_EQ("a", Output("a%cb", 0));
}

TEST(Output, PrintsTheLongestTextThatTheBufferHolds)
{
    const std::string text(LongestText - 1, 'o');
    EXPECT_EQ(text + "x", Output("%sx", text.c_str()));
}

TEST(Output, CutsALongerText)
{
    for (std::size_t length : {LongestText + 1, std::size_t{20000}})
    {
        const std::string text = "x" + std::string(length - 1, 'o');
        EXPECT_EQ(text.substr(0, LongestText), Output("%s", text.c_str())) << length;
    }
}

TEST(Output, CutsBeforeTheSecondPass)
{
    const std::string percents(20000, '%');
    EXPECT_EQ(std::string(LongestText / 2 + 1, '%'), Output("%s", percents.c_str()));
}

TEST(Output, KeepsItsPlaceAmongWhatPrintfPrints)
{
    testing::internal::CaptureStdout();
    std::printf("one ");
    debug::Output("two ");
    std::printf("three");
    EXPECT_EQ("one two three", testing::internal::GetCapturedStdout());
}

TEST(WindowHandle, IsNullAtStart)
{
    EXPECT_EQ(nullptr, WindowHandleAtStart);
}

TEST(WindowHandle, IsTakenFromAPlatformThatHasATypeOfItsOwnForIt)
{
    int window = 0;
    debug::SetHWND(reinterpret_cast<HWND>(&window));
    EXPECT_EQ(&window, debug::g_WindowHandle);
    debug::SetHWND(nullptr);
}

TEST(WindowHandle, IsWhatSetHWNDStored)
{
    int window = 0;
    debug::SetHWND(&window);
    EXPECT_EQ(&window, debug::g_WindowHandle);
    debug::SetHWND(nullptr);
    EXPECT_EQ(nullptr, debug::g_WindowHandle);
}
