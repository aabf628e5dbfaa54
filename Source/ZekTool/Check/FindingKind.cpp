#include "ZekTool/Check/FindingKind.h"

#include <algorithm>

namespace zektool
{

namespace
{

using E = EFinding;
constexpr ESeverity error = ESeverity::Error;
constexpr ESeverity warning = ESeverity::Warning;

// A row a kind; clang-format would set each field on a line of its own.
// clang-format off
constexpr FindingKinds Kinds = {{
    {E::CannotOpen, "cannot-open", error, "the model cannot be opened",
     "There is no file at the path, it is a folder, a FIFO or a device, or it may not be read.",
     "give the path of a model that can be read"},
    {E::EmptyFile, "empty-file", error, "the file is empty",
     "The file has no bytes: it was made and never written, or the disk was full.",
     "export or copy the model again"},
    {E::NotAModel, "not-a-model", error, "the file is no ZEK model",
     "A model starts with the bytes \"ZEK\" and a zero byte; this file starts with others.",
     "give a ZEK model, or keep other files out of the list"},
    {E::TooOld, "too-old", error, "the version of the format is too old",
     "Models of a version below 7 cannot be read.",
     "export the model again with a newer exporter"},
    {E::WrongHeader, "wrong-header", error, "the header is not as its version has it",
     "From version 26 on the int at offset 12 must be 0. Another value means that the file is "
     "damaged, or of another kind.",
     "export or copy the model again"},
    {E::WrongSwitch, "wrong-switch", error, "a field has a value that the format does not have",
     "The shape of a collider and two switches of a node decide which fields follow. With "
     "another value the rest of the file cannot be understood.",
     "export the model again"},
    {E::UnterminatedName, "unterminated-name", error, "a name has no end",
     "Names end with a zero byte, and there is none before the end of the file: it was cut, or "
     "a count before it is wrong.",
     "export or copy the model again"},
    {E::Truncated, "truncated", error, "the file ends too early",
     "Fewer bytes are left than the format demands: the file was cut, or a count in it is "
     "wrong.",
     "export or copy the model again"},
    {E::Unreadable, "unreadable", error, "the file could not be read to its end",
     "It became shorter while it was read, or the disk is faulty.",
     "check again when nothing writes the model"},
    {E::TooLarge, "too-large", error, "the model is larger than 4 GiB",
     "ZEKTexComp refuses files of 4 GiB and more. The rest of the check does not, and goes on.",
     "cut the model into smaller ones"},

    {E::FlagWithoutVariant, "flag-without-variant", error,
     "a flag says 1, and the variant is not there",
     "A program that trusts the flag will look for the compressed variant and not find it.",
     "make the variant, or run zek mark"},
    {E::VariantWithoutFlag, "variant-without-flag", error,
     "a flag says 0, and the variant is there",
     "A program that trusts the flag will not use the compressed variant that lies there.",
     "run zek mark"},
    {E::WrongFlag, "wrong-flag", error, "a flag is neither 0 nor 1",
     "A flag byte says 1 for a variant that is there and 0 for one that is not.",
     "run zek mark"},
    {E::NotMarked, "not-marked", error, "the model has not been marked",
     "From version 21 on the byte at offset 8 is 1 in a model whose flags have been set.",
     "run zek mark"},

    {E::IncompleteCubemap, "incomplete-cubemap", warning, "a cubemap lacks some of its faces",
     "A cubemap's variant counts only when all six faces are there.",
     "make the missing faces"},
    {E::CubemapInFolders, "cubemap-in-folders", warning,
     "the faces of a cubemap lie in folders",
     "The faces are looked for in the model's folder under one name that has backslashes in "
     "it. Folders of the same names are not looked into unless --cubemap-folders is given.",
     "give --cubemap-folders, or rename the files"},
    {E::VariantNameCase, "variant-name-case", warning,
     "a variant's name differs in capital letters",
     "Where the file system tells capital letters from small ones, the file is not found. Where "
     "other models lie in the same folder, or more than 1,000 other files, this is not looked for, "
     "since the variant may be another model's.",
     "rename the file"},
    {E::EmptyVariant, "empty-variant", warning, "a variant is an empty file",
     "It counts as there, since only its existence is looked at, but cannot be used.",
     "make the variant again"},
    {E::VariantNotAFile, "variant-not-a-file", warning,
     "something else lies in the place of a variant",
     "A folder, a FIFO or a device counts as there, since it can be opened, but cannot be used.",
     "put a file there, or remove it"},
    {E::UnreadableVariant, "unreadable-variant", warning, "a variant cannot be opened",
     "Something has the variant's name but cannot be opened for reading, and so does not count: "
     "it may not be read, or is a link that leads nowhere, or a socket.",
     "make it readable, or remove it"},
    {E::UnusedVariant, "unused-variant", warning, "a variant belongs to nothing in the model",
     "The file has the extension of a variant but not the name of one of the model's items, "
     "such as the 017.pvr of twelve textures. Faces of cubemaps are not looked at. Where other "
     "models lie in the same folder, or more than 1,000 other files, this is not looked for, since "
     "the variant may be another model's.",
     "remove the file"},
    {E::PartialFamily, "partial-family", warning,
     "some items have a variant of a family and others do not",
     "A program that chooses one family for a model finds only a part of it compressed.",
     "make the missing variants"},
    {E::SharedLightmapVariant, "shared-lightmap-variant", warning,
     "two lightmaps have the same variants",
     "A lightmap's variants are looked for by its name without the extension, so that names "
     "that differ in the extension alone share theirs.",
     "rename one of the lightmaps"},

    {E::TextureIndex, "texture-index", warning, "a texture index is out of range",
     "A material refers to a texture that the model does not have; -1 would mean none.",
     "export the model again"},
    {E::MeshIndex, "mesh-index", warning, "a mesh index is out of range",
     "A node refers to a mesh that the model does not have; -1 would mean none.",
     "export the model again"},
    {E::ParentIndex, "parent-index", warning, "a parent's index is out of range",
     "A node refers to a parent that the model does not have; -1 would mean none.",
     "export the model again"},
    {E::MaterialIndex, "material-index", warning, "a material index is out of range",
     "A primitive refers to a material that the model does not have; -1 would mean none.",
     "export the model again"},
    {E::ParentCircle, "parent-circle", warning, "nodes are their own ancestors",
     "The parents of a node lead back to it: a program that follows them never ends.",
     "break the circle and export the model again"},
    {E::UnsafeName, "unsafe-name", warning, "a name leads to another folder",
     "The name of a texture, lightmap or probe has a separator in it or is \"..\", so that a "
     "file of that name lies in another folder.",
     "rename it and export the model again"},
    {E::BytesAfterEnd, "bytes-after-end", warning, "bytes follow the last section",
     "Nothing reads them. They are left as they are.",
     "export the model again if they are not meant"},

    {E::BoneIndex, "bone-index", warning, "a bone index is out of range",
     "A vertex is moved by a bone that the model does not have. Indices whose weight is 0 are "
     "not looked at. Only --deep finds this.",
     "export the model again"},
    {E::VertexIndex, "vertex-index", warning, "a vertex index is out of range",
     "A primitive refers to a vertex that its mesh does not have. Of each list the first such "
     "index is named. Only --deep finds this.",
     "export the model again"},
    {E::NotFinite, "not-finite", warning, "a position is infinite or not a number",
     "A program that draws or measures the mesh gets nonsense. Of each list the first such "
     "position is named. Only --deep finds this.",
     "export the model again"},
}};
// clang-format on

} // namespace

const FindingKinds& GetFindingKinds()
{
    return Kinds;
}

const SFindingKind& GetFindingKind(EFinding finding)
{
    return Kinds[static_cast<std::size_t>(finding)];
}

std::optional<EFinding> FindFinding(std::string_view code)
{
    const auto found = std::find_if(
        Kinds.begin(), Kinds.end(), [&](const SFindingKind& kind) { return kind.code == code; });
    if (found == Kinds.end())
        return std::nullopt;
    return found->finding;
}

std::optional<std::string> Explain(std::string_view code)
{
    const std::optional<EFinding> finding = FindFinding(code);
    if (!finding)
        return std::nullopt;
    const SFindingKind& kind = GetFindingKind(*finding);
    std::string text(kind.code);
    text += " (";
    text += GetSeverityName(kind.severity);
    text += "): ";
    text += kind.text;
    text += ".\n";
    text += kind.explanation;
    text += "\nWhat to do: ";
    text += kind.remedy;
    text += ".\n";
    return text;
}

std::string_view GetSeverityName(ESeverity severity)
{
    return severity == ESeverity::Error ? "error" : "warning";
}

} // namespace zektool
