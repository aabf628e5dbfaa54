#include "Support/CTemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace files = std::filesystem;

namespace testsupport
{

namespace
{

Bytes ReadBytes(const files::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path.string());
    return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

} // namespace

CTemporaryFolder::CTemporaryFolder()
{
    std::random_device random;
    do
        m_Path =
            (files::temp_directory_path() / "zektexcomp-test-").string() + std::to_string(random());
    while (!files::create_directory(m_Path)); // false when there is one already
}

CTemporaryFolder::~CTemporaryFolder()
{
    std::error_code ignored;
    files::remove_all(m_Path, ignored);
}

void CTemporaryFolder::Write(const std::string& name, const Bytes& bytes) const
{
    const files::path path = GetPath(name);
    files::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(
        reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush())
        throw std::runtime_error("cannot write " + path.string());
}

void CTemporaryFolder::Write(const std::string& name, const std::string& text) const
{
    Write(name, Bytes(text.begin(), text.end()));
}

void CTemporaryFolder::MakeFolder(const std::string& name) const
{
    files::create_directories(GetPath(name));
}

void CTemporaryFolder::Remove(const std::string& name) const
{
    files::remove_all(GetPath(name));
}

Bytes CTemporaryFolder::Read(const std::string& name) const
{
    return ReadBytes(GetPath(name));
}

FolderContents CTemporaryFolder::GetContents() const
{
    FolderContents contents;
    for (const files::directory_entry& entry : files::recursive_directory_iterator(m_Path))
    {
        if (entry.is_regular_file())
            contents[entry.path().lexically_relative(m_Path).generic_string()] =
                ReadBytes(entry.path());
    }
    return contents;
}

} // namespace testsupport
