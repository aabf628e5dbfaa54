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

} // namespace

void ForEachNastyModel(int version, const std::function<void(const SNastyModel&)>& use)
{
    const CModelBuilder builder = CModelBuilder::Build(MakeMarkedModel(version));
    const Bytes& original = builder.GetImage();

    for (const SField& field : builder.GetFields())
    {
        SNastyModel model;
        const auto useWith = [&](const std::string& value)
        {
            model.what = "version " + std::to_string(version) + ", " + field.name + " at " +
                         std::to_string(field.offset) + " = " + value;
            use(model);
        };
        model.image = original;
        unsigned char* bytes = model.image.data() + field.offset;

        switch (field.kind)
        {
        case EFieldKind::Int:
        {
            std::vector<unsigned int> values = NastyInts;
            const std::size_t left = original.size() - field.offset - field.size;
            for (std::size_t value : {left - 1, left, left + 1})
                values.push_back(static_cast<unsigned int>(value));
            for (unsigned int value : values)
            {
                fileimage::WriteDWord(bytes, value);
                useWith(std::to_string(value));
            }
            break;
        }
        case EFieldKind::Float:
            for (unsigned int value : NastyFloats)
            {
                fileimage::WriteDWord(bytes, value);
                useWith(std::to_string(value));
            }
            break;
        case EFieldKind::Short:
            for (unsigned short value : NastyShorts)
            {
                fileimage::WriteWord(bytes, value);
                useWith(std::to_string(value));
            }
            break;
        case EFieldKind::Byte:
            for (unsigned char value : NastyBytes)
            {
                *bytes = value;
                useWith(std::to_string(value));
            }
            break;
        case EFieldKind::Block:
            std::fill_n(bytes, field.size, static_cast<unsigned char>(0xff));
            useWith("all bits");
            break;
        case EFieldKind::Text:
            bytes[field.size - 1] = 'x';
            useWith("text without its terminator");
            bytes[0] = 0;
            useWith("text that ends at once");
            break;
        }
    }
}
