#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "ZEKOverwriter/SCompressionFamily.h"

namespace zek
{

/// What a model has compressed variants of.
enum class EZEKItemKind
{
    Texture,
    Cubemap,
    Lightmap,
};

/// One texture, cubemap or lightmap, and the name that its variants are looked for by.
struct SZEKItem
{
    /// A texture is looked for by its index, never by its own name.
    static SZEKItem MakeTexture(std::size_t index);

    /// The cubemap of a reflection probe, by the probe's name.
    static SZEKItem MakeCubemap(std::string_view probeName);

    /// A lightmap, by its name without the extension.
    static SZEKItem MakeLightmap(const std::string& name);

    EZEKItemKind kind;
    std::string name;
};

/// A yes or no per compression family, in the order of `CompressionFamilies`.
using FamilyFlags = std::array<bool, CompressionFamilyCount>;

/// Looks beside a model for the compressed variants of its items. It prints and changes nothing.
class CZEKVariantFinder
{
public:
    /// Tells whether there is a variant at a path.
    using ExistenceTest = std::function<bool(const std::string& path)>;

    /// Looks in a folder, which is the model's path up to and with its last separator, or empty for
    /// the working folder. The faces of a cubemap have backslashes in their paths, also where the
    /// file system takes these for ordinary characters of a name, unless another separator is
    /// given.
    explicit CZEKVariantFinder(
        std::string folder, ExistenceTest isExist = IsExistFile, char cubemapSeparator = '\\');

    /// Tells which variants an item has. A cubemap's has to have all six faces; each of the 24 is
    /// looked for, face by face and in each face family by family.
    FamilyFlags Find(const SZEKItem& item);

    /// Returns the number of files that make up one variant: 6 for a cubemap, 1 for the others.
    static int GetFileCount(EZEKItemKind kind);

    /// Returns the path of a file of an item's variant, from 0 to below `GetFileCount`. The result
    /// is valid until the next call.
    const std::string& GetPath(const SZEKItem& item, std::size_t family, int file);

    /// The test that takes a file for existing when it can be opened: `CFindFile::IsExistFile`.
    static bool IsExistFile(const std::string& path);

private:
    std::string m_Folder;
    ExistenceTest m_IsExist;
    char m_CubemapSeparator;
    std::string m_Path; // one for all calls, which is faster than one for each
};

} // namespace zek
