#include "ZekTool/Output/STally.h"

namespace zektool
{

void STally::Add(EOutcome outcome, const std::string& path)
{
    switch (outcome)
    {
    case EOutcome::Well:
        ++well;
        break;
    case EOutcome::Changed:
        ++changed;
        break;
    case EOutcome::Failed:
        ++failed;
        if (failedPaths.size() < MostPaths)
            failedPaths.push_back(path);
        break;
    case EOutcome::NotDone:
        ++notDone;
        break;
    }
}

} // namespace zektool
