#include <cstdio>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Independent/FileImage/FileImage.h"
#include "Reliability/HostileModels.h"
#include "Support/CTemporaryFolder.h"
#include "Support/RunProgram.h"

namespace
{

constexpr std::size_t Megabyte = 1024 * 1024;

/// The memory that a command with one thread may take for a model: for each byte of its file so
/// many, and a rest whatever the model is. Of that rest 17 MB are promised; so much of it would
/// hide what models of this size take.
///
/// The most expensive byte is that of a lightmap that has no name or one of a letter: of its five
/// or six bytes come the places of the name and of the flags, what they are and have to be, and the
/// place in the order of names.
constexpr std::size_t MostFixedBytes = 3 * Megabyte;
constexpr std::size_t MostBytesPerFileByte = 7;

/// Runs a command on a model. Returns how many bytes it took for each byte of the file above those
/// that it may take anyway, or a number below 0.
double Measure(const std::string& command, const std::filesystem::path& path)
{
    const testsupport::SProgramResult result =
        testsupport::RunProgram({ZEK_PROGRAM, command, "-j1", path});
    EXPECT_GE(result.exitStatus, 0) << result.signal;
    EXPECT_LE(result.exitStatus, 1) << result.errors;
    const double above = static_cast<double>(result.peakKilobytes) * 1024.0 - MostFixedBytes;
    return above / static_cast<double>(std::filesystem::file_size(path));
}

} // namespace

TEST(ZekMemoryTest, CheckAndMarkTakeNoMoreMemoryForAModelThanTheBound)
{
#ifdef ZEK_IS_SANITIZED
    GTEST_SKIP() << "the sanitizers take memory of their own";
#endif
    const testsupport::CTemporaryFolder folder;
    const std::set<std::filesystem::path> paths = WriteHostileModels(folder, Megabyte);
    EXPECT_GT(paths.size(), 40u);
    for (const std::filesystem::path& path : paths)
    {
        SCOPED_TRACE(path);
        const double check = Measure("check", path);
        const double mark = Measure("mark", path);
        EXPECT_LE(check, MostBytesPerFileByte);
        EXPECT_LE(mark, MostBytesPerFileByte);
        std::printf(
            "%6.2f, %6.2f bytes for a byte of the file above the rest: %s\n", check, mark,
            path.filename().c_str());
    }
}

TEST(ZekMemoryTest, LargeMeshesTakeSixteenMegabytesAndOneAThread)
{
#ifdef ZEK_IS_SANITIZED
    GTEST_SKIP() << "the sanitizers take memory of their own";
#endif
    constexpr int vertexCount = 300000000; // of 12 bytes
    std::vector<unsigned char> start = {'Z', 'E', 'K', 0};
    for (int value : {25, 1, 0, 1, vertexCount}) // version, marker, nodes, meshes
    {
        start.resize(start.size() + 4);
        fileimage::WriteInt(start.data() + start.size() - 4, value);
    }
    constexpr std::size_t threadCount = 8;
    const testsupport::CTemporaryFolder folder;
    for (std::size_t i = 0; i < threadCount; ++i)
    {
        // All that follows is 0.
        const std::string name = std::to_string(i) + ".zek";
        folder.Write(name, start);
        std::filesystem::resize_file(folder.GetPath(name), std::uintmax_t{12} * vertexCount + 1000);
    }
    for (const char* command : {"check", "mark"})
    {
        const testsupport::SProgramResult result =
            testsupport::RunProgram({ZEK_PROGRAM, command, "-j8", folder.GetPath()});
        EXPECT_EQ(result.exitStatus, 0) << result.output;
        EXPECT_LE(
            static_cast<std::size_t>(result.peakKilobytes) * 1024, (16 + threadCount) * Megabyte)
            << command;
    }
}
