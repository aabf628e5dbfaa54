#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace testsupport
{

enum class EFieldKind
{
    Byte,
    Short, ///< signed
    Word,  ///< unsigned, of 16 bits
    Int,
    Float,
    Text ///< with its terminator
};

/// The size in bytes of one value; 1 for a text.
std::size_t GetSize(EFieldKind kind);

/// Where a field lies in a model file.
struct SField
{
    std::string path; ///< such as "meshes[0].vertices[2].position"
    EFieldKind kind;
    std::size_t count; ///< of values in a row; 1 for a text
    std::size_t offset;
    std::size_t size; ///< of all values, in bytes
    int array;        ///< the list that it is an element of, or -1
};

/// Where a list of elements of one size lies.
struct SArray
{
    std::string path;
    std::size_t offset;
    std::size_t elementSize;
    std::size_t count;
    std::size_t firstField; ///< the number of fields before it
};

/// Where a section begins.
struct SSection
{
    std::string name;
    std::size_t firstField; ///< the number of fields before it
};

/// Where a record lies, and the count that it is one of.
struct SRecord
{
    std::size_t begin;
    std::size_t end;
    std::size_t countOffset;
};

/// A count of records, and where it stands.
struct SCount
{
    int value;
    std::size_t offset;
};

/// The fields, lists and records of a model file in file order, as they are written or read.
class CModelFields
{
public:
    /// All fields, without gaps; those of elements, too.
    const std::vector<SField>& GetFields() const { return m_Fields; }

    const std::vector<SArray>& GetArrays() const { return m_Arrays; }

    const std::vector<SSection>& GetSections() const { return m_Sections; }

    /// Nodes, meshes, primitives, morphs, materials, textures, probes, bones and lightmaps.
    const std::vector<SRecord>& GetRecords() const { return m_Records; }

    /// Offset of the n-th field of a name, from 0; fails the test program when there is none. The
    /// name is a path, or the end of one, without indices: "shaderType", "meshes.vertexCount".
    std::size_t GetOffset(const std::string& name, int n = 0) const;

    /// Offset of the four flags of each texture, probe and lightmap in file order.
    std::vector<std::size_t> GetTextureFlagOffsets() const { return GetOffsets("textures.flags"); }
    std::vector<std::size_t> GetProbeFlagOffsets() const { return GetOffsets("probes.flags"); }
    std::vector<std::size_t> GetLightmapFlagOffsets() const
    {
        return GetOffsets("lightmaps.flags");
    }

    int GetVersion() const { return m_Version; }

    // What the description of the format calls. Sections, records and parts make up the paths.

    void Section(const std::string& name);
    void Enter(const std::string& name, int index = -1);
    void Leave();

    /// Calls describe for each record, in a list that has or gets as many.
    template <typename Item, typename Describe>
    void Records(
        const std::string& kind, const SCount& count, std::vector<Item>& items, Describe describe)
    {
        for (int i = 0; i < count.value; ++i)
        {
            if (items.size() == static_cast<std::size_t>(i))
                items.emplace_back();
            Enter(kind, i);
            const std::size_t begin = m_Pos;
            describe(items[static_cast<std::size_t>(i)]);
            m_Records.push_back({begin, m_Pos, count.offset});
            Leave();
        }
    }

    /// Calls describe for each element.
    template <typename Describe>
    void Elements(const std::string& name, std::size_t size, int count, Describe describe)
    {
        m_Array = static_cast<int>(m_Arrays.size());
        m_Arrays.push_back({MakePath(name), m_Pos, size, 0, m_Fields.size()});
        for (int i = 0; i < count; ++i)
        {
            Enter(name, i);
            describe(static_cast<std::size_t>(i));
            ++m_Arrays.back().count;
            Leave();
        }
        m_Array = -1;
    }

protected:
    struct SScope
    {
        std::string name;
        int index; ///< in a list, or -1
        std::size_t pathLength;
    };

    explicit CModelFields(int version) : m_Version(version) {}

    /// Notes a field at the position, which moves after it.
    void AddField(const std::string& name, EFieldKind kind, std::size_t count);

    int m_Version;
    std::size_t m_Pos = 0;
    std::vector<SScope> m_Scopes;

private:
    std::vector<std::size_t> GetOffsets(const std::string& name) const;
    std::string MakePath(const std::string& name) const;

    std::string m_Path;
    int m_Array = -1;
    std::vector<SField> m_Fields;
    std::vector<SArray> m_Arrays;
    std::vector<SSection> m_Sections;
    std::vector<SRecord> m_Records;
};

} // namespace testsupport
