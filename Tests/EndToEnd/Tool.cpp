#include "Tool.h"

#include <chrono>
#include <filesystem>

#include <gtest/gtest.h>

namespace files = std::filesystem;

namespace testsupport
{

namespace
{

void Patch(
    Bytes& image, const std::vector<std::size_t>& offsets, const std::vector<Flags>& flagsList)
{
    ASSERT_EQ(offsets.size(), flagsList.size());
    for (std::size_t i = 0; i < offsets.size(); ++i)
    {
        for (std::size_t family = 0; family < 4; ++family)
            image[offsets[i] + family] = flagsList[i][family];
    }
}

std::string MakeCountLine(const std::string& name, const std::vector<Flags>& flagsList)
{
    std::string line = name;
    for (std::size_t family = 0; family < 4; ++family)
    {
        int count = 0;
        for (const Flags& flags : flagsList)
            count += flags[family];
        line += ' ' + std::to_string(count);
    }
    return line + '\n';
}

/// When each file and folder was last written to. All are set to a time long past before, so that
/// a later write shows however soon it comes.
using WriteTimes = std::map<std::string, files::file_time_type>;

WriteTimes GetWriteTimes(const CTemporaryFolder& folder)
{
    WriteTimes times;
    for (const files::directory_entry& entry :
         files::recursive_directory_iterator(folder.GetPath()))
    {
        if (!entry.is_symlink())
            times[entry.path().string()] = entry.last_write_time();
    }
    return times;
}

void AgeFiles(const CTemporaryFolder& folder)
{
    for (const auto& [path, time] : GetWriteTimes(folder))
        files::last_write_time(path, time - std::chrono::hours(1));
}

/// Expects one file to have been written to and no other. One that was not there before changes its
/// folder as well.
void ExpectWritten(const std::string& file, WriteTimes before, WriteTimes after)
{
    const bool isNew = before.count(file) == 0;
    EXPECT_NE(before[file], after[file]) << file << " was not written to";
    before[file] = after[file];
    if (isNew)
    {
        const std::string folder = files::path(file).parent_path().string();
        before[folder] = after[folder];
    }
    EXPECT_EQ(before, after) << "more was written to than " << file;
}

} // namespace

SProgramResult RunTool(const CTemporaryFolder& folder, const std::vector<std::string>& arguments)
{
    std::vector<std::string> words{ZEKTEXCOMP_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return RunProgram(words, folder.GetPath());
}

Bytes MakePatched(const CModelBuilder& builder, const SItemFlags& flags)
{
    Bytes image = builder.GetImage();
    Patch(image, builder.GetTextureFlagOffsets(), flags.textures);
    Patch(image, builder.GetProbeFlagOffsets(), flags.probes);
    Patch(image, builder.GetLightmapFlagOffsets(), flags.lightmaps);
    const unsigned char version = image[VersionOffset];
    if (version >= 21)
        image[MarkerOffset] = 1;
    return image;
}

std::string MakeCountLines(int version, const SItemFlags& flags)
{
    std::string lines = MakeCountLine("ExistTextureCompression", flags.textures);
    if (version >= 16)
        lines += MakeCountLine("ExistCubemapCompression", flags.probes);
    return lines + MakeCountLine("ExistLightmapCompression", flags.lightmaps);
}

void ExpectSuccess(
    const CTemporaryFolder& folder,
    const std::string& path,
    const std::string& countLines,
    const std::string& writtenFile,
    const Bytes& image)
{
    AgeFiles(folder);
    const WriteTimes times = GetWriteTimes(folder);
    FolderContents expected = folder.GetContents();
    expected[writtenFile] = image;

    const SProgramResult result = RunTool(folder, {path});
    EXPECT_EQ(countLines + "Succeeded\n", result.output);
    EXPECT_EQ("", result.errors);
    EXPECT_EQ(0, result.exitStatus);
    EXPECT_EQ(expected, folder.GetContents());
    ExpectWritten(folder.GetPath(writtenFile), times, GetWriteTimes(folder));
}

void ExpectError(const CTemporaryFolder& folder, const std::string& path)
{
    AgeFiles(folder);
    const FolderContents contents = folder.GetContents();
    const WriteTimes times = GetWriteTimes(folder);

    const SProgramResult result = RunTool(folder, {path});
    EXPECT_EQ("Error " + path + "\n", result.output);
    EXPECT_EQ("", result.errors);
    EXPECT_EQ(255, result.exitStatus);
    EXPECT_EQ(contents, folder.GetContents());
    EXPECT_EQ(times, GetWriteTimes(folder)) << "something was written to";
}

void ExpectErrorForModel(const Bytes& image)
{
    const CTemporaryFolder folder;
    folder.Write("model.zek", image);
    ExpectError(folder, "model.zek");
}

void ExpectFlags(const CTemporaryFolder& folder, const SModel& model, const SItemFlags& flags)
{
    const CModelBuilder builder = CModelBuilder::Build(model);
    folder.Write("model.zek", builder.GetImage());
    ExpectSuccess(
        folder, "model.zek", MakeCountLines(model.version, flags), "model.zek",
        MakePatched(builder, flags));
}

} // namespace testsupport
