#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "ZEKFormat/EZEKFieldType.h"
#include "ZEKFormat/SZEKRefusal.h"

namespace zek
{

/// A field of a model file.
struct SZEKField
{
    std::string_view path; ///< such as "materials[1].cutoff"
    std::int64_t offset;   ///< in bytes from the start of the file
    std::int64_t size;     ///< in bytes; of a text with its zero byte
    EZEKFieldType type;
    int count;                  ///< of values in a row: 3 for a position; 1 for a text
    const unsigned char* bytes; ///< the values as the file has them; a text without its zero byte

    /// Returns a value as a number. An index is below count, and the type no text.
    double GetNumber(int index = 0) const;

    /// Returns a text without its zero byte.
    std::string_view GetText() const;
};

/// A list of elements of one size, such as the vertices of a mesh.
struct SZEKArray
{
    std::string_view path; ///< such as "meshes[0].vertices"
    std::int64_t offset;   ///< of the first element
    int elementSize;       ///< in bytes
    std::int64_t count;
};

/// Hears of every field of a model file in file order. Fields and arrays follow each other without
/// gaps from the first byte on. Paths, bytes and texts are valid until the function returns.
///
///     struct CPrinter : zek::CZEKVisitor
///     {
///         void OnField(const zek::SZEKField& field) override { ... }
///     };
///     CPrinter printer;
///     zek::VisitFields(image.data(), size, printer);
class CZEKVisitor
{
public:
    virtual ~CZEKVisitor() = default;

    /// A section begins: "header", "nodes", "meshes", "materials", "probes", "textures", "bones" or
    /// "lightmaps". Materials are begun a second time after the probes that stand among them.
    virtual void OnSection(std::string_view) {}

    virtual void OnField(const SZEKField& field) = 0;

    /// An array is one event, also without elements. Where its elements are wanted there is none,
    /// so that nothing is heard of an array without any. Of the vertices of a collision mesh that
    /// is cut short the array has those that are there, not as many as stated.
    virtual void OnArray(const SZEKArray&) {}

    /// Tells whether the elements of the array of this path are wanted, each of which is a field or
    /// several: "meshes[0].vertices[7].position", "meshes[0].primitives[0].indices[7]".
    virtual bool IsElementsWanted(std::string_view) { return false; }
};

/// Shows a visitor the fields of an image of size bytes. Returns nothing when the file is accepted,
/// or why it is refused; the visitor then has heard of what stands before that, and of the field
/// itself if its value is wrong.
std::optional<SZEKRefusal>
VisitFields(const unsigned char* image, std::int64_t size, CZEKVisitor& visitor);

/// The same of an open file.
std::optional<SZEKRefusal> VisitFields(filesystem::CRandomAccessFile& file, CZEKVisitor& visitor);

} // namespace zek
