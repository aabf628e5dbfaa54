#include "ZEKFormat/SZEKRefusal.h"

#include "ZEKFormat/CZEKFileSource.h"
#include "ZEKFormat/CZEKImageSource.h"
#include "ZEKFormat/CZEKRefusalSink.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"

namespace zek
{

namespace
{

template <typename Source>
std::optional<SZEKRefusal> WhyRefusedIn(Source& source)
{
    CZEKRefusalSink sink;
    CZEKWalk<Source, CZEKRefusalSink> walk(source, sink);
    if (WalkFile(walk))
        return std::nullopt;
    return sink.GetRefusal();
}

} // namespace

std::string SZEKRefusal::GetCauseText() const
{
    switch (kind)
    {
    case SZEKFault::TooShort:
        return std::to_string(demanded) + " bytes needed, " + std::to_string(left) + " left";
    case SZEKFault::Unterminated:
        return "text without an end in the " + std::to_string(left) + " bytes left";
    case SZEKFault::WrongValue:
        return value + " instead of " + expected;
    case SZEKFault::Unreadable:
        break;
    }
    return std::to_string(demanded) +
           " bytes could not be read: the file has become shorter, or its disk is faulty";
}

std::string SZEKRefusal::GetText() const
{
    return GetLocationText() + ": " + GetCauseText();
}

std::optional<SZEKRefusal> WhyRefused(const unsigned char* image, std::int64_t size)
{
    CZEKImageSource source(image, size);
    return WhyRefusedIn(source);
}

std::optional<SZEKRefusal> WhyRefused(filesystem::CRandomAccessFile& file)
{
    CZEKFileSource source(file);
    return WhyRefusedIn(source);
}

} // namespace zek
