#include "VariantFolder.h"

#include <string>

namespace fuzz
{

namespace
{

struct CVariantFolder : testsupport::CTemporaryFolder
{
    CVariantFolder();
};

CVariantFolder::CVariantFolder()
{
    int count = 0;
    for (std::size_t family = 0; family < Families.size(); ++family)
    {
        const std::string textures = std::string("tex_") + Families[family] + "/";
        for (const char* stem : {"000", "001", "LightMap000", "LightMap001"})
        {
            if (count++ % 3 == 0)
                Write(textures + stem + Extensions[family], std::string());
        }
        const std::string cubemaps = std::string("tex_reflection_cube_") + Families[family] + "\\";
        for (const char* probe : {"0", "1", "Probe", "Hall"})
        {
            const int faceCount = count++ % 3 == 0 ? 6 : 5;
            for (int face = 0; face < faceCount; ++face)
                Write(
                    cubemaps + probe + "\\reflection_cube_" + std::to_string(face) +
                        Extensions[family],
                    std::string());
        }
    }
}

} // namespace

const testsupport::CTemporaryFolder& GetVariantFolder()
{
    static const CVariantFolder folder;
    return folder;
}

} // namespace fuzz
