#include "ZekTool/Check/FindingKind.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>

#include <gtest/gtest.h>

namespace
{

using namespace zektool;

std::string MakeDocument()
{
    std::string text =
        "# What `zek check` finds\n"
        "\n"
        "A finding has a code that stays the same in all versions of the program, a severity, a\n"
        "place in the model and a sentence that ends with what to do. Errors make the exit status\n"
        "1. `--ignore CODE` leaves findings out, `--error CODE` makes them errors, and\n"
        "`--explain CODE` prints what stands here.\n";
    for (const SFindingKind& kind : GetFindingKinds())
    {
        text += "\n## `" + std::string(kind.code) + "`\n\n";
        text += "*" + std::string(GetSeverityName(kind.severity)) + ":* " + std::string(kind.text) +
                ".\n\n" + std::string(kind.explanation) +
                "\n\nWhat to do: " + std::string(kind.remedy) + ".\n";
    }
    return text;
}

TEST(FindingKind, StandsInItsPlaceUnderACodeOfItsOwn)
{
    std::set<std::string_view> codes;
    for (std::size_t i = 0; i < GetFindingKinds().size(); ++i)
    {
        const SFindingKind& kind = GetFindingKinds()[i];
        EXPECT_EQ(i, static_cast<std::size_t>(kind.finding)) << kind.code;
        EXPECT_EQ(&kind, &GetFindingKind(kind.finding));
        EXPECT_EQ(kind.finding, FindFinding(kind.code));
        EXPECT_TRUE(codes.insert(kind.code).second) << kind.code;
    }
}

TEST(FindingKind, IsExplainedByItsCode)
{
    EXPECT_EQ(
        "empty-file (error): the file is empty.\n"
        "The file has no bytes: it was made and never written, or the disk was full.\n"
        "What to do: export or copy the model again.\n",
        Explain("empty-file"));
    EXPECT_EQ("mesh-index (warning)", Explain("mesh-index").value_or("").substr(0, 20));
    EXPECT_EQ(std::nullopt, Explain("Empty-file"));
    EXPECT_EQ(std::nullopt, FindFinding(""));
}

/// The document is the program's own text. With ZEK_WRITE_DOCUMENTS set, it is written.
TEST(FindingKind, StandsInTheDocument)
{
    if (std::getenv("ZEK_WRITE_DOCUMENTS") != nullptr)
        std::ofstream(ZEK_FINDINGS_DOCUMENT) << MakeDocument();
    std::ifstream file(ZEK_FINDINGS_DOCUMENT);
    const std::string document{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(MakeDocument(), document) << "ZEK_WRITE_DOCUMENTS=1 writes " ZEK_FINDINGS_DOCUMENT;
}

} // namespace
