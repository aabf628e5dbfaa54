#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"
#include "Support/Variants.h"
#include "ZekTool/Check/Checker.h"

namespace testsupport
{

using Lines = std::vector<std::string>;

constexpr Flags OnlyDXT = {0, 0, 0, 1};

/// A model in a folder of its own, to be checked.
class CheckerFixture : public testing::Test
{
protected:
    /// Returns a model of the newest version, or of another, that a check finds nothing wrong with.
    static SModel MakeModel(int version = 26)
    {
        SModel model;
        model.version = version;
        model.marker = 1;
        return model;
    }

    Lines Check(const std::string& name = "model.zek")
    {
        m_Result = zektool::Check(m_Folder.GetPath(name), m_Options);
        Lines lines;
        for (const zektool::SFinding& finding : m_Result.findings)
            lines.push_back(
                std::string(GetSeverityName(finding.severity)) + ": " + finding.GetText());
        return lines;
    }

    Lines Check(const Bytes& image)
    {
        m_Folder.Write("model.zek", image);
        return Check();
    }

    Lines Check(const SModel& model) { return Check(CModelBuilder::Build(model).GetImage()); }

    zektool::SCheckOptions m_Options;
    zektool::SCheckResult m_Result; ///< of the last check
    CTemporaryFolder m_Folder;
};

} // namespace testsupport
