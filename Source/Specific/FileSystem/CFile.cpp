#include "Specific/FileSystem/CFile.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include <sys/types.h>

#include "Specific/FileSystem/CFilePath.h"

namespace filesystem
{

namespace
{

constexpr unsigned int LargestSize = std::numeric_limits<unsigned int>::max();
constexpr unsigned int ReadStringChunkSize = 128;

bool IsStartingWith(const std::string& text, const char* prefix)
{
    return text.compare(0, std::strlen(prefix), prefix) == 0;
}

} // namespace

CFile::~CFile()
{
    Close();
}

bool CFile::Open(const std::string& name)
{
    std::int64_t fileSize;
    return OpenAndMeasure(name, EBuffering::On, fileSize);
}

bool CFile::OpenAndMeasure(const std::string& name, EBuffering buffering, std::int64_t& fileSize)
{
    Close();
    std::string slashedName = name;
    std::replace(slashedName.begin(), slashedName.end(), '\\', '/');
    m_pFile = std::fopen(slashedName.c_str(), "rb");
    if (m_pFile == nullptr)
        return false;
    if (buffering == EBuffering::Off)
        StopBuffering();

    if (fseeko(m_pFile, 0, SEEK_END) != 0)
        return false;
    fileSize = ftello(m_pFile);
    if (fileSize < 0 || fseeko(m_pFile, 0, SEEK_SET) != 0)
        return false;
    m_Pos = 0;
    m_Size = static_cast<unsigned int>(fileSize);
    return true;
}

void CFile::StopBuffering()
{
    std::setvbuf(m_pFile, nullptr, _IONBF, 0);
}

bool CFile::Create(const std::string& name)
{
    Close();
    m_pFile = std::fopen(TransRealFileName(name).c_str(), "wb");
    if (m_pFile == nullptr)
        return false;
    m_Pos = 0;
    m_Size = LargestSize;
    return true;
}

bool CFile::Close()
{
    if (m_pFile == nullptr)
        return true;
    // fclose frees the stream even when it fails, so the handle must not be seen again.
    std::FILE* file = m_pFile;
    m_pFile = nullptr;
    return std::fclose(file) == 0;
}

bool CFile::Read(void* dest, int size)
{
    const unsigned int byteCount = static_cast<unsigned int>(size);
    if (m_pFile == nullptr || byteCount > m_Size - m_Pos)
        return false;
    if (byteCount > 0 && std::fread(dest, 1, byteCount, m_pFile) != byteCount)
        return false;
    m_Pos += byteCount;
    return true;
}

bool CFile::Write(const void* src, int size)
{
    const unsigned int byteCount = static_cast<unsigned int>(size);
    if (m_pFile == nullptr)
        return false;
    if (byteCount > 0 && std::fwrite(src, 1, byteCount, m_pFile) != byteCount)
        return false;
    m_Pos += byteCount;
    return true;
}

bool CFile::SetPos(unsigned int pos)
{
    if (m_pFile == nullptr || pos >= m_Size)
        return false;
    if (fseeko(m_pFile, static_cast<off_t>(pos), SEEK_SET) != 0)
        return false;
    m_Pos = pos;
    return true;
}

bool CFile::StepWritePos(int count)
{
    if (count < 0)
        return false;
    const std::vector<unsigned char> zeros(static_cast<std::size_t>(count));
    return Write(zeros.data(), count);
}

bool CFile::WritePosDWORD(int pos, unsigned int value)
{
    const unsigned int rememberedPos = GetPos();
    return SetPos(static_cast<unsigned int>(pos)) && Write(&value, sizeof(value)) &&
           SetPos(rememberedPos);
}

bool CFile::WriteString(const char* text, bool withTerminator)
{
    const std::size_t length = std::strlen(text);
    if (length > LargestSize)
        return false;
    if (length > 0 && !Write(text, static_cast<int>(length)))
        return false;
    return !withTerminator || WriteByte(0);
}

bool CFile::WriteByte(unsigned char value)
{
    return Write(&value, sizeof(value));
}

bool CFile::ReadString(std::string& out)
{
    out.clear();
    if (m_Pos >= m_Size)
        return false;

    std::string text;
    while (m_Pos < m_Size)
    {
        const unsigned int chunkStart = m_Pos;
        char chunk[ReadStringChunkSize];
        const unsigned int chunkSize = std::min(ReadStringChunkSize, m_Size - m_Pos);
        if (!Read(chunk, static_cast<int>(chunkSize)))
            return false;

        const unsigned int length =
            static_cast<unsigned int>(std::find(chunk, chunk + chunkSize, '\0') - chunk);
        text.append(chunk, length);
        if (length < chunkSize)
        {
            if (!SetPos(chunkStart + length + 1))
                return false;
            break;
        }
    }
    out = text;
    return true;
}

bool CFile::ReadImage(std::vector<unsigned char>& image, const std::string& name)
{
    CFile file;
    if (!file.OpenImage(name))
        return false;
    image.resize(file.GetSize());
    return file.ReadWhole(image.data()) && file.Close();
}

bool CFile::ReadBuffer(CFileBuffer& buffer, const std::string& name)
{
    CFile file;
    if (!file.OpenImage(name))
        return false;
    buffer.Allocate(file.GetSize());
    return file.ReadWhole(buffer.GetData()) && file.Close();
}

bool CFile::OpenImage(const std::string& name)
{
    std::int64_t fileSize;
    return OpenAndMeasure(name, EBuffering::Off, fileSize) && fileSize <= LargestSize;
}

bool CFile::ReadWhole(unsigned char* dest)
{
    return m_Size == 0 || Read(dest, static_cast<int>(m_Size));
}

bool CFile::WriteImage(const std::vector<unsigned char>& image, const std::string& name)
{
    return WriteWhole(image.data(), image.size(), name);
}

bool CFile::WriteBuffer(const CFileBuffer& buffer, const std::string& name)
{
    return WriteWhole(buffer.GetData(), buffer.GetSize(), name);
}

bool CFile::WriteWhole(const unsigned char* src, std::size_t size, const std::string& name)
{
    if (size > LargestSize)
        return false;
    CFile file;
    if (!file.Create(name))
        return false;
    file.StopBuffering();
    return file.Write(src, static_cast<int>(size)) && file.Close();
}

bool CFile::ReadTextImage(std::string& text, const std::string& name)
{
    std::vector<unsigned char> image;
    if (!ReadImage(image, name))
        return false;
    if (!image.empty())
        text.assign(image.begin(), std::find(image.begin(), image.end(), 0));
    return true;
}

bool CFile::WriteTextImage(const std::string& text, const std::string& name)
{
    return WriteImage(std::vector<unsigned char>(text.begin(), text.end()), name);
}

std::string CFile::TransRealFileName(const std::string& name)
{
    if (IsStartingWith(name, "UserData\\") || IsStartingWith(name, "Setting\\"))
        return GetAppUserFolderPath() + "\\" + name;
    return name;
}

std::string CFile::GetAppUserFolderPath()
{
    CFilePath path;
    path.SetPersonalFolderPath();
    path.AddFolderName("Tarvelquinn");
    return path.GetString();
}

} // namespace filesystem
