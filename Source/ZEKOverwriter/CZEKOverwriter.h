#pragma once

#include <string>
#include <vector>

#include "Independent/FileImage/CFileImageAnalyser.h"
#include "Independent/Math3D/SColor.h"
#include "ZEKFormat/EZEKColliderShape.h"
#include "ZEKFormat/EZEKShaderType.h"
#include "ZEKFormat/STextureTransform.h"
#include "ZEKOverwriter/CZEKFlagSink.h"

namespace zek
{

/// Marks in a ZEK model file which compressed variants of its textures, lightmaps and reflection
/// cubemaps lie on disk beside it. One object serves one file.
///
/// The walkers each start at the reader's position and leave it just after their section. They
/// return false when the data ends early or is malformed, and the position is then anywhere. They
/// never read outside the reader's range, whatever the data says, and a count of zero or less
/// means no records. Only those of the header, the textures, the lightmaps, the probes, and the
/// materials where these contain the probes, keep anything: the addresses of the processed marker
/// and the flags, and names. The file's version decides which fields a record has (see
/// ZEKVersion.h). What the format is, the `Walk...` functions say.
///
/// The detectors then look for the variants, write 1 or 0 through the remembered addresses, and
/// print how many items have a variant of each family.
class CZEKOverwriter
{
public:
    /// Starts with no items.
    CZEKOverwriter() = default;
    virtual ~CZEKOverwriter() = default;

    /// Does the whole job on the model file at path: reads it, walks it, sets its flags and the
    /// processed marker, and writes it back. Returns false when it cannot be read, understood or
    /// written. It is unchanged unless the writing itself failed, which may leave it cut short.
    /// What the walkers kept goes with the image.
    ///
    /// Reading turns backslashes in path into slashes; writing does not, so that a path with
    /// backslashes is read from one file and written to another (see `filesystem::CFile`).
    bool Overwrite(const std::string& path);

    /// The same on a file image in memory, without reading or writing the file: path only says
    /// where to look for variants. On false the image is as it was. What the walkers kept is gone
    /// afterwards.
    bool OverwriteImage(std::vector<unsigned char>& image, const std::string& path);

    /// Walks the file's start: magic, version and what stands before the first section, and from
    /// version 21 on keeps where the processed marker is. Fails on anything but a ZEK file of
    /// version 7 or later, and then leaves the version as it was.
    bool AnalyseHeader(fileimage::CFileImageAnalyser& reader, int& version);

    /// Walks all sections in the order that the version prescribes. What follows the last one is
    /// not read.
    bool AnalyseSections(fileimage::CFileImageAnalyser& reader, int version);

    /// Walks all nodes.
    bool AnalyseNodeList(fileimage::CFileImageAnalyser& reader, int version);

    /// Walks one node of the node list.
    bool AnalyseNode(fileimage::CFileImageAnalyser& reader, int version);

    /// Walks the collider of a node, whose shape has been read.
    bool
    AnalyseCollider(fileimage::CFileImageAnalyser& reader, int version, EZEKColliderShape shape);

    /// Walks all meshes.
    bool AnalyseMeshList(fileimage::CFileImageAnalyser& reader, int version);

    /// Walks one mesh of the mesh list.
    bool AnalyseMesh(fileimage::CFileImageAnalyser& reader, int version);

    /// Walks the reduced mesh that stands in a node with a mesh collider. It is the same in all
    /// versions.
    bool AnalyseMeshSimple(fileimage::CFileImageAnalyser& reader, int version);

    /// Walks the materials and, where the version has it between their count and the first of
    /// them, the reflection-probe section.
    bool AnalyseMaterialList(fileimage::CFileImageAnalyser& reader, int version);

    /// Walks one material.
    bool AnalyseMaterial(fileimage::CFileImageAnalyser& reader, int version);

    /// Walks what a material record ends with, which depends on its shader type; a type that is
    /// not known has nothing.
    bool AnalyseShaderParameters(
        fileimage::CFileImageAnalyser& reader, int version, EZEKShaderType shaderType);

    /// Reads how a texture is placed: 16 bytes, which must be there. The V offset comes back
    /// flipped, 1 - offset - scale, from version 19 on and for a V scale below 1.
    STextureTransform AnalyseTextureTransform(fileimage::CFileImageAnalyser& reader, int version);

    /// Reads a colour: 16 bytes, which must be there.
    SColor AnalyseColor(fileimage::CFileImageAnalyser& reader);

    /// Walks the names of the bones. Fewer than 4 bytes before the end mean that the file has no
    /// bone table, which is a success.
    bool AnalyseBoneTable(fileimage::CFileImageAnalyser& reader);

    /// Walks the textures and appends the flag addresses of each. Before version 5 there are no
    /// flags and the addresses are null.
    bool AnalyseTextureList(fileimage::CFileImageAnalyser& reader, int version);

    /// Walks the lightmaps and, from version 26 on, appends the name and the flag addresses of
    /// each; before, a lightmap has no bytes of its own.
    bool AnalyseLightmapList(fileimage::CFileImageAnalyser& reader, int version);

    /// Walks the reflection probes and appends the name of each and, from version 16 on, its flag
    /// addresses. Before version 26 a probe is named by its index in decimal. The probe count is
    /// set when the section has been walked whole.
    bool AnalyseReflectionProbe(fileimage::CFileImageAnalyser& reader, int version);

    /// Sets the flags of the textures, whose variants are named by index ("007.pvr"), and prints
    /// "ExistTextureCompression" with the counts of PVRTC, ETC, ASTC and DXT. Always true; the
    /// version is not consulted. Variants are looked for in the folder of path.
    bool AnalyseTextureCompression(int version, const std::string& path);

    /// As `AnalyseTextureCompression` for the probes' cubemaps, printing "ExistCubemapCompression".
    /// A flag is set when all six faces are there. Before version 16 nothing is done or printed.
    ///
    /// The paths of the faces have backslashes in them, also where the file system takes these for
    /// ordinary characters of a name.
    bool AnalyseReflectionProbeCompression(int version, const std::string& path);

    /// As `AnalyseTextureCompression` for the lightmaps, whose variants have the lightmap's own
    /// name with another extension, printing "ExistLightmapCompression".
    bool AnalyseLightmapCompression(int version, const std::string& path);

    /// Sets the processed marker, if the file has one.
    void SetProcessedMarker();

    /// The flags of each texture in file order.
    const std::vector<FlagQuad>& GetTextureFlagQuadList() const
    {
        return m_Flags.GetTextureFlagQuadList();
    }

    /// The flags of each lightmap in file order.
    const std::vector<FlagQuad>& GetLightmapFlagQuadList() const
    {
        return m_Flags.GetLightmapFlagQuadList();
    }

    /// The name of each lightmap.
    const std::vector<std::string>& GetLightmapNameList() const
    {
        return m_Flags.GetLightmapNameList();
    }

    /// The flags of each reflection probe in file order.
    const std::vector<FlagQuad>& GetProbeFlagQuadList() const
    {
        return m_Flags.GetProbeFlagQuadList();
    }

    /// The number of reflection probes that the file states: negative in a file that says so.
    int GetProbeCount() const { return m_Flags.GetProbeCount(); }

    /// The name of each reflection probe.
    const std::vector<std::string>& GetProbeNameList() const { return m_Flags.GetProbeNameList(); }

private:
    /// Does the whole job on bytes that may be written to, const as the walk's addresses are.
    bool OverwriteBytes(const unsigned char* image, std::size_t size, const std::string& path);

    CZEKFlagSink m_Flags;
};

} // namespace zek
