// Drives the byte-image reader with a script of operations: the input's first part is the range
// that is read, the rest says what to call. Each result is held against one worked out by hand from
// the range, and whatever was read is written again by the maker and must come out the same.

#include <algorithm>
#include <cstring>
#include <vector>

#include "FuzzTarget.h"
#include "Independent/FileImage/CFileImageAnalyser.h"
#include "Independent/FileImage/CFileImageMaker.h"

using fileimage::CFileImageAnalyser;
using fileimage::CFileImageMaker;
using fuzz::Require;

namespace
{

using Bytes = std::vector<unsigned char>;

Bytes::const_iterator At(const Bytes& range, std::int64_t pos)
{
    return range.begin() + static_cast<std::ptrdiff_t>(pos);
}

/// The bytes that a call stepped over.
Bytes GetStep(const Bytes& range, std::int64_t before, std::int64_t after)
{
    return Bytes(At(range, before), At(range, after));
}

/// A fixed-size read succeeds exactly when its bytes are there, moves by its size, and stays where
/// it was otherwise; the maker writes the value back as the same bytes.
template <typename Value>
void CheckFixed(
    CFileImageAnalyser& reader,
    const Bytes& range,
    bool (CFileImageAnalyser::*get)(Value&),
    void (CFileImageMaker::*add)(Value))
{
    const std::int64_t before = reader.GetPos();
    const std::int64_t left = reader.GetCanReadSize();
    Value value{};
    const bool isRead = (reader.*get)(value);
    Require(
        isRead == (left >= std::int64_t{sizeof(Value)}), "a read succeeds if its bytes are there");
    const std::int64_t expected = isRead ? before + std::int64_t{sizeof(Value)} : before;
    Require(reader.GetPos() == expected, "a read moves by its size or not at all");
    if (!isRead)
        return;
    CFileImageMaker maker;
    (maker.*add)(value);
    Require(
        maker.GetImageData() == GetStep(range, before, reader.GetPos()),
        "a value is written as the bytes that it was read from");
}

void CheckZeroTerminated(CFileImageAnalyser& reader, const Bytes& range, bool isAligned)
{
    const auto begin = At(range, reader.GetPos());
    const auto zero = std::find(begin, range.end(), 0);
    const std::string expected(begin, zero);
    const std::int64_t size = static_cast<std::int64_t>(expected.size()) + 1;
    const std::int64_t paddedSize = isAligned ? (size + 3) / 4 * 4 : size;
    const std::int64_t before = reader.GetPos();
    const std::int64_t left = reader.GetCanReadSize();

    std::string text = "untouched";
    const bool isRead =
        isAligned ? reader.GetStringAligned4(text) : reader.GetZeroTerminatedString(text);
    Require(isRead == (zero != range.end() && paddedSize <= left), "a text ends before the range");
    Require(
        text == (zero == range.end() ? "untouched" : expected), "a text is what precedes its zero");
    Require(
        isRead ? reader.GetPos() == before + paddedSize : reader.IsEnd(),
        "a text moves past itself");
}

void CheckFixedString(CFileImageAnalyser& reader, const Bytes& range, int length)
{
    const std::int64_t before = reader.GetPos();
    const bool isThere = length >= 0 && length <= reader.GetCanReadSize();
    std::string text = "untouched";
    Require(reader.GetString(text, length) == isThere, "a field is read if it is there");
    Require(reader.GetPos() == (isThere ? before + length : before), "a field moves by its length");
    if (!isThere)
        return;
    const auto begin = At(range, before);
    Require(
        text == std::string(begin, std::find(begin, begin + length, 0)), "a field ends at a zero");
}

void CheckBlock(CFileImageAnalyser& reader, const Bytes& range, int size)
{
    const std::int64_t before = reader.GetPos();
    const bool isThere = size >= 0 && size <= reader.GetCanReadSize();
    Bytes block(isThere ? static_cast<std::size_t>(size) : 0);
    Require(reader.GetMemoryBlock(block.data(), size) == isThere, "a block is read if it is there");
    if (isThere)
        Require(block == GetStep(range, before, reader.GetPos()), "a block is copied as it is");
}

void CheckLine(CFileImageAnalyser& reader, const Bytes& range)
{
    const auto begin = At(range, reader.GetPos());
    const auto lineFeed = std::find(begin, range.end(), '\n');
    std::string expected(begin, lineFeed);
    expected.erase(std::remove(expected.begin(), expected.end(), '\r'), expected.end());
    expected.resize(std::min(expected.size(), expected.find('\0')));

    std::string line = "untouched";
    const bool isRead = reader.GetTextLine(line);
    Require(isRead == (lineFeed != range.end()), "a line ends with a line feed");
    Require(line == (isRead ? expected : "untouched"), "a line is what precedes its line feed");
    Require(
        isRead ? reader.GetPos() == lineFeed - range.begin() + 1 : reader.IsEnd(),
        "a line moves past itself");
}

void CheckSkip(CFileImageAnalyser& reader, int size)
{
    const std::int64_t before = reader.GetPos();
    if (before + size < 0) // staying in the range is the caller's part
        return;
    const bool isThere = size <= reader.GetCanReadSize();
    Require(reader.IsCanRead(size) == isThere, "a size can be read if it is there");
    Require(reader.Skip(size) == isThere, "a size is skipped if it is there");
    Require(reader.GetPos() == (isThere ? before + size : before), "a skip moves by its size");
}

void CheckQueries(const CFileImageAnalyser& reader, const Bytes& range)
{
    const std::int64_t size = static_cast<std::int64_t>(range.size());
    Require(reader.GetPos() >= 0 && reader.GetPos() <= size, "the position is in the range");
    Require(
        reader.GetPos() + reader.GetCanReadSize() == size, "position and rest make up the range");
    Require(reader.IsEnd() == (reader.GetCanReadSize() == 0), "nothing is left at the end");
    Require(
        reader.GetReadPointer() == (reader.IsEnd() ? nullptr : range.data() + reader.GetPos()),
        "the read pointer is the position");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::CInput input(data, size);
    const std::string rangeText = input.TakeText();
    const Bytes range(rangeText.begin(), rangeText.end()); // of exactly its size, for the sanitizer
    CFileImageAnalyser reader(range.data(), range.data() + range.size());

    while (!input.IsEnd())
    {
        const std::uint8_t operation = input.TakeByte();
        const int argument = static_cast<std::int8_t>(input.TakeByte());
        switch (operation % 12)
        {
        case 0:
            CheckFixed(reader, range, &CFileImageAnalyser::GetByte, &CFileImageMaker::AddByte);
            break;
        case 1:
            CheckFixed(reader, range, &CFileImageAnalyser::GetWord, &CFileImageMaker::AddWord);
            break;
        case 2:
            CheckFixed(reader, range, &CFileImageAnalyser::GetDWord, &CFileImageMaker::AddDWord);
            break;
        case 3:
            CheckFixed(reader, range, &CFileImageAnalyser::GetInt, &CFileImageMaker::AddInt);
            break;
        case 4:
            CheckFixed(reader, range, &CFileImageAnalyser::GetFloat, &CFileImageMaker::AddFloat);
            break;
        case 5:
            CheckZeroTerminated(reader, range, false);
            break;
        case 6:
            CheckZeroTerminated(reader, range, true);
            break;
        case 7:
            CheckFixedString(reader, range, argument);
            break;
        case 8:
            CheckBlock(reader, range, argument);
            break;
        case 9:
            CheckLine(reader, range);
            break;
        case 10:
            CheckSkip(reader, argument);
            break;
        default:
            CheckSkip(reader, argument * 0x1000000);
            break;
        }
        CheckQueries(reader, range);
    }
    return 0;
}
