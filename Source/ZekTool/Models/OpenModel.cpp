#include "ZekTool/Models/OpenModel.h"

#include "ZekTool/Models/FileKind.h"

namespace zektool
{

std::string OpenModel(const std::string& path, filesystem::CRandomAccessFile& file)
{
    if (file.Open(path))
        return "";
    return file.IsNotRegular() ? "not a regular file" : file.GetError();
}

bool IsModel(const std::string& path)
{
    filesystem::CRandomAccessFile file;
    return file.Open(path) && ReadStart(file).compare(0, ModelMagic.size(), ModelMagic) == 0;
}

} // namespace zektool
