// Changes a model file in one place and leaves the rest walkable, which changes of mere bytes
// seldom do: a field gets another value, a text another length, a record is doubled or taken out
// and its count with it.

#include <algorithm>
#include <iterator>
#include <random>
#include <vector>

#include "FuzzTarget.h"
#include "Independent/FileImage/FileImage.h"
#include "Support/CModelMap.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

using testsupport::CModelMap;
using testsupport::EFieldKind;
using testsupport::SField;
using testsupport::SRecord;

namespace
{

using Bytes = std::vector<unsigned char>;
using Random = std::mt19937;

// Separators, dots, ordinary letters and lead bytes of Shift_JIS.
constexpr unsigned char Letters[] = {'.', '/', '\\', 'A', 'Z', '0', '9', 0x81, 0x82, 0xE0};

std::size_t Choose(Random& random, std::size_t count)
{
    return random() % count;
}

/// Adds to a count, which may be any 32 bits.
void AddToCount(Bytes& image, std::size_t offset, unsigned int summand)
{
    fileimage::WriteDWord(&image[offset], fileimage::ReadDWord(&image[offset]) + summand);
}

void ChangeInt(Bytes& image, const SField& field, Random& random)
{
    const int left = static_cast<int>(image.size() - field.offset - field.size);
    const int values[] = {
        0,     1,          -1,         2,    26,       0x7fffffff, -0x7fffffff - 1, 65536,
        65537, 0x40000000, 0x55555556, left, left + 1, left - 1,   left / 12,       left / 2};
    fileimage::WriteInt(&image[field.offset], values[Choose(random, std::size(values))]);
}

void ChangeText(Bytes& image, const SField& field, Random& random)
{
    const auto begin = image.begin() + static_cast<std::ptrdiff_t>(field.offset);
    if (field.size > 1 && random() % 2 == 0)
        image.erase(begin);
    else
        image.insert(begin, Letters[Choose(random, std::size(Letters))]);
}

void ChangeField(Bytes& image, const SField& field, Random& random)
{
    switch (field.kind)
    {
    case EFieldKind::Int:
        ChangeInt(image, field, random);
        break;
    case EFieldKind::Text:
        ChangeText(image, field, random);
        break;
    default:
        if (field.size > 0)
            image[field.offset + Choose(random, field.size)] = static_cast<unsigned char>(random());
        break;
    }
}

void DoubleRecord(Bytes& image, const SRecord& record)
{
    const auto begin = image.begin() + static_cast<std::ptrdiff_t>(record.begin);
    const auto end = image.begin() + static_cast<std::ptrdiff_t>(record.end);
    const Bytes copy(begin, end);
    AddToCount(image, record.countOffset, 1);
    image.insert(end, copy.begin(), copy.end());
}

void TakeOutRecord(Bytes& image, const SRecord& record)
{
    AddToCount(image, record.countOffset, 0xFFFFFFFF); // less by one
    image.erase(
        image.begin() + static_cast<std::ptrdiff_t>(record.begin),
        image.begin() + static_cast<std::ptrdiff_t>(record.end));
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(
    std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned int seed)
{
    Random random(seed);
    Bytes image(data, data + size);
    const CModelMap map(image);

    const std::size_t kind = Choose(random, 4);
    if (kind == 0 || map.GetFields().empty())
        return LLVMFuzzerMutate(data, size, maxSize);
    if (kind == 1 || map.GetRecords().empty())
        ChangeField(image, map.GetFields()[Choose(random, map.GetFields().size())], random);
    else if (kind == 2)
        DoubleRecord(image, map.GetRecords()[Choose(random, map.GetRecords().size())]);
    else
        TakeOutRecord(image, map.GetRecords()[Choose(random, map.GetRecords().size())]);

    const std::size_t newSize = std::min(image.size(), maxSize);
    std::copy_n(image.begin(), newSize, data);
    return newSize;
}
