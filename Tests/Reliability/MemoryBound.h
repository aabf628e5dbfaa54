#pragma once

#include <cstddef>

/// The memory that a pass may take, whatever the file says: so many bytes of the heap for each byte
/// of the file, the file's image included, and a fixed rest for paths and messages. The same for
/// loading a model, without the image but with the window of a file.
///
/// The most expensive byte to load is that of a primitive of a collision mesh with one index: its
/// record takes six bytes, its object up to 96, as room is made for the smallest record, of four
/// bytes, and its index 32. In a pass it is that of a lightmap without a name: its record takes
/// five bytes, and its name and its four flag addresses take 64.
constexpr std::size_t MostHeapBytesPerFileByte = 24;
constexpr std::size_t MostFixedHeapBytes = 16 * 1024;

constexpr std::size_t GetMostHeapBytes(std::size_t fileSize)
{
    return MostHeapBytesPerFileByte * fileSize + MostFixedHeapBytes;
}
