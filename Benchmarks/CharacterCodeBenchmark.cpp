// Measures the character code conversion against iconv(3) on texts:
//
//     CharacterCodeBenchmark [--benchmark_...] TEXT...
//
// Each TEXT is a file in UTF-8, whose name appears in the table. The times are those of a
// character. Before anything is measured, both must agree on every result.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <iconv.h>

#include "Independent/CharacterCode/CharacterCode.h"
#include "RatioTable.h"

namespace
{

/// As much of a text as is converted at once.
constexpr std::size_t TextSize = 32 * 1024;

/// One text in all codes.
struct SText
{
    std::string name;
    std::string shiftJIS;
    std::string utf8;
    std::string utf16; ///< little-endian, as iconv reads and writes it
    std::wstring wide;
};

[[noreturn]] void Fail(const std::string& message)
{
    std::fprintf(stderr, "CharacterCodeBenchmark: %s\n", message.c_str());
    std::exit(1);
}

/// A conversion descriptor, opened once.
class CIconv
{
public:
    CIconv(const char* from, const char* to) : m_Descriptor(iconv_open(to, from))
    {
        if (m_Descriptor == reinterpret_cast<iconv_t>(-1))
            Fail(std::string("iconv does not convert ") + from + " to " + to);
    }

    CIconv(const CIconv&) = delete;
    CIconv& operator=(const CIconv&) = delete;
    ~CIconv() { iconv_close(m_Descriptor); }

    /// Converts into a buffer with room for any result and returns the size of this one.
    std::size_t Convert(std::vector<char>& output, const char* input, std::size_t size)
    {
        char* source = const_cast<char*>(input);
        char* dest = output.data();
        std::size_t destSize = output.size();
        if (iconv(m_Descriptor, &source, &size, &dest, &destSize) != 0)
            Fail("iconv does not convert a text");
        return output.size() - destSize;
    }

private:
    iconv_t m_Descriptor;
};

/// Returns the first lines of a file in UTF-8 that Shift_JIS has all characters of.
SText ReadText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    SText text;
    text.name = path.substr(path.rfind('/') + 1);
    std::string line;
    while (text.utf8.size() < TextSize && std::getline(file, line))
    {
        line += '\n';
        std::string shiftJIS;
        if (!charactercode::UTF8ToSJIS(shiftJIS, line))
            continue;
        text.utf8 += line;
        text.shiftJIS += shiftJIS;
    }
    if (text.utf8.size() < TextSize)
        Fail(path + " does not have enough text");

    charactercode::SJISToUTF16(text.wide, text.shiftJIS);
    for (const wchar_t unit : text.wide)
    {
        text.utf16 += static_cast<char>(unit & 0xFF);
        text.utf16 += static_cast<char>(unit >> 8);
    }
    return text;
}

/// Registers our conversion, which fills a string and tells whether all was converted.
template <typename Input, typename Output>
void AddOurs(
    const std::string& work,
    const SText& text,
    const Input& input,
    const Output& expected,
    bool (*convert)(Output&, const Input&))
{
    Output output;
    if (!convert(output, input) || output != expected)
        Fail("our conversion \"" + work + "\" gives another result");
    benchmark::RegisterBenchmark(
        (work + "/" + benchmarks::Ours).c_str(),
        [&text, &input, convert](benchmark::State& state)
        {
            Output result;
            for ([[maybe_unused]] auto iteration : state)
            {
                convert(result, input);
                benchmark::DoNotOptimize(result.data());
                benchmark::ClobberMemory();
            }
            state.SetItemsProcessed(state.iterations() * static_cast<long>(text.wide.size()));
        });
}

