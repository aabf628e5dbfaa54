#pragma once

#include "ZekTool/Command/CModelCommand.h"
#include "ZekTool/Models/SModelInfo.h"

namespace zektool
{

/// Shows what is in each model.
class CInfoCommand : public CModelCommand
{
public:
    explicit CInfoCommand(bool isJson) : m_IsJson(isJson) {}

    SResult Run(const SModelPath& model) override;
    SResult
    MakeFailure(const SModelPath& model, EOutcome outcome, const std::string& reason) override;
    std::string MakeSummary(const STally& tally) const override;

private:
    std::string MakeText(const SModelPath& model, const SModelInfo& info) const;
    std::string MakeJson(const SModelPath& model, const SModelInfo& info) const;

    bool m_IsJson;
};

} // namespace zektool
