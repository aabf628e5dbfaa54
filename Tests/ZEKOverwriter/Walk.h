#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "Support/Bytes.h"
#include "Support/CModelBuilder.h"
#include "Support/IntLimits.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

namespace testsupport
{

/// The type of each walker of `CZEKOverwriter` that takes a version.
using MemberWalker = bool (zek::CZEKOverwriter::*)(fileimage::CFileImageAnalyser&, int);

/// Any walker; one that takes no version ignores it.
using Walker = std::function<bool(zek::CZEKOverwriter&, fileimage::CFileImageAnalyser&, int)>;

/// What `Walk` returns for a walker that returned false.
constexpr std::int64_t Refused = -1;

/// Sets a walker on the start of a heap block of exactly these bytes, so that a sanitizer sees a
/// read after them. Returns how many it consumed, or Refused.
std::int64_t Walk(const Walker& walker, const Bytes& bytes, int version);

/// Returns how many bytes a walker that returns false had consumed; fails the test when it returns
/// true. A demand that is not met consumes nothing of what it stands for.
std::int64_t WhereRefused(const Walker& walker, const Bytes& bytes, int version);

/// Expects a walker to take an image of size bytes whole, to leave what stands after it, and to
/// refuse every shorter one.
void ExpectSize(std::int64_t size, const Walker& walker, const Bytes& image, int version);

/// The bytes with count zero bytes after them.
Bytes Extend(const Bytes& bytes, std::size_t count);

/// The image with another value in the n-th int of a name, from 0.
Bytes SetInt(const CModelBuilder& builder, const std::string& name, int value, int n = 0);

/// An image of one int alone.
Bytes IntAlone(int value);

} // namespace testsupport
