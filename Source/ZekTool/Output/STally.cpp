#include "ZekTool/Output/STally.h"

namespace zektool
{

void STally::Add(EOutcome outcome, const std::string& name)
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
        if (failedNames.size() < MostNames)
            failedNames.push_back(name);
        break;
    case EOutcome::NotDone:
        ++notDone;
        break;
    }
}

} // namespace zektool
