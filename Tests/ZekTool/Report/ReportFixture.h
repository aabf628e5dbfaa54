#pragma once

#include <string>

#include <gtest/gtest.h>

#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"
#include "ZekTool/Report/SModelReport.h"

namespace testsupport
{

/// A model in a folder of its own, to be reported on: two textures, a cubemap of which a face is
/// missing, and a lightmap.
class ReportFixture : public testing::Test
{
protected:
    ReportFixture()
    {
        m_Model.version = 26;
        m_Model.marker = 1;
        m_Model.textures = {{"floor.png", 1, {1, 0, 0, 0}}, {"<wall>", 1, {0, 0, 0, 7}}};
        m_Model.probes = {SProbe()};
        m_Model.probes[0].name = "Hall";
        m_Model.lightmaps = {{"Light.png", {0, 0, 0, 1}}};
        for (const char* face : {"0", "1", "2", "4", "5"})
            m_Folder.Write(
                std::string("tex_reflection_cube_etc\\Hall\\reflection_cube_") + face + ".pvr",
                "variant");
        m_Folder.Write("tex_pvrtc/001.pvr", "variant");
        m_Folder.Write("tex_dxt/Light.dds", "variant");
    }

    zektool::SModelReport MakeReport()
    {
        m_Folder.Write("model.zek", CModelBuilder::Build(m_Model).GetImage());
        return zektool::MakeModelReport(m_Path, false);
    }

    CTemporaryFolder m_Folder;
    SModel m_Model;
    const std::string m_Path = m_Folder.GetPath("model.zek");
};

} // namespace testsupport
