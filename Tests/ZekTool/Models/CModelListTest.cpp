#include "ZekTool/Models/CModelList.h"

#include <cstdlib>

#include <gtest/gtest.h>

#include "Support/CTemporaryFolder.h"
#include "ZekTool/Output/CUsageError.h"
#include "ZekTool/Output/Interrupt.h"

namespace
{

using testsupport::CTemporaryFolder;
using zektool::CModelList;
using zektool::CPathReader;
using zektool::CUsageError;
using zektool::SModelPath;
using Paths = std::vector<std::string>;

const Paths Zek = {"*.zek"};

Paths TakeAll(CModelList& list)
{
    Paths paths;
    for (SModelPath model; list.Next(model);)
        paths.push_back(model.path + (model.error.empty() ? "" : "!"));
    return paths;
}

/// A folder with two models in one folder and none in another.
struct CModelListTest : ::testing::Test
{
    CModelListTest()
    {
        folder.Write("a/1.zek", "model");
        folder.Write("a/2.zek", "model");
        folder.Write("b/1.zek", "model");
        folder.MakeFolder("empty");
    }

    std::string GetError(const Paths& names) const
    {
        Paths paths;
        for (const std::string& name : names)
            paths.push_back(folder.GetPath(name));
        try
        {
            CModelList list(paths, Zek);
        }
        catch (const CUsageError& error)
        {
            return error.what();
        }
        return "";
    }

    CTemporaryFolder folder;
};

TEST_F(CModelListTest, PathsKeepTheirOrder)
{
    CModelList list({folder.GetPath("b/1.zek"), folder.GetPath("a")}, Zek);
    EXPECT_EQ(3U, list.GetTotal());
    EXPECT_TRUE(list.IsSeveral());
    EXPECT_EQ(
        (Paths{folder.GetPath("b/1.zek"), folder.GetPath("a/1.zek"), folder.GetPath("a/2.zek")}),
        TakeAll(list));
}

TEST_F(CModelListTest, OnlyOneFileIsNotSeveral)
{
    EXPECT_FALSE(CModelList({folder.GetPath("a/1.zek")}, Zek).IsSeveral());
    EXPECT_TRUE(CModelList({folder.GetPath("b")}, Zek).IsSeveral());
    EXPECT_TRUE(
        CModelList({folder.GetPath("a/1.zek"), folder.GetPath("a/1.zek")}, Zek).IsSeveral());
}

TEST_F(CModelListTest, AllPathsThatAreWrongAreNamed)
{
    const std::string error = GetError({"none", "a", "empty"});
    EXPECT_NE(std::string::npos, error.find("none: No such file or directory"));
    EXPECT_NE(std::string::npos, error.find("empty: no file below it is named *.zek"));
    EXPECT_EQ("", GetError({"a"}));
}

TEST_F(CModelListTest, PathsThatAreReadFailInTheirPlace)
{
    folder.Write(
        "list", folder.GetPath("none") + '\0' + folder.GetPath("a") + '\0' +
                    folder.GetPath("empty") + '\0');
    CModelList list(std::make_unique<CPathReader>(folder.GetPath("list")), Zek);
    EXPECT_EQ(0U, list.GetTotal());
    EXPECT_TRUE(list.IsSeveral());
    EXPECT_EQ(
        (Paths{
            folder.GetPath("none") + "!", folder.GetPath("a/1.zek"), folder.GetPath("a/2.zek"),
            folder.GetPath("empty") + "!"}),
        TakeAll(list));
    EXPECT_EQ("", list.GetError());
}

TEST_F(CModelListTest, WhatIsNotDoneIsNotLookedAt)
{
    folder.Write("list", folder.GetPath("a") + '\0' + folder.GetPath("b") + '\0');
    CModelList list(std::make_unique<CPathReader>(folder.GetPath("list")), Zek);
    SModelPath model;
    EXPECT_TRUE(list.Next(model));
    EXPECT_EQ(folder.GetPath("a/1.zek"), model.path);
    EXPECT_TRUE(list.NextUndone(model));
    EXPECT_EQ(folder.GetPath("a/2.zek"), model.path);
    EXPECT_TRUE(list.NextUndone(model));
    EXPECT_EQ(folder.GetPath("b"), model.path);
    EXPECT_EQ("b", model.GetName());
    EXPECT_FALSE(list.NextUndone(model));
}

TEST_F(CModelListTest, AFolderWhoseSearchIsCutShortIsNotDone)
{
    folder.Write("list", folder.GetPath("empty") + '\0');
    const auto isNotDone = [&]
    {
        CModelList list(std::make_unique<CPathReader>(folder.GetPath("list")), Zek);
        zektool::OnCtrlC();
        SModelPath model;
        return !list.Next(model) && list.NextUndone(model) && model.error.empty() &&
               model.GetName() == "empty" && !list.NextUndone(model);
    };
    EXPECT_EXIT(std::exit(isNotDone() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST_F(CModelListTest, WhatIsKnownIsTakenWithoutReadingOn)
{
    folder.Write("list", folder.GetPath("a") + '\0' + folder.GetPath("b") + '\0');
    CModelList list(std::make_unique<CPathReader>(folder.GetPath("list")), Zek);
    SModelPath model;
    EXPECT_FALSE(list.NextKnown(model));
    EXPECT_TRUE(list.Next(model));
    EXPECT_TRUE(list.NextKnown(model));
    EXPECT_EQ(folder.GetPath("a/2.zek"), model.path);
    EXPECT_FALSE(list.NextKnown(model));
}

TEST_F(CModelListTest, AListThatCannotBeReadHasAnError)
{
    CModelList list(std::make_unique<CPathReader>(folder.GetPath()), Zek);
    SModelPath model;
    EXPECT_FALSE(list.Next(model));
    EXPECT_EQ("Is a directory", list.GetError());
}

} // namespace
