#pragma once

#include <string>
#include <vector>

#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"
#include "Support/RunProgram.h"
#include "Support/Variants.h"

namespace testsupport
{

/// The flags of each item of a model, in file order.
struct SItemFlags
{
    std::vector<Flags> textures = {};
    std::vector<Flags> probes = {};
    std::vector<Flags> lightmaps = {};
};

/// Runs the program with these arguments in a folder.
SProgramResult RunTool(const CTemporaryFolder& folder, const std::vector<std::string>& arguments);

/// The image of a model as a run leaves it: with these flags, and with the marker set where the
/// version has one.
Bytes MakePatched(const CModelBuilder& builder, const SItemFlags& flags);

/// The lines that a run prints before "Succeeded" for these flags.
std::string MakeCountLines(int version, const SItemFlags& flags);

/// Runs the program on a path in a folder and expects it to succeed with these count lines and to
/// leave every file as it was, but for one, named relative to the folder, which becomes the image
/// and is written to even if it was that before.
void ExpectSuccess(
    const CTemporaryFolder& folder,
    const std::string& path,
    const std::string& countLines,
    const std::string& writtenFile,
    const Bytes& image);

/// Runs the program on a path in a folder and expects just "Error", the exit status 255, and that
/// no file of the folder has been written to, not even with the bytes that it had.
void ExpectError(const CTemporaryFolder& folder, const std::string& path);

/// As `ExpectError` for a model file of these bytes alone in a folder.
void ExpectErrorForModel(const Bytes& image);

/// As `ExpectSuccess` for a model file "model.zek" in the folder, on which the program is to find
/// just these flags.
void ExpectFlags(const CTemporaryFolder& folder, const SModel& model, const SItemFlags& flags);

} // namespace testsupport
