#pragma once

#include <string>
#include <utility>

#include "Independent/Math3D/SColor.h"
#include "Independent/Math3D/SUV.h"
#include "ZEKFormat/EZEKBlendMode.h"
#include "ZEKFormat/EZEKShaderType.h"

namespace zek
{

/// A material of a model. Immutable.
class CZEKMaterial
{
public:
    /// Takes every field as the getter of its name gives it back.
    CZEKMaterial(
        std::string name,
        EZEKShaderType shaderType,
        EZEKBlendMode blendMode,
        float cutoff,
        bool isDoubleSided,
        bool isUseVertexColor,
        const SColor& color,
        const SColor& emissionColor,
        int textureIndexMain,
        int textureIndexNormal,
        int textureIndexEmission,
        int textureIndexRoughness,
        const SUV& textureScaleMain,
        const SUV& textureOffsetMain,
        const SUV& texture1ScaleMain,
        const SUV& texture1OffsetMain)
        : m_Name(std::move(name))
        , m_ShaderType(shaderType)
        , m_BlendMode(blendMode)
        , m_Cutoff(cutoff)
        , m_IsDoubleSided(isDoubleSided)
        , m_IsUseVertexColor(isUseVertexColor)
        , m_Color(color)
        , m_EmissionColor(emissionColor)
        , m_TextureIndexMain(textureIndexMain)
        , m_TextureIndexNormal(textureIndexNormal)
        , m_TextureIndexEmission(textureIndexEmission)
        , m_TextureIndexRoughness(textureIndexRoughness)
        , m_TextureScaleMain(textureScaleMain)
        , m_TextureOffsetMain(textureOffsetMain)
        , m_Texture1ScaleMain(texture1ScaleMain)
        , m_Texture1OffsetMain(texture1OffsetMain)
    {
    }

    CZEKMaterial(const CZEKMaterial&) = default;
    CZEKMaterial(CZEKMaterial&&) = default;
    CZEKMaterial& operator=(const CZEKMaterial&) = default;
    CZEKMaterial& operator=(CZEKMaterial&&) = default;
    virtual ~CZEKMaterial() = default;

    /// The name of the material.
    const std::string& GetName() const { return m_Name; }

    /// The shader that draws the material.
    EZEKShaderType GetShaderType() const { return m_ShaderType; }

    /// How it is blended with what is behind it.
    EZEKBlendMode GetBlendMode() const { return m_BlendMode; }

    /// The alpha below which a pixel is not drawn.
    float GetCutoff() const { return m_Cutoff; }

    /// Tells whether back faces are drawn as well.
    bool IsDoubleSided() const { return m_IsDoubleSided; }

    /// Tells whether the vertices' colours count.
    bool IsUseVertexColor() const { return m_IsUseVertexColor; }

    /// The colour of the surface.
    const SColor& GetColor() const { return m_Color; }

    /// The colour of the light that it gives off.
    const SColor& GetEmissionColor() const { return m_EmissionColor; }

    /// The main texture's index among the model's textures; -1 for none.
    int GetTextureIndexMain() const { return m_TextureIndexMain; }

    /// The normal map's index; -1 for none.
    int GetTextureIndexNormal() const { return m_TextureIndexNormal; }

    /// The emission map's index; -1 for none.
    int GetTextureIndexEmission() const { return m_TextureIndexEmission; }

    /// The roughness map's index; -1 for none.
    int GetTextureIndexRoughness() const { return m_TextureIndexRoughness; }

    /// What the texture coordinates are multiplied by for the main texture.
    const SUV& GetTextureScaleMain() const { return m_TextureScaleMain; }

    /// What is added to them then.
    const SUV& GetTextureOffsetMain() const { return m_TextureOffsetMain; }

    /// What the texture coordinates are multiplied by for the second texture.
    const SUV& GetTexture1ScaleMain() const { return m_Texture1ScaleMain; }

    /// What is added to them then.
    const SUV& GetTexture1OffsetMain() const { return m_Texture1OffsetMain; }

private:
    std::string m_Name;
    EZEKShaderType m_ShaderType;
    EZEKBlendMode m_BlendMode;
    float m_Cutoff;
    bool m_IsDoubleSided;
    bool m_IsUseVertexColor;
    SColor m_Color;
    SColor m_EmissionColor;
    int m_TextureIndexMain;
    int m_TextureIndexNormal;
    int m_TextureIndexEmission;
    int m_TextureIndexRoughness;
    SUV m_TextureScaleMain;
    SUV m_TextureOffsetMain;
    SUV m_Texture1ScaleMain;
    SUV m_Texture1OffsetMain;
};

} // namespace zek