/// Registers iconv's conversion of bytes; the codes are iconv's names. The descriptor and the
/// buffer are made outside the measurement.
void AddIconv(
    const std::string& work,
    const SText& text,
    const char* from,
    const char* to,
    const void* input,
    std::size_t inputSize,
    const void* expected,
    std::size_t expectedSize)
{
    const char* bytes = static_cast<const char*>(input);
    std::vector<char> buffer(TextSize * 8);
    CIconv converter(from, to);
    if (converter.Convert(buffer, bytes, inputSize) != expectedSize ||
        std::memcmp(buffer.data(), expected, expectedSize) != 0)
        Fail("iconv's conversion \"" + work + "\" gives another result");

    benchmark::RegisterBenchmark(
        (work + "/iconv").c_str(),
        [&text, from, to, bytes, inputSize](benchmark::State& state)
        {
            std::vector<char> result(TextSize * 8);
            CIconv descriptor(from, to);
            for ([[maybe_unused]] auto iteration : state)
            {
                descriptor.Convert(result, bytes, inputSize);
                benchmark::DoNotOptimize(result.data());
                benchmark::ClobberMemory();
            }
            state.SetItemsProcessed(state.iterations() * static_cast<long>(text.wide.size()));
        });
}

/// Registers both directions between Shift_JIS and another code of iconv's.
void AddIconvPair(
    const std::string& fromShiftJIS,
    const std::string& toShiftJIS,
    const SText& text,
    const char* code,
    const void* other,
    std::size_t otherSize)
{
    const std::string& shiftJIS = text.shiftJIS;
    AddIconv(fromShiftJIS, text, "CP932", code, shiftJIS.data(), shiftJIS.size(), other, otherSize);
    AddIconv(toShiftJIS, text, code, "CP932", other, otherSize, shiftJIS.data(), shiftJIS.size());
}

/// The wide string holds what is UTF-16 here and UTF-32 elsewhere, so that it has two rivals: one
/// that converts to the same code, and one that fills the same array.
void AddText(const SText& text)
{
    const std::string toUTF8 = "Shift_JIS to UTF-8, " + text.name;
    const std::string fromUTF8 = "UTF-8 to Shift_JIS, " + text.name;
    AddOurs(toUTF8, text, text.shiftJIS, text.utf8, charactercode::SJISToUTF8);
    AddOurs(fromUTF8, text, text.utf8, text.shiftJIS, charactercode::UTF8ToSJIS);
    AddIconvPair(toUTF8, fromUTF8, text, "UTF-8", text.utf8.data(), text.utf8.size());

    const std::string toUTF16 = "Shift_JIS to UTF-16, " + text.name;
    const std::string fromUTF16 = "UTF-16 to Shift_JIS, " + text.name;
    AddOurs(toUTF16, text, text.shiftJIS, text.wide, charactercode::SJISToUTF16);
    AddOurs(fromUTF16, text, text.wide, text.shiftJIS, charactercode::UTF16ToSJIS);
    AddIconvPair(toUTF16, fromUTF16, text, "UTF-16LE", text.utf16.data(), text.utf16.size());

    const std::string toWide = "Shift_JIS to wchar_t, " + text.name;
    const std::string fromWide = "wchar_t to Shift_JIS, " + text.name;
    const std::size_t wideSize = text.wide.size() * sizeof(wchar_t);
    AddOurs(toWide, text, text.shiftJIS, text.wide, charactercode::SJISToUTF16);
    AddOurs(fromWide, text, text.wide, text.shiftJIS, charactercode::UTF16ToSJIS);
    AddIconvPair(toWide, fromWide, text, "WCHAR_T", text.wide.data(), wideSize);
}

bool IsBenchmarkOption(const std::string& word)
{
    return word.rfind("--", 0) == 0;
}

} // namespace

int main(int argc, char* argv[])
{
    std::vector<char*> options = {argv[0]};
    std::vector<SText> texts;
    for (int i = 1; i < argc; ++i)
    {
        if (IsBenchmarkOption(argv[i]))
            options.push_back(argv[i]);
        else
            texts.push_back(ReadText(argv[i]));
    }
    if (texts.empty())
        Fail("name at least one text in UTF-8");

    for (const SText& text : texts)
        AddText(text);
    return benchmarks::PrintRatioTable(static_cast<int>(options.size()), options.data());
}
