#include "ZekTool/Models/OpenModel.h"

#include <thread>

#include "Specific/FileSystem/SystemFiles.h"
#include "ZekTool/Models/FileKind.h"

namespace zektool
{

std::string OpenModel(const std::string& path, filesystem::CRandomAccessFile& file)
{
    for (std::chrono::milliseconds pause(1); !file.Open(path); pause *= 2)
    {
        if (!file.IsBusy() || pause > LongestPause)
            return file.IsNotRegular() ? "not a regular file" : file.GetError();
        std::this_thread::sleep_for(pause);
    }
    return "";
}

bool IsModel(const std::string& path)
{
    filesystem::CRandomAccessFile file;
    if (OpenModel(path, file).empty())
        return ReadStart(file).compare(0, ModelMagic.size(), ModelMagic) == 0;
    return filesystem::GetPathStatus(path).kind == filesystem::EPathKind::File;
}

} // namespace zektool
