#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "Independent/FileImage/CFileImageAnalyser.h"
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SQuaternion.h"
#include "Independent/Math3D/SUV.h"
#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/SCompressionFamily.h"

// What the walkers of several sections share. The sizes are those of the values in the file.
namespace zek
{

constexpr int ByteSize = 1;
constexpr int ShortSize = 2;
constexpr int IntSize = 4;
constexpr int FloatSize = 4;
constexpr int SUVSize = 2 * FloatSize;
constexpr int S3DSize = 3 * FloatSize;
constexpr int SQuaternionSize = 4 * FloatSize;
constexpr int SColorSize = 4 * FloatSize;
constexpr int FlagQuadSize = CompressionFamilyCount * ByteSize;

inline SUV ReadSUV(fileimage::CFileImageAnalyser& reader)
{
    SUV value;
    value.u = reader.GetFloatNoCheck();
    value.v = reader.GetFloatNoCheck();
    return value;
}

inline S3D ReadS3D(fileimage::CFileImageAnalyser& reader)
{
    S3D value;
    value.x = reader.GetFloatNoCheck();
    value.y = reader.GetFloatNoCheck();
    value.z = reader.GetFloatNoCheck();
    return value;
}

inline SQuaternion ReadSQuaternion(fileimage::CFileImageAnalyser& reader)
{
    SQuaternion value;
    value.x = reader.GetFloatNoCheck();
    value.y = reader.GetFloatNoCheck();
    value.z = reader.GetFloatNoCheck();
    value.w = reader.GetFloatNoCheck();
    return value;
}

/// Takes the addresses of four flags and steps over them, or returns false when they are not there.
inline bool ReadFlagQuad(fileimage::CFileImageAnalyser& reader, FlagQuad& flags)
{
    if (!reader.IsCanRead(FlagQuadSize))
        return false;
    for (const unsigned char*& slot : flags)
    {
        slot = reader.GetReadPointer();
        reader.GetByteNoCheck();
    }
    return true;
}

/// Changes a byte of the file image that a walker's reader pointed out. The reader hands out const
/// addresses only; the overwriter owns the image and is the only one to write to it.
inline void SetImageByte(const unsigned char* address, unsigned char value)
{
    *const_cast<unsigned char*>(address) = value;
}

/// Tells whether count values of a size in bytes can be read.
///
/// The format demands the product as a 32-bit int, wrapped, so that some counts below zero fail.
/// A positive count passes only if its values are really there.
inline bool IsCanReadList(const fileimage::CFileImageAnalyser& reader, int size, int count)
{
    const unsigned int product = static_cast<unsigned int>(size) * static_cast<unsigned int>(count);
    return reader.IsCanRead(static_cast<int>(product)) &&
           (count <= 0 || std::int64_t{size} * count <= reader.GetCanReadSize());
}

/// Makes room in a list for count more records, but for no more than the bytes left can hold when
/// each record takes at least size of them.
template <typename Record>
void ReserveRecords(
    std::vector<Record>& list, const fileimage::CFileImageAnalyser& reader, int size, int count)
{
    const std::int64_t most = reader.GetCanReadSize() / size;
    list.reserve(list.size() + static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, most)));
}

/// The size of a list that a count from a file asks for.
inline std::size_t GetListSize(int count)
{
    return static_cast<std::size_t>(std::max(count, 0));
}

} // namespace zek
