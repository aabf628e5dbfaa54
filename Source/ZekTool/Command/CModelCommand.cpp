#include "ZekTool/Command/CModelCommand.h"

#include "ZekTool/Output/Json.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

SResult
CModelCommand::MakeFailure(const SModelPath& model, EOutcome outcome, const std::string& reason)
{
    return {
        outcome, m_IsJson ? MakeFailureJson(model.path, outcome, reason)
                          : MakeFailureLine(model.path, outcome, reason)};
}

} // namespace zektool
