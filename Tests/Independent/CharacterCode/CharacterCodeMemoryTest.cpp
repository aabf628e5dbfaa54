#include <string>

#include <gtest/gtest.h>

#include "Independent/CharacterCode/CharacterCode.h"
#include "Support/Heap.h"

using namespace charactercode;

namespace
{

/// What the allocator may add to a block: a header and pages of a size that the sanitizers choose.
constexpr std::size_t AllocatorBytes = 128 * 1024;

/// The most memory that a conversion has of its own while it runs, with its result.
template <typename Output, typename Input>
std::size_t PeakBytes(bool (*convert)(Output&, const Input&), const Input& input)
{
    const std::size_t before = testsupport::GetLiveBytes();
    testsupport::ResetPeak();
    Output output;
    convert(output, input);
    return testsupport::GetPeakBytes() - before;
}

} // namespace

TEST(CharacterCode, TakesNoMoreMemoryThanTheLargestResultOfSuchAnInput)
{
    const std::string katakana(1000000, '\xB1');
    EXPECT_LE(PeakBytes(SJISToUTF8, katakana), 3 * katakana.size() + AllocatorBytes);
    EXPECT_LE(PeakBytes(SJISToUTF16, katakana), sizeof(wchar_t) * katakana.size() + AllocatorBytes);

    const std::string letters(1000000, 'a');
    EXPECT_LE(PeakBytes(SJISToUTF8, letters), 3 * letters.size() + AllocatorBytes);
    EXPECT_LE(PeakBytes(UTF8ToSJIS, letters), letters.size() + AllocatorBytes);
    EXPECT_LE(
        PeakBytes(UTF16ToSJIS, std::wstring(1000000, L'\x3042')), 2 * 1000000 + AllocatorBytes);
}
