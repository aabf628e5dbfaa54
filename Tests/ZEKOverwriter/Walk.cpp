#include "Walk.h"

#include <gtest/gtest.h>

#include "Independent/FileImage/FileImage.h"

namespace testsupport
{

std::int64_t Walk(const Walker& walker, const Bytes& bytes, int version)
{
    const Bytes block(bytes.begin(), bytes.end());
    zek::CZEKOverwriter overwriter;
    fileimage::CFileImageAnalyser reader(block.data(), block.data() + block.size());
    if (!walker(overwriter, reader, version))
        return Refused;
    EXPECT_GE(reader.GetCanReadSize(), 0) << "the walker went past the end";
    return reader.GetPos();
}

std::int64_t WhereRefused(const Walker& walker, const Bytes& bytes, int version)
{
    Bytes block(bytes.begin(), bytes.end());
    zek::CZEKOverwriter overwriter;
    fileimage::CFileImageAnalyser reader(block.data(), block.data() + block.size());
    EXPECT_FALSE(walker(overwriter, reader, version));
    return reader.GetPos();
}

void ExpectSize(std::int64_t size, const Walker& walker, const Bytes& image, int version)
{
    EXPECT_EQ(size, SizeOf(image)) << version;
    EXPECT_EQ(size, Walk(walker, Extend(image, 100), version)) << version;
    for (std::int64_t cut = 0; cut < size; ++cut)
        EXPECT_EQ(Refused, Walk(walker, Cut(image, cut), version))
            << "version " << version << " cut to " << cut;
}

Bytes Extend(const Bytes& bytes, std::size_t count)
{
    Bytes result = bytes;
    result.resize(bytes.size() + count);
    return result;
}

Bytes SetInt(const CModelBuilder& builder, const std::string& name, int value, int n)
{
    Bytes result = builder.GetImage();
    fileimage::WriteInt(result.data() + builder.GetOffset(name, n), value);
    return result;
}

Bytes IntAlone(int value)
{
    Bytes result(4);
    fileimage::WriteInt(result.data(), value);
    return result;
}

} // namespace testsupport
