#pragma once

#include <string>
#include <vector>

namespace zek
{

/// A texture of a model. Immutable.
class CZEKTexture
{
public:
    /// Takes every field as the getter of its name gives it back.
    CZEKTexture(
        const std::string& fileName,
        bool isClamp,
        const std::vector<int>& textureCompressionSupportedList)
        : m_FileName(fileName)
        , m_IsClamp(isClamp)
        , m_TextureCompressionSupportedList(textureCompressionSupportedList)
    {
    }

    CZEKTexture(const CZEKTexture&) = default;
    CZEKTexture& operator=(const CZEKTexture&) = default;
    virtual ~CZEKTexture() = default;

    /// The name of the texture's file as the model stores it.
    const std::string& GetFileName() const { return m_FileName; }

    /// True when the texture ends at its edges instead of repeating.
    bool IsClamp() const { return m_IsClamp; }

    /// One int per compression family, 1 where a compressed variant exists.
    const std::vector<int>& GetTextureCompressionSupportedList() const
    {
        return m_TextureCompressionSupportedList;
    }

private:
    std::string m_FileName;
    bool m_IsClamp;
    std::vector<int> m_TextureCompressionSupportedList;
};

} // namespace zek
