#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zek
{

/// A texture of a model. Immutable.
class CZEKTexture
{
public:
    /// Takes every field as the getter of its name gives it back.
    CZEKTexture(
        std::string fileName, bool isClamp, std::vector<int> textureCompressionSupportedList)
        : m_FileName(std::move(fileName))
        , m_IsClamp(isClamp)
        , m_TextureCompressionSupportedList(std::move(textureCompressionSupportedList))
    {
    }

    CZEKTexture(const CZEKTexture&) = default;
    CZEKTexture(CZEKTexture&&) = default;
    CZEKTexture& operator=(const CZEKTexture&) = default;
    CZEKTexture& operator=(CZEKTexture&&) = default;
    virtual ~CZEKTexture() = default;

    /// The name of the texture's file as the model stores it.
    const std::string& GetFileName() const { return m_FileName; }

    /// Tells whether the texture ends at its edges instead of repeating.
    bool IsClamp() const { return m_IsClamp; }

    /// One int per compression family: the byte of the file, which is 1 where a compressed variant
    /// exists and may have any value in a file that is wrong.
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
