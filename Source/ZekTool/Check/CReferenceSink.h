#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "ZEKFormat/CZEKRefusalSink.h"
#include "ZekTool/Check/CFindingList.h"
#include "ZekTool/Check/SSurvey.h"

namespace zektool
{

/// Finds names and indices that lead elsewhere and, in a deep check, positions that are none. It
/// goes over a model that has been surveyed, since a model's nodes and meshes stand before what
/// they refer to.
class CReferenceSink : public zek::CZEKRefusalSink
{
public:
    /// Borrows the survey and the findings. Parents are those of all nodes; they may be missing
    /// when every parent stands before its child.
    CReferenceSink(
        const SSurvey& survey, std::vector<int> parents, bool isDeep, CFindingList& findings);

    /// Tells whether the survey alone says that there is something to find.
    static bool IsNeeded(const SSurvey& survey);

    void BeginSection(const char* name);
    void Text(const char* field, std::int64_t offset, std::string_view value);
    bool WantsElements(const char* name) const;
    void BeginElement(const char* name, std::int64_t index);

    void Field(
        const char* name,
        zek::EZEKFieldType type,
        int count,
        std::int64_t offset,
        const unsigned char* bytes);

    void Node(const zek::SZEKNode& node);
    void BeginColliderMesh(const zek::SZEKMeshHeader& mesh) { m_VertexCount = mesh.vertexCount; }
    void BeginMesh(const zek::SZEKMeshHeader& mesh) { m_VertexCount = mesh.vertexCount; }
    void Vertex(const zek::SZEKMeshHeader& mesh, const zek::SZEKVertex& vertex);
    void Index(int index);
    void MorphPosition(const S3D& position);

private:
    /// A field that holds an index into a list of the model.
    struct SReference
    {
        std::string_view field;
        EFinding finding;
        int count;            ///< of the list
        std::string_view one; ///< what the list has, as one and as several
        std::string_view several;
    };

    void CheckReference(const char* name, int index, std::int64_t offset);
    void CheckBones(const zek::SZEKVertex& vertex);
    void CheckPosition(const S3D& position, const char* field);

    /// Adds a finding about the element that the walk is in, or about a field of it.
    void AddOfElement(EFinding finding, const char* field, const std::string& message);

    const SSurvey& m_Survey;
    bool m_IsDeep;
    CFindingList& m_Findings;
    std::array<SReference, 7> m_References;
    std::vector<int> m_Parents;
    std::vector<int> m_Circles;
    std::size_t m_NextCircle = 0;
    int m_NodeCount = 0; // of the nodes that have been walked
    int m_VertexCount = 0;
    std::int64_t m_ParentOffset = 0;
    bool m_IsNamingFiles = false;

    // The element of an array that the walk is in. Of each array the first finding is enough.
    const char* m_Array = "";
    std::int64_t m_ElementIndex = 0;
    std::int64_t m_ElementOffset = 0;
    bool m_IsElementStart = false;
    bool m_HasFoundPosition = false;
    bool m_HasFoundIndex = false;
};

} // namespace zektool
