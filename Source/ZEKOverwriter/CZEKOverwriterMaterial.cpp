#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/EZEKShaderType.h"
#include "ZEKOverwriter/ZEKRecord.h"
#include "ZEKOverwriter/ZEKVersion.h"

namespace zek
{

namespace
{

constexpr int TextureTransformSize = 2 * SUVSize;

/// Returns the bytes demanded for the fields from the shader type to the texture transforms. The
/// roughness index is counted always, though most materials do not have it.
int GetMaterialDemand(int version)
{
    int demand = 2 * IntSize + FloatSize; // shader type, blend mode, cutoff
    if (version >= version::MaterialFirstFlag)
        demand += ByteSize;
    if (version >= version::MaterialSecondFlag)
        demand += ByteSize;
    demand += ByteSize;       // third flag
    demand += 2 * SColorSize; // colour, emission colour
    demand += 4 * IntSize;    // main, normal, emission and roughness texture index
    if (version >= version::MaterialMainTransform)
        demand += TextureTransformSize;
    if (version >= version::MaterialSecondTransform)
        demand += TextureTransformSize;
    return demand;
}

bool HasRoughnessIndex(EZEKShaderType shaderType, int version)
{
    return shaderType == EZEKShaderType::Shader7 ||
           (shaderType == EZEKShaderType::Shader0 && version >= version::MaterialRoughnessIndex);
}

bool AnalyseUVList(fileimage::CFileImageAnalyser& reader)
{
    int hasUVList;
    if (!reader.GetInt(hasUVList))
        return false;
    if (hasUVList == 0)
        return true;

    if (!reader.IsCanRead(2 * FloatSize + IntSize))
        return false;
    reader.GetFloatNoCheck();
    reader.GetFloatNoCheck();
    const int count = reader.GetIntNoCheck();

    if (!IsCanReadList(reader, SUVSize, count))
        return false;
    std::vector<SUV> uvList(GetListSize(count));
    for (SUV& uv : uvList)
        uv = ReadSUV(reader);
    return true;
}

} // namespace

bool CZEKOverwriter::AnalyseMaterialList(fileimage::CFileImageAnalyser& reader, int version)
{
    int count;
    if (!reader.GetInt(count))
        return false;

    if (version >= version::ReflectionProbeCount && version < version::TexturesOnly &&
        !AnalyseReflectionProbe(reader, version))
        return false;

    for (int i = 0; i < count; ++i)
    {
        if (!AnalyseMaterial(reader, version))
            return false;
    }
    return true;
}

bool CZEKOverwriter::AnalyseMaterial(fileimage::CFileImageAnalyser& reader, int version)
{
    std::string name;
    if (!reader.GetZeroTerminatedString(name))
        return false;

    if (!reader.IsCanRead(GetMaterialDemand(version)))
        return false;
    const EZEKShaderType shaderType = static_cast<EZEKShaderType>(reader.GetIntNoCheck());
    reader.GetIntNoCheck();   // blend mode
    reader.GetFloatNoCheck(); // cutoff
    if (version >= version::MaterialFirstFlag)
        reader.GetByteNoCheck();
    if (version >= version::MaterialSecondFlag)
        reader.GetByteNoCheck();
    reader.GetByteNoCheck(); // third flag
    AnalyseColor(reader);    // colour
    AnalyseColor(reader);    // emission colour
    reader.GetIntNoCheck();  // main texture index
    reader.GetIntNoCheck();  // normal texture index
    reader.GetIntNoCheck();  // emission texture index
    if (HasRoughnessIndex(shaderType, version))
        reader.GetIntNoCheck();
    if (shaderType == EZEKShaderType::Shader1 && version >= version::MaterialShader1Block)
        reader.GetIntNoCheck();
    if (version >= version::MaterialMainTransform)
        AnalyseTextureTransform(reader, version);
    if (version >= version::MaterialSecondTransform)
        AnalyseTextureTransform(reader, version);

    if (version >= version::MaterialUVList && !AnalyseUVList(reader))
        return false;

    int legacyInt;
    if (version >= version::MaterialLegacyInt && version < version::MaterialNoLegacyInt &&
        !reader.GetInt(legacyInt))
        return false;

    return AnalyseShaderParameters(reader, version, shaderType);
}

bool CZEKOverwriter::AnalyseShaderParameters(
    fileimage::CFileImageAnalyser& reader, int version, EZEKShaderType shaderType)
{
    switch (shaderType)
    {
    case EZEKShaderType::Shader0:
    case EZEKShaderType::Shader7:
        if (version < version::MaterialRoughnessParameters)
            return true;
        if (!reader.IsCanRead(2 * FloatSize))
            return false;
        reader.GetFloatNoCheck();
        reader.GetFloatNoCheck();
        return true;

    case EZEKShaderType::Shader1:
    {
        if (version < version::MaterialShader1Block)
            return true;
        if (!reader.IsCanRead(6 * FloatSize + IntSize + 2 * SColorSize))
            return false;
        reader.GetFloatNoCheck();
        reader.GetFloatNoCheck();
        AnalyseColor(reader);
        reader.GetFloatNoCheck();
        reader.GetFloatNoCheck();
        reader.GetFloatNoCheck();
        reader.GetIntNoCheck();
        AnalyseColor(reader);
        reader.GetFloatNoCheck();

        if (version < version::MaterialShader1SubBlock)
            return true;
        int hasSubBlock;
        if (!reader.GetInt(hasSubBlock))
            return false;
        if (hasSubBlock != 1)
            return true;
        if (!reader.IsCanRead(2 * FloatSize + IntSize + SUVSize))
            return false;
        reader.GetFloatNoCheck();
        reader.GetFloatNoCheck();
        reader.GetIntNoCheck();
        ReadSUV(reader);
        return true;
    }

    case EZEKShaderType::Shader2:
        if (!reader.IsCanRead(SColorSize + 2 * FloatSize))
            return false;
        AnalyseColor(reader);
        reader.GetFloatNoCheck();
        reader.GetFloatNoCheck();

        if (version < version::MaterialSecondColor)
            return true;
        if (!reader.IsCanRead(2 * SColorSize + 3 * FloatSize))
            return false;
        AnalyseColor(reader);
        reader.GetFloatNoCheck();
        reader.GetFloatNoCheck();
        reader.GetFloatNoCheck();
        AnalyseColor(reader);
        return true;

    case EZEKShaderType::Shader3:
        if (!reader.IsCanRead(2 * SColorSize + 5 * FloatSize))
            return false;
        AnalyseColor(reader);
        AnalyseColor(reader);
        for (int i = 0; i < 5; ++i)
            reader.GetFloatNoCheck();
        return true;

    case EZEKShaderType::Shader6:
        if (!reader.IsCanRead(FloatSize + IntSize))
            return false;
        reader.GetFloatNoCheck();
        reader.GetIntNoCheck();
        return true;

    case EZEKShaderType::Shader4:
    case EZEKShaderType::Shader5:
        return true;
    }
    // Any other number is accepted and has no parameters.
    return true;
}

STextureTransform
CZEKOverwriter::AnalyseTextureTransform(fileimage::CFileImageAnalyser& reader, int version)
{
    STextureTransform transform;
    transform.scale = ReadSUV(reader);
    transform.offset = ReadSUV(reader);
    if (version >= version::MaterialFlippedOffset || transform.scale.v < 1.0f)
        transform.offset.v = 1.0f - transform.offset.v - transform.scale.v;
    return transform;
}

SColor CZEKOverwriter::AnalyseColor(fileimage::CFileImageAnalyser& reader)
{
    SColor color;
    color.r = reader.GetFloatNoCheck();
    color.g = reader.GetFloatNoCheck();
    color.b = reader.GetFloatNoCheck();
    color.a = reader.GetFloatNoCheck();
    return color;
}

} // namespace zek
