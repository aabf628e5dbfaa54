#include "ZekTool/VariantExistence.h"

#include <fcntl.h>
#include <unistd.h>

namespace zektool
{

bool IsExistVariant(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0)
        return false;
    close(file);
    return true;
}

} // namespace zektool
