#include "Reliability/NastyModels.h"

#include <algorithm>

#include "Independent/FileImage/FileImage.h"
#include "Support/CModelBuilder.h"

using testsupport::Bytes;
using testsupport::CModelBuilder;
using testsupport::EFieldKind;
using testsupport::SField;

namespace
{

const std::vector<unsigned int> NastyInts = {0,          1,          0xffffffff, 2,     0x7fffffff,
                                             0x80000000, 0x40000000, 0x55555556, 65536, 65537};
const std::vector<unsigned int> NastyFloats = {0x7fc00000, 0xff800000}; // no number, -infinity
const std::vector<unsigned char> NastyBytes = {0, 1, 2, 0xff};
const std::vector<unsigned short> NastyShorts = {0x8000, 0xffff};

testsupport::SModel MakeMarkedModel(int version)
{
    testsupport::SModel model = testsupport::MakeFullModel(version);
    const testsupport::Flags flags = {FlagBefore, FlagBefore, FlagBefore, FlagBefore};
    for (testsupport::STexture& texture : model.textures)
        texture.flags = flags;
    for (testsupport::SProbe& probe : model.probes)
        probe.flags = flags;
    for (testsupport::SLightmap& lightmap : model.lightmaps)
        lightmap.flags = flags;
    return model;
}

/// Changes one number of a field in an image to each nasty one of its kind.
void ForEachNastyNumber(
    Bytes& image,
    std::size_t offset,
    EFieldKind kind,
    const std::function<void(unsigned int)>& useWith)
{
    unsigned char* bytes = image.data() + offset;
    const auto useEach = [&](const auto& values, auto write)
    {
        for (auto value : values)
        {
            write(bytes, value);
            useWith(value);
        }
    };
    if (kind == EFieldKind::Int)
    {
        std::vector<unsigned int> values = NastyInts;
        const auto left = static_cast<unsigned int>(image.size() - offset - sizeof(int));
        values.insert(values.end(), {left - 1, left, left + 1});
        useEach(values, fileimage::WriteDWord);
    }
    else if (kind == EFieldKind::Float)
        useEach(NastyFloats, fileimage::WriteDWord);
    else if (kind == EFieldKind::Byte)
        useEach(NastyBytes, [](unsigned char* byte, unsigned char value) { *byte = value; });
    else
        useEach(NastyShorts, fileimage::WriteWord);
}

} // namespace

void ForEachNastyModel(int version, const std::function<void(const SNastyModel&)>& use)
{
    const CModelBuilder builder = CModelBuilder::Build(MakeMarkedModel(version));
    for (const SField& field : builder.GetFields())
    {
        SNastyModel model;
        const auto useWith = [&](const std::string& value)
        {
            model.what = "version " + std::to_string(version) + ", " + field.path + " at " +
                         std::to_string(field.offset) + " = " + value;
            use(model);
        };
        model.image = builder.GetImage();
        if (field.kind == EFieldKind::Text)
        {
            model.image[field.offset + field.size - 1] = 'x';
            useWith("text without its terminator");
            model.image[field.offset] = 0;
            useWith("text that ends at once");
            continue;
        }
        for (std::size_t i = 0; i < field.count; ++i)
        {
            model.image = builder.GetImage();
            ForEachNastyNumber(
                model.image, field.offset + i * testsupport::GetSize(field.kind), field.kind,
                [&](unsigned int value) { useWith(std::to_string(value)); });
        }
    }
}
