#include "ZekTool/Models/OpenModel.h"

namespace zektool
{

std::string OpenModel(const std::string& path, filesystem::CRandomAccessFile& file)
{
    if (file.Open(path))
        return "";
    return file.IsNotRegular() ? "not a regular file" : file.GetError();
}

} // namespace zektool
