#include "ZekTool/Check/CReferenceSink.h"

#include <cmath>
#include <string>
#include <utility>

#include "Independent/FileImage/FileImage.h"
#include "ZekTool/Check/CSurveySink.h"
#include "ZekTool/Check/NodeCircles.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

constexpr int NoIndex = -1;

std::string MakeCountText(int index, int count, std::string_view one, std::string_view several)
{
    return std::to_string(index) + ", and there " + (count == 1 ? "is " : "are ") +
           MakeCount(static_cast<std::size_t>(count), one, several);
}

bool IsFinite(const S3D& position)
{
    return std::isfinite(position.x) && std::isfinite(position.y) && std::isfinite(position.z);
}

} // namespace

CReferenceSink::CReferenceSink(
    const SSurvey& survey, std::vector<int> parents, bool isDeep, CFindingList& findings)
    : m_Survey(survey)
    , m_IsDeep(isDeep)
    , m_Findings(findings)
    , m_References({{
          {"parentNodeIndex", EFinding::ParentIndex, survey.nodeCount, "node", "nodes"},
          {"meshIndex", EFinding::MeshIndex, survey.meshCount, "mesh", "meshes"},
          {"materialIndex", EFinding::MaterialIndex, survey.materialCount, "material", "materials"},
          {"mainTextureIndex", EFinding::TextureIndex, survey.GetTextureCount(), "texture",
           "textures"},
          {"normalTextureIndex", EFinding::TextureIndex, survey.GetTextureCount(), "texture",
           "textures"},
          {"emissionTextureIndex", EFinding::TextureIndex, survey.GetTextureCount(), "texture",
           "textures"},
          {"roughnessTextureIndex", EFinding::TextureIndex, survey.GetTextureCount(), "texture",
           "textures"},
      }})
    , m_Parents(std::move(parents))
    , m_Circles(FindNodeCircles(m_Parents))
{
}

bool CReferenceSink::IsNeeded(const SSurvey& survey)
{
    return survey.hasUnsafeName || !survey.parentIndices.IsWithin(survey.nodeCount) ||
           !survey.meshIndices.IsWithin(survey.meshCount) ||
           !survey.materialIndices.IsWithin(survey.materialCount) ||
           !survey.textureIndices.IsWithin(survey.GetTextureCount()) || survey.hasLaterParent;
}

void CReferenceSink::BeginSection(const char* name)
{
    CZEKRefusalSink::BeginSection(name);
    const std::string_view section = name;
    m_IsNamingFiles = section == "textures" || section == "lightmaps" || section == "probes";
}

void CReferenceSink::Text(const char* field, std::int64_t offset, std::string_view value)
{
    CZEKRefusalSink::Text(field, offset, value);
    if (!m_IsNamingFiles || !IsUnsafeName(value))
        return;
    m_Findings.Add(
        EFinding::UnsafeName,
        [&]
        {
            SFinding finding;
            finding.location = Locate(field, offset);
            finding.message = "the name leads to another folder";
            return finding;
        });
}

bool CReferenceSink::WantsElements(const char* name) const
{
    const std::string_view array = name;
    return m_IsDeep && (array == "vertices" || array == "indices" || array == "positions");
}

void CReferenceSink::BeginElement(const char* name, std::int64_t index)
{
    m_Array = name;
    m_ElementIndex = index;
    m_IsElementStart = true;
    if (index == 0)
    {
        m_HasFoundPosition = false;
        m_HasFoundIndex = false;
    }
}

void CReferenceSink::Field(
    const char* name,
    zek::EZEKFieldType type,
    int count,
    std::int64_t offset,
    const unsigned char* bytes)
{
    if (m_IsElementStart)
        m_ElementOffset = offset;
    m_IsElementStart = false;
    if (type == zek::EZEKFieldType::Int && count == 1 && *name != '\0')
        CheckReference(name, fileimage::ReadInt(bytes), offset);
}

void CReferenceSink::CheckReference(const char* name, int index, std::int64_t offset)
{
    for (const SReference& reference : m_References)
    {
        if (reference.field != name)
            continue;
        if (reference.finding == EFinding::ParentIndex)
            m_ParentOffset = offset;
        if (index >= NoIndex && index < reference.count)
            return;
        m_Findings.Add(
            reference.finding,
            [&]
            {
                SFinding finding;
                finding.location = Locate(name, offset);
                finding.message =
                    MakeCountText(index, reference.count, reference.one, reference.several);
                return finding;
            });
    }
}

void CReferenceSink::Node(const zek::SZEKNode&)
{
    const int node = m_NodeCount++;
    if (m_NextCircle == m_Circles.size() || m_Circles[m_NextCircle] != node)
        return;
    ++m_NextCircle;
    m_Findings.Add(
        EFinding::ParentCircle,
        [&]
        {
            SFinding finding;
            finding.location = Locate("parentNodeIndex", m_ParentOffset);
            finding.message = "the parents form a circle, " + DescribeNodeCircle(m_Parents, node);
            return finding;
        });
}

void CReferenceSink::Vertex(const zek::SZEKMeshHeader& mesh, const zek::SZEKVertex& vertex)
{
    CheckPosition(vertex.pos, ".position");
    if (mesh.hasBoneWeight)
        CheckBones(vertex);
}

void CReferenceSink::CheckBones(const zek::SZEKVertex& vertex)
{
    for (std::size_t i = 0; i < vertex.boneIndices.size() && !m_HasFoundIndex; ++i)
    {
        const int bone = vertex.boneIndices[i];
        m_HasFoundIndex = vertex.boneWeights[i] != 0.0f && (bone < 0 || bone >= m_Survey.boneCount);
        if (m_HasFoundIndex)
            AddOfElement(
                EFinding::BoneIndex, ".boneIndices",
                MakeCountText(bone, m_Survey.boneCount, "bone", "bones"));
    }
}

void CReferenceSink::Index(int index)
{
    if (m_HasFoundIndex || (index >= 0 && index < m_VertexCount))
        return;
    m_HasFoundIndex = true;
    AddOfElement(
        EFinding::VertexIndex, "", MakeCountText(index, m_VertexCount, "vertex", "vertices"));
}

void CReferenceSink::MorphPosition(const S3D& position)
{
    CheckPosition(position, "");
}

void CReferenceSink::CheckPosition(const S3D& position, const char* field)
{
    if (m_HasFoundPosition || IsFinite(position))
        return;
    m_HasFoundPosition = true;
    AddOfElement(
        EFinding::NotFinite, field,
        "(" + std::to_string(position.x) + ", " + std::to_string(position.y) + ", " +
            std::to_string(position.z) + ") is not finite");
}

void CReferenceSink::AddOfElement(EFinding finding, const char* field, const std::string& message)
{
    m_Findings.Add(
        finding,
        [&]
        {
            SFinding made;
            made.location = Locate(
                std::string(m_Array) + "[" + std::to_string(m_ElementIndex) + "]" + field,
                m_ElementOffset);
            made.message = message;
            return made;
        });
}

} // namespace zektool
