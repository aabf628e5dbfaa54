#pragma once

#include <array>

#include "Independent/FileImage/FileImage.h"
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SColor.h"
#include "Independent/Math3D/SColor32.h"
#include "Independent/Math3D/SQuaternion.h"
#include "Independent/Math3D/SUV.h"
#include "ZEKFormat/EZEKFieldType.h"
#include "ZEKFormat/SZEKPlace.h"

namespace zek
{

/// The fields that a block of a record is made of: each function takes the next one and returns its
/// value. What taking means is the taker's: `CZEKWalk` moves over the bytes, `CZEKBlockSize` only
/// adds up how many they are.
///
/// What blocks are mostly made of is inline in any case: what a block demands is then a constant,
/// and values that the sink does not look at are not read. A check of nodes takes a fifth fewer
/// instructions.
template <typename Taker>
class CZEKFields
{
public:
    explicit CZEKFields(Taker& taker) : m_Taker(taker) {}

    unsigned char Byte(const char* name) { return *Take(name, EZEKFieldType::Byte, 1); }

    /// A byte of which any value but 0 means yes.
    bool Flag(const char* name) { return Byte(name) != 0; }

    unsigned short Word(const char* name)
    {
        return fileimage::ReadWord(Take(name, EZEKFieldType::Word, 1));
    }

    /// An int; one that other fields depend on has a value for when only their sizes are asked for.
    [[gnu::always_inline]] int Int(const char* name, int whenMeasured = 0)
    {
        const unsigned char* bytes = Take(name, EZEKFieldType::Int, 1);
        return Taker::IsMeasuring ? whenMeasured : fileimage::ReadInt(bytes);
    }

    [[gnu::always_inline]] float Float(const char* name) { return ReadFloats<1>(name)[0]; }

    [[gnu::always_inline]] SUV UV(const char* name)
    {
        const std::array<float, 2> uv = ReadFloats<2>(name);
        return SUV(uv[0], uv[1]);
    }

    [[gnu::always_inline]] S3D Vector(const char* name)
    {
        const std::array<float, 3> xyz = ReadFloats<3>(name);
        return S3D(xyz[0], xyz[1], xyz[2]);
    }

    [[gnu::always_inline]] SQuaternion Quaternion(const char* name)
    {
        const std::array<float, 4> xyzw = ReadFloats<4>(name);
        return SQuaternion(xyzw[0], xyzw[1], xyzw[2], xyzw[3]);
    }

    SColor Color(const char* name)
    {
        const std::array<float, 4> rgba = ReadFloats<4>(name);
        return SColor(rgba[0], rgba[1], rgba[2], rgba[3]);
    }

    /// A colour of a byte a channel.
    math3d::SColor32 Color32(const char* name)
    {
        const unsigned char* rgba = Take(name, EZEKFieldType::Byte, 4);
        return math3d::SColor32(rgba[0], rgba[1], rgba[2], rgba[3]);
    }

    std::array<short, 4> BoneIndices(const char* name)
    {
        const unsigned char* bytes = Take(name, EZEKFieldType::Short, 4);
        std::array<short, 4> values;
        for (short& value : values)
        {
            value = static_cast<short>(fileimage::ReadWord(bytes));
            bytes += GetSize(EZEKFieldType::Short);
        }
        return values;
    }

    std::array<float, 4> BoneWeights(const char* name) { return ReadFloats<4>(name); }

    /// Floats whose values are not looked at.
    void Floats(const char* name, int count) { Take(name, EZEKFieldType::Float, count); }

    /// Bytes whose values are not looked at; returns where they lie.
    SZEKPlace Bytes(const char* name, int count)
    {
        const SZEKPlace place = GetPlace();
        Take(name, EZEKFieldType::Byte, count);
        return place;
    }

    /// Returns where the next field lies.
    SZEKPlace GetPlace() const { return m_Taker.GetPlace(); }

private:
    [[gnu::always_inline]] const unsigned char*
    Take(const char* name, EZEKFieldType type, int count)
    {
        return m_Taker.Take(name, type, count);
    }

    template <int Count>
    [[gnu::always_inline]] std::array<float, Count> ReadFloats(const char* name)
    {
        const unsigned char* bytes = Take(name, EZEKFieldType::Float, Count);
        std::array<float, Count> values;
        for (float& value : values)
        {
            value = fileimage::ReadFloat(bytes);
            bytes += GetSize(EZEKFieldType::Float);
        }
        return values;
    }

    Taker& m_Taker;
};

/// Adds up the sizes of the fields of a block.
class CZEKBlockSize
{
public:
    static constexpr bool IsMeasuring = true;

    const unsigned char* Take(const char*, EZEKFieldType type, int count)
    {
        m_Size += count * GetSize(type);
        return Zeros;
    }

    SZEKPlace GetPlace() const { return {}; }
    int GetTotal() const { return m_Size; }

private:
    static constexpr unsigned char Zeros[32] = {};

    int m_Size = 0;
};

} // namespace zek
