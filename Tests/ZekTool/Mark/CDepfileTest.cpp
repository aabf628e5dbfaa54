#include "ZekTool/Mark/CDepfile.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"
#include "Support/Heap.h"
#include "Support/RunProgram.h"

using testsupport::Bytes;
using testsupport::CTemporaryFolder;
using testsupport::RunProgram;
using zektool::CDepfile;

namespace
{

class CDepfileTest : public testing::Test
{
protected:
    std::string Write(const CDepfile& depfile, const std::string& target)
    {
        std::string reason;
        EXPECT_TRUE(depfile.Write(m_Folder.GetPath("out.d"), target, reason)) << reason;
        const Bytes bytes = m_Folder.Read("out.d");
        return std::string(bytes.begin(), bytes.end());
    }

    CTemporaryFolder m_Folder;
};

} // namespace

TEST_F(CDepfileTest, NamesTheModelsFolderAndThoseOfVariantsThatExist)
{
    m_Folder.Write("tex_dxt/000.dds", "");
    m_Folder.MakeFolder("tex_etc/sub");
    m_Folder.Write("tex_astc", "a file");
    const std::string folder = m_Folder.GetPath() + "/";
    CDepfile depfile(folder);
    for (const char* variant :
         {"tex_dxt/000.dds", "tex_dxt/001.dds", "tex_dxt/absent/below/b.dds", "tex_pvrtc/000.pvr",
          "tex_etc/sub/a.pvr", "tex_astc/000.pvr",
          "tex_reflection_cube_etc\\P\\reflection_cube_0.pvr"})
        depfile.AddVariant(folder + variant);
    EXPECT_EQ(
        Write(depfile, "out.zek"), "out.zek: \\\n " + folder + " \\\n " + folder +
                                       "tex_dxt/ \\\n " + folder + "tex_etc/sub/\n");
}

TEST_F(CDepfileTest, TakesNoMemoryForFoldersThatCannotBe)
{
    std::string name;
    for (int i = 0; i < 100000; ++i)
        name += "a/";
    const std::string folder = m_Folder.GetPath() + "/";
    CDepfile depfile(folder);
    testsupport::ResetPeak();
    const std::size_t before = testsupport::GetLiveBytes();
    depfile.AddVariant(folder + name + "b.pvr");
    EXPECT_LE(testsupport::GetPeakBytes() - before, 8 * name.size());
    EXPECT_EQ(Write(depfile, "out.zek"), "out.zek: \\\n " + folder + "\n");
}

TEST_F(CDepfileTest, AModelWithoutAFolderStandsInTheWorkingFolder)
{
    EXPECT_EQ(Write(CDepfile(""), "out.zek"), "out.zek: \\\n ./\n");
}

TEST_F(CDepfileTest, WhatNinjaCannotReadIsAFailureThatWritesNothing)
{
    for (const std::string name :
         {"a\nb", "a\tb", "a'b", "a\"b", "a&b", "a*b", "a;b", "a<b", "a>b", "a?b", "a^b", "a`b",
          "a|b", "a\x7F", "a\\$b"})
    {
        SCOPED_TRACE(name);
        std::string reason;
        EXPECT_FALSE(CDepfile(name + "/").Write(m_Folder.GetPath("out.d"), "out.zek", reason));
        EXPECT_EQ(reason.find("the depfile cannot name "), 0u) << reason;
    }
    for (const std::string target : {"a:", "a\\"})
    {
        std::string reason;
        EXPECT_FALSE(CDepfile("").Write(m_Folder.GetPath("out.d"), target, reason)) << target;
    }
    EXPECT_TRUE(m_Folder.GetContents().empty());
}

TEST_F(CDepfileTest, AFileThatCannotBeWrittenIsAFailureWithItsReason)
{
    std::string reason;
    const std::string path = m_Folder.GetPath("missing/out.d");
    EXPECT_FALSE(CDepfile("").Write(path, "out.zek", reason));
    EXPECT_EQ(reason, "the depfile \"" + path + "\" cannot be written: No such file or directory");
}

TEST_F(CDepfileTest, NinjaReadsWhatIsWritten)
{
    if (RunProgram({"ninja", "--version"}).exitStatus != 0)
        GTEST_SKIP() << "ninja is missing";
    const std::string rule = "rule copy\n  command = cp deps out.d && touch out\n"
                             "  depfile = out.d\n  deps = gcc\nbuild out: copy\n";
    for (const std::string name : {"plain",        "a b",  " ",     "a  b", "a\\ b",
                                   "a\\\\ b",      "a#b",  "a\\#b", "a:b",  "a\\:b",
                                   "a$b",          "a\\b", "a\\",   "a:",   "a:\\",
                                   "a\\:",         "#",    "$$",    "-a",   "~(a){b}[c]%@=+,!",
                                   "\xE6\x97\xA5", "\xFF"})
    {
        SCOPED_TRACE(name);
        const CTemporaryFolder build;
        std::string reason;
        ASSERT_TRUE(CDepfile("x/" + name + "/").Write(build.GetPath("deps"), "out", reason))
            << reason;
        build.Write("build.ninja", rule);
        EXPECT_EQ(RunProgram({"ninja"}, build.GetPath()).exitStatus, 0);
        const std::string dependencies =
            RunProgram({"ninja", "-t", "deps"}, build.GetPath()).output;
        EXPECT_NE(dependencies.find("#deps 1,"), std::string::npos) << dependencies;
        EXPECT_NE(dependencies.find("\n    x/" + name + "\n"), std::string::npos) << dependencies;
    }
}

TEST_F(CDepfileTest, NinjaMarksAgainWhenAVariantComesOrGoesAndNotWhenItIsWritten)
{
    if (RunProgram({"ninja", "--version"}).exitStatus != 0)
        GTEST_SKIP() << "ninja is missing";
    m_Folder.Write(
        "models/model.zek",
        testsupport::CModelBuilder::Build(testsupport::MakeFullModel(26)).GetImage());
    m_Folder.Write("models/tex_dxt/000.dds", "");
    m_Folder.Write(
        "build/build.ninja",
        std::string("rule mark\n  command = ") + ZEK_PROGRAM +
            " mark -o $out --depfile $out.d $in\n  depfile = $out.d\n  deps = gcc\n"
            "build out.zek: mark ../models/model.zek\n");
    const auto isMarkedAgain = [&]
    {
        const testsupport::SProgramResult result = RunProgram({"ninja"}, m_Folder.GetPath("build"));
        EXPECT_EQ(result.exitStatus, 0) << result.output;
        return result.output.find("no work to do") == std::string::npos;
    };
    EXPECT_TRUE(isMarkedAgain());
    EXPECT_FALSE(isMarkedAgain());

    m_Folder.Write("models/tex_dxt/000.dds", "compressed anew");
    EXPECT_FALSE(isMarkedAgain());
    m_Folder.Write("models/tex_dxt/001.dds", "");
    EXPECT_TRUE(isMarkedAgain());
    EXPECT_FALSE(isMarkedAgain());
    m_Folder.Write("models/tex_etc/001.pvr", "in a new folder");
    EXPECT_TRUE(isMarkedAgain());
    EXPECT_FALSE(isMarkedAgain());
    m_Folder.Remove("models/tex_dxt");
    EXPECT_TRUE(isMarkedAgain());
    EXPECT_FALSE(isMarkedAgain());
}
