#include "ZekTool/Models/OpenModel.h"

#include <cerrno>
#include <cstring>

namespace zektool
{

std::string OpenModel(const std::string& path, filesystem::CRandomAccessFile& file)
{
    errno = 0;
    if (file.Open(path))
        return "";
    // Without an error of the system it is something else than a regular file.
    return errno == 0 ? "not a regular file" : std::strerror(errno);
}

} // namespace zektool
